#include <QScreen>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

/// The Output window's button with more than one screen; the choice is ScreenPlacement's.
class ControlWindowOutputScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void toggle_goesFullScreenOnTheFirstScreenThatIsNotTheOperators()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), 3);
        ControlFixture fixture;
        fixture.showControl();
        // Where the Output window was moved to does not matter.
        fixture.output.setGeometry(50, 50, 300, 200);
        for (const int operatorScreen : {0, 1, 2}) {
            const QScreen *audience = screens.at(operatorScreen == 0 ? 1 : 0);
            fixture.window->setGeometry(100 + 1920 * operatorScreen, 100, 800, 900);
            QTRY_COMPARE(fixture.window->screen(), screens.at(operatorScreen));
            fixture.button("▶  Show Output Window")->click();
            QVERIFY(fixture.output.isVisible());
            QVERIFY(fixture.output.isFullScreen());
            QCOMPARE(fixture.output.geometry(), audience->geometry());
            QCOMPARE(fixture.output.screen(), audience);
            fixture.button("■  Hide Output Window")->click();
            QVERIFY(!fixture.output.isVisible());
        }
    }
};

VELMORA_TEST_MAIN(ControlWindowOutputScreensTest, threeScreens())
#include "tst_ControlWindowOutputScreens.moc"
