#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "Accessible.h"
#include "Editor.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

/// The dialog as the user opens it, with one of its pages in front.
struct Opened : Editor
{
    explicit Opened(const QString &title, const AppSettings &start = {})
        : Editor(start)
    {
        showPage(title);
        dialog.show();
    }
    QString keyName(int row) const { return keyLabel(row)->accessibleName(); }
    QString buttonName(int row) const { return setKeyButton(row)->accessibleName(); }
};

using Step = std::function<void(Opened &)>;

} // namespace

/// What a screen reader says of the settings dialog, page by page, and the way that Tab
/// takes through it.
class SettingsDialogAccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qApp->setStyleSheet(
            applicationStyleSheet()); // as in the program, for the places on the screen
    }

    void page_isSaidAndWalked_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::newRow("Clock") << QStringList{
            "radio 24-hour  (14:30)",
            "radio 12-hour  (2:30 PM)",
            "check Show seconds on output",
        };
        QTest::newRow("Colors") << QStringList{
            "button Background colour 000000 (Background)",
            "button Timer normal colour 00CC00 (Timer — normal)",
            "button Timer warning colour FF8800 (Timer — warning)",
            "button Timer critical colour FF2200 (Timer — critical)",
            "button Clock colour FFFFFF (Clock)",
            "button Message colour FFFF00 (Message)",
            "check Use image instead of background colour",
            "button Browse for background image",
            "button Clear background image",
        };
        QTest::newRow("Fonts") << QStringList{
            "button Decrease timer font size",        "spin Timer font size (Timer font size)",
            "button Increase timer font size",        "button Decrease clock font size",
            "spin Clock font size (Clock font size)", "button Increase clock font size",
            "button Decrease message font size",      "spin Message font size (Message font size)",
            "button Increase message font size",
        };
        QTest::newRow("Timer") << QStringList{
            "check Overtime, continue counting in red past zero",
            "check Blink effect at zero",
            "button Decrease default duration minutes",
            "spin Default duration minutes (DEFAULT DURATION)",
            "button Increase default duration minutes",
            "button Decrease default duration seconds",
            "spin Default duration seconds",
            "button Increase default duration seconds",
            "button Decrease warning threshold",
            "spin Warning threshold (WARNING THRESHOLD)",
            "button Increase warning threshold",
            "list Presets (PRESETS)",
            "item 5 min",
            "item 10 min",
            "item 15 min",
            "item 30 min",
            "button Decrease new preset minutes",
            "spin New preset minutes",
            "button Increase new preset minutes",
            "button Decrease new preset seconds",
            "spin New preset seconds",
            "button Increase new preset seconds",
            "button Add preset",
            "button Remove preset",
        };
        QTest::newRow("Shortcuts") << QStringList{
            "button Set key for start or pause (Start / Pause)",
            "button Clear key for start or pause",
            "button Set key for reset (Reset)",
            "button Clear key for reset",
            "button Set key for add 1 minute (+1 Minute)",
            "button Clear key for add 1 minute",
            "button Set key for subtract 1 minute (-1 Minute)",
            "button Clear key for subtract 1 minute",
            "button Set key for toggle output (Toggle Output)",
            "button Clear key for toggle output",
            "button Reset All to Defaults",
        };
    }

    void page_isSaidAndWalked()
    {
        QFETCH(QStringList, names);
        const QString page = QTest::currentDataTag();
        // What stands on no page: under the pages, but behind them in the tree, their tabs.
        names += {"tabs " + page, "tab Clock",     "tab Colors",
                  "tab Fonts",    "tab Timer",     "tab Shortcuts",
                  "button OK",    "button Cancel", "button Check for Updates"};
        Opened opened(page);
        QCOMPARE(controlLines(opened.dialog), names);
        QCOMPARE(unsayableNames(opened.dialog), QStringList());
        QCOMPARE(sharedButtonNames(opened.dialog), QStringList());
        QCOMPARE(unlabelledInputs(opened.dialog), QStringList());
        // The tabs, something on the page, and the three buttons under it.
        QVERIFY(tabStops(opened.dialog).size() > 1 + 3);
        QCOMPARE(tabDetours(opened.dialog), QStringList());
    }

    // A label with an underlined letter would give its input a key of its own.
    void label_takesNoKey()
    {
        const Editor editor;
        int buddies = 0;
        const QList<QLabel *> labels = editor.dialog.findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (!label->buddy())
                continue;
            ++buddies;
            QVERIFY2(!label->text().contains('&'), qPrintable(label->text()));
        }
        QCOMPARE(buddies, 6 + 3 + 3 + 5); // Colors, Fonts, Timer, Shortcuts
    }

    void pickedColor_isSaid()
    {
        Opened opened("Colors");
        opened.pick("Timer — warning", QColor("#12ab34"));
        const QStringList lines = controlLines(opened.dialog);
        QCOMPARE(lines.at(1), "button Timer normal colour 00CC00 (Timer — normal)");
        QCOMPARE(lines.at(2), "button Timer warning colour 12AB34 (Timer — warning)");
    }

    void imageFile_isSaidWithWhatItIs()
    {
        AppSettings start;
        start.bgImagePath = "/pictures/stage.png";
        Opened opened("Colors", start);
        QVERIFY(textLines(opened.dialog).contains("stage.png (Background image)"));
        opened.clearImageButton()->click();
        QVERIFY(textLines(opened.dialog).contains("None (Background image)"));
    }

    void keys_areSaidWithTheirAction()
    {
        AppSettings start;
        start.shortcutReset = "Ctrl+Nonsense"; // which names no key
        start.shortcutMinusMin.clear();
        start.shortcutToggleOutput = "Ctrl+O";
        const Opened opened("Shortcuts", start);
        QCOMPARE(opened.keyName(0), "Key for start or pause: Space");
        QCOMPARE(opened.keyName(1), "Key for reset: none");
        QCOMPARE(opened.keyName(2), "Key for add 1 minute: Up");
        QCOMPARE(opened.keyName(3), "Key for subtract 1 minute: none");
        QCOMPARE(opened.keyName(4), "Key for toggle output: Ctrl+O");
    }

    void waitingRow_saysThatItWaits()
    {
        Opened opened("Shortcuts");
        opened.setKeyButton(2)->click();
        QCOMPARE(opened.keyName(2), "Key for add 1 minute: press any key");
        QCOMPARE(opened.buttonName(2), "Cancel, waiting for key for add 1 minute");
        QCOMPARE(unsayableNames(opened.dialog), QStringList());
        QCOMPARE(sharedButtonNames(opened.dialog), QStringList());
    }

    void endedWait_isSaidNoMore_data()
    {
        QTest::addColumn<Step>("end");
        QTest::addColumn<QString>("keys");
        QTest::newRow("a key") << Step([](Opened &opened) {
            QTest::keyClick(&opened.dialog, Qt::Key_K);
        }) << "K";
        QTest::newRow("Escape") << Step([](Opened &opened) {
            QTest::keyClick(&opened.dialog, Qt::Key_Escape);
        }) << "Up";
        QTest::newRow("Clear") << Step([](Opened &o) { o.clearKeyButton(2)->click(); }) << "none";
        QTest::newRow("Reset All") << Step([](Opened &o) { o.resetKeysButton()->click(); }) << "Up";
        QTest::newRow("another row") << Step([](Opened &o) { o.setKeyButton(0)->click(); }) << "Up";
    }

    void endedWait_isSaidNoMore()
    {
        QFETCH(const Step, end);
        QFETCH(const QString, keys);
        Opened opened("Shortcuts");
        opened.setKeyButton(2)->click();
        end(opened);
        QCOMPARE(opened.keyName(2), "Key for add 1 minute: " + keys);
        QCOMPARE(opened.buttonName(2), "Set key for add 1 minute");
    }

    void tab_followsTheDesktopsOrderOfButtons_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<bool>("okFirst");
        QTest::newRow("Windows") << int(QDialogButtonBox::WinLayout) << true;
        QTest::newRow("KDE") << int(QDialogButtonBox::KdeLayout) << true;
        QTest::newRow("GNOME") << int(QDialogButtonBox::GnomeLayout) << false;
        QTest::newRow("Mac") << int(QDialogButtonBox::MacLayout) << false;
    }

    void tab_followsTheDesktopsOrderOfButtons()
    {
        QFETCH(int, layout);
        QFETCH(bool, okFirst);
        Opened opened("Clock");
        opened.dialog.setStyleSheet(QString("QDialogButtonBox { button-layout: %1 }").arg(layout));
        QTRY_COMPARE(opened.okButton()->x() < opened.cancelButton()->x(), okFirst);
        QCOMPARE(tabDetours(opened.dialog), QStringList());
    }

    void tab_startsAtTheTop()
    {
        Editor editor;
        editor.run([&] {
            QTRY_VERIFY(editor.dialog.focusWidget());
            QCOMPARE(editor.dialog.focusWidget()->metaObject()->className(), "QTabBar");
        });
    }
};

VELMORA_TEST_MAIN(SettingsDialogAccessibilityTest)
#include "tst_SettingsDialogAccessibility.moc"
