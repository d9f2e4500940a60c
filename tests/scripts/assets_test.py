#!/usr/bin/python3
"""The generators of the assets: what they make is what is committed, and the pixels are in their places."""
import re
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

from fontTools.ttLib import TTFont

ASSETS = Path(__file__).resolve().parents[2] / "assets"


def png(width, height, rows, colour_type=6):
    """A PNG picture from filtered rows: (filter, bytes) each."""
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    raw = b"".join(bytes([kind]) + bytes(row) for kind, row in rows)
    header = struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b"")


class IconFont(unittest.TestCase):
    def test_the_committed_font_is_what_the_script_makes(self):
        with tempfile.TemporaryDirectory() as folder:
            made = Path(folder) / "iconfont.ttf"
            subprocess.run(["/usr/bin/python3", ASSETS / "iconfont/make_iconfont.py", made], check=True)
            self.assertEqual(made.read_bytes(), (ASSETS / "iconfont/iconfont.ttf").read_bytes())

    def test_it_has_its_name_and_both_glyphs(self):
        font = TTFont(ASSETS / "iconfont/iconfont.ttf")
        for name_id in (1, 4, 6):  # family, full name, PostScript name
            self.assertEqual(font["name"].getDebugName(name_id), "iconfont")
        self.assertEqual(font.getBestCmap(), {0xE64B: "kelpa", 0xE64C: "kelpagun"})
        for glyph in ("kelpa", "kelpagun"):
            outline = font["glyf"][glyph]
            self.assertGreater(outline.xMax - outline.xMin, 700)
            self.assertGreater(outline.yMax - outline.yMin, 700)


class Leaf(unittest.TestCase):
    """The item's picture where the tray's host leaves its colour alone."""

    def test_it_stands_out_on_dark_bars_as_on_light_ones(self):
        drawing = (ASSETS / "icons/hicolor/symbolic/apps/app.orvane.Kelpa-symbolic.svg").read_text()
        own = re.search(r"\.ColorScheme-Text \{ color: #(\w{6}); \}", drawing)[1]     # the rule that Plasma replaces
        for bar in ("ffffff", "f6f5f4", "383c4a", "31363b", "2b303b", "000000"):
            with self.subTest(bar=bar):
                darker, lighter = sorted(map(luminance, (own, bar)))
                self.assertGreaterEqual((lighter + 0.05) / (darker + 0.05), 3)        # what pictures are asked for


def luminance(colour):
    """Of a colour in hexadecimal digits, as contrast is reckoned with: 0 for black, 1 for white."""
    parts = [int(colour[i:i + 2], 16) / 255 for i in (0, 2, 4)]
    red, green, blue = (part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


class TrayPixels(unittest.TestCase):
    def convert(self, picture):
        with tempfile.TemporaryDirectory() as folder:
            source, output = Path(folder) / "a.png", Path(folder) / "a.argb"
            source.write_bytes(picture)
            done = subprocess.run([ASSETS / "png_to_argb.py", source, output], capture_output=True, text=True)
            return done, output.read_bytes() if output.exists() else None

    def test_every_row_filter_gives_the_same_pixels(self):
        row = [10, 20, 30, 40, 50, 60, 70, 80]
        left = row[:4] + [(row[i] - row[i - 4]) & 255 for i in range(4, 8)]
        above = [0] * 8                                   # filters of a row that equals the one above it
        average = [(row[i] - ((row[i - 4] if i > 3 else 0) + row[i]) // 2) & 255 for i in range(8)]
        done, argb = self.convert(png(2, 5, [(0, row), (1, left), (2, above), (3, average), (4, above)]))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(argb, bytes([40, 10, 20, 30, 80, 50, 60, 70]) * 5)

    def test_what_it_cannot_read_is_refused_with_a_message(self):
        whole = png(1, 1, [(0, [1, 2, 3, 4])])
        damaged = bytearray(whole)
        damaged[-20] ^= 1
        for picture in (b"", b"no picture", bytes(damaged), whole[:30], png(1, 1, [(0, [1, 2, 3])], colour_type=2),
                        png(1, 1, [(9, [1, 2, 3, 4])]), png(1, 2, [(0, [1, 2, 3, 4])])):
            done, argb = self.convert(picture)
            self.assertEqual((done.returncode, argb), (1, None), picture)
            self.assertRegex(done.stderr, r"^png_to_argb: .*a\.png: .")
            self.assertNotIn("Traceback", done.stderr)


class Symbols(unittest.TestCase):
    NAMES = """stop.circle play.circle drop.triangle gearshape.circle arrow.counterclockwise.icloud mail.stack info.circle
        escape chevron.forward tray.circle books.vertical.circle drop.circle cup.and.saucer.fill minus plus
        xmark.circle.fill square.and.pencil trash.fill gobackward""".split()

    def test_every_symbol_is_drawn_on_the_common_grid_in_the_common_stroke(self):
        for name in self.NAMES:
            drawing = (ASSETS / f"symbols/{name}.svg").read_text()
            self.assertIn('viewBox="0 0 24 24"', drawing, name)
            self.assertIn('stroke="currentColor" stroke-width="1.75"', drawing, name)


if __name__ == "__main__":
    unittest.main()
