#!/usr/bin/python3
"""Under GNOME's compositor, which has no layers and tells of activity on the session bus; and under the same one as a
window manager of X11."""
from wayland_support import LIGHTS, DesktopTest, MutterSession, Session, WaylandTest, main, wait_until

from activity_support import HOURS, AtRest
from virtual_desktop import Box, break_windows, wait_for_cover
from Xlib import X

# How high the bar is that windows have here.
BAR = 40
# Lighter than the ground, and darker than the edge of a window.
LIT = 180


class Mutter(AtRest, WaylandTest):
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
        # What the pointer looks like is the machine's affair, and it stands where the window's edge is looked for.
        self.screen.move(5, 590)
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

    def move(self, seconds):
        self.screen.push_for(seconds)

    def test_the_cycle_stops_five_minutes_after_the_last_input_and_the_next_starts_it(self):
        self.assert_stops_after_five_minutes_and_starts_with_the_next_input("GNOME")


class MutterOnX11(DesktopTest):
    """It draws shadows, and orders windows beyond a window manager's reach in a way of its own."""
    TRAY = False

    @classmethod
    def start_window_manager(cls):
        cls.session.spawn(["mutter", "--x11", "--sm-disable"], {"LIBGL_ALWAYS_SOFTWARE": "1"})
        wait_until(lambda: cls.screen.selection_owned("_NET_WM_CM_S0"), 20, "the compositor")

    def begin(self):
        self.launch(environment={"KELPA_APPEARANCE": "light"})
        wait_for_cover(self.session, self.monitors, 15)

    def colours(self, area):
        return set(self.screen.picture(area).colours())

    def pop_up(self, area):
        """Something red beyond the window manager's reach, which in the server's order is below the break by now."""
        popup = self.screen.root.create_window(*area, 0, X.CopyFromParent, override_redirect=True, background_pixel=0xFF0000)
        self.addCleanup(popup.destroy)
        popup.map()
        self.screen.display.sync()

        def beneath():
            order = [window.id for window in self.screen.root.query_tree().children]
            return all(order.index(popup.id) < order.index(window.id) for window in break_windows(self.session))

        wait_until(beneath, 3, "the break to be raised")
        self.settle(0.5)    # until that has been painted
        return popup

    def wait_for_light(self, *areas):
        wait_until(lambda: all(self.colours(area) <= LIGHTS for area in areas), 8, "nothing but the break")

    def test_no_shadow_falls_on_the_next_screen(self):
        self.begin()
        seam = Box(self.monitors[1].x - 40, self.HEIGHT - 120, 80, 100)
        self.wait_for_light(seam)
        # Around a window that has come to rest one is drawn with the next thing that happens there.
        self.pop_up(seam).destroy()
        self.screen.display.sync()
        self.settle(0.5)
        self.wait_for_light(seam)

    def test_nothing_that_pops_up_stays_above_a_break(self):
        terminal = self.session.spawn(["xterm", "-title", "beneath"])
        self.addCleanup(Session.end, terminal)
        wait_until(lambda: self.screen.titled(lambda title: title == "beneath"), 10, "a window")
        self.begin()
        area = Box(20, self.HEIGHT - 120, 100, 60)
        self.wait_for_light(area)
        for _ in range(2):
            self.pop_up(area)
            self.wait_for_light(area)


if __name__ == "__main__":
    main()
