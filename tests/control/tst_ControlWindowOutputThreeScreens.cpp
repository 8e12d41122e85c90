#include <QScreen>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

class ControlWindowOutputThreeScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::screens().size(), 3); }

    void toggle_takesTheFirstListedScreenThatIsNotTheOperators_data()
    {
        QTest::addColumn<int>("operatorScreen");
        QTest::addColumn<int>("audienceScreen");
        QTest::newRow("operator on the first") << 0 << 1;
        QTest::newRow("operator on the second") << 1 << 0;
        QTest::newRow("operator on the third") << 2 << 0;
    }

    void toggle_takesTheFirstListedScreenThatIsNotTheOperators()
    {
        QFETCH(int, operatorScreen);
        QFETCH(int, audienceScreen);
        const QList<QScreen *> screens = QGuiApplication::screens();
        ControlFixture fixture;
        fixture.window->setGeometry(
            QRect(screens.at(operatorScreen)->geometry().topLeft(), QSize(800, 900))
                .translated(100, 100));
        fixture.window->show();
        QCOMPARE(fixture.window->screen(), screens.at(operatorScreen));
        fixture.window->toggleOutput();
        QVERIFY(fixture.output.isFullScreen());
        QCOMPARE(fixture.output.geometry(), screens.at(audienceScreen)->geometry());
        QCOMPARE(fixture.output.screen(), screens.at(audienceScreen));
    }
};

VELMORA_TEST_MAIN(ControlWindowOutputThreeScreensTest, threeScreens())
#include "tst_ControlWindowOutputThreeScreens.moc"
