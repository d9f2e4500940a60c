#!/usr/bin/python3
"""Locking and unlocking the screen: what becomes of work and of a break, whoever locks."""
import os

from Xlib import X, Xatom

from support import DOUBLE, LONG_ENOUGH, WORK, DesktopTest, Session, main, wait_until
from virtual_desktop import wait_for_cover, wait_for_uncover

STOPPED = "ticktack timer stoped"
STARTED = f"ticktack timer start {WORK}$"


class Lock(DesktopTest):
    def test_a_screen_saver_that_tells_the_x_server_alone(self):
        """Stands in for xscreensaver, which does not lock for root: the property, and a window that bears its version."""
        root, display = self.screen.root, self.screen.display
        status, version = (display.intern_atom(f"_SCREENSAVER_{name}") for name in ("STATUS", "VERSION"))

        def say(state):
            root.change_property(status, Xatom.INTEGER, 32, [display.intern_atom(state) if state else 0, 1795346616, 0])
            display.sync()

        def saver():
            window = root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
            window.change_property(version, Xatom.STRING, 8, b"6.06")
            return window

        self.addCleanup(root.delete_property, status)
        say("LOCK")     # left by one that was killed
        program = self.launch()
        window = saver()
        for state in (None, "BLANK", None):
            say(state)
        wait_for_cover(self.session, self.monitors, 15)
        stops = program.count(STOPPED)
        for state in ("BLANK", "LOCK", "LOCK"):
            say(state)
        program.wait_for(STOPPED, 5, times=stops + 1)
        wait_for_uncover(self.session, 5)
        self.settle(0.3)
        self.assertEqual(program.count(STOPPED), stops + 1, "one lock counted more than once")
        say(None)
        program.wait_for(STARTED, 5, times=2)
        wait_for_cover(self.session, self.monitors, 15)
        say("LOCK")
        wait_for_uncover(self.session, 5)
        window.destroy()
        display.sync()
        program.wait_for(STARTED, 5, times=3)

    def test_a_screen_locker_of_a_real_desktop(self):
        locker = self.session.spawn(["mate-screensaver", "--no-daemon"])
        self.addCleanup(Session.end, locker)
        wait_until(lambda: self.session.has_owner("org.mate.ScreenSaver"), 10, "the screen saver")
        program = self.launch()
        wait_for_cover(self.session, self.monitors, 15)
        stops = program.count(STOPPED)
        self.session.run_tool("mate-screensaver-command", "--lock")
        program.wait_for(STOPPED, 15, times=stops + 1)
        wait_for_uncover(self.session, 5)
        self.session.run_tool("mate-screensaver-command", "--deactivate")
        program.wait_for(STARTED, 10, times=2)
        self.assertEqual(program.count("skip break view"), 0)

    def test_a_desktop_that_tells_logind_alone(self):
        logind = self.mock("org.freedesktop.login1", "/org/freedesktop/login1", "--template", "logind", bus="system")
        logind("AddSession", "c1", "seat0", str(os.getuid()), "tester", "true", interface=DOUBLE)

        def hint(locked):
            logind("SetLockedHint", locked, at="/org/freedesktop/login1/session/c1", interface="org.freedesktop.login1.Session")

        program = self.launch(environment={"XDG_SESSION_ID": "c1"})
        wait_for_cover(self.session, self.monitors, 15)
        stops = program.count(STOPPED)
        hint("true")
        program.wait_for(STOPPED, 5, times=stops + 1)
        wait_for_uncover(self.session, 5)
        hint("false")
        program.wait_for(STARTED, 5, times=2)


class ServerGone(DesktopTest):
    MONITORS = 1
    ROOM = 1

    def test_when_the_x_server_dies_program_and_view_end_in_good_order(self):
        program = self.launch({"pref.break.time": LONG_ENOUGH})
        wait_for_cover(self.session, self.monitors, 15)
        view = self.helpers(program, "kelpa-view")[0]
        server = next(child for child in self.session.children if "Xvfb" in child.args[0])
        server.kill()
        self.assertEqual(program.process.wait(10), 0)
        wait_until(lambda: not os.path.exists(f"/proc/{view}"), 5, "the view to end")
        self.session.screen = None      # its connection is dead


if __name__ == "__main__":
    main()
