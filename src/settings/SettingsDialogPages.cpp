#include "SettingsDialog.h"

#include <array>
#include <utility>

#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
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

const QString imageFileStyle = QStringLiteral("color:#aaa;font-size:11px;");
const QString colorButtonStyle =
    QStringLiteral("background-color:%1;color:%2;border:1px solid #555;border-radius:3px;");

// The weighted sum of a colour's components from which black text reads better than white.
constexpr int lightGround = 129000;

void setColorButton(QPushButton *button, const QColor &color)
{
    const int brightness = 299 * color.red() + 587 * color.green() + 114 * color.blue();
    const QString textColor =
        brightness >= lightGround ? QStringLiteral("#000000") : QStringLiteral("#ffffff");
    button->setStyleSheet(colorButtonStyle.arg(color.name(), textColor));
    button->setText(color.name().toUpper());
}

// A row whose input is a stepper: its label belongs to the spin box, not to the container.
void addStepperRow(QFormLayout *form, const QString &text, QSpinBox *spinBox)
{
    auto *label = new QLabel(text);
    form->addRow(label, makeStepper(spinBox));
    label->setBuddy(spinBox);
}

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

QWidget *SettingsDialog::buildColorsPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setSpacing(10);

    const std::array<QString, colorCount> labels{
        tr("Background"),       tr("Timer — normal"), tr("Timer — warning"),
        tr("Timer — critical"), tr("Clock"),          tr("Message"),
    };
    for (std::size_t i = 0; i < labels.size(); ++i) {
        auto *button = new Button;
        button->setFixedSize(80, 26);
        setColorButton(button, workingColors[i]);
        connect(button, &QPushButton::clicked, this,
                [this, i, button] { pickColor(workingColors[i], button); });
        form->addRow(labels[i], button);
        colorBtns[i] = button;
    }
    nameColorButtons();

    form->addRow(makeSeparator());
    form->addRow(makeSectionHeader(tr("Background Image")));
    useImageCheck =
        makeCheckBox(tr("Use image instead of background colour"), settings->bgImageEnabled);
    form->addRow(useImageCheck);
    form->addRow(buildBackgroundImageRow());
    return page;
}

QWidget *SettingsDialog::buildBackgroundImageRow()
{
    imageFileLabel = new QLabel;
    imageFileLabel->setStyleSheet(imageFileStyle);
    imageFileLabel->setWordWrap(true);
    imageFileLabel->setTextFormat(Qt::PlainText); // a file's name may look like mark-up
    imageFileLabel->setAccessibleDescription(tr("Background image"));
    showBackgroundImageName();

    QPushButton *browseBtn = makeFixedWidth(tr("Browse…"), tr("Browse for background image"), 80);
    connect(browseBtn, &QPushButton::clicked, this, &SettingsDialog::browseBackgroundImage);
    QPushButton *clearBtn = makeFixedWidth(tr("Clear"), tr("Clear background image"), 60);
    connect(clearBtn, &QPushButton::clicked, this, &SettingsDialog::clearBackgroundImage);

    auto *holder = new QWidget;
    auto *row = new QHBoxLayout(holder);
    row->addWidget(imageFileLabel, 1);
    row->addWidget(browseBtn);
    row->addWidget(clearBtn);
    return holder;
}

QWidget *SettingsDialog::buildFontsPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setSpacing(10);

    const QString pixels = tr(" px");
    const QString timerText = tr("Timer font size");
    const QString clockText = tr("Clock font size");
    const QString messageText = tr("Message font size");
    timerFontSpin = makeSpinBox({30, 550}, pixels, settings->timerFontSize, timerText);
    clockFontSpin = makeSpinBox({20, 300}, pixels, settings->clockFontSize, clockText);
    messageFontSpin = makeSpinBox({12, 150}, pixels, settings->messageFontSize, messageText);
    addStepperRow(form, timerText, timerFontSpin);
    addStepperRow(form, clockText, clockFontSpin);
    addStepperRow(form, messageText, messageFontSpin);
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
    warningSpin =
        makeSpinBox({1, 3600}, tr(" sec"), settings->warningThreshold, tr("Warning threshold"));
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

void SettingsDialog::pickColor(QColor &target, QPushButton *button)
{
    const QColor color = QColorDialog::getColor(target, this, tr("Pick colour"));
    if (!color.isValid())
        return;
    target = color;
    setColorButton(button, color);
    nameColorButtons();
}

// A button shows its value alone; what the value is for stands beside it.
void SettingsDialog::nameColorButtons()
{
    const std::array<QString, colorCount> names{
        tr("Background colour %1"),     tr("Timer normal colour %1"), tr("Timer warning colour %1"),
        tr("Timer critical colour %1"), tr("Clock colour %1"),        tr("Message colour %1"),
    };
    for (std::size_t i = 0; i < names.size(); ++i) {
        const QString digits = workingColors[i].name().mid(1).toUpper(); // without the hash
        colorBtns[i]->setAccessibleName(names[i].arg(digits));
    }
}

// Choosing a picture switches it on.
void SettingsDialog::browseBackgroundImage()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Select background image"), workingBgImagePath,
                                     tr("Images (*.png *.jpg *.jpeg *.bmp)"));
    if (path.isEmpty())
        return;
    workingBgImagePath = path;
    showBackgroundImageName();
    useImageCheck->setChecked(true);
}

void SettingsDialog::clearBackgroundImage()
{
    workingBgImagePath.clear();
    showBackgroundImageName();
    useImageCheck->setChecked(false);
}

void SettingsDialog::showBackgroundImageName()
{
    imageFileLabel->setText(
        workingBgImagePath.isEmpty() ? tr("None") : QFileInfo(workingBgImagePath).fileName());
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
