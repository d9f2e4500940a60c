#!/usr/bin/python3
"""Breaks on two screens: what stands on them, every way out of them, and what becomes of them when screens come and go."""
from macos_support import SCREENS, MacTest, Refused, anywhere, main, rectangle

ONE, TWO = SCREENS
WORK, BREAK = 60, 120
DEAF, FADE = 2, 2
STATUS_LEVEL = 25


class BreakTest(MacTest):
    def begin(self, settings=None, screens=SCREENS, fade=True):
        program = self.launch({"pref.work.time": 1, "pref.break.time": BREAK, **(settings or {})}, screens=screens)
        program.pass_time(WORK)
        if fade:
            program.pass_time(FADE)
        return program

    def assert_over(self, program, ends=1):
        """It fades out, and the next work period begins at once; `ends` screens had a part in its end."""
        self.assertEqual(program.log().count("skip break view"), ends)
        self.assertEqual(program.log().count(f"ticktack timer start {WORK}"), 1 + ends)
        self.assertNotEqual(program.breaks(), [])
        program.pass_time(FADE)
        self.assertEqual(program.breaks(), [])
        self.assertEqual([note["what"] for note in program.notes("deactivate")], ["deactivate"] * ends)
        self.assertEqual(program.title(), "00:58")


class Break(BreakTest):
    def test_every_screen_is_covered_and_counts(self):
        program = self.begin({"custom_break_prompt": True, "break_prompt_text": "one\\ntwo"}, fade=False)
        self.assertEqual(program.title(), "")
        windows = program.breaks()
        self.assertEqual([(window.title, tuple(window.frame)) for window in windows], [("1", ONE[1:]), ("2", TWO[1:])])
        self.assertEqual({(window.level, window.alpha) for window in windows}, {(STATUS_LEVEL, 0)})
        self.assertEqual(len([window for window in windows if window.key]), 1)
        self.assertTrue(program.notes("activate")[-1]["others"])
        program.pass_time(FADE)
        for window in program.breaks():
            self.assertEqual(window.alpha, 1)
            self.assertEqual(window.texts(), ["one\ntwo", "01:58", "New Feature:", "You can enable it in the preference panel."])
            self.assertEqual(window.find("link", "Water Reminder").help, "You can enable it in the preference panel.")
            self.assertEqual([view for view in window.views if view.keyboard], [], "the space bar would press it")

    def test_it_ends_by_itself_and_the_next_one_uses_the_same_windows(self):
        program = self.begin()
        before = [window.number for window in program.breaks()]
        program.pass_time(BREAK - FADE)
        self.assert_over(program, ends=2)
        program.pass_time(WORK)
        self.assertEqual([window.number for window in program.breaks()], before)
        self.assertEqual({window.alpha for window in program.breaks()}, {1})

    def test_skip_on_one_screen_ends_it_on_both(self):
        program = self.begin()
        program.breaks()[0].find("button", "Skip").press()
        self.assert_over(program)

    def test_keys(self):
        program = self.begin(fade=False)
        program.press("Escape", "Space", "Tab")
        program.pass_time(DEAF - 0.5)
        program.press("Escape")
        self.assertNotIn("skip break view", program.log(), "what was typed into another program ended the break")
        program.pass_time(0.5)
        program.press("Space", "Return", "x")
        self.assertNotIn("skip break view", program.log(), "a key pressed a button that nobody went to")
        program.press("Escape")
        self.assert_over(program)

    def test_tab_leads_to_skip(self):
        program = self.begin()
        for _ in range(6):
            program.press("Tab")
            if any(view.keyboard and view.name == "Skip" for window in program.breaks() for view in window.views):
                break
        program.press("Space")
        self.assert_over(program)

    def test_a_forced_long_break_has_no_skip_but_the_notice_ends_it(self):
        program = self.begin({"pref.short.break.times": 1, "force_long_break": True})
        window = program.breaks()[0]
        self.assertEqual(window.all("button"), [])
        program.press("Escape")
        with self.assertRaises(Refused):
            window.close()
        self.assertNotIn("skip break view", program.log())
        window.find("link", "Water Reminder").press()
        self.assertIn("Click new feature: Water Reminder", program.log())
        self.assert_over(program)

    def test_a_prompt_of_thousands_of_letters_leaves_skip_on_the_screen(self):
        program = self.begin({"custom_break_prompt": True, "break_prompt_text": "Look far away for a while. " * 100},
                             screens=[(1, 0, 0, 1440, 900)])
        window = program.breaks()[0]
        x, y, width, _ = window.find("button", "Skip").frame
        self.assertGreaterEqual(y, 0)
        self.assertLessEqual(x + width, 1440)
        window.find("button", "Skip").press()
        self.assert_over(program)


    @anywhere
    def test_it_comes_goes_and_comes_again(self):
        program = self.launch({"pref.work.time": 1, "pref.break.time": 7200}, "-speed", "10")
        for _ in range(2):
            window = program.wait_for(program.breaks)[0]
            self.assertEqual(program.title(), "")
            window.find("button", "Skip").press()
            program.wait_for(lambda: not program.breaks())
            self.assertRegex(program.title(), "^(01:00|00:[0-5][0-9])$")


class Screens(BreakTest):
    def titles(self, program):
        return [window.title for window in program.breaks()]

    def test_a_screen_that_comes_is_covered_and_one_that_goes_takes_its_window_along(self):
        program = self.begin(screens=[ONE])
        self.assertEqual(self.titles(program), ["1"])
        program.screens(ONE, TWO)
        program.pass_time(FADE)
        self.assertEqual([tuple(window.frame) for window in program.breaks()], [ONE[1:], TWO[1:]])
        program.screens(ONE)
        self.assertEqual(self.titles(program), ["1"])
        program.screens((1, 0, 0, 700, 600), TWO)
        self.assertEqual([tuple(window.frame) for window in program.breaks()], [(0, 0, 700, 600), TWO[1:]])
        program.breaks()[0].find("button", "Skip").press()
        self.assert_over(program)

    def test_screens_come_and_go_during_a_fade(self):
        program = self.begin(fade=False)
        program.pass_time(FADE / 2)
        program.screens(ONE)
        program.screens(ONE, TWO)
        program.pass_time(FADE)
        self.assertEqual([window.alpha for window in program.breaks()], [1, 1])
        program.press("Escape")
        program.pass_time(FADE / 2)
        program.screens(ONE)
        program.screens(ONE, TWO)
        program.pass_time(FADE)
        self.assertEqual(program.breaks(), [])
        program.pass_time(WORK)
        self.assertEqual([tuple(window.frame) for window in program.breaks()], [ONE[1:], TWO[1:]])

    def test_a_window_that_the_system_moved_goes_back(self):
        program = self.begin()
        program.ask("move", number=program.breaks()[1].number, frame=rectangle(10, 10, 100, 100))
        self.assertEqual(program.breaks()[1].frame, [10, 10, 100, 100])
        program.screens(*SCREENS)
        self.assertEqual([tuple(window.frame) for window in program.breaks()], [ONE[1:], TWO[1:]])


if __name__ == "__main__":
    main()
