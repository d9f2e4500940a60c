"""A Wayland session without a screen: sway on virtual outputs, with a pointer and a keyboard of our own."""
import collections
import json
import os
import shutil
import signal
import socket
import struct
import subprocess
import time

from .picture import Picture
from .screen import Monitor, Screen
from .session import Session, wait_until
from .virtual_input import VirtualInput

CONFIG = """xwayland disable
output * bg #264653 solid_color
default_border none
focus_follows_mouse no
focus_on_window_activation none
bar bar-0 {
    swaybar_command true
    position bottom
}
"""
MAGIC = b"i3-ipc"
RUN_COMMAND, GET_OUTPUTS, GET_TREE = 0, 3, 4

View = collections.namedtuple("View", "title app_id focused x y width height fullscreen")


class WaylandSession(Session):
    """Outputs stand side by side and are called HEADLESS-1 and so on."""

    OUTPUT = "HEADLESS-"
    OPTIONS = []

    def __init__(self, outputs=2, width=800, height=600):
        super().__init__(outputs, width, height)
        self.monitors = [Monitor(f"{self.OUTPUT}{place + 1}", monitor.x, 0, width, height)
                         for place, monitor in enumerate(self.monitors)]
        self.environment.update({"XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "sway"})
        self.place = self.folder / "compositor"
        self.compositor = self.input = None

    def start(self):
        self._start_buses()
        self._start_compositor()
        self.input = VirtualInput(self.environment["WAYLAND_DISPLAY"])
        return self

    def stop(self):
        if self.input:
            self.input.close()
            self.input = None
        super().stop()

    def restart(self):
        """Another compositor after one that was killed, in the same session."""
        shutil.rmtree(self.place)
        self._start_compositor()
        self.input = VirtualInput(self.environment["WAYLAND_DISPLAY"])

    def _start_compositor(self):
        self.place.mkdir(mode=0o700)
        config = self.place / "config"
        config.write_text(CONFIG + "".join(f"output {monitor.name} {self._mode(monitor)}\n"
                                           for monitor in self.monitors))
        variables = {"HOME": self.place, "XDG_RUNTIME_DIR": self.place, "WLR_RENDERER": "pixman", **self._backend()}
        self.compositor = self.spawn([*self._as_anybody(), "sway", *self.OPTIONS, "-c", str(config)],
                                     {name: str(value) for name, value in variables.items()})
        display = wait_until(lambda: next(self.place.glob("wayland-?"), None), 15, "the compositor")
        self.environment["WAYLAND_DISPLAY"] = str(display)
        self.ipc = wait_until(lambda: next(self.place.glob("sway-ipc.*.sock"), None), 5, "the compositor's socket")
        wait_until(self._is_up, 10, "the outputs")

    def _is_up(self):
        try:
            return len(self.outputs()) == len(self.monitors)
        except ConnectionError:     # the socket is there, and nobody listens yet
            return False

    def _backend(self):
        return {"WLR_BACKENDS": "headless", "WLR_HEADLESS_OUTPUTS": len(self.monitors), "WLR_LIBINPUT_NO_DEVICES": 1}

    def _as_anybody(self):
        """The compositor refuses to run as root, who then needs somebody else."""
        if os.geteuid() != 0:
            return []
        self.folder.chmod(0o711)
        for path in (self.place, self.place / "config"):
            os.chown(path, 65534, 65534)
        return ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--pdeathsig", "TERM"]

    @staticmethod
    def _mode(monitor):
        return f"mode {monitor.width}x{monitor.height} position {monitor.x} {monitor.y}"

    # Asking the compositor

    def ask(self, kind, text=""):
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as connection:
            connection.connect(str(self.ipc))
            connection.sendall(MAGIC + struct.pack("=II", len(text), kind) + text.encode())
            with connection.makefile("rb") as answer:
                header = answer.read(len(MAGIC) + 8)
                return json.loads(answer.read(struct.unpack_from("=I", header, len(MAGIC))[0]))

    def command(self, text):
        for answer in self.ask(RUN_COMMAND, text):
            if not answer["success"]:
                raise RuntimeError(f"{text}: {answer.get('error')}")

    def outputs(self):
        """The outputs that are on, by name, as monitors."""
        return {output["name"]: Monitor(output["name"], *(output["rect"][key] for key in ("x", "y", "width", "height")))
                for output in self.ask(GET_OUTPUTS) if output["active"]}

    def views(self):
        """The ordinary windows; surfaces in layers are none of them."""
        found, left = [], [self.ask(GET_TREE)]
        while left:
            node = left.pop()
            left += node["nodes"] + node["floating_nodes"]
            if node.get("pid") and node["type"] in ("con", "floating_con"):
                rect = node["rect"]
                found.append(View(node["name"], node["app_id"], node["focused"], rect["x"], rect["y"], rect["width"], rect["height"],
                                  node["fullscreen_mode"] != 0))
        return found

    def add_output(self, monitor):
        """Plugs another output in, whose name the compositor chooses to be the next one."""
        self.command(f"output {monitor.name} {self._mode(monitor)}")
        self.command("create_output")
        wait_until(lambda: self.outputs().get(monitor.name) == monitor, 5, f"the output {monitor.name}")

    def start_bar(self):
        """A panel with a tray along the lower edge of every output."""
        return self.spawn(["swaybar", "-b", "bar-0"], {"SWAYSOCK": str(self.ipc)})

    def start_high_bar(self, height=30):
        """A dark panel along the upper edge of every output, in the layer above windows."""
        config, style = self.folder / "waybar.json", self.folder / "waybar.css"
        config.write_text(json.dumps({"layer": "top", "position": "top", "height": height, "modules-center": ["clock"]}))
        style.write_text("window#waybar { background: #202020; color: white; }")
        bar = self.spawn(["waybar", "-c", str(config), "-s", str(style)])
        wait_until(lambda: all(self.picture(monitor).pixel(20, height - 2) == (32, 32, 32) for monitor in self.monitors), 15,
                   "the panel")
        return bar

    def kill_compositor(self):
        """As a crash does."""
        self.input.close()
        self.input = None
        os.kill(self.compositor.pid, signal.SIGKILL)
        self.compositor.wait(5)

    # Looking and doing

    def picture(self, monitor=None):
        """What an output shows, in its own pixels; all of them side by side where none is named."""
        which = ["-o", monitor.name] if monitor else []
        done = subprocess.run(["grim", "-t", "ppm", *which, "-"], env=self.environment, capture_output=True,
                              timeout=20, check=True)
        _, size, _, rgb = done.stdout.split(b"\n", 3)
        width, height = size.split()
        data = bytearray(int(width) * int(height) * 4)
        for channel in range(3):
            data[2 - channel::4] = rgb[channel::3]
        return Picture(int(width), int(height), bytes(data))

    def move(self, x, y):
        self.command(f"seat - cursor set {x} {y}")
        # The compositor looks what lies under a pointer when a device moves it.
        self.input.move(1, 0)
        self.input.move(-1, 0)

    def drag(self, x, y, right, down):
        self.move(x, y)
        self.input.button(True)
        time.sleep(0.3)     # as long as a hand needs, and the window to see that it is meant
        for _ in range(20):
            self.input.move(right / 20, down / 20)
            time.sleep(0.01)
        self.input.button(False)

    def click(self, x, y):
        self.move(x, y)
        self.input.button(True)
        self.input.button(False)


class NestedWaylandSession(WaylandSession):
    """The same in windows of a virtual X server, where outputs can also go: they are called X11-1 and so on."""

    OUTPUT = "X11-"

    def start(self):
        self._start_display()
        self.screen = Screen(self.display)
        # The compositor only looks up what a window manager would have made known.
        for name in ("WM_PROTOCOLS", "WM_DELETE_WINDOW", "UTF8_STRING", "_NET_WM_NAME"):
            self.screen.display.intern_atom(name)
        # What runs in the session must not find the way to the X server.
        del self.environment["DISPLAY"]
        return super().start()

    def _backend(self):
        return {"WLR_BACKENDS": "x11", "WLR_X11_OUTPUTS": len(self.monitors), "DISPLAY": self.display}

    def remove_output(self, monitor):
        """As when its cable is pulled."""
        for window in self.screen.titled(lambda title: title.endswith(monitor.name)):
            self.screen.ask_to_close(window)
        wait_until(lambda: monitor.name not in self.outputs(), 5, f"the end of {monitor.name}")


class MutterSession(Session):
    """GNOME's compositor in a window of a virtual X server, which pictures are taken of and input goes to. It has one
    monitor beside the other and no layers."""

    def start(self):
        self._start_display()
        self._start_buses()
        self.screen = Screen(self.display)
        place = self.monitors[0]
        self.environment.update({"XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "GNOME"})
        self.compositor = self.spawn(["mutter", "--wayland", "--no-x11", "--nested", "--wayland-display", "wayland-0"], {
            "LIBGL_ALWAYS_SOFTWARE": "1", "MUTTER_DEBUG_NUM_DUMMY_MONITORS": str(len(self.monitors)),
            "MUTTER_DEBUG_DUMMY_MODE_SPECS": f"{place.width}x{place.height}"})
        # What runs in the session must not find the way to the X server.
        del self.environment["DISPLAY"]
        self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        wait_until((self.folder / "run" / "wayland-0").exists, 20, "the compositor")
        # Its window has come once it is not black any more.
        wait_until(lambda: self.screen.picture(place).background() != (0, 0, 0), 20, "the compositor's window")
        return self
