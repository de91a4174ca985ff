"""Compares the desktop program with an empty window and a plain table, on a virtual screen."""

import os
import pathlib
import statistics
import subprocess
import tempfile
import time

ROUNDS = 25
MEMORY_ROUNDS = 5
IDLE_SETTLING_SECONDS = 12
IDLE_SECONDS = 20


REMARKS = """
The measure of a redraw is a plain table that is filled and painted in the same way; that of start and
memory is an empty window of the same library, without any text. A start takes milliseconds, so other
work on the machine affects its ratio. Memory is measured after the program has settled, with 51
antennas and its icon.
"""


class Screen:
    """A virtual screen, as a context manager that gives the environment for programs."""

    def __enter__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "2560x1440x24"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            number = answer.readline().strip()
        self.settings = tempfile.TemporaryDirectory()
        return dict(os.environ, DISPLAY=f":{number}", XDG_CONFIG_HOME=self.settings.name,
                    QT_QPA_PLATFORM="xcb")

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        self.settings.cleanup()


def output_of(command, environment):
    run = subprocess.run(command, env=environment, stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, check=True, text=True)
    return [float(word) for word in run.stdout.split()]


def median_milliseconds(commands, environment):
    """The median wall time of each command. The commands take turns."""
    samples = {name: [] for name in commands}
    for _ in range(ROUNDS):
        for name, command in commands.items():
            start = time.perf_counter()
            output_of(command, environment)
            samples[name].append((time.perf_counter() - start) * 1000)
    return {name: statistics.median(values) for name, values in samples.items()}


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def idle_share(kelvara, environment):
    """The share of a processor that a connected program uses, in percent."""
    process = subprocess.Popen([kelvara, "--demo"], env=environment, stderr=subprocess.DEVNULL)
    try:
        time.sleep(IDLE_SETTLING_SECONDS)
        before = processor_seconds(process)
        time.sleep(IDLE_SECONDS)
        return (processor_seconds(process) - before) / IDLE_SECONDS * 100
    finally:
        process.kill()
        process.wait()


def redraw(build, environment, aas):
    """The milliseconds of a full redraw, of one that changes nothing, and of a plain table."""
    return output_of([build / "bin/desktop_bench", "redraw", str(aas)], environment)


def print_desktop(table, build, environment, redraw_figures):
    table.section("Desktop program", REMARKS)
    programs = build / "bin"
    full, unchanged, plain = redraw_figures
    start = median_milliseconds({"kelvara": [programs / "desktop_bench", "start"],
                                 "empty": [programs / "empty_window"]}, environment)
    memories = {"kelvara": [programs / "desktop_bench", "memory"],
                "empty": [programs / "empty_window"]}
    memory, empty_memory = (
        statistics.median(output_of(command, environment)[0] for _ in range(MEMORY_ROUNDS))
        for command in memories.values())
    idle = idle_share(programs / "kelvara", environment)

    table.row("redraw of 51 antennas, all changed", f"{full:.1f} ms", "", "<= 50 ms", full <= 50)
    table.row("  against a plain table", f"{plain:.1f} ms", f"{full / plain:.2f} of its time",
              "<= 0.6", full / plain <= 0.6)
    table.row("redraw that changes nothing", f"{unchanged:.1f} ms", "", "<= 5 ms", unchanged <= 5)
    ratio = start["kelvara"] / start["empty"]
    table.row("start to the first painted window", f"{start['kelvara']:.0f} ms")
    table.row("  against an empty window", f"{start['empty']:.0f} ms", f"{ratio:.2f} of its time",
              "<= 1.5", ratio <= 1.5)
    ratio = memory / empty_memory
    table.row("memory with 51 antennas", f"{memory / 1000:.1f} MB")
    table.row("  against an empty window", f"{empty_memory / 1000:.1f} MB",
              f"{ratio:.2f} of its size", "<= 1.5", ratio <= 1.5)
    table.row("idle, connected, 12 antennas", f"{idle:.2f} %", "", "< 0.5 %", idle < 0.5)
