#!/usr/bin/python3
"""The system's clock is set back and forth an hour while the built program counts. The machine's
own clock is left alone: a library between the program and the system moves the time of day for this
one process, and leaves the monotonic clock as it is."""

import datetime
import os
import pathlib
import tempfile
import time

import driver
from driver import NORMAL, wait_for
from journey import Journey, main

DURATION = 1800
# The screen is read while the count goes on, and a machine that does other things is slow.
TOLERANCE = 3


class ClockFaults(Journey):
    def setUp(self):
        super().setUp()
        if b"__asan_init" in pathlib.Path(os.environ["VELMORA_PROGRAM"]).read_bytes():
            self.skipTest("the library that moves the clock cannot be loaded before the sanitizer")
        self.library = next(pathlib.Path("/usr/lib").glob("**/faketime/libfaketimeMT.so.1"), None)
        if not self.library:
            self.skipTest("libfaketime is not installed")
        folder = self.enterContext(tempfile.TemporaryDirectory())
        self.offset = pathlib.Path(folder) / "offset"

    def set_clock(self, offset):
        """From now on the program reads the time of day with this offset."""
        # In place of the old one at once: the program may read it at any time.
        new = self.offset.with_suffix(".new")
        new.write_text(f"{offset:+}", encoding="ascii")
        new.replace(self.offset)

    def shows_clock(self, offset):
        """Waits until the Output window's clock shows the time with the offset."""
        def look():
            now = datetime.datetime.now() + datetime.timedelta(seconds=offset)
            return any(self.program.shows(
                f"{now - datetime.timedelta(seconds=late):%H:%M:%S}", "ffffff", 80,
                description="Clock") for late in range(TOLERANCE + 1))

        wait_for(look, lambda: f"the time of {offset:+} s; it is {self.program.texts('Clock')}")

    def clock_moves_and_not_the_count(self, *offsets):
        self.set_clock(0)
        self.start(f"defaultDuration={DURATION}\nclockFontSize=80", environment={
            "FAKETIME_TIMESTAMP_FILE": str(self.offset), "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1", "LD_PRELOAD": str(self.library)})
        self.sees("30:00", NORMAL)
        self.shows_clock(0)
        driver.keys("space")
        begin = time.monotonic()
        for offset in offsets:
            self.set_clock(offset)
            self.shows_clock(offset)
            left, wanted = self.left(), DURATION - (time.monotonic() - begin)
            print(f"Clock set by {offset:+} s: the clock shows it, the count has {left} s left, by "
                  f"the monotonic clock {wanted:.0f} s")
            self.assertLessEqual(abs(left - wanted), TOLERANCE)
            # And it goes on from there, second by second.
            self.assertEqual([self.next_left(), self.next_left()], [left - 1, left - 2])

    def next_left(self):
        self.counts()
        return self.left()

    def test_anHourForth_andBackAgain(self):
        self.clock_moves_and_not_the_count(3600, 0)

    def test_anHourBack_andForthAgain(self):
        self.clock_moves_and_not_the_count(-3600, 0)

    def test_fromOneHourLate_toOneEarlyAndOver(self):
        self.clock_moves_and_not_the_count(-3600, 3600, -3600)

    def test_aDayOn_aYearBack(self):
        self.clock_moves_and_not_the_count(86_400 + 60, -31_536_000)


main()
