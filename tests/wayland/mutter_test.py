#!/usr/bin/python3
"""Under GNOME's compositor, which has no layers and tells of activity on the session bus."""
import time

from wayland_support import MutterSession, WaylandTest, main, wait_until

FAST = 100
LIMIT = 300 / FAST
# How high the bar is that windows have here.
BAR = 40
# Lighter than the ground, and darker than the edge of a window.
LIT = 180
STOPPED = "ticktack timer stoped"
HOURS = 600
STARTED = f"ticktack timer start {HOURS * 60}$"


class Mutter(WaylandTest):
    @classmethod
    def setUpClass(cls):
        cls.session = MutterSession(monitors=2, width=800, height=600)
        cls.addClassCleanup(cls.session.stop)
        cls.session.start()
        cls.screen = cls.session.screen
        cls.monitors = cls.session.monitors
        cls.screen.move(5, 590)

    def test_a_break_covers_both_monitors_counts_down_and_is_skipped(self):
        program = self.launch()
        self.wait_for_cover()
        for monitor in self.monitors:
            self.check_countdown(monitor)
        self.skip(self.monitors[1])
        self.screen.move(5, 590)
        program.wait_for("skip break view$", 3)
        self.wait_for_uncover()
        self.wait_for_cover()
        program.process.kill()
        self.wait_for_uncover()

    def bounds(self):
        """The edges of the one window, which is light on a dark ground, or nothing where there is none."""
        picture = self.screen.picture(self.monitors[0])
        green = picture.data[1::4]
        lines = [green[y * picture.width:(y + 1) * picture.width] for y in range(picture.height)]
        # The pointer is light as well, but narrow.
        rows = [y for y, line in enumerate(lines) if sum(level > LIT for level in line) > BAR]
        columns = [x for x in range(picture.width) if rows and lines[(rows[0] + rows[-1]) // 2][x] > LIT]
        return (columns[0], rows[0], columns[-1], rows[-1]) if columns else None

    def shown(self):
        wait_until(self.bounds, 15, "a window")
        self.settle(1)
        return self.bounds()

    def becomes(self, expected):
        wait_until(lambda: self.bounds() == expected, 5, f"the window to stand at {expected}")

    def close_by_button(self, right, top):
        self.screen.click(right - BAR // 2, top + BAR // 2)
        self.screen.move(5, 590)
        wait_until(lambda: self.bounds() is None, 5, "the window to close")

    def test_windows_have_a_bar_to_be_moved_and_closed_by(self):
        program = self.launch({"pref.work.time": HOURS}, speed=1)
        item = program.item()
        item.click_line(item.line("About").id)
        left, top, right, bottom = self.shown()
        for _ in range(2):
            self.screen.drag(left + 150, top + BAR // 2, 50, 30)
            left, top, right, bottom = left + 50, top + 30, right + 50, bottom + 30
            self.becomes((left, top, right, bottom))
        self.close_by_button(right, top)

    def test_the_preferences_have_edges_to_be_resized_by(self):
        program = self.launch({"pref.work.time": HOURS}, speed=1)
        program.item()
        self.session.run_tool(str(program.executable), "settings")
        self.assertEqual(self.shown(), (0, 0, 799, 599), "the compositor gives a large window all of a small screen")
        self.screen.click(150, BAR // 2, times=2)
        wait_until(lambda: self.bounds() != (0, 0, 799, 599), 5, "the window to be as large as it wanted to be")
        left, top, right, bottom = self.shown()
        self.assertLess(bottom - top, self.monitors[0].height - 30, "no room for a desktop's own bar")
        self.screen.drag(right - 1, (top + bottom) // 2, -100, 0)
        self.becomes((left, top, right - 100, bottom))
        self.close_by_button(right - 100, top)

    def test_the_cycle_stops_five_minutes_after_the_last_input_and_the_next_starts_it(self):
        program = self.launch({"pref.work.time": HOURS, "stop_timer_after_mouse_stop": True}, speed=FAST)
        program.wait_for("Activity is heard of from GNOME", 10)
        self.assertEqual(program.count("heard of"), 1)
        program.wait_for(STOPPED, LIMIT + 5, times=2)
        self.screen.push(4, 0)
        program.wait_for(STARTED, 3, times=2)
        self.screen.push_for(LIMIT + 1)
        moved = time.monotonic()
        self.assertEqual(program.count(STOPPED), 3, "it stopped under a moving mouse")
        program.wait_for(STOPPED, LIMIT + 5, times=4)
        self.assertAlmostEqual(time.monotonic() - moved, LIMIT, delta=0.5)


if __name__ == "__main__":
    main()
