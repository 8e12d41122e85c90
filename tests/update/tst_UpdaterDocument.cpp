#include "Updater.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include "TestMain.h"
#include "UpdateStage.h"

namespace {

const QString newerText = "<b>Velmora 9.0.0 is available</b><br>You have 1.1.4.";
const QString upToDateText = "You're up to date.\nVersion 1.1.4";

} // namespace

/// What comes of a reply's body: which documents are understood, and that everything else
/// is swallowed without a word, whichever mode the check runs in.
class UpdaterDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void understoodDocument_isAnswered_data();
    void understoodDocument_isAnswered();
    void memberThatIsNoText_countsAsEmpty_data();
    void memberThatIsNoText_countsAsEmpty();
    void documentedSample_isOffered();
    void badDocument_saysNothing_data();
    void badDocument_saysNothing();
};

void UpdaterDocumentTest::initTestCase()
{
    QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
    QVERIFY2(!endpointIdentity().certificate.isNull(), qPrintable(trustedAuthority().problem()));
}

void UpdaterDocumentTest::understoodDocument_isAnswered_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");

    const struct
    {
        const char *name;
        QByteArray body;
        QString text;
    } rows[] = {
        {"only the version", R"({"velmora":{"version":"9.0.0"}})", newerText},
        {"all three members",
         R"({"velmora":{"version":"9.0.0","downloadUrl":"https://a.example","releaseNotes":"n"}})",
         newerText},
        {"other members at both levels",
         R"({"a":[1],"velmora":{"b":{},"version":"9.0.0","c":null},"version":"1.0"})", newerText},
        {"download address and notes of other types",
         R"({"velmora":{"version":"9.0.0","downloadUrl":7,"releaseNotes":["x"]}})", newerText},
        {"blanks around it", " \r\n\t{ \"velmora\" : { \"version\" : \"9.0.0\" } } \n", newerText},
        {"characters written as escapes", R"({"velmora":{"version":"\u0039.0.0"}})", newerText},
        {"10 MB of other members before it",
         "{\"x\":\"" + QByteArray(10'000'000, 'x') + R"(","velmora":{"version":"9.0.0"}})",
         newerText},
        {"this version", R"({"velmora":{"version":"1.1.4"}})", upToDateText},
        {"an older version", R"({"velmora":{"version":"1.0"}})", upToDateText},
        {"no numbers at all", R"({"velmora":{"version":"soon"}})", upToDateText},
        {"a blank", R"({"velmora":{"version":" "}})", upToDateText},
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.name) << row.body << row.text;
}

void UpdaterDocumentTest::understoodDocument_isAnswered()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    UpdateStage stage;
    stage.server.setAnswer(httpAnswer(body));
    Updater updater;
    updater.check(false);
    QVERIFY(stage.settle());
    QCOMPARE(stage.boxes().size(), 1);
    QCOMPARE(stage.boxes().constFirst().text, text);
}

void UpdaterDocumentTest::memberThatIsNoText_countsAsEmpty_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addRow("missing") << QByteArray();
    QTest::addRow("null") << QByteArray(R"(,"downloadUrl":null,"releaseNotes":null)");
    QTest::addRow("number") << QByteArray(R"(,"downloadUrl":7,"releaseNotes":7)");
    QTest::addRow("list") << QByteArray(
        R"(,"downloadUrl":["https://a.example/"],"releaseNotes":["Faster start."])");
}

// An offer without notes, and nothing to open.
void UpdaterDocumentTest::memberThatIsNoText_countsAsEmpty()
{
    QFETCH(QByteArray, members);
    UpdateStage stage;
    stage.server.setAnswer(httpAnswer(R"({"velmora":{"version":"9.0.0")" + members + "}}"));
    stage.press("Download");
    Updater updater;
    updater.check(true);
    QVERIFY(stage.settle());
    QCOMPARE(stage.boxes().size(), 1);
    QCOMPARE(stage.boxes().constFirst().text, newerText);
    QCOMPARE(stage.boxes().constFirst().informativeText, QString());
    QVERIFY(stage.opened().isEmpty());
}

