"""How the cost grows with the size of a site and with the length of a session."""

from measure import MEGABYTE, Run

SITES = (4, 12, 25, 51)
# Seven of the nine commands of a polling cycle of 27 s ask for a report.
REPORTS_PER_HOUR = 3600 * 7 // 27
HOURS = (("1 hour", 1), ("1 day", 24), ("7 days", 7 * 24), ("30 days", 30 * 24))
LONGEST_FILE_HOURS = 24


def print_sites(table, engine, redraws):
    """`redraws` has, for each size, the milliseconds of a full redraw, of an unchanged one and of a
    plain table."""
    table.section("Growth with the antennas", """
The number of cells grows with the square of the antennas: 51 antennas have 163 times the data cells
of 4, in the grid as in the report. The time for one cell stays the same or falls. There are 3000 ms
from one poll to the next.
""")
    for aas in SITES:
        grid = engine[f"RedrawnGrid/{aas}"]["real_time"] / 1000
        report = engine[f"Report/New/{aas}"]["real_time"] / 1000
        full, _, plain = redraws[aas]
        cells = (aas + 1) ** 2
        table.row(f"{aas} antennas: cells computed", f"{grid:.3f} ms",
                  f"{grid * 1e6 / cells:.0f} ns a cell")
        table.row("  redrawn in the window", f"{full:.1f} ms",
                  f"{full / plain:.2f} of a plain table")
        table.row("  report written", f"{report:.2f} ms", f"{report * 1e6 / cells:.0f} ns a cell")


def print_lengths(table, console, make_session):
    """`make_session` returns the file of a session with the given number of reports."""
    table.section("Growth with the session", """
Replays of sessions with 51 antennas, polled all the time. Reports are read one at a time and added to
the matrix, so neither the time for a report nor the memory grows with the session. A replay of 30
days takes seconds.
""")
    first = None
    for title, hours in HOURS:
        file = make_session(REPORTS_PER_HOUR * min(hours, LONGEST_FILE_HOURS))
        files = [file] * max(1, hours // LONGEST_FILE_HOURS)
        run = Run([console, "replay", *files])
        reports = REPORTS_PER_HOUR * hours
        size = sum(each.stat().st_size for each in files) / MEGABYTE
        first = first or run
        table.row(f"{title}: {reports} reports, {size:.0f} MB", f"{run.processor:.2f} s",
                  f"{run.processor * 1e6 / reports:.2f} us a report")
        grown = run.megabytes - first.megabytes
        table.row("  memory", f"{run.megabytes:.1f} MB", f"{grown:+.1f} MB", "<= +1 MB", grown <= 1)
