"""Shared by the packaging tests: the programs' help and the folder that is packed."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
PROGRAMS = pathlib.Path(os.environ["KELVARA_PROGRAMS"])
VERSION = os.environ["KELVARA_VERSION"]
COMMANDS = ("replay", "record", "survey", "convert", "ports", "simulate")


def run(*command, **options):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True,
                          check=False, timeout=60, **options)


def help_of(*command):
    """The help text of a program or of one of its sub-commands."""
    result = run(PROGRAMS / command[0], *command[1:], "--help")
    assert result.returncode == 0, result.stderr
    return result.stdout


def options_of(text):
    """The short and long options that a help text lists."""
    lists = re.findall(r"^ +((?:-\w,)?--[\w-]+)", text, re.MULTILINE)
    return {option for found in lists for option in found.split(",")}


def choices_of(text, option):
    """The values in braces that a help text lists for an option or a field."""
    found = re.search(re.escape(option) + r" \S*:\{([\w,]+)\}", text)
    return set(found.group(1).split(","))


def all_options():
    """The options of each command line that takes any."""
    lines = [("kelvara",), ("kelvara-cli",), *(("kelvara-cli", name) for name in COMMANDS)]
    return {line: options_of(help_of(*line)) for line in lines}


class StagedTest(unittest.TestCase):
    """Provides the folder that is packed, staged once for the class."""

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="kelvara-packaging-")
        cls.addClassCleanup(temporary.cleanup)
        cls.scratch = pathlib.Path(temporary.name)
        cls.folder = cls.scratch / f"kelvara-{VERSION}-linux"
        result = run(PACKAGING / "stage", PROGRAMS, VERSION, cls.folder)
        assert result.returncode == 0, result.stderr
