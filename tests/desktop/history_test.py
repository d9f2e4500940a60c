#!/usr/bin/python3
"""The history of the real program: what a day leaves behind, the command that tells of it, and its window."""
import datetime
import os
import shlex
import shutil
from pathlib import Path

from preferences_support import PreferencesTest
from support import PROGRAM, ROOT, Session, main, wait_until
from virtual_desktop import wait_for_cover, wait_for_uncover

ENTRY = ROOT / "packaging/app.orvane.Kelpa.desktop.in"
KEPT = {"pref.history.enable": True, "pref.work.time": 600}
HEADER = "date,time,event,kind,length_s,seconds,postponed,begun,ml,target_ml,end\n"


class HistoryTest(PreferencesTest):
    def setUp(self):
        self.folder = Path(self.session.environment["XDG_DATA_HOME"]) / "app.orvane.Kelpa/history"
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.today = datetime.date.today()

    def days(self, count):
        """Each of the last days with work, breaks and water of its own."""
        self.folder.mkdir(parents=True, exist_ok=True)
        for back in range(count):
            day = self.today - datetime.timedelta(days=back)
            path = self.folder / f"{day:%Y-%m}.csv"
            known = path.read_text() if path.exists() else HEADER
            path.write_text(f"{known}{day},09:00:00,work,,,{3600 + 60 * back},,,,,break\n"
                            f"{day},10:00:00,break,short,300,300,0,due,,,complete\n"
                            f"{day},10:05:00,drink,,,,,,250,1500,drunk\n")

    def show_history(self):
        wait_until(lambda: self.ask("history", "--show")[0] == 0, 10, "the program to hear of it")
        self.window = self.accessibility.window("History")
        wait_until(lambda: self.screen.focus() == "History", 5, "the history to have the keyboard")

    def windows(self):
        return [window.title for window in self.screen.titled(lambda title: title == "History")]

    def columns(self):
        return [one for one in self.window.walk() if one.role() == "list item"]


class Records(HistoryTest):
    def test_what_happened_is_told_afterwards(self):
        program = self.launch({**KEPT, "pref.work.time": 1, "pref.break.time": 60})
        wait_for_cover(self.session, self.monitors, 20)
        self.assertEqual(self.ask("skip")[0], 0)
        wait_for_uncover(self.session, 10)
        self.make_this_break_the_last(program)
        Session.end(program.process)
        lines = "".join(file.read_text() for file in sorted(self.folder.iterdir())).splitlines()
        ends = [line.split(",")[2:4] + line.split(",")[-1:] for line in lines if "date" not in line]
        self.assertEqual(ends[:2], [["work", "", "break"], ["break", "short", "skipped"]])
        told = self.ask("history", "--days", "2", "--csv")[1].splitlines()
        worked, taken, skipped = (sum(int(line.split(",")[column]) for line in told[1:]) for column in (1, 2, 3))
        self.assertGreaterEqual(worked, 60)
        self.assertEqual((taken, skipped), (0, 1))

    def test_a_folder_in_place_of_a_month_is_told_in_the_log(self):
        (self.folder / f"{self.today:%Y-%m}.csv").mkdir(parents=True)
        program = self.launch(KEPT)
        wait_until(lambda: self.status().get("seconds", 36000) < 36000, 10, "some of the work to have passed")
        self.assertEqual(self.ask("pause")[0], 0)
        program.wait_for("warning .* the history cannot be written and waits: .*Is a directory", 10)
        code, told, message = self.ask("history")
        self.assertEqual(code, 1)
        self.assertIn("Nothing is recorded", told, "what can be read is told all the same")
        self.assertIn("Is a directory", message)


