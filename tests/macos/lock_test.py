#!/usr/bin/python3
"""A locked screen, a new day, and a mouse that nobody moves."""
from macos_support import LEFT_DOWN, MODIFIERS, SCREENS, SCROLLED, START, MacTest, main

MINUTE = 60


class LockTest(MacTest):
    def starts(self, program):
        return program.log().count("ticktack timer start")


class Lock(LockTest):
    def test_the_count_stops_and_starts_anew(self):
        program = self.launch({"pref.work.time": 25})
        program.pass_time(5 * MINUTE)
        program.lock()
        program.lock()
        program.pass_time(60 * MINUTE)
        self.assertEqual(self.starts(program), 1)
        self.assertEqual(program.breaks(), [])
        program.unlock()
        program.unlock()
        self.assertEqual((self.starts(program), program.title()), (2, "25:00"))
        program.pass_time(MINUTE)
        self.assertEqual(program.title(), "24:00")

    def test_an_unlock_alone_counts_once(self):
        program = self.launch({"pref.work.time": 25})
        program.pass_time(MINUTE)
        program.unlock()
        self.assertEqual((self.starts(program), program.title()), (2, "25:00"))
        program.pass_time(MINUTE)
        program.unlock()
        self.assertEqual((self.starts(program), program.title()), (2, "24:00"))

    def test_a_break_ends_when_the_screen_is_locked(self):
        program = self.launch({"pref.work.time": 1}, screens=SCREENS)
        program.pass_time(MINUTE + 3)
        self.assertEqual(len(program.breaks()), 2)
        program.lock()
        program.pass_time(3)
        self.assertEqual(program.breaks(), [])
        program.unlock()
        self.assertEqual(program.title(), "01:00")

    def test_the_count_goes_on_where_it_is_not_to_start_anew(self):
        program = self.launch({"pref.work.time": 25, "restart_timer_after_awake": False})
        program.pass_time(5 * MINUTE)
        program.lock()
        program.unlock()
        self.assertEqual(self.starts(program), 1)


class NewDay(LockTest):
    def test_the_first_unlock_of_a_day_greets(self):
        program = self.launch({"show_new_day_tip": True, "last_weakup_timestamp": float(START)}, screens=SCREENS)
        program.lock()
        program.pass_time(MINUTE)
        program.unlock()
        self.assertEqual(program.breaks(), [])
        program.lock()
        program.pass_time(24 * 60 * MINUTE)
        program.unlock()
        self.assertEqual([window.texts()[1] for window in program.breaks()], ["00:10"] * 2)


class Mouse(LockTest):
    def launch(self, settings=None, **more):
        return super().launch({"pref.work.time": 25, "stop_timer_after_mouse_stop": True, **(settings or {})}, **more)

    def test_five_minutes_without_it_stop_the_count(self):
        program = self.launch()
        program.pass_time(4 * MINUTE)
        program.move_mouse()
        program.pass_time(4 * MINUTE)
        self.assertEqual(program.title(), "17:00")
        self.assert_stops(program, "16:0")
        for event in (LEFT_DOWN, MODIFIERS, None):
            stopped = program.log().count("ticktack timer stoped")
            program.move_mouse(*filter(None, [event]))
            self.assertEqual(program.title(), "25:00", event)
            self.assert_stops(program, "20:0")
            self.assertGreater(program.log().count("ticktack timer stoped"), stopped)

    def assert_stops(self, program, at):
        program.pass_time(5 * MINUTE)
        stopped = program.title()
        self.assertEqual(stopped[:4], at)
        program.pass_time(10 * MINUTE)
        self.assertEqual(program.title(), stopped)

    def test_other_events_do_not_count(self):
        program = self.launch()
        program.pass_time(6 * MINUTE)
        stopped = program.title()
        program.move_mouse(SCROLLED)
        self.assertEqual(program.title(), stopped)

    def test_nothing_counts_while_the_screen_is_locked(self):
        program = self.launch()
        program.pass_time(MINUTE)
        program.lock()
        for _ in range(10):
            program.pass_time(MINUTE)
            program.move_mouse()
        self.assertEqual(self.starts(program), 1)
        program.unlock()
        self.assertEqual(self.starts(program), 2)


if __name__ == "__main__":
    main()
