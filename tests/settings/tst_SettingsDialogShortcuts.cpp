#include <QKeyEvent>
#include <QTest>

#include "AppSettings.h"
#include "KeyCapture.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

/// Which keys a waiting row takes, and what it makes of them.
class SettingsDialogShortcutsTest : public QObject
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
        add(Qt::Key_K, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier,
            "Ctrl+Alt+Shift+K");
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

    // The lock keys are keys as any other: only Shift, Control, Meta and Alt are waited through.
    void key_isCapturedAndStored()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        QFETCH(const QString, keys);
        KeyCapture capture;
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

    void keyWithoutName_countsAsAKey_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("AltGr") << Qt::Key_AltGr;
        QTest::newRow("left Super") << Qt::Key_Super_L;
    }

    // Not every version of Qt has a name for these; what it shows instead is its own affair.
    void keyWithoutName_countsAsAKey()
    {
        QFETCH(const Qt::Key, key);
        const QKeySequence wanted(key);
        KeyCapture capture;
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

    void keyWithFlags_keepsEveryFlag_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("keys");
        QTest::newRow("Ctrl") << Qt::Key_1 << Qt::KeyboardModifiers(Qt::ControlModifier)
                              << "Ctrl+1";
        QTest::newRow("keypad and Ctrl")
            << Qt::Key_7 << (Qt::KeypadModifier | Qt::ControlModifier) << "Ctrl+Num+7";
        QTest::newRow("keypad arrow")
            << Qt::Key_Up << Qt::KeyboardModifiers(Qt::KeypadModifier) << "Num+Up";
        QTest::newRow("all") << Qt::Key_F1
                             << (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier
                                 | Qt::MetaModifier | Qt::KeypadModifier)
                             << "Meta+Ctrl+Alt+Shift+Num+F1";
        const QKeyCombination groupSwitched(Qt::GroupSwitchModifier, Qt::Key_E);
        QTest::newRow("AltGr held") << Qt::Key_E << Qt::KeyboardModifiers(Qt::GroupSwitchModifier)
                                    << QKeySequence(groupSwitched).toString();
    }

    void keyWithFlags_keepsEveryFlag()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        QFETCH(const QString, keys);
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(4);
            capture.pressAlone(key, modifiers);
            QCOMPARE(capture.keys(4), keys);
            QVERIFY(!capture.isGrabbed());
            capture.view().okButton()->click();
        });
        QCOMPARE(capture.record.shortcutToggleOutput, keys);
    }

    void secondKey_afterCapture_isNotTaken()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            capture.press(Qt::Key_F5);
            capture.press(Qt::Key_F6);
            QCOMPARE(capture.keys(0), QStringLiteral("F5"));
        });
    }

    void keypadDigit_differsFromTheMainOne()
    {
        KeyCapture capture;
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
    void key_withoutCode_leavesNothing()
    {
        KeyCapture capture;
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
    void key_heldDown_countsAsAKey()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            QKeyEvent repetition(QEvent::KeyPress, Qt::Key_F6, {}, QString(), true);
            QCoreApplication::sendEvent(&*capture.dialog, &repetition);
            QCOMPARE(capture.keys(0), QStringLiteral("F6"));
            QVERIFY(capture.areAllIdle());
            QVERIFY(!capture.isGrabbed());
        });
    }

    void everyRow_takesItsOwnKey()
    {
        KeyCapture capture;
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

    void sameKey_inTwoRows_isStoredTwice()
    {
        KeyCapture capture;
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

    void enter_waiting_doesNotPressOk()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Return);
            QCOMPARE(capture.keys(1), QStringLiteral("Return"));
            QVERIFY(capture.dialog->isVisible());
        });
        QVERIFY(storeBytes().isEmpty());
    }

    void keys_idle_changeNothing()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.press(Qt::Key_X);
            capture.press(Qt::Key_1, Qt::ControlModifier);
            capture.press(Qt::Key_5, Qt::KeypadModifier);
            QVERIFY(capture.areAllIdle());
            capture.view().okButton()->click();
        });
        QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
    }

    void capturedKey_reachesTheRecordOnlyByOk()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_F8);
            QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
            capture.view().cancelButton()->click();
        });
        QCOMPARE(fieldLines(capture.record), fieldLines(AppSettings()));
        QVERIFY(storeBytes().isEmpty());
    }
};

VELMORA_TEST_MAIN(SettingsDialogShortcutsTest)
#include "tst_SettingsDialogShortcuts.moc"
