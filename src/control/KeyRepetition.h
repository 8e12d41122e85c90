#pragma once

#include <QObject>

/// Distinguishes the repetitions of a held key from a press, for shortcuts that are to act once.
///
/// A shortcut that does not repeat relies on Qt to mark repetitions. On X11 Qt marks only some: the
/// server sends a release and a press of the same time for each, and where Qt has not yet read the
/// press when it looks at the release, it takes both for real ones. This object watches the
/// application's keys there; elsewhere Qt is right, and it does nothing.
class KeyRepetition : public QObject
{
    Q_OBJECT

public:
    explicit KeyRepetition(QObject *parent = nullptr);

    /// Whether the key that activates a shortcut right now has been held since it did so before.
    bool isRepeating() const { return repeating; }

protected:
    /// Filters nothing; it only looks.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    quint32 releasedKey = 0;
    quint64 releaseTime = 0;
    bool repeating = false;
};
