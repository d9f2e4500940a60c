#!/usr/bin/python3
"""Monitors that come and go while a break shows."""
from support import DesktopTest, main
from virtual_desktop import break_windows, complaints, wait_for_cover


class Screens(DesktopTest):
    ROOM = 3
    MONITORS = 2

    def test_a_monitor_plugged_in_during_a_break_is_covered_at_once(self):
        program = self.launch()
        first = wait_for_cover(self.session, self.monitors[:2], 15)
        third = self.monitors[2]
        self.addCleanup(self.session.remove_monitor, third)
        self.session.add_monitor(third)
        windows = wait_for_cover(self.session, self.monitors, 2)
        self.assertEqual({window.title for window in windows[:2]}, {window.title for window in first})
        self.assertNotIn(windows[2].title, {window.title for window in first})
        self.settle(2.5)
        before = self.screen.picture(third)
        self.settle(1.2)
        self.assertEqual(complaints(before, self.screen.picture(third)), [])

        self.session.remove_monitor(third)
        left = wait_for_cover(self.session, self.monitors[:2], 3)
        self.assertEqual({window.title for window in left}, {window.title for window in first})

        self.session.add_monitor(third)
        again = wait_for_cover(self.session, self.monitors, 3)
        self.assertEqual(again[2].title, windows[2].title, "a connector keeps its number")

        self.click_middle(self.blue_rows(self.monitors[0])[-1])
        program.wait_for("skip break view$", 3)
        self.settle(2.5)
        self.assertEqual(break_windows(self.session), [])

    def test_a_monitor_that_comes_back_smaller_is_covered_as_it_is_now(self):
        self.launch()
        first = wait_for_cover(self.session, self.monitors[:2], 15)
        second = self.monitors[1]
        smaller = second._replace(width=640, height=480)
        self.session.remove_monitor(second)
        self.session.add_monitor(smaller)
        windows = wait_for_cover(self.session, [self.monitors[0], smaller], 3)
        self.assertEqual([window.title for window in windows], [window.title for window in first])
        self.session.remove_monitor(smaller)
        self.session.add_monitor(second)
        wait_for_cover(self.session, self.monitors[:2], 3)


if __name__ == "__main__":
    main()
