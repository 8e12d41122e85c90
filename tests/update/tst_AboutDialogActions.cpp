#include "AboutDialog.h"

#include <memory>

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

#include "AboutCard.h"
#include "Maker.h"
#include "TestMain.h"
#include "Timeouts.h"
#include "UpdateStage.h"

/// What the card's buttons do.
class AboutDialogActionsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void closing_accepts_data()
    {
        QTest::addColumn<QString>("end");
        QTest::addColumn<int>("result");
        QTest::addRow("the cross") << "cross" << int(QDialog::Accepted);
        QTest::addRow("the close button") << "close" << int(QDialog::Accepted);
        QTest::addRow("Escape") << "Escape" << int(QDialog::Rejected);
    }

    void closing_accepts()
    {
        QFETCH(QString, end);
        AboutDialog dialog;
        bool shown = false;
        QTimer::singleShot(0, &dialog, [&] {
            shown = dialog.isVisible();
            if (end == "Escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else if (end == "cross")
                QTest::mouseClick(AboutCard(dialog).crossButton(), Qt::LeftButton);
            else
                QTest::mouseClick(AboutCard(dialog).closeButton(), Qt::LeftButton);
        });
        QTEST(dialog.exec(), "result");
        QVERIFY(shown);
        QVERIFY(!dialog.isVisible());
    }

    void webSiteButton_opensTheMakersSite()
    {
        UpdateStage stage;
        AboutDialog dialog;
        dialog.show();
        QTest::mouseClick(AboutCard(dialog).webSiteButton(), Qt::LeftButton);
        QCOMPARE(stage.opened(), QStringList(QString(makerWebSite)));
        QVERIFY(stage.opened().constFirst().startsWith("https://"));
        QVERIFY(dialog.isVisible());
        QVERIFY(stage.server.tunnels().isEmpty());
    }

    void updateButton_checksAndIsDisabled()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
        AboutDialog dialog;
        dialog.show();
        QTest::mouseClick(AboutCard(dialog).updateButton(), Qt::LeftButton);
        QVERIFY(!AboutCard(dialog).updateButton()->isEnabled());
        QVERIFY(stage.waitUntil([&] { return stage.boxes().size() == 1; }));
        QCOMPARE(stage.boxes().constFirst().text, "You're up to date.\nVersion 1.1.4");
        // The answer does not bring the button back.
        QVERIFY(!AboutCard(dialog).updateButton()->isEnabled());
        dialog.hide();
        QVERIFY(stage.settle());
    }

    void updateButton_cannotBePressedTwice()
    {
        UpdateStage stage;
        AboutDialog dialog;
        dialog.show();
        QTest::mouseClick(AboutCard(dialog).updateButton(), Qt::LeftButton);
        QTest::mouseClick(AboutCard(dialog).updateButton(), Qt::LeftButton);
        AboutCard(dialog).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 1);
        QTest::qWait(100);
        QCOMPARE(stage.server.requests().size(), 1);
        stage.server.answerLater(0, httpAnswer(""));
        dialog.hide();
        QVERIFY(stage.settle());
    }

    // In real time: one card with a check that is answered long after its button has come back,
    // one whose check fails at once, and one that is gone before its button would come back.
    void updateButton_comesBackAfterFiveSeconds()
    {
        UpdateStage stage;
        AboutDialog waiting;
        AboutDialog failing;
        auto closed = std::make_unique<AboutDialog>();
        const QByteArray failure = httpAnswer("", "500 Internal Server Error");
        stage.server.setAnswers({{}, {failure}, {failure}, {}});

        const Timeouts timeouts;
        QElapsedTimer clock;
        clock.start();
        AboutCard(waiting).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 1);
        AboutCard(failing).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 2);
        AboutCard(*closed).updateButton()->click();
        closed.reset();

        QTest::qWait(qMax(0, 4000 - int(clock.elapsed())));
        QVERIFY(!AboutCard(waiting).updateButton()->isEnabled());
        QVERIFY(!AboutCard(failing).updateButton()->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(AboutCard(waiting).updateButton()->isEnabled(), 4000);
        QVERIFY(timeouts.seen.contains(Timeout{5000, Qt::CoarseTimer}));
        QVERIFY(clock.elapsed() >= 4750); // a coarse timer is up to 5 % early
        QTRY_VERIFY(AboutCard(failing).updateButton()->isEnabled());
        QVERIFY(stage.boxes().isEmpty());

        // A second check runs while the first is still waiting.
        AboutCard(waiting).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 4);
        QVERIFY(!AboutCard(waiting).updateButton()->isEnabled());
        QVERIFY(!stage.replies().constFirst()->isFinished());
        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        stage.server.answerLater(3, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle(4));
        QCOMPARE(stage.boxes().size(), 2);
    }

    void closedDialog_leavesItsCheckRunning()
    {
        UpdateStage stage;
        auto dialog = std::make_unique<AboutDialog>();
        dialog->show();
        QTest::mouseClick(AboutCard(*dialog).updateButton(), Qt::LeftButton);
        QTRY_COMPARE(stage.server.requests().size(), 1);
        const QPointer<QNetworkAccessManager> manager = stage.replies().constFirst()->manager();
        dialog.reset();
        QVERIFY(manager);

        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QVERIFY(manager);
    }
};

VELMORA_TEST_MAIN(AboutDialogActionsTest)
#include "tst_AboutDialogActions.moc"
