#include "Updater.h"

#include <QMetaMethod>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>

#include "Maker.h"
#include "TestMain.h"
#include "UpdateStage.h"

/// The class itself: its meta-object, what it sends, how it compares two versions.
class UpdaterTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void metaObject_hasOneMethodOfItsOwn()
    {
        const QMetaObject &meta = Updater::staticMetaObject;
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod method = meta.method(meta.methodOffset());
        QCOMPARE(method.methodSignature(), "onReply(QNetworkReply*)");
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
    }

    void versions_areComparedByThreeNumbers_data()
    {
        QTest::addColumn<QString>("remote");
        QTest::addColumn<QString>("local");
        QTest::addColumn<bool>("newer");

        const struct
        {
            const char *remote;
            const char *local;
            bool newer;
        } rows[] = {
            {"1.1.4", "1.1.4", false},
            {"1.1.5", "1.1.4", true},
            {"1.1.3", "1.1.4", false},
            {"1.2.0", "1.1.4", true},
            {"1.0.9", "1.1.4", false},
            {"2.0.0", "1.1.4", true},
            {"0.9.9", "1.1.4", false},
            {"2.0.0", "1.9.9", true},
            {"1.9.9", "2.0.0", false},
            {"1.1.10", "1.1.4", true}, // by number, not by text
            {"1.10.0", "1.9.9", true},
            {"10.0.0", "9.0.0", true},
            {"1.2", "1.1.4", true}, // 1, 2, 0
            {"1.1", "1.1.4", false},
            {"1.1", "1.1.0", false},
            {"2", "1.1.4", true}, // 2, 0, 0
            {"1", "1.1.4", false},
            {"", "1.1.4", false}, // 0, 0, 0
            {"", "0.0.0", false},
            {"1.1.4.9", "1.1.4", false}, // parts after the third are ignored
            {"1.1.5.0", "1.1.4", true},
            {"1.1.4-beta", "1.1.4", false}, // 1, 1, 0
            {"1.1.5-beta", "1.1.4", false},
            {"1.1.5-beta", "1.0.9", true},
            {"2.0.0-rc1", "1.1.4", true}, // 2, 0, 0
            {"2.0.9-rc1", "2.0.1", false},
            {"v2.0.0", "1.1.4", false}, // 0, 0, 0
            {"v2.1.4", "0.1.3", true},  // 0, 1, 4
            {"two.three.four", "0.0.0", false},
            {"..", "0.0.0", false},
            {".2", "0.1.9", true},   // 0, 2, 0
            {"1..9", "1.0.8", true}, // 1, 0, 9
            {"1..9", "1.1.4", false},
            {".1.1.5", "1.1.4", false},
            {"1,2,0", "1.1.4", false}, // one part that is no number
            {"0x2.0.0", "1.1.4", false},
            {"2147483647.0.0", "1.1.4", true},
            {"2147483648.0.0", "1.1.4", false}, // beyond 32 bits: 0, 0, 0
            {"4294967298.0.0", "1.1.4", false},
            {"1.99999999999999999999.0", "1.1.4", false},
            {"1.2147483647.0", "1.2147483646.9", true},
            {"-1.0.0", "0.0.0", false},
            {"-2147483648.0.0", "0.0.0", false},
            {"0.0.0", "-2147483648.0.0", true},
            {"-2147483649.0.0", "-1.0.0", true}, // 0, 0, 0
            {"1.-1.0", "1.0.0", false},
            {"1.0.0", "1.-1.9", true},
        };
        for (const auto &row : rows) {
            QTest::addRow("%s against %s", row.remote, row.local)
                << QString(row.remote) << QString(row.local) << row.newer;
        }
        // 0, 1, 0: what ends in a character that is no digit is no number, not even in this one.
        QTest::addRow("NUL behind a number") << QString("2") + QChar::Null + ".1"
                                             << "0.1.1" << false;
        QTest::addRow("NUL inside a number") << QString("2") + QChar::Null + "3.1"
                                             << "0.1.1" << false;
    }

    void versions_areComparedByThreeNumbers()
    {
        QFETCH(QString, remote);
        QFETCH(QString, local);
        QTEST(Updater::isNewer(remote, local), "newer");
    }

    void construction_asksNothing()
    {
        UpdateStage stage;
        const Updater updater;
        QTest::qWait(50);
        QVERIFY(stage.server.tunnels().isEmpty());
        QVERIFY(stage.replies().isEmpty());
    }

    void check_returnsBeforeTheRequestIsSent()
    {
        UpdateStage stage;
        Updater updater;
        updater.check(true);
        QVERIFY(stage.server.tunnels().isEmpty());
        QTRY_COMPARE(stage.server.requests().size(), 1);
    }

    void check_asksTheEndpointThroughTheTunnel()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer("{}"));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.server.tunnels(), QList<QByteArray>{QByteArray(makerUpdateHost) + ":443"});
    }

    void check_sendsOneGetRequest()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer("{}"));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.server.requests().size(), 1);
        const QList<QByteArray> lines = stage.server.requests().constFirst().split('\n');
        QCOMPARE(lines.constFirst(), "GET /api/versions.json HTTP/1.1\r");
        QVERIFY(lines.contains(QByteArray("Host: ") + makerUpdateHost + '\r')
                || lines.contains(QByteArray("host: ") + makerUpdateHost + '\r'));
    }

    void check_sendsTheUserAgentOnce()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer("{}"));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());

        QList<QByteArray> values;
        const QList<QByteArray> lines = stage.server.requests().constFirst().split('\n');
        for (const QByteArray &line : lines) {
            if (line.toLower().startsWith("user-agent:"))
                values.append(line.mid(11));
        }
        QCOMPARE(values, QList<QByteArray>{" Velmora/1.1.4\r"});
    }

    void check_leavesTheManagersDefaults()
    {
        UpdateStage stage;
        Updater updater;
        updater.check(true);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        const QNetworkReply *reply = stage.replies().constFirst();
        QVERIFY(reply);
        QCOMPARE(reply->operation(), QNetworkAccessManager::GetOperation);
        const QNetworkRequest request = reply->request();
        QCOMPARE(request.url().toString(),
                 QString("https://%1/api/versions.json").arg(QLatin1String(makerUpdateHost)));
        QCOMPARE(request.rawHeaderList().size(), 1);
        QCOMPARE(request.rawHeader("User-Agent"), "Velmora/1.1.4");
        QCOMPARE(request.transferTimeout(), 0);
        QVERIFY(!request.attribute(QNetworkRequest::CacheLoadControlAttribute).isValid());
        QVERIFY(!request.attribute(QNetworkRequest::RedirectPolicyAttribute).isValid());
        QCOMPARE(request.maximumRedirectsAllowed(), QNetworkRequest().maximumRedirectsAllowed());
        QCOMPARE(reply->manager()->transferTimeout(), 0);
        QVERIFY(!reply->manager()->cache());
        QCOMPARE(reply->manager()->redirectPolicy(), QNetworkAccessManager().redirectPolicy());
        QVERIFY(!reply->manager()->parent());
    }

    void twoChecks_sendTwoRequests()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
        Updater updater;
        updater.check(true);
        updater.check(true);
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.server.requests().size(), 2);
    }

    // It has to outlive the dialog whose button started the check.
    void checkInteractively_isNeverDeleted()
    {
        UpdateStage stage;
        Updater::checkInteractively();
        Updater::checkInteractively();
        QTRY_COMPARE(stage.server.requests().size(), 2);
        // One updater a call, each with a manager of its own.
        const QPointer<QNetworkAccessManager> first = stage.replies().at(0)->manager();
        const QPointer<QNetworkAccessManager> second = stage.replies().at(1)->manager();
        QVERIFY(first != second);
        QVERIFY(!qApp->findChild<Updater *>()); // which the application would delete

        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        stage.server.answerLater(1, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.boxes().size(), 2);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(first);
        QVERIFY(second);
    }
};

VELMORA_TEST_MAIN(UpdaterTest)
#include "tst_Updater.moc"
