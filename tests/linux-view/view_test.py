#!/usr/bin/python3
"""Break windows on a virtual desktop, driven by a stand-in for the core: what they cover, who gets the keys, and
what they look like."""
import sys
import time
from pathlib import Path

from support import FADE, Session, ViewTest, main, start_talking, wait_for_cover, wait_for_still, wait_for_uncover, \
    wait_until

from Xlib import X
from virtual_desktop import Box, break_windows

LIGHT, DARK = (0xf1, 0xf2, 0xf4), (0x1e, 0x1f, 0x22)
DEAF = 2.0     # seconds in which a break window listens to no key


class BreakWindows(ViewTest):
    def test_each_monitor_is_covered_at_once_when_it_was_prepared(self):
        driver = self.drive()
        driver.tell("prepare")
        wait_until(lambda: len(self.made()) == 2, 5, "the prepared windows")
        known = self.made()
        time.sleep(0.3)
        self.assertFalse(break_windows(self.session), "they show before their time")
        begin = time.monotonic()
        driver.tell("show")
        windows = wait_for_cover(self.session, self.monitors, 2)
        self.assertLess(time.monotonic() - begin, 0.5)
        self.assertEqual([window.title for window in windows], ["1", "2"])
        self.assertEqual({window.id for window in windows}, known)
        for window in windows:
            attributes = self.screen.display.create_resource_object("window", window.id).get_attributes()
            self.assertTrue(attributes.override_redirect)

    def made(self):
        """The windows of breaks, also those that do not show."""
        return {window.id for window in self.screen.root.query_tree().children if window.get_wm_name() in ("1", "2")}

    def test_the_content_fades_out_of_the_background_and_back(self):
        driver = self.drive()
        driver.tell("show")
        wait_for_cover(self.session, self.monitors, 5)
        self.assertLess(self.screen.picture(self.monitors[0]).ink_share(), 0.002, "the text is there before the fade")
        wait_for_still(self.screen, self.monitors[0])
        self.assertGreater(self.screen.picture(self.monitors[0]).ink_share(), 0.01)
        driver.tell("close")
        self.assertTrue(driver.hears("closed 2", FADE + 5))
        wait_for_uncover(self.session, 1)

    def test_a_show_while_it_fades_out_keeps_the_window(self):
        driver = self.drive()
        windows = self.shown(driver)
        page, whole = self.screen.picture(self.monitors[0]), self.ink()
        driver.tell("close")
        wait_until(lambda: page.differs(self.screen.picture(self.monitors[0])), FADE, "the fade", pause=0.01)
        driver.tell("show")
        time.sleep(0.1)
        self.assertGreater(self.ink(), whole / 2, "it vanished before it came back")
        wait_until(lambda: self.ink() >= whole, FADE + 5, "all of the text")
        self.assertEqual(break_windows(self.session), windows)
        self.assertGreater(self.screen.picture(self.monitors[0]).ink_share(), 0.01)

    def ink(self):
        """How much of the first monitor is text that can be seen."""
        return sum(map(sum, self.screen.picture(self.monitors[0]).ink(24)))

    def test_what_it_says(self):
        driver = self.drive()
        self.shown(driver, prompt="Stand up\\nand walk", count="0100:00", skip="0")
        page = self.screen.picture(self.monitors[0])
        self.assertEqual(page.background(), LIGHT)
        # Two lines of prompt, the figures, the link and the hint.
        self.assertEqual(page.lines(), 5)
        driver.tell("count 0059:59")
        wait_until(lambda: page.differs(self.screen.picture(self.monitors[0])), 5, "the figures to change")
        wait_for_still(self.screen, self.monitors[0])
        changed = page.differs(self.screen.picture(self.monitors[0]))
        figures = self.screen.picture(Box(0, changed.y - 2, self.WIDTH, changed.height + 4))
        self.assertEqual(figures.glyphs(), 7)
        self.assertLess(abs(changed.x + changed.width / 2 - self.WIDTH / 2), 160)
        # Each is painted in its own time, and the last step of a fade is a small one.
        self.assertTrue(wait_until(lambda: self.screen.picture(self.monitors[0]).differs(
            self.screen.picture(self.monitors[1])) is None, 3), "the two monitors show different things")

        driver.tell("skip 1")
        self.assertTrue(wait_until(lambda: self.screen.picture(self.monitors[0]).lines() == 6, 1), "no Skip")

    def test_a_long_prompt_shrinks_and_is_shown_whole(self):
        driver = self.drive()
        self.shown(driver, prompt="words and more words " * 30)
        page = self.screen.picture(self.monitors[0])
        rows = [any(row) for row in page.ink()]
        columns = [any(column) for column in zip(*page.ink())]
        self.assertFalse(any(rows[:8]) or any(rows[-8:]) or any(columns[:8]) or any(columns[-8:]))
        self.assertGreater(page.lines(), 8)

    def test_clicks(self):
        driver = self.drive()
        self.shown(driver)
        page = self.screen.picture(self.monitors[1])
        def blue(box, row):
            return [x for x in range(box.width) if row[x * 4] > 150 > 120 > row[x * 4 + 2]]
        rows = [y for y in range(page.height) if blue(page, page.row(y))]
        x = self.monitors[1].x + sum(blue(page, page.row(rows[-5]))) // len(blue(page, page.row(rows[-5])))
        self.screen.click(x, rows[-5])
        self.assertTrue(driver.hears("skip"))
        link = blue(page, page.row(rows[2]))
        self.screen.click(self.monitors[1].x + link[0], rows[2])
        self.assertTrue(driver.hears("notice"))
        going = self.screen.picture(self.monitors[0])
        driver.tell("close")
        wait_until(lambda: going.differs(self.screen.picture(self.monitors[0])), 3, "the window to go")
        self.screen.click(x, rows[-5])
        self.assertFalse(driver.hears("skip", 0.5), "a window that is going still listens")
        self.screen.move(5, self.HEIGHT - 5)

    def test_dark(self):
        driver = self.drive(KELPA_APPEARANCE="dark")
        self.shown(driver)
        self.assertEqual(self.paper(self.monitors[1]), DARK)

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

    def wait_on_top(self):
        wait_until(lambda: set(self.top_titles()[:2]) == {"1", "2"}, 2, "the break to be on top")

    def test_what_climbs_above_is_covered_again(self):
        driver = self.drive()
        windows = self.shown(driver)
        popup = self.pop_up()
        self.wait_on_top()
        # Whoever fights for the top wins in the end, as a screen locker must.
        for _ in range(60):
            popup.configure(stack_mode=X.Above)
            self.screen.display.sync()
            time.sleep(0.12)
        self.assertEqual(self.top_titles()[0], "popup")
        self.assertEqual(len(windows), 2)
        # Others do not.
        for _ in range(25):
            self.pop_up()
            self.wait_on_top()


