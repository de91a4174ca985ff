#!/usr/bin/env python3
"""Measures whole programs and the engine, and prints one table of values, ratios and goals.

Usage: figures.py BUILD_FOLDER WORK_FOLDER

Rates are by processor time, which other work on the machine disturbs least; every program here runs
on one processor. Milliseconds are wall time.
"""

import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import agreement
import desktop_figures
from table import Table

BENCH = pathlib.Path(__file__).resolve().parent
MEGABYTE = 1e6
ROUNDS = 5
CONVERT_ROUNDS = 30
SMALL, LARGE = 10, 100
HUGE_FILES = 10


class Run:
    """One run of a command: seconds of wall time and of processor time, and the most memory held."""

    def __init__(self, command):
        start = time.perf_counter()
        # Into a file, because grep stops at the first line when nobody would read the others.
        with tempfile.TemporaryFile() as output, subprocess.Popen(
            command, stdout=output, stderr=output
        ) as process:
            _, status, usage = os.wait4(process.pid, 0)
            self.wall = time.perf_counter() - start
            process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f"failed: {command}")
        self.processor = usage.ru_utime + usage.ru_stime
        self.megabytes = usage.ru_maxrss * 1024 / MEGABYTE


def median_processor_seconds(commands):
    """The median processor time of each command, all taking turns."""
    samples = {name: [] for name in commands}
    for _ in range(ROUNDS):
        for name, command in commands.items():
            samples[name].append(Run(command).processor)
    return {name: statistics.median(seconds) for name, seconds in samples.items()}


def engine_figures(build):
    """The medians of the in-process benchmarks by name."""
    command = [
        build / "bin/kelvara_bench", "--benchmark_format=json", "--benchmark_repetitions=5",
        "--benchmark_report_aggregates_only=true",
    ]
    output = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    runs = json.loads(output.stdout)["benchmarks"]
    return {r["run_name"]: r for r in runs if r["aggregate_name"] == "median"}


def make_session(folder, megabytes):
    """A session of 51 antennas of that size, made once and kept."""
    session = folder / f"session-{megabytes}.txt"
    if not session.exists():
        size = str(int(megabytes * MEGABYTE))
        unfinished = session.with_suffix(".part")
        subprocess.run([BENCH / "make_session.py", "--bytes", size, unfinished], check=True)
        unfinished.rename(session)
    return session


def print_replay(table, console, session):
    size = session.stat().st_size / MEGABYTE
    seconds = median_processor_seconds({
        "replay": [console, "replay", session],
        "grep": ["grep", "-c", "-i", "100ec", session],
        "wc": ["wc", "-l", session],
    })
    # The plain replay takes so long that one round of it says enough.
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


def print_memory(table, console, sessions):
    small = Run([console, "replay", sessions[SMALL]]).megabytes
    large = Run([console, "replay", sessions[LARGE]]).megabytes
    huge = Run([console, "replay", *[sessions[LARGE]] * HUGE_FILES]).megabytes
    table.row(f"memory for a replay of {SMALL} MB", f"{small:.1f} MB")
    for size, value in ((LARGE, large), (LARGE * HUGE_FILES, huge)):
        table.row(f"memory for a replay of {size} MB", f"{value:.1f} MB",
                  f"{value - small:+.1f} MB", "<= +1 MB", value - small <= 1)


def print_engine(table, figures):
    replay, scan = figures["Replay"], figures["NewlineScan"]
    table.row("engine replay from memory", f"{replay['bytes_per_second'] / MEGABYTE:.0f} MB/s")
    table.row("  against a newline scan by memchr",
              f"{scan['bytes_per_second'] / MEGABYTE:.0f} MB/s",
              f"{scan['cpu_time'] / replay['cpu_time']:.2f} times as fast")
    allocations = replay["allocations_per_line"]
    table.row("  allocations per line", f"{allocations:.6g}", "", "0", allocations == 0)
    for name, title, goal in (("FirstGrid", "grid of 51 antennas, the first", 1),
                              ("RedrawnGrid", "grid of 51 antennas, drawn again", 1),
                              ("Report/New", "report of 51 antennas, a new file", 5),
                              ("Report/Replaced", "report of 51 antennas, replacing one", None)):
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


def main():
    build, work = (pathlib.Path(argument) for argument in sys.argv[1:])
    console = build / "bin/kelvara-cli"
    work.mkdir(parents=True, exist_ok=True)
    sessions = {megabytes: make_session(work, megabytes) for megabytes in (SMALL, LARGE)}
    if agreement.disagreement(console, sessions[SMALL]):
        sys.exit("kelvara-cli and the plain replay disagree: no figure would mean anything")

    table = Table()
    print_replay(table, console, sessions[LARGE])
    print_memory(table, console, sessions)
    print_engine(table, engine_figures(build))
    print_convert(table, console)
    desktop_figures.print_desktop(table, build)
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
