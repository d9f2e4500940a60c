#!/usr/bin/python3
"""The desk at rest under a Wayland compositor: what stops the cycle after five minutes, and what starts it again."""
import time

from wayland_support import Session, VirtualInput, WaylandTest, main

from activity_support import STARTED, STOPPED, AtRest


class Activity(AtRest, WaylandTest):
    def move(self, seconds):
        """As a device of its own."""
        device = VirtualInput(self.session.environment["WAYLAND_DISPLAY"])
        until = time.monotonic() + seconds
        while time.monotonic() < until:
            for step in (1, -1):
                device.move(step, 0)
            time.sleep(0.001)
        device.close()

    def test_the_cycle_stops_five_minutes_after_the_last_input_and_the_next_starts_it(self):
        program = self.assert_stops_after_five_minutes_and_starts_with_the_next_input("the compositor")
        self.session.input.press("Shift_L")
        program.wait_for(STARTED, 3, times=3)

    def test_what_is_done_in_our_own_windows_is_not_done_at_work(self):
        program = self.begin(speed=20)
        program.item()
        self.session.run_tool(str(program.executable), "settings")
        self.settle(3)
        self.assertEqual(len(self.session.views()), 1)
        self.session.move(300, 400)
        stops, began = program.count(STOPPED), time.monotonic()
        mover = self.keep_moving(300 / 20 + 6)
        program.wait_for(STOPPED, 300 / 20 + 4, times=stops + 1)
        self.assertLess(time.monotonic() - began, 300 / 20 + 4)
        mover.join()
        self.assertEqual(program.count(STARTED), 1)
        self.session.move(self.monitors[1].x + 300, 300)
        self.move(2)
        program.wait_for(STARTED, 3, times=2)
        Session.end(program.process)
        self.session.move(5, 590)

    def test_it_sleeps_between_its_seconds(self):
        program = self.begin(speed=1)
        self.settle(2)
        rest = self.sleeps_a_second(program, self.settle)
        moving = self.sleeps_a_second(program, self.move)
        self.assertLess(moving - rest, 3)


if __name__ == "__main__":
    main()