void UpdaterDocumentTest::documentedSample_isOffered()
{
    QFile sample(UPDATE_SAMPLE);
    QVERIFY2(sample.open(QIODevice::ReadOnly), qPrintable(sample.errorString()));
    UpdateStage stage;
    stage.server.setAnswer(httpAnswer(sample.readAll()));
    stage.press("Download");
    Updater updater;
    updater.check(true);
    QVERIFY(stage.settle());
    QCOMPARE(stage.boxes().size(), 1);
    QCOMPARE(stage.boxes().constFirst().text,
             "<b>Velmora 1.2.0 is available</b><br>You have 1.1.4.");
    QVERIFY(stage.boxes().constFirst().informativeText.startsWith(
        "Fixes &amp; more &lt;beta&gt;:\n- starts faster\n"));
    QCOMPARE(stage.opened(), QStringList("https://www.velmora.example/download"));
}

void UpdaterDocumentTest::badDocument_saysNothing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("silent");

    const struct
    {
        const char *name;
        QByteArray body;
    } rows[] = {
        {"nothing", ""},
        {"blanks", "  \r\n "},
        {"a page", "<!DOCTYPE html><html><body>9.0.0</body></html>"},
        {"cut off", R"({"velmora":{"version":"9.0.0")"},
        {"followed by rubbish", R"({"velmora":{"version":"9.0.0"}} 9)"},
        {"a trailing comma", R"({"velmora":{"version":"9.0.0",}})"},
        {"single quotes", "{'velmora':{'version':'9.0.0'}}"},
        {"a list", R"([{"velmora":{"version":"9.0.0"}}])"},
        {"an empty list", "[]"},
        {"a string", R"("9.0.0")"},
        {"a number", "9"},
        {"null", "null"},
        {"an empty object", "{}"},
        {"another product", R"({"other":{"version":"9.0.0"}})"},
        {"the product in capitals", R"({"Velmora":{"version":"9.0.0"}})"},
        {"the version at the top", R"({"version":"9.0.0"})"},
        {"the product is null", R"({"velmora":null})"},
        {"the product is a string", R"({"velmora":"9.0.0"})"},
        {"the product is a list", R"({"velmora":[{"version":"9.0.0"}]})"},
        {"the product is empty", R"({"velmora":{}})"},
        {"the version in capitals", R"({"velmora":{"Version":"9.0.0"}})"},
        {"the version is empty", R"({"velmora":{"version":""}})"},
        {"the version is null", R"({"velmora":{"version":null}})"},
        {"the version is a number", R"({"velmora":{"version":9.0}})"},
        {"the version is a whole number", R"({"velmora":{"version":9}})"},
        {"the version is true", R"({"velmora":{"version":true}})"},
        {"the version is a list", R"({"velmora":{"version":[9,0,0]}})"},
        {"the version is an object", R"({"velmora":{"version":{"major":9}}})"},
        {"invalid UTF-8 in the version", "{\"velmora\":{\"version\":\"9.0.0\xC3\x28\"}}"},
        {"invalid UTF-8 elsewhere", "{\"x\":\"\xFF\xFE\",\"velmora\":{\"version\":\"9.0.0\"}}"},
        {"UTF-16", "\xFF\xFE{\0}\0"},
        {"zero bytes", QByteArray(1000, '\0')},
        {"deeply nested lists", QByteArray(100'000, '[')},
        {"10 MB of rubbish", QByteArray(10'000'000, 'x')},
        {"10 MB of open objects", QByteArray("{\"velmora\":").repeated(909'091)},
    };
    for (const auto &row : rows) {
        QTest::addRow("%s, silent", row.name) << row.body << true;
        QTest::addRow("%s, interactive", row.name) << row.body << false;
    }
}

void UpdaterDocumentTest::badDocument_saysNothing()
{
    QTest::failOnWarning(QRegularExpression(".*"));
    QFETCH(QByteArray, body);
    QFETCH(bool, silent);
    UpdateStage stage;
    stage.server.setAnswer(httpAnswer(body));
    Updater updater;
    updater.check(silent);
    QVERIFY(stage.settle());
    QCOMPARE(stage.server.requests().size(), 1);
    QVERIFY(stage.boxes().isEmpty());
    QVERIFY(stage.opened().isEmpty());
}

VELMORA_TEST_MAIN(UpdaterDocumentTest)
#include "tst_UpdaterDocument.moc"
