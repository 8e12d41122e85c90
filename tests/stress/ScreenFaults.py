#!/usr/bin/python3
"""Monitors come and go on the real X server while the built program counts."""

import subprocess
import time

import driver
from driver import CONTROL, FIRST_MONITOR, NORMAL, OUTPUT, SECOND_MONITOR, wait_for
from journey import Journey, has_second_monitor, main

DURATION = 1800
ROUNDS = 5
# The screen is read while the count goes on, and a machine that does other things is slow.
TOLERANCE = 3


def xrandr(*arguments):
    subprocess.run(["xrandr", *arguments], check=True)


class ScreenFaults(Journey):
    def start_counting(self):
        self.start(f"defaultDuration={DURATION}")
        self.sees("30:00", NORMAL)
        driver.keys("space")
        self.begin = time.monotonic()
        self.counts()

    def show_again(self):
        """Hides the Output window and shows it again, which looks for its screen once more."""
        driver.keys("o")
        self.gone(OUTPUT)
        driver.keys("o")
        wait_for(lambda: driver.has_window(OUTPUT), "the Output window")

    def is_ordinary(self):
        wait_for(lambda: (driver.geometry(OUTPUT) or ())[2:] == (800, 500), "an ordinary window")

    def has_kept_up(self):
        """The full-screen Output window shows what the time since the start has left."""
        self.is_at(OUTPUT, SECOND_MONITOR)
        wait_for(lambda: self.program.shows(None, NORMAL, 300), "a figure")
        left, wanted = self.left(), DURATION - (time.monotonic() - self.begin)
        print(f"The count has {left} s left, by the monotonic clock {wanted:.0f} s")
        self.assertLessEqual(abs(left - wanted), TOLERANCE)

    def test_secondMonitor_comesAndGoesWhileCounting(self):
        self.start_counting()
        for _ in range(ROUNDS):
            has_second_monitor(False)
            self.show_again()
            self.is_ordinary()
            x, y, _, _ = driver.geometry(OUTPUT)
            self.assertTrue(x < FIRST_MONITOR[2] and y < FIRST_MONITOR[3])

            has_second_monitor(True)
            self.assertTrue(self.program.is_running())
            self.show_again()
            self.has_kept_up()

    def test_operatorsMonitor_comesAndGoesWhileCounting(self):
        self.start_counting()
        for number in range(ROUNDS):
            xrandr("--output", "DUMMY0", "--off")
            self.assertTrue(self.program.is_running())
            wait_for(lambda: driver.has_window(CONTROL), "the Control window")
            # The only monitor left is the one that the audience sees.
            self.show_again()
            self.is_ordinary()

            xrandr("--output", "DUMMY0", "--primary", "--mode", "1920x1080", "--pos", "0x0",
                   "--output", "DUMMY1", "--mode", "1920x1080", "--pos", "1920x0")
            # Qt took the window over to the other screen, and notices where it stands when it is
            # moved for the first time.
            before = driver.geometry(CONTROL)[0]
            driver.place(CONTROL, 200 + 50 * number, 40, 560, 900)
            wait_for(lambda: driver.geometry(CONTROL)[0] not in (before, *range(1920, 3840)),
                     "the Control window on the first monitor")
            self.show_again()
            self.has_kept_up()


main()
