#include <QApplication>
#include <QDirIterator>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryFile>
#include <QTest>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

#include "AppSettings.h"
#include "CueFixture.h"
#include "OutputParts.h"
#include "StartupRun.h"
#include "Store.h"

namespace {

QList<bool> attributes()
{
    QList<bool> set;
    for (int attribute = 0; attribute < Qt::AA_AttributeCount; ++attribute)
        set += QCoreApplication::testAttribute(Qt::ApplicationAttribute(attribute));
    return set;
}

/// Calls a function with every event, before it is delivered.
class EventWatch : public QObject
{
public:
    using Note = std::function<void(QObject *, QEvent::Type)>;
    explicit EventWatch(const Note &note)
        : note(note)
    {
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        note(watched, event->type());
        return false;
    }

private:
    Note note;
};

#ifndef Q_OS_WIN
/// Has this process write its standard streams to a file while it lives.
class CaughtStreams
{
public:
    CaughtStreams()
        : handler(qInstallMessageHandler(nullptr)) // QtTest's own prints more than the message
    {
        fflush(nullptr);
        if (!file.open() || dup2(file.handle(), 1) < 0 || dup2(file.handle(), 2) < 0)
            qFatal("Cannot catch the streams");
    }
    ~CaughtStreams()
    {
        fflush(nullptr);
        dup2(standardOutput, 1);
        dup2(standardError, 2);
        close(standardOutput);
        close(standardError);
        qInstallMessageHandler(handler);
    }
    Q_DISABLE_COPY_MOVE(CaughtStreams)

    QByteArrayList lines()
    {
        fflush(nullptr);
        QFile written(file.fileName());
        return written.open(QIODevice::ReadOnly) ? written.readAll().split('\n')
                                                 : QByteArrayList{"not to be read"};
    }

private:
    const QtMessageHandler handler;
    const int standardOutput = dup(1);
    const int standardError = dup(2);
    QTemporaryFile file;
};

// What Qt and its libraries say of a machine without sound, without a session bus
// or without hardware decoders. Not one line of it is the program's.
bool isQtsOwn(const QString &line)
{
    static const QRegularExpression known(
        "^(PulseAudioService: .*|qt\\.(multimedia|qpa)\\..*|ALSA lib .*|\\[ALSOFT\\].*"
        "|\\[[EW]\\]\\[[0-9:.]+\\] pw\\..*|Failed to connect to pipewire.*"
        "|.*XDG_RUNTIME_DIR not set.*|Failed to create .*dbus.*|libva.*)$");
    return known.match(line).hasMatch();
}
#endif

} // namespace

