#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "Find.h"
#include "OutputParts.h"
#include "StartupRun.h"
#include "Store.h"

namespace {

int run(const std::function<void()> &whileRunning, const QStringList &arguments = {})
{
    return runProgram({.platform = {},
                       .arguments = arguments,
                       .beforeProgram = {},
                       .whileRunning = [&whileRunning] {
                           whileRunning();
                           QCoreApplication::exit(0);
                       }});
}

QString previewText()
{
    return controlWindow()->findChild<QLabel *>("timerPreview")->text();
}

QPushButton *button(const QString &text)
{
    return findByText<QPushButton>(*controlWindow(), text);
}

/// Notes in which order, and how often, widgets are given a style sheet.
class StyleWatch : public QObject
{
public:
    void watch(QWidget *widget) { widget->installEventFilter(this); }

    QList<const QObject *> styled;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange)
            styled.append(watched);
        return false;
    }
};

} // namespace

class StartupTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void application_hasItsNames()
    {
        run([] {
            QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Velmora"));
            QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Orlavane"));
        });
    }

    void application_hasNoWindowIcon()
    {
        run([] {
            QVERIFY(QApplication::windowIcon().isNull());
            QVERIFY(controlWindow()->windowIcon().isNull());
            QVERIFY(outputWindow()->windowIcon().isNull());
        });
    }

    void application_quitsWithItsLastWindow()
    {
        run([] { QVERIFY(QGuiApplication::quitOnLastWindowClosed()); });
    }

    void arguments_goToTheToolkitOnly()
    {
        run(
            [] {
                const QStringList rest{"velmora", "--duration", "10", "show.txt"};
                QCOMPARE(QCoreApplication::arguments(), rest);
                QCOMPARE(previewText(), QStringLiteral("05:00"));
            },
            {"--duration", "10", "-style", "windows", "show.txt"});
    }

    void exitCode_isTheEventLoops_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("success") << 0;
        QTest::newRow("other") << 7;
    }

    void exitCode_isTheEventLoops()
    {
        QFETCH(int, code);
        const int result = runProgram(
            {.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [code] {
                 QCoreApplication::exit(code);
             }});
        QCOMPARE(result, code);
    }

    void firstRun_opensWithFiveMinutes()
    {
        run([] {
            QCOMPARE(previewText(), QStringLiteral("05:00"));
            QCOMPARE(figureLabel(*outputWindow())->text(), QStringLiteral("05:00"));
            QCOMPARE(progressBar(*outputWindow())->value(), 1000);
        });
    }

    void firstRun_hasTheLargeFigure()
    {
        run([] {
            setHeight(*outputWindow(), 1080);
            QCOMPARE(figureLabel(*outputWindow())->styleSheet(), figureStyle("#00cc00", 300));
        });
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
        run([&] {
            QCOMPARE(previewText(), text);
            QCOMPARE(figureLabel(*outputWindow())->text(), text);
            QCOMPARE(progressBar(*outputWindow())->value(), value);
            button("+1 min")->click(); // the total stays what it was at the start
            button("−1 min")->click();
            QCOMPARE(progressBar(*outputWindow())->value(), value);
        });
    }

    void storedDuration_isWhatResetRestores()
    {
        writeStoreBytes("[General]\ndefaultDuration=120\n");
        run([] {
            button("↺  RESET")->click();
            QCOMPARE(previewText(), QStringLiteral("02:00"));
        });
    }

    // The first state is given as a tick, and a tick of zero starts the blink.
    void storedZero_blinksFromTheStart()
    {
        writeStoreBytes("[General]\ndefaultDuration=0\nbgColor=#123456\n");
        run([] {
            QTRY_VERIFY_WITH_TIMEOUT(
                figureLabel(*outputWindow())->styleSheet().startsWith("color:#123456"), 1000);
        });
    }

    void storedLooks_areThoseOfBothWindows()
    {
        writeStoreBytes("[General]\ntimerColorNormal=#abcdef\n");
        run([] {
            QVERIFY(figureLabel(*outputWindow())->styleSheet().startsWith("color:#abcdef;"));
            const auto *preview = controlWindow()->findChild<QLabel *>("timerPreview");
            QVERIFY(preview->styleSheet().startsWith("color:#abcdef;"));
        });
    }

    void storedOvertime_reachesTheEngine_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("runsOn");
        QTest::newRow("off") << QByteArray("false") << false;
        QTest::newRow("on") << QByteArray("true") << true;
    }

    void storedOvertime_reachesTheEngine()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, runsOn);
        writeStoreBytes("[General]\ndefaultDuration=1\novertimeEnabled=" + stored + "\n");
        run([runsOn] {
            button("▶  START")->click();
            QVERIFY(!button("▶  START")->isEnabled());
            QTRY_COMPARE_WITH_TIMEOUT(figureLabel(*outputWindow())->text(), QStringLiteral("00:00"),
                                      3000);
            QCOMPARE(button("▶  START")->isEnabled(), !runsOn);
        });
    }

    void engine_isStoppedAndCountsDown()
    {
        run([] {
            QVERIFY(button("▶  START")->isEnabled());
            QVERIFY(button("▼  Countdown")->isChecked());
            button("▶  START")->click();
            QTRY_COMPARE_WITH_TIMEOUT(previewText(), QStringLiteral("04:59"), 3000);
        });
    }

    void tick_reachesTheControlWindowFirst()
    {
        run([] {
            auto *preview = controlWindow()->findChild<QLabel *>("timerPreview");
            QLabel *figure = figureLabel(*outputWindow());
            StyleWatch watch;
            watch.watch(preview);
            watch.watch(figure);
            button("+1 min")->click();
            QCOMPARE(previewText(), QStringLiteral("06:00"));
            QCOMPARE(figure->text(), QStringLiteral("06:00"));
            QVERIFY(watch.styled.contains(preview));
            QVERIFY(watch.styled.contains(figure));
            QVERIFY(watch.styled.lastIndexOf(preview) < watch.styled.indexOf(figure));
        });
    }

    void tick_reachesTheOutputWindowOnce()
    {
        run([] {
            StyleWatch watch;
            watch.watch(figureLabel(*outputWindow()));
            outputWindow()->onTimerTick(240);
            const qsizetype once = watch.styled.size();
            QVERIFY(once > 0);
            watch.styled.clear();
            button("−1 min")->click();
            QCOMPARE(watch.styled.size(), once);
        });
    }

    // Intended: the start shows the window without toggleOutput(), which alone changes the text.
    void toggleButton_offersToShowTheShownWindow()
    {
        run([] {
            const auto *toggle = controlWindow()->findChild<QPushButton *>("outputToggleBtn");
            QVERIFY(outputWindow()->isVisible());
            QCOMPARE(toggle->text(), QStringLiteral("▶  Show Output Window"));
        });
    }

    void control_isShownAsAnOrdinaryWindow()
    {
        run([] {
            QVERIFY(controlWindow()->isVisible());
            QCOMPARE(controlWindow()->windowState() & ~Qt::WindowActive, Qt::WindowNoState);
            QVERIFY(!controlWindow()->parent());
            QVERIFY(!outputWindow()->parent());
        });
    }

    void startAndStop_writeNoStore()
    {
        const int result =
            runProgram({.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [] {
                            controlWindow()->close();
                        }});
        QCOMPARE(result, 0);
        QVERIFY(!storeExists());
        QStringList files; // where settings are kept in files
        const QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
        QDirIterator it(home, QDir::Files, QDirIterator::Subdirectories);
        while (!home.isEmpty() && it.hasNext())
            files += it.next();
        QCOMPARE(files, QStringList());
    }

    void startAndStop_leaveTheStoresBytes()
    {
        // Out of range, out of order and with a key of another version: a save would tidy it.
        const QByteArray bytes = "[General]\nwarningThreshold=-5\nbgColor=red\nlater=1\n"
                                 "defaultDuration=77\n";
        writeStoreBytes(bytes);
        const QByteArray stored = storeBytes();
        const int result =
            runProgram({.platform = {}, .arguments = {}, .beforeProgram = {}, .whileRunning = [] {
                            controlWindow()->close();
                        }});
        QCOMPARE(result, 0);
        QCOMPARE(storeBytes(), stored);
    }

    void windows_goInReverseOrderAndTheUpdaterLast()
    {
        QStringList gone;
        run([&gone] {
            QVERIFY(updater());
            const auto note = [&gone](QObject *object, const QString &name) {
                QObject::connect(object, &QObject::destroyed, object,
                                 [&gone, name] { gone += name; });
            };
            note(outputWindow(), "output");
            note(updater(), "updater");
            note(controlWindow(), "control");
        });
        QCOMPARE(gone, (QStringList{"control", "output", "updater"}));
    }
};

VELMORA_STARTUP_TEST_MAIN(StartupTest)
#include "tst_Startup.moc"
