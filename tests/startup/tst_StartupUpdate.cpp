#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include "StartupRun.h"
#include "Store.h"
#include "Timeouts.h"
#include "UpdateStage.h"

namespace {

int run(const std::function<void()> &whileRunning)
{
    return runProgram(
        {.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [&whileRunning] {
             whileRunning();
             QCoreApplication::exit(0);
         }});
}

} // namespace

// The quiet update check of the start, against an endpoint on loopback.
class StartupUpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void check_startsOnceAfterThreeSeconds()
    {
        run([] {
            QElapsedTimer sinceStart;
            sinceStart.start();
            const Timeouts timeouts;
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
            QTRY_COMPARE_WITH_TIMEOUT(stage.server.tunnels().size(), 1, 30000);
            QVERIFY(timeouts.seen.contains(Timeout{3000, Qt::CoarseTimer}));
            // Such a timer is up to five in a hundred early or late.
            QVERIFY2(sinceStart.elapsed() >= 2800,
                     qPrintable(QString::number(sinceStart.elapsed())));
            // Generous: a machine may be busy.
            QVERIFY2(sinceStart.elapsed() <= 9000,
                     qPrintable(QString::number(sinceStart.elapsed())));
            QVERIFY(!QTest::qWaitFor([&stage] { return stage.server.tunnels().size() > 1; }, 3500));
        });
    }

    void check_isDroppedWithTheUpdater()
    {
        run([] {
            const UpdateStage stage;
            QVERIFY(updater());
            delete updater();
            QVERIFY(!QTest::qWaitFor([&] { return !stage.server.tunnels().isEmpty(); }, 3500));
        });
    }

    void upToDate_saysNothing()
    {
        run([] {
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
            QVERIFY(stage.settle());
            QCOMPARE(stage.server.requests().size(), 1);
            QVERIFY(stage.server.requests().at(0).startsWith("GET /api/versions.json "));
            QVERIFY(stage.boxes().isEmpty());
        });
    }

    void newer_isOffered()
    {
        run([] {
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument("99.0.0")));
            QTRY_COMPARE_WITH_TIMEOUT(stage.boxes().size(), 1, 30000);
            QCOMPARE(stage.boxes().at(0).title, QStringLiteral("Update Available \u2014 Velmora"));
            QVERIFY(stage.settle());
        });
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupUpdateTest)
#include "tst_StartupUpdate.moc"
