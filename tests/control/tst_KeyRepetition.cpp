#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "KeyRepetition.h"
#include "Operated.h"
#include "TestMain.h"

/// Keys that are held down until they repeat. What Qt does not mark as a repetition on X11 is
/// played in tests/journey.
class KeyRepetitionTest : public QObject
{
    Q_OBJECT

private slots:
    void heldKey_actsOnceOrRepeats_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("starts");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<int>("shows");
        QTest::addColumn<QString>("state");
        QTest::newRow("start/pause") << Qt::Key_Space << 1 << 0 << 0 << "stopped 290 shown";
        QTest::newRow("reset") << Qt::Key_R << 1 << 1 << 0 << "stopped 300 shown";
        QTest::newRow("plus") << Qt::Key_Up << 0 << 6 << 0 << "running 650 shown";
        QTest::newRow("minus") << Qt::Key_Down << 0 << 6 << 0 << "running 0 shown";
        QTest::newRow("output") << Qt::Key_O << 0 << 0 << 1 << "running 290 hidden";
    }

    // An even number of actions would leave a toggle as it was: so what is reported is counted.
    void heldKey_actsOnceOrRepeats()
    {
        QFETCH(Qt::Key, key);
        Operated operated;
        QVERIFY(focus(operated.output));
        const QSignalSpy stateChanged(&operated.engine, &TimerEngine::stateChanged);
        const QSignalSpy tick(&operated.engine, &TimerEngine::tick);
        const QSignalSpy shown(operated.output.windowHandle(), &QWindow::visibleChanged);
        hold(operated.output, key, 5);
        QTEST(int(stateChanged.count()), "starts");
        QTEST(int(tick.count()), "ticks");
        QTEST(int(shown.count()), "shows");
        QTEST(operated.state(), "state");
    }

    void heldKey_actsAgainWhenPressedAgainOrChanged()
    {
        Operated operated;
        QVERIFY(focus(operated.output));
        hold(operated.output, Qt::Key_Space, 3);
        QCOMPARE(operated.state(), paused);
        hold(operated.output, Qt::Key_Space, 3);
        QCOMPARE(operated.state(), untouched);
        operated.settings.shortcutStartPause = "F7";
        operated.window->onSettingsChanged();
        hold(operated.output, Qt::Key_F7, 5);
        QCOMPARE(operated.state(), paused);
    }

    void press_isARepetitionAfterAReleaseOfTheSameKeyAtTheSameTime_data()
    {
        QTest::addColumn<int>("releasedKey");
        QTest::addColumn<int>("pressedKey");
        QTest::addColumn<int>("pause");
        QTest::addColumn<bool>("repeating");
        QTest::newRow("the server's repetition") << 38 << 38 << 0 << true;
        QTest::newRow("pressed again") << 38 << 38 << 1 << false;
        QTest::newRow("two keys") << 38 << 39 << 0 << false;
        QTest::newRow("another key, later") << 38 << 39 << 1 << false;
    }

    // As they come from an X server, which Qt does not always mark.
    void press_isARepetitionAfterAReleaseOfTheSameKeyAtTheSameTime()
    {
        QFETCH(int, releasedKey);
        QFETCH(int, pressedKey);
        QFETCH(int, pause);
        KeyRepetition repetition;
        QObject application;
        application.installEventFilter(&repetition);
        const auto send = [&application](QEvent::Type type, int key, int milliseconds) {
            QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, quint32(key), 0, 0);
            event.setTimestamp(quint64(milliseconds));
            QCoreApplication::sendEvent(&application, &event);
        };
        QVERIFY(!repetition.isRepeating());
        send(QEvent::ShortcutOverride, 38, 0);
        QVERIFY(!repetition.isRepeating());
        send(QEvent::KeyRelease, releasedKey, 1000);
        QVERIFY(!repetition.isRepeating());
        QEvent other(QEvent::Timer);
        QCoreApplication::sendEvent(&application, &other);
        send(QEvent::ShortcutOverride, pressedKey, 1000 + pause);
        QTEST(repetition.isRepeating(), "repeating");
        // The press that follows says nothing more, the next release says the opposite.
        send(QEvent::KeyPress, 40, 2000);
        QTEST(repetition.isRepeating(), "repeating");
        send(QEvent::KeyRelease, pressedKey, 1000 + pause);
        QVERIFY(!repetition.isRepeating());
    }

    // What the shortcut does not repeat is not left to the button that has the focus either.
    void heldKey_onAFocusedButton_leavesTheButton()
    {
        Operated operated;
        QVERIFY(focus(*operated.window));
        operated.button("▲  Count Up")->setFocus();
        hold(*operated.window, Qt::Key_Space, 5);
        QCOMPARE(operated.state(), paused);
        QVERIFY(!operated.engine.isCountUp());
    }
};

VELMORA_TEST_MAIN(KeyRepetitionTest, twoScreens())
#include "tst_KeyRepetition.moc"
