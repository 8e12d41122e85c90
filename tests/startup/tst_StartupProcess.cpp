#ifndef Q_OS_WIN
#include <sys/resource.h>
#endif

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "TestMain.h"

namespace {

// What Qt and its libraries say of a machine without sound, without a session bus
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

QProcessEnvironment environmentIn(const QTemporaryDir &home)
{
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
    environment.insert("LC_ALL", "C.UTF-8"); // Qt remarks on any other encoding
    return environment;
}

// Long enough for the windows and a few of their timers, too short for the update check: no test
// asks anybody's server.
bool runsForAWhile(QProcess &program)
{
    return !program.waitForFinished(1500);
}

void end(QProcess &program)
{
    // Again, if there were no windows yet that could be asked.
    const QDeadlineTimer limit(30000);
    do
        program.terminate();
    while (!program.waitForFinished(500) && !limit.hasExpired());
}

} // namespace

#ifndef Q_OS_WIN
// The built executable itself, from outside.
class StartupProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void program_writesNothingToItsStreams()
    {
        const QTemporaryDir home;
        QVERIFY(home.isValid());
        QProcess program;
        program.setProcessEnvironment(environmentIn(home));
        program.start(VELMORA_PROGRAM, QStringList());
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
        QVERIFY(runsForAWhile(program));
        end(program);
        QCOMPARE(program.state(), QProcess::NotRunning);

        QCOMPARE(program.readAllStandardOutput(), QByteArray());
        const QStringList lines = QString::fromUtf8(program.readAllStandardError()).split('\n');
        for (const QString &line : lines) {
            if (!line.isEmpty() && !isToolkitsOwn(line))
                QFAIL(qPrintable(line));
        }
    }

#ifndef Q_OS_WIN // where no file can hold such a value

    void programWithAnEndlessListStored_startsAndLeavesTheFile()
    {
        const QTemporaryDir home;
        QVERIFY(QDir().mkpath(home.filePath("Velmora")));
        const QByteArray contents = "[General]\nclock24hr=@Variant(\\0\\0\\0\\tSize)\n";
        QFile file(home.filePath("Velmora/Velmora.conf"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(file.write(contents), qint64(contents.size()));
        QVERIFY(file.flush());

        QProcess program;
        program.setProcessEnvironment(environmentIn(home));
#ifndef __SANITIZE_ADDRESS__ // which reserves terabytes, and refuses the list by itself
        program.setChildProcessModifier([] {
            const rlimit limit{rlim_t(16) << 30, rlim_t(16) << 30}; // less than the list asks for
            setrlimit(RLIMIT_AS, &limit);
        });
#endif
        program.start(VELMORA_PROGRAM, QStringList());
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
        QVERIFY2(runsForAWhile(program), program.readAllStandardError().constData());
        end(program);
        QCOMPARE(program.state(), QProcess::NotRunning);
        QFile found(file.fileName());
        QVERIFY(found.open(QIODevice::ReadOnly));
        QCOMPARE(found.readAll(), contents);
    }

#endif
};
#endif

VELMORA_TEST_MAIN(StartupProcessTest)
#include "tst_StartupProcess.moc"
