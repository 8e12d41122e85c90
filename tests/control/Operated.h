#pragma once

#include <QGuiApplication>
#include <QString>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "ControlFixture.h"

/// Presses and releases the key in a window that is on the screen.
inline void press(QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

/// Holds the key until it has repeated so many times: each time it comes up and goes down again.
inline void hold(QWidget &window, Qt::Key key, int repetitions)
{
    // Hiding the window that has the focus gives the next one the keyboard.
    const auto send = [&window, key](bool down, bool repeated) {
        QWindow *focused = QGuiApplication::focusWindow();
        QTest::simulateEvent(focused ? focused : window.windowHandle(), down, key, Qt::NoModifier,
                             QString(), repeated);
    };
    send(true, false);
    for (int i = 0; i < repetitions; ++i) {
        send(false, true);
        send(true, true);
    }
    send(false, false);
}

/// Gives the keyboard to the window; false if it does not get it.
inline bool focus(QWidget &window)
{
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

/// Both windows on the screen, a count of five minutes ten seconds into its run.
struct Operated : ControlFixture
{
    explicit Operated(const AppSettings &record = AppSettings())
        : ControlFixture(record)
    {
        show();
        engine.start();
        for (int i = 0; i < 10; ++i)
            passSecond(engine);
    }

    /// What the five actions change, in one short text.
    QString state() const
    {
        return QStringLiteral("%1 %2 %3")
            .arg(engine.isRunning() ? QStringLiteral("running") : QStringLiteral("stopped"))
            .arg(engine.remaining())
            .arg(output.isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"));
    }
};

/// Its state before any action, and after one that is only to show that the keys work.
inline const QString untouched = QStringLiteral("running 290 shown");
inline const QString paused = QStringLiteral("stopped 290 shown");
