#!/usr/bin/env python3
"""Measures whole programs and the engine, and prints tables of values, ratios and goals.

Usage: figures.py BUILD_FOLDER WORK_FOLDER [DOCUMENT]

The document gets the same tables with explanations.

Rates are per second of processor time, which other work on the machine affects least. Every program
here uses a single processor. Milliseconds are wall time.
"""

import datetime
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys
import tempfile

import agreement
import desktop_figures
import growth_figures
import terminal_figures
from measure import MEGABYTE, Run, median_processor_seconds
from table import Table

BENCH = pathlib.Path(__file__).resolve().parent
CONVERT_ROUNDS = 30
SMALL, LARGE = 10, 100
HUGE_FILES = 10


def engine_figures(build):
    """The medians of the in-process benchmarks, by name."""
    command = [
        build / "bin/kelvara_bench", "--benchmark_format=json", "--benchmark_repetitions=5",
        "--benchmark_report_aggregates_only=true",
    ]
    output = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    runs = json.loads(output.stdout)["benchmarks"]
    return {r["run_name"]: r for r in runs if r["aggregate_name"] == "median"}


def make_session(folder, name, option, amount):
    """A session of 51 antennas with the given length, made once and kept."""
    session = folder / name
    if not session.exists():
        unfinished = session.with_suffix(".part")
        subprocess.run([BENCH / "make_session.py", option, str(amount), unfinished], check=True)
        unfinished.rename(session)
    return session


def session_of_megabytes(folder, megabytes):
    return make_session(folder, f"session-{megabytes}.txt", "--bytes", int(megabytes * MEGABYTE))


def print_replay(table, console, session):
    table.section("Replay", """
A recorded session of 51 antennas is read into the matrix. Two of the peers show how fast the machine
reads text at all: `wc -l` only looks for line feeds, and `grep` for one marker. At 19200 baud a
beltpack sends 1.9 kB/s at most, so a replay reads an hour on the line in hundredths of a second.
""")
    size = session.stat().st_size / MEGABYTE
    seconds = median_processor_seconds({
        "replay": [console, "replay", session],
        "grep": ["grep", "-c", "-i", "100ec", session],
        "wc": ["wc", "-l", session],
    })
    # The plain replay takes so long that one round is enough.
    seconds["peer"] = Run([sys.executable, BENCH / "replay_peer.py", session]).processor
    ratios = {name: other / seconds["replay"] for name, other in seconds.items()}

    def rate(name):
        return f"{size / seconds[name]:.0f} MB/s"

    table.row(f"kelvara-cli replay, {size:.0f} MB", rate("replay"), "", ">= 200",
              size / seconds["replay"] >= 200)
    table.row("  against a plain Python replay", rate("peer"),
              f"{ratios['peer']:.1f} times as fast", ">= 15", ratios["peer"] >= 15)
    table.row("  against grep -c -i 100ec", rate("grep"), f"{ratios['grep']:.2f} times as fast")
    table.row("  against wc -l", rate("wc"), f"{ratios['wc']:.2f} times as fast")


def print_log(table, console, session, folder):
    table.section("Log", """
Each reading is a line of the log, written with one system call, so a killed program loses none. A
live session writes about ten lines every three seconds. The peers write lines of the same file:
`grep` those with a reading, a buffer at a time; a Python script all lines, one call each.
""")
    log, copy = folder / "log.txt", folder / "copy.txt"
    script = ("import os,sys\nout=os.open(sys.argv[2],os.O_WRONLY|os.O_CREAT|os.O_TRUNC)\n"
              "for line in open(sys.argv[1],'rb'): os.write(out,line)")
    for path in (log, copy):
        path.unlink(missing_ok=True)
    plain = Run([console, "replay", session])
    logged = Run([console, "replay", session, "--log", log])
    lines = sum(chunk.count(b"\n") for chunk in iter(lambda f=log.open("rb"): f.read(1 << 20), b""))
    grep = Run(["sh", "-c", f"grep -i neighbour '{session}' >'{copy}'"])
    python = Run([sys.executable, "-c", script, log, copy])
    writing = logged.processor - plain.processor
    table.row(f"replay of {lines} readings, logged", f"{logged.processor:.2f} s",
              f"{lines / logged.processor / 1000:.0f} 000 lines/s")
    table.row("  the writing alone", f"{writing:.2f} s", f"{writing * 1e6 / lines:.2f} us a line")
    table.row("  against Python, a call a line", f"{python.processor:.2f} s",
              f"{python.processor / writing:.1f} times as fast")
    table.row("  against grep into a file", f"{grep.processor:.2f} s",
              f"{grep.processor / writing:.2f} times as fast")
    for path in (log, copy):
        path.unlink()


