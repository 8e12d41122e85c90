#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "Find.h"
#include "StartupRun.h"
#include "Store.h"

namespace {

const QRect left(0, 0, 1920, 1080);
const QRect right(1920, 0, 1280, 720);
const QRect above(0, -1200, 1600, 1200);
using Screens = QList<QRect>;

} // namespace

/// Where the start puts its windows, and how their closing ends the program.
class StartupWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    // Nothing about places is stored; keys that look like it are not read.
    void oneScreen_showsTwoOrdinaryWindows()
    {
        writeStoreBytes("[General]\ngeometry=@Rect(5 5 300 300)\nfullScreen=true\n");
        visitProgram(
            [] {
                QCOMPARE(QGuiApplication::screens().size(), 1);
                for (const QWidget *window : QWidgetList{controlWindow(), outputWindow()}) {
                    QVERIFY(window->isVisible());
                    QCOMPARE(window->windowState() & ~Qt::WindowActive, Qt::WindowNoState);
                    QVERIFY(!window->parent());
                    QVERIFY(window->windowIcon().isNull());
                }
                QCOMPARE(outputWindow()->size(), QSize(800, 500));
                // Intended: the start shows the window without toggleOutput(), which alone changes
                // the text.
                const auto *toggle = controlWindow()->findChild<QPushButton *>("outputToggleBtn");
                QCOMPARE(toggle->text(), QStringLiteral("▶  Show Output Window"));
            },
            {.platform = {.screens = {left}}});
    }

    // The only screen need not begin at (0, 0), where a window is that was never placed.
    void oneScreen_leavesThePlaceToTheWindowManager()
    {
        visitProgram(
            [] {
                QCOMPARE(controlWindow()->screen()->geometry(), right);
                QCOMPARE(outputWindow()->size(), QSize(800, 500));
                QVERIFY(!outputWindow()->testAttribute(Qt::WA_Moved));
            },
            {.platform = {.screens = {right}}});
    }

    void moreScreens_coverTheFirstListedOther_data()
    {
        QTest::addColumn<Screens>("screens");
        QTest::addColumn<int>("operatorScreen");
        QTest::addColumn<int>("audienceScreen");
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
        QFETCH(Screens, screens);
        QFETCH(int, operatorScreen);
        QFETCH(int, audienceScreen);
        const auto check = [&] {
            const QList<QScreen *> listed = QGuiApplication::screens();
            QCOMPARE(listed.size(), screens.size());
            QCOMPARE(controlWindow()->screen(), listed.at(operatorScreen));
            QVERIFY(outputWindow()->isVisible());
            QVERIFY(outputWindow()->isFullScreen());
            QCOMPARE(outputWindow()->screen(), listed.at(audienceScreen));
            QCOMPARE(outputWindow()->geometry(), screens.at(audienceScreen));
        };
        visitProgram(check, {.platform = {.screens = screens}});
    }

    void closingTheControlWindow_endsTheProgram_data()
    {
        QTest::addColumn<Screens>("screens");
        QTest::addColumn<bool>("preview");
        QTest::addColumn<bool>("outputHidden");
        QTest::addColumn<bool>("running");
        for (const Screens &screens : {Screens{left}, Screens{left, right}}) {
            for (const bool preview : {false, true}) {
                for (const bool hidden : {false, true}) {
                    QTest::addRow("%d screens%s%s", int(screens.size()),
                                  preview ? ", preview open" : "", hidden ? ", output hidden" : "")
                        << screens << preview << hidden << false;
                }
            }
        }
        QTest::newRow("while the count runs") << Screens{left, right} << true << false << true;
    }

    void closingTheControlWindow_endsTheProgram()
    {
        QFETCH(Screens, screens);
        QFETCH(bool, preview);
        QFETCH(bool, outputHidden);
        QFETCH(bool, running);
        const auto close = [=] {
            if (running)
                button("▶  START")->click();
            if (preview) {
                button("Preview")->click();
                QVERIFY(findWindow("Output Preview"));
            }
            if (outputHidden) {
                controlWindow()->findChild<QPushButton *>("outputToggleBtn")->click();
                QVERIFY(!outputWindow()->isVisible());
            }
            QVERIFY(controlWindow()->close());
            QVERIFY(!outputWindow()->isVisible());
        };
        QCOMPARE(runProgram(close, {.platform = {.screens = screens}}), 0);
    }

    // A program that its windows end does not get to the second round of its event loop.
    void closingTheOutputWindow_keepsTheProgram()
    {
        const auto close = [] {
            outputWindow()->close();
            QTimer::singleShot(
                0, qApp, [] { QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); }); });
        };
        QCOMPARE(runProgram(close), 7);
    }

    void secondRun_inTheSameProcessStartsAfresh()
    {
        const auto addAMinute = [] {
            button("+1 min")->click();
            QCOMPARE(controlFigure()->text(), QStringLiteral("06:00"));
        };
        visitProgram(addAMinute);
        visitProgram(addAMinute);
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupWindowsTest)
#include "tst_StartupWindows.moc"
