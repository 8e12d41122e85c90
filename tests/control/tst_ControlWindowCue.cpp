#include <QListWidget>
#include <QTest>

#include "CueFixture.h"
#include "Operated.h"
#include "TestMain.h"

using Act = void (*)(CueFixture &);
Q_DECLARE_METATYPE(Act)

/// When the cue is played, and when it is not.
class ControlWindowCueTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    ControlWindowCueTest() { qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test"); }

private slots:
    void initTestCase() { settings = withCue(files.sound("gong.wav", 30000)); }

    void tickOfOtherThanZero_playsNothing_data()
    {
        QTest::addColumn<int>("seconds");
        for (const int seconds : {1, 60, 300, -1, -60})
            QTest::addRow("%d", seconds) << seconds;
    }

    void tickOfOtherThanZero_playsNothing()
    {
        QFETCH(int, seconds);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(seconds);
        QCOMPARE(fixture.plays(), 0);
        // Nor does it use up the zero.
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void countDown_playsOnceAtZero()
    {
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.engine.setDuration(5);
        fixture.engine.start();
        for (int remaining = 4; remaining > -5; --remaining) {
            passSecond(fixture.engine);
            QCOMPARE(fixture.engine.remaining(), remaining);
            QCOMPARE(fixture.plays(), remaining > 0 ? 0 : 1);
        }
    }

    void zero_playsBeforeTheFigureIsRedrawn()
    {
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(7);
        QString figure;
        bool blinks = false;
        connect(fixture.player, &QMediaPlayer::playbackStateChanged, this, [&] {
            figure = fixture.figure()->text();
            blinks = fixture.blinkTimer()->isActive();
        });
        fixture.window->onTimerTick(0);
        QCOMPARE(figure, QStringLiteral("00:07"));
        QVERIFY(!blinks);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("00:00"));
        QVERIFY(fixture.blinkTimer()->isActive());
    }

    void zero_playsWhateverTheDirectionAndRunning_data()
    {
        QTest::addColumn<bool>("countUp");
        QTest::addColumn<bool>("running");
        QTest::newRow("down, stopped") << false << false;
        QTest::newRow("down, running") << false << true;
        QTest::newRow("up, stopped") << true << false;
        QTest::newRow("up, running") << true << true;
    }

    void zero_playsWhateverTheDirectionAndRunning()
    {
        QFETCH(bool, countUp);
        QFETCH(bool, running);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.button(countUp ? "▲  Count Up" : "▼  Countdown")->click();
        if (running)
            fixture.engine.start();
        fixture.engine.addSeconds(-300);
        QCOMPARE(fixture.engine.remaining(), 0);
        QCOMPARE(fixture.plays(), 1);
    }

