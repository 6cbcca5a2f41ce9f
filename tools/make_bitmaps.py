#!/usr/bin/env python3
"""Draws the button-face bitmaps of quorvel.dll.

Writes uncompressed BMP files into src/resources/bitmaps/. The files are
committed, so building the DLL does not need Python; run this script again
after changing a drawing and commit the result. `--check` compares the
committed files with what the script draws, and checks each bitmap's
resource size, and fails if either differs.

Sizes are resource sizes: what SizeofResource reports for the BITMAP
resource, which is the .bmp file without its 14-byte file header (the
resource compiler drops it). A host that checks a face by its size sees:

  136-139  splitter faces   1772 bytes: 32 bits per pixel, BI_BITFIELDS
                            (40-byte header, 3 colour masks, 430 pixels):
                            10 x 43, a strip that fits the buttons of the
                            splitter's 12-pixel bar
  142, 143, 145  browse and viewer faces
                            344 bytes: 4 bits per pixel (40-byte header,
                            16-colour table, 20 rows of 12 bytes): 20 x 20

The file sizes (1786 and 358 bytes) admit no such reading: no pixel format
and square or bar-shaped picture gives them.

Every face has a button-face grey background RGB(192,192,192) and draws in
black, dark grey and white. The 4-bit faces keep the standard 16-colour
table, so the system colour mapping (LoadImage with LR_LOADMAP3DCOLORS,
CreateMappedBitmap) can replace those colours with the current button
colours; the 32-bit splitter faces have no colour table and keep theirs.
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


def encode_bmp32(pixels):
    """Returns a 32-bit BI_BITFIELDS BMP file for `pixels` (rows top to bottom,
    palette indices), with the colour masks of X8R8G8B8."""
    height = len(pixels)
    width = len(pixels[0])
    if any(len(row) != width for row in pixels):
        raise ValueError("ragged image")
    image = bytearray()
    for row in reversed(pixels):  # BMP rows are stored bottom-up
        for index in row:
            r, g, b = PALETTE[index]
            image += struct.pack("<BBBB", b, g, r, 0)
    masks = struct.pack("<III", 0x00FF0000, 0x0000FF00, 0x000000FF)
    offset = 14 + 40 + len(masks)
    file_header = struct.pack("<2sIHHI", b"BM", offset + len(image), 0, 0, offset)
    info_header = struct.pack(
        "<IiiHHIIiiII",
        40,          # biSize
        width,
        height,      # positive: bottom-up
        1,           # biPlanes
        32,          # biBitCount
        3,           # BI_BITFIELDS
        len(image),  # biSizeImage
        3780,        # 96 dpi
        3780,
        0,           # biClrUsed
        0,           # biClrImportant
    )
    return file_header + info_header + masks + bytes(image)


def from_art(art):
    """Turns a drawing made of INK characters into rows of palette indices."""
    rows = [line.strip() for line in art.strip().splitlines()]
    return [[INK[c] for c in row] for row in rows]


def blank(width, height):
    return [[FACE] * width for _ in range(height)]


def pad(img, margin):
    """Surrounds a drawing with `margin` pixels of button face."""
    width = len(img[0]) + 2 * margin
    rows = [[FACE] * width for _ in range(margin)]
    rows += [[FACE] * margin + row + [FACE] * margin for row in img]
    rows += [[FACE] * width for _ in range(margin)]
    return rows


# Splitter collapse buttons. Both buttons sit on the splitter's vertical bar,
# so all four faces are strips of 10 x 43 pixels. The upper button collapses
# the left pane (139 at rest, 137 held down), the lower one the right pane
# (138 at rest, 136 held down). Each arrow is a solid black triangle centred
# in the strip, a 1-pixel tip and a 7-pixel base 4 columns away; held down,
# it moves one pixel right and down, as a pushed button's face does.
SPLITTER_WIDTH = 10
SPLITTER_HEIGHT = 43


def arrow_left(shift=0):
    depth = 4
    img = blank(SPLITTER_WIDTH, SPLITTER_HEIGHT)
    tip_x = (SPLITTER_WIDTH - depth + 1) // 2 + shift  # 3 columns before the tip, 3 after the base
    mid = SPLITTER_HEIGHT // 2 + shift  # the tip row; as many rows above it as below
    for i in range(depth):
        for y in range(mid - i, mid + i + 1):
            img[y][tip_x + i] = BLACK
    return img


def mirror(img):
    return [list(reversed(row)) for row in img]


def arrow_right(shift=0):
    # Mirrored, the one-pixel push would go left: mirror the unshifted arrow
    # and move it right and down like the left one.
    img = mirror(arrow_left())
    if not shift:
        return img
    moved = blank(SPLITTER_WIDTH, SPLITTER_HEIGHT)
    for y in range(SPLITTER_HEIGHT - shift):
        for x in range(SPLITTER_WIDTH - shift):
            moved[y + shift][x + shift] = img[y][x]
    return moved


# The small faces are 20 x 20: each drawing below is 16 x 16 and gets a
# 2-pixel margin of button face.
SMALL_MARGIN = 2

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
    """File name -> (resource id, resource size, encoded file), for every
    bitmap the resource script uses."""
    splitter = {
        "splitter_right_pressed.bmp": (136, arrow_right(1)),
        "splitter_left_pressed.bmp": (137, arrow_left(1)),
        "splitter_right.bmp": (138, arrow_right()),
        "splitter_left.bmp": (139, arrow_left()),
    }
    small = {
        "browse.bmp": (142, BROWSE),
        "viewer_open.bmp": (143, VIEWER_OPEN),
        "viewer_refresh.bmp": (145, VIEWER_REFRESH),
    }
    result = {}
    for name, (rid, pixels) in splitter.items():
        result[name] = (rid, 1772, encode_bmp32(pixels))
    for name, (rid, art) in small.items():
        result[name] = (rid, 344, encode_bmp4(pad(from_art(art), SMALL_MARGIN)))
    return result


BMP_FILE_HEADER = 14


def main(argv):
    default_dir = Path(__file__).resolve().parent.parent / "src" / "resources" / "bitmaps"
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out-dir", type=Path, default=default_dir)
    parser.add_argument("--check", action="store_true",
                        help="fail if a file in --out-dir differs from the drawing")
    args = parser.parse_args(argv)

    stale = []
    wrong_size = []
    if not args.check:
        args.out_dir.mkdir(parents=True, exist_ok=True)
    for name, (rid, size, data) in faces().items():
        path = args.out_dir / name
        if args.check:
            if not path.is_file() or path.read_bytes() != data:
                stale.append(name)
            elif path.stat().st_size - BMP_FILE_HEADER != size:
                wrong_size.append(f"{name} (resource {rid}: {path.stat().st_size - BMP_FILE_HEADER} bytes,"
                                  f" wants {size})")
        else:
            if len(data) - BMP_FILE_HEADER != size:
                raise ValueError(f"{name} would be {len(data) - BMP_FILE_HEADER} bytes as a resource, not {size}")
            path.write_bytes(data)
    if stale:
        print("out of date: " + ", ".join(stale) + " (run tools/make_bitmaps.py)",
              file=sys.stderr)
    if wrong_size:
        print("wrong resource size: " + ", ".join(wrong_size), file=sys.stderr)
    return 1 if stale or wrong_size else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
