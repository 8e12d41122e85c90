#!/usr/bin/python3
"""The message on the audience's monitor, and presets over a restart of the built program."""

import driver
from driver import NORMAL, wait_for
from journey import Journey, main


class JourneyMessage(Journey):
    def type_message(self, text):
        self.program.click_into("Message overlay")
        driver.keys("ctrl+a")
        driver.type_text(text)

    def test_return_pushesTheMessage(self):
        self.start()
        self.sees_no_message()
        # "o", "r" and the blank are shortcuts elsewhere; in the edit they are text.
        self.type_message("Two more questions")
        driver.keys("Return")
        self.sees_message("Two more questions")
        self.sees("05:00", NORMAL)

    def test_push_trimsAndKeepsTheMessageOnBlankText(self):
        self.start()
        self.type_message("  Lights   ")
        self.program.click("Push message")
        self.sees_message("Lights")
        self.type_message("   ")
        # What follows on the screen proves that the keys before it have been dealt with.
        driver.keys("Return", "Up")
        self.sees("06:00", NORMAL)
        self.sees_message("Lights")

    def test_clear_takesTheMessageAway(self):
        self.start()
        self.type_message("Lights")
        driver.keys("Return")
        self.sees_message("Lights")
        self.program.click("Clear message")
        self.sees_no_message()

    def test_preset_loadsItsTime(self):
        self.start()
        self.program.click("15 min")
        self.both_see("15:00", NORMAL)

    def test_newPreset_isKeptOverARestart(self):
        program = self.start()
        program.named("Minutes").set_current_value(7)
        program.named("Seconds").set_current_value(30)
        program.click("Add to presets")
        wait_for(lambda: "val=450\n" in self.stored(), "the preset in the store")
        self.assertEqual(program.close(), 0)

        program.start()
        program.click("7:30")
        self.sees("07:30", NORMAL)

    def test_unchangedRun_writesNoStore(self):
        self.start()
        driver.keys("Up")
        self.sees("06:00", NORMAL)
        self.assertEqual(self.program.close(), 0)
        self.assertFalse(self.program.store.exists())


main()
