"""Each shell's completion offers exactly the options that --help lists."""

import pathlib
import re
import shutil
import tempfile
import unittest

from Packaging import COMMANDS, PACKAGING, PROGRAMS, all_options, choices_of, help_of, run


def bash_offers(folder, *line):
    """What bash offers after these words, the last of which is incomplete."""
    program = line[0]
    function = "_" + program.replace("-", "_")
    script = (f'source "$1/{program}.bash"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))\n'
              f'{function}; ((${{#COMPREPLY[@]}} == 0)) || printf "%s\\n" "${{COMPREPLY[@]}}"')
    result = run("bash", "--norc", "-c", script, "bash", folder, *line)
    if result.returncode != 0 or result.stderr:
        raise AssertionError(result.stderr or f"{line}: exit code {result.returncode}")
    return set(result.stdout.splitlines())


def fish_offers(folder, *line):
    """The options that fish's completion offers after these words."""
    text = (folder / f"{line[0]}.fish").read_text()
    offers = set()
    for entry in text.splitlines():
        seen = re.search(r"__fish_seen_subcommand_from ([\w ]+)'", entry)
        holds = line[1] in seen.group(1).split() if seen and len(line) > 1 else not seen
        first_word_only = "__fish_use_subcommand" in entry
        if holds and first_word_only == (line == ("kelvara-cli",)):
            offers.update("-" + name for name in re.findall(r" -s (\w)\b", entry))
            offers.update("--" + name for name in re.findall(r" -l ([\w-]+)", entry))
    return offers


def zsh_offers(folder, *line):
    """The options that zsh's completion offers after these words."""
    text = (folder / f"_{line[0]}").read_text()
    if len(line) > 1:
        text = re.search(rf"^  {line[1]}\)$(.*?)^    ;;$", text, re.MULTILINE | re.DOTALL).group(1)
    elif "CURRENT == 2" in text:
        text = re.search(r"CURRENT == 2(.*?)^fi$", text, re.MULTILINE | re.DOTALL).group(1)
    return set(re.findall(r"'(?:\([^)]*\)|\*)?'?(--?[a-z][\w-]*)\[", text))


def completion_faults(folder):
    """Where a completion in a folder differs from the options that --help lists."""
    faults = []
    for line, options in all_options().items():
        offers = {
            "bash": bash_offers(folder, *line, "-"),
            "fish": fish_offers(folder, *line),
            "zsh": zsh_offers(folder, *line),
        }
        for shell, offered in offers.items():
            for option in sorted(offered ^ options):
                kind = "invents" if option in offered else "lacks"
                faults.append(f"{shell} {kind} {' '.join(line)} {option}")
    return faults


class CompletionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="kelvara-completion-")
        cls.addClassCleanup(temporary.cleanup)
        cls.completion = pathlib.Path(temporary.name)
        result = run(PACKAGING / "completions.py", PROGRAMS, cls.completion)
        assert result.returncode == 0, result.stderr

    def test_every_shell_offers_the_options_of_the_help(self):
        self.assertEqual(completion_faults(self.completion), [])

    def test_a_difference_is_found(self):
        for name, old, new, fault in (
            ("kelvara.bash", "--raw --", "--", "bash lacks kelvara --raw"),
            ("kelvara-cli.bash", "--whole", "--hole", "bash invents kelvara-cli replay --hole"),
            ("kelvara-cli.fish", "-l seed", "-l seeds", "fish lacks kelvara-cli simulate --seed"),
            ("kelvara.fish", "-s h ", "", "fish lacks kelvara -h"),
            ("_kelvara-cli", "'--baud", "'--bauds", "zsh lacks kelvara-cli record --baud"),
            ("_kelvara-cli", "--csv", "--tsv", "zsh invents kelvara-cli replay --tsv"),
            ("_kelvara", "--version", "--verse", "zsh lacks kelvara --version"),
        ):
            with self.subTest(fault=fault), tempfile.TemporaryDirectory() as temporary:
                folder = pathlib.Path(temporary) / "completion"
                shutil.copytree(self.completion, folder)
                text = (folder / name).read_text()
                self.assertIn(old, text)
                (folder / name).write_text(text.replace(old, new))
                self.assertIn(fault, completion_faults(folder))

    def test_bash_offers_the_commands(self):
        self.assertEqual(bash_offers(self.completion, "kelvara-cli", ""), set(COMMANDS))
        self.assertEqual(bash_offers(self.completion, "kelvara-cli", "re"), {"replay", "record"})

    def test_bash_offers_the_values_of_an_option(self):
        text = help_of("kelvara-cli", "replay")
        for option in ("--units", "--rpn", "--fps"):
            for words in ((option, ""), (option, "="), (option, "=", "")):
                with self.subTest(words=words):
                    self.assertEqual(bash_offers(self.completion, "kelvara-cli", "replay", *words),
                                     choices_of(text, option))

    def test_bash_offers_the_fields_of_the_converter(self):
        self.assertEqual(bash_offers(self.completion, "kelvara-cli", "convert", ""),
                         choices_of(help_of("kelvara-cli", "convert"), "FIELD"))

    def test_bash_offers_the_line_faults(self):
        listed = re.search(r"goes wrong on the line: ([^;]+);", help_of("kelvara-cli", "simulate"))
        self.assertEqual(bash_offers(self.completion, "kelvara-cli", "simulate", "--fault", ""),
                         set(listed.group(1).split(", ")))

    def test_bash_offers_files_where_a_file_is_expected(self):
        with tempfile.TemporaryDirectory() as temporary:
            (pathlib.Path(temporary) / "a session.txt").write_text("")
            start = temporary + "/a"
            for line in (("kelvara", "--site", start), ("kelvara", "--com", "1", "=", start),
                         ("kelvara-cli", "replay", start),
                         ("kelvara-cli", "record", "--raw", start),
                         ("kelvara-cli", "ports", "--com", "1", "=", start)):
                with self.subTest(line=line):
                    self.assertEqual(bash_offers(self.completion, *line), {temporary + "/a session.txt"})
            self.assertEqual(bash_offers(self.completion, "kelvara-cli", "record", "--site", start),
                             set())


if __name__ == "__main__":
    unittest.main()