/// What the start makes of the store, of Qt and of the two windows.
class StartupTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    StartupTest() { qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test"); }

private slots:
    // Attributes outlive the application that they are set for, so this comes before all runs.
    void initTestCase()
    {
        int count = 1;
        char name[] = "velmora";
        char *arguments[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication plain(count, arguments);
        qtsAttributes = attributes();
    }

    void init()
    {
        removeStore();
        // They outlive the application of the run before.
        QCoreApplication::setApplicationName({});
        QCoreApplication::setOrganizationName({});
    }

    void application_hasItsNamesAndQtsDefaults()
    {
        const auto policy = QGuiApplication::highDpiScaleFactorRoundingPolicy();
        visitProgram([&] {
            QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Velmora"));
            QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Orlavane"));
            QVERIFY(QApplication::windowIcon().isNull());
            QVERIFY(QGuiApplication::quitOnLastWindowClosed());
            QCOMPARE(attributes(), qtsAttributes);
            QCOMPARE(QGuiApplication::highDpiScaleFactorRoundingPolicy(), policy);
        });
    }

    void arguments_goToQtOnly()
    {
        const auto check = [] {
            const QStringList rest{"velmora", "--duration", "10", "show.txt"};
            QCOMPARE(QCoreApplication::arguments(), rest);
            QCOMPARE(controlFigure()->text(), QStringLiteral("05:00"));
        };
        visitProgram(check, {.arguments = {"--duration", "10", "-style", "windows", "show.txt"}});
    }

    void exitCode_isTheEventLoops()
    {
        for (const int code : {0, 7})
            QCOMPARE(runProgram([code] { QCoreApplication::exit(code); }), code);
    }

    void firstRun_opensWithFiveMinutesInALargeFigure()
    {
        visitProgram([] {
            QCOMPARE(controlFigure()->text(), QStringLiteral("05:00"));
            QCOMPARE(figureLabel(*outputWindow())->text(), QStringLiteral("05:00"));
            QCOMPARE(progressBar(*outputWindow())->value(), 1000);
            setHeight(*outputWindow(), 1080);
            QCOMPARE(figureLabel(*outputWindow())->styleSheet(), figureStyle("#00cc00", 300));
        });
    }

    // As each window is shown, it has all that it shows: with any other count or total, figure or
    // bar would be another.
    void windows_areShownInOrderAndReady()
    {
        writeStoreBytes("[General]\ndefaultDuration=120\n");
        QStringList shown;
        EventWatch watch([&shown](QObject *watched, QEvent::Type type) {
            if (type == QEvent::Show && watched->isWidgetType() && watched == controlWindow()) {
                shown += QStringLiteral("Control %1, of %2 by %3")
                             .arg(controlFigure()->text(), QCoreApplication::applicationName(),
                                  QCoreApplication::organizationName());
            } else if (type == QEvent::Show && watched->isWidgetType()
                       && watched == outputWindow()) {
                shown += QStringLiteral("Output %1, bar at %2")
                             .arg(figureLabel(*outputWindow())->text())
                             .arg(progressBar(*outputWindow())->value());
            }
        });
        visitProgram(
            [&shown] {
                QCOMPARE(shown,
                         (QStringList{"Control 02:00, of Velmora by Orlavane",
                                      "Output 02:00, bar at 1000"}));
            },
            {.beforeProgram = [&watch] { qApp->installEventFilter(&watch); }});
    }

    void storedDuration_isShownBeforeAnyTick_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        // With any other total than the duration, the first bar would not be full.
        QTest::newRow("shorter than the default") << QByteArray("120") << "02:00" << 1000;
        QTest::newRow("longer than the default") << QByteArray("5400") << "90:00" << 1000;
        QTest::newRow("one second") << QByteArray("1") << "00:01" << 1000;
        QTest::newRow("zero") << QByteArray("0") << "00:00" << 0;
        QTest::newRow("negative") << QByteArray("-7") << "00:00" << 0;
        QTest::newRow("too long") << QByteArray("60000") << "999:00" << 1000;
    }

