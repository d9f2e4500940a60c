"""What these tests share: a virtual desktop a test class, and a stand-in for the core that they talk to."""
import os
import queue
import signal
import struct
import subprocess
import sys
import threading
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))

from Xlib import X  # noqa: E402
from Xlib.protocol import event  # noqa: E402
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


class SettingsProgram:
    """What publishes a desktop's settings: here nothing but the name of a theme."""

    def __init__(self, screen, theme):
        self.screen, self.intern = screen, screen.display.intern_atom
        self.window = screen.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.publish(theme)
        selection = self.intern("_XSETTINGS_S0")
        self.window.set_selection_owner(selection, X.CurrentTime)
        announcement = event.ClientMessage(window=screen.root, client_type=self.intern("MANAGER"),
                                           data=(32, [X.CurrentTime, selection, self.window.id, 0, 0]))
        screen.root.send_event(announcement, event_mask=X.StructureNotifyMask)
        screen.display.sync()

    def publish(self, theme):
        name, value = b"Net/ThemeName", theme.encode()
        atom = self.intern("_XSETTINGS_SETTINGS")
        self.window.change_property(atom, atom, 8, b"".join((
            struct.pack("<Bxxx I I", 0, 1, 1), struct.pack("<BxH", 1, len(name)), name.ljust(16, b"\0"),
            struct.pack("<II", 1, len(value)), value.ljust(-len(value) % 4 + len(value), b"\0"))))
        self.screen.display.sync()

    def end(self):
        self.window.destroy()
        self.screen.display.sync()


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

    @classmethod
    def write_theme(cls, name, paper, ink):
        folder = Path(cls.session.environment["HOME"], ".themes", name, "gtk-2.0")
        folder.mkdir(parents=True)
        (folder / "gtkrc").write_text(f'gtk-color-scheme = "bg_color:{paper}\\nfg_color:{ink}"\n')

    def settings(self, theme):
        program = SettingsProgram(self.screen, theme)
        self.addCleanup(program.end)
        return program

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
