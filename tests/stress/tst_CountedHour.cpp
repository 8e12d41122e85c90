#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <vector>

#include <QEventLoop>
#include <QTest>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "Statistics.h"
#include "TestMain.h"

using Clock = std::chrono::steady_clock;

namespace {

constexpr int intervalMs = 1000;
constexpr std::size_t settlingTicks = 10;

int secondsToCount()
{
    const int asked = qEnvironmentVariableIntValue("VELMORA_COUNTED_SECONDS");
    return asked > 0 ? asked : 3600;
}

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// What is seen of one tick.
struct Tick
{
    Clock::time_point moment;
    int count;
};

void print(const char *what, const std::vector<double> &values)
{
    qInfo("%s: min %.3f, median %.3f, p99 %.3f, max %.3f ms", what,
          statistics::percentile(values, 0), statistics::percentile(values, 0.5),
          statistics::percentile(values, 0.99), statistics::percentile(values, 1));
}

} // namespace

/// One real hour, counted by the program's own windows while the preview is open. How late
/// each tick comes is read from the monotonic clock and printed.
class CountedHourTest : public QObject
{
    Q_OBJECT

private slots:
    void ticks_keepUpWithTheMonotonicClock()
    {
        const int seconds = secondsToCount();
        AppSettings settings;
        settings.defaultDuration = seconds / 2; // the second half is overtime
        ControlFixture fixture(settings);
        fixture.show();
        fixture.button("Preview")->click();
        QVERIFY(QTest::qWaitForWindowExposed(previewWindow()));

        QEventLoop show;
        std::vector<Tick> ticks;
        ticks.reserve(std::size_t(seconds));
        connect(&fixture.engine, &TimerEngine::tick, &show, [&](int count) {
            ticks.push_back({Clock::now(), count});
            if (int(ticks.size()) == seconds)
                show.quit();
        });
        const Clock::time_point start = Clock::now();
        fixture.letSecondsPass();
        fixture.engine.start();
        show.exec();

        std::vector<double> lateness;
        std::vector<double> gaps;
        std::vector<double> number;
        int lost = 0;
        for (std::size_t i = 0; i < ticks.size(); ++i) {
            QCOMPARE(ticks[i].count, seconds / 2 - int(i) - 1);
            const Clock::time_point before = i == 0 ? start : ticks[i - 1].moment;
            gaps.push_back(milliseconds(ticks[i].moment - before));
            lost += int(std::lround(gaps.back() / intervalMs)) - 1;
            number.push_back(double(i));
            lateness.push_back(milliseconds(ticks[i].moment - start) - double(i + 1) * intervalMs);
        }
        // In its first seconds Qt moves the timer by up to a twentieth of the interval at
        // a time, to moments at which others run out as well. Lateness is reported from there on.
        const auto settled = std::ptrdiff_t(std::min(settlingTicks, ticks.size() / 2));
        const double phase = *std::min_element(lateness.begin() + settled, lateness.end());
        std::vector<double> late(lateness.begin() + settled, lateness.end());
        for (double &value : late)
            value -= phase;
        const double drift = lateness.back() - lateness[std::size_t(settled)];
        qInfo("%d ticks in %.3f s of the monotonic clock; %d seconds without a tick", seconds,
              milliseconds(ticks.back().moment - start) / 1000, lost);
        qInfo("Against the start, the settled timer is at %.3f ms within the second", phase);
        print("Lateness of a tick against the settled timer's whole seconds", late);
        print("From one tick to the next", gaps);
        qInfo("Drift from tick %d to the last: %.3f ms", int(settled) + 1, drift);
        if (late.size() >= 3) {
            number.erase(number.begin(), number.begin() + settled);
            const statistics::Line line = statistics::fit(number, late);
            qInfo("Slope of the lateness: %.6f +- %.6f ms a tick (95 %%)", line.slope, line.margin);
        }
        // It counts ticks, so a wrong interval would add up, and a lost tick is a second too many.
        QVERIFY2(std::abs(lateness.back()) < intervalMs,
                 "The count has gone wrong by a second or more");
    }
};

VELMORA_TEST_MAIN(CountedHourTest, twoScreens())
#include "tst_CountedHour.moc"
