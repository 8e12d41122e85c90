#include "TimerEngine.h"

#include <algorithm>

namespace {

constexpr int tickIntervalMs = 1000;

// The count is deliberately not guarded: beyond 32 bits it wraps round.
int sum(int seconds, int delta)
{
    return int(unsigned(seconds) + unsigned(delta));
}

} // namespace

TimerEngine::TimerEngine(QObject *parent)
    : QObject(parent)
{
    connect(&timer, &QTimer::timeout, this, &TimerEngine::onTimeout);
}

int TimerEngine::remaining() const
{
    return remainingSeconds;
}

bool TimerEngine::isCountUp() const
{
    return countUp;
}

bool TimerEngine::isRunning() const
{
    return timer.isActive();
}

void TimerEngine::start()
{
    if (timer.isActive())
        return;
    timer.start(tickIntervalMs);
    emit stateChanged(true);
}

void TimerEngine::pause()
{
    if (!timer.isActive())
        return;
    timer.stop();
    emit stateChanged(false);
}

void TimerEngine::reset()
{
    timer.stop();
    remainingSeconds = durationSeconds;
    emit tick(remainingSeconds);
    emit stateChanged(false);
}

void TimerEngine::setDuration(int secs)
{
    const bool wasRunning = timer.isActive();
    timer.stop();
    remainingSeconds = secs;
    durationSeconds = secs;
    emit tick(secs);
    if (wasRunning)
        emit stateChanged(false);
}

void TimerEngine::addSeconds(int delta)
{
    remainingSeconds = std::max(sum(remainingSeconds, delta), 0);
    durationSeconds = std::max(sum(durationSeconds, delta), 0);
    emit tick(remainingSeconds);
}

void TimerEngine::setCountUp(bool countUp)
{
    this->countUp = countUp;
}

void TimerEngine::setOvertimeEnabled(bool enabled)
{
    overtimeEnabled = enabled;
}

void TimerEngine::onTimeout()
{
    remainingSeconds = sum(remainingSeconds, countUp ? 1 : -1);
    emit tick(remainingSeconds);

    if (!countUp && remainingSeconds <= 0 && !overtimeEnabled) {
        timer.stop();
        emit stateChanged(false);
    }
}
