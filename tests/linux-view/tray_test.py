#!/usr/bin/python3
"""The status item as an icon in an old system tray, which comes and goes."""
import os
import shutil
import signal
import socket
import sys
import time
from pathlib import Path

from support import DRIVER, Session, ViewTest, main, start_talking, wait_for_still, wait_until

from virtual_desktop import Box

TRAYER = ["trayer", "--edge", "top", "--widthtype", "request", "--height", "24"]


def start_tray(test):
    tray = test.session.spawn(TRAYER)
    test.addCleanup(Session.end, tray)
    wait_until(lambda: test.screen.selection_owned("_NET_SYSTEM_TRAY_S0"), 10, "the tray")
    return tray


def docked(test, seconds=5):
    """The icon's window once its size and its place have settled."""
    def settled():
        first = test.screen.embedded()
        time.sleep(0.2)
        return first[0] if first and first == test.screen.embedded() else None
    return wait_until(settled, seconds, "the icon")


class TrayIcon(ViewTest):

    def gone(self, seconds=3):
        return wait_until(lambda: not self.screen.embedded(), seconds)

    def helper(self, driver):
        """Process id of kelpa-tray; nothing when none runs."""
        for entry in Path("/proc").iterdir():
            if entry.name.isdigit():
                try:
                    fields = (entry / "stat").read_text().rsplit(")", 1)
                except OSError:
                    continue
                if fields[0].endswith("(kelpa-tray") and fields[1].split()[1] == str(driver.process.pid) \
                        and fields[1].split()[0] != "Z":
                    return int(entry.name)
        return None

    def test_it_shows_picture_and_time(self):
        start_tray(self)
        driver = self.drive()
        driver.tell("tray")
        icon = docked(self)
        self.assertEqual(icon.title, "Kelpa")
        self.assertGreater(icon.width, 2 * icon.height)
        before = self.screen.picture(icon)
        self.assertGreater(before.glyphs(), 4)
        driver.tell("title 24:51")
        changed = wait_until(lambda: before.differs(self.screen.picture(icon)), 2)
        self.assertGreater(changed.x, icon.height, "the picture changed with the time")
        driver.tell("title ")
        self.assertTrue(wait_until(lambda: docked(self).width < 2 * icon.height, 3), "it keeps the room of the time")
        driver.tell("untray")
        self.assertTrue(self.gone())
        self.assertTrue(wait_until(lambda: not self.helper(driver), 3))

    def test_its_menu(self):
        start_tray(self)
        driver = self.drive()
        driver.tell("tray")
        icon = docked(self)
        menu = self.open_menu(icon)
        driver.tell("pause - Wrok -")
        self.assertTrue(wait_until(lambda: menu.differs(self.screen.picture()), 2), "the open menu does not follow")
        for key in ("Down", "Down", "Return"):
            self.screen.press(key)
        self.assertEqual(driver.hears("clicked"), "clicked 4")
        self.open_menu(icon)
        self.screen.press("Escape")
        self.assertFalse(driver.hears("clicked", 0.3))

    def open_menu(self, icon):
        """Gives a picture of everything once the menu is open and drawn."""
        closed = self.screen.picture()
        self.screen.click(icon.x + 5, icon.y + 5)
        wait_until(lambda: (closed.differs(self.screen.picture()) or icon).height > 2 * icon.height, 5, "the menu")
        return wait_for_still(self.screen, self.screen.root.get_geometry())

    def test_its_pictures_are_found_wherever_the_helper_lies(self):
        """A distribution may put helpers deeper than beside the program's data."""
        start_tray(self)
        beside = Path(DRIVER).parent
        deep = self.session.folder / "libexec/deeper/kelpa"
        deep.mkdir(parents=True)
        shutil.copy(beside / "kelpa-tray", deep)
        ours, its = socket.socketpair()
        self.addCleanup(ours.close)
        with its:
            self.session.spawn(["/bin/bash", "-c", f"exec {deep}/kelpa-tray 3<&{its.fileno()}"],
                               pass_fds=[its.fileno()])
        manager = self.screen.selection_owner("_NET_SYSTEM_TRAY_S0").id
        ours.sendall(f"data\t{beside}/share/kelpa\nimage\tkelpa\nmanager\t{manager}\n".encode())
        icon = docked(self)
        ours.settimeout(0.5)
        with self.assertRaises(TimeoutError):
            self.fail(ours.recv(1000))
        self.assertGreater(self.screen.picture(icon).glyphs(), 0)

    def test_it_follows_the_tray(self):
        driver = self.drive()
        driver.tell("tray")
        time.sleep(0.3)
        self.assertFalse(self.helper(driver), "it runs without a tray")
        tray = start_tray(self)
        docked(self)
        first = self.helper(driver)
        tray.kill()
        self.assertTrue(self.gone())
        self.assertFalse(self.screen.titled(lambda title: title == "Kelpa"), "the icon is left on the desktop")
        start_tray(self)
        docked(self)
        self.assertEqual(self.helper(driver), first)

    def test_a_crash_is_made_good(self):
        start_tray(self)
        driver = self.drive()
        driver.tell("tray", "title 11:11")
        docked(self)
        first = self.helper(driver)
        os.kill(first, signal.SIGKILL)
        self.assertEqual(driver.hears("warning"), "warning kelpa-tray was ended by signal 9")
        self.assertTrue(wait_until(lambda: self.helper(driver) not in (None, first), 3))
        self.assertGreater(self.screen.picture(docked(self)).glyphs(), 4)
        driver.process.kill()
        driver.process.wait()
        self.assertTrue(self.gone())


