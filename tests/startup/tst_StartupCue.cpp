#include <QMediaPlayer>
#include <QPushButton>
#include <QTest>

#include "AppSettings.h"
#include "CueFixture.h"
#include "Find.h"
#include "StartupRun.h"
#include "Store.h"

namespace {

void hearTheFirstZero()
{
    const auto *player = controlWindow()->findChild<QMediaPlayer *>();
    QTRY_VERIFY(player->mediaStatus() != QMediaPlayer::LoadingMedia);
    QCOMPARE(player->playbackState(), QMediaPlayer::StoppedState);
    findByText<QPushButton>(*controlWindow(), "+1 min")->click();
    QCOMPARE(player->playbackState(), QMediaPlayer::StoppedState);
    findByText<QPushButton>(*controlWindow(), "−1 min")->click();
    QCOMPARE(player->playbackState(), QMediaPlayer::PlayingState);
}

} // namespace

// The cue of a program that starts at zero: the start is no tick.
class StartupCueTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    StartupCueTest() { qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test"); }

private slots:
    void init() { removeStore(); }

    // The first state, which starts the blink at zero, plays no cue.
    void storedZero_isFirstHeardWhenItIsReached()
    {
        const CueFiles files;
        AppSettings settings = withCue(files.sound("gong.wav", 30000));
        settings.defaultDuration = 0;
        saveSettings(settings);
        runProgram({.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [] {
                        hearTheFirstZero();
                        QCoreApplication::exit(0);
                    }});
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupCueTest)
#include "tst_StartupCue.moc"
