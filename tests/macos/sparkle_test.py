#!/usr/bin/python3
"""A build with Sparkle: how it is set up, and when it is asked."""
from macos_support import PROGRAM, MacTest, main


class Sparkle(MacTest):
    executable = PROGRAM.parents[1] / "Sparkle/Kelpa.app/Kelpa"

    def test_it_is_made_once_and_asked_by_the_menu(self):
        for on in (True, False):
            program = self.launch({"auto_check_update": on})
            self.assertEqual(program.ask("live").get("SPUUpdater"), 1)
            self.assertEqual(program.notes("check"), [])
            program.choose("Check for Updates...")
            self.assertEqual(program.notes("check"), [{"what": "check", "started": True, "automaticallyChecksForUpdates": on,
                                                        "updateCheckInterval": 43200, "sendsSystemProfile": True}])
            self.assertEqual(program.ask("live").get("SPUUpdater"), 1)
            self.assertEqual(program.windows(), [])


if __name__ == "__main__":
    main()
