#!/usr/bin/python3
"""The status item on a desktop whose tray shows StatusNotifier items with their labels."""
from gi.repository import GLib

from support import Box, DesktopTest, main, wait_until


class Tray(DesktopTest):
    def item_of(self, program):
        item = program.item()
        wait_until(item.registered, 5, "the tray to take the item")
        return item

    def test_the_menu_tells_the_version_and_its_lines_have_pictures(self):
        item = self.item_of(self.launch({"pref.water.enable": True}, speed=1))
        version, *lines = [line.properties for line in item.menu() if line.properties.get("type") != "separator"]
        self.assertRegex(version["label"], r"^    Kelpa - v\d+\.\d+\.\d+\(.+\)$")
        self.assertEqual(len(lines), 7)
        for line in lines:
            self.assertEqual(bytes(line["icon-data"][:8]), b"\x89PNG\r\n\x1a\n", line["label"])

    def test_the_idle_program_is_small(self):
        program = self.launch({"pref.work.time": 25}, speed=1)
        item = self.item_of(program)
        wait_until(lambda: item.label().startswith("24:"), 5, "a second to pass")
        with open(f"/proc/{program.process.pid}/maps", encoding="utf-8") as maps:
            mapped = maps.read()
        for library in ("Qt", "EGL", "LLVM", "libGL"):
            self.assertNotIn(library, mapped)
        self.assertEqual(self.helpers(program), [])


class Clicks(DesktopTest):
    """A host that leaves the clicks on the item to the program. Here it is the test."""

    def setUp(self):
        self.program = self.launch(speed=1)
        self.item = self.program.item()
        wait_until(self.item.registered, 5, "the tray to take the item")
        self.screen.move(300, 200)

    def click(self, how="Activate"):
        self.session.call(self.item.name, self.item.path, "org.kde.StatusNotifierItem", how,
                          GLib.Variant("(ii)", (0, 0)))

    def menus(self):
        return self.screen.titled_all("Kelpa", height=100)

    def test_the_menu_opens_at_the_pointer_and_a_line_can_be_chosen(self):
        self.click()
        menu = wait_until(self.menus, 5, "the menu")[0]
        self.assertLessEqual(abs(menu.x - 300) + abs(menu.y - 200), 4)
        within_its_frame = Box(menu.x + 3, menu.y + 3, menu.width - 6, menu.height - 6)
        wait_until(lambda: self.screen.picture(within_its_frame).lines() >= 7, 3, "seven lines in the menu")
        for key in ("Down", "Return"):      # the first line that can be chosen stops the work period
            self.screen.press(key)
        self.program.wait_for("ticktack timer stoped 1.0$", 3, times=2)
        wait_until(lambda: not self.helpers(self.program), 5, "the menu's program to end")

    def test_a_second_click_before_it_is_there_leaves_it_open_to_one_beside_it(self):
        self.click("ContextMenu")
        wait_until(lambda: self.helpers(self.program), 5, "the menu's program")
        self.click()
        menu = wait_until(self.menus, 5, "the menu")[0]
        self.settle(0.5)    # over the time in which the second click is answered
        self.screen.click(menu.x + menu.width + 50, menu.y + 20)
        wait_until(lambda: not self.helpers(self.program), 5, "the menu's program to end")

    def test_it_waits_for_the_end_of_the_click(self):
        """Some hosts tell of a click as soon as the button is down, and hold the pointer until it is up."""
        self.screen.hold_pointer(True)
        self.click()
        wait_until(lambda: self.helpers(self.program), 5, "the menu's program")
        self.settle(0.3)
        self.assertEqual(self.menus(), [])
        self.screen.hold_pointer(False)
        wait_until(self.menus, 5, "the menu")


if __name__ == "__main__":
    main()
