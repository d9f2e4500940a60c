"""What these tests share: a virtual desktop a test class, and a stand-in for the core that they talk to."""
import os
import queue
import signal
import subprocess
import sys
import threading
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))

from virtual_desktop import Session, wait_for_cover, wait_for_still, wait_for_uncover, wait_until  # noqa: E402

DRIVER = os.environ.get("KELPA_DESK_DRIVER", ROOT / "build/dev/kelpa-desk-driver")
FADE = 2.0


def start_talking(session, command, **environment):
    """Starts a program of the session that is talked to through its standard input and output."""
    with open(session.folder / "talkers.log", "ab") as log:
        child = subprocess.Popen([str(part) for part in command], env={**session.environment, **environment},
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=log, text=True)
    session.children.append(child)
    return child


class Driver:
    """The stand-in for the core."""

    def __init__(self, session, environment):
        self.process = start_talking(session, [DRIVER], DRIVER_IDLE_SECONDS="1", **environment)
        self.lines, self.said = queue.Queue(), []
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        for line in self.process.stdout:
            self.lines.put(line.strip())

    def tell(self, *commands):
        self.process.stdin.write("".join(command + "\n" for command in commands))
        self.process.stdin.flush()

    def hears(self, text, seconds=3):
        """Whether the driver says a line that starts so."""
        end = time.monotonic() + seconds
        while not any(line.startswith(text) for line in self.said):
            try:
                self.said.append(self.lines.get(timeout=max(0.01, end - time.monotonic())))
            except queue.Empty:
                return None
        found = next(line for line in self.said if line.startswith(text))
        self.said.remove(found)
        return found

    def view(self):
        self.tell("view")
        return int(self.hears("view ").split()[1])


class ViewTest(unittest.TestCase):
    WIDTH, HEIGHT = 800, 600
    COMPOSITOR = False

    @classmethod
    def setUpClass(cls):
        cls.session = Session(monitors=2, width=cls.WIDTH, height=cls.HEIGHT)
        cls.addClassCleanup(cls.session.stop)
        cls.session.start()
        cls.session.start_window_manager(cls.COMPOSITOR)
        cls.screen, cls.monitors = cls.session.screen, cls.session.monitors
        cls.screen.move(5, cls.HEIGHT - 5)

    def drive(self, **environment):
        driver = Driver(self.session, {"KELPA_APPEARANCE": "light", **environment})
        self.addCleanup(self.finish, driver)
        self.assertTrue(driver.hears("screens", 5), "the driver did not start")
        return driver

    def finish(self, driver):
        if any(test is self for test, _ in self._outcome.result.failures + self._outcome.result.errors):
            picture = Path(DRIVER).parent / f"failure-{'.'.join(self.id().split('.')[-2:])}.png"
            self.screen.picture().save(picture)
            print(f"--- picture: {picture}; the driver said:", *driver.said, file=sys.stderr)
        Session.end(driver.process)
        wait_for_uncover(self.session, 3)

    def shown(self, driver, **changes):
        """A break that has faded in."""
        driver.tell(*(f"{name} {value}" for name, value in changes.items()), "show")
        windows = wait_for_cover(self.session, self.monitors, 5)
        for monitor in self.monitors:
            wait_for_still(self.screen, monitor)
        return windows

    def paper(self, monitor):
        return self.screen.picture(monitor).background()

    def top_titles(self):
        return [window.title for window in sorted(self.screen.windows(), key=lambda window: -window.level)]


def main():
    if not os.access(DRIVER, os.X_OK):
        sys.exit(f"{DRIVER} is not there; build it, or name another one in KELPA_DESK_DRIVER")
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    unittest.main(verbosity=2)
