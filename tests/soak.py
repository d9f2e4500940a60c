#!/usr/bin/python3
"""A long day in minutes: the real program at sixty times the speed on a virtual desktop, hour after hour the same.

Every hour has two breaks, one of them with a monitor that is plugged in and out while it shows and one that is cut off
by the locked screen; the water panel, which is answered; and a tray that goes away and comes back. Memory is sampled
all the time. The soak fails when the program has grown by more than 3 MB from the first hour to the last, idle or busy,
when its log has an error, or when something of an hour did not happen.

Not part of ./test: it takes ten minutes and wants a machine that has nothing else to do.
"""
import argparse
import os
import plistlib
import re
import statistics
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path[:0] = [str(ROOT / "scripts"), str(ROOT / "benchmarks/desktop")]

from cost import parents, read  # noqa: E402
from gi.repository import GLib  # noqa: E402
from virtual_desktop import Program, Session, wait_for_cover, wait_for_uncover, wait_until  # noqa: E402

SPEED = 60
HOUR = 3600 / SPEED
WORK_MINUTES, BREAK_SECONDS = 25, 300
MOST_GROWTH = 3.0
# The proportional set size is what counts on a desktop, but it shrinks while another program has the same libraries.
# What a process has written to is its own whatever runs beside it.
KINDS = {"pss": "Pss", "own": "Private_Dirty"}
GLASS = 200
# Where the button stands in the water panel.
DONE = (230, 303)
# Seconds of real time from the start of an hour. A work period is over at 25, a break at 30, the next period at 55.
PLUG, UNPLUG, WATER, TRAY, LOCK = 26.5, 28, 33, 42, 57
# Between the last window of an hour and the first of the next the view has ended. So long lasts what follows the last
# hour.
EPILOGUE = 24
SAVER, SAVER_PATH = "org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"
DOUBLE = "org.freedesktop.DBus.Mock"


class Sampler(threading.Thread):
    """Writes down what the program and its helpers take: for each by its name the KINDS of memory, in MB. Moments in
    which another Kelpa has windows are left out."""

    def __init__(self, root):
        super().__init__(daemon=True)
        self.root, self.samples, self.left_out, self.over = root, [], 0, threading.Event()

    def run(self):
        while not self.over.wait(0.5):
            running = parents()
            helpers = [pid for pid, parent in running.items() if parent == self.root]
            names = [read(Path(f"/proc/{pid}/comm")).strip() for pid in running.keys() - {self.root, *helpers}]
            if "kelpa-view" in names:
                self.left_out += 1
            else:
                self.samples.append((time.monotonic(), self.sample(helpers)))

    def sample(self, helpers):
        found = {}
        for pid in [self.root, *helpers]:
            folder = Path(f"/proc/{pid}")
            fields = dict(re.findall(r"^(\w+): +(\d+) kB$", read(folder / "smaps_rollup"), re.M))
            if fields:      # a process that has just ended has none
                found.setdefault(read(folder / "comm").strip(), []).append(
                    {kind: int(fields[field]) / 1024 for kind, field in KINDS.items()})
        return {name: {kind: sum(each[kind] for each in all_of_it) for kind in KINDS}
                for name, all_of_it in found.items()}

    def between(self, start, end):
        return [sample for when, sample in self.samples if start <= when < end]


