#!/usr/bin/python3
"""Breaks that wait while the active window covers its screen, as a Wayland compositor's list of windows tells."""
from wayland_support import Session, WaylandTest, main, wait_until

# Answers that take longer than two seconds of the program's time count as none.
SLOW = 5


class Busy(WaylandTest):
    MONITORS = 1

    def test_a_break_waits_for_a_window_in_full_screen_and_for_no_other(self):
        ordinary = self.session.spawn(["foot", "sleep", "600"])
        self.addCleanup(Session.end, ordinary)
        wait_until(lambda: any(view.focused for view in self.session.views()), 10, "an ordinary window")
        program = self.launch({"pref.break.hold": True}, speed=SLOW)
        self.wait_for_cover(seconds=30)
        Session.end(program.process)
        window = self.session.spawn(["foot", "--fullscreen", "sleep", "600"])
        self.addCleanup(Session.end, window)
        wait_until(lambda: len(self.session.views()) == 2, 10, "the window in full screen")
        self.launch({"pref.break.hold": True}, speed=SLOW)
        wait_until(lambda: self.status().get("held") == "fullscreen", 30, "the break to wait")
        Session.end(window)
        self.wait_for_cover(seconds=40)
        self.assertEqual(self.status().get("held"), "none")


if __name__ == "__main__":
    main()
