#include <QRegularExpression>
#include <QTest>

#include "Accessible.h"
#include "Operated.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

// In the order of the screen.
const QStringList namesAtStart{"button About Velmora",
                               "button Settings",
                               "stop Timer controls",
                               "button Countdown",
                               "button Count up",
                               "button Start",
                               "button Pause",
                               "button Reset",
                               "button Add 1 minute",
                               "button Subtract 1 minute",
                               "button Decrease minutes",
                               "spin Minutes (SET TIME)",
                               "button Increase minutes",
                               "button Decrease seconds",
                               "spin Seconds",
                               "button Increase seconds",
                               "button Set time",
                               "button Add to presets",
                               "list Presets (PRESETS  —  DRAG TO REORDER)",
                               "item 5 min",
                               "item 10 min",
                               "item 15 min",
                               "item 30 min",
                               "button Timer view",
                               "button Clock view",
                               "button Both views",
                               "edit Message overlay (MESSAGE OVERLAY)",
                               "button Push message",
                               "button Clear message",
                               "check Enable sound cue",
                               "button Browse for sound file",
                               "button Test sound",
                               "button Show Output Window",
                               "button Output preview"};

QAbstractButton *buttonSaying(const ControlFixture &fixture, const QString &name)
{
    const auto buttons = fixture.window->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->accessibleName() == name)
            return button;
    }
    return nullptr;
}

} // namespace

/// What a screen reader says of the Control window and of its preview, and the way that Tab
/// takes through it.
class ControlWindowAccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    // Before the start and while it runs, with either text of the Output window's button.
    void controls_haveNamesThatCanBeSaidAndDiffer()
    {
        ControlFixture fixture;
        fixture.showControl();
        QStringList names = namesAtStart;
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(controlLines(*fixture.window), names);
            QCOMPARE(unsayableNames(*fixture.window).join("; "), QString());
            QCOMPARE(sharedButtonNames(*fixture.window).join("; "), QString());
            QCOMPARE(unlabelledInputs(*fixture.window).join("; "), QString());
            fixture.engine.start();
            fixture.window->toggleOutput();
            names.replaceInStrings("Show Output", "Hide Output");
        }
        QVERIFY(buttonSaying(fixture, "Show Output Window"));
    }

    // A label with an underlined letter would give its input a key of its own.
    void label_takesNoKey()
    {
        const ControlFixture fixture;
        int buddies = 0;
        const QList<QLabel *> labels = fixture.window->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (!label->buddy())
                continue;
            ++buddies;
            QVERIFY2(!label->text().contains('&'), qPrintable(label->text()));
        }
        QCOMPARE(buddies, 3);
    }

    void stepButton_changesTheValueThatItSays()
    {
        const ControlFixture fixture;
        const auto timeAfter = [&fixture](const char *name) {
            buttonSaying(fixture, name)->click();
            return QString(fixture.minutes()->text() + ", " + fixture.seconds()->text());
        };
        QCOMPARE(timeAfter("Increase minutes"), "6 min, 0 sec");
        QCOMPARE(timeAfter("Increase seconds"), "6 min, 1 sec");
        QCOMPARE(timeAfter("Decrease minutes"), "5 min, 1 sec");
        QCOMPARE(timeAfter("Decrease seconds"), "5 min, 0 sec");
    }

    // While the blink hides it, too.
    void figure_isItsOwnName()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(textLines(*fixture.window).contains("05:00 (Timer)"));
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        QVERIFY(fixture.figure()->styleSheet().contains("transparent"));
        QVERIFY(textLines(*fixture.window).contains("00:00 (Timer)"));
        QVERIFY(!textLines(*fixture.window).contains("05:00 (Timer)"));
    }

    void soundFile_isSaidWithWhatItIs()
    {
        ControlFixture without;
        without.showControl();
        QVERIFY(textLines(*without.window).contains("No file selected (Sound file)"));
        ControlFixture with(recordWith(&AppSettings::soundFilePath, "/gone/gong.wav"));
        with.showControl();
        QVERIFY(textLines(*with.window).contains("gong.wav (Sound file)"));
    }

    void previewPicture_hasAName()
    {
        ControlFixture fixture;
        fixture.show();
        buttonSaying(fixture, "Output preview")->click();
        runOut(fixture.previewTimer());
        QVERIFY(previewLabel() && !previewLabel()->pixmap().isNull());
        QCOMPARE(controlLines(*previewWindow()),
                 QStringList{"picture Picture of the Output window"});
        QCOMPARE(unsayableNames(*previewWindow()).join("; "), QString());
        QCOMPARE(tabStops(*previewWindow()).size(), 0);
    }

    // At every control but the items, among which the arrow keys move; and round again.
    void tab_goesDownTheScreenFromTheTop()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QList<QWidget *> stops = tabStops(*fixture.window);
        QCOMPARE(stops.size(),
                 namesAtStart.size() - namesAtStart.filter(QRegularExpression("^item ")).size());
        QCOMPARE(tabDetours(*fixture.window).join("; "), QString());
        QVERIFY(focus(*fixture.window));
        QCOMPARE(fixture.window->focusWidget(), fixture.named<QWidget>("appTitle"));
        for (QWidget *stop : stops) {
            QCOMPARE(fixture.window->focusWidget(), stop);
            press(*fixture.window, Qt::Key_Tab);
        }
        QCOMPARE(fixture.window->focusWidget(), stops.constFirst());
    }
};

VELMORA_TEST_MAIN(ControlWindowAccessibilityTest)
#include "tst_ControlWindowAccessibility.moc"
