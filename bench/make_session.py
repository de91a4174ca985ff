#!/usr/bin/env python3
"""Writes a recorded session: the reports of a beltpack carried through an invented site.

The same options always give the same bytes. The example session in examples/ is made with
    bench/make_session.py --antennas 12 --reports 60 --seed 12 examples/recorded-session.txt
"""

import argparse
import random

LINES_PER_REPORT = 29
METRES_PER_PHASE_UNIT = 29
MAX_NEIGHBOURS = 9
MAX_READINGS = 3
ANTENNAS_PER_FPS = 6
FPN = 0x5A
NEIGHBOUR = "Neighbour phase =  "
INDENT = " " * len("100ec5A301 ")


class Antenna:
    def __init__(self, rpn, cable_metres):
        self.identity = f"100ec{FPN:02X}{rpn // ANTENNAS_PER_FPS % 16:X}{rpn:02X}"
        self.delay = cable_metres / METRES_PER_PHASE_UNIT


class Site:
    """Antennas on cables of 60 to 900 metres, and an engineer who walks between them."""

    def __init__(self, antenna_count, seed):
        self.random = random.Random(seed)
        self.antennas = [
            Antenna(rpn, self.random.uniform(60, 900)) for rpn in range(1, antenna_count + 1)
        ]
        self.place = 0

    def walk(self):
        """Moves to a nearby antenna and returns it with the neighbours heard there."""
        step = self.random.choice((-2, -1, 1, 1, 2, 3))
        self.place = (self.place + step) % len(self.antennas)
        here = self.antennas[self.place]
        others = [antenna for antenna in self.antennas if antenna is not here]
        heard = min(len(others), self.random.randint(4, MAX_NEIGHBOURS))
        return here, self.random.sample(others, heard)

    def reading(self, here, neighbour):
        """The three characters of one reading: a phase, a question mark or blanks."""
        luck = self.random.random()
        if luck < 0.03:
            return "  ?"
        if luck < 0.05:
            return "   "
        return f"{round(here.delay - neighbour.delay + self.random.gauss(0, 0.6)):3d}"

    def report(self):
        """The 29 lines of one report, each with its line end."""
        here, neighbours = self.walk()
        lines = ["rfps", "RFPS report", f"{here.identity} Sync"]
        space = LINES_PER_REPORT - len(lines)
        for position, neighbour in enumerate(neighbours):
            still_to_come = len(neighbours) - position - 1
            count = min(self.random.randint(1, MAX_READINGS), space - still_to_come)
            space -= count
            for number in range(count):
                head = INDENT if number else f"{neighbour.identity} "
                lines.append(head + NEIGHBOUR + self.reading(here, neighbour))
        lines += ["--"] * space
        return "".join(line + "\r\n" for line in lines)


def main():
    parser = argparse.ArgumentParser(description="Writes a recorded beltpack session.")
    parser.add_argument("--antennas", type=int, default=51, help="antennas of the site (default 51)")
    parser.add_argument("--reports", type=int, help="number of reports")
    parser.add_argument("--bytes", type=int, help="enough reports to reach this size")
    parser.add_argument("--seed", type=int, default=1, help="site and walk (default 1)")
    parser.add_argument("file", help="the file to write")
    options = parser.parse_args()
    if (options.reports is None) == (options.bytes is None):
        parser.error("exactly one of --reports and --bytes is required")
    if not 2 <= options.antennas <= 255:
        parser.error("--antennas must be 2 to 255")

    site = Site(options.antennas, options.seed)
    written = 0
    reports = 0
    with open(options.file, "w", encoding="ascii", newline="") as file:
        while reports != options.reports and (options.bytes is None or written < options.bytes):
            written += file.write(site.report())
            reports += 1


if __name__ == "__main__":
    main()
