#!/usr/bin/python3
"""Starts the built program on a Wayland desktop and closes it by the × of the Control window's
frame, again and again: VELMORA_ENDINGS times. Each time the process has to end."""

import time

from compositor import WaylandJourney
from journey import ENDINGS, main


class WaylandEndings(WaylandJourney):
    def test_cross_endsTheProcess(self):
        longest = 0.0
        for _ in range(ENDINGS):
            program = self.start()
            self.settles()
            begin = time.monotonic()
            self.assertEqual(program.close(), 0)
            longest = max(longest, time.monotonic() - begin)
        print(f"{ENDINGS} of {ENDINGS} processes ended, the slowest {longest:.3f} s after the "
              "search for the ×")


main()
