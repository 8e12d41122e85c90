#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

const QString hiddenStyle = QStringLiteral(
    "color:transparent;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");
const QString criticalStyle = QStringLiteral(
    "color:#ff2200;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");
const QString warningStyle = QStringLiteral(
    "color:#ff8800;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");
const QString normalStyle = QStringLiteral(
    "color:#00cc00;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");

} // namespace

// The preview figure's own blink, which is not the Output window's.
class ControlWindowBlinkTest : public QObject
{
    Q_OBJECT

private slots:
    void timers_areReadyAtStart()
    {
        const ControlFixture fixture;
        QVERIFY(fixture.previewTimer()->isActive());
        QCOMPARE(fixture.previewTimer()->interval(), 500);
        QVERIFY(!fixture.previewTimer()->isSingleShot());
        QVERIFY(!fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.blinkTimer()->interval(), 500);
        QVERIFY(!fixture.blinkTimer()->isSingleShot());
    }

    void tick_startsOrEndsTheBlink_data()
    {
        QTest::addColumn<bool>("blinking");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("countUp");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("blinksThen");
        QTest::newRow("idle, zero, up") << false << 0 << true << true << false;
        QTest::newRow("idle, zero, up, disabled") << false << 0 << true << false << false;
        QTest::newRow("idle, zero, down") << false << 0 << false << true << true;
        QTest::newRow("idle, zero, down, disabled") << false << 0 << false << false << false;
        QTest::newRow("idle, overtime, down") << false << -1 << false << true << false;
        QTest::newRow("idle, overtime, up") << false << -1 << true << true << false;
        QTest::newRow("idle, positive, down") << false << 1 << false << true << false;
        QTest::newRow("idle, positive, up") << false << 1 << true << true << false;
        QTest::newRow("blinking, zero, up") << true << 0 << true << true << false;
        QTest::newRow("blinking, zero, up, disabled") << true << 0 << true << false << false;
        QTest::newRow("blinking, zero, down") << true << 0 << false << true << true;
        QTest::newRow("blinking, zero, down, disabled") << true << 0 << false << false << true;
        QTest::newRow("blinking, overtime, down") << true << -1 << false << true << true;
        QTest::newRow("blinking, overtime, down, disabled") << true << -1 << false << false << true;
        QTest::newRow("blinking, overtime, up") << true << -1 << true << true << false;
        QTest::newRow("blinking, positive, down") << true << 1 << false << true << false;
        QTest::newRow("blinking, positive, up") << true << 1 << true << true << false;
        QTest::newRow("blinking, positive, down, disabled") << true << 1 << false << false << false;
    }

    void tick_startsOrEndsTheBlink()
    {
        QFETCH(bool, blinking);
        QFETCH(int, seconds);
        QFETCH(bool, countUp);
        QFETCH(bool, enabled);
        ControlFixture fixture;
        if (blinking)
            fixture.window->onTimerTick(0);
        QCOMPARE(fixture.blinkTimer()->isActive(), blinking);
        fixture.settings.blinkEnabled = enabled;
        fixture.engine.setCountUp(countUp);
        fixture.window->onTimerTick(seconds);
        QTEST(fixture.blinkTimer()->isActive(), "blinksThen");
    }

    void zeroAtStart_blinksFromTheStart()
    {
        AppSettings record;
        record.defaultDuration = 0;
        const ControlFixture fixture(record);
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:00"));
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
    }

