#!/usr/bin/python3
"""Shows Kelpa at work on a virtual desktop of its own: two monitors, a panel, one short break and one long one.

The program's log runs along on the terminal and pictures of what a person would see go into a folder. It ends with
success only if everything was really seen: the time as text in the panel, the menu, the water panel, both breaks with a
running countdown on each monitor, and work going on after them.
"""
import argparse
import os
import re
import signal
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
try:
    from virtual_desktop import Box, Program, Session, break_windows, wait_for_countdown, wait_for_cover, \
        wait_for_rest, wait_for_uncover, wait_until
except ImportError as error:
    sys.exit(f"demo: {error}; the packages python3-gi and python3-xlib are needed (./run --demo installs them)")

WORK_MINUTES, SHORT_SECONDS, LONG_MINUTES = 1, 96, 2
WORK, LONG = WORK_MINUTES * 60, LONG_MINUTES * 60
# The whole day is working time, and the first of its reminders comes after the demonstration.
MIDNIGHT = time.mktime(time.localtime()[:3] + (0, 0, 0, 0, 0, -1))
WATER = {"pref.water.enable": True, "pref.water.finished": 600, "pref.water.interval.start": str(MIDNIGHT),
         "pref.water.interval.end": str(MIDNIGHT + 86399)}
PANEL_HEIGHT = 32
TIME = re.compile(r"\d\d:\d\d")


