#!/usr/bin/python3
"""How it starts and ends where it was given little, and what must not hold it up."""
import os
import re
import resource
import signal
import socket
import subprocess
import time
from pathlib import Path

from support import PROGRAM, DesktopTest, main, stopped, wait_until
from virtual_desktop import wait_for_cover

WITHIN = 2      # seconds in which it ends, whatever else stands still


class StartTest(DesktopTest):
    MONITORS = ROOM = 1
    TRAY = False
    ACTIVATION = False

    def begin(self, before="", **environment):
        """Starts it from a shell that does something before; what it prints is not kept."""
        process = self.session.spawn(["sh", "-c", f'{before} exec "$0" --speed 1', str(PROGRAM)], environment,
                                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.session.end, process)
        return process

    def answering(self, *arguments, **options):
        process = self.begin(*arguments, **options)
        wait_until(lambda: self.ask("status")[0] == 0, 10, "an answer on the bus")
        return process

    def assert_ends(self, process, number=signal.SIGTERM):
        began = time.monotonic()
        process.send_signal(number)
        try:
            status = process.wait(15)
        except subprocess.TimeoutExpired:
            self.fail(f"signal {number} did not end it within 15 s")
        self.assertLess(time.monotonic() - began, WITHIN)
        return status

    def sockets(self):
        return [path.name for path in Path(self.session.environment["XDG_RUNTIME_DIR"]).glob("*.socket")]


