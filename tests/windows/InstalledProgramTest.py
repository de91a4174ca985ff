"""The installed programs on a COM port, with real keys, from the start to the report."""

import os
import re
import subprocess
import unittest

from Windows import (OPENED, WINE, WindowsTest, host_path, run, variable, wait_for, windows_path,
                     xdotool)

MAIN = "Kelvara"
CAPTURE = "Capture Sync Reports To File"
REPORT = "Generate Reoprt"


class InstalledProgramTest(WindowsTest):
    def setUp(self):
        super().setUp()
        self.install()

    def start_on_port_7(self, *arguments, env=None):
        """Starts the program with COM7 remembered, and waits for its main window."""
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        if not self.settings.exists():
            self.settings.write_text("[Settings]\nComPort=7\n")
        desktop = self.start("--raw", windows_path(self.folder / "trace.txt"), *arguments, env=env)
        desktop.window(MAIN)
        return desktop

    def capture(self, desktop, name):
        desktop.open(CAPTURE, MAIN, "alt+t", "l")
        desktop.type(CAPTURE, windows_path(self.folder / name))
        desktop.keys(CAPTURE, "Return")
        desktop.wait_until_closed(CAPTURE)

    def lines(self, name):
        return self.read(name).splitlines()

    def readings(self, name):
        return [line for line in self.lines(name) if "->" in line]

    def close(self, desktop):
        desktop.keys(MAIN, "alt+f", "e")
        self.assertEqual(desktop.exit_code(), 0)

    def journals(self):
        sessions = host_path(variable("LOCALAPPDATA")) / "CorvanaSync" / "sessions"
        return sorted(sessions.glob("*.trace"))

    def settings_lines(self):
        return self.settings.read_text("cp1252").splitlines()

    def test_a_session_from_the_start_to_the_report(self):
        beltpack = self.beltpack()
        desktop = self.start_on_port_7()
        self.capture(desktop, "readings.txt")
        wait_for("readings of two reports", lambda: len(self.readings("readings.txt")) > 12)
        report = self.folder / "report.html"
        desktop.open(REPORT, MAIN, "alt+t", "g")
        desktop.type(REPORT, windows_path(report))
        desktop.keys(REPORT, "Tab", "Tab")
        desktop.type(REPORT, "Harbour Theatre")
        desktop.keys(REPORT, "alt+g")
        desktop.wait_until_closed(REPORT)
        wait_for("the report to be opened", lambda: "report.html" in OPENED.read_text())
        desktop.keys(MAIN, "F1")
        wait_for("the help to be opened", lambda: "index.htm" in OPENED.read_text())
        beltpack.tell("fault silent:always")
        beltpack.wait_for_commands(2)
        self.close(desktop)

        text = self.read("report.html")
        self.assertIn("Harbour Theatre", text)
        self.assertTrue(text.endswith("</html>\r\n"))
        self.assertNotIn("\n", self.read("readings.txt").replace("\r\n", ""))
        self.assertIn("Harbour Theatre", (self.programs / "rfields.ds").read_text())
        self.assertIn("LastReportFile=" + windows_path(report), self.settings_lines())
        # The readings in the log are those of the trace.
        log = self.folder / "replayed.log"
        replay = run(self.programs / "kelvara-cli.exe", "replay", "trace.txt", "--log", log.name,
                     cwd=self.folder)
        self.assertEqual(replay.returncode, 0, replay.stderr)
        logged = [line.split(", ", 1)[1] for line in self.readings("readings.txt")]
        replayed = [line.split(", ", 1)[1] for line in self.readings("replayed.log")]
        self.assertEqual(logged, replayed[len(replayed) - len(logged):])

    def test_a_pulled_cable_is_found_again(self):
        beltpack = self.beltpack()
        desktop = self.start_on_port_7()
        self.capture(desktop, "readings.txt")
        wait_for("a reading", lambda: self.readings("readings.txt"))
        beltpack.unplug()
        before = len(self.readings("readings.txt"))
        beltpack.plug()
        wait_for("a reading after the cable is back",
                 lambda: len(self.readings("readings.txt")) > before + 12)
        self.close(desktop)

    def test_settings_and_readings_survive_a_kill(self):
        self.beltpack()
        desktop = self.start_on_port_7()
        self.capture(desktop, "readings.txt")
        wait_for("a reading", lambda: self.readings("readings.txt"))
        desktop.kill()
        before = self.lines("readings.txt")
        self.assertTrue(self.read("readings.txt").endswith("\r\n"))
        self.assertIn("LastFile=" + windows_path(self.folder / "readings.txt"),
                      self.settings_lines())
        desktop = self.start_on_port_7()
        desktop.open(CAPTURE, MAIN, "alt+t", "l")
        desktop.keys(CAPTURE, "Return")
        desktop.wait_until_closed(CAPTURE)
        wait_for("more readings", lambda: len(self.lines("readings.txt")) > len(before) + 2)
        self.close(desktop)
        self.assertEqual(self.lines("readings.txt")[:len(before)], before)

    def test_a_killed_session_is_continued_and_reviewed(self):
        def has_report(journals):
            # What came before the last request has come whole.
            return any(b"Neighbour" in journal.read_bytes().rpartition(b"\x01rfps\x02")[0]
                       for journal in journals)

        self.beltpack()
        desktop = self.start_on_port_7()
        wait_for("a report in a journal", lambda: has_report(self.journals()))
        desktop.kill()
        journal, = self.journals()
        before = journal.read_bytes()
        desktop = self.start_on_port_7()
        wait_for("a report in another journal",
                 lambda: has_report(set(self.journals()) - {journal}))
        wait_for("the session to be continued",
                 lambda: (desktop.keys(MAIN, "alt+n"), self.journals() == [journal])[-1])
        self.close(desktop)
        text = journal.read_bytes()
        self.assertTrue(text.startswith(before[:before.rindex(b"\n")]))
        self.assertTrue(text.endswith(b"\x01!end\x02"))

        desktop = self.start(windows_path(journal))
        desktop.keys(MAIN, "Home", "End")
        self.assertGreater(desktop.picture(MAIN, "review"), 8)
        self.close(desktop)

    def test_a_session_that_cannot_be_reviewed_is_told(self):
        desktop = self.start(windows_path(self.folder / "missing.trace"))
        desktop.keys("Kelvara", "Return")
        self.assertEqual(desktop.exit_code(), 1)

    def test_the_console_program_records_and_replays(self):
        self.beltpack()
        program = self.programs / "kelvara-cli.exe"
        record = run(program, "record", "--com", "7", "--reports", "2", "--raw", "trace.txt",
                     cwd=self.folder)
        self.assertEqual(record.returncode, 0, record.stderr)
        with open(self.folder / "trace.txt", "rb") as trace:
            replay = run(program, "replay", "-", stdin=trace)
        self.assertEqual(replay.stdout, record.stdout)
        self.assertRegex(replay.stdout.decode(), r"^Reports: 2\nAAs: \d+\n$")

    def test_its_help_goes_to_the_output_it_was_given(self):
        self.assertIn(b"--demo", run(self.programs / "kelvara.exe", "--help").stdout)

    def test_every_window_at_two_scales(self):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        for scale in ("1", "1.5"):
            desktop = self.start("--demo", env={"QT_SCALE_FACTOR": scale})
            for title, keys, name in (
                    (MAIN, (), "main"), (CAPTURE, ("alt+t", "l"), "capture"),
                    (REPORT, ("alt+t", "g"), "report"), ("Converter", ("alt+t", "c"), "converter"),
                    ("Select Serial Port", ("alt+f", "s"), "port"),
                    ("About Kelvara", ("alt+h", "a"), "about"),
                    ("Survey", ("alt+s",), "survey")):
                if keys:
                    desktop.open(title, MAIN, *keys)
                self.assertGreater(desktop.picture(title, f"{name}-{scale}"), 8, title)
                if keys:
                    desktop.keys(title, "Escape")
                    desktop.wait_until_closed(title)
            self.close(desktop)


if __name__ == "__main__":
    unittest.main()
