#!/usr/bin/python3
"""The preferences: every control by pressing and typing, and what it stores."""
import json

from macos_support import COMMAND, ON_MAC, START, MacTest, anywhere, main

PANES = ("General", "Workflow", "Style", "Water", "About")
WORK = "Length of a work period in minutes"
SHORT = "Length of a short break in seconds"
BREAKS = "Breaks from one long break to the next"
LONG = "Length of a long break in minutes"
# Seconds from 1970 to the start of 2001, from which the stored times are counted.
EPOCH = 978307200
DAY = START - START % 86400


class PreferencesTest(MacTest):
    def open(self, pane, settings=None, **environment):
        program = self.launch(settings, **environment)
        program.settings(pane)
        return program

    def find(self, program, kind, name=None):
        return program.window("Settings").find(kind, name)

    def stored(self, program, key):
        return program.setting(key)

    def assert_stored(self, program, key, value):
        stored = self.stored(program, key)
        self.assertEqual((type(stored), stored), (type(value), value), key)


class Panes(PreferencesTest):
    @anywhere
    def test_switches(self):
        program = self.launch()
        for pane, label, key, before in (
                ("General", "Show time in StatusBar", "show_time_in_status_bar", True),
                ("General", "Auto check update for Kelpa", "auto_check_update", True),
                ("General", "Launch at login", "launch_at_login", False),
                ("Workflow", "Custom break prompt", "custom_break_prompt", False),
                ("Workflow", "Force for long breaks(skip button will not display)", "force_long_break", False),
                ("Workflow", "Restart timer after Mac awake", "restart_timer_after_awake", True),
                ("Workflow", "Stop timer after Mouse stop for 5 mins", "stop_timer_after_mouse_stop", False),
                ("Workflow", "Show a new day prompt", "show_new_day_tip", False),
                ("Water", "Enable drink water reminder", "pref.water.enable", False)):
            if ON_MAC and key == "launch_at_login":
                continue    # the system would be asked in earnest
            switch = program.settings(pane).find("switch", label)
            self.assertEqual(switch.value, before, label)
            for on in (not before, before):
                switch.set(on)
                self.assert_stored(program, key, on)
                self.assertEqual(self.find(program, "switch", label).value, on)

    def test_numbers(self):
        program = self.open("Workflow")
        for name, key, before, typed in ((WORK, "pref.work.time", 25, 30), (SHORT, "pref.break.time", 300, 90),
                                         (BREAKS, "pref.short.break.times", 4, 3), (LONG, "pref.long.break.time", 15, 12)):
            field = self.find(program, "field", name)
            self.assertEqual(field.value, str(before))
            field.type(str(typed), end="Tab")
            self.assert_stored(program, key, typed)
            stepper = self.find(program, "stepper", name)
            stepper.set(-1)
            self.assert_stored(program, key, typed - 1)
            stepper.set(1)
            self.assert_stored(program, key, typed)
            field.click_into()
            program.press("Up", "Up", "Down")
            self.assert_stored(program, key, typed + 1)
            self.assertEqual(self.find(program, "field", name).value, str(typed + 1))
        self.assertIn("ticktack timer start 1800", program.log())

    def test_a_number_that_is_being_typed_counts_after_a_pause(self):
        program = self.open("Workflow")
        self.find(program, "field", WORK).type("45", end=None)
        self.assertNotIn("ticktack timer start 240", program.log())
        program.pass_time(2)
        self.assert_stored(program, "pref.work.time", 45)

    def test_command_w_closes_the_window(self):
        program = self.open("Workflow")
        program.press("w", modifiers=COMMAND)
        self.assertEqual(program.windows(), [])

    def test_what_another_program_stored_shows_when_the_window_comes_to_the_front(self):
        program = self.open("Workflow", {"pref.water.enable": True})
        program.choose("Water")
        program.store("break_prompt_text", "go out")
        self.find(program, "field", WORK).click_into()
        self.assertEqual(self.find(program, "field", "Custom break prompt").value, "go out")

    def test_wrong_numbers(self):
        program = self.open("Workflow")
        for name, key, kept, wrong, problem in (
                (WORK, "pref.work.time", 25, "601", "Please enter a number from 1 to 600."),
                (SHORT, "pref.break.time", 300, "4", "Please enter a number from 5 to 7200."),
                (BREAKS, "pref.short.break.times", 4, "0", "Please enter a number from 1 to 100."),
                (LONG, "pref.long.break.time", 15, "2 0", "Please enter a number from 1 to 240.")):
            self.find(program, "field", name).type(wrong, end=None)
            program.pass_time(2)
            self.assertIn(problem, program.window("Settings").texts())
            program.press("Tab")
            self.assertEqual(self.find(program, "field", name).value, str(kept))
            program.pass_time(5)    # to read it
            self.assertNotIn(problem, program.window("Settings").texts())
            self.assertIn(self.stored(program, key), (None, kept))

    def test_the_custom_prompt(self):
        program = self.open("Workflow")
        self.assertFalse(self.find(program, "field", "Custom break prompt").enabled)
        self.find(program, "switch", "Custom break prompt").set(True)
        self.find(program, "field", "Custom break prompt").type("go out")
        self.assert_stored(program, "break_prompt_text", "go out")

    def test_about(self):
        program = self.open("About")
        window = program.window("Settings")
        self.assertEqual(window.texts(), ["Kelpa", "v0.1.0(1)", "Copyright © 2026 The Kelpa Authors."])
        self.assertEqual(len(window.all("picture")), 1)
        window.find("link", "Release Notes").press()
        self.assertRegex(program.notes("open")[0]["address"]["absoluteString"], "^https://")

    def test_what_is_being_typed_counts_when_the_window_closes(self):
        program = self.open("Workflow")
        self.find(program, "field", WORK).type("45", end=None)
        program.window("Settings").close()
        self.assert_stored(program, "pref.work.time", 45)
        # And what was wrong is not there any more.
        program.settings()
        self.find(program, "field", WORK).type("601", end=None)
        program.pass_time(2)
        program.window("Settings").close()
        self.assertEqual([text for text in program.settings().texts() if text.startswith("Please")], [])
        self.assertEqual(self.find(program, "field", WORK).value, "45")

    @anywhere
    def test_the_window_comes_back_as_it_was_left(self):
        program = self.open("Workflow")
        window = program.window("Settings")
        self.assertGreaterEqual(window.frame[2], 480)
        window.close()
        self.assertEqual(program.windows(), [])
        again = program.settings()
        self.assertEqual(again.number, window.number)
        self.assertTrue(again.key)
        for pane in PANES:
            program.turn_to(pane)


