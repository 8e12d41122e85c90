#include "ControlWindow.h"

#include <QKeySequence>
#include <QShortcut>

#include "AppSettings.h"
#include "TimerEngine.h"

void ControlWindow::setupShortcuts()
{
    // The texts are stored in the portable form and deliberately parsed in the native one;
    // for plain key names the two are the same. A text that names no key yields a shortcut
    // that never fires, and two equal ones fire neither.
    const auto renew = [this](QShortcut *&shortcut, const QString &keys, auto action) {
        delete shortcut; // at once: the old key stops working before the new one starts
        shortcut = new QShortcut(QKeySequence(keys, QKeySequence::NativeText), this);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    // A key that is held acts once, except for the minutes.
    const auto renewOnce = [this, renew](QShortcut *&shortcut, const QString &keys, auto action) {
        renew(shortcut, keys, [this, action] {
            if (!keyRepetition.isRepeating())
                action();
        });
        shortcut->setAutoRepeat(false);
    };
    renewOnce(shortcutStartPauseSc, settings->shortcutStartPause, [this] { toggleStartPause(); });
    renewOnce(shortcutResetSc, settings->shortcutReset, [this] { engine->reset(); });
    renew(shortcutPlusMinSc, settings->shortcutPlusMin, [this] { engine->addSeconds(60); });
    renew(shortcutMinusMinSc, settings->shortcutMinusMin, [this] { engine->addSeconds(-60); });
    renewOnce(shortcutToggleOutputSc, settings->shortcutToggleOutput, [this] { toggleOutput(); });
}

void ControlWindow::toggleStartPause()
{
    if (engine->isRunning())
        engine->pause();
    else
        engine->start();
}
