"""What programs tell a screen reader: the tree of their accessible elements, read over its own bus."""
from gi.repository import Gio, GLib

from .picture import Box
from .session import wait_until

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT, ACTION, TEXT = "org.a11y.atspi.Component", "org.a11y.atspi.Action", "org.a11y.atspi.Text"
PROPERTIES = "org.freedesktop.DBus.Properties"
ON_SCREEN = 0
# Of the numbers that the protocol gives to states, those that are looked at here.
STATES = {1: "active", 4: "checked", 8: "enabled", 11: "focusable", 12: "focused", 23: "selected", 25: "showing",
          30: "visible", 41: "checkable", 43: "read only"}


class Accessibility:
    """The bus that accessible elements are told on. It must be switched on before a program starts that is to tell."""

    def __init__(self, session):
        session.spawn([LAUNCHER, "--launch-immediately"])
        wait_until(lambda: session.has_owner("org.a11y.Bus"), 10, "the accessibility bus")
        session.call("org.a11y.Bus", "/org/a11y/bus", PROPERTIES, "Set",
                     GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))))
        address, = session.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self.bus.set_exit_on_close(False)

    def close(self):
        self.bus.close_sync(None)

    def call(self, name, path, interface, method, arguments=None):
        return self.bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000,
                                  None).unpack()

    def windows(self):
        """The windows of all programs."""
        registry = Element(self, "org.a11y.atspi.Registry", ROOT)
        return [window for program in registry.children() for window in program.children()]

    def window(self, title, seconds=10):
        return wait_until(lambda: next((window for window in self.windows() if window.name() == title), None), seconds,
                          f"the accessible window {title!r}")


def forgiving(otherwise):
    """An element that went away while it is asked has nothing to say."""
    def wrap(ask):
        def answer(*arguments):
            try:
                return ask(*arguments)
            except GLib.Error:
                return otherwise
        return answer
    return wrap


class Element:
    """One element of the tree."""

    def __init__(self, accessibility, bus_name, path):
        self.accessibility, self.bus_name, self.path = accessibility, bus_name, path

    def __repr__(self):
        return f"<{self.role()} {self.name()!r}>"

    def _ask(self, interface, method, arguments=None):
        return self.accessibility.call(self.bus_name, self.path, interface, method, arguments)

    def _property(self, interface, name):
        return self._ask(PROPERTIES, "Get", GLib.Variant("(ss)", (interface, name)))[0]

    @forgiving("")
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @forgiving("")
    def description(self):
        return self._property(ACCESSIBLE, "Description")

    @forgiving("")
    def role(self):
        return self._ask(ACCESSIBLE, "GetRoleName")[0]

    @forgiving(frozenset())
    def states(self):
        words = self._ask(ACCESSIBLE, "GetState")[0]
        bits = sum(word << 32 * index for index, word in enumerate(words))
        return frozenset(name for bit, name in STATES.items() if bits >> bit & 1)

    @forgiving(())
    def children(self):
        return [Element(self.accessibility, *child) for child in self._ask(ACCESSIBLE, "GetChildren")[0]]

    @forgiving(())
    def interfaces(self):
        return self._ask(ACCESSIBLE, "GetInterfaces")[0]

    @forgiving(None)
    def box(self):
        """Where it is on the screen."""
        return Box(*self._ask(COMPONENT, "GetExtents", GLib.Variant("(u)", (ON_SCREEN,)))[0])

    @forgiving("")
    def text(self):
        return self._ask(TEXT, "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    @forgiving(())
    def actions(self):
        return [name for name, _, _ in self._ask(ACTION, "GetActions")[0]] if ACTION in self.interfaces() else []

    def press(self):
        """Does what a click would."""
        self._ask(ACTION, "DoAction", GLib.Variant("(i)", (0,)))

    def walk(self):
        """The element and everything in it that can be seen."""
        if "visible" not in self.states():
            return
        yield self
        for child in self.children():
            yield from child.walk()

    def find(self, role, name=None, description=None):
        """The first element of that role, name and description that can be seen; nothing when there is none."""
        return next((one for one in self.walk() if one.role() == role and name in (None, one.name()) and
                     description in (None, one.description())), None)
