"""What is watched while the desktop program is left to a restless user, and what must hold then."""

import json
import os
import pathlib
import re
import statistics
import subprocess
import time
from typing import NamedTuple

from desktop_user import Lost

STAMP = rb"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d, "
MOST_GROWTH_KILOBYTES = 2048
# The port and its lock, the log, the trace, the standard error and one file being written.
MOST_FILES = 7
SAMPLE_SECONDS = 5


class Sample(NamedTuple):
    """What the process held at one moment."""

    kilobytes: int
    # The port, its lock and what is written to, open at some moments and closed at others.
    files: int
    other_handles: int


class Watch:
    """What the process held over time."""

    def __init__(self, process, folder):
        self.process = process
        self.folder = folder
        self.samples = []
        self.next = time.monotonic()

    def look(self):
        if time.monotonic() < self.next:
            return
        self.next += SAMPLE_SECONDS
        of_process = pathlib.Path(f"/proc/{self.process.pid}")
        memory = re.search(r"VmRSS:\s+(\d+)", (of_process / "status").read_text())
        if not memory:
            raise Lost("the program has ended")
        handles = [target(handle) for handle in (of_process / "fd").iterdir()]
        files = sum(handle.startswith(("/dev/pts/", f"{self.folder}/")) or "/LCK.." in handle
                    for handle in handles)
        self.samples.append(Sample(int(memory.group(1)), files, len(handles) - files))

    def part(self, start, end):
        count = len(self.samples)
        return self.samples[int(count * start):max(int(count * end), int(count * start) + 1)]


def target(handle):
    """What a handle leads to; nothing when it has been closed since."""
    try:
        return os.readlink(handle)
    except FileNotFoundError:
        return ""


class Checks:
    """What must hold at the end, each said with what was seen."""

    def __init__(self):
        self.failed = False

    def check(self, holds, what):
        self.failed = self.failed or not holds
        print(("ok      " if holds else "WRONG   ") + what)


def phases(path):
    """The readings of a log in their order; the units and bases may have changed on the way."""
    return re.findall(rb"=(-?\d+)\r\n", path.read_bytes())


def are_runs(runs, whole):
    """Whether each run stands in the whole, one behind the other."""
    text = b" " + b" ".join(whole) + b" "
    at = 0
    for run in filter(None, runs):
        words = b" " + b" ".join(run) + b" "
        at = text.find(words, at)
        if at < 0:
            return False
        at += len(words) - 1
    return True


def check_files(checks, cli, folder, names, report_names):
    """Checks the logs, named in the order in which they were written, against the trace, and the
    reports."""
    log = b"".join(name.read_bytes() for name in names)
    checks.check(names and all(name.read_bytes().endswith(b"\r\n") for name in names),
                 f"{len(names)} logs of {len(log)} bytes end with a whole line")
    odd = [line for line in log.split(b"\r\n")[:-1]
           if not re.fullmatch(STAMP + rb"([0-9A-F]+(\[\w+\])?->[0-9A-F]+(\[\w+\])?=-?\d+|[A-Z].+)",
                               line)]
    checks.check(not odd, f"every line of the log is whole {odd[:1] or ''}")
    subprocess.run([cli, "replay", folder / "line.trace", "--log", folder / "replayed.txt",
                    "--json", folder / "replayed.json"], check=True, stdout=subprocess.DEVNULL)
    replayed = phases(folder / "replayed.txt")
    live = [phases(name) for name in names]
    reports = json.loads((folder / "replayed.json").read_text())["reports"]
    checks.check(any(live) and are_runs(live, replayed),
                 f"{sum(map(len, live))} readings captured live are {len(live)} unbroken runs of "
                 f"the {len(replayed)} replayed from the trace of {reports} reports")
    written = [name for name in report_names if (folder / name).exists()]
    checks.check(written, f"{len(written)} reports were written")
    for name in written:
        text = (folder / name).read_bytes().strip().lower()
        checks.check(text.startswith(b"<") and text.endswith(b"</html>"),
                     f"{name} is whole ({len(text)} bytes)")
    settings = (folder / "config/CorvanaSync/CorvanaSync.ini").read_text()
    checks.check(all(re.fullmatch(r"\[\w+\]|\w+=.*|", line) for line in settings.split("\n")),
                 f"the settings of {len(settings)} bytes are whole")


def check_watch(checks, watch):
    quarters = [watch.part(start / 4, (start + 1) / 4) for start in range(4)]
    # What the windows that are opened for the first time add belongs to the first quarter.
    warm, last = quarters[1], quarters[3]
    memory = [statistics.median(sample.kilobytes for sample in part) for part in quarters]
    checks.check(memory[3] - memory[1] <= MOST_GROWTH_KILOBYTES,
                 f"memory by quarters {', '.join(f'{kilobytes:.0f}' for kilobytes in memory)} kB "
                 f"(the last at most {MOST_GROWTH_KILOBYTES} above the second), "
                 f"{max(sample.kilobytes for sample in watch.samples)} kB at most")
    fewest = [min(sample.other_handles for sample in part) for part in (warm, last)]
    most_files = max(sample.files for sample in watch.samples)
    checks.check(fewest[0] == fewest[1] and most_files <= MOST_FILES,
                 f"handles at rest: {fewest[0]} in the second quarter, {fewest[1]} in the last; "
                 f"port and files: {most_files} at most")
