#!/usr/bin/python3
"""The whole updater, from the question to the installer, with only the window left out."""
import os
import plistlib
import queue
import shutil
import subprocess
import tempfile
import threading
import time
import unittest
from pathlib import Path

from support import ENDING, HELPER, ROOT, Maker, ServedTest, debian_package, feed, item

DRIVER = os.environ.get("KELPA_UPDATE_DRIVER", str(ROOT / "build/dev/kelpa-update-driver"))
PACKAGE = debian_package("0.6.0", 900_000)
NOTES = "<sparkle:releaseNotesLink>https://kelpa.example/notes</sparkle:releaseNotesLink>"


class Driver:
    def __init__(self, test, feed_url, speed=1, helper=HELPER, language="en"):
        clean = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
        environment = {**clean, "SSL_CERT_FILE": str(test.authority.certificate), "HANDED": str(test.handed),
                       "PATH": str(test.programs), "LC_ALL": "C.UTF-8", "LANGUAGE": language}
        self.process = subprocess.Popen(
            [DRIVER, feed_url, test.maker.key, ENDING, helper, str(test.store), str(test.cache), str(speed)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=environment)
        self.lines = queue.Queue()
        self.listener = threading.Thread(target=self.listen, daemon=True)
        self.listener.start()
        assert self.hears("started")

    def listen(self):
        for line in self.process.stdout:
            self.lines.put(line.rstrip("\n"))

    def tell(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def hears(self, start, seconds=15):
        """The next line that begins so; what comes before it does not matter."""
        end = time.monotonic() + seconds
        heard = []
        while True:
            try:
                heard.append(self.lines.get(timeout=max(0.01, end - time.monotonic())))
            except queue.Empty:
                raise AssertionError(f"no '{start}' in {heard}") from None
            if heard[-1].startswith(start):
                return heard[-1]

    def silent(self, seconds):
        try:
            return self.lines.get(timeout=seconds)
        except queue.Empty:
            return None

    def helpers(self):
        """Those of its children that run."""
        return Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children").read_text().split()

    def ends_helpers(self):
        return reached(lambda: not self.helpers())

    def close(self):
        self.process.stdin.close()
        self.process.wait(10)
        self.listener.join()
        self.process.stdout.close()


def reached(state, seconds=15):
    """Whether a state is reached in time."""
    end = time.monotonic() + seconds
    while not state() and time.monotonic() < end:
        time.sleep(0.02)
    return state()


class Updater(ServedTest):
    def setUp(self):
        super().setUp()
        own = Path(tempfile.mkdtemp(dir=self.folder))
        self.cache, self.store, self.handed = own / "cache", own / "settings.plist", own / "handed"
        self.programs = own / "programs"
        self.programs.mkdir()
        for needed in ("dpkg-deb", "tar"):
            (self.programs / needed).symlink_to(shutil.which(needed))
        self.server.paths["/kelpa" + ENDING] = PACKAGE
        self.publish("6")

    def publish(self, version, **how):
        package = {"url": self.server.base + "/kelpa" + ENDING, "length": len(PACKAGE),
                   "signature": self.maker.sign(PACKAGE), **how}
        self.server.paths["/feed.xml"] = feed(item(version, name="0." + version, more=NOTES, **package))

    def installer(self, code=0):
        """A desktop whose programs open what they are handed; they note it."""
        program = self.programs / "xdg-open"
        program.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >> "$HANDED"\nexit {code}\n')
        program.chmod(0o755)

    def driver(self, **how):
        driver = Driver(self, how.pop("feed_url", self.server.base + "/feed.xml"), **how)
        self.addCleanup(driver.close)
        return driver

    def remember_check(self, seconds):
        settings = plistlib.loads(self.store.read_bytes())
        self.store.write_bytes(plistlib.dumps({**settings, "update.lastCheck": seconds}))

    def stored(self, key):
        return plistlib.loads(self.store.read_bytes()).get(key) if self.store.exists() else None

    def test_from_the_question_to_the_installer(self):
        self.installer()
        driver = self.driver()
        driver.tell("ask")
        self.assertEqual(driver.hears("page A new").split(" | ")[1:],
                         ["Version 0.6 is available; you have 0.1.0.", "https://kelpa.example/notes"])
        driver.tell("install")
        driver.hears("page Downloading")
        driver.hears("page The update is ready")
        self.assertTrue(reached(self.handed.exists))
        handed = self.handed.read_text().splitlines()
        self.assertEqual(handed, [str(self.cache / ("kelpa_6" + ENDING))])
        self.assertEqual(Path(handed[0]).read_bytes(), PACKAGE)
        self.assertTrue(driver.ends_helpers())
        self.assertAlmostEqual(self.stored("update.lastCheck"), time.time(), delta=60)
        self.assertEqual([path.split("?")[0] for path, _ in self.server.requests], ["/feed.xml", "/kelpa" + ENDING])

    def test_without_a_program_that_installs_the_package_is_shown(self):
        for code in (None, 3):
            if code is not None:
                self.installer(code)
            driver = self.driver()
            driver.tell("ask")
            driver.hears("page A new")
            driver.tell("install")
            self.assertIn(str(self.cache / ("kelpa_6" + ENDING)), driver.hears("page No program"))

    def test_nothing_unverified_is_ever_handed_over(self):
        self.installer()
        self.publish("6", signature=Maker(self.folder).sign(PACKAGE))
        driver = self.driver()
        driver.tell("ask")
        driver.hears("page A new")
        driver.tell("install")
        self.assertIn("not signed by the makers", driver.hears("page The update did not work"))
        self.assertFalse(self.handed.exists())
        self.assertEqual(list(self.cache.iterdir()), [])

    def test_cancelling_ends_the_download_and_its_process(self):
        def stalling(request):
            request.send_response(200)
            request.end_headers()
            request.wfile.write(PACKAGE[:len(PACKAGE) // 2])
            self.server.ending.wait(30)
        self.server.paths["/kelpa" + ENDING] = stalling
        driver = self.driver()
        driver.tell("ask")
        driver.hears("page A new")
        driver.tell("install")
        driver.hears("page Downloading version 0.6 | 0.4 of 0.9 MB")
        driver.tell("cancel")
        driver.hears("close")
        self.assertTrue(driver.ends_helpers())
        self.assertEqual(list(self.cache.iterdir()), [])

    def test_checks_by_themselves_tell_the_profile_and_are_silent_until_there_is_news(self):
        self.publish("5")
        driver = self.driver(speed=1000, language="zh_CN")
        self.assertTrue(reached(lambda: self.server.requests))
        self.assertEqual(self.server.requests[0][0],
                         "/feed.xml?appVersion=5&osVersion=12.0.0&cputype=x86_64&lang=zh_CN")
        self.assertIsNone(driver.silent(1))
        self.assertTrue(driver.ends_helpers())
        driver.close()
        # It is not time again for the next run. (The clock of the first one was fast.)
        self.remember_check(time.time() - 100)
        self.publish("6")
        again = self.driver(speed=1000)
        self.assertIsNone(again.silent(1))
        self.assertEqual(len(self.server.requests), 1)

    def test_a_skipped_version_is_remembered(self):
        driver = self.driver()
        driver.tell("ask")
        driver.hears("page A new")
        driver.tell("skip")
        driver.hears("close")
        driver.close()
        self.assertEqual(self.stored("update.skippedVersion"), "6")
        self.remember_check(0.0)
        silent = self.driver(speed=1000)
        self.assertIsNone(silent.silent(2))
        self.assertEqual(len(self.server.requests), 2)

    def test_without_a_feed_no_process_is_started_and_nothing_fetched(self):
        driver = self.driver(feed_url="", speed=1000, helper="/nonexistent")
        self.assertIsNone(driver.silent(0.5))
        driver.tell("ask")
        driver.hears("page Kelpa does not update itself here")
        driver.hears("present")
        self.assertIsNone(driver.silent(0.2))
        self.assertIsNone(self.stored("update.lastCheck"))

    def test_a_helper_that_does_not_start_or_dies_is_told(self):
        driver = self.driver(helper="/nonexistent")
        driver.tell("ask")
        driver.hears("page The update did not work | Something went wrong inside Kelpa.")
        self.server.paths["/feed.xml"] = lambda _: self.server.ending.wait(30)
        driver = self.driver()
        driver.tell("ask")
        self.assertTrue(reached(lambda: self.server.requests))
        for pid in driver.helpers():
            os.kill(int(pid), 9)
        driver.hears("page The update did not work | Something went wrong inside Kelpa.")


if __name__ == "__main__":
    unittest.main()
