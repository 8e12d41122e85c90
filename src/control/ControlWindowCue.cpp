#include "ControlWindow.h"

#include <QAudioOutput>
#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaPlayer>
#include <QPushButton>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "FormHelpers.h"

namespace {

const QString soundFileStyle = QStringLiteral("color:#aaa; font-size:11px;");

// Older than Qt 6.5, and in need of three things that nothing newer needs.
constexpr bool isOldestToolkit = QT_VERSION < QT_VERSION_CHECK(6, 5, 0);

// There, a file that is gone or is no sound is not even tried: its player takes it for
// playing, and from then on each stop() blocks the whole program, the count included, for
// a second. A newer player has to be asked: on Windows it opens a file in play() that it
// could not open before, such as one on a stick that came later.
bool isToBeLeftAlone(const QMediaPlayer &player)
{
    return isOldestToolkit && player.mediaStatus() == QMediaPlayer::InvalidMedia;
}

// There, a file that is still being opened is only started: that is at its beginning and
// in time anyway, and touched before play(), the player can block the program for good.
bool isOnlyToBeStarted(const QMediaPlayer &player)
{
    return isOldestToolkit && player.mediaStatus() == QMediaPlayer::LoadingMedia;
}

} // namespace

void ControlWindow::buildCue(QVBoxLayout *column)
{
    soundCheck = new QCheckBox(tr("Enable sound cue"));
    soundCheck->setChecked(settings->soundEnabled);
    connect(soundCheck, &QCheckBox::toggled, this, [this](bool enabled) {
        settings->soundEnabled = enabled;
        saveSettings(*settings);
    });
    column->addWidget(soundCheck);

    soundFileLabel = new QLabel;
    soundFileLabel->setStyleSheet(soundFileStyle);
    soundFileLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    soundFileLabel->setTextFormat(Qt::PlainText); // a file's name may look like mark-up
    // A long name is cut off; without this it would push the buttons out of the window.
    soundFileLabel->setMinimumWidth(1);
    soundFileLabel->setAccessibleDescription(tr("Sound file"));
    showSoundFileName();
    QPushButton *browseBtn = makeFixedWidth(tr("Browse…"), tr("Browse for sound file"), 80);
    QPushButton *testBtn = makeFixedWidth(tr("Test"), tr("Test sound"), 50);
    connect(browseBtn, &QPushButton::clicked, this, &ControlWindow::browseSoundFile);
    connect(testBtn, &QPushButton::clicked, this, &ControlWindow::testCue);

    auto *row = new QHBoxLayout;
    row->addWidget(soundFileLabel);
    row->addWidget(browseBtn);
    row->addWidget(testBtn);
    column->addLayout(row);
}

void ControlWindow::setupPlayer()
{
    player = new QMediaPlayer(this);
    audioOutput = new QAudioOutput(this);
    player->setAudioOutput(audioOutput);
    audioOutput->setVolume(1.0F);
    if (!settings->soundFilePath.isEmpty())
        player->setSource(QUrl::fromLocalFile(settings->soundFilePath));
}

// Any tick of zero fires it once, whatever the direction and whether or not the engine
// runs. A cue that cannot be played is silently absent.
void ControlWindow::checkCue()
{
    if (cueFired || !settings->soundEnabled || !player->source().isValid())
        return;
    cueFired = true;
    if (isToBeLeftAlone(*player))
        return;
    if (!isOnlyToBeStarted(*player)) {
        reattachAudioOutput();
        player->stop();
    }
    player->play();
}

void ControlWindow::testCue()
{
    if (!player->source().isValid() || isToBeLeftAlone(*player))
        return;
    if (!isOnlyToBeStarted(*player)) {
        reattachAudioOutput();
        player->setPosition(0);
    }
    player->play();
}

// With the oldest toolkit's GStreamer backend a sound is late by the time since its source
// was set, so that a cue chosen minutes before is not heard; a freshly attached output is
// in time.
void ControlWindow::reattachAudioOutput()
{
    if constexpr (isOldestToolkit) {
        player->setAudioOutput(nullptr);
        player->setAudioOutput(audioOutput);
    }
}

void ControlWindow::browseSoundFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Select Sound File"), QString(),
        tr("Audio Files (*.wav *.mp3 *.ogg *.flac *.aac);;All Files (*)"));
    if (path.isEmpty())
        return;
    settings->soundFilePath = path;
    saveSettings(*settings);
    showSoundFileName();
    player->setSource(QUrl::fromLocalFile(path));
}

void ControlWindow::showSoundFileName()
{
    soundFileLabel->setText(settings->soundFilePath.isEmpty()
                                ? tr("No file selected")
                                : QFileInfo(settings->soundFilePath).fileName());
}
