#include "Outline.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

namespace {

const QString headerLook =
    QStringLiteral("color:#888;font-size:10px;font-weight:bold;letter-spacing:1px;");
const QString separatorLook = QStringLiteral("color:#3a3a3a;");

QString inBrackets(const QStringList &parts)
{
    return QLatin1Char('[') + parts.join(QLatin1String(", ")) + QLatin1Char(']');
}

bool isStepper(const QWidget &widget)
{
    const auto *row = qobject_cast<QHBoxLayout *>(widget.layout());
    return row && row->count() == 3 && qobject_cast<QPushButton *>(row->itemAt(0)->widget())
        && qobject_cast<QSpinBox *>(row->itemAt(1)->widget())
        && qobject_cast<QPushButton *>(row->itemAt(2)->widget());
}

QString outlineOfWidget(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        const bool isHeader = label->styleSheet() == headerLook;
        return (isHeader ? QStringLiteral("header ") : QStringLiteral("label ")) + label->text();
    }
    if (const auto *radio = qobject_cast<const QRadioButton *>(&widget))
        return QStringLiteral("radio ") + radio->text();
    if (const auto *box = qobject_cast<const QCheckBox *>(&widget))
        return QStringLiteral("check ") + box->text();
    if (const auto *button = qobject_cast<const QPushButton *>(&widget))
        return QStringLiteral("button ") + button->text();
    if (qobject_cast<const QListWidget *>(&widget))
        return QStringLiteral("list");
    if (const auto *frame = qobject_cast<const QFrame *>(&widget)) {
        const bool isSeparator =
            frame->frameShape() == QFrame::HLine && frame->styleSheet() == separatorLook;
        return isSeparator ? QStringLiteral("separator") : QStringLiteral("frame");
    }
    if (isStepper(widget))
        return QStringLiteral("stepper");
    if (widget.layout())
        return inBrackets(outlineOf(*widget.layout()));
    return QLatin1String(widget.metaObject()->className());
}

QString outlineOfItem(QLayoutItem &item)
{
    if (const QWidget *widget = item.widget())
        return outlineOfWidget(*widget);
    if (qobject_cast<const QGridLayout *>(item.layout()))
        return QStringLiteral("grid");
    if (const QLayout *layout = item.layout())
        return inBrackets(outlineOf(*layout));
    return item.expandingDirections() ? QStringLiteral("stretch") : QStringLiteral("space");
}

QStringList outlineOfForm(const QFormLayout &form)
{
    QStringList outline;
    for (int row = 0; row < form.rowCount(); ++row) {
        if (QLayoutItem *whole = form.itemAt(row, QFormLayout::SpanningRole)) {
            outline << outlineOfItem(*whole);
            continue;
        }
        const auto *label =
            qobject_cast<QLabel *>(form.itemAt(row, QFormLayout::LabelRole)->widget());
        outline << label->text() + QLatin1String(": ")
                + outlineOfItem(*form.itemAt(row, QFormLayout::FieldRole));
    }
    return outline;
}

} // namespace

QStringList outlineOf(const QLayout &layout)
{
    if (const auto *form = qobject_cast<const QFormLayout *>(&layout))
        return outlineOfForm(*form);
    QStringList outline;
    for (int i = 0; i < layout.count(); ++i)
        outline << outlineOfItem(*layout.itemAt(i));
    return outline;
}