    void zero_again_playsNothing()
    {
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        fixture.window->onTimerTick(0);
        fixture.window->onTimerTick(1);
        fixture.window->onTimerTick(0);
        fixture.window->onTimerTick(-1);
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void zero_again_playsOnceRearmed_data()
    {
        QTest::addColumn<Act>("act");
        const auto add = [](const char *name, Act act) { QTest::newRow(name) << act; };
        add("pause", [](CueFixture &f) { f.button("⏸  PAUSE")->click(); });
        add("reset", [](CueFixture &f) { f.button("↺  RESET")->click(); });
        add("set", [](CueFixture &f) { f.button("Set")->click(); });
        add("set slot", [](CueFixture &f) { f.window->onSetTime(); });
        add("preset", [](CueFixture &f) { f.window->onPreset(600); });
        add("preset's click", [](CueFixture &f) {
            auto *presets = f.named<QListWidget>("presetList");
            emit presets->itemClicked(presets->item(1));
        });
        add("stop report", [](CueFixture &f) { f.window->onStateChanged(false); });
        add("start and stop", [](CueFixture &f) {
            f.engine.pause();
            f.engine.start();
        });
    }

    void zero_again_playsOnceRearmed()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        QFETCH(Act, act);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.engine.start();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.waitForSound());
        act(fixture);
        QCOMPARE(fixture.plays(), 1);
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 2);
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 2);
    }

    void zero_again_playsNothingUnlessRearmed_data()
    {
        QTest::addColumn<Act>("act");
        const auto add = [](const char *name, Act act) { QTest::newRow(name) << act; };
        add("+1 min", [](CueFixture &f) { f.button("+1 min")->click(); });
        add("-1 min", [](CueFixture &f) { f.button("−1 min")->click(); });
        add("plus key", [](CueFixture &f) {
            const int before = f.engine.remaining();
            press(*f.window, Qt::Key_Up);
            QCOMPARE(f.engine.remaining(), before + 60);
        });
        add("minus key", [](CueFixture &f) {
            const int before = f.engine.remaining();
            press(*f.window, Qt::Key_Down);
            QCOMPARE(f.engine.remaining(), before - 60);
        });
        add("output key", [](CueFixture &f) { press(*f.window, Qt::Key_O); });
        add("start report", [](CueFixture &f) { f.window->onStateChanged(true); });
        add("start while running", [](CueFixture &f) { f.button("▶  START")->click(); });
        add("other direction", [](CueFixture &f) { f.button("▲  Count Up")->click(); });
        add("other view", [](CueFixture &f) { f.button("⏱  Timer")->click(); });
        add("settings change", [](CueFixture &f) { f.window->onSettingsChanged(); });
        add("blink and back", [](CueFixture &f) {
            runOut(f.blinkTimer());
            runOut(f.blinkTimer());
        });
        add("sound off and on", [](CueFixture &f) {
            f.button("Enable sound cue")->click();
            f.button("Enable sound cue")->click();
        });
        add("message cleared", [](CueFixture &f) { f.window->onClearMessage(); });
        add("time entered", [](CueFixture &f) { f.enterTime(7, 7); });
        add("preset added", [](CueFixture &f) {
            f.enterTime(7, 7);
            f.button("Add to Preset")->click();
        });
        add("time goes on", [](CueFixture &f) { passSecond(f.engine); });
    }

    void zero_again_playsNothingUnlessRearmed()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        QFETCH(Act, act);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.showControl();
        QVERIFY(focus(*fixture.window));
        fixture.engine.start();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.waitForSound());
        act(fixture);
        QVERIFY(fixture.engine.isRunning());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
        // It was the missing event: with it, the same zero is heard.
        fixture.engine.pause();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 2);
    }

    void pausedAtZero_playsAtTheNextZero()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.engine.setDuration(1);
        fixture.engine.start();
        passSecond(fixture.engine);
        passSecond(fixture.engine);
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.waitForSound());
        fixture.engine.pause();
        fixture.engine.setDuration(60);
        fixture.button("−1 min")->click();
        QCOMPARE(fixture.engine.remaining(), 0);
        QCOMPARE(fixture.plays(), 2);
    }

    void setToZero_playsEveryTime()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.enterTime(0, 0);
        fixture.button("Set")->click();
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.blinkTimer()->isActive());
        QVERIFY(fixture.waitForSound());
        fixture.button("Set")->click();
        QCOMPARE(fixture.plays(), 2);
    }

    void presetOfZero_playsEveryTime()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.window->onPreset(0);
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.waitForSound());
        fixture.window->onPreset(0);
        QCOMPARE(fixture.plays(), 2);
    }

    void loadedZero_isFollowedByAnArmedCue_data()
    {
        QTest::addColumn<Act>("load");
        const auto add = [](const char *name, Act load) { QTest::newRow(name) << load; };
        add("set", [](CueFixture &f) {
            f.enterTime(0, 0);
            f.button("Set")->click();
        });
        add("preset", [](CueFixture &f) { f.window->onPreset(0); });
    }

    // The zero that is loaded plays before the cue is armed, not after it.
    void loadedZero_isFollowedByAnArmedCue()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        QFETCH(Act, load);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        load(fixture);
        QCOMPARE(fixture.plays(), 1);
        QVERIFY(fixture.waitForSound());
        fixture.button("↺  RESET")->click(); // its tick comes before its report of a stop
        QCOMPARE(fixture.plays(), 2);
    }

    // The stop at zero re-arms the cue at once; whatever is redrawn later is no tick.
    void overtimeOff_isHeardOnceAZero()
    {
        AppSettings withoutOvertime = settings;
        withoutOvertime.overtimeEnabled = false;
        CueFixture fixture(withoutOvertime);
        QVERIFY(fixture.waitForFile());
        fixture.engine.setDuration(1);
        fixture.engine.start();
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.remaining(), 0);
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.plays(), 1);
        for (int i = 0; i < 6; ++i)
            runOut(fixture.blinkTimer());
        fixture.window->onSettingsChanged();
        runOut(fixture.previewTimer());
        QCOMPARE(fixture.plays(), 1);
    }

    void overtimeOff_isHeardAtEveryZero()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        AppSettings withoutOvertime = settings;
        withoutOvertime.overtimeEnabled = false;
        CueFixture fixture(withoutOvertime);
        QVERIFY(fixture.waitForFile());
        fixture.engine.setDuration(1);
        for (int run = 1; run <= 3; ++run) {
            fixture.engine.start();
            passSecond(fixture.engine);
            QCOMPARE(fixture.plays(), run);
            QVERIFY(fixture.waitForSound());
            fixture.engine.reset();
            QCOMPARE(fixture.plays(), run);
        }
    }

    void settingsChangedAtZero_playsNothing()
    {
        AppSettings atZero = settings;
        atZero.defaultDuration = 0;
        CueFixture fixture(atZero);
        QVERIFY(fixture.waitForFile());
        fixture.window->onSettingsChanged();
        QCOMPARE(fixture.plays(), 0);
    }

    void startAtZero_playsNothing()
    {
        AppSettings atZero = settings;
        atZero.defaultDuration = 0;
        CueFixture fixture(atZero);
        QVERIFY(fixture.waitForFile());
        fixture.showControl();
        runOut(fixture.blinkTimer());
        runOut(fixture.blinkTimer());
        QCOMPARE(fixture.plays(), 0);
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::StoppedState);
        // The zero is still to be heard.
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void disabled_playsNothing()
    {
        AppSettings silent = settings;
        silent.soundEnabled = false;
        CueFixture fixture(silent);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 0);
        // Switching it on at zero waits for a tick.
        fixture.button("Enable sound cue")->click();
        QCOMPARE(fixture.plays(), 0);
    }

    void disabled_doesNotUseUpTheZero()
    {
        AppSettings silent = settings;
        silent.soundEnabled = false;
        CueFixture fixture(silent);
        QVERIFY(fixture.waitForFile());
        fixture.engine.start();
        fixture.window->onTimerTick(0);
        fixture.button("Enable sound cue")->click();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void withoutFile_playsNothing()
    {
        CueFixture fixture(withCue(QString()));
        fixture.window->onTimerTick(0);
        fixture.button("Test")->click();
        QCOMPARE(fixture.plays(), 0);
        QVERIFY(fixture.states.isEmpty());
        QCOMPARE(fixture.player->mediaStatus(), QMediaPlayer::NoMedia);
    }

    void withoutFile_doesNotUseUpTheZero()
    {
        CueFixture fixture(withCue(QString()));
        fixture.engine.start();
        fixture.window->onTimerTick(0);
        fixture.player->setSource(QUrl::fromLocalFile(settings.soundFilePath));
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

private:
    CueFiles files;
    AppSettings settings; // with a cue that outlasts each test
};

VELMORA_TEST_MAIN(ControlWindowCueTest)
#include "tst_ControlWindowCue.moc"
