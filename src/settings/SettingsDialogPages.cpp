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
#include "DialogParts.h"
#include "FormParts.h"
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

QCheckBox *makeCheckBox(const QString &text, bool checked)
{
    auto *box = new QCheckBox(text);
    box->setChecked(checked);
    return box;
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
    clock24hrRadio = new QRadioButton(tr("24-hour  (14:30)"));
    clock12hrRadio = new QRadioButton(tr("12-hour  (2:30 PM)"));
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
        auto *button = new QPushButton;
        button->setFixedSize(80, 26);
        setColorButton(button, workingColors[i]);
        connect(button, &QPushButton::clicked, this,
                [this, i, button] { pickColor(workingColors[i], button); });
        form->addRow(labels[i], button);
        colorBtns[i] = button;
    }

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
    showBackgroundImageName();

    auto *browseBtn = new QPushButton(tr("Browse…"));
    browseBtn->setFixedWidth(80);
    connect(browseBtn, &QPushButton::clicked, this, &SettingsDialog::browseBackgroundImage);
    auto *clearBtn = new QPushButton(tr("Clear"));
    clearBtn->setFixedWidth(60);
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
    timerFontSpin = makeSpinBox(30, 550, pixels, settings->timerFontSize);
    clockFontSpin = makeSpinBox(20, 300, pixels, settings->clockFontSize);
    messageFontSpin = makeSpinBox(12, 150, pixels, settings->messageFontSize);
    form->addRow(tr("Timer font size"), makeStepper(timerFontSpin));
    form->addRow(tr("Clock font size"), makeStepper(clockFontSpin));
    form->addRow(tr("Message font size"), makeStepper(messageFontSpin));
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
    column->addWidget(overtimeCheck);
    column->addWidget(blinkCheck);

    column->addWidget(makeSeparator());
    column->addWidget(makeSectionHeader(tr("Default duration")));
    durationMinSpin = makeSpinBox(0, 999, tr(" min"), settings->defaultDuration / 60);
    durationSecSpin = makeSpinBox(0, 59, tr(" sec"), settings->defaultDuration % 60);
    auto *durationRow = new QHBoxLayout;
    durationRow->addWidget(makeStepper(durationMinSpin));
    durationRow->addWidget(makeStepper(durationSecSpin));
    durationRow->addStretch();
    column->addLayout(durationRow);

    column->addWidget(makeSeparator());
    column->addWidget(makeSectionHeader(tr("Warning threshold")));
    warningSpin = makeSpinBox(1, 3600, tr(" sec"), settings->warningThreshold);
    column->addWidget(makeStepper(warningSpin));

    column->addWidget(makeSeparator());
    column->addWidget(makeSectionHeader(tr("Presets")));
    buildPresetList();
    column->addWidget(presetsList);
    column->addLayout(buildNewPresetRow());
    column->addStretch();
    return page;
}

void SettingsDialog::buildPresetList()
{
    presetsList = new QListWidget;
    presetsList->setMaximumHeight(120);
    presetsList->setDragDropMode(QAbstractItemView::InternalMove);
    presetsList->setDefaultDropAction(Qt::MoveAction);
    for (const int secs : std::as_const(settings->presets))
        appendPresetItem(secs);
}

QLayout *SettingsDialog::buildNewPresetRow()
{
    newPresetMinSpin = makeSpinBox(0, 999, tr(" min"), 5);
    newPresetSecSpin = makeSpinBox(0, 59, tr(" sec"), 0);
    auto *addBtn = new QPushButton(tr("Add"));
    connect(addBtn, &QPushButton::clicked, this, &SettingsDialog::addPreset);
    auto *removeBtn = new QPushButton(tr("Remove"));
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
