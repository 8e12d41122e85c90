#pragma once

#include <QObject>

class QAudioOutput;
class QMediaPlayer;
class QString;

/// Plays the cue's file on the sound device that is the default at that moment.
///
/// What the versions of Qt need for that, so that a sound is in time and the program never waits
/// for a sound server, is here. No error is reported: what cannot be played is silent.
class CuePlayer : public QObject
{
    Q_OBJECT

public:
    /// The player and its output, at full volume, become children of @p owner.
    explicit CuePlayer(QObject *owner);

    /// Opens @p path, which is not checked for existence.
    void setFile(const QString &path);
    /// Whether a file has been set.
    bool hasFile() const;

    /// Stops what is still heard, and plays the file from its beginning.
    void restart();
    /// Sets the position to the beginning and plays.
    void rewindAndPlay();

private:
    void makeOutput();
    bool prepare();
    bool prepareOldest();
    void playOpened();
    void reopenSource();

    QObject *owner;
    QMediaPlayer *player = nullptr;
    QAudioOutput *audioOutput = nullptr;
    QObject *guard = nullptr; // has a child for each lost connection to the sound server
};
