#!/usr/bin/python3
"""What a screen reader finds of the built program, from outside: role and name of everything that
is shown and is no plain text, in the order in which it is read."""

from driver import CONTROL, OUTPUT, PREVIEW, SETTINGS, wait_for
from journey import Journey, main

ABOUT = "About Velmora"

CONTROLS = """button About Velmora; button Settings; filler Timer controls; check box Countdown;
check box Count up; button Start; button Pause; button Reset; button Add 1 minute;
button Subtract 1 minute; button Decrease minutes; spin button Minutes; button Increase minutes;
button Decrease seconds; spin button Seconds; button Increase seconds; button Set time;
button Add to presets; list Presets; list item 5 min; list item 10 min; list item 15 min;
list item 30 min; check box Timer view; check box Clock view; check box Both views;
text Message overlay; button Push message; button Clear message; check box Enable sound cue;
button Browse for sound file; button Test sound; button Show Output Window; button Output preview"""

CARD = """button Close; image Velmora logo; button Web site www.velmora.example;
button Check for Updates; button Close"""

TABS = """page tab Clock; page tab Colors; page tab Fonts; page tab Timer; page tab Shortcuts;
button OK; button Cancel; button Check for Updates"""

PAGES = {
    "Clock": """radio button 24-hour  (14:30); radio button 12-hour  (2:30 PM);
check box Show seconds on output""",
    "Colors": """button Background colour 000000; button Timer normal colour 00CC00;
button Timer warning colour FF8800; button Timer critical colour FF2200;
button Clock colour FFFFFF; button Message colour FFFF00;
check box Use image instead of background colour; button Browse for background image;
button Clear background image""",
    "Fonts": """button Decrease timer font size; spin button Timer font size;
button Increase timer font size; button Decrease clock font size; spin button Clock font size;
button Increase clock font size; button Decrease message font size;
spin button Message font size; button Increase message font size""",
    "Timer": """check box Overtime, continue counting in red past zero;
check box Blink effect at zero; button Decrease default duration minutes;
spin button Default duration minutes; button Increase default duration minutes;
button Decrease default duration seconds; spin button Default duration seconds;
button Increase default duration seconds; button Decrease warning threshold;
spin button Warning threshold; button Increase warning threshold; list Presets;
list item 5 min; list item 10 min; list item 15 min; list item 30 min;
button Decrease new preset minutes; spin button New preset minutes;
button Increase new preset minutes; button Decrease new preset seconds;
spin button New preset seconds; button Increase new preset seconds; button Add preset;
button Remove preset""",
    "Shortcuts": "; ".join(f"button Set key for {key}; button Clear key for {key}" for key in (
        "start or pause", "reset", "add 1 minute", "subtract 1 minute", "toggle output"))
    + "; button Reset All to Defaults"}


class JourneyNames(Journey):
    def reads(self, window, wanted):
        def found():
            # The role that is called so was renamed in newer versions of the bindings.
            names = [(widget.get_role_name().replace("push ", ""), widget.get_name())
                     for widget in self.program.widgets(window)]
            return [f"{role} {name}" for role, name in names if name and role != "label"]

        wanted = wanted.replace("\n", " ").split("; ")
        try:
            wait_for(lambda: found() == wanted, f"the names in {window}", 5)
        except AssertionError:
            self.assertEqual(found(), wanted)

    def test_windows_areReadInTheirOrder(self):
        self.start()
        self.reads(CONTROL, CONTROLS)
        self.reads(OUTPUT, "progress bar Timer progress")
        self.assertEqual(self.program.texts("Timer"), ["05:00", "05:00"])
        self.program.push_message("Lights")
        self.assertEqual(self.program.texts("Message", OUTPUT), ["Lights"])
        self.assertRegex(self.program.texts("Clock", OUTPUT)[0], r"^\d\d:\d\d:\d\d$")

    def test_preview_isAPictureOfTheOutput(self):
        self.start()
        self.program.press("Output preview")
        self.program.named("Picture of the Output window", PREVIEW)

    def test_aboutCard_isReadInItsOrder(self):
        self.start()
        self.program.press(ABOUT)
        self.reads(ABOUT, CARD)
        self.program.press("Close", ABOUT)
        self.gone(ABOUT)

    def test_settings_areReadInTheirOrderOnEachPage(self):
        self.start()
        self.program.press("Settings")
        for page, names in PAGES.items():
            if page != "Clock":  # which is shown at first
                self.program.press(page, SETTINGS)
            self.reads(SETTINGS, f"{names}; page tab list {page}; {TABS}")
        self.program.press("Cancel", SETTINGS)
        self.gone(SETTINGS)


main()
