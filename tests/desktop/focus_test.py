#!/usr/bin/python3
"""The keyboard around a break: no key reaches what lies beneath, and afterwards everything is as it was."""
from pathlib import Path

from Xlib import X, display
from support import DesktopTest, main, wait_until
from virtual_desktop import break_windows, wait_for_cover, wait_for_uncover


class Locker:
    """A screen locker: covers everything, beyond the window manager's reach."""

    def __init__(self, session):
        self.display = display.Display(session.display)
        screen = self.display.screen()
        self.window = screen.root.create_window(0, 0, screen.width_in_pixels, screen.height_in_pixels, 0, X.CopyFromParent,
                                                override_redirect=True, event_mask=X.KeyPressMask)
        self.window.map()
        self.display.sync()

    def grab(self):
        return self.window.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) == X.GrabSuccess

    def let_go(self):
        self.display.ungrab_keyboard(X.CurrentTime)
        self.display.sync()

    def take_focus(self):
        self.window.set_input_focus(X.RevertToParent, X.CurrentTime)
        self.display.sync()

    def keys(self):
        """How many key presses came since the last call."""
        self.display.sync()
        events = [self.display.next_event() for _ in range(self.display.pending_events())]
        return sum(event.type == X.KeyPress for event in events)

    def leave(self):
        self.window.unmap()
        self.display.sync()


