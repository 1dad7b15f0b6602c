#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the icons of the plug-in's tags, objects and commands into res/.

Each icon is a list of shapes on a field of 32 by 32 units, painted with coverage from a grid of samples a pixel.
Run it after a change of a shape, and look at the result: --preview FILE.png writes all icons, enlarged, into one picture.
"""

import argparse
import math
import pathlib
import struct
import zlib

SIZE = 32
SAMPLES = 6

DARK = (46, 52, 64)
LIGHT = (236, 239, 244)
GREY = (136, 146, 164)
AMBER = (240, 176, 48)
BLUE = (66, 135, 205)
GREEN = (92, 168, 88)
RED = (208, 80, 72)
PAPER = (250, 250, 250)


# A shape is a function of a point that gives its colour (red, green, blue), or None outside.


def disc(x, y, radius, colour):
    return lambda px, py: colour if math.hypot(px - x, py - y) <= radius else None


def ring(x, y, outer, inner, colour):
    return lambda px, py: colour if inner <= math.hypot(px - x, py - y) <= outer else None


def shaded_ball(x, y, radius, colour):
    """A ball lit from the upper left."""

    def paint(px, py):
        if math.hypot(px - x, py - y) > radius:
            return None
        distance = math.hypot(px - x + radius * 0.35, py - y + radius * 0.4) / (radius * 1.5)
        shade = max(0.0, 1.0 - distance)
        return tuple(min(255, c * (0.45 + 0.75 * shade) + 110 * shade**5) for c in colour)

    return paint


def rectangle(left, top, right, bottom, colour):
    return lambda px, py: colour if left <= px <= right and top <= py <= bottom else None


def rounded(left, top, right, bottom, radius, colour):
    def paint(px, py):
        nearest_x = min(max(px, left + radius), right - radius)
        nearest_y = min(max(py, top + radius), bottom - radius)
        return colour if math.hypot(px - nearest_x, py - nearest_y) <= radius else None

    return paint


def polygon(points, colour):
    def paint(px, py):
        inside = False
        for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
            if (ay > py) != (by > py) and px < (bx - ax) * (py - ay) / (by - ay) + ax:
                inside = not inside
        return colour if inside else None

    return paint


def stroke(points, width, colour):
    """A line with round ends through the points."""

    def distance(px, py, a, b):
        dx, dy = b[0] - a[0], b[1] - a[1]
        t = ((px - a[0]) * dx + (py - a[1]) * dy) / (dx * dx + dy * dy)
        t = min(1.0, max(0.0, t))
        return math.hypot(px - a[0] - t * dx, py - a[1] - t * dy)

    segments = list(zip(points, points[1:]))
    return lambda px, py: colour if any(distance(px, py, a, b) <= width / 2 for a, b in segments) else None


def closed(points, width, colour):
    return stroke(points + points[:1], width, colour)


def rays(x, y, inner, outer, count, width, colour):
    ends = [(math.cos(2 * math.pi * i / count), math.sin(2 * math.pi * i / count)) for i in range(count)]
    lines = [stroke([(x + c * inner, y + s * inner), (x + c * outer, y + s * outer)], width, colour) for c, s in ends]
    return lambda px, py: next((hit for hit in (line(px, py) for line in lines) if hit), None)


def circle_points(x, y, radius, start, stop, count=24):
    angles = [math.radians(start + (stop - start) * i / count) for i in range(count + 1)]
    return [(x + radius * math.cos(a), y + radius * math.sin(a)) for a in angles]


def cube(x, y, half, colour):
    """A cube seen from above one edge, centred on (x, y)."""
    width, rise = half, half * 0.5
    top = [(x, y - half), (x + width, y - rise), (x, y), (x - width, y - rise)]
    left = [(x - width, y - rise), (x, y), (x, y + half), (x - width, y + rise)]
    right = [(x + width, y - rise), (x, y), (x, y + half), (x + width, y + rise)]
    tint = lambda factor: tuple(min(255, c * factor) for c in colour)
    return [polygon(top, tint(1.25)), polygon(left, tint(0.95)), polygon(right, tint(0.65))]


ICONS = {
    "LightTag.tif": [
        rays(16, 14, 10.5, 12.8, 8, 2, AMBER),
        disc(16, 14, 7.5, AMBER),
        disc(13.8, 11.8, 2.2, (255, 236, 178)),
        rectangle(12.5, 20, 19.5, 23.5, AMBER),
        rounded(12, 23, 20, 29.5, 1.5, DARK),
        rectangle(12, 25.2, 20, 26.2, GREY),
    ],
    "ExitPortal.tif": [
        rectangle(4, 3, 21, 29, DARK),
        rectangle(7, 6, 18, 29, (250, 222, 140)),
        polygon([(7, 6), (13, 9), (13, 30), (7, 29)], GREY),
        stroke([(15, 17.5), (27, 17.5)], 3, BLUE),
        polygon([(24, 12), (31, 17.5), (24, 23)], BLUE),
    ],
    "CameraTag.tif": [
        rounded(11, 6, 21, 13, 1.5, DARK),
        rounded(2, 9, 30, 27, 3, DARK),
        rectangle(2, 12.5, 30, 14, GREY),
        disc(16, 18.5, 8, LIGHT),
        disc(16, 18.5, 6.5, (30, 62, 104)),
        disc(16, 18.5, 3.6, BLUE),
        disc(13.8, 16.3, 1.5, PAPER),
        disc(26, 11, 1.1, RED),
    ],
    "subdivtag.tif": [
        polygon([(16, 3), (29, 28), (3, 28)], GREEN),
        polygon([(9.5, 15.5), (22.5, 15.5), (16, 28)], (152, 208, 140)),
        closed([(16, 3), (29, 28), (3, 28)], 1.8, DARK),
        closed([(9.5, 15.5), (22.5, 15.5), (16, 28)], 1.8, DARK),
    ],
    "animationtag.tif": [
        rounded(3, 3, 21, 21, 2, GREY),
        rounded(11, 11, 29, 29, 2, BLUE),
        rectangle(11, 11, 21, 21, (160, 196, 230)),
        closed([(11, 11), (21, 11), (21, 21), (11, 21)], 1.2, DARK),
    ],
    "About.tif": [
        disc(16, 16, 13.5, BLUE),
        disc(16, 9.2, 2.3, PAPER),
        rectangle(14, 13.5, 18, 24, PAPER),
        rectangle(12, 13.5, 18, 15.5, PAPER),
        rectangle(12, 22.5, 20, 24.5, PAPER),
    ],
    "ConvertMats.tif": [
        shaded_ball(9, 10, 7.5, GREY),
        shaded_ball(23, 22, 7.5, AMBER),
        stroke(circle_points(16, 16, 12, -75, -20), 2.4, DARK),
        polygon([(24.2, 9.6), (31.2, 9.2), (28.2, 15.2)], DARK),
        stroke(circle_points(16, 16, 12, 105, 160), 2.4, DARK),
        polygon([(7.8, 22.4), (0.8, 22.8), (3.8, 16.8)], DARK),
    ],
    "Export.tif": [
        rounded(3, 5, 23, 29, 2, DARK),
        rounded(4.5, 6.5, 21.5, 27.5, 1, PAPER),
        shaded_ball(12.5, 20, 5.5, AMBER),
        stroke([(13, 11), (25, 11)], 3.2, BLUE),
        polygon([(22.5, 5), (31, 11), (22.5, 17)], BLUE),
    ],
    "instance.tif": cube(21.5, 11, 9, GREY) + cube(11.5, 20.5, 9.5, BLUE),
    "materialhelper.tif": [
        shaded_ball(14, 17, 12, AMBER),
        disc(25, 8, 6.5, PAPER),
        disc(25, 8, 5.8, GREEN),
        rectangle(21.5, 7, 28.5, 9, PAPER),
        rectangle(24, 4.5, 26, 11.5, PAPER),
    ],
    "resume.tif": [disc(16, 16, 13.5, DARK), polygon([(12, 8.5), (24.5, 16), (12, 23.5)], (132, 206, 120))],
    "pause.tif": [disc(16, 16, 13.5, DARK), rectangle(10.5, 9.5, 14.2, 22.5, AMBER), rectangle(17.8, 9.5, 21.5, 22.5, AMBER)],
    "tonemapping.tif": [
        rounded(2, 3, 30, 29, 2, DARK),
        lambda px, py: (40 + 200 * (px - 4) / 24,) * 3 if 4 <= px <= 28 and 5 <= py <= 27 else None,
        stroke([(4.5, 26.5)] + [(4.5 + 23 * t / 16, 26.5 - 20.5 * (1 - (1 - t / 16) ** 2.6)) for t in range(1, 17)], 2.6, AMBER),
    ],
}


def render(shapes):
    """Rows of (red, green, blue, alpha) bytes, alpha straight."""
    rows = []
    for y in range(SIZE):
        row = bytearray()
        for x in range(SIZE):
            total, covered = [0.0, 0.0, 0.0], 0
            for sample in range(SAMPLES * SAMPLES):
                px = x + (sample % SAMPLES + 0.5) / SAMPLES
                py = y + (sample // SAMPLES + 0.5) / SAMPLES
                hits = [hit for hit in (shape(px, py) for shape in shapes) if hit]
                if hits:
                    covered += 1
                    total = [t + c for t, c in zip(total, hits[-1])]
            row += bytes(round(t / covered) if covered else 0 for t in total)
            row.append(round(255 * covered / (SAMPLES * SAMPLES)))
        rows.append(bytes(row))
    return rows


def tiff(rows):
    """An uncompressed little-endian TIFF of one strip: 8-bit red, green, blue and straight alpha."""
    pixels = b"".join(rows)
    short, long = 3, 4
    bits_at = 8 + len(pixels)
    entries = [
        (256, short, 1, SIZE),  # width
        (257, short, 1, SIZE),  # height
        (258, short, 4, bits_at),  # bits per sample, behind the pixels
        (259, short, 1, 1),  # no compression
        (262, short, 1, 2),  # RGB
        (273, long, 1, 8),  # strip offset
        (277, short, 1, 4),  # samples per pixel
        (278, short, 1, SIZE),  # rows per strip
        (279, long, 1, len(pixels)),  # strip bytes
        (284, short, 1, 1),  # chunky
        (338, short, 1, 2),  # the fourth sample is straight alpha
    ]
    directory = struct.pack("<H", len(entries))
    directory += b"".join(struct.pack("<HHII", *entry) for entry in entries) + struct.pack("<I", 0)
    bits = struct.pack("<4H", 8, 8, 8, 8)
    return struct.pack("<2sHI", b"II", 42, bits_at + len(bits)) + pixels + bits + directory


def preview(icons, scale=6, columns=5):
    """A PNG of all icons on the light and the dark grey of the host's interface."""
    lines = (len(icons) + columns - 1) // columns
    cell = SIZE * scale + 8
    width, height = cell * columns, cell * lines
    image = [[(190, 190, 190) if x % cell < cell // 2 else (84, 84, 84) for x in range(width)] for _ in range(height)]
    for index, rows in enumerate(icons):
        left, top = index % columns * cell + 4, index // columns * cell + 4
        for y in range(SIZE * scale):
            for x in range(SIZE * scale):
                at = x // scale * 4
                *colour, alpha = rows[y // scale][at : at + 4]
                below = image[top + y][left + x]
                image[top + y][left + x] = tuple((c * alpha + b * (255 - alpha)) // 255 for c, b in zip(colour, below))
    raw = b"".join(b"\0" + bytes(c for pixel in line for c in pixel) for line in image)
    chunk = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b"")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--preview", metavar="FILE.png", help="also write all icons, enlarged, into one picture")
    arguments = parser.parse_args()
    folder = pathlib.Path(__file__).resolve().parent.parent / "res"
    rendered = {name: render(shapes) for name, shapes in ICONS.items()}
    for name, rows in rendered.items():
        (folder / name).write_bytes(tiff(rows))
    if arguments.preview:
        pathlib.Path(arguments.preview).write_bytes(preview(list(rendered.values())))


if __name__ == "__main__":
    main()
