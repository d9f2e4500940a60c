#!/usr/bin/python3
"""Desktops with less: only an old tray for embedded icons, or no tray at all."""
import os
import shutil
import signal
import socket
import sys
from pathlib import Path

from support import PROGRAM, Box, DesktopTest, main, wait_until
from virtual_desktop import wait_for_still

TRAY_THAT_GRANTS_LITTLE = Path(__file__).with_name("narrow_tray.py")


class OldTray(DesktopTest):
    TRAY = False
    MONITORS = ROOM = 1

    def gone(self):
        wait_until(lambda: not self.screen.embedded(), 5, "the embedded icon to go")

    def test_it_shows_picture_and_time(self):
        self.start_old_tray()
        program = self.launch(speed=1)
        icon = wait_until(lambda: (found := self.docked()).width > 2 * found.height and found, 10, "room for the time")
        self.assertEqual(icon.title, "Kelpa")
        self.assertGreater(self.screen.picture(icon).glyphs(), 4)
        self.assertGreater(self.shown_text_moves(icon).x, icon.height, "the picture changed with the time")
        program.write_settings({**self.stored(program), "show_time_in_status_bar": False})
        wait_until(lambda: self.docked().width < 2 * icon.height, 5, "the room of the time to go")
        # It makes room for a modern tray.
        self.addCleanup(self.session.end, self.session.start_tray_service())
        wait_until(program.item().registered, 5, "the modern tray to take the item")
        self.gone()
        wait_until(lambda: not self.helpers(program), 5, "its program to end")

    def test_its_menu(self):
        self.start_old_tray()
        program = self.launch(speed=1)
        icon = self.docked()
        menu = self.open_menu(icon)
        before = self.screen.picture(menu)
        self.assertEqual(self.ask("pause")[0], 0)
        wait_until(lambda: before.differs(self.screen.picture(menu)), 3, "the open menu to follow")
        for key in ("Down", "Return"):      # the first line that can be chosen, which now goes on with the work
            self.screen.press(key)
        program.wait_for("ticktack timer start 60$", 5, times=2)
        self.open_menu(icon)
        self.screen.press("Down", "Escape")
        wait_until(lambda: not self.menus(), 5, "the menu to close")
        self.assertEqual(self.ask("status")[1].split()[0], "working")

    def menus(self):
        return self.screen.titled_all("Kelpa", height=60)

    def open_menu(self, icon):
        """Gives where the menu stands once it is open and drawn."""
        self.screen.click(icon.x + 5, icon.y + 5)
        menu = wait_until(self.menus, 5, "the menu")[0]
        wait_for_still(self.screen, menu)
        return menu

    def test_its_pictures_are_found_wherever_the_helper_lies(self):
        """A distribution may put helpers deeper than beside the program's data."""
        self.start_old_tray()
        beside = Path(PROGRAM).parent
        deep = self.session.folder / "libexec/deeper/kelpa"
        deep.mkdir(parents=True)
        shutil.copy(beside / "kelpa-tray", deep)
        ours, its = socket.socketpair()
        self.addCleanup(ours.close)
        with its:
            self.session.spawn(["/bin/bash", "-c", f"exec {deep}/kelpa-tray 3<&{its.fileno()}"],
                               pass_fds=[its.fileno()])
        manager = self.screen.selection_owner("_NET_SYSTEM_TRAY_S0").id
        ours.sendall(f"data\t{beside}/share/kelpa\nimage\tkelpa\nmanager\t{manager}\n".encode())
        icon = self.docked()
        ours.settimeout(0.5)
        with self.assertRaises(TimeoutError):
            self.fail(ours.recv(1000))
        self.assertGreater(self.screen.picture(icon).glyphs(), 0)

    def test_it_follows_the_tray_and_a_crash_is_made_good(self):
        program = self.running()
        self.assertEqual(self.helpers(program), [], "it runs without a tray")
        tray = self.start_old_tray()
        self.docked()
        first = self.helpers(program, "kelpa-tray")
        tray.kill()
        self.gone()
        self.assertFalse(self.screen.titled(lambda title: title == "Kelpa"), "the icon is left on the desktop")
        self.start_old_tray()
        self.docked()
        self.assertEqual(self.helpers(program, "kelpa-tray"), first)
        os.kill(first[0], signal.SIGKILL)
        program.wait_for("kelpa-tray was ended by signal 9$", 5)
        wait_until(lambda: self.helpers(program, "kelpa-tray") not in ([], first), 5, "another helper")
        wait_until(lambda: self.screen.picture(self.docked()).glyphs() > 4, 5, "the icon and the time")


class SlotTest(DesktopTest):
    """A dark bar whose slots keep their size, as those of many small bars do, and say nothing of it."""
    TRAY = False
    MONITORS = ROOM = 1
    SLOT = 19
    OPTIONS = ()
    DARK, LIGHT = (0x20, 0x24, 0x28), (0xd8, 0xd4, 0xd0)

    def setUp(self):
        tray = self.session.spawn([sys.executable, str(TRAY_THAT_GRANTS_LITTLE), str(self.SLOT), *self.OPTIONS])
        self.addCleanup(self.session.end, tray)
        self.bar = wait_until(lambda: self.screen.titled(lambda title: title == "narrow tray"), 10, "the tray")[0]
        self.program = self.launch(speed=1)

        def in_its_slot():
            return [icon for icon in self.screen.embedded() if icon.width == self.SLOT]

        self.icon = wait_until(in_its_slot, 10, "an icon in its slot")[0]


