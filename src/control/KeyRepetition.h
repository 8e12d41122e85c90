#pragma once

#include <QObject>

/// Distinguishes the repetitions of a held key from a press, for shortcuts that are to act once.
///
/// A shortcut that does not repeat relies on Qt to mark repetitions. On X11 Qt marks only some: the
/// server sends a release and a press of the same time for each, and where Qt has not yet read the
/// press when it looks at the release, it takes both for real ones. Installed as an event filter of
/// the application, this object sees which they are.
class KeyRepetition : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether the key that activates a shortcut right now has been held since it did so before.
    /// False as long as no key has been seen.
    bool isRepeating() const { return repeating; }

    /// Filters nothing; it only looks.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    quint32 releasedKey = 0;
    quint64 releaseTime = 0;
    bool repeating = false;
};
