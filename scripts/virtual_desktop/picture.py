"""Pictures of the screen: what is on them, how two differ, and how they get into a file."""
import collections
import struct
import zlib

Box = collections.namedtuple("Box", "x y width height")


def _runs(flags):
    """The number of unbroken stretches of true values."""
    return sum(1 for at, flag in enumerate(flags) if flag and (at == 0 or not flags[at - 1]))


class Picture:
    """A rectangle of pixels as the X server gives them: blue, green, red and a byte of padding each."""

    def __init__(self, width, height, data):
        if len(data) != width * height * 4:
            raise ValueError(f"{len(data)} bytes are no picture of {width}x{height}")
        pixels = bytearray(data)
        pixels[3::4] = bytes(width * height)  # the padding holds anything, and pixels are compared as they are
        self.width, self.height, self.data = width, height, bytes(pixels)

    def row(self, y):
        return self.data[y * self.width * 4:(y + 1) * self.width * 4]

    def pixel(self, x, y):
        """A pixel as (red, green, blue)."""
        blue, green, red, _ = self.data[(y * self.width + x) * 4:][:4]
        return red, green, blue

    def crop(self, box):
        rows = (self.row(y)[box.x * 4:(box.x + box.width) * 4] for y in range(box.y, box.y + box.height))
        return Picture(box.width, box.height, b"".join(rows))

    def colours(self):
        """How often each colour stands in the picture."""
        counts = collections.Counter(memoryview(self.data).cast("I"))
        return collections.Counter({(value >> 16 & 255, value >> 8 & 255, value & 255): count
                                    for value, count in counts.items()})

    def background(self):
        """The commonest colour."""
        return self.colours().most_common(1)[0][0]

    def differs(self, other):
        """The smallest box that holds every pixel that is not the same in both; nothing when all are."""
        if (self.width, self.height) != (other.width, other.height):
            raise ValueError("pictures of different sizes")
        left, right, top, bottom = self.width, -1, -1, -1
        for y in range(self.height):
            mine, theirs = self.row(y), other.row(y)
            if mine == theirs:
                continue
            top, bottom = (y if top < 0 else top), y
            columns = [x for x in range(self.width) if mine[x * 4:x * 4 + 4] != theirs[x * 4:x * 4 + 4]]
            left, right = min(left, columns[0]), max(right, columns[-1])
        return None if top < 0 else Box(left, top, right - left + 1, bottom - top + 1)

    def ink(self, tolerance=48):
        """Every pixel that stands out from the background, as one list of truth values a row."""
        paper = self.background()
        strong = {colour for colour in self.colours()
                  if max(abs(a - b) for a, b in zip(colour, paper)) > tolerance}
        words = {red << 16 | green << 8 | blue for red, green, blue in strong}
        return [[value in words for value in memoryview(self.row(y)).cast("I")] for y in range(self.height)]

    def ink_share(self):
        """The share of the picture that stands out from its background, from 0 to 1."""
        return sum(map(sum, self.ink())) / (self.width * self.height)

    def ink_box(self):
        """The smallest box that holds everything that stands out; nothing when nothing does."""
        rows = [y for y, row in enumerate(self.ink()) if any(row)]
        columns = [x for x, column in enumerate(zip(*self.ink())) if any(column)]
        return Box(columns[0], rows[0], columns[-1] - columns[0] + 1, rows[-1] - rows[0] + 1) if rows else None

    def glyphs(self):
        """How many shapes stand side by side: stretches of columns with ink in them."""
        return _runs([any(column) for column in zip(*self.ink())])

    def lines(self):
        """How many lines stand below each other: stretches of rows with ink in them."""
        return _runs([any(row) for row in self.ink()])

    def save(self, path):
        """Writes a PNG file."""
        rgb = bytearray(self.width * self.height * 3)
        for channel in range(3):
            rgb[channel::3] = self.data[2 - channel::4]
        stride = self.width * 3
        raw = b"".join(b"\0" + rgb[y * stride:(y + 1) * stride] for y in range(self.height))

        def chunk(kind, body):
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 6)) +
                       chunk(b"IEND", b""))