class Window(HistoryTest):
    def test_it_shows_the_day_that_the_keys_or_the_pointer_go_to(self):
        self.days(14)
        program = self.launch(KEPT)
        self.show_history()
        self.assertEqual(len(self.columns()), 14)
        wait_until(lambda: "1 h 0 min" in self.names(), 5, "today's work")
        self.assertIn("250 of 1500 ml", self.names())
        today = self.columns()[-1]
        self.assertIn(str(self.today.day), today.name())
        self.screen.press("Tab")
        wait_until(lambda: "focused" in today.states() or self.screen.press("Tab"), 5, "the keys to reach the days")
        self.screen.press("Left")
        wait_until(lambda: "1 h 1 min" in self.names(), 5, "yesterday's work")
        self.screen.press("Home")
        wait_until(lambda: "1 h 13 min" in self.names(), 5, "the work of the first day")
        box = self.columns()[6].box()
        self.screen.move(box.x + box.width // 2, box.y + box.height // 2)
        wait_until(lambda: "1 h 7 min" in self.names(), 5, "the work of the day under the pointer")
        self.screen.press("Left")
        wait_until(lambda: "1 h 13 min" in self.names(), 5, "the keys to count more than a pointer that rests")
        self.drink()
        wait_until(lambda: "500 of 1500 ml" in today.description(), 5, "the day to have had another drink")
        self.assertIn("1 h 13 min", self.names(), "another day is shown than the one that was chosen")
        self.assertEqual(program.count("kelpa-view"), 0, program.lines())

    def drink(self):
        """One more today, which is read when the window is asked for again."""
        with open(self.folder / f"{self.today:%Y-%m}.csv", "a", encoding="utf-8") as file:
            file.write(f"{self.today},11:00:00,drink,,,,,,250,1500,drunk\n")
        self.assertEqual(self.ask("history", "--show")[0], 0)

    def test_keys_turn_to_weeks_while_the_pointer_rests_and_a_click_back_to_days(self):
        self.days(14)
        program = self.launch(KEPT)
        self.show_history()
        box = self.columns()[-1].box()
        self.screen.move(box.x + box.width // 2, box.y + box.height // 2)
        range_ = self.window.find("radio button", "Days")
        wait_until(lambda: "focused" in range_.states() or self.screen.press("Tab"), 5, "the keys to reach the ranges")
        self.screen.press("Right")
        wait_until(lambda: len(self.columns()) == 12, 5, "the weeks")
        self.find("heading", self.columns()[-1].name())     # instead of no week at all
        self.click("radio button", "Days")
        wait_until(lambda: len(self.columns()) == 14, 5, "the days")
        self.screen.press("Escape")
        wait_until(lambda: not self.windows(), 5, "the window to close")
        self.show_history()
        self.assertEqual(len(self.columns()), 14)
        self.assertEqual(program.count("kelpa-view"), 0, program.lines())

    def test_it_forgets_everything_only_when_the_question_is_answered(self):
        self.days(2)
        self.launch(KEPT)
        self.show_history()
        self.click("push button", "Forget Everything")
        question = "Delete everything that was recorded? It cannot be brought back."
        wait_until(lambda: question in self.names(), 5, "the question")
        self.screen.press("Escape")
        wait_until(lambda: question not in self.names(), 5, "the question to go")
        forget = self.find("push button", "Forget Everything")
        wait_until(lambda: "focused" in forget.states(), 5, "what asked to have the keyboard again")
        self.assertTrue(any(self.folder.iterdir()))
        self.click("push button", "Forget Everything")
        self.click("push button", "Delete")
        wait_until(lambda: not self.folder.exists(), 5, "the history to be forgotten")
        wait_until(lambda: "Nothing has been recorded yet." in self.names(), 5, "the empty picture")

    def test_the_settings_open_it_and_switch_it_on(self):
        program = self.open(pane="Workflow")
        for _ in range(2):      # to the pane's end, which comes before its tab
            self.screen.press("Shift_L", "Tab")
        self.screen.press("space")
        self.wait_stored(program, "pref.history.enable", True)
        self.screen.press("Tab")
        self.screen.press("space")
        wait_until(self.windows, 10, "the history")

    def test_the_action_of_the_desktop_entry_shows_it_whether_the_program_runs_or_not(self):
        command = ENTRY.read_text().split("[Desktop Action history]")[1].split("Exec=")[1].split("\n")[0]
        name, *arguments = shlex.split(command)
        self.assertEqual(name, os.path.basename(str(PROGRAM)))
        self.days(2)
        program = self.launch(KEPT, *arguments)
        wait_until(self.windows, 10, "the history of a program that did not run")
        self.assertIn("~~hello Kelpa~~", program.lines()[0])
        self.screen.press("Escape")
        wait_until(lambda: not self.windows(), 5, "the window to close")
        self.assertEqual(self.ask(*arguments)[0], 0)
        wait_until(self.windows, 10, "the history of the program that runs")
        program.wait_for("Another start of the program asks for the history.", 5)
        self.assertFalse(program.ended())
        self.assertEqual(self.screen.titled(lambda title: title == "Kelpa"), [], "the preferences")


class SmallScreen(HistoryTest):
    WIDTH, HEIGHT = 640, 480
    TRAY = True     # whose bar takes some of it

    def test_all_of_it_is_on_the_screen(self):
        self.launch(KEPT)
        self.show_history()
        window = self.screen.titled(lambda title: title == "History")[0]
        self.assertGreaterEqual(window.y, 0)
        self.assertLessEqual(window.y + window.height, self.HEIGHT)
        self.assertLessEqual(window.x + window.width, self.WIDTH)


if __name__ == "__main__":
    main()
