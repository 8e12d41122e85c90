#pragma once

#include <QDir>
#include <QFile>
#include <QMediaPlayer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "ControlFixture.h"

/// A directory of the test's own with sounds in it.
class CueFiles
{
public:
    /// A steady tone, mono, 8-bit, in the plainest of formats.
    QString sound(const QString &name, int milliseconds) const
    {
        const int rate = 8000;
        const QByteArray samples = QByteArray(rate / 2 / 500, '\x70')
                                       .append(QByteArray(rate / 2 / 500, '\x90'))
                                       .repeated(milliseconds / 2);
        QByteArray bytes("RIFF");
        bytes.append(number(36 + samples.size(), 4)).append("WAVEfmt ").append(number(16, 4));
        bytes.append(number(1, 2)).append(number(1, 2)); // PCM, one channel
        bytes.append(number(rate, 4)).append(number(rate, 4));
        bytes.append(number(1, 2)).append(number(8, 2)); // bytes and bits a sample
        bytes.append("data").append(number(samples.size(), 4)).append(samples);
        return file(name, bytes);
    }

    QString file(const QString &name, const QByteArray &bytes) const
    {
        QString path = directory.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("Cannot write the test's cue %s", qPrintable(path));
        return path;
    }

    QString path() const { return directory.path(); }

private:
    static QByteArray number(qsizetype value, int size)
    {
        QByteArray bytes;
        for (int i = 0; i < size; ++i)
            bytes.append(char((value >> (8 * i)) & 0xff));
        return bytes;
    }

    QTemporaryDir directory;
};

/// Older than Qt 6.5: its player must not be asked to play a file that is broken, and not be
/// touched before play() while it opens one.
constexpr bool isOldestQt = QT_VERSION < QT_VERSION_CHECK(6, 5, 0);

/// A record with a cue that is switched on.
inline AppSettings withCue(const QString &path)
{
    return recordWith(&AppSettings::soundFilePath, path, &AppSettings::soundEnabled, true);
}

/// Both windows and an ear at the player: how often it has begun to play.
struct CueFixture : ControlFixture
{
    explicit CueFixture(const AppSettings &settings)
        : ControlFixture(settings)
        , player(window->findChild<QMediaPlayer *>())
        , states(player, &QMediaPlayer::playbackStateChanged)
    {
    }

    /// Waits until the file has been opened, so that what follows happens at once; or until
    /// it has turned out to be no sound.
    bool waitForFile(QMediaPlayer::MediaStatus status = QMediaPlayer::LoadedMedia) const
    {
        return waitFor(&QMediaPlayer::mediaStatusChanged,
                       [=, this] { return player->mediaStatus() == status; });
    }

    /// Waits until it is well under way: asked to stop earlier, the oldest Qt blocks.
    bool waitForSound(qint64 milliseconds = 1) const
    {
        return waitFor(&QMediaPlayer::positionChanged,
                       [=, this] { return player->position() >= milliseconds; });
    }

    /// How often it has begun to play up to now.
    int plays() const
    {
        int count = 0;
        for (const QList<QVariant> &change : states) {
            if (change.at(0).value<QMediaPlayer::PlaybackState>() == QMediaPlayer::PlayingState)
                ++count;
        }
        return count;
    }

    QMediaPlayer *player;
    QSignalSpy states;

private:
    // An event loop of its own: the player's messages come one an iteration, and QTRY_
    // macros sleep in between.
    template<typename Signal, typename Predicate>
    bool waitFor(Signal signal, Predicate predicate) const
    {
        QSignalSpy spy(player, signal);
        while (!predicate()) {
            if (!spy.wait())
                return false;
        }
        return true;
    }
};
