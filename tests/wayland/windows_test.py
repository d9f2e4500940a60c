#!/usr/bin/python3
"""The other windows and the status item under a Wayland compositor: where they stand, and whom they leave alone."""
import os
import signal

from wayland_support import LIGHTS, Box, NestedWaylandSession, WaylandSession, WaylandTest, main, wait_until

from water_test import AMOUNT_250, BACKGROUND, CLOSE, DONE, PANEL, WaterReminder, noon_zone


class WindowsTest(WaterReminder, WaylandTest):
    def tell(self, program, command):
        program.item()      # once it is on the bus it listens
        self.session.run_tool(str(program.executable), command)

    def window(self, title):
        return wait_until(lambda: next((view for view in self.session.views() if view.title == title), None), 10, title)

    def typed(self, path, text):
        wait_until(lambda: path.read_text() == text, 3, f"{text!r} in the terminal")


class WaterTest(WindowsTest):
    def corner(self, monitor=None):
        """Where the panel's upper left corner stands on an output, or nothing while it is not whole."""
        picture = self.screen.picture(monitor or self.monitors[0])
        lights = {red << 16 | green << 8 | blue for red, green, blue in LIGHTS}
        lines = [memoryview(picture.row(y)).cast("I") for y in range(picture.height)]
        rows = [y for y, line in enumerate(lines) if not lights.isdisjoint(line)]
        if not rows or rows[0] + 20 >= picture.height:
            return None
        columns = [x for x, value in enumerate(lines[rows[0] + 20]) if value in lights]
        # A line that is not of that colour surrounds it.
        return (columns[0] - 1, rows[0] - 1) if len(rows) > PANEL[1] * 0.9 else None

    def wait_for_panel(self):
        return wait_until(self.corner, 12, "the panel")

    def click_in(self, place):
        self.screen.click(self.corner()[0] + place[0], self.corner()[1] + place[1])
        self.session.move(5, 590)

    def gone(self):
        wait_until(lambda: self.uncovered(self.monitors[0]), 4, "the panel to close")

    def stands_at(self, monitor, x, y):
        def there():
            corner = self.corner(monitor)
            return corner and abs(corner[0] - x) <= 1 and abs(corner[1] - y) <= 1

        wait_until(there, 10, f"the panel at {x}, {y} of {monitor.name}")


class WaterPanel(WaterTest):
    def test_it_fades_in_at_the_corner_is_dragged_and_answered(self):
        program = self.start(2)
        corner = self.wait_for_panel()
        right = self.monitors[0].width - PANEL[0]
        self.assertAlmostEqual(corner[0], right, delta=1)
        self.assertAlmostEqual(corner[1], 0, delta=1)
        self.assertTrue(self.uncovered(self.monitors[1]))
        self.wait_for_rest(self.monitors[0])
        self.session.drag(corner[0] + BACKGROUND[0], corner[1] + BACKGROUND[1], -200, 120)
        self.stands_at(self.monitors[0], corner[0] - 200, corner[1] + 120)
        moved = self.corner()
        # No farther than the screen goes.
        self.session.drag(moved[0] + BACKGROUND[0], moved[1] + BACKGROUND[1], 0, -300)
        self.stands_at(self.monitors[0], moved[0], 0)
        self.click_in(AMOUNT_250)
        self.wait_stored(program, "pref.water.lastSelectedAmount", 250)
        self.click_in(DONE)
        self.wait_stored(program, "pref.water.finished", 1250)
        self.gone()

    def test_it_stands_in_the_corner_of_an_output_that_is_there_or_where_it_was_dragged(self):
        first = self.monitors[0]
        self.addCleanup(self.session.command, f"output {first.name} mode {first.width}x{first.height}")
        program = self.start()
        self.tell(program, "water")
        self.stands_at(first, first.width - PANEL[0], 0)
        self.session.command(f"output {first.name} mode 640x480")
        self.stands_at(first, 640 - PANEL[0], 0)
        self.session.drag(640 - PANEL[0] + BACKGROUND[0], BACKGROUND[1], -100, 50)
        place = (640 - PANEL[0] - 100, 50)
        self.stands_at(first, *place)
        self.click_in(CLOSE)
        self.gone()
        os.kill(self.helpers(program, "kelpa-view")[0], signal.SIGKILL)
        wait_until(lambda: not self.helpers(program, "kelpa-view"), 5, "the view to end")
        self.tell(program, "water")
        self.stands_at(first, *place)
        self.session.command(f"output {first.name} mode 500x480")
        self.stands_at(first, 500 - PANEL[0], 0)
        self.session.command(f"output {first.name} mode 640x480")
        self.stands_at(first, *place)

    def test_it_leaves_the_keys_where_they_are_until_it_is_clicked(self):
        typed = self.start_terminal("typed-at-water")
        program = self.start(2)
        self.wait_for_panel()
        self.wait_for_rest(self.monitors[0])
        self.type_line("mine")
        self.typed(typed, "mine\n")
        self.click_in(BACKGROUND)
        self.settle(1.2)    # keys that come at once were meant for something else
        self.press_until_heard("Tab")
        for key in ("Tab", "Right"):
            self.session.input.press(key)
        self.wait_stored(program, "pref.water.lastSelectedAmount", 200)
        self.session.input.press("Escape")
        self.gone()
        self.type_line("again")
        self.typed(typed, "mine\nagain\n")

    def press_until_heard(self, key):
        """The panel is deaf for a second from when it has the keyboard, which nobody else sees."""
        place = Box(*self.corner(), *PANEL)

        def panel():
            return self.screen.picture(self.monitors[0]).crop(place)

        before = panel()
        for _ in range(5):
            self.session.input.press(key)
            self.settle(0.7)    # in which the ring of the focus would show
            if before.differs(panel()):
                return
        self.fail("the panel hears no key")

    def test_without_layers_it_is_a_window_of_its_size(self):
        self.start(2, environment={"KELPA_LAYER_SHELL": "no"})
        panel = self.window("Water Reminder")
        self.assertEqual((panel.app_id, panel.width, panel.height), ("app.orvane.Kelpa", *PANEL))
        self.assertFalse(panel.fullscreen)


