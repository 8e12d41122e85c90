#include <QSettings>
#include <QTest>

#include "Desktop.h"
#include "Journey.h"
#include "Store.h"
#include "TestMain.h"

/// Where the built program's windows go, and how they end.
class JourneyWindows : public Journey
{
    Q_OBJECT

private slots:
    void start_placesOutputFullScreenOnTheSecondMonitor();
    void windows_haveTheClassOfTheDesktopEntry();
    void title_showsTheLogo();
    void toggleKey_hidesAndShowsOutput();
    void heldToggleKey_hidesOnce();
    void toggleButton_hidesAndShowsOutput();
    void keys_workWhileOutputHasTheFocus();
    void preview_showsWhatTheAudienceSeesAndGoesWithIt();
    void closing_withThePreviewOpen_endsTheProgram();
    void closingOutput_leavesTheProgramRunning();
    void oneMonitor_givesAnOrdinaryOutputWindow();
    void secondMonitorUnplugged_hideAndShowGivesAnOrdinaryWindow();
};

void JourneyWindows::start_placesOutputFullScreenOnTheSecondMonitor()
{
    QVERIFY(program.start());
    AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
    AWAIT(outputShows("05:00", normalColour));
    QVERIFY(program.close());
    QVERIFY(!desktop::hasWindow(outputTitle));
}

void JourneyWindows::windows_haveTheClassOfTheDesktopEntry()
{
    QSettings entry(VELMORA_DESKTOP_ENTRY, QSettings::IniFormat);
    const QString wanted = entry.value("Desktop Entry/StartupWMClass").toString();
    QVERIFY(!wanted.isEmpty());
    QVERIFY(program.start());
    QCOMPARE(desktop::windowClass(controlTitle), wanted);
    QCOMPARE(desktop::windowClass(outputTitle), wanted);
    program.clickPreview();
    AWAIT(desktop::hasWindow(previewTitle));
    QCOMPARE(desktop::windowClass(previewTitle), wanted);
}

// The picture is compiled in, and a program without it only has a bare title.
void JourneyWindows::title_showsTheLogo()
{
    const QRect titlesLeftEnd(12, 6, 28, 44);
    const QColor logoGreen(0x22, 0xc5, 0x5e);
    QVERIFY(program.start());
    AWAIT(desktop::hasRun(desktop::grabWindow(controlTitle, titlesLeftEnd), logoGreen));
}

void JourneyWindows::toggleKey_hidesAndShowsOutput()
{
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    desktop::press("o");
    AWAIT(!desktop::hasWindow(outputTitle));
    AWAIT(!desktop::shows(desktop::secondMonitor, normalColour));
    desktop::press("o");
    AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
    AWAIT(outputShows("05:00", normalColour));
}

void JourneyWindows::heldToggleKey_hidesOnce()
{
    constexpr int manyRepetitionsMs = 3000;
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));
    const desktop::HeldKey toggle("o");
    AWAIT(!desktop::hasWindow(outputTitle));
    QVERIFY(!QTest::qWaitFor([] { return desktop::hasWindow(outputTitle); }, manyRepetitionsMs));
}

void JourneyWindows::toggleButton_hidesAndShowsOutput()
{
    QVERIFY(program.start());
    program.clickToggleOutput();
    AWAIT(!desktop::hasWindow(outputTitle));
    program.clickToggleOutput();
    AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
}

void JourneyWindows::keys_workWhileOutputHasTheFocus()
{
    QVERIFY(program.start());
    desktop::click(outputTitle, QPoint(960, 200));
    AWAIT(desktop::activeWindow() == outputTitle);
    desktop::press("Up");
    AWAIT(outputShows("06:00", normalColour));
    desktop::press("o");
    AWAIT(!desktop::hasWindow(outputTitle));
}

void JourneyWindows::preview_showsWhatTheAudienceSeesAndGoesWithIt()
{
    QVERIFY(program.start());
    program.clickPreview();
    AWAIT(desktop::hasWindow(previewTitle));
    QCOMPARE(desktop::windowGeometry(previewTitle).size(), QSize(640, 360));
    const QRect wholePreview(0, 0, 640, 360);
    AWAIT(desktop::hasRun(desktop::grabWindow(previewTitle, wholePreview), normalColour));
    desktop::press("o");
    AWAIT(!desktop::hasWindow(previewTitle));
    QVERIFY(program.isRunning());
}

void JourneyWindows::closing_withThePreviewOpen_endsTheProgram()
{
    QVERIFY(program.start());
    program.clickPreview();
    AWAIT(desktop::hasWindow(previewTitle));
    desktop::closeWindow(controlTitle);
    QVERIFY(program.hasEnded());
}

void JourneyWindows::closingOutput_leavesTheProgramRunning()
{
    QVERIFY(program.start());
    desktop::closeWindow(outputTitle);
    AWAIT(!desktop::hasWindow(outputTitle));
    QVERIFY(program.isRunning());
    desktop::press("o");
    AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
}

void JourneyWindows::oneMonitor_givesAnOrdinaryOutputWindow()
{
    desktop::unplugSecondMonitor();
    QVERIFY(program.start());
    QCOMPARE(desktop::windowGeometry(outputTitle).size(), QSize(800, 500));
    QVERIFY(desktop::firstMonitor.intersects(desktop::windowGeometry(outputTitle)));
}

void JourneyWindows::secondMonitorUnplugged_hideAndShowGivesAnOrdinaryWindow()
{
    QVERIFY(program.start());
    AWAIT(desktop::windowGeometry(outputTitle) == desktop::secondMonitor);
    desktop::unplugSecondMonitor();
    // The window manager moves it over to the monitor that is left; it goes on counting and
    // takes keys there.
    AWAIT(desktop::shows(desktop::firstMonitor, normalColour));
    desktop::press("Down", 5);
    AWAIT(desktop::shows(desktop::firstMonitor, criticalColour));
    desktop::press("o");
    AWAIT(!desktop::hasWindow(outputTitle));
    desktop::press("o");
    AWAIT(desktop::windowGeometry(outputTitle).size() == QSize(800, 500));
    QVERIFY(desktop::firstMonitor.intersects(desktop::windowGeometry(outputTitle)));
    AWAIT(desktop::hasRun(desktop::grabWindow(outputTitle, QRect(0, 0, 800, 500)), criticalColour));
}

VELMORA_TEST_MAIN(JourneyWindows)
#include "tst_JourneyWindows.moc"
