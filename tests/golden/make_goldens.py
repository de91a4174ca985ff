#!/usr/bin/env python3
"""Makes the recorded sessions and golden results of this folder.

This script computes everything from the rules of the formats, independently of the program, so that
the two agree only when both are right. Run it without arguments to write the files, or with --check
to see whether they are current.

Placeholders in the results: @FILE@ is the report's own file name, @DATE@ the short date, @STAMP@
the date and time. The files are bytes; lines end in CR LF.
"""

import json
import pathlib
import sys
from fractions import Fraction

FOLDER = pathlib.Path(__file__).parent
PROGRAM = "Kelvara v1.1.0"
REPORT_LINES = 29
PALETTE = [
    "ffffff", "e6e6ff", "e6ffe6", "e6f2ff", "e6ffff", "ffffe6", "ffe6e6", "ffe6ff",
    "9999ff", "99ccff", "99ffff", "99ff99", "ffff99", "ff9999", "ff99ff", "ff99ff",
]
SITE = "Dock & Crane <North>"
TESTER = 'A. "Al" Tester'
NOTES = "  first line\r\n  second line   "


# A session is a list of reports, each (antenna synchronised to, [(antenna heard, its readings)]).
# An antenna is (FPN, FPS, RPN). The reading None is the question mark of an unknown phase.

A = (0x5A, 0x3, 0x01)
B = (0x5B, 0xA, 0x06)
C = (0x5A, 0x3, 0x02)
D = (0x07, 0xF, 0x64)
UNHEARD = (0x5A, 0x3, 0x04)

FOUR_ANTENNAS = [
    (A, [(C, [-12, -10]), (UNHEARD, [None]), (B, [6, 7, 9])]),
    (A, [(B, [8]), (C, [-11, -12])]),
    (B, [(A, [-8, -7]), (D, [33, 34])]),
    (C, [(A, [11, 12, 13]), (B, [2, 3])]),
    (C, [(A, [15]), (B, [5])]),
    (D, []),
    (B, [(D, [-99, None, 999]), (A, [-7])]),
]


def fifty_one_antennas():
    """Every antenna hears up to nine others, at phases of both signs."""
    antennas = [((k * 13 + 5) % 256, k % 16, (k * 37 + 11) % 256) for k in range(51)]
    reports = []
    for k, sync in enumerate(antennas):
        heard = []
        for step in range(9):
            other = (k + 1 + step * step) % 51
            if other != k:
                readings = [(k * 7 + step * 23 + r * 11) % 240 - 90 for r in range(1 + step % 3)]
                heard.append((antennas[other], readings))
        reports.append((sync, heard))
    return reports


def identity(antenna):
    fpn, fps, rpn = antenna
    return f"100ec{fpn:02X}{fps:X}{rpn:02X}"


def session_text(reports):
    text = ""
    for sync, heard in reports:
        lines = ["rfps", identity(sync) + " Sync"]
        for antenna, readings in heard:
            start = identity(antenna)
            for reading in readings:
                field = "  ?" if reading is None else f"{reading:3d}"
                assert len(field) == 3
                lines.append(f"{start:10s} Neighbour phase =  {field}")
                start = ""
        assert len(lines) <= REPORT_LINES
        lines += [""] * (REPORT_LINES - len(lines))
        text += "".join(line + "\r\n" for line in lines)
    return text


class Model:
    """The antennas in order of first appearance and the readings of each pair."""

    def __init__(self, reports):
        self.antennas = []
        self.readings = []
        self.log = []
        self.report_count = len(reports)
        for sync, heard in reports:
            kept = []
            for antenna, values in heard:
                known = [value for value in values if value is not None]
                if known:
                    kept.append((antenna, round(Fraction(sum(known), len(known)))))
            # A report is processed from its last antenna back to the one synchronised to.
            for antenna, mean in reversed(kept):
                self.log.append((sync, antenna, mean))
                start = self.find(sync, sync[0])
                end = self.find(antenna, sync[0])
                self.readings.append((start, end, mean))
            self.find(sync, sync[0])

    def find(self, antenna, fpn):
        for index, known in enumerate(self.antennas):
            if known[2] == antenna[2]:
                return index
        self.antennas.append((fpn, antenna[1], antenna[2]))
        return len(self.antennas) - 1

    def cell(self, start, end):
        return [value for i, j, value in self.readings if (i, j) == (start, end)]

    def mean(self, start, end):
        """The rounded mean of a pair; None without a reading."""
        values = self.cell(start, end)
        return round(Fraction(sum(values), len(values))) if values else None

    def text(self):
        """The model as lines from which a test can fill its own."""
        lines = [f"aa {rpn} {fps} {fpn}" for fpn, fps, rpn in self.antennas]
        lines += [f"phase {i} {j} {value}" for i, j, value in self.readings]
        return "".join(line + "\n" for line in lines)