class UnderBars(WaterTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.session.start_high_bar()

    def test_no_bar_hides_its_upper_edge(self):
        program = self.start()
        self.tell(program, "water")
        self.stands_at(self.monitors[0], self.monitors[0].width - PANEL[0], 0)
        self.click_in(CLOSE)
        self.gone()

    def test_a_break_is_above_it_whichever_came_first(self):
        program = self.launch({"pref.water.enable": True, "pref.work.time": 2}, environment={"TZ": noon_zone()})
        self.wait_for_cover()
        self.settle(1)      # in which both outputs end their fades
        wait_until(self.shows_nothing_but_the_break, 3, "the break")
        self.tell(program, "water")
        self.settle(1)      # in which the panel would come
        self.assertTrue(self.shows_nothing_but_the_break())
        self.skip(self.monitors[1])
        program.wait_for("skip break view$", 5)
        self.stands_at(self.monitors[0], self.monitors[0].width - PANEL[0], 0)
        self.wait_for_cover()
        wait_until(self.shows_nothing_but_the_break, 3, "the next break above it")

    def shows_nothing_but_the_break(self):
        """Where the panel stands, down to the break's figures (at 299), which each output paints in its own time."""
        place = Box(self.monitors[0].width - PANEL[0], 0, PANEL[0], 290)
        first, second = (self.screen.picture(monitor).crop(place).data for monitor in self.monitors)
        # A level or two can be left of what a fade ends above.
        return all(abs(a - b) <= 4 for a, b in zip(first, second))


class Undocked(WaterTest):
    SESSION = NestedWaylandSession

    def test_it_leaves_an_output_that_goes_and_follows_the_one_that_stays(self):
        first, second = self.monitors
        program = self.start()
        self.tell(program, "water")
        self.stands_at(first, first.width - PANEL[0], 0)
        self.session.remove_output(first)
        self.stands_at(second, second.width - PANEL[0], 0)
        self.session.command(f"output {second.name} position 0 0")
        self.tell(program, "water")
        self.stands_at(second, second.width - PANEL[0], 0)


class Managed(WindowsTest):
    class SESSION(WaylandSession):
        def __init__(self, outputs):
            super().__init__(outputs, 1000, 860)

    def test_preferences_are_an_ordinary_window_that_clicks_and_keys_work_in(self):
        program = self.start()
        self.tell(program, "settings")
        window = self.window("Settings")
        self.assertEqual(window.app_id, "app.orvane.Kelpa")
        self.assertLess(window.width, self.monitors[0].width - 100, "it is a tile")
        self.session.command('[title="Settings"] resize set 600 px 500 px')
        wait_until(lambda: abs(self.window("Settings").width - 600) < 8, 3, "another size")
        self.session.command('[title="Settings"] move absolute position 100 100')
        self.session.command('[title="Settings"] focus')
        self.settle(0.5)
        window = self.window("Settings")
        self.assertTrue(window.focused)
        self.assertGreaterEqual((window.width, window.height), (480, 400))
        self.assertNotIn("show_time_in_status_bar", self.stored(program))
        for key in ("Tab", "Tab", "space"):
            self.session.input.press(key)
        wait_until(lambda: {"launch_at_login", "show_time_in_status_bar"} & self.stored(program).keys(), 3,
                   "a switch to be stored")
        self.session.command('[title="Settings"] kill')
        wait_until(lambda: not self.session.views(), 3, "the window to close")
        self.tell(program, "settings")
        self.window("Settings")

    def test_a_click_in_a_bar_that_shows_no_menu_shows_the_preferences(self):
        bar = self.session.start_bar()
        self.addCleanup(self.session.end, bar)
        program = self.start()
        wait_until(program.item().registered, 10, "the bar to take the item")
        monitor, height = self.monitors[0], 16

        def in_the_corner():
            picture = self.screen.picture(monitor)
            return picture.crop(Box(picture.width - height, picture.height - height, height, height)).ink_box()

        wait_until(in_the_corner, 10, "the item in the bar")
        self.addCleanup(self.session.move, 5, 590)  # a pointer in the corner would hide a break's
        self.session.click(monitor.x + monitor.width - height // 2, monitor.y + monitor.height - height // 2)
        self.window("Settings")

    def test_a_break_covers_the_preferences_and_the_panel_and_has_their_keys(self):
        bar = self.session.start_bar()
        self.addCleanup(self.session.end, bar)
        program = self.launch({"pref.break.time": 6}, speed=2)
        program.wait_for("The status item is taken on the session bus", 10)
        self.assertTrue(program.item().registered())
        self.tell(program, "settings")
        self.window("Settings")
        self.wait_for_cover(seconds=40)
        program.wait_for("skip break view$", 10)
        self.wait_for_uncover(self.monitors[1:])
        self.window("Settings")


if __name__ == "__main__":
    main()
