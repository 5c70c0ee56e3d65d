#!/usr/bin/env python3
"""Writes the animated GIFs the gallery and the tests play, without any imaging library.

    make_sample_gif.py spinner <file>   48 x 48, 12 frames: a ring of dots going round
    make_sample_gif.py stripes <file>   8 x 8, 3 frames of one colour each: red, green, blue

The image data is written as literal codes with a clear code every four of them, so the
code size never grows: larger files, but nothing in the LZW coding to get wrong.
"""
import math
import struct
import sys

MIN_CODE_SIZE = 3  # an 8-colour palette


def lzw_literals(indices):
    clear, end = 1 << MIN_CODE_SIZE, (1 << MIN_CODE_SIZE) + 1
    width = MIN_CODE_SIZE + 1
    codes = []
    for i, index in enumerate(indices):
        if i % 4 == 0:
            codes.append(clear)
        codes.append(index)
    codes.append(end)
    data, bits, count = bytearray(), 0, 0
    for code in codes:
        bits |= code << count
        count += width
        while count >= 8:
            data.append(bits & 0xFF)
            bits >>= 8
            count -= 8
    if count:
        data.append(bits & 0xFF)
    return bytes(data)


def sub_blocks(data):
    out = bytearray()
    for start in range(0, len(data), 255):
        chunk = data[start:start + 255]
        out.append(len(chunk))
        out += chunk
    out.append(0)
    return bytes(out)


def gif(width, height, palette, frames, delay):
    out = bytearray(b"GIF89a")
    out += struct.pack("<HHBBB", width, height, 0xF2, 0, 0)
    for colour in palette + [(0, 0, 0)] * (8 - len(palette)):
        out += bytes(colour)
    out += b"\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00"  # loop for ever
    for pixels in frames:
        # Each frame replaces the last; index 0 is transparent.
        out += b"\x21\xF9\x04\x09" + struct.pack("<H", delay) + b"\x00\x00"
        out += b"\x2C" + struct.pack("<HHHHB", 0, 0, width, height, 0)
        out.append(MIN_CODE_SIZE)
        out += sub_blocks(lzw_literals(pixels))
    out.append(0x3B)
    return bytes(out)


def spinner():
    size, dots, count = 48, 12, 12
    palette = [(0, 0, 0), (214, 226, 244), (164, 193, 236), (113, 159, 227), (62, 126, 219), (32, 104, 210)]
    frames = []
    for frame in range(count):
        pixels = []
        for y in range(size):
            for x in range(size):
                index = 0
                for dot in range(dots):
                    angle = 2 * math.pi * dot / dots - math.pi / 2
                    cx, cy = 24 + 17 * math.cos(angle), 24 + 17 * math.sin(angle)
                    if (x + 0.5 - cx) ** 2 + (y + 0.5 - cy) ** 2 <= 16:
                        behind = (frame - dot) % dots
                        index = max(1, 5 - behind)
                pixels.append(index)
        frames.append(pixels)
    return gif(size, size, palette, frames, 8)


def stripes():
    palette = [(0, 0, 0), (255, 0, 0), (0, 255, 0), (0, 0, 255)]
    return gif(8, 8, palette, [[index] * 64 for index in (1, 2, 3)], 5)


if __name__ == "__main__":
    kind, path = sys.argv[1], sys.argv[2]
    with open(path, "wb") as file:
        file.write({"spinner": spinner, "stripes": stripes}[kind]())
