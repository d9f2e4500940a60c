#!/usr/bin/python3
"""The windows of the real program without eyes and without a mouse: what a screen reader is told of everything that
can be operated, and that the keyboard reaches it in the order in which it is read."""
import json
import time
from pathlib import Path

from preferences_support import PANES, WORK, PreferencesTest
from support import main, wait_until

READER = Path(__file__).with_name("screen_reader.py")
OPERABLE = {"page tab", "check box", "radio button", "combo box", "push button", "link", "text", "list item"}
# What only holds others or is only read.
PASSIVE = {"application", "frame", "panel", "page tab list", "list", "heading", "label", "image", "filler", "alert"}
FIRST = "给你的眼睛一个小小的暂停，它们会感激你的关心。"
HOURS = [f"{hour:02}:00" for hour in range(9, 20)]

# Where Tab goes, pane by pane, after the tab itself.
STOPS = {
    "General": [("check box", "Launch at login"), ("check box", "Show time in StatusBar"),
                ("check box", "Auto check update for Kelpa")],
    "Workflow": [("text", WORK), ("text", "Length of a short break in seconds"), ("check box", "Custom break prompt"),
                 ("text", "Custom break prompt"), ("text", "Breaks from one long break to the next"),
                 ("text", "Length of a long break in minutes"),
                 ("check box", "Force for long breaks(skip button will not display)"),
                 ("check box", "Restart timer after Mac awake"),
                 ("check box", "Stop timer after Mouse stop for 5 mins"),
                 ("check box", "Show a new day prompt"), ("combo box", "Tell me before a break"),
                 ("text", "Minutes that a break is put off by"),
                 ("check box", "Hold breaks while I am busy"),
                 ("check box", "Keep a history of work, breaks and water"),
                 ("push button", "Show History")],
    "Style": [("combo box", "Break Style"), ("radio button", "Break"), ("text", "Add"), ("push button", "Add"),
              ("list item", FIRST), ("push button", "Edit"), ("push button", "Delete"),
              ("push button", "Reset to the built-in prompts")],
    "Water": [("check box", "Enable drink water reminder"), ("push button", "Decrease"), ("text", "Target"),
              ("push button", "Increase"), ("combo box", "Mode"), ("text", "Start time"), ("text", "End time"),
              ("radio button", "15min")],
    "About": [("link", "Release Notes")],
}
TIME_POINTS = [*STOPS["Water"][:5], *(("push button", f"Remove this time {hour}") for hour in HOURS),
               ("push button", "Add a time")]


class Reader:
    """A screen reader that listens to what gets the keyboard."""

    def __init__(self, test):
        self.session, self.output = test.session, test.session.folder / "heard"
        with open(self.output, "wb") as output:
            process = self.session.spawn([str(READER), "follow"], stdout=output)
        test.addCleanup(self.session.end, process)
        wait_until(lambda: self.lines() == ["listening"], 10, "the screen reader")

    def lines(self):
        return self.output.read_text().split("\n")[:-1]

    def heard(self):
        """Role and name of each element that got the keyboard so far."""
        return [tuple(json.loads(line)[:2]) for line in self.lines()[1:]]

    def after(self, press):
        """What gets the keyboard by a key."""
        before = len(self.heard())
        press()
        return wait_until(lambda: self.heard()[before:], 3, "something else to get the keyboard")[-1]

    def read(self):
        """Everything that can be seen now: role, name, description."""
        return [json.loads(line) for line in self.session.run_tool(str(READER), "read").stdout.splitlines()]