class NarrowTray(SlotTest):
    def shape(self):
        """Where the ink stands in the slot, once it is painted."""
        return wait_until(lambda: self.screen.picture(self.icon).ink_box(), 5, "something in the slot")

    def assert_colours(self, behind, ink_is_light):
        def right():
            picture = self.screen.picture(self.icon)
            brightest = max if ink_is_light else min
            ink = brightest(picture.colours(), key=sum)
            return picture.background() == behind and (sum(ink) > 600 if ink_is_light else sum(ink) < 200)

        self.assertTrue(wait_until(right, 5), self.screen.picture(self.icon).colours().most_common(3))

    def test_the_icon_stands_alone_in_its_slot_on_the_colour_of_the_bar(self):
        self.assertEqual((self.icon.width, self.icon.height), (self.SLOT, self.SLOT))
        self.assert_colours(self.DARK, ink_is_light=True)
        self.settle(1.2)    # over the next tick
        shape = self.shape()
        left, right = shape.x, self.SLOT - shape.x - shape.width
        self.assertGreater(shape.height, self.SLOT / 2)
        self.assertLessEqual(abs(left - right), 2, "the picture stands in the middle, and no figure beside it")
        self.assert_colours(self.DARK, ink_is_light=True)

    def test_the_time_is_in_the_tooltip(self):
        def tooltip():
            below = (window for window in self.screen.of_class("kelpa-tray") if window.y >= self.bar.height)
            inside = (Box(window.x + 2, window.y + 2, window.width - 4, window.height - 4) for window in below)
            return any(self.screen.picture(text).glyphs() > len("Kelpa") + 2 for text in inside)

        self.addCleanup(self.screen.move, 5, self.HEIGHT - 10)
        self.screen.move(self.icon.x + 8, self.icon.y + 8)
        self.screen.push(1, 1)
        self.assertTrue(wait_until(tooltip, 5))

    def test_the_bars_other_colour_is_taken(self):
        """Some trays draw only themselves anew, and others have each icon draw itself."""
        self.assert_colours(self.DARK, ink_is_light=True)
        self.screen.set_background(self.bar.id, self.LIGHT, cleared=self.bar.id)
        self.assert_colours(self.LIGHT, ink_is_light=False)
        self.screen.set_background(self.bar.id, self.DARK, cleared=self.icon.id)
        self.assert_colours(self.DARK, ink_is_light=True)


class TinyTray(SlotTest):
    SLOT = 4

    def test_a_slot_without_room_for_a_picture_is_left_empty_without_a_word(self):
        self.assert_said_nothing()
        self.settle(1.2)    # over the next tick
        self.assert_said_nothing()

    def assert_said_nothing(self):
        wait_until(lambda: self.screen.picture(self.icon).background() == self.DARK, 5, "the colour of the bar")
        lines = self.program.printed.read_text().splitlines()
        self.assertEqual([line for line in lines if " app.orvane." not in line], [])


class TranslucentTray(SlotTest):
    """What shines through the icon is the tray's affair; here it is black."""
    OPTIONS = ("--translucent",)

    def assert_ink(self, ink):
        def drawn():
            colours = self.screen.picture(self.icon).colours()
            return max(colours, key=sum) == ink and colours[ink] > 10

        self.assertTrue(wait_until(drawn, 5), self.screen.picture(self.icon).colours().most_common(3))

    def test_the_colour_is_the_trays_where_it_names_one_and_one_for_any_ground_where_it_does_not(self):
        self.assert_ink((0x33, 0x9B, 0x7E))
        for ink in ((0xF0, 0xE0, 0x20), (0x40, 0x50, 0x60)):
            self.screen.name_tray_colours(self.bar.id, [ink, *[(0, 0, 0)] * 3])
            self.assert_ink(ink)


class CommandLine(DesktopTest):
    TRAY = False
    MONITORS = ROOM = 1

    def test_help_and_version(self):
        for option, told in (("--help", "--speed"), ("--version", r"^\S* ?.*\d+\.\d+\.\d+")):
            status, output, message = self.ask(option)
            self.assertEqual((status, message), (0, ""), option)
            self.assertRegex(output, told)

    def test_what_it_cannot_do_takes_one_line(self):
        for arguments, display, expected, word in ((["--sped", "3"], ":4711", 2, "sped"), ([], "", 1, "display"),
                                                   ([], ":4711", 1, "display")):
            status, output, message = self.ask(*arguments, DISPLAY=display)
            self.assertEqual((status, output, len(message.splitlines())), (expected, "", 1), message)
            self.assertIn(word, message.lower())


if __name__ == "__main__":
    main()
