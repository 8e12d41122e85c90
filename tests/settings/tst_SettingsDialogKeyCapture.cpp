#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "Editor.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Modifiers = Qt::KeyboardModifiers;

const QString waitingLook =
    "background:#5c4a00;color:#ffa500;border:1px solid #ffa500;border-radius:4px;"
    "padding:4px 10px;font-family:monospace;";

/// The dialog with its Shortcuts page in front, and the user at the keyboard.
struct KeyCapture : Editor
{
    explicit KeyCapture(const AppSettings &start = {})
        : Editor(start)
    {
        showPage("Shortcuts");
    }
    void clickSetKey(int row) { QTest::mouseClick(setKeyButton(row), Qt::LeftButton); }
    void clickClear(int row) { QTest::mouseClick(clearKeyButton(row), Qt::LeftButton); }
    /// By the window system's way: to the grabber if there is one, else to the focus. Modifiers
    /// are pressed before the key.
    void press(Qt::Key key, Modifiers modifiers = {})
    {
        // Without a text: Qt's table of them lacks keys like AltGr.
        QTest::sendKeyEvent(QTest::Click, dialog.windowHandle(), key, QString(), modifiers);
    }
    /// One event with the modifiers as flags only, as a button panel sends it.
    void pressAlone(Qt::Key key, Modifiers modifiers = {}, bool isRepetition = false)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), isRepetition);
        QCoreApplication::sendEvent(&dialog, &event);
    }

    QString keys(int row) const { return keyLabel(row)->text(); }
    bool isGrabbed() const { return QWidget::keyboardGrabber() == &dialog; }
    bool isWaiting(int row) const
    {
        return keys(row) == "Press any key..." && keyLabel(row)->styleSheet() == waitingLook
            && setKeyButton(row)->text() == "Cancel";
    }
    bool isIdle(int row) const
    {
        return keys(row) != "Press any key..." && keyLabel(row)->styleSheet() == idleLook
            && setKeyButton(row)->text() == "Set Key";
    }
    /// No row waits, the keyboard is free and the dialog open.
    bool isIdle() const
    {
        bool areRowsIdle = true;
        for (int row = 0; row < 5; ++row)
            areRowsIdle = areRowsIdle && isIdle(row);
        return areRowsIdle && !QWidget::keyboardGrabber() && dialog.isVisible();
    }
    const QString idleLook = keyLabel(0)->styleSheet();
};

} // namespace

