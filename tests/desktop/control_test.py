#!/usr/bin/python3
"""One instance, and the ways of scripts to it: the bus and the command line."""
import configparser
import json
import os
import re
import resource
import signal
import subprocess
import time
from pathlib import Path

from gi.repository import GLib

from support import DOUBLE, PROGRAM, ROOT, SPEED, DesktopTest, main, wait_until

NAME = "app.orvane.Kelpa"
NOTIFICATIONS = "org.freedesktop.Notifications"
NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent/bus"}


class ControlTest(DesktopTest):
    MONITORS = ROOM = 1

    def obeys(self, *command):
        self.assertEqual(self.ask(*command), (0, "", ""), command)

    def refuses(self, *command):
        code, output, message = self.ask(*command)
        self.assertEqual((code, output), (1, ""), command)
        self.assertRegex(message, r"^kelpa: [A-Z][^\n]+\n$")
        return message

    def assert_not_running(self, *command, **environment):
        code, output, message = self.ask(*command, **environment)
        self.assertEqual((code, output), (3, ""), command)
        self.assertRegex(message, r"^kelpa: [^\n]+\n$")

    def owner(self):
        """The process that has the program's name on the bus."""
        bus = "org.freedesktop.DBus"
        return self.session.call(bus, "/org/freedesktop/DBus", bus, "GetConnectionUnixProcessID",
                                 GLib.Variant("(s)", (NAME,)))[0]


class OneInstance(ControlTest):
    def assert_second_start_asks(self, program, **environment):
        asked = program.count("asks for the preferences")
        code, _, message = self.ask(**environment)
        self.assertEqual((code, message), (0, ""))
        program.wait_for("asks for the preferences", 5, times=asked + 1)
        self.assertFalse(program.ended())

    def test_what_comes_from_outside_forges_no_line_of_the_log(self):
        """Here the name of a folder, which stands in a warning; a helper's words take the same way."""
        forged = "2026-01-01T00:00:00+0000 info app.orvane.Kelpa : forged"
        folder = self.session.folder / ("a\n" + forged + "\x1b[2J")
        folder.mkdir()
        settings = folder / "app.orvane.Kelpa.plist"
        settings.write_text("damaged")
        program = self.launch(environment={"XDG_CONFIG_HOME": str(folder)})
        program.wait_for("The settings file was damaged and is now .*forged", 10)
        self.assertEqual([line for line in program.lines() if line.startswith(forged) or "\x1b" in line], [])

    def test_a_second_start_asks_the_first_and_touches_nothing(self):
        program = self.running()
        log, = program.log_files()
        older = log.with_name(f"{NAME}.20200101.log")
        older.write_text("kept\n")
        hellos = log.read_text().count("~~hello Kelpa~~")
        self.assertGreaterEqual(hellos, 1)
        settings = program.settings_file().read_bytes(), program.settings_file().stat().st_mtime_ns
        for _ in range(2):
            self.assert_second_start_asks(program)
        self.assertEqual(log.read_text().count("~~hello Kelpa~~"), hellos)
        self.assertTrue(older.exists(), "a second start deleted a log file")
        older.unlink()
        self.assertEqual((program.settings_file().read_bytes(), program.settings_file().stat().st_mtime_ns), settings)
        self.assertEqual(self.owner(), program.process.pid)

    def test_one_that_hangs_is_replaced_and_gives_way(self):
        stale = self.running()
        stale.process.send_signal(signal.SIGSTOP)
        self.addCleanup(stale.process.send_signal, signal.SIGCONT)
        program = self.launch(speed=1)
        wait_until(lambda: self.owner() == program.process.pid, 20, "the new one to have the name")
        wait_until(lambda: self.ask("status")[0] == 0, 10, "its answer")
        stale.process.send_signal(signal.SIGCONT)
        self.assertEqual(stale.process.wait(10), 0)
        self.assertFalse(program.ended())
        self.assert_second_start_asks(program)

    def test_without_a_bus_it_is_one_as_well(self):
        program = self.launch(speed=1, environment=NO_BUS)
        program.wait_for("No session bus", 10)
        self.assert_second_start_asks(program, **NO_BUS)
        self.assert_second_start_asks(program)
        self.assert_not_running("status", **NO_BUS)
        program.process.kill()
        program.process.wait(5)
        again = self.launch(speed=1, environment=NO_BUS)
        again.wait_for("No session bus", 10)
        self.assert_second_start_asks(again, **NO_BUS)


