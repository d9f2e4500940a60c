#!/usr/bin/python3
"""Random desks for kelpa-desk: weeks of a person who works, locks the screen, drinks, changes every setting and travels.

usage: random_desks.py print --seed N [--days D] [--all]
       random_desks.py check PLAYER [--desks N] [--days D] [--first-seed N] [--all]
       random_desks.py compare OLD NEW [--desks N] [--days D] [--first-seed N]

The same seed gives the same desk. `check` plays desks and holds their journals against rules that every desk keeps;
`compare` plays them with two players, of before and after a change that must move nothing, and shows the first line that
differs. Both end with 1 when something was found. With `--all` people also use what is off at first: a word before a break,
breaks that wait, the history, and pauses with an end.
"""
import argparse
import random
import re
import subprocess
import sys
from datetime import datetime, timedelta

EVENTS_A_DAY = 100
ZONES = ("Europe/Berlin", "America/New_York", "Asia/Kolkata", "Australia/Lord_Howe", "Pacific/Apia", "UTC")
TEXTS = ("Stand up", "喝水", "one\\ntwo", "a \"quoted\" text", "ümläut & <tag>", " ", "x" * 300)
MENU = ("pause", "water", "settings", "updates", "feedback", "about")
SWITCHES = ("launchAtLogin", "showTime", "autoCheckUpdate", "customBreakPrompt", "forceLongBreak", "restartTimerAfterAwake",
            "stopTimerAfterMouseStop", "showNewDayTip", "enable")
STORED = {
    "bool": ("show_time_in_status_bar", "force_long_break", "restart_timer_after_awake", "stop_timer_after_mouse_stop",
             "show_new_day_tip", "custom_break_prompt", "pref.water.enable"),
    "int": ("pref.work.time", "pref.break.time", "pref.short.break.times", "pref.long.break.time", "break_style",
            "pref.water.target", "pref.water.mode", "pref.water.selectedInterval", "pref.water.finished",
            "pref.water.lastSelectedAmount"),
    "real": ("last_weakup_timestamp", "pref.water.lastShowDate"),
    "text": ("break_prompt_text",),
    "list": ("break_prompt_list_0", "break_prompt_list_1", "break_prompt_list_2", "new_day_break_prompt_list_0"),
}
NUMBERS = {"workTime": (1, 90), "breakTime": (1, 900), "shortBreakTimes": (1, 6), "longBreakTime": (1, 40),
           "target": (-5, 3000), "selectedInterval": (-2, 240), "finished": (-100, 4000), "lastSelectedAmount": (-50, 900)}


