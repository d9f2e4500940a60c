#!/usr/bin/python3
"""The installed program on a virtual desktop: it finds its helpers, texts and pictures, and the desktop finds it.

KELPA_PROGRAM names the program in the folder of an installation; /usr/bin/kelpa where it is not set.
"""
import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "desktop"))
os.environ.setdefault("KELPA_PROGRAM", "/usr/bin/kelpa")

from support import DesktopTest, main, wait_until  # noqa: E402
from virtual_desktop import wait_for_cover  # noqa: E402


class Installed(DesktopTest):
    MONITORS = 1
    ROOM = 1

    def test_the_tray_shows_the_item_and_its_menu_speaks_the_users_language(self):
        program = self.launch({"pref.work.time": 60}, environment={"LANGUAGE": "de"})
        item = program.item()
        wait_until(item.registered, 10, "the tray to take the item")
        wait_until(lambda: item.label().startswith("59:"), 10, "the time left")
        self.assertTrue(item.line("Beenden"), item.menu())
        theme = Path(item.get("IconThemePath"))
        self.assertTrue(theme.is_relative_to(program.executable.parents[1] / "share/kelpa"), theme)
        self.assertTrue(list(theme.glob(f"**/{item.get('IconName')}.svg")), theme)
        self.assertRegex(self.session.run_tool(str(program.executable), "status").stdout, "^working 59:")
        item.click_line(item.line("Beenden").id)
        self.assertEqual(program.process.wait(10), 0)

    def test_a_break_covers_the_screen_and_work_goes_on_after_it(self):
        program = self.launch({"pref.break.time": 100})
        window = wait_for_cover(self.session, self.monitors)[0]
        before = self.screen.picture(window)
        self.assertTrue(wait_until(lambda: before.differs(self.screen.picture(window)), 5), "nothing moves")
        wait_until(lambda: program.item().label() != "", 30, "the next work period")


class InAnOldTray(DesktopTest):
    MONITORS = 1
    ROOM = 1
    TRAY = False

    def test_the_icon_is_embedded(self):
        self.session.spawn(["trayer"])
        wait_until(lambda: self.screen.selection_owned("_NET_SYSTEM_TRAY_S0"), 10, "the old tray")
        self.launch({"pref.work.time": 60})
        wait_until(self.screen.embedded, 20, "the icon")


if __name__ == "__main__":
    main()
