#!/usr/bin/python3
"""The sound server dies under the built program, or its devices come and go."""

import pathlib
import re
import shutil
import tempfile
import time
import unittest
import wave

import driver
from driver import CRITICAL, WARNING, wait_for
from journey import ENDINGS, Journey, complaints, main
from sound import SoundServer

RATE = 8000


@unittest.skipUnless(shutil.which("pulseaudio") and shutil.which("pactl"),
                     "pulseaudio and pactl are not installed")
class SoundFaults(Journey):
    def setUp(self):
        super().setUp()
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        with wave.open(str(folder / "long.wav"), "wb") as cue:
            cue.setparams((1, 1, RATE, 0, "NONE", None))
            cue.writeframes((b"\x70" * 8 + b"\x90" * 8) * (60 * RATE // 16))
        self.settings = ("defaultDuration=4\nblinkEnabled=false\nsoundEnabled=true\n"
                         f"soundFilePath={folder}/long.wav")
        self.server = self.enterContext(SoundServer(folder))

    def start_program(self):
        self.start(self.settings)

    def finish(self, program):
        """What Qt writes about a missing server is no failure here."""
        print(f"What the program and Qt wrote: {complaints(program)}")

    def plug(self, device):
        """Adds a device that nobody hears; its module's number."""
        return self.server.control("load-module", "module-null-sink",
                                   f"sink_name={device}").stdout.strip()

    def control(self, *arguments):
        self.assertEqual(self.server.control(*arguments).returncode, 0, arguments)

    def is_heard_on(self, device):
        """Whether the device plays anything but silence in the next half second."""
        ear = self.server.listen(RATE, device)
        samples = ear.stdout.read(RATE)
        ear.kill()
        ear.communicate()
        return any(samples)

    def is_heard(self, device="cue"):
        wait_for(lambda: self.is_heard_on(device), f"the cue on {device}")

    def count_to_zero(self):
        """Counts down, from wherever the last count has come to; the cue is due then."""
        driver.keys("r")
        self.sees("00:04", WARNING)
        driver.keys("space")
        wait_for(lambda: self.program.shows(None, CRITICAL), "the critical colour")

    def goes_on(self):
        """The audience sees three further figures of overtime, one after the other."""
        for _ in range(3):
            self.counts()
            wait_for(lambda: self.program.shows(None, CRITICAL), "the critical colour")

    def ends(self):
        self.assertEqual(self.program.close(), 0)

    def test_serverKilledDuringTheCue_leavesTheCountRunning(self):
        self.start_program()
        self.count_to_zero()
        self.is_heard()
        self.server.kill()
        self.goes_on()
        # Once more to zero, with nobody there who could play the cue.
        self.count_to_zero()
        self.goes_on()
        # And with a server again. Newer players look for it once, three seconds after its end.
        self.server.start()
        self.count_to_zero()
        self.goes_on()
        heard = self.is_heard_on("cue")
        print(f"With the server back after seconds, the next cue is {'' if heard else 'not '}heard")
        libraries = pathlib.Path(f"/proc/{self.program.process.pid}/maps").read_text()
        if re.search(r"libQt6Core\.so\.6\.[0-4]\.", libraries):
            self.assertTrue(heard)
        self.ends()

    def test_serverKilledBeforeTheCue_leavesTheCountRunning(self):
        self.start_program()
        self.server.kill()
        driver.keys("space")
        self.goes_on()
        self.ends()

    # The reset before the second count makes the cue due once more.
    def test_noServerFromTheStart_leavesTheCountRunning(self):
        self.server.kill()
        self.start_program()
        for _ in range(2):
            self.count_to_zero()
            self.goes_on()
        self.ends()

    # As where the desktop starts it again.
    def test_serverBackAtOnce_nextCueIsHeard(self):
        self.start_program()
        for _ in range(2):
            self.count_to_zero()
            self.is_heard()
            self.server.kill()
            self.server.start()
            self.goes_on()
        self.count_to_zero()
        self.is_heard()
        self.ends()

    def test_defaultChanged_nextCueIsHeardThere(self):
        other = self.plug("other")
        self.control("set-default-sink", "cue")
        self.start_program()
        self.count_to_zero()
        self.is_heard("cue")
        self.control("set-default-sink", "other")
        self.count_to_zero()
        self.is_heard("other")
        self.assertFalse(self.is_heard_on("cue"))
        self.control("unload-module", other)
        self.count_to_zero()
        self.is_heard("cue")
        self.plug("other")
        self.control("set-default-sink", "other")
        self.count_to_zero()
        self.is_heard("other")
        self.assertFalse(self.is_heard_on("cue"))
        self.ends()

    def test_lastDeviceUnplugged_nextCueIsHeardWhenPlugged(self):
        self.start_program()
        self.count_to_zero()
        self.is_heard()
        self.control("unload-module", "module-null-sink")
        for _ in range(2):
            self.count_to_zero()
            self.goes_on()
        self.plug("new")
        self.count_to_zero()
        self.is_heard("new")
        self.ends()

    def test_closedWhileTheCueIsHeard_endsTheProcess(self):
        longest = 0.0
        for _ in range(ENDINGS):
            self.start_program()
            self.count_to_zero()
            self.is_heard()
            begin = time.monotonic()
            self.ends()
            longest = max(longest, time.monotonic() - begin)
        print(f"{ENDINGS} of {ENDINGS} processes ended, the slowest after {longest:.3f} s")


main()
