#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws res/previewBackground.jpg, the floor of the material previews: a grey checkerboard with a line around each field.

Squares show how glass bends and metal mirrors; grey leaves the material's colour alone. Each tile holds FIELDS by FIELDS
fields, whose edges are drawn with coverage. The file is a baseline JPEG of one component (ITU-T T.81), made here, so that
the script needs nothing but Python.
"""

import argparse
import math
import pathlib

SIZE = 256
FIELDS = 4
SAMPLES = 4
DARK, BRIGHT, LINE = 92, 196, 60
LINE_WIDTH = 0.02  # of a field

# Of T.81, annex K: numbers of codes of each length, and their symbols. Differences of the means, then waves.
DC_LENGTHS = [0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0]
DC_SYMBOLS = list(range(12))
AC_LENGTHS = [0, 2, 1, 3, 3, 2, 4, 3, 5, 5, 4, 4, 0, 0, 1, 125]
AC_SYMBOLS = bytes.fromhex(
    "01020300041105122131410613516107227114328191a1082342b1c11552d1f02433627282090a161718191a25262728292a3435363738393a"
    "434445464748494a535455565758595a636465666768696a737475767778797a838485868788898a92939495969798999aa2a3a4a5a6a7a8a9"
    "aab2b3b4b5b6b7b8b9bac2c3c4c5c6c7c8c9cad2d3d4d5d6d7d8d9dae1e2e3e4e5e6e7e8e9eaf1f2f3f4f5f6f7f8f9fa"
)
STEP = 3  # of all waves: the picture is small, its edges are to stay clean

ZIGZAG = sorted(
    ((x, y) for y in range(8) for x in range(8)),
    key=lambda place: (sum(place), place[1] if sum(place) % 2 else place[0]),
)
COSINES = [[math.cos((2 * x + 1) * u * math.pi / 16) * (math.sqrt(0.125) if u == 0 else 0.5) for x in range(8)] for u in range(8)]


def shade(u, v):
    """The grey at a place, in fields."""
    edge = min(u % 1, 1 - u % 1, v % 1, 1 - v % 1)
    if edge < LINE_WIDTH / 2:
        return LINE
    return BRIGHT if (math.floor(u) + math.floor(v)) % 2 else DARK


def draw():
    scale = FIELDS / SIZE
    places = [(i + 0.5) / SAMPLES for i in range(SAMPLES)]
    return [
        [sum(shade((x + dx) * scale, (y + dy) * scale) for dx in places for dy in places) / SAMPLES**2 for x in range(SIZE)]
        for y in range(SIZE)
    ]


def codes(lengths, symbols):
    table, code, symbol = {}, 0, iter(symbols)
    for length, count in enumerate(lengths, start=1):
        for _ in range(count):
            table[next(symbol)] = (code, length)
            code += 1
        code <<= 1
    return table


def waves(block):
    """The quantised cosine waves of 8 by 8 greys, in the order in which they are written."""
    rows = [[sum(row[x] * COSINES[u][x] for x in range(8)) for u in range(8)] for row in block]
    return [round(sum(rows[y][u] * COSINES[v][y] for y in range(8)) / STEP) for u, v in ZIGZAG]


class Bits:
    def __init__(self):
        self.text = []

    def put(self, code, length):
        if length:
            self.text.append(format(code, f"0{length}b"))

    def put_number(self, number, length):
        self.put(number if number > 0 else number + (1 << length) - 1, length)

    def data(self):
        text = "".join(self.text)
        text += "1" * (-len(text) % 8)
        return bytes(int(text[i : i + 8], 2) for i in range(0, len(text), 8)).replace(b"\xff", b"\xff\x00")


def put_block(bits, block, previous, dc, ac):
    difference = block[0] - previous
    bits.put(*dc[abs(difference).bit_length()])
    bits.put_number(difference, abs(difference).bit_length())
    zeros = 0
    for number in block[1:]:
        if number == 0:
            zeros += 1
            continue
        while zeros > 15:
            bits.put(*ac[0xF0])
            zeros -= 16
        length = abs(number).bit_length()
        bits.put(*ac[zeros << 4 | length])
        bits.put_number(number, length)
        zeros = 0
    if zeros:
        bits.put(*ac[0])
    return block[0]


def segment(marker, data):
    return bytes([0xFF, marker]) + (len(data) + 2).to_bytes(2, "big") + data


def jpeg(picture):
    bits, previous = Bits(), 0
    dc, ac = codes(DC_LENGTHS, DC_SYMBOLS), codes(AC_LENGTHS, AC_SYMBOLS)
    for top in range(0, SIZE, 8):
        for left in range(0, SIZE, 8):
            block = [[picture[top + y][left + x] - 128 for x in range(8)] for y in range(8)]
            previous = put_block(bits, waves(block), previous, dc, ac)
    side = SIZE.to_bytes(2, "big")
    return (
        b"\xff\xd8"
        + segment(0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0")
        + segment(0xDB, bytes([0] + [STEP] * 64))
        + segment(0xC0, bytes([8]) + side + side + bytes([1, 1, 0x11, 0]))
        + segment(0xC4, bytes([0x00] + DC_LENGTHS + DC_SYMBOLS))
        + segment(0xC4, bytes([0x10] + AC_LENGTHS) + AC_SYMBOLS)
        + segment(0xDA, bytes([1, 1, 0x00, 0, 63, 0]))
        + bits.data()
        + b"\xff\xd9"
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    resources = pathlib.Path(__file__).resolve().parent.parent / "res"
    parser.add_argument("--to", type=pathlib.Path, default=resources / "previewBackground.jpg", metavar="FILE.jpg")
    parser.parse_args().to.write_bytes(jpeg(draw()))


if __name__ == "__main__":
    main()
