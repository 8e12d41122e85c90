#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "ControlFixture.h"
#include "Costs.h"
#include "TestMain.h"

namespace {

constexpr int megabyte = 1'000'000;
constexpr int repeats = 3;

/// Words of many lengths, none of which looks like mark-up.
QString text(int length)
{
    QString words;
    for (int i = 0; words.size() < length; ++i)
        words += QStringLiteral("word%1 ").arg(i);
    return words.left(length);
}

} // namespace

/// A message of a megabyte: it is shown as it is, the count goes on, and what it costs grows
/// with its length and not faster.
class MessageLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void megabyte_costsInProportion_data()
    {
        QTest::addColumn<QString>("start");
        QTest::newRow("plain text") << QString();
        QTest::newRow("rich text") << QStringLiteral("<b>Message</b> ");
    }

    void megabyte_costsInProportion()
    {
        QFETCH(QString, start);
        ControlFixture fixture;
        fixture.show();
        QVERIFY(QTest::qWaitForWindowExposed(&fixture.output));
        const QSize size = fixture.output.size();
        Costs costs("number of characters");
        for (int repeat = 0; repeat < repeats; ++repeat) {
            for (const int length : {megabyte / 8, megabyte / 4, megabyte / 2, megabyte}) {
                const QString message = start + text(length - int(start.size()));
                costs.measure("set and first drawn", length, [&] {
                    fixture.output.setMessage(message);
                    fixture.output.grab();
                    QCoreApplication::processEvents();
                });
                QCOMPARE(fixture.outputMessage()->text(), message);
                QCOMPARE(fixture.output.size(), size);
                costs.measure("drawn again", length, [&] { fixture.output.grab(); });
                costs.measure("a tick", length, [&] {
                    passSecond(fixture.engine);
                    QCoreApplication::processEvents();
                });
                costs.measure("refreshSettings", length, [&] {
                    fixture.output.refreshSettings();
                    QCoreApplication::processEvents();
                });
                fixture.output.clearMessage();
            }
        }
        QCOMPARE(fixture.engine.remaining(), 300 - repeats * 4);
        QVERIFY2(costs.print(), "Something grows faster than the message");
    }

    void megabyteInTheEdit_isPushedUpToTheEditsLength()
    {
        ControlFixture fixture;
        fixture.show();
        const QList<QLineEdit *> edits = fixture.window->findChildren<QLineEdit *>();
        QLineEdit *messageEdit = nullptr;
        for (QLineEdit *edit : edits) {
            if (!edit->placeholderText().isEmpty())
                messageEdit = edit;
        }
        QVERIFY(messageEdit);
        const QString message = text(megabyte);
        messageEdit->setText(message);
        fixture.button("Push")->click();
        fixture.output.grab();
        const QString shown = fixture.outputMessage()->text();
        qInfo(
            "Of %d characters in the clipboard the message's edit takes %lld, which are all shown",
            megabyte, qlonglong(shown.size()));
        QCOMPARE(messageEdit->text(), message.left(messageEdit->maxLength()));
        QCOMPARE(shown, messageEdit->text().trimmed());
        fixture.button("Clear")->click();
        QCOMPARE(fixture.outputMessage()->text(), QString());
    }
};

VELMORA_TEST_MAIN(MessageLoadTest, twoScreens())
#include "tst_MessageLoad.moc"
