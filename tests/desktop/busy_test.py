#!/usr/bin/python3
"""Breaks that wait while somebody is busy, as a real sound server and a real window manager tell of it."""
import subprocess
import sys
from pathlib import Path

from support import DesktopTest, Session, main, wait_until
from virtual_desktop import break_windows, wait_for_cover

# Answers that take longer than two seconds of the program's time count as none.
SLOW = 5
HELD = {"pref.break.hold": True}
STREAM = Path(__file__).with_name("sound_stream.py")


class SoundTest(DesktopTest):
    """A desktop with a microphone that hears nothing and loudspeakers that nobody hears."""
    MONITORS = ROOM = 1

    def sound(self, *arguments):
        """What the sound server answers; nothing while there is none, or it refuses."""
        done = subprocess.run(["pactl", *arguments], env=self.session.environment, capture_output=True, text=True,
                              timeout=10, check=False)
        return done.stdout if done.returncode == 0 else ""

    def serve(self, command):
        server = self.session.spawn(command)
        self.addCleanup(Session.end, server)

    def start_pulseaudio(self):
        self.serve(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm",
                    "-L", "module-native-protocol-unix", "-L", "module-null-sink sink_name=speakers",
                    "-L", "module-null-source source_name=microphone"])
        wait_until(lambda: self.sound("info"), 15, "the sound server")

    def start_pipewire(self):
        runtime = Path(self.session.environment["XDG_RUNTIME_DIR"])
        self.serve(["pipewire"])
        wait_until((runtime / "pipewire-0").exists, 15, "PipeWire")
        self.serve(["wireplumber"])
        self.serve(["pipewire-pulse"])
        wait_until(lambda: "PipeWire" in self.sound("info"), 15, "its stand-in for PulseAudio")
        self.sound("load-module", "module-null-sink", "sink_name=speakers")
        self.sound("load-module", "module-null-sink", "media.class=Audio/Source/Virtual", "sink_name=microphone",
                   "channel_map=mono")
        wait_until(lambda: {"speakers.monitor", "microphone"} <= set(self.sound("list", "short", "sources").split()), 15,
                   "microphone and loudspeakers")

    def record(self, *command):
        """Starts a program that records, or seems to, and waits until the server has a stream for it."""
        before = self.streams()
        recorder = self.session.spawn([str(part) for part in command], stdout=subprocess.DEVNULL)
        self.addCleanup(Session.end, recorder)
        wait_until(lambda: len(self.streams()) > len(before), 15, f"the stream of {command}")
        return recorder

    def streams(self):
        """Those that record from something."""
        lines = [line.split("\t") for line in self.sound("list", "short", "source-outputs").splitlines()]
        return [fields for fields in lines if fields[1] != str(2**32 - 1)]

    def assert_no_call(self):
        """What is played, held still or only measured."""
        self.record("parec", "-d", "speakers.monitor")
        for how in ("meter", "corked"):
            self.record(sys.executable, STREAM, "microphone", how)
        self.launch(HELD, speed=SLOW)
        wait_for_cover(self.session, self.monitors, 30)

    def assert_call(self, *command):
        recorder = self.record(*command)
        self.launch(HELD, speed=SLOW)
        wait_until(lambda: self.status().get("held") == "sound", 40, "the break to wait for the recording")
        self.assertEqual(break_windows(self.session), [])
        Session.end(recorder)
        wait_for_cover(self.session, self.monitors, 40)


class PipeWire(SoundTest):
    def test_a_recording_is_a_call(self):
        self.start_pipewire()
        self.assert_call("pw-record", "--target", "microphone", self.session.folder / "recorded.wav")

    def test_a_recording_by_way_of_pulseaudio_is_one(self):
        self.start_pipewire()
        self.assert_call("parec", "-d", "microphone")

    def test_what_is_played_or_measured_can_be_recorded_without_being_a_call(self):
        self.start_pipewire()
        self.assert_no_call()


class Busy(SoundTest):
    def full_screen_window(self):
        terminal = self.session.spawn(["xterm", "-fullscreen", "-e", "sleep", "600"])
        self.addCleanup(Session.end, terminal)
        wait_until(lambda: any(window.width == self.WIDTH and window.height == self.HEIGHT
                               for window in self.screen.windows()), 15, "the window in full screen")
        return terminal

    def test_a_break_waits_for_a_window_in_full_screen_and_then_for_a_recording(self):
        self.start_pulseaudio()
        recorder, window = self.record("parec", "-d", "microphone"), self.full_screen_window()
        self.launch(HELD, speed=SLOW)
        # The window manager answers before the sound server can.
        wait_until(lambda: self.status().get("held") == "fullscreen", 30, "the break to wait for the window")
        Session.end(window)
        wait_until(lambda: self.status().get("held") == "sound", 40, "the break to wait for the recording")
        self.assertEqual(break_windows(self.session), [])
        Session.end(recorder)
        wait_for_cover(self.session, self.monitors, 40)
        self.assertEqual(self.status().get("held"), "none")

    def test_what_is_played_or_measured_can_be_recorded_without_being_a_call(self):
        self.start_pulseaudio()
        self.assert_no_call()


if __name__ == "__main__":
    main()
