#!/usr/bin/python3
"""The preferences window of the real program: every control by clicks and keys, what it stores and what it sets in
motion; how the window comes, goes and follows what others store."""
import json
import signal
import time
from pathlib import Path

from preferences_support import PANES, WORK, PreferencesTest
from support import main, wait_until
from virtual_desktop import Box

MINIMUM = (480, 400)
IDLE = 20               # seconds until a view that shows nothing ends
MORE_MEMORY = 12_000    # kB that may stay in use after the window was open
EPOCH = 978307200       # of the stored time points: the start of 2001
ENTRY = Path(__file__).resolve().parents[2] / "packaging/app.orvane.Kelpa.desktop.in"
BREAKS = "Breaks from one long break to the next"


class Panes(PreferencesTest):
    def test_general(self):
        program = self.open()
        item = program.item()
        self.assertRegex(item.label(), r"\d\d:\d\d")
        self.click("check box", "Show time in StatusBar")
        self.wait_stored(program, "show_time_in_status_bar", False)
        wait_until(lambda: item.label() == "", 3, "the time to leave the tray")
        self.screen.press("space")
        self.wait_stored(program, "show_time_in_status_bar", True)
        wait_until(lambda: item.label() != "", 3, "the time to come back")
        self.screen.press("Tab")
        self.screen.press("Return")
        self.wait_stored(program, "auto_check_update", False)
        self.assertNotIn("checked", self.find("check box", "Launch at login").states())
        self.click("check box", "Launch at login")
        self.wait_stored(program, "launch_at_login", True)
        self.assertIn("checked", self.find("check box", "Launch at login").states())

    def test_workflow(self):
        program = self.open(pane="Workflow")
        self.enter("text", WORK, "30")
        program.wait_for("ticktack timer start 1800$", 5)
        self.wait_stored(program, "pref.work.time", 30)
        # What is still being typed counts after a pause, and half a number never.
        self.enter("text", WORK, "45", end=None)
        program.wait_for("ticktack timer start 2700$", 5)
        self.assertEqual(program.count("ticktack timer start 240$"), 0)
        self.screen.press("Up")
        self.wait_stored(program, "pref.work.time", 46)
        box = self.find("text", WORK).box()
        self.screen.click(box.x + box.width - 10, box.y + box.height - 9)
        self.wait_stored(program, "pref.work.time", 45)
        self.wait_shown(WORK, "45")

        self.enter("text", "Length of a short break in seconds", "90", end="Tab")
        self.wait_stored(program, "pref.break.time", 90)
        self.enter("text", BREAKS, "3", end="Tab")
        self.wait_stored(program, "pref.short.break.times", 3)
        self.screen.type("x12")     # on the way, no letter gets in
        self.screen.press("Return")
        self.wait_stored(program, "pref.long.break.time", 12)

        text = self.find("text", "Custom break prompt")
        self.assertIn("read only", text.states())
        self.click("check box", "Custom break prompt")
        self.wait_stored(program, "custom_break_prompt", True)
        wait_until(lambda: "read only" not in text.states(), 3, "the text to be editable")
        self.enter("text", "Custom break prompt", "go out")
        self.wait_stored(program, "break_prompt_text", "go out")
        for label, key, value in (("Force for long breaks(skip button will not display)", "force_long_break", True),
                                  ("Restart timer after Mac awake", "restart_timer_after_awake", False),
                                  ("Stop timer after Mouse stop for 5 mins", "stop_timer_after_mouse_stop", True),
                                  ("Show a new day prompt", "show_new_day_tip", True)):
            self.click("check box", label)
            self.wait_stored(program, key, value)

    def test_a_number_half_a_second_old_counts_when_the_session_ends(self):
        program = self.open(pane="Workflow")
        self.enter("text", WORK, "39", end=None)
        wait_until(lambda: self.find("text", WORK).text() == "39", 2, "the number in the field")
        # Whoever shows it has told the program, which takes that in before it takes a question.
        self.assertEqual(self.ask("status")[0], 0)
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.process.wait(5), 0)
        self.assertEqual(self.stored(program)["pref.work.time"], 39)

    def test_a_number_that_the_cycle_cannot_run_with_is_refused_with_a_reason(self):
        program = self.open({"pref.short.break.times": 4}, pane="Workflow")
        for name, kept, wrong, problem in ((WORK, "60", "601", "Please enter a number from 1 to 600."),
                                           (BREAKS, "4", "2 0", "Please enter a number from 1 to 100.")):
            self.enter("text", name, wrong, end=None)
            self.find("alert message", problem)
            self.assertEqual(self.find("text", name).description(), problem)
            self.screen.press("Tab")
            self.wait_shown(name, kept)
        self.assertEqual((self.stored(program)["pref.work.time"], self.stored(program)["pref.short.break.times"]), (60, 4))
        self.assertEqual(program.count("ticktack timer start"), 1, "the work period began again")

    def test_style(self):
        program = self.open(pane="Style")
        key = "break_prompt_list_1"
        self.click("combo box", "Break Style")
        self.click("list item", "Relaxation")
        self.wait_stored(program, "break_style", 1)
        first = "今天心情放假，工作也跟着轻松一下。"
        self.find("list item", first)
        for enter in "Return", "KP_Enter":
            self.screen.press(enter)
            self.find("list item", "Relaxation")
            self.screen.press("Down")
            self.screen.press(enter)
            self.wait_stored(program, "break_style", 2)
            wait_until(lambda: not self.window.find("list item", "Relaxation"), 3, "the list to close")
            self.screen.press("Up")
            self.wait_stored(program, "break_style", 1)
        self.screen.press("Down")
        self.wait_stored(program, "break_style", 2)
        self.screen.press("Up")
        self.wait_stored(program, "break_style", 1)
        self.find("list item", first)

        self.enter("text", "Add", "read a page")
        wait_until(lambda: self.stored(program).get(key, [None])[0] == "read a page", 5, "the new prompt on top")
        self.find("list item", "read a page")
        self.click_into("list item", "read a page")
        self.screen.press("F2")
        self.screen.press("Control_L", "a")
        self.screen.type("walk")
        self.screen.press("Escape")
        self.assertEqual(self.stored(program)[key][0], "read a page", "Escape keeps what was")
        self.click("list item", "read a page", times=2)
        self.wait_editing()
        self.screen.press("Control_L", "a")
        self.screen.type("walk")
        self.screen.press("Return")
        wait_until(lambda: self.stored(program)[key][0] == "walk", 5, "the edited prompt")
        self.screen.press("Down")
        self.screen.press("Delete")
        wait_until(lambda: first not in self.stored(program)[key], 5, "the second prompt to go")
        self.assertEqual(self.stored(program)[key][0], "walk")
        self.click("push button", "Edit", description="walk")
        self.wait_editing()
        self.screen.press("Control_L", "a")
        self.screen.type("stroll")
        self.click("push button", "Cancel")
        self.find("push button", "Delete", description="walk")
        self.assertEqual(self.stored(program)[key][0], "walk", "Cancel keeps what was")
        self.click("push button", "Delete", description="walk")
        wait_until(lambda: "walk" not in self.stored(program)[key], 5, "the first prompt to go")
        self.assertEqual(len(self.stored(program)[key]), 9)
        self.click("push button", "Reset to the built-in prompts")
        wait_until(lambda: len(self.stored(program)[key]) == 10, 5, "the built-in prompts")

        self.click_into("radio button", "New Day")
        morning = "虽然是新的一天，但我的工作情绪还在昨天。"
        self.find("list item", morning)
        self.enter("text", "Add", "wake up", end=None)
        self.click("push button", "Add")
        new_day = "new_day_break_prompt_list_1"
        wait_until(lambda: self.stored(program).get(new_day, [None])[0] == "wake up", 5, "the prompt of the morning")
        self.assertEqual(len(self.stored(program)[new_day]), 11)
        self.assertEqual(len(self.stored(program)[key]), 10, "the other list stayed as it was")
        self.click_into("radio button", "New Day")
        self.screen.press("Left")
        self.find("list item", first)

    def test_a_key_goes_on_from_the_one_before_it_also_where_the_program_is_slower(self):
        program = self.open({"break_style": 1}, pane="Style")
        style, after = self.find("combo box", "Break Style"), self.find("radio button", "Break")
        self.click_into("radio button", "Break")
        for _ in range(8):
            self.screen.press("Shift_L", "Tab")
            wait_until(lambda: "focused" in style.states(), 3, "the style to have the keyboard")
            for number, key in enumerate(("Down", "Up") * 20):
                program.process.send_signal(signal.SIGSTOP)
                self.screen.press(key)
                program.process.send_signal(signal.SIGCONT)
                self.settle(number % 10 * 0.0002)       # enough for some of its answers
            self.screen.press("Tab")
            wait_until(lambda: "focused" in after.states(), 5, "the window to take in all keys")
            self.assertEqual(self.ask("status")[0], 0)  # and the program what came of them
            self.wait_stored(program, "break_style", 1, seconds=3)
            wait_until(lambda: style.description() == "Relaxation", 3, "the style to be shown")

    def wait_editing(self):
        wait_until(lambda: "focused" in self.find("text", "Edit").states(), 3, "the prompt to be edited")

    def test_a_list_without_prompts_stays_empty_until_it_is_reset(self):
        program = self.open({"break_prompt_list_0": ["", "last", "last"]}, pane="Style")
        self.click_into("list item", "last")
        self.screen.press("Delete")
        self.wait_stored(program, "break_prompt_list_0", [""])
        wait_until(lambda: self.window.find("list item", "last") is None, 5, "the list to show that")
        wait_until(lambda: "focused" in self.find("list item").states(), 5, "what is left to have the keyboard")
        self.screen.press("Delete")
        self.wait_stored(program, "break_prompt_list_0", [])
        wait_until(lambda: self.window.find("list item") is None, 5, "the list to be empty")
        self.click("push button", "Reset to the built-in prompts")
        wait_until(lambda: len(self.stored(program)["break_prompt_list_0"]) == 11, 5, "the built-in prompts")

    def test_a_prompt_with_line_breaks_is_shown_in_lines(self):
        self.open({"break_prompt_list_0": ["one", "one\\ntwo\\nthree", "long " * 60]}, pane="Style")
        one, three, long = (item.box() for item in self.find("list", "Break Prompts").children())
        self.assertEqual(self.find("list item", "one\ntwo\nthree").box(), three)
        self.assertGreater(three.height, one.height + 20)
        self.assertGreater(long.height, one.height + 20)

    def test_nothing_of_a_prompt_is_drawn_outside_the_list(self):
        self.open({"break_prompt_list_0": [f"prompt {number}" for number in range(40)]}, pane="Style")
        self.click_into("list item", "prompt 0")
        reset, window = self.find("push button", "Reset to the built-in prompts").box(), self.on_screen()
        left = reset.x + reset.width + 10
        beside = Box(left, reset.y, window.x + window.width - 60 - left, reset.height)
        before = self.screen.picture(beside)
        for key, last in (("End", "prompt 39"), ("Home", "prompt 0"), ("End", "prompt 39")):
            self.screen.press(key)
            element = self.find("list item", last)
            wait_until(lambda: "focused" in element.states(), 3, f"{last!r} to have the keyboard")
            self.settle(0.3)    # while it scrolls
            self.assertIsNone(before.differs(self.screen.picture(beside)))

    def test_water(self):
        program = self.open(pane="Water")
        item = program.item()
        self.assertIsNone(item.line("Water ("))
        self.click("check box", "Enable drink water reminder")
        self.wait_stored(program, "pref.water.enable", True)
        wait_until(lambda: item.line("Water ("), 3, "the water line in the menu")
        self.click("push button", "Increase")
        self.wait_stored(program, "pref.water.target", 1550)
        self.enter("text", "Target", "2010")
        self.wait_stored(program, "pref.water.target", 2000)
        self.wait_shown("Target", "2000")
        self.click_into("radio button", "45min")
        self.wait_stored(program, "pref.water.selectedInterval", 45)
        self.screen.press("Right")
        self.wait_stored(program, "pref.water.selectedInterval", 60)
        self.assertIn("checked", self.find("radio button", "60min").states())

        self.click_into("text", "Start time")
        self.screen.press("Left")       # from the minutes, which a click in the middle chooses
        self.screen.type("0615")
        self.wait_clock(program, "pref.water.interval.start", (6, 15))
        self.screen.press("Tab")
        self.screen.press("Down")
        self.wait_clock(program, "pref.water.interval.end", (19, 0))

        self.click("combo box", "Mode")
        self.find("list item", "Timing")
        self.screen.press("Down")
        self.screen.press("Return")
        self.wait_stored(program, "pref.water.mode", 1)
        wait_until(lambda: not self.window.find("text", "Start time"), 3, "the working hours to go")

        self.click("check box", "Enable drink water reminder")
        wait_until(lambda: item.line("Water (") is None, 3, "the water line to leave the menu")

    def test_time_points(self):
        program = self.open({"pref.water.mode": 1}, pane="Water")
        times = [f"{hour:02}:00" for hour in range(9, 20)]
        self.assertEqual(self.tiles(), times)
        self.click("push button", "Remove this time 13:00")
        times.remove("13:00")
        wait_until(lambda: self.tiles() == times, 5, "the tile to go")
        wait_until(lambda: self.time_points(program) == times, 5, "the time to be forgotten")
        self.click("push button", "Add a time")
        self.type_time("2130", "Escape")
        times.append("21:30")
        wait_until(lambda: self.tiles() == times, 5, "the new tile")
        wait_until(lambda: self.time_points(program) == times, 5, "the new time")
        self.assertTrue(self.on_screen(), "Escape closed the whole window")
        # A click beside the popover closes it as well, and however it is closed its time counts.
        self.click("push button", "Add a time")
        self.type_time("0815")
        self.click("heading", "Options")
        times.insert(0, "08:15")
        wait_until(lambda: self.tiles() == times, 5, "the earlier tile")
        # So does whatever closes the window over it.
        for time, close in (("07:30", lambda: self.screen.press("Control_L", "w")),
                            ("06:45", lambda: self.screen.close_window(self.on_screen().id))):
            self.click("push button", "Add a time")
            self.type_time(time.replace(":", ""))
            close()
            self.wait_closed()
            times.insert(0, time)
            wait_until(lambda: self.time_points(program) == times, 5, "the time of the closed window")
            self.show(program)
            self.turn_to("Water")
            wait_until(lambda: self.tiles() == times, 5, "its tile")

    def tiles(self):
        points = self.window.find("list", "Time points")
        return [one.name() for one in points.children() if one.role() == "list item"]

    def type_time(self, digits, *end):
        wait_until(lambda: "focused" in self.find("text", "Add a time").states(), 3, "the popover")
        self.screen.type(digits)
        wait_until(lambda: self.find("text", "Add a time").text() == f"{digits[:2]}:{digits[2:]}", 3, "the time")
        for key in end:
            self.screen.press(key)

    def time_points(self, program):
        stamps = json.loads(self.stored(program)["pref.water.selectedTimings"])
        return sorted(time.strftime("%H:%M", time.gmtime(stamp + EPOCH)) for stamp in stamps)

    def wait_clock(self, program, key, clock):
        def stored():
            return time.gmtime(float(self.stored(program).get(key, 0)))[3:5]

        wait_until(lambda: stored() == clock, 5, f"{key} to be {clock}")

    def test_twelve_hours(self):
        self.open({"pref.water.mode": 0}, pane="Water", LC_ALL="", LC_TIME="en_US.UTF-8", LANG="C.UTF-8")
        start = self.find("text", "Start time")
        self.assertEqual(start.text().replace("\u202f", " "), "7:00 AM")
        self.click_into("text", "Start time")
        self.screen.press("Right")
        self.screen.type("p")
        wait_until(lambda: start.text().endswith("PM"), 3, "the afternoon")

    def test_about(self):
        folder = Path(self.session.folder)
        opener, opened = folder / "xdg-open", folder / "opened"
        opener.write_text(f"#!/bin/sh\necho \"$1 ${{QT_QPA_PLATFORM-unset}}\" >{opened}\n")
        opener.chmod(0o755)
        path = f"{folder}:{self.session.environment['PATH']}"
        program = self.open(pane="About", PATH=path)
        names = [one.name() for one in self.window.walk()]
        self.assertTrue(any(name.startswith("v0.") for name in names), names)
        self.assertTrue(any(name.startswith("Copyright © ") for name in names), names)
        self.click("link", "Release Notes")
        wait_until(lambda: opened.exists() and opened.read_text(), 5, "the browser")
        self.assertRegex(opened.read_text(), r"^https://\S+ unset$")
        self.screen.press("Control_L", "w")
        self.wait_closed()

        item = program.item()
        item.click_line(item.line("About...").id)
        panel = self.accessibility.window("Kelpa")
        self.assertEqual([one.name() for one in panel.walk() if one.role() == "link"], ["Release Notes"])
        wait_until(lambda: self.screen.focus() == "Kelpa", 5, "the panel to have the keyboard")
        self.screen.press("Tab")
        wait_until(lambda: "focused" in panel.find("link").states(), 3, "the link to have the keyboard")
        self.screen.press("Escape")
        wait_until(lambda: not self.screen.titled(lambda title: title == "Kelpa"), 3, "the panel to close")
        self.assertFalse(program.ended())


