"""What is on the X display: pictures, windows, the pointer and the keyboard."""
import collections
import time
from contextlib import contextmanager

from Xlib import XK, X, Xatom, Xutil, display, error
from Xlib.ext import xtest
from Xlib.protocol import event

from .picture import Box, Picture

Monitor = collections.namedtuple("Monitor", "name x y width height")
Window = collections.namedtuple("Window", "id title x y width height level")


class Screen:
    """A connection of our own to the display. Windows that vanish while they are looked at are left out."""

    def __init__(self, name):
        self.display = display.Display(name)
        self.display.set_error_handler(lambda *_: None)
        self.root = self.display.screen().root
        self._wallpaper = None

    def close(self):
        self.display.close()

    # Pictures

    def picture(self, area=None):
        """A picture of an area (anything with x, y, width and height), or of the whole screen."""
        whole = self.root.get_geometry()
        box = area or Box(0, 0, whole.width, whole.height)
        image = self.root.get_image(box.x, box.y, box.width, box.height, X.ZPixmap, 0xFFFFFFFF)
        return Picture(box.width, box.height, image.data)

    def paint_wallpaper(self, top, bottom):
        """A gradient from one colour to another, so that nothing can be mistaken for an empty screen."""
        size = self.root.get_geometry()
        pixmap = self.root.create_pixmap(size.width, size.height, self.display.screen().root_depth)
        pen = pixmap.create_gc()
        for y in range(size.height):
            share = y / size.height
            red, green, blue = (round(a + (b - a) * share) for a, b in zip(top, bottom))
            pen.change(foreground=red << 16 | green << 8 | blue)
            pixmap.fill_rectangle(pen, 0, y, size.width, 1)
        self.root.change_attributes(background_pixmap=pixmap)
        # Compositors paint the background themselves and look here for it.
        self.root.change_property(self.display.intern_atom("_XROOTPMAP_ID"), Xatom.PIXMAP, 32, [pixmap.id])
        self.root.clear_area()
        self.display.sync()
        self._wallpaper = pixmap

    # Windows

    def windows(self):
        """Every viewable window that has a title, the lowest first; `level` is its place among the top windows."""
        found = []
        for level, top in enumerate(self.root.query_tree().children):
            self._collect(top, level, found)
        return found

    def _collect(self, window, level, found, depth=0):
        try:
            if window.get_attributes().map_state != X.IsViewable:
                return
            title = self.title(window)
            if title:
                corner, size = self.root.translate_coords(window, 0, 0), window.get_geometry()
                found.append(Window(window.id, title, corner.x, corner.y, size.width, size.height, level))
            if depth < 3:
                for child in window.query_tree().children:
                    self._collect(child, level, found, depth + 1)
        except (error.XError, AttributeError):
            return

    def title(self, window):
        for name, kind in (("_NET_WM_NAME", "UTF8_STRING"), ("WM_NAME", None)):
            atom = self.display.intern_atom(kind) if kind else X.AnyPropertyType
            value = window.get_full_property(self.display.intern_atom(name), atom)
            if value is not None and value.value:
                text = value.value
                return text.decode("utf-8", "replace") if isinstance(text, bytes) else text
        return ""

    def titled(self, accepts):
        """The viewable windows whose title `accepts`, each title once."""
        found = {}
        for window in self.windows():
            if accepts(window.title):
                found.setdefault(window.title, window)
        return list(found.values())

    def titled_all(self, title, height):
        """The viewable windows of exactly this title that are at least so high."""
        return [window for window in self.windows() if window.title == title and window.height >= height]

    def of_class(self, name):
        """The viewable top-level windows of a program, which need no title."""
        found = []
        for window in self.root.query_tree().children:
            try:
                size, kind = window.get_geometry(), window.get_wm_class()
                if kind and name in kind and window.get_attributes().map_state == X.IsViewable:
                    found.append(Window(window.id, self.title(window), size.x, size.y, size.width, size.height, 0))
            except error.XError:
                pass
        return found

    def embedded(self):
        """The viewable windows that are docked in an XEmbed tray."""
        info = self.display.intern_atom("_XEMBED_INFO")
        found = []

        def walk(window, inside):
            for child in window.query_tree().children:
                if child.get_attributes().map_state != X.IsViewable:
                    continue
                if inside and child.get_full_property(info, X.AnyPropertyType):
                    corner, size = self.root.translate_coords(child, 0, 0), child.get_geometry()
                    found.append(Window(child.id, self.title(child), corner.x, corner.y, size.width, size.height, 0))
                walk(child, True)

        try:
            walk(self.root, False)
        except (error.XError, AttributeError):
            pass    # a window went away while the tree was walked; the caller looks again
        return found

    def _ask_manager(self, window, request, *values):
        """Sends the window manager a request as a pager would."""
        message = event.ClientMessage(window=window, data=(32, [*values, *[0] * (5 - len(values))]),
                                      client_type=self.display.intern_atom(request))
        self.root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def switch_workspace(self, number):
        self._ask_manager(self.root, "_NET_CURRENT_DESKTOP", number)

    def send_to_workspace(self, window_id, number):
        self._ask_manager(self.display.create_resource_object("window", window_id), "_NET_WM_DESKTOP", number)

    def minimise(self, window_id):
        self._ask_manager(self.display.create_resource_object("window", window_id), "WM_CHANGE_STATE", Xutil.IconicState)

    def activate(self, window_id):
        self._ask_manager(self.display.create_resource_object("window", window_id), "_NET_ACTIVE_WINDOW", 2)

    def close_window(self, window_id):
        """As a click on the close button of the title bar."""
        self._ask_manager(self.display.create_resource_object("window", window_id), "_NET_CLOSE_WINDOW")

    def resize(self, window_id, width, height):
        self.display.create_resource_object("window", window_id).configure(width=width, height=height)
        self.display.sync()

    def set_background(self, window_id, colour, cleared):
        """Gives a window another background, and clears a window, which then hears that it has to draw itself."""
        red, green, blue = colour
        window = self.display.create_resource_object("window", window_id)
        window.change_attributes(background_pixel=red << 16 | green << 8 | blue)
        self.display.create_resource_object("window", cleared).clear_area(0, 0, 0, 0, onerror=None, exposures=True)
        self.display.sync()

    def name_tray_colours(self, window_id, colours):
        """Has a tray tell in which colours icons are seen on it: for text, errors, warnings and success."""
        values = [level * 257 for colour in colours for level in colour]
        window = self.display.create_resource_object("window", window_id)
        window.change_property(self.display.intern_atom("_NET_SYSTEM_TRAY_COLORS"), Xatom.CARDINAL, 32, values)
        self.display.sync()

    def ask_to_close(self, window):
        """What a window manager does when the cross in the title bar is clicked."""
        self.tell(window, "WM_PROTOCOLS", self.display.intern_atom("WM_DELETE_WINDOW"))

    def tell(self, window, kind, *values):
        """Sends a window what a window manager says to it."""
        target = self.display.create_resource_object("window", window.id)
        target.send_event(event.ClientMessage(window=target, data=(32, [*values, *[0] * (5 - len(values))]),
                                              client_type=self.display.intern_atom(kind)))
        self.display.sync()

    def property(self, window_id, name):
        """The value of a window's property; nothing when it has none."""
        window = self.display.create_resource_object("window", window_id)
        value = window.get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        return None if value is None else value.value

    def selection_owned(self, name):
        return self.selection_owner(name) != X.NONE

    def selection_owner(self, name):
        """The window that has the selection; X.NONE where none has it."""
        return self.display.get_selection_owner(self.display.intern_atom(name))

    # Pointer and keyboard

    def move(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        self.display.sync()

    def hold_pointer(self, held):
        """Keeps the pointer to ourselves, as a program does in which a button is held down, or lets go of it."""
        if held:
            self.root.grab_pointer(False, 0, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE, X.CurrentTime)
        else:
            self.display.ungrab_pointer(X.CurrentTime)
        self.display.sync()

    def push(self, right, down):
        """Moves the pointer by a distance, as a mouse does."""
        relative = 1
        xtest.fake_input(self.display, X.MotionNotify, relative, x=right, y=down)
        self.display.sync()

    def push_for(self, seconds, times_a_second=50):
        """Keeps the mouse moving to and fro about where it is."""
        began = time.monotonic()
        step = 0
        while time.monotonic() - began < seconds:
            self.push(3 if step // 5 % 2 == 0 else -3, 0)
            step += 1
            time.sleep(max(0.0, began + step / times_a_second - time.monotonic()))

    def button(self, number=1):
        """Presses and releases a button of the mouse where the pointer is."""
        for kind in (X.ButtonPress, X.ButtonRelease):
            xtest.fake_input(self.display, kind, number)
        self.display.sync()

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        for _ in range(times):
            self.button(button)

    @contextmanager
    def held_button(self, x, y):
        """Holds the left button of the mouse down from that point on."""
        self.move(x, y)
        xtest.fake_input(self.display, X.ButtonPress, 1)
        self.display.sync()
        try:
            yield
        finally:
            xtest.fake_input(self.display, X.ButtonRelease, 1)
            self.display.sync()

    def drag(self, x, y, right, down):
        """Drags from a point, in steps as a hand does."""
        steps = 10
        with self.held_button(x, y):
            for step in range(1, steps + 1):
                self.move(x + right * step // steps, y + down * step // steps)
                time.sleep(0.02)

    def press(self, *keys):
        """Presses keys by their keysym names, the first ones held, and releases them."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(key)) for key in keys]
        if not all(codes):
            raise ValueError(f"no key for one of {keys!r}")
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()
        # A key that goes down in the millisecond in which it went up is taken for one that is held.
        time.sleep(0.003)

    def type(self, text):
        """Types lower-case letters, digits and blanks."""
        for character in text:
            self.press("space" if character == " " else character)

    def keyboard_rests(self):
        """Whether nobody has grabbed the keyboard, so that keys go to whoever has the focus."""
        if self.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) != X.GrabSuccess:
            return False
        self.display.ungrab_keyboard(X.CurrentTime)
        self.display.sync()
        return True

    def focus(self):
        """The title of the window that has the keyboard, of its nearest titled ancestor, or ""."""
        try:
            window = self.display.get_input_focus().focus
            while not isinstance(window, int) and window.id != self.root.id:
                title = self.title(window)
                if title:
                    return title
                window = window.query_tree().parent
        except (error.XError, AttributeError):
            pass
        return ""