class Signals(StartTest):
    def test_each_that_asks_it_to_end_leaves_nothing(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            process = self.answering()
            self.assertEqual(len(os.listdir(f"/proc/{process.pid}/task")), 1, "threads")
            self.assertEqual(len(self.sockets()), 1)
            self.assertEqual((self.assert_ends(process, number), self.sockets()), (0, []), number)

    def test_the_next_start_clears_what_a_killed_one_left(self):
        for number in (signal.SIGQUIT, signal.SIGKILL):
            process = self.answering("ulimit -c 0;")
            self.assertEqual(self.assert_ends(process, number), -number)
            self.assertEqual(len(self.sockets()), 1)
            self.assertEqual((self.assert_ends(self.answering()), self.sockets()), (0, []), number)


class Limits(StartTest):
    def test_files_that_may_not_grow_are_survived(self):
        process = self.answering("ulimit -f 0;")
        self.settle(1.5)
        self.assertEqual(self.ask("status")[0], 0)
        self.assertEqual(self.assert_ends(process), 0)

    def test_too_few_descriptors_are_refused_and_as_many_as_it_asks_for_are_enough_for_every_window(self):
        for few in (8, 14, 16, 24):
            done = subprocess.run(["sh", "-c", f'ulimit -n {few}; exec "$0"', str(PROGRAM)], timeout=10,
                                  env=self.session.environment, capture_output=True, text=True,
                                  stdin=subprocess.DEVNULL)
            self.assertEqual((done.returncode, done.stdout), (1, ""), few)
            self.assertRegex(done.stderr, rf"^kelpa: only {few} files [^\n]+\n$")
        enough = int(re.search(r"(\d+) are enough", done.stderr)[1])
        self.assertEqual(self.assert_ends(self.answering(f"ulimit -n {enough};")), 0)
        program = self.running(speed=8)
        resource.prlimit(program.process.pid, resource.RLIMIT_NOFILE, (enough, enough))
        item = program.item()
        for line, title in (("Settings...", "Settings"), ("About...", "Kelpa")):
            item.click_line(item.line(line).id)
            wait_until(lambda: self.screen.titled(lambda found: title == found), 10, title)
        wait_for_cover(self.session, self.monitors, 15)
        self.assertEqual(program.count("ended|signal|Too many"), 0, program.lines())

    def test_no_other_file_takes_the_place_of_a_standard_stream(self):
        for closed in ("0<&-", "1>&-", "2>&-", "0<&- 1>&- 2>&-"):
            process = self.answering(f"exec {closed};")
            for number in range(3):
                target = os.readlink(f"/proc/{process.pid}/fd/{number}")
                self.assertEqual(target, "/dev/null", f"{closed}, {number}")
            self.assertEqual(self.assert_ends(process), 0)


class StandsStill(StartTest):
    """Whatever takes connections and never answers, from the start or from one moment on."""

    def silent(self, path):
        """Takes connections at a path, or at the one of an X display of that number, and never says a word."""
        path = Path(path)
        path.unlink(missing_ok=True)
        server = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        server.bind(str(path))
        server.listen(20)
        self.addCleanup(path.unlink, missing_ok=True)
        self.addCleanup(server.close)
        return path

    def assert_ends_after(self, *waits, **environment):
        """Ends it so many seconds after its start: each time, it is at work with something else."""
        for seconds in waits:
            process = self.begin(**environment)
            self.settle(seconds)
            self.assertIsNone(process.poll())
            with self.subTest(seconds=seconds):
                self.assertIn(self.assert_ends(process), (0, -signal.SIGTERM))

    def test_a_session_bus(self):
        bus = self.silent(self.session.folder / "silent-bus")
        self.assert_ends_after(0.3, 4, 7, DBUS_SESSION_BUS_ADDRESS=f"unix:path={bus}")

    def test_a_system_bus(self):
        bus = self.silent(self.session.folder / "silent-bus")
        self.assert_ends_after(0.3, 4, DBUS_SYSTEM_BUS_ADDRESS=f"unix:path={bus}")

    def test_an_x_server(self):
        number = next(n for n in range(4200, 4300) if not Path(f"/tmp/.X11-unix/X{n}").exists())
        self.silent(f"/tmp/.X11-unix/X{number}")
        self.assert_ends_after(0.3, 3, DISPLAY=f":{number}")

    def test_a_compositor(self):
        socket_ = self.silent(self.session.folder / "silent-wayland")
        self.assert_ends_after(0.3, 3, WAYLAND_DISPLAY=str(socket_))

    def test_a_bus_that_stops_while_it_runs(self):
        for kind in ("session", "system"):
            process = self.answering()
            with stopped(self.session.buses[kind]):
                self.settle(2)
                self.assertEqual(self.assert_ends(process), 0)

    def test_a_reader_of_what_it_prints(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        os.set_blocking(writing, False)
        with self.assertRaises(BlockingIOError):
            while True:
                os.write(writing, b"full")
        os.set_blocking(writing, True)
        process = self.session.spawn([str(PROGRAM)], stdout=writing, stderr=writing)
        self.addCleanup(self.session.end, process)
        os.close(writing)
        wait_until(lambda: self.ask("status")[0] == 0, 10, "an answer on the bus")
        self.assertEqual(self.ask("toggle")[0], 0)
        self.assertEqual(self.ask("status")[1].split()[0], "paused")
        self.assertEqual(self.assert_ends(process), 0)


class XServerStandsStill(StartTest):
    def server(self):
        return next(child for child in self.session.children if "Xvfb" in child.args[0])

    def test_the_end_does_not_wait_for_it(self):
        for speed, moment in ((1, "sandbox home path"), (20, "ticktack timer timesup")):
            program = self.running(speed=speed)
            with stopped(self.server()):
                program.wait_for(moment, 10)
                self.settle(0.5)
                self.assertEqual(self.ask("status")[0], 0, "it goes on")
                self.assertEqual(self.assert_ends(program.process), 0)

    def test_it_is_waited_for_once_and_not_with_every_question(self):
        self.running()
        with stopped(self.server()):
            self.assertEqual(self.ask("settings")[0], 0)
            self.settle(1)      # over the time that it is given
            began = time.monotonic()
            for _ in range(6):  # each of which asks it where the window belongs
                self.assertEqual(self.ask("settings")[0], 0)
            self.assertLess(time.monotonic() - began, 3)

    def test_a_break_that_came_meanwhile_is_shown_when_it_goes_on(self):
        program = self.launch(speed=20)
        wait_for_cover(self.session, self.monitors, 15)
        with stopped(self.server()):
            self.assertEqual(self.ask("skip")[0], 0)
            program.wait_for("skip break view", 5)
            program.wait_for("ticktack timer timesup", 10, times=2)
        wait_for_cover(self.session, self.monitors, 15)


if __name__ == "__main__":
    main()
