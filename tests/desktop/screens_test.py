#!/usr/bin/python3
"""Monitors that come and go while a break shows."""
import time

from support import PROGRAM, DesktopTest, main, wait_until
from virtual_desktop import break_windows, wait_for_countdown, wait_for_cover, wait_for_uncover


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
        wait_for_countdown(self.screen, third)

        self.session.remove_monitor(third)
        left = wait_for_cover(self.session, self.monitors[:2], 3)
        self.assertEqual({window.title for window in left}, {window.title for window in first})

        self.session.add_monitor(third)
        again = wait_for_cover(self.session, self.monitors, 3)
        self.assertEqual(again[2].title, windows[2].title, "a connector keeps its number")

        self.make_this_break_the_last(program)
        self.click_middle(self.wait_for_blue(self.monitors[0], 2)[-1])
        program.wait_for("skip break view$", 5)
        wait_for_uncover(self.session)

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


class NoMonitor(DesktopTest):
    """Desks without any monitor for a while, as of a laptop that wakes with its lid closed."""
    MONITORS = ROOM = 1
    TRAY = False
    WATER = {"pref.water.enable": True, "pref.water.finished": 1000}

    def setUp(self):
        self.monitor = self.monitors[0]
        # Switches the output off, and complains that the desktop cannot be as small as that.
        with self.assertRaises(RuntimeError):
            self.session.run_tool("xrandr", "--output", "screen", "--off")
        self.switch_off()
        self.addCleanup(lambda: self.on or self.switch_on())

    def switch_off(self):
        self.session.remove_monitor(self.monitor)
        self.on = False

    def switch_on(self):
        self.session.add_monitor(self.monitor, owns_output=True)
        self.on = True

    def panels(self):
        return [window for window in self.screen.windows() if window.title == "Water Reminder"]

    def test_the_first_one_that_comes_is_covered_by_the_break(self):
        program = self.launch(self.WATER)
        program.wait_for("ticktack timer start 3000$", 15)
        self.switch_on()
        [window] = wait_for_cover(self.session, [self.monitor], 3)
        wait_for_countdown(self.screen, self.monitor)
        self.assertEqual(break_windows(self.session), [window], "the window of no monitor is still there")
        self.assertEqual(self.screen.focus(), window.title)
        self.click_middle(self.blue_rows(self.monitor)[-1])
        program.wait_for("skip break view$", 5)
        self.switch_off()
        self.switch_on()
        program.wait_for("ticktack timer start 3000$", 15, times=2)
        self.assertEqual([each.title for each in wait_for_cover(self.session, [self.monitor], 3)], [window.title])

    def test_the_water_panel_comes_to_the_first_one_that_comes(self):
        program = self.launch({**self.WATER, "pref.work.time": 60, "pref.water.lastShowDate": time.time()}, speed=1)
        program.item()
        self.session.run_tool(str(PROGRAM), "water")
        wait_until(self.panels, 5, "the panel")
        self.assertFalse(program.ended())
        self.switch_on()
        right = self.monitor.x + self.monitor.width
        wait_until(lambda: [(each.x + each.width, each.y) for each in self.panels()] == [(right, self.monitor.y)], 3,
                   "the panel in the monitor's corner")


if __name__ == "__main__":
    main()
