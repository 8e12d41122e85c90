#include "Updater.h"

#include <QFile>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QTest>

#include "TestMain.h"
#include "UpdateStage.h"
#include "Vendor.h"

namespace {

using Answers = QList<UpdateServer::Answer>;

const QByteArray newerBody = updateDocument("9.0.0", "https://download.example/velmora");

QByteArray redirection(const QByteArray &status, const QByteArray &address)
{
    return httpAnswer(newerBody, status, "Location: " + address + "\r\n");
}

QByteArray endpointAddress(const QByteArray &scheme)
{
    return scheme + "://" + vendorUpdateHost + "/elsewhere.json";
}

struct Document
{
    const char *name;
    QByteArray body;
};

const Document goodDocuments[] = {
    {"all three members", updateDocument("9.0.0", "https://a.example", "n")},
    {"other members at both levels",
     R"({"a":[1],"velmora":{"b":{},"version":"9.0.0","c":null},"version":"1.0"})"},
    {"blanks around it", " \r\n\t{ \"velmora\" : { \"version\" : \"9.0.0\" } } \n"},
    {"characters written as escapes", R"({"velmora":{"version":"\u0039.0.0"}})"},
    {"10 MB of other members before it",
     "{\"x\":\"" + QByteArray(10'000'000, 'x') + R"(","velmora":{"version":"9.0.0"}})"},
};

