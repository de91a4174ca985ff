"""Checks that the help pages agree with the program on menus, messages and numbers, that every
link resolves, and that nothing is loaded from outside."""

import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
import unittest

from HelpPages import MAKERS_ADDRESS, link_faults, outside_faults, read_pages, words

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = ROOT / "src"
HELP = SOURCES / "help/Help"
# Adjacent string literals of C++.
STRINGS = r'(?:"(?:[^"\\]|\\.)*"\s*)+'

# Which page quotes which texts: the page, a source file, the pattern before each text, and the
# least number of texts.
OPTION = r"add_(?:flag|option)\(\s*"
KEY = r"k\w*Key = "
QUOTED = (
    ("menus.htm", "app/FrmMainCommands.cpp", r"new QAction\(QStringLiteral\(", 2),
    ("messages.htm", "link/LinkTexts.h", r"string_view k\w+ = ", 4),
    ("messages.htm", "link/BeltpackLink.cpp", r"SetStatusText\(", 1),
    ("messages.htm", "link/ComPort.cpp", r'std::string text = |Show\((?="No)', 2),
    ("messages.htm", "app/FrmMainCommands.cpp", r"StatusPanel::(?:Reports|Aas), ", 2),
    ("messages.htm", "capture/DataCapture.cpp", r"k\w+Text = ", 2),
    ("messages.htm", "capture/DataCapture.cpp", r"PrintLogEntry\(", 4),
    # The window says in other words that this program has the port.
    ("messages.htm", "ports/PortDevice.cpp", r"reason \+?= |return (?!\"this program)", 17),
    ("messages.htm", "ports/SerialDevicePosix.cpp", r"PortState::HeldElsewhere,\s+", 1),
    ("messages.htm", "link/FrmComSelect.cpp", r"return (?=\"No port)", 1),
    ("messages.htm", "help/HelpCommands.cpp", r"k\w*Failure\w* = ", 3),
    ("files.htm", "link/ComPort.h", KEY, 2),
    ("files.htm", "app/OptionTable.cpp", r"k(?:First|Later), ", 9),
    ("files.htm", "capture/LastFilenames.h", KEY, 2),
    ("demo.htm", "app/Main.cpp", OPTION, 5),
    ("console.htm", "cli/ResultOptions.cpp", OPTION, 10),
    ("console.htm", "cli/RecordCommand.cpp", r"->add_(?:flag|option)\(", 8),
    ("messages.htm", "survey/SurveyCommands.cpp", r"Title = |std::string\(", 4),
    ("console.htm", "cli/SurveyCommand.cpp", r"->add_option\(", 5),
    ("console.htm", "cli/SimulateCommand.cpp", OPTION, 4),
)


def source(path):
    return (SOURCES / path).read_text(encoding="utf-8")


def literal(strings):
    """The text of adjacent C++ string literals."""
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', strings)).replace("\\r\\n", " ").replace(
        '\\"', '"').strip()


def texts_of(path, before):
    """The texts in a source file that follow a pattern."""
    return [literal(found) for found in re.findall(f"(?:{before})({STRINGS})", source(path))]


def texts_of_boxes(path):
    """The texts and titles of the message boxes that a source file shows."""
    calls = re.findall(r"\bShow\((.*?)MessageIcon::", source(path), re.DOTALL)
    return [literal(found) for call in calls for found in re.findall(STRINGS, call)]


class HelpPagesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = read_pages(HELP)

    def expect_quoted(self, page, texts, at_least):
        texts = [words(text) for text in texts if text.strip()]
        self.assertGreaterEqual(len(texts), at_least, f"the sources hold too few: {texts}")
        missing = [text for text in texts if text not in self.pages[page].text]
        self.assertEqual(missing, [])

    def test_every_link_and_picture_resolves(self):
        self.assertEqual(link_faults(HELP), [])

    def test_nothing_comes_from_outside_and_nothing_runs(self):
        self.assertEqual(outside_faults(HELP), [])

    def test_markup_is_sound(self):
        self.assertIn("index.htm", self.pages)
        for name, page in self.pages.items():
            with self.subTest(name):
                self.assertEqual(page.faults, [])
                self.assertEqual(len(page.ids), len(set(page.ids)))
                self.assertIn("style.css", page.links)
                self.assertTrue(page.heading)
                self.assertTrue(page.title.startswith(page.heading))

    def test_every_picture_is_shown_and_described(self):
        shown = {}
        for page in self.pages.values():
            for picture in page.pictures:
                shown.setdefault(picture["src"], []).append(words(picture["alt"]))
        made = {f"pictures/{path.name}" for path in (HELP / "pictures").iterdir()}
        self.assertEqual(set(shown), made)
        for picture, descriptions in shown.items():
            with self.subTest(picture):
                self.assertTrue(all(descriptions))
                data = (HELP / picture).read_bytes()
                self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
                self.assertGreater(min(struct.unpack(">2I", data[16:24])), 50)

    def test_contents_list_every_page_in_the_order_of_the_next_links(self):
        in_order, name = [], "index.htm"
        while name:
            in_order.append(name)
            page = self.pages[name]
            name = page.relations.get("next")
            if name:
                self.assertEqual(self.pages[name].relations.get("prev"), in_order[-1])
        self.assertEqual(sorted(in_order), sorted(self.pages))
        contents = [link for link in self.pages["index.htm"].links if link in in_order]
        self.assertEqual(contents[:len(in_order) - 1], in_order[1:])

    def test_menus_match_the_program(self):
        options = re.findall(r'\("\w+", ("[^"]+"), "(\w+)"', source("app/OptionTable.cpp"))
        captions = []
        for name, caption in re.findall(r'MenuLine\{\d, "(\w+)",\s+("[^"]+")',
                                        source("app/MainMenuTable.cpp")):
            captions += [caption, *(entry for entry, group in options if group == name)]
        captions = [re.sub(r"&(.)", r"\1", literal(caption)) for caption in captions]
        self.assertGreater(len(captions), 30)
        self.assertEqual([words(entry) for entry in self.pages["menus.htm"].entries], captions)

    def test_every_text_of_the_program_is_quoted(self):
        for page, path, before, least in QUOTED:
            with self.subTest(path, before=before):
                texts = texts_of(path, before)
                if page == "menus.htm":
                    texts = [text.replace("&", "") for text in texts]
                self.expect_quoted(page, texts, least)

    def test_every_message_box_is_quoted(self):
        for path, least in (("report/ReportDialog.cpp", 6), ("report/SyncReport.cpp", 4),
                            ("capture/CaptureDialog.cpp", 2), ("capture/DataCapture.cpp", 2),
                            ("link/BeltpackLink.cpp", 3)):
            with self.subTest(path):
                self.expect_quoted("messages.htm", texts_of_boxes(path), least)


