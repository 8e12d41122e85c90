#include <memory>
#include <type_traits>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QMetaMethod>
#include <QNetworkReply>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include "Editor.h"
#include "Find.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

using Step = std::function<void(Editor &)>;

const QStringList colorRows{"Background",       "Timer — normal", "Timer — warning",
                            "Timer — critical", "Clock",          "Message"};

// Moves every control of the dialog away from what unusualRecord() shows.
void editEverything(const DialogView &view)
{
    view.radio("24-hour  (14:30)")->click();
    view.checkBox("Show seconds on output")->click();
    for (int row = 0; row < colorRows.size(); ++row)
        view.pick(colorRows.at(row), QColor(101 + row, 111 + row, 121 + row));
    view.clearImageButton()->click();
    view.fontSize("Timer font size")->setValue(550);
    view.fontSize("Clock font size")->setValue(300);
    view.fontSize("Message font size")->setValue(150);
    view.checkBox("Overtime — continue counting in red past zero")->click();
    view.checkBox("Blink effect at zero")->click();
    view.spinBoxesUnder("DEFAULT DURATION").at(0)->setValue(20);
    view.spinBoxesUnder("DEFAULT DURATION").at(1)->setValue(21);
    view.spinBoxesUnder("WARNING THRESHOLD").at(0)->setValue(3600);
    view.presets()->setCurrentRow(1);
    view.presetButton("Remove")->click();
    view.presetButton("Add")->click();
    view.resetKeysButton()->click();
}

} // namespace

