#include <functional>
#include <optional>

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QString normalLook =
    QStringLiteral("background:#2b2b2b;color:#e8e8e8;border:1px solid #444;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");
const QString waitingLook =
    QStringLiteral("background:#5c4a00;color:#ffa500;border:1px solid #ffa500;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");

// The dialog with its Shortcuts page in front, to be run with a person at the keyboard.
struct Capture
{
    AppSettings record;
    std::optional<SettingsDialog> dialog;

    void run(const std::function<void()> &script, const AppSettings &start = {})
    {
        record = start;
        dialog.emplace(&record, nullptr);
        execWith(*dialog, [&] {
            view().showPage(QStringLiteral("Shortcuts"));
            script();
        });
    }
    DialogView view() { return DialogView(*dialog); }
    void clickSetKey(int row) { QTest::mouseClick(view().setKeyButton(row), Qt::LeftButton); }
    void clickClear(int row) { QTest::mouseClick(view().clearKeyButton(row), Qt::LeftButton); }
    // By the window system's way: to the grabber if there is one, else to the focus.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        // Without a text: the toolkit's table of them lacks keys like AltGr.
        QTest::sendKeyEvent(QTest::Click, dialog->windowHandle(), key, QString(), modifiers);
    }
    // One event with the modifiers as flags only, as a button panel sends it.
    void pressAlone(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&*dialog, &event);
    }

    QString keys(int row) { return view().keyLabel(row)->text(); }
    bool isGrabbed() const { return QWidget::keyboardGrabber() == &*dialog; }
    bool isWaiting(int row)
    {
        return keys(row) == QLatin1String("Press any key...")
            && view().keyLabel(row)->styleSheet() == waitingLook
            && view().setKeyButton(row)->text() == QLatin1String("Cancel");
    }
    bool isIdle(int row)
    {
        return keys(row) != QLatin1String("Press any key...")
            && view().keyLabel(row)->styleSheet() == normalLook
            && view().setKeyButton(row)->text() == QLatin1String("Set Key");
    }
    bool areAllIdle()
    {
        for (int row = 0; row < 5; ++row) {
            if (!isIdle(row))
                return false;
        }
        return true;
    }
};

} // namespace

class SettingsDialogShortcutsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void setKey_makesTheRowWait_data();
    void setKey_makesTheRowWait();
    void key_isCapturedAndStored_data();
    void key_isCapturedAndStored();
    void keyWithoutName_countsAsAKey_data();
    void keyWithoutName_countsAsAKey();
    void keyWithFlags_keepsEveryFlag_data();
    void keyWithFlags_keepsEveryFlag();
    void capturedKey_endsTheWait();
    void secondKey_afterCapture_isNotTaken();
    void keypadDigit_differsFromTheMainOne();
    void key_withoutCode_leavesNothing();
    void key_heldDown_countsAsAKey();
    void everyRow_takesItsOwnKey();
    void sameKey_inTwoRows_isStoredTwice();

    void modifierAlone_keepsTheWaitWithoutTheGrab_data();
    void modifierAlone_keepsTheWaitWithoutTheGrab();
    void modifierThenCombination_isCaptured();
    void modifierThenEscape_cancels();
    void modifierThenOwnButton_takesTheGrabAgain();

    void escape_waiting_keepsSequenceAndDialog_data();
    void escape_waiting_keepsSequenceAndDialog();
    void escape_afterCancelledCapture_closes();
    void enter_waiting_doesNotPressOk();
    void keys_idle_changeNothing();

    void ownButton_keepsTheRowWaiting();
    void otherButton_movesTheWait();
    void clear_ofTheWaitingRow_endsTheWait();
    void clear_ofAnotherRow_keepsTheWait_data();
    void clear_ofAnotherRow_keepsTheWait();
    void resetAll_endsTheWait_data();
    void resetAll_endsTheWait();
    void longSequence_survivesACancelledCapture();

    void ok_whileWaiting_storesTheOldSequence();
    void closing_whileWaiting_changesNothing_data();
    void closing_whileWaiting_changesNothing();
    void capturedKey_reachesTheRecordOnlyByOk();
};

void SettingsDialogShortcutsTest::init()
{
    removeStore();
}

void SettingsDialogShortcutsTest::cleanup()
{
    QVERIFY(!QWidget::keyboardGrabber()); // no dialog takes the keyboard with it
}

