#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "Editor.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Text = QString AppSettings::*;

const QString normalLook =
    "background:#2b2b2b;color:#e8e8e8;border:1px solid #444;border-radius:4px;"
    "padding:4px 10px;font-family:monospace;";

} // namespace

/// The Shortcuts page and its values without any capture.
class SettingsDialogShortcutsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void page_hasItsLookAndSizes()
    {
        Editor editor(unusualRecord());
        editor.dialog.show();
        const QWidget *page = editor.showPage("Shortcuts");
        const auto *grid = page->findChild<QGridLayout *>();
        QVERIFY(grid);
        QCOMPARE(grid->horizontalSpacing(), 8);
        QCOMPARE(grid->verticalSpacing(), 8);
        QCOMPARE(grid->rowCount(), 5);
        QCOMPARE(grid->columnCount(), 4);
        for (int column = 0; column < 4; ++column)
            QCOMPARE(grid->columnStretch(column), column == 1 ? 1 : 0);
        for (int row = 0; row < 5; ++row) {
            QCOMPARE(editor.keyLabel(row)->styleSheet(), normalLook);
            QCOMPARE(editor.keyLabel(row)->minimumWidth(), 120);
            QVERIFY(editor.keyLabel(row)->width() >= editor.keyLabel(row)->sizeHint().width());
            QCOMPARE(editor.setKeyButton(row)->text(), "Set Key");
            QCOMPARE(editor.setKeyButton(row)->minimumWidth(), 80);
            QCOMPARE(editor.setKeyButton(row)->maximumWidth(), 80);
            QCOMPARE(editor.clearKeyButton(row)->text(), "Clear");
            QCOMPARE(editor.clearKeyButton(row)->minimumWidth(), 55);
            QCOMPARE(editor.clearKeyButton(row)->maximumWidth(), 55);
        }
        const auto *hint = qobject_cast<QLabel *>(page->layout()->itemAt(3)->widget());
        QCOMPARE(hint->styleSheet(), "color:#666;font-size:11px;");
        QVERIFY(hint->wordWrap());
        QCOMPARE(editor.resetKeysButton()->minimumWidth(), 150);
        QCOMPARE(editor.resetKeysButton()->maximumWidth(), 150);
    }

    void row_showsAndStoresItsField_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<Text>("field");
        QTest::newRow("Start / Pause") << 0 << &AppSettings::shortcutStartPause;
        QTest::newRow("Reset") << 1 << &AppSettings::shortcutReset;
        QTest::newRow("+1 Minute") << 2 << &AppSettings::shortcutPlusMin;
        QTest::newRow("-1 Minute") << 3 << &AppSettings::shortcutMinusMin;
        QTest::newRow("Toggle Output") << 4 << &AppSettings::shortcutToggleOutput;
    }

    void row_showsAndStoresItsField()
    {
        QFETCH(const int, row);
        QFETCH(const Text, field);
        AppSettings start;
        start.*field = "Ctrl+F9";
        Editor editor(start);
        const auto *grid = editor.page("Shortcuts")->findChild<QGridLayout *>();
        const auto *label = qobject_cast<QLabel *>(grid->itemAtPosition(row, 0)->widget());
        QVERIFY(label);
        QCOMPARE(label->text(), QTest::currentDataTag());
        QCOMPARE(editor.keyLabel(row)->text(), "Ctrl+F9");
        editor.runToOk();
        QCOMPARE(fieldLines(editor.record), fieldLines(start));
    }

    void clear_emptiesTheRow_data() { row_showsAndStoresItsField_data(); }

    void clear_emptiesTheRow()
    {
        QFETCH(const int, row);
        QFETCH(const Text, field);
        Editor editor;
        editor.runToOk([&] {
            editor.showPage("Shortcuts");
            QTest::mouseClick(editor.clearKeyButton(row), Qt::LeftButton);
            QCOMPARE(editor.keyLabel(row)->text(), "(none)");
            QCOMPARE(editor.keyLabel(row)->styleSheet(), normalLook);
            QCOMPARE(editor.setKeyButton(row)->text(), "Set Key");
            QCOMPARE(fieldLines(editor.record), fieldLines(AppSettings()));
        });
        AppSettings wanted;
        wanted.*field = QString();
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
        QCOMPARE(storedLines(), fieldLines(wanted));
    }

    void sequence_isShownAndStoredPortably_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("written");
        for (const QString keys : {"Space", "Ctrl+1", "Shift+A", "Num+5", "Ctrl+K, Ctrl+C",
                                   "Meta+Ctrl+Alt+Shift+F12", "A, B, C, D"})
            QTest::newRow(qPrintable(keys)) << keys << keys << keys;
        QTest::newRow("empty") << ""
                               << "(none)"
                               << "";
        QTest::newRow("lower case") << "ctrl+r"
                                    << "Ctrl+R"
                                    << "Ctrl+R";
        QTest::newRow("long name") << "Delete"
                                   << "Del"
                                   << "Del";
        // A text that names no key is no empty sequence to Qt. What it is written as is left to Qt.
        for (const QString text :
             {"no such key", "Ctrl+Nonsense", "Nonsense, Ctrl+Nonsense", "Ctrl+"}) {
            const QKeySequence keys(text, QKeySequence::NativeText);
            QTest::newRow(qPrintable(text)) << text << "(none)" << keys.toString();
        }
        // Qt 6.11 takes several blanks for the space bar, and has a sign for a tabulator.
        for (const QString text : {"   ", "\t"}) {
            const QKeySequence keys(text, QKeySequence::NativeText);
            const QString sign = keys.toString(QKeySequence::NativeText).trimmed();
            QTest::addRow("blanks, %d", int(text.size()))
                << text << (sign.isEmpty() ? QString("(none)") : sign) << keys.toString();
        }
    }

    void sequence_isShownAndStoredPortably()
    {
        QFETCH(const QString, stored);
        AppSettings start;
        start.shortcutReset = stored;
        Editor editor(start);
        QTEST(editor.keyLabel(1)->text(), "shown");
        editor.runToOk();
        QTEST(editor.record.shortcutReset, "written");
    }

    void resetAll_setsTheDefaultsAndNothingElse()
    {
        Editor editor(unusualRecord());
        editor.runToOk([&] {
            editor.resetKeysButton()->click();
            const QStringList defaults{"Space", "R", "Up", "Down", "O"};
            for (int row = 0; row < 5; ++row) {
                QCOMPARE(editor.keyLabel(row)->text(), defaults.at(row));
                QCOMPARE(editor.keyLabel(row)->styleSheet(), normalLook);
                QCOMPARE(editor.setKeyButton(row)->text(), "Set Key");
            }
            QCOMPARE(fieldLines(editor.record), fieldLines(unusualRecord()));
        });
        AppSettings wanted = unusualRecord();
        wanted.shortcutStartPause = "Space";
        wanted.shortcutReset = "R";
        wanted.shortcutPlusMin = "Up";
        wanted.shortcutMinusMin = "Down";
        wanted.shortcutToggleOutput = "O";
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
    }
};

VELMORA_TEST_MAIN(SettingsDialogShortcutsTest)
#include "tst_SettingsDialogShortcuts.moc"
