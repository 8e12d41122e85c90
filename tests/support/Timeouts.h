#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QList>
#include <QObject>
#include <QTimerEvent>

/// What a timer was started with.
struct Timeout
{
    int interval; ///< milliseconds
    Qt::TimerType type;

    bool operator==(const Timeout &) const = default;
};

/// Collects the timers of the process that time out while it lives, those of
/// QTimer::singleShot() included. A clock could not tell 1000 ms from 1001 on a busy machine;
/// over a long show they differ by minutes.
class Timeouts : public QObject
{
public:
    Timeouts() { qApp->installEventFilter(this); }

    QList<Timeout> seen;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Timer)
            return false;
        const int id = static_cast<QTimerEvent *>(event)->timerId();
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(watched);
        for (const auto &timer : timers) {
            if (timer.timerId == id)
                seen.append({timer.interval, timer.timerType});
        }
        return false;
    }
};