void SettingsDialogShortcutsTest::setKey_makesTheRowWait_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 5; ++row)
        QTest::addRow("%d", row) << row;
}

void SettingsDialogShortcutsTest::setKey_makesTheRowWait()
{
    QFETCH(const int, row);
    Capture capture;
    capture.run([&] {
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
        capture.clickSetKey(row);
        for (int other = 0; other < 5; ++other)
            QVERIFY(other == row ? capture.isWaiting(other) : capture.isIdle(other));
        QVERIFY(capture.isGrabbed());
    });
}

void SettingsDialogShortcutsTest::key_isCapturedAndStored_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("keys");
    const auto add = [](Qt::Key key, Qt::KeyboardModifiers modifiers, const char *keys) {
        QTest::newRow(keys) << key << modifiers << QString::fromLatin1(keys);
    };
    add(Qt::Key_A, {}, "A");
    add(Qt::Key_A, Qt::ShiftModifier, "Shift+A");
    add(Qt::Key_1, Qt::ControlModifier, "Ctrl+1");
    add(Qt::Key_X, Qt::MetaModifier, "Meta+X");
    add(Qt::Key_F4, Qt::AltModifier, "Alt+F4");
    add(Qt::Key_K, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier, "Ctrl+Alt+Shift+K");
    add(Qt::Key_5, Qt::KeypadModifier, "Num+5");
    add(Qt::Key_Plus, Qt::KeypadModifier, "Num++");
    add(Qt::Key_Enter, Qt::KeypadModifier, "Num+Enter");
    add(Qt::Key_Return, {}, "Return");
    add(Qt::Key_Delete, {}, "Del");
    add(Qt::Key_Backspace, {}, "Backspace");
    add(Qt::Key_Space, {}, "Space");
    add(Qt::Key_Left, {}, "Left");
    add(Qt::Key_F13, {}, "F13");
    add(Qt::Key_MediaTogglePlayPause, {}, "Toggle Media Play/Pause");
    add(Qt::Key_CapsLock, {}, "CapsLock");
    add(Qt::Key_NumLock, {}, "NumLock");
    add(Qt::Key_ScrollLock, {}, "ScrollLock");
    add(Qt::Key_Menu, {}, "Menu");
}

void SettingsDialogShortcutsTest::key_isCapturedAndStored()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QString, keys);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(key, modifiers);
        QCOMPARE(capture.keys(1), keys);
        QVERIFY(capture.areAllIdle());
        capture.view().okButton()->click();
    });
    AppSettings wanted;
    wanted.shortcutReset = keys;
    QCOMPARE(fieldLines(capture.record), fieldLines(wanted));
    QCOMPARE(storedLines(), fieldLines(wanted));
}

void SettingsDialogShortcutsTest::keyWithoutName_countsAsAKey_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("AltGr") << Qt::Key_AltGr;
    QTest::newRow("left Super") << Qt::Key_Super_L;
}

// Not every toolkit has a name for these; what it shows instead is its own affair.
void SettingsDialogShortcutsTest::keyWithoutName_countsAsAKey()
{
    QFETCH(const Qt::Key, key);
    const QKeySequence wanted(key);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(key);
        QCOMPARE(capture.keys(1), wanted.toString(QKeySequence::NativeText));
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
        capture.view().okButton()->click();
    });
    QCOMPARE(capture.record.shortcutReset, wanted.toString(QKeySequence::PortableText));
}

void SettingsDialogShortcutsTest::keyWithFlags_keepsEveryFlag_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("keys");
    QTest::newRow("Ctrl") << Qt::Key_1 << Qt::KeyboardModifiers(Qt::ControlModifier) << "Ctrl+1";
    QTest::newRow("keypad and Ctrl")
        << Qt::Key_7 << (Qt::KeypadModifier | Qt::ControlModifier) << "Ctrl+Num+7";
    QTest::newRow("keypad arrow") << Qt::Key_Up << Qt::KeyboardModifiers(Qt::KeypadModifier)
                                  << "Num+Up";
    QTest::newRow("all") << Qt::Key_F1
                         << (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier
                             | Qt::MetaModifier | Qt::KeypadModifier)
                         << "Meta+Ctrl+Alt+Shift+Num+F1";
    const QKeyCombination groupSwitched(Qt::GroupSwitchModifier, Qt::Key_E);
    QTest::newRow("AltGr held") << Qt::Key_E << Qt::KeyboardModifiers(Qt::GroupSwitchModifier)
                                << QKeySequence(groupSwitched).toString();
}