def print_memory(table, console, sessions):
    table.section("Memory of a replay", """
The console program reads a file in pieces and keeps only the matrix, so it needs the same memory for
ten megabytes as for a thousand.
""")
    small = Run([console, "replay", sessions[SMALL]]).megabytes
    large = Run([console, "replay", sessions[LARGE]]).megabytes
    huge = Run([console, "replay", *[sessions[LARGE]] * HUGE_FILES]).megabytes
    table.row(f"memory for a replay of {SMALL} MB", f"{small:.1f} MB")
    for size, value in ((LARGE, large), (LARGE * HUGE_FILES, huge)):
        table.row(f"memory for a replay of {size} MB", f"{value:.1f} MB",
                  f"{value - small:+.1f} MB", "<= +1 MB", value - small <= 1)


def print_engine(table, figures):
    table.section("Engine", """
The engine alone, in one process and from memory. A newline scan is the least work that text of lines
takes. No line costs an allocation.
""")
    replay, scan = figures["Replay"], figures["NewlineScan"]
    table.row("engine replay from memory", f"{replay['bytes_per_second'] / MEGABYTE:.0f} MB/s")
    table.row("  against a newline scan by memchr",
              f"{scan['bytes_per_second'] / MEGABYTE:.0f} MB/s",
              f"{scan['cpu_time'] / replay['cpu_time']:.2f} times as fast")
    allocations = replay["allocations_per_line"]
    table.row("  allocations per line", f"{allocations:.6g}", "", "0", allocations == 0)
    for name, title, goal in (("FirstGrid/51", "grid of 51 antennas, the first", 1),
                              ("RedrawnGrid/51", "grid of 51 antennas, drawn again", 1),
                              ("Report/New/51", "report of 51 antennas, a new file", 5),
                              ("Report/Replaced/51", "report of 51 antennas, replacing one", None)):
        milliseconds = figures[name]["real_time"] / 1000
        if goal is None:
            table.row(title, f"{milliseconds:.3f} ms")
        else:
            table.row(title, f"{milliseconds:.3f} ms", "", f"< {goal} ms", milliseconds < goal)


def print_convert(table, console):
    runs = [Run([console, "convert", "rfps", "1"]).wall for _ in range(CONVERT_ROUNDS)]
    milliseconds = statistics.median(runs) * 1000
    table.row("kelvara-cli convert, the whole call", f"{milliseconds:.1f} ms", "", "< 30 ms",
              milliseconds < 30)


INTRODUCTION = """
# How fast Kelvara is

Made by `scripts/bench` on {date}, on {cores} cores of "{processor}"
under {system}, {quiet}. The
figures hold for that machine and the programs for Linux; the ratios come from one run, and the goals
are set for them. Rates are per second of processor time, milliseconds are wall time, and the programs
compared take turns.
"""


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.partition(":")[2].strip()
    return platform.machine()


def main():
    build, work = (pathlib.Path(argument) for argument in sys.argv[1:3])
    console = build / "bin/kelvara-cli"
    work.mkdir(parents=True, exist_ok=True)
    load = os.getloadavg()[0]
    sessions = {megabytes: session_of_megabytes(work, megabytes) for megabytes in (SMALL, LARGE)}
    if agreement.disagreement(console, sessions[SMALL]):
        sys.exit("kelvara-cli and the plain replay disagree: the figures would be meaningless")

    table = Table()
    engine = engine_figures(build)
    print_replay(table, console, sessions[LARGE])
    print_log(table, console, sessions[LARGE], work)
    print_memory(table, console, sessions)
    print_engine(table, engine)
    print_convert(table, console)
    with desktop_figures.Screen() as environment, tempfile.TemporaryDirectory() as folder:
        redraws = {aas: desktop_figures.redraw(build, environment, aas)
                   for aas in growth_figures.SITES}
        desktop_figures.print_desktop(table, build, environment, redraws[max(redraws)])
        terminal_figures.print_terminal(table, build, environment, folder)
    growth_figures.print_sites(table, engine, redraws)
    growth_figures.print_lengths(
        table, console,
        lambda reports: make_session(work, f"reports-{reports}.txt", "--reports", reports))
    if len(sys.argv) > 3:
        quiet = f"at a load of {load:.1f} from other work"
        table.write(pathlib.Path(sys.argv[3]), INTRODUCTION.format(
            date=datetime.date.today().isoformat(), cores=os.cpu_count(), processor=processor(),
            system=f"{platform.system()} {platform.machine()}", quiet=quiet))
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
