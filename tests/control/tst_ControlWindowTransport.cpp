#include <QSignalSpy>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

const QString countdownText = QStringLiteral("▼  Countdown");
const QString countUpText = QStringLiteral("▲  Count Up");
const QStringList viewTexts{"⏱  Timer", "🕐  Clock", "⊞  Both"};

/// The texts of the checked buttons among those given.
QStringList checkedOf(const ControlFixture &fixture, const QStringList &texts)
{
    QStringList checked;
    for (const QString &text : texts) {
        if (fixture.button(text)->isChecked())
            checked.append(text);
    }
    return checked;
}

QStringList checkedDirections(const ControlFixture &fixture)
{
    return checkedOf(fixture, {countdownText, countUpText});
}

/// The Output window does not tell its direction, but only a count-down begins to blink at
/// zero there; and only what blinks shows again at a positive count.
bool outputCountsUp(ControlFixture &fixture)
{
    fixture.output.onTimerTick(5);
    const QString shown = fixture.outputFigure()->styleSheet();
    fixture.output.onTimerTick(0);
    fixture.output.tickBlink();
    fixture.output.onTimerTick(5);
    return fixture.outputFigure()->styleSheet() != shown;
}

/// One more than the number of the mode: 1 for the figure alone, 2 for the clock alone, 3 for
/// both, and 0 for neither.
int outputLines(const ControlFixture &fixture)
{
    return (fixture.outputFigure()->isHidden() ? 0 : 1)
        + (fixture.outputClock()->isHidden() ? 0 : 2);
}

} // namespace

