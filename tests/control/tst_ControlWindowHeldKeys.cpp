#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "ControlFixture.h"
#include "Operated.h"
#include "TestMain.h"

/// Keys that are held down until they repeat.
class ControlWindowHeldKeysTest : public QObject
{
    Q_OBJECT

private slots:
    // An even number of actions would leave a toggle as it was.
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

    void heldKey_actsOnceOrRepeats()
    {
        QFETCH(Qt::Key, key);
        QFETCH(int, starts);
        QFETCH(int, ticks);
        QFETCH(int, shows);
        QFETCH(QString, state);
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        const QSignalSpy stateChanged(&operated.fixture.engine, &TimerEngine::stateChanged);
        const QSignalSpy tick(&operated.fixture.engine, &TimerEngine::tick);
        const QSignalSpy shown(operated.fixture.output.windowHandle(), &QWindow::visibleChanged);
        hold(operated.fixture.output, key, 5);
        QCOMPARE(stateChanged.count(), starts);
        QCOMPARE(tick.count(), ticks);
        QCOMPARE(shown.count(), shows);
        QCOMPARE(operated.state(), state);
    }

    void heldKey_actsAgainWhenPressedAgain()
    {
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        hold(operated.fixture.output, Qt::Key_Space, 3);
        QCOMPARE(operated.state(), paused);
        hold(operated.fixture.output, Qt::Key_Space, 3);
        QCOMPARE(operated.state(), untouched);
    }

    // What the shortcut does not repeat is not left to the button that has the focus either.
    void heldKey_onAFocusedButton_leavesTheButton()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QAbstractButton *button = operated.fixture.button("▲  Count Up");
        button->setFocus();
        hold(*operated.fixture.window, Qt::Key_Space, 5);
        QCOMPARE(operated.state(), paused);
        QVERIFY(!operated.fixture.engine.isCountUp());
    }

    void changedKey_actsOnceToo()
    {
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        operated.fixture.settings.shortcutStartPause = QStringLiteral("F7");
        operated.fixture.window->onSettingsChanged();
        hold(operated.fixture.output, Qt::Key_F7, 5);
        QCOMPARE(operated.state(), paused);
    }
};

VELMORA_TEST_MAIN(ControlWindowHeldKeysTest, twoScreens())
#include "tst_ControlWindowHeldKeys.moc"
