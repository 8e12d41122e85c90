#include "Updater.h"

#include <memory>

#include <QMetaMethod>
#include <QNetworkReply>
#include <QTest>

#include "TestMain.h"
#include "UpdateStage.h"
#include "Vendor.h"

/// The class itself: its meta-object, how it compares two versions, what it sends, and which mode
/// an answer is treated in.
class UpdaterTest : public QObject
{
    Q_OBJECT

private slots:
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
            {"2.0.0", "1.1.4", true},
            {"1.9.9", "2.0.0", false},
            {"1.1.10", "1.1.4", true}, // by number, not by text
            {"1.10.0", "1.9.9", true},
            {"1.2", "1.1.4", true}, // 1, 2, 0
            {"1.1", "1.1.4", false},
            {"2", "1.1.4", true},           // 2, 0, 0
            {"", "1.1.4", false},           // 0, 0, 0
            {"1.1.4.9", "1.1.4", false},    // parts after the third are ignored
            {"1.1.4-beta", "1.1.4", false}, // 1, 1, 0
            {"1.1.5-beta", "1.0.9", true},
            {"2.0.0-rc1", "1.1.4", true}, // 2, 0, 0
            {"2.0.9-rc1", "2.0.1", false},
            {"v2.1.4", "0.1.3", true}, // 0, 1, 4
            {"..", "0.0.0", false},
            {".2", "0.1.9", true},   // 0, 2, 0
            {"1..9", "1.0.8", true}, // 1, 0, 9
            {".1.1.5", "1.1.4", false},
            {"1,2,0", "1.1.4", false}, // one part that is no number
            {"0x2.0.0", "1.1.4", false},
            {"2147483648.0.0", "1.1.4", false}, // beyond 32 bits: 0, 0, 0
            {"1.99999999999999999999.0", "1.1.4", false},
            {"1.2147483647.0", "1.2147483646.9", true},
            {"-1.0.0", "0.0.0", false},
            {"-2147483648.0.0", "0.0.0", false},
            {"0.0.0", "-2147483648.0.0", true},
            {"-2147483649.0.0", "-1.0.0", true}, // 0, 0, 0
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

    void check_sendsOneGetRequestWithOneUserAgent()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer("{}"));
        const Updater unasked; // which sends nothing
        Updater updater;
        updater.check(true);
        QVERIFY(stage.server.tunnels().isEmpty()); // it returns before the request is sent
        QVERIFY(stage.settle());
        QCOMPARE(stage.server.tunnels(), QList<QByteArray>{QByteArray(vendorUpdateHost) + ":443"});
        QCOMPARE(stage.server.requests().size(), 1);
        QList<QByteArray> lines = stage.server.requests().constFirst().split('\n');
        QCOMPARE(lines.takeFirst(), "GET /api/versions.json HTTP/1.1\r");
        QStringList values;
        for (const QByteArray &line : lines) {
            const QByteArray name = line.left(line.indexOf(':')).toLower();
            if (name == "host" || name == "user-agent")
                values.append(QString(name + line.mid(name.size())));
        }
        values.sort();
        QCOMPARE(values,
                 QStringList(
                     {QString("host: %1\r").arg(vendorUpdateHost), "user-agent: Velmora/1.1.4\r"}));
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
        QCOMPARE(request.rawHeaderList().size(), 1);
        QCOMPARE(request.transferTimeout(), 0);
        QVERIFY(!request.attribute(QNetworkRequest::CacheLoadControlAttribute).isValid());
        QVERIFY(!request.attribute(QNetworkRequest::RedirectPolicyAttribute).isValid());
        QCOMPARE(request.maximumRedirectsAllowed(), QNetworkRequest().maximumRedirectsAllowed());
        QCOMPARE(reply->manager()->transferTimeout(), 0);
        QVERIFY(!reply->manager()->cache());
        QCOMPARE(reply->manager()->redirectPolicy(), QNetworkAccessManager().redirectPolicy());
        QVERIFY(!reply->manager()->parent());
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
        QCOMPARE(stage.texts(), QStringList({upToDateText, upToDateText}));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(first);
        QVERIFY(second);
    }

    void destructionWhileWaiting_endsTheRequest()
    {
        UpdateStage stage;
        auto updater = std::make_unique<Updater>();
        updater->check(false);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        updater.reset();
        QVERIFY(stage.settle());
        QCOMPARE(stage.texts(), QStringList());
    }

    void answer_isOfferedOrConfirmedInItsMode_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("silent");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("newer, silent") << "1.1.5" << true << QStringList{offerText("1.1.5")};
        QTest::newRow("newer, interactive") << "1.1.5" << false << QStringList{offerText("1.1.5")};
        for (const char *version : {"1.1.4", "1.1.3", "1.1.4-beta", "latest", " "}) {
            QTest::addRow("%s, silent", version) << version << true << QStringList();
            QTest::addRow("%s, interactive", version)
                << version << false << QStringList(upToDateText);
        }
    }

    void answer_isOfferedOrConfirmedInItsMode()
    {
        QFETCH(QString, version);
        QFETCH(bool, silent);
        UpdateStage stage;
        QVERIFY(stage.check(httpAnswer(updateDocument(version, "https://a.example/")), silent));
        QTEST(stage.texts(), "texts");
        QVERIFY(stage.opened().isEmpty());
    }

    // A reply that no check has asked for.
    void freshUpdater_isSilent()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
        Updater updater;
        QNetworkAccessManager network;
        connect(&network, &QNetworkAccessManager::finished, &updater, [&](QNetworkReply *reply) {
            QMetaObject::invokeMethod(&updater, "onReply", Q_ARG(QNetworkReply *, reply));
        });
        network.get(QNetworkRequest(QUrl(QString("https://") + vendorUpdateHost)));
        QVERIFY(stage.settle());
        QCOMPARE(stage.texts(), QStringList());
    }

    // The mode is kept by the updater, not by the request.
    void answerInFlight_isTreatedInTheLastMode()
    {
        for (const bool last : {true, false}) {
            UpdateStage stage;
            Updater updater;
            updater.check(!last);
            QTRY_COMPARE(stage.server.requests().size(), 1);
            updater.check(last);
            QTRY_COMPARE(stage.server.requests().size(), 2);
            stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
            stage.server.answerLater(1, httpAnswer(updateDocument("1.1.4")));
            QVERIFY(stage.settle(2));
            QCOMPARE(stage.boxes().size(), last ? 0 : 2);
        }
    }

    void otherReplies_areServedWhileABoxIsOpen()
    {
        UpdateStage stage;
        Updater first;
        Updater second;
        first.check(false);
        second.check(false);
        QTRY_COMPARE(stage.server.requests().size(), 2);
        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        QPointer<QMessageBox> below; // stays open until the second was seen
        stage.setAction([&](QMessageBox &box) {
            if (!below) {
                below = &box;
                stage.server.answerLater(1, httpAnswer(updateDocument("2.0.0")));
                return;
            }
            QVERIFY(below->isVisible());
            box.close();
            below->close();
        });
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.boxes().size(), 2);
    }
};

VELMORA_TEST_MAIN(UpdaterTest)
#include "tst_Updater.moc"
