#include <QLineEdit>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

QLineEdit *messageEdit(const ControlFixture &fixture)
{
    // A spin box has an edit of its own; the message's is no part of one.
    const QList<QLineEdit *> edits = fixture.window->findChildren<QLineEdit *>();
    for (QLineEdit *edit : edits) {
        if (!qobject_cast<QSpinBox *>(edit->parentWidget()))
            return edit;
    }
    return nullptr;
}

} // namespace

class ControlWindowMessageTest : public QObject
{
    Q_OBJECT

private slots:
    void edit_hasPlaceholderAndIsEmpty()
    {
        const ControlFixture fixture;
        QVERIFY(messageEdit(fixture));
        QCOMPARE(messageEdit(fixture)->placeholderText(),
                 QStringLiteral("Enter message to push to output screen\u2026"));
        QCOMPARE(messageEdit(fixture)->text(), QString());
    }

    void buttons_areOfFixedWidth_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("push") << "Push";
        QTest::newRow("clear") << "Clear";
    }

    void buttons_areOfFixedWidth()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QCOMPARE(button->minimumWidth(), 60);
        QCOMPARE(button->maximumWidth(), 60);
    }

    void row_holdsEditPushAndClearInThisOrder()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QRect edit = messageEdit(fixture)->geometry();
        const QRect push = fixture.button("Push")->geometry();
        const QRect clear = fixture.button("Clear")->geometry();
        QVERIFY(edit.right() < push.left());
        QVERIFY(push.right() < clear.left());
        QCOMPARE(edit.center().y(), push.center().y());
        QCOMPARE(push.center().y(), clear.center().y());

        const int editWidth = edit.width();
        fixture.window->resize(fixture.window->width() + 100, fixture.window->height());
        QVERIFY(QTest::qWaitFor([&] { return messageEdit(fixture)->width() == editWidth + 100; }));
    }

    void push_showsTheTrimmedText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("word") << "Hello"
                              << "Hello";
        QTest::newRow("blanks around") << "   Hello   "
                                       << "Hello";
        QTest::newRow("blanks inside") << " five  minutes left "
                                       << "five  minutes left";
        QTest::newRow("tabs") << "\tHello\t"
                              << "Hello";
        QTest::newRow("no-break blank") << QStringLiteral("\u00a0Hello\u00a0") << "Hello";
        QTest::newRow("mark-up") << "<b>Hello</b>"
                                 << "<b>Hello</b>";
        QTest::newRow("place marker") << "100 %1"
                                      << "100 %1";
        QTest::newRow("200 characters") << QString(200, 'W') << QString(200, 'W');
    }

    void push_showsTheTrimmedText()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        const ControlFixture fixture;
        messageEdit(fixture)->setText(text);
        fixture.button("Push")->click();
        QCOMPARE(fixture.outputMessage()->text(), message);
    }

    void push_keepsTheEditsText()
    {
        const ControlFixture fixture;
        messageEdit(fixture)->setText("  Hello  ");
        fixture.button("Push")->click();
        QCOMPARE(messageEdit(fixture)->text(), QStringLiteral("  Hello  "));
    }

    void push_ofBlankText_keepsTheMessage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("blank") << " ";
        QTest::newRow("blanks and tabs") << " \t  ";
    }

    void push_ofBlankText_keepsTheMessage()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        messageEdit(fixture)->setText("Hello");
        fixture.button("Push")->click();
        messageEdit(fixture)->setText(text);
        fixture.button("Push")->click();
        QCOMPARE(fixture.outputMessage()->text(), QStringLiteral("Hello"));
        QCOMPARE(messageEdit(fixture)->text(), text);
    }

    void push_ofAnotherText_replacesTheMessage()
    {
        const ControlFixture fixture;
        messageEdit(fixture)->setText("Hello");
        fixture.button("Push")->click();
        messageEdit(fixture)->setText("Goodbye");
        fixture.button("Push")->click();
        QCOMPARE(fixture.outputMessage()->text(), QStringLiteral("Goodbye"));
    }

    void returnKey_pushes_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("return") << Qt::Key_Return;
        QTest::newRow("keypad") << Qt::Key_Enter;
    }

    void returnKey_pushes()
    {
        QFETCH(Qt::Key, key);
        ControlFixture fixture;
        fixture.showControl();
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        messageEdit(fixture)->setFocus();
        QTest::keyClicks(messageEdit(fixture), " Hello ");
        QTest::keyClick(messageEdit(fixture), key);
        QCOMPARE(fixture.outputMessage()->text(), QStringLiteral("Hello"));
        QCOMPARE(messageEdit(fixture)->text(), QStringLiteral(" Hello "));
    }

    void returnKey_onBlankText_keepsTheMessage()
    {
        ControlFixture fixture;
        fixture.showControl();
        messageEdit(fixture)->setText("Hello");
        QTest::keyClick(messageEdit(fixture), Qt::Key_Return);
        messageEdit(fixture)->setText("   ");
        QTest::keyClick(messageEdit(fixture), Qt::Key_Return);
        QCOMPARE(fixture.outputMessage()->text(), QStringLiteral("Hello"));
    }

    void typing_alone_pushesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        QTest::keyClicks(messageEdit(fixture), "Hello");
        QCOMPARE(messageEdit(fixture)->text(), QStringLiteral("Hello"));
        QCOMPARE(fixture.outputMessage()->text(), QString());
    }

    void leavingTheEdit_pushesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        messageEdit(fixture)->setFocus();
        QTest::keyClicks(messageEdit(fixture), "Hello");
        QVERIFY(messageEdit(fixture)->hasFocus());
        fixture.button("Clear")->setFocus();
        QVERIFY(!messageEdit(fixture)->hasFocus());
        QCOMPARE(fixture.outputMessage()->text(), QString());
        QCOMPARE(messageEdit(fixture)->text(), QStringLiteral("Hello"));
    }

    void clear_emptiesMessageAndEdit()
    {
        const ControlFixture fixture;
        messageEdit(fixture)->setText("Hello");
        fixture.button("Push")->click();
        fixture.button("Clear")->click();
        QCOMPARE(fixture.outputMessage()->text(), QString());
        QCOMPARE(messageEdit(fixture)->text(), QString());
    }

    void clear_ofAnUnpushedText_emptiesTheEdit()
    {
        const ControlFixture fixture;
        messageEdit(fixture)->setText("Hello");
        fixture.button("Clear")->click();
        QCOMPARE(fixture.outputMessage()->text(), QString());
        QCOMPARE(messageEdit(fixture)->text(), QString());
    }

    void slots_pushAndClear()
    {
        const ControlFixture fixture;
        messageEdit(fixture)->setText(" Hello ");
        fixture.window->onPushMessage();
        QCOMPARE(fixture.outputMessage()->text(), QStringLiteral("Hello"));
        fixture.window->onClearMessage();
        QCOMPARE(fixture.outputMessage()->text(), QString());
        QCOMPARE(messageEdit(fixture)->text(), QString());
    }
};

VELMORA_TEST_MAIN(ControlWindowMessageTest)
#include "tst_ControlWindowMessage.moc"
