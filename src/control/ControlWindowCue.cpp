#include "ControlWindow.h"

#include <QAudioOutput>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMediaPlayer>

#include "AppSettings.h"

namespace {

// A file that is gone or is no sound is not even tried: the oldest toolkit takes its player
// for playing, and from then on each stop() blocks the whole program, the count included,
// for a second.
bool isBroken(const QMediaPlayer &player)
{
    return player.mediaStatus() == QMediaPlayer::InvalidMedia;
}

// A file that is still being opened starts at its beginning and in time anyway. Touched in
// that state before play(), the oldest toolkit's player can block the program for good.
bool isOpening(const QMediaPlayer &player)
{
    return player.mediaStatus() == QMediaPlayer::LoadingMedia;
}

} // namespace

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
    if (isBroken(*player))
        return;
    if (!isOpening(*player)) {
        reattachAudioOutput();
        player->stop();
    }
    player->play();
}

void ControlWindow::testCue()
{
    if (!player->source().isValid() || isBroken(*player))
        return;
    if (!isOpening(*player)) {
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
#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
    player->setAudioOutput(nullptr);
    player->setAudioOutput(audioOutput);
#endif
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
