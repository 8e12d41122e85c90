#include "SettingsDialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "AppSettings.h"
#include "Button.h"
#include "FormHelpers.h"

namespace {

/// One colour of the page: what it is called for the eye and for the ear, "%1" being its value,
/// and where it is kept.
struct ColorRow
{
    const char *label;
    const char *spokenLabel;
    QColor AppSettings::*field;
};

constexpr std::array<ColorRow, 6> colorRows{{
    {QT_TRANSLATE_NOOP("SettingsDialog", "Background"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Background colour %1"), &AppSettings::bgColor},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Timer — normal"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Timer normal colour %1"), &AppSettings::timerColorNormal},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Timer — warning"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Timer warning colour %1"),
     &AppSettings::timerColorWarning},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Timer — critical"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Timer critical colour %1"),
     &AppSettings::timerColorCritical},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Clock"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Clock colour %1"), &AppSettings::clockColor},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Message"),
     QT_TRANSLATE_NOOP("SettingsDialog", "Message colour %1"), &AppSettings::messageColor},
}};

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

} // namespace

QWidget *SettingsDialog::buildColorsPage()
{
    static_assert(colorRows.size() == colorCount);

    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setSpacing(10);

    for (std::size_t i = 0; i < colorRows.size(); ++i) {
        workingColors[i] = settings->*colorRows[i].field;
        auto *button = new Button;
        button->setFixedSize(80, 26);
        setColorButton(button, workingColors[i]);
        connect(button, &QPushButton::clicked, this,
                [this, i, button] { pickColor(workingColors[i], button); });
        form->addRow(tr(colorRows[i].label), button);
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
    for (std::size_t i = 0; i < colorRows.size(); ++i) {
        const QString digits = workingColors[i].name().mid(1).toUpper(); // without the hash
        colorBtns[i]->setAccessibleName(tr(colorRows[i].spokenLabel).arg(digits));
    }
}

void SettingsDialog::storeColors()
{
    for (std::size_t i = 0; i < colorRows.size(); ++i)
        settings->*colorRows[i].field = workingColors[i];
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
