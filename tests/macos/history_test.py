#!/usr/bin/python3
"""The history: what is written, and its window, drawn, gone through by keys and pointer, and forgotten."""
import datetime
import stat

from macos_support import START, MacTest, main

KEPT = {"pref.history.enable": True}
TODAY = datetime.datetime.fromtimestamp(START, datetime.timezone.utc).date()


class HistoryTest(MacTest):
    def files(self, program):
        return sorted(program.home.rglob("History/*.csv"))

    def open(self, days=14):
        """A program whose history holds days with figures of their own, with the window open."""
        program = self.launch(KEPT)
        program.pass_time(60)
        program.choose("- Stop -")
        folder = self.files(program)[0].parent
        for back in range(1, days):
            day = TODAY - datetime.timedelta(days=back)
            with open(folder / f"{day:%Y-%m}.csv", "a", encoding="ascii") as file:
                file.write(f"{day},09:00:00,work,,,{3600 + 60 * back},,,,,break\n"
                           f"{day},10:00:00,break,short,300,300,0,due,,,complete\n"
                           f"{day},10:05:00,drink,,,,,,250,1500,drunk\n")
        program.settings("Workflow").find("button", "Show History").press()
        return program

    def columns(self, program):
        return [view for view in program.window("History").views if view.classes[0] == "KelpaHistoryColumn"]

    def figures(self, program):
        return [text for text in program.window("History").texts() if text.startswith("■")]


class Records(HistoryTest):
    def test_what_ends_is_written_for_nobody_else(self):
        program = self.launch(KEPT)
        program.pass_time(25 * 60)
        program.lock()
        file, = self.files(program)
        self.assertEqual(stat.S_IMODE(file.stat().st_mode), 0o600)
        self.assertEqual(file.read_text().splitlines()[1:],
                         [f"{TODAY},09:00:00,work,,,1500,,,,,break", f"{TODAY},09:25:00,break,short,300,0,0,due,,,locked"])

    def test_it_is_off_at_first(self):
        program = self.launch()
        program.pass_time(25 * 60)
        self.assertEqual(self.files(program), [])
        program.settings("Workflow").find("switch", "Keep a history of work, breaks and water").set(True)
        self.assertIs(program.setting("pref.history.enable"), True)


class Window(HistoryTest):
    def test_keys_and_pointer_choose_the_day_whose_figures_are_shown(self):
        program = self.open()
        self.assertEqual(len(self.columns(program)), 14)
        self.assertEqual(self.figures(program), ["■ 0 h 1 min", "■ 0 taken   ■ 0 skipped", "■ 0 ml"])
        self.columns(program)[-1].click_into()
        program.press("Left")
        self.assertEqual(self.figures(program), ["■ 1 h 1 min", "■ 1 taken   ■ 0 skipped", "■ 250 of 1500 ml"])
        program.press("Home")
        self.assertEqual(self.figures(program)[0], "■ 1 h 13 min")
        program.press("Right")
        self.assertEqual(self.figures(program)[0], "■ 1 h 12 min")
        self.columns(program)[5].point()
        self.assertEqual(self.figures(program)[0], "■ 1 h 8 min")
        self.columns(program)[5].point(leaves=True)
        self.assertEqual(self.figures(program)[0], "■ 1 h 12 min", "the chosen one again")
        told = self.columns(program)[1]
        self.assertIn("Work 1 h 12 min, Breaks 1 taken, Breaks 0 skipped, Water 250 of 1500 ml", told.name)
        self.assertEqual([column.value for column in self.columns(program)], [False, True] + [False] * 12)

    def test_everything_stands_inside_the_window_beside_each_other(self):
        program = self.open()
        window = program.window("History")
        width, height = window.views[0].frame[2:]
        for view in window.views:
            x, y, wide, high = view.frame
            self.assertTrue(x >= 0 and y >= 0 and x + wide <= width and y + high <= height, view)
        edges = [(column.frame[0], column.frame[0] + column.frame[2]) for column in self.columns(program)]
        for (_, end), (start, _) in zip(edges, edges[1:]):
            self.assertAlmostEqual(end, start)

    def test_weeks(self):
        program = self.open()
        program.window("History").find("segments").set("Weeks")
        self.assertEqual(len(self.columns(program)), 12)
        self.columns(program)[-2].click_into()
        program.press("Left", "Right")
        # From Sunday to Saturday, which are eight to two days back.
        self.assertEqual(self.figures(program)[0], "■ 7 h 35 min")
        program.window("History").close()
        self.assertEqual(program.windows("History"), [])

    def test_everything_is_forgotten_only_when_the_question_is_answered(self):
        program = self.open()
        def button(name):
            return program.window("History").find("button", name)

        button("Forget Everything").press()
        self.assertIn("Delete everything that was recorded? It cannot be brought back.", program.window("History").texts())
        button("Cancel").press()
        self.assertNotEqual(self.files(program), [])
        button("Forget Everything").press()
        button("Delete").press()
        self.assertEqual(self.files(program), [])
        self.assertIn("Nothing has been recorded yet.", program.window("History").texts())

    def test_nothing_of_it_stays_once_it_is_closed(self):
        program = self.open()
        program.window("History").close()
        program.pass_time(1)
        left = [name for name in program.live() if name.startswith("KelpaHistory")]
        self.assertEqual(left, [])


if __name__ == "__main__":
    main()
