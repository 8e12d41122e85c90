#include <QDialog>
#include <QKeySequence>
#include <QPointer>
#include <QShortcut>
#include <QTest>
#include <QTranslator>

#include "Operated.h"
#include "TestMain.h"

namespace {

struct Action
{
    const char *name;
    QString AppSettings::*field;
    Qt::Key key;       // by default
    const char *state; // after it
};

const Action actions[] = {
    {"start/pause", &AppSettings::shortcutStartPause, Qt::Key_Space, "stopped 290 shown"},
    {"reset", &AppSettings::shortcutReset, Qt::Key_R, "stopped 300 shown"},
    {"plus", &AppSettings::shortcutPlusMin, Qt::Key_Up, "running 350 shown"},
    {"minus", &AppSettings::shortcutMinusMin, Qt::Key_Down, "running 230 shown"},
    {"output", &AppSettings::shortcutToggleOutput, Qt::Key_O, "running 290 hidden"},
};

/// A language in which the Space key has another name.
class SpaceTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        const bool isKeyName = qstrcmp(context, "QShortcut") == 0;
        return isKeyName && qstrcmp(text, "Space") == 0 ? QStringLiteral("Leertaste") : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

/// Real key presses in every window that can have the focus, and the texts that name the keys.
class ControlWindowShortcutsTest : public QObject
{
    Q_OBJECT

private slots:
    void defaultKey_actsInEveryWindow_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<const Action *>("action");
        for (const char *place : {"Control window", "full-screen output", "preview", "dialog"}) {
            for (const Action &action : actions)
                QTest::addRow("%s, %s", place, action.name) << place << &action;
        }
    }

    // Except while a modal dialog is open.
    void defaultKey_actsInEveryWindow()
    {
        QFETCH(QString, place);
        QFETCH(const Action *, action);
        Operated operated;
        QVERIFY(operated.output.isFullScreen());
        QVERIFY(operated.output.screen() != operated.window->screen());
        operated.button("Preview")->click();
        QDialog dialog(operated.window.get());
        dialog.setModal(true);
        if (place == "dialog")
            dialog.show();
        const QMap<QString, QWidget *> windows{{"Control window", operated.window.get()},
                                               {"full-screen output", &operated.output},
                                               {"preview", findWindow("Output Preview")},
                                               {"dialog", &dialog}};
        QWidget *window = windows.value(place);
        QVERIFY(window);
        QVERIFY(focus(*window));
        press(*window, action->key);
        QCOMPARE(operated.state(), window == &dialog ? untouched : action->state);
    }

    void togglingKey_togglesBothWays()
    {
        Operated operated;
        for (const char *state : {"stopped 290 shown", "running 290 shown"}) {
            QVERIFY(focus(*operated.window));
            press(*operated.window, Qt::Key_Space);
            QCOMPARE(operated.state(), state);
        }
        press(*operated.window, Qt::Key_O);
        QVERIFY(operated.output.isHidden());
        QVERIFY(operated.button("▶  Show Output Window"));
        QVERIFY(focus(*operated.window));
        press(*operated.window, Qt::Key_O);
        QVERIFY(operated.output.isFullScreen());
        QVERIFY(operated.button("■  Hide Output Window"));
    }

    void shortcuts_areApplicationWideAndReplacedAllFive()
    {
        const ControlFixture fixture;
        QList<QPointer<QShortcut>> old;
        for (int i = 0; i < 2; ++i) {
            for (const QPointer<QShortcut> &shortcut : std::as_const(old))
                QVERIFY(shortcut.isNull());
            QStringList keys;
            const QList<QShortcut *> shortcuts = fixture.window->findChildren<QShortcut *>();
            for (QShortcut *shortcut : shortcuts) {
                QCOMPARE(shortcut->context(), Qt::ApplicationShortcut);
                QCOMPARE(shortcut->parent(), fixture.window.get());
                keys.append(shortcut->key().toString(QKeySequence::PortableText));
                old.append(shortcut);
            }
            QCOMPARE(keys, QStringList({"Space", "R", "Up", "Down", "O"}));
            fixture.window->onSettingsChanged();
        }
    }

