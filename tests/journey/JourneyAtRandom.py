#!/usr/bin/python3
"""An operator without a plan: keys, clicks, drags, dialogs, a monitor that comes and goes, a
desktop that changes its theme, for VELMORA_AT_RANDOM_SECONDS (60), much the same again with the
same VELMORA_AT_RANDOM_SEED. The program has to answer all the time, to count right whenever that is
looked at, and to end well.

With VELMORA_AT_RANDOM_SOUND=1 the sound server comes and goes, too. Qt 6.4 does not always live
through that: a cue within a second of the server's death can halt the program for good."""

import contextlib
import os
import pathlib
import random
import tempfile
import time
import wave

import driver
from driver import CONTROL, wait_for
from journey import Journey, has_second_monitor, main, seconds
from sound import SoundServer

SECONDS = int(os.environ.get("VELMORA_AT_RANDOM_SECONDS", 60))
SEED = int(os.environ.get("VELMORA_AT_RANDOM_SEED", time.time()))
THEMES = {kind: sorted(pathlib.Path("/usr/share/qt6ct", kind).iterdir())
          for kind in ("colors", "qss")}
WINDOWS = CONTROL, driver.OUTPUT, driver.PREVIEW
# None that deletes a file or closes a window for good.
KEYS = ("space", "r", "Up", "Down", "o", "Tab", "shift+Tab", "Left", "Right", "Return", "Escape",
        "Home", "End", "Prior", "Next", "ctrl+a", "BackSpace", "7", "0", "m", "odiaeresis", "F5",
        "ctrl+r", "alt+d")
DIALOG_BUTTONS = "Settings", "About Velmora", "Browse for sound file"
BUTTONS = (*DIALOG_BUTTONS, "Output preview", "Test sound", "Show Output Window", "Add to presets",
           "Push message", "Count up", "Clock view")


class JourneyAtRandom(Journey):
    slowest = 0.0  # answer, in seconds

    def press_keys(self):
        driver.keys(*self.random.choices(KEYS, k=self.random.randint(1, 8)),
                    pause=self.random.choice((0.002, driver.KEY_PAUSE)))

    def has_dialog(self):
        return not set(self.program.titles()) <= set(WINDOWS)

    def press_button(self):
        """Unless a dialog is in front of it, which takes a moment to come: an assistive tool could
        open a second one beside it, as no mouse can. A key may have closed it before it is seen."""
        name = self.random.choice(BUTTONS)
        if self.has_dialog():
            return
        for button in self.program.widgets(CONTROL):
            if button.get_name() == name:
                button.do_action(0)
        if name in DIALOG_BUTTONS:
            with contextlib.suppress(AssertionError):
                wait_for(self.has_dialog, "a dialog", patience=3)

    def place(self):
        """Somewhere in a window, without its frame."""
        areas = [area for title in (*WINDOWS, driver.SETTINGS) if (area := driver.geometry(title))]
        x, y, width, height = self.random.choice(areas or [driver.FIRST_MONITOR])
        return x + self.random.randrange(width), y + self.random.randrange(height)

    def click(self):
        driver.xdotool("mousemove", *self.place(),
                       "click", "--repeat", self.random.randint(1, 3), self.random.choice("1145"))

    def drag(self):
        driver.xdotool("mousemove", *self.place(), "mousedown", 1, "mousemove", *self.place(),
                       "mousemove", *self.place(), "mouseup", 1)

    def resize(self):
        if driver.has_window(CONTROL):
            driver.place(CONTROL, self.random.randint(0, 900), self.random.randint(40, 200),
                         self.random.randint(480, 900), self.random.randint(420, 900))

    def plug(self):
        has_second_monitor(self.random.random() < 0.6)

    def change_theme(self):
        """The desktop's style, colours and font, and a style sheet for every program."""
        style = self.random.choice(("Fusion", "Windows"))
        colours = self.random.choice(THEMES["colors"])
        size = self.random.randint(6, 20)
        sheet = self.random.choice(THEMES["qss"])
        self.program.theme.write_text(
            f"[Appearance]\nstyle={style}\ncustom_palette=true\ncolor_scheme_path={colours}\n"
            f'[Fonts]\ngeneral="Sans Serif,{size},-1,5,50,0,0,0,0,0"\n'
            f"[Interface]\nstylesheets={sheet}\n", encoding="utf-8")

    def kill_or_start_sound(self):
        self.sound.kill()
        if self.random.random() < 0.6:
            self.sound.start()

    def answers(self):
        """Has the program look for its windows."""
        begin = time.monotonic()
        wait_for(lambda: self.program.titles() or not self.program.is_running(), "an answer")
        self.assertTrue(self.program.is_running(), self.program.written())
        self.slowest = max(self.slowest, time.monotonic() - begin)

    def close_dialogs(self):
        def look():
            if not self.has_dialog():
                return True
            driver.keys("Escape")
            return False

        wait_for(look, lambda: f"no dialog among {self.program.titles()}", pause=0.1)

    def shown(self):
        return seconds(self.program.texts("Timer", CONTROL)[0])

    def next_figure(self):
        """The next one, and when it came."""
        figure = self.shown()

        def look():
            shown = self.shown()
            return shown != figure and (shown, time.monotonic())

        return wait_for(look, f"another figure than {figure}")

    def count(self):
        """Some seconds from ten minutes on, in either direction."""
        self.program.set_time(10, 0)
        wait_for(lambda: self.shown() == 600, lambda: f"10:00 instead of {self.shown()}")
        self.program.press("Start", CONTROL)
        first, begin = self.next_figure()
        time.sleep(self.random.uniform(0, 4))
        last, end = self.next_figure()
        self.assertAlmostEqual(abs(last - first), end - begin, delta=0.9)

    def test_anything_neitherHaltsNorBreaksTheCount(self):
        print(f"\nVELMORA_AT_RANDOM_SEED={SEED}", flush=True)
        self.random = random.Random(SEED)
        acts = ([self.press_keys] * 8 + [self.click] * 8 + [self.press_button] * 4 + [self.drag] * 3
                + [self.resize, self.plug, self.change_theme])
        if os.environ.get("VELMORA_AT_RANDOM_SOUND"):
            acts.append(self.kill_or_start_sound)
        home = self.enterContext(tempfile.TemporaryDirectory())
        with wave.open(f"{home}/cue.wav", "wb") as cue:
            cue.setparams((1, 2, 8000, 0, "NONE", None))
            cue.writeframes(b"\0\x10\0\xf0" * 4000)
        os.chdir(home)  # what a file dialog shows at first
        self.sound = self.enterContext(SoundServer(home))
        self.start(f"defaultDuration=3\nsoundEnabled=true\nsoundFilePath={home}/cue.wav",
                   environment={"HOME": home, "BROWSER": "true",
                                "QT_QPA_PLATFORMTHEME": "qt6ct"})
        end = time.monotonic() + SECONDS
        done = 0
        while time.monotonic() < end:
            for _ in range(self.random.randint(10, 60)):
                self.random.choice(acts)()
                self.answers()
                done += 1
            self.close_dialogs()
            self.count()
        has_second_monitor(True)
        if driver.PREVIEW in self.program.titles():  # which may be in front of the ×
            self.program.press("Output preview", CONTROL)
        print(f"{done} acts; the slowest answer took {self.slowest:.2f} s")


if __name__ == "__main__":
    main()
