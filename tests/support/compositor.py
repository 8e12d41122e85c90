"""The Wayland desktop that a test runs on, as the user who sits at it sees it: the compositor shows
each of its outputs in a window of the virtual X desktop."""

import driver
from driver import CONTROL, OUTPUT, Picture, wait_for
from journey import Journey

CONTROL_GROUND = "1c1c1c"
DESKTOP_GROUND = "336699"
OUTPUT_SIZE = 1280, 800


def area(output):
    title = f"Weston Compositor - screen{output}"
    return wait_for(lambda: driver.geometry(title), f'a window "{title}"')


def is_covered(output):
    """Whether nothing of the desktop's own ground is to be seen on the output."""
    return Picture(area(output)).ink(DESKTOP_GROUND, least=1) is None


def control_window(output):
    """The ground of the Control window on that output, without its frame; None where it is not. No
    other row of that ground is as long: the narrowest Control window has 480 pixels."""
    return Picture(area(output)).ink(CONTROL_GROUND, least=400)


class WaylandProgram(driver.Program):
    """The program as a client of the compositor. Of a window it can only say what is where in it,
    to which some versions of Qt add the place of a full-screen window's output."""

    def __init__(self, command, settings=None, environment=None):
        super().__init__(command, settings, environment=environment)
        del self.environment["DISPLAY"]

    def is_up(self):
        return len(self.texts("Timer")) == 2 and is_covered(1) and control_window(0)

    def lay_out(self):
        """The compositor alone decides where a window stands."""

    def area(self, widget):
        x, y, width, height = super().area(widget)
        is_output = widget in self.widgets(OUTPUT)
        left, top = area(1)[:2] if is_output else control_window(0)[:2]
        return left + x % OUTPUT_SIZE[0], top + y, width, height

    def close(self):
        """Presses the × of the Control window's frame, right above its ground."""
        x, y, width, _ = control_window(0)
        driver.click(x + width - 15, y - 15)
        return self.status()


class WaylandJourney(Journey):
    program_class = WaylandProgram

    def launch(self, settings=None, **options):
        # The compositor draws the pointer itself: elsewhere it might cover a part of the window
        # that its ground is measured by, or the edge of the other output.
        x, y, width, height = area(0)
        driver.xdotool("mousemove", x + width - 40, y + height - 1)
        return super().launch(settings, **options)

    def settles(self):
        """Waits until the Control window stands where it stood at the last look."""
        last = []

        def look():
            last.append(Picture(area(0)).pixels)
            return len(last) > 1 and (last[-1] == last[-2]).all() and control_window(0)

        wait_for(look, f"{CONTROL} to stand still")
