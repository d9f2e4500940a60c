#!/usr/bin/python3
"""Light or dark, in whose colours and how large: what the program takes from a desktop, each of which tells it in its own
way."""
import struct
from pathlib import Path

from Xlib import X
from Xlib.protocol import event

from support import DOUBLE, Box, DesktopTest, main, wait_until
from virtual_desktop import wait_for_still

LIGHT, DARK = (0xf1, 0xf2, 0xf4), (0x1e, 0x1f, 0x22)
PORTAL = "org.freedesktop.portal.Settings"
SCHEME = ("org.freedesktop.appearance", "color-scheme")


class SettingsProgram:
    """What publishes a desktop's settings: here nothing but the name of a theme."""

    def __init__(self, screen, theme):
        self.screen, self.intern = screen, screen.display.intern_atom
        self.window = screen.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.publish(theme)
        selection = self.intern("_XSETTINGS_S0")
        self.window.set_selection_owner(selection, X.CurrentTime)
        announcement = event.ClientMessage(window=screen.root, client_type=self.intern("MANAGER"),
                                           data=(32, [X.CurrentTime, selection, self.window.id, 0, 0]))
        screen.root.send_event(announcement, event_mask=X.StructureNotifyMask)
        screen.display.sync()

    def publish(self, theme):
        name, value = b"Net/ThemeName", theme.encode()
        atom = self.intern("_XSETTINGS_SETTINGS")
        self.window.change_property(atom, atom, 8, b"".join((
            struct.pack("<Bxxx I I", 0, 1, 1), struct.pack("<BxH", 1, len(name)), name.ljust(16, b"\0"),
            struct.pack("<II", 1, len(value)), value.ljust(-len(value) % 4 + len(value), b"\0"))))
        self.screen.display.sync()

    def end(self):
        self.window.destroy()
        self.screen.display.sync()


class AppearanceTest(DesktopTest):
    MONITORS = ROOM = 1
    TRAY = False
    THEMES = {"Coal": ("#3b3b3e", "#d4d4d4"), "NotDark": ("#f6f6f6", "#101010")}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for name, (paper, ink) in cls.THEMES.items():
            folder = Path(cls.session.environment["HOME"], ".themes", name, "gtk-2.0")
            folder.mkdir(parents=True)
            (folder / "gtkrc").write_text(f'gtk-color-scheme = "bg_color:{paper}\\nfg_color:{ink}"\n')

    def settings(self, theme):
        program = SettingsProgram(self.screen, theme)
        self.addCleanup(program.end)
        return program

    def portal(self, scheme):
        """A portal that answers so, wrapped twice as portals do; gives what has it tell of another scheme."""
        name, path = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
        call = self.mock(name, path, name, path, PORTAL)
        answer = f"ret = dbus.UInt32({scheme}, variant_level=2) if tuple(args) == {SCHEME} else None"
        call("AddMethod", PORTAL, "Read", "ss", "v", answer, interface=DOUBLE)
        return lambda other: call("EmitSignal", PORTAL, "SettingChanged", "ssv",
                                  f"[<'{SCHEME[0]}'>, <'{SCHEME[1]}'>, <uint32 {other}>]",
                                  interface=DOUBLE)


class Breaks(AppearanceTest):
    def wait_for_paper(self, colour, what):
        wait_until(lambda: self.screen.picture(self.monitors[0]).background() == colour, 5, what)

    def test_it_follows_the_portal(self):
        tell = self.portal(1)
        self.begin_break(appearance="")
        self.wait_for_paper(DARK, "what the portal answers")
        for scheme, colour in ((2, LIGHT), (1, DARK), (0, LIGHT)):
            tell(scheme)
            self.wait_for_paper(colour, f"scheme {scheme}")

    def test_whoever_chooses_is_obeyed(self):
        program = self.settings("Coal")
        for theme, chosen, colour in (("Coal", "light", LIGHT), ("NotDark", "dark", DARK)):
            with self.subTest(theme, chosen=chosen):
                program.publish(theme)
                kelpa = self.begin_break(appearance=chosen)
                wait_for_still(self.screen, self.below_the_count())
                self.assertEqual(self.screen.picture(self.monitors[0]).background(), colour)
                self.finish(kelpa)

    def test_a_theme_that_changes_while_a_window_shows(self):
        self.begin_break(appearance="")
        self.wait_for_paper(LIGHT, "the colours of a desktop without settings")
        program = self.settings("Coal")
        self.wait_for_paper(DARK, "the colours of settings that came after the window")
        program.publish("NotDark")
        self.wait_for_paper(LIGHT, "the colours of another theme")
        program.publish("Nowhere-dark")
        self.wait_for_paper(DARK, "the colours that go with a name")
        program.publish("NotDark")
        self.wait_for_paper(LIGHT, "the colours of another theme")
        # Another program takes the settings over.
        self.settings("Coal")
        self.wait_for_paper(DARK, "the colours of another program's settings")
        program.publish("NotDark")
        for _ in range(2):      # what it draws from now on
            self.assertTrue(self.shown_text_moves(self.monitors[0]))
        self.wait_for_paper(DARK, "the colours of the program that is in charge")


