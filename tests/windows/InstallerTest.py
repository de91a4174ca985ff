"""The installer installs, updates and removes the programs for one user, silently."""

import unittest
import zipfile

from Windows import (INSTALLER, PACKAGE, VERSION, WindowsTest, host_path, registry, run, variable)

UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Kelvara"
FILES = ("kelvara.exe", "kelvara-cli.exe", "LICENSE.txt", "README.txt", "Help/index.htm",
         "examples/recorded-session.txt", "licenses/Qt-LGPL-3.0-only.txt",
         "licenses/Qt-third-party.txt", "licenses/building-qt/HOW-TO.txt", "uninstall.exe")


class InstallerTest(WindowsTest):
    def start_menu(self):
        return (host_path(variable("APPDATA")) /
                "Microsoft/Windows/Start Menu/Programs/Kelvara/Kelvara.lnk")

    def test_installs_everything_for_the_user(self):
        self.install()
        for name in FILES:
            self.assertTrue((self.programs / name).is_file(), name)
        self.assertTrue(self.start_menu().is_file())
        self.assertEqual(registry(UNINSTALL_KEY, "DisplayVersion"), VERSION)
        self.assertIn("kelvara.exe\" \"%1\"", registry(
            r"Software\Classes\Kelvara.Trace\shell\open\command"))
        self.assertEqual(registry(r"Software\Classes\.trace"), "Kelvara.Trace")
        self.assertEqual(run(self.programs / "kelvara-cli.exe", "--version").stdout,
                         f"Kelvara v{VERSION}\n".encode())

    def test_an_update_removes_old_program_files_and_keeps_the_users(self):
        self.install()
        (self.programs / "rfields.ds").write_text("Harbour Theatre")
        (self.programs / "report.html").write_text("a report")
        (self.programs / "kelvara.exe").write_bytes(b"an older version")
        self.assertEqual(run(INSTALLER, "/S").returncode, 0)
        self.assertEqual((self.programs / "rfields.ds").read_text(), "Harbour Theatre")
        self.assertEqual((self.programs / "report.html").read_text(), "a report")
        self.assertGreater((self.programs / "kelvara.exe").stat().st_size, 1_000_000)

    def test_a_silent_removal_keeps_the_users_data(self):
        self.install()
        (self.programs / "rfields.ds").write_text("Harbour Theatre")
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text("[Settings]\n")
        self.uninstall()
        self.assertEqual([path.name for path in self.programs.iterdir()], ["rfields.ds"])
        self.assertTrue(self.settings.exists())
        self.assertFalse(self.start_menu().exists())
        self.assertIsNone(registry(UNINSTALL_KEY, "DisplayVersion"))
        self.assertIsNone(registry(r"Software\Classes\.trace"))

    def test_a_removal_with_data_removes_that_too(self):
        self.install()
        (self.programs / "rfields.ds").write_text("Harbour Theatre")
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text("[Settings]\n")
        self.uninstall("/DATA")
        self.assertFalse(self.settings.parent.exists())
        self.assertEqual(list(self.programs.glob("*")), [])

    def test_a_console_window_finds_the_console_program(self):
        self.install()
        self.assertEqual(run("cmd", "/c", "kelvara-cli --version").stdout,
                         f"Kelvara v{VERSION}\n".encode())
        self.uninstall()
        self.assertIsNone(registry("Environment", "Path"))

    def test_the_users_path_is_kept(self):
        folder = variable("LOCALAPPDATA") + "\\Programs\\Kelvara"
        self.addCleanup(run, "reg", "delete", r"HKCU\Environment", "/v", "Path", "/f")
        for path in (r"C:\tools", r"C:\tools;%USERPROFILE%\bin"):
            run("reg", "add", r"HKCU\Environment", "/v", "Path", "/t", "REG_EXPAND_SZ", "/d", path, "/f")
            self.install()
            self.assertEqual(registry("Environment", "Path"), f"{path};{folder}")
            self.assertEqual(run(INSTALLER, "/S").returncode, 0)
            self.assertEqual(registry("Environment", "Path"), f"{path};{folder}")
            self.uninstall()
            self.assertEqual(registry("Environment", "Path"), path)

    def test_a_path_that_is_too_long_for_the_installer_is_left_alone(self):
        self.addCleanup(run, "reg", "delete", r"HKCU\Environment", "/v", "Path", "/f")
        for length in (980, 1023, 1024, 3000):
            path = "C:\\tools;" + "x" * (length - 9)
            run("reg", "add", r"HKCU\Environment", "/v", "Path", "/d", path, "/f")
            self.install()
            self.assertEqual(registry("Environment", "Path"), path)
            self.uninstall()
            self.assertEqual(registry("Environment", "Path"), path)

    def test_the_archive_has_the_same_files(self):
        self.install()
        installed = {path.relative_to(self.programs).as_posix()
                     for path in self.programs.rglob("*") if path.is_file()}
        with zipfile.ZipFile(PACKAGE / f"kelvara-{VERSION}-windows-x86_64.zip") as archive:
            packed = {name.removeprefix("kelvara/") for name in archive.namelist()
                      if not name.endswith("/")}
        self.assertEqual(packed, installed - {"uninstall.exe"})


if __name__ == "__main__":
    unittest.main()
