#!/usr/bin/python3
"""Breaks under a Wayland compositor: what covers the outputs, how it fades, who gets the keys, and how it ends."""
import os

from wayland_support import WALLPAPER, Monitor, NestedWaylandSession, WaylandTest, main, wait_until


class Break(WaylandTest):
    def test_every_output_is_covered_fades_in_and_counts_down(self):
        program = self.launch()
        seen = []

        def faded_in():
            seen.append(self.screen.picture(self.monitors[1]).pixel(5, 5))
            return self.light(seen[-1])

        wait_until(faded_in, 15, "the break")
        between = [colour for colour in seen if colour != WALLPAPER and not self.light(colour)]
        self.assertGreaterEqual(len(between), 3, "it did not fade")
        self.assertEqual(seen, sorted(seen), "it flickered")
        self.wait_for_cover()
        for monitor in self.monitors:
            self.check_countdown(monitor)
        self.assertEqual(program.count("warning .* kelpa-view"), 0, program.lines())

    def test_skip_on_one_output_ends_the_break_everywhere_and_the_next_one_comes(self):
        program = self.launch()
        for number, monitor in enumerate(reversed(self.monitors), 1):
            self.wait_for_cover()
            self.skip(monitor)
            program.wait_for("skip break view$", 3, times=number)
            self.wait_for_uncover()
        self.assertEqual(len(self.helpers(program)), 1, "another view was needed")

    def test_no_key_reaches_a_terminal_and_tab_and_return_skip(self):
        typed = self.start_terminal()
        program = self.launch()
        self.type_line("before")
        wait_until(lambda: typed.read_text() == "before\n", 3, "the first line")
        wait_until(lambda: self.screen.picture(self.monitors[0]).pixel(5, 5) not in (WALLPAPER, (0x24, 0x24, 0x24)), 10)
        self.wait_for_cover()
        self.type_line("during")
        self.settle(2)      # from now on keys are meant for the break screen
        self.type_line("during")
        self.assertEqual(program.count("skip break view"), 0, "a key ended the break")
        for key in ("Tab", "Tab", "Return"):
            self.session.input.press(key)
        program.wait_for("skip break view$", 3)
        self.type_line("after")
        wait_until(lambda: typed.read_text() == "before\nafter\n", 1.5, "the keyboard back before the fade has ended")

    def test_scaled_outputs_are_covered_to_their_edges(self):
        for monitor, scale in zip(self.monitors, (2, 1.5)):
            self.session.command(f"output {monitor.name} scale {scale}")
            self.addCleanup(self.session.command, f"output {monitor.name} scale 1")
        program = self.launch()
        self.wait_for_cover()
        for monitor in self.monitors:
            self.assertEqual(self.screen.picture(monitor).width, monitor.width)
            self.check_countdown(monitor)
        # A change during the break.
        self.session.command(f"output {self.monitors[0].name} scale 1")
        self.session.move(5, 590)   # a pointer beside the figures would look like one more
        self.settle(1)
        self.wait_for_cover()
        self.check_countdown(self.monitors[0])
        program.process.terminate()
        self.assertEqual(program.process.wait(5), 0)
        self.wait_for_uncover()


class Outputs(WaylandTest):
    SESSION = NestedWaylandSession

    def test_one_that_comes_is_covered_and_one_that_goes_takes_its_window_along(self):
        typed = self.start_terminal()
        program = self.launch()
        self.wait_for_cover()
        third = Monitor("X11-3", 1600, 0, 640, 480)
        self.session.add_output(third)
        self.wait_for_cover([third], 5)
        self.check_countdown(third)
        # In turn, so that whichever had the keyboard is among them.
        for gone in (third, self.monitors[0]):
            self.session.remove_output(gone)
            self.settle(0.5)
            self.assertTrue(self.covered(self.monitors[1]))
            self.type_line("during")
        fourth = Monitor("X11-4", 0, 0, 800, 600)
        self.session.add_output(fourth)
        self.wait_for_cover([fourth], 5)
        self.type_line("during")
        self.assertEqual(typed.read_text(), "")
        self.assertEqual(len(self.helpers(program)), 1)
        self.skip(fourth)
        program.wait_for("skip break view$", 3)
        wait_until(lambda: self.uncovered(fourth) and self.uncovered(self.monitors[1]), 6, "the end of the break")


class NoOutput(WaylandTest):
    SESSION = NestedWaylandSession
    MONITORS = 1

    def setUp(self):
        self.session.remove_output(self.monitors[0])

    def plug_in(self):
        """The compositor gives the next number to each."""
        place = int(self.monitors[0].name.removeprefix("X11-")) + 1
        self.monitors[0] = self.monitors[0]._replace(name=f"X11-{place}")
        self.session.add_output(self.monitors[0])
        return self.monitors[0]

    def test_the_first_one_that_comes_is_covered_by_the_break(self):
        program = self.launch({"pref.water.enable": True})
        program.wait_for("ticktack timer start 3000$", 15)
        self.settle(1)
        output = self.plug_in()
        self.wait_for_cover([output], 5)
        self.check_countdown(output)
        self.skip(output)
        program.wait_for("skip break view$", 3)
        self.wait_for_uncover()

    def test_the_water_panel_comes_to_the_first_one_that_comes(self):
        program = self.launch({"pref.water.enable": True, "pref.work.time": 60}, speed=1)
        program.item()
        self.session.run_tool(str(program.executable), "water")
        self.settle(1)
        output = self.plug_in()
        wait_until(lambda: self.light(self.screen.picture(output).pixel(output.width - 140, 24)), 5, "the panel")
        self.assertFalse(self.light(self.screen.picture(output).pixel(output.width - 300, 24)))
        self.assertFalse(program.ended())


class Crash(WaylandTest):
    def test_a_compositor_that_dies_ends_the_program(self):
        program = self.launch()
        self.wait_for_cover()
        view = self.helpers(program, "kelpa-view")
        self.assertEqual(len(view), 1)
        self.session.kill_compositor()
        self.assertEqual(program.process.wait(5), 0)
        wait_until(lambda: not os.path.exists(f"/proc/{view[0]}"), 3, "the view to end")
        self.session.restart()
        self.launch()
        self.wait_for_cover()


if __name__ == "__main__":
    main()