const Document documentsOfVersionOnly[] = {
    {"missing", R"({"velmora":{"version":"9.0.0"}})"},
    {"null", R"({"velmora":{"version":"9.0.0","downloadUrl":null,"releaseNotes":null}})"},
    {"number", R"({"velmora":{"version":"9.0.0","downloadUrl":7,"releaseNotes":7}})"},
    {"list",
     R"({"velmora":{"version":"9.0.0","downloadUrl":["https://a.b/"],"releaseNotes":["x"]}})"},
};

const Document badDocuments[] = {
    {"nothing", ""},
    {"a page", "<!DOCTYPE html><html><body>9.0.0</body></html>"},
    {"cut off", R"({"velmora":{"version":"9.0.0")"},
    {"followed by rubbish", R"({"velmora":{"version":"9.0.0"}} 9)"},
    {"a trailing comma", R"({"velmora":{"version":"9.0.0",}})"},
    {"single quotes", "{'velmora':{'version':'9.0.0'}}"},
    {"a list", R"([{"velmora":{"version":"9.0.0"}}])"},
    {"a number", "9"},
    {"another product", R"({"other":{"version":"9.0.0"}})"},
    {"the product in capitals", R"({"Velmora":{"version":"9.0.0"}})"},
    {"the version at the top", R"({"version":"9.0.0"})"},
    {"the product is null", R"({"velmora":null})"},
    {"the product is a string", R"({"velmora":"9.0.0"})"},
    {"the product is a list", R"({"velmora":[{"version":"9.0.0"}]})"},
    {"the version in capitals", R"({"velmora":{"Version":"9.0.0"}})"},
    {"the version is empty", R"({"velmora":{"version":""}})"},
    {"the version is null", R"({"velmora":{"version":null}})"},
    {"the version is a number", R"({"velmora":{"version":9.0}})"},
    {"the version is a list", R"({"velmora":{"version":[9,0,0]}})"},
    {"the version is an object", R"({"velmora":{"version":{"major":9}}})"},
    {"invalid UTF-8 in the version", "{\"velmora\":{\"version\":\"9.0.0\xC3\x28\"}}"},
    {"invalid UTF-8 elsewhere", "{\"x\":\"\xFF\xFE\",\"velmora\":{\"version\":\"9.0.0\"}}"},
    {"UTF-16", "\xFF\xFE{\0}\0"},
    {"deeply nested lists", QByteArray(100'000, '[')},
    {"10 MB of rubbish", QByteArray(10'000'000, 'x')},
    {"10 MB of open objects", QByteArray("{\"velmora\":").repeated(909'091)},
};

} // namespace

Q_DECLARE_METATYPE(UpdateServer::Answer)

/// What comes of a reply: which transfers and documents are understood, and that everything else
/// is swallowed without a word in either mode, even where a newer version stands in the body.
class UpdaterRepliesTest : public QObject
{
    Q_OBJECT

private slots:
    void understoodDocument_isAnswered_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const auto &row : goodDocuments)
            QTest::addRow("%s", row.name) << row.body;
    }

    void understoodDocument_isAnswered()
    {
        QFETCH(QByteArray, body);
        UpdateStage stage;
        QVERIFY(stage.check(httpAnswer(body)));
        QCOMPARE(stage.texts(), QStringList(offerText("9.0.0")));
    }

    void memberThatIsNoText_countsAsEmpty_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const auto &row : documentsOfVersionOnly)
            QTest::addRow("%s", row.name) << row.body;
    }

    // An offer without notes, and nothing to open.
    void memberThatIsNoText_countsAsEmpty()
    {
        QFETCH(QByteArray, body);
        UpdateStage stage;
        stage.press("Download");
        QVERIFY(stage.check(httpAnswer(body)));
        QCOMPARE(stage.texts(), QStringList(offerText("9.0.0")));
        QCOMPARE(stage.boxes().constFirst().informativeText, QString());
        QVERIFY(stage.opened().isEmpty());
    }

    void documentedSample_isOffered()
    {
        QFile sample(UPDATE_SAMPLE);
        QVERIFY2(sample.open(QIODevice::ReadOnly), qPrintable(sample.errorString()));
        UpdateStage stage;
        stage.press("Download");
        QVERIFY(stage.check(httpAnswer(sample.readAll())));
        QCOMPARE(stage.texts(), QStringList(offerText("1.2.0")));
        QVERIFY(stage.boxes().constFirst().informativeText.startsWith(
            "Fixes &amp; more &lt;beta&gt;:\n- starts faster\n"));
        QCOMPARE(stage.opened(), QStringList("https://www.velmora.example/download"));
    }

    void badDocument_saysNothing_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const auto &row : badDocuments)
            QTest::addRow("%s", row.name) << row.body;
    }

    void badDocument_saysNothing()
    {
        QTest::failOnWarning(QRegularExpression(".*"));
        QFETCH(QByteArray, body);
        for (const bool silent : {true, false}) {
            UpdateStage stage;
            QVERIFY(stage.check(httpAnswer(body), silent));
            QCOMPARE(stage.server.requests().size(), 1);
            QVERIFY(stage.boxes().isEmpty());
        }
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
        QVERIFY(stage.check());
        QTEST(stage.server.requests().constLast().split(' ').value(1), "lastPath");
        QCOMPARE(stage.texts(), QStringList(offerText("9.0.0")));
    }

    void badTransfer_saysNothing_data()
    {
        QTest::addColumn<UpdateServer::Answer>("answer");
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
        for (const auto &row : rows)
            QTest::addRow("%s", row.name) << UpdateServer::Answer{row.bytes, row.thenClose};
    }

    void badTransfer_saysNothing()
    {
        QFETCH(UpdateServer::Answer, answer);
        for (const bool silent : {true, false}) {
            UpdateStage stage;
            stage.server.setAnswers({answer});
            QVERIFY(stage.check(silent));
            QVERIFY(!stage.server.requests().isEmpty());
            QVERIFY(stage.boxes().isEmpty());
        }
    }

    void wrongCertificate_saysNothingAndSendsNothing_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("trusted");
        QTest::addRow("another host's") << "other.velmora.example" << true;
        QTest::addRow("an unknown authority's") << vendorUpdateHost << false;
        QTest::addRow("none at all") << QString() << true;
    }

    void wrongCertificate_saysNothingAndSendsNothing()
    {
        QFETCH(QString, host);
        QFETCH(bool, trusted);
        Authority unknown;
        Authority::Identity identity;
        if (!host.isEmpty()) {
            identity = trusted ? trustedAuthority().issue(host) : unknown.issue(host);
            QVERIFY2(!identity.certificate.isNull(), qPrintable(unknown.problem()));
        }
        for (const bool silent : {true, false}) {
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(newerBody));
            stage.server.setIdentity(identity);
            QVERIFY(stage.check(silent));
            QCOMPARE(stage.server.tunnels().size(), 1);
            QVERIFY(stage.server.requests().isEmpty());
            QVERIFY(stage.boxes().isEmpty());
        }
    }

    void unreachableEndpoint_saysNothing()
    {
        for (const bool isProxyThere : {true, false}) {
            for (const bool silent : {true, false}) {
                UpdateStage stage;
                stage.server.setGrantsTunnels(false);
                if (!isProxyThere)
                    stage.server.close();
                QVERIFY(stage.check(silent));
                QCOMPARE(!stage.server.tunnels().isEmpty(), isProxyThere);
                QVERIFY(stage.boxes().isEmpty());
            }
        }
    }

    // However long that takes: another check comes and goes meanwhile.
    void silentServer_isWaitedFor()
    {
        UpdateStage stage;
        Updater waiting;
        waiting.check(true);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        Updater other;
        other.check(false);
        QTRY_COMPARE(stage.server.requests().size(), 2);
        stage.server.answerLater(1, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.waitUntil([&] { return !stage.replies().at(1); }));
        QCOMPARE(stage.texts(), QStringList(upToDateText));
        QVERIFY(stage.replies().constFirst() && !stage.replies().constFirst()->isFinished());

        stage.server.answerLater(0, httpAnswer(newerBody));
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.texts(), QStringList({upToDateText, offerText("9.0.0")}));
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
};

VELMORA_TEST_MAIN(UpdaterRepliesTest)
#include "tst_UpdaterReplies.moc"
