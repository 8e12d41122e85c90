#include <QDeadlineTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "TestMain.h"

// The built executable itself, from outside.
class StartupProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void program_writesNothingToItsStreams();
};

namespace {

// What the toolkit and its libraries say of a machine without sound, without a session bus
// or without hardware decoders. Not one line of it is the program's.
bool isToolkitsOwn(const QString &line)
{
    static const QRegularExpression known(
        "^(PulseAudioService: .*|qt\\.(multimedia|qpa)\\..*|ALSA lib .*|\\[ALSOFT\\].*"
        "|EnableNonClientDpiScaling\\(\\).*|\\[[EW]\\]\\[[0-9:.]+\\] pw\\..*|.*XDG_RUNTIME_DIR not "
        "set.*|Failed to create "
        ".*dbus.*|libva.*)$");
    return known.match(line).hasMatch();
}

} // namespace

void StartupProcessTest::program_writesNothingToItsStreams()
{
    const QTemporaryDir home;
    QVERIFY(home.isValid());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(name, home.path());
#ifdef Q_OS_WIN
    // To be asked to end there, a program needs windows that the system knows.
    environment.insert("QT_QPA_PLATFORM", "windows");
#else
    environment.insert("QT_QPA_PLATFORM", "offscreen");
#endif
    environment.insert("LC_ALL", "C.UTF-8"); // the toolkit remarks on any other encoding
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(VELMORA_PROGRAM, QStringList());
    QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
    // Long enough for the windows and a few of their timers, too short for the update check:
    // no test asks anybody's server.
    QVERIFY(!program.waitForFinished(1500));
    // Again, if there were no windows yet that could be asked.
    const QDeadlineTimer limit(30000);
    do
        program.terminate();
    while (!program.waitForFinished(500) && !limit.hasExpired());
    QCOMPARE(program.state(), QProcess::NotRunning);

    QCOMPARE(program.readAllStandardOutput(), QByteArray());
    const QStringList lines = QString::fromUtf8(program.readAllStandardError()).split('\n');
    for (const QString &line : lines) {
        if (!line.isEmpty() && !isToolkitsOwn(line))
            QFAIL(qPrintable(line));
    }
}

VELMORA_TEST_MAIN(StartupProcessTest)
#include "tst_StartupProcess.moc"
