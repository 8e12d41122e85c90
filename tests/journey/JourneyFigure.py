#!/usr/bin/python3
"""The count and its colours, on both windows of the built program."""

import driver
from driver import CONTROL, CRITICAL, NORMAL, SECOND_MONITOR, WARNING, wait_for
from journey import Journey, held, main


class JourneyFigure(Journey):
    def test_start_showsTheDefaultDurationInItsColour(self):
        for seconds, figure, colour in ((61, "01:01", NORMAL), (60, "01:00", WARNING),
                                        (1, "00:01", WARNING), (0, "00:00", CRITICAL),
                                        (59940, "999:00", NORMAL)):
            with self.subTest(seconds=seconds):
                self.start(f"defaultDuration={seconds}")
                self.both_see(figure, colour)
                self.assertEqual(self.program.close(), 0)

    def test_firstRun_showsFiveMinutes(self):
        self.start()
        self.both_see("05:00", NORMAL)

    def test_startKey_countsDownIntoTheWarningColour(self):
        self.start("defaultDuration=61")
        self.sees("01:01", NORMAL)
        driver.keys("space")
        wait_for(lambda: driver.shows(SECOND_MONITOR, WARNING), "the warning colour")
        # Figure and bar are drawn one after the other, which a slow machine lets one see.
        wait_for(lambda: not driver.shows(SECOND_MONITOR, NORMAL), "nothing in the normal colour")
        driver.keys("space")
        self.comes_to_a_stop()
        self.sees(self.figure(), WARNING)
        self.assertLessEqual(self.left(), 60)

    # With overtime off the count stops by itself on the tick that is looked at here.
    def test_countDown_reachesZeroInTheCriticalColour(self):
        self.start("defaultDuration=1\novertimeEnabled=false")
        self.sees("00:01", WARNING)
        driver.keys("space")
        self.both_see("00:00", CRITICAL)

    def test_countDown_belowZeroIsNegativeAndCritical(self):
        self.start("defaultDuration=0\novertimeEnabled=false")
        self.sees("00:00", CRITICAL)
        driver.keys("space")
        self.both_see("-00:01", CRITICAL)

    def test_overtime_countsOn(self):
        self.start("defaultDuration=1\nblinkEnabled=false")
        self.sees("00:01", WARNING)
        driver.keys("space")
        wait_for(lambda: driver.shows(SECOND_MONITOR, CRITICAL), "the critical colour")
        wait_for(lambda: self.figure() not in ("00:00", "-00:01"), "figures below -00:01")
        self.assertTrue(driver.shows(SECOND_MONITOR, CRITICAL))

    def test_zero_blinksInBothWindows(self):
        self.start("defaultDuration=0")
        figure = self.program.area(self.program.labels("Timer", CONTROL)[0])
        for _ in range(2):
            self.sees("00:00", CRITICAL)
            wait_for(lambda: not driver.shows(SECOND_MONITOR, CRITICAL), "a dark Output window")
            self.sees("00:00", CRITICAL, 48, CONTROL)
            wait_for(lambda: not driver.shows(figure, CRITICAL), "a dark figure in Control")

    def test_plusAndMinusKeys_moveAMinute(self):
        self.start("defaultDuration=61")
        self.sees("01:01", NORMAL)
        driver.keys("Up", "Up")
        self.both_see("03:01", NORMAL)
        driver.keys("Down", "Down", "Down")
        self.sees("00:01", WARNING)
        driver.keys("Down")
        self.sees("00:00", CRITICAL)

    def test_heldMinusKey_repeats(self):
        self.start()
        self.sees("05:00", NORMAL)
        with held("Down"):
            self.sees("00:00", CRITICAL)

    # Were it to repeat, no second would pass between a start and the next pause.
    def test_heldStartKey_startsOnce(self):
        self.start()
        self.sees("05:00", NORMAL)
        with held("space"):
            wait_for(lambda: self.left() < 5 * 60 - 2, "three seconds of the count")

    def test_resetKey_stopsAndRestoresTheDuration(self):
        self.start()
        driver.keys("space")
        wait_for(lambda: self.figure() != "05:00", "a running count")
        driver.keys("r")
        self.sees("05:00", NORMAL)
        self.assertTrue(self.stands_still())

    def test_setTimeRow_loadsTheTypedTime(self):
        self.start()
        for name, number in ("Minutes", "12"), ("Seconds", "34"):
            self.program.click_into(name)
            driver.keys("ctrl+a", *number)
        self.program.click("Set time")
        self.both_see("12:34", NORMAL)
        # The spin boxes' keys are their own, but the button now has the focus.
        driver.keys("space")
        self.counts()


main()
