#!/usr/bin/env python3
"""Draws the button-face bitmaps of quorvel.dll.

Writes uncompressed 4-bit BMP files into src/resources/bitmaps/. The files are
committed, so building the DLL does not need Python; run this script again
after changing a drawing and commit the result. `--check` compares the
committed files with what the script draws and fails if they differ.

Every face uses the standard 16-colour palette and a button-face grey
background RGB(192,192,192). Because the images keep a colour table, the
system colour mapping (LoadImage with LR_LOADMAP3DCOLORS, CreateMappedBitmap)
can replace black, dark grey, grey and white with the current button colours.
"""

import argparse
import struct
import sys
from pathlib import Path

# The standard 16-colour palette, in its usual index order.
PALETTE = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0),
    (0, 0, 128), (128, 0, 128), (0, 128, 128), (192, 192, 192),
    (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0),
    (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255),
]

# Characters used in the drawings below, and their palette indices.
INK = {
    ".": 7,   # button face, RGB(192,192,192)
    "K": 0,   # black
    "D": 8,   # dark grey, RGB(128,128,128)
    "W": 15,  # white
}

FACE = INK["."]
BLACK = INK["K"]


def encode_bmp4(pixels):
    """Returns a 4-bit BI_RGB BMP file for `pixels` (rows top to bottom)."""
    height = len(pixels)
    width = len(pixels[0])
    if any(len(row) != width for row in pixels):
        raise ValueError("ragged image")
    row_bytes = ((width * 4 + 31) // 32) * 4
    image = bytearray()
    for row in reversed(pixels):  # BMP rows are stored bottom-up
        packed = bytearray(row_bytes)
        for x, index in enumerate(row):
            if not 0 <= index < 16:
                raise ValueError("palette index out of range")
            if x % 2 == 0:
                packed[x // 2] |= index << 4
            else:
                packed[x // 2] |= index
        image += packed
    palette = b"".join(struct.pack("<BBBB", b, g, r, 0) for (r, g, b) in PALETTE)
    offset = 14 + 40 + len(palette)
    file_header = struct.pack("<2sIHHI", b"BM", offset + len(image), 0, 0, offset)
    info_header = struct.pack(
        "<IiiHHIIiiII",
        40,          # biSize
        width,
        height,      # positive: bottom-up
        1,           # biPlanes
        4,           # biBitCount
        0,           # BI_RGB
        len(image),  # biSizeImage
        3780,        # 96 dpi
        3780,
        16,          # biClrUsed
        0,           # biClrImportant
    )
    return file_header + info_header + palette + bytes(image)


def from_art(art):
    """Turns a drawing made of INK characters into rows of palette indices."""
    rows = [line.strip() for line in art.strip().splitlines()]
    return [[INK[c] for c in row] for row in rows]


def blank(width, height):
    return [[FACE] * width for _ in range(height)]


# Splitter collapse buttons. The faces of the vertical bar (left / right
# arrows) are 20 x 28 pixels; those of the horizontal bar (up / down) are the
# same faces turned a quarter, 28 x 20. The arrow is a solid black triangle,
# 4 pixels deep with a 2-pixel tip, centred exactly in the image.
SPLITTER_LONG = 28
SPLITTER_SHORT = 20
ARROW_DEPTH = 4


def arrow_left():
    img = blank(SPLITTER_SHORT, SPLITTER_LONG)
    tip_x = (SPLITTER_SHORT - ARROW_DEPTH) // 2
    mid = SPLITTER_LONG // 2  # rows mid-1 and mid form the tip
    for i in range(ARROW_DEPTH):
        for y in range(mid - 1 - i, mid + 1 + i):
            img[y][tip_x + i] = BLACK
    return img


def mirror(img):
    return [list(reversed(row)) for row in img]


def transpose(img):
    return [list(col) for col in zip(*img)]


def arrow_right():
    return mirror(arrow_left())


def arrow_up():
    return transpose(arrow_left())


def arrow_down():
    return list(reversed(arrow_up()))


# Browse button: an ellipsis, three 2 x 2 dots sitting a little below the
# middle like the dots of "...".
BROWSE = """
................
................
................
................
................
................
................
................
................
...KK..KK..KK...
...KK..KK..KK...
................
................
................
................
................
"""

# Viewer, "open in application": a frame whose top-right corner is left open
# for an arrow leaving it towards the top right.
VIEWER_OPEN = """
................
.........KKKKKK.
.........KKKKKK.
...........KKKK.
..........KK.KK.
.KKKKK...KK..KK.
.K......KK...KK.
.K.....KK.......
.K....KK........
.K...KK.........
.K........K.....
.K........K.....
.K........K.....
.K........K.....
.KKKKKKKKKK.....
................
"""

# Viewer, "refresh": an open ring turning clockwise, the arrow head at the
# top pointing right.
VIEWER_REFRESH = """
................
........K.......
......KKKK......
....KKKKKKK.....
...KKKKKKKK.....
...KK...KK......
..KKK...K.......
..KK........KK..
..KK........KK..
..KK........KK..
..KKK......KKK..
...KK......KK...
...KKKKKKKKKK...
....KKKKKKKK....
......KKKK......
................
"""


def faces():
    """File name -> pixel rows, for every bitmap the resource script uses."""
    return {
        "splitter_left.bmp": arrow_left(),
        "splitter_right.bmp": arrow_right(),
        "splitter_up.bmp": arrow_up(),
        "splitter_down.bmp": arrow_down(),
        "browse.bmp": from_art(BROWSE),
        "viewer_open.bmp": from_art(VIEWER_OPEN),
        "viewer_refresh.bmp": from_art(VIEWER_REFRESH),
    }


def main(argv):
    default_dir = Path(__file__).resolve().parent.parent / "src" / "resources" / "bitmaps"
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out-dir", type=Path, default=default_dir)
    parser.add_argument("--check", action="store_true",
                        help="fail if a file in --out-dir differs from the drawing")
    args = parser.parse_args(argv)

    stale = []
    if not args.check:
        args.out_dir.mkdir(parents=True, exist_ok=True)
    for name, pixels in faces().items():
        data = encode_bmp4(pixels)
        path = args.out_dir / name
        if args.check:
            if not path.is_file() or path.read_bytes() != data:
                stale.append(name)
        else:
            path.write_bytes(data)
    if stale:
        print("out of date: " + ", ".join(stale) + " (run tools/make_bitmaps.py)",
              file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