class Focus(DesktopTest):
    COMPOSITOR = True

    def test_a_terminal_gets_what_is_typed_before_and_after_and_nothing_in_between(self):
        typed = Path(self.session.folder) / "typed"
        self.start_terminal(typed=typed)

        program = self.launch()
        self.screen.type("before")
        self.screen.press("Return")
        wait_until(lambda: typed.read_text() == "before\n", 3, "the first line")

        wait_for_cover(self.session, self.monitors, 15)
        # It can be taken only once the windows are there, a moment after which a test may be quicker.
        wait_until(lambda: not self.screen.keyboard_rests(), 3, "the keyboard to be taken", pause=0.01)
        self.screen.press("Escape")     # the first of all, while the break is surely deaf
        self.screen.type("at once")
        self.screen.press("Return")
        self.rests_with_the_break("the break to let go of the keyboard")    # from now on keys are meant for it
        self.screen.type("during")
        for key in ("Return", "space", "Return"):
            self.screen.press(key)
        self.rests_with_the_break("the break to let go of the keyboard again")
        self.assertEqual(program.count("skip break view"), 0, "a key ended the break")
        self.assertEqual(len(break_windows(self.session)), 2)
        self.assertEqual(typed.read_text(), "before\n")

        self.make_this_break_the_last(program)
        for key in ("Tab", "Tab", "Return"):    # from the link to Skip
            self.screen.press(key)
        program.wait_for("skip break view$", 5)
        wait_until(lambda: self.screen.focus() == "terminal", 1.5, "the keyboard back before the fade has ended")
        wait_for_uncover(self.session, 4)
        self.screen.type("after")
        self.screen.press("Return")
        wait_until(lambda: typed.read_text() != "before\n", 3)
        self.assertEqual(typed.read_text(), "before\nafter\n")

    # While a break shows

    def begin(self):
        """A break in which nobody has typed for a while."""
        program = self.launch()
        for window in wait_for_cover(self.session, self.monitors, 15):
            self.screen.display.create_resource_object("window", window.id).change_attributes(
                event_mask=X.FocusChangeMask)
        self.rests_with_the_break("the break to let go of the keyboard")
        return program

    def focus_was_taken(self):
        """Whether the break has lost the focus since the last call, however soon it had it back."""
        self.screen.display.sync()
        events = [self.screen.display.next_event() for _ in range(self.screen.display.pending_events())]
        return any(event.type == X.FocusOut and event.mode in (X.NotifyNormal, X.NotifyWhileGrabbed) for event in events)

    def end_with_escape(self, program):
        self.make_this_break_the_last(program)
        wait_until(lambda: self.screen.press("Escape") or program.count("skip break view$"), 5, "Escape to end the break",
                   pause=0.2)
        wait_for_uncover(self.session, 5)

    def rests_with_the_break(self, what):
        """The keyboard is let go, and the focus is with the break."""
        wait_until(lambda: self.screen.focus().isdecimal() and self.screen.keyboard_rests(), 8, what)

    def takes_and_loses_the_focus(self, what, act):
        """Does something with which another window gets the focus, and waits until the break has it back for good."""
        self.focus_was_taken()      # what took it before has nothing to do with this
        result = act()
        wait_until(self.focus_was_taken, 10, f"{what} to get the focus")
        self.rests_with_the_break(f"the focus to come back from {what}")
        return result

    def test_windows_that_open_beneath_a_break_get_no_key(self):
        program = self.begin()
        typed = Path(self.session.folder) / "typed-beneath"
        intruder = self.takes_and_loses_the_focus(
            "a new window", lambda: self.session.spawn(["xterm", "-T", "intruder", "-e", f"cat >{typed}"]))
        self.addCleanup(self.session.end, intruder)
        wait_until(typed.exists, 10, "the program of the new window")
        self.screen.type("secret")
        self.screen.press("Return")

        self.takes_and_loses_the_focus("the program's own settings",
                                       lambda: self.session.run_tool(str(program.executable), "settings"))
        window = self.screen.titled(lambda title: title == "intruder")[0]
        self.takes_and_loses_the_focus("a window that was activated", lambda: self.screen.activate(window.id))
        self.screen.type("secret")
        self.screen.press("Return")
        self.end_with_escape(program)
        self.assertEqual(typed.read_text(), "")

    def test_a_screen_locker_keeps_the_keyboard(self):
        program = self.begin()
        locker = Locker(self.session)
        self.addCleanup(locker.display.close)
        wait_until(locker.grab, 5, "the keyboard for a locker that grabs it")
        self.screen.press("Escape")
        self.assertEqual(locker.keys(), 1)
        locker.let_go()
        self.rests_with_the_break("the focus after a locker that grabbed")

        locker.take_focus()
        self.settle(1)      # longer than the focus is ever left to something else
        self.screen.press("Escape")
        self.assertEqual(locker.keys(), 1)
        self.assertEqual(program.count("skip break view$"), 0)
        locker.leave()
        self.rests_with_the_break("the focus after a locker that did not grab")
        self.make_this_break_the_last(program)
        for key in ("Tab", "space"):
            self.screen.press(key)
        program.wait_for("Click new feature: Water Reminder$", 5)
        wait_for_uncover(self.session)

    def test_the_keyboard_is_taken_as_soon_as_another_lets_it_go_and_goes_to_who_is_left(self):
        def grab():
            return self.screen.root.grab_keyboard(True, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)

        self.start_terminal()
        self.put_away("elsewhere", lambda window_id: self.screen.send_to_workspace(window_id, 1))
        self.put_away("minimised", self.screen.minimise)
        other = self.start_in_front("other")
        self.assertEqual(grab(), X.GrabSuccess)
        self.begin_break()
        self.assertEqual(grab(), X.GrabSuccess, "the keyboard was taken from who had it")
        self.screen.display.ungrab_keyboard(X.CurrentTime)
        self.screen.display.sync()
        wait_until(lambda: not self.screen.keyboard_rests(), 5, "the keyboard to be taken")
        self.session.end(other)
        self.rests_with_the_break("the break to let go of the keyboard")
        self.assertEqual(self.ask("skip")[0], 0)
        wait_for_uncover(self.session)
        wait_until(lambda: self.screen.focus() == "terminal", 3, "the keyboard to go to the terminal that is seen")
        self.assertFalse(self.screen.titled(lambda title: title in ("minimised", "elsewhere")))

    def start_in_front(self, title):
        terminal = self.session.spawn(["xterm", "-T", title])
        self.addCleanup(self.session.end, terminal)
        wait_until(lambda: self.screen.focus() == title, 10, f"the terminal {title} to have the keyboard")
        return terminal

    def put_away(self, title, how):
        """A window that lies above those that are there, but out of sight."""
        self.start_in_front(title)
        how(self.screen.titled(lambda each: each == title)[0].id)
        wait_until(lambda: not self.screen.titled(lambda each: each == title), 5, f"the terminal {title} to go")


if __name__ == "__main__":
    main()