class Accessible(PreferencesTest):
    def assert_told(self, elements, place):
        """Each element can be told from the others by role and name; gives those that can be operated."""
        for role, name, _ in elements:
            self.assertIn(role, OPERABLE | PASSIVE, f"{place}: {name}")
            if role in OPERABLE | {"heading", "label", "alert", "image", "list", "frame"}:
                self.assertTrue(name, f"{place}: a {role} has no name")
        operable = [tuple(element) for element in elements if element[0] in OPERABLE]
        self.assertEqual(len(set(operable)), len(operable), f"{place}: {operable}")
        return [element[:2] for element in operable]

    def focused(self):
        return [one for one in self.window.walk() if one.role() in OPERABLE and "focused" in one.states()]

    def assert_tab_goes_round(self, reader, pane, stops):
        """Forwards and backwards, each stop being heard and to be seen."""
        self.turn_to(pane)
        self.screen.click(self.on_screen().x + 3, self.on_screen().y + 120)     # beside everything
        self.screen.move(5, self.HEIGHT - 10)
        wait_until(lambda: not self.focused(), 3, "nothing to have the keyboard")
        told = self.assert_told(reader.read(), pane)
        self.assertEqual([name for role, name in told if role == "page tab"], list(PANES))
        shown = self.screen.picture(self.on_screen())
        round_trip = [*stops, ("page tab", pane)]
        first = reader.after(lambda: self.screen.press("Tab"))
        if first == round_trip[-1]:
            round_trip = [round_trip[-1], *stops]
        for number, stop in enumerate([*round_trip, round_trip[0]]):
            heard = first if number == 0 else reader.after(lambda: self.screen.press("Tab"))
            self.assertEqual(heard, stop, f"{pane}, stop {number}")
            wait_until(lambda before=shown: before.differs(self.screen.picture(self.on_screen())), 2,
                       f"the focus to show on {stop}")
            shown = self.screen.picture(self.on_screen())
        for number, stop in enumerate(reversed(round_trip)):
            self.assertEqual(reader.after(lambda: self.screen.press("Shift_L", "Tab")), stop, f"{pane}, backwards")
            if number == 0:     # What a pane has no room for is told once somebody scrolls there.
                self.assert_told(reader.read(), pane)

    def test_everything_has_a_name_and_tab_reaches_it_in_the_order_in_which_it_is_read(self):
        self.open({"custom_break_prompt": True, "pref.water.enable": True})
        reader = Reader(self)
        for pane, stops in STOPS.items():
            self.assert_tab_goes_round(reader, pane, stops)
        self.turn_to("Water")
        self.find("combo box", "Mode").press()
        self.screen.press("Down")
        self.screen.press("Return")
        self.find("push button", "Add a time")
        self.assert_tab_goes_round(reader, "Water", TIME_POINTS)

    def test_no_mouse_is_needed(self):
        program = self.open()
        reader = Reader(self)
        def hear(*keys):
            return reader.after(lambda: self.screen.press(*keys))

        self.assertEqual(hear("Tab"), ("page tab", "General"))
        self.assertEqual(hear("Right"), ("page tab", "Workflow"))
        self.assertEqual(hear("Tab"), ("text", WORK))
        self.screen.type("50")      # what was there is selected
        self.screen.press("Return")
        self.wait_stored(program, "pref.work.time", 50)
        self.screen.press("Control_L", "Next")
        self.find("panel", "Style")
        self.screen.press("Control_L", "Prior")
        self.find("panel", "Workflow")
        self.screen.press("Control_L", "Tab")
        self.find("combo box", "Break Style")
        while hear("Tab") != ("combo box", "Break Style"):
            pass
        self.screen.press("space")
        self.find("list item", "Struggle")
        self.screen.press("End")
        self.screen.press("space")
        self.wait_stored(program, "break_style", 2)

    def test_what_a_screen_reader_sets_off_is_done(self):
        program = self.open(pane="General")
        self.find("check box", "Show time in StatusBar").press()
        self.wait_stored(program, "show_time_in_status_bar", False)
        self.find("check box", "Show time in StatusBar").press()
        self.wait_stored(program, "show_time_in_status_bar", True)
        self.turn_to("Water")
        self.find("check box", "Enable drink water reminder").press()
        self.wait_stored(program, "pref.water.enable", True)
        self.find("push button", "Increase").press()
        self.wait_stored(program, "pref.water.target", 1550)
        self.find("radio button", "45min").press()
        self.wait_stored(program, "pref.water.selectedInterval", 45)
        self.turn_to("Style")
        self.find("push button", "Delete").press()
        wait_until(lambda: len(self.stored(program).get("break_prompt_list_0", [])) > 1, 5, "the prompt to go")
        # What was read of a list may outlive it.
        Reader(self).read()
        self.screen.press("Control_L", "w")
        self.wait_closed()
        self.show(program)
        self.turn_to("Water")
        self.click("combo box", "Mode")
        self.find("list item", "Timing")

    def test_the_water_panel(self):
        program = self.launch({"pref.work.time": 60, "pref.water.enable": True,
                               "pref.water.lastShowDate": time.time()}, speed=1)
        reader = Reader(self)
        item = program.item()
        item.click_line(item.line("Water (").id)
        self.accessibility.window("Water Reminder")
        amounts = [("radio button", f"{amount}ml") for amount in (50, 100, 150, 200, 250, 300, 350, 400, 500)]
        answers = [("push button", "Skip"), ("push button", "Done")]
        told = wait_until(lambda: [tuple(one[:2]) for one in reader.read() if one[0] in OPERABLE], 5, "the panel")
        self.assertEqual(told, [("push button", "Close"), *amounts, *answers])
        self.assert_told(reader.read(), "water panel")

    def test_a_break(self):
        self.launch({"pref.work.time": 1, "custom_break_prompt": True, "break_prompt_text": "look\\nfar"}, speed=20)
        reader = Reader(self)
        window = self.accessibility.window("1", seconds=20)
        wait_until(lambda: window.find("push button", "Skip"), 5, "the break to be seen")
        told = self.assert_told(reader.read(), "break")
        self.assertEqual(told, [("link", "Water Reminder"), ("push button", "Skip")])
        texts = [element[1] for element in reader.read() if element[0] == "label"]
        self.assertIn("look\nfar", texts)
        self.assertTrue(any(text.count(":") == 1 and text[-1].isdigit() for text in texts), texts)
        self.wait_for_keys_to_count()
        self.assertEqual(reader.after(lambda: self.screen.press("Tab")), ("link", "Water Reminder"))
        self.assertEqual(reader.after(lambda: self.screen.press("Tab")), ("push button", "Skip"))


if __name__ == "__main__":
    main()
