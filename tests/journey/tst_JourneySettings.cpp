#include <QTest>

#include "Desktop.h"
#include "Journey.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QColor chosenColour(0x33, 0x66, 0xff);
constexpr int chosenFontSize = 200;
const QString colourDialogTitle = QStringLiteral("Pick colour");

} // namespace

/// The Settings dialog of the built program, by keyboard: what OK changes at once and keeps
/// over a restart, and what Cancel and Escape leave alone.
class JourneySettings : public Journey
{
    Q_OBJECT

private slots:
    void accepted_takesEffectAtOnceAndIsKept();
    void dismissed_leavesTheStoreAsItWas_data();
    void dismissed_leavesTheStoreAsItWas();

private:
    void openSettings();
    void pickNormalColour();
    void enterFontSize();
    void enterDefaultDuration();
    void pressStartPauseKey();
};

// The dialog opens with the keyboard on its tab bar, on the first tab.
void JourneySettings::openSettings()
{
    program.clickSettings();
    AWAIT(desktop::activeWindow() == settingsTitle);
}

// From the tab bar on "Clock" to "Colors", its second button, and back to the tab bar.
void JourneySettings::pickNormalColour()
{
    desktop::press({"Right", "Tab", "Tab", "space"});
    AWAIT(desktop::activeWindow() == colourDialogTitle);
    desktop::press({"alt+h", "ctrl+a"});
    desktop::type(chosenColour.name());
    desktop::press("Return");
    AWAIT(desktop::activeWindow() == settingsTitle);
    desktop::press("shift+Tab", 2);
}

// From "Colors" to "Fonts", past the first stepper's button to its number, and back.
void JourneySettings::enterFontSize()
{
    desktop::press({"Right", "Tab", "Tab", "ctrl+a"});
    desktop::type(QString::number(chosenFontSize));
    desktop::press("shift+Tab", 2);
}

// From "Fonts" to "Timer", past two boxes and a stepper's button to the minutes (2), past two
// buttons to the seconds (30), and back.
void JourneySettings::enterDefaultDuration()
{
    desktop::press({"Right", "Tab", "Tab", "Tab", "Tab", "ctrl+a"});
    desktop::type("2");
    desktop::press({"Tab", "Tab", "Tab", "ctrl+a"});
    desktop::type("30");
    desktop::press("shift+Tab", 7);
}

// From "Timer" to "Shortcuts" and its first "Set Key", and back. No function key: newer tools
// for sending keys hold Alt with these.
void JourneySettings::pressStartPauseKey()
{
    desktop::press({"Right", "Tab", "space", "j", "shift+Tab"});
}

void JourneySettings::accepted_takesEffectAtOnceAndIsKept()
{
    writeStoreBytes("[General]\ndefaultDuration=1200\n");
    QVERIFY(program.start());
    AWAIT(outputShows("20:00", normalColour));
    desktop::press("space");
    AWAIT(!outputShows("20:00", normalColour));

    openSettings();
    pickNormalColour();
    enterFontSize();
    enterDefaultDuration();
    pressStartPauseKey();
    int before = -1;
    AWAIT((before = outputSeconds(1199, normalColour, 300)) > 0);
    // "OK" is the default button.
    desktop::press("Return");
    AWAIT(!desktop::hasWindow(settingsTitle));

    // The count has gone on as if nothing had happened, in the new dress.
    int after = -1;
    AWAIT((after = outputSeconds(before, chosenColour, chosenFontSize)) > 0);
    QVERIFY2(after > before - 120, qPrintable(QStringLiteral("%1, %2").arg(before).arg(after)));
    AWAIT(!desktop::hasRun(desktop::grab(desktop::secondMonitor), normalColour));
    AWAIT(controlShows(chosenColour));

    // The new key pauses and starts, the old one does nothing. The keyboard is put on the
    // Output window, where a blank presses no button.
    desktop::click(outputTitle, QPoint(960, 200));
    AWAIT(desktop::activeWindow() == outputTitle);
    desktop::press("j");
    // On a busy machine the key may come after one more tick.
    AWAIT([&] {
        after = outputSeconds(before, chosenColour, chosenFontSize);
        QTest::qWait(1500);
        return after > 0 && outputSeconds(before, chosenColour, chosenFontSize) == after;
    }());
    desktop::press("space");
    QTest::qWait(1500);
    QCOMPARE(outputSeconds(before, chosenColour, chosenFontSize), after);
    desktop::press("j");
    AWAIT(outputSeconds(after, chosenColour, chosenFontSize) < after);
    desktop::press("r");
    AWAIT(outputShows("20:00", chosenColour, chosenFontSize));
    QVERIFY(program.close());

    QVERIFY(program.start());
    AWAIT(outputShows("02:30", chosenColour, chosenFontSize));
    AWAIT(controlShows("02:30", chosenColour));
    desktop::press("j");
    AWAIT(!outputShows("02:30", chosenColour, chosenFontSize));
    const QByteArray store = storeBytes();
    QVERIFY(store.contains("timerColorNormal=#3366ff"));
    QVERIFY(store.contains("timerFontSize=200"));
    QVERIFY(store.contains("defaultDuration=150"));
    QVERIFY2(store.contains("shortcutStartPause=J"), store.constData());
}

void JourneySettings::dismissed_leavesTheStoreAsItWas_data()
{
    QTest::addColumn<QStringList>("keys");
    // From the tab bar backwards over "Check for Updates".
    QTest::newRow("Cancel") << QStringList{"shift+Tab", "shift+Tab", "space"};
    QTest::newRow("Escape") << QStringList{"Escape"};
}

void JourneySettings::dismissed_leavesTheStoreAsItWas()
{
    QFETCH(QStringList, keys);
    // Not as the program would write it, so that any writing at all changes it.
    const QByteArray stored = "[General]\ntimerFontSize=250\n\n\ndefaultDuration=1200\n";
    writeStoreBytes(stored);
    QVERIFY(program.start());
    openSettings();
    pickNormalColour();
    enterFontSize();
    enterDefaultDuration();
    pressStartPauseKey();
    desktop::press(keys);
    AWAIT(!desktop::hasWindow(settingsTitle));
    QCOMPARE(storeBytes(), stored);
    AWAIT(outputShows("20:00", normalColour, 250));
    desktop::click(outputTitle, QPoint(960, 200));
    AWAIT(desktop::activeWindow() == outputTitle);
    desktop::press("space");
    AWAIT(!outputShows("20:00", normalColour, 250));
    QVERIFY(program.close());
    QCOMPARE(storeBytes(), stored);
}

VELMORA_TEST_MAIN(JourneySettings)
#include "tst_JourneySettings.moc"
