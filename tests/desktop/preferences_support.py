"""What the tests of the preferences window share: how it is opened, found on the screen and operated."""
from support import DesktopTest, wait_until
from virtual_desktop import Accessibility

PANES = ("General", "Workflow", "Style", "Water", "About")
WORK = "Length of a work period in minutes"


class PreferencesTest(DesktopTest):
    MONITORS = ROOM = 1
    WIDTH, HEIGHT = 1000, 860
    TRAY = False

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.accessibility = Accessibility(cls.session)
        cls.addClassCleanup(cls.accessibility.close)

    def open(self, settings=None, pane=None, speed=1, **environment):
        """Starts the program and opens its preferences from the menu."""
        program = self.launch({"pref.work.time": 60, **(settings or {})}, speed=speed, environment=environment)
        self.show(program)
        if pane:
            self.turn_to(pane)
        return program

    def show(self, program):
        item = program.item()
        item.click_line(item.line("Settings...").id)
        self.meet()

    def meet(self):
        """Waits for the window to be there and to have the keyboard."""
        self.window = self.accessibility.window("Settings")
        wait_until(lambda: self.screen.focus() == "Settings", 5, "the preferences to have the keyboard")

    def on_screen(self):
        return next(iter(self.screen.titled(lambda title: title == "Settings")), None)

    def wait_closed(self):
        wait_until(lambda: not self.on_screen(), 3, "the window to close")

    # Elements

    def find(self, role, name=None, seconds=5, description=None):
        return wait_until(lambda: self.window.find(role, name, description), seconds, f"the {role} {name!r}")

    def click(self, role, name=None, times=1, description=None):
        """Clicks the middle of an element; gives the element."""
        element = self.find(role, name, description=description)
        box = element.box()
        self.screen.click(box.x + box.width // 2, box.y + box.height // 2, times=times)
        return element

    def turn_to(self, pane):
        self.click("page tab", pane)
        self.find("panel", pane)

    def click_into(self, role, name):
        """Gives an element the keyboard. The window manager holds a click back for a moment, so that keys that are
        pressed right after it would be there first."""
        if "focused" not in self.find(role, name).states():
            element = self.click(role, name)
            wait_until(lambda: "focused" in element.states(), 3, f"{name!r} to have the keyboard")

    def enter(self, role, name, text, end="Return"):
        """Types a text in the place of what a field holds."""
        self.click_into(role, name)
        self.screen.press("Control_L", "a")
        self.screen.type(text)
        if end:
            self.screen.press(end)

    def names(self):
        return [one.name() for one in self.window.walk()]

    # Settings

    def wait_shown(self, name, text, seconds=5):
        wait_until(lambda: self.window.find("text", name).text() == text, seconds, f"{name!r} to show {text!r}")
