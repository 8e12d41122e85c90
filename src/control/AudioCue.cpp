#include "AudioCue.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "FormHelpers.h"

namespace {

const QString soundFileStyle = QStringLiteral("color:#aaa; font-size:11px;");

} // namespace

AudioCue::AudioCue(AppSettings *settings, QWidget *window)
    : settings(settings)
    , window(window)
    , cuePlayer(window)
{
    if (!settings->soundFilePath.isEmpty())
        cuePlayer.setFile(settings->soundFilePath);
}

void AudioCue::addRows(QVBoxLayout *column)
{
    column->addWidget(makeSwitch());
    column->addLayout(makeFileRow());
}

QWidget *AudioCue::makeSwitch()
{
    soundCheck = new QCheckBox(tr("Enable sound cue"));
    soundCheck->setChecked(settings->soundEnabled);
    connect(soundCheck, &QCheckBox::toggled, this, [this](bool enabled) {
        settings->soundEnabled = enabled;
        saveSettings(*settings);
    });
    return soundCheck;
}

QLayout *AudioCue::makeFileRow()
{
    soundFileLabel = new QLabel;
    soundFileLabel->setStyleSheet(soundFileStyle);
    soundFileLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    soundFileLabel->setTextFormat(Qt::PlainText); // a file's name may look like mark-up
    // A long name is cut off; without this it would push the buttons out of the window.
    soundFileLabel->setMinimumWidth(1);
    soundFileLabel->setAccessibleDescription(tr("Sound file"));
    showFileName();
    QPushButton *browseBtn = makeFixedWidth(tr("Browse…"), tr("Browse for sound file"), 80);
    QPushButton *testBtn = makeFixedWidth(tr("Test"), tr("Test sound"), 50);
    connect(browseBtn, &QPushButton::clicked, this, &AudioCue::browse);
    connect(testBtn, &QPushButton::clicked, this, &AudioCue::test);

    auto *row = new QHBoxLayout;
    row->addWidget(soundFileLabel);
    row->addWidget(browseBtn);
    row->addWidget(testBtn);
    return row;
}

// Any tick of zero fires it once, whatever the direction and whether or not the engine
// runs. A cue that cannot be played is silently absent.
void AudioCue::fire()
{
    if (cueFired || !settings->soundEnabled || !cuePlayer.hasFile())
        return;
    cueFired = true;
    cuePlayer.restart();
}

// Whether or not the cue is switched on.
void AudioCue::test()
{
    if (cuePlayer.hasFile())
        cuePlayer.rewindAndPlay();
}

void AudioCue::browse()
{
    const QString path = QFileDialog::getOpenFileName(
        window, tr("Select Sound File"), QString(),
        tr("Audio Files (*.wav *.mp3 *.ogg *.flac *.aac);;All Files (*)"));
    if (path.isEmpty())
        return;
    settings->soundFilePath = path;
    saveSettings(*settings);
    showFileName();
    cuePlayer.setFile(path);
}

void AudioCue::showFileName()
{
    soundFileLabel->setText(settings->soundFilePath.isEmpty()
                                ? tr("No file selected")
                                : QFileInfo(settings->soundFilePath).fileName());
}
