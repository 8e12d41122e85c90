#!/usr/bin/python3
"""A thousand key presses a second for a minute, sent through the real X server to the built
program: each adds its minute."""

import time

import driver
from driver import NORMAL, wait_for
from journey import Journey, main

BURSTS = 60
PRESSES = 1000  # in a burst
LONGEST = 900  # seconds


class DesktopKeysLoad(Journey):
    def test_thousandASecond_allHaveTheirEffect(self):
        self.start()
        self.sees("05:00", NORMAL)
        begin = time.monotonic()
        for burst in range(BURSTS):
            time.sleep(max(0.0, begin + burst - time.monotonic()))
            driver.keys(*["Up"] * PRESSES, pause=0)
        sent = time.monotonic() - begin
        # What the server has queued is still to be drawn.
        figure = f"{5 + BURSTS * PRESSES}:00"
        wait_for(lambda: self.program.shows(figure, NORMAL), figure, LONGEST)
        print(f"{BURSTS * PRESSES} presses sent in {sent:.1f} s ({BURSTS * PRESSES / sent:.0f} a "
              f"second); the figure was {figure}, as it must be, "
              f"{time.monotonic() - begin - sent:.1f} s after the last")


main()