    void storedDuration_isShownBeforeAnyTick()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, text);
        QFETCH(int, value);
        writeStoreBytes("[General]\ndefaultDuration=" + stored + "\n");
        visitProgram([&] {
            QCOMPARE(controlFigure()->text(), text);
            QCOMPARE(figureLabel(*outputWindow())->text(), text);
            QCOMPARE(progressBar(*outputWindow())->value(), value);
            button("+1 min")->click(); // the total stays what it was at the start
            button("−1 min")->click();
            QCOMPARE(progressBar(*outputWindow())->value(), value);
            button("↺  RESET")->click();
            QCOMPARE(controlFigure()->text(), text);
        });
    }

    // The first state is given as a tick, and a tick of zero starts the blink. It plays no cue.
    void storedZero_blinksAtOnceAndIsHeardWhenItIsReached()
    {
        const CueFiles files;
        AppSettings settings = withCue(files.sound("gong.wav", 30000));
        settings.defaultDuration = 0;
        settings.bgColor = QColor("#123456");
        saveSettings(settings);
        visitProgram([] {
            QTRY_VERIFY_WITH_TIMEOUT(
                figureLabel(*outputWindow())->styleSheet().startsWith("color:#123456"), 1000);
            const auto *player = controlWindow()->findChild<QMediaPlayer *>();
            QTRY_VERIFY(player->mediaStatus() != QMediaPlayer::LoadingMedia);
            button("+1 min")->click();
            QCOMPARE(player->playbackState(), QMediaPlayer::StoppedState);
            button("−1 min")->click();
            QCOMPARE(player->playbackState(), QMediaPlayer::PlayingState);
        });
    }

    void storedLooks_areThoseOfBothWindows()
    {
        writeStoreBytes("[General]\ntimerColorNormal=#abcdef\n");
        visitProgram([] {
            QVERIFY(figureLabel(*outputWindow())->styleSheet().startsWith("color:#abcdef;"));
            QVERIFY(controlFigure()->styleSheet().startsWith("color:#abcdef;"));
        });
    }

    void storedOvertime_reachesTheEngineWhichIsStoppedAndCountsDown_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("runsOn");
        QTest::newRow("off") << QByteArray("false") << false;
        QTest::newRow("on") << QByteArray("true") << true;
    }

    void storedOvertime_reachesTheEngineWhichIsStoppedAndCountsDown()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, runsOn);
        writeStoreBytes("[General]\ndefaultDuration=1\novertimeEnabled=" + stored + "\n");
        visitProgram([runsOn] {
            QPushButton *start = button("▶  START");
            QVERIFY(button("▼  Countdown")->isChecked());
            QVERIFY(start->isEnabled());
            start->click();
            QVERIFY(!start->isEnabled());
            QTRY_COMPARE_WITH_TIMEOUT(figureLabel(*outputWindow())->text(), QStringLiteral("00:00"),
                                      3000);
            QCOMPARE(controlFigure()->text(), QStringLiteral("00:00"));
            QCOMPARE(start->isEnabled(), !runsOn);
        });
    }

    void tick_reachesTheControlWindowFirstAndTheOutputWindowOnce()
    {
        visitProgram([] {
            QLabel *figure = figureLabel(*outputWindow());
            QObjectList styled;
            EventWatch watch([&styled](QObject *watched, QEvent::Type type) {
                if (type == QEvent::StyleChange)
                    styled += watched;
            });
            controlFigure()->installEventFilter(&watch);
            figure->installEventFilter(&watch);
            outputWindow()->onTimerTick(240);
            const qsizetype once = styled.size();
            QVERIFY(once > 0);
            styled.clear();
            button("+1 min")->click();
            QCOMPARE(controlFigure()->text(), QStringLiteral("06:00"));
            QCOMPARE(figure->text(), QStringLiteral("06:00"));
            QCOMPARE(styled.count(figure), once);
            QVERIFY(styled.contains(controlFigure()));
            QVERIFY(styled.lastIndexOf(controlFigure()) < styled.indexOf(figure));
        });
    }

    void startAndStop_leaveTheStoreAsItIs()
    {
        const auto close = [] { controlWindow()->close(); };
        QCOMPARE(runProgram(close), 0);
        QVERIFY(!storeExists());
        const QString home = qEnvironmentVariable("XDG_CONFIG_HOME"); // of settings in files
        QDirIterator it(home, QDir::Files, QDirIterator::Subdirectories);
        QVERIFY2(home.isEmpty() || !it.hasNext(), qPrintable(it.next()));

        // Out of range, out of order and with a key of another version: a save would tidy it.
        writeStoreBytes("[General]\nwarningThreshold=-5\nbgColor=red\nlater=1\n"
                        "defaultDuration=77\n");
        const QByteArray stored = storeBytes();
        QCOMPARE(runProgram(close), 0);
        QCOMPARE(storeBytes(), stored);
    }

    void windows_goInReverseOrderAndTheUpdaterLast()
    {
        QStringList gone;
        visitProgram([&gone] {
            const auto note = [&gone](QObject *object, const QString &name) {
                QVERIFY(object);
                connect(object, &QObject::destroyed, object, [&gone, name] { gone += name; });
            };
            note(outputWindow(), "output");
            note(updater(), "updater");
            note(controlWindow(), "control");
        });
        QCOMPARE(gone, (QStringList{"control", "output", "updater"}));
    }

#ifndef Q_OS_WIN
    void program_writesNothingToItsStreams()
    {
        CaughtStreams streams;
        const int result = runProgram([] { controlWindow()->close(); });
        QStringList lines;
        for (const QByteArray &line : streams.lines()) {
            if (!line.isEmpty() && !isQtsOwn(line))
                lines += line;
        }
        QCOMPARE(lines, QStringList());
        QCOMPARE(result, 0);
    }
#endif

private:
    QList<bool> qtsAttributes;
};

VELMORA_STARTUP_TEST_MAIN(StartupTest)
#include "tst_Startup.moc"
