#!/usr/bin/python3
"""Breaks that wait while somebody is busy, by all that the system tells of that."""
from macos_support import MacTest, main

MINUTE = 60
HELD = {"pref.work.time": 1, "pref.break.hold": True, "stop_timer_after_mouse_stop": False}


class Busy(MacTest):
    def test_each_reason_holds_a_break_until_it_is_over(self):
        for reason in ("sound", "camera", "fullscreen", "awake"):
            with self.subTest(reason):
                program = self.launch(HELD)
                program.tell("busyBy", reason)
                program.pass_time(10 * MINUTE)
                self.assertEqual(program.breaks(), [])
                self.assertIn(f"the break waits: {reason}", program.log())
                program.tell("busyBy", None)
                program.pass_time(MINUTE)
                self.assertEqual(len(program.breaks()), 1)

    def test_a_reason_that_was_not_chosen_holds_nothing(self):
        program = self.launch({**HELD, "pref.break.hold.camera": False})
        program.tell("busyBy", "camera")
        program.pass_time(MINUTE + 1)
        self.assertEqual(len(program.breaks()), 1)


if __name__ == "__main__":
    main()
