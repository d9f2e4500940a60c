"""What the tests under a Wayland compositor share: sway on virtual outputs, one for each test class."""
import sys
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[1] / "desktop"))

from support import PROGRAM, SPEED, Box, DesktopTest, Session, main, wait_until  # noqa: E402
from virtual_desktop import (Monitor, MutterSession, NestedWaylandSession, VirtualInput, WaylandSession,  # noqa: E402
                             wait_for_countdown)

__all__ = ["LIGHTS", "PROGRAM", "SPEED", "WALLPAPER", "Box", "DesktopTest", "Monitor", "MutterSession", "NestedWaylandSession",
           "Session", "VirtualInput", "WaylandSession", "WaylandTest", "main", "wait_until"]

WALLPAPER, LIGHT = (38, 70, 83), (0xF1, 0xF2, 0xF4)
# Of the last step of a fade a level can be missing.
LIGHTS = {LIGHT, tuple(level - 1 for level in LIGHT)}


class WaylandTest(DesktopTest):
    SESSION = WaylandSession

    @classmethod
    def setUpClass(cls):
        cls.session = cls.screen = cls.SESSION(outputs=cls.MONITORS)
        cls.addClassCleanup(cls.session.stop)
        cls.session.start()
        cls.monitors = cls.session.monitors
        cls.session.move(5, 590)

    def launch(self, settings=None, *arguments, environment=None, **options):
        environment = {"KELPA_APPEARANCE": "light", **(environment or {})}
        return super().launch(settings, *arguments, environment=environment, **options)

    # Breaks. Surfaces in layers are known to the compositor alone, so that pictures have to tell of them.

    def covered(self, monitor):
        """Whether a break screen that has faded in fills the output, corner to corner."""
        picture = self.screen.picture(monitor)
        right, bottom = picture.width - 1, picture.height - 1
        places = [picture.pixel(x, y) for x in (0, right) for y in (0, bottom)] + [picture.background()]
        return all(self.light(colour) for colour in places) and picture.ink_share() > 0.003

    @staticmethod
    def light(colour):
        """The break screen's background, up to what scaling makes of it."""
        return all(abs(a - b) <= 4 for a, b in zip(colour, LIGHT))

    def wait_for_cover(self, monitors=None, seconds=15):
        for monitor in monitors or self.monitors:
            wait_until(lambda: self.covered(monitor), seconds, f"a break on {monitor.name}")

    def uncovered(self, monitor):
        return LIGHTS.isdisjoint(self.screen.picture(monitor).colours())

    def wait_for_uncover(self, monitors=None, seconds=6):
        for monitor in monitors or self.monitors:
            wait_until(lambda: self.uncovered(monitor), seconds, f"the end of the break on {monitor.name}")

    def check_countdown(self, monitor):
        wait_for_countdown(self.screen, monitor)

    def skip(self, monitor):
        self.click_middle(self.blue_rows(monitor)[-1])

    # What lies beneath

    def start_terminal(self, name="typed"):
        """A terminal whose program writes what is typed, line by line, into the file that is given back."""
        typed = self.session.folder / name
        terminal = self.session.spawn(["foot", "--override=font=DejaVu Sans Mono:size=10", "sh", "-c", f"cat >{typed}"])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: any(view.focused for view in self.session.views()), 10, "the terminal")
        wait_until(typed.exists, 5, "the terminal's program")
        return typed

    def type_line(self, text):
        self.session.input.type(text + "\n")
