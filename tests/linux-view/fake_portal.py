#!/usr/bin/python3
"""A settings portal that says dark, until a line on standard input says another colour scheme."""
import os

from gi.repository import Gio, GLib

PATH, INTERFACE = "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings"
GROUP, KEY = "org.freedesktop.appearance", "color-scheme"
NODE = Gio.DBusNodeInfo.new_for_xml(f"""<node><interface name="{INTERFACE}">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>""")


def answer(_connection, _sender, _path, _interface, _method, arguments, invocation):
    if arguments.unpack() != (GROUP, KEY):
        invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")
        return
    # The portal wraps what it reads twice.
    invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("u", 1)),)))


def changed(_channel, _condition):
    line = os.read(0, 100).decode().strip()
    if not line:
        loop.quit()
        return False
    value = GLib.Variant("(ssv)", (GROUP, KEY, GLib.Variant("u", int(line))))
    bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", value)
    return True


loop = GLib.MainLoop()
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object(PATH, NODE.interfaces[0], answer, None, None)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.io_add_watch(0, GLib.IO_IN | GLib.IO_HUP, changed)
loop.run()
