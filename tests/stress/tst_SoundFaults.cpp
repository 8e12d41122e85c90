#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "CueFixture.h"
#include "Desktop.h"
#include "Program.h"
#include "TestMain.h"

/// The sound server is killed under the built program while its cue is heard.
class SoundFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void serverKilledDuringTheCue_leavesTheCountRunning();
    void serverKilledBeforeTheCue_leavesTheCountRunning();

private:
    void startServer();
    bool isCueHeard() const;
    void verifyCountGoesOn();

    CueFiles cues;
    QTemporaryDir directory;
    QProcess server;
    Program program;
};

namespace {

constexpr int processTimeoutMs = 30'000;
constexpr int cueMs = 60'000;
constexpr QRect figureArea(1920, 150, 1920, 430);

} // namespace

void SoundFaultsTest::init()
{
    if (QStandardPaths::findExecutable("pulseaudio").isEmpty()
        || QStandardPaths::findExecutable("pactl").isEmpty())
        QSKIP("Not tried: pulseaudio and pactl are not installed");
    AppSettings settings;
    settings.timerFontSize = 300;
    settings.defaultDuration = 4;
    settings.blinkEnabled = false;
    settings.soundEnabled = true;
    settings.soundFilePath = cues.sound("long.wav", cueMs);
    saveSettings(settings);
    startServer();
}

void SoundFaultsTest::cleanup()
{
    program.kill();
    server.kill();
    server.waitForFinished();
    qInfo("What the program and its toolkit wrote: %s", program.complaints().constData());
}

/// A server of the test's own with a sink that nobody hears.
void SoundFaultsTest::startServer()
{
    const QString socket = directory.filePath("sound");
    const QString configuration = directory.filePath("client.conf");
    QFile file(configuration);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("autospawn = no\n") > 0);
    file.close();
    qputenv("PULSE_RUNTIME_PATH", directory.path().toUtf8());
    qputenv("PULSE_CLIENTCONFIG", configuration.toUtf8());
    qputenv("PULSE_SERVER", ("unix:" + socket).toUtf8());
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("PIPEWIRE_REMOTE");
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.start("pulseaudio",
                 {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                  "--high-priority=no", "-L",
                  "module-native-protocol-unix auth-anonymous=1 socket=" + socket, "-L",
                  "module-null-sink sink_name=cue"});
    QVERIFY2(server.waitForStarted(processTimeoutMs), qPrintable(server.errorString()));
    AWAIT(QFile::exists(socket));
}

/// Whether the server is playing something.
bool SoundFaultsTest::isCueHeard() const
{
    QProcess list;
    list.start("pactl", {"list", "short", "sink-inputs"});
    return list.waitForFinished(processTimeoutMs) && list.exitCode() == 0
        && !list.readAllStandardOutput().isEmpty();
}

/// Whether the audience sees three further figures of overtime, one after the other.
void SoundFaultsTest::verifyCountGoesOn()
{
    QList<QImage> seen;
    AWAIT([&] {
        const QImage figure = desktop::grab(figureArea);
        if (desktop::hasRun(figure, criticalColour) && !seen.contains(figure))
            seen.append(figure);
        return seen.size() >= 4;
    }());
}

void SoundFaultsTest::serverKilledDuringTheCue_leavesTheCountRunning()
{
    QVERIFY(program.start());
    desktop::press("space");
    AWAIT(isCueHeard());
    server.kill();
    QVERIFY(server.waitForFinished(processTimeoutMs));

    verifyCountGoesOn();
    // Once more to zero, with nobody there who could play the cue.
    desktop::press("r");
    AWAIT(outputShows("00:04", warningColour));
    desktop::press("space");
    verifyCountGoesOn();
    // And with a server again.
    desktop::press("r");
    startServer();
    desktop::press("space");
    verifyCountGoesOn();
    qInfo("With the server back, the next cue is %s", isCueHeard() ? "heard" : "not heard");
    QVERIFY(program.close());
}

void SoundFaultsTest::serverKilledBeforeTheCue_leavesTheCountRunning()
{
    QVERIFY(program.start());
    server.kill();
    QVERIFY(server.waitForFinished(processTimeoutMs));
    desktop::press("space");
    verifyCountGoesOn();
    QVERIFY(program.close());
}

VELMORA_TEST_MAIN(SoundFaultsTest)
#include "tst_SoundFaults.moc"
