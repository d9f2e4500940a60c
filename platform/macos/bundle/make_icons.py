#!/usr/bin/env python3
"""Draws the application's pictures from their SVG sources with rsvg-convert.

usage: make_icons.py APPLICATION.svg STATUS.svg FOLDER

FOLDER gets Kelpa.iconset, which iconutil makes the application's icon of, and kelpa.png with kelpa@2x.png for the menu
bar: a template, of which the system uses nothing but the shape.
"""
import subprocess
import sys
from pathlib import Path

# Each size in points that the system shows icons in; each also with twice the pixels.
ICON_POINTS = (16, 32, 128, 256, 512)
# The height of a picture in the menu bar.
STATUS_POINTS = 18


def draw(source, pixels, destination):
    subprocess.run(["rsvg-convert", "--width", str(pixels), "--height", str(pixels), "--output", str(destination), str(source)],
                   check=True)


def main(arguments):
    if len(arguments) != 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    application, status, folder = (Path(each) for each in arguments)
    iconset = folder / "Kelpa.iconset"
    try:
        iconset.mkdir(parents=True, exist_ok=True)
        for points in ICON_POINTS:
            draw(application, points, iconset / f"icon_{points}x{points}.png")
            draw(application, 2 * points, iconset / f"icon_{points}x{points}@2x.png")
        draw(status, STATUS_POINTS, folder / "kelpa.png")
        draw(status, 2 * STATUS_POINTS, folder / "kelpa@2x.png")
    except (OSError, subprocess.CalledProcessError) as error:
        print(f"make_icons: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
