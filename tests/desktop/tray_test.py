#!/usr/bin/python3
"""The status item on a desktop whose tray shows StatusNotifier items with their labels."""
import re

from gi.repository import GLib

from support import WORK, Box, DesktopTest, main, wait_until

TIME = re.compile(r"\d\d:\d\d")


class Tray(DesktopTest):
    def item_of(self, program):
        item = program.item()
        self.assertIsNotNone(item, "no status item on the bus")
        self.assertTrue(wait_until(item.registered, 5), "the tray did not take the item")
        return item

    def assert_label_moves(self, item, seconds=5):
        label = item.label()
        self.assertTrue(wait_until(lambda: item.label() != label, seconds), f"the label stays at {label}")
        self.assertRegex(item.label(), TIME)

    def test_the_panel_shows_the_time_as_text_that_moves_on(self):
        item = self.item_of(self.launch(speed=1))
        self.assert_label_moves(item)
        panel = Box(self.monitors[0].width - 150, 4, 150, 24)

        # The tray draws a new item a little later; then only figures change.
        changed = wait_until(lambda: (moved := self.shown_text_moves(panel)) and moved.width < 60 and moved, 10,
                             "figures that change")
        # What changed are the last figures; to their left stand two digits and a colon. Neighbours may touch.
        right = panel.x + changed.x + changed.width
        shapes = self.screen.picture(Box(right - 38, panel.y, 38, panel.height)).glyphs()
        self.assertTrue(3 <= shapes <= 6, f"{shapes} shapes in the panel are no time")

    def test_the_menu_holds_its_lines(self):
        item = self.item_of(self.launch({"pref.water.enable": True}, speed=1))
        lines = [line.properties for line in item.menu()]
        version = lines[0]["label"]
        self.assertRegex(version, r"^    Kelpa - v\d+\.\d+\.\d+\(.+\)$")
        told = ["-" if line.get("type") == "separator" else line["label"] for line in lines]
        water = told[3]
        self.assertIn(water, ("Water (0% )", "Water (0% Out of hours)"))
        self.assertEqual(told[1:], ["-", "- Stop -", water, "Settings...", "-", "Check for Updates...", "Feedback...",
                                    "About...", "Quit"])
        enabled = {label: line.get("enabled", True) for label, line in zip(told, lines)}
        self.assertFalse(enabled[version])
        self.assertTrue(enabled["- Stop -"] and enabled["Quit"])
        for label, line in zip(told, lines):
            if label not in ("-", version):
                self.assertEqual(bytes(line["icon-data"][:8]), b"\x89PNG\r\n\x1a\n", label)
        keys = {label: [list(map(str, chord)) for chord in line["shortcut"]]
                for label, line in zip(told, lines) if "shortcut" in line}
        self.assertEqual(keys, {"- Stop -": [["Control", "p"]], water: [["Control", "r"]],
                                "Settings...": [["Control", "comma"]], "Quit": [["Control", "q"]]})

    def test_the_pause_line_stops_the_time_and_starts_it_again(self):
        program = self.launch(speed=1)
        item = self.item_of(program)
        self.assert_label_moves(item)
        item.click_line(item.line("Stop").id)
        self.assertTrue(wait_until(lambda: item.line("- Wrok -"), 3))
        program.wait_for("ticktack timer stoped 1.0$", 3, times=2)
        label = item.label()
        self.settle(1.2)    # over what would be the next tick
        self.assertEqual(item.label(), label)
        item.click_line(item.line("Wrok").id)
        self.assertTrue(wait_until(lambda: item.line("- Stop -"), 3))
        program.wait_for(f"ticktack timer start {WORK}$", 3, times=2)
        self.assert_label_moves(item)

    def test_it_speaks_chinese(self):
        item = self.item_of(self.launch(speed=1, environment={"LANGUAGE": "zh_CN"}))
        told = [line.properties.get("label") for line in item.menu()]
        for text in ("- 停止 -", "设置...", "检查更新...", "反馈...", "关于...", "退出"):
            self.assertIn(text, told)

    def test_the_idle_program_is_small(self):
        program = self.launch({"pref.work.time": 25}, speed=1)
        self.assert_label_moves(self.item_of(program))
        with open(f"/proc/{program.process.pid}/maps", encoding="utf-8") as maps:
            mapped = maps.read()
        for library in ("Qt", "EGL", "LLVM", "libGL"):
            self.assertNotIn(library, mapped)
        self.assertEqual(self.helpers(program), [])

    def test_the_log_goes_to_the_terminal_and_to_the_days_file(self):
        program = self.launch(speed=1)
        program.wait_for("sandbox home path: .*/app.orvane.Kelpa$", 5)
        files = program.log_files()
        self.assertEqual(len(files), 1)
        told = files[0].read_text().splitlines()
        self.assertIn("~~hello Kelpa~~", told[0] if len(told) < 20 else "\n".join(told))
        self.assertEqual([line for line in program.lines() if " app.orvane.Kelpa :" in line],
                         told[-len(program.lines()):])