void SettingsDialogShortcutsTest::keyWithFlags_keepsEveryFlag()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QString, keys);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(4);
        capture.pressAlone(key, modifiers);
        QCOMPARE(capture.keys(4), keys);
        QVERIFY(!capture.isGrabbed());
        capture.view().okButton()->click();
    });
    QCOMPARE(capture.record.shortcutToggleOutput, keys);
}

void SettingsDialogShortcutsTest::capturedKey_endsTheWait()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(0);
        capture.press(Qt::Key_F5);
        QCOMPARE(capture.keys(0), QStringLiteral("F5"));
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
        QVERIFY(capture.dialog->isVisible());
    });
}

void SettingsDialogShortcutsTest::secondKey_afterCapture_isNotTaken()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(0);
        capture.press(Qt::Key_F5);
        capture.press(Qt::Key_F6);
        QCOMPARE(capture.keys(0), QStringLiteral("F5"));
    });
}

void SettingsDialogShortcutsTest::keypadDigit_differsFromTheMainOne()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(2);
        capture.press(Qt::Key_5);
        capture.clickSetKey(3);
        capture.press(Qt::Key_5, Qt::KeypadModifier);
        capture.view().okButton()->click();
    });
    QCOMPARE(capture.record.shortcutPlusMin, QStringLiteral("5"));
    QCOMPARE(capture.record.shortcutMinusMin, QStringLiteral("Num+5"));
}

// Some input methods report keys without a code.
void SettingsDialogShortcutsTest::key_withoutCode_leavesNothing()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(0);
        capture.pressAlone(Qt::Key(0), {});
        QCOMPARE(capture.keys(0), QStringLiteral("(none)"));
        QVERIFY(capture.areAllIdle());
        capture.view().okButton()->click();
    });
    QCOMPARE(capture.record.shortcutStartPause, QString());
}

// Its repetitions are key presses like the first one.
void SettingsDialogShortcutsTest::key_heldDown_countsAsAKey()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(0);
        QKeyEvent repetition(QEvent::KeyPress, Qt::Key_F6, {}, QString(), true);
        QCoreApplication::sendEvent(&*capture.dialog, &repetition);
        QCOMPARE(capture.keys(0), QStringLiteral("F6"));
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
    });
}

void SettingsDialogShortcutsTest::everyRow_takesItsOwnKey()
{
    Capture capture;
    capture.run([&] {
        for (int row = 0; row < 5; ++row) {
            capture.clickSetKey(row);
            capture.press(Qt::Key(Qt::Key_F1 + row));
        }
        capture.view().okButton()->click();
    });
    AppSettings wanted;
    wanted.shortcutStartPause = QStringLiteral("F1");
    wanted.shortcutReset = QStringLiteral("F2");
    wanted.shortcutPlusMin = QStringLiteral("F3");
    wanted.shortcutMinusMin = QStringLiteral("F4");
    wanted.shortcutToggleOutput = QStringLiteral("F5");
    QCOMPARE(fieldLines(capture.record), fieldLines(wanted));
}

void SettingsDialogShortcutsTest::sameKey_inTwoRows_isStoredTwice()
{
    Capture capture;
    capture.run([&] {
        for (const int row : {0, 3}) {
            capture.clickSetKey(row);
            capture.press(Qt::Key_R); // which row 1 has already
        }
        capture.view().okButton()->click();
    });
    QCOMPARE(capture.record.shortcutStartPause, QStringLiteral("R"));
    QCOMPARE(capture.record.shortcutReset, QStringLiteral("R"));
    QCOMPARE(capture.record.shortcutMinusMin, QStringLiteral("R"));
}

void SettingsDialogShortcutsTest::modifierAlone_keepsTheWaitWithoutTheGrab_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Shift") << Qt::Key_Shift;
    QTest::newRow("Control") << Qt::Key_Control;
    QTest::newRow("Meta") << Qt::Key_Meta;
    QTest::newRow("Alt") << Qt::Key_Alt;
}

