"""The program's status item as a tray host sees it on the bus."""
import collections

from gi.repository import GLib

ITEM = "org.kde.StatusNotifierItem"
WATCHER = "org.kde.StatusNotifierWatcher"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"

Line = collections.namedtuple("Line", "id properties")


class StatusItem:
    def __init__(self, session, name, path="/StatusNotifierItem"):
        self.session, self.name, self.path = session, name, path

    @classmethod
    def of_process(cls, session, pid):
        """The item of a process; nothing as long as it has none on the bus."""
        names = session.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames")[0]
        for name in names:
            if name.startswith(f"{ITEM}-{pid}-"):
                return cls(session, name)
        return None

    def registered(self):
        """Whether the tray's service lists the item, which it does not before it is there itself."""
        if not self._ask_bus("NameHasOwner", WATCHER):
            return False
        items = self._get(WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems")
        return any(item.startswith((self.name, self._ask_bus("GetNameOwner", self.name))) for item in items)

    def _ask_bus(self, method, name):
        return self.session.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", method,
                                 GLib.Variant("(s)", (name,)))[0]

    def _get(self, name, path, interface, key):
        return self.session.call(name, path, PROPERTIES, "Get", GLib.Variant("(ss)", (interface, key)))[0]

    def get(self, key):
        return self._get(self.name, self.path, ITEM, key)

    def label(self):
        return self.get("XAyatanaLabel")

    # The menu

    def menu_path(self):
        return self.get("Menu")

    def menu_call(self, method, arguments):
        return self.session.call(self.name, self.menu_path(), MENU, method, arguments)

    def menu(self):
        """The lines of the menu from top to bottom."""
        _, (_, _, children) = self.menu_call("GetLayout", GLib.Variant("(iias)", (0, -1, [])))
        return [Line(number, properties) for number, properties, _ in children]

    def line(self, label):
        """The first line whose label contains a text."""
        for line in self.menu():
            if label in line.properties.get("label", ""):
                return line
        return None

    def click_line(self, number):
        self.menu_call("Event", GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("i", 0), 0)))