class Desk:
    """Writes one desk, event by event."""

    def __init__(self, seed, days, everything=False):
        self.random = random.Random(seed)
        self.everything = everything
        self.days = days
        self.lines = []
        self.passed = 0     # seconds, sleep included

    def say(self, line):
        self.lines.append(line)

    def chance(self, probability):
        return self.random.random() < probability

    def time_of_day(self):
        return f"{self.random.randrange(24):02}:{self.random.choice((0, 1, 15, 30, 45, 59)):02}"

    def screen(self):
        return self.random.randint(1, 3)

    def wait(self, least, most):
        seconds = self.random.uniform(least, most)
        self.passed += seconds
        self.say(f"+{seconds:.3f}" if self.chance(0.2) else f"+{round(seconds)}")

    def moment(self):
        """A quarter of an hour of some day, as time points are: what compares the two has to meet them equal."""
        return 900 * self.random.randrange(1767000000 // 900, 1800000000 // 900)

    def suspend(self, seconds):
        self.passed += seconds
        self.say(f"suspend {round(seconds)}")

    def write(self):
        begin = datetime(2026, 1, 1) + timedelta(days=self.random.randrange(400), seconds=self.random.randrange(86400))
        self.say(f"start {begin:%Y-%m-%dT%H:%M:%S}")
        if self.chance(0.7):
            self.say(f"zone {self.random.choice(ZONES)}")
        for _ in range(self.random.randrange(6)):
            self.store()
        self.say("launch")
        for day in range(1, self.days + 1):
            while len(self.lines) < EVENTS_A_DAY * day:
                self.scene()
            self.night(86400 * day - self.passed)
        self.say("menu quit")
        return "\n".join(self.lines) + "\n"

    def scene(self):
        scenes = ((self.at_work, 30), (self.in_break, 22), (self.away, 8), (self.change_setting, 16), (self.store, 4),
                  (self.water, 14), (self.style, 6), (self.point, 5), (self.click, 8), (self.desk_changes, 5))
        if self.everything:
            scenes += ((self.before_a_break, 30), (self.history, 4), (self.pause, 12))
        weights = [weight for _, weight in scenes]
        self.random.choices([scene for scene, _ in scenes], weights)[0]()

    def history(self):
        self.say(self.random.choice(("pref keepHistory true", "pref keepHistory true", "pref keepHistory false",
                                     "disk full", "disk room", "disk room")))

    def at_work(self):
        for _ in range(self.random.randint(1, 4)):
            self.wait(1, 400)
            if self.chance(0.8):
                self.say("activity")

    def in_break(self):
        """Works until a break is likely, and ends it in one of the ways there are."""
        self.say("activity")
        self.say("pref workTime 1" if self.chance(0.5) else "+240")
        self.wait(55, 70)
        self.random.choice((lambda: self.say(f"skip {self.screen()}"), lambda: self.say(f"notice {self.screen()}"),
                            lambda: self.wait(1, 1200), lambda: self.say("lock"), lambda: self.say("menu pause"),
                            lambda: self.say("activity"), self.change_screens))()
        self.wait(0, 3)

    def before_a_break(self):
        """What is told before a break, and what it waits for."""
        for _ in range(self.random.randint(1, 3)):
            number, yes = self.random.randint(1, 20), self.random.choice(("true", "false"))
            self.say(self.random.choice((
                f"pref breakNotice {self.random.choice((0, 10, 30, 60))}", f"pref moreTime {number}",
                f"pref holdBreaks {self.random.choice(('true', yes))}", f"pref holdLimit {number * 10}",
                f"pref holdFor{self.random.choice(('Sound', 'Camera', 'FullScreen', 'Awake'))} {yes}",
                f"store pref.break.hold bool {yes}", "busy none", "busy sound awake", "busy camera fullscreen",
                f"busy answers {self.random.choice((0, 0, 1.5, 3, 'never'))}", "notification start",
                "notification more", "kelpa break", "kelpa postpone", f"kelpa postpone {number}")))
            self.wait(0, 90)

    def pause(self):
        """Pauses with an end and without, some of them beneath a lock or a greeting."""
        for _ in range(self.random.randint(1, 3)):
            self.say(self.random.choice((
                f"kelpa pause {self.random.randint(1, 200)}m", f"kelpa pause {self.random.randint(1, 9)}h5m",
                f"kelpa pause until {self.time_of_day()}", "kelpa pause until tomorrow", "kelpa pause", "kelpa resume",
                "menu pause", "lock", "unlock", "activity", f"clock {self.random.choice('+-')}{self.random.randint(1, 7200)}")))
            self.wait(0, 3000)

    def away(self):
        self.say("lock")
        if self.chance(0.3):
            self.say("activity")
        if self.chance(0.3):
            self.suspend(self.random.randrange(1, 7000))
        else:
            self.wait(1, 3000)
        if self.chance(0.9):
            self.say("unlock")
            self.wait(0, 15)

    def night(self, rest):
        """The rest of the day, locked or not, asleep or not."""
        locked = self.chance(0.8)
        if locked:
            self.say("lock")
        asleep = self.random.choice((0, 0.5, 1)) * max(rest, 60)
        self.suspend(asleep)
        self.wait(max(rest, 60) - asleep, max(rest, 60) - asleep + 1)
        if locked:
            self.say("unlock")
        self.wait(0, 20)

    def change_setting(self):
        kind = self.random.randrange(5)
        if kind == 0:
            self.say(f"pref {self.random.choice(SWITCHES)} {self.random.choice(('true', 'false'))}")
        elif kind == 1:
            name = self.random.choice(tuple(NUMBERS))
            self.say(f"pref {name} {self.random.randint(*NUMBERS[name])}")
        elif kind == 2:
            self.say(f"pref {self.random.choice(('intervalStartDate', 'intervalEndDate'))} {self.time_of_day()}")
        elif kind == 3:
            times = " ".join(self.time_of_day() for _ in range(self.random.randint(1, 5)))
            self.say(self.random.choice((f"pref selectedTimings {times}", "pref mode timing", "pref mode interval")))
        else:
            self.say(self.random.choice((
                f"pref breakStyle {self.random.choice(('default', 'relaxation', 'struggle'))}",
                f"pref breakPrompt {self.random.choice(TEXTS)}",
                f"pref lastClickTimestamp {self.moment()}",
                f"pref lastWeakupTimestamp {self.moment()}.5")))

    def store(self):
        """Writes the settings as another program would; what the cycle cannot run with is left out."""
        kind = self.random.choice(tuple(STORED))
        key = self.random.choice(STORED[kind])
        value = {
            "bool": lambda: self.random.choice(("true", "false")),
            "int": lambda: str(self.random.randint(1, 300)),
            "real": lambda: f"{self.moment()}.25",
            "text": lambda: self.random.choice(TEXTS),
            "list": lambda: '["one", "two \\"words\\"", "喝水"]',
        }[kind]()
        self.say(f"store {key} absent" if self.chance(0.2) else f"store {key} {kind} {value}")

    def water(self):
        self.say(self.random.choice(("menu water", "pref enable true", "+900")))
        if self.chance(0.7):
            self.say(f"water amount {self.random.choice((50, 100, 150, 200, 250, 500, 0, -20))}")
        if self.chance(0.9):
            self.say(self.random.choice(("water done", "water skip")))
        self.wait(0, 3)

    def style(self):
        text = self.random.choice(TEXTS).strip() or "text"
        self.say(self.random.choice((f"style add {text}", f"style edit {text} => {self.random.choice(TEXTS)}", f"style delete {text}",
                                     "style reset", "style list break", "style list newday")))

    def point(self):
        self.say(f"point {self.random.choice(('add', 'remove'))} {self.time_of_day()}")

    def click(self):
        self.say(f"menu {self.random.choice(MENU)}")
        self.wait(0, 60)

    def change_screens(self):
        self.say("screens " + " ".join(str(screen) for screen in self.random.sample((1, 2, 3), self.random.randint(1, 3))))

    def desk_changes(self):
        self.random.choice((self.change_screens, lambda: self.say(f"zone {self.random.choice(ZONES)}"),
                            lambda: self.say(f"clock {self.random.choice((-1, 1)) * self.random.randrange(1, 90000):+}")))()


def played(player, script, seed):
    run = subprocess.run([player, "--seed", str(seed), "-"], input=script.encode(), capture_output=True, timeout=300, check=False)
    return run.returncode, run.stdout.decode(), run.stderr.decode()


TITLE = re.compile(r'^(""|(\d\d+)?\d\d:\d\d)$')
HISTORY = re.compile(r"""history\ (\d{4}-\d\d)\ \1-\d\d,\d\d:\d\d:\d\d,(?:
    work,,,(?P<worked>\d+),,,,,(break|newday|paused|idle|restarted|locked|quit)|
    break,(short|long|newday),(?P<length>\d+),(?P<seconds>\d+),[0-3],(due|early),,,
        (?P<end>complete|locked|quit|skipped|notice|replaced)|
    drink,,,,,,\d+,\d+,drunk)""", re.VERBOSE)
TIMER = re.compile(r"log info ticktack timer (start |timesup for |stoped )(\S+)$")


def broken_attention(journal):
    """What is wrong with the words before breaks and with the breaks that wait."""
    shown, another, asked, waits = False, False, -60.0, False
    for line in journal.splitlines():
        number, _, event = line.partition(" ")
        if event.startswith("set pref.break.notice "):
            another = True      # a moment that is still to come, whose word takes the place of the one that shows
        elif event.startswith("notification "):
            if shown != (event == "notification withdrawn") and not (shown and another):
                yield f"one notification too many or too few: {line}"
            shown, another = event != "notification withdrawn", False
        elif event.startswith("busy asked"):
            if waits and float(number) - asked < 59.999:
                yield f"asked again within a minute: {line}"
            asked = float(number)
        elif event.startswith("log info the break waits"):
            waits = not event.endswith("no longer")


def broken_history(journal):
    """Lines of the history that nobody could read, or that cannot be true."""
    for line in journal.splitlines():
        event = line.partition(" ")[2]
        if not event.startswith("history ") or event == "history shown":
            continue
        told = HISTORY.fullmatch(event)
        if not told:
            yield f"no line of a history: {line}"
        elif told["worked"] == "0":
            yield f"work without a second: {line}"
        elif told["end"] and (told["end"] == "complete") != (int(told["seconds"]) >= int(told["length"])):
            yield f"a break that ended in another way: {line}"


def broken_pauses(journal):
    """What is wrong with pauses that have an end: while one is told of, no work period begins."""
    paused = False
    for line in journal.splitlines():
        event = line.partition(" ")[2]
        if event.startswith("hint "):
            paused = event.startswith('hint "Paused until ')
        elif paused and event.startswith("item pause stop.circle"):
            yield f"work begins in a pause: {line}"


def broken_rules(journal):
    """What the journal of a desk holds that none may hold, as texts."""
    yield from broken_attention(journal)
    yield from broken_history(journal)
    yield from broken_pauses(journal)
    before, running, last_second = "", None, 0.0
    for line in journal.splitlines():
        number, _, event = line.partition(" ")
        second = float(number)
        if second < last_second:
            yield f"time runs backwards: {line}"
        last_second = second
        if event.startswith("fatal"):
            yield f"it ended itself: {line}"
        if event.startswith("title ") and not TITLE.match(event[6:]):
            yield f"no time: {line}"
        timer = TIMER.match(event)
        if not timer:
            continue
        deed, value = timer.groups()
        if deed == "start " and before != "stoped ":
            yield f"a period starts without the end of the last: {line}"
        if deed == "timesup for ":
            length = float(value)
            if not running or running[1] != length or abs(second - running[0] - max(length, 1)) > 0.0011:
                yield f"time is up for another period than {running}: {line}"
        running = (second, float(value)) if deed == "start " else None if deed == "stoped " else running
        before = deed


def check(player, desk, seed):
    code, journal, said = played(player, desk, seed)
    problems = list(broken_rules(journal))
    if code != 0:
        problems.append(f"the player ended with {code}: {said.strip()}")
    if " app quit" not in journal[-200:]:
        problems.append("the desk did not come to its end")
    return problems[:3]


def compare(old, new, desk, seed):
    before, after = played(old, desk, seed), played(new, desk, seed)
    if before == after:
        return []
    pairs = zip(before[1].splitlines() + ["(end)"], after[1].splitlines() + ["(end)"])
    first = next(((one, other) for one, other in pairs if one != other), (before[2].strip(), after[2].strip()))
    return [f"old: {first[0]}\n    new: {first[1]}"]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    commands = parser.add_subparsers(dest="command", required=True)
    one = commands.add_parser("print")
    one.add_argument("--seed", type=int, required=True)
    several = [commands.add_parser("check"), commands.add_parser("compare")]
    several[0].add_argument("player")
    for name in ("old", "new"):
        several[1].add_argument(name)
    for command in several:
        command.add_argument("--desks", type=int, default=200)
        command.add_argument("--first-seed", type=int, default=1)
    for command in (one, several[0]):
        command.add_argument("--all", action="store_true")
    for command in (one, *several):
        command.add_argument("--days", type=int, default=8)
    chosen = parser.parse_args()
    if chosen.command == "print":
        sys.stdout.write(Desk(chosen.seed, chosen.days, chosen.all).write())
        return 0
    found = 0
    for seed in range(chosen.first_seed, chosen.first_seed + chosen.desks):
        desk = Desk(seed, chosen.days, chosen.command == "check" and chosen.all).write()
        problems = check(chosen.player, desk, seed) if chosen.command == "check" else compare(chosen.old, chosen.new, desk, seed)
        for problem in problems:
            print(f"desk {seed}: {problem}")
        found += bool(problems)
    print(f"{chosen.desks} desks of {chosen.days} days: {found} with something to say")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
