#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "EngineRecorder.h"
#include "TestMain.h"
#include "Timeouts.h"
#include "TimerEngine.h"

/// What passes second by second, and that the seconds are real.
class TimerEngineTicksTest : public QObject
{
    Q_OBJECT

private slots:
    void countDown_withOvertimeOff_stopsAtZero()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(2);
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{"tick 1"});
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick 0", "stopped"}));
    }

    void countDown_withOvertimeOn_goesOnBelowZero()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(true);
        engine.setDuration(2);
        engine.start();
        EngineRecorder recorder(engine);
        for (int i = 0; i < 5; ++i)
            passOneSecond(engine);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(),
                 QStringList({"tick 1", "tick 0", "tick -1", "tick -2", "tick -3"}));
    }

    void countDown_fromZeroWithOvertimeOff_ticksOnceAndStops()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(0);
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -1", "stopped"}));
    }

    void countDown_negativeWithOvertimeOff_stopsAtTheNextTick()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(-30);
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -31", "stopped"}));
    }

    void countUp_passesZeroWithOvertimeOff()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setCountUp(true);
        engine.setDuration(-2);
        engine.start();
        EngineRecorder recorder(engine);
        for (int i = 0; i < 3; ++i)
            passOneSecond(engine);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -1", "tick 0", "tick 1"}));
    }

    void countUp_passesTheDuration()
    {
        TimerEngine engine;
        engine.setCountUp(true);
        engine.setDuration(2);
        engine.start();
        EngineRecorder recorder(engine);
        for (int i = 0; i < 3; ++i)
            passOneSecond(engine);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick 3", "tick 4", "tick 5"}));
    }

    void setCountUp_whileRunning_countsFromTheNextTick()
    {
        TimerEngine engine;
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        engine.setCountUp(true);
        recorder.mark("up");
        passOneSecond(engine);
        engine.setCountUp(false);
        recorder.mark("down");
        passOneSecond(engine);
        QCOMPARE(recorder.take(), QStringList({"tick 299", "up", "tick 300", "down", "tick 299"}));
    }

    void setCountUp_offBelowZeroWithOvertimeOff_stopsAtTheNextTick()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setCountUp(true);
        engine.setDuration(-5);
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        engine.setCountUp(false);
        QVERIFY(engine.isRunning());
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -4", "tick -5", "stopped"}));
    }

    void addSeconds_inOvertime_movesWhatResetRestores()
    {
        TimerEngine engine;
        engine.setDuration(10);
        engine.start();
        for (int i = 0; i < 40; ++i)
            passOneSecond(engine);
        EngineRecorder recorder(engine);
        engine.addSeconds(60);
        engine.reset();
        QCOMPARE(recorder.take(), QStringList({"tick 30", "tick 70", "stopped"}));
    }

    // Marks between the ticks instead of a clock: however late a busy machine delivers them,
    // the event loop delivers them in the order in which they are due.
    void start_ticksEveryRealSecond()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        const auto markAt = [&](int milliseconds) {
            QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [&recorder, milliseconds] {
                recorder.mark(QString::number(milliseconds));
            });
        };
        for (int milliseconds : {800, 1400, 1800, 2400})
            markAt(milliseconds);
        // A second start while running does not begin the second anew.
        QTimer::singleShot(700, Qt::PreciseTimer, &engine, &TimerEngine::start);
        engine.start();

        QStringList seen;
        const auto isOver = [&] {
            seen += recorder.take();
            return seen.contains("2400");
        };
        QTRY_VERIFY(isOver());
        QCOMPARE(seen,
                 QStringList({"running", "800", "tick 299", "1400", "1800", "tick 298", "2400"}));
    }

    // The interval itself is looked at: a millisecond more would show only in a long show.
    void second_isOfAThousandMilliseconds()
    {
        TimerEngine engine;
        QSignalSpy ticks(&engine, &TimerEngine::tick);
        const Timeouts timeouts;
        engine.start();
        QVERIFY(ticks.wait());
        QVERIFY(timeouts.seen.contains(Timeout{1000, Qt::CoarseTimer}));
    }

    void pause_silencesTheRealTimer()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.start();
        engine.pause();
        bool over = false;
        QTimer::singleShot(1200, Qt::PreciseTimer, this, [&over] { over = true; });
        QTRY_VERIFY(over);
        QCOMPARE(recorder.take(), QStringList({"running", "stopped"}));
    }
};

VELMORA_TEST_MAIN(TimerEngineTicksTest)
#include "tst_TimerEngineTicks.moc"
