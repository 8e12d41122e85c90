#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include "ScreenPlacement.h"
#include "TestMain.h"

class ScreenPlacementOneScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void noOtherScreen_showsAnOrdinaryWindow_data()
    {
        QTest::addColumn<Qt::WindowStates>("before");
        QTest::newRow("never shown") << Qt::WindowStates(Qt::WindowNoState);
        // As after the second screen, which it covered, is gone.
        QTest::newRow("full screen before") << Qt::WindowStates(Qt::WindowFullScreen);
        QTest::newRow("maximised before") << Qt::WindowStates(Qt::WindowMaximized);
        QTest::newRow("minimised before") << Qt::WindowStates(Qt::WindowMinimized);
    }

    void noOtherScreen_showsAnOrdinaryWindow()
    {
        QFETCH(Qt::WindowStates, before);
        QCOMPARE(QGuiApplication::screens().size(), 1);
        QWidget control;
        QWidget audience;
        control.show();
        if (before != Qt::WindowNoState) {
            audience.setGeometry(audience.screen()->geometry());
            audience.setWindowState(before);
            audience.show();
            audience.hide();
        }
        showOnOtherScreen(audience, control);
        QVERIFY(audience.isVisible());
        QCOMPARE(audience.windowState() & ~Qt::WindowActive, Qt::WindowNoState);
        QCOMPARE(audience.size(), QSize(800, 500));
        QVERIFY(!audience.windowFlags().testFlag(Qt::FramelessWindowHint));
    }

    void shownAgain_staysInSight_data()
    {
        QTest::addColumn<QPoint>("before");
        QTest::addColumn<QPoint>("after");
        QTest::newRow("inside") << QPoint(300, 200) << QPoint(300, 200);
        QTest::newRow("with its middle inside") << QPoint(1500, 800) << QPoint(1500, 800);
        QTest::newRow("with a corner inside") << QPoint(1600, 900) << QPoint(0, 0);
        // Where a second screen was.
        QTest::newRow("outside") << QPoint(2500, 300) << QPoint(0, 0);
    }

    void shownAgain_staysInSight()
    {
        QFETCH(QPoint, before);
        QFETCH(QPoint, after);
        QWidget control;
        QWidget audience;
        control.show();
        showOnOtherScreen(audience, control);
        audience.move(before);
        audience.hide();
        showOnOtherScreen(audience, control);
        QVERIFY(audience.isVisible());
        QCOMPARE(audience.pos(), after);
    }
};

VELMORA_TEST_MAIN(ScreenPlacementOneScreenTest)
#include "tst_ScreenPlacementOneScreen.moc"
