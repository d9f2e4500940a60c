#!/usr/bin/python3
"""Breaks on two monitors as a person sees them: what covers the screens, what stands on it, and how it ends."""
import time

from Xlib import X

from support import LONG_ENOUGH, Box, DesktopTest, main, wait_until
from virtual_desktop import break_windows, wait_for_countdown, wait_for_cover, wait_for_still, wait_for_uncover

LIGHT = (0xf1, 0xf2, 0xf4)


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

    def test_skip_on_one_monitor_ends_the_break_everywhere(self):
        program, _ = self.begin()
        link, skip = self.wait_for_blue(self.monitors[1], 2)[-2:]
        self.assertGreater(skip.height, link.height)
        self.make_this_break_the_last(program)
        self.click_middle(skip)
        program.wait_for("skip break view$", 5)
        program.wait_for("ticktack timer start 36000$", 5)
        self.click_middle(skip)     # which is on its way out
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

    def test_it_is_seen_through_while_it_fades(self):
        def background():
            return self.screen.picture(self.monitors[1]).background()

        desktop = background()
        self.begin_break()
        wait_until(lambda: background() not in (LIGHT, desktop), 2, "something in between", pause=0.01)
        wait_until(lambda: background() == LIGHT, 5, "the end of the fade")


class Plain(DesktopTest):
    """A desktop on which nothing is seen through: a break's background stands at once, and its text fades."""
    TRAY = False

    def ink(self):
        """How much of the first monitor is text that can be seen."""
        return sum(map(sum, self.screen.picture(self.below_the_count()).ink(24)))

    def made(self):
        """The windows of breaks, also those that do not show."""
        return {window.id for window in self.screen.root.query_tree().children if window.get_wm_name() in ("1", "2")}

    def test_it_is_prepared_covers_at_once_and_fades_in_out_and_back(self):
        # The same words in both breaks.
        program = self.launch({"custom_break_prompt": True, "break_prompt_text": "rest"}, speed=4)
        wait_until(lambda: len(self.made()) == 2, 20, "the prepared windows")
        known = self.made()
        self.assertEqual(break_windows(self.session), [], "they show before their time")
        program.wait_for("ticktack timer timesup", 10)
        begin = time.monotonic()
        windows = wait_for_cover(self.session, self.monitors, 2)
        took = time.monotonic() - begin
        self.assertEqual(self.ink(), 0, "the text is there before the fade")
        self.assertLess(took, 0.5)
        self.assertEqual(([window.title for window in windows], {window.id for window in windows}), (["1", "2"], known))
        for window in windows:
            attributes = self.screen.display.create_resource_object("window", window.id).get_attributes()
            self.assertTrue(attributes.override_redirect)

        wait_for_still(self.screen, self.below_the_count())
        whole = self.ink()
        self.assertEqual(self.ask("skip")[0], 0)
        wait_until(lambda: self.ink() < whole, 2, "the fade", pause=0.01)
        self.take_break()
        program.wait_for(f"ticktack timer start {LONG_ENOUGH}$", 5, times=2)
        seen = []
        wait_until(lambda: seen.append(self.ink()) or seen[-1] >= whole, 5, "all of the text", pause=0.01)
        self.assertGreater(min(seen), 0, "it vanished before it came back")
        self.assertEqual({window.id for window in break_windows(self.session)}, known)
        self.assertEqual(self.ask("skip")[0], 0)
        wait_for_uncover(self.session)
        self.take_break()
        self.assertEqual(self.made(), known)

    def test_what_it_says(self):
        """Here two lines of prompt, hours, and no Skip."""
        self.begin_break({"custom_break_prompt": True, "break_prompt_text": "Stand up\\nand walk",
                          "pref.short.break.times": 1, "pref.long.break.time": 120, "force_long_break": True})
        wait_for_still(self.screen, self.below_the_count())
        # The prompt, the figures, the link and the hint.
        self.assertEqual(self.screen.picture(self.monitors[0]).lines(), 5)
        changed = self.shown_text_moves(self.monitors[0])
        figures = self.screen.picture(Box(0, changed.y - 2, self.WIDTH, changed.height + 4))
        self.assertEqual(figures.glyphs(), len("0159:59"))
        # Each is painted in its own time.
        wait_until(lambda: not self.screen.picture(self.monitors[0]).differs(self.screen.picture(self.monitors[1])), 3,
                   "the two monitors to show the same")

    def test_a_long_prompt_shrinks_and_is_shown_whole(self):
        self.begin_break({"custom_break_prompt": True, "break_prompt_text": "words and more words " * 30})
        wait_until(lambda: len(self.blue_rows(self.monitors[0])) == 2, 5, "Skip beside the link")
        page = self.screen.picture(self.monitors[0])
        text = page.ink_box()
        self.assertGreaterEqual(min(text.x, text.y), 8)
        self.assertLessEqual((text.x + text.width, text.y + text.height), (self.WIDTH - 8, self.HEIGHT - 8))
        self.assertGreater(page.lines(), 8)

    def pop_up(self):
        """A window beyond the window manager's reach, on top of everything."""
        popup = self.screen.root.create_window(100, 100, 200, 100, 0, X.CopyFromParent, override_redirect=True,
                                               background_pixel=0xff0000)
        self.addCleanup(self.screen.display.sync)
        self.addCleanup(popup.destroy)
        popup.set_wm_name("popup")
        popup.map()
        self.screen.display.sync()
        return popup

    def top_titles(self):
        return [window.title for window in sorted(self.screen.windows(), key=lambda window: -window.level)]

    def wait_on_top(self):
        wait_until(lambda: set(self.top_titles()[:2]) == {"1", "2"}, 2, "the break to be on top")

    def test_what_climbs_above_is_covered_again(self):
        self.begin_break()
        popup = self.pop_up()
        self.wait_on_top()
        # Whoever fights for the top wins in the end, as a screen locker must.
        for _ in range(60):
            popup.configure(stack_mode=X.Above)
            self.screen.display.sync()
            self.settle(0.12)       # some more than what it gathers before it answers
        self.assertEqual(self.top_titles()[0], "popup")
        # Others do not.
        for _ in range(25):
            self.pop_up()
            self.wait_on_top()


if __name__ == "__main__":
    main()
