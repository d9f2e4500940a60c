"""What the tests of the macOS face share: one run of the program a test, which is talked to over a socket, on a screen that
all tests of a file share. platform/macos/check/driver/Driver.mm says how a test is written.

Over GNUstep all tests run, with a clock that only they move on; on a Mac those that are marked `anywhere`."""
import json
import os
import plistlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ON_MAC = sys.platform == "darwin"
ROOT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.get("KELPA_MACOS_PROGRAM", ROOT / "build/macos-check/Kelpa.app/Kelpa"))
# A Monday, nine in the morning: the second at which each run starts.
START = 1772442000
# Nobody moves the mouse all the time; the tests of that rule switch it on.
SETTINGS = {"pref.work.time": 25, "stop_timer_after_mouse_stop": False}
FAULTS = ("ERROR: AddressSanitizer", "runtime error:", "does not recognize", "Uncaught exception", "NSException", "given negative")
SHIFT, COMMAND = 1 << 17, 1 << 20
KEYS = {"Escape": "\x1b", "Return": "\r", "Tab": "\t", "Space": " ", "Up": "\uf700", "Down": "\uf701", "Left": "\uf702",
        "Right": "\uf703", "Home": "\uf729", "Backspace": "\x7f"}
SCREENS = ((1, 0, 0, 800, 600), (2, 800, 0, 800, 600))
# The masks of events that other applications get, by what happens.
MOUSE_MOVED, LEFT_DOWN, SCROLLED, MODIFIERS = 5, 1, 22, 12


# What the face makes of the system's.
MADE = {"NSButton", "NSDatePicker", "NSImage", "NSPopover", "NSStackView", "NSTextField", "NSViewController", "NSWindow",
        "SourceStandIn"}
# What is asked of the objects of each class.
SEEN = {
    "NSWindow": ("title", "frame", "level", "alphaValue", "isVisible", "isKeyWindow", "styleMask", "firstResponder.hash", "contentView"),
    "NSView": ("accessibilityRole", "accessibilityLabel", "accessibilityHelp", "accessibilityValue", "toolTip", "frameInWindow",
               "isHidden", "subviews"),
    "NSControl": ("isEnabled", "intValue"),
    "NSTextField": ("isEditable", "stringValue", "currentEditor.hash", "currentEditor.string"),
    "NSButton": ("title", "image.accessibilityDescription"),
    "NSPopUpButton": ("titleOfSelectedItem", "itemTitles"),
    "NSSegmentedControl": ("selectedSegment", "itemTitles"),
    "NSDatePicker": ("dateValue",),
    "NSSwitch": ("state",),
    "NSTableView": ("selectedRow",),
    "NSMenuItem": ("title", "keyEquivalent", "isEnabled", "isSeparatorItem", "tag", "actionName",
                   # Which the face makes the same; a Mac does not tell the first.
                   "image.accessibilityDescription" if ON_MAC else "image.systemSymbolName"),
}
# And of those in a note of what the system was asked.
NOTED = {
    "NSURL": ("absoluteString",),
    "NSAttributedString": ("string", "description"),
    "UNNotificationRequest": ("content.title", "content.body", "content.categoryIdentifier"),
    "UNNotificationCategory": ("identifier", "actions"),
    "UNNotificationAction": ("identifier", "title"),
}
STATUS = {"title": "button.title", "picture": "button.image", "tip": "button.toolTip"}
# The toolkits' own windows, which are none to a person: for menus, the menu bar and the application's picture.
NO_WINDOWS = ("MenuPanel", "IconWindow", "StatusBarWindow")
# As a person knows views, and by which key each is put to a value.
ROLES = {"AXRadioButton": "radio button", "AXRadioGroup": "radio group", "AXLink": "link"}
KINDS = {"NSPopUpButton": "list", "NSButton": "button", "NSSwitch": "switch", "NSSegmentedControl": "segments", "NSDatePicker": "time",
         "NSStepper": "stepper", "NSTableView": "table", "NSImageView": "picture"}
SETTERS = {"list": "objectValue", "switch": "state", "segments": "selectedSegment", "time": "dateValue", "stepper": "intValue"}
CLOSABLE = 2
TRANSIENT = 1


def rectangle(x, y, width, height):
    return f"{{{{{x}, {y}}}, {{{width}, {height}}}}}"


def shown(view):
    """A view and all within it; those that are hidden are not there."""
    return [] if view["isHidden"] else [view, *(each for child in view["subviews"] for each in shown(child))]


class Refused(Exception):
    """What a person could not do, and why."""


