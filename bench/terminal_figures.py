"""Compares the desktop program with CuteCom, a serial terminal that a user might use instead, on
simulated beltpacks."""

import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

ROUNDS = 9
SETTLING_SECONDS = 10
# Time for the watcher to register with the X server, which it does not report.
WATCH_SECONDS = 0.5
REMARKS = """
CuteCom shows received text and sends typed text; it does not poll, parse or draw a grid. Each program
opens the pseudo-terminal of a simulated beltpack. The start is the time from the start of the process
until the X server maps its window, as `xev` reports it. Memory is measured with the port open, {} s later.
"""


class Beltpack:
    """A simulated beltpack for one run of a program. A killed program leaves its exclusive lock on
    the pseudo-terminal, so that an ordinary user's programs can no longer open it."""

    def __init__(self, console, device):
        self.command = [console, "simulate", "--link", device]

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdout=subprocess.PIPE, text=True)
        self.process.stdout.readline()

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()


def configure_cutecom(environment, device):
    """Configures its session for the device, as a user does once in its settings."""
    folder = pathlib.Path(environment["XDG_CONFIG_HOME"]) / "CuteCom"
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "CuteCom5.conf").write_text(
        "[sessions]\n1\\BaudRate=19200\n1\\DataBits=8\n"
        f"1\\Device={device}\n1\\FlowControl=0\n1\\OpenMode=3\n1\\Parity=0\n1\\StopBits=1\n"
        "1\\name=Default\nsize=1\n\n[cutecom]\nCurrentSession=Default\n")


def seconds_to_window(command, environment):
    """From the start of a program until its first window is mapped."""
    with subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "substructure"],
                          env=environment, stdout=subprocess.PIPE, text=True) as watch:
        time.sleep(WATCH_SECONDS)
        start = time.perf_counter()
        with subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL) as program:
            for line in watch.stdout:
                if line.startswith("MapNotify"):
                    break
            seconds = time.perf_counter() - start
            program.terminate()
        watch.kill()
    return seconds


def holds(process, device):
    """Whether a process has the device open."""
    target = os.path.realpath(device)
    folder = pathlib.Path(f"/proc/{process.pid}/fd")
    return any(os.path.realpath(name) == target for name in folder.iterdir())


def megabytes_with_port(command, environment, device, keys):
    """The memory of a program with the port open. `keys` are what a user types to open it."""
    with subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as program:
        time.sleep(2)
        for action in keys:
            subprocess.run(["xdotool", *action], env=environment, check=True,
                           stdout=subprocess.DEVNULL)
            time.sleep(0.3)
        time.sleep(SETTLING_SECONDS)
        if not holds(program, device):
            program.terminate()
            sys.exit(f"{command[0]} did not open the port. Perhaps a killed program of another user "
                     "left its lock in /run/lock.")
        status = pathlib.Path(f"/proc/{program.pid}/status").read_text()
        program.terminate()
    return int(status.split("VmRSS:")[1].split()[0]) * 1024 / 1e6


def print_terminal(table, build, environment, folder):
    table.section("Beside a serial terminal", REMARKS.format(SETTLING_SECONDS))
    if shutil.which("cutecom") is None:
        sys.exit("CuteCom is missing")
    device = pathlib.Path(folder) / "beltpack"
    beltpack = Beltpack(build / "bin/kelvara-cli", device)
    configure_cutecom(environment, device)
    commands = {"kelvara": [build / "bin/kelvara", "--com", f"1={device}"], "cutecom": ["cutecom"]}
    keys = {"kelvara": [],
            "cutecom": [["search", "--sync", "--onlyvisible", "--name", "CuteCom", "windowfocus"],
                        ["key", "alt+o"]]}
    seconds = {name: [] for name in commands}
    for _ in range(ROUNDS):
        for name, command in commands.items():
            with beltpack:
                seconds[name].append(seconds_to_window(command, environment))
    start = {name: statistics.median(values) * 1000 for name, values in seconds.items()}
    memory = {}
    for name, command in commands.items():
        with beltpack:
            memory[name] = megabytes_with_port(command, environment, device, keys[name])
    table.row("start until the window is there", f"{start['kelvara']:.0f} ms")
    table.row("  against CuteCom", f"{start['cutecom']:.0f} ms",
              f"{start['kelvara'] / start['cutecom']:.2f} of its time")
    table.row("memory, port open", f"{memory['kelvara']:.1f} MB")
    table.row("  against CuteCom", f"{memory['cutecom']:.1f} MB",
              f"{memory['kelvara'] / memory['cutecom']:.2f} of its size")
