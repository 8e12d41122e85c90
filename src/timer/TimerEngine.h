#pragma once

#include <QObject>
#include <QTimer>

/// The running time of an event: a signed count of whole seconds, moved by one a second.
///
/// Its slots are commands, its signals report every change. It counts the ticks of its
/// timer, not a clock, so that no second is skipped. Negative values are overtime. No input
/// is rejected.
///
/// The order of the signals and slots is part of the interface: they are also
/// invoked by name and index.
class TimerEngine : public QObject
{
    Q_OBJECT

public:
    /// Holds 300 s, stopped, counting down, overtime on. Emits nothing.
    explicit TimerEngine(QObject *parent = nullptr);

    /// The current count in seconds; negative in overtime.
    int remaining() const;
    /// True when each tick adds a second, false when it takes one off.
    bool isCountUp() const;
    /// True while the one-second timer is active.
    bool isRunning() const;

signals:
    /// The count is now @p seconds; emitted also when it was set to the value that it had.
    void tick(int seconds);
    /// The one-second timer was started (true) or stopped (false).
    void stateChanged(bool running);

public slots:
    /// Starts ticking, the first time after 1000 ms; does nothing while running.
    /// Emits stateChanged(true). Deliberately does not look at the count: at zero
    /// with overtime off the first tick goes to -1 and stops.
    void start();
    /// Stops and keeps the count; emits stateChanged(false). Does nothing while stopped.
    void pause();
    /// Stops and restores the duration. Emits tick(), then stateChanged(false), deliberately
    /// also while stopped: a receiver may prepare for the next run whenever it is emitted.
    void reset();
    /// Stops and makes @p secs both the count and the duration. Emits tick(), then
    /// stateChanged(false) if it was running. Any value is taken, negative ones too.
    void setDuration(int secs);
    /// Adds @p delta seconds to the count and to the duration, each floored at 0 on
    /// its own; emits tick(). Overtime that stays negative therefore snaps to 0.
    void addSeconds(int delta);
    /// Sets the direction; it counts from the next tick on. Emits nothing.
    void setCountUp(bool countUp);
    /// Sets whether a count-down goes on below zero. Emits nothing and stops nothing
    /// by itself: a count that is negative already stops at its next tick.
    void setOvertimeEnabled(bool enabled);

private slots:
    /// One second has passed: moves the count and emits tick(). A count-down at or
    /// below zero with overtime off then stops and emits stateChanged(false).
    void onTimeout();

private:
    QTimer timer;
    int remainingSeconds = 300;
    int durationSeconds = 300;
    bool countUp = false;
    bool overtimeEnabled = true;
};
