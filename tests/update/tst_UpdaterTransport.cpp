#include "Updater.h"

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTest>

#include "Maker.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

using Answers = QList<UpdateServer::Answer>;

const QByteArray newerBody = updateDocument("9.0.0", "https://download.example/velmora");

QByteArray redirection(const QByteArray &status, const QByteArray &address)
{
    return httpAnswer(newerBody, status, "Location: " + address + "\r\n");
}

QByteArray endpointAddress(const QByteArray &scheme)
{
    return scheme + "://" + makerUpdateHost + "/elsewhere.json";
}

} // namespace

Q_DECLARE_METATYPE(UpdateServer::Answer)

/// The way to the document and back: statuses, redirections, broken connections,
/// certificates and missing networks. A failure says nothing in either mode, even where a
/// newer version stands in the body.
class UpdaterTransportTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void goodTransfer_isAnswered_data()
    {
        QTest::addColumn<Answers>("answers");
        QTest::addColumn<QByteArray>("lastPath");

        const QByteArray here = "/api/versions.json";
        const QByteArray there = "/elsewhere.json";

        const QByteArray document = httpAnswer(newerBody);
        QTest::addRow("one answer") << Answers{{document}} << here;
        QTest::addRow("until the connection closes")
            << Answers{{"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + newerBody, true}} << here;
        QTest::addRow("in chunks")
            << Answers{{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                        + QByteArray::number(newerBody.size(), 16) + "\r\n" + newerBody
                        + "\r\n0\r\n\r\n"}}
            << here;
        // Qt's default follows redirections that stay as safe as they were.
        QTest::addRow("moved for good")
            << Answers{{redirection("301 Moved Permanently", endpointAddress("https"))}, {document}}
            << there;
        QTest::addRow("moved for now")
            << Answers{{redirection("302 Found", "/elsewhere.json")}, {document}} << there;
        QTest::addRow("moved, method kept")
            << Answers{{redirection("308 Permanent Redirect", endpointAddress("https"))},
                       {document}}
            << there;
    }

    void goodTransfer_isAnswered()
    {
        QFETCH(Answers, answers);
        UpdateStage stage;
        stage.server.setAnswers(answers);
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QTEST(stage.server.requests().constLast().split(' ').value(1), "lastPath");
        QCOMPARE(stage.boxes().size(), 1);
        QCOMPARE(stage.boxes().constFirst().text,
                 "<b>Velmora 9.0.0 is available</b><br>You have 1.1.4.");
    }

    void badTransfer_saysNothing_data()
    {
        QTest::addColumn<UpdateServer::Answer>("answer");
        QTest::addColumn<bool>("silent");

        const QByteArray longer = "HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n";
        const struct
        {
            const char *name;
            QByteArray bytes;
            bool thenClose;
        } rows[] = {
            {"no page", httpAnswer("", "404 Not Found"), false},
            {"no page, but a good document", httpAnswer(newerBody, "404 Not Found"), false},
            {"forbidden", httpAnswer(newerBody, "403 Forbidden"), false},
            {"gone", httpAnswer(newerBody, "410 Gone"), false},
            {"password wanted", httpAnswer(newerBody, "401 Unauthorized"), false},
            {"too many requests", httpAnswer(newerBody, "429 Too Many Requests"), false},
            {"server error", httpAnswer(newerBody, "500 Internal Server Error"), false},
            {"unavailable", httpAnswer(newerBody, "503 Service Unavailable"), false},
            {"no content", "HTTP/1.1 204 No Content\r\n\r\n", false},
            {"redirected to plain HTTP", redirection("302 Found", endpointAddress("http")), false},
            {"redirected to a file", redirection("302 Found", "file:///etc/hostname"), false},
            {"redirected for ever", redirection("302 Found", endpointAddress("https")), false},
            {"cut in the headers", "HTTP/1.1 200 OK\r\nContent-Le", true},
            {"cut in the document", longer + newerBody.left(newerBody.size() / 2), true},
            {"cut behind a good document", longer + newerBody, true},
            {"cut in a chunk",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nFFF\r\n" + newerBody, true},
            {"cut before everything", "", true},
            {"not HTTP", "HELO velmora\r\n\r\n" + newerBody, true},
        };
        for (const auto &row : rows) {
            const UpdateServer::Answer answer{row.bytes, row.thenClose};
            QTest::addRow("%s, silent", row.name) << answer << true;
            QTest::addRow("%s, interactive", row.name) << answer << false;
        }
    }

    void badTransfer_saysNothing()
    {
        QFETCH(UpdateServer::Answer, answer);
        QFETCH(bool, silent);
        UpdateStage stage;
        stage.server.setAnswers({answer});
        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QVERIFY(!stage.server.requests().isEmpty());
        QVERIFY(stage.boxes().isEmpty());
        QVERIFY(stage.opened().isEmpty());
    }

    void wrongCertificate_saysNothingAndSendsNothing_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("trusted");
        QTest::addColumn<bool>("silent");
        for (const bool silent : {true, false}) {
            const char *mode = silent ? "silent" : "interactive";
            QTest::addRow("another host's, %s", mode) << "other.velmora.example" << true << silent;
            QTest::addRow("an unknown authority's, %s", mode) << makerUpdateHost << false << silent;
            QTest::addRow("none at all, %s", mode) << QString() << true << silent;
        }
    }

    void wrongCertificate_saysNothingAndSendsNothing()
    {
        QFETCH(QString, host);
        QFETCH(bool, trusted);
        QFETCH(bool, silent);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(newerBody));
        Authority unknown;
        Authority::Identity identity;
        if (!host.isEmpty()) {
            identity = trusted ? trustedAuthority().issue(host) : unknown.issue(host);
            QVERIFY2(!identity.certificate.isNull(), qPrintable(unknown.problem()));
        }
        stage.server.setIdentity(identity);

        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QCOMPARE(stage.server.tunnels().size(), 1);
        QVERIFY(stage.server.requests().isEmpty());
        QVERIFY(stage.boxes().isEmpty());
    }

    void refusedTunnel_saysNothing_data() { addModes(); }

    void refusedTunnel_saysNothing()
    {
        QFETCH(bool, silent);
        UpdateStage stage;
        stage.server.setGrantsTunnels(false);
        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QVERIFY(!stage.server.tunnels().isEmpty());
        QVERIFY(stage.boxes().isEmpty());
    }

    void noNetwork_saysNothing_data() { addModes(); }

    void noNetwork_saysNothing()
    {
        QFETCH(bool, silent);
        UpdateStage stage;
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 port = closed.serverPort();
        closed.close();
        QNetworkProxy::setApplicationProxy(
            QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", port));

        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QVERIFY(stage.server.tunnels().isEmpty());
        QVERIFY(stage.boxes().isEmpty());
    }

    void silentServer_isWaitedFor_data() { addModes(); }

    void silentServer_isWaitedFor()
    {
        QFETCH(bool, silent);
        UpdateStage stage;
        Updater updater;
        updater.check(silent);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        QTest::qWait(500); // nothing may come of it
        QVERIFY(stage.boxes().isEmpty());
        QVERIFY(stage.replies().constFirst());
        QVERIFY(!stage.replies().constFirst()->isFinished());

        stage.server.answerLater(0, httpAnswer(newerBody));
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
    }

    void destructionWhileWaiting_endsTheRequest()
    {
        UpdateStage stage;
        auto updater = std::make_unique<Updater>();
        updater->check(false);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        updater.reset();
        QVERIFY(stage.settle());
        QVERIFY(stage.boxes().isEmpty());
    }

    void failedCheck_canBeRepeated()
    {
        UpdateStage stage;
        stage.server.setAnswers(
            {{httpAnswer("", "500 Internal Server Error")}, {httpAnswer(newerBody)}});
        Updater updater;
        updater.check(false);
        QVERIFY(stage.settle(1));
        QVERIFY(stage.boxes().isEmpty());
        updater.check(false);
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.boxes().size(), 1);
    }

private:
    static void addModes()
    {
        QTest::addColumn<bool>("silent");
        QTest::addRow("silent") << true;
        QTest::addRow("interactive") << false;
    }
};

VELMORA_TEST_MAIN(UpdaterTransportTest)
#include "tst_UpdaterTransport.moc"
