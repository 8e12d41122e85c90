#include "SettingsDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "Button.h"
#include "FormHelpers.h"
#include "Updater.h"

namespace {

const QString updateButtonStyle = QStringLiteral("color:#aaa; font-size:11px;");

} // namespace

SettingsDialog::SettingsDialog(AppSettings *settings, QWidget *parent)
    : QDialog(parent)
    , settings(settings)
{
    setWindowTitle(tr("Settings"));
    setMinimumWidth(420);

    workingBgImagePath = settings->bgImagePath;

    auto *tabs = new QTabWidget;
    tabs->addTab(buildClockPage(), tr("Clock"));
    tabs->addTab(buildColorsPage(), tr("Colors"));
    tabs->addTab(buildFontsPage(), tr("Fonts"));
    tabs->addTab(buildTimerPage(), tr("Timer"));
    tabs->addTab(buildShortcutsPage(), tr("Shortcuts"));

    auto *buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttonBox, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttonBox, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);

    auto *updateBtn = new Button(tr("Check for Updates"));
    updateBtn->setStyleSheet(updateButtonStyle);
    connect(updateBtn, &QPushButton::clicked, this, [] { Updater::checkInteractively(); });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttonBox);
    layout->addWidget(updateBtn, 0, Qt::AlignLeft);
}

void SettingsDialog::accept()
{
    settings->clock24hr = clock24hrRadio->isChecked();
    settings->clockShowSeconds = showSecondsCheck->isChecked();

    settings->bgImagePath = workingBgImagePath;
    settings->bgImageEnabled = useImageCheck->isChecked();

    storeColors();

    settings->timerFontSize = timerFontSpin->value();
    settings->clockFontSize = clockFontSpin->value();
    settings->messageFontSize = messageFontSpin->value();

    settings->overtimeEnabled = overtimeCheck->isChecked();
    settings->blinkEnabled = blinkCheck->isChecked();
    settings->defaultDuration = durationMinSpin->value() * 60 + durationSecSpin->value();
    settings->warningThreshold = warningSpin->value();

    settings->presets = listedPresets(*presetsList);
    storeShortcuts();

    saveSettings(*settings);
    emit settingsChanged();
    QDialog::accept();
}
