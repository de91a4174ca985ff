#!/usr/bin/env python3
"""Writes the shells' completions of both programs: completions.py PROGRAMS FOLDER

PROGRAMS contains the built kelvara and kelvara-cli. The completions are made from their --help, which
the option parsers print, so that each option is declared in one place. For each program, FOLDER gets
NAME.bash, NAME.fish and, for zsh, _NAME.
"""

import pathlib
import re
import subprocess
import sys
from dataclasses import dataclass

ENTRY = re.compile(r"^  (?P<names>(?:-\w,)?--[\w-]+|[\w-]+)(?: (?P<type>\S+))?"
                   r"(?: \S+)*?(?:  +|\n {20,}|$)(?P<about>.*(?:\n {20,}.*)*)", re.MULTILINE)
DEFAULT = re.compile(r"=[^A-Z].*")
SUMMARY = re.compile(r"\.(?: |$)|;| \(|: (?=[\w-]+(?:,| or ))")
PORTS = [str(number) for number in range(1, 13)]


@dataclass
class Entry:
    """A line of the help: an option, a word or a sub-command."""

    names: list
    type: str
    about: str

    @property
    def summary(self):
        return SUMMARY.split(self.about)[0]

    @property
    def choices(self):
        """The values that it can have; empty if it takes any text or a file."""
        if self.names == ["--com"]:
            return [port + "=" for port in PORTS] if self.is_assignment else PORTS
        listed = re.search(r"\{(\S+)\}", self.type)
        if listed:
            return listed.group(1).split(",")
        listed = re.search(r": ((?:[\w-]+, )+[\w-]+);", self.about) if self.type else None
        return listed.group(1).split(", ") if listed else []

    @property
    def is_assignment(self):
        return self.type == "N=DEVICE"

    @property
    def takes_file(self):
        return self.names == ["FILE"] or self.type in ("PATH", "FILE", "DEVICE")


class Command:
    """What the help of a program or of a sub-command lists."""

    def __init__(self, *line):
        text = subprocess.run([*line, "--help"], check=True, capture_output=True, text=True).stdout
        sections = re.split(r"^(\S.*):$", text, flags=re.MULTILINE)
        entries = {title: [Entry(m["names"].split(","), DEFAULT.sub("", m["type"] or ""),
                                 re.sub(r"\s+", " ", m["about"]))
                           for m in ENTRY.finditer(part)]
                   for title, part in zip(sections[1::2], sections[2::2])}
        self.words = entries.pop("Positionals", [])
        self.subcommands = entries.pop("Subcommands", [])
        self.options = [option for part in entries.values() for option in part]


def bash_offer(entry):
    return "files=yes" if entry.takes_file else f"choices='{' '.join(entry.choices)}'"


def bash(program, commands):
    function = "_" + program.replace("-", "_")
    values, words = {}, {}
    for name, command in commands.items():
        for option in command.options:
            if option.type:
                values.setdefault(bash_offer(option), []).append(f"{name}:{option.names[-1]}")
            if option.is_assignment:
                values.setdefault("files=yes", []).append(f"{name}:=")
        options = " ".join(name for option in command.options for name in option.names)
        others = [entry.names[0] for entry in command.subcommands]
        if others or command.words:
            words[f"{name}:-*"] = f"choices='{options}'"
        if others:
            words[f"{name}:*"] = f"choices='{' '.join(others)}'"
        elif command.words:
            first = "" if command.words[0].takes_file else "((COMP_CWORD > 2)) || "
            words[f"{name}:*"] = first + bash_offer(command.words[0])
        else:
            words[f"{name}:*"] = f"choices='{options}'"
    value_lines = "\n".join(f"    {' | '.join(at)}) {offer} ;;" for offer, at in values.items())
    word_lines = "\n".join(f"        {at}) {offer} ;;" for at, offer in words.items())
    command = "((COMP_CWORD == 1)) || command=${COMP_WORDS[1]}\n  " if len(commands) > 1 else ""
    return f"""# bash completion of {program}

{function}() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}
  local command='' choices='' files=''
  COMPREPLY=()
  {command}# The shell splits "--units=hex" and "1=/dev/ttyUSB0" into three words each.
  if [[ $word == '=' ]]; then
    before=$word
    word=''
  fi
  if [[ $before == '=' ]]; then
    local i=$((COMP_CWORD - 1))
    [[ ${{COMP_WORDS[i]}} == '=' ]] || i=$COMP_CWORD
    [[ ${{COMP_WORDS[i - 1]}} != --* ]] || before=${{COMP_WORDS[i - 1]}}
  fi
  case $command:$before in
{value_lines}
    *)
      case $command:$word in
{word_lines}
      esac
      ;;
  esac
  if [[ -n $files ]]; then
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  else
    [[ $choices != *= ]] || compopt -o nospace 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
  fi
}}
complete -F {function} {program}
"""


