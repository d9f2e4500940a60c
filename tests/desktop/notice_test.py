#!/usr/bin/python3
"""A word before a break, with the notification services that desktops have, and what a person presses there."""
import stat
from pathlib import Path

from support import main, wait_until
from virtual_desktop import Box, break_windows, wait_for_cover, wait_for_still
from control_test import NOTIFICATIONS, ControlTest

# Half of each period of twelve seconds here is left when the word comes.
SPEED = 10
SETTINGS = {"pref.work.time": 2, "pref.break.notice": 60, "pref.break.more": 2}


class NoticeTest(ControlTest):
    def begin(self, **settings):
        return self.launch({**SETTINGS, **settings}, speed=SPEED)

    def serve(self, command):
        server = self.session.spawn(command)
        self.addCleanup(self.session.end, server)
        wait_until(lambda: self.session.has_owner(NOTIFICATIONS), 10, command[0])
        return server

    def wait_for_full_period(self):
        wait_until(lambda: self.status()["seconds"] > 90, 5, "more time")


class Dunst(NoticeTest):
    ACTIVATION = False      # so that it is dunst that answers
    RULES = """[global]
    mouse_left_click = context
    dmenu = {chooser}
    font = DejaVu Sans 10
"""

    def setUp(self):
        # Dunst has no buttons: a click opens a list, which is this script's to choose from.
        self.choice = self.session.folder / "choice"
        chooser = self.session.folder / "chooser"
        chooser.write_text(f'#!/bin/sh\ntee -a {self.choice}.offered | grep -F "$(cat {self.choice})"\n')
        chooser.chmod(chooser.stat().st_mode | stat.S_IXUSR)
        rules = self.session.folder / "dunstrc"
        rules.write_text(self.RULES.format(chooser=chooser))
        self.serve(["dunst", "-config", str(rules)])

    def shown(self):
        return next(iter(self.screen.of_class("Dunst")), None)

    def press(self, action):
        self.choice.write_text(action)
        window = wait_until(self.shown, 20, "the notification")
        self.screen.click(window.x + window.width // 2, window.y + window.height // 2)

    def test_it_goes_when_work_stops_and_gives_more_time_and_then_the_break_at_once(self):
        self.begin()
        wait_until(self.shown, 20, "the notification")
        self.obeys("pause")
        wait_until(lambda: not self.shown(), 5, "the notification to go")
        self.obeys("resume")
        self.press("2 more minutes")
        self.wait_for_full_period()
        wait_until(lambda: not self.shown(), 5, "the notification to go")
        self.assertEqual(break_windows(self.session), [])
        self.press("Start now")
        wait_for_cover(self.session, self.monitors)
        wait_until(lambda: not self.shown(), 5, "the notification to go")
        offered = (self.choice.with_suffix(".offered")).read_text()
        self.assertEqual(offered.count("2 more minutes"), 2)


class Xfce(NoticeTest):
    """Its notifications have buttons, side by side in the lowest quarter."""
    ACTIVATION = False

    def press(self, place):
        window = wait_until(lambda: next(iter(self.screen.of_class("xfce4-notifyd")), None), 20, "the notification")
        wait_for_still(self.screen, Box(window.x, window.y, window.width, window.height))
        self.screen.click(window.x + int(place * window.width), window.y + window.height - 30)

    def test_the_buttons_do_what_they_say(self):
        self.serve([str(next(Path("/usr/lib").glob("*/xfce4/notifyd/xfce4-notifyd")))])
        self.begin()
        self.press(0.75)
        self.wait_for_full_period()
        self.press(0.25)
        wait_for_cover(self.session, self.monitors)


if __name__ == "__main__":
    main()
