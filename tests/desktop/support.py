"""What the desktop tests share: one virtual desktop a test class, one run of the program a test."""
import contextlib
import json
import os
import plistlib
import re
import signal
import subprocess
import sys
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))

from virtual_desktop import Box, Program, Session, blue_rows, wait_for_cover, wait_for_rest, wait_until  # noqa: E402

PROGRAM = os.environ.get("KELPA_PROGRAM", ROOT / "build/dev/kelpa")
# By which a double is told what to do.
DOUBLE = "org.freedesktop.DBus.Mock"
SPEED = 20
# A work period lasts a minute of the program, three seconds here; breaks last until a test ends them.
WORK = 60
LONG_ENOUGH = 3000
# What no run may leave behind, though it went on: a helper that crashed (9 is a test's own doing), and what a build with
# sanitizers finds.
FAULT = re.compile(r"warning .* kelpa-\w+ was ended by signal (?!9\b)|ERROR: \w+Sanitizer|runtime error:")
# Nobody moves the mouse all the time; the tests of that rule switch it on.
SETTINGS = {"pref.work.time": 1, "pref.break.time": LONG_ENOUGH, "pref.short.break.times": 100,
            "stop_timer_after_mouse_stop": False}


@contextlib.contextmanager
def stopped(process):
    """A process stands still meanwhile."""
    process.send_signal(signal.SIGSTOP)
    try:
        yield
    finally:
        process.send_signal(signal.SIGCONT)


