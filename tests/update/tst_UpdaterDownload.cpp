#include "Updater.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTest>

#include "TestMain.h"
#include "UpdateStage.h"

namespace {

const QString page = "https://download.example/velmora?a=1&b=%20#c";

} // namespace

/// What the browser is asked to open when the offer ends.
class UpdaterDownloadTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void download_opensHttpsAddressesOnly_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QStringList>("opened");

        QTest::addRow("https") << page << QStringList(page);
        QTest::addRow("https, other letters in capitals")
            << "https://Download.Example/A" << QStringList("https://download.example/A");
        QTest::addRow("https, blank inside")
            << "https://a.example/a b" << QStringList("https://a.example/a%20b");
        // The scheme ends with its colon.
        for (const char *address : {"https:a.example", "https:/a.example", "https:"})
            QTest::addRow("\"%s\"", address) << address << QStringList(address);
        const char *const refused[] = {"",
                                       "http://a.example/",
                                       "HTTPS://a.example/",
                                       "Https://a.example/",
                                       "httpS://a.example/",
                                       "ftp://a.example/",
                                       "file:///etc/hostname",
                                       "javascript:alert(1)",
                                       "httpsx://a.example/",
                                       "xhttps://a.example/",
                                       "https",
                                       "https//a.example/",
                                       " https://a.example/",
                                       "\thttps://a.example/",
                                       "\nhttps://a.example/",
                                       "a.example",
                                       "//a.example/",
                                       "/https:",
                                       "https://[",
                                       "https://a.example:port/",
                                       "https ://a.example/",
                                       "%68ttps://a.example/",
                                       "\"https://a.example/\""};
        for (const char *address : refused)
            QTest::addRow("\"%s\"", address) << address << QStringList();
    }

    void download_opensHttpsAddressesOnly()
    {
        QTest::failOnWarning(QRegularExpression("^(?!This plugin does not support propagate)"));
        QFETCH(QString, address);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("2.0.0", address)));
        stage.press("Download");
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QTEST(stage.opened(), "opened");
    }

    void anyOtherEnd_opensNothing_data()
    {
        QTest::addColumn<QString>("end");
        QTest::addRow("Later") << "Later";
        QTest::addRow("Escape") << "Escape";
        QTest::addRow("closing the window") << "close";
        QTest::addRow("hiding the window") << "hide";
    }

    void anyOtherEnd_opensNothing()
    {
        QFETCH(QString, end);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("2.0.0", page)));
        if (end == "Later")
            stage.press(end);
        else if (end == "Escape")
            stage.setAction([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
        else if (end == "hide")
            stage.setAction([](QMessageBox &box) { box.hide(); });
        Updater updater;
        updater.check(false);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QVERIFY(stage.opened().isEmpty());
    }

    void linkInTheVersion_isNotFollowed_data()
    {
        QTest::addColumn<QString>("address");
        for (const char *address :
             {"https://link.example/", "http://link.example/", "file:///etc/hostname"})
            QTest::addRow("%s", address) << address;
    }

    void linkInTheVersion_isNotFollowed()
    {
        QFETCH(QString, address);
        UpdateStage stage;
        stage.server.setAnswer(
            httpAnswer(updateDocument("2.0.0.<a href=\"" + address + "\">newest</a>")));
        QStringList clicked;
        stage.setAction([&](QMessageBox &box) {
            const QList<QLabel *> labels = box.findChildren<QLabel *>();
            for (QLabel *label : labels) {
                connect(label, &QLabel::linkActivated, label,
                        [&](const QString &link) { clicked.append(link); });
                for (int x = 0; x < label->width(); x += 8) {
                    for (int y = 0; y < label->height(); y += 8)
                        QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, QPoint(x, y));
                }
            }
            QTest::keyClick(&box, Qt::Key_Tab);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.opened(), QStringList());
        QVERIFY(clicked.contains(address));
    }
};

VELMORA_TEST_MAIN(UpdaterDownloadTest)
#include "tst_UpdaterDownload.moc"
