#!/usr/bin/python3
"""An operator without a plan, as JourneyAtRandom has one, on a Wayland desktop."""

import pathlib
import sys

from compositor import OUTPUT_SIZE, WaylandJourney, area, control_window
from journey import main

sys.path.append(str(pathlib.Path(__file__).parents[1] / "journey"))
import JourneyAtRandom  # noqa: E402 (found by the line above)


class WaylandAtRandom(JourneyAtRandom.JourneyAtRandom, WaylandJourney):
    def place(self):
        """Somewhere in the Control window, without its frame: that has a ×."""
        x, y, width, height = control_window(0) or (*area(0)[:2], *OUTPUT_SIZE)
        return x + self.random.randrange(width), y + self.random.randrange(height)

    def resize(self):
        """The compositor alone decides."""

    plug = resize


if __name__ == "__main__":
    main()
