#include <QSignalSpy>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

QString figureStyle(const QString &color)
{
    return QStringLiteral("color:") + color
        + QStringLiteral(";font-size:48px;font-weight:bold;font-family:monospace;padding:4px "
                         "16px;");
}

} // namespace

class ControlWindowTimerTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_showsTheEnginesCount()
    {
        AppSettings record;
        record.defaultDuration = 45;
        const ControlFixture fixture(record);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:45"));
        QCOMPARE(fixture.figure()->styleSheet(), figureStyle("#ff8800"));
    }

    void tick_showsTheCount_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0 << "00:00";
        QTest::newRow("one") << 1 << "00:01";
        QTest::newRow("-1") << -1 << "-00:01";
        QTest::newRow("-5") << -5 << "-00:05";
        QTest::newRow("59") << 59 << "00:59";
        QTest::newRow("65") << 65 << "01:05";
        QTest::newRow("-754") << -754 << "-12:34";
        QTest::newRow("an hour") << 3600 << "60:00";
        QTest::newRow("1000 minutes") << 60000 << "1000:00";
        QTest::newRow("overtime of an hour") << -3661 << "-61:01";
    }

    void tick_showsTheCount()
    {
        QFETCH(int, seconds);
        const ControlFixture fixture;
        fixture.window->onTimerTick(seconds);
        QTEST(fixture.figure()->text(), "text");
    }

    void tick_colorsTheCount_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("countUp");
        QTest::addColumn<int>("threshold");
        QTest::addColumn<QString>("color");
        QTest::newRow("above the threshold") << 61 << false << 60 << "#00cc00";
        QTest::newRow("at the threshold") << 60 << false << 60 << "#ff8800";
        QTest::newRow("last second") << 1 << false << 60 << "#ff8800";
        QTest::newRow("zero") << 0 << false << 60 << "#ff2200";
        QTest::newRow("overtime") << -1 << false << 60 << "#ff2200";
        QTest::newRow("long overtime") << -754 << false << 60 << "#ff2200";
        QTest::newRow("above another threshold") << 11 << false << 10 << "#00cc00";
        QTest::newRow("at another threshold") << 10 << false << 10 << "#ff8800";
        QTest::newRow("smallest threshold, above") << 2 << false << 1 << "#00cc00";
        QTest::newRow("smallest threshold, at") << 1 << false << 1 << "#ff8800";
        for (const int seconds : {61, 60, 1, 0, -1, -754})
            QTest::addRow("up at %d", seconds) << seconds << true << 60 << "#00cc00";
    }

    void tick_colorsTheCount()
    {
        QFETCH(int, seconds);
        QFETCH(bool, countUp);
        QFETCH(int, threshold);
        QFETCH(QString, color);
        AppSettings record;
        record.warningThreshold = threshold;
        ControlFixture fixture(record);
        fixture.engine.setCountUp(countUp);
        fixture.window->onTimerTick(seconds);
        QCOMPARE(fixture.figure()->styleSheet(), figureStyle(color));
    }

    void tick_readsTheRecordAsItIs()
    {
        ControlFixture fixture;
        fixture.settings.timerColorWarning = QColor("#ABCDEF");
        fixture.settings.warningThreshold = 100;
        fixture.window->onTimerTick(100);
        QCOMPARE(fixture.figure()->styleSheet(), figureStyle("#abcdef"));
    }

    void engineTick_reachesThePreview()
    {
        ControlFixture fixture;
        passSecond(fixture.engine);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("04:59"));
        QCOMPARE(fixture.outputFigure()->text(), QStringLiteral("04:59"));
    }

    void start_startsTheEngine()
    {
        const ControlFixture fixture;
        fixture.button("▶  START")->click();
        QVERIFY(fixture.engine.isRunning());
    }

    void pause_pausesTheEngine()
    {
        ControlFixture fixture;
        fixture.engine.start();
        passSecond(fixture.engine);
        fixture.button("⏸  PAUSE")->click();
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
    }

    void reset_resetsTheEngine()
    {
        ControlFixture fixture;
        fixture.engine.start();
        passSecond(fixture.engine);
        fixture.button("↺  RESET")->click();
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("05:00"));
    }

    void stateChange_enablesStartOrPause_data()
    {
        QTest::addColumn<bool>("running");
        QTest::newRow("running") << true;
        QTest::newRow("stopped") << false;
    }

    void stateChange_enablesStartOrPause()
    {
        QFETCH(bool, running);
        const ControlFixture fixture;
        fixture.window->onStateChanged(running);
        QCOMPARE(fixture.button("▶  START")->isEnabled(), !running);
        QCOMPARE(fixture.button("⏸  PAUSE")->isEnabled(), running);
        QVERIFY(fixture.button("↺  RESET")->isEnabled());
    }

    void engineStateChange_reachesTheButtons()
    {
        ControlFixture fixture;
        fixture.engine.start();
        QVERIFY(!fixture.button("▶  START")->isEnabled());
        QVERIFY(fixture.button("⏸  PAUSE")->isEnabled());
        fixture.engine.pause();
        QVERIFY(fixture.button("▶  START")->isEnabled());
        QVERIFY(!fixture.button("⏸  PAUSE")->isEnabled());
    }

    void adjust_movesTheCountByAMinute_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("remaining");
        QTest::newRow("plus") << "+1 min" << 360;
        QTest::newRow("minus") << "−1 min" << 240;
    }

    void adjust_movesTheCountByAMinute()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        fixture.button(text)->click();
        QTEST(fixture.engine.remaining(), "remaining");
    }

    void adjust_leavesARunningCountRunning()
    {
        ControlFixture fixture;
        fixture.engine.start();
        fixture.button("+1 min")->click();
        fixture.button("−1 min")->click();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 300);
    }

    void set_loadsTheSetTimeRow_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<int>("duration");
        QTest::newRow("minutes and seconds") << 12 << 34 << 754;
        QTest::newRow("seconds only") << 0 << 7 << 7;
        QTest::newRow("zero") << 0 << 0 << 0;
        QTest::newRow("largest") << 999 << 59 << 59999;
    }

    void set_loadsTheSetTimeRow()
    {
        QFETCH(int, minutes);
        QFETCH(int, seconds);
        QFETCH(int, duration);
        ControlFixture fixture;
        fixture.enterTime(minutes, seconds);
        const QSignalSpy tick(&fixture.engine, &TimerEngine::tick);
        fixture.button("Set")->click();
        QCOMPARE(tick.count(), 1);
        QCOMPARE(tick.first().first().toInt(), duration);
        QCOMPARE(fixture.engine.remaining(), duration);
        passSecond(fixture.engine);
        fixture.engine.reset();
        QCOMPARE(fixture.engine.remaining(), duration);
    }

    void set_stopsARunningCount()
    {
        ControlFixture fixture;
        fixture.engine.start();
        fixture.button("Set")->click();
        QVERIFY(!fixture.engine.isRunning());
        QVERIFY(fixture.button("▶  START")->isEnabled());
    }

    void set_givesTheOutputItsFullScale()
    {
        ControlFixture fixture;
        fixture.enterTime(1, 40);
        fixture.button("Set")->click();
        QCOMPARE(fixture.outputBar()->value(), 1000);
        fixture.engine.addSeconds(-60); // 40 of the 100 seconds are left
        QCOMPARE(fixture.outputBar()->value(), 400);
    }

    void setTimeRow_loadsNothingByItself()
    {
        ControlFixture fixture;
        fixture.enterTime(1, 40);
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("05:00"));
    }

    void slots_areInvokableByName()
    {
        ControlFixture fixture;
        fixture.enterTime(2, 0);
        QVERIFY(QMetaObject::invokeMethod(fixture.window.get(), "onSetTime", Qt::DirectConnection));
        QCOMPARE(fixture.engine.remaining(), 120);
    }
};

VELMORA_TEST_MAIN(ControlWindowTimerTest)
#include "tst_ControlWindowTimer.moc"
