#include "SettingsDialog.h"

#include <utility>

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "Button.h"
#include "FormHelpers.h"
#include "Stepper.h"

namespace {

// Deliberately wordier than the labels of the Control window's strip.
QString presetLabel(int secs)
{
    const int minutes = secs / 60;
    const int rest = secs % 60;
    if (rest > 0)
        return SettingsDialog::tr("%1 min %2 sec").arg(minutes).arg(rest);
    return SettingsDialog::tr("%1 min").arg(minutes);
}

} // namespace

QWidget *SettingsDialog::buildClockPage()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setSpacing(12);

    column->addWidget(makeSectionHeader(tr("Format")));
    // Exclusive because they share a parent.
    clock24hrRadio = new RadioButton(tr("24-hour  (14:30)"));
    clock12hrRadio = new RadioButton(tr("12-hour  (2:30 PM)"));
    clock24hrRadio->setChecked(settings->clock24hr);
    clock12hrRadio->setChecked(!settings->clock24hr);
    column->addWidget(clock24hrRadio);
    column->addWidget(clock12hrRadio);

    column->addWidget(makeSeparator());
    column->addWidget(makeSectionHeader(tr("Seconds")));
    showSecondsCheck = makeCheckBox(tr("Show seconds on output"), settings->clockShowSeconds);
    column->addWidget(showSecondsCheck);
    column->addStretch();
    return page;
}

QWidget *SettingsDialog::buildFontsPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setSpacing(10);

    const auto addSize = [this, form](const QString &text, int AppSettings::*size) {
        QSpinBox *spinBox = makeSpinBox(rangeOf(size), tr(" px"), settings->*size, text);
        auto *label = new QLabel(text);
        form->addRow(label, makeStepper(spinBox));
        label->setBuddy(spinBox); // and not the stepper's container
        return spinBox;
    };
    timerFontSpin = addSize(tr("Timer font size"), &AppSettings::timerFontSize);
    clockFontSpin = addSize(tr("Clock font size"), &AppSettings::clockFontSize);
    messageFontSpin = addSize(tr("Message font size"), &AppSettings::messageFontSize);
    return page;
}

QWidget *SettingsDialog::buildTimerPage()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setSpacing(10);

    column->addWidget(makeSectionHeader(tr("Behaviour")));
    overtimeCheck = makeCheckBox(tr("Overtime — continue counting in red past zero"),
                                 settings->overtimeEnabled);
    blinkCheck = makeCheckBox(tr("Blink effect at zero"), settings->blinkEnabled);
    overtimeCheck->setAccessibleName(tr("Overtime, continue counting in red past zero"));
    column->addWidget(overtimeCheck);
    column->addWidget(blinkCheck);

    column->addWidget(makeSeparator());
    durationMinSpin = makeSpinBox({0, 999}, tr(" min"), settings->defaultDuration / 60,
                                  tr("Default duration minutes"));
    durationSecSpin = makeSpinBox({0, 59}, tr(" sec"), settings->defaultDuration % 60,
                                  tr("Default duration seconds"));
    column->addWidget(makeSectionHeader(tr("Default duration"), durationMinSpin));
    auto *durationRow = new QHBoxLayout;
    durationRow->addWidget(makeStepper(durationMinSpin));
    durationRow->addWidget(makeStepper(durationSecSpin));
    durationRow->addStretch();
    column->addLayout(durationRow);

    column->addWidget(makeSeparator());
    warningSpin = makeSpinBox(rangeOf(&AppSettings::warningThreshold), tr(" sec"),
                              settings->warningThreshold, tr("Warning threshold"));
    column->addWidget(makeSectionHeader(tr("Warning threshold"), warningSpin));
    column->addWidget(makeStepper(warningSpin));

    column->addWidget(makeSeparator());
    buildPresetList();
    column->addWidget(makeSectionHeader(tr("Presets"), presetsList));
    column->addWidget(presetsList);
    column->addLayout(buildNewPresetRow());
    column->addStretch();
    return page;
}

void SettingsDialog::buildPresetList()
{
    presetsList = new QListWidget;
    presetsList->setMaximumHeight(120);
    presetsList->setAccessibleName(tr("Presets"));
    presetsList->setDragDropMode(QAbstractItemView::InternalMove);
    presetsList->setDefaultDropAction(Qt::MoveAction);
    for (const int secs : std::as_const(settings->presets))
        appendPresetItem(secs);
}

QLayout *SettingsDialog::buildNewPresetRow()
{
    newPresetMinSpin = makeSpinBox({0, 999}, tr(" min"), 5, tr("New preset minutes"));
    newPresetSecSpin = makeSpinBox({0, 59}, tr(" sec"), 0, tr("New preset seconds"));
    QPushButton *addBtn = makeButton(tr("Add"), tr("Add preset"));
    connect(addBtn, &QPushButton::clicked, this, &SettingsDialog::addPreset);
    QPushButton *removeBtn = makeButton(tr("Remove"), tr("Remove preset"));
    connect(removeBtn, &QPushButton::clicked, this, &SettingsDialog::removePreset);

    auto *row = new QHBoxLayout;
    row->addWidget(makeStepper(newPresetMinSpin));
    row->addWidget(makeStepper(newPresetSecSpin));
    row->addWidget(addBtn);
    row->addWidget(removeBtn);
    row->addStretch();
    return row;
}

void SettingsDialog::appendPresetItem(int secs)
{
    auto *item = new QListWidgetItem(presetLabel(secs), presetsList);
    item->setData(Qt::UserRole, secs);
}

// Deliberately neither sorted nor checked for duplicates, unlike the Control window's strip.
void SettingsDialog::addPreset()
{
    const int total = newPresetMinSpin->value() * 60 + newPresetSecSpin->value();
    if (total != 0)
        appendPresetItem(total);
}

void SettingsDialog::removePreset()
{
    delete presetsList->currentItem(); // an item leaves its list by being deleted
}
