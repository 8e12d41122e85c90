#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include "Accessible.h"
#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "SettingsDialog.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QStringList pageTitles{"Clock", "Colors", "Fonts", "Timer", "Shortcuts"};

// The dialog as a person opens it, with one of its pages in front.
struct Opened
{
    explicit Opened(const QString &title, const AppSettings &start = {})
        : record(start)
        , dialog(&record)
    {
        view().showPage(title);
        dialog.show();
    }
    DialogView view() { return DialogView(dialog); }

    AppSettings record;
    SettingsDialog dialog;
};

void addPages()
{
    QTest::addColumn<QString>("page");
    for (const QString &title : pageTitles)
        QTest::newRow(qPrintable(title)) << title;
}

// What stands on no page: under the pages, but behind them in the tree, their tabs.
QStringList withFrame(QStringList page, const QString &title)
{
    page.append("tabs " + title);
    for (const QString &tab : pageTitles)
        page.append("tab " + tab);
    return page + QStringList{"button OK", "button Cancel", "button Check for Updates"};
}

QString nameOf(const QWidget *widget)
{
    return widget->accessibleName();
}

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

    void controls_haveTheirNames_data()
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

    void controls_haveTheirNames()
    {
        QFETCH(QStringList, names);
        const QString page = QTest::currentDataTag();
        Opened opened(page);
        QCOMPARE(controlLines(opened.dialog), withFrame(names, page));
    }

    void names_canBeSaid_data() { addPages(); }

    void names_canBeSaid()
    {
        QFETCH(QString, page);
        Opened opened(page);
        QCOMPARE(unsayableNames(opened.dialog).join("; "), QString());
    }

    void buttons_areToldApart_data() { addPages(); }

    void buttons_areToldApart()
    {
        QFETCH(QString, page);
        Opened opened(page);
        QCOMPARE(sharedButtonNames(opened.dialog).join("; "), QString());
    }

    void inputs_areLabelled_data() { addPages(); }

    void inputs_areLabelled()
    {
        QFETCH(QString, page);
        Opened opened(page);
        QCOMPARE(unlabelledInputs(opened.dialog).join("; "), QString());
    }

    // A label with an underlined letter would give its input a key of its own.
    void label_takesNoKey()
    {
        Opened opened(QStringLiteral("Clock"));
        int buddies = 0;
        const QList<QLabel *> labels = opened.dialog.findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (!label->buddy())
                continue;
            ++buddies;
            QVERIFY2(!label->text().contains('&'), qPrintable(label->text()));
        }
        QCOMPARE(buddies, 6 + 3 + 3 + 5); // Colors, Fonts, Timer, Shortcuts
    }

    void stepButton_changesTheValueThatItSays_data()
    {
        QTest::addColumn<QString>("value");
        for (const char *value : {"Timer font size", "Clock font size", "Message font size",
                                  "Default duration minutes", "Default duration seconds",
                                  "Warning threshold", "New preset minutes", "New preset seconds"})
            QTest::newRow(value) << value;
    }

    void stepButton_changesTheValueThatItSays()
    {
        QFETCH(QString, value);
        AppSettings record;
        SettingsDialog dialog(&record);
        const auto said = [&dialog](const QString &name) {
            const QList<QWidget *> widgets = dialog.findChildren<QWidget *>();
            for (QWidget *widget : widgets) {
                if (widget->accessibleName() == name)
                    return widget;
            }
            return static_cast<QWidget *>(nullptr);
        };
        auto *spinBox = qobject_cast<QSpinBox *>(said(value));
        auto *down = qobject_cast<QPushButton *>(said("Decrease " + value.toLower()));
        auto *up = qobject_cast<QPushButton *>(said("Increase " + value.toLower()));
        QVERIFY(spinBox && down && up);
        spinBox->setValue(40);
        up->click();
        QCOMPARE(spinBox->value(), 41);
        down->click();
        down->click();
        QCOMPARE(spinBox->value(), 39);
    }

    void pickedColor_isSaid()
    {
        Opened opened(QStringLiteral("Colors"));
        opened.view().pick(QString::fromUtf8("Timer — warning"), QColor("#12ab34"));
        const QStringList lines = controlLines(opened.dialog);
        QCOMPARE(lines.at(1),
                 QString::fromUtf8("button Timer normal colour 00CC00 (Timer — normal)"));
        QCOMPARE(lines.at(2),
                 QString::fromUtf8("button Timer warning colour 12AB34 (Timer — warning)"));
    }

    void imageFile_isSaidWithWhatItIs()
    {
        AppSettings record;
        record.bgImagePath = "/pictures/stage.png";
        Opened opened(QStringLiteral("Colors"), record);
        QVERIFY(textLines(opened.dialog).contains("stage.png (Background image)"));
        opened.view().clearImageButton()->click();
        QVERIFY(textLines(opened.dialog).contains("None (Background image)"));
    }

    void keys_areSaidWithTheirAction_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("name");
        QTest::newRow("start") << 0 << "Key for start or pause: Space";
        QTest::newRow("reset, which names no key") << 1 << "Key for reset: none";
        QTest::newRow("plus") << 2 << "Key for add 1 minute: Up";
        QTest::newRow("minus") << 3 << "Key for subtract 1 minute: none";
        QTest::newRow("output") << 4 << "Key for toggle output: Ctrl+O";
    }

    void keys_areSaidWithTheirAction()
    {
        QFETCH(int, row);
        AppSettings record;
        record.shortcutReset = "Ctrl+Nonsense";
        record.shortcutMinusMin.clear();
        record.shortcutToggleOutput = "Ctrl+O";
        Opened opened(QStringLiteral("Shortcuts"), record);
        QTEST(nameOf(opened.view().keyLabel(row)), "name");
    }

    void waitingRow_saysThatItWaits()
    {
        Opened opened(QStringLiteral("Shortcuts"));
        opened.view().setKeyButton(2)->click();
        QCOMPARE(nameOf(opened.view().keyLabel(2)),
                 QStringLiteral("Key for add 1 minute: press any key"));
        QCOMPARE(nameOf(opened.view().setKeyButton(2)),
                 QStringLiteral("Cancel, waiting for key for add 1 minute"));
        QCOMPARE(unsayableNames(opened.dialog).join("; "), QString());
        QCOMPARE(sharedButtonNames(opened.dialog).join("; "), QString());
    }

    void waitOnAnotherRow_isSaidThere()
    {
        Opened opened(QStringLiteral("Shortcuts"));
        opened.view().setKeyButton(2)->click();
        opened.view().setKeyButton(0)->click();
        QCOMPARE(nameOf(opened.view().keyLabel(2)), QStringLiteral("Key for add 1 minute: Up"));
        QCOMPARE(nameOf(opened.view().setKeyButton(2)), QStringLiteral("Set key for add 1 minute"));
        QCOMPARE(nameOf(opened.view().setKeyButton(0)),
                 QStringLiteral("Cancel, waiting for key for start or pause"));
    }

    void endedWait_isSaidNoMore_data()
    {
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("keys");
        QTest::newRow("a key") << "key"
                               << "K";
        QTest::newRow("Escape") << "Escape"
                                << "Up";
        QTest::newRow("Clear") << "Clear"
                               << "none";
        QTest::newRow("Reset All") << "Reset All"
                                   << "Up";
    }

    void endedWait_isSaidNoMore()
    {
        QFETCH(QString, end);
        QFETCH(QString, keys);
        Opened opened(QStringLiteral("Shortcuts"));
        opened.view().setKeyButton(2)->click();
        if (end == "key")
            QTest::keyClick(&opened.dialog, Qt::Key_K);
        else if (end == "Escape")
            QTest::keyClick(&opened.dialog, Qt::Key_Escape);
        else if (end == "Clear")
            opened.view().clearKeyButton(2)->click();
        else
            opened.view().resetKeysButton()->click();
        QCOMPARE(nameOf(opened.view().keyLabel(2)), "Key for add 1 minute: " + keys);
        QCOMPARE(nameOf(opened.view().setKeyButton(2)), QStringLiteral("Set key for add 1 minute"));
    }

    void tab_goesDownTheScreen_data() { addPages(); }

    void tab_goesDownTheScreen()
    {
        QFETCH(QString, page);
        Opened opened(page);
        // The tabs, something on the page, and the three buttons under it.
        QVERIFY(tabStops(opened.dialog).size() > 1 + 3);
        QCOMPARE(tabDetours(opened.dialog).join("; "), QString());
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
        Opened opened(QStringLiteral("Clock"));
        opened.dialog.setStyleSheet(
            QStringLiteral("QDialogButtonBox { button-layout: %1 }").arg(layout));
        QTRY_COMPARE(opened.view().okButton()->x() < opened.view().cancelButton()->x(), okFirst);
        QCOMPARE(tabDetours(opened.dialog).join("; "), QString());
    }

    void tab_startsAtTheTop()
    {
        AppSettings record;
        SettingsDialog dialog(&record);
        execWith(dialog, [&dialog] {
            QTRY_VERIFY(dialog.focusWidget());
            QCOMPARE(dialog.focusWidget()->metaObject()->className(), "QTabBar");
        });
    }
};

VELMORA_TEST_MAIN(SettingsDialogAccessibilityTest)
#include "tst_SettingsDialogAccessibility.moc"
