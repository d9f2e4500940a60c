#!/usr/bin/python3
"""The water panel of the real program: when it comes, where it stands, what its buttons store, and whom it leaves alone."""
import os
import signal
import time
from pathlib import Path

from support import DesktopTest, main, stopped, wait_until
from virtual_desktop import Box

PANEL = (280, 330)
# Where things stand in the panel, in its own coordinates.
CLOSE, AMOUNT_250, SKIP, DONE, BACKGROUND = (16, 17), (140, 226), (144, 303), (230, 303), (140, 24)
INTERVAL = 15 * 60


def noon_zone():
    """A time zone in which it is about noon now, so that no test runs into another day."""
    return f"NOON{(time.gmtime().tm_hour - 12):+d}"


class WaterReminder:
    """For a test of the desktop."""

    def start(self, due=3600, environment=None):
        """Starts the program with the reminder due in some seconds."""
        settings = {"pref.water.enable": True, "pref.water.finished": 1000, "pref.work.time": 60,
                    "pref.water.lastShowDate": time.time() - INTERVAL + due}
        return self.launch(settings, speed=1, environment={"TZ": noon_zone(), **(environment or {})})


class WaterTest(WaterReminder, DesktopTest):
    COMPOSITOR = True

    def panels(self):
        return self.screen.titled(lambda title: title == "Water Reminder")

    def panel(self, seconds=10):
        return wait_until(lambda: (self.panels() or [None])[0], seconds, "the water panel")

    def show_as_a_script(self, program):
        self.session.run_tool(str(program.executable), "water")

    def click_in(self, panel, place):
        self.screen.click(panel.x + place[0], panel.y + place[1])
        self.screen.move(5, 590)

    def gone(self, seconds=8):
        wait_until(lambda: not self.panels(), seconds, "the panel to close")


