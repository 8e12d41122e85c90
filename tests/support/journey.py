"""What all tests that drive the built program have in common. VELMORA_PROGRAM of the environment
names it."""

import contextlib
import os
import pathlib
import re
import shlex
import subprocess
import unittest

import driver
from driver import CONTROL, MESSAGE, OUTPUT, wait_for

ENDINGS = int(os.environ.get("VELMORA_ENDINGS", 3))

# What Qt and its libraries write to standard error where there is no sound server, no graphics card
# and no network, and Qt without ICU of a file dialog. The null pointer comes now and then from the
# oldest Qt, when the connection of the update check is refused at once.
NOT_OURS = re.compile(
    r"PulseAudioService:|\[[EW]\]\[[0-9:.]+\] pw\.|Failed to connect to pipewire instance|"
    r"qt\.multimedia|ALSA lib|Failed to open VDPAU backend|libva |qt\.accessibility\.atspi|"
    r"Numeric mode unsupported in the posix collation|"
    r"(qt\.core\.qobject\.connect: )?QObject::connect\(QObject, Unknown\): invalid nullptr")


def complaints(program):
    """What the program itself wrote to standard error."""
    return [line for line in program.written().splitlines() if line and not NOT_OURS.match(line)]


def has_second_monitor(on):
    """Plugs the second monitor in, or unplugs it."""
    options = ["--mode", "1920x1080", "--right-of", "DUMMY0"] if on else ["--off"]
    subprocess.run(["xrandr", "--output", "DUMMY1", *options], check=True, capture_output=True)


@contextlib.contextmanager
def held(key):
    """A key that is down meanwhile; the X server repeats it."""
    driver.xdotool("keydown", key)
    try:
        yield
    finally:
        driver.xdotool("keyup", key)


def seconds(figure):
    minutes, rest = figure.split(":")
    return int(minutes) * 60 + int(rest)


class Journey(unittest.TestCase):
    """Each test has a store of its own. At its end the program, if it runs, must end with status
    0 when it is closed, and have written nothing to standard error."""

    program_class = driver.Program

    def setUp(self):
        has_second_monitor(True)
        self.program = None

    def launch(self, settings=None, **options):
        """Starts a program with such a store, without waiting."""
        self.program = self.program_class(os.environ["VELMORA_PROGRAM"], settings, **options)
        self.addCleanup(self.program.__exit__)
        self.program.launch()
        self.addCleanup(self.finish, self.program)
        return self.program

    def start(self, settings=None, **options):
        """The same, and waits for both windows."""
        program = self.launch(settings, **options)
        program.await_windows()
        program.lay_out()
        return program

    def finish(self, program):
        if not self.has_failed:
            if program.is_running():
                self.assertEqual(program.close(), 0)
            self.assertEqual(complaints(program), [])

    has_failed = False

    def failed(self):
        """Called before anything is cleaned up."""
        self.has_failed = True
        command = shlex.split(os.environ["VELMORA_PROGRAM"])
        build = pathlib.Path(command[-1]).resolve().parents[1]
        file = build / f"{type(self).__name__}-{self._testMethodName}.png"
        driver.Picture().save(file)
        print(f"What was to be seen then: {file}")

    def sees(self, figure, colour, size=300, title=OUTPUT):
        """Waits until the figure is drawn in this colour and size, and says exactly this."""
        wait_for(lambda: self.program.shows(figure, colour, size, title),
                 lambda: f"{title}: {figure} in {colour}, {size} pixels high; it shows "
                 f"{self.program.texts('Timer')}")

    def both_see(self, figure, colour, size=300):
        self.sees(figure, colour, size)
        self.sees(figure, colour, 48, CONTROL)

    def sees_message(self, text):
        wait_for(lambda: self.program.shows(text, MESSAGE, description="Message"),
                 lambda: f"the message {text}; it is {self.program.texts('Message')}")

    def sees_no_message(self):
        wait_for(lambda: self.program.texts("Message") == [""]
                 and not driver.shows((1920, 960, 1920, 80), MESSAGE), "no message")

    def figure(self):
        """What the Output window shows."""
        return self.program.texts("Timer", OUTPUT)[0]

    def left(self):
        """The same in seconds."""
        return seconds(self.figure())

    def counts(self):
        figure = self.figure()
        wait_for(lambda: self.figure() != figure, f"another figure than {figure}")

    def stands_still(self):
        """Whether the figure stays while the wall clock below it goes on twice: the first time may
        be just over."""
        figure = self.figure()
        for _ in range(2):
            clock = self.program.texts("Clock")
            wait_for(lambda: self.program.texts("Clock") != clock, "the next second of the clock")
        return self.figure() == figure

    def comes_to_a_stop(self):
        """On a busy machine, a key that was pressed may come after one more tick."""
        wait_for(self.stands_still, "the count to stop")

    gone = staticmethod(driver.await_gone)

    def is_at(self, title, area):
        wait_for(lambda: driver.geometry(title) == area,
                 lambda: f'"{title}" at {area} instead of {driver.geometry(title)}')

    def has_keyboard(self, title):
        wait_for(lambda: driver.active_window() == title,
                 lambda: f'the keyboard on "{title}", instead of "{driver.active_window()}"')

    def stored(self):
        """What the program's settings store holds; empty without a file."""
        store = self.program.store
        return store.read_text(encoding="utf-8") if store.exists() else ""


class Result(unittest.TextTestResult):
    def addFailure(self, test, err):
        test.failed()
        super().addFailure(test, err)

    def addError(self, test, err):
        test.failed()
        super().addError(test, err)

    def addSubTest(self, test, subtest, err):
        if err:
            test.failed()
        super().addSubTest(test, subtest, err)


def main():
    unittest.main(testRunner=unittest.TextTestRunner(verbosity=2, resultclass=Result))
