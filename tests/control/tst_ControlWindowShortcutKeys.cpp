#include <QPointer>
#include <QShortcut>
#include <QTest>
#include <QTranslator>

#include "ControlFixture.h"
#include "Operated.h"
#include "TestMain.h"

namespace {

/// The shortcuts' fields in the record, in the order in which they are set up.
QString &field(AppSettings &settings, int index)
{
    return *QList<QString *>{&settings.shortcutStartPause, &settings.shortcutReset,
                             &settings.shortcutPlusMin, &settings.shortcutMinusMin,
                             &settings.shortcutToggleOutput}
                .at(index);
}

void addFields()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<Qt::Key>("oldKey");
    QTest::addColumn<QString>("state");
    QTest::newRow("start/pause") << 0 << Qt::Key_Space << "stopped 290 shown";
    QTest::newRow("reset") << 1 << Qt::Key_R << "stopped 300 shown";
    QTest::newRow("plus") << 2 << Qt::Key_Up << "running 350 shown";
    QTest::newRow("minus") << 3 << Qt::Key_Down << "running 230 shown";
    QTest::newRow("output") << 4 << Qt::Key_O << "running 290 hidden";
}

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

/// Which texts of the record make which keys work.
class ControlWindowShortcutKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void storedKey_acts_data() { addFields(); }

    void storedKey_acts()
    {
        QFETCH(int, index);
        QFETCH(Qt::Key, oldKey);
        QFETCH(QString, state);
        AppSettings settings;
        field(settings, index) = QStringLiteral("Ctrl+Shift+F7");
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, oldKey);
        QCOMPARE(operated.state(), untouched);
        press(operated.fixture.output, Qt::Key_F7, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(operated.state(), state);
    }

    void changedKey_actsAtOnce_data() { addFields(); }

    void changedKey_actsAtOnce()
    {
        QFETCH(int, index);
        QFETCH(Qt::Key, oldKey);
        QFETCH(QString, state);
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        field(operated.fixture.settings, index) = QStringLiteral("F7");
        operated.fixture.window->onSettingsChanged();
        press(operated.fixture.output, oldKey);
        QCOMPARE(operated.state(), untouched);
        press(operated.fixture.output, Qt::Key_F7);
        QCOMPARE(operated.state(), state);
    }

    void changedKey_withoutNotice_isNotYetHeard()
    {
        Operated operated;
        QVERIFY(focus(operated.fixture.output));
        operated.fixture.settings.shortcutReset = QStringLiteral("F7");
        press(operated.fixture.output, Qt::Key_F7);
        QCOMPARE(operated.state(), untouched);
        press(operated.fixture.output, Qt::Key_R);
        QCOMPARE(operated.state(), QStringLiteral("stopped 300 shown"));
    }

    void settingsChanged_replacesAllFiveAtOnce()
    {
        const ControlFixture fixture;
        QList<QPointer<QShortcut>> old;
        const QList<QShortcut *> before = fixture.window->findChildren<QShortcut *>();
        for (QShortcut *shortcut : before)
            old.append(shortcut);
        QCOMPARE(old.size(), 5);

        fixture.window->onSettingsChanged();
        for (const QPointer<QShortcut> &shortcut : old)
            QVERIFY(shortcut.isNull());
        const QList<QShortcut *> after = fixture.window->findChildren<QShortcut *>();
        QCOMPARE(after.size(), 5);
        for (const QShortcut *shortcut : after)
            QCOMPARE(shortcut->context(), Qt::ApplicationShortcut);
    }

    void textForms_areUnderstood_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        QTest::newRow("letter") << "B" << Qt::Key_B << none;
        QTest::newRow("small letter") << "b" << Qt::Key_B << none;
        QTest::newRow("digit") << "5" << Qt::Key_5 << none;
        QTest::newRow("page up") << "PgUp" << Qt::Key_PageUp << none;
        QTest::newRow("media key") << "Media Play" << Qt::Key_MediaPlay << none;
        QTest::newRow("modifier") << "Ctrl+B" << Qt::Key_B
                                  << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("three modifiers")
            << "Ctrl+Alt+Shift+F2" << Qt::Key_F2
            << (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
        QTest::newRow("keypad") << "Num+5" << Qt::Key_5
                                << Qt::KeyboardModifiers(Qt::KeypadModifier);
    }

    void textForms_areUnderstood()
    {
        QFETCH(QString, text);
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        AppSettings settings;
        settings.shortcutStartPause = text;
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, key, modifiers);
        QCOMPARE(operated.state(), paused);
    }

    // Texts are read as a person of the system's language would write them.
    void nativeText_isUnderstood()
    {
        SpaceTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        AppSettings settings;
        settings.shortcutStartPause = QStringLiteral("Leertaste");
        Operated operated(settings);
        QCoreApplication::removeTranslator(&translator);
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, Qt::Key_Space);
        QCOMPARE(operated.state(), paused);
    }

    void emptyText_isSilent_data() { addFields(); }

    void emptyText_isSilent()
    {
        QFETCH(int, index);
        QFETCH(Qt::Key, oldKey);
        AppSettings settings;
        field(settings, index) = QString();
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, oldKey);
        QCOMPARE(operated.state(), untouched);

        // The others go on working.
        press(operated.fixture.output, index == 0 ? Qt::Key_R : Qt::Key_Space);
        QVERIFY(!operated.fixture.engine.isRunning());
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
        AppSettings settings;
        settings.shortcutStartPause = text;
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_N, Qt::Key_X, Qt::Key_Control})
            press(operated.fixture.output, key);
        QCOMPARE(operated.state(), untouched);
        press(operated.fixture.output, Qt::Key_R);
        QCOMPARE(operated.state(), QStringLiteral("stopped 300 shown"));
    }

    // Qt takes the key as ambiguous, and nothing is said about it.
    void equalKeys_fireNeither()
    {
        AppSettings settings;
        settings.shortcutPlusMin = QStringLiteral("R");
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        for (int i = 0; i < 4; ++i) {
            press(operated.fixture.output, Qt::Key_R);
            QCOMPARE(operated.state(), untouched);
        }
        press(operated.fixture.output, Qt::Key_Space);
        QCOMPARE(operated.state(), paused);
    }

    void equalKeys_fireAgainOnceTheyDiffer()
    {
        AppSettings settings;
        settings.shortcutPlusMin = QStringLiteral("R");
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        operated.fixture.settings.shortcutPlusMin = QStringLiteral("Up");
        operated.fixture.window->onSettingsChanged();
        press(operated.fixture.output, Qt::Key_Up);
        QCOMPARE(operated.state(), QStringLiteral("running 350 shown"));
        // The minute was added to the duration, too.
        press(operated.fixture.output, Qt::Key_R);
        QCOMPARE(operated.state(), QStringLiteral("stopped 360 shown"));
    }

    void secondOfTwoKeys_completesASequence()
    {
        AppSettings settings;
        settings.shortcutStartPause = QStringLiteral("B, C");
        Operated operated(settings);
        QVERIFY(focus(operated.fixture.output));
        press(operated.fixture.output, Qt::Key_B);
        QCOMPARE(operated.state(), untouched);
        press(operated.fixture.output, Qt::Key_C);
        QCOMPARE(operated.state(), paused);
    }
};

VELMORA_TEST_MAIN(ControlWindowShortcutKeysTest, twoScreens())
#include "tst_ControlWindowShortcutKeys.moc"
