#include <QDialog>
#include <QKeySequence>
#include <QLineEdit>
#include <QShortcut>
#include <QTest>

#include "ControlFixture.h"
#include "Operated.h"
#include "TestMain.h"

namespace {

void addActions()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("state");
    QTest::newRow("start/pause") << 0 << Qt::Key_Space << "stopped 290 shown";
    QTest::newRow("reset") << 1 << Qt::Key_R << "stopped 300 shown";
    QTest::newRow("plus") << 2 << Qt::Key_Up << "running 350 shown";
    QTest::newRow("minus") << 3 << Qt::Key_Down << "running 230 shown";
    QTest::newRow("output") << 4 << Qt::Key_O << "running 290 hidden";
}

QLineEdit *messageEdit(const ControlFixture &fixture)
{
    return fixture.button("Push")->parentWidget()->findChild<QLineEdit *>(
        QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

/// Real key presses in every window of the application that can have the focus.
class ControlWindowShortcutsTest : public QObject
{
    Q_OBJECT

private slots:
    void defaultKey_acts_data() { addActions(); }

    void defaultKey_acts()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QString, state);
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QCOMPARE(operated.state(), untouched);
        press(*operated.fixture.window, key);
        QCOMPARE(operated.state(), state);
    }

    void startPause_togglesBothWays()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        press(*operated.fixture.window, Qt::Key_Space);
        QVERIFY(!operated.fixture.engine.isRunning());
        press(*operated.fixture.window, Qt::Key_Space);
        QVERIFY(operated.fixture.engine.isRunning());
        QCOMPARE(operated.fixture.engine.remaining(), 290);
    }

    void toggleOutput_togglesBothWays()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        press(*operated.fixture.window, Qt::Key_O);
        QVERIFY(operated.fixture.output.isHidden());
        QVERIFY(operated.fixture.button("▶  Show Output Window"));

        QVERIFY(focus(*operated.fixture.window));
        press(*operated.fixture.window, Qt::Key_O);
        QVERIFY(operated.fixture.output.isVisible());
        QVERIFY(operated.fixture.output.isFullScreen());
        QVERIFY(operated.fixture.button("■  Hide Output Window"));
    }

    void shortcuts_areApplicationWideAndFive()
    {
        const ControlFixture fixture;
        const QList<QShortcut *> shortcuts = fixture.window->findChildren<QShortcut *>();
        QStringList keys;
        for (const QShortcut *shortcut : shortcuts) {
            QCOMPARE(shortcut->context(), Qt::ApplicationShortcut);
            QCOMPARE(shortcut->parent(), fixture.window.get());
            keys.append(shortcut->key().toString(QKeySequence::PortableText));
        }
        QCOMPARE(keys, QStringList({"Space", "R", "Up", "Down", "O"}));
    }

    void fullScreenOutput_hasTheKeys_data() { addActions(); }

    void fullScreenOutput_hasTheKeys()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QString, state);
        Operated operated;
        OutputWindow &output = operated.fixture.output;
        QVERIFY(output.isFullScreen());
        QVERIFY(output.screen() != operated.fixture.window->screen());
        QVERIFY(focus(output));
        press(output, key);
        QCOMPARE(operated.state(), state);
    }

    void preview_hasTheKeys_data() { addActions(); }

    void preview_hasTheKeys()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QString, state);
        Operated operated;
        operated.fixture.button("Preview")->click();
        QWidget *preview = findWindow("Output Preview");
        QVERIFY(preview);
        QVERIFY(focus(*preview));
        press(*preview, key);
        QCOMPARE(operated.state(), state);
    }

    // Space would press the button that has the focus, were it not the start key.
    void focusedButton_leavesSpaceToTheShortcut()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QAbstractButton *button = operated.fixture.button("▲  Count Up");
        button->setFocus();
        QVERIFY(button->hasFocus());
        press(*operated.fixture.window, Qt::Key_Space);
        QCOMPARE(operated.state(), paused);
        QVERIFY(!operated.fixture.engine.isCountUp());
    }

    void focusedSpinBox_leavesUpAndDownToTheShortcuts_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("state");
        QTest::newRow("up") << Qt::Key_Up << "running 350 shown";
        QTest::newRow("down") << Qt::Key_Down << "running 230 shown";
    }

    void focusedSpinBox_leavesUpAndDownToTheShortcuts()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QString, state);
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QSpinBox *minutes = operated.fixture.minutes();
        minutes->setFocus();
        QVERIFY(minutes->hasFocus());
        press(*operated.fixture.window, key);
        QCOMPARE(operated.state(), state);
        QCOMPARE(minutes->value(), 5);
    }

    void focusedSpinBox_stillTakesDigits()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QSpinBox *minutes = operated.fixture.minutes();
        minutes->setFocus();
        minutes->selectAll();
        press(*operated.fixture.window, Qt::Key_7);
        QCOMPARE(minutes->value(), 7);
        QCOMPARE(operated.state(), untouched);
    }

    void messageEdit_takesLetters()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        QLineEdit *edit = messageEdit(operated.fixture);
        edit->setFocus();
        for (const Qt::Key key : {Qt::Key_R, Qt::Key_O, Qt::Key_Space, Qt::Key_R})
            press(*operated.fixture.window, key);
        QCOMPARE(edit->text().toLower(), QStringLiteral("ro r"));
        QCOMPARE(operated.state(), untouched);
    }

    void messageEdit_leavesUpAndDownToTheShortcuts()
    {
        Operated operated;
        QVERIFY(focus(*operated.fixture.window));
        messageEdit(operated.fixture)->setFocus();
        press(*operated.fixture.window, Qt::Key_Up);
        QCOMPARE(operated.state(), QStringLiteral("running 350 shown"));
        press(*operated.fixture.window, Qt::Key_Down);
        press(*operated.fixture.window, Qt::Key_Down);
        QCOMPARE(operated.state(), QStringLiteral("running 230 shown"));
    }

    void messageEdit_leavesAKeyThatIsNoText()
    {
        AppSettings settings;
        settings.shortcutReset = QStringLiteral("F9");
        Operated operated(settings);
        QVERIFY(focus(*operated.fixture.window));
        messageEdit(operated.fixture)->setFocus();
        press(*operated.fixture.window, Qt::Key_F9);
        QCOMPARE(operated.state(), QStringLiteral("stopped 300 shown"));
    }

    void modifier_isNotTheKeyAlone_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("control") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("meta") << Qt::KeyboardModifiers(Qt::MetaModifier);
    }

    void modifier_isNotTheKeyAlone()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, Qt::Key_R, modifiers);
        QCOMPARE(operated.state(), untouched);
    }

    void otherKeys_doNothing()
    {
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp,
                                  Qt::Key_F5, Qt::Key_0, Qt::Key_Escape, Qt::Key_Return})
            press(operated.fixture.output, key);
        QCOMPARE(operated.state(), untouched);
    }

    void modalDialog_silencesAll_data() { addActions(); }

    void modalDialog_silencesAll()
    {
        QFETCH(Qt::Key, key);
        Operated operated;
        QDialog dialog(operated.fixture.window.get());
        dialog.setModal(true);
        dialog.show();
        QVERIFY(focus(dialog));
        press(dialog, key);
        QCOMPARE(operated.state(), untouched);
    }

    void settingsDialog_silencesAll_data() { addActions(); }

    void settingsDialog_silencesAll()
    {
        QFETCH(Qt::Key, key);
        Operated operated;
        bool pressed = false;
        QString during;
        QTimer::singleShot(0, &operated.fixture.engine, [&] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            if (focus(*dialog)) {
                press(*dialog, key);
                pressed = true;
            }
            during = operated.state();
            dialog->close();
        });
        operated.fixture.window->openSettings();
        QVERIFY(pressed);
        QCOMPARE(during, untouched);
    }
};

VELMORA_TEST_MAIN(ControlWindowShortcutsTest, twoScreens())
#include "tst_ControlWindowShortcuts.moc"