void SettingsDialogShortcutsTest::modifierAlone_keepsTheWaitWithoutTheGrab()
{
    QFETCH(const Qt::Key, key);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        for (int times = 0; times < 2; ++times) {
            capture.press(key);
            QVERIFY(capture.isWaiting(1));
            QVERIFY(!QWidget::keyboardGrabber());
        }
        capture.press(Qt::Key_F7); // through the button that has the focus
        QCOMPARE(capture.keys(1), QStringLiteral("F7"));
        QVERIFY(capture.areAllIdle());
    });
}

void SettingsDialogShortcutsTest::modifierThenCombination_isCaptured()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        QTest::keyPress(capture.dialog->windowHandle(), Qt::Key_Shift);
        QVERIFY(capture.isWaiting(1));
        QVERIFY(!QWidget::keyboardGrabber());
        QTest::keyPress(capture.dialog->windowHandle(), Qt::Key_A, Qt::ShiftModifier);
        QCOMPARE(capture.keys(1), QStringLiteral("Shift+A"));
        QVERIFY(capture.areAllIdle());
    });
}

void SettingsDialogShortcutsTest::modifierThenEscape_cancels()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(Qt::Key_Shift);
        capture.press(Qt::Key_Escape);
        QCOMPARE(capture.keys(1), QStringLiteral("R"));
        QVERIFY(capture.areAllIdle());
        QVERIFY(capture.dialog->isVisible());
    });
}

void SettingsDialogShortcutsTest::modifierThenOwnButton_takesTheGrabAgain()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(Qt::Key_Shift);
        capture.clickSetKey(1);
        QVERIFY(capture.isWaiting(1));
        QVERIFY(capture.isGrabbed());
    });
}

void SettingsDialogShortcutsTest::escape_waiting_keepsSequenceAndDialog_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("some key") << "Ctrl+R"
                              << "Ctrl+R" << Qt::KeyboardModifiers();
    QTest::newRow("no key") << ""
                            << "(none)" << Qt::KeyboardModifiers();
    QTest::newRow("Shift held") << "Ctrl+R"
                                << "Ctrl+R" << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void SettingsDialogShortcutsTest::escape_waiting_keepsSequenceAndDialog()
{
    QFETCH(const QString, stored);
    QFETCH(const QString, shown);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    AppSettings start;
    start.shortcutReset = stored;
    Capture capture;
    capture.run(
        [&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Escape, modifiers);
            QCOMPARE(capture.keys(1), shown);
            QVERIFY(capture.areAllIdle());
            QVERIFY(!capture.isGrabbed());
            QVERIFY(capture.dialog->isVisible());
            capture.view().okButton()->click();
        },
        start);
    QCOMPARE(capture.record.shortcutReset, stored);
}

void SettingsDialogShortcutsTest::escape_afterCancelledCapture_closes()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(Qt::Key_Escape);
        QVERIFY(capture.dialog->isVisible());
        capture.press(Qt::Key_Escape);
        QVERIFY(!capture.dialog->isVisible());
    });
    QCOMPARE(capture.dialog->result(), int(QDialog::Rejected));
    QVERIFY(storeBytes().isEmpty());
}

void SettingsDialogShortcutsTest::enter_waiting_doesNotPressOk()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(Qt::Key_Return);
        QCOMPARE(capture.keys(1), QStringLiteral("Return"));
        QVERIFY(capture.dialog->isVisible());
    });
    QVERIFY(storeBytes().isEmpty());
}

void SettingsDialogShortcutsTest::keys_idle_changeNothing()
{
    Capture capture;
    capture.run([&] {
        capture.press(Qt::Key_X);
        capture.press(Qt::Key_1, Qt::ControlModifier);
        capture.press(Qt::Key_5, Qt::KeypadModifier);
        QVERIFY(capture.areAllIdle());
        capture.view().okButton()->click();
    });
    QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
}

void SettingsDialogShortcutsTest::ownButton_keepsTheRowWaiting()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.clickSetKey(1);
        QVERIFY(capture.isWaiting(1));
        QVERIFY(capture.isGrabbed());
        capture.press(Qt::Key_F8);
        QCOMPARE(capture.keys(1), QStringLiteral("F8"));
    });
}