class Keys(ViewTest):
    COMPOSITOR = True

    def setUp(self):
        terminal = self.session.spawn(["xterm", "-T", "terminal"])
        self.addCleanup(Session.end, terminal)
        wait_until(lambda: self.screen.focus() == "terminal", 10, "the terminal to have the keyboard")

    def test_the_keyboard_is_taken_as_soon_as_another_lets_it_go(self):
        window = self.screen.root
        self.assertEqual(window.grab_keyboard(True, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime), X.GrabSuccess)
        driver = self.drive()
        self.shown(driver)
        self.assertEqual(window.grab_keyboard(True, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime), X.GrabSuccess)
        self.screen.display.ungrab_keyboard(X.CurrentTime)
        self.screen.display.sync()
        wait_until(lambda: not self.screen.keyboard_rests(), 5, "the keyboard to be taken")
        driver.tell("close")
        wait_until(self.screen.keyboard_rests, 1, "the keyboard to be let go while the window goes")
        self.assertTrue(break_windows(self.session), "the windows were gone before the keyboard")

    def test_keys_count_after_two_seconds_and_nothing_is_the_default(self):
        driver = self.drive()
        driver.tell("show")
        wait_for_cover(self.session, self.monitors, 5)
        for key in ("Tab", "Tab", "Return", "space", "Escape"):
            self.screen.press(key)
        self.assertFalse(driver.hears("skip", DEAF + 0.3))
        for key in ("Return", "space"):
            self.screen.press(key)
        self.assertFalse(driver.hears("skip", 0.4), "something is set off without having been chosen")
        for key in ("Tab", "Tab", "Return"):
            self.screen.press(key)
        self.assertTrue(driver.hears("skip"))
        self.screen.press("Tab")
        self.screen.press("space")
        self.assertTrue(driver.hears("notice"))

    def test_the_keyboard_goes_to_another_window_when_its_owner_is_gone(self):
        other = self.session.spawn(["xterm", "-T", "other"])
        self.addCleanup(Session.end, other)
        wait_until(lambda: self.screen.focus() == "other", 5, "the other terminal")
        driver = self.drive()
        self.shown(driver)
        Session.end(other)
        driver.tell("close")
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the keyboard to go to the other terminal")

    def test_it_is_seen_through_while_it_fades(self):
        driver = self.drive()
        before = self.screen.picture(self.monitors[1])
        driver.tell("show")
        wait_for_cover(self.session, self.monitors, 5)
        wait_until(lambda: self.paper(self.monitors[1]) not in (LIGHT, before.background()), FADE, "something in between",
                   pause=0.01)
        wait_until(lambda: self.paper(self.monitors[1]) == LIGHT, FADE + 5, "the end of the fade")


