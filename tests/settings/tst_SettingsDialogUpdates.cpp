#include <memory>

#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>

#include "AppSettings.h"
#include "DialogView.h"
#include "Find.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

// Sends every request to a closed port of this machine and notes what was asked for.
class DeadEnd : public QNetworkProxyFactory
{
public:
    DeadEnd(QList<QUrl> *asked, quint16 closedPort)
        : asked(asked)
        , closedPort(closedPort)
    {
    }

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        asked->append(query.url());
        return {QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), closedPort)};
    }

private:
    QList<QUrl> *asked;
    quint16 closedPort;
};

quint16 closedPort()
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost) ? server.serverPort() : quint16(1);
}

} // namespace

class SettingsDialogUpdatesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        removeStore();
        asked.clear();
        QNetworkProxyFactory::setApplicationProxyFactory(new DeadEnd(&asked, closedPort()));
    }

    void cleanupTestCase() { QNetworkProxyFactory::setApplicationProxyFactory(nullptr); }

    void opening_asksNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] { DialogView(dialog).okButton()->click(); });
        QCOMPARE(asked.size(), 0);
    }

    // Unlike the About card's, this button is never disabled: every click is a check of its own.
    void button_startsOneCheckAClick()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            auto *button = findByText<QPushButton>(dialog, QStringLiteral("Check for Updates"));
            QTest::mouseClick(button, Qt::LeftButton);
            QTRY_COMPARE(asked.size(), 1);
            QTest::mouseClick(button, Qt::LeftButton);
            QTest::mouseClick(button, Qt::LeftButton);
            QTRY_COMPARE(asked.size(), 3);
        });
        for (const QUrl &url : std::as_const(asked)) {
            QCOMPARE(url.scheme(), QStringLiteral("https"));
            QCOMPARE(url.path(), QStringLiteral("/api/versions.json"));
        }
    }

    void check_leavesButtonAndDialogUsable()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            auto *button = findByText<QPushButton>(dialog, QStringLiteral("Check for Updates"));
            QTest::mouseClick(button, Qt::LeftButton);
            QVERIFY(button->isEnabled());
            QCOMPARE(button->text(), QStringLiteral("Check for Updates"));
            QTRY_COMPARE(asked.size(), 1);
            QVERIFY(button->isEnabled());
            QVERIFY(dialog.isVisible());
            QCOMPARE(QApplication::activeModalWidget(), &dialog);
        });
    }

    void check_failing_saysNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            findByText<QPushButton>(dialog, QStringLiteral("Check for Updates"))->click();
            QTRY_COMPARE(asked.size(), 1);
            QTest::qWait(300); // for the refused connection to be reported
            QCOMPARE(QApplication::activeModalWidget(), &dialog);
        });
        QVERIFY(!QApplication::activeModalWidget());
    }

    void check_writesNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            findByText<QPushButton>(dialog, QStringLiteral("Check for Updates"))->click();
            QTRY_COMPARE(asked.size(), 1);
        });
        QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
        QVERIFY(storeBytes().isEmpty());
    }

    // To the person: that the program is up to date is said to nobody else.
    void closedDialog_leavesItsCheckToSpeak()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
        UpdateStage stage; // in place of the dead end
        AppSettings record;
        auto dialog = std::make_unique<SettingsDialog>(&record, nullptr);
        execWith(*dialog, [&] {
            findByText<QPushButton>(*dialog, QStringLiteral("Check for Updates"))->click();
            QTRY_COMPARE(stage.server.requests().size(), 1);
            DialogView(*dialog).cancelButton()->click();
        });
        dialog.reset();

        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.waitUntil([&] { return stage.boxes().size() == 1; }));
        QCOMPARE(stage.boxes().constFirst().text,
                 QStringLiteral("You're up to date.\nVersion 1.1.4"));
    }

private:
    QList<QUrl> asked;
};

VELMORA_TEST_MAIN(SettingsDialogUpdatesTest)
#include "tst_SettingsDialogUpdates.moc"
