#!/usr/bin/python3
"""Turns a PNG picture into raw ARGB32 in network byte order, as tray hosts want their pixmaps.

usage: png_to_argb.py PICTURE.png OUTPUT.argb

Reads what rsvg-convert writes (8 bits a channel, red green blue alpha, not interlaced) and refuses anything else.
"""
import struct
import sys
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
BYTES_PER_PIXEL = 4


class Unreadable(Exception):
    pass


def chunks(data):
    """Yields (kind, body) of every chunk, each checked against its own checksum."""
    if not data.startswith(SIGNATURE):
        raise Unreadable("not a PNG picture")
    at = len(SIGNATURE)
    while at + 12 <= len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        body = data[at + 8:at + 8 + length]
        (checksum,) = struct.unpack_from(">I", data, at + 8 + length)
        if zlib.crc32(kind + body) != checksum:
            raise Unreadable(f"damaged chunk {kind.decode('ascii', 'replace')}")
        yield kind, body
        at += 12 + length


def nearest(left, above, corner):
    """The neighbour nearest to left + above - corner (the format's fourth filter)."""
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def unfilter(raw, width, height):
    """Undoes the row filters; gives the pixels as RGBA bytes, row after row."""
    stride = width * BYTES_PER_PIXEL
    if len(raw) != (stride + 1) * height:
        raise Unreadable("damaged picture data")
    predict = (lambda left, above, corner: 0, lambda left, above, corner: left, lambda left, above, corner: above,
               lambda left, above, corner: (left + above) // 2, nearest)
    pixels = bytearray()
    above = bytes(stride)
    for y in range(height):
        start = y * (stride + 1)
        kind, row = raw[start], bytearray(raw[start + 1:start + 1 + stride])
        if kind >= len(predict):
            raise Unreadable("damaged picture data")
        for i in range(stride):
            left, corner = (row[i - 4], above[i - 4]) if i >= BYTES_PER_PIXEL else (0, 0)
            row[i] = (row[i] + predict[kind](left, above[i], corner)) & 0xFF
        pixels += row
        above = row
    return pixels


def read_rgba(data):
    header, compressed = None, b""
    for kind, body in chunks(data):
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            compressed += body
    if header is None or header[2:] != (8, 6, 0, 0, 0):
        raise Unreadable("only 8-bit RGBA pictures without interlacing are read")
    width, height = header[:2]
    return unfilter(zlib.decompress(compressed), width, height)


def to_argb(rgba):
    argb = bytearray(len(rgba))
    argb[0::4] = rgba[3::4]
    for channel in range(3):
        argb[channel + 1::4] = rgba[channel::4]
    return bytes(argb)


def main(arguments):
    if len(arguments) != 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    try:
        with open(arguments[0], "rb") as picture:
            argb = to_argb(read_rgba(picture.read()))
        with open(arguments[1], "wb") as output:
            output.write(argb)
    except (OSError, Unreadable, struct.error, zlib.error) as error:
        print(f"png_to_argb: {arguments[0]}: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
