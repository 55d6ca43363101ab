#!/usr/bin/python3
"""Pictures of an X server's frame buffer: PNG, and APNG of what happens on it.

Called as: docs/screen.py FRAME_BUFFER PICTURE.png

The frame buffer is that of `Xvfb -fbdir`: an XWD file of 32 bits a pixel.
"""
import struct
import sys
import zlib

HEADER = struct.Struct(">25I")
HEIGHT, WIDTH, LINE, COLOURS = 5, 4, 12, 19  # Where they stand in the header.


class Frame:
    """What the screen showed at one time, as rows of RGB."""

    def __init__(self, frame_buffer):
        with open(frame_buffer, "rb") as file:
            data = file.read()
        header = HEADER.unpack_from(data)
        self.width, self.height = header[WIDTH], header[HEIGHT]
        begin = header[0] + 12 * header[COLOURS]
        self.rows = [self._rgb(data, begin + y * header[LINE]) for y in range(self.height)]

    def _rgb(self, data, begin):
        row = data[begin:begin + 4 * self.width]
        rgb = bytearray(3 * self.width)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
        return bytes(rgb)

    def changed(self, before):
        """The least rectangle (x, y, width, height) that holds what differs, or None."""
        lines = [y for y in range(self.height) if self.rows[y] != before.rows[y]]
        if not lines:
            return None
        left, right = self.width, 0
        for y in lines:
            row, old = self.rows[y], before.rows[y]
            pixels = [x for x in range(self.width) if row[3 * x:3 * x + 3] != old[3 * x:3 * x + 3]]
            left, right = min(left, pixels[0]), max(right, pixels[-1])
        return left, lines[0], right - left + 1, lines[-1] - lines[0] + 1

    def compressed(self, x, y, width, height):
        rows = [b"\0" + row[3 * x:3 * (x + width)] for row in self.rows[y:y + height]]
        return zlib.compress(b"".join(rows), 9)


def _chunk(name, content):
    return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))


def _header(frame):
    return b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", struct.pack(">IIBBBBB", frame.width, frame.height, 8, 2, 0, 0, 0))


def write_png(frame, name):
    with open(name, "wb") as file:
        file.write(_header(frame) + _chunk(b"IDAT", frame.compressed(0, 0, frame.width, frame.height))
                   + _chunk(b"IEND", b""))


def write_apng(frames, name, pause):
    """`frames` are pairs of the time in seconds and the Frame; those that show nothing new are joined to the one
    before. The last stands for `pause` seconds; then it begins again."""
    parts = [(frames[0][0], (0, 0, frames[0][1].width, frames[0][1].height), frames[0][1])]
    for time, frame in frames[1:]:
        area = frame.changed(parts[-1][2])
        if area:
            parts.append((time, area, frame))
    ends = [part[0] for part in parts[1:]] + [parts[-1][0] + pause]
    with open(name, "wb") as file:
        file.write(_header(parts[0][2]) + _chunk(b"acTL", struct.pack(">II", len(parts), 0)))
        number = 0
        for (time, (x, y, width, height), frame), end in zip(parts, ends):
            file.write(_chunk(b"fcTL", struct.pack(">IIIIIHHBB", number, width, height, x, y,
                                                   round((end - time) * 1000), 1000, 0, 0)))
            data = frame.compressed(x, y, width, height)
            first = number == 0
            file.write(_chunk(b"IDAT", data) if first else _chunk(b"fdAT", struct.pack(">I", number + 1) + data))
            number += 1 if first else 2
        file.write(_chunk(b"IEND", b""))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    write_png(Frame(sys.argv[1]), sys.argv[2])
