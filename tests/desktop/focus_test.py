#!/usr/bin/python3
"""The keyboard around a break: no key reaches what lies beneath, and afterwards everything is as it was."""
from pathlib import Path

from support import WORK, DesktopTest, main, wait_until
from virtual_desktop import break_windows, wait_for_cover, wait_for_uncover


class Focus(DesktopTest):
    COMPOSITOR = True

    def test_a_terminal_gets_what_is_typed_before_and_after_and_nothing_in_between(self):
        typed = Path(self.session.folder) / "typed"
        self.session.spawn(["xterm", "-T", "terminal", "-e", f"cat >{typed}"])
        wait_until(lambda: self.screen.titled(lambda title: title == "terminal"), 10, "the terminal")
        wait_until(lambda: self.screen.focus() == "terminal", 5, "the terminal to have the keyboard")
        wait_until(typed.exists, 5, "the terminal's program")

        program = self.launch()
        self.screen.type("before")
        self.screen.press("Return")
        wait_until(lambda: typed.read_text() == "before\n", 3, "the first line")

        wait_for_cover(self.session, self.monitors, 15)
        self.screen.type("at once")
        for key in ("Return", "Escape"):
            self.screen.press(key)
        self.settle(2.5)    # from now on keys are meant for the break screen
        self.screen.type("during")
        for key in ("Return", "space", "Return"):
            self.screen.press(key)
        self.settle(1)
        self.assertEqual(program.count("skip break view"), 0, "a key ended the break")
        self.assertEqual(len(break_windows(self.session)), 2)
        self.assertEqual(typed.read_text(), "before\n")

        self.screen.press("Escape")    # what Skip does
        program.wait_for("skip break view$", 3)
        program.wait_for(f"ticktack timer start {WORK}$", 3, times=2)
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the keyboard to come back to the terminal")
        wait_for_uncover(self.session, 4)
        self.screen.type("after")
        self.screen.press("Return")
        wait_until(lambda: typed.read_text() != "before\n", 3)
        self.assertEqual(typed.read_text(), "before\nafter\n")


if __name__ == "__main__":
    main()
