#!/usr/bin/python3
"""The mouse at rest: what stops the cycle after five minutes, what starts it again, and what does neither."""
import time

from activity_support import FAST, LIMIT, SETTINGS, STARTED, STOPPED, AtRest
from support import DesktopTest, Session, main, wait_until
from virtual_desktop import Screen, wait_for_cover
from water_test import noon_zone

SCROLL_DOWN, BACK = 5, 8


class Activity(AtRest, DesktopTest):
    MONITORS = 1
    ROOM = 1

    def move(self, seconds):
        """Over a connection of its own: another thread may."""
        screen = Screen(self.session.display)
        screen.push_for(seconds)
        screen.close()

    def start(self, *settings, **options):
        program = self.begin(*settings, **options)
        program.wait_for("Activity is heard of from the X server", 10)
        return program

    def test_the_cycle_stops_five_minutes_after_the_last_motion_and_the_next_starts_it(self):
        self.assert_stops_after_five_minutes_and_starts_with_the_next_input("the X server")

    def test_buttons_and_modifiers_count_and_other_keys_wheel_and_side_buttons_do_not(self):
        program = self.start(speed=2 * FAST)
        starts = 1
        for act in (lambda: self.screen.button(1), lambda: self.screen.button(3),
                    lambda: self.screen.press("Shift_L"), lambda: self.screen.press("Control_R"),
                    lambda: self.screen.press("Alt_L"), lambda: self.screen.press("Caps_Lock")):
            # It starts with a stop line of its own, and stops with the next.
            self.wait_stopped(program, 2 * starts)
            act()
            starts += 1
            program.wait_for(STARTED, 3, times=starts)
        self.screen.press("Caps_Lock")
        self.wait_stopped(program, 2 * starts)
        self.screen.type("nobody is there 0")
        for key in ("Return", "F5", "Escape", "Left"):
            self.screen.press(key)
        for button in (2, 4, SCROLL_DOWN, BACK):
            self.screen.button(button)
        self.settle(0.5)
        self.assertEqual(program.count(STARTED), starts)

    def test_a_mouse_of_many_events_a_second_wakes_the_program_once_or_twice(self):
        program = self.start(speed=1)
        wait_until(program.item().registered, 10, "the tray to take the item")
        rest = self.sleeps_a_second(program, self.settle)
        moving = self.sleeps_a_second(program, lambda seconds: self.screen.push_for(seconds, 1000))
        # The tick and what it sends; a look at the pointer is a question to the X server and its answer.
        self.assertLess(moving - rest, 5)

    def test_nothing_counts_beneath_a_lock_and_the_greeting_after_it_runs_to_its_end_under_a_moving_mouse(self):
        saver = self.mock("org.gnome.ScreenSaver", "/org/gnome/ScreenSaver", "--template", "gnome_screensaver")
        program = self.start({"show_new_day_tip": True}, speed=2)
        saver("SetActive", "true")
        self.wait_stopped(program, 2)
        program.write_settings({**SETTINGS, "show_new_day_tip": True, "last_weakup_timestamp": time.time() - 2 * 86400})
        self.screen.push_for(1)
        self.screen.press("Control_L")
        self.settle(0.5)
        self.assertEqual(program.count(STARTED), 1)
        mover = self.keep_moving(6)
        saver("SetActive", "false")
        program.wait_for("ticktack timer start 10$", 3)
        wait_for_cover(self.session, self.monitors, 5)
        program.wait_for("ticktack timer timesup for 10$", 8)
        program.wait_for(STARTED, 3, times=2)
        # At the start, at the lock, where the greeting begins and where it ends.
        self.assertEqual(program.count(STOPPED), 4)
        mover.join()

    def test_a_mouse_over_the_water_panel_is_not_at_work(self):
        program = self.start({"pref.water.enable": True, "pref.water.lastShowDate": time.time()},
                             environment={"TZ": noon_zone()})
        item = program.item()
        item.click_line(item.line("Water").id)
        panel = wait_until(lambda: (self.screen.titled(lambda title: title == "Water Reminder") or [None])[0], 10,
                           "the water panel")
        self.screen.move(panel.x + 140, panel.y + 24)
        self.settle(0.5)
        stops, began = program.count(STOPPED), time.monotonic()
        mover = self.keep_moving(LIMIT + 3)
        self.assertLess(self.wait_stopped(program, stops + 1) - began, LIMIT + 1)
        self.screen.press("Shift_L")
        mover.join()
        self.assertEqual(program.count(STARTED), 1)
        self.screen.move(200, 500)
        self.screen.push(5, 5)
        program.wait_for(STARTED, 3, times=2)
        Session.end(program.process)
        self.screen.move(5, 590)



if __name__ == "__main__":
    main()