class Scaled(ViewTest):
    # 701 and 603 are no multiples of anything: a scaled window must still reach every edge.
    WIDTH, HEIGHT = 701, 603

    def test_every_pixel_is_covered_at_any_scale(self):
        for factor in ("1.25", "1.5", "1.75", "2", "2.25"):
            with self.subTest(factor=factor):
                driver = self.drive(QT_SCALE_FACTOR=factor)
                driver.tell("show")
                wait_for_cover(self.session, self.monitors, 5)
                for monitor in self.monitors:
                    wait_until(lambda: self.edges(monitor) == {LIGHT}, 1)
                    self.assertEqual(self.edges(monitor), {LIGHT})
                self.finish(driver)

    def edges(self, monitor):
        """The colours along the edges of a monitor."""
        page = self.screen.picture(monitor)
        return ({page.pixel(x, y) for x in (0, self.WIDTH - 1) for y in range(self.HEIGHT)} |
                {page.pixel(x, y) for x in range(self.WIDTH) for y in (0, self.HEIGHT - 1)})


class PortalAppearance(ViewTest):
    def test_it_follows_the_desktop(self):
        portal = start_talking(self.session, [sys.executable, Path(__file__).with_name("fake_portal.py")])
        self.addCleanup(Session.end, portal)
        wait_until(lambda: self.session.has_owner("org.freedesktop.portal.Desktop"), 5, "the portal")
        driver = self.drive(KELPA_APPEARANCE="")
        self.shown(driver)
        self.assertEqual(self.paper(self.monitors[0]), DARK)
        for scheme, colour in (("2", LIGHT), ("1", DARK), ("0", LIGHT)):
            portal.stdin.write(scheme + "\n")
            portal.stdin.flush()
            wait_until(lambda: self.paper(self.monitors[0]) == colour, 3, f"scheme {scheme}")


class ThemeAppearance(ViewTest):
    """A desktop without a portal whose settings program names a theme."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.write_theme("Coal", "#3b3b3e", "#d4d4d4")
        cls.write_theme("NotDark", "#f6f6f6", "#101010")

    def wait_for_paper(self, colour, what):
        wait_until(lambda: self.paper(self.monitors[0]) == colour, 3, what)

    def test_a_theme_is_known_by_its_colours_and_else_by_its_name(self):
        program = self.settings("Coal")
        for theme, colour in (("Coal", DARK), ("NotDark", LIGHT), ("Nowhere-dark", DARK)):
            with self.subTest(theme):
                program.publish(theme)
                driver = self.drive(KELPA_APPEARANCE="")
                self.shown(driver)
                self.assertEqual(self.paper(self.monitors[0]), colour)
                self.finish(driver)

    def test_a_theme_that_changes_while_a_window_shows(self):
        driver = self.drive(KELPA_APPEARANCE="")
        self.shown(driver)
        self.assertEqual(self.paper(self.monitors[0]), LIGHT)
        program = self.settings("Coal")
        self.wait_for_paper(DARK, "the colours of settings that came after the window")
        program.publish("NotDark")
        self.wait_for_paper(LIGHT, "the colours of another theme")
        # Another program takes the settings over.
        self.settings("Coal")
        self.wait_for_paper(DARK, "the colours of another program's settings")
        program.publish("NotDark")
        driver.tell("prompt something")
        wait_for_still(self.screen, self.monitors[0])
        self.assertEqual(self.paper(self.monitors[0]), DARK, "it listens to a program that is not in charge")


if __name__ == "__main__":
    main()
