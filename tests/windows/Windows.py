"""What the tests of the Windows programs share: Wine's Windows, its screen and a simulated beltpack.

Run through under-wine, with KELVARA_PACKAGE naming the folder of the archive and the installer,
KELVARA_VERSION their version, and KELVARA_SIMULATOR a kelvara-cli of this machine.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest

WINE = os.environ["KELVARA_WINE"]
PREFIX = pathlib.Path(os.environ["WINEPREFIX"])
OPENED = pathlib.Path(os.environ["KELVARA_OPENED"])
PACKAGE = pathlib.Path(os.environ["KELVARA_PACKAGE"])
VERSION = os.environ["KELVARA_VERSION"]
SIMULATOR = os.environ["KELVARA_SIMULATOR"]
PICTURES = pathlib.Path(os.environ["KELVARA_PICTURES"])
INSTALLER = PACKAGE / f"kelvara-{VERSION}-windows-x86_64-setup.exe"
PATIENCE = 40


def variable(name):
    """A variable of Windows' user."""
    return run("cmd", "/c", f"echo %{name}%").stdout.decode().strip()


def run(*command, **options):
    """Runs a program of Windows to its end."""
    return subprocess.run([WINE, *map(str, command)], stdin=options.pop("stdin", subprocess.DEVNULL),
                          capture_output=True, timeout=120, **options)


def host_path(windows_path):
    """Where this machine keeps a file of drive C."""
    assert windows_path.upper().startswith("C:"), windows_path
    return PREFIX / "drive_c" / windows_path[3:].replace("\\", "/")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def registry(key, value=None):
    """A value of the user's registry, or None."""
    which = ["/v", value] if value else ["/ve"]
    result = run("reg", "query", "HKCU\\" + key, *which)
    lines = [line for line in result.stdout.decode().splitlines() if "REG_" in line]
    return lines[0].split("REG_", 1)[1].split(None, 1)[1].strip() if lines else None


def wait_for(what, condition, patience=PATIENCE):
    """Waits until a condition is true and returns its value."""
    end = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.1)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True,
                          timeout=30).stdout.split()


class Beltpack:
    """A simulated beltpack on a COM port of Windows."""

    def __init__(self, folder, port, *options):
        self.link = PREFIX / "dosdevices" / f"com{port}"
        self.commands = folder / "commands.log"
        self.process = subprocess.Popen(
            [SIMULATOR, "simulate", "--control", "--link", str(self.link), "--log-commands",
             str(self.commands), *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.process.stdout.readline()

    def tell(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def unplug(self):
        self.tell("unplug")
        wait_for("the device to go", lambda: not self.link.exists())

    def plug(self):
        self.tell("plug")
        wait_for("the device to return", self.link.exists)

    def command_count(self):
        return len(self.commands.read_text().splitlines()) if self.commands.exists() else 0

    def wait_for_commands(self, more):
        count = self.command_count() + more
        wait_for(f"{more} commands", lambda: self.command_count() >= count)

    def end(self):
        self.process.stdin.close()
        self.process.wait(PATIENCE)
        self.process.stdout.close()
        self.link.unlink(missing_ok=True)


class Desktop:
    """A running kelvara.exe."""

    def __init__(self, program, *arguments, env=None):
        self.process = subprocess.Popen([WINE, str(program), *map(str, arguments)],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, env={**os.environ, **(env or {})})

    def window(self, title, patience=PATIENCE):
        """Waits for a window, by a regular expression for its title, and makes it the active one."""
        found = wait_for(f'the window "{title}"', lambda: xdotool(
            "search", "--onlyvisible", "--name", f"^{title}$"), patience)
        window = found[-1]
        wait_for(f'the window "{title}" to be active', lambda: (
            xdotool("windowactivate", window),
            xdotool("getactivewindow") == [window])[-1])
        time.sleep(0.3)
        return window

    def keys(self, title, *keys):
        self.window(title)
        for key in keys:
            xdotool("key", "--clearmodifiers", key)
            time.sleep(0.3)

    def open(self, title, parent, *keys):
        """Opens a window by keys. A menu that was not open yet when its key came is tried again."""
        for patience in (8, 8, PATIENCE):
            self.keys(parent, *keys)
            try:
                return self.window(title, patience)
            except AssertionError:
                if patience == PATIENCE:
                    raise
                xdotool("key", "Escape", "Escape")

    def type(self, title, text):
        self.window(title)
        xdotool("type", "--clearmodifiers", "--delay", "20", text)
        time.sleep(0.2)

    def wait_until_closed(self, title):
        wait_for(f'the window "{title}" to close', lambda: not xdotool(
            "search", "--onlyvisible", "--name", f"^{title}$"))

    def picture(self, title, name):
        """Takes a picture of a window and returns the number of its colours."""
        window = self.window(title)
        PICTURES.mkdir(parents=True, exist_ok=True)
        file = PICTURES / f"{name}.png"
        subprocess.run(["import", "-window", window, str(file)], check=True, timeout=30)
        return int(subprocess.run(["identify", "-format", "%k", str(file)], check=True,
                                  capture_output=True, timeout=30).stdout)

    def exit_code(self):
        """The exit code, after the program's end."""
        code = self.process.wait(PATIENCE)
        self.process.stdout.close()
        return code

    def kill(self):
        """Ends the program without giving it a chance to do anything."""
        run("taskkill", "/f", "/im", "kelvara.exe")
        self.exit_code()


class WindowsTest(unittest.TestCase):
    """Tests of the installed programs, each with a folder of its own."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="kelvara-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        OPENED.write_text("")
        self.programs = host_path(variable("LOCALAPPDATA")) / "Programs" / "Kelvara"
        self.settings = host_path(variable("APPDATA")) / "CorvanaSync" / "CorvanaSync.ini"

    def install(self):
        self.assertEqual(run(INSTALLER, "/S").returncode, 0)
        self.addCleanup(shutil.rmtree, self.programs, ignore_errors=True)
        self.addCleanup(self.uninstall, "/DATA")

    def uninstall(self, *options):
        program = self.programs / "uninstall.exe"
        if program.exists():
            # With "_?=" the uninstaller runs from its own folder, so its end can be waited for.
            run(program, "/S", *options, "_?=" + variable("LOCALAPPDATA") + "\\Programs\\Kelvara")
            program.unlink(missing_ok=True)

    def beltpack(self, port=7, *options):
        beltpack = Beltpack(self.folder, port, *options)
        self.addCleanup(beltpack.end)
        return beltpack

    def start(self, *arguments, env=None):
        desktop = Desktop(self.programs / "kelvara.exe", *arguments, env=env)
        self.addCleanup(lambda: desktop.process.poll() is None and desktop.kill())
        return desktop

    def read(self, name):
        path = self.folder / name
        return path.read_bytes().decode("cp1252") if path.exists() else ""
