#!/usr/bin/python3
"""Under GNOME's compositor, which has no layers and tells of activity on the session bus."""
import time

from wayland_support import MutterSession, WaylandTest, main

FAST = 100
LIMIT = 300 / FAST
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
        self.settle(2.2)    # behind the text the background is there at once
        for monitor in self.monitors:
            self.check_countdown(monitor)
        self.skip(self.monitors[1])
        self.screen.move(5, 590)
        program.wait_for("skip break view$", 3)
        self.wait_for_uncover()
        self.wait_for_cover()
        program.process.kill()
        self.wait_for_uncover()

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