/// The dialog as a whole: its frame, what OK does, what every other end leaves alone, and the
/// update check. A file for each page tests the rest.
class SettingsDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void metaObject_declaresOneSignalThenFourSlots()
    {
        static_assert(std::is_base_of_v<QDialog, SettingsDialog>);
        const QMetaObject &meta = SettingsDialog::staticMetaObject;
        QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const bool isSignal = meta.method(i).methodType() == QMetaMethod::Signal;
            QVERIFY(isSignal || meta.method(i).methodType() == QMetaMethod::Slot);
            methods << QString(meta.method(i).methodSignature())
                           .prepend(isSignal ? "signal " : "slot ");
        }
        QCOMPARE(methods,
                 QStringList({"signal settingsChanged()", "slot accept()",
                              "slot pickColor(QColor&,QPushButton*)", "slot addPreset()",
                              "slot removePreset()"}));
    }

    void fresh_isOneWindowOverItsParent()
    {
        AppSettings record;
        QWidget parent;
        const SettingsDialog dialog(&record, &parent);
        QCOMPARE(dialog.windowTitle(), "Settings");
        QCOMPARE(dialog.minimumWidth(), 420);
        QCOMPARE(dialog.parentWidget(), &parent);
        QCOMPARE(QApplication::topLevelWidgets().size(), 2); // every other widget has an owner
    }

    void column_holdsTabsThenButtonsThenUpdateButton()
    {
        const Editor editor;
        const auto *column = qobject_cast<QVBoxLayout *>(editor.dialog.layout());
        QVERIFY(column);
        QCOMPARE(column->count(), 3);
        const auto *tabs = qobject_cast<QTabWidget *>(column->itemAt(0)->widget());
        QVERIFY(tabs);
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            titles << tabs->tabText(i);
        QCOMPARE(titles, QStringList({"Clock", "Colors", "Fonts", "Timer", "Shortcuts"}));
        QCOMPARE(tabs->currentIndex(), 0);
        const auto *box = qobject_cast<QDialogButtonBox *>(column->itemAt(1)->widget());
        QVERIFY(box);
        QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        const auto *button = qobject_cast<QPushButton *>(column->itemAt(2)->widget());
        QVERIFY(button);
        QCOMPARE(button->text(), "Check for Updates");
        QCOMPARE(button->styleSheet(), "color:#aaa; font-size:11px;");
        QCOMPARE(column->itemAt(2)->alignment(), Qt::AlignLeft);
    }

    void accepting_withoutChange_savesAndReportsOnce_data()
    {
        QTest::addColumn<Step>("accept");
        QTest::newRow("OK") << Step([](Editor &editor) { editor.okButton()->click(); });
        QTest::newRow("Enter") << Step(
            [](Editor &editor) { QTest::keyClick(editor.dialog.windowHandle(), Qt::Key_Return); });
        QTest::newRow("slot") << Step(
            [](Editor &editor) { QVERIFY(QMetaObject::invokeMethod(&editor.dialog, "accept")); });
    }

    void accepting_withoutChange_savesAndReportsOnce()
    {
        QFETCH(const Step, accept);
        Editor editor(unusualRecord());
        const QSignalSpy changes(&editor.dialog, &SettingsDialog::settingsChanged);
        const int result = editor.run([&] {
            QVERIFY(!storeExists());
            accept(editor);
        });
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(fieldLines(editor.record), fieldLines(unusualRecord()));
        QCOMPARE(storedLines(), fieldLines(unusualRecord()));
    }

    void ok_takesOverEveryControl()
    {
        Editor editor(unusualRecord());
        editor.runToOk([&] { editEverything(editor); });

        AppSettings wanted; // the booleans and the shortcuts are back at their defaults
        wanted.bgColor = QColor(101, 111, 121);
        wanted.timerColorNormal = QColor(102, 112, 122);
        wanted.timerColorWarning = QColor(103, 113, 123);
        wanted.timerColorCritical = QColor(104, 114, 124);
        wanted.clockColor = QColor(105, 115, 125);
        wanted.messageColor = QColor(106, 116, 126);
        wanted.timerFontSize = 550;
        wanted.clockFontSize = 300;
        wanted.messageFontSize = 150;
        wanted.defaultDuration = 1221;
        wanted.warningThreshold = 3600;
        wanted.presets = {45, 45, 300};
        wanted.soundFilePath = unusualRecord().soundFilePath;
        wanted.soundEnabled = true;
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
        QCOMPARE(storedLines(), fieldLines(wanted));
    }

    void ok_reportsAfterSavingAndBeforeClosing()
    {
        Editor editor;
        QStringList order;
        connect(&editor.dialog, &SettingsDialog::settingsChanged, this, [&] {
            order << "changed";
            QCOMPARE(editor.record.warningThreshold, 17);
            QVERIFY(storeBytes().contains("warningThreshold=17"));
            QVERIFY(editor.dialog.isVisible());
            QCOMPARE(editor.dialog.result(), int(QDialog::Rejected)); // as exec() sets it out
        });
        connect(&editor.dialog, &QDialog::accepted, this, [&] { order << "accepted"; });
        editor.runToOk([&] { editor.spinBoxesUnder("WARNING THRESHOLD").at(0)->setValue(17); });
        QCOMPARE(order, QStringList({"changed", "accepted"}));
    }

    // The Control window edits and saves the sound; the dialog has no control for it.
    void ok_leavesSoundToTheRecord()
    {
        Editor editor(unusualRecord());
        editor.runToOk([&] {
            editor.record.soundFilePath = "/sounds/bell.ogg";
            editor.record.soundEnabled = false;
            editor.record.warningThreshold = 99; // unlike the sound, this one is the dialog's
        });
        QCOMPARE(editor.record.soundFilePath, "/sounds/bell.ogg");
        QVERIFY(!editor.record.soundEnabled);
        QCOMPARE(editor.record.warningThreshold, 17);
        QCOMPARE(storedLines(), fieldLines(editor.record));
    }

    void ok_withUnwritableStore_stillTakesEffect()
    {
        blockStore();
        Editor editor;
        const QSignalSpy changes(&editor.dialog, &SettingsDialog::settingsChanged);
        const int result =
            editor.runToOk([&] { editor.checkBox("Blink effect at zero")->click(); });
        removeStore();
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
        QVERIFY(!editor.record.blinkEnabled);
    }

    void closing_withoutOk_changesNothing_data()
    {
        QTest::addColumn<Step>("leave");
        QTest::newRow("Cancel") << Step([](Editor &editor) { editor.cancelButton()->click(); });
        QTest::newRow("Escape") << Step(
            [](Editor &editor) { QTest::keyClick(editor.dialog.windowHandle(), Qt::Key_Escape); });
        QTest::newRow("close button") << Step([](Editor &editor) { editor.dialog.close(); });
    }

    void closing_withoutOk_changesNothing()
    {
        QFETCH(const Step, leave);
        saveSettings(unusualRecord());
        const QByteArray stored = storeBytes();
        Editor editor(unusualRecord());
        const QSignalSpy changes(&editor.dialog, &SettingsDialog::settingsChanged);
        const QSignalSpy rejections(&editor.dialog, &QDialog::rejected);
        const auto isUntouched = [&] {
            return fieldLines(editor.record) == fieldLines(unusualRecord())
                && storeBytes() == stored && changes.isEmpty();
        };
        bool isClosed = false;
        const int result = editor.run([&] {
            editEverything(editor);
            QVERIFY(isUntouched());
            leave(editor);
            isClosed = !editor.dialog.isVisible();
        });
        QVERIFY(isClosed);
        QCOMPARE(result, int(QDialog::Rejected));
        QCOMPARE(rejections.size(), 1);
        QVERIFY(isUntouched());
    }

    // Unlike the About card's, the button is never disabled: every click is a check of its own. A
    // failure says nothing, and a check outlives the dialog to say to the user, and to nobody
    // else, that the program is up to date.
    void updateButton_startsACheckOfItsOwnByEveryClick()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        UpdateStage stage;
        auto editor = std::make_unique<Editor>();
        editor->run([&] {
            auto *button = findByText<QPushButton>(editor->dialog, "Check for Updates");
            QVERIFY(stage.server.tunnels().isEmpty());
            for (int clicks = 1; clicks <= 3; ++clicks) {
                QTest::mouseClick(button, Qt::LeftButton);
                QVERIFY(button->isEnabled());
                QCOMPARE(button->text(), "Check for Updates");
                QTRY_COMPARE(stage.server.requests().size(), clicks);
            }
            stage.server.answerLater(0, httpAnswer("", "500 Internal Server Error"));
            QVERIFY(stage.waitUntil([&] { return !stage.replies().constFirst(); }));
            QVERIFY(button->isEnabled());
            QCOMPARE(QApplication::activeModalWidget(), &editor->dialog);
            editor->cancelButton()->click();
        });
        QCOMPARE(fieldLines(editor->record), fieldLines(AppSettings()));
        QVERIFY(!storeExists());
        editor.reset();

        for (const int late : {1, 2})
            stage.server.answerLater(late, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle(3));
        QCOMPARE(stage.boxes().size(), 2);
        for (const SeenBox &box : stage.boxes())
            QCOMPARE(box.text, "You're up to date.\nVersion 1.1.4");
    }
};

VELMORA_TEST_MAIN(SettingsDialogTest)
#include "tst_SettingsDialog.moc"
