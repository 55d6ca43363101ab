#!/usr/bin/env python3
"""Draws the arrows of the input field's spin box, beside this file and in two sizes each."""

import pathlib
import struct
import zlib

SIZE = 32        # pixels, the height of the arrows' place; twice as many in the @2x files
SAMPLES = 8      # each way, per pixel
INK = (0x33, 0x33, 0x33)
HALF_STROKE = 1.75
UP = [(8.0, 20.0), (16.0, 12.0), (24.0, 20.0)]


def distance(x, y, a, b):
    """From a point to the stretch between a and b."""
    (ax, ay), (bx, by) = a, b
    along = ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / ((bx - ax) ** 2 + (by - ay) ** 2)
    along = min(1.0, max(0.0, along))
    return ((x - ax - along * (bx - ax)) ** 2 + (y - ay - along * (by - ay)) ** 2) ** 0.5


def coverage(column, row, scale, line):
    hits = 0
    for sample in range(SAMPLES * SAMPLES):
        x = (column + (sample % SAMPLES + 0.5) / SAMPLES) / scale
        y = (row + (sample // SAMPLES + 0.5) / SAMPLES) / scale
        hits += any(distance(x, y, a, b) <= HALF_STROKE for a, b in zip(line, line[1:]))
    return round(255 * hits / SAMPLES ** 2)


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def png(size, scale, line):
    rows = b"".join(
        b"\0" + b"".join(bytes(INK) + bytes([coverage(c, r, scale, line)]) for c in range(size))
        for r in range(size))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


folder = pathlib.Path(__file__).parent
down = [(x, SIZE - y) for x, y in UP]
for name, line in (("collapse", UP), ("expand", down)):
    (folder / f"norvogui_{name}.png").write_bytes(png(SIZE, 1, line))
    (folder / f"norvogui_{name}@2x.png").write_bytes(png(2 * SIZE, 2, line))