class Style(PreferencesTest):
    KEY = "break_prompt_list_0"

    def prompts(self, program):
        return self.stored(program, self.KEY)

    def choose_row(self, program, row):
        self.find(program, "table", "Break Prompts").set(row)

    def press(self, program, button):
        self.find(program, "button", button).press()

    @anywhere
    def test_style(self):
        program = self.open("Style")
        styles = self.find(program, "list", "Break Style")
        self.assertEqual((styles.value, styles.choices), ("Default", ["Default", "Relaxation", "Struggle"]))
        styles.set("Struggle")
        self.assert_stored(program, "break_style", 2)
        first = program.window("Settings").texts()[2]
        segments = self.find(program, "segments", "Break Prompts")
        self.assertEqual((segments.value, segments.choices), ("Break", ["Break", "New Day"]))
        segments.set("New Day")
        self.assertNotEqual(program.window("Settings").texts()[2], first)
        self.assertEqual(self.find(program, "segments", "Break Prompts").value, "New Day")

    def test_add(self):
        program = self.open("Style", {self.KEY: ["one"]})
        field = self.find(program, "field", "Add")
        field.type("two", end="Tab")
        self.assertEqual(self.prompts(program), ["one"], "a field that is left adds nothing")
        self.assertEqual(self.find(program, "field", "Add").value, "two")
        self.press(program, "Add")
        self.assertEqual(self.prompts(program), ["two", "one"])
        field.type("three")
        self.assertEqual(self.prompts(program), ["three", "two", "one"])
        self.assertEqual(self.find(program, "field", "Add").value, "")
        self.assertEqual(program.window("Settings").texts()[-3:], ["three", "two", "one"])

    def test_edit(self):
        program = self.open("Style", {self.KEY: ["one", "two"]})
        self.press(program, "Edit")
        self.assertEqual(len(program.window("Settings").all("field")), 1, "no prompt was chosen")
        self.choose_row(program, 1)
        self.press(program, "Edit")
        field = next(view for view in program.window("Settings").all("field") if view.value == "two")
        self.assertTrue(field.keyboard)
        self.assertEqual(self.find(program, "button", "Cancel").tip, "Cancel")
        field.type("three")
        self.assertEqual(self.prompts(program), ["one", "three"])
        self.assertEqual(self.find(program, "button", "Edit").tip, "Edit")

    def test_editing_is_given_up(self):
        program = self.open("Style", {self.KEY: ["one", "two"]})
        for give_up in (lambda: self.press(program, "Cancel"), lambda: program.press("Escape")):
            self.choose_row(program, 0)
            self.press(program, "Edit")
            next(view for view in program.window("Settings").all("field") if view.value == "one").type("three", end=None)
            give_up()
            self.assertEqual(self.prompts(program), ["one", "two"])
            self.assertEqual(program.window("Settings").texts()[-2:], ["one", "two"])
        self.assertTrue(program.window("Settings"), "Escape closed the whole window")

    @anywhere
    def test_delete_and_reset(self):
        program = self.open("Style", {self.KEY: ["one", "two", "one"]})
        self.press(program, "Delete")
        self.assertEqual(self.prompts(program), ["one", "two", "one"], "no prompt was chosen")
        self.choose_row(program, 1)
        self.press(program, "Delete")
        self.assertEqual(self.prompts(program), ["one", "one"])
        self.press(program, "Reset to the built-in prompts")
        self.assertEqual(len(self.prompts(program)), 11)


