#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include "AppSettings.h"
#include "Desktop.h"
#include "Journey.h"
#include "TestMain.h"

/// Monitors come and go on the real X server while the built program counts.
class ScreenFaults : public Journey
{
    Q_OBJECT

private slots:
    void secondMonitor_comesAndGoesWhileCounting();
    void operatorsMonitor_comesAndGoesWhileCounting();

private:
    void startCounting();
    void verifyCountKeptUp();
    void showAnew();

    QElapsedTimer sinceStart;
};

namespace {

constexpr int duration = 1800;
constexpr int figurePixels = 300;
constexpr int rounds = 5;
// The screen is read while the count goes on, and a machine that does other things is slow.
constexpr int toleranceSeconds = 3;

void xrandr(const QStringList &arguments)
{
    QProcess process;
    process.start("xrandr", arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

} // namespace

void ScreenFaults::startCounting()
{
    AppSettings settings;
    settings.timerFontSize = figurePixels;
    settings.defaultDuration = duration;
    saveSettings(settings);
    QVERIFY(program.start());
    AWAIT(outputShows("30:00", normalColour));
    desktop::press("space");
    sinceStart.start();
    AWAIT(outputSeconds(duration, normalColour, figurePixels) < duration);
}

/// Hides the Output window and shows it again, which looks for its screen anew.
void ScreenFaults::showAnew()
{
    desktop::press("o");
    AWAIT(!desktop::hasWindow(outputTitle));
    desktop::press("o");
    AWAIT(desktop::hasWindow(outputTitle));
}

/// The full-screen Output window shows what the time since the start has left.
void ScreenFaults::verifyCountKeptUp()
{
    int seconds = -1;
    AWAIT((seconds = outputSeconds(duration, normalColour, figurePixels)) >= 0);
    const int wanted = duration - int(sinceStart.elapsed() / 1000);
    qInfo("After %lld s the count has %d s left, by the monotonic clock %d s",
          sinceStart.elapsed() / 1000, seconds, wanted);
    QVERIFY(qAbs(seconds - wanted) <= toleranceSeconds);
}

void ScreenFaults::secondMonitor_comesAndGoesWhileCounting()
{
    startCounting();
    if (QTest::currentTestFailed())
        return;
    for (int round = 0; round < rounds; ++round) {
        desktop::unplugSecondMonitor();
        showAnew();
        AWAIT(desktop::windowGeometry(outputTitle).size() == QSize(800, 500));
        QVERIFY(desktop::firstMonitor.intersects(desktop::windowGeometry(outputTitle)));

        desktop::plugInSecondMonitor();
        QVERIFY(program.isRunning());
        showAnew();
        AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
        verifyCountKeptUp();
    }
}

void ScreenFaults::operatorsMonitor_comesAndGoesWhileCounting()
{
    startCounting();
    if (QTest::currentTestFailed())
        return;
    for (int round = 0; round < rounds; ++round) {
        xrandr({"--output", "DUMMY0", "--off"});
        QVERIFY(program.isRunning());
        AWAIT(desktop::hasWindow(controlTitle));
        // The only monitor left is the one that the audience sees.
        showAnew();
        AWAIT(desktop::windowGeometry(outputTitle).size() == QSize(800, 500));

        xrandr({"--output", "DUMMY0", "--primary", "--mode", "1920x1080", "--pos", "0x0",
                "--output", "DUMMY1", "--mode", "1920x1080", "--pos", "1920x0"});
        // Qt took the window over to the other screen, and notices where it stands
        // when it is moved for the first time.
        const int before = desktop::windowGeometry(controlTitle).x();
        desktop::placeWindow(controlTitle, QRect(200 + 50 * round, 40, 560, 900));
        AWAIT(desktop::windowGeometry(controlTitle).x() != before
              && desktop::windowGeometry(controlTitle).x() < desktop::secondMonitor.x());
        showAnew();
        AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
        verifyCountKeptUp();
    }
}

VELMORA_TEST_MAIN(ScreenFaults)
#include "tst_ScreenFaults.moc"
