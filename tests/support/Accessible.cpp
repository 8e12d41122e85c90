#include "Accessible.h"

#include <QAbstractButton>
#include <QHash>
#include <QSet>
#include <QWidget>

namespace {

using Interfaces = QList<QAccessibleInterface *>;

void collectVisible(QAccessibleInterface *interface, Interfaces &found)
{
    if (!interface || !interface->isValid() || interface->state().invisible)
        return;
    found.append(interface);
    for (int i = 0; i < interface->childCount(); ++i)
        collectVisible(interface->child(i), found);
}

Interfaces visibleBelow(QWidget &window)
{
    Interfaces found;
    collectVisible(QAccessible::queryAccessibleInterface(&window), found);
    return found;
}

bool isTabStop(const QWidget &widget)
{
    return widget.isVisible() && widget.isEnabled() && !widget.focusProxy()
        && (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

bool isStop(const QAccessibleInterface &interface)
{
    const auto *widget = qobject_cast<QWidget *>(interface.object());
    return widget && !widget->isWindow() && isTabStop(*widget);
}

// Empty for what is no control. By Qt's class where there is one: it tells a check
// box and a button that can be checked apart, which have the same role.
QString kindOf(const QAccessibleInterface &interface)
{
    if (const auto *button = qobject_cast<QAbstractButton *>(interface.object()))
        return button->inherits("QCheckBox")   ? "check"
            : button->inherits("QRadioButton") ? "radio"
                                               : "button";
    static const QHash<QAccessible::Role, const char *> kinds{
        {QAccessible::Button, "button"},      {QAccessible::ButtonDropDown, "button"},
        {QAccessible::ButtonMenu, "button"},  {QAccessible::CheckBox, "button"},
        {QAccessible::RadioButton, "button"}, {QAccessible::SpinBox, "spin"},
        {QAccessible::EditableText, "edit"},  {QAccessible::ComboBox, "combo"},
        {QAccessible::Slider, "slider"},      {QAccessible::List, "list"},
        {QAccessible::Table, "list"},         {QAccessible::Tree, "list"},
        {QAccessible::ListItem, "item"},      {QAccessible::Cell, "item"},
        {QAccessible::TreeItem, "item"},      {QAccessible::PageTabList, "tabs"},
        {QAccessible::PageTab, "tab"},        {QAccessible::ProgressBar, "progress"},
        {QAccessible::Graphic, "picture"},
    };
    return kinds.value(interface.role(), isStop(interface) ? "stop" : "");
}

// Empty for what a name is asked of.
QString reasonToLeaveOut(const QAccessibleInterface &interface)
{
    if (interface.role() == QAccessible::ScrollBar)
        return QStringLiteral("a scroll bar is Qt's, and the keys scroll without it");
    const QObject *object = interface.object();
    if (object && object->objectName() == QLatin1String("qt_msgboxex_icon_label"))
        return QStringLiteral("a message box's icon is Qt's, and only repeats its text");
    return {};
}

void printOnce(const QString &text)
{
    static QSet<QString> printed;
    if (!printed.contains(text))
        qInfo("%s", qPrintable(text));
    printed.insert(text);
}

// What each object is labelled with. The labels are asked: a control finds only a label that
// stands beside it in the same parent, which a spin box in a stepper has not.
QHash<const QObject *, QString> labelsIn(const Interfaces &all)
{
    QHash<const QObject *, QString> labels;
    for (const QAccessibleInterface *interface : all) {
        const auto relations = interface->relations(QAccessible::Labelled);
        for (const auto &relation : relations)
            labels.insert(relation.first->object(), interface->text(QAccessible::Name));
    }
    return labels;
}

// What a voice makes a pause of, or nothing.
bool isSayable(const QString &name)
{
    static const QList<uint> punctuation = QStringLiteral("-,.:()'").toUcs4();
    bool hasWord = false;
    for (const uint code : name.toUcs4()) {
        if (QChar::isLetterOrNumber(code))
            hasWord = true;
        else if (!QChar::isSpace(code) && !punctuation.contains(code))
            return false;
    }
    return hasWord;
}

// " min" is short for minutes, and so on; a spin box shows it behind its number.
bool isNamedAfterItsUnit(const QString &kind, const QString &name)
{
    return kind == QLatin1String("spin")
        && (name.endsWith(QLatin1String("minutes"), Qt::CaseInsensitive)
            || name.endsWith(QLatin1String("seconds"), Qt::CaseInsensitive));
}

QString withMore(const QString &text, const QString &more)
{
    return more.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, more);
}

QString nameOf(QWidget *widget)
{
    const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace

QList<Told> controls(QWidget &window)
{
    QList<Told> told;
    const Interfaces all = visibleBelow(window);
    const QHash<const QObject *, QString> labels = labelsIn(all);
    for (const QAccessibleInterface *interface : all) {
        if (const QString reason = reasonToLeaveOut(*interface); !reason.isEmpty()) {
            printOnce(QStringLiteral("Not asked for a name: ") + reason);
            continue;
        }
        const QString kind = kindOf(*interface);
        if (kind.isEmpty())
            continue;
        told.append({kind, interface->text(QAccessible::Name),
                     interface->object() ? labels.value(interface->object()) : QString(),
                     interface->text(QAccessible::Description)});
    }
    return told;
}

QStringList controlLines(QWidget &window)
{
    QStringList lines;
    for (const Told &control : controls(window))
        lines.append(withMore(control.kind + ' ' + control.name, control.label));
    return lines;
}

QStringList textLines(QWidget &window)
{
    QStringList lines;
    for (const QAccessibleInterface *interface : visibleBelow(window)) {
        if (interface->role() == QAccessible::StaticText)
            lines.append(withMore(interface->text(QAccessible::Name),
                                  interface->text(QAccessible::Description)));
    }
    return lines;
}

QStringList unsayableNames(QWidget &window)
{
    QStringList bad;
    for (const Told &control : controls(window)) {
        if (!isSayable(control.name))
            bad.append(control.kind + QLatin1Char(' ') + control.name);
    }
    return bad;
}

QStringList sharedButtonNames(QWidget &window)
{
    QStringList names;
    QStringList shared;
    for (const Told &control : controls(window)) {
        if (control.kind != QLatin1String("button"))
            continue;
        if (names.contains(control.name) && !shared.contains(control.name))
            shared.append(control.name);
        names.append(control.name);
    }
    return shared;
}

QStringList unlabelledInputs(QWidget &window)
{
    const QStringList inputs{"spin", "edit", "combo", "slider", "list"};
    QStringList bad;
    for (const Told &control : controls(window)) {
        if (inputs.contains(control.kind) && control.label.isEmpty()
            && !isNamedAfterItsUnit(control.kind, control.name))
            bad.append(control.kind + QLatin1Char(' ') + control.name);
    }
    return bad;
}

QList<QWidget *> tabStops(QWidget &window)
{
    QList<QWidget *> stops;
    for (QWidget *widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        if (isTabStop(*widget))
            stops.append(widget);
    }
    return stops;
}

QStringList tabDetours(QWidget &window)
{
    QStringList detours;
    QWidget *last = nullptr;
    const QList<QWidget *> stops = tabStops(window);
    for (QWidget *stop : stops) {
        // What stands inside the last stop, like the content of a scroll area, follows it.
        if (last && !last->isAncestorOf(stop)) {
            const QRect from(last->mapTo(&window, QPoint()), last->size());
            const QRect to(stop->mapTo(&window, QPoint()), stop->size());
            const bool sameRow = from.top() <= to.center().y() && to.center().y() <= from.bottom();
            if (sameRow ? to.left() <= from.left() : to.top() <= from.top())
                detours.append(
                    QStringLiteral("from \"%1\" to \"%2\"").arg(nameOf(last), nameOf(stop)));
        }
        last = stop;
    }
    return detours;
}
