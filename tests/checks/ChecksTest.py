"""Runs the checks of the source tree on trees and files that break their rules."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"


def run(script, *arguments):
    return subprocess.run(
        [SCRIPTS / script, *arguments], capture_output=True, text=True, check=False
    )


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)


class CheckLayersTest(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("base/Fault.h", "#include <string>\n")
        self.write("sync/Model.h", '#include "base/Fault.h"\n')
        self.write("sync/Model.cpp", '#include "sync/Model.h"\n')
        self.write("app/Session.h", '#include "sync/Model.h"\n')
        self.write("app/Session.cpp", '#include "app/Session.h"\n')
        self.write("app/CMakeLists.txt", "kelvara_desktop(\n  FrmMain.h)\n")
        self.write("sync/CMakeLists.txt", "kelvara_desktop(\n  GridView.cpp)\n")
        self.write("app/FrmMain.h", '#include <QMainWindow>\n#include "app/Session.h"\n')
        self.write("sync/GridView.h", "#include <QTableView>\n")
        self.write("sync/GridView.cpp", '#include "sync/GridView.h"\n')
        self.write("cli/Main.cpp", '#include "app/Session.h"\n#include "platform/qt/Clock.h"\n')
        self.write("platform/qt/Clock.h", "#include <QDateTime>\n")

    def expect_fault(self, *parts):
        result = run("check-layers", self.root)
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        self.assertEqual(len(result.stdout.splitlines()), 1, result.stdout)
        for part in parts:
            self.assertIn(part, result.stdout)

    def test_a_correct_tree_passes(self):
        result = run("check-layers", self.root)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def test_an_include_of_a_higher_layer_is_found(self):
        self.write("base/Fault.h", '#include <string>\n#include "sync/Model.h"\n')
        self.expect_fault("base/Fault.h:2:", "sync/Model.h")

    def test_a_relative_include_of_a_higher_layer_is_found(self):
        self.write("sync/Model.cpp", '#include "../app/Session.h"\n')
        self.expect_fault("sync/Model.cpp:1:", "../app/Session.h")

    def test_an_include_within_the_same_layer_is_found(self):
        self.write("convert/Units.h", "")
        self.write("capture/Capture.h", '#include "convert/Units.h"\n')
        self.expect_fault("capture/Capture.h:1:", "convert/Units.h")

    def test_an_engine_file_that_includes_its_window_is_found(self):
        self.write("app/Session.cpp", '#include "app/FrmMain.h"\n')
        self.expect_fault("app/Session.cpp:1:", "windows")

    def test_a_console_file_that_includes_a_window_is_found(self):
        self.write("cli/Main.cpp", '#include "app/FrmMain.h"\n')
        self.expect_fault("cli/Main.cpp:1:", "windows")

    def test_a_window_may_include_lower_layers(self):
        self.write("sync/GridView.h", '#include <QTableView>\n#include "platform/qt/Clock.h"\n')
        self.assertEqual(run("check-layers", self.root).returncode, 0)

    def test_a_qt_header_in_the_engine_is_found(self):
        for header in ("QString", "QtCore/QString", "qglobal.h"):
            with self.subTest(header=header):
                self.write("sync/Model.h", f"#include <{header}>\n")
                self.expect_fault("sync/Model.h:1:", header)

    def test_every_folder_of_the_engine_is_free_of_qt(self):
        for folder in ("capture", "convert", "help", "link", "report", "sessions", "survey"):
            with self.subTest(folder=folder):
                self.write(f"{folder}/Duty.cpp", "#include <QString>\n")
                self.expect_fault(f"{folder}/Duty.cpp:1:", "QString")
                self.write(f"{folder}/Duty.cpp", "")

    def test_a_thread_header_in_the_engine_is_found(self):
        self.write("sync/Model.h", "#include <thread>\n")
        self.expect_fault("sync/Model.h:1:", "thread")

    def test_a_folder_without_a_layer_is_found(self):
        self.write("unknown/Old.h", "")
        self.expect_fault("unknown/Old.h:1:", "no layer")


class CheckFormatTest(TreeTest):
    def setUp(self):
        super().setUp()
        self.write(".clang-format", (SCRIPTS.parent / ".clang-format").read_text())

    def test_a_formatted_file_passes(self):
        self.write("Good.cpp", "int Good() { return 1; }\n")
        self.assertEqual(run("check-format", self.root).returncode, 0)

    def test_an_unformatted_file_is_found(self):
        self.write("Good.cpp", "int Good() { return 1; }\n")
        self.write("sub/Bad.h", "int  Bad ( ) ;\n")
        result = run("check-format", self.root)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("sub/Bad.h:1:", result.stderr)


class CheckBinariesTest(unittest.TestCase):
    def test_a_file_that_loads_the_desktop_is_found(self):
        result = run("check-no-desktop", os.environ["KELVARA_QT_LIBRARY"])
        self.assertEqual(result.returncode, 1)
        self.assertIn("libQt6Gui", result.stdout)

    def test_objects_that_need_qt_are_found(self):
        result = run("check-no-qt", os.environ["KELVARA_QT_OBJECTS"])
        self.assertEqual(result.returncode, 1)
        self.assertIn("QString", result.stdout)

    def test_a_missing_file_does_not_pass(self):
        for script in ("check-no-desktop", "check-no-qt"):
            with self.subTest(script=script):
                self.assertNotEqual(run(script, "/nowhere/at/all").returncode, 0)


if __name__ == "__main__":
    unittest.main()
