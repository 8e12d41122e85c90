#pragma once

#include <utility>

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QStringList>

#include "TimerEngine.h"

/// Writes down what an engine emits, over both signals in one list, so that their order can
/// be compared: "tick 299", "running", "stopped".
class EngineRecorder
{
public:
    explicit EngineRecorder(const TimerEngine &engine)
    {
        QObject::connect(&engine, &TimerEngine::tick, &context, [this](int seconds) {
            entries.append(QStringLiteral("tick %1").arg(seconds));
        });
        QObject::connect(&engine, &TimerEngine::stateChanged, &context, [this](bool running) {
            entries.append(running ? QStringLiteral("running") : QStringLiteral("stopped"));
        });
    }

    /// Adds a line of the test's own between the emissions.
    void mark(const QString &text) { entries.append(text); }

    /// What was written since the last call.
    QStringList take() { return std::exchange(entries, {}); }

private:
    QObject context;
    QStringList entries;
};

/// Lets one second pass for the engine, as its timer does: the timer's handler is run.
inline void passOneSecond(TimerEngine &engine)
{
    QMetaObject::invokeMethod(&engine, "onTimeout", Qt::DirectConnection);
}