def sync_units(phase):
    return round(Fraction(phase * 2, 9))


def shown_phase(phase, units):
    if phase is None:
        return ""
    if units == "rfps":
        return str(phase)
    return str(sync_units(phase) * (130 if units == "metres" else 1))


def rpn_text(rpn, base):
    return f"{rpn:02X}" if base == "hex" else f"{rpn:02d}"


def aa_text(antenna, base, fps_shown):
    _, fps, rpn = antenna
    if not fps_shown:
        return rpn_text(rpn, base)
    return rpn_text(rpn, base) + (f"[{fps:X}]" if base == "hex" else f"[{fps}]")


def log_text(model, base, fps_shown):
    entries = ["Log To File Started"]
    for start, end, mean in model.log:
        names = [aa_text(antenna, base, fps_shown) for antenna in (start, end)]
        entries.append(f"{names[0]}->{names[1]}={mean}")
    entries.append("Log To File Stopped")
    return "".join(f"@STAMP@, {entry}\r\n" for entry in entries)


def csv_text(model, units, base):
    unit_names = {"rfps": "RFPS", "aasync": "AA Sync", "metres": "Metres"}
    labels = ["AA." + rpn_text(rpn, base) for _, _, rpn in model.antennas]
    lines = [
        f"File Created by {PROGRAM} on @STAMP@",
        "Units: " + unit_names[units],
        "RPN Units: " + ("Hex" if base == "hex" else "Decimal"),
        "",
        "".join("," + label for label in labels),
    ]
    for i, label in enumerate(labels):
        cells = [shown_phase(model.mean(i, j), units) for j in range(len(labels))]
        lines.append(label + "".join("," + cell for cell in cells))
    return "".join(line + "\r\n" for line in lines)


def json_text(model):
    """The JSON results of a replay with the default display options."""
    count = len(model.antennas)
    colours = {}
    text = [["RPN"] + [aa_text(aa, "dec", False) for aa in model.antennas]]
    colour = [[None] * (count + 1)]
    for i, antenna in enumerate(model.antennas):
        text.append([aa_text(antenna, "dec", False)])
        colour.append([None])
        for j in range(count):
            text[-1].append(shown_phase(model.mean(i, j), "rfps"))
            if i == j:
                colour[-1].append("#c0c0c0")
            else:
                if antenna[1] not in colours:
                    colours[antenna[1]] = "#" + PALETTE[len(colours)]
                colour[-1].append(colours[antenna[1]])
    cells = []
    for i in range(count):
        for j in range(count):
            values = model.cell(i, j)
            if values:
                cells.append({"from": i, "to": j, "sum": sum(values), "count": len(values),
                              "max": max(values), "min": min(values)})
    results = {
        "reports": model.report_count,
        "abandoned": 0,
        "aas": [{"rpn": rpn, "fps": fps, "fpn": fpn} for fpn, fps, rpn in model.antennas],
        "cells": cells,
        "grid": {"complete": True, "text": text, "colour": colour},
    }
    return json.dumps(results, separators=(",", ":"), sort_keys=True) + "\n"


def delays(model):
    """The delay estimate of each antenna, in phase units."""
    result = []
    count = len(model.antennas)
    for i in range(count):
        lead = [m for m in (model.mean(i, j) for j in range(count)) if m is not None]
        lag = [m for m in (model.mean(j, i) for j in range(count)) if m is not None]
        row = max([0] + lead) if lead else None
        column = -min([0] + lag) if lag else None
        known = [value for value in (row, column) if value is not None]
        result.append(round(Fraction(sum(known), len(known))) if known else 0)
    return result


def port_number(rpn):
    port = rpn * 6 + 600
    return port if port < 984 else port - 984 + 200


def summary_html(site, tester, notes):
    heading = '<font size=+1><i><b>Report Summary</b></i></font><br><br>'
    lines = ["<p>", heading, "<table border=1 cellPadding=5 cellSpacing=0>", "<tbody>"]
    rows = [("Filename", "@FILE@"), ("Date", "@DATE@"), ("Site", site), ("Tester", tester),
            ("Notes", notes.strip(" "))]
    for title, value in rows:
        lines += ["<tr>", f"<td><b>{title}</b></td>", f"<td>{value}</td>", "</tr>"]
    return lines + ["</tbody>", "</table>", "</p>", "<hr size = 1>"]


