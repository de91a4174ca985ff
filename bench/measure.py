"""How whole programs are measured."""

import os
import statistics
import subprocess
import sys
import tempfile
import time

MEGABYTE = 1e6
ROUNDS = 5


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
