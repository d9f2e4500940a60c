#!/usr/bin/python3
"""A tray of the older kind as small bars have it: dark, with one slot of a fixed size whatever an icon asks for."""
import argparse

from Xlib import X, Xatom, display
from Xlib.protocol import event

DARK, DEEP = 0x202428, 32


class NarrowTray:
    def __init__(self, slot, translucent):
        self.display = display.Display()
        self.screen = self.display.screen()
        self.slot = slot
        self.selection = self.atom(f"_NET_SYSTEM_TRAY_S{self.display.get_default_screen()}")
        # Whoever asks for another size is refused without a word.
        self.bar = self.screen.root.create_window(
            0, 0, self.screen.width_in_pixels, slot + 2, 0, X.CopyFromParent, background_pixel=DARK,
            override_redirect=True, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.bar.set_wm_name("narrow tray")
        if translucent:
            self.bar.change_property(self.atom("_NET_SYSTEM_TRAY_VISUAL"), Xatom.VISUALID, 32, [self.deep_visual()])
        self.bar.map()

    def atom(self, name):
        return self.display.intern_atom(name)

    def deep_visual(self):
        """A visual of windows that can be seen through."""
        return next(depth.visuals[0].visual_id for depth in self.screen.allowed_depths if depth.depth == DEEP)

    def announce(self):
        self.bar.set_selection_owner(self.selection, X.CurrentTime)
        data = (32, [X.CurrentTime, self.selection, self.bar.id, 0, 0])
        news = event.ClientMessage(window=self.screen.root, client_type=self.atom("MANAGER"), data=data)
        self.screen.root.send_event(news, X.StructureNotifyMask)

    def run(self):
        self.announce()
        while True:
            happened = self.display.next_event()
            if happened.type == X.ClientMessage and happened.client_type == self.atom("_NET_SYSTEM_TRAY_OPCODE"):
                self.dock(self.display.create_resource_object("window", happened.data[1][2]))
            elif happened.type == X.MapRequest:
                happened.window.map()
            elif happened.type == X.ConfigureNotify and (happened.width, happened.height) != (self.slot, self.slot):
                self.put_in_slot(happened.window)

    def dock(self, icon):
        icon.reparent(self.bar, 0, 0)
        self.put_in_slot(icon)
        icon.map()

    def put_in_slot(self, icon):
        icon.configure(x=self.screen.width_in_pixels - self.slot - 1, y=1, width=self.slot, height=self.slot)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("slot", type=int, help="width and height in pixels")
    parser.add_argument("--translucent", action="store_true", help="asks for windows that can be seen through")
    arguments = parser.parse_args()
    NarrowTray(arguments.slot, arguments.translucent).run()
