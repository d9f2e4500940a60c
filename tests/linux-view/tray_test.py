#!/usr/bin/python3
"""The status item as an icon in an old system tray, which comes and goes."""
import os
import shutil
import signal
import socket
import time
from pathlib import Path

from support import DRIVER, Session, ViewTest, main, wait_for_still, wait_until

TRAYER = ["trayer", "--edge", "top", "--widthtype", "request", "--height", "24"]


class TrayIcon(ViewTest):
    def start_tray(self):
        tray = self.session.spawn(TRAYER)
        self.addCleanup(Session.end, tray)
        wait_until(lambda: self.screen.selection_owned("_NET_SYSTEM_TRAY_S0"), 10, "the tray")
        return tray

    def docked(self, seconds=5):
        """The icon's window once its size has settled."""
        def settled():
            first = self.screen.embedded()
            time.sleep(0.2)
            return first[0] if first and first == self.screen.embedded() else None
        return wait_until(settled, seconds, "the icon")

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
        self.start_tray()
        driver = self.drive()
        driver.tell("tray")
        icon = self.docked()
        self.assertEqual(icon.title, "Kelpa")
        self.assertGreater(icon.width, 2 * icon.height)
        before = self.screen.picture(icon)
        self.assertGreater(before.glyphs(), 4)
        driver.tell("title 24:51")
        changed = wait_until(lambda: before.differs(self.screen.picture(icon)), 2)
        self.assertGreater(changed.x, icon.height, "the picture changed with the time")
        driver.tell("title ")
        self.assertTrue(wait_until(lambda: self.docked().width < 2 * icon.height, 3), "it keeps the room of the time")
        driver.tell("untray")
        self.assertTrue(self.gone())
        self.assertTrue(wait_until(lambda: not self.helper(driver), 3))

    def test_its_menu(self):
        self.start_tray()
        driver = self.drive()
        driver.tell("tray")
        icon = self.docked()
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
        self.start_tray()
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
        icon = self.docked()
        ours.settimeout(0.5)
        with self.assertRaises(TimeoutError):
            self.fail(ours.recv(1000))
        self.assertGreater(self.screen.picture(icon).glyphs(), 0)

    def test_it_follows_the_tray(self):
        driver = self.drive()
        driver.tell("tray")
        time.sleep(0.3)
        self.assertFalse(self.helper(driver), "it runs without a tray")
        tray = self.start_tray()
        self.docked()
        first = self.helper(driver)
        tray.kill()
        self.assertTrue(self.gone())
        self.assertFalse(self.screen.titled(lambda title: title == "Kelpa"), "the icon is left on the desktop")
        self.start_tray()
        self.docked()
        self.assertEqual(self.helper(driver), first)

    def test_a_crash_is_made_good(self):
        self.start_tray()
        driver = self.drive()
        driver.tell("tray", "title 11:11")
        self.docked()
        first = self.helper(driver)
        os.kill(first, signal.SIGKILL)
        self.assertEqual(driver.hears("warning"), "warning kelpa-tray was ended by signal 9")
        self.assertTrue(wait_until(lambda: self.helper(driver) not in (None, first), 3))
        self.assertGreater(self.screen.picture(self.docked()).glyphs(), 4)
        driver.process.kill()
        driver.process.wait()
        self.assertTrue(self.gone())


if __name__ == "__main__":
    main()
