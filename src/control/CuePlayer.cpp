#include "CuePlayer.h"

#include <QApplication>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QAudioSink>
#include <QEvent>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

namespace {

// Older than Qt 6.5, whose only player is GStreamer's.
constexpr bool isOldestQt = QT_VERSION < QT_VERSION_CHECK(6, 5, 0);

// The connection to PulseAudio does, as ConnectionGuard says.
#ifdef Q_OS_LINUX
constexpr bool needsGuard = !isOldestQt;
#else
constexpr bool needsGuard = false;
#endif

// From Qt 6.5 on, all sounds share one connection to PulseAudio, which lives in the thread of the
// first sound. If the server dies while that one plays, the player goes on writing to what the end
// of the connection has deleted, and the program crashes (until Qt 6.9); so it does if it is asked
// to play without a connection (from Qt 6.10 on). Once the thread has ended, nothing connects
// again. So the connection is made in the main thread, which tries once more after three seconds;
// the player is stopped before it learns of the end, the only event that a connection receives, and
// stays so until the connection tells of its devices again. Qt names it in no public header, so it
// is known by its class's name; under another name, nothing is guarded and nothing breaks.
class ConnectionGuard : public QObject
{
public:
    explicit ConnectionGuard(QMediaPlayer *player)
        : QObject(player)
        , player(player)
    {
        // Without a format it cannot start, but connects.
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        if (!device.isNull())
            QAudioSink(device, QAudioFormat()).start();
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MetaCall && isServerConnection(watched)) {
            player->stop();
            auto *lost = new QObject(this);
            connect(watched, SIGNAL(audioOutputsChanged()), lost, SLOT(deleteLater()));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static bool isServerConnection(const QObject *object)
    {
        const char *name = object->metaObject()->className();
        return qstrcmp(name, "QPulseAudioEngine") == 0
            || qstrcmp(name, "QPulseAudioContextManager") == 0; // from Qt 6.10 on
    }

    QMediaPlayer *player;
};

} // namespace

CuePlayer::CuePlayer(QObject *owner)
    : owner(owner)
    , player(new QMediaPlayer(owner))
{
    makeOutput();
    if constexpr (needsGuard)
        guard = new ConnectionGuard(player);
}

void CuePlayer::makeOutput()
{
    audioOutput = new QAudioOutput(owner);
    player->setAudioOutput(audioOutput);
    audioOutput->setVolume(1.0F);
}

void CuePlayer::setFile(const QString &path)
{
    player->setSource(QUrl::fromLocalFile(path));
}

bool CuePlayer::hasFile() const
{
    return player->source().isValid();
}

void CuePlayer::restart()
{
    if (!prepare())
        return;
    player->stop();
    player->play();
}

void CuePlayer::rewindAndPlay()
{
    if (!prepare())
        return;
    // At the end of its file play() rewinds by itself. The oldest player, whose output was attached
    // there again, would block the program for a second if it was asked to rewind.
    if (!isOldestQt || player->mediaStatus() != QMediaPlayer::EndOfMedia)
        player->setPosition(0);
    player->play();
}

// Has the player heard on the device that is the default now. False when it must not be asked to
// play.
bool CuePlayer::prepare()
{
    if constexpr (isOldestQt)
        return prepareOldest();
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    // Playing on a device of PulseAudio that is gone would block the player's thread for good, and
    // with the next stop() the whole program.
    const bool isGone = !device.isDefault() && audioOutput->device().isDefault();
    if (isGone || (guard && !guard->children().isEmpty())) {
        player->stop();
        return false;
    }
    audioOutput->setDevice(device);
    return true;
}

// The oldest player's stream is moved to another default device by the sound server.
bool CuePlayer::prepareOldest()
{
    // The file is no sound, or was not there; or the sound server or its device has gone.
    if (player->mediaStatus() == QMediaPlayer::InvalidMedia)
        reopenSource();
    // Touched while it opens a file, the player can block the program for good. Asked to play what
    // turns out to be no sound, it would block the program for a second in each stop().
    if (player->mediaStatus() == QMediaPlayer::LoadingMedia) {
        connect(player, &QMediaPlayer::mediaStatusChanged, this, &CuePlayer::playOpened,
                Qt::UniqueConnection);
        return false;
    }
    // A sound is late by the time since its source was set, so that a cue chosen minutes before is
    // not heard; a freshly attached output is in time.
    player->setAudioOutput(nullptr);
    player->setAudioOutput(audioOutput);
    return true;
}

// Until it has played, or another file is opened; a last error of the old one may come in between.
void CuePlayer::playOpened()
{
    const QMediaPlayer::MediaStatus status = player->mediaStatus();
    if (status == QMediaPlayer::LoadedMedia)
        player->play();
    if (status == QMediaPlayer::LoadedMedia || status == QMediaPlayer::NoMedia)
        disconnect(player, &QMediaPlayer::mediaStatusChanged, this, &CuePlayer::playOpened);
}

// In this order nothing blocks. The old output may name a device that is gone.
void CuePlayer::reopenSource()
{
    const QUrl source = player->source();
    player->setAudioOutput(nullptr);
    player->setSource({});
    delete audioOutput;
    makeOutput();
    player->setSource(source);
}
