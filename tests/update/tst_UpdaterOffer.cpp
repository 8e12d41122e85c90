#include "Updater.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTest>

#include "Maker.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

const QString page = "https://download.example/velmora?a=1&b=%20#c";

} // namespace

/// When each of the two message boxes comes up, and what it says.
class UpdaterOfferTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void newerVersion_isOffered_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("silent");
        for (const char *version : {"1.1.5", "1.1.10", "1.2", "2", "1.2.0.0", "2.0.0-rc1", "10.0.0",
                                    "2147483647.0.0", "1.1.5.0.0.0"}) {
            QTest::addRow("%s, silent", version) << version << true;
            QTest::addRow("%s, interactive", version) << version << false;
        }
    }

    void newerVersion_isOffered()
    {
        QFETCH(QString, version);
        QFETCH(bool, silent);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument(version, page)));
        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QCOMPARE(stage.boxes().constFirst().text,
                 "<b>Velmora " + version + " is available</b><br>You have 1.1.4.");
        QVERIFY(stage.opened().isEmpty());
    }

    void sameOrOlderVersion_isConfirmedToAPersonOnly_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("silent");
        for (const char *version :
             {"1.1.4", "1.1.4.9", "1.1.4-beta", "1.1.3", "1.1", "1", "0.9.9", "v2.0.0", "latest",
              ".", "2147483648.0.0", "99999999999999999999.0.0", "-2.0.0", "1.-2.0"}) {
            QTest::addRow("%s, silent", version) << version << true;
            QTest::addRow("%s, interactive", version) << version << false;
        }
    }

    void sameOrOlderVersion_isConfirmedToAPersonOnly()
    {
        QFETCH(QString, version);
        QFETCH(bool, silent);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument(version, page, "Notes")));
        Updater updater;
        updater.check(silent);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), silent ? 0 : 1);
        if (!silent)
            QCOMPARE(stage.boxes().constFirst().text, "You're up to date.\nVersion 1.1.4");
        QVERIFY(stage.opened().isEmpty());
    }

    void offer_looksLikeThis()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.2.0", page, "Faster start.")));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        const SeenBox box = stage.boxes().constFirst();
        QCOMPARE(box.title, QString::fromUtf8("Update Available \u2014 Velmora"));
        QCOMPARE(box.icon, QMessageBox::Information);
        QCOMPARE(box.textFormat, Qt::RichText);
        QCOMPARE(box.text, "<b>Velmora 1.2.0 is available</b><br>You have 1.1.4.");
        QCOMPARE(box.informativeText, "Faster start.");
        QCOMPARE(box.buttons, QStringList({"Download", "Later"}));
        QCOMPARE(
            box.roles,
            QList<QMessageBox::ButtonRole>({QMessageBox::AcceptRole, QMessageBox::RejectRole}));
        QCOMPARE(box.standardButtons, QMessageBox::NoButton);
        QVERIFY(box.modal);
        QVERIFY(!box.hasParent);
    }

    void confirmation_looksLikeThis()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.1.4", page, "Faster start.")));
        Updater updater;
        updater.check(false);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        const SeenBox box = stage.boxes().constFirst();
        QCOMPARE(box.title, "Velmora");
        QCOMPARE(box.icon, QMessageBox::Information);
        QCOMPARE(box.text, "You're up to date.\nVersion 1.1.4");
        QCOMPARE(box.informativeText, QString());
        QCOMPARE(box.standardButtons, QMessageBox::Ok);
        QCOMPARE(box.buttons, QStringList("OK"));
        QVERIFY(box.modal);
        QVERIFY(!box.hasParent);
    }

    void box_hasNoParentWhateverIsActive_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addRow("offer") << "1.2.0";
        QTest::addRow("confirmation") << "1.1.4";
    }

    void box_hasNoParentWhateverIsActive()
    {
        QFETCH(QString, version);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument(version)));
        QWidget window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        Updater updater;
        updater.check(false);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QVERIFY(!stage.boxes().constFirst().hasParent);
    }

    void versionText_isShownAsReceived_data()
    {
        QTest::addColumn<QString>("version");
        for (const char *version :
             {"2.0.%1", "2.0.%2", "2.%2.%1", "2.%10.0", "2.<i>0</i>", "2.0&amp;", " 2.0.0 ",
              "2.0.0\n2.1.0", "2.0.0 \xC3\xA4\xE2\x82\xAC"})
            QTest::addRow("%s", version) << QString::fromUtf8(version);
    }

    // Not escaped, unlike the release notes: the box draws its mark-up.
    void versionText_isShownAsReceived()
    {
        QFETCH(QString, version);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument(version)));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QCOMPARE(stage.boxes().constFirst().text,
                 QString("<b>Velmora ") + version + " is available</b><br>You have 1.1.4.");
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
        network.get(QNetworkRequest(QUrl(QString("https://") + makerUpdateHost)));
        QVERIFY(stage.settle());
        QVERIFY(stage.boxes().isEmpty());
    }

    void answerInFlight_isTreatedInTheLastMode_data()
    {
        QTest::addColumn<bool>("first");
        QTest::addColumn<bool>("second");
        QTest::addColumn<int>("boxes");
        QTest::addRow("silent, then interactive") << true << false << 2;
        QTest::addRow("interactive, then silent") << false << true << 0;
    }

    // The mode is kept by the updater, not by the request.
    void answerInFlight_isTreatedInTheLastMode()
    {
        QFETCH(bool, first);
        QFETCH(bool, second);
        UpdateStage stage;
        Updater updater;
        updater.check(first);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        updater.check(second);
        QTRY_COMPARE(stage.server.requests().size(), 2);
        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        stage.server.answerLater(1, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle(2));
        QTEST(int(stage.boxes().size()), "boxes");
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
        bool answered = false;
        QPointer<QMessageBox> below;
        stage.setAction([&](QMessageBox &box) {
            if (!answered) {
                answered = true; // the first box stays open until the second was seen
                below = &box;
                stage.server.answerLater(1, httpAnswer(updateDocument("2.0.0")));
                return;
            }
            QVERIFY(below);
            QVERIFY(below->isVisible());
            box.close();
            below->close();
        });
        QVERIFY(stage.settle(2));
        QCOMPARE(stage.boxes().size(), 2);
    }
};

VELMORA_TEST_MAIN(UpdaterOfferTest)
#include "tst_UpdaterOffer.moc"
