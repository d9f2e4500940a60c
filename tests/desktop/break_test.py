#!/usr/bin/python3
"""Breaks on two monitors as a person sees them: what covers the screens, what stands on it, and how it ends."""
import os
import signal

from support import LONG_ENOUGH, SPEED, WORK, Box, DesktopTest, main, wait_until
from virtual_desktop import break_windows, wait_for_countdown, wait_for_cover, wait_for_uncover


class Break(DesktopTest):
    COMPOSITOR = True

    def begin(self, settings=None):
        program = self.launch(settings)
        return program, self.cover()

    def cover(self):
        return wait_for_cover(self.session, self.monitors, 15)

    def test_every_monitor_is_covered_and_counts_down(self):
        prompt = {"custom_break_prompt": True, "break_prompt_text": "one\\ntwo\\nsleep 休息"}
        program, windows = self.begin(prompt)
        self.assertEqual(len({window.title for window in windows}), 2)
        panel = self.screen.titled(lambda title: title == "xfce4-panel")[0]
        self.assertGreater(min(window.level for window in windows), panel.level)
        for window in windows:
            # Or compositors would draw a shadow, which falls on the next screen.
            self.assertEqual(list(self.screen.property(window.id, "_GTK_FRAME_EXTENTS")), [0] * 4)
            self.assertEqual(self.screen.display.create_resource_object("window", window.id).get_geometry().depth, 32)
        for monitor in self.monitors:
            # Where the panel is, the break screen's own background is seen once it has faded in.
            top = Box(monitor.x, monitor.y, monitor.width, 30)
            wait_until(lambda: len(self.screen.picture(top).colours()) == 1, 10, "the panel to be covered")
            earlier, picture = wait_for_countdown(self.screen, monitor)
            self.assertEqual(self.lines_of_prompt(picture, earlier.differs(picture)), 3)
        self.assertEqual(program.count(f"ticktack timer start {LONG_ENOUGH}$"), 1)

    @staticmethod
    def lines_of_prompt(picture, countdown):
        return picture.crop(Box(0, 0, picture.width, countdown.y - 30)).lines()

    def test_it_ends_by_itself_and_the_next_one_uses_the_same_windows(self):
        program = self.launch({"pref.break.time": 4 * SPEED})
        first = {window.title for window in wait_for_cover(self.session, self.monitors, 15)}
        program.wait_for("skip break view$", 10, times=2)
        program.wait_for(f"ticktack timer start {WORK}$", 5, times=2)
        wait_for_uncover(self.session)
        second = {window.title for window in wait_for_cover(self.session, self.monitors, 15)}
        self.assertEqual(first, second)

    def test_skip_on_one_monitor_ends_the_break_everywhere(self):
        program, _ = self.begin()
        link, skip = self.wait_for_blue(self.monitors[1], 2)[-2:]
        self.assertGreater(skip.height, link.height)
        self.make_this_break_the_last(program)
        self.click_middle(skip)
        program.wait_for("skip break view$", 5)
        program.wait_for("ticktack timer start 36000$", 5)
        wait_for_uncover(self.session)
        self.assertEqual(program.count("skip break view$"), 1)

    def test_a_forced_long_break_offers_no_skip_but_the_notice_ends_it(self):
        program, _ = self.begin({"pref.short.break.times": 1, "force_long_break": True})
        wait_for_countdown(self.screen, self.monitors[0])
        blue = self.blue_rows(self.monitors[0])
        self.assertEqual(len(blue), 1, "more than the notice's link is blue")
        self.wait_for_keys_to_count()
        self.screen.press("Escape")
        self.wait_for_keys_to_count()
        self.assertEqual(program.count("skip break view$"), 0, "Escape ended a break that cannot be skipped")
        self.make_this_break_the_last(program)
        self.click_middle(blue[0])
        program.wait_for("Click new feature: Water Reminder$", 5)
        program.wait_for("skip break view$", 5)
        wait_for_uncover(self.session)

    def test_it_stands_on_every_workspace(self):
        _, windows = self.begin()
        self.session.screen.switch_workspace(1)
        self.addCleanup(self.session.screen.switch_workspace, 0)
        wait_until(lambda: list(self.screen.property(self.screen.root.id, "_NET_CURRENT_DESKTOP")) == [1], 5,
                   "the other workspace")
        self.assertEqual({window.title for window in break_windows(self.session)},
                         {window.title for window in windows})

    def test_a_view_that_dies_is_replaced(self):
        program, _ = self.begin()
        view = self.helpers(program, "kelpa-view")
        self.assertEqual(len(view), 1)
        os.kill(view[0], signal.SIGKILL)
        wait_until(lambda: self.helpers(program, "kelpa-view") not in ([], view), 5, "another view")
        wait_for_cover(self.session, self.monitors)
        self.assertFalse(program.ended())
        wait_for_countdown(self.screen, self.monitors[0])


if __name__ == "__main__":
    main()
