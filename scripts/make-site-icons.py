#!/usr/bin/env python3
"""Draws the download window's site icons: neutral 32x32 badges of our own, a
coloured rounded square with a white shape, one per known site, and a grey
film frame for any other site. Writes PNG files into the skin's picture
folder; run again after changing a shape.

    scripts/make-site-icons.py [FOLDER]   (default resources/skin/classical/form/Images)
"""
import os
import struct
import sys
import zlib

SIZE = 32
SAMPLES = 4  # per side of a pixel, for smooth edges


def rounded_square(x, y):
    radius = 0.35
    dx = max(abs(x) - (1 - radius), 0)
    dy = max(abs(y) - (1 - radius), 0)
    return dx * dx + dy * dy <= radius * radius


def triangle_right(x, y):
    return x >= -0.3 and abs(y) <= (0.45 - x) * 0.6 and x <= 0.45


def triangle_up(x, y):
    return y <= 0.4 and abs(x) <= (y + 0.45) * 0.6 and y >= -0.45


def dot(x, y):
    return x * x + y * y <= 0.2


def ring(x, y):
    return 0.12 <= x * x + y * y <= 0.25


def square(x, y):
    return abs(x) <= 0.38 and abs(y) <= 0.38


def diamond(x, y):
    return abs(x) + abs(y) <= 0.5


def two_bars(x, y):
    return abs(y) <= 0.42 and 0.1 <= abs(x) <= 0.3


def three_lines(x, y):
    return abs(x) <= 0.45 and any(abs(y - row) <= 0.08 for row in (-0.3, 0, 0.3))


def plus(x, y):
    return (abs(x) <= 0.12 and abs(y) <= 0.45) or (abs(y) <= 0.12 and abs(x) <= 0.45)


def cross(x, y):
    return (abs(x - y) <= 0.16 or abs(x + y) <= 0.16) and abs(x) <= 0.4 and abs(y) <= 0.4


def chevron(x, y):
    return abs(x - 0.1 + abs(y) * 0.9) <= 0.14 and abs(y) <= 0.42


def dot_grid(x, y):
    return any((x - cx) ** 2 + (y - cy) ** 2 <= 0.025 for cx in (-0.22, 0.22) for cy in (-0.22, 0.22))


def arc(x, y):
    return 0.1 <= x * x + y * y <= 0.22 and y >= -0.05


def film_frame(x, y):
    inside = abs(x) <= 0.55 and abs(y) <= 0.42
    holes = abs(abs(x) - 0.43) <= 0.06 and any(abs(y - row) <= 0.06 for row in (-0.27, 0, 0.27))
    window = abs(x) <= 0.28 and abs(y) <= 0.3
    return inside and not holes and not window


ICONS = [
    ("youTube.png", (70, 120, 150), dot_grid),
    ("liveleak.png", (212, 120, 40), dot),
    ("break.png", (180, 150, 30), two_bars),
    ("metacafe.png", (96, 150, 48), square),
    ("vimeo.png", (40, 150, 120), diamond),
    ("veoh.png", (40, 130, 180), ring),
    ("collegehumor.png", (60, 90, 190), plus),
    ("sevenload.png", (110, 70, 180), three_lines),
    ("tu.png", (160, 60, 160), chevron),
    ("ina.png", (190, 60, 120), triangle_right),
    ("wimp.png", (120, 110, 90), triangle_up),
    ("keek.png", (70, 120, 70), cross),
    ("funny-or-dte.png", (200, 90, 80), arc),
    ("videoFormat.png", (120, 120, 128), film_frame),
]


def pixels(colour, shape):
    rows = []
    for row in range(SIZE):
        line = bytearray()
        for column in range(SIZE):
            badge = glyph = 0
            for sy in range(SAMPLES):
                for sx in range(SAMPLES):
                    x = ((column + (sx + 0.5) / SAMPLES) / SIZE) * 2 - 1
                    y = ((row + (sy + 0.5) / SAMPLES) / SIZE) * 2 - 1
                    if rounded_square(x, y):
                        badge += 1
                        glyph += shape(x, -y)
            total = SAMPLES * SAMPLES
            share = glyph / badge if badge else 0
            rgb = [round(c + (255 - c) * share) for c in colour]
            line += bytes(rgb + [round(255 * badge / total)])
        rows.append(bytes(line))
    return rows


def png(rows):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)
    raw = b"".join(b"\x00" + row for row in rows)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "resources/skin/classical/form/Images")
    os.makedirs(folder, exist_ok=True)
    for name, colour, shape in ICONS:
        with open(os.path.join(folder, name), "wb") as file:
            file.write(png(pixels(colour, shape)))


if __name__ == "__main__":
    main()
