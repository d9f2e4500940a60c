#!/usr/bin/python3
"""The updater of the real program on a virtual desktop, from the question to the installer: what its window tells, and that
its buttons do what they say. The program is the one that is installed, but for its feed and its key."""
import os
import shutil
import signal
import sys
import tempfile
import time
from pathlib import Path
from unittest.mock import patch

from releases import ENDING, Maker, ServedTest, debian_package, feed, item, stalling

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "desktop"))

from support import PROGRAM, DesktopTest, main, wait_until  # noqa: E402
from virtual_desktop.accessible import Accessibility  # noqa: E402

TITLE = "Software Update"
OFFER = "A new version of Kelpa is available"
PACKAGE = debian_package("99.0", 2_700_000)
NOTES = "<sparkle:releaseNotesLink>https://kelpa.example/notes</sparkle:releaseNotesLink>"
# At this speed the first check of a run, which is not before a minute has passed, comes at once.
SOON = 100


class Updater(ServedTest, DesktopTest):
    MONITORS = ROOM = 1
    WIDTH, HEIGHT = 900, 640
    TRAY = False

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.session.start_tray_service()
        cls.accessibility = Accessibility(cls.session)
        cls.addClassCleanup(cls.accessibility.close)

    def setUp(self):
        super().setUp()
        self.own = Path(tempfile.mkdtemp(dir=self.folder))
        self.handed, self.programs = self.own / "handed", self.own / "programs"
        self.cache = Path(self.session.environment["XDG_CACHE_HOME"]) / "app.orvane.Kelpa/update"
        self.programs.mkdir()
        self.install_opener()
        self.server.paths["/kelpa" + ENDING] = PACKAGE
        self.publish()

    def publish(self, version="99", maker=None):
        self.server.paths["/feed.xml"] = feed(item(version, self.server.base + "/kelpa" + ENDING, len(PACKAGE),
                                                   (maker or self.maker).sign(PACKAGE), name="99.0", more=NOTES))

    def install_opener(self, code=0):
        """A desktop whose programs open what they are handed; they note it."""
        opener = self.programs / "xdg-open"
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>{self.handed}\nexit {code}\n')
        opener.chmod(0o755)

    def start(self, settings=None, speed=1, feed_url=None, **environment):
        self.program = self.launch(
            {"pref.work.time": 600, **(settings or {})}, speed=speed,
            environment={"KELPA_TEST_FEED": self.server.base + "/feed.xml" if feed_url is None else feed_url,
                         "KELPA_TEST_KEY": self.maker.key, "SSL_CERT_FILE": str(self.authority.certificate),
                         "PATH": f"{self.programs}:{self.session.environment['PATH']}",
                         "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **environment})
        return self.program

    def end(self):
        self.session.end(self.program.process)
        wait_until(lambda: not self.window(), 10, "the window to go")

    def look_for_updates(self):
        item = self.program.item()
        item.click_line(item.line("Check for Updates").id)

    def offer(self, **environment):
        """A version that somebody asked for and that is offered."""
        self.start(**environment)
        self.look_for_updates()
        running = self.ask("--version")[1].split()[1]
        self.wait_for_words(f"Version 99.0 is available; you have {running}.")

    def ends_fetching(self):
        wait_until(lambda: not self.helpers(self.program, "kelpa-update"), 15, "kelpa-update to end")

    def downloads(self):
        return list(self.cache.iterdir()) if self.cache.exists() else []

    def asked_for(self):
        return [path.split("?")[0] for path, _ in self.server.requests]

    # Looking

    def window(self):
        return next(iter(self.screen.titled(lambda title: title == TITLE)), None)

    def told(self):
        """What the window says, each thing with its role; nothing while there is no window."""
        window = next((one for one in self.accessibility.windows() if one.name() == TITLE), None)
        return [(one.role(), one.name()) for one in window.walk()] if window and self.window() else []

    def buttons(self):
        return [name for role, name in self.told() if role == "push button"]

    def wait_for_buttons(self, *names):
        wait_until(lambda: self.buttons() == list(names), 20, f"the buttons {names}")

    def wait_for_words(self, words):
        wait_until(lambda: any(words in name for _, name in self.told()), 20, f"'{words}'")

    def box(self, name):
        window = self.accessibility.window(TITLE)
        element = window.find("push button", name) or window.find("link", name)
        return element and element.box()

    def click_until(self, name, state):
        """Clicks on a button or link until something comes of it: not every click so soon after another counts."""
        def attempt():
            if box := self.box(name):
                self.click_middle(box)
            return wait_until(state, 1)
        wait_until(attempt, 15, f"something to come of '{name}'")

    # What a person asks for

    def test_an_offered_update_is_installed(self):
        self.offer()
        wait_until(lambda: self.screen.focus() == TITLE, 10, "the keyboard")
        self.wait_for_buttons("Install", "Later", "Skip This Version")
        self.click_until("Install", self.handed.exists)
        self.assertEqual(self.handed.read_text().splitlines(), [str(self.cache / ("kelpa_99" + ENDING))])
        self.assertEqual(Path(self.handed.read_text().strip()).read_bytes(), PACKAGE)
        self.wait_for_words("The update is ready")
        self.wait_for_buttons("OK")
        self.ends_fetching()
        self.assertAlmostEqual(self.stored(self.program)["update.lastCheck"], time.time(), delta=60)
        self.assertEqual(self.asked_for(), ["/feed.xml", "/kelpa" + ENDING])
        self.click_until("OK", lambda: not self.window())

    def test_without_a_program_that_installs_the_package_is_shown(self):
        for needed in ("dpkg-deb", "tar"):
            (self.programs / needed).symlink_to(shutil.which(needed))
        for code in (None, 3):
            with self.subTest(code=code):
                self.install_opener(code) if code else (self.programs / "xdg-open").unlink()
                self.offer(PATH=str(self.programs))
                self.click_until("Install", lambda: self.buttons() == ["OK"])
                self.wait_for_words("No program installs the update")
                self.wait_for_words(str(self.cache / ("kelpa_99" + ENDING)))
                self.end()

    def test_nothing_unverified_is_ever_handed_over(self):
        self.publish(maker=Maker(self.folder))
        self.offer()
        self.click_until("Install", lambda: self.buttons() == ["OK"])
        self.wait_for_words("not signed by the makers")
        self.assertFalse(self.handed.exists())
        self.assertEqual(self.downloads(), [])

    def test_a_download_shows_how_far_it_is_and_can_be_cancelled(self):
        self.server.paths["/kelpa" + ENDING] = stalling(PACKAGE[:len(PACKAGE) // 3])
        self.offer()
        self.click_until("Install", lambda: self.buttons() == ["Cancel"])
        self.wait_for_words("0.9 of 2.7 MB")
        wait_until(lambda: ("progress bar", "33%") in self.told(), 10, "the progress bar")
        self.click_until("Cancel", lambda: not self.window())
        self.ends_fetching()
        self.assertEqual(self.downloads(), [])
        self.assertFalse(self.handed.exists())

    def test_notes_are_opened_and_a_version_that_is_skipped_comes_only_when_asked_for(self):
        self.offer()
        self.click_until("Release Notes", self.handed.exists)
        self.assertEqual(set(self.handed.read_text().split()), {"https://kelpa.example/notes"})
        self.click_until("Skip This Version", lambda: not self.window())
        self.wait_stored(self.program, "update.skippedVersion", "99")
        self.end()
        self.start({**self.stored(self.program), "update.lastCheck": 0.0}, SOON)
        wait_until(lambda: len(self.server.requests) == 2, 15, "the check")
        self.ends_fetching()
        self.assertFalse(wait_until(self.window, 1))
        self.look_for_updates()
        self.wait_for_words(OFFER)

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
        self.server.paths["/kelpa" + ENDING] = stalling()
        self.offer()
        box = self.box("Install")

        def clicked_twice():
            self.click_middle(box)
            self.click_middle(box)
            return wait_until(lambda: self.buttons() == ["Cancel"], 1)
        wait_until(clicked_twice, 15, "the download")
        self.assertTrue(self.window())
        wait_until(lambda: "/kelpa" + ENDING in self.asked_for(), 10, "the request")

    def test_escape_puts_it_off_and_no_key_installs(self):
        self.offer()
        wait_until(lambda: self.screen.focus() == TITLE, 10, "the keyboard")
        for key in ("Return", "space", "Escape"):
            self.screen.press(key)
        wait_until(lambda: not self.window(), 10, "the window to go")
        self.assertNotIn("update.skippedVersion", self.stored(self.program))
        self.assertFalse(self.handed.exists())
        self.assertEqual(self.asked_for(), ["/feed.xml"])

    # What comes by itself

    def test_an_update_that_nobody_asked_for_does_not_take_the_keyboard(self):
        self.start_terminal()
        self.start(speed=SOON)
        self.wait_for_words(OFFER)
        self.assertEqual(self.screen.focus(), "terminal")
        self.assertFalse(self.handed.exists())

    def test_checks_by_themselves_tell_the_profile_and_are_silent_until_there_is_news(self):
        self.publish("0")
        self.start(speed=SOON, LANGUAGE="zh_CN")
        wait_until(lambda: self.server.requests, 15, "the check")
        self.assertRegex(self.server.requests[0][0],
                         r"^/feed\.xml\?appVersion=\d+&osVersion=12\.0\.0&cputype=\w+&lang=zh_CN$")
        self.ends_fetching()
        self.assertFalse(wait_until(self.window, 1))
        # It is not time again for the next run.
        self.publish()
        self.end()
        self.start({"update.lastCheck": time.time() - 100}, SOON)
        self.assertFalse(wait_until(self.window, 2))
        self.assertEqual(len(self.server.requests), 1)

    def test_without_a_feed_no_process_is_started_and_nothing_fetched(self):
        self.start(feed_url="", speed=SOON)
        self.look_for_updates()
        self.wait_for_words("Kelpa does not update itself here")
        self.wait_for_buttons("OK")
        self.assertNotIn("update.lastCheck", self.stored(self.program))
        self.assertEqual(self.helpers(self.program), self.helpers(self.program, "kelpa-view"))
        self.click_until("OK", lambda: not self.window())

    def test_a_helper_that_does_not_start_or_dies_is_told(self):
        def failure_is_told():
            self.wait_for_words("The update did not work")
            self.wait_for_words("Something went wrong inside Kelpa.")
        # A copy of the program that is alone but for what draws its windows.
        for file in (Path(PROGRAM).with_name("kelpa-view"), Path(PROGRAM).with_name("share")):
            (self.own / file.name).symlink_to(file)
        with patch("support.PROGRAM", shutil.copy(PROGRAM, self.own)):
            self.start()
        self.look_for_updates()
        failure_is_told()
        self.end()
        self.server.paths["/feed.xml"] = stalling()
        self.start()
        self.look_for_updates()
        wait_until(lambda: self.server.requests, 15, "the check")
        for helper in self.helpers(self.program, "kelpa-update"):
            os.kill(helper, signal.SIGKILL)
        failure_is_told()


if __name__ == "__main__":
    main()
