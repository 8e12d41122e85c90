#include <QTest>

#include "Desktop.h"
#include "Journey.h"
#include "Store.h"
#include "TestMain.h"

/// The message on the audience's monitor, and presets over a restart of the built program.
class JourneyMessage : public Journey
{
    Q_OBJECT

private slots:
    void return_pushesTheMessage();
    void push_trimsAndKeepsTheMessageOnBlankText();
    void clear_takesTheMessageAway();
    void preset_loadsItsTime();
    void newPreset_isKeptOverARestart();
    void unchangedRun_writesNoStore();
};

void JourneyMessage::return_pushesTheMessage()
{
    QVERIFY(program.start());
    AWAIT(outputShowsNoMessage());
    program.clickMessageEdit();
    // "o", "r" and the blank are shortcuts elsewhere; in the edit they are text.
    desktop::type("Two more questions");
    desktop::press("Return");
    AWAIT(outputShowsMessage("Two more questions"));
    QVERIFY(outputShows("05:00", normalColour));
}

void JourneyMessage::push_trimsAndKeepsTheMessageOnBlankText()
{
    QVERIFY(program.start());
    program.clickMessageEdit();
    desktop::type("  Lights   ");
    program.clickPush();
    AWAIT(outputShowsMessage("Lights"));
    program.clickMessageEdit();
    desktop::press("ctrl+a");
    desktop::type("   ");
    desktop::press("Return");
    // What follows on the screen proves that the keys before it have been dealt with.
    desktop::press("Up");
    AWAIT(outputShows("06:00", normalColour));
    QVERIFY(outputShowsMessage("Lights"));
}

void JourneyMessage::clear_takesTheMessageAway()
{
    QVERIFY(program.start());
    program.clickMessageEdit();
    desktop::type("Lights");
    desktop::press("Return");
    AWAIT(outputShowsMessage("Lights"));
    program.clickClear();
    AWAIT(outputShowsNoMessage());
}

void JourneyMessage::preset_loadsItsTime()
{
    QVERIFY(program.start());
    program.clickPreset(2);
    AWAIT(outputShows("15:00", normalColour));
    AWAIT(controlShows("15:00", normalColour));
}

void JourneyMessage::newPreset_isKeptOverARestart()
{
    QVERIFY(program.start());
    program.enterTime(7, 30);
    program.clickAddToPreset();
    AWAIT(storeBytes().contains("val=450"));
    QVERIFY(program.close());

    QVERIFY(program.start());
    program.clickPreset(4);
    AWAIT(outputShows("07:30", normalColour));
}

void JourneyMessage::unchangedRun_writesNoStore()
{
    QVERIFY(program.start());
    desktop::press("Up");
    AWAIT(outputShows("06:00", normalColour));
    QVERIFY(program.close());
    QCOMPARE(storeBytes(), QByteArray());
}

VELMORA_TEST_MAIN(JourneyMessage)
#include "tst_JourneyMessage.moc"
