#!/usr/bin/python3
"""Helper programs that hang, as far as the program and a person notice."""
import os
import signal
from pathlib import Path

from support import PROGRAM, DesktopTest, main, wait_until
from virtual_desktop import Session, wait_for_cover, wait_for_uncover


def runs(pid):
    """Whether there is such a process, and more of it than its exit status."""
    try:
        return "\nState:\tZ" not in Path(f"/proc/{pid}/status").read_text()
    except OSError:
        return False


class Leftovers(DesktopTest):
    """A helper that hangs goes with the program, however that ends."""
    MONITORS = ROOM = 1
    TRAY = False

    def assert_all_go(self, program, helper, end):
        [pid] = self.helpers(program, helper)
        self.addCleanup(lambda: runs(pid) and os.kill(pid, signal.SIGKILL))
        os.kill(pid, signal.SIGSTOP)
        end(program)
        wait_until(program.ended, 5, "the program to end")
        wait_until(lambda: not runs(pid), 2, f"{helper} to go")

    def ends(self):
        return [lambda program: self.session.run_tool(str(PROGRAM), "quit"),
                lambda program: program.process.terminate(),
                lambda program: program.process.kill()]

    def test_no_break_window_outlives_it(self):
        for end in self.ends():
            program = self.launch()
            wait_for_cover(self.session, self.monitors, 15)
            self.assert_all_go(program, "kelpa-view", end)
            wait_for_uncover(self.session, 1)
        self.launch()
        wait_for_cover(self.session, self.monitors, 15)

    def test_no_tray_icon_outlives_it(self):
        tray = self.session.spawn(["trayer", "--edge", "top", "--widthtype", "request", "--height", "24"])
        self.addCleanup(Session.end, tray)
        wait_until(lambda: self.screen.selection_owned("_NET_SYSTEM_TRAY_S0"), 10, "the old tray")
        for end in self.ends():
            program = self.launch(speed=1)
            wait_until(self.screen.embedded, 10, "an embedded icon")
            self.assert_all_go(program, "kelpa-tray", end)
            wait_until(lambda: not self.screen.embedded(), 2, "the icon to go")


if __name__ == "__main__":
    main()