    void changedKey_actsOnceItIsReported_data()
    {
        QTest::addColumn<const Action *>("action");
        for (const Action &action : actions)
            QTest::newRow(action.name) << &action;
    }

    void changedKey_actsOnceItIsReported()
    {
        QFETCH(const Action *, action);
        const Qt::KeyboardModifiers modifiers = Qt::ControlModifier | Qt::ShiftModifier;
        Operated operated;
        QVERIFY(focus(operated.output));
        operated.settings.*action->field = "Ctrl+Shift+F7";
        press(operated.output, Qt::Key_F7, modifiers);
        QCOMPARE(operated.state(), untouched);
        operated.window->onSettingsChanged();
        press(operated.output, action->key);
        QCOMPARE(operated.state(), untouched);
        press(operated.output, Qt::Key_F7, modifiers);
        QCOMPARE(operated.state(), action->state);
    }

    void emptyText_isSilent_data() { changedKey_actsOnceItIsReported_data(); }

    void emptyText_isSilent()
    {
        QFETCH(const Action *, action);
        AppSettings settings;
        settings.*action->field = QString();
        Operated operated(settings);
        QVERIFY(focus(operated.output));
        press(operated.output, action->key);
        QCOMPARE(operated.state(), untouched);
        // The others go on working.
        const Action &other = actions[action == &actions[0] ? 1 : 0];
        press(operated.output, other.key);
        QCOMPARE(operated.state(), other.state);
    }

    void textForms_areUnderstood_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        const auto add = [](const char *text, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::newRow(text) << text << key << modifiers;
        };
        add("B", Qt::Key_B);
        add("b", Qt::Key_B);
        add("5", Qt::Key_5);
        add("PgUp", Qt::Key_PageUp);
        add("Media Play", Qt::Key_MediaPlay);
        add("Ctrl+B", Qt::Key_B, Qt::ControlModifier);
        add("Ctrl+Alt+Shift+F2", Qt::Key_F2,
            Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
        add("Num+5", Qt::Key_5, Qt::KeypadModifier);
    }

    void textForms_areUnderstood()
    {
        QFETCH(QString, text);
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Operated operated(recordWith(&AppSettings::shortcutStartPause, text));
        QVERIFY(focus(operated.output));
        press(operated.output, key, modifiers);
        QCOMPARE(operated.state(), paused);
    }

    // Texts are read as somebody of the system's language would write them.
    void nativeText_isUnderstood()
    {
        SpaceTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        Operated operated(recordWith(&AppSettings::shortcutStartPause, "Leertaste"));
        QCoreApplication::removeTranslator(&translator);
        QVERIFY(focus(operated.output));
        press(operated.output, Qt::Key_Space);
        QCOMPARE(operated.state(), paused);
    }

    void secondOfTwoKeys_completesASequence()
    {
        Operated operated(recordWith(&AppSettings::shortcutStartPause, "B, C"));
        QVERIFY(focus(operated.output));
        press(operated.output, Qt::Key_B);
        QCOMPARE(operated.state(), untouched);
        press(operated.output, Qt::Key_C);
        QCOMPARE(operated.state(), paused);
    }

