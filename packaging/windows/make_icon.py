#!/usr/bin/env python3
"""Combines PNG pictures into a Windows icon: make_icon.py ICON PICTURE..."""

import pathlib
import struct
import sys

# The format of an icon file: a header, an entry of 16 bytes for each picture, and the pictures.
HEADER = struct.Struct("<HHH")  # reserved, 1 for an icon, number of pictures
ENTRY = struct.Struct("<BBBBHHII")  # width, height, colours, reserved, planes, bits, bytes, offset


def size_of(png):
    """Width and height, from the PNG's first chunk."""
    return struct.unpack_from(">II", png, 16)


def icon_of(pngs):
    offset = HEADER.size + ENTRY.size * len(pngs)
    entries = []
    for png in pngs:
        width, height = size_of(png)
        # 256, the largest size, is written as 0.
        entries.append(ENTRY.pack(width % 256, height % 256, 0, 0, 1, 32, len(png), offset))
        offset += len(png)
    return b"".join([HEADER.pack(0, 1, len(pngs)), *entries, *pngs])


def main():
    icon, *pictures = (pathlib.Path(name) for name in sys.argv[1:])
    pngs = sorted((picture.read_bytes() for picture in pictures), key=size_of)
    icon.write_bytes(icon_of(pngs))


if __name__ == "__main__":
    main()
