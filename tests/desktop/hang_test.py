#!/usr/bin/python3
"""Helper programs that hang, as far as the program and a person notice."""
import os
import signal
import time
from pathlib import Path

from preferences_support import WORK, PreferencesTest
from support import PROGRAM, DesktopTest, main, stopped, wait_until
from virtual_desktop import Accessibility, wait_for_cover, wait_for_uncover

# A view that owes an answer for so long is replaced; another one is there within a second.
OWED, START = 2, 10
SOON = 1.5


def runs(pid):
    """Whether there is such a process, and more of it than its exit status."""
    try:
        return "\nState:\tZ" not in Path(f"/proc/{pid}/status").read_text()
    except OSError:
        return False


class Leftovers(DesktopTest):
    """Helpers that hang go with the program, however that ends."""
    MONITORS = ROOM = 1
    TRAY = False

    def test_no_break_window_and_no_tray_icon_outlives_it(self):
        self.start_old_tray()
        for end in (lambda: self.session.run_tool(str(PROGRAM), "quit"), lambda: program.process.terminate(),
                    lambda: program.process.kill()):
            program = self.launch()
            wait_for_cover(self.session, self.monitors, 15)
            wait_until(self.screen.embedded, 10, "an embedded icon")
            helpers = self.helpers(program)
            self.assertEqual(len(helpers), 2)
            for pid in helpers:
                self.addCleanup(lambda pid=pid: runs(pid) and os.kill(pid, signal.SIGKILL))
                os.kill(pid, signal.SIGSTOP)
            end()
            wait_until(program.ended, 5, "the program to end")
            wait_until(lambda: not any(map(runs, helpers)), 2, "the helpers to go")
            wait_for_uncover(self.session, 1)
            wait_until(lambda: not self.screen.embedded(), 2, "the icon to go")
        self.launch()
        wait_for_cover(self.session, self.monitors, 15)


class Hung(DesktopTest):
    """A view that hangs is replaced, one that is only held up is not."""
    MONITORS = ROOM = 1
    TRAY = False

    def hang(self, program, pids=None):
        """Stops the view; gives its process id."""
        [view] = pids or self.helpers(program, "kelpa-view")
        self.stop(view)
        return view

    def stop(self, pid):
        os.kill(pid, signal.SIGSTOP)
        self.addCleanup(lambda: runs(pid) and os.kill(pid, signal.SIGCONT))

    def wait_replaced(self, program, old, seconds):
        wait_until(lambda: self.helpers(program, "kelpa-view") not in ([], [old]), seconds, "another view")
        wait_until(lambda: not runs(old), 1, "the view that hangs to go")

    def test_in_a_break(self):
        program = self.launch({"custom_break_prompt": True, "break_prompt_text": "look far"})
        wait_for_cover(self.session, self.monitors, 15)
        self.settle(2.5)
        ink = self.screen.picture(self.monitors[0]).ink_share()
        self.wait_replaced(program, self.hang(program), 1 + OWED + SOON)
        wait_for_cover(self.session, self.monitors, SOON)
        wait_until(lambda: abs(self.screen.picture(self.monitors[0]).ink_share() - ink) < ink / 10, 0.5,
                   "all of the text, without another fade")
        program.wait_for("kelpa-view has not answered for 2 s$", 1)
        # It listens two seconds after it was shown, whenever that was on this machine.
        wait_until(lambda: self.screen.press("Escape") or program.count("skip break view$"), 5,
                   "Escape to end the break", pause=0.2)

    def test_in_a_break_that_is_skipped(self):
        program = self.launch()
        wait_for_cover(self.session, self.monitors, 15)
        self.settle(2.5)
        self.hang(program)
        self.session.run_tool(str(PROGRAM), "skip")
        wait_for_uncover(self.session, 1 + OWED + SOON)
        self.assertFalse(program.ended())

    def test_while_it_starts(self):
        program = self.launch()
        view = self.hang(program, wait_until(lambda: self.helpers(program, "kelpa-view"), 10, "the view", pause=0.001))
        self.wait_replaced(program, view, START + SOON)
        wait_for_cover(self.session, self.monitors, SOON)

    def test_who_was_held_up_together_with_the_program_is_left_alone(self):
        program = self.launch()
        wait_for_cover(self.session, self.monitors, 15)
        self.settle(1.5)
        view = self.helpers(program, "kelpa-view")
        for held in ([program.process.pid], [*view, program.process.pid], [program.process.pid, *view]):
            for pid in held:
                self.stop(pid)
            self.settle(3 * OWED)
            for pid in held:
                os.kill(pid, signal.SIGCONT)
            self.settle(OWED)
            self.assertEqual(self.helpers(program, "kelpa-view"), view)
        self.assertEqual(program.count("has not answered"), 0)


class Settings(PreferencesTest):
    def test_settings_that_hang_delay_no_break_and_lose_nothing_that_was_typed(self):
        program = self.launch({"pref.work.time": 3}, speed=20)
        due = time.monotonic() + 9
        self.show(program)
        self.turn_to("Workflow")
        self.enter("text", WORK, "1000", end=None)
        wait_until(lambda: self.window.find("text", WORK).description().startswith("Please"), 3, "the explanation")
        [view] = self.helpers(program, "kelpa-view")
        os.kill(view, signal.SIGSTOP)
        wait_for_cover(self.session, self.monitors, due - time.monotonic() + OWED + SOON)
        self.assertFalse(runs(view))
        self.session.run_tool(str(PROGRAM), "skip")
        wait_for_uncover(self.session, 4)
        self.meet()
        self.find("panel", "Workflow")
        self.wait_shown(WORK, "1000")


class SilentBus(DesktopTest):
    """A session bus that stands still, of which the toolkit asks much before it shows anything."""
    MONITORS = ROOM = 1
    TRAY = False

    def test_a_break_comes_all_the_same_and_screen_readers_hear_of_the_next_view(self):
        accessibility = Accessibility(self.session)
        self.addCleanup(accessibility.close)
        program = self.launch()
        program.item()
        with stopped(self.session.buses["session"]):
            wait_for_cover(self.session, self.monitors, 6)
            self.settle(2.5)
            self.assertGreater(self.screen.picture(self.monitors[0]).ink_share(), 0.01)
            self.assertEqual(program.count("has not answered"), 0)
        [view] = self.helpers(program, "kelpa-view")
        os.kill(view, signal.SIGKILL)
        window = accessibility.window("1", seconds=10)
        wait_until(lambda: window.find("push button", "Skip"), 5, "the break to be read")


if __name__ == "__main__":
    main()