class View:
    """A view in a window, as it was when the program was asked."""

    def __init__(self, program, seen, first):
        self.program, self.seen = program, seen
        self.number, self.frame, self.classes = seen["number"], seen["frameInWindow"], seen["classes"]
        self.help, self.tip, self.choices = seen["accessibilityHelp"], seen["toolTip"], seen.get("itemTitles")
        self.kind, self.name = self.kind_of_it(), self.name_of_it()
        self.value = self.value_of_it()
        self.enabled = seen.get("isEnabled") != 0
        self.keyboard = first in (self.number, seen.get("currentEditor.hash") or self.number)

    def __repr__(self):
        return f"<{self.kind} {self.name!r} {self.value!r}>"

    def kind_of_it(self):
        if "NSTextField" in self.classes:
            return "field" if self.seen["isEditable"] else "text"
        role = self.seen["accessibilityRole"]
        return ROLES.get(role) or next((KINDS[name] for name in self.classes if name in KINDS), "view")

    def name_of_it(self):
        if (label := self.seen["accessibilityLabel"]) is not None:
            return label
        if "NSButton" not in self.classes:
            return ""
        return self.seen["image.accessibilityDescription"] or self.seen["title"]

    def value_of_it(self):
        """What it shows or is set to."""
        if self.kind in ("field", "text"):
            return self.seen["currentEditor.string" if self.seen["currentEditor.hash"] else "stringValue"]
        if self.kind == "time":
            minute = int(self.seen["dateValue"] // 60)
            return f"{minute // 60 % 24:02}:{minute % 60:02}"
        if self.kind == "segments":
            return dict(enumerate(self.choices)).get(self.seen["selectedSegment"])
        if self.kind == "switch":
            return self.seen["state"] == 1
        return self.seen.get({"list": "titleOfSelectedItem", "radio button": "accessibilityValue"}.get(self.kind))

    def ask(self, what, **more):
        self.program.ask(what, number=self.number, **more)

    def press(self):
        if "NSButton" not in self.classes:
            raise Refused("It is no button")
        self.ask("use")

    def click_into(self):
        self.ask("clickInto")

    def point(self, leaves=False):
        self.ask("use", message="mouseExited:" if leaves else "mouseEntered:")

    def set(self, value):
        """Puts it to a value: switch, entry of a list or of segments, row of a table, time as a text. A stepper goes on by it;
        a number is typed into a time, and a row is gone to by keys."""
        if self.kind == "time" and isinstance(value, int):
            self.click_into()
            return self.program.press(str(value))
        if self.kind == "table":
            self.click_into()
            return self.program.press(*["Down"] * (value - self.seen["selectedRow"]), *["Up"] * (self.seen["selectedRow"] - value))
        self.ask("use", key=SETTERS[self.kind], value=self.raw(value))

    def raw(self, value):
        if self.kind in ("list", "segments"):
            return self.choices.index(value)
        if self.kind == "stepper":
            return next(view for window in self.program.windows() for view in window.views
                        if view.number == self.number).seen["intValue"] + value
        if self.kind == "time":
            hour, minute = map(int, value.split(":"))
            return self.seen["dateValue"] // 86400 * 86400 + hour * 3600 + minute * 60
        return int(value)

    def type(self, text, end="Return"):
        """Types a text in the place of what the field holds."""
        self.click_into()
        self.program.press("a", modifiers=COMMAND)
        self.program.press("Backspace")
        self.program.press(*text)
        if end:
            self.program.press(end)


class Window:
    """A window on the screen, as it was when the program was asked."""

    def __init__(self, program, seen):
        self.program, self.number, self.closable = program, seen["number"], seen["styleMask"] & CLOSABLE
        self.title, self.frame, self.level = seen["title"], seen["frame"], seen["level"]
        self.alpha, self.key = seen["alphaValue"], bool(seen["isKeyWindow"])
        self.views = [View(program, view, seen["firstResponder.hash"]) for view in shown(seen["contentView"])]

    def __repr__(self):
        return f"<window {self.title!r}: {self.views}>"

    def all(self, kind, name=None):
        return [view for view in self.views if view.kind == kind and name in (None, view.name)]

    def find(self, kind, name=None):
        found = self.all(kind, name)
        if len(found) != 1:
            raise LookupError(f"{len(found)} of {kind} {name!r} in {self}")
        return found[0]

    def texts(self):
        return [view.value for view in self.views if view.kind == "text"]

    def close(self):
        if not self.closable:
            raise Refused("It has no close button")
        self.program.ask("use", number=self.number, message="performClose:")


class Program:
    """A run of the program."""

    def __init__(self, executable, home, display, settings, arguments=(), environment=None):
        self.home, self.noted = home, 0
        self.write(settings)
        here, there = socket.socketpair()
        self.errors = tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace")
        surroundings = {name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}
        surroundings.update({
            "PATH": os.environ["PATH"], "HOME": str(home), "TEMP": str(home), "TZ": "UTC", "LANG": "C.UTF-8",
            "KELPA_TEST_START": str(START), "KELPA_TEST_MACOS": "14.2.1",
            "KELPA_TEST_SETTINGS": str(self.settings_file()), "CFFIXED_USER_HOME": str(home), **(environment or {})})
        if display:
            surroundings["DISPLAY"] = display
        # What the toolkit made once it keeps.
        surroundings.setdefault("ASAN_OPTIONS", "detect_leaks=0")
        surroundings.setdefault("ASAN_SYMBOLIZER_PATH", "/usr/bin/llvm-symbolizer-14")
        self.process = subprocess.Popen([executable, *arguments], env=surroundings, cwd=home, stdin=there, stdout=self.errors, stderr=self.errors)
        there.close()
        here.settimeout(60)
        self.stream = here.makefile("rw", encoding="utf-8")
        here.close()

    def write(self, settings):
        file = self.settings_file()
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(plistlib.dumps(settings))

    def settings_file(self):
        return self.home / "GNUstep/Defaults/Kelpa.plist"

    def stored(self):
        """What is in the file; number and truth value are told apart."""
        return plistlib.loads(self.settings_file().read_bytes())

    def said(self):
        self.errors.seek(0)
        return self.errors.read()

    def ask(self, what, **more):
        try:
            self.stream.write(json.dumps({"do": what, **more}) + "\n")
            self.stream.flush()
            answer = self.stream.readline()
        except OSError:
            answer = ""
        if not answer:
            raise EOFError(f"The program ended:\n{self.said()}")
        answer = json.loads(answer)
        if "error" in answer:
            raise Refused(answer["error"])
        return answer["answer"]

    # What can be seen

    def see(self, path, keys):
        """What the application has under a path of keys."""
        return self.ask("see", **{"class": "NSApplication"}, path="sharedApplication." + path, keys=keys)

    def windows(self, title=None):
        return [Window(self, window) for window in self.see("windows", SEEN)
                if window["isVisible"] and not window["classes"][0].endswith(NO_WINDOWS) and title in (None, window["title"])]

    def window(self, title):
        found = self.windows(title)
        if len(found) != 1:
            raise LookupError(f"{len(found)} windows {title!r}: {self.windows()}")
        return found[0]

    def breaks(self):
        return [window for window in self.windows() if any(view.classes[0] == "KelpaBreakView" for view in window.views)]

    def status(self):
        """What stands in the menu bar: title, picture and tip."""
        seen = self.see("statusItem", {"NSObject": list(STATUS.values())})
        return {name: seen[key] for name, key in STATUS.items()}

    def title(self):
        return (self.status()["title"] or "").strip()

    def menu(self):
        """The lines of the menu."""
        lines = [{**line, "key": line["keyEquivalent"], "enabled": bool(line["isEnabled"]), "action": line["actionName"],
                  "picture": line[SEEN["NSMenuItem"][-1]]} for line in self.see("statusItem.menu.itemArray", SEEN)]
        return [line for line in lines if not line["isSeparatorItem"]]

    def log(self):
        return "\n".join(file.read_text(encoding="utf-8") for file in sorted(self.home.rglob("*.log")))

    def notes(self, *kinds):
        """What the system was asked since the last time; of certain kinds only."""
        notes = self.see("notes", NOTED) or []
        new, self.noted = notes[self.noted:], len(notes)
        return [note for note in new if not kinds or note["what"] in kinds]

    def setting(self, key):
        """What is stored."""
        return self.ask("see", **{"class": "NSUserDefaults"}, path="standardUserDefaults", key=key)

    def live(self):
        """How many objects there are of the face's own classes, and of those that it makes many of."""
        return {name: count for name, count in self.ask("live").items() if name.startswith("Kelpa") or name in MADE}

    # What a person does

    def choose(self, title):
        line = next((line for line in self.menu() if line["title"].startswith(title)), None)
        if not (line and line["enabled"] and line["action"]):
            raise Refused("The line is grey" if line else "There is no such line")
        self.ask("use", number=line["number"])

    def press(self, *keys, modifiers=0):
        for key in keys:
            self.ask("strike", key=KEYS.get(key, key), modifiers=modifiers)

    def turn_to(self, tab):
        labels, chosen = (f"contentViewController.{key}" for key in ("tabViewItems.label", "selectedTabViewItemIndex"))
        windows = self.see("windows", {"NSWindow": [labels, "isVisible"]})
        window = next((window for window in windows if window["isVisible"] and tab in (window[labels] or ())), None)
        if not window:
            raise Refused("There is no such tab")
        self.ask("use", number=window["number"], key=chosen, value=window[labels].index(tab))

    def click_beside(self):
        """What is there for a moment only goes."""
        for window in self.see("windows", {"NSWindow": ["popover.behavior"]}):
            if window["popover.behavior"] == TRANSIENT:
                self.ask("use", number=window["number"], message="close")

    def settings(self, pane=None):
        """Opens the preferences at a pane."""
        self.choose("Settings...")
        if pane:
            self.turn_to(pane)
        return self.window("Settings")

    # What happens around the program

    def pass_time(self, seconds):
        self.ask("pass", seconds=seconds)

    def wait_for(self, what):
        """Lets time pass until `what` gives something, half a minute at most."""
        for _ in range(120):
            if found := what():
                return found
            self.pass_time(0.25)
        raise AssertionError(f"It never came: {self.windows()}")

    def tell(self, key, value):
        """Puts something of the application's surroundings to a value."""
        self.ask("use", **{"class": "NSApplication"}, path="sharedApplication", key=key, value=value)

    def store(self, key, value):
        """Stores a value as another program does."""
        self.ask("use", **{"class": "NSUserDefaults"}, path="standardUserDefaults", message="setValuesForKeysWithDictionary:",
                 **{"with": {key: value}})

    def screens(self, *screens):
        """Each is a number, x, y, width and height; the first one is the main screen."""
        self.tell("screens", [{"number": number, "frame": rectangle(*frame)} for number, *frame in screens])
        self.ask("post", name="NSApplicationDidChangeScreenParametersNotification")

    def lock(self):
        self.ask("post", name="com.apple.screenIsLocked")

    def unlock(self):
        self.ask("post", name="com.apple.screenIsUnlocked")

    def move_mouse(self, event=MOUSE_MOVED):
        self.ask("elsewhere", type=event)

    # The end

    def quit(self, act=None):
        """Quits by the menu, or by what `act` does; gives the exit status."""
        try:
            (act or (lambda: self.choose("Quit")))()
        except EOFError:
            return self.process.wait(20)
        raise AssertionError("The program goes on")

    def end(self):
        """Ends the program as the end of the session does."""
        self.stream.close()
        try:
            return self.process.wait(20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return self.process.wait()


def anywhere(test):
    """Marks a test that needs nothing in AppKit's place, and no other time than the real one."""
    test.anywhere = True
    return test


class MacTest(unittest.TestCase):
    executable = PROGRAM
    display = None

    def setUp(self):
        if ON_MAC and not hasattr(getattr(self, self._testMethodName), "anywhere"):
            self.skipTest("It needs what stands in for AppKit")

    @classmethod
    def setUpClass(cls):
        if ON_MAC:
            return
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1700x700x24", "-nolisten", "tcp"],
                                  pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        cls.addClassCleanup(server.wait)
        cls.addClassCleanup(server.terminate)
        with os.fdopen(reading, encoding="ascii") as number:
            cls.display = f":{number.readline().strip()}"

    def make_home(self):
        home = Path(tempfile.mkdtemp(prefix="kelpa-macos-"))
        self.addCleanup(shutil.rmtree, home)
        return home

    def launch(self, settings=None, *arguments, screens=None, **environment):
        """Starts the program; it is ended after the test. What it said is shown when the test failed."""
        program = Program(self.executable, self.make_home(), self.display, {**SETTINGS, **(settings or {})}, arguments, environment)
        self.addCleanup(self.finish, program)
        program.title()     # it runs
        if screens:
            program.screens(*screens)
        return program

    def finish(self, program):
        status = program.end()
        said = program.said()
        program.errors.close()
        if any(test is self for test, _ in self._outcome.result.failures + self._outcome.result.errors):
            print(f"--- what the program said:\n{said}\n--- its log:\n{program.log()}", file=sys.stderr)
        self.assertEqual(status, 0)
        self.assertEqual([line for line in said.splitlines() if any(fault in line for fault in FAULTS)], [])


def main():
    if not os.access(PROGRAM, os.X_OK):
        sys.exit(f"{PROGRAM} is not there; scripts/test_macos.sh builds it")
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    unittest.main(verbosity=2)
