#!/usr/bin/python3
"""How the program starts, what happens when it is started again, and how it ends."""
from macos_support import SCREENS, START, MacTest, anywhere, main

WORK = "Length of a work period in minutes"


class Launch(MacTest):
    def test_it_counts_in_the_menu_bar_and_shows_no_window(self):
        program = self.launch({"pref.work.time": 25})
        self.assertEqual(program.title(), "25:00")
        self.assertEqual(program.windows(), [])
        program.pass_time(61)
        self.assertEqual(program.title(), "23:59")
        said = [line.split(" : ")[1] for line in program.log().splitlines()]
        self.assertRegex(said[0], "^~+hello Kelpa~+$")
        self.assertEqual(said[1:3], ["ticktack timer stoped 1.0", "ticktack timer start 1500"])
        self.assertEqual([note["what"] for note in program.notes("status item", "register", "unregister")], ["status item"])

    def test_time_runs_as_fast_as_asked(self):
        program = self.launch({"pref.work.time": 25, "pref.water.enable": True, "pref.water.lastShowDate": float(START - 300)},
                              "-speed", "60")
        program.pass_time(9)
        self.assertEqual((program.title(), program.windows()), ("16:00", []))
        program.pass_time(1)
        self.assertEqual((program.title(), [window.title for window in program.windows()]), ("15:00", ["Water Reminder"]))
        self.assertIn("-speed needs a number above 0", self.launch({}, "-speed", "0").said())

    @anywhere
    def test_who_starts_it_again_sees_the_preferences(self):
        program = self.launch()
        self.assertFalse(program.ask("startAgain"))
        window = program.window("Settings")
        self.assertTrue(window.key)
        program.ask("startAgain")
        self.assertEqual(len(program.windows()), 1)


class Quit(MacTest):
    @anywhere
    def test_by_the_menu(self):
        self.assertEqual(self.launch().quit(), 0)

    def test_with_a_number_half_typed(self):
        program = self.launch({"pref.work.time": 25})
        program.settings("Workflow").find("field", WORK).type("47", end=None)
        self.assertEqual(program.quit(), 0)
        self.assertEqual(program.stored()["pref.work.time"], 47)

    def test_with_a_break_and_the_panel_on_the_screen(self):
        program = self.launch({"pref.work.time": 1, "pref.break.time": 60, "pref.water.enable": True}, screens=SCREENS)
        program.choose("Water")
        program.pass_time(62)
        self.assertEqual(len(program.breaks()), 2)
        self.assertEqual(program.quit(lambda: program.choose("Quit")), 0)


if __name__ == "__main__":
    main()