class Windows(PreferencesTest):
    def test_it_is_an_ordinary_window(self):
        program = self.open()
        window = self.on_screen()
        resource = self.screen.display.create_resource_object("window", window.id)
        name, kind = resource.get_wm_class()
        self.assertEqual(name, "kelpa")
        self.assertIn(f"\nStartupWMClass={kind}\n", ENTRY.read_text(), "desktops would not know whose window it is")
        self.assertFalse(resource.get_attributes().override_redirect)
        self.assertIn(window.id, self.screen.property(self.screen.root.id, "_NET_CLIENT_LIST"))
        # Most window managers go by the first, those that tile let a dialog float wherever it stands.
        types = [self.screen.display.get_atom_name(one) for one in self.screen.property(window.id, "_NET_WM_WINDOW_TYPE")]
        self.assertEqual(types, ["_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG"])
        hints = resource.get_wm_normal_hints()
        self.assertEqual((hints.min_width, hints.min_height), MINIMUM)
        middle = (window.x + window.width / 2, window.y + window.height / 2)
        self.assertLess(abs(middle[0] - self.WIDTH / 2), 30)
        self.assertLess(abs(middle[1] - self.HEIGHT / 2), 40)

        self.screen.resize(window.id, 10, 10)
        wait_until(lambda: (self.on_screen().width, self.on_screen().height) == MINIMUM, 3, "the least size")
        self.screen.resize(window.id, 720, 500)
        wait_until(lambda: (self.on_screen().width, self.on_screen().height) == (720, 500), 3, "the other size")
        self.screen.close_window(window.id)
        self.wait_closed()
        self.assertFalse(program.ended())
        self.show(program)
        again = wait_until(self.on_screen, 5, "the window")
        self.assertEqual((again.width, again.height), (720, 500))
        self.assertLess(abs(again.x - self.WIDTH / 2 + 360) + abs(again.y - window.y), 60)

    def test_captions_of_several_lines_are_nothing_to_complain_of(self):
        program = self.launch({"pref.work.time": 60}, speed=1, environment={"LANGUAGE": "de"})
        item = program.item()
        item.click_line(item.line("Einstellungen").id)
        self.window = self.accessibility.window("Einstellungen")
        shown = wait_until(lambda: self.screen.titled(lambda title: title == "Einstellungen"), 3, "the window on the screen")
        self.screen.resize(shown[0].id, *MINIMUM)
        wait_until(lambda: self.window.box().width == MINIMUM[0], 3, "the least size")
        self.turn_to("Rhythmus")
        self.screen.press("Control_L", "w")
        wait_until(lambda: not self.screen.titled(lambda title: title == "Einstellungen"), 3, "the window to close")
        self.assertEqual(program.count("kelpa-view"), 0, program.lines())

    def test_what_another_program_changed_shows_when_it_comes_to_the_front(self):
        program = self.open({"pref.work.time": 33}, pane="Workflow")
        self.wait_shown(WORK, "33")
        self.start_terminal("-geometry", "80x24+0+0")
        program.write_settings({**self.stored(program), "pref.work.time": 700, "force_long_break": True})
        self.settle(0.3)
        self.assertEqual(self.find("text", WORK).text(), "33")
        item = program.item()
        item.click_line(item.line("Settings...").id)
        self.wait_shown(WORK, "700")
        wait_until(lambda: self.screen.focus() == "Settings", 3, "the window to come to the front")
        levels = {window.title: window.level for window in self.screen.windows()}
        self.assertGreater(levels["Settings"], levels["terminal"])
        program.write_settings({**self.stored(program), "pref.work.time": 20})
        self.screen.activate(next(w.id for w in self.screen.windows() if w.title == "terminal"))
        wait_until(lambda: "active" not in self.window.states(), 3, "the window to lie behind")
        self.screen.activate(self.on_screen().id)
        self.wait_shown(WORK, "20")

    def test_it_takes_no_memory_when_it_is_closed(self):
        program = self.launch({"pref.work.time": 60}, speed=1)
        item = program.item()
        wait_until(lambda: item.label() == "59:58", 10, "the second tick")
        before = self.memory(program)
        for _ in range(3):
            self.show(program)
            for pane in PANES:
                self.turn_to(pane)
            self.screen.press("Control_L", "w")
            self.wait_closed()
        wait_until(lambda: not self.helpers(program), IDLE + 5, "the view to end")
        self.assertLess(self.memory(program) - before, MORE_MEMORY)
        self.assertFalse(program.ended())

    def memory(self, program):
        """What the program and its helpers occupy, in kB, memory that they share with others in proportion."""
        return sum(int(line.split()[1]) for process in (program.process.pid, *self.helpers(program))
                   for line in Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()
                   if line.startswith("Pss:"))

    def test_a_second_start_opens_it(self):
        program = self.launch({"pref.work.time": 60}, speed=1)
        program.item()
        for _ in range(2):
            self.assertEqual(self.ask()[0], 0)
            self.meet()
            # Openbox says this of a window that comes again at once, and the toolkit knows nothing of it.
            self.screen.tell(self.on_screen(), "_KDE_WM_CHANGE_STATE", 1, 1)
            self.screen.press("Control_L", "w")
            self.wait_closed()
        self.assertFalse(program.ended())
        self.assertEqual(program.count("kelpa-view"), 0, program.lines())

    def test_a_break_comes_over_it_and_goes(self):
        program = self.open({"pref.work.time": 1}, pane="Style", speed=20)
        self.click_into("text", "Add")
        program.wait_for("ticktack timer timesup for 60", 20)
        wait_until(lambda: self.screen.focus() == "1", 5, "the break to have the keyboard")
        self.assertEqual(max(self.screen.windows(), key=lambda window: window.level).title, "1")
        self.screen.type("meant for nobody")
        self.settle(2.5)
        notice = self.blue_rows(self.monitors[0])[0]
        self.screen.click(notice.x + 5, notice.y + notice.height // 2)
        program.wait_for("Click new feature: Water Reminder", 3)
        wait_until(lambda: self.screen.focus() == "Settings", 5, "the preferences to have the keyboard again")
        self.assertEqual(self.find("text", "Add").text(), "")


if __name__ == "__main__":
    main()