/// How a row of the Shortcuts page comes to wait for a key, what ends the wait or does not, and
/// which keys it takes.
class SettingsDialogKeyCaptureTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void cleanup()
    {
        QVERIFY(!QWidget::keyboardGrabber()); // no dialog takes the keyboard with it
    }

    void key_isCapturedAndStored_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Modifiers>("modifiers");
        QTest::addColumn<QString>("keys");
        const auto add = [](Qt::Key key, Modifiers modifiers, const QString &keys) {
            QTest::newRow(qPrintable(keys)) << key << modifiers << keys;
        };
        const Modifiers three = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;
        add(Qt::Key_A, {}, "A");
        add(Qt::Key_A, Qt::ShiftModifier, "Shift+A");
        add(Qt::Key_1, Qt::ControlModifier, "Ctrl+1");
        add(Qt::Key_X, Qt::MetaModifier, "Meta+X");
        add(Qt::Key_F4, Qt::AltModifier, "Alt+F4");
        add(Qt::Key_K, three, "Ctrl+Alt+Shift+K");
        add(Qt::Key_F1, three | Qt::MetaModifier | Qt::KeypadModifier,
            "Meta+Ctrl+Alt+Shift+Num+F1");
        add(Qt::Key_5, {}, "5");
        add(Qt::Key_5, Qt::KeypadModifier, "Num+5");
        add(Qt::Key_7, Qt::KeypadModifier | Qt::ControlModifier, "Ctrl+Num+7");
        add(Qt::Key_Up, Qt::KeypadModifier, "Num+Up");
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
        // Not every version of Qt has a name for these; what it shows instead is its own affair.
        const QKeyCombination groupSwitched(Qt::GroupSwitchModifier, Qt::Key_E);
        add(Qt::Key_E, Qt::GroupSwitchModifier, QKeySequence(groupSwitched).toString());
        add(Qt::Key_AltGr, {}, QKeySequence(Qt::Key_AltGr).toString());
        add(Qt::Key_Super_L, {}, QKeySequence(Qt::Key_Super_L).toString());
    }

    // The lock keys are keys as any other: only Shift, Control, Meta and Alt are waited through.
    void key_isCapturedAndStored()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const Modifiers, modifiers);
        QFETCH(const QString, keys);
        KeyCapture capture;
        capture.runToOk([&] {
            capture.clickSetKey(1);
            capture.press(key, modifiers);
            QCOMPARE(capture.keys(1), keys);
            QVERIFY(capture.isIdle());
            capture.clickSetKey(4);
            capture.pressAlone(key, modifiers);
            QCOMPARE(capture.keys(4), keys);
            QVERIFY(capture.isIdle());
            QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
        });
        AppSettings wanted;
        wanted.shortcutReset = keys;
        wanted.shortcutToggleOutput = keys;
        QCOMPARE(fieldLines(capture.record), fieldLines(wanted));
    }

    void key_afterCapture_isNotTaken()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            capture.press(Qt::Key_F5);
            capture.press(Qt::Key_F6);
            QCOMPARE(capture.keys(0), "F5");
        });
    }

    // Some input methods report keys without a code.
    void key_withoutCode_leavesNothing()
    {
        KeyCapture capture;
        capture.runToOk([&] {
            capture.clickSetKey(0);
            capture.pressAlone(Qt::Key(0));
            QCOMPARE(capture.keys(0), "(none)");
            QVERIFY(capture.isIdle());
        });
        QCOMPARE(capture.record.shortcutStartPause, QString());
    }

    // Its repetitions are key presses like the first one.
    void key_heldDown_countsAsAKey()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            capture.pressAlone(Qt::Key_F6, {}, true);
            QCOMPARE(capture.keys(0), "F6");
            QVERIFY(capture.isIdle());
        });
    }

    void everyRow_takesItsOwnKey()
    {
        KeyCapture capture;
        capture.runToOk([&] {
            for (int row = 0; row < 5; ++row) {
                capture.clickSetKey(row);
                capture.press(Qt::Key(Qt::Key_F1 + row));
            }
        });
        AppSettings wanted;
        wanted.shortcutStartPause = "F1";
        wanted.shortcutReset = "F2";
        wanted.shortcutPlusMin = "F3";
        wanted.shortcutMinusMin = "F4";
        wanted.shortcutToggleOutput = "F5";
        QCOMPARE(fieldLines(capture.record), fieldLines(wanted));
    }

    void sameKey_inTwoRows_isStoredTwice()
    {
        KeyCapture capture;
        capture.runToOk([&] {
            capture.clickSetKey(3);
            capture.press(Qt::Key_R); // which row 1 has already
        });
        AppSettings wanted;
        wanted.shortcutMinusMin = wanted.shortcutReset;
        QCOMPARE(fieldLines(capture.record), fieldLines(wanted));
    }

    void keys_idle_changeNothing()
    {
        KeyCapture capture;
        capture.runToOk([&] {
            capture.press(Qt::Key_X);
            capture.press(Qt::Key_1, Qt::ControlModifier);
            capture.press(Qt::Key_5, Qt::KeypadModifier);
            QVERIFY(capture.isIdle());
        });
        QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
    }

    void setKey_makesTheRowWaitUntilResetAll()
    {
        KeyCapture capture;
        capture.run([&] {
            for (int row = 0; row < 5; ++row) {
                const QString keys = capture.keys(row);
                capture.clickSetKey(row);
                for (int other = 0; other < 5; ++other)
                    QVERIFY(other == row ? capture.isWaiting(other) : capture.isIdle(other));
                QVERIFY(capture.isGrabbed());
                QTest::mouseClick(capture.resetKeysButton(), Qt::LeftButton);
                QVERIFY(capture.isIdle());
                capture.press(Qt::Key_F8);
                QCOMPARE(capture.keys(row), keys);
            }
        });
    }

    // The grab is not taken again: the next key arrives by normal propagation.
    void modifierAlone_keepsTheWaitWithoutTheGrab()
    {
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta, Qt::Key_Alt}) {
            KeyCapture capture;
            capture.run([&] {
                capture.clickSetKey(1);
                for (int times = 0; times < 2; ++times) {
                    capture.press(key);
                    QVERIFY(capture.isWaiting(1));
                    QVERIFY(!QWidget::keyboardGrabber());
                }
                capture.press(Qt::Key_F7); // through the button that has the focus
                QCOMPARE(capture.keys(1), "F7");
                QVERIFY(capture.isIdle());
            });
        }
    }

    void escape_waiting_keepsTheSequence_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<Modifiers>("modifiers");
        const Modifiers none;
        QTest::newRow("some key") << "Ctrl+R"
                                  << "Ctrl+R" << none;
        QTest::newRow("no key") << ""
                                << "(none)" << none;
        QTest::newRow("two keys") << "Ctrl+K, Ctrl+C"
                                  << "Ctrl+K, Ctrl+C" << none;
        QTest::newRow("Shift held") << "Ctrl+R"
                                    << "Ctrl+R" << Modifiers(Qt::ShiftModifier);
    }

    void escape_waiting_keepsTheSequence()
    {
        QFETCH(const QString, stored);
        QFETCH(const Modifiers, modifiers);
        AppSettings start;
        start.shortcutReset = stored;
        KeyCapture capture(start);
        capture.runToOk([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Escape, modifiers);
            QTEST(capture.keys(1), "shown");
            QVERIFY(capture.isIdle());
        });
        QCOMPARE(capture.record.shortcutReset, stored);
    }

    void escape_afterCancelledCapture_closes()
    {
        KeyCapture capture;
        const int result = capture.run([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Escape);
            QVERIFY(capture.dialog.isVisible());
            capture.press(Qt::Key_Escape);
            QVERIFY(!capture.dialog.isVisible());
        });
        QCOMPARE(result, int(QDialog::Rejected));
        QVERIFY(!storeExists());
    }

    // The button reads "Cancel", but a click on it makes the row wait again, with the grab that a
    // modifier may have released. Escape cancels.
    void ownButton_keepsTheRowWaiting()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.clickSetKey(1);
            QVERIFY(capture.isWaiting(1));
            QVERIFY(capture.isGrabbed());
            capture.press(Qt::Key_Shift);
            QVERIFY(!capture.isGrabbed());
            capture.clickSetKey(1);
            QVERIFY(capture.isWaiting(1));
            QVERIFY(capture.isGrabbed());
            capture.press(Qt::Key_F8);
            QCOMPARE(capture.keys(1), "F8");
        });
    }

    void otherButton_movesTheWait()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            capture.clickSetKey(2);
            QVERIFY(capture.isIdle(0));
            QVERIFY(capture.isWaiting(2));
            QVERIFY(capture.isGrabbed());
            capture.press(Qt::Key_F8);
            QCOMPARE(capture.keys(0), "Space");
            QCOMPARE(capture.keys(2), "F8");
        });
    }

    void clear_endsTheWaitOfItsOwnRow_data()
    {
        QTest::addColumn<int>("cleared");
        QTest::addColumn<bool>("isWaiting");
        QTest::addColumn<QString>("keys");
        QTest::newRow("its own") << 2 << false << "(none)";
        QTest::newRow("a row below") << 3 << true << "F8";
        QTest::newRow("a row above") << 1 << true << "F8";
    }

    void clear_endsTheWaitOfItsOwnRow()
    {
        QFETCH(const int, cleared);
        QFETCH(const bool, isWaiting);
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(2);
            capture.clickClear(cleared);
            QCOMPARE(capture.keys(cleared), "(none)");
            QVERIFY(capture.isIdle(cleared));
            QCOMPARE(capture.isWaiting(2), isWaiting);
            QCOMPARE(capture.isGrabbed(), isWaiting);
            capture.press(Qt::Key_F8);
            QTEST(capture.keys(2), "keys");
        });
    }

    void closing_waiting_storesTheOldSequence_data()
    {
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::newRow("OK") << QDialogButtonBox::Ok;
        QTest::newRow("Cancel") << QDialogButtonBox::Cancel;
        QTest::newRow("close button") << QDialogButtonBox::NoButton;
    }

    // cleanup() sees that the keyboard is free once the dialog is gone.
    void closing_waiting_storesTheOldSequence()
    {
        QFETCH(const QDialogButtonBox::StandardButton, button);
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            if (button == QDialogButtonBox::NoButton)
                capture.dialog.close();
            else
                ::press(capture.dialog, button);
            QVERIFY(!capture.dialog.isVisible());
        });
        QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
        QCOMPARE(storeExists(), button == QDialogButtonBox::Ok);
    }
};

VELMORA_TEST_MAIN(SettingsDialogKeyCaptureTest)
#include "tst_SettingsDialogKeyCapture.moc"
