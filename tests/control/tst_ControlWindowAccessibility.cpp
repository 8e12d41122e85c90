#include <QRegularExpression>
#include <QTest>

#include "Accessible.h"
#include "ControlFixture.h"
#include "Operated.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

// In the order of the screen.
const QStringList namesAtStart{
    "button About Velmora",
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
    "button Output preview",
};

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
    void controls_haveTheirNames()
    {
        ControlFixture fixture;
        fixture.showControl();
        QCOMPARE(controlLines(*fixture.window), namesAtStart);
    }

    void names_canBeSaid_data()
    {
        QTest::addColumn<bool>("running");
        QTest::newRow("stopped, Output window hidden") << false;
        QTest::newRow("running, Output window shown") << true;
    }

    void names_canBeSaid()
    {
        QFETCH(bool, running);
        ControlFixture fixture;
        fixture.showControl();
        if (running) {
            fixture.engine.start();
            fixture.window->toggleOutput();
        }
        QVERIFY(controls(*fixture.window).size() >= 30);
        QCOMPARE(unsayableNames(*fixture.window).join("; "), QString());
    }

    void buttons_areToldApart()
    {
        ControlFixture fixture;
        fixture.showControl();
        QCOMPARE(sharedButtonNames(*fixture.window).join("; "), QString());
    }

    void inputs_areLabelled()
    {
        ControlFixture fixture;
        fixture.showControl();
        QCOMPARE(unlabelledInputs(*fixture.window).join("; "), QString());
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

    void stepButton_changesTheValueThatItSays_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("minutes down") << "Decrease minutes" << 4 << 30;
        QTest::newRow("minutes up") << "Increase minutes" << 6 << 30;
        QTest::newRow("seconds down") << "Decrease seconds" << 5 << 29;
        QTest::newRow("seconds up") << "Increase seconds" << 5 << 31;
    }

    void stepButton_changesTheValueThatItSays()
    {
        QFETCH(QString, name);
        const ControlFixture fixture;
        fixture.minutes()->setValue(5);
        fixture.seconds()->setValue(30);
        QAbstractButton *button = buttonSaying(fixture, name);
        QVERIFY(button);
        button->click();
        QTEST(fixture.minutes()->value(), "minutes");
        QTEST(fixture.seconds()->value(), "seconds");
    }

    void outputButton_saysWhatAClickDoes()
    {
        ControlFixture fixture;
        fixture.showControl();
        auto *button = fixture.named<QPushButton>("outputToggleBtn");
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(button->accessibleName(), QStringLiteral("Show Output Window"));
            button->click();
            QVERIFY(fixture.output.isVisible());
            QCOMPARE(button->accessibleName(), QStringLiteral("Hide Output Window"));
            button->click();
            QVERIFY(!fixture.output.isVisible());
        }
    }

    void presets_areSaidByTheirTexts()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.enterTime(7, 30);
        buttonSaying(fixture, QStringLiteral("Add to presets"))->click();
        QStringList items = controlLines(*fixture.window).filter(QRegularExpression("^item "));
        QCOMPARE(items.size(), 5);
        QCOMPARE(items.constLast(), QStringLiteral("item 7:30"));
    }

    void figure_isItsOwnName()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(textLines(*fixture.window).contains("05:00 (Timer)"));
        fixture.engine.start();
        passSecond(fixture.engine);
        QVERIFY(textLines(*fixture.window).contains("04:59 (Timer)"));
        QVERIFY(!textLines(*fixture.window).contains("05:00 (Timer)"));
    }

    void hiddenFigure_isStillSaid()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        QVERIFY(fixture.figure()->styleSheet().contains("transparent"));
        QVERIFY(textLines(*fixture.window).contains("00:00 (Timer)"));
    }

    void soundFile_isSaidWithWhatItIs()
    {
        AppSettings settings;
        ControlFixture without(settings);
        without.showControl();
        QVERIFY(textLines(*without.window).contains("No file selected (Sound file)"));
        settings.soundFilePath = "/gone/gong.wav";
        ControlFixture with(settings);
        with.showControl();
        QVERIFY(textLines(*with.window).contains("gong.wav (Sound file)"));
    }

    void previewPicture_hasAName()
    {
        ControlFixture fixture;
        fixture.show();
        buttonSaying(fixture, QStringLiteral("Output preview"))->click();
        runOut(fixture.previewTimer());
        QVERIFY(previewLabel() && !previewLabel()->pixmap().isNull());
        QCOMPARE(controlLines(*previewWindow()),
                 QStringList{"picture Picture of the Output window"});
        QCOMPARE(unsayableNames(*previewWindow()).join("; "), QString());
        QCOMPARE(tabStops(*previewWindow()).size(), 0);
    }

    void tab_goesDownTheScreen()
    {
        ControlFixture fixture;
        fixture.showControl();
        // Every control but the items, among which the arrow keys move.
        QCOMPARE(tabStops(*fixture.window).size(),
                 namesAtStart.size() - namesAtStart.filter(QRegularExpression("^item ")).size());
        QCOMPARE(tabDetours(*fixture.window).join("; "), QString());
    }

    void tab_stopsWhereItsOrderSays()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(focus(*fixture.window));
        const QList<QWidget *> stops = tabStops(*fixture.window);
        for (QWidget *stop : stops) {
            QCOMPARE(fixture.window->focusWidget(), stop);
            press(*fixture.window, Qt::Key_Tab);
        }
        QCOMPARE(fixture.window->focusWidget(), stops.constFirst()); // and round again
    }

    void tab_startsAtTheTop()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(focus(*fixture.window));
        QCOMPARE(fixture.window->focusWidget(), fixture.named<QWidget>("appTitle"));
    }
};

VELMORA_TEST_MAIN(ControlWindowAccessibilityTest)
#include "tst_ControlWindowAccessibility.moc"
