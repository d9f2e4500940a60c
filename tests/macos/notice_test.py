#!/usr/bin/python3
"""A word before a break, in the notification centre."""
from macos_support import MacTest, main

SETTINGS = {"pref.work.time": 2, "pref.break.notice": 30, "pref.break.more": 3, "stop_timer_after_mouse_stop": False}


class Notice(MacTest):
    def told(self, program):
        """What was notified and taken away since it was last asked for."""
        told = program.notes("notification", "notification gone")
        for note in told:
            if "request" in note:
                category, = note["categories"]
                self.assertEqual(note["request"]["content.categoryIdentifier"], category["identifier"])
                note.update(actions=[[action["identifier"], action["title"]] for action in category["actions"]],
                            words=(note["request"]["content.title"], note["request"]["content.body"]))
        return told

    def test_it_comes_and_its_buttons_do_what_they_say(self):
        program = self.launch(SETTINGS)
        program.pass_time(89)
        self.assertEqual(self.told(program), [])
        program.pass_time(2)
        word, = self.told(program)
        self.assertEqual(word["words"], ("A short break is near", "It begins in 30 seconds."))
        self.assertEqual(word["actions"], [["start", "Start now"], ["more", "3 more minutes"]])
        program.ask("pressAction", action="more")
        program.ask("pressAction", action="start")     # a second press comes too late
        self.assertEqual(self.told(program), [{"what": "notification gone"}])
        self.assertEqual(program.title(), "03:00")
        program.pass_time(151)
        self.assertEqual(len(self.told(program)), 1)
        program.ask("pressAction", action="start")
        program.pass_time(2)
        self.assertEqual(len(program.breaks()), 1)
        self.assertEqual(self.told(program), [{"what": "notification gone"}])

    def test_it_goes_with_the_work(self):
        program = self.launch(SETTINGS)
        program.pass_time(91)
        self.assertEqual(len(self.told(program)), 1)
        program.choose("- Stop -")
        self.assertEqual(self.told(program), [{"what": "notification gone"}])
        program.ask("pressAction", action="start")
        program.pass_time(5)
        self.assertEqual(program.breaks(), [])

    def test_who_allows_none_has_breaks_and_a_line_in_the_log(self):
        program = self.launch(SETTINGS, KELPA_TEST_NO_NOTIFICATIONS="yes")
        program.pass_time(123)
        self.assertEqual(self.told(program), [])
        self.assertEqual(len(program.breaks()), 1)
        self.assertIn("The notification is not shown: the user does not allow notifications", program.log())


if __name__ == "__main__":
    main()
