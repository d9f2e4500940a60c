#!/usr/bin/python3
"""Measures Kelpa beside Workrave, Debian's break reminder, on the same virtual desktop and prints the ratios.

Each program gets a fresh desktop of its own: an X server with two monitors, buses, a window manager, a panel with a
tray. Somebody is at the desk all the time: the pointer moves a little every two seconds, except during the breaks.
A run takes some seven minutes for each program; nothing else should be running meanwhile.

what is measured
  tray        start of the program to its item's arrival in the tray, ms
  pss         proportional memory of all of the program's processes, MB: idle, in a break, and some time after it
  cpu         time on a processor in the work period that is watched, ms, and voluntary context switches
  mouse cpu   the same two while a mouse sends a thousand events a second
  desk cpu    what the X server, panel, tray service, bus and window manager used meanwhile, less what they use with no
              such program, ms
  mapped      end of the work period (Workrave: the call for a break) to the break windows, ms: Kelpa's on both
              screens, Workrave's on the only one that its toolkit sees here
  painted     the same to the moment when half of a grid of pixels on each screen has changed, ms
"""
import argparse
import json
import os
import select
import statistics
import subprocess
import sys
import time
import uuid
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "scripts"), str(Path(__file__).resolve().parent)]

from cost import Meter, family, memory  # noqa: E402
from gi.repository import GLib  # noqa: E402
from virtual_desktop import Session  # noqa: E402
from Xlib import X, error  # noqa: E402
from Xlib.ext import xtest  # noqa: E402

BREAK_SECONDS = 25
WIDTH, HEIGHT = 1280, 800
TRAYS = {"labels": ("indicator", "systray"), "icons": ("systray",)}