class MenuColours(ViewTest):
    """The menu on desktops of which each says in a way of its own what it looks like."""

    def setUp(self):
        start_tray(self)

    def menu_of(self, keys=(), **environment):
        """A picture of the opened menu, without its frame, once keys were pressed in it."""
        driver = self.drive(**{"KELPA_APPEARANCE": "", **environment})
        driver.tell("tray")
        icon = docked(self)
        self.screen.click(icon.x + 5, icon.y + 5)
        window = wait_until(lambda: self.screen.titled_all("Kelpa", height=60), 5, "the menu")[0]
        self.screen.press(*keys)
        picture = wait_for_still(self.screen, Box(window.x + 3, window.y + 3, window.width - 6, window.height - 6))
        self.finish(driver)
        return picture

    def assert_drawn(self, menu, paper, ink):
        self.assertLess(max(abs(a - b) for a, b in zip(menu.background(), paper)), 24, menu.background())
        reached = max if sum(ink) > sum(paper) else min
        text = reached(menu.colours(), key=sum)
        self.assertLess(max(abs(a - b) for a, b in zip(text, ink)), 24, text)

    def test_they_are_the_themes(self):
        self.write_theme("Coal", "#3b3b3e", "#d4d4d4")
        self.write_theme("Paper", "#fff0e0", "#402010")
        program = self.settings("Coal")
        self.assert_drawn(self.menu_of(), (0x3b, 0x3b, 0x3e), (0xd4, 0xd4, 0xd4))
        program.publish("Paper")
        self.assert_drawn(self.menu_of(), (0xff, 0xf0, 0xe0), (0x40, 0x20, 0x10))

    def test_they_are_those_that_were_chosen_for_lxqt(self):
        folder = Path(self.session.environment["HOME"], ".config/lxqt")
        folder.mkdir(parents=True)
        (folder / "lxqt.conf").write_text("[General]\n[Palette]\nwindow_color=#20282c\nwindow_text_color=#e8e0d8\n"
                                          "highlight_color=#339b7e\nhighlighted_text_color=#c0ffc0\n")
        self.settings("Adwaita")
        menu = self.menu_of(["Down"], XDG_CURRENT_DESKTOP="LXQt")
        self.assert_drawn(menu, (0x20, 0x28, 0x2c), (0xe8, 0xe0, 0xd8))
        pictures = menu.crop(Box(0, 0, 20, menu.height))
        self.assertIn((0xc0, 0xff, 0xc0), pictures.colours(), "the chosen line's picture cannot be seen on its ground")
        self.assertGreater(sum(self.menu_of().background()), 600, "another desktop")

    def test_they_are_dark_where_the_portal_says_so_from_its_first_picture_on(self):
        self.write_theme("Bright", "#fafafa", "#101010")
        self.settings("Bright")
        portal = start_talking(self.session, [sys.executable, Path(__file__).with_name("fake_portal.py")])
        self.addCleanup(Session.end, portal)
        wait_until(lambda: self.session.has_owner("org.freedesktop.portal.Desktop"), 5, "the portal")
        menu = self.menu_of()
        self.assertLess(sum(menu.background()), 200)
        self.assertGreater(max(map(sum, menu.colours())), 600)


if __name__ == "__main__":
    main()
