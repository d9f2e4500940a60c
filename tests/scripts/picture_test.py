#!/usr/bin/python3
"""What the desktop tests conclude from pictures: a check that always passes would be worth nothing."""
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))

from virtual_desktop import Box, Picture, complaints  # noqa: E402

PAPER, INK = (30, 40, 50), (240, 240, 240)


def draw(boxes, width=400, height=300, paper=PAPER):
    def word(colour):
        red, green, blue = colour
        return bytes([blue, green, red, 0])

    data = bytearray(word(paper) * (width * height))
    for box in boxes:
        for y in range(box.y, box.y + box.height):
            start = (y * width + box.x) * 4
            data[start:start + box.width * 4] = word(INK) * box.width
    return Picture(width, height, bytes(data))


def digits(count=5, left=110, top=100, height=80):
    """A row of shapes that stands for a countdown."""
    return [Box(left + 40 * i, top, 24, height) for i in range(count)]


class Reading(unittest.TestCase):
    def test_shapes_and_lines_are_counted(self):
        picture = draw(digits() + [Box(10, 250, 200, 5)])
        self.assertEqual(picture.crop(Box(0, 90, 400, 100)).glyphs(), 5)
        self.assertEqual(picture.lines(), 2)
        self.assertEqual(picture.pixel(110, 100), INK)
        self.assertEqual(picture.background(), PAPER)

    def test_the_difference_is_the_smallest_box(self):
        one, other = draw(digits()), draw(digits() + [Box(300, 200, 10, 20), Box(20, 30, 1, 1)])
        self.assertEqual(one.differs(other), Box(20, 30, 290, 190))
        self.assertIsNone(one.differs(draw(digits())))


class BreakScreens(unittest.TestCase):
    def test_a_running_countdown_is_accepted(self):
        before = digits()
        after = before[:4] + [Box(270, 100, 20, 80)]
        self.assertEqual(complaints(draw(before), draw(after)), [])

    def test_one_flat_colour_is_refused(self):
        self.assertTrue(complaints(draw([]), draw([])))
        self.assertTrue(complaints(draw([]), draw([], paper=(0, 0, 0))))

    def test_a_countdown_that_stands_still_is_refused(self):
        self.assertIn("no countdown runs", " ".join(complaints(draw(digits()), draw(digits()))))

    def test_a_change_that_is_no_countdown_is_refused(self):
        small = complaints(draw(digits()), draw(digits() + [Box(200, 10, 4, 4)]))
        self.assertIn("height of a large figure", " ".join(small))
        four = digits(4)
        self.assertIn("4 shapes", " ".join(complaints(draw(four[:3]), draw(four))))
        corner = [Box(0, 0, 20, 80)]
        self.assertIn("not stand in the middle", " ".join(complaints(draw(digits()), draw(digits() + corner))))


if __name__ == "__main__":
    unittest.main()
