#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "Find.h"
#include "StartupRun.h"
#include "Store.h"

// Closing the Control window ends the process, whatever else is open.
class StartupEndTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void closingTheControlWindow_endsTheProgram_data()
    {
        QTest::addColumn<TestPlatform>("platform");
        QTest::addColumn<bool>("preview");
        QTest::addColumn<bool>("outputHidden");
        QTest::addColumn<bool>("running");
        const TestPlatform one;
        const TestPlatform two = twoScreens();
        QTest::newRow("one screen") << one << false << false << false;
        QTest::newRow("one screen, output hidden") << one << false << true << false;
        QTest::newRow("one screen, preview open") << one << true << false << false;
        QTest::newRow("one screen, preview open, output hidden") << one << true << true << false;
        QTest::newRow("two screens") << two << false << false << false;
        QTest::newRow("two screens, output hidden") << two << false << true << false;
        QTest::newRow("two screens, preview open") << two << true << false << false;
        QTest::newRow("two screens, preview open, output hidden") << two << true << true << false;
        QTest::newRow("while the count runs") << two << true << false << true;
    }

    void closingTheControlWindow_endsTheProgram()
    {
        QFETCH(TestPlatform, platform);
        QFETCH(bool, preview);
        QFETCH(bool, outputHidden);
        QFETCH(bool, running);
        const int result =
            runProgram({.platform = platform,
                        .arguments = {},
                        .beforeProgram = {},
                        .whileRunning =
                            [=] {
                                QWidget *control = controlWindow();
                                if (running)
                                    findByText<QPushButton>(*control, "▶  START")->click();
                                if (preview) {
                                    findByText<QPushButton>(*control, "Preview")->click();
                                    QVERIFY(findWindow("Output Preview"));
                                }
                                if (outputHidden) {
                                    control->findChild<QPushButton *>("outputToggleBtn")->click();
                                    QVERIFY(!outputWindow()->isVisible());
                                }
                                QVERIFY(control->close());
                                QVERIFY(!outputWindow()->isVisible());
                            },
                        .limit = 5000});
        QCOMPARE(result, 0);
    }

    void closingTheOutputWindow_keepsTheProgram()
    {
        const int result = runProgram({.platform = {},
                                       .arguments = {},
                                       .beforeProgram = {},
                                       .whileRunning = [] { outputWindow()->close(); },
                                       .limit = 700});
        QCOMPARE(result, exitAtLimit);
    }

    void secondRun_inTheSameProcessStartsAfresh()
    {
        for (int i = 0; i < 2; ++i) {
            const int result = runProgram(
                {.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [] {
                     auto *plus = findByText<QPushButton>(*controlWindow(), "+1 min");
                     plus->click();
                     const auto *preview = controlWindow()->findChild<QLabel *>("timerPreview");
                     QCOMPARE(preview->text(), QStringLiteral("06:00"));
                     controlWindow()->close();
                 }});
            QCOMPARE(result, 0);
        }
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupEndTest)
#include "tst_StartupEnd.moc"