class BusGone(ControlTest):
    def test_everything_of_a_session_bus_comes_back_with_it(self):
        program = self.running()
        self.assertTrue(wait_until(program.item().registered, 5))
        for times in (1, 2):
            self.session.kill_session_bus()
            self.assert_not_running("status")
            self.session.restart_session_bus()
            self.session.start_tray_service()
            wait_until(lambda: self.ask("status")[0] == 0, 20, "an answer on the new bus")
            self.assertEqual(self.owner(), program.process.pid)
            item = program.item()
            wait_until(item.registered, 5, "the tray to take the item")
            label = item.label()
            wait_until(lambda: item.label() != label, 5, "the time to go on")
            self.assertEqual(self.ask()[0], 0, "a second start")
            program.wait_for("asks for the preferences", 5, times=times)
            self.assertEqual(program.count("The session bus is gone"), times)
        self.obeys("quit")
        self.assertEqual(program.process.wait(5), 0)


class Commands(ControlTest):
    def test_each_command_does_what_the_menu_does(self):
        program = self.running()
        item = program.item()
        self.obeys("pause")
        self.assertEqual((self.status()["state"], self.status()["paused"]), ("paused", True))
        self.assertTrue(wait_until(lambda: item.line("- Wrok -"), 3))
        self.assertEqual(self.ask("status")[1], f"paused {item.label()}\n")
        self.obeys("toggle")
        self.assertTrue(wait_until(lambda: item.line("- Stop -"), 3))
        self.obeys("toggle")
        self.obeys("resume")
        self.assertEqual(self.status()["state"], "working")
        self.assertIn("No break", self.refuses("skip"))
        self.assertIn("water", self.refuses("water"))
        self.obeys("settings")
        self.obeys("quit")
        self.assertEqual(program.process.wait(5), 0)

    def test_a_pause_with_an_end_ends_by_itself_and_the_tooltip_tells_when(self):
        program = self.launch({"pref.work.time": 600})
        item = program.item()

        def tooltip():
            return str(item.get("ToolTip"))

        self.obeys("pause", "until", "tomorrow")
        wait_until(lambda: " 00:00" in tooltip(), 5, "the end in the tooltip")
        self.assertEqual(self.status()["state"], "paused")
        began = time.monotonic()
        self.obeys("pause", "2m")
        wait_until(lambda: self.status()["state"] == "working", 30, "the end of the pause")
        self.assertGreater(time.monotonic() - began, 120 / SPEED - 0.1)
        self.assertNotIn("Paused", tooltip())

    def test_where_it_does_not_run_they_say_so_and_leave_no_trace(self):
        empty = self.session.folder / "empty"
        empty.mkdir(mode=0o700)
        self.addCleanup(empty.rmdir)
        places = {"XDG_STATE_HOME": str(empty), "XDG_CONFIG_HOME": str(empty), "XDG_RUNTIME_DIR": str(empty)}
        for command in ("status", "pause", "resume", "toggle", "skip", "water", "settings", "quit"):
            self.assert_not_running(command, **places)
            self.assert_not_running(command, **places, **NO_BUS)
        self.assert_not_running("status", "--json", "--follow", **places)
        self.assertEqual(list(empty.iterdir()), [])

    def test_they_need_no_display_and_little_time(self):
        self.running()
        began = self.time_of_children()
        for _ in range(10):
            self.assertEqual(self.ask("status", DISPLAY="", WAYLAND_DISPLAY="")[0], 0)
        self.assertLess(self.time_of_children() - began, 0.5)

    @staticmethod
    def time_of_children():
        """Seconds of a processor that programs have taken that were waited for."""
        taken = resource.getrusage(resource.RUSAGE_CHILDREN)
        return taken.ru_utime + taken.ru_stime


class Snippets(ControlTest):
    """What docs/SCRIPTING.md gives people to copy, run as their panels would."""

    def snippet(self, language, part):
        """The one block of that language in the document that holds `part`."""
        text = (ROOT / "docs/SCRIPTING.md").read_text(encoding="utf-8")
        found = [block for block in re.findall(rf"```{language}\n(.*?)```", text, re.S) if part in block]
        self.assertEqual(len(found), 1, part)
        return found[0]

    def runs(self, script, lines=None):
        """What a shell script prints; of one that goes on, its first lines."""
        folder = self.session.folder / "bin"
        folder.mkdir(exist_ok=True)
        if not (folder / "kelpa").exists():
            (folder / "kelpa").symlink_to(Path(PROGRAM).resolve())
        environment = {**self.session.environment, "PATH": f"{folder}:{os.environ['PATH']}"}
        process = subprocess.Popen(["sh", "-c", script], env=environment, stdout=subprocess.PIPE, text=True,
                                   start_new_session=True)
        with process.stdout:
            if lines is None:
                return process.communicate(timeout=20)[0]
            told = [process.stdout.readline() for _ in range(lines)]
            os.killpg(process.pid, signal.SIGTERM)
            process.wait(10)
            return "".join(told)

    def test_they_print_what_the_panels_understand(self):
        self.running({"pref.work.time": 25})
        waybar = json.loads("{" + self.snippet("json", "custom/kelpa") + "}")["custom/kelpa"]
        for line in self.runs(waybar["exec"], lines=2).splitlines():
            told = json.loads(line)
            self.assertEqual((told["class"], told["tooltip"]), ("working", "working"))
            self.assertRegex(told["text"], r"^2[45]:\d\d$")
        polybar = configparser.RawConfigParser()
        polybar.read_string(self.snippet("ini", "module/kelpa"))
        self.assertRegex(self.runs(polybar["module/kelpa"]["exec"], lines=2), r"^(working 2[45]:\d\d\n){2}$")
        tmux = re.search(r"#\((.*)\)", self.snippet("tmux", "status-right"))[1]
        self.assertRegex(self.runs(tmux), r"^working 2[45]:\d\d\n$")
        argos = self.runs(self.snippet("sh", "---")).splitlines()
        self.assertRegex(argos[0], r"^2[45]:\d\d$")
        self.assertEqual(argos[1], "---")
        for entry in argos[2:] + [waybar["on-click"], polybar["module/kelpa"]["click-right"]]:
            command = re.search(r"bash='(.*?)'|(kelpa \w+)", entry)
            self.assertNotEqual(self.ask(*(command[1] or command[2]).split()[1:])[0], 2, entry)

    def test_they_bear_that_it_does_not_run(self):
        self.assertEqual(self.runs(re.search(r"#\((.*)\)", self.snippet("tmux", "status-right"))[1]), "")
        self.assertEqual(self.runs(self.snippet("sh", "---")).splitlines()[0], "off")