class DesktopTest(unittest.TestCase):
    MONITORS = 2        # plugged in at the start
    ROOM = 2            # monitors that the X server has room for
    WIDTH, HEIGHT = 800, 600    # of each
    TRAY = True
    COMPOSITOR = False
    ACTIVATION = True   # of the services that this machine has for a session bus

    @classmethod
    def setUpClass(cls):
        cls.session = Session(monitors=cls.ROOM, width=cls.WIDTH, height=cls.HEIGHT, activation=cls.ACTIVATION)
        cls.addClassCleanup(cls.session.stop)
        cls.session.start()
        cls.screen, cls.monitors = cls.session.screen, cls.session.monitors
        for monitor in cls.monitors[cls.MONITORS:]:
            cls.session.remove_monitor(monitor)
        cls.start_window_manager()
        if cls.TRAY:
            cls.service = cls.session.start_tray()
        # Anything that hovers would change colours under the pointer.
        cls.screen.move(5, cls.HEIGHT - 10)

    @classmethod
    def start_window_manager(cls):
        cls.session.start_window_manager(cls.COMPOSITOR)

    def launch(self, settings=None, *arguments, speed=SPEED, environment=None):
        """Starts the program with these settings; it is ended after the test, and shown when the test failed."""
        program = Program(self.session, PROGRAM)
        program.write_settings({**SETTINGS, **(settings or {})})
        program.printed.unlink(missing_ok=True)
        program.start("--speed", str(speed), *arguments, environment=environment)
        self.addCleanup(self.finish, program)
        return program

    def running(self, *arguments, **options):
        """Starts the program as `launch` does, at its natural pace where none is given; it answers on the bus."""
        program = self.launch(*arguments, **{"speed": 1, **options})
        program.wait_for("sandbox home path", 10)
        wait_until(lambda: self.ask("status")[0] == 0, 10, "an answer on the bus")
        return program

    def take_break(self):
        """Asks for a break; gives the windows that cover the monitors."""
        wait_until(lambda: self.ask("break")[0] == 0, 10, "the wish for a break to be heard")
        return wait_for_cover(self.session, self.monitors)

    def begin_break(self, settings=None, appearance="light", **environment):
        """A break whose count goes on once a second, as soon as it covers the monitors."""
        program = self.launch({"pref.work.time": 60, **(settings or {})}, speed=1,
                              environment={"KELPA_APPEARANCE": appearance, **environment})
        self.take_break()
        return program

    @staticmethod
    def make_this_break_the_last(program):
        """The work after it takes hours. A slow machine could take the next break for this one otherwise."""
        program.write_settings({**DesktopTest.stored(program), "pref.work.time": 600})

    def finish(self, program):
        if any(test is self for test, _ in self._outcome.result.failures + self._outcome.result.errors):
            self.show_what_happened(program)
        helpers = self.helpers(program)
        Session.end(program.process)
        wait_until(lambda: not any(Path(f"/proc/{helper}").exists() for helper in helpers), 10, "the helpers to end")
        self.assertEqual([line for line in program.lines() if FAULT.search(line)], [])

    def show_what_happened(self, program):
        picture = ROOT / "build" / f"failure-{'.'.join(self.id().split('.')[-2:])}.png"
        try:
            self.screen.picture().save(picture)
        except Exception as error:  # a display that a test has ended gives no picture
            picture = error
        print(f"--- picture: {picture}; what the program said:", *program.lines()[-40:], sep="\n", file=sys.stderr)

    @staticmethod
    def sleeps_a_second(program, act, seconds=4):
        """How often the program went to sleep in each of the seconds that `act` lasts."""
        def sleeps():
            with open(f"/proc/{program.process.pid}/status", encoding="ascii") as status:
                return next(int(line.split()[1]) for line in status if line.startswith("voluntary"))

        before = sleeps()
        act(seconds)
        return (sleeps() - before) / seconds

    def mock(self, name, path, *kind, bus="session"):
        """Puts a test double of python3-dbusmock on one of the buses; gives what calls its methods."""
        double = self.session.spawn([sys.executable, "-m", "dbusmock", f"--{bus}", *kind])
        self.addCleanup(Session.end, double)

        def call(member, *arguments, at=path, interface=name):
            return self.session.run_tool("gdbus", "call", f"--{bus}", "-d", name, "-o", at, "-m", f"{interface}.{member}",
                                         *arguments).stdout

        def answers():
            try:
                return call("Ping", at="/", interface="org.freedesktop.DBus.Peer")
            except RuntimeError:
                return None

        wait_until(answers, 10, f"the double of {name}")
        return call

    # Settings

    @staticmethod
    def stored(program):
        return plistlib.loads(program.settings_file().read_bytes())

    def wait_stored(self, program, key, value, seconds=8):
        wait_until(lambda: self.stored(program).get(key) == value, seconds, f"{key} to be {value!r}")

    # Processes

    def ask(self, *arguments, seconds=10, **environment):
        """Runs the command line to its end: status, standard output, standard error."""
        done = subprocess.run([PROGRAM, *arguments], env={**self.session.environment, **environment},
                              capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=seconds)
        return done.returncode, done.stdout, done.stderr

    def status(self):
        """What scripts are told; nothing while there is no program to tell it."""
        code, told, _ = self.ask("status", "--json")
        return json.loads(told) if code == 0 else {}

    def start_terminal(self, *options, typed=None):
        """A terminal with the keyboard; what is typed into it goes into a file, line by line, where one is named."""
        terminal = self.session.spawn(["xterm", "-T", "terminal", *options, *(["-e", f"cat >{typed}"] if typed else [])])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: self.screen.focus() == "terminal", 10, "the terminal to have the keyboard")
        wait_until(lambda: not typed or typed.exists(), 5, "the terminal's program")

    def start_old_tray(self):
        tray = self.session.spawn(["trayer", "--edge", "top", "--widthtype", "request", "--height", "24"])
        self.addCleanup(self.session.end, tray)
        wait_until(lambda: self.screen.selection_owned("_NET_SYSTEM_TRAY_S0"), 10, "the old tray")
        return tray

    def docked(self):
        """The icon's window in an old tray, once its size and its place have settled."""
        def settled():
            first = self.screen.embedded()
            time.sleep(0.2)
            return first[0] if first and first == self.screen.embedded() else None

        return wait_until(settled, 10, "the icon")

    @staticmethod
    def helpers(program, name="kelpa-"):
        """The helper programs of a run, by process id."""
        found = []
        for entry in Path("/proc").iterdir():
            if entry.name.isdigit():
                try:
                    status = (entry / "status").read_text()
                    command = (entry / "comm").read_text().strip()
                except OSError:
                    continue
                if command.startswith(name) and f"PPid:\t{program.process.pid}\n" in status:
                    found.append(int(entry.name))
        return found

    # Looking

    def wait_for_keys_to_count(self):
        """Waits until the break lets go of the keyboard, since nobody has typed for two seconds: keys are meant for it. Where
        the break has only just begun, it has yet to take hold of it."""
        wait_until(lambda: not self.screen.keyboard_rests(), 3)
        wait_until(lambda: self.screen.focus().isdecimal() and self.screen.keyboard_rests(), 10,
                   "the break to let go of the keyboard")
        # Its deaf seconds began with its first picture, a moment after it took hold, and nothing tells of their end.
        self.settle(0.4)

    def wait_for_blue(self, monitor, count, seconds=10):
        """Waits until so many blue things stand on a break screen, as they do once it has faded in far enough."""
        wait_until(lambda: len(self.blue_rows(monitor)) >= count, seconds, f"{count} blue things on {monitor.name}")
        return self.blue_rows(monitor)

    def below_the_count(self, monitor=0):
        """The part of a monitor in which nothing of a break screen changes once it has faded in."""
        x, y, width, height = self.monitors[monitor][1:]
        return Box(x, y + height * 3 // 4, width, height // 4)

    def shown_text_moves(self, area, seconds=5):
        """Whether something in the area changes, as ticking text does."""
        before = self.screen.picture(area)
        return wait_until(lambda: before.differs(self.screen.picture(area)), seconds)

    def wait_for_rest(self, area, seconds=10):
        return wait_for_rest(self.screen, area, seconds)

    def blue_rows(self, monitor):
        """The blue things of a break window from top to bottom, as boxes on the screen: the link, then Skip."""
        return [box._replace(x=monitor.x + box.x, y=monitor.y + box.y)
                for box in blue_rows(self.screen.picture(monitor))]

    def click_middle(self, box):
        self.screen.click(box.x + box.width // 2, box.y + box.height // 2)

    @staticmethod
    def settle(seconds):
        """Lets real time pass: for fades, and for showing that something does not happen."""
        time.sleep(seconds)


def main():
    if not os.access(PROGRAM, os.X_OK):
        sys.exit(f"{PROGRAM} is not there; build it, or name another one in KELPA_PROGRAM")
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    unittest.main(verbosity=2)
