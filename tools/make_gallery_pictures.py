#!/usr/bin/env python3
"""Writes the small pictures of the gallery's chart page, without any imaging library.

    make_gallery_pictures.py ornament <file>   40 x 10: a diamond between two dots, for a border
    make_gallery_pictures.py glyph <file>      32 x 32: a gauge in black, grey and white, to be tinted

Shapes are given as coverage functions and sampled 4 x 4 per pixel for smooth edges.
"""
import math
import struct
import sys
import zlib


def png(width, height, pixel):
    """pixel(x, y) -> (r, g, b, a); returns the bytes of an RGBA PNG."""
    rows = bytearray()
    for y in range(height):
        rows.append(0)  # no filter
        for x in range(width):
            rows.extend(pixel(x, y))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b"")


def sampled(shade):
    """shade(x, y) -> (grey, alpha) or None at a point; averaged over 16 points a pixel."""
    def pixel(x, y):
        grey_sum, alpha_sum = 0.0, 0.0
        for sy in range(4):
            for sx in range(4):
                hit = shade(x + (sx + 0.5) / 4, y + (sy + 0.5) / 4)
                if hit:
                    grey_sum += hit[0] * hit[1]
                    alpha_sum += hit[1]
        alpha = alpha_sum / 16
        grey = grey_sum / alpha_sum if alpha_sum else 0
        g = round(grey)
        return (g, g, g, round(alpha * 255))
    return pixel


def ornament(x, y):
    cx, cy = 20, 5
    if abs(x - cx) / 9 + abs(y - cy) / 4.5 <= 1:
        return (130, 1.0)
    for dx in (-14, 14):
        if math.hypot(x - (cx + dx), y - cy) <= 2.2:
            return (130, 1.0)
    if 4 <= abs(x - cx) <= 19 and abs(y - cy) <= 0.5:
        return (130, 0.8)
    return None


def glyph(x, y):
    cx, cy = 16, 18
    r = math.hypot(x - cx, y - cy)
    angle = math.degrees(math.atan2(cy - y, x - cx))
    upper = y <= cy + 4
    # The needle, from the centre towards two o'clock.
    nx, ny = math.cos(math.radians(40)), -math.sin(math.radians(40))
    along = (x - cx) * nx + (y - cy) * ny
    across = abs(-(x - cx) * ny + (y - cy) * nx)
    if 0 <= along <= 11 and across <= 1.3 - along * 0.08:
        return (0, 1.0)
    if r <= 2.5:
        return (0, 1.0)
    if upper and 12.5 <= r <= 15:
        return (0, 1.0)  # the rim
    if upper and 9 <= r < 12.5 and -30 <= angle <= 210:
        return (255 if angle > 90 else 140, 1.0)  # the scale: white on the left, grey on the right
    return None


def main():
    kind, path = sys.argv[1], sys.argv[2]
    if kind == "ornament":
        data = png(40, 10, sampled(ornament))
    elif kind == "glyph":
        data = png(32, 32, sampled(glyph))
    else:
        sys.exit("unknown picture: " + kind)
    with open(path, "wb") as out:
        out.write(data)


if __name__ == "__main__":
    main()
