#include <QTest>

#include "Desktop.h"
#include "Journey.h"
#include "Store.h"
#include "TestMain.h"

/// The count and its colours, on both windows of the built program.
class JourneyFigure : public Journey
{
    Q_OBJECT

private slots:
    void start_showsTheDefaultDurationInItsColour_data();
    void start_showsTheDefaultDurationInItsColour();
    void firstRun_showsFiveMinutes();
    void startKey_countsDownIntoTheWarningColour();
    void countDown_reachesZeroInTheCriticalColour();
    void countDown_belowZeroIsNegativeAndCritical();
    void overtime_countsOn();
    void zero_blinksInBothWindows();
    void plusAndMinusKeys_moveAMinute();
    void heldMinusKey_repeats();
    void heldStartKey_startsOnce();
    void resetKey_stopsAndRestoresTheDuration();
    void setTimeRow_loadsTheTypedTime();
};

void JourneyFigure::start_showsTheDefaultDurationInItsColour_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("61") << 61 << "01:01" << normalColour;
    QTest::newRow("60") << 60 << "01:00" << warningColour;
    QTest::newRow("1") << 1 << "00:01" << warningColour;
    QTest::newRow("0") << 0 << "00:00" << criticalColour;
    QTest::newRow("59940") << 59940 << "999:00" << normalColour;
}

void JourneyFigure::start_showsTheDefaultDurationInItsColour()
{
    QFETCH(int, seconds);
    QFETCH(QString, figure);
    QFETCH(QColor, colour);
    writeStoreBytes("[General]\ndefaultDuration=" + QByteArray::number(seconds) + '\n');
    QVERIFY(program.start());
    AWAIT(outputShows(figure, colour));
    AWAIT(controlShows(figure, colour));
}

void JourneyFigure::firstRun_showsFiveMinutes()
{
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    AWAIT(controlShows("05:00", normalColour));
}

void JourneyFigure::startKey_countsDownIntoTheWarningColour()
{
    writeStoreBytes("[General]\ndefaultDuration=61\n");
    QVERIFY(program.start());
    AWAIT(outputShows("01:01", normalColour));
    desktop::press("space");
    AWAIT(desktop::shows(desktop::secondMonitor, warningColour));
    // Figure and bar are drawn one after the other, which a slow machine lets one see.
    AWAIT(!desktop::shows(desktop::secondMonitor, normalColour));
    desktop::press("space");
    int paused = -1;
    AWAIT((paused = outputSeconds(60, warningColour, 300)) >= 0);
    QTest::qWait(1500);
    QCOMPARE(outputSeconds(60, warningColour, 300), paused);
}

// With overtime off the count stops by itself on the tick that is looked at here.
void JourneyFigure::countDown_reachesZeroInTheCriticalColour()
{
    writeStoreBytes("[General]\ndefaultDuration=1\novertimeEnabled=false\n");
    QVERIFY(program.start());
    AWAIT(outputShows("00:01", warningColour));
    desktop::press("space");
    AWAIT(outputShows("00:00", criticalColour));
    AWAIT(controlShows("00:00", criticalColour));
}

void JourneyFigure::countDown_belowZeroIsNegativeAndCritical()
{
    writeStoreBytes("[General]\ndefaultDuration=0\novertimeEnabled=false\n");
    QVERIFY(program.start());
    AWAIT(outputShows("00:00", criticalColour));
    desktop::press("space");
    AWAIT(outputShows("-00:01", criticalColour));
    AWAIT(controlShows("-00:01", criticalColour));
}

void JourneyFigure::overtime_countsOn()
{
    writeStoreBytes("[General]\ndefaultDuration=1\nblinkEnabled=false\n");
    QVERIFY(program.start());
    AWAIT(outputShows("00:01", warningColour));
    desktop::press("space");
    AWAIT(desktop::shows(desktop::secondMonitor, criticalColour));
    AWAIT(!outputShows("00:00", criticalColour) && !outputShows("-00:01", criticalColour));
    QVERIFY(desktop::shows(desktop::secondMonitor, criticalColour));
}

void JourneyFigure::zero_blinksInBothWindows()
{
    writeStoreBytes("[General]\ndefaultDuration=0\n");
    QVERIFY(program.start());
    for (int phase = 0; phase < 2; ++phase) {
        AWAIT(outputShows("00:00", criticalColour));
        AWAIT(!desktop::shows(desktop::secondMonitor, criticalColour));
        AWAIT(controlShows("00:00", criticalColour));
        AWAIT(!controlShows(criticalColour));
    }
}

void JourneyFigure::plusAndMinusKeys_moveAMinute()
{
    writeStoreBytes("[General]\ndefaultDuration=61\n");
    QVERIFY(program.start());
    AWAIT(outputShows("01:01", normalColour));
    desktop::press("Up", 2);
    AWAIT(outputShows("03:01", normalColour));
    AWAIT(controlShows("03:01", normalColour));
    desktop::press("Down", 3);
    AWAIT(outputShows("00:01", warningColour));
    desktop::press("Down");
    AWAIT(outputShows("00:00", criticalColour));
}

void JourneyFigure::heldMinusKey_repeats()
{
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    const desktop::HeldKey down("Down");
    AWAIT(outputShows("00:00", criticalColour));
}

// Were it to repeat, no second would pass between a start and the next pause.
void JourneyFigure::heldStartKey_startsOnce()
{
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    const desktop::HeldKey space("space");
    AWAIT(outputSeconds(5 * 60, normalColour, 300) < 5 * 60 - 2);
}

void JourneyFigure::resetKey_stopsAndRestoresTheDuration()
{
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    desktop::press("space");
    AWAIT(!outputShows("05:00", normalColour));
    desktop::press("r");
    AWAIT(outputShows("05:00", normalColour));
    QTest::qWait(1500);
    QVERIFY(outputShows("05:00", normalColour));
}

void JourneyFigure::setTimeRow_loadsTheTypedTime()
{
    QVERIFY(program.start());
    program.setTime(12, 34);
    AWAIT(outputShows("12:34", normalColour));
    AWAIT(controlShows("12:34", normalColour));
    // The spin boxes' keys are their own, but the button now has the focus.
    desktop::press("space");
    AWAIT(!outputShows("12:34", normalColour));
}

VELMORA_TEST_MAIN(JourneyFigure)
#include "tst_JourneyFigure.moc"
