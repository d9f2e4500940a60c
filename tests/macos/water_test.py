#!/usr/bin/python3
"""The water panel: when it comes, what each of its buttons and keys stores, and that a break goes before it."""
from macos_support import START, MacTest, Refused, main

INTERVAL, DEAF, FADE = 900, 1, 2
AMOUNTS = (50, 100, 150, 200, 250, 300, 350, 400, 500)


class Water(MacTest):
    def start(self, due=10, **settings):
        """Starts the program with a reminder due in some seconds."""
        return self.launch({"pref.work.time": 600, "pref.water.enable": True, "pref.water.finished": 1000,
                            "pref.water.lastShowDate": float(START - INTERVAL + due),
                            **{key.replace("_", "."): value for key, value in settings.items()}})

    def panel(self, program):
        return program.window("Water Reminder")

    def assert_answered(self, program, finished, at):
        """The panel is gone, the answer is stored, and the next reminder comes after a whole interval."""
        self.assertEqual(program.windows(), [])
        self.assertEqual(program.setting("pref.water.finished"), finished)
        self.assertEqual(program.setting("pref.water.lastShowDate"), START + at)
        program.pass_time(INTERVAL - FADE - 2)
        self.assertEqual(program.windows(), [])
        program.pass_time(FADE)
        self.assertTrue(self.panel(program).find("button", "Done").enabled)

    def test_it_comes_when_it_is_due(self):
        program = self.start()
        program.pass_time(9)
        self.assertEqual(program.windows(), [])
        program.pass_time(1)
        panel = self.panel(program)
        self.assertEqual((panel.frame, panel.level, panel.alpha, panel.key), ([520, 270, 280, 330], 3, 0, True))
        program.pass_time(FADE)
        self.assertEqual(self.panel(program).alpha, 1)
        self.assertEqual(panel.texts(), ["Finished/ml", "1000", "%", "66", "Remain/ml", "500", "It's time to drink water!"])
        self.assertEqual([tile.name for tile in panel.all("radio button")], [f"{amount}ml" for amount in AMOUNTS])

    def test_every_amount(self):
        program = self.start()
        program.pass_time(10)
        for amount in AMOUNTS:
            self.panel(program).find("radio button", f"{amount}ml").press()
            self.assertEqual(program.setting("pref.water.lastSelectedAmount"), amount)
            self.assertEqual([tile.name for tile in self.panel(program).all("radio button") if tile.value], [f"{amount}ml"])

    def test_done_counts_once_and_skip_nothing(self):
        program = self.start(pref_water_lastSelectedAmount=500)
        program.pass_time(10)
        panel = self.panel(program)
        panel.find("button", "Done").press()
        self.assertEqual(self.panel(program).texts(), ["Finished/ml", "1500", "%", "100", "Well Done!", "It's time to drink water!"])
        for name in ("Done", "Skip"):
            with self.assertRaises(Refused):
                panel.find("button", name).press()
        program.pass_time(0.5 + FADE)
        self.assertIn("Water (100% )", [line["title"] for line in program.menu()])
        self.assert_answered(program, 1500, 10)
        self.panel(program).find("button", "Skip").press()
        program.pass_time(FADE)
        self.assert_answered(program, 1500, 10 + FADE + 0.5 + INTERVAL - 2)

    def test_escape_and_the_close_button_answer_nothing(self):
        program = self.start()
        program.pass_time(10)
        program.press("Escape", "Space", "Return")
        program.pass_time(DEAF)
        self.panel(program).find("button", "Done").click_into()     # as the system chooses a button when it shows a window
        program.press("Space", "Return")
        self.assertTrue(self.panel(program).find("button", "Done").enabled, "a key pressed a button that nobody went to")
        program.press("Escape")
        self.assertEqual(program.windows(), [])
        program.choose("Water")
        self.panel(program).close()
        self.assertEqual(program.windows(), [])
        self.assertEqual(program.setting("pref.water.lastShowDate"), START - INTERVAL + 10)
        self.assertEqual([note["what"] for note in program.notes("deactivate")], ["deactivate"] * 2)

    def test_the_menu_shows_it_and_a_second_press_hides_it(self):
        program = self.start(due=61)
        program.choose("Water")
        program.pass_time(FADE)
        number = self.panel(program).number
        self.assertEqual(self.panel(program).texts()[-2:], ["Next drink in", "00:59"])
        program.choose("Water")
        program.pass_time(FADE)
        self.assertEqual(program.windows(), [])
        program.choose("Water")
        self.assertEqual(self.panel(program).number, number)

    def test_a_reminder_during_a_break_leaves_the_keys_to_the_break(self):
        program = self.start(due=70, pref_work_time=1)
        program.pass_time(71)
        self.assertEqual({window.title: window.key for window in program.windows()}, {"Water Reminder": False, "1": True})
        program.press("Escape", "Escape")
        self.assertIn("skip break view", program.log())
        program.pass_time(FADE)
        self.assertEqual([window.title for window in program.windows()], ["Water Reminder"])
        self.assertEqual(program.setting("pref.water.finished"), 1000)


if __name__ == "__main__":
    main()
