#!/usr/bin/env python3
"""Replays a recorded session in plain Python, as an independent implementation to compare with.

Prints one line of JSON: the number of reports and the filled cells of the phase matrix, each with
the RPNs of the pair, its sum, count, maximum and minimum.
"""

import itertools
import json
import re
import sys

LINES_PER_REPORT = 29
MAX_READINGS = 3

BLOCK = re.compile(rb"100ec(..)(.)(..)(.*?)(?=100ec|\Z)", re.IGNORECASE | re.DOTALL)
SYNC = re.compile(rb"sync", re.IGNORECASE)
READING = re.compile(rb"neighbour.{10}(.{3})", re.IGNORECASE | re.DOTALL)


def read_report(text):
    """The RPN of the antenna synchronised to, and the RPNs and mean phases of its neighbours."""
    here = None
    means = []
    for _, _, rpn, block in BLOCK.findall(text):
        if SYNC.search(block):
            here = int(rpn, 16)
            continue
        fields = READING.findall(block)[:MAX_READINGS]
        phases = [int(field) for field in fields if b"?" not in field and field != b"   "]
        if phases:
            means.append((int(rpn, 16), round(sum(phases) / len(phases))))
    return here, means


def replay(file):
    cells = {}
    reports = 0
    while True:
        lines = list(itertools.islice(file, LINES_PER_REPORT))
        if len(lines) < LINES_PER_REPORT:
            return reports, cells
        here, means = read_report(b"".join(lines))
        reports += 1
        for rpn, mean in means:
            cell = cells.get((here, rpn))
            if cell is None:
                cells[here, rpn] = [mean, 1, mean, mean]
            else:
                cell[0] += mean
                cell[1] += 1
                cell[2] = max(cell[2], mean)
                cell[3] = min(cell[3], mean)


def main():
    with open(sys.argv[1], "rb") as file:
        reports, cells = replay(file)
    json.dump({"reports": reports, "cells": sorted([*k, *v] for k, v in cells.items())}, sys.stdout)


if __name__ == "__main__":
    main()
