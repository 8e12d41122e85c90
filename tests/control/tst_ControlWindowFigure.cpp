#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

QString figureStyle(const QString &color)
{
    return "color:" + color
        + ";font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;";
}

const QString hiddenStyle = figureStyle("transparent");
const QString criticalStyle = figureStyle("#ff2200");
const QString warningStyle = figureStyle("#ff8800");
const QString normalStyle = figureStyle("#00cc00");

} // namespace

/// The window's large figure and its blink, which is not the Output window's.
class ControlWindowFigureTest : public QObject
{
    Q_OBJECT

private slots:
    void construction_showsTheEnginesCount()
    {
        const ControlFixture fixture(recordWith(&AppSettings::defaultDuration, 45));
        QCOMPARE(fixture.figure()->text(), "00:45");
        QCOMPARE(fixture.figure()->styleSheet(), warningStyle);
    }

    void tick_showsTheCountInItsColor_data()
    {
        QTest::addColumn<int>("threshold");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("countUp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("style");
        QTest::newRow("above the threshold") << 60 << 61 << false << "01:01" << normalStyle;
        QTest::newRow("at the threshold") << 60 << 60 << false << "01:00" << warningStyle;
        QTest::newRow("last second") << 60 << 1 << false << "00:01" << warningStyle;
        QTest::newRow("zero") << 60 << 0 << false << "00:00" << criticalStyle;
        QTest::newRow("overtime") << 60 << -754 << false << "-12:34" << criticalStyle;
        QTest::newRow("above another threshold") << 10 << 11 << false << "00:11" << normalStyle;
        QTest::newRow("at another threshold") << 10 << 10 << false << "00:10" << warningStyle;
        QTest::newRow("up, at the threshold") << 60 << 60 << true << "01:00" << normalStyle;
        QTest::newRow("up, zero") << 60 << 0 << true << "00:00" << normalStyle;
        QTest::newRow("up, overtime") << 60 << -754 << true << "-12:34" << normalStyle;
    }

    void tick_showsTheCountInItsColor()
    {
        QFETCH(int, threshold);
        QFETCH(int, seconds);
        QFETCH(bool, countUp);
        ControlFixture fixture;
        fixture.settings.warningThreshold = threshold; // the record is read as it is
        fixture.engine.setCountUp(countUp);
        fixture.window->onTimerTick(seconds);
        QTEST(fixture.figure()->text(), "text");
        QTEST(fixture.figure()->styleSheet(), "style");
    }

    void timers_areReadyAtStart()
    {
        const ControlFixture fixture;
        for (const QTimer *timer : {fixture.previewTimer(), fixture.blinkTimer()}) {
            QCOMPARE(timer->interval(), 500);
            QVERIFY(!timer->isSingleShot());
        }
        QVERIFY(fixture.previewTimer()->isActive());
        QVERIFY(!fixture.blinkTimer()->isActive());
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
        const ControlFixture fixture(recordWith(&AppSettings::defaultDuration, 0));
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.blinkTimer()->interval(), 500);
        QCOMPARE(fixture.figure()->text(), "00:00");
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
    }

    void phases_alternate()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        QStringList styles{fixture.figure()->styleSheet()};
        for (int i = 0; i < 3; ++i) {
            runOut(fixture.blinkTimer());
            styles.append(fixture.figure()->styleSheet());
        }
        QCOMPARE(styles, QStringList({criticalStyle, hiddenStyle, criticalStyle, hiddenStyle}));
    }

    // A second zero finds the blink running and does not begin it again.
    void hiddenPhase_leavesTheLabelUntilItsReturn()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.engine.setDuration(0);
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.remaining(), -1);
        QCOMPARE(fixture.figure()->text(), "00:00");
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
        runOut(fixture.blinkTimer());
        QCOMPARE(fixture.figure()->text(), "-00:01");
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
        QVERIFY(fixture.blinkTimer()->isActive());
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

    void overtimeAndPause_goOnBlinking()
    {
        ControlFixture fixture(recordWith(&AppSettings::defaultDuration, 1));
        fixture.engine.start();
        for (int i = 0; i < 4; ++i)
            passSecond(fixture.engine);
        fixture.engine.pause();
        QCOMPARE(fixture.figure()->text(), "-00:03");
        QVERIFY(fixture.blinkTimer()->isActive());
    }

    // Unlike in the Output window. The next drawing of the figure ends it.
    void directionChange_endsTheBlinkWithTheNextDrawingOnly()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        fixture.button("▲  Count Up")->click();
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), hiddenStyle);
        runOut(fixture.blinkTimer());
        QVERIFY(!fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), normalStyle);
    }

    void blinkSetting_switchedOffWhileBlinking_doesNotEndIt()
    {
        ControlFixture fixture;
        fixture.engine.setDuration(0);
        fixture.settings.blinkEnabled = false;
        fixture.window->onSettingsChanged();
        runOut(fixture.blinkTimer());
        runOut(fixture.blinkTimer());
        QVERIFY(fixture.blinkTimer()->isActive());
        QCOMPARE(fixture.figure()->styleSheet(), criticalStyle);
    }

    // The Output window waits for the next zero instead.
    void blinkSetting_switchedOn_startsItWithARedrawOfZero()
    {
        ControlFixture fixture(recordWith(&AppSettings::blinkEnabled, false));
        fixture.engine.setDuration(0);
        QVERIFY(!fixture.blinkTimer()->isActive());
        fixture.settings.blinkEnabled = true;
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.blinkTimer()->isActive());
    }
};

VELMORA_TEST_MAIN(ControlWindowFigureTest)
#include "tst_ControlWindowFigure.moc"