class Demo:
    def __init__(self, options, session):
        self.options, self.session, self.screen = options, session, session.screen
        self.program = Program(session, options.program)
        self.pictures = Path(options.output)
        self.failures = []
        self.item = None
        first = session.monitors[0]
        self.panel = Box(first.x, first.y, first.width, PANEL_HEIGHT)
        self.finished = threading.Event()

    # Telling

    def say(self, text):
        print(f"demo: {text}", flush=True)

    def check(self, right, what):
        self.say(f"{'seen' if right else 'NOT SEEN'}: {what}")
        if not right:
            self.failures.append(what)

    def save(self, picture, name):
        path = self.pictures / f"{name}.png"
        picture.save(path)
        self.say(f"picture: {os.path.relpath(path)}")

    def show_log(self):
        """Prints the program's lines as they come, until the demo is over."""
        shown = 0
        while True:
            last_time = self.finished.is_set()
            lines = self.program.lines()
            for line in lines[shown:]:
                print(f"  {line}", flush=True)
            shown = len(lines)
            if last_time:
                return
            self.finished.wait(0.1)

    # What is looked at

    def see_tray(self):
        """The time stands in the panel as text, and the text moves on."""
        self.item = self.program.item()
        self.check(self.item is not None, "the status item on the bus")
        label = wait_until(lambda: TIME.fullmatch(self.item.label()), 5)
        self.check(bool(label), f"the time as the item's label: {self.item.label()!r}")
        wait_until(self.item.registered, 5, "the tray to take the item")
        changed = wait_until(self.text_moves, 15)   # the tray draws a new item a little later
        self.check(bool(changed), f"the text in the panel moving on: {changed}")
        if changed:
            self.label_at = changed
            self.check(self.panel_holds_text(), "digits beside the icon in the panel")
        picture = self.screen.picture(self.panel)
        self.save(picture.crop(Box(picture.width - 260, 0, 260, PANEL_HEIGHT)), "tray")

    def text_moves(self):
        """What changes in the panel with the label, where it is of the size of some figures."""
        before, text = self.screen.picture(self.panel), self.item.label()
        wait_until(lambda: self.item.label() != text, 5, "the label to change")
        changed = wait_until(lambda: before.differs(self.screen.picture(self.panel)), 3)
        return changed if changed and changed.width < 100 and changed.height >= 6 else None

    def panel_holds_text(self):
        """The figures that changed end the text: to their left stand two digits and a colon. Neighbours may touch."""
        right = self.label_at.x + self.label_at.width
        text = self.screen.picture(Box(right - 38, 4, 38, PANEL_HEIGHT - 8))
        return 3 <= text.glyphs() <= 6

    def see_menu(self):
        """The menu opens under the item and the time goes on ticking meanwhile."""
        first = self.session.monitors[0]
        below = Box(first.x, PANEL_HEIGHT + 2, first.width, first.height - PANEL_HEIGHT - 2)
        closed = self.screen.picture(below)
        self.screen.click(self.label_at.x + self.label_at.width // 2, PANEL_HEIGHT // 2)
        opened = wait_until(lambda: (closed.differs(self.screen.picture(below)) or Box(0, 0, 0, 0)).height > 100, 5)
        self.check(opened, "the opened menu")
        text = self.item.label()
        moved = wait_until(lambda: self.item.label() != text, 3)
        self.check(moved, "the time ticking with the menu open")
        menu = closed.differs(self.screen.picture(below)) or Box(first.width - 300, 0, 300, 200)
        left = max(menu.x - 60, 0)
        self.save(self.screen.picture(Box(left, 0, first.width - left, menu.height + PANEL_HEIGHT + 60)), "menu")
        self.screen.press("Escape")
        self.check(wait_until(lambda: closed.differs(self.screen.picture(below)) is None, 3), "the menu closed again")

    def see_break(self, name, seconds):
        """A break covers every monitor and counts down on each."""
        self.program.wait_for(rf"ticktack timer start {seconds}$", 60)
        windows = wait_for_cover(self.session, self.session.monitors)
        self.check(True, f"a {name} break window on each of {len(windows)} monitors")
        for monitor in self.session.monitors:
            _, picture = wait_for_countdown(self.screen, monitor)
            self.check(True, f"the countdown on monitor {monitor.name}")
            self.save(picture, f"break-{name}-{monitor.name}")
        self.check(len(break_windows(self.session)) == len(windows), f"the {name} break lasting that long")

    def see_water(self):
        """The menu's water line brings the panel into its corner, and Skip takes it away."""
        line = self.item.line("(40%")
        self.check(line is not None, "the day's water in the menu")
        self.item.click_line(line.id)
        panel = wait_until(lambda: next(iter(self.screen.titled(lambda title: title == "Water Reminder")), None), 5,
                           "the water panel")
        first = self.session.monitors[0]
        self.check((panel.x + panel.width, panel.y) == (first.x + first.width, first.y), "the panel in its corner")
        # Beneath its upper edge, until it is seen, the time in the tray moves as well.
        own = Box(panel.x, panel.y + PANEL_HEIGHT, panel.width, panel.height - PANEL_HEIGHT)
        wait_for_rest(self.screen, own)
        self.save(self.screen.picture(panel), "water")
        self.check(self.time_moves(own), "the time to the next drink")
        self.screen.click(panel.x + 144, panel.y + 303)
        closed = wait_until(lambda: not self.screen.titled(lambda title: title == "Water Reminder"), 5)
        self.check(closed, "the panel gone after its answer")

    def time_moves(self, place):
        """Whether a line of text changes there, and nothing else."""
        before = self.screen.picture(place)
        changed = wait_until(lambda: before.differs(self.screen.picture(place)), 2)
        return bool(changed) and changed.height < 40

    def see_end(self, times):
        """The break ends by itself and work goes on."""
        self.program.wait_for("skip break view", 60, times=2 * times)
        wait_for_uncover(self.session)
        label = wait_until(lambda: TIME.fullmatch(self.item.label()), 3)
        self.check(bool(label), "the break windows gone and the time back in the tray")

    def see_log(self):
        """The log tells the whole story in order, in the file as well."""
        story = [f"start {WORK}", f"timesup for {WORK}", f"start {SHORT_SECONDS}", f"timesup for {SHORT_SECONDS}",
                 f"start {WORK}", f"timesup for {WORK}", f"start {LONG}", f"timesup for {LONG}", f"start {WORK}"]
        files = self.program.log_files()
        self.check(len(files) == 1, "the day's log file")
        for where, lines in (("on the terminal", self.program.lines()),
                             ("in the log file", files[0].read_text().split("\n") if files else [])):
            told = [line.rsplit("ticktack timer ", 1)[1] for line in lines if "ticktack timer " in line]
            rest = iter(told)
            self.check(all(step in rest for step in story), f"both breaks and the work after them {where}")

    def run(self):
        self.program.write_settings({"pref.work.time": WORK_MINUTES, "pref.break.time": SHORT_SECONDS,
                                     "pref.short.break.times": 2, "pref.long.break.time": LONG_MINUTES,
                                     "stop_timer_after_mouse_stop": False,  # nobody sits at this desktop
                                     **WATER, "pref.water.lastShowDate": time.time()})
        self.program.start("--speed", str(self.options.speed))
        teller = threading.Thread(target=self.show_log)
        teller.start()
        try:
            self.see_tray()
            self.see_break("short", SHORT_SECONDS)
            self.see_end(1)
            self.see_menu()
            self.see_water()
            self.see_break("long", LONG)
            self.see_end(2)
            self.program.wait_for(rf"ticktack timer start {WORK}$", 10, times=3)
            self.see_log()
            status = self.session.end(self.program.process)
            self.check(status == 0, f"the program ending in good order (status {status})")
        except TimeoutError as error:
            self.check(False, str(error))
            self.save(self.screen.picture(), "failure")
        finally:
            self.finished.set()
            teller.join()


def speed(text):
    value = float(text)
    if not 1 <= value <= 12:
        raise argparse.ArgumentTypeError("the speed is a number from 1 to 12; beyond that nothing could be watched")
    return f"{value:g}"


def parse():
    parser = argparse.ArgumentParser(prog="./run --demo", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--speed", type=speed, default="8", help="seconds of the program a real second (default 8)")
    parser.add_argument("--language", help="show the program in this language, for instance zh_CN")
    parser.add_argument("--output", default=ROOT / "build/demo", help="folder for the pictures (default build/demo)")
    parser.add_argument("--program", default=ROOT / "build/release/kelpa", help=argparse.SUPPRESS)
    options = parser.parse_args()
    if not os.access(options.program, os.X_OK):
        parser.error(f"{options.program} is not there; ./run builds it")
    return options


def make_room(folder):
    """Makes the folder where it is not there and removes an earlier demonstration's pictures, nothing else."""
    folder.mkdir(parents=True, exist_ok=True)
    for pattern in ("tray.png", "menu.png", "water.png", "break-*.png", "failure.png"):
        for picture in folder.glob(pattern):
            picture.unlink()


def stop(*_):
    sys.exit(143)


def main():
    options = parse()
    signal.signal(signal.SIGTERM, stop)
    make_room(Path(options.output))
    session = Session(monitors=2, width=1280, height=800, language=options.language)
    try:
        session.start()
        session.start_window_manager(compositor=True)
        session.start_tray()
        demo = Demo(options, session)
        demo.say(f"two monitors on the virtual display {session.display}, {options.speed} times the usual speed")
        demo.run()
    except KeyboardInterrupt:
        print("demo: stopped", file=sys.stderr)
        return 130
    finally:
        # Whoever is impatient must not leave half a desktop behind.
        signal.signal(signal.SIGINT, signal.SIG_IGN)
        session.stop()
    if demo.failures:
        demo.say("failed, not seen: " + "; ".join(demo.failures))
        return 1
    demo.say(f"passed; the pictures are in {os.path.relpath(options.output)}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
