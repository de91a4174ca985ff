"""The man pages describe exactly the options of --help, in correct troff."""

import pathlib
import re
import tempfile
import unittest

from Packaging import COMMANDS, PACKAGING, VERSION, all_options, choices_of, help_of, run

MAN = PACKAGING / "man"


def page_text(program):
    return (MAN / f"{program}.1").read_text()


def headings(text):
    """The text below each heading, by heading."""
    parts = re.split(r"^\.S[HS] (.+)$", text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def options_described(text):
    """The options at the head of an entry, below a heading or in a whole page."""
    entries = re.findall(r"^\.T[PQ]\n(\..*)$", text, re.MULTILINE)
    names = " ".join(entries).replace("\\-", "-")
    return set(re.findall(r'(?<![\w-])--?[a-z][\w-]*', names))


def sections_of(line):
    """The headings of the options that a command line takes."""
    if len(line) == 1:
        return ["OPTIONS"]
    command = line[1]
    return ["OPTIONS"] + [name for name in (
        "Results, of replay and record" if command in ("replay", "record") else "",
        f"Of {command} alone", f"Of {command}") if name]


def man_faults(pages):
    """Options that a page lacks or makes up. The pages are given by program."""
    faults = []
    for line, options in all_options().items():
        parts = headings(pages[line[0]])
        described = set().union(
            *(options_described(parts.get(name, "")) for name in sections_of(line)))
        if len(line) > 1:
            described.discard("--version")
        for option in sorted(described ^ options):
            kind = "makes up" if option in described else "lacks"
            faults.append(f"The page {kind} {' '.join(line)} {option}")
    return faults


def lint(text):
    """The warnings of mandoc for a page."""
    with tempfile.TemporaryDirectory() as temporary:
        page = pathlib.Path(temporary) / "page.1"
        page.write_text(text.replace("@VERSION@", VERSION))
        strict = run("mandoc", "-T", "lint", "-W", "warning", page)
        assert strict.returncode == 0 or strict.stdout, strict.stderr
        return strict.stdout


class ManPagesTest(unittest.TestCase):
    def setUp(self):
        self.pages = {program: page_text(program) for program in ("kelvara", "kelvara-cli")}

    def test_they_describe_the_options_of_the_help(self):
        self.assertEqual(man_faults(self.pages), [])

    def test_a_difference_is_found(self):
        for program, old, new, fault in (
            ("kelvara", "\\-\\-raw \" PATH", "\\-\\-raws \" PATH", "lacks kelvara --raw"),
            ("kelvara-cli", ".B \\-\\-whole", ".B whole", "lacks kelvara-cli replay --whole"),
            ("kelvara-cli", "\\-\\-tester", "\\-\\-taster",
             "makes up kelvara-cli record --taster"),
            ("kelvara-cli", ".SS Of ports", ".SS Of porters", "lacks kelvara-cli ports --com"),
        ):
            with self.subTest(fault=fault):
                self.assertIn(old, self.pages[program])
                damaged = dict(self.pages)
                damaged[program] = damaged[program].replace(old, new)
                self.assertIn(f"The page {fault}", man_faults(damaged))

    def test_they_describe_the_commands_and_fields(self):
        parts = headings(self.pages["kelvara-cli"])
        described = re.findall(r"^\.TP\n\.BI? (\w+)", parts["COMMANDS"], re.MULTILINE)
        self.assertEqual(sorted(described), sorted(COMMANDS))
        for field in choices_of(help_of("kelvara-cli", "convert"), "FIELD"):
            self.assertRegex(parts["COMMANDS"], rf"\b{field}\b")

    def test_mandoc_has_no_warnings(self):
        for program, text in self.pages.items():
            with self.subTest(program=program):
                self.assertEqual(lint(text), "")

    def test_a_malformed_page_is_found(self):
        for old, new in ((".SH OPTIONS", ".SHH OPTIONS"), (".TP\n", ".TP\n.TP\n")):
            with self.subTest(new=new):
                self.assertIn(old, self.pages["kelvara"])
                self.assertNotEqual(lint(self.pages["kelvara"].replace(old, new, 1)), "")


if __name__ == "__main__":
    unittest.main()
