#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "DialogView.h"
#include "Find.h"
#include "Modal.h"
#include "Outline.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Text = QString AppSettings::*;

const QString normalLook =
    QStringLiteral("background:#2b2b2b;color:#e8e8e8;border:1px solid #444;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");
const QString hintText =
    QStringLiteral("Click “Set Key”, then press any key or combination (e.g. Ctrl+1) on your "
                   "keyboard or Stream Deck.\nPress Escape to cancel.");

} // namespace

// The page and its values without any capture.
class SettingsDialogShortcutsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void page_readsFromTopToBottom()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *column = qobject_cast<QVBoxLayout *>(
            DialogView(dialog).page(QStringLiteral("Shortcuts"))->layout());
        QVERIFY(column);
        QCOMPARE(column->spacing(), 10);
        QCOMPARE(outlineOf(*column),
                 QStringList({"header TIMER CONTROLS", "grid", "separator", "label " + hintText,
                              "button Reset All to Defaults", "stretch"}));
    }

    void grid_stretchesTheKeysColumn()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *grid =
            DialogView(dialog).page(QStringLiteral("Shortcuts"))->findChild<QGridLayout *>();
        QVERIFY(grid);
        QCOMPARE(grid->horizontalSpacing(), 8);
        QCOMPARE(grid->verticalSpacing(), 8);
        QCOMPARE(grid->rowCount(), 5);
        QCOMPARE(grid->columnCount(), 4);
        QCOMPARE(grid->columnStretch(0), 0);
        QCOMPARE(grid->columnStretch(1), 1);
        QCOMPARE(grid->columnStretch(2), 0);
        QCOMPARE(grid->columnStretch(3), 0);
    }

    void row_hasItsLabelAndWidths_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("keys");
        QTest::newRow("start") << 0 << "Start / Pause"
                               << "Space";
        QTest::newRow("reset") << 1 << "Reset"
                               << "R";
        QTest::newRow("plus") << 2 << "+1 Minute"
                              << "Up";
        QTest::newRow("minus") << 3 << "-1 Minute"
                               << "Down";
        QTest::newRow("output") << 4 << "Toggle Output"
                                << "O";
    }

    void row_hasItsLabelAndWidths()
    {
        QFETCH(const int, row);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        const auto *grid = view.page(QStringLiteral("Shortcuts"))->findChild<QGridLayout *>();
        const auto *label = qobject_cast<QLabel *>(grid->itemAtPosition(row, 0)->widget());
        QVERIFY(label);
        QTEST(label->text(), "label");
        QTEST(view.keyLabel(row)->text(), "keys");
        QCOMPARE(view.keyLabel(row)->styleSheet(), normalLook);
        QCOMPARE(view.keyLabel(row)->minimumWidth(), 120);
        QCOMPARE(view.setKeyButton(row)->text(), QStringLiteral("Set Key"));
        QCOMPARE(view.setKeyButton(row)->minimumWidth(), 80);
        QCOMPARE(view.setKeyButton(row)->maximumWidth(), 80);
        QCOMPARE(view.clearKeyButton(row)->text(), QStringLiteral("Clear"));
        QCOMPARE(view.clearKeyButton(row)->minimumWidth(), 55);
        QCOMPARE(view.clearKeyButton(row)->maximumWidth(), 55);
    }

    void hint_hasItsLook()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *hint = findByText<QLabel>(dialog, hintText);
        QVERIFY(hint);
        QCOMPARE(hint->styleSheet(), QStringLiteral("color:#666;font-size:11px;"));
        QVERIFY(hint->wordWrap());
    }

    void resetButton_isOfItsWidth()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QPushButton *button = DialogView(dialog).resetKeysButton();
        QVERIFY(button);
        QCOMPARE(button->minimumWidth(), 150);
        QCOMPARE(button->maximumWidth(), 150);
    }

    void keyTexts_fitTheirLabels()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        dialog.show();
        view.showPage(QStringLiteral("Shortcuts"));
        for (int row = 0; row < 5; ++row)
            QVERIFY(view.keyLabel(row)->width() >= view.keyLabel(row)->sizeHint().width());
    }

    void sequence_isShownAndStoredPortably_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("written");
        const auto keep = [](const char *text) {
            const QString keys = QString::fromLatin1(text);
            QTest::newRow(text) << keys << keys << keys;
        };
        keep("Space");
        keep("Ctrl+1");
        keep("Shift+A");
        keep("Num+5");
        keep("Meta+Ctrl+Alt+Shift+F12");
        keep("Ctrl+K, Ctrl+C");
        keep("A, B, C, D");
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
        const auto nothing = [](const char *name, const QString &text) {
            const QKeySequence keys(text, QKeySequence::NativeText);
            QTest::newRow(name) << text << "(none)" << keys.toString(QKeySequence::PortableText);
        };
        nothing("no key", "no such key");
        nothing("no key, with a modifier", "Ctrl+Nonsense");
        nothing("two that are none", "Nonsense, Ctrl+Nonsense");
        nothing("a modifier alone", "Ctrl+");
        // Qt 6.11 takes several blanks for the space bar, and has a sign for a tabulator.
        for (const QString &text : {QStringLiteral("   "), QStringLiteral("\t")}) {
            const QKeySequence keys(text, QKeySequence::NativeText);
            const QString sign = keys.toString(QKeySequence::NativeText).trimmed();
            QTest::addRow("blanks, %d", int(text.size()))
                << text << (sign.isEmpty() ? QStringLiteral("(none)") : sign)
                << keys.toString(QKeySequence::PortableText);
        }
    }

    void sequence_isShownAndStoredPortably()
    {
        QFETCH(const QString, stored);
        AppSettings record;
        record.shortcutReset = stored;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QTEST(view.keyLabel(1)->text(), "shown");
        execWith(dialog, [&] { view.okButton()->click(); });
        QTEST(record.shortcutReset, "written");
    }

    void row_readsAndStoresItsField_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<Text>("field");
        QTest::newRow("start") << 0 << &AppSettings::shortcutStartPause;
        QTest::newRow("reset") << 1 << &AppSettings::shortcutReset;
        QTest::newRow("plus") << 2 << &AppSettings::shortcutPlusMin;
        QTest::newRow("minus") << 3 << &AppSettings::shortcutMinusMin;
        QTest::newRow("output") << 4 << &AppSettings::shortcutToggleOutput;
    }

    void row_readsAndStoresItsField()
    {
        QFETCH(const int, row);
        QFETCH(const Text, field);
        AppSettings record;
        record.*field = QStringLiteral("Ctrl+F9");
        const QStringList before = fieldLines(record);
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.keyLabel(row)->text(), QStringLiteral("Ctrl+F9"));
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(fieldLines(record), before);
    }

    void clear_emptiesTheRow_data() { row_readsAndStoresItsField_data(); }

    void clear_emptiesTheRow()
    {
        QFETCH(const int, row);
        QFETCH(const Text, field);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.showPage(QStringLiteral("Shortcuts"));
            QTest::mouseClick(view.clearKeyButton(row), Qt::LeftButton);
            QCOMPARE(view.keyLabel(row)->text(), QStringLiteral("(none)"));
            QCOMPARE(view.keyLabel(row)->styleSheet(), normalLook);
            QCOMPARE(view.setKeyButton(row)->text(), QStringLiteral("Set Key"));
            QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
            view.okButton()->click();
        });
        AppSettings wanted;
        wanted.*field = QString();
        QCOMPARE(fieldLines(record), fieldLines(wanted));
        QCOMPARE(storedLines(), fieldLines(wanted));

        SettingsDialog reopened(&record, nullptr);
        QCOMPARE(DialogView(reopened).keyLabel(row)->text(), QStringLiteral("(none)"));
    }

    void resetAll_setsTheDefaults()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.resetKeysButton()->click();
            const QStringList defaults{"Space", "R", "Up", "Down", "O"};
            for (int row = 0; row < 5; ++row) {
                QCOMPARE(view.keyLabel(row)->text(), defaults.at(row));
                QCOMPARE(view.keyLabel(row)->styleSheet(), normalLook);
                QCOMPARE(view.setKeyButton(row)->text(), QStringLiteral("Set Key"));
            }
            QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
            view.okButton()->click();
        });
        QCOMPARE(record.shortcutStartPause, QStringLiteral("Space"));
        QCOMPARE(record.shortcutReset, QStringLiteral("R"));
        QCOMPARE(record.shortcutPlusMin, QStringLiteral("Up"));
        QCOMPARE(record.shortcutMinusMin, QStringLiteral("Down"));
        QCOMPARE(record.shortcutToggleOutput, QStringLiteral("O"));
    }

    void resetAll_touchesNothingElse()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.resetKeysButton()->click();
            view.okButton()->click();
        });
        const AppSettings defaults;
        AppSettings wanted = unusualRecord();
        wanted.shortcutStartPause = defaults.shortcutStartPause;
        wanted.shortcutReset = defaults.shortcutReset;
        wanted.shortcutPlusMin = defaults.shortcutPlusMin;
        wanted.shortcutMinusMin = defaults.shortcutMinusMin;
        wanted.shortcutToggleOutput = defaults.shortcutToggleOutput;
        QCOMPARE(fieldLines(record), fieldLines(wanted));
    }

    void resetAll_thenCancel_keepsTheRecord()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.resetKeysButton()->click();
            view.cancelButton()->click();
        });
        QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
        QVERIFY(!storeExists());
    }

    void equalSequences_areAllStored()
    {
        AppSettings record;
        record.shortcutReset = QStringLiteral("Space");
        const QStringList before = fieldLines(record);
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.keyLabel(0)->text(), QStringLiteral("Space"));
        QCOMPARE(view.keyLabel(1)->text(), QStringLiteral("Space"));
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(fieldLines(record), before);
    }
};

VELMORA_TEST_MAIN(SettingsDialogShortcutsPageTest)
#include "tst_SettingsDialogShortcutsPage.moc"
