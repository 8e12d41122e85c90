#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLibraryInfo>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QVersionNumber>

#include "AppSettings.h"
#include "CueFixture.h"
#include "Desktop.h"
#include "Program.h"
#include "TestMain.h"

/// The sound server dies under the built program, or its devices come and go.
class SoundFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void serverKilledDuringTheCue_leavesTheCountRunning();
    void serverKilledBeforeTheCue_leavesTheCountRunning();
    void serverBackAtOnce_nextCueIsHeard();
    void defaultChanged_nextCueIsHeardThere();
    void lastDeviceUnplugged_nextCueIsHeardWhenPlugged();
    void closedWhileTheCueIsHeard_endsTheProcess();

private:
    void startServer();
    QString plug(const QString &device);
    void unplug(const QString &module);
    void makeDefault(const QString &device);
    bool isHeardOn(const QString &device) const;
    void countToZero();
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
    qInfo("What the program and Qt wrote: %s", program.complaints().constData());
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
    QFile::remove(socket); // a killed server leaves it
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.start("pulseaudio",
                 {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                  "--high-priority=no", "-L",
                  "module-native-protocol-unix auth-anonymous=1 socket=" + socket, "-L",
                  "module-null-sink sink_name=cue"});
    QVERIFY2(server.waitForStarted(processTimeoutMs), qPrintable(server.errorString()));
    AWAIT(QFile::exists(socket));
}

/// Adds a device that nobody hears; its module's number.
QString SoundFaultsTest::plug(const QString &device)
{
    QProcess load;
    load.start("pactl", {"load-module", "module-null-sink", "sink_name=" + device});
    load.waitForFinished(processTimeoutMs);
    return QString::fromLatin1(load.readAllStandardOutput().trimmed());
}

void SoundFaultsTest::unplug(const QString &module)
{
    QCOMPARE(QProcess::execute("pactl", {"unload-module", module}), 0);
}

void SoundFaultsTest::makeDefault(const QString &device)
{
    QCOMPARE(QProcess::execute("pactl", {"set-default-sink", device}), 0);
}

/// Whether the device plays anything but silence in the next half second.
bool SoundFaultsTest::isHeardOn(const QString &device) const
{
    constexpr int rate = 8000;
    QProcess ear;
    ear.start("parec",
              {"--device=" + device + ".monitor", "--raw", "--format=s16le", "--channels=1",
               "--rate=" + QString::number(rate), "--latency-msec=20"});
    QByteArray samples;
    while (samples.size() < rate && ear.waitForReadyRead(processTimeoutMs))
        samples += ear.readAllStandardOutput();
    ear.kill();
    ear.waitForFinished();
    return samples.count('\0') < samples.size();
}

/// Counts down, from wherever the last count has come to; the cue is due then.
void SoundFaultsTest::countToZero()
{
    desktop::press("r");
    AWAIT(outputShows("00:04", warningColour));
    desktop::press("space");
    AWAIT(desktop::shows(figureArea, criticalColour));
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
    countToZero();
    AWAIT(isHeardOn("cue"));
    server.kill();
    QVERIFY(server.waitForFinished(processTimeoutMs));
    verifyCountGoesOn();
    // Once more to zero, with nobody there who could play the cue.
    countToZero();
    verifyCountGoesOn();
    // And with a server again. Newer players look for it once, three seconds after its end.
    startServer();
    countToZero();
    verifyCountGoesOn();
    const bool isHeard = isHeardOn("cue");
    qInfo("With the server back after seconds, the next cue is %s",
          isHeard ? "heard" : "not heard");
    if (QLibraryInfo::version() < QVersionNumber(6, 5))
        QVERIFY(isHeard);
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

// As where the desktop starts it again.
void SoundFaultsTest::serverBackAtOnce_nextCueIsHeard()
{
    QVERIFY(program.start());
    for (int i = 0; i < 2; ++i) {
        countToZero();
        AWAIT(isHeardOn("cue"));
        server.kill();
        QVERIFY(server.waitForFinished(processTimeoutMs));
        startServer();
        verifyCountGoesOn();
    }
    countToZero();
    AWAIT(isHeardOn("cue"));
    QVERIFY(program.close());
}

void SoundFaultsTest::defaultChanged_nextCueIsHeardThere()
{
    const QString other = plug("other");
    makeDefault("cue");
    QVERIFY(program.start());
    countToZero();
    AWAIT(isHeardOn("cue"));
    makeDefault("other");
    countToZero();
    AWAIT(isHeardOn("other"));
    QVERIFY(!isHeardOn("cue"));
    unplug(other);
    countToZero();
    AWAIT(isHeardOn("cue"));
    plug("other");
    makeDefault("other");
    countToZero();
    AWAIT(isHeardOn("other"));
    QVERIFY(!isHeardOn("cue"));
    QVERIFY(program.close());
}

void SoundFaultsTest::lastDeviceUnplugged_nextCueIsHeardWhenPlugged()
{
    QVERIFY(program.start());
    countToZero();
    AWAIT(isHeardOn("cue"));
    unplug("module-null-sink");
    for (int i = 0; i < 2; ++i) {
        countToZero();
        verifyCountGoesOn();
    }
    plug("new");
    countToZero();
    AWAIT(isHeardOn("new"));
    QVERIFY(program.close());
}

/// VELMORA_ENDINGS times, or 3 times.
void SoundFaultsTest::closedWhileTheCueIsHeard_endsTheProcess()
{
    const int asked = qEnvironmentVariableIntValue("VELMORA_ENDINGS");
    const int rounds = asked > 0 ? asked : 3;
    qint64 longestMs = 0;
    for (int round = 0; round < rounds; ++round) {
        QVERIFY(program.start());
        countToZero();
        if (QTest::currentTestFailed())
            return;
        AWAIT(isHeardOn("cue"));
        QElapsedTimer sinceClosing;
        sinceClosing.start();
        QVERIFY(program.close());
        longestMs = qMax(longestMs, sinceClosing.elapsed());
    }
    qInfo("%d of %d processes ended, the slowest after %lld ms", rounds, rounds, longestMs);
}

VELMORA_TEST_MAIN(SoundFaultsTest)
#include "tst_SoundFaults.moc"
