#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "AppSettings.h"
#include "KeyCapture.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

/// How a row comes to wait for a key, and all that ends the wait or does not.
class SettingsDialogShortcutsWaitTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void cleanup()
    {
        QVERIFY(!QWidget::keyboardGrabber()); // no dialog takes the keyboard with it
    }

    void setKey_makesTheRowWait_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < 5; ++row)
            QTest::addRow("%d", row) << row;
    }

    void setKey_makesTheRowWait()
    {
        QFETCH(const int, row);
        KeyCapture capture;
        capture.run([&] {
            QVERIFY(capture.areAllIdle());
            QVERIFY(!capture.isGrabbed());
            capture.clickSetKey(row);
            for (int other = 0; other < 5; ++other)
                QVERIFY(other == row ? capture.isWaiting(other) : capture.isIdle(other));
            QVERIFY(capture.isGrabbed());
        });
    }

    void capturedKey_endsTheWait()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(0);
            capture.press(Qt::Key_F5);
            QCOMPARE(capture.keys(0), QStringLiteral("F5"));
            QVERIFY(capture.areAllIdle());
            QVERIFY(!capture.isGrabbed());
            QVERIFY(capture.dialog->isVisible());
        });
    }

    void modifierAlone_keepsTheWaitWithoutTheGrab_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Shift") << Qt::Key_Shift;
        QTest::newRow("Control") << Qt::Key_Control;
        QTest::newRow("Meta") << Qt::Key_Meta;
        QTest::newRow("Alt") << Qt::Key_Alt;
    }

    // The grab is not taken again: the next key arrives by normal propagation.
    void modifierAlone_keepsTheWaitWithoutTheGrab()
    {
        QFETCH(const Qt::Key, key);
        KeyCapture capture;
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

    void modifierThenCombination_isCaptured()
    {
        KeyCapture capture;
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

    void modifierThenEscape_cancels()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Shift);
            capture.press(Qt::Key_Escape);
            QCOMPARE(capture.keys(1), QStringLiteral("R"));
            QVERIFY(capture.areAllIdle());
            QVERIFY(capture.dialog->isVisible());
        });
    }

    void modifierThenOwnButton_takesTheGrabAgain()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.press(Qt::Key_Shift);
            capture.clickSetKey(1);
            QVERIFY(capture.isWaiting(1));
            QVERIFY(capture.isGrabbed());
        });
    }

    void escape_waiting_keepsSequenceAndDialog_data()
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

    void escape_waiting_keepsSequenceAndDialog()
    {
        QFETCH(const QString, stored);
        QFETCH(const QString, shown);
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        AppSettings start;
        start.shortcutReset = stored;
        KeyCapture capture;
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

    void escape_afterCancelledCapture_closes()
    {
        KeyCapture capture;
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

    // The button reads "Cancel", but a click on it makes the row wait again. Escape cancels.
    void ownButton_keepsTheRowWaiting()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.clickSetKey(1);
            QVERIFY(capture.isWaiting(1));
            QVERIFY(capture.isGrabbed());
            capture.press(Qt::Key_F8);
            QCOMPARE(capture.keys(1), QStringLiteral("F8"));
        });
    }

    void otherButton_movesTheWait()
    {
        KeyCapture capture;
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

    void clear_ofTheWaitingRow_endsTheWait()
    {
        KeyCapture capture;
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

    void clear_ofAnotherRow_keepsTheWait_data()
    {
        QTest::addColumn<int>("waiting");
        QTest::addColumn<int>("cleared");
        QTest::newRow("a row below") << 1 << 3;
        QTest::newRow("a row above") << 3 << 1;
    }

    void clear_ofAnotherRow_keepsTheWait()
    {
        QFETCH(const int, waiting);
        QFETCH(const int, cleared);
        KeyCapture capture;
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

    void resetAll_endsTheWait_data() { setKey_makesTheRowWait_data(); }

    void resetAll_endsTheWait()
    {
        QFETCH(const int, row);
        KeyCapture capture;
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

    void longSequence_survivesACancelledCapture()
    {
        AppSettings start;
        start.shortcutReset = QStringLiteral("Ctrl+K, Ctrl+C");
        KeyCapture capture;
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

    void ok_whileWaiting_storesTheOldSequence()
    {
        KeyCapture capture;
        capture.run([&] {
            capture.clickSetKey(1);
            capture.view().okButton()->click();
            QVERIFY(!capture.dialog->isVisible());
        });
        QCOMPARE(capture.record.shortcutReset, QStringLiteral("R"));
        capture.dialog.reset();
        QVERIFY(!QWidget::keyboardGrabber());
    }

    void closing_whileWaiting_changesNothing_data()
    {
        QTest::addColumn<bool>("byCancel");
        QTest::newRow("Cancel") << true;
        QTest::newRow("close button") << false;
    }

    void closing_whileWaiting_changesNothing()
    {
        QFETCH(const bool, byCancel);
        KeyCapture capture;
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
};

VELMORA_TEST_MAIN(SettingsDialogShortcutsWaitTest)
#include "tst_SettingsDialogShortcutsWait.moc"
