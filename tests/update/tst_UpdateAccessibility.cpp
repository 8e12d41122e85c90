#include <QApplication>
#include <QTest>

#include "AboutCard.h"
#include "AboutDialog.h"
#include "Accessible.h"
#include "Maker.h"
#include "StyleSheet.h"
#include "TestMain.h"
#include "UpdateStage.h"
#include "Updater.h"

namespace {

// A message box as a screen reader found it.
struct SaidBox
{
    QString name;
    QStringList controls;
    QStringList texts;
    QStringList unsayable;
    QStringList detours;
};

SaidBox listenTo(QMessageBox &box)
{
    return {.name = QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Name),
            .controls = controlLines(box),
            .texts = textLines(box),
            .unsayable = unsayableNames(box),
            .detours = tabDetours(box)};
}

// What is said of the one box that the answer brings up for a person.
QList<SaidBox> boxesAfter(const QByteArray &document)
{
    UpdateStage stage;
    QList<SaidBox> said;
    stage.setAction([&said](QMessageBox &box) {
        said.append(listenTo(box));
        box.close();
    });
    stage.server.setAnswer(httpAnswer(document));
    Updater updater;
    updater.check(false);
    if (!stage.settle())
        said.clear();
    return said;
}

} // namespace

/// What a screen reader says of the About card and of the two message boxes, and the way
/// that Tab takes through them.
class UpdateAccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
        qApp->setStyleSheet(
            applicationStyleSheet()); // as in the program, for the places on the screen
    }

    void card_hasItsNames()
    {
        AboutDialog dialog;
        dialog.show();
        QCOMPARE(
            controlLines(dialog),
            QStringList({"button Close", "picture Velmora logo",
                         QStringLiteral("button Web site %1").arg(QLatin1String(makerWebAddress)),
                         "button Check for Updates", "button Close"}));
    }

    void card_canBeSaid()
    {
        AboutDialog dialog;
        dialog.show();
        QStringList unsayable = unsayableNames(dialog);
        // The address is the maker's, and need not be words.
        unsayable.removeOne(
            QStringLiteral("button Web site %1").arg(QLatin1String(makerWebAddress)));
        QCOMPARE(unsayable.join("; "), QString());
    }

    // The one name that two buttons of a window have in common: they do the same.
    void closeButtons_shareTheirName()
    {
        AboutDialog dialog;
        dialog.show();
        QCOMPARE(sharedButtonNames(dialog), QStringList{"Close"});
    }

    void card_tabGoesDownTheScreen()
    {
        AboutDialog dialog;
        dialog.show();
        QCOMPARE(tabStops(dialog).size(), 4);
        QCOMPARE(tabDetours(dialog).join("; "), QString());
    }

    void card_tabStartsAtTheTop()
    {
        AboutDialog dialog;
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(dialog.focusWidget(), AboutCard(dialog).crossButton());
    }

    void cardWithoutLogo_saysWhereItWouldBe()
    {
        AboutDialog dialog;
        dialog.show();
        AboutCard(dialog).logo()->setPixmap(QPixmap());
        QVERIFY(textLines(dialog).contains("Velmora logo"));
    }

    void offer_hasItsNames()
    {
        const QList<SaidBox> boxes = boxesAfter(updateDocument("1.2.0", {}, "Faster start."));
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().controls, QStringList({"button Download", "button Later"}));
        QVERIFY(boxes.constFirst().texts.contains("Faster start."));
    }

    void offer_isSaidWithoutMarkUp_data()
    {
        QTest::addColumn<QString>("version");
        QTest::newRow("plain") << "1.2.0";
        QTest::newRow("with a place to fill in") << "1.2.0.%2";
    }

    void offer_isSaidWithoutMarkUp()
    {
        QFETCH(QString, version);
        const QList<SaidBox> boxes = boxesAfter(updateDocument(version));
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().name, "Velmora " + version + " is available. You have 1.1.4.");
        QCOMPARE(boxes.constFirst().texts,
                 QStringList{"Velmora " + version + " is available\nYou have 1.1.4."});
    }

    void confirmation_hasItsNames()
    {
        const QList<SaidBox> boxes = boxesAfter(updateDocument("1.1.4"));
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().controls, QStringList{"button OK"});
        QCOMPARE(boxes.constFirst().texts, QStringList{"You're up to date.\nVersion 1.1.4"});
    }

    void box_canBeSaidAndWalked_data()
    {
        QTest::addColumn<QString>("version");
        QTest::newRow("offer") << "1.2.0";
        QTest::newRow("confirmation") << "1.1.4";
    }

    void box_canBeSaidAndWalked()
    {
        QFETCH(QString, version);
        const QList<SaidBox> boxes = boxesAfter(updateDocument(version, {}, "Faster start."));
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().unsayable.join("; "), QString());
        QCOMPARE(boxes.constFirst().detours.join("; "), QString());
    }
};

VELMORA_TEST_MAIN(UpdateAccessibilityTest)
#include "tst_UpdateAccessibility.moc"
