#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include "StartupRun.h"
#include "Store.h"

namespace {

int run(const QList<QRect> &screens, const std::function<void()> &whileRunning)
{
    return runProgram({.platform = {.screens = screens},
                       .arguments = {},
                       .beforeProgram = {},
                       .whileRunning = [&whileRunning] {
                           whileRunning();
                           QCoreApplication::exit(0);
                       }});
}

const QRect left(0, 0, 1920, 1080);
const QRect right(1920, 0, 1280, 720);
const QRect above(0, -1200, 1600, 1200);

} // namespace

class StartupScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void oneScreen_showsAnOrdinaryWindow()
    {
        run({left}, [] {
            QCOMPARE(QGuiApplication::screens().size(), 1);
            QVERIFY(outputWindow()->isVisible());
            QVERIFY(!outputWindow()->isFullScreen());
            QCOMPARE(outputWindow()->windowState() & ~Qt::WindowActive, Qt::WindowNoState);
            QCOMPARE(outputWindow()->size(), QSize(800, 500));
        });
    }

    // The only screen need not begin at (0, 0), where a window is that was never placed.
    void oneScreen_leavesThePlaceToTheWindowManager()
    {
        run({right}, [] {
            QCOMPARE(controlWindow()->screen()->geometry(), right);
            QCOMPARE(outputWindow()->size(), QSize(800, 500));
            QVERIFY(!outputWindow()->testAttribute(Qt::WA_Moved));
        });
    }

    void moreScreens_coverTheFirstListedOther_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<int>("operatorScreen");
        QTest::addColumn<int>("audienceScreen");
        using Screens = QList<QRect>;
        // The platform opens a new window on the screen that holds the point (0, 0): the left
        // one. The first one listed is the primary one, which is not spared.
        QTest::newRow("two, operator on the first") << Screens{left, right} << 0 << 1;
        QTest::newRow("two, operator on the second") << Screens{right, left} << 1 << 0;
        QTest::newRow("three, operator on the first") << Screens{left, above, right} << 0 << 1;
        QTest::newRow("three, other order") << Screens{left, right, above} << 0 << 1;
        QTest::newRow("three, operator on the second") << Screens{above, left, right} << 1 << 0;
        QTest::newRow("three, operator on the third") << Screens{right, above, left} << 2 << 0;
    }

    void moreScreens_coverTheFirstListedOther()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(int, operatorScreen);
        QFETCH(int, audienceScreen);
        run(screens, [&] {
            const QList<QScreen *> listed = QGuiApplication::screens();
            QCOMPARE(listed.size(), screens.size());
            QCOMPARE(controlWindow()->screen(), listed.at(operatorScreen));
            QVERIFY(outputWindow()->isVisible());
            QVERIFY(outputWindow()->isFullScreen());
            QCOMPARE(outputWindow()->screen(), listed.at(audienceScreen));
            QCOMPARE(outputWindow()->geometry(), screens.at(audienceScreen));
        });
    }

    // Nothing about places is stored; keys that look like it are not read.
    void rememberedPlace_isNotUsed()
    {
        writeStoreBytes("[General]\ngeometry=@Rect(5 5 300 300)\nfullScreen=true\n");
        run({left}, [] {
            QVERIFY(!outputWindow()->isFullScreen());
            QCOMPARE(outputWindow()->size(), QSize(800, 500));
        });
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupScreensTest)
#include "tst_StartupScreens.moc"
