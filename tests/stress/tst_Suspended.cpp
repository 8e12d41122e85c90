#include <chrono>
#include <vector>

#include <QProcess>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

using Clock = std::chrono::steady_clock;

namespace {

constexpr int sleepSeconds = 30;
constexpr int ticksBefore = 3;
constexpr int ticksAfter = 10;

} // namespace

/// The process is stopped in the middle of a count, as a lid closed or a debugger does, and
/// carries on half a minute later. The seconds that it slept are not made up for.
class SuspendedTest : public QObject
{
    Q_OBJECT

private slots:
    void continued_carriesOnWithoutCatchingUp()
    {
        ControlFixture fixture;
        fixture.show();
        QVERIFY(QTest::qWaitForWindowExposed(&fixture.output));
        std::vector<Clock::time_point> ticks;
        connect(&fixture.engine, &TimerEngine::tick, this, [&] { ticks.push_back(Clock::now()); });
        fixture.letSecondsPass();
        fixture.engine.start();
        QTRY_VERIFY_WITH_TIMEOUT(ticks.size() >= ticksBefore, 60'000);

        // Somebody else has to wake it up again.
        const QString script = QStringLiteral("kill -STOP %1; sleep %2; kill -CONT %1")
                                   .arg(QCoreApplication::applicationPid())
                                   .arg(sleepSeconds);
        QProcess sleeper;
        sleeper.start("sh", {"-c", script});
        QVERIFY(sleeper.waitForFinished(120'000));
        const Clock::time_point awake = Clock::now();
        const std::size_t before = ticks.size();
        QTRY_VERIFY_WITH_TIMEOUT(ticks.size() >= before + ticksAfter, 60'000);

        double longest = 0;
        int hurried = 0;
        for (std::size_t i = 1; i < ticks.size(); ++i) {
            const double gap = std::chrono::duration<double>(ticks[i] - ticks[i - 1]).count();
            longest = std::max(longest, gap);
            hurried += gap < 0.5 ? 1 : 0;
        }
        // cppcheck-suppress containerOutOfBounds // ticks have come since "before" was counted
        const double firstAfter = std::chrono::duration<double>(ticks[before] - awake).count();
        qInfo("Longest time without a tick: %.3f s", longest);
        qInfo("The first tick came %.3f s after the end of the sleep was noticed; %d tick(s) came "
              "within half a second of the one before",
              firstAfter, hurried);
        QVERIFY2(longest >= sleepSeconds - 1, "It was not asleep, so nothing was proven");
        QVERIFY(hurried <= 1);
        QCOMPARE(fixture.engine.remaining(), 300 - int(ticks.size()));
        QCOMPARE(fixture.outputFigure()->text(), fixture.figure()->text());
        QVERIFY(fixture.engine.isRunning());
    }
};

VELMORA_TEST_MAIN(SuspendedTest)
#include "tst_Suspended.moc"
