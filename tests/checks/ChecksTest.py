"""The checks of the source tree, tried on trees and files that break their rules."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"

ENGINE_LIST = "add_library(kelvara_engine STATIC\n  app/Session.cpp\n  sync/Model.cpp)\n"


def run(script, *arguments):
    return subprocess.run(
        [SCRIPTS / script, *arguments], capture_output=True, text=True, check=False
    )


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("CMakeLists.txt", ENGINE_LIST)

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)


class CheckFloorsTest(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("base/Fault.h", "#include <string>\n")
        self.write("sync/Model.h", '#include "base/Fault.h"\n')
        self.write("sync/Model.cpp", '#include "sync/Model.h"\n')
        self.write("app/Session.h", '#include "sync/Model.h"\n')
        self.write("app/Session.cpp", '#include "app/Session.h"\n')
        self.write("app/FrmMain.h", '#include <QMainWindow>\n#include "app/Session.h"\n')
        self.write("sync/GridView.h", "#include <QTableView>\n")
        self.write("sync/GridView.cpp", '#include "sync/GridView.h"\n')
        self.write("cli/Main.cpp", '#include "app/Session.h"\n#include "qt/Clock.h"\n')
        self.write("qt/Clock.h", "#include <QDateTime>\n")

    def expect_fault(self, *parts):
        result = run("check-floors", self.root)
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        self.assertEqual(len(result.stdout.splitlines()), 1, result.stdout)
        for part in parts:
            self.assertIn(part, result.stdout)

    def test_a_tree_in_order_passes(self):
        result = run("check-floors", self.root)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def test_an_include_that_climbs_is_found(self):
        self.write("base/Fault.h", '#include <string>\n#include "sync/Model.h"\n')
        self.expect_fault("base/Fault.h:2:", "sync/Model.h")

    def test_a_climb_along_a_relative_path_is_found(self):
        self.write("sync/Model.cpp", '#include "../app/Session.h"\n')
        self.expect_fault("sync/Model.cpp:1:", "../app/Session.h")

    def test_a_neighbour_on_the_same_floor_is_found(self):
        self.write("report/Report.h", "")
        self.write("capture/Capture.h", '#include "report/Report.h"\n')
        self.expect_fault("capture/Capture.h:1:", "report/Report.h")

    def test_the_engine_including_its_own_window_is_found(self):
        self.write("app/Session.cpp", '#include "app/FrmMain.h"\n')
        self.expect_fault("app/Session.cpp:1:", "windows")

    def test_a_file_that_the_engine_does_not_list_counts_as_a_window(self):
        self.write("sync/Model.cpp", '#include "sync/GridView.h"\n')
        self.expect_fault("sync/Model.cpp:1:", "windows")

    def test_the_console_including_a_window_is_found(self):
        self.write("cli/Main.cpp", '#include "app/FrmMain.h"\n')
        self.expect_fault("cli/Main.cpp:1:", "windows")

    def test_a_lone_header_that_only_windows_include_may_use_what_stands_below_windows(self):
        self.write("app/Desk.h", '#include "qt/Clock.h"\n')
        self.write("app/FrmMain.h", '#include "app/Desk.h"\n')
        self.assertEqual(run("check-floors", self.root).returncode, 0)
        self.write("app/Session.cpp", '#include "app/Desk.h"\n')
        self.expect_fault("app/Desk.h:1:", "qt/Clock.h")

    def test_a_qt_header_in_the_engine_is_found(self):
        for header in ("QString", "QtCore/QString", "qglobal.h"):
            with self.subTest(header=header):
                self.write("sync/Model.h", f"#include <{header}>\n")
                self.expect_fault("sync/Model.h:1:", header)

    def test_every_room_of_the_engine_is_held_to_it(self):
        for room in ("capture", "convert", "help", "link", "report"):
            with self.subTest(room=room):
                self.write("CMakeLists.txt", ENGINE_LIST.replace("app/", f"{room}/Duty.cpp app/"))
                self.write(f"{room}/Duty.cpp", "#include <QString>\n")
                self.expect_fault(f"{room}/Duty.cpp:1:", "QString")
                self.write(f"{room}/Duty.cpp", "")

    def test_threads_in_the_engine_are_found(self):
        self.write("sync/Model.h", "#include <thread>\n")
        self.expect_fault("sync/Model.h:1:", "thread")

    def test_a_folder_without_a_floor_is_found(self):
        self.write("attic/Old.h", "")
        self.expect_fault("attic/Old.h:1:", "no floor")


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
