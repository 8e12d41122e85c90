#include "OperatorShortcuts.h"

#include <utility>

#include <QGuiApplication>
#include <QKeySequence>
#include <QShortcut>
#include <QWidget>

#include "AppSettings.h"
#include "TimerEngine.h"

OperatorShortcuts::OperatorShortcuts(const AppSettings *settings, TimerEngine *engine,
                                     std::function<void()> toggleOutput, QWidget *window)
    : settings(settings)
    , engine(engine)
    , toggleOutput(std::move(toggleOutput))
    , window(window)
{
    // Elsewhere Qt marks every repetition.
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        qApp->installEventFilter(&keyRepetition);
}

void OperatorShortcuts::setupShortcuts()
{
    renewOnce(shortcutStartPauseSc, settings->shortcutStartPause, [this] { toggleStartPause(); });
    renewOnce(shortcutResetSc, settings->shortcutReset, [this] { engine->reset(); });
    renew(shortcutPlusMinSc, settings->shortcutPlusMin, [this] { engine->addSeconds(60); });
    renew(shortcutMinusMinSc, settings->shortcutMinusMin, [this] { engine->addSeconds(-60); });
    renewOnce(shortcutToggleOutputSc, settings->shortcutToggleOutput, toggleOutput);
}

// The texts are stored in the portable form and deliberately parsed in the native one; for plain
// key names the two are the same.
void OperatorShortcuts::renew(QShortcut *&shortcut, const QString &keys, const Action &action)
{
    delete shortcut; // at once: the old key stops working before the new one starts
    shortcut = new QShortcut(QKeySequence(keys, QKeySequence::NativeText), window);
    shortcut->setContext(Qt::ApplicationShortcut);
    QObject::connect(shortcut, &QShortcut::activated, window, action);
}

void OperatorShortcuts::renewOnce(QShortcut *&shortcut, const QString &keys, const Action &action)
{
    renew(shortcut, keys, [this, action] {
        if (!keyRepetition.isRepeating())
            action();
    });
    shortcut->setAutoRepeat(false);
}

void OperatorShortcuts::toggleStartPause()
{
    if (engine->isRunning())
        engine->pause();
    else
        engine->start();
}
