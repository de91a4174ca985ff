"""A screen that nobody sees, and the hands of a user of the desktop program on it."""

import os
import pathlib
import subprocess
import time

SCREEN = (1280, 1024)
MAIN_WINDOW = "^Kelvara$"
PATIENCE_SECONDS = 20


class Lost(Exception):
    """The program has ended, or does not show what its user waits for."""


class Screen:
    """A screen that nobody sees, kept in a file of the folder."""

    def __init__(self, folder):
        reader, writer = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-fbdir", str(folder), "-nolisten", "tcp",
             "-noreset", "-screen", "0", "{}x{}x24".format(*SCREEN)],
            pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as numbers:
            self.name = ":" + numbers.readline().strip()
        self.file = pathlib.Path(folder) / "Xvfb_screen0"

    def end(self):
        self.process.terminate()
        self.process.wait()


class Program:
    """The program in bin of the folder, on that screen, and the hands of its user."""

    def __init__(self, screen, folder, *options, errors=None):
        self.environment = dict(
            os.environ, DISPLAY=screen.name, XDG_CONFIG_HOME=str(folder / "config"),
            XDG_RUNTIME_DIR=str(folder), LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb",
            QT_SCALE_FACTOR="1")
        for name in ("XDG_CURRENT_DESKTOP", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE"):
            self.environment.pop(name, None)
        self.point(SCREEN[0] - 1, SCREEN[1] - 1)
        self.process = subprocess.Popen([folder / "bin/kelvara", *options], cwd=folder,
                                        env=self.environment, stderr=errors)

    def end(self):
        self.process.terminate()
        self.process.wait()

    def has_ended(self):
        return self.process.poll() is not None

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *map(str, arguments)], env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout

    def point(self, x, y):
        self.xdotool("mousemove", x, y)

    def press(self, *keys):
        for key in keys:
            self.xdotool("key", "--clearmodifiers", key)
            time.sleep(0.3)

    def enter(self, text):
        self.xdotool("type", text)
        self.press("Return")

    def windows(self, title):
        """The visible windows of this title."""
        return self.xdotool("search", "--onlyvisible", "--name", title).split()

    def window(self, title, choose=max):
        """The window of this title, listening to the keyboard; of several the widest."""
        end = time.monotonic() + PATIENCE_SECONDS
        while time.monotonic() < end:
            if self.has_ended():
                raise Lost("the program has ended")
            found = self.windows(title)
            if found:
                window = choose(found, key=lambda each: self.area(each)[2])
                self.xdotool("windowfocus", "--sync", window)
                time.sleep(0.5)
                return window
            time.sleep(0.2)
        raise Lost(f"there is no window {title}")

    def area(self, window):
        """Left, top, width and height of a window; all 0 once it is gone."""
        lines = self.xdotool("getwindowgeometry", "--shell", window).split()
        values = dict(line.split("=") for line in lines)
        return [int(values.get(key, 0)) for key in ("X", "Y", "WIDTH", "HEIGHT")]

    def open(self, *keys):
        """Presses keys in the main window, whose menus they open."""
        self.window(MAIN_WINDOW)
        self.press(*keys)
