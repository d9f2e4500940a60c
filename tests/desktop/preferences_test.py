#!/usr/bin/python3
"""The preferences window of the real program: every control by clicks and keys, what it stores and what it sets in
motion, and what a screen reader is told of it."""
import os
import plistlib
import signal
import time
from pathlib import Path

from support import DesktopTest, main, wait_until
from virtual_desktop import Accessibility

MINIMUM = (480, 400)
IDLE = 20       # seconds until a view that shows nothing ends
PANES = ("General", "Workflow", "Style", "Water", "About")
# What cannot be operated and what only holds others.
PASSIVE = {"frame", "panel", "page tab list", "list", "label", "heading", "graphic", "filler"}


class PreferencesTest(DesktopTest):
    MONITORS = 1
    ROOM = 1
    WIDTH, HEIGHT = 1000, 860
    TRAY = False

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.accessibility = Accessibility(cls.session)
        cls.addClassCleanup(cls.accessibility.close)

    def open(self, settings=None, pane=None, speed=1, **environment):
        """Starts the program and opens its preferences from the menu."""
        program = self.launch({"pref.work.time": 60, **(settings or {})}, speed=speed, environment=environment)
        self.show(program)
        if pane:
            self.turn_to(pane)
        return program

    def show(self, program):
        item = program.item()
        item.click_line(item.line("Settings...").id)
        self.window = self.accessibility.window("Settings")
        wait_until(lambda: self.screen.focus() == "Settings", 5, "the preferences to have the keyboard")

    def on_screen(self):
        return next(iter(self.screen.titled(lambda title: title == "Settings")), None)

    # Elements

    def find(self, role, name=None, seconds=5):
        return wait_until(lambda: self.window.find(role, name), seconds, f"the {role} {name!r}")

    def click(self, role, name=None, times=1):
        box = self.find(role, name).box()
        self.screen.click(box.x + box.width // 2, box.y + box.height // 2, times=times)

    def turn_to(self, pane):
        self.click("page tab", pane)
        self.find("panel", pane)

    def enter(self, role, name, text, end="Return"):
        """Types a text in the place of what a field holds."""
        self.click(role, name)
        self.screen.press("Control_L", "a")
        self.screen.type(text)
        if end:
            self.screen.press(end)

    # Settings

    @staticmethod
    def stored(program):
        return plistlib.loads(program.settings_file().read_bytes())

    def wait_stored(self, program, key, value, seconds=5):
        wait_until(lambda: self.stored(program).get(key) == value, seconds, f"{key} to be {value!r}")

    def wait_shown(self, name, text, seconds=5):
        wait_until(lambda: self.window.find("text", name).text() == text, seconds, f"{name!r} to show {text!r}")


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
        self.click("check box", "Launch at login")
        self.wait_stored(program, "launch_at_login", True)
        self.assertIn("checked", self.find("check box", "Launch at login").states())

    def test_workflow(self):
        program = self.open(pane="Workflow")
        work = "Length of a work period in minutes"
        self.enter("text", work, "30")
        program.wait_for("ticktack timer start 1800$", 5)
        self.wait_stored(program, "pref.work.time", 30)
        # What is still being typed counts after a pause, and half a number never.
        self.enter("text", work, "45", end=None)
        program.wait_for("ticktack timer start 2700$", 5)
        self.assertEqual(program.count("ticktack timer start 240$"), 0)
        self.screen.press("Up")
        self.wait_stored(program, "pref.work.time", 46)
        box = self.find("text", work).box()
        self.screen.click(box.x + box.width - 10, box.y + box.height - 9)
        self.wait_stored(program, "pref.work.time", 45)
        self.wait_shown(work, "45")

        self.enter("text", "Breaks from one long break to the next", "0", end=None)
        problem = "Please enter a number from 1 to 100."
        wait_until(lambda: problem in [one.name() for one in self.window.walk()], 5, "the explanation")
        self.screen.press("Tab")
        self.wait_shown("Breaks from one long break to the next", "100")
        self.assertEqual(self.stored(program)["pref.short.break.times"], 100)
        self.screen.type("x12")
        self.screen.press("Return")
        self.wait_stored(program, "pref.long.break.time", 12)
        self.enter("text", "Length of a short break in seconds", "90", end="Tab")
        self.wait_stored(program, "pref.break.time", 90)

        text = self.find("text", "Custom break prompt")
        self.assertNotIn("enabled", text.states())
        self.click("check box", "Custom break prompt")
        self.wait_stored(program, "custom_break_prompt", True)
        wait_until(lambda: "enabled" in text.states(), 3, "the text to be editable")
        self.enter("text", "Custom break prompt", "go out")
        self.wait_stored(program, "break_prompt_text", "go out")
        for label, key, value in (("Force for long breaks(skip button will not display)", "force_long_break", True),
                                  ("Restart timer after Mac awake", "restart_timer_after_awake", False),
                                  ("Stop timer after Mouse stop for 5 mins", "stop_timer_after_mouse_stop", False),
                                  ("Show a new day prompt", "show_new_day_tip", True)):
            self.click("check box", label)
            self.wait_stored(program, key, value)

    def test_style(self):
        program = self.open(pane="Style")
        key = "break_prompt_list_1"
        self.click("combo box", "Break Style")
        self.click("list item", "Relaxation")
        self.wait_stored(program, "break_style", 1)
        first = "今天心情放假，工作也跟着轻松一下。"
        self.find("list item", first)
        self.screen.press("Down")
        self.wait_stored(program, "break_style", 2)
        self.screen.press("Up")
        self.wait_stored(program, "break_style", 1)
        self.find("list item", first)

        self.enter("text", "Add", "read a page")
        wait_until(lambda: self.stored(program).get(key, [None])[0] == "read a page", 5, "the new prompt on top")
        self.screen.press("Escape")
        self.find("list item", "read a page")
        self.click("list item", "read a page")
        self.screen.press("F2")
        self.screen.press("Control_L", "a")
        self.screen.type("walk")
        self.screen.press("Escape")
        self.assertEqual(self.stored(program)[key][0], "read a page", "Escape keeps what was")
        self.click("list item", "read a page", times=2)
        self.screen.press("Control_L", "a")
        self.screen.type("walk")
        self.screen.press("Return")
        wait_until(lambda: self.stored(program)[key][0] == "walk", 5, "the edited prompt")
        self.screen.press("Down")
        self.screen.press("Delete")
        wait_until(lambda: first not in self.stored(program)[key], 5, "the second prompt to go")
        walk = next(one for one in self.window.walk() if (one.name(), one.description()) == ("Delete", "walk"))
        self.click_middle(walk.box())
        wait_until(lambda: "walk" not in self.stored(program)[key], 5, "the first prompt to go")
        self.assertEqual(len(self.stored(program)[key]), 9)
        self.click("push button", "Reset to the built-in prompts")
        wait_until(lambda: len(self.stored(program)[key]) == 10, 5, "the built-in prompts")

        self.click("radio button", "New Day")
        self.find("list item", "虽然是新的一天，但我的工作情绪还在昨天。")
        self.screen.press("Left")
        self.find("list item", first)

    def test_a_prompt_with_line_breaks_is_shown_in_lines(self):
        self.open({"break_prompt_list_0": ["one", "one\\ntwo\\nthree", "long " * 60]}, pane="Style")
        one, three, long = (item.box() for item in self.find("list", "Break Prompts").children())
        self.assertEqual(self.find("list item", "one\ntwo\nthree").box(), three)
        self.assertGreater(three.height, one.height + 20)
        self.assertGreater(long.height, one.height + 20)

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
        self.click("radio button", "45min")
        self.wait_stored(program, "pref.water.selectedInterval", 45)
        self.screen.press("Right")
        self.wait_stored(program, "pref.water.selectedInterval", 60)
        self.assertIn("checked", self.find("radio button", "60min").states())

        self.click("text", "Start time")
        self.screen.press("Left")       # from the minutes, which a click in the middle chooses
        self.screen.type("0615")
        wait_until(lambda: self.clock(program, "pref.water.interval.start") == (6, 15), 5, "the start of the hours")
        self.screen.press("Tab")
        self.screen.press("Down")
        wait_until(lambda: self.clock(program, "pref.water.interval.end") == (19, 0), 5, "the end of the hours")

        self.click("combo box", "Mode")
        self.screen.press("Down")
        self.screen.press("Return")
        self.wait_stored(program, "pref.water.mode", 1)
        wait_until(lambda: not self.window.find("text", "Start time"), 3, "the working hours to go")
        self.click("push button", "Remove this time 13:00")
        wait_until(lambda: not self.window.find("list item", "13:00"), 5, "the tile to go")
        count = len(self.stored(program)["pref.water.selectedTimings"])
        self.click("push button", "Add a time")
        self.find("text", "Add a time")
        self.screen.type("2130")
        self.screen.press("Escape")
        self.find("list item", "21:30")
        self.assertEqual(len(self.stored(program)["pref.water.selectedTimings"]), count + 1)
        self.assertTrue(self.on_screen(), "Escape closed the whole window")

        self.click("check box", "Enable drink water reminder")
        wait_until(lambda: item.line("Water (") is None, 3, "the water line to leave the menu")

    def clock(self, program, key):
        value = self.stored(program).get(key)
        stamp = float(value) if value is not None else 0
        return time.localtime(stamp)[3:5]

    def test_twelve_hours(self):
        self.open({"pref.water.mode": 0}, pane="Water", LC_ALL="", LC_TIME="en_US.UTF-8", LANG="C.UTF-8")
        start = self.find("text", "Start time")
        self.assertEqual(start.text().replace("\u202f", " "), "7:00 AM")
        self.click("text", "Start time")
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
        wait_until(lambda: not self.on_screen(), 3, "the window to close")

        item = program.item()
        item.click_line(item.line("About...").id)
        panel = self.accessibility.window("Kelpa")
        self.assertEqual([one.name() for one in panel.walk() if one.role() == "link"], ["Release Notes"])
        wait_until(lambda: self.screen.focus() == "Kelpa", 5, "the panel to have the keyboard")
        self.screen.press("Escape")
        wait_until(lambda: not self.screen.titled(lambda title: title == "Kelpa"), 3, "the panel to close")
        self.assertFalse(program.ended())


class Windows(PreferencesTest):
    def test_it_is_an_ordinary_window(self):
        program = self.open()
        window = self.on_screen()
        resource = self.screen.display.create_resource_object("window", window.id)
        self.assertEqual(resource.get_wm_class()[0], "kelpa")
        self.assertFalse(resource.get_attributes().override_redirect)
        self.assertIn(window.id, self.screen.property(self.screen.root.id, "_NET_CLIENT_LIST"))
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
        wait_until(lambda: not self.on_screen(), 3, "the window to close")
        self.assertFalse(program.ended())
        self.show(program)
        again = wait_until(self.on_screen, 5, "the window")
        self.assertEqual((again.width, again.height), (720, 500))
        self.assertLess(abs(again.x - self.WIDTH / 2 + 360) + abs(again.y - window.y), 60)

    def test_what_another_program_changed_shows_when_it_comes_to_the_front(self):
        program = self.open({"pref.work.time": 33}, pane="Workflow")
        work = "Length of a work period in minutes"
        self.wait_shown(work, "33")
        terminal = self.session.spawn(["xterm", "-T", "terminal", "-geometry", "80x24+0+0"])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: self.screen.focus() == "terminal", 10, "the terminal to have the keyboard")
        program.write_settings({**self.stored(program), "pref.work.time": 700, "force_long_break": True})
        self.settle(0.5)
        self.assertEqual(self.find("text", work).text(), "33")
        item = program.item()
        item.click_line(item.line("Settings...").id)
        self.wait_shown(work, "700")
        wait_until(lambda: self.screen.focus() == "Settings", 3, "the window to come to the front")
        levels = {window.title: window.level for window in self.screen.windows()}
        self.assertGreater(levels["Settings"], levels["terminal"])
        # Out of range it is shown as it is, and passing by changes nothing.
        self.click("text", work)
        self.screen.press("Tab")
        self.settle(0.5)
        self.assertEqual(self.stored(program)["pref.work.time"], 700)
        program.write_settings({**self.stored(program), "pref.work.time": 20})
        self.screen.activate(next(w.id for w in self.screen.windows() if w.title == "terminal"))
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the terminal")
        self.screen.activate(self.on_screen().id)
        self.wait_shown(work, "20")

    def test_a_crash_brings_it_back(self):
        program = self.open(pane="Workflow")
        view, = self.helpers(program, "kelpa-view")
        self.enter("text", "Length of a short break in seconds", "77")
        self.wait_stored(program, "pref.break.time", 77)
        os.kill(view, signal.SIGKILL)
        program.wait_for("kelpa-view was ended by signal 9", 5)
        wait_until(lambda: self.helpers(program, "kelpa-view") not in ([], [view]) and self.on_screen(), 5, "another view")
        self.window = wait_until(lambda: next((one for one in self.accessibility.windows() if one.name() == "Settings" and
                                               one.states()), None), 5, "the window to be told again")
        self.turn_to("Workflow")
        self.wait_shown("Length of a short break in seconds", "77")

    def test_it_takes_no_memory_when_it_is_closed(self):
        program = self.launch({"pref.work.time": 60}, speed=1)
        program.item()
        self.settle(1)
        before = self.memory(program)
        for _ in range(3):
            self.show(program)
            for pane in PANES:
                self.turn_to(pane)
            self.screen.press("Control_L", "w")
            wait_until(lambda: not self.on_screen(), 3, "the window to close")
        self.assertTrue(self.helpers(program, "kelpa-view"))
        wait_until(lambda: not self.helpers(program, "kelpa-view"), IDLE + 5, "the view to end")
        self.assertLess(self.memory(program) - before, 2048, "kB more than before")

    @staticmethod
    def memory(program):
        """Resident memory of the program itself, in kB."""
        status = Path(f"/proc/{program.process.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0])

    def test_a_break_comes_over_it_and_goes(self):
        program = self.open({"pref.work.time": 1}, pane="Style", speed=20)
        self.click("text", "Add")
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


class Reading(PreferencesTest):
    def test_everything_has_a_name_and_a_role(self):
        self.open({"pref.water.enable": True, "pref.water.mode": 1})
        nameless, seen = [], {}
        for pane in PANES:
            self.turn_to(pane)
            for one in self.window.walk():
                states = one.states()
                if "focusable" not in states and not one.actions():
                    continue
                seen.setdefault(pane, []).append(one)
                if not one.name() or one.role() in ("", "unknown", "invalid", "filler"):
                    nameless.append((pane, one))
        self.assertEqual(nameless, [])
        roles = {pane: [one.role() for one in elements if one.role() != "page tab"] for pane, elements in seen.items()}
        self.assertEqual(roles["General"], ["check box"] * 3)
        self.assertEqual(roles["Workflow"].count("text"), 5)
        self.assertEqual(roles["Workflow"].count("check box"), 5)
        self.assertEqual(roles["Style"].count("radio button"), 2)
        self.assertGreaterEqual(roles["Style"].count("list item"), 5)
        self.assertEqual(roles["Water"].count("combo box"), 1)
        self.assertEqual(roles["Water"].count("push button"), 2 + 11 + 1)
        self.assertEqual(roles["About"].count("link"), 1)

    def test_the_keyboard_reaches_everything_and_shows_where_it_is(self):
        self.open()
        expected = {"General": 1 + 3, "Workflow": 1 + 5 + 4, "Style": 1 + 1 + 1 + 2 + 3 + 1, "Water": 1 + 1 + 3 + 1 + 2 + 1}
        for pane, stops in expected.items():
            self.turn_to(pane)
            self.screen.click(self.on_screen().x + 3, self.on_screen().y + 100)
            shown = [self.screen.picture(self.on_screen())]
            reached = []
            for _ in range(stops):
                self.screen.press("Tab")
                wait_until(lambda: shown[-1].differs(self.screen.picture(self.on_screen())), 2,
                           f"the focus to show on {pane}, after {reached}")
                shown.append(self.screen.picture(self.on_screen()))
                reached.append(next((one for one in self.window.walk() if "focused" in one.states()), None))
            self.assertNotIn(None, reached, pane)
            self.assertEqual(len({one.path for one in reached}), stops, f"{pane}: {reached}")
            self.screen.press("Tab")
            self.settle(0.2)
            self.assertIn("focused", reached[0].states(), f"{pane}: after {reached} it does not begin again")


if __name__ == "__main__":
    main()
