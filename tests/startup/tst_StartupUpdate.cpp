#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include "StartupRun.h"
#include "Store.h"
#include "Timeouts.h"
#include "UpdateStage.h"
#include "Updater.h"

// The quiet update check of the start, against an endpoint on loopback.
class StartupUpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void check_startsOnceAfterThreeSecondsAndSaysNothing()
    {
        visitProgram([] {
            QElapsedTimer sinceStart;
            sinceStart.start();
            const Timeouts timeouts;
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
            QTRY_COMPARE_WITH_TIMEOUT(stage.server.tunnels().size(), 1, 30000);
            // Such a timer is up to five in a hundred early or late, and a machine may be busy.
            QVERIFY2(sinceStart.elapsed() >= 2800 && sinceStart.elapsed() <= 9000,
                     qPrintable(QString::number(sinceStart.elapsed())));
            QVERIFY(stage.settle());
            QCOMPARE(timeouts.seen.count(Timeout{3000, Qt::CoarseTimer}), 1);
            QCOMPARE(stage.server.tunnels().size(), 1);
            QCOMPARE(stage.server.requests().size(), 1);
            QVERIFY(stage.server.requests().at(0).startsWith("GET /api/versions.json "));
            QVERIFY(stage.boxes().isEmpty());
        });
    }

    void check_isDroppedWithTheUpdater()
    {
        visitProgram([] {
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
            QVERIFY(updater());
            delete updater();
            // A check of the test's own, due after that of the start, is the only one.
            Updater own;
            QTimer::singleShot(3000, Qt::CoarseTimer, &own, [&own] { own.check(true); });
            QVERIFY(stage.settle());
            QCOMPARE(stage.server.tunnels().size(), 1);
        });
    }

    void newer_isOffered()
    {
        visitProgram([] {
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
