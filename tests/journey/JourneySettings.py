#!/usr/bin/python3
"""The Settings dialog of the built program, by keyboard: what OK changes at once and keeps over a
restart, and what Cancel and Escape leave alone."""

import driver
from driver import CONTROL, NORMAL, OUTPUT, SECOND_MONITOR, SETTINGS, wait_for
from journey import Journey, main

CHOSEN = "3366ff"
SIZE = 200
COLOUR_DIALOG = "Pick colour"


class JourneySettings(Journey):
    # The dialog opens with the keyboard on its tab bar, on the first tab, and each part of the way
    # ends there.
    def fill_in(self):
        self.program.press("Settings")
        self.has_keyboard(SETTINGS)
        # From "Clock" to "Colors" and its second button.
        driver.keys("Right", "Tab", "Tab", "space")
        self.has_keyboard(COLOUR_DIALOG)
        driver.keys("alt+h", "ctrl+a", "numbersign", *CHOSEN, "Return")
        self.has_keyboard(SETTINGS)
        driver.keys("shift+Tab", "shift+Tab")
        # To "Fonts", past the first stepper's button to its number.
        driver.keys("Right", "Tab", "Tab", "ctrl+a", *str(SIZE), "shift+Tab", "shift+Tab")
        # To "Timer", past two boxes and a stepper's button to the minutes, past two buttons to the
        # seconds.
        driver.keys("Right", "Tab", "Tab", "Tab", "Tab", "ctrl+a", "2",
                    "Tab", "Tab", "Tab", "ctrl+a", "3", "0", *["shift+Tab"] * 7)
        # To "Shortcuts" and its first "Set Key".
        driver.keys("Right", "Tab", "space", "j", "shift+Tab")

    def test_accepted_takesEffectAtOnceAndIsKept(self):
        program = self.start("defaultDuration=1200")
        self.sees("20:00", NORMAL)
        driver.keys("space")
        self.counts()

        self.fill_in()
        before = self.left()
        self.sees_any(NORMAL, 300)
        # "OK" is the default button.
        driver.keys("Return")
        self.gone(SETTINGS)

        # The count has gone on as if nothing had happened, in the new style.
        self.sees_any(CHOSEN, SIZE)
        self.assertTrue(before - 120 < self.left() <= before)
        wait_for(lambda: not driver.shows(SECOND_MONITOR, NORMAL), "nothing in the old colour")
        wait_for(lambda: program.shows(None, CHOSEN, 48, CONTROL), "the new colour in Control")

        # The new key pauses and starts, the old one does nothing. The keyboard is put on the
        # Output window, where a blank presses no button.
        driver.activate(OUTPUT)
        self.counts()
        driver.keys("j")
        self.comes_to_a_stop()
        driver.keys("space")
        self.assertTrue(self.stands_still())
        driver.keys("j")
        self.counts()
        driver.keys("r")
        self.sees("20:00", CHOSEN, SIZE)
        self.assertEqual(program.close(), 0)

        program.start()
        self.sees("02:30", CHOSEN, SIZE)
        self.sees("02:30", CHOSEN, 48, CONTROL)
        driver.keys("j")
        self.counts()
        for line in (f"timerColorNormal=#{CHOSEN}", f"timerFontSize={SIZE}", "defaultDuration=150",
                     "shortcutStartPause=J"):
            self.assertIn(line, self.stored().splitlines())

    def sees_any(self, colour, size):
        wait_for(lambda: self.program.shows(None, colour, size),
                 f"any figure in {colour}, {size} pixels high")

    def test_dismissed_leavesTheStoreAsItWas(self):
        # From the tab bar backwards over "Check for Updates" to "Cancel".
        for way in ("shift+Tab", "shift+Tab", "space"), ("Escape",):
            with self.subTest(way=way):
                # Not as the program would write it, so that any writing at all changes it.
                program = self.start("timerFontSize=250\n\n\ndefaultDuration=1200")
                stored = self.stored()
                self.fill_in()
                driver.keys(*way)
                self.gone(SETTINGS)
                self.assertEqual(self.stored(), stored)
                self.sees("20:00", NORMAL, 250)
                driver.activate(OUTPUT)
                driver.keys("space")
                self.counts()
                self.assertEqual(program.close(), 0)
                self.assertEqual(self.stored(), stored)


main()