def cables_html(model):
    heading = '<font size=+1><i><b>Active Antenna Cable Lengths</b></i></font><br><br>'
    titles = ["AA FPN(Hex)", "AA FPS(Hex)", "AA RPN(Dec)", "AA Port Num", "Cable Length(m)"]
    lines = ["<p>", heading, "<table border=1 cellPadding=5 cellSpacing=0>", "<tbody>", "<tr>"]
    lines += [f"<td><b>{title}</b></td>" for title in titles] + ["</tr>"]
    rows = zip(model.antennas, delays(model))
    for (fpn, fps, rpn), delay in sorted(rows, key=lambda row: row[0][2]):
        values = [f"{fpn:02X}", f"{fps:02X}", rpn, port_number(rpn), sync_units(delay) * 130]
        lines += ["<tr>"] + [f"<td width=75>{value}</td>" for value in values] + ["</tr>"]
    return lines + ["</tbody></p>", "</table></p>", "<hr size = 1>"]


def phases_html(model, fps_shown):
    heading = '<font size=+1><i><b>Relative Phase Data</b></i></font><br><br>'
    names = [f"{rpn} [{fps:X}]" if fps_shown else str(rpn) for _, fps, rpn in model.antennas]
    lines = ["<p>", heading, "<table border=1 cellPadding=5 cellSpacing=0> ", "<tbody>"]
    lines += ["<tr>", "<td width=40><b>RPN</b></td>"]
    lines += [f"<td width=40><b><b>{name}</b></td>" for name in names] + ["</tr>"]
    for i, name in enumerate(names):
        lines += ["<tr>", f"<td width=40><b>{name}</b></td>"]
        for j in range(len(names)):
            mean = model.mean(i, j)
            if i == j:
                lines.append('<td bgcolor="#c0c0c0" width=40>&nbsp</td>')
            else:
                lines.append(f"<td width=40>{'&nbsp' if mean is None else mean}</td>")
        lines.append("</tr>")
    return lines + ["</tbody></p>", "</table></p>"]


def report_html(model, fps_shown, site, tester, notes):
    lines = [
        '<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN">',
        "<html>",
        "<head>",
        f'<meta name=Generator content="{PROGRAM}>',
        "<title>Active Antenna Kelvara Report</title>",
        "</head>",
        '<body bgcolor="#ffffff" text="#000000">',
        "<font size=+2><b>Active Antenna DECT Synchronisation Report</b></font>",
        "<hr size = 1>",
    ]
    lines += summary_html(site, tester, notes) + cables_html(model) + phases_html(model, fps_shown)
    lines += [
        "<p><hr size = 1>",
        f"<font size=-1><i>Generated by {PROGRAM} on @DATE@</i></font>",
        "</body>",
        "</html>",
    ]
    return "".join(line + "\r\n" for line in lines)


def make_files():
    four = Model(FOUR_ANTENNAS)
    many = Model(fifty_one_antennas())
    none = Model([])
    assert len(four.antennas) == 4 and len(many.antennas) == 51
    files = {
        "four-antennas.session.txt": session_text(FOUR_ANTENNAS),
        "four-antennas.readings": four.text(),
        "fifty-one-antennas.session.txt": session_text(fifty_one_antennas()),
        "fifty-one-antennas.readings": many.text(),
        "report-empty.html": report_html(none, True, "", "", ""),
        "report-four-antennas-fps-off.html": report_html(four, False, SITE, TESTER, NOTES),
        "report-four-antennas-fps-on.html": report_html(four, True, SITE, TESTER, NOTES),
        "report-fifty-one-antennas-fps-on.html": report_html(many, True, SITE, TESTER, NOTES),
        "csv-empty-rfps-dec.csv": csv_text(none, "rfps", "dec"),
        "csv-fifty-one-antennas-metres-hex.csv": csv_text(many, "metres", "hex"),
        "log-four-antennas-hex-fps-on.txt": log_text(four, "hex", True),
        "log-four-antennas-hex-fps-off.txt": log_text(four, "hex", False),
        "log-four-antennas-dec-fps-on.txt": log_text(four, "dec", True),
        "log-four-antennas-dec-fps-off.txt": log_text(four, "dec", False),
        "json-empty.json": json_text(none),
        "json-four-antennas.json": json_text(four),
        "json-fifty-one-antennas.json": json_text(many),
    }
    for units in ("rfps", "aasync", "metres"):
        for base in ("dec", "hex"):
            files[f"csv-four-antennas-{units}-{base}.csv"] = csv_text(four, units, base)
    return files


def main():
    stale = []
    for name, text in make_files().items():
        path = FOLDER / name
        content = text.encode("ascii")
        if not path.exists() or path.read_bytes() != content:
            stale.append(name)
            if "--check" not in sys.argv[1:]:
                path.write_bytes(content)
    if "--check" in sys.argv[1:] and stale:
        sys.exit("not current: " + ", ".join(stale))


if __name__ == "__main__":
    main()