    void unparsableText_isSilent_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no key") << "NoSuchKey";
        QTest::newRow("modifier alone") << "Ctrl+";
        QTest::newRow("unknown modifier") << "Hocus+Space";
        QTest::newRow("blanks") << "   ";
        QTest::newRow("commas") << ",,,";
        QTest::newRow("null character before a key") << QString(QLatin1String("\0,X", 3));
        QTest::newRow("long") << QString(10000, 'x');
    }

    void unparsableText_isSilent()
    {
        QFETCH(QString, text);
        if (!QKeySequence(text, QKeySequence::NativeText).isEmpty() && text.trimmed().isEmpty())
            QSKIP("This Qt takes blanks for the space bar");
        Operated operated(recordWith(&AppSettings::shortcutStartPause, text));
        QVERIFY(focus(operated.output));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_N, Qt::Key_X, Qt::Key_Control})
            press(operated.output, key);
        QCOMPARE(operated.state(), untouched);
        press(operated.output, Qt::Key_R);
        QCOMPARE(operated.state(), "stopped 300 shown");
    }

    // Qt takes the key as ambiguous, and nothing is said about it.
    void equalKeys_fireNeitherUntilTheyDiffer()
    {
        Operated operated(recordWith(&AppSettings::shortcutPlusMin, "R"));
        QVERIFY(focus(operated.output));
        for (int i = 0; i < 4; ++i) {
            press(operated.output, Qt::Key_R);
            QCOMPARE(operated.state(), untouched);
        }
        operated.settings.shortcutPlusMin = "Up";
        operated.window->onSettingsChanged();
        press(operated.output, Qt::Key_Up);
        QCOMPARE(operated.state(), "running 350 shown");
        // The minute was added to the duration, too.
        press(operated.output, Qt::Key_R);
        QCOMPARE(operated.state(), "stopped 360 shown");
    }

    void otherKeys_doNothing()
    {
        Operated operated;
        QVERIFY(focus(operated.output));
        for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
            press(operated.output, Qt::Key_R, modifier);
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp,
                                  Qt::Key_F5, Qt::Key_0, Qt::Key_Escape, Qt::Key_Return})
            press(operated.output, key);
        QCOMPARE(operated.state(), untouched);
    }

    // Space would press the button that has the focus, were it not the start key.
    void focusedButton_leavesSpaceToTheShortcut()
    {
        Operated operated;
        QVERIFY(focus(*operated.window));
        QAbstractButton *button = operated.button("▲  Count Up");
        button->setFocus();
        QVERIFY(button->hasFocus());
        press(*operated.window, Qt::Key_Space);
        QCOMPARE(operated.state(), paused);
        QVERIFY(!operated.engine.isCountUp());
    }

    void focusedSpinBox_takesDigitsAndLeavesUpAndDown()
    {
        Operated operated;
        QVERIFY(focus(*operated.window));
        QSpinBox *minutes = operated.minutes();
        minutes->setFocus();
        QVERIFY(minutes->hasFocus());
        press(*operated.window, Qt::Key_Up);
        QCOMPARE(operated.state(), "running 350 shown");
        press(*operated.window, Qt::Key_Down);
        QCOMPARE(operated.state(), untouched);
        QCOMPARE(minutes->value(), 5);
        minutes->selectAll();
        press(*operated.window, Qt::Key_7);
        QCOMPARE(minutes->value(), 7);
        QCOMPARE(operated.state(), untouched);
    }

    void focusedMessage_takesLettersAndLeavesWhatIsNoText()
    {
        Operated operated(recordWith(&AppSettings::shortcutToggleOutput, "F9"));
        QVERIFY(focus(*operated.window));
        operated.messageEdit()->setFocus();
        for (const Qt::Key key : {Qt::Key_R, Qt::Key_O, Qt::Key_Space, Qt::Key_R})
            press(*operated.window, key);
        QCOMPARE(operated.messageEdit()->text().toLower(), "ro r");
        QCOMPARE(operated.state(), untouched);
        press(*operated.window, Qt::Key_Up);
        QCOMPARE(operated.state(), "running 350 shown");
        press(*operated.window, Qt::Key_Down);
        QCOMPARE(operated.state(), untouched);
        press(*operated.window, Qt::Key_F9);
        QCOMPARE(operated.state(), "running 290 hidden");
    }
};

VELMORA_TEST_MAIN(ControlWindowShortcutsTest, twoScreens())
#include "tst_ControlWindowShortcuts.moc"
