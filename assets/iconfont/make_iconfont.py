#!/usr/bin/python3
"""Makes iconfont.ttf, the program's own icon font, from the outlines beside it.

usage: make_iconfont.py [OUTPUT]       (default: iconfont.ttf beside this script)

The same sources always give the same bytes, so that a test can tell whether the committed font is what this
script makes: the timestamps are fixed and nothing is taken from the machine.
"""
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.cu2quPen import Cu2QuPen
from fontTools.pens.transformPen import TransformPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.svgLib.path import parse_path

HERE = Path(__file__).resolve().parent
GLYPHS = {
    "kelpa": (0xE64B, HERE.parent / "icons/hicolor/symbolic/apps/app.orvane.Kelpa-symbolic.svg"),
    "kelpagun": (0xE64C, HERE / "kelpagun.svg"),
}

FAMILY = "iconfont"
UNITS_PER_EM = 1024
ASCENT, DESCENT = 880, -144  # a glyph fills the em square and sits a little below the base line, as letters do
GRID = 16                    # the drawings' grid, as wide as the em
LARGEST_CURVE_ERROR = 0.5    # font units
# 2026-01-01 00:00:00 UTC in seconds since 1904-01-01, the epoch of the font format.
TIMESTAMP = 3850070400


def path_data(drawing):
    """The outlines of every path in an SVG drawing."""
    return [element.get("d") for element in ElementTree.parse(drawing).iter() if element.tag.endswith("}path")]


def outline(drawing):
    """A drawing's paths as a TrueType glyph: quadratic curves, the y axis pointing up."""
    scale = UNITS_PER_EM / GRID
    glyph = TTGlyphPen(None)
    quadratic = Cu2QuPen(glyph, LARGEST_CURVE_ERROR)
    for data in path_data(drawing):
        parse_path(data, TransformPen(quadratic, (scale, 0, 0, -scale, 0, ASCENT)))
    return glyph.glyph()


def notdef():
    """An empty box, what a renderer shows for a character that the font does not have."""
    pen = TTGlyphPen(None)
    for left, bottom, right, top in ((128, 0, 896, 768), (192, 64, 832, 704)):
        corners = [(left, bottom), (left, top), (right, top), (right, bottom)]
        if left > 128:
            corners.reverse()
        pen.moveTo(corners[0])
        for corner in corners[1:]:
            pen.lineTo(corner)
        pen.closePath()
    return pen.glyph()


def build():
    order = [".notdef", *GLYPHS]
    builder = FontBuilder(UNITS_PER_EM, isTTF=True)
    builder.font.recalcTimestamp = False
    builder.setupGlyphOrder(order)
    builder.setupCharacterMap({code: name for name, (code, _) in GLYPHS.items()})
    builder.setupGlyf({".notdef": notdef(), **{name: outline(path) for name, (_, path) in GLYPHS.items()}})
    glyphs = builder.font["glyf"]
    builder.setupHorizontalMetrics({name: (UNITS_PER_EM, glyphs[name].xMin) for name in order})
    builder.setupHorizontalHeader(ascent=ASCENT, descent=DESCENT)
    builder.setupNameTable({
        "familyName": FAMILY,
        "styleName": "Regular",
        "uniqueFontIdentifier": f"{FAMILY} 1.000",
        "fullName": FAMILY,
        "version": "Version 1.000",
        "psName": FAMILY,
    })
    # fsType 0: a document may hold the font and whoever reads it may use it, as the licence has it.
    builder.setupOS2(sTypoAscender=ASCENT, sTypoDescender=DESCENT, usWinAscent=ASCENT, usWinDescent=-DESCENT, fsType=0)
    builder.setupPost(isFixedPitch=1)
    builder.updateHead(created=TIMESTAMP, modified=TIMESTAMP)
    return builder


def main(arguments):
    if len(arguments) > 1 or (arguments and arguments[0].startswith("-")):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    build().save(arguments[0] if arguments else HERE / "iconfont.ttf")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
