"""The session itself: a private home, an X server with monitors, buses, and the programs of a small desktop."""
import ctypes
import os
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import uuid
from pathlib import Path

from gi.repository import Gio, GLib

from .screen import Monitor, Screen

MARK = "KELPA_VIRTUAL_DESKTOP"
INDICATOR_SERVICE = "/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service"
WATCHER = "org.kde.StatusNotifierWatcher"

# A dark panel along the top of the first monitor: the item with the time stands beside the clock.
PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="double" value="100"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">{identifiers}</property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="clock">
      <property name="digital-layout" type="uint" value="3"/>
    </property>
{plugins}
  </property>
</channel>
"""

# One desktop, no root menu, no key of the window manager's own: it stays out of the way.
WINDOW_MANAGER = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy></placement>
  <desktops><number>2</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <keyboard/>
  <mouse><context name="Client"><mousebind button="Left" action="Press">
    <action name="Focus"/><action name="Raise"/></mousebind></context></mouse>
</openbox_config>
"""

BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>{kind}</type><listen>unix:path={path}</listen>{services}
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy></busconfig>
"""


def panel(plugins):
    """The panel's settings with these plug-ins between the empty stretch and the clock."""
    numbers = range(3, 3 + len(plugins))
    identifiers = "".join(f'<value type="int" value="{number}"/>' for number in (1, *numbers, 2))
    kinds = "\n".join(f'    <property name="plugin-{number}" type="string" value="{plugin}"/>'
                      for number, plugin in zip(numbers, plugins))
    return PANEL.format(identifiers=identifiers, plugins=kinds)


def wait_until(condition, seconds, what=None, pause=0.05):
    """Waits until `condition` gives something true and returns that. When the time is over it raises TimeoutError
    where `what` is given, and else returns the last answer."""
    end = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer or time.monotonic() >= end:
            break
        time.sleep(pause)
    if not answer and what:
        raise TimeoutError(f"waited {seconds} s for {what}")
    return answer


def _die_with_parent():
    """Runs in the child: when this process is killed, its children are told to end."""
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGTERM)