class Water(WaterTest):
    MONITORS = 1
    ROOM = 1

    def test_done_raises_the_days_total_and_closes(self):
        program = self.start(2)
        self.assertEqual(self.panels(), [])
        panel = self.panel()
        screen = self.monitors[0]
        self.assertEqual((panel.width, panel.height), PANEL)
        self.assertEqual((panel.x, panel.y), (screen.x + screen.width - PANEL[0], screen.y))
        area = Box(panel.x, panel.y, *PANEL)
        before = self.wait_for_rest(area)
        self.click_in(panel, AMOUNT_250)
        self.wait_stored(program, "pref.water.lastSelectedAmount", 250)
        self.click_in(panel, DONE)
        self.click_in(panel, DONE)      # whoever clicks twice has drunk once
        self.wait_stored(program, "pref.water.finished", 1250)
        wait_until(lambda: before.differs(self.screen.picture(area)), 5, "the figures to move")
        self.gone()
        stored = self.stored(program)
        self.assertEqual(stored["pref.water.finished"], 1250)
        self.assertAlmostEqual(stored["pref.water.lastShowDate"], time.time(), delta=10)
        self.assertIsNotNone(program.item().line("Water (83% )"))
        self.assertEqual(self.status()["water"], {"enabled": True, "finished": 1250, "target": 1500})

    def test_it_grows_with_the_desktop_and_stays_in_its_corner(self):
        self.start(1, environment={"QT_SCALE_FACTOR": "1.5"})
        panel = self.panel()
        self.assertEqual((panel.width, panel.height), tuple(length * 3 // 2 for length in PANEL))
        screen = self.monitors[0]
        self.assertEqual((panel.x, panel.y), (screen.x + screen.width - panel.width, screen.y))

    def test_it_can_be_dragged_by_its_background_and_not_by_what_is_pressed(self):
        self.start(1)
        panel = self.panel()
        self.wait_for_rest(panel)
        for place in (CLOSE, AMOUNT_250, SKIP, DONE):       # let go beside it, each of them does nothing
            self.screen.drag(panel.x + place[0], panel.y + place[1], -200, 120)
        self.wait_for_rest(panel)
        self.assertEqual([(p.x, p.y) for p in self.panels()], [(panel.x, panel.y)])
        self.screen.drag(panel.x + BACKGROUND[0], panel.y + BACKGROUND[1], -200, 120)
        wait_until(lambda: [(p.x, p.y) for p in self.panels()] == [(panel.x - 200, panel.y + 120)], 5,
                   "the panel to be where it was dragged to")

    def test_a_drag_ends_with_the_panel(self):
        program = self.start(1)
        panel = self.panel()
        wait_until(lambda: self.screen.focus() == "Water Reminder", 10, "the panel to have the keyboard")
        with self.screen.held_button(panel.x + BACKGROUND[0], panel.y + BACKGROUND[1]):
            self.screen.push(-3, 3)
            wait_until(lambda: self.screen.press("Escape") or not self.panels(), 5, "Escape to close it", pause=0.2)
        self.show_as_a_script(program)
        panel = self.panel()
        self.wait_for_rest(panel)
        self.screen.drag(panel.x + SKIP[0], panel.y + SKIP[1], -200, 120)
        self.wait_for_rest(panel)
        self.assertEqual([(p.x, p.y) for p in self.panels()], [(panel.x, panel.y)])

    def test_it_leaves_the_keys_to_whoever_is_typing(self):
        typed = Path(self.session.folder) / "typed-at-water"
        self.start_terminal(typed=typed)
        program = self.start(2)
        text = ""
        until = time.monotonic() + 6
        while time.monotonic() < until:
            self.screen.type("ab")
            text += "ab"
            self.settle(0.25)
        self.assertEqual(len(self.panels()), 1, "the panel did not come, or a key closed it")
        self.screen.press("Return")
        wait_until(lambda: typed.read_text() == text + "\n", 3, "everything that was typed")

        wait_until(lambda: self.screen.focus() == "Water Reminder", 4, "the keyboard once the typing has paused")
        self.screen.press("Escape")     # too soon: not meant for the panel
        self.settle(1.2)    # in which the panel listens to no key
        self.assertEqual(len(self.panels()), 1)
        self.screen.press("Return")     # no button is the default one
        self.assertEqual(self.stored(program)["pref.water.finished"], 1000)
        self.press_and_wait(program, ["Tab", "Tab", "Right"], 200)
        self.press_and_wait(program, ["Down"], 350)
        self.screen.press("Escape")
        self.gone()
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the keyboard to come back to the terminal")

    def test_it_hears_keys_also_after_it_was_shown_while_it_was_up(self):
        program = self.start(60)
        program.wait_for("sandbox home path", 10)
        self.show_as_a_script(program)
        wait_until(lambda: self.screen.focus() == "Water Reminder", 10, "the panel to have the keyboard")
        self.show_as_a_script(program)      # as the next reminder does
        wait_until(lambda: self.screen.press("Escape") or not self.panels(), 5, "Escape to close it", pause=0.2)

    def press_and_wait(self, program, keys, amount):
        """The panel hears of the amount a moment after it is stored, and the next key counts from what it shows."""
        panel = self.panel()
        *others, last = keys
        for key in others:
            self.screen.press(key)
        before = self.wait_for_rest(panel)
        self.screen.press(last)
        self.wait_stored(program, "pref.water.lastSelectedAmount", amount)
        wait_until(lambda: before.differs(self.screen.picture(panel)), 5, "the panel to show the amount")


class Place(WaterTest):
    """On two monitors, the second of which comes to be another one."""

    def setUp(self):
        self.addCleanup(self.plug, *self.monitors)
        self.now = list(self.monitors)

    def plug(self, *monitors):
        """From now on there are these; the first one owns the output. The program, which may look in between where this
        takes long, finds them changed at one blow, as they are where a cable is pulled."""
        with stopped(self.program.process):
            for monitor in self.now:
                self.session.remove_monitor(monitor)
            self.now = list(monitors)
            self.session.set_monitors(monitors)

    def launched(self):
        self.program = self.start()
        self.program.wait_for("sandbox home path", 10)
        return self.program

    def work_on(self, monitor):
        """Something on that monitor has the keyboard."""
        self.start_terminal("-geometry", f"20x5+{monitor.x + 100}+{monitor.y + 200}")

    def stands_at(self, x, y, what):
        wait_until(lambda: [(panel.x, panel.y) for panel in self.panels()] == [(x, y)], 10, what)

    def stands_in_corner_of(self, monitor):
        self.stands_at(monitor.x + monitor.width - PANEL[0], monitor.y, f"the panel in the corner of {monitor}")

    def close(self):
        answered = self.stored(self.program)["pref.water.lastShowDate"]
        self.click_in(self.panel(), CLOSE)
        self.gone()
        self.assertEqual(self.stored(self.program)["pref.water.lastShowDate"], answered, "closing is no answer")

    def test_it_comes_to_the_corner_of_a_screen_that_is_there(self):
        program = self.launched()
        first, second = self.monitors
        self.work_on(second)
        self.show_as_a_script(program)
        self.stands_in_corner_of(second)
        self.close()
        # The laptop leaves its desk: what was on the left is gone, and it is the only one.
        alone = second._replace(x=0)
        self.plug(alone)
        self.show_as_a_script(program)
        self.stands_in_corner_of(alone)
        smaller = alone._replace(width=640, height=480)
        self.plug(smaller)
        self.stands_in_corner_of(smaller)
        self.close()
        self.plug(first)
        self.show_as_a_script(program)
        self.stands_in_corner_of(first)

    def test_where_it_was_dragged_it_stays_as_long_as_that_is_on_a_screen(self):
        program = self.launched()
        first, second = self.monitors
        self.show_as_a_script(program)
        self.stands_in_corner_of(first)
        panel = self.panel()
        self.screen.drag(panel.x + BACKGROUND[0], panel.y + BACKGROUND[1], 300, 200)
        place = (panel.x + 300, panel.y + 200)
        self.stands_at(*place, "the panel where it was dragged")
        self.close()
        os.kill(self.helpers(program, "kelpa-view")[0], signal.SIGKILL)
        wait_until(lambda: not self.helpers(program, "kelpa-view"), 5, "the view to end")
        self.show_as_a_script(program)
        self.stands_at(*place, "the panel where it was dragged, drawn by another view")
        lower = second._replace(height=400)
        self.plug(first, lower)
        self.stands_in_corner_of(lower)
        self.plug(first)
        self.stands_in_corner_of(first)
        self.plug(first, second)
        self.stands_at(*place, "the panel where it was dragged, since that is on a screen again")


if __name__ == "__main__":
    main()