/// Transport, Set Time row, direction and view: what drives the engine and the Output window.
class ControlWindowTransportTest : public QObject
{
    Q_OBJECT

private slots:
    void transport_drivesTheEngine()
    {
        ControlFixture fixture;
        const QAbstractButton *start = fixture.button("▶  START");
        const QAbstractButton *pause = fixture.button("⏸  PAUSE");
        fixture.button("▶  START")->click();
        QVERIFY(fixture.engine.isRunning());
        QVERIFY(!start->isEnabled());
        QVERIFY(pause->isEnabled());
        passSecond(fixture.engine);
        QCOMPARE(fixture.figure()->text(), "04:59");
        QCOMPARE(fixture.outputFigure()->text(), "04:59");

        fixture.button("⏸  PAUSE")->click();
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
        QVERIFY(start->isEnabled());
        QVERIFY(!pause->isEnabled());

        fixture.engine.start();
        fixture.button("↺  RESET")->click();
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.figure()->text(), "05:00");
    }

    void stateChange_enablesStartOrPause()
    {
        const ControlFixture fixture;
        for (const bool running : {true, false}) {
            fixture.window->onStateChanged(running);
            QCOMPARE(fixture.button("▶  START")->isEnabled(), !running);
            QCOMPARE(fixture.button("⏸  PAUSE")->isEnabled(), running);
            QVERIFY(fixture.button("↺  RESET")->isEnabled());
        }
    }

    void adjust_movesTheCountByAMinute()
    {
        ControlFixture fixture;
        fixture.engine.start();
        fixture.button("+1 min")->click();
        QCOMPARE(fixture.engine.remaining(), 360);
        fixture.button("−1 min")->click();
        fixture.button("−1 min")->click();
        QCOMPARE(fixture.engine.remaining(), 240);
        QVERIFY(fixture.engine.isRunning());
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
        fixture.engine.start();
        const QSignalSpy tick(&fixture.engine, &TimerEngine::tick);
        fixture.enterTime(minutes, seconds);
        QCOMPARE(fixture.engine.remaining(), 300); // the row loads nothing by itself
        fixture.button("Set")->click();
        QCOMPARE(tick.count(), 1);
        QCOMPARE(tick.first().first().toInt(), duration);
        QVERIFY(!fixture.engine.isRunning());
        passSecond(fixture.engine);
        fixture.engine.reset();
        QCOMPARE(fixture.engine.remaining(), duration);
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

    void direction_followsTheLastClick_data()
    {
        QTest::addColumn<QStringList>("clicks");
        QTest::addColumn<bool>("countUp");
        QTest::newRow("up") << QStringList{countUpText} << true;
        QTest::newRow("up twice") << QStringList{countUpText, countUpText} << true;
        QTest::newRow("up and down") << QStringList{countUpText, countdownText} << false;
        QTest::newRow("down, which it is") << QStringList{countdownText} << false;
    }

    void direction_followsTheLastClick()
    {
        QFETCH(QStringList, clicks);
        QFETCH(bool, countUp);
        ControlFixture fixture;
        for (const QString &text : std::as_const(clicks))
            fixture.button(text)->click();
        QCOMPARE(checkedDirections(fixture), QStringList{clicks.last()});
        QCOMPARE(fixture.engine.isCountUp(), countUp);
        QCOMPARE(outputCountsUp(fixture), countUp);
    }

    void directionClick_showsWithTheNextTickOnly()
    {
        ControlFixture fixture(recordWith(&AppSettings::defaultDuration, 30));
        fixture.engine.start();
        fixture.button(countUpText)->click();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 30);
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#ff8800;"));
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.remaining(), 31);
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#00cc00;"));
    }

    void countModeChange_leavesTheButtons()
    {
        for (const bool countUp : {true, false}) {
            ControlFixture fixture;
            // So that a change of the buttons would be seen for both values.
            fixture.button(countUp ? countdownText : countUpText)->click();
            const QStringList before = checkedDirections(fixture);
            fixture.window->onCountModeChanged(countUp);
            QCOMPARE(checkedDirections(fixture), before);
            QCOMPARE(fixture.engine.isCountUp(), countUp);
            QCOMPARE(outputCountsUp(fixture), countUp);
        }
    }

    void view_followsTheLastClick_data()
    {
        QTest::addColumn<QList<int>>("modes");
        QTest::newRow("timer") << QList<int>{0};
        QTest::newRow("timer twice") << QList<int>{0, 0};
        QTest::newRow("clock") << QList<int>{1};
        QTest::newRow("both, which it is") << QList<int>{2};
        QTest::newRow("timer, both") << QList<int>{0, 2};
        QTest::newRow("clock, timer") << QList<int>{1, 0};
        QTest::newRow("timer, clock") << QList<int>{0, 1};
        QTest::newRow("clock, both") << QList<int>{1, 2};
    }

    void view_followsTheLastClick()
    {
        QFETCH(QList<int>, modes);
        const ControlFixture clicked;
        const ControlFixture changed;
        for (const int mode : std::as_const(modes)) {
            clicked.button(viewTexts.at(mode))->click();
            changed.window->onViewChanged(mode);
        }
        for (const ControlFixture *fixture : {&clicked, &changed}) {
            QCOMPARE(checkedOf(*fixture, viewTexts), QStringList{viewTexts.at(modes.last())});
            QCOMPARE(outputLines(*fixture), modes.last() + 1);
        }
    }

    // The Output window would take any mode, and keeps the last one: it decides whether the
    // clock goes on.
    void viewChange_outOfRange_unchecksAllAndTellsNothing()
    {
        for (const int mode : {-1, 3, 1000}) {
            ControlFixture fixture;
            fixture.window->onViewChanged(0);
            fixture.outputClock()->setText("stale");
            fixture.window->onViewChanged(mode);
            QCOMPARE(checkedOf(fixture, viewTexts), QStringList());
            QCOMPARE(outputLines(fixture), 1);
            fixture.output.tickClock();
            QCOMPARE(fixture.outputClock()->text(), "stale");
        }
    }
};

VELMORA_TEST_MAIN(ControlWindowTransportTest)
#include "tst_ControlWindowTransport.moc"
