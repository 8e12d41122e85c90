#include <QScreen>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

const QRect firstScreen(0, 0, 1920, 1080);
const QRect secondScreen(1920, 0, 1920, 1080);

} // namespace

class ControlWindowOutputTwoScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::screens().size(), 2);
        QCOMPARE(QGuiApplication::screens().at(0)->geometry(), firstScreen);
        QCOMPARE(QGuiApplication::screens().at(1)->geometry(), secondScreen);
    }

    void toggle_goesFullScreenOnTheOtherScreen_data()
    {
        QTest::addColumn<QRect>("control");
        QTest::addColumn<QRect>("output");
        QTest::newRow("operator on the first") << QRect(100, 100, 800, 900) << secondScreen;
        QTest::newRow("operator on the second") << QRect(2020, 100, 800, 900) << firstScreen;
    }

    void toggle_goesFullScreenOnTheOtherScreen()
    {
        QFETCH(QRect, control);
        ControlFixture fixture;
        fixture.window->setGeometry(control);
        fixture.window->show();
        fixture.button("▶  Show Output Window")->click();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(fixture.output.isFullScreen());
        QTEST(fixture.output.geometry(), "output");
        QCOMPARE(fixture.output.screen()->geometry(), fixture.output.geometry());
        QVERIFY(fixture.button("■  Hide Output Window"));
    }

    void toggle_whileFullScreen_hides()
    {
        ControlFixture fixture;
        fixture.show();
        QVERIFY(fixture.output.isFullScreen());
        fixture.button("▶  Show Output Window")->click();
        QVERIFY(!fixture.output.isVisible());
        fixture.button("▶  Show Output Window")->click();
        QVERIFY(fixture.output.isFullScreen());
        QCOMPARE(fixture.output.geometry(), secondScreen);
        fixture.button("■  Hide Output Window")->click();
        QVERIFY(!fixture.output.isVisible());
    }

    void toggle_followsTheControlWindow()
    {
        ControlFixture fixture;
        fixture.window->setGeometry(100, 100, 800, 900);
        fixture.show();
        QCOMPARE(fixture.output.geometry(), secondScreen);
        fixture.window->toggleOutput();
        fixture.window->setGeometry(2020, 100, 800, 900);
        QTRY_COMPARE(fixture.window->screen(), QGuiApplication::screens().at(1));
        fixture.window->toggleOutput();
        QVERIFY(fixture.output.isFullScreen());
        QCOMPARE(fixture.output.geometry(), firstScreen);
    }

    void toggle_afterTheOutputWasMoved_placesItAnew()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.output.setGeometry(50, 50, 300, 200);
        fixture.output.show();
        fixture.window->toggleOutput();
        fixture.window->toggleOutput();
        QVERIFY(fixture.output.isFullScreen());
        QCOMPARE(fixture.output.geometry(), secondScreen);
    }
};

VELMORA_TEST_MAIN(ControlWindowOutputTwoScreensTest, twoScreens())
#include "tst_ControlWindowOutputTwoScreens.moc"
