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
    : dialog(dialog)
{
}

QTabWidget *DialogView::tabs() const
{
    return dialog.findChild<QTabWidget *>();
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
    QWidget *wanted = page(title);
    tabs()->setCurrentWidget(wanted);
    return wanted;
}

QPushButton *DialogView::okButton() const
{
    return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
}

QPushButton *DialogView::cancelButton() const
{
    return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel);
}

QRadioButton *DialogView::radio(const QString &text) const
{
    return findByText<QRadioButton>(dialog, text);
}

QCheckBox *DialogView::checkBox(const QString &text) const
{
    return findByText<QCheckBox>(dialog, text);
}

QPushButton *DialogView::colorButton(const QString &rowLabel) const
{
    return qobject_cast<QPushButton *>(formField(*page(QStringLiteral("Colors")), rowLabel));
}

QPushButton *DialogView::browseButton() const
{
    return findByText<QPushButton>(*page(QStringLiteral("Colors")), QStringLiteral("Browse…"));
}

QPushButton *DialogView::clearImageButton() const
{
    return findByText<QPushButton>(*page(QStringLiteral("Colors")), QStringLiteral("Clear"));
}

QLabel *DialogView::imageFileLabel() const
{
    const QWidget *row = browseButton()->parentWidget();
    return row->findChild<QLabel *>();
}

QSpinBox *DialogView::fontSize(const QString &rowLabel) const
{
    const QWidget *field = formField(*page(QStringLiteral("Fonts")), rowLabel);
    return field ? field->findChild<QSpinBox *>() : nullptr;
}

QList<QSpinBox *> DialogView::spinBoxesUnder(const QString &header) const
{
    const QLayout *column = page(QStringLiteral("Timer"))->layout();
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
    return dialog.findChild<QListWidget *>();
}

QPushButton *DialogView::presetButton(const QString &text) const
{
    return findByText<QPushButton>(*page(QStringLiteral("Timer")), text);
}

QLabel *DialogView::keyLabel(int row) const
{
    return shortcutCell<QLabel>(*page(QStringLiteral("Shortcuts")), row, 1);
}

QPushButton *DialogView::setKeyButton(int row) const
{
    return shortcutCell<QPushButton>(*page(QStringLiteral("Shortcuts")), row, 2);
}

QPushButton *DialogView::clearKeyButton(int row) const
{
    return shortcutCell<QPushButton>(*page(QStringLiteral("Shortcuts")), row, 3);
}

QPushButton *DialogView::resetKeysButton() const
{
    return findByText<QPushButton>(dialog, QStringLiteral("Reset All to Defaults"));
}

void DialogView::pick(const QString &rowLabel, const QColor &color) const
{
    const ModalScript<QColorDialog> person([&color](QColorDialog &colors) {
        colors.setCurrentColor(color);
        press(colors, QDialogButtonBox::Ok);
    });
    colorButton(rowLabel)->click();
}