class Soak:
    def __init__(self, options, session):
        self.hours, self.session = options.hours, session
        self.program = Program(session, options.program)
        self.pair, self.third = session.monitors[:2], session.monitors[2]
        self.missed = []

    # The desk

    def start(self):
        self.session.remove_monitor(self.third)
        self.session.start_window_manager()
        self.tray = self.session.start_tray()
        self.session.screen.move(5, 590)
        self.start_screen_saver()
        self.begin = time.monotonic()
        self.program.write_settings(self.settings(time.time()))
        self.program.start("--speed", str(SPEED), environment={"TZ": self.morning()})
        self.sampler = Sampler(self.program.process.pid)
        self.sampler.start()

    @staticmethod
    def morning():
        """A time zone in which it is about seven, so that the day of the soak is one day."""
        return f"SOAK{time.gmtime().tm_hour - 7:+d}"

    def settings(self, now):
        """A reminder of water for every hour, and one at each end, which never come."""
        due = [now + SPEED * (hour * HOUR + WATER) for hour in range(self.hours)]
        times = [now - 3600, *due, now + 3600 * (self.hours + 1)]
        reference = 978307200
        return {"pref.work.time": WORK_MINUTES, "pref.break.time": BREAK_SECONDS, "pref.short.break.times": 1000,
                "stop_timer_after_mouse_stop": False, "pref.water.enable": True, "pref.water.mode": 1,
                "pref.water.target": 100000, "pref.water.lastSelectedAmount": GLASS, "pref.water.lastShowDate": now,
                "pref.water.selectedTimings": "[" + ",".join(f"{each - reference:.0f}" for each in times) + "]"}

    def start_screen_saver(self):
        self.session.spawn([sys.executable, "-m", "dbusmock", "--session", SAVER, SAVER_PATH, SAVER])
        wait_until(lambda: self.session.has_owner(SAVER), 10, "the screen saver")
        self.lock(False)

    def lock(self, locked):
        answer = GLib.Variant("(sssss)", (SAVER, "GetActive", "", "b", f"ret = {locked}"))
        signal = GLib.Variant("(sssav)", (SAVER, "ActiveChanged", "b", [GLib.Variant("b", locked)]))
        self.session.call(SAVER, SAVER_PATH, DOUBLE, "AddMethod", answer)
        self.session.call(SAVER, SAVER_PATH, DOUBLE, "EmitSignal", signal)

    # An hour

    def at(self, hour, seconds):
        time.sleep(max(0, self.begin + hour * HOUR + seconds - time.monotonic()))

    def see(self, hour, what, condition):
        """Runs a step; one that fails is told, and the soak goes on."""
        try:
            condition()
        except TimeoutError as error:
            self.missed.append(f"hour {hour + 1}: {what}: {error}")
            print(f"soak: NOT SEEN in {self.missed[-1]}", flush=True)

    def hour(self, number):
        steps = [
            (0, "unlocking", lambda: self.lock(False)),
            (24, "a break", lambda: wait_for_cover(self.session, self.pair, 5)),
            (PLUG, "a break on a new monitor", self.plug),
            (UNPLUG, "a monitor less", self.unplug),
            (29, "the break's end", lambda: wait_for_uncover(self.session, 5)),
            (WATER - 0.5, "the water panel", self.drink),
            (TRAY, "another tray", self.restart_tray),
            (54, "the next break", lambda: wait_for_cover(self.session, self.pair, 5)),
            (LOCK, "the locked screen", self.lock_the_break),
        ]
        for seconds, what, step in steps:
            self.at(number, seconds)
            self.see(number, what, step)

    def plug(self):
        self.session.add_monitor(self.third)
        wait_for_cover(self.session, [*self.pair, self.third], 3)

    def unplug(self):
        self.session.remove_monitor(self.third)
        wait_for_cover(self.session, self.pair, 3)

    def panel(self):
        return next(iter(self.session.screen.titled(lambda title: title == "Water Reminder")), None)

    def drink(self):
        panel = wait_until(self.panel, 5, "the panel")
        time.sleep(2.2)     # it fades in
        self.session.screen.click(panel.x + DONE[0], panel.y + DONE[1])
        self.session.screen.move(5, 590)
        wait_until(lambda: not self.panel(), 5, "the panel to close")

    def restart_tray(self):
        Session.end(self.tray)
        time.sleep(1)
        self.tray = self.session.start_tray_service()
        wait_until(lambda: self.program.item().registered(), 10, "the item in the new tray")

    def lock_the_break(self):
        skipped = self.program.count("skip break view")
        self.lock(True)
        wait_for_uncover(self.session, 5)
        if self.program.count("skip break view") != skipped:
            raise TimeoutError("the break ended by itself")

    # All of it

    def run(self):
        for number in range(self.hours):
            self.hour(number)
            print(f"soak: hour {number + 1} is over", flush=True)
            if self.program.ended():
                said = "\n".join(self.program.lines()[-20:])
                sys.exit(f"soak: the program ended with {self.program.process.returncode}:\n{said}")
        self.at(self.hours, 0)
        self.lock(False)
        self.at(self.hours, EPILOGUE)
        self.sampler.over.set()
        self.sampler.join()
        line = self.program.item().line("Quit")
        self.program.item().click_line(line.id)
        if self.program.process.wait(10) != 0:
            self.missed.append(f"the program ended with {self.program.process.returncode}")

    def span(self, first, last):
        return self.begin + first * HOUR, self.begin + last * HOUR

    def busy(self, number, kind):
        """What all processes together took in an hour when they had most to do: more than in nine tenths of the time."""
        samples = self.sampler.between(*self.span(number, number + 1))
        if len(samples) < HOUR / 2:
            return None
        return statistics.quantiles((sum(each[kind] for each in sample.values()) for sample in samples), n=10)[-1]

    def idle(self, number, kind):
        """What the program took after an hour, when nothing else of it was there."""
        end = self.begin + (number + 1) * HOUR
        samples = self.sampler.between(end, end + EPILOGUE)
        alone = [sample["kelpa"][kind] for sample in samples if set(sample) == {"kelpa"}]
        return statistics.median(alone) if alone else None

    def verdict(self):
        """Says what was measured; gives what is wrong."""
        wrong = list(self.missed)
        for kind in KINDS:
            for what, figure in (("idle after", self.idle), ("busy in", self.busy)):
                hours = [figure(number, kind) for number in range(self.hours)]
                print(f"soak: {kind}, {what} each hour, MB: " + " ".join(f"{hour:.2f}" if hour else "-" for hour in hours))
                if not hours[0] or not hours[-1]:
                    wrong.append(f"{kind}, {what} an hour: not to be seen beside the windows of another Kelpa")
                elif hours[-1] - hours[0] > MOST_GROWTH:
                    wrong.append(f"{kind}, {what} an hour: grown by {hours[-1] - hours[0]:.2f} MB")
        print(f"soak: {len(self.sampler.samples)} samples, {self.sampler.left_out} more beside another Kelpa")
        lines = [line for path in self.program.log_files() for line in path.read_text(errors="replace").splitlines()]
        errors = [line for line in {*lines, *self.program.lines()} if re.match(r"\S+ (error|critical) ", line)]
        # What has no time in front does not come from the log but from a library, and is worth a look.
        strange = [line for line in self.program.lines() if not re.match(r"\d{4}-\d\d-\d\dT", line)]
        print(f"soak: {len(lines)} lines in the log, {len(errors)} of them errors, {len(strange)} lines from elsewhere")
        print("".join(f"soak: from elsewhere: {line}\n" for line in strange[:20]), end="")
        if not lines:
            wrong.append("there is no log")
        finished = plistlib.loads(self.program.settings_file().read_bytes()).get("pref.water.finished", 0)
        if finished != self.hours * GLASS:
            wrong.append(f"{finished} ml of water are counted and {self.hours} glasses of {GLASS} were drunk")
        return wrong + errors


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--program", type=Path, default=ROOT / "build/release/kelpa")
    parser.add_argument("--hours", type=int, default=10,
                        help="hours of the program, each a minute (default: %(default)s)")
    options = parser.parse_args()
    if not os.access(options.program, os.X_OK):
        sys.exit(f"soak: {options.program} is not there; scripts/build.sh release kelpa makes it")
    if not 2 <= options.hours <= 15:
        sys.exit("soak: between 2 and 15 hours, or nothing can be compared within one day")
    with Session(monitors=3, width=800, height=600) as session:
        soak = Soak(options, session)
        soak.start()
        soak.run()
        wrong = soak.verdict()
    for each in wrong:
        print(f"soak: WRONG: {each}")
    print(f"soak: {'failed' if wrong else 'passed'}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
