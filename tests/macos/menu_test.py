#!/usr/bin/python3
"""The menu: its lines, what each does, and what they say while the time goes on."""
from macos_support import SCREENS, START, MacTest, Refused, anywhere, main

# Title, key, action and picture of each line. The core names the actions, and the face has them by hand: one that it lacks reads as none.
LINES = [
    ("    Kelpa - v0.1.0(1)", "", None, None),
    ("- Stop -", "p", "didClickPause:", "stop.circle"),
    ("Water (0% )", "r", "didClickWater:", "drop.triangle"),
    ("Settings...", ",", "didClickSettings:", "gearshape.circle"),
    ("Check for Updates...", "", "didClickUpdates:", "arrow.counterclockwise.icloud"),
    ("Feedback...", "", "didClickFeedback:", "mail.stack"),
    ("About...", "", "didClickAbout:", "info.circle"),
    ("Quit", "q", "didClickQuit:", "escape"),
]
WATER = {"pref.water.enable": True, "pref.water.lastShowDate": float(START)}


class Menu(MacTest):
    def line(self, program, tag):
        return next(line for line in program.menu() if line["tag"] == tag)

    @anywhere
    def test_lines(self):
        program = self.launch(WATER)
        lines = program.menu()
        self.assertEqual([(line["title"], line["key"], line["action"], line["picture"]) for line in lines], LINES)
        self.assertEqual([line["enabled"] for line in lines], [False] + [True] * 7)
        with self.assertRaises(Refused):
            program.choose("    Kelpa")
        self.assertTrue(program.status()["picture"])

    def test_pausing(self):
        program = self.launch({"pref.work.time": 25})
        program.pass_time(60)
        program.choose("- Stop -")
        self.assertEqual((self.line(program, 2)["title"], self.line(program, 2)["picture"]), ("- Wrok -", "play.circle"))
        program.pass_time(600)
        self.assertNotIn("ticktack timer timesup", program.log())
        program.choose("- Wrok -")
        self.assertEqual((self.line(program, 2)["title"], program.title()), ("- Stop -", "25:00"))

    def test_a_pause_with_an_end(self):
        program = self.launch({"pref.work.time": 25, "stop_timer_after_mouse_stop": False})
        program.pass_time(60)
        program.ask("pause", duration="45m")
        self.assertIn("Paused until ", program.status()["tip"])
        program.pass_time(45 * 60 - 1)
        self.assertEqual(self.line(program, 2)["title"], "- Wrok -")
        program.pass_time(1)
        self.assertEqual((self.line(program, 2)["title"], program.title()), ("- Stop -", "25:00"))
        self.assertIsNone(program.status()["tip"])
        program.ask("pause", duration="1h")
        program.choose("- Wrok -")
        program.pass_time(24 * 60)
        self.assertEqual(program.title(), "01:00")
        self.assertIsNone(program.status()["tip"])

    def test_it_counts_while_the_menu_is_open(self):
        """No other timer runs in these tests than one that does so in all of the run loop's common modes."""
        program = self.launch({"pref.work.time": 1, **WATER}, screens=SCREENS)
        program.pass_time(59)
        self.assertEqual(program.title(), "00:01")
        program.pass_time(1)
        self.assertEqual(len(program.breaks()), 2)

    def test_the_water_line(self):
        program = self.launch({**WATER, "pref.water.finished": 300})
        self.assertEqual(self.line(program, 3)["title"], "Water (20% )")
        program.choose("Water")
        program.window("Water Reminder").find("button", "Done").press()
        self.assertEqual(self.line(program, 3)["title"], "Water (30% )")
        program.settings("Water").find("switch", "Enable drink water reminder").set(False)
        self.assertNotIn(3, [line["tag"] for line in program.menu()])
        program.window("Settings").find("switch", "Enable drink water reminder").set(True)
        self.assertEqual([line["tag"] for line in program.menu()][:3], [0, 2, 3])

    def test_the_time_can_be_hidden(self):
        program = self.launch()
        program.settings().find("switch", "Show time in StatusBar").set(False)
        self.assertEqual(program.title(), "")
        program.pass_time(2)
        self.assertEqual(program.title(), "")
        program.window("Settings").find("switch", "Show time in StatusBar").set(True)
        self.assertEqual(program.title(), "24:58")


if __name__ == "__main__":
    main()
