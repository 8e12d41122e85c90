#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

/// The message's row.
class ControlWindowMessageTest : public QObject
{
    Q_OBJECT

private slots:
    void edit_isEmptyAndTakesTheFreeWidth()
    {
        ControlFixture fixture;
        QCOMPARE(fixture.messageEdit()->placeholderText(),
                 "Enter message to push to output screen…");
        QCOMPARE(fixture.messageEdit()->text(), QString());
        fixture.showControl();
        const int width = fixture.messageEdit()->width();
        fixture.window->resize(fixture.window->width() + 100, fixture.window->height());
        QTRY_COMPARE(fixture.messageEdit()->width(), width + 100);
    }

    void push_showsTheTrimmedText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto add = [](const char *name, const QString &text, const QString &message) {
            QTest::newRow(name) << text << message;
        };
        add("word", "Hello", "Hello");
        add("blanks around", "   Hello   ", "Hello");
        add("blanks inside", " five  minutes left ", "five  minutes left");
        add("tabs", "\tHello\t", "Hello");
        add("no-break blank", "\u00a0Hello\u00a0", "Hello");
        add("mark-up", "<b>Hello</b>", "<b>Hello</b>");
        add("place marker", "100 %1", "100 %1");
        add("200 characters", QString(200, 'W'), QString(200, 'W'));
        add("empty", "", "Earlier");
        add("blank", " ", "Earlier");
        add("blanks and tabs", " \t  ", "Earlier");
    }

    // A blank text leaves the message that is there.
    void push_showsTheTrimmedText()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        fixture.messageEdit()->setText("Earlier");
        fixture.button("Push")->click();
        fixture.messageEdit()->setText(text);
        fixture.button("Push")->click();
        QTEST(fixture.outputMessage()->text(), "message");
        QCOMPARE(fixture.messageEdit()->text(), text);
    }

    void returnKey_pushes_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("return") << Qt::Key_Return;
        QTest::newRow("keypad") << Qt::Key_Enter;
    }

    // Neither typing nor leaving the edit does.
    void returnKey_pushes()
    {
        QFETCH(Qt::Key, key);
        ControlFixture fixture;
        fixture.showControl();
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        QLineEdit *edit = fixture.messageEdit();
        edit->setFocus();
        QTest::keyClicks(edit, " Hello ");
        QVERIFY(edit->hasFocus());
        fixture.button("Clear")->setFocus();
        QVERIFY(!edit->hasFocus());
        QCOMPARE(fixture.outputMessage()->text(), QString());
        edit->setFocus();
        QTest::keyClick(edit, key);
        QCOMPARE(fixture.outputMessage()->text(), "Hello");
        QCOMPARE(edit->text(), " Hello ");
        edit->setText("   ");
        QTest::keyClick(edit, key);
        QCOMPARE(fixture.outputMessage()->text(), "Hello");
    }

    void clear_emptiesMessageAndEdit()
    {
        const ControlFixture fixture;
        for (const bool pushed : {true, false}) {
            fixture.messageEdit()->setText("Hello");
            if (pushed)
                fixture.button("Push")->click();
            QCOMPARE(fixture.outputMessage()->text(), pushed ? "Hello" : "");
            fixture.button("Clear")->click();
            QCOMPARE(fixture.outputMessage()->text(), QString());
            QCOMPARE(fixture.messageEdit()->text(), QString());
        }
    }
};

VELMORA_TEST_MAIN(ControlWindowMessageTest)
#include "tst_ControlWindowMessage.moc"
