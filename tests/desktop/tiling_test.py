#!/usr/bin/python3
"""The settings on a desktop that tiles its windows and has the X server composite them, as awesome does."""
from pathlib import Path

from support import Box, DesktopTest, main, wait_until

SETTINGS = Path("/etc/xdg/awesome/rc.lua")
OPENINGS = 6


class Tiling(DesktopTest):
    MONITORS = ROOM = 1
    WIDTH, HEIGHT = 1280, 900
    TRAY = False

    @classmethod
    def start_window_manager(cls):
        own = cls.session.folder / "rc.lua"
        # Out of the box its first layout is the one that does not tile.
        own.write_text(SETTINGS.read_text().replace("awful.layout.suit.floating,", "", 1))
        cls.session.spawn(["awesome", "-c", str(own)])
        wait_until(lambda: cls.screen.property(cls.screen.root.id, "_NET_SUPPORTING_WM_CHECK") is not None, 10, "awesome")
        cls.session.spawn(["xterm", "-title", "tile"])
        wait_until(lambda: cls.shown("tile"), 10, "a window")

    @classmethod
    def shown(cls, wanted):
        return next(iter(cls.screen.titled(lambda title: title == wanted)), None)

    def test_settings_float_in_their_own_size_with_their_tabs_each_time(self):
        program = self.launch({"pref.work.time": 60}, speed=1, environment={"KELPA_APPEARANCE": "light"})
        wait_until(lambda: self.session.has_owner("app.orvane.Kelpa"), 10, "the program")
        for _ in range(OPENINGS):
            self.session.run_tool(str(program.executable), "settings")
            window = wait_until(lambda: self.shown("Settings"), 10, "the settings")
            self.settle(0.5)    # in which they are put into their frame
            window = self.shown("Settings")
            self.assertEqual((window.width, window.height), (720, 710))
            tabs = Box(window.x, window.y, window.width, 70)
            wait_until(lambda: self.screen.picture(tabs).ink_share() > 0.01, 3, "the tabs")
            self.screen.ask_to_close(window)
            wait_until(lambda: not self.shown("Settings"), 5, "the settings to close")


if __name__ == "__main__":
    main()
