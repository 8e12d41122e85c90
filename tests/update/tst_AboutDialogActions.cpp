#include "AboutDialog.h"

#include <memory>

#include <QElapsedTimer>
#include <QNetworkReply>
#include <QTest>

#include "AboutCard.h"
#include "TestMain.h"
#include "Timeouts.h"
#include "UpdateStage.h"
#include "Vendor.h"

/// What the card's buttons do.
class AboutDialogActionsTest : public QObject
{
    Q_OBJECT

private slots:
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
        const AboutCard card(dialog);
        bool shown = false;
        QTimer::singleShot(0, &dialog, [&] {
            shown = dialog.isVisible();
            if (end == "Escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                QTest::mouseClick(end == "cross" ? card.crossButton() : card.closeButton(),
                                  Qt::LeftButton);
        });
        QTEST(dialog.exec(), "result");
        QVERIFY(shown);
        QVERIFY(!dialog.isVisible());
    }

    void webSiteButton_opensTheVendorsSite()
    {
        UpdateStage stage;
        AboutDialog dialog;
        dialog.show();
        QTest::mouseClick(AboutCard(dialog).webSiteButton(), Qt::LeftButton);
        QCOMPARE(stage.opened(), QStringList(QString(vendorWebSite)));
        QVERIFY(QString(vendorWebSite).startsWith("https://"));
        QVERIFY(dialog.isVisible());
        QVERIFY(stage.server.tunnels().isEmpty());
    }

    void updateButton_checksOnceAndIsDisabled()
    {
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("1.1.4")));
        AboutDialog dialog;
        dialog.show();
        QAbstractButton *button = AboutCard(dialog).updateButton();
        for (int times = 0; times < 3; ++times) {
            QTest::mouseClick(button, Qt::LeftButton);
            QVERIFY(!button->isEnabled());
            button->click();
        }
        QVERIFY(stage.waitUntil([&] { return !stage.boxes().isEmpty(); }));
        QVERIFY(!button->isEnabled()); // the answer does not bring it back
        dialog.hide();
        QVERIFY(stage.settle());
        QCOMPARE(stage.texts(), QStringList(upToDateText));
        QCOMPARE(stage.server.requests().size(), 1);
    }

    // In real time: one card with a check that is answered long after its button has come back,
    // one whose check fails at once, and one that is gone before its answer comes and before its
    // button would come back.
    void updateButton_comesBackAfterFiveSeconds()
    {
        UpdateStage stage;
        AboutDialog waiting;
        AboutDialog failing;
        auto closed = std::make_unique<AboutDialog>();
        QAbstractButton *button = AboutCard(waiting).updateButton();

        const Timeouts timeouts;
        QElapsedTimer clock;
        clock.start();
        button->click();
        QTRY_COMPARE(stage.server.requests().size(), 1);
        AboutCard(failing).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 2);
        AboutCard(*closed).updateButton()->click();
        QTRY_COMPARE(stage.server.requests().size(), 3);
        closed.reset();
        stage.server.answerLater(1, httpAnswer("", "500 Internal Server Error"));
        stage.server.answerLater(2, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.waitUntil([&] { return !stage.replies().at(1) && !stage.replies().at(2); }));
        QCOMPARE(stage.texts(), QStringList(upToDateText));
        QVERIFY(!AboutCard(failing).updateButton()->isEnabled());

        QTRY_VERIFY_WITH_TIMEOUT(button->isEnabled(), 8000);
        QVERIFY(timeouts.seen.contains(Timeout{5000, Qt::CoarseTimer}));
        QVERIFY(clock.elapsed() >= 4750); // a coarse timer is up to 5 % early
        QTRY_VERIFY(AboutCard(failing).updateButton()->isEnabled());

        // A second check runs while the first is still waiting.
        button->click();
        QTRY_COMPARE(stage.server.requests().size(), 4);
        QVERIFY(!button->isEnabled());
        QVERIFY(!stage.replies().constFirst()->isFinished());
        stage.server.answerLater(0, httpAnswer(updateDocument("1.1.4")));
        stage.server.answerLater(3, httpAnswer(updateDocument("1.1.4")));
        QVERIFY(stage.settle(4));
        QCOMPARE(stage.boxes().size(), 3);
    }
};

VELMORA_TEST_MAIN(AboutDialogActionsTest)
#include "tst_AboutDialogActions.moc"