class HelpExamplesTest(unittest.TestCase):
    """The console examples on the pages show what the program prints."""

    def setUp(self):
        self.pages = read_pages(HELP)
        self.program = os.environ["KELVARA_CLI"]

    def run_program(self, command, folder):
        name, *arguments = shlex.split(command)
        self.assertEqual(name, "kelvara-cli")
        return subprocess.run([self.program, *arguments], cwd=folder, check=True, timeout=60,
                              stdout=subprocess.PIPE, text=True).stdout

    def test_examples_print_what_the_page_shows(self):
        commands = 0
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(ROOT / "examples/recorded-session.txt", f"{folder}/session.txt")
            shutil.copy(ROOT / "examples/sparse-session.trace", f"{folder}/sparse.trace")
            for shown in self.pages["console.htm"].runs:
                for example in shown.strip().split("$ ")[1:]:
                    command, _, output = example.partition("\n")
                    with self.subTest(command):
                        printed = self.run_program(command, folder)
                        self.assertEqual(printed.rstrip(), output.rstrip())
                    commands += 1
        self.assertGreaterEqual(commands, 6)

    def test_both_relations_give_the_numbers_of_the_units_page(self):
        examples = self.pages["units.htm"].examples
        self.assertGreaterEqual(len(examples), 5)
        for phase, metres, units, delay, ohms, grid_units, grid_metres in examples:
            with self.subTest(phase=phase):
                printed = self.run_program(f"kelvara-cli convert rfps {phase}", None).split()
                self.assertEqual(dict(zip(printed[0::2], printed[1::2])),
                                 {"metres": metres, "aasync": units, "delay": delay, "ohms": ohms})
                self.assertEqual(self.cell(phase, "aasync"), grid_units)
                self.assertEqual(self.cell(phase, "metres"), grid_metres)

    def cell(self, phase, units):
        """What the grid shows for a phase that was reported once."""
        report = ("RFPS report\r\n100ec5A301 Sync\r\n"
                  f"100ec5A302 Neighbour phase =  {phase:>3}\r\n")
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "report.txt").write_bytes(report.encode())
            grid = self.run_program(
                f"kelvara-cli replay --whole report.txt --grid --units {units}", folder)
        return re.search(r"^ *01 +(\S+)$", grid, re.MULTILINE)[1]


class CheckTest(unittest.TestCase):
    """The checks find the faults that they look for."""

    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.folder = pathlib.Path(self.scratch.name)

    def write(self, body):
        (self.folder / "index.htm").write_text(f"<html><body>{body}</body></html>")

    def test_dead_links_are_found(self):
        self.write('<h1 id="here">A</h1><a href="gone.htm">a</a> <a href="#there">b</a> '
                   '<img src="pictures/gone.png"> <a href="../index.htm">c</a> '
                   '<a href="#here">d</a> <a href="index.htm#here">e</a>')
        self.assertEqual(len(link_faults(self.folder)), 4)

    def test_addresses_and_scripts_are_found(self):
        self.write('<img src="http://example.org/x.png"> <script src="//x.js"></script> '
                   f'<p onclick="x()">a</p> <a href="{MAKERS_ADDRESS}">b</a>')
        (self.folder / "style.css").write_text("@import url(more.css);")
        self.assertEqual(len(outside_faults(self.folder)), 6)

    def test_unsound_markup_is_found(self):
        self.write("<p><b>a</p></b>")
        self.assertTrue(read_pages(self.folder)["index.htm"].faults)
        self.write("<div><p>a</p>")
        self.assertTrue(read_pages(self.folder)["index.htm"].faults)


if __name__ == "__main__":
    unittest.main()
