#!/usr/bin/python3
"""Where the built program's windows go, and how they end."""

import configparser
import os

import driver
from driver import (CONTROL, CRITICAL, FIRST_MONITOR, NORMAL, OUTPUT, PREVIEW, SECOND_MONITOR,
                    wait_for)
from journey import Journey, has_second_monitor, held, main, seconds


class JourneyWindows(Journey):
    def is_ordinary(self, title):
        """Waits until the window has the size of a window without a screen of its own, and some of
        it is on the first monitor."""
        def place():
            return driver.geometry(title) or (0, 0, 0, 0)

        wait_for(lambda: place()[2:] == (800, 500), lambda: f"{title} at {place()}")
        x, y, width, height = place()
        self.assertTrue(-width < x < FIRST_MONITOR[2] and -height < y < FIRST_MONITOR[3])

    def open_preview(self):
        self.program.press("Output preview")
        wait_for(lambda: driver.has_window(PREVIEW), "the preview")

    def test_start_placesOutputFullScreenOnTheSecondMonitor(self):
        self.start()
        self.is_at(OUTPUT, SECOND_MONITOR)
        self.sees("05:00", NORMAL)
        self.assertEqual(self.program.close(), 0)
        self.gone(OUTPUT)

    def test_windows_haveTheClassOfTheDesktopEntry(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(os.environ["VELMORA_DESKTOP_ENTRY"], encoding="utf-8")
        wanted = entry["Desktop Entry"]["StartupWMClass"]
        self.assertTrue(wanted)
        self.start()
        self.open_preview()
        for title in CONTROL, OUTPUT, PREVIEW:
            self.assertEqual(driver.window(title).get_wm_class()[1], wanted)

    # The picture is compiled in, and a program without it only has a bare title.
    def test_title_showsTheLogo(self):
        self.start()
        title = self.program.named("About Velmora", CONTROL)
        wait_for(lambda: driver.shows(self.program.area(title), "22c55e"), "the logo's green")

    def test_toggleKey_hidesAndShowsOutput(self):
        self.start()
        self.sees("05:00", NORMAL)
        driver.keys("o")
        self.gone(OUTPUT)
        wait_for(lambda: not driver.shows(SECOND_MONITOR, NORMAL), "nothing on the second monitor")
        driver.keys("o")
        self.is_at(OUTPUT, SECOND_MONITOR)
        self.sees("05:00", NORMAL)

    # Were the key to repeat, the window would come and go some twenty times a second.
    def test_heldToggleKey_hidesOnce(self):
        def left():
            return seconds(self.program.texts("Timer", CONTROL)[0])

        self.start()
        self.sees("05:00", NORMAL)
        driver.keys("space")
        with held("o"):
            self.gone(OUTPUT)
            end = left() - 3
            seen = wait_for(lambda: "back" if driver.has_window(OUTPUT) else left() <= end,
                            "three seconds of the count")
            self.assertNotEqual(seen, "back")

    def test_toggleButton_hidesAndShowsOutput(self):
        self.start()
        self.program.click("Show Output Window")
        self.gone(OUTPUT)
        self.program.click("Show Output Window")
        self.is_at(OUTPUT, SECOND_MONITOR)

    def test_keys_workWhileOutputHasTheFocus(self):
        self.start()
        driver.click(1920 + 960, 200)
        self.has_keyboard(OUTPUT)
        driver.keys("Up")
        self.sees("06:00", NORMAL)
        driver.keys("o")
        self.gone(OUTPUT)

    def test_preview_showsWhatTheAudienceSeesAndGoesWithIt(self):
        self.start()
        self.open_preview()
        self.assertEqual(driver.geometry(PREVIEW)[2:], (640, 360))
        wait_for(lambda: driver.shows(driver.geometry(PREVIEW), NORMAL), "a figure in the preview")
        driver.keys("o")
        self.gone(PREVIEW)
        self.assertTrue(self.program.is_running())

    def test_closing_withThePreviewOpen_endsTheProgram(self):
        self.start()
        self.open_preview()
        self.assertEqual(self.program.close(), 0)

    def test_closingOutput_leavesTheProgramRunning(self):
        self.start()
        driver.close_window(OUTPUT)
        self.gone(OUTPUT)
        self.assertTrue(self.program.is_running())
        driver.keys("o")
        self.is_at(OUTPUT, SECOND_MONITOR)

    def test_oneMonitor_givesAnOrdinaryOutputWindow(self):
        has_second_monitor(False)
        self.start()
        self.is_ordinary(OUTPUT)

    def test_secondMonitorUnplugged_hideAndShowGivesAnOrdinaryWindow(self):
        self.start()
        self.is_at(OUTPUT, SECOND_MONITOR)
        has_second_monitor(False)
        # The window manager moves it over to the monitor that is left; it goes on counting and
        # takes keys there.
        wait_for(lambda: driver.shows(FIRST_MONITOR, NORMAL), "a figure on the first monitor")
        driver.keys(*["Down"] * 5)
        wait_for(lambda: driver.shows(FIRST_MONITOR, CRITICAL), "the critical colour there")
        driver.keys("o")
        self.gone(OUTPUT)
        driver.keys("o")
        self.is_ordinary(OUTPUT)
        wait_for(lambda: driver.shows(driver.geometry(OUTPUT), CRITICAL), "the critical colour")


main()
