#include "DialogView.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>

#include "Find.h"
#include "Modal.h"

namespace {

QWidget *formField(const QWidget &page, const QString &rowLabel)
{
    const auto *form = qobject_cast<QFormLayout *>(page.layout());
    for (int row = 0; form && row < form->rowCount(); ++row) {
        const QLayoutItem *label = form->itemAt(row, QFormLayout::LabelRole);
        const QLayoutItem *field = form->itemAt(row, QFormLayout::FieldRole);
        if (!label || !field)
            continue;
        const auto *text = qobject_cast<QLabel *>(label->widget());
        if (text && text->text() == rowLabel)
            return field->widget();
    }
    return nullptr;
}

void collectSpinBoxes(QLayoutItem *item, QList<QSpinBox *> &found)
{
    if (QWidget *widget = item->widget())
        found += widget->findChildren<QSpinBox *>();
    const QLayout *layout = item->layout();
    for (int i = 0; layout && i < layout->count(); ++i)
        collectSpinBoxes(layout->itemAt(i), found);
}

template<typename Widget>
Widget *shortcutCell(const QWidget &page, int row, int column)
{
    const auto *grid = page.findChild<QGridLayout *>();
    const QLayoutItem *item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? qobject_cast<Widget *>(item->widget()) : nullptr;
}

} // namespace

DialogView::DialogView(QDialog &dialog)
    : window(dialog)
{
}

QTabWidget *DialogView::tabs() const
{
    return window.findChild<QTabWidget *>();
}

QWidget *DialogView::page(const QString &title) const
{
    const QTabWidget *all = tabs();
    for (int i = 0; i < all->count(); ++i) {
        if (all->tabText(i) == title)
            return all->widget(i);
    }
    return nullptr;
}

QWidget *DialogView::showPage(const QString &title) const
{
    tabs()->setCurrentWidget(page(title));
    return tabs()->currentWidget();
}

QPushButton *DialogView::okButton() const
{
    return window.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
}

QPushButton *DialogView::cancelButton() const
{
    return window.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel);
}

QRadioButton *DialogView::radio(const QString &text) const
{
    return findByText<QRadioButton>(window, text);
}

QCheckBox *DialogView::checkBox(const QString &text) const
{
    return findByText<QCheckBox>(window, text);
}

QPushButton *DialogView::colorButton(const QString &rowLabel) const
{
    return qobject_cast<QPushButton *>(formField(*page("Colors"), rowLabel));
}

QPushButton *DialogView::browseButton() const
{
    return findByText<QPushButton>(*page("Colors"), "Browse…");
}

QPushButton *DialogView::clearImageButton() const
{
    return findByText<QPushButton>(*page("Colors"), "Clear");
}

QLabel *DialogView::imageFileLabel() const
{
    return browseButton()->parentWidget()->findChild<QLabel *>();
}

QSpinBox *DialogView::fontSize(const QString &rowLabel) const
{
    const QWidget *field = formField(*page("Fonts"), rowLabel);
    return field ? field->findChild<QSpinBox *>() : nullptr;
}

QList<QSpinBox *> DialogView::spinBoxesUnder(const QString &header) const
{
    const QLayout *column = page("Timer")->layout();
    QList<QSpinBox *> found;
    bool inside = false;
    for (int i = 0; i < column->count(); ++i) {
        if (const auto *label = qobject_cast<QLabel *>(column->itemAt(i)->widget()))
            inside = label->text() == header;
        else if (inside)
            collectSpinBoxes(column->itemAt(i), found);
    }
    return found;
}

QListWidget *DialogView::presets() const
{
    return window.findChild<QListWidget *>();
}

QStringList DialogView::presetLabels() const
{
    QStringList labels;
    for (int row = 0; row < presets()->count(); ++row)
        labels << presets()->item(row)->text();
    return labels;
}

QList<int> DialogView::presetSeconds() const
{
    QList<int> seconds;
    for (int row = 0; row < presets()->count(); ++row)
        seconds << presets()->item(row)->data(Qt::UserRole).toInt();
    return seconds;
}

QPushButton *DialogView::presetButton(const QString &text) const
{
    return findByText<QPushButton>(*page("Timer"), text);
}

QLabel *DialogView::keyLabel(int row) const
{
    return shortcutCell<QLabel>(*page("Shortcuts"), row, 1);
}

QPushButton *DialogView::setKeyButton(int row) const
{
    return shortcutCell<QPushButton>(*page("Shortcuts"), row, 2);
}

QPushButton *DialogView::clearKeyButton(int row) const
{
    return shortcutCell<QPushButton>(*page("Shortcuts"), row, 3);
}

QPushButton *DialogView::resetKeysButton() const
{
    return findByText<QPushButton>(window, "Reset All to Defaults");
}

void DialogView::pick(const QString &rowLabel, const QColor &color) const
{
    const ModalScript<QColorDialog> user([&color](QColorDialog &colors) {
        colors.setCurrentColor(color);
        press(colors, QDialogButtonBox::Ok);
    });
    colorButton(rowLabel)->click();
}
