#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

const QString countdownText = QStringLiteral("▼  Countdown");
const QString countUpText = QStringLiteral("▲  Count Up");

// The texts of the checked buttons among those given.
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

QStringList checkedViews(const ControlFixture &fixture)
{
    return checkedOf(fixture, {"⏱  Timer", "🕐  Clock", "⊞  Both"});
}

// The Output window does not tell its direction, but only a count-down begins to blink at
// zero there; and only what blinks shows again at a positive count.
bool outputCountsUp(ControlFixture &fixture)
{
    fixture.output.onTimerTick(5);
    const QString shown = fixture.outputFigure()->styleSheet();
    fixture.output.onTimerTick(0);
    fixture.output.tickBlink();
    fixture.output.onTimerTick(5);
    return fixture.outputFigure()->styleSheet() != shown;
}

// One more than the number of the mode: 1 for the figure alone, 2 for the clock alone, 3 for
// both, and 0 for neither.
int outputLines(const ControlFixture &fixture)
{
    return (fixture.outputFigure()->isHidden() ? 0 : 1)
        + (fixture.outputClock()->isHidden() ? 0 : 2);
}

} // namespace

// Count direction and output view: the hand-made exclusive buttons.
class ControlWindowSelectorsTest : public QObject
{
    Q_OBJECT

private slots:
    void outputProbe_tellsTheDirection_data()
    {
        QTest::addColumn<bool>("countUp");
        QTest::newRow("down") << false;
        QTest::newRow("up") << true;
    }

    void outputProbe_tellsTheDirection()
    {
        QFETCH(bool, countUp);
        ControlFixture fixture;
        fixture.output.setCountUp(countUp);
        QCOMPARE(outputCountsUp(fixture), countUp);
    }

    void direction_followsTheLastClick_data()
    {
        QTest::addColumn<QStringList>("clicks");
        QTest::addColumn<bool>("countUp");
        QTest::newRow("up") << QStringList{countUpText} << true;
        QTest::newRow("up twice") << QStringList{countUpText, countUpText} << true;
        QTest::newRow("up and down") << QStringList{countUpText, countdownText} << false;
        QTest::newRow("down, which it is") << QStringList{countdownText} << false;
        QTest::newRow("down twice")
            << QStringList{countUpText, countdownText, countdownText} << false;
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
    }

    void directionClick_reachesTheOutput_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("countUp");
        QTest::newRow("up") << countUpText << true;
        QTest::newRow("down") << countdownText << false;
    }

    void directionClick_reachesTheOutput()
    {
        QFETCH(QString, text);
        QFETCH(bool, countUp);
        ControlFixture fixture;
        fixture.output.setCountUp(!countUp);
        fixture.button(text)->click();
        QCOMPARE(outputCountsUp(fixture), countUp);
    }

    void directionClick_leavesTheCountAlone()
    {
        ControlFixture fixture;
        fixture.engine.start();
        passSecond(fixture.engine);
        fixture.button(countUpText)->click();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.remaining(), 300);
    }

    void directionClick_colorsThePreviewAtTheNextTickOnly()
    {
        AppSettings record;
        record.defaultDuration = 30;
        ControlFixture fixture(record);
        fixture.button(countUpText)->click();
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#ff8800;"));
        passSecond(fixture.engine);
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#00cc00;"));
    }

    void countModeChange_leavesTheButtons_data() { outputProbe_tellsTheDirection_data(); }

    void countModeChange_leavesTheButtons()
    {
        QFETCH(bool, countUp);
        const ControlFixture fixture;
        // So that a change of the buttons would be seen for both values.
        fixture.button(countUp ? countdownText : countUpText)->click();
        const QStringList before = checkedDirections(fixture);
        fixture.window->onCountModeChanged(countUp);
        QCOMPARE(checkedDirections(fixture), before);
        QCOMPARE(fixture.engine.isCountUp(), countUp);
    }

    void countModeChange_reachesTheOutput_data() { outputProbe_tellsTheDirection_data(); }

    void countModeChange_reachesTheOutput()
    {
        QFETCH(bool, countUp);
        ControlFixture fixture;
        fixture.output.setCountUp(!countUp);
        fixture.window->onCountModeChanged(countUp);
        QCOMPARE(outputCountsUp(fixture), countUp);
    }

    void view_followsTheLastClick_data()
    {
        QTest::addColumn<QStringList>("clicks");
        QTest::addColumn<int>("lines");
        QTest::newRow("timer") << QStringList{"⏱  Timer"} << 1;
        QTest::newRow("timer twice") << QStringList{"⏱  Timer", "⏱  Timer"} << 1;
        QTest::newRow("clock") << QStringList{"🕐  Clock"} << 2;
        QTest::newRow("clock twice") << QStringList{"🕐  Clock", "🕐  Clock"} << 2;
        QTest::newRow("both, which it is") << QStringList{"⊞  Both"} << 3;
        QTest::newRow("timer, both") << QStringList{"⏱  Timer", "⊞  Both"} << 3;
        QTest::newRow("clock, timer") << QStringList{"🕐  Clock", "⏱  Timer"} << 1;
        QTest::newRow("timer, clock") << QStringList{"⏱  Timer", "🕐  Clock"} << 2;
        QTest::newRow("clock, both") << QStringList{"🕐  Clock", "⊞  Both"} << 3;
    }

    void view_followsTheLastClick()
    {
        QFETCH(QStringList, clicks);
        const ControlFixture fixture;
        for (const QString &text : std::as_const(clicks))
            fixture.button(text)->click();
        QCOMPARE(checkedViews(fixture), QStringList{clicks.last()});
        QTEST(outputLines(fixture), "lines");
    }

    void viewChange_checksTheButtonOfTheMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lines");
        QTest::newRow("timer") << 0 << "⏱  Timer" << 1;
        QTest::newRow("clock") << 1 << "🕐  Clock" << 2;
        QTest::newRow("both") << 2 << "⊞  Both" << 3;
    }

    void viewChange_checksTheButtonOfTheMode()
    {
        QFETCH(int, mode);
        QFETCH(QString, text);
        const ControlFixture fixture;
        fixture.button(mode == 2 ? "⏱  Timer" : "⊞  Both")->click();
        fixture.window->onViewChanged(mode);
        QCOMPARE(checkedViews(fixture), QStringList{text});
        QTEST(outputLines(fixture), "lines");
    }

    void viewChange_outOfRange_unchecksAllAndTellsNothing_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("below") << -1;
        QTest::newRow("above") << 3;
        QTest::newRow("far above") << 1000;
    }

    // The Output window would take any mode, and keeps the last one: it decides whether the
    // clock goes on.
    void viewChange_outOfRange_unchecksAllAndTellsNothing()
    {
        QFETCH(int, mode);
        ControlFixture fixture;
        fixture.window->onViewChanged(0);
        fixture.outputClock()->setText(QStringLiteral("stale"));
        fixture.window->onViewChanged(mode);
        QCOMPARE(checkedViews(fixture), QStringList());
        QCOMPARE(outputLines(fixture), 1);
        fixture.output.tickClock();
        QCOMPARE(fixture.outputClock()->text(), QStringLiteral("stale"));
    }
};

VELMORA_TEST_MAIN(ControlWindowSelectorsTest)
#include "tst_ControlWindowSelectors.moc"
