#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include "ScreenPlacement.h"
#include "TestMain.h"

namespace {

const QList<QRect> screens{QRect(0, 0, 1920, 1080), QRect(-1280, 100, 1280, 720),
                           QRect(1920, -400, 1080, 1920)};

void showOn(QWidget &window, int screen)
{
    window.setGeometry(QRect(screens.at(screen).topLeft() + QPoint(50, 50), QSize(500, 600)));
    window.show();
}

} // namespace

class ScreenPlacementTest : public QObject
{
    Q_OBJECT

private slots:
    void otherScreen_isCovered_data()
    {
        QTest::addColumn<int>("operatorScreen");
        QTest::addColumn<int>("audienceScreen");
        QTest::newRow("operator on the first") << 0 << 1;
        QTest::newRow("operator on the second") << 1 << 0;
        QTest::newRow("operator on the third") << 2 << 0;
    }

    void otherScreen_isCovered()
    {
        QFETCH(int, operatorScreen);
        QFETCH(int, audienceScreen);
        QCOMPARE(QGuiApplication::screens().size(), 3);
        QWidget control;
        QWidget audience;
        showOn(control, operatorScreen);
        const QRect before = control.geometry();
        QCOMPARE(control.screen(), QGuiApplication::screens().at(operatorScreen));
        showOnOtherScreen(audience, control);
        QVERIFY(audience.isVisible());
        QVERIFY(audience.isFullScreen());
        QCOMPARE(audience.geometry(), screens.at(audienceScreen));
        QCOMPARE(audience.screen(), QGuiApplication::screens().at(audienceScreen));
        QCOMPARE(control.geometry(), before);
        QVERIFY(control.isVisible());
        QVERIFY(!control.isFullScreen());
    }

    void placedAgain_followsTheOperatorsMove()
    {
        QWidget control;
        QWidget audience;
        showOn(control, 0);
        showOnOtherScreen(audience, control);
        QCOMPARE(audience.geometry(), screens.at(1));
        audience.hide();
        showOn(control, 1);
        QTRY_COMPARE(control.screen(), QGuiApplication::screens().at(1));
        showOnOtherScreen(audience, control);
        QVERIFY(audience.isFullScreen());
        // The offscreen platform does not move a window that is full screen, so only its screen
        // is looked at.
        QCOMPARE(audience.screen(), QGuiApplication::screens().at(0));
    }
};

VELMORA_TEST_MAIN(ScreenPlacementTest, TestPlatform{screens})
#include "tst_ScreenPlacement.moc"
