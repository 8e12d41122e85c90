#include <QTest>

#include "CueFixture.h"
#include "Operated.h"
#include "TestMain.h"

using Act = void (*)(CueFixture &);
Q_DECLARE_METATYPE(Act)

namespace {

void addAct(const char *name, Act act)
{
    QTest::newRow(name) << act;
}

} // namespace

/// When the cue is played, and when it is not.
class AudioCueTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    AudioCueTest() { qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test"); }

private slots:
    void initTestCase() { settings = withCue(files.sound("gong.wav", 30000)); }

    void tickOfOtherThanZero_playsNothing()
    {
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        for (const int seconds : {1, 60, 300, -1, -60}) {
            fixture.window->onTimerTick(seconds);
            QCOMPARE(fixture.plays(), 0);
        }
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
        QCOMPARE(figure, "00:07");
        QVERIFY(!blinks);
        QCOMPARE(fixture.figure()->text(), "00:00");
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

    void zero_again_playsOnceRearmed_data()
    {
        QTest::addColumn<Act>("act");
        addAct("pause", [](CueFixture &f) { f.button("⏸  PAUSE")->click(); });
        addAct("reset", [](CueFixture &f) { f.button("↺  RESET")->click(); });
        addAct("set", [](CueFixture &f) { f.button("Set")->click(); });
        addAct("preset", [](CueFixture &f) { f.window->onPreset(600); });
        addAct("preset's click", [](CueFixture &f) { f.strip()->itemClicked(f.strip()->item(1)); });
        addAct("stop report", [](CueFixture &f) { f.window->onStateChanged(false); });
        addAct("pause and start", [](CueFixture &f) {
            f.engine.pause();
            f.engine.start();
        });
    }

    void zero_again_playsOnceRearmed()
    {
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
        addAct("nothing", [](CueFixture &) {});
        addAct("other ticks", [](CueFixture &f) {
            f.window->onTimerTick(1);
            f.window->onTimerTick(-1);
        });
        addAct("+1 min", [](CueFixture &f) { f.button("+1 min")->click(); });
        addAct("-1 min", [](CueFixture &f) { f.button("−1 min")->click(); });
        addAct("plus key", [](CueFixture &f) {
            const int before = f.engine.remaining();
            press(*f.window, Qt::Key_Up);
            QCOMPARE(f.engine.remaining(), before + 60);
        });
        addAct("minus key", [](CueFixture &f) {
            const int before = f.engine.remaining();
            press(*f.window, Qt::Key_Down);
            QCOMPARE(f.engine.remaining(), before - 60);
        });
        addAct("output key", [](CueFixture &f) { press(*f.window, Qt::Key_O); });
        addAct("start report", [](CueFixture &f) { f.window->onStateChanged(true); });
        addAct("start while running", [](CueFixture &f) { f.button("▶  START")->click(); });
        addAct("other direction", [](CueFixture &f) { f.button("▲  Count Up")->click(); });
        addAct("other view", [](CueFixture &f) { f.button("⏱  Timer")->click(); });
        addAct("settings change", [](CueFixture &f) { f.window->onSettingsChanged(); });
        addAct("blink and back", [](CueFixture &f) {
            runOut(f.blinkTimer());
            runOut(f.blinkTimer());
        });
        addAct("sound off and on", [](CueFixture &f) {
            f.button("Enable sound cue")->click();
            f.button("Enable sound cue")->click();
        });
        addAct("message cleared", [](CueFixture &f) { f.window->onClearMessage(); });
        addAct("preset added", [](CueFixture &f) {
            f.enterTime(7, 7);
            f.button("Add to Preset")->click();
        });
        addAct("time goes on", [](CueFixture &f) { passSecond(f.engine); });
    }

    void zero_again_playsNothingUnlessRearmed()
    {
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

    void loadedZero_playsEveryTimeAndLeavesTheCueArmed_data()
    {
        QTest::addColumn<Act>("load");
        addAct("set", [](CueFixture &f) {
            f.enterTime(0, 0);
            f.button("Set")->click();
        });
        addAct("preset", [](CueFixture &f) { f.window->onPreset(0); });
    }

    // The zero that is loaded plays before the cue is armed, not after it.
    void loadedZero_playsEveryTimeAndLeavesTheCueArmed()
    {
        QFETCH(Act, load);
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        for (const int plays : {1, 2}) {
            load(fixture);
            QCOMPARE(fixture.plays(), plays);
            QVERIFY(fixture.blinkTimer()->isActive());
            QVERIFY(fixture.waitForSound());
        }
        fixture.button("↺  RESET")->click(); // its tick comes before its report of a stop
        QCOMPARE(fixture.plays(), 3);
    }

    // The stop at zero re-arms the cue at once; whatever is redrawn later is no tick.
    void overtimeOff_isHeardOnceAtEveryZero()
    {
        AppSettings withoutOvertime = settings;
        withoutOvertime.overtimeEnabled = false;
        CueFixture fixture(withoutOvertime);
        QVERIFY(fixture.waitForFile());
        fixture.engine.setDuration(1);
        for (int run = 1; run <= 3; ++run) {
            fixture.engine.start();
            passSecond(fixture.engine);
            QVERIFY(!fixture.engine.isRunning());
            QCOMPARE(fixture.engine.remaining(), 0);
            QCOMPARE(fixture.plays(), run);
            for (int i = 0; i < 6; ++i)
                runOut(fixture.blinkTimer());
            fixture.window->onSettingsChanged();
            runOut(fixture.previewTimer());
            QVERIFY(fixture.waitForSound());
            fixture.engine.reset();
            QCOMPARE(fixture.plays(), run);
        }
    }

    void startAndSettingsChangeAtZero_playNothing()
    {
        AppSettings atZero = settings;
        atZero.defaultDuration = 0;
        CueFixture fixture(atZero);
        QVERIFY(fixture.waitForFile());
        fixture.showControl();
        runOut(fixture.blinkTimer());
        runOut(fixture.blinkTimer());
        fixture.window->onSettingsChanged();
        QCOMPARE(fixture.plays(), 0);
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::StoppedState);
        // The zero is still to be heard.
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void disabled_playsNothingAndDoesNotUseUpTheZero()
    {
        AppSettings silent = settings;
        silent.soundEnabled = false;
        CueFixture fixture(silent);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 0);
        fixture.button("Enable sound cue")->click();
        QCOMPARE(fixture.plays(), 0); // at zero, it waits for a tick
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void withoutFile_playsNothingAndDoesNotUseUpTheZero()
    {
        CueFixture fixture(withCue(QString()));
        fixture.window->onTimerTick(0);
        fixture.button("Test")->click();
        QVERIFY(fixture.states.isEmpty());
        QCOMPARE(fixture.player->mediaStatus(), QMediaPlayer::NoMedia);
        fixture.player->setSource(QUrl::fromLocalFile(settings.soundFilePath));
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    // Unlike a cue without a file, or one that is switched off.
    void brokenFile_usesUpTheZero()
    {
        CueFixture fixture(withCue(files.file("text.wav", "This is no sound.\n")));
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        fixture.window->onTimerTick(0);
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia)); // some players try it once more
        fixture.player->setSource(QUrl::fromLocalFile(settings.soundFilePath));
        QVERIFY(fixture.waitForFile());
        fixture.states.clear();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 0);
        fixture.window->onStateChanged(false);
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    void test_playsWhetherOrNotTheCueIsOn()
    {
        for (const bool enabled : {true, false}) {
            AppSettings record = withCue(files.sound("test.wav", 3000));
            record.soundEnabled = enabled;
            const CueFixture fixture(record);
            QVERIFY(fixture.waitForFile());
            fixture.button("Test")->click();
            QCOMPARE(fixture.plays(), 1);
            QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
        }
    }

    void test_leavesTheZeroAlone()
    {
        CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.button("Test")->click();
        QVERIFY(fixture.waitForSound());
        fixture.window->onTimerTick(0); // not used up by the test
        QCOMPARE(fixture.plays(), 2);
        QVERIFY(fixture.waitForSound());
        fixture.button("Test")->click();
        fixture.window->onTimerTick(0); // nor re-armed
        QCOMPARE(fixture.plays(), 2);
    }

private:
    CueFiles files;
    AppSettings settings; // with a cue that outlasts each test
};

VELMORA_TEST_MAIN(AudioCueTest)
#include "tst_AudioCue.moc"