class Watching(ControlTest):
    def follow(self, *arguments):
        follower = self.session.spawn([str(PROGRAM), "status", "--follow", *arguments], stdout=subprocess.PIPE,
                                      stderr=subprocess.PIPE, text=True)
        self.addCleanup(follower.stderr.close)
        self.addCleanup(follower.stdout.close)
        self.addCleanup(self.session.end, follower)
        return follower

    def test_following_prints_changes_once_a_second_and_ends_with_the_program(self):
        program = self.running({"pref.work.time": 200}, speed=20)
        follower = self.follow("--json")
        lines, times = [], []
        while len(lines) < 5:
            lines.append(json.loads(follower.stdout.readline()))
            times.append(time.monotonic())
        self.assertGreaterEqual(times[-1] - times[0], 3.7)
        self.assertEqual(len({line["time"] for line in lines}), 5)
        self.obeys("pause")
        while lines[-1]["state"] != "paused":
            lines.append(json.loads(follower.stdout.readline()))
        self.obeys("quit")
        self.assertEqual(program.process.wait(5), 0)
        self.assertEqual(follower.wait(5), 3)
        self.assertEqual(follower.stderr.read(), "kelpa: Kelpa has ended\n")

    def test_it_bears_that_its_reader_goes(self):
        self.running(speed=1)
        reader = subprocess.run(f"'{PROGRAM}' status --follow | head -n 1", shell=True, timeout=10,
                                env=self.session.environment, capture_output=True, text=True)
        self.assertRegex(reader.stdout, r"^working \d\d:\d\d\n$")

    def test_a_terminal_ends_it_quietly(self):
        self.running()
        follower = self.follow()
        follower.stdout.readline()
        follower.send_signal(signal.SIGINT)
        self.assertEqual((follower.wait(5), follower.stderr.read()), (0, ""))


class NoTray(ControlTest):
    TRAY = False
    ACTIVATION = False      # a notification server of this machine would be as good as the double
    SILENT = "No tray of this desktop shows the item"

    def test_it_says_so_and_a_click_opens_the_preferences(self):
        call = self.mock(NOTIFICATIONS, "/org/freedesktop/Notifications", "--template", "notification_daemon")
        began = time.monotonic()
        program = self.launch(speed=1, environment={"LANGUAGE": "zh_CN"})
        program.wait_for(self.SILENT, 40)
        self.assertGreater(time.monotonic() - began, 10, "a panel may be slow at log-in")
        wait_until(lambda: "此桌面没有可显示 Kelpa 的托盘" in self.session.output("python3"), 5, "the notification")
        call("EmitSignal", NOTIFICATIONS, "ActionInvoked", "us", "[<uint32 1>, <'default'>]",
             interface=DOUBLE)
        program.wait_for("notification was clicked", 5)
        self.assertFalse(program.ended())

    def test_an_old_tray_is_one_and_no_server_is_no_matter(self):
        tray = self.start_old_tray()
        program = self.launch(speed=1)
        wait_until(self.screen.embedded, 10, "an embedded icon")
        self.settle(16)     # longer than a tray is waited for
        self.assertEqual(program.count(self.SILENT), 0)
        self.session.end(program.process)
        self.session.end(tray)
        program = self.launch(speed=1)
        program.wait_for(self.SILENT, 40)
        program.wait_for("The notification is not shown: ", 10)
        self.assertEqual(self.ask("status")[0], 0)


if __name__ == "__main__":
    main()