class Clicks(DesktopTest):
    """A host that leaves the clicks on the item to the program. Here it is the test."""

    def setUp(self):
        self.program = self.launch(speed=1)
        self.item = self.program.item()
        self.assertTrue(wait_until(self.item.registered, 5))

    def click(self, how="Activate"):
        self.session.call(self.item.name, self.item.path, "org.kde.StatusNotifierItem", how,
                          GLib.Variant("(ii)", (0, 0)))

    def menus(self):
        return self.screen.titled_all("Kelpa", height=100)

    def test_the_menu_opens_at_the_pointer_and_a_line_can_be_chosen(self):
        self.screen.move(300, 200)
        self.click()
        menu = wait_until(self.menus, 5, "the menu")[0]
        self.assertLessEqual(abs(menu.x - 300) + abs(menu.y - 200), 4)
        within_its_frame = Box(menu.x + 3, menu.y + 3, menu.width - 6, menu.height - 6)
        wait_until(lambda: self.screen.picture(within_its_frame).lines() >= 7, 3, "seven lines in the menu")
        for key in ("Down", "Return"):      # the first line that can be chosen stops the work period
            self.screen.press(key)
        self.program.wait_for("ticktack timer stoped 1.0$", 3, times=2)
        wait_until(lambda: not self.helpers(self.program), 5, "the menu's program to end")

    def test_a_click_beside_it_closes_it(self):
        self.screen.move(300, 200)
        self.click("ContextMenu")
        menu = wait_until(self.menus, 5, "the menu")[0]
        self.screen.click(menu.x + menu.width + 50, menu.y + 20)
        wait_until(lambda: not self.helpers(self.program), 5, "the menu's program to end")

    def test_a_second_click_before_it_is_there_leaves_it_open_to_one_beside_it(self):
        self.screen.move(300, 200)
        self.click()
        wait_until(lambda: self.helpers(self.program), 5, "the menu's program")
        self.click()
        menu = wait_until(self.menus, 5, "the menu")[0]
        self.settle(0.5)    # over the time in which the second click is answered
        self.screen.click(menu.x + menu.width + 50, menu.y + 20)
        wait_until(lambda: not self.helpers(self.program), 5, "the menu's program to end")

    def test_it_waits_for_the_end_of_the_click(self):
        """Some hosts tell of a click as soon as the button is down, and hold the pointer until it is up."""
        self.screen.move(300, 200)
        self.screen.hold_pointer(True)
        self.click()
        wait_until(lambda: self.helpers(self.program), 5, "the menu's program")
        self.settle(0.3)
        self.assertEqual(self.menus(), [])
        self.screen.hold_pointer(False)
        wait_until(self.menus, 5, "the menu")


if __name__ == "__main__":
    main()
