#!/usr/bin/python3
"""Breaks that wait while somebody is busy, as a real sound server and a real window manager tell of it."""
import json
import subprocess

from support import PROGRAM, DesktopTest, Session, main, wait_until
from virtual_desktop import break_windows, wait_for_cover

# Answers that take longer than two seconds of the program's time count as none.
SLOW = 5
HELD = {"pref.break.hold": True}


def held(test):
    """By what a break is held, as scripts are told; nothing while there is no program to tell it."""
    done = subprocess.run([PROGRAM, "status", "--json"], env=test.session.environment, capture_output=True, text=True,
                          check=False, timeout=10)
    return json.loads(done.stdout)["held"] if done.returncode == 0 else None


def start_sound(test):
    """A sound server with a microphone that hears nothing and loudspeakers that nobody hears."""
    server = test.session.spawn(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm",
                                 "-L", "module-native-protocol-unix", "-L", "module-null-sink sink_name=speakers",
                                 "-L", "module-null-source source_name=microphone"])
    test.addCleanup(Session.end, server)
    wait_until(lambda: subprocess.run(["pactl", "info"], env=test.session.environment, capture_output=True,
                                      timeout=10, check=False).returncode == 0, 15, "the sound server")


def record(test, source):
    recorder = test.session.spawn(["parec", "-d", source], stdout=subprocess.DEVNULL)
    test.addCleanup(Session.end, recorder)
    return recorder


class Busy(DesktopTest):
    MONITORS = ROOM = 1

    def full_screen_window(self):
        terminal = self.session.spawn(["xterm", "-fullscreen", "-e", "sleep", "600"])
        self.addCleanup(Session.end, terminal)
        wait_until(lambda: any(window.width == self.WIDTH and window.height == self.HEIGHT
                               for window in self.screen.windows()), 15, "the window in full screen")
        return terminal

    def test_a_break_waits_for_a_window_in_full_screen_and_then_for_a_recording(self):
        start_sound(self)
        recorder, window = record(self, "microphone"), self.full_screen_window()
        self.launch(HELD, speed=SLOW)
        # The window manager answers before the sound server can.
        wait_until(lambda: held(self) == "fullscreen", 30, "the break to wait for the window")
        Session.end(window)
        wait_until(lambda: held(self) == "sound", 40, "the break to wait for the recording")
        self.assertEqual(break_windows(self.session), [])
        Session.end(recorder)
        wait_for_cover(self.session, self.monitors, 40)
        self.assertEqual(held(self), "none")

    def test_what_is_played_can_be_recorded_without_being_a_call(self):
        start_sound(self)
        record(self, "speakers.monitor")
        self.launch(HELD, speed=SLOW)
        wait_for_cover(self.session, self.monitors, 30)


if __name__ == "__main__":
    main()
