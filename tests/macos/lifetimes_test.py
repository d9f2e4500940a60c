#!/usr/bin/python3
"""What was made goes again: after many rounds there are as many objects as after a few."""
from macos_support import SCREENS, START, MacTest, main

ROUNDS = 100
MINUTE = 60


class Lifetimes(MacTest):
    def assert_steady(self, program, act, rounds=ROUNDS):
        """What is made once, at the first time, is no matter."""
        for _ in range(3):
            act()
        before = program.live()
        for _ in range(rounds):
            act()
        self.assertEqual(program.live(), before)

    def test_break_windows(self):
        program = self.launch({"pref.work.time": 1}, screens=SCREENS)

        def act():
            program.pass_time(MINUTE + 3)
            program.press("Escape")
            program.pass_time(3)
        self.assert_steady(program, act)
        self.assertEqual(program.log().count("skip break view"), ROUNDS + 3)

    def test_timers(self):
        program = self.launch()

        def act():
            program.choose("- Stop -")
            program.choose("- Wrok -")
        self.assert_steady(program, act)

    def test_screens_during_a_break(self):
        program = self.launch({"pref.work.time": 1, "pref.break.time": 7200}, screens=SCREENS)
        program.pass_time(MINUTE + 3)

        def act():
            program.screens(SCREENS[0])
            program.screens(*SCREENS)
        self.assert_steady(program, act)

    def test_the_water_panel(self):
        program = self.launch({"pref.water.enable": True, "pref.water.lastShowDate": float(START)})

        def act():
            program.choose("Water")
            program.pass_time(3)
            program.window("Water Reminder").find("button", "Skip").press()
            program.pass_time(3)
        self.assert_steady(program, act)

    def test_the_preferences(self):
        program = self.launch()

        def act():
            program.settings("Style")
            program.settings("Workflow").close()
        self.assert_steady(program, act)

    def test_times_and_prompts(self):
        program = self.launch({"pref.water.enable": True, "pref.water.mode": 1, "break_prompt_list_0": ["one"]})
        program.settings("Water")

        def times():
            program.window("Settings").find("button", "Add a time").press()
            program.window("popover").find("time").set("21:30")
            program.click_beside()
            program.window("Settings").find("button", "Remove this time 21:30").press()

        def prompts():
            program.window("Settings").find("field", "Add").type("two")
            program.window("Settings").find("table", "Break Prompts").set(0)
            program.window("Settings").find("button", "Delete").press()
        self.assert_steady(program, times)
        program.turn_to("Style")
        self.assert_steady(program, prompts)

    def test_checks_of_the_mouse(self):
        program = self.launch({"stop_timer_after_mouse_stop": True})
        before = program.ask("live")["SourceStandIn"]
        for _ in range(ROUNDS):
            program.move_mouse()
        self.assertEqual(program.ask("live")["SourceStandIn"], before, "a movement leaves the check before it waiting")

    def test_a_day_of_the_cycle(self):
        program = self.launch({"pref.water.enable": True, "pref.water.lastShowDate": float(START)}, screens=SCREENS)
        self.assert_steady(program, lambda: program.pass_time(6 * 3600), rounds=4)
        self.assertGreater(program.log().count("ticktack timer timesup"), 40)


if __name__ == "__main__":
    main()
