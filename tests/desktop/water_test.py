#!/usr/bin/python3
"""The water panel of the real program: when it comes, what its buttons store, and whom it leaves alone."""
import plistlib
import time
from pathlib import Path

from support import DesktopTest, main, wait_until
from virtual_desktop import Box

PANEL = (280, 330)
# Where things stand in the panel, in its own coordinates.
CLOSE, AMOUNT_250, SKIP, DONE, BACKGROUND = (16, 17), (140, 226), (144, 303), (230, 303), (140, 24)
INTERVAL = 15 * 60


def noon_zone():
    """A time zone in which it is about noon now, so that no test runs into another day."""
    return f"NOON{(time.gmtime().tm_hour - 12):+d}"


class Water(DesktopTest):
    MONITORS = 1
    ROOM = 1
    COMPOSITOR = True

    def start(self, due, environment=None, **changes):
        """Starts the program with the reminder due in some seconds."""
        settings = {"pref.water.enable": True, "pref.water.finished": 1000, "pref.work.time": 60,
                    "pref.water.lastShowDate": time.time() - INTERVAL + due}
        settings.update({key.replace("_", "."): value for key, value in changes.items()})
        return self.launch(settings, speed=1, environment={"TZ": noon_zone(), **(environment or {})})

    def panels(self):
        return self.screen.titled(lambda title: title == "Water Reminder")

    def panel(self, seconds=10):
        return wait_until(lambda: (self.panels() or [None])[0], seconds, "the water panel")

    def click_in(self, panel, place):
        self.screen.click(panel.x + place[0], panel.y + place[1])
        self.screen.move(5, 590)

    def gone(self, seconds=4):
        wait_until(lambda: not self.panels(), seconds, "the panel to close")

    @staticmethod
    def stored(program):
        return plistlib.loads(program.settings_file().read_bytes())

    def wait_stored(self, program, key, value, seconds=3):
        wait_until(lambda: self.stored(program).get(key) == value, seconds, f"{key} to be {value}")

    def test_done_raises_the_days_total_and_closes(self):
        program = self.start(2)
        self.assertEqual(self.panels(), [])
        panel = self.panel()
        screen = self.monitors[0]
        self.assertEqual((panel.width, panel.height), PANEL)
        self.assertEqual((panel.x, panel.y), (screen.x + screen.width - PANEL[0], screen.y))
        self.settle(2.2)
        area = Box(panel.x, panel.y, *PANEL)
        before = self.screen.picture(area)
        self.click_in(panel, AMOUNT_250)
        self.wait_stored(program, "pref.water.lastSelectedAmount", 250)
        self.click_in(panel, DONE)
        self.click_in(panel, DONE)      # whoever clicks twice has drunk once
        self.wait_stored(program, "pref.water.finished", 1250)
        self.settle(0.3)
        self.assertIsNotNone(before.differs(self.screen.picture(area)), "the figures did not move")
        self.gone()
        stored = self.stored(program)
        self.assertEqual(stored["pref.water.finished"], 1250)
        self.assertAlmostEqual(stored["pref.water.lastShowDate"], time.time(), delta=10)
        self.assertIsNotNone(program.item().line("Water (83% )"))

    def test_it_grows_with_the_desktop_and_stays_in_its_corner(self):
        self.start(1, environment={"QT_SCALE_FACTOR": "1.5"})
        panel = self.panel()
        self.assertEqual((panel.width, panel.height), tuple(length * 3 // 2 for length in PANEL))
        screen = self.monitors[0]
        self.assertEqual((panel.x, panel.y), (screen.x + screen.width - panel.width, screen.y))

    def test_skip_adds_nothing_and_the_close_button_answers_nothing(self):
        program = self.start(1)
        panel = self.panel()
        self.settle(2.2)
        answered = self.stored(program)["pref.water.lastShowDate"]
        self.click_in(panel, CLOSE)
        self.gone(1)
        self.assertEqual(self.stored(program)["pref.water.lastShowDate"], answered)
        self.session.end(program.process)
        program = self.start(1)
        panel = self.panel()
        self.settle(0.5)
        self.click_in(panel, SKIP)
        self.gone()
        self.assertEqual(self.stored(program)["pref.water.finished"], 1000)
        self.assertAlmostEqual(self.stored(program)["pref.water.lastShowDate"], time.time(), delta=10)

    def test_another_day_begins_at_nothing(self):
        program = self.start(-2 * 86400)
        self.wait_stored(program, "pref.water.finished", 0, 5)
        self.settle(1)
        self.assertEqual(self.panels(), [])     # the interval begins anew

    def test_it_can_be_dragged_by_its_background(self):
        self.start(1)
        panel = self.panel()
        self.settle(2.2)
        self.screen.drag(panel.x + BACKGROUND[0], panel.y + BACKGROUND[1], -200, 120)
        moved = wait_until(lambda: next((p for p in self.panels() if (p.x, p.y) != (panel.x, panel.y)), None), 3,
                           "the panel to move")
        self.settle(0.3)
        moved = self.panels()[0]
        self.assertEqual((moved.x, moved.y), (panel.x - 200, panel.y + 120))

    def test_it_leaves_the_keys_to_whoever_is_typing(self):
        typed = Path(self.session.folder) / "typed-at-water"
        terminal = self.session.spawn(["xterm", "-T", "terminal", "-e", f"cat >{typed}"])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: self.screen.focus() == "terminal", 10, "the terminal to have the keyboard")
        wait_until(typed.exists, 5, "the terminal's program")
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
        self.settle(1.2)
        self.assertEqual(len(self.panels()), 1)
        self.screen.press("Return")     # no button is the default one
        self.settle(0.5)
        self.assertEqual(self.stored(program)["pref.water.finished"], 1000)
        self.press_and_wait(program, ["Tab", "Tab", "Right"], 200)
        self.press_and_wait(program, ["Down"], 350)
        self.screen.press("Escape")
        self.gone(1)
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the keyboard to come back to the terminal")

    def test_it_hears_keys_also_after_it_was_shown_while_it_was_up(self):
        program = self.start(60)
        program.wait_for("sandbox home path", 10)
        self.show_as_a_script(program)
        wait_until(lambda: self.screen.focus() == "Water Reminder", 10, "the panel to have the keyboard")
        self.show_as_a_script(program)      # as the next reminder does
        wait_until(lambda: self.screen.press("Escape") or not self.panels(), 5, "Escape to close it", pause=0.2)

    def show_as_a_script(self, program):
        self.session.run_tool(str(program.executable), "water")

    def press_and_wait(self, program, keys, amount):
        for key in keys:
            self.screen.press(key)
            self.settle(0.1)
        self.wait_stored(program, "pref.water.lastSelectedAmount", amount)


if __name__ == "__main__":
    main()