def fish_quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fish(program, commands):
    lines = [f"# fish completion of {program}", f"complete -c {program} -f"]
    for name, command in commands.items():
        start = f"complete -c {program}"
        if len(commands) > 1:
            holds = f"__fish_seen_subcommand_from {name}" if name else "__fish_use_subcommand"
            start += f" -n '{holds}'"
        for entry in command.subcommands:
            lines.append(f"{start} -a {entry.names[0]} -d {fish_quoted(entry.summary)}")
        for option in command.options:
            line = start + "".join(f" -l {name[2:]}" if name.startswith("--") else f" -s {name[1:]}"
                                   for name in option.names)
            if option.takes_file:
                line += " -r -F"
            elif option.choices:
                line += f" -x -a '{' '.join(option.choices)}'"
            elif option.type:
                line += " -x"
            lines.append(f"{line} -d {fish_quoted(option.summary)}")
        for word in command.words:
            if word.takes_file:
                lines.append(f"{start} -F")
            elif word.choices:
                lines.append(f"{start} -a '{' '.join(word.choices)}'")
    return "\n".join(lines) + "\n"


def zsh_value(entry):
    """The part after the name of a word or an option: the description and action of its value."""
    action = "_files" if entry.takes_file else f"({' '.join(entry.choices)})"
    return f":{entry.names[-1].strip('-').lower()}:{action if action != '()' else ''}"


def zsh_arguments(command):
    lines = []
    for option in command.options:
        about = re.sub(r"([\[\]\\:])", r"\\\1", option.summary).replace("'", "'\\''")
        ends = option.names[-1] in ("--help", "--version")
        value = zsh_value(option) if option.type else ""
        for name in option.names:
            repeats = "*" if option.is_assignment else ""
            lines.append(f"'{'(- *)' if ends else repeats}{name}[{about}]{value}'")
    for word in command.words:
        lines.append(f"'{'*' if word.type == '...' else ''}{zsh_value(word)}'")
    if command.subcommands:
        lines.append(f"':command:({' '.join(entry.names[0] for entry in command.subcommands)})'")
    return " \\\n    ".join(["_arguments", *lines])


def zsh(program, commands):
    text = f"#compdef {program}\n"
    if len(commands) == 1:
        return f"{text}{zsh_arguments(commands[''])}\n"
    text += f"if ((CURRENT == 2)); then\n  {zsh_arguments(commands[''])}\n  return\nfi\n"
    text += "local command=$words[2]\nshift words\n((CURRENT--))\ncase $command in\n"
    for name, command in commands.items():
        if name:
            text += f"  {name})\n    {zsh_arguments(command)}\n    ;;\n"
    return text + "esac\n"


def main(programs, folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for program in ("kelvara", "kelvara-cli"):
        path = str(pathlib.Path(programs) / program)
        commands = {"": Command(path)}
        for entry in commands[""].subcommands:
            commands[entry.names[0]] = Command(path, entry.names[0])
        (folder / f"{program}.bash").write_text(bash(program, commands))
        (folder / f"{program}.fish").write_text(fish(program, commands))
        (folder / f"_{program}").write_text(zsh(program, commands))


if __name__ == "__main__":
    main(*sys.argv[1:])
