"""A pointer and a keyboard of our own for a compositor that has no devices: a Wayland client that speaks the two
protocols for them, message by message."""
import array
import os
import socket
import struct
import time

# Numbers that the kernel gives to keys and buttons.
KEYS = {"Escape": 1, "Tab": 15, "Return": 28, "Shift_L": 42, "space": 57, "Right": 106}
KEYS.update({key: 2 + place for place, key in enumerate("1234567890")})
for first, row in ((16, "qwertyuiop"), (30, "asdfghjkl"), (44, "zxcvbnm")):
    KEYS.update({key: first + place for place, key in enumerate(row)})
LEFT_BUTTON = 0x110

KEYMAP = """xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)" };
xkb_types { include "complete" };
xkb_compat { include "complete" };
xkb_symbols { include "pc+us+inet(evdev)" };
};
"""

DISPLAY = 1
SYNC, GET_REGISTRY = 0, 1
BIND = 0
MAKE_DEVICE = 0
MOTION, BUTTON, FRAME = 0, 2, 4
SET_KEYMAP, KEY = 0, 1
SEAT = "wl_seat"
POINTERS, KEYBOARDS = "zwlr_virtual_pointer_manager_v1", "zwp_virtual_keyboard_manager_v1"


def _string(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + bytes(-len(data) % 4)


class VirtualInput:
    """Devices that exist until `close`."""

    def __init__(self, display):
        self.connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.connection.connect(display)
        self.received, self.next_object = b"", DISPLAY + 1
        registry = self._new()
        self._send(DISPLAY, GET_REGISTRY, struct.pack("=I", registry))
        offers = self._offers(registry)
        seat, pointers, keyboards = (self._bind(registry, offers, name) for name in (SEAT, POINTERS, KEYBOARDS))
        self.pointer, self.keyboard = self._new(), self._new()
        self._send(pointers, MAKE_DEVICE, struct.pack("=II", seat, self.pointer))
        self._send(keyboards, MAKE_DEVICE, struct.pack("=II", seat, self.keyboard))
        self._send_keymap()
        self._settle()

    def close(self):
        self.connection.close()

    # What a person does

    def move(self, right, down):
        """Moves the pointer from where it is."""
        self._send(self.pointer, MOTION, struct.pack("=Iii", self._now(), int(right * 256), int(down * 256)))
        self._end_pointer()

    def button(self, pressed, button=LEFT_BUTTON):
        self._send(self.pointer, BUTTON, struct.pack("=III", self._now(), button, int(pressed)))
        self._end_pointer()

    def press(self, key):
        """Presses and releases a key by its name."""
        for pressed in (1, 0):
            self._send(self.keyboard, KEY, struct.pack("=III", self._now(), KEYS[key], pressed))
        self._settle()

    def type(self, text):
        """Types lower-case letters, digits, blanks and line feeds."""
        for character in text:
            self.press({" ": "space", "\n": "Return"}.get(character, character))

    # The wire

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def _new(self):
        self.next_object += 1
        return self.next_object - 1

    def _send(self, target, opcode, arguments, descriptors=()):
        message = struct.pack("=II", target, (8 + len(arguments)) << 16 | opcode) + arguments
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self.connection.sendmsg([message], rights)

    def _end_pointer(self):
        self._send(self.pointer, FRAME, b"")
        self._settle()

    def _events(self):
        """Asks the compositor for an answer and gives every event that comes before it: object, opcode, arguments."""
        answer = self._new()
        self._send(DISPLAY, SYNC, struct.pack("=I", answer))
        while True:
            while len(self.received) >= 8:
                target, word = struct.unpack_from("=II", self.received)
                size = word >> 16
                if len(self.received) < size:
                    break
                arguments, self.received = self.received[8:size], self.received[size:]
                if target == answer:
                    return
                if target == DISPLAY and word & 0xFFFF == 0:
                    raise RuntimeError(f"the compositor refused: {arguments[12:]!r}")
                yield target, word & 0xFFFF, arguments
            data = self.connection.recv(65536)
            if not data:
                raise ConnectionError("the compositor is gone")
            self.received += data

    def _settle(self):
        for _ in self._events():
            pass

    def _offers(self, registry):
        offers = {}
        for target, opcode, arguments in self._events():
            if target == registry and opcode == 0:
                number, length = struct.unpack_from("=II", arguments)
                offers.setdefault(arguments[8:8 + length - 1].decode(), number)
        return offers

    def _bind(self, registry, offers, interface):
        bound = self._new()
        self._send(registry, BIND,
                   struct.pack("=I", offers[interface]) + _string(interface) + struct.pack("=II", 1, bound))
        return bound

    def _send_keymap(self):
        text = KEYMAP.encode() + b"\0"
        memory = os.memfd_create("keymap")
        try:
            os.write(memory, text)
            self._send(self.keyboard, SET_KEYMAP, struct.pack("=II", 1, len(text)), [memory])
        finally:
            os.close(memory)
