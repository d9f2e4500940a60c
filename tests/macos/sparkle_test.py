#!/usr/bin/python3
"""A build with Sparkle: how it is set up, and when it is asked."""
from macos_support import PROGRAM, MacTest, main


class Sparkle(MacTest):
    executable = PROGRAM.parents[1] / "Sparkle/Kelpa.app/Kelpa"

    def test_it_is_made_once_and_asked_by_the_menu(self):
        for on in (True, False):
            program = self.launch({"auto_check_update": on})
            self.assertEqual(program.notes("updater", "automatic checks", "check interval", "system profile", "check"),
                             [{"what": "updater", "started": True}, {"what": "automatic checks", "on": on},
                              {"what": "check interval", "seconds": 43200}, {"what": "system profile", "on": True}])
            program.choose("Check for Updates...")
            self.assertEqual(program.notes("check"), [{"what": "check"}])
            self.assertEqual(program.windows(), [])


if __name__ == "__main__":
    main()
