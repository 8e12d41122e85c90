#!/usr/bin/python3
"""The built program on a Wayland desktop with two outputs. Its Output window has a ground of a
colour of its own here, so that its edges can be distinguished from the desktop's."""

import os
import pathlib
import re

import driver
from compositor import WaylandJourney, area, control_window, is_covered
from driver import NORMAL, Picture, wait_for
from journey import main

OUTPUT_GROUND = "402060"
SETTINGS = f"bgColor=#{OUTPUT_GROUND}"
SIZE = 222  # of the figure: 300 at a height of 1080


def shows_output(output):
    return Picture(area(output)).ink(OUTPUT_GROUND) is not None


class WaylandWindows(WaylandJourney):
    def setUp(self):
        super().setUp()
        self.start(SETTINGS)
        self.sees("05:00", NORMAL, SIZE)
        # A click left of the Control window's figure, where nothing is, gives it the keyboard.
        x, y = control_window(0)[:2]
        driver.click(x + 30, y + 110)

    def covers_the_output(self):
        """Whether the Output window's ground is all there is along the edges of the output."""
        x, y, width, height = area(1)
        edges = ((x, y, width, 1), (x, y + height - 1, width, 1),
                 (x, y, 1, height), (x + width - 1, y, 1, height))
        return all((Picture(edge).pixels == int(OUTPUT_GROUND, 16)).all() for edge in edges)

    def test_start_coversTheOtherOutput(self):
        self.assertTrue(is_covered(1))
        self.assertTrue(self.covers_the_output())
        self.assertIsNone(control_window(1))
        self.assertFalse(is_covered(0))
        # The click has given it the keyboard, and with that another frame: it is drawn once more.
        wait_for(lambda: control_window(0), "the Control window")
        self.assertFalse(shows_output(0))

    def test_windows_haveTheIdOfTheDesktopEntry(self):
        self.assertEqual(self.program.close(), 0)
        # Everything that the program says to the compositor is written down.
        program = self.launch(SETTINGS, environment={"WAYLAND_DEBUG": "client"})

        def ids():
            return re.findall(r'set_app_id\("([^"]*)"\)', program.written())

        wait_for(lambda: len(ids()) >= 2, "the ids of two windows")
        program.kill()
        self.assertEqual(set(ids()), {pathlib.Path(os.environ["VELMORA_DESKTOP_ENTRY"]).stem})
        program.errors.write_text("")  # all of that is no complaint

    def test_toggleKey_hidesAndShowsOutput(self):
        driver.keys("o")
        wait_for(lambda: not shows_output(1), "no Output window")
        self.assertFalse(shows_output(0))
        driver.keys("o")
        wait_for(lambda: is_covered(1), "the Output window")
        self.sees("05:00", NORMAL, SIZE)
        self.assertTrue(self.covers_the_output())

    def test_startKey_counts(self):
        driver.keys("space")
        wait_for(lambda: 280 <= self.left() < 300, "seconds to pass")
        wait_for(lambda: self.program.shows(None, NORMAL, SIZE), "the figure")
        driver.keys("r")
        self.sees("05:00", NORMAL, SIZE)

    # As a screen reader's user would do it, to whom no key and no place is known.
    def test_names_workAsOnX(self):
        self.program.set_time(1, 30)
        self.sees("01:30", NORMAL, SIZE)
        self.program.press("Start")
        self.counts()

    def test_closingControl_endsTheProgram(self):
        self.settles()
        self.assertEqual(self.program.close(), 0)
        wait_for(lambda: not shows_output(1), "no Output window")


main()
