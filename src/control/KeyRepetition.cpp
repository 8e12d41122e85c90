#include "KeyRepetition.h"

#include <QKeyEvent>

// A shortcut takes the press away, but the question whether anybody else wants it comes first.
bool KeyRepetition::eventFilter(QObject *watched, QEvent *event)
{
    const bool isRelease = event->type() == QEvent::KeyRelease;
    if (isRelease || event->type() == QEvent::ShortcutOverride) {
        if (const auto *key = dynamic_cast<const QKeyEvent *>(event)) {
            repeating = !isRelease && key->nativeScanCode() == releasedKey
                && key->timestamp() == releaseTime;
            if (isRelease) {
                releasedKey = key->nativeScanCode();
                releaseTime = key->timestamp();
            }
        }
    }
    return QObject::eventFilter(watched, event);
}
