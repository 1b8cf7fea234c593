#!/usr/bin/env python3
"""Renders the drawings of this folder to the pictures, bitmaps and icons that the program ships.

Needs rsvg-convert (librsvg). The output depends on the drawings alone, so running it again changes nothing.
"""

import struct
import subprocess
import sys
import zlib
from pathlib import Path

ART = Path(__file__).resolve().parent
ROOT = ART.parent
PICTURES = ROOT / "src" / "formats" / "pictures"
FORMATS = ROOT / "formats" / "Formats"
ICONS = ROOT / "src" / "app" / "icons"

PICTURE_SCALES = {16: "", 32: "@2x"}
BITMAP_SIZE = 32
ICON_SIZES = (16, 24, 32, 48, 64, 128, 256)


def png(drawing, size):
    """The drawing as the bytes of a PNG file, size by size pixels."""
    command = ["rsvg-convert", "-w", str(size), "-h", str(size), str(drawing)]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def chunks(data):
    """The (type, content) chunks of a PNG file."""
    position = 8
    while position < len(data):
        length, kind = struct.unpack_from(">I4s", data, position)
        yield kind, data[position + 8 : position + 8 + length]
        position += length + 12


def predicted(kind, left, above, corner):
    """What a PNG row filter foretells of a byte from its neighbours."""
    if kind == 4:
        estimate = left + above - corner
        return min((left, above, corner), key=lambda value: abs(estimate - value))
    return (0, left, above, (left + above) // 2)[kind]


def pixel_rows(data):
    """The rows of an RGBA PNG file, four bytes a pixel, top row first."""
    parts = list(chunks(data))
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", parts[0][1])
    if (depth, colour, interlace) != (8, 6, 0):
        sys.exit("render.py: rsvg-convert is expected to write plain RGBA")
    raw = zlib.decompress(b"".join(content for kind, content in parts if kind == b"IDAT"))
    stride = width * 4
    above = bytes(stride)
    for y in range(height):
        kind, *row = raw[y * (stride + 1) : (y + 1) * (stride + 1)]
        for x in range(stride):
            left, corner = (row[x - 4], above[x - 4]) if x >= 4 else (0, 0)
            row[x] = (row[x] + predicted(kind, left, above[x], corner)) & 0xFF
        above = bytes(row)
        yield above


def bmp(drawing, size):
    """The drawing as a 32-bit bitmap whose V4 header names the alpha channel, without which readers drop it."""
    lines = []
    for row in pixel_rows(png(drawing, size)):
        pixels = (row[x : x + 4] for x in range(0, len(row), 4))
        lines.append(b"".join(bytes((blue, green, red, alpha)) for red, green, blue, alpha in pixels))
    body = b"".join(reversed(lines))
    masks = (0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000)
    pixels_per_metre = 2835
    bitfields, srgb = 3, 0x73524742
    header = struct.pack("<IiiHHIIiiII", 108, size, size, 1, 32, bitfields, len(body), pixels_per_metre,
                         pixels_per_metre, 0, 0)
    header += struct.pack("<4II36s3I", *masks, srgb, bytes(36), 0, 0, 0)
    offset = 14 + len(header)
    return struct.pack("<2sIHHI", b"BM", offset + len(body), 0, 0, offset) + header + body


def ico(images):
    """A Windows icon file of PNG images, given by size."""
    offset = 6 + 16 * len(images)
    directory, body = struct.pack("<HHH", 0, 1, len(images)), b""
    for size, image in images.items():
        side = size % 256  # 0 stands for 256
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(image), offset + len(body))
        body += image
    return directory + body


def write(path, content):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def main():
    for drawing in sorted((ART / "pictures").glob("*.svg")):
        for size, suffix in PICTURE_SCALES.items():
            write(PICTURES / f"{drawing.stem}{suffix}.png", png(drawing, size))
    for drawing in sorted((ART / "formats").glob("*.svg")):
        write(FORMATS / f"{drawing.stem}.bmp", bmp(drawing, BITMAP_SIZE))
    icons = {size: png(ART / "discbook.svg", size) for size in ICON_SIZES}
    for size, image in icons.items():
        write(ICONS / f"discbook-{size}.png", image)
    write(ICONS / "discbook.ico", ico(icons))


if __name__ == "__main__":
    main()