class Kelpa:
    name = "Kelpa"
    screens = 2

    def __init__(self, session, options):
        self.session = session
        self.command = [str(options.kelpa)]
        # The work period ends by itself some seconds after the watched time.
        self.work_minutes = -(-(options.settle + options.window + options.mouse + 20) // 60)
        settings = Path(session.environment["XDG_CONFIG_HOME"]) / "app.orvane.Kelpa.plist"
        settings.write_text(
            '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict>'
            f"<key>pref.work.time</key><integer>{self.work_minutes}</integer>"
            f"<key>pref.break.time</key><integer>{BREAK_SECONDS}</integer></dict></plist>\n")

    def wait_for_break(self, process):
        """Returns at the moment when the program says that the work period is over."""
        os.set_blocking(process.stdout.fileno(), False)
        heard = b""
        end = time.monotonic() + self.work_minutes * 60 + 30
        while time.monotonic() < end:
            select.select([process.stdout], [], [], 1)
            heard += process.stdout.read() or b""
            if heard.count(b"timesup for %d\n" % (self.work_minutes * 60)):
                return time.monotonic()
        raise TimeoutError("Kelpa's work period did not end")


class Workrave:
    name = "Workrave"
    screens = 1    # GTK 3 sees only one monitor of a virtual server, so it is done when that is covered
    SETTINGS = {
        "org.workrave.breaks.micro-pause": {"enabled": "false"},
        "org.workrave.breaks.daily-limit": {"enabled": "false"},
        "org.workrave.timers.rest-break": {"limit": "5400", "auto-reset": str(BREAK_SECONDS)},
        "org.workrave.gui.main-window": {"enabled": "false"},
        "org.workrave.gui": {"autostart": "false"},
        "org.workrave.gui.breaks": {"block-mode": "2"},    # cover the screens, as Kelpa does
        "org.workrave.sound": {"enabled": "false"},
    }

    def __init__(self, session, _):
        self.session, self.command = session, ["workrave"]
        for schema, values in self.SETTINGS.items():
            for key, value in values.items():
                session.run_tool("gsettings", "set", schema, key, value)

    def wait_for_break(self, _):
        """Asks for a break; the answer may come after the windows, so nobody waits for it."""
        moment = time.monotonic()
        self.session.bus.call("org.workrave.Workrave", "/org/workrave/Workrave/UI", "org.workrave.ControlInterface",
                              "RestBreak", None, None, 0, 10000, None, None, None)
        self.session.bus.flush_sync(None)
        return moment


class Desk:
    """One fresh desktop, and what happens on it."""

    def __init__(self, options, program_class):
        self.options, self.program_class = options, program_class
        self.session = Session(monitors=2, width=WIDTH, height=HEIGHT)
        self.mark = f"KELPA_MEASURED={uuid.uuid4().hex}"
        self.figures = {}

    def __enter__(self):
        session = self.session
        try:
            session.start()
            session.start_window_manager()
            session.start_tray(*TRAYS[self.options.tray])
            self.screen = session.screen
            self.screen.move(600, 400)
            time.sleep(3)
        except BaseException:
            session.stop()
            raise
        return self

    def __exit__(self, *_):
        self.session.stop()

    # Time passes

    def work(self, seconds):
        """Lets time pass with somebody at the desk."""
        step, end = 3, time.monotonic() + seconds
        while time.monotonic() < end:
            xtest.fake_input(self.screen.display, X.MotionNotify, detail=True, x=step, y=0)
            self.screen.display.sync()
            step = -step
            time.sleep(max(0, min(2, end - time.monotonic())))

    # What is measured

    def members(self):
        return family(self.process.pid, self.mark)

    def desk_processes(self):
        """Everything of the session that is neither the program nor started by it."""
        return set(self.session.processes()) - self.members()

    def start(self):
        """Starts the program and waits for its item in the tray."""
        registered = []
        for signal in ("ApplicationAdded", "StatusNotifierItemRegistered"):    # one tray's word and the other's
            self.session.bus.signal_subscribe(None, None, signal, None, None, 0,
                                              lambda *_: registered.append(time.monotonic()))
        icons = {window.id for window in self.screen.embedded()}
        program = self.program_class(self.session, self.options)
        variable, value = self.mark.split("=")
        before, context = time.monotonic(), GLib.MainContext.default()
        self.process = self.session.spawn(program.command, {variable: value}, stdout=subprocess.PIPE)
        while not registered and time.monotonic() < before + 20:
            context.iteration(False)
            if {window.id for window in self.screen.embedded()} - icons:
                registered.append(time.monotonic())
            time.sleep(0.001)
        if not registered:
            raise TimeoutError(f"{program.name} put no item into the tray")
        self.figures["tray"] = (registered[0] - before) * 1000
        return program

    def watch_work(self):
        """The cost of a work period, for the program and for the desktop around it."""
        own, desk = Meter(self.members()), Meter(self.desk_processes())
        self.work(self.options.window)
        self.figures["cpu"], self.figures["switches"] = own.used(self.members())
        self.figures["desk cpu"] = desk.used(self.desk_processes())[0]

    def watch_mouse(self):
        """The cost of a mouse that is moved all the time."""
        own = Meter(self.members())
        self.screen.push_for(self.options.mouse, 1000)
        self.figures["mouse cpu"], self.figures["mouse switches"] = own.used(self.members())

    def watch_break(self, program):
        """From the end of the work period to windows on both screens and to their being painted."""
        before = self.grid()
        old = self.large_windows()
        moment = program.wait_for_break(self.process)
        end = moment + 30
        mapped = painted = None
        while painted is None and time.monotonic() < end:
            if mapped is None and self.covered(self.large_windows() - old):
                mapped = time.monotonic()
            if mapped is not None and self.changed(before):
                painted = time.monotonic()
            time.sleep(0.001)
        self.figures["mapped"] = (mapped - moment) * 1000 if mapped else float("nan")
        self.figures["painted"] = (painted - moment) * 1000 if painted else float("nan")

    def large_windows(self):
        found = set()
        for window in self.screen.root.query_tree().children:
            try:
                if window.get_attributes().map_state == X.IsViewable:
                    size = window.get_geometry()
                    if size.width * size.height >= 100000:
                        found.add((window.id, size.x + size.width // 2))
            except (AttributeError, error.XError):
                pass    # gone in between
        return found

    def covered(self, windows):
        """Whether each screen that the program sees has a window of its own."""
        screens = {middle // WIDTH for _, middle in windows}
        self.figures["screens"] = max(len(screens), self.figures.get("screens", 0))
        return len(screens) >= self.program_class.screens

    def grid(self):
        """The pixels of a 5 by 5 grid on each screen."""
        root = self.screen.root
        return [[root.get_image(screen * WIDTH + (2 * x + 1) * WIDTH // 10, (2 * y + 1) * HEIGHT // 10, 1, 1,
                                X.ZPixmap, 0xFFFFFFFF).data[:3] for x in range(5) for y in range(5)]
                for screen in range(2)]

    def changed(self, before):
        """Whether half of the grid is painted anew on every screen that the program covers."""
        painted = [sum(a != b for a, b in zip(old, new)) >= 13 for old, new in zip(before, self.grid())]
        return sum(painted) >= self.program_class.screens

    def pss(self):
        return memory(self.members())["Pss"] / 1024

    def run(self):
        program = self.start()
        self.work(self.options.settle)
        self.figures["pss idle"] = self.pss()
        self.watch_work()
        self.watch_mouse()
        self.watch_break(program)
        time.sleep(5)
        self.figures["pss break"] = self.pss()
        time.sleep(BREAK_SECONDS)
        self.work(self.options.after)
        self.figures["pss after"] = self.pss()
        return self.figures


def quiet_desk(options):
    """What the desktop uses in the same time with no program."""
    with Desk(options, Kelpa) as desk:
        desk.work(5)
        everything = set(desk.session.processes())
        meter = Meter(everything)
        desk.work(options.window)
        return meter.used(everything)[0]


def report(results, zero):
    print(f"\nmedians of {len(results['Kelpa'])}; the desktop alone uses {zero:.0f} ms\n")
    print(f"{'':<15}{'Kelpa':>10}{'Workrave':>10}{'ratio':>8}")
    for key in ("tray", "pss idle", "pss break", "pss after", "cpu", "switches", "desk cpu", "mouse cpu",
                "mouse switches", "mapped", "painted", "screens"):
        ours, theirs = (statistics.median(run[key] for run in results[name]) for name in ("Kelpa", "Workrave"))
        if key == "desk cpu":
            ours, theirs = ours - zero, theirs - zero
        ratio = f"{ours / theirs:.2f}" if theirs > 0 and key != "screens" else "-"
        print(f"{key:<15}{ours:>10.1f}{theirs:>10.1f}{ratio:>8}")


def parse():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--kelpa", type=Path, default=ROOT / "build/release/kelpa", help="the program to measure")
    parser.add_argument("--reps", type=int, default=1, help="runs of each program (default 1); medians are printed")
    parser.add_argument("--settle", type=int, default=30, help="seconds before the idle memory is read (default 30)")
    parser.add_argument("--window", type=int, default=120, help="seconds of work that are watched (default 120)")
    parser.add_argument("--mouse", type=int, default=60, help="seconds of a moving mouse (default 60)")
    parser.add_argument("--after", type=int, default=120, help="seconds after the break (default 120)")
    parser.add_argument("--tray", choices=TRAYS, default="labels",
                        help="a tray that shows Kelpa's time as text (default), or one that shows only icons")
    parser.add_argument("--json", type=Path, help="also write every run's figures to this file")
    options = parser.parse_args()
    for name in ("reps", "settle", "window", "mouse", "after"):
        if getattr(options, name) < 1:
            parser.error(f"--{name} must be at least 1")
    if not os.access(options.kelpa, os.X_OK):
        parser.error(f"{options.kelpa} is not there: cmake --preset release && cmake --build --preset release")
    if not any((Path(folder) / "workrave").exists() for folder in ("/usr/bin", "/usr/local/bin")):
        parser.error("Workrave is not installed: apt-get install workrave")
    options.kelpa = options.kelpa.resolve()
    return options


def main():
    options = parse()
    zero = quiet_desk(options)
    results = {"Kelpa": [], "Workrave": []}
    for repetition in range(options.reps):
        for program_class in (Kelpa, Workrave):
            with Desk(options, program_class) as desk:
                results[program_class.name].append(desk.run())
            print(f"{program_class.name} {repetition + 1}: " + ", ".join(
                f"{key} {value:.1f}" for key, value in results[program_class.name][-1].items()), flush=True)
    if options.json:
        options.json.write_text(json.dumps({"desk alone": zero, **results}, indent=1) + "\n")
    report(results, zero)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
