#include <limits>

#include <QTest>

#include "EngineRecorder.h"
#include "TestMain.h"
#include "TimerEngine.h"

/// What each command does to the engine and what it emits, stopped and running.
class TimerEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void countBeyond32Bits_wrapsRound()
    {
        TimerEngine engine;
        engine.setDuration(std::numeric_limits<int>::min());
        QMetaObject::invokeMethod(&engine, "onTimeout");
        QCOMPARE(engine.remaining(), std::numeric_limits<int>::max());
        engine.addSeconds(60);
        QCOMPARE(engine.remaining(), 0);
        engine.setDuration(std::numeric_limits<int>::max());
        engine.addSeconds(60);
        engine.reset(); // to the duration, which has wrapped round on its own
        QCOMPARE(engine.remaining(), 0);
    }

    void start_whileStopped_runsAndReportsIt()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.start();
        QVERIFY(engine.isRunning());
        QCOMPARE(engine.remaining(), 300);
        QCOMPARE(recorder.take(), QStringList{"running"});
    }

    void start_whileRunning_isSilent()
    {
        TimerEngine engine;
        engine.start();
        EngineRecorder recorder(engine);
        engine.start();
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList());
    }

    // The start is not refused: a second later the engine ticks -1 and stops (TimerEngineTicks).
    void start_atZeroWithOvertimeOff_runs()
    {
        TimerEngine engine;
        engine.setDuration(0);
        engine.setOvertimeEnabled(false);
        EngineRecorder recorder(engine);
        engine.start();
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{"running"});
    }

    void pause_whileRunning_stopsAndReportsIt()
    {
        TimerEngine engine;
        engine.start();
        EngineRecorder recorder(engine);
        engine.pause();
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{"stopped"});
    }

    void pause_whileStopped_isSilent()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.pause();
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList());
    }

    void pause_keepsTheCountForTheNextStart()
    {
        TimerEngine engine;
        engine.start();
        passOneSecond(engine);
        engine.pause();
        QCOMPARE(engine.remaining(), 299);
        engine.start();
        EngineRecorder recorder(engine);
        passOneSecond(engine);
        QCOMPARE(recorder.take(), QStringList{"tick 298"});
    }

    void reset_whileRunning_restoresStopsAndReportsBoth()
    {
        TimerEngine engine;
        engine.setDuration(90);
        engine.start();
        passOneSecond(engine);
        EngineRecorder recorder(engine);
        engine.reset();
        QVERIFY(!engine.isRunning());
        QCOMPARE(engine.remaining(), 90);
        QCOMPARE(recorder.take(), QStringList({"tick 90", "stopped"}));
    }

    void reset_whileStopped_stillReportsStopped()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.reset();
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick 300", "stopped"}));
    }

    void reset_restoresTheLastDuration()
    {
        TimerEngine engine;
        engine.setDuration(600);
        engine.setDuration(45);
        passOneSecond(engine);
        engine.reset();
        QCOMPARE(engine.remaining(), 45);
    }

    void setDuration_whileRunning_stopsAndReportsBoth()
    {
        TimerEngine engine;
        engine.start();
        EngineRecorder recorder(engine);
        engine.setDuration(120);
        QVERIFY(!engine.isRunning());
        QCOMPARE(engine.remaining(), 120);
        QCOMPARE(recorder.take(), QStringList({"tick 120", "stopped"}));
    }

    void setDuration_whileStopped_reportsOnlyTheCount()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.setDuration(120);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{"tick 120"});
    }

    void setDuration_takesAnyValue_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::newRow("zero") << 0;
        QTest::newRow("one") << 1;
        QTest::newRow("negative") << -75;
        QTest::newRow("beyond the longest that can be typed") << 123456789;
        QTest::newRow("largest") << std::numeric_limits<int>::max();
        QTest::newRow("smallest") << std::numeric_limits<int>::min();
    }

    void setDuration_takesAnyValue()
    {
        QFETCH(int, seconds);
        TimerEngine engine;
        EngineRecorder recorder(engine);
        engine.setDuration(seconds);
        QCOMPARE(engine.remaining(), seconds);
        engine.reset();
        QCOMPARE(engine.remaining(), seconds);
        const QString tick = QStringLiteral("tick %1").arg(seconds);
        QCOMPARE(recorder.take(), QStringList({tick, tick, "stopped"}));
    }

    void addSeconds_movesCountAndDuration_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("passed");
        QTest::addColumn<int>("delta");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("restored");
        QTest::newRow("a minute more") << 300 << 0 << 60 << 360 << 360;
        QTest::newRow("a minute less") << 300 << 10 << -60 << 230 << 240;
        QTest::newRow("nothing") << 300 << 10 << 0 << 290 << 300;
        QTest::newRow("down to exactly zero") << 60 << 0 << -60 << 0 << 0;
        QTest::newRow("one below zero") << 59 << 0 << -60 << 0 << 0;
        QTest::newRow("count floored, duration not") << 300 << 270 << -60 << 0 << 240;
        QTest::newRow("overtime back above zero") << 10 << 40 << 60 << 30 << 70;
        QTest::newRow("overtime by less") << 10 << 40 << -60 << 0 << 0;
        QTest::newRow("overtime with too little added") << 10 << 40 << 20 << 0 << 30;
        QTest::newRow("overtime to exactly zero") << 10 << 40 << 30 << 0 << 40;
    }

    // Count and duration are moved separately, each with a floor of zero, and adding nothing is
    // reported all the same.
    void addSeconds_movesCountAndDuration()
    {
        QFETCH(int, duration);
        QFETCH(int, passed);
        QFETCH(int, delta);
        QFETCH(int, count);
        QFETCH(int, restored);
        TimerEngine engine;
        engine.setDuration(duration);
        for (int i = 0; i < passed; ++i)
            passOneSecond(engine);
        EngineRecorder recorder(engine);
        engine.addSeconds(delta);
        QCOMPARE(engine.remaining(), count);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("tick %1").arg(count)});
        engine.reset();
        QCOMPARE(engine.remaining(), restored);
    }

    // A count-down that is taken to zero stops at its next tick, not at once.
    void addSeconds_whileRunning_keepsRunning()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(30);
        engine.start();
        EngineRecorder recorder(engine);
        engine.addSeconds(-60);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList{"tick 0"});
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -1", "stopped"}));
    }

    void addSeconds_floorsTheDurationOnItsOwn()
    {
        TimerEngine engine;
        engine.setCountUp(true);
        engine.setDuration(30);
        for (int i = 0; i < 100; ++i)
            passOneSecond(engine);
        engine.addSeconds(-60);
        QCOMPARE(engine.remaining(), 70);
        engine.reset();
        QCOMPARE(engine.remaining(), 0);
    }

    void setCountUp_isSilent_data()
    {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("countUp");
        QTest::newRow("up while stopped") << false << true;
        QTest::newRow("down while stopped") << false << false;
        QTest::newRow("up while running") << true << true;
        QTest::newRow("down while running") << true << false;
    }

    void setCountUp_isSilent()
    {
        QFETCH(bool, running);
        QFETCH(bool, countUp);
        TimerEngine engine;
        engine.setCountUp(!countUp);
        if (running)
            engine.start();
        EngineRecorder recorder(engine);
        engine.setCountUp(countUp);
        QCOMPARE(engine.isCountUp(), countUp);
        QCOMPARE(engine.isRunning(), running);
        QCOMPARE(engine.remaining(), 300);
        QCOMPARE(recorder.take(), QStringList());
    }

    void setOvertimeEnabled_isSilent_data()
    {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on while stopped") << false << true;
        QTest::newRow("off while stopped") << false << false;
        QTest::newRow("on while running") << true << true;
        QTest::newRow("off while running") << true << false;
    }

    void setOvertimeEnabled_isSilent()
    {
        QFETCH(bool, running);
        QFETCH(bool, enabled);
        TimerEngine engine;
        if (running)
            engine.start();
        EngineRecorder recorder(engine);
        engine.setOvertimeEnabled(enabled);
        QCOMPARE(engine.isRunning(), running);
        QCOMPARE(engine.remaining(), 300);
        QCOMPARE(recorder.take(), QStringList());
    }

    // It stops at its next tick, not at once.
    void setOvertimeEnabled_offWhileNegative_keepsRunning()
    {
        TimerEngine engine;
        engine.setDuration(-5);
        engine.start();
        EngineRecorder recorder(engine);
        engine.setOvertimeEnabled(false);
        QVERIFY(engine.isRunning());
        QCOMPARE(recorder.take(), QStringList());
        passOneSecond(engine);
        QVERIFY(!engine.isRunning());
        QCOMPARE(recorder.take(), QStringList({"tick -6", "stopped"}));
    }
};

VELMORA_TEST_MAIN(TimerEngineTest)
#include "tst_TimerEngine.moc"
