#!/usr/bin/python3
"""The window of updates on a virtual desktop: what it tells, and that its buttons do what they say."""
import os
import plistlib
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from support import ENDING, HELPER, ROOT, ServedTest, debian_package, feed, item

sys.path.insert(0, str(ROOT / "scripts"))
from virtual_desktop import Program, Session, wait_until  # noqa: E402
from virtual_desktop.accessible import Accessibility  # noqa: E402

DRIVER = os.environ.get("KELPA_UPDATE_DRIVER", str(ROOT / "build/dev/kelpa-update-driver"))
KELPA = os.environ.get("KELPA", str(ROOT / "build/dev/kelpa"))
VIEW = os.environ.get("KELPA_VIEW", str(ROOT / "build/dev/kelpa-view"))
TITLE = "Software Update"
PACKAGE = debian_package("0.2.0", 2_700_000)
NOTES = "<sparkle:releaseNotesLink>https://kelpa.example/notes</sparkle:releaseNotesLink>"


class Desktop(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.session = Session(monitors=1, width=900, height=640)
        cls.addClassCleanup(cls.session.stop)
        cls.session.start()
        cls.session.start_window_manager()
        cls.screen = cls.session.screen
        cls.accessibility = Accessibility(cls.session)
        cls.addClassCleanup(cls.accessibility.close)

    def window(self):
        return next(iter(self.screen.titled(lambda title: title == TITLE)), None)

    def gone(self):
        return wait_until(lambda: not self.window(), 10, "the window to go")

    def told(self):
        """What the window says, each thing with its role; nothing while there is no window."""
        window = next((one for one in self.accessibility.windows() if one.name() == TITLE), None)
        return [(one.role(), one.name()) for one in window.walk()] if window and self.window() else []

    def words(self):
        return [name for _, name in self.told()]

    def buttons(self):
        return [name for role, name in self.told() if role == "push button"]

    def wait_for_words(self, words, seconds=20):
        wait_until(lambda: words in self.words(), seconds, f"'{words}'; there is {self.told()}")

    def box(self, role, name):
        element = self.accessibility.window(TITLE).find(role, name)
        return element and element.box()

    def click_until(self, name, state):
        """Clicks on a button or link until something comes of it: not every click so soon after another counts."""
        def attempt():
            box = self.box("push button", name) or self.box("link", name)
            if box:
                self.screen.click(box.x + box.width // 2, box.y + box.height // 2)
            return wait_until(state, 1)
        wait_until(attempt, 15, f"something to come of '{name}'")


class Window(ServedTest, Desktop):
    def setUp(self):
        super().setUp()
        own = Path(tempfile.mkdtemp(dir=self.folder))
        self.handed, self.programs = own / "handed", own / "programs"
        self.programs.mkdir()
        opener = self.programs / "xdg-open"
        opener.write_text('#!/bin/sh\nprintf "%s\\n" "$1" >> "$HANDED"\n')
        opener.chmod(0o755)
        self.store, self.cache = own / "settings.plist", own / "cache"
        self.server.paths["/kelpa" + ENDING] = PACKAGE
        self.server.paths["/feed.xml"] = feed(item("6", self.server.base + "/kelpa" + ENDING, len(PACKAGE),
                                                   self.maker.sign(PACKAGE), name="0.2.0", more=NOTES))

    def start(self, speed=1):
        """An updater; at a speed of 1000 it looks for updates by itself at once."""
        environment = {**self.session.environment, "SSL_CERT_FILE": str(self.authority.certificate),
                       "HANDED": str(self.handed), "PATH": f"{self.programs}:{self.session.environment['PATH']}",
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.driver = subprocess.Popen(
            [DRIVER, self.server.base + "/feed.xml", self.maker.key, ENDING, HELPER, str(self.store), str(self.cache),
             str(speed), VIEW], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True, env=environment)
        self.addCleanup(self.end)

    def end(self):
        self.driver.stdin.close()
        self.driver.wait(10)
        self.gone()

    def ask(self):
        self.driver.stdin.write("ask\n")
        self.driver.stdin.flush()

    def skipped(self):
        return plistlib.loads(self.store.read_bytes()).get("update.skippedVersion")

    def offer(self):
        self.start()
        self.ask()
        self.wait_for_words("Version 0.2.0 is available; you have 0.1.0.")

    def test_an_offered_update_is_installed(self):
        self.offer()
        self.assertEqual(self.screen.focus(), TITLE)
        self.assertEqual(self.buttons(), ["Install", "Later", "Skip This Version"])
        self.click_until("Install", self.handed.exists)
        self.assertEqual(Path(self.handed.read_text().strip()).read_bytes(), PACKAGE)
        self.wait_for_words("The update is ready")
        self.assertEqual(self.buttons(), ["OK"])
        self.click_until("OK", lambda: not self.window())

    def test_a_download_shows_how_far_it_is_and_can_be_cancelled(self):
        def stalling(request):
            request.send_response(200)
            request.end_headers()
            request.wfile.write(PACKAGE[:len(PACKAGE) // 3])
            self.server.ending.wait(60)
        self.server.paths["/kelpa" + ENDING] = stalling
        self.offer()
        self.click_until("Install", lambda: self.buttons() == ["Cancel"])
        self.wait_for_words("0.9 of 2.7 MB")
        self.assertIn(("progress bar", "33%"), self.told())
        self.click_until("Cancel", lambda: not self.window())
        wait_until(lambda: not list(self.cache.iterdir()), 10, "the half download to go")
        self.assertFalse(self.handed.exists())

    def test_what_the_notes_button_and_the_others_do(self):
        self.offer()
        self.click_until("Release Notes", self.handed.exists)
        self.assertEqual(set(self.handed.read_text().split()), {"https://kelpa.example/notes"})
        self.click_until("Skip This Version", lambda: not self.window())
        self.assertEqual(self.skipped(), "6")

    def test_a_screen_reader_presses_the_buttons(self):
        self.offer()

        def pressed():
            button = self.accessibility.window(TITLE).find("push button", "Install")
            if button:
                button.press()
            return wait_until(self.handed.exists, 1)
        wait_until(pressed, 15, "the download")
        self.assertEqual(len(self.handed.read_text().splitlines()), 1)

    def test_a_second_click_is_not_for_the_button_that_took_the_place_of_the_first(self):
        self.server.paths["/kelpa" + ENDING] = lambda _: self.server.ending.wait(60)
        self.offer()
        box = self.box("push button", "Install")
        at = (box.x + box.width // 2, box.y + box.height // 2)

        def clicked_twice():
            self.screen.click(*at)
            self.screen.click(*at)
            return wait_until(lambda: self.buttons() == ["Cancel"], 1)
        wait_until(clicked_twice, 15, "the download")
        self.assertTrue(self.window())
        wait_until(lambda: any(path.startswith("/kelpa") for path, _ in self.server.requests), 10, "the request")

    def test_an_update_that_nobody_asked_for_does_not_take_the_keyboard(self):
        terminal = self.session.spawn(["xterm", "-T", "work"])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: self.screen.focus() == "work", 15, "the terminal")
        self.start(speed=1000)
        self.wait_for_words("A new version of Kelpa is available")
        self.assertEqual(self.screen.focus(), "work")
        self.assertFalse(self.handed.exists())

    def test_escape_puts_it_off_and_no_key_installs(self):
        self.offer()
        wait_until(lambda: self.screen.focus() == TITLE, 10, "the keyboard")
        self.screen.press("Return")
        self.screen.press("space")
        self.screen.press("Escape")
        self.gone()
        self.assertIsNone(self.skipped())
        self.assertFalse(self.handed.exists())
        self.assertEqual([path.split("?")[0] for path, _ in self.server.requests], ["/feed.xml"])


class Menu(Desktop):
    def test_the_menu_line_of_a_copy_without_a_feed_says_so(self):
        self.session.start_tray_service()
        program = Program(self.session, KELPA)
        program.start(environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        item = program.item()
        item.click_line(item.line("Check for Updates").id)
        self.wait_for_words("Kelpa does not update itself here")
        self.assertEqual(self.buttons(), ["OK"])
        self.assertNotIn("update.lastCheck", plistlib.loads(program.settings_file().read_bytes())
                         if program.settings_file().exists() else {})
        children = Path(f"/proc/{program.process.pid}/task/{program.process.pid}/children").read_text().split()
        self.assertEqual([Path(f"/proc/{child}/comm").read_text().strip() for child in children], ["kelpa-view"])
        self.click_until("OK", lambda: not self.window())


if __name__ == "__main__":
    unittest.main()