void SettingsDialogShortcutsTest::otherButton_movesTheWait()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(0);
        capture.clickSetKey(2);
        QVERIFY(capture.isIdle(0));
        QCOMPARE(capture.keys(0), QStringLiteral("Space"));
        QVERIFY(capture.isWaiting(2));
        QVERIFY(capture.isGrabbed());
        capture.press(Qt::Key_F8);
        QCOMPARE(capture.keys(0), QStringLiteral("Space"));
        QCOMPARE(capture.keys(2), QStringLiteral("F8"));
    });
}

void SettingsDialogShortcutsTest::clear_ofTheWaitingRow_endsTheWait()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.clickClear(1);
        QCOMPARE(capture.keys(1), QStringLiteral("(none)"));
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
        capture.press(Qt::Key_F8);
        QCOMPARE(capture.keys(1), QStringLiteral("(none)"));
    });
}

void SettingsDialogShortcutsTest::clear_ofAnotherRow_keepsTheWait_data()
{
    QTest::addColumn<int>("waiting");
    QTest::addColumn<int>("cleared");
    QTest::newRow("a row below") << 1 << 3;
    QTest::newRow("a row above") << 3 << 1;
}

void SettingsDialogShortcutsTest::clear_ofAnotherRow_keepsTheWait()
{
    QFETCH(const int, waiting);
    QFETCH(const int, cleared);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(waiting);
        capture.clickClear(cleared);
        QVERIFY(capture.isWaiting(waiting));
        QVERIFY(capture.isGrabbed());
        QCOMPARE(capture.keys(cleared), QStringLiteral("(none)"));
        QVERIFY(capture.isIdle(cleared));
        capture.press(Qt::Key_F8);
        QCOMPARE(capture.keys(waiting), QStringLiteral("F8"));
    });
}

void SettingsDialogShortcutsTest::resetAll_endsTheWait_data()
{
    setKey_makesTheRowWait_data();
}

void SettingsDialogShortcutsTest::resetAll_endsTheWait()
{
    QFETCH(const int, row);
    Capture capture;
    capture.run([&] {
        const QString keys = capture.keys(row);
        capture.clickSetKey(row);
        QTest::mouseClick(capture.view().resetKeysButton(), Qt::LeftButton);
        QVERIFY(capture.areAllIdle());
        QVERIFY(!capture.isGrabbed());
        capture.press(Qt::Key_F8);
        QCOMPARE(capture.keys(row), keys);
    });
}

void SettingsDialogShortcutsTest::longSequence_survivesACancelledCapture()
{
    AppSettings start;
    start.shortcutReset = QStringLiteral("Ctrl+K, Ctrl+C");
    Capture capture;
    capture.run(
        [&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Escape);
            QCOMPARE(capture.keys(1), QStringLiteral("Ctrl+K, Ctrl+C"));
            capture.view().okButton()->click();
        },
        start);
    QCOMPARE(capture.record.shortcutReset, QStringLiteral("Ctrl+K, Ctrl+C"));
}

void SettingsDialogShortcutsTest::ok_whileWaiting_storesTheOldSequence()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.view().okButton()->click();
        QVERIFY(!capture.dialog->isVisible());
    });
    QCOMPARE(capture.record.shortcutReset, QStringLiteral("R"));
    capture.dialog.reset();
    QVERIFY(!QWidget::keyboardGrabber());
}

void SettingsDialogShortcutsTest::closing_whileWaiting_changesNothing_data()
{
    QTest::addColumn<bool>("byCancel");
    QTest::newRow("Cancel") << true;
    QTest::newRow("close button") << false;
}

void SettingsDialogShortcutsTest::closing_whileWaiting_changesNothing()
{
    QFETCH(const bool, byCancel);
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        if (byCancel)
            capture.view().cancelButton()->click();
        else
            capture.dialog->close();
        QVERIFY(!capture.dialog->isVisible());
    });
    QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
    QVERIFY(storeBytes().isEmpty());
    capture.dialog.reset();
    QVERIFY(!QWidget::keyboardGrabber());
}

void SettingsDialogShortcutsTest::capturedKey_reachesTheRecordOnlyByOk()
{
    Capture capture;
    capture.run([&] {
        capture.clickSetKey(1);
        capture.press(Qt::Key_F8);
        QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
        capture.view().cancelButton()->click();
    });
    QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
    QVERIFY(storeBytes().isEmpty());
}

VELMORA_TEST_MAIN(SettingsDialogShortcutsTest)
#include "tst_SettingsDialogShortcuts.moc"