class Water(PreferencesTest):
    TIMING = {"pref.water.mode": 1, "pref.water.enable": True}

    def test_target(self):
        program = self.open("Water")
        self.find(program, "button", "Increase").press()
        self.assert_stored(program, "pref.water.target", 1550)
        self.find(program, "button", "Decrease").press()
        self.find(program, "button", "Decrease").press()
        self.assert_stored(program, "pref.water.target", 1450)
        self.find(program, "field", "Target").type("2010")
        self.assert_stored(program, "pref.water.target", 2000)
        self.assertEqual(self.find(program, "field", "Target").value, "2000")

    @anywhere
    def test_interval(self):
        program = self.open("Water", {"pref.water.enable": True})
        self.assertTrue(self.find(program, "radio button", "15min").value)
        self.find(program, "radio button", "45min").press()
        self.assert_stored(program, "pref.water.selectedInterval", 45)
        chosen = [view.name for view in program.window("Settings").all("radio button") if view.value]
        self.assertEqual(chosen, ["45min"])

    def test_hours_typed(self):
        program = self.open("Water", {"pref.water.enable": True})
        start = self.find(program, "time", "Start time")
        self.assertEqual(start.value, "07:00")
        start.set(1)
        start.set(3)
        self.assertEqual(self.find(program, "time", "Start time").value, "13:00")
        self.assertEqual(float(self.stored(program, "pref.water.interval.start")) % 86400, 13 * 3600)
        self.find(program, "time", "End time").set("21:45")
        self.assertEqual(float(self.stored(program, "pref.water.interval.end")) % 86400, 21.75 * 3600)

    @anywhere
    def test_mode(self):
        program = self.open("Water", {"pref.water.enable": True})
        self.find(program, "list", "Mode").set("Timing")
        self.assert_stored(program, "pref.water.mode", 1)
        self.assertEqual(program.window("Settings").all("time"), [])
        self.assertEqual(self.tiles(program), [f"{hour:02}:00" for hour in range(9, 20)])

    def tiles(self, program):
        return [text for text in program.window("Settings").texts() if text[2:3] == ":"]

    def times(self, program):
        stamps = json.loads(self.stored(program, "pref.water.selectedTimings"))
        return sorted(f"{int(stamp + EPOCH) % 86400 // 3600:02}:{int(stamp + EPOCH) % 3600 // 60:02}" for stamp in stamps)

    @anywhere
    def test_times_go(self):
        program = self.open("Water", self.TIMING)
        self.find(program, "button", "Remove this time 13:00").press()
        self.assertNotIn("13:00", self.tiles(program))
        self.assertEqual(self.times(program), self.tiles(program))

    def test_times_come(self):
        program = self.open("Water", self.TIMING)
        self.find(program, "button", "Add a time").press()
        picker = program.window("popover").find("time", "Add a time")
        self.assertEqual(picker.value, "10:00", "the next full hour")
        self.find(program, "button", "Add a time").press()
        self.assertEqual(len(program.windows("popover")), 1)
        picker.set("21:30")
        self.assertNotIn("21:30", self.tiles(program))
        program.click_beside()
        self.assertIn("21:30", self.tiles(program))
        self.assertEqual(program.windows("popover"), [])
        self.find(program, "button", "Add a time").press()
        program.window("popover").find("time").set("08:15")
        program.window("Settings").close()
        self.assertIn("08:15", self.times(program))
        self.assertEqual(program.windows(), [])
        program.settings("Water")
        self.assertEqual(self.tiles(program), self.times(program))


if __name__ == "__main__":
    main()