    void start_showsTheFigureFirst()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        QCOMPARE(fixture.blinkTimer()->interval(), 500);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:00"));
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
    }

    void phases_alternate()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        QStringList styles;
        for (int i = 0; i < 4; ++i) {
            runOut(fixture.blinkTimer());
            styles.append(fixture.figure()->styleSheet());
        }
        QCOMPARE(styles, QStringList({hiddenStyle, criticalStyle, hiddenStyle, criticalStyle}));
    }

    void blink_passesEveryHalfSecond()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.figure()->styleSheet(), hiddenStyle, 2000);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.figure()->styleSheet(), criticalStyle, 2000);
    }

    void hiddenPhase_keepsTheText()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:00"));
    }

    void hiddenPhase_leavesTheLabelAtATick()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.remaining(), -1);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:00"));
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
    }

    // A second zero finds the blink running and does not begin it anew.
    void hiddenPhase_leavesTheLabelAtZero()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.engine.setDuration(0);
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
    }

    void return_showsTheEnginesCount()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        passSecond(fixture.engine);
        runOut(fixture.blinkTimer());
        QCOMPARE(fixture.figure()->text(), QStringLiteral("-00:01"));
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
        QVERIFY(fixture.blinkTimer()->isActive());
    }

    // The direction is read when the figure is drawn.
    void return_endsABlinkThatIsOver()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.engine.setCountUp(true);
        runOut(fixture.blinkTimer());
        QVERIFY(!fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), normalStyle);
    }

    void end_showsAHiddenFigure_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("countUp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("style");
        QTest::newRow("positive, down") << 60 << false << "01:00" << warningStyle;
        QTest::newRow("zero, up") << 0 << true << "00:00" << normalStyle;
        QTest::newRow("positive, up") << 60 << true << "01:00" << normalStyle;
        QTest::newRow("overtime, up") << -60 << true << "-01:00" << normalStyle;
    }

    void end_showsAHiddenFigure()
    {
        QFETCH(int, seconds);
        QFETCH(bool, countUp);
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.engine.setCountUp(countUp);
        fixture.window->onTimerTick(seconds);
        QTEST(fixture.figure()->text(), "text");
        QTEST(fixture.figure()->styleSheet(), "style");
    }

    void restart_beginsVisible()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.engine.setDuration(60);
        fixture.engine.setDuration(0);
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
        runOut(fixture.blinkTimer());
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
    }

    void overtime_goesOnBlinking()
    {
        AppSettings record;
        record.defaultDuration = 1;
        ControlFixture fixture(record);
        fixture.engine.start();
        for (int i = 0; i < 4; ++i)
            passSecond(fixture.engine);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("-00:03"));
        QVERIFY(fixture.blinkTimer()->isActive());
    }

    // Unlike in the Output window. The next drawing of the figure ends it.
    void directionChange_doesNotEndTheBlink()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.button("▲  Count Up")->click();
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
    }

    void blinkSetting_switchedOffWhileRunning_doesNotEndIt()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        fixture.settings.blinkEnabled = false;
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.blinkTimer()->isActive());
        runOut(fixture.blinkTimer());
        runOut(fixture.blinkTimer());
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
    }

    void blinkSetting_switchedOnInOvertime_doesNotStartIt()
    {
        AppSettings record;
        record.blinkEnabled = false;
        ControlFixture fixture(record);
        fixture.engine.setDuration(0);
        passSecond(fixture.engine);
        fixture.settings.blinkEnabled = true;
        fixture.window->onSettingsChanged();
        passSecond(fixture.engine);
        QVERIFY(!fixture.blinkTimer()->isActive());
    }

    // The Output window waits for the next zero instead.
    void blinkSetting_switchedOnAtZero_startsWithTheRedraw()
    {
        AppSettings record;
        record.blinkEnabled = false;
        ControlFixture fixture(record);
        fixture.engine.setDuration(0);
        QVERIFY(!fixture.blinkTimer()->isActive());
        fixture.settings.blinkEnabled = true;
        fixture.window->onSettingsChanged(); // redraws the zero
        QVERIFY(fixture.blinkTimer()->isActive());
    }

    void pause_doesNotEndTheBlink()
    {
        AppSettings record;
        record.defaultDuration = 1;
        ControlFixture fixture(record);
        fixture.engine.start();
        passSecond(fixture.engine);
        fixture.engine.pause();
        QVERIFY(fixture.blinkTimer()->isActive());
    }
};

VELMORA_TEST_MAIN(ControlWindowBlinkTest)
#include "tst_ControlWindowBlink.moc"