class Session:
    """A desktop that exists from `start` to `stop`; also a context manager. Monitors stand side by side."""

    def __init__(self, monitors=2, width=960, height=1080, language=None, activation=True):
        """Without activation nothing that is installed here answers on the session bus unless it is started."""
        self.mark = uuid.uuid4().hex
        self.folder = Path(tempfile.mkdtemp(prefix="kelpa-desktop-"))
        self.monitors = [Monitor(f"V{i + 1}", i * width, 0, width, height) for i in range(monitors)]
        self.size = (monitors * width, height)
        self.activation = activation
        self.children = []
        self.buses = {}     # the process of each, by its kind
        self.screen = None
        self.bus = None
        self.display = ""
        self.environment = self._private_environment(language)

    def __enter__(self):
        try:
            return self.start()
        except BaseException:
            self.stop()
            raise

    def __exit__(self, *_):
        self.stop()

    def _private_environment(self, language):
        home = self.folder / "home"
        places = {"HOME": home, "XDG_CONFIG_HOME": home / ".config", "XDG_STATE_HOME": home / ".local/state",
                  "XDG_DATA_HOME": home / ".local/share", "XDG_CACHE_HOME": home / ".cache",
                  "XDG_RUNTIME_DIR": self.folder / "run"}
        for place in places.values():
            place.mkdir(parents=True, exist_ok=True, mode=0o700)
        environment = {name: os.environ[name] for name in ("TERM", "USER", "LOGNAME") if name in os.environ}
        # Sanitizer options and the like reach the program under test.
        environment.update({name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")})
        environment.update({name: str(place) for name, place in places.items()})
        environment.update({
            "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin", "LANG": "C.UTF-8", "LC_ALL": "C.UTF-8",
            "XDG_SESSION_TYPE": "x11", "XDG_CURRENT_DESKTOP": "XFCE", "XDG_DATA_DIRS": "/usr/local/share:/usr/share",
            "NO_AT_BRIDGE": "1", MARK: self.mark,
        })
        if language:
            environment["LANGUAGE"] = language
        return environment

    # Starting and stopping

    def start(self):
        self._start_display()
        self._start_buses()
        self.screen = Screen(self.display)
        self.screen.paint_wallpaper((38, 70, 83), (20, 110, 104))
        self.set_monitors(self.monitors)
        return self

    def _start_display(self):
        reading, writing = os.pipe()
        width, height = self.size
        # Without -noreset the monitors are gone when the first client leaves.
        self.spawn(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24", "-noreset",
                    "-nolisten", "tcp", "-s", "0", "-dpms"], pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("the virtual X server did not start:\n" + self.output("Xvfb"))
        self.display = self.environment["DISPLAY"] = f":{number}"

    def _start_buses(self):
        for kind, variable in (("session", "DBUS_SESSION_BUS_ADDRESS"), ("system", "DBUS_SYSTEM_BUS_ADDRESS")):
            path, config = self.folder / f"{kind}-bus", self.folder / f"{kind}-bus.conf"
            services = self._services() if kind == "session" and self.activation else ""
            config.write_text(BUS.format(kind=kind, path=path, services=services))
            # The buses start other programs, and those need to know both.
            self.environment[variable] = f"unix:path={path}"
        for kind in ("system", "session"):
            self._start_bus(kind)
        self._connect()

    def _services(self):
        """What is installed here may be started by the bus, but no notifications: they would stand in the pictures."""
        folder = self.folder / "services"
        folder.mkdir(exist_ok=True)
        name = "org.freedesktop.Notifications"
        (folder / f"{name}.service").write_text(f"[D-BUS Service]\nName={name}\nExec=/bin/false\n")
        return f"<servicedir>{folder}</servicedir><standard_session_servicedirs/>"

    def _start_bus(self, kind):
        daemon = self.spawn(["dbus-daemon", f"--config-file={self.folder}/{kind}-bus.conf", "--nofork", "--nopidfile"])
        wait_until(lambda: self._listens(self.folder / f"{kind}-bus"), 10, f"the {kind} bus")
        self.buses[kind] = daemon

    def _connect(self):
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.environment["DBUS_SESSION_BUS_ADDRESS"],
            flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self.bus.set_exit_on_close(False)

    def kill_session_bus(self):
        """Takes the session bus away, and with it the programs that end with it."""
        daemon = self.buses.pop("session")
        daemon.kill()
        daemon.wait()
        (self.folder / "session-bus").unlink(missing_ok=True)

    def restart_session_bus(self):
        """Brings a session bus that was taken away back to its old address, with nobody on it yet."""
        self._start_bus("session")
        self._connect()

    @staticmethod
    def _listens(path):
        """Whether somebody takes connections at the socket, which can be there a moment earlier."""
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as connection:
            return connection.connect_ex(str(path)) == 0

    def spawn(self, command, environment=None, **options):
        """Starts a program in the session; what it says goes into a file that `output` reads."""
        name = Path(command[0]).name
        with open(self.folder / f"{name}.log", "ab") as log:
            options.setdefault("stdout", log)
            options.setdefault("stderr", log)
            child = subprocess.Popen(command, env={**self.environment, **(environment or {})},
                                     cwd=self.folder, stdin=subprocess.DEVNULL, start_new_session=True,
                                     preexec_fn=_die_with_parent, **options)
        self.children.append(child)
        return child

    def output(self, name):
        log = self.folder / f"{name}.log"
        return log.read_text(errors="replace") if log.exists() else ""

    @staticmethod
    def end(child, patience=5):
        """Ends one program: politely first."""
        if child.poll() is None:
            child.terminate()
            try:
                child.wait(patience)
            except subprocess.TimeoutExpired:
                child.kill()
                child.wait()
        return child.returncode

    def stop(self):
        """Ends everything that belongs to the session, what its programs started included, and removes its files."""
        if self.screen:
            self.screen.close()
            self.screen = None
        if self.bus:
            self.bus.close_sync(None)
            self.bus = None
        while self.children:
            self.end(self.children.pop())
        for number in (signal.SIGTERM, signal.SIGKILL):
            if not wait_until(lambda: not self.processes(), 2):
                for process in self.processes():
                    try:
                        os.kill(process, number)
                    except ProcessLookupError:
                        pass
        wait_until(lambda: not self.processes(), 2)
        shutil.rmtree(self.folder, ignore_errors=True)

    def processes(self):
        """The processes that carry this session's mark in their environment."""
        mark, found = f"{MARK}={self.mark}".encode(), []
        for entry in Path("/proc").iterdir():
            if entry.name.isdigit():
                try:
                    if mark in (entry / "environ").read_bytes().split(b"\0"):
                        found.append(int(entry.name))
                except OSError:
                    pass
        return found

    # The desktop's programs

    def run_tool(self, *command):
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True, timeout=20)
        if done.returncode:
            raise RuntimeError(f"{' '.join(command)}: {done.stderr.strip() or done.returncode}")
        return done

    def set_monitors(self, monitors):
        for index, monitor in enumerate(monitors):
            self.add_monitor(monitor, owns_output=index == 0)

    def add_monitor(self, monitor, owns_output=False):
        """Plugs a monitor in; one of that name must not be there. Exactly one monitor owns the server's only output."""
        geometry = f"{monitor.width}/254x{monitor.height}/286+{monitor.x}+{monitor.y}"
        self.run_tool("xrandr", "--setmonitor", monitor.name, geometry, "screen" if owns_output else "none")

    def remove_monitor(self, monitor):
        self.run_tool("xrandr", "--delmonitor", monitor.name)

    def start_window_manager(self, compositor=False):
        folder = Path(self.environment["XDG_CONFIG_HOME"]) / "openbox"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "rc.xml").write_text(WINDOW_MANAGER)
        manager = self.spawn(["openbox"])
        wait_until(lambda: self.screen.property(self.screen.root.id, "_NET_SUPPORTING_WM_CHECK") is not None, 10,
                   "the window manager")
        if compositor:
            self.spawn(["picom", "--backend", "xrender", "--config", "/dev/null"])
            wait_until(lambda: self.screen.selection_owned("_NET_WM_CM_S0"), 10, "the compositor")
        return manager

    def start_tray(self, *plugins):
        """A panel with a tray of these plug-ins: `indicator` (the default) shows StatusNotifier items with their
        labels, through a service that is given back; `systray` shows embedded icons and, where there is no such
        service, StatusNotifier items without their labels."""
        plugins = plugins or ("indicator",)
        service = self.start_tray_service() if "indicator" in plugins else None
        folder = Path(self.environment["XDG_CONFIG_HOME"]) / "xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "xfce4-panel.xml").write_text(panel(plugins))
        self.spawn(["xfce4-panel", "--disable-wm-check"])
        wait_until(lambda: self.screen.titled(lambda title: title == "xfce4-panel"), 15, "the panel")
        wait_until(lambda: self.has_owner(WATCHER), 10, "the tray")
        return service

    def start_tray_service(self):
        service = self.spawn([INDICATOR_SERVICE])
        wait_until(lambda: self.has_owner(WATCHER), 10, "the tray's service")
        return service

    # The session bus

    def call(self, name, path, interface, method, arguments=None, seconds=5):
        """Calls a method and gives its results as a tuple."""
        return self.bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NO_AUTO_START,
                                  int(seconds * 1000), None).unpack()

    def has_owner(self, name):
        bus = "org.freedesktop.DBus"
        return self.call(bus, "/org/freedesktop/DBus", bus, "NameHasOwner", GLib.Variant("(s)", (name,)))[0]
