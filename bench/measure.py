"""Measures whole programs."""

import os
import statistics
import subprocess
import sys
import tempfile
import time

MEGABYTE = 1e6
ROUNDS = 5


class Run:
    """One run of a command: wall time and processor time in seconds, and peak memory."""

    def __init__(self, command):
        start = time.perf_counter()
        # Output goes to a file because grep stops at the first match if its output is discarded.
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
    """The median processor time of each command. The commands take turns."""
    samples = {name: [] for name in commands}
    for _ in range(ROUNDS):
        for name, command in commands.items():
            samples[name].append(Run(command).processor)
    return {name: statistics.median(seconds) for name, seconds in samples.items()}