class Scaled(DesktopTest):
    # 701 and 603 are no multiples of anything: a scaled window must still reach every edge.
    WIDTH, HEIGHT = 701, 603
    TRAY = False

    def test_every_pixel_is_covered_at_any_scale(self):
        for factor in ("1.25", "1.5", "1.75", "2", "2.25"):
            with self.subTest(factor=factor):
                program = self.begin_break(QT_SCALE_FACTOR=factor)
                for monitor in self.monitors:
                    wait_until(lambda: self.edges(monitor) == {LIGHT}, 1)
                    self.assertEqual(self.edges(monitor), {LIGHT})
                self.finish(program)

    def edges(self, monitor):
        """The colours along the edges of a monitor."""
        page = self.screen.picture(monitor)
        return ({page.pixel(x, y) for x in (0, self.WIDTH - 1) for y in range(self.HEIGHT)} |
                {page.pixel(x, y) for x in range(self.WIDTH) for y in (0, self.HEIGHT - 1)})


class Menu(AppearanceTest):
    """The menu of the icon in an old tray."""

    def setUp(self):
        self.start_old_tray()

    def menu_of(self, keys=(), **environment):
        """A picture of the opened menu, without its frame, once keys were pressed in it."""
        program = self.launch(speed=1, environment=environment)
        icon = self.docked()
        self.screen.click(icon.x + 5, icon.y + 5)
        window = wait_until(lambda: self.screen.titled_all("Kelpa", height=60), 5, "the menu")[0]
        self.screen.press(*keys)
        picture = wait_for_still(self.screen, Box(window.x + 3, window.y + 3, window.width - 6, window.height - 6))
        self.finish(program)
        return picture

    def assert_drawn(self, menu, paper, ink):
        self.assertLess(max(abs(a - b) for a, b in zip(menu.background(), paper)), 24, menu.background())
        reached = max if sum(ink) > sum(paper) else min
        text = reached(menu.colours(), key=sum)
        self.assertLess(max(abs(a - b) for a, b in zip(text, ink)), 24, text)

    def test_its_colours_are_the_themes(self):
        self.settings("Coal")
        self.assert_drawn(self.menu_of(), (0x3b, 0x3b, 0x3e), (0xd4, 0xd4, 0xd4))

    def test_its_colours_are_those_that_were_chosen_for_lxqt(self):
        folder = Path(self.session.environment["HOME"], ".config/lxqt")
        folder.mkdir(parents=True)
        (folder / "lxqt.conf").write_text("[General]\n[Palette]\nwindow_color=#20282c\nwindow_text_color=#e8e0d8\n"
                                          "highlight_color=#339b7e\nhighlighted_text_color=#c0ffc0\n")
        self.settings("Adwaita")
        menu = self.menu_of(["Down"], XDG_CURRENT_DESKTOP="LXQt")
        self.assert_drawn(menu, (0x20, 0x28, 0x2c), (0xe8, 0xe0, 0xd8))
        pictures = menu.crop(Box(0, 0, 20, menu.height))
        self.assertIn((0xc0, 0xff, 0xc0), pictures.colours(), "the chosen line's picture cannot be seen on its ground")
        self.assertGreater(sum(self.menu_of().background()), 600, "another desktop")

    def test_it_is_dark_where_the_portal_says_so_from_its_first_picture_on(self):
        self.settings("NotDark")
        self.portal(1)
        menu = self.menu_of()
        self.assertLess(sum(menu.background()), 200)
        self.assertGreater(max(map(sum, menu.colours())), 600)


if __name__ == "__main__":
    main()
