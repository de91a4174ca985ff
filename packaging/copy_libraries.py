#!/usr/bin/env python3
"""Copies what a program folder needs beyond a plain desktop, with the copyright notices.

copy_libraries.py PLAIN_DESKTOP FOLDER PLUGIN...

FOLDER contains the programs. The script adds lib/, the libraries that the programs and the plugins
load and PLAIN_DESKTOP does not list; plugins/, the named plugins (by Qt's names:
platforms/libqxcb.so); and licenses/, the copyright file of each library's package and the licences
that these refer to.
"""

import fnmatch
import pathlib
import re
import shutil
import subprocess
import sys

DOCUMENTS = pathlib.Path("/usr/share/doc")
COMMON_LICENCES = pathlib.Path("/usr/share/common-licenses")
# Compiled into the programs, so there is no library to find the package of.
COMPILED_IN = ("libcli11-dev",)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def read_plain_desktop(path):
    lines = (line.split("#")[0].split() for line in path.read_text().splitlines())
    return [fields[0] for fields in lines if fields and fields[0] != "-"]


def needed(path):
    return re.findall(r"\(NEEDED\).*\[(.+)\]", output("readelf", "-dW", str(path)))


def places(path):
    """Where the system finds each library that a file loads, directly or indirectly."""
    found = re.findall(r"(\S+) => (/.+) \(0x", output("ldd", str(path)))
    return {name: pathlib.Path(place) for name, place in found}


def libraries_of(roots, plain_desktop):
    """The libraries to pack for some programs and plugins: name to path."""
    found = {}
    for root in roots:
        where = places(root)
        waiting = needed(root)
        while waiting:
            name = waiting.pop()
            if name in found or any(fnmatch.fnmatch(name, plain) for plain in plain_desktop):
                continue
            if name not in where:
                sys.exit(f"{root} needs {name}, which this machine does not have.")
            found[name] = where[name]
            waiting += needed(where[name])
    return found


def package_of(place):
    """The Debian package that a file belongs to."""
    real = place.resolve()
    # The package lists name files below /usr, or below / as before both were merged.
    for candidate in (real, pathlib.Path(str(real).removeprefix("/usr"))):
        answer = subprocess.run(
            ["dpkg-query", "-S", str(candidate)], capture_output=True, text=True, check=False
        )
        if answer.returncode == 0:
            return answer.stdout.split(":")[0].split(",")[0]
    sys.exit(f"No package owns {place}, so its licence is not known.")


def copy_notices(packages, files, target):
    target.mkdir()
    referred = set()
    lines = []
    for package in sorted(packages):
        notice = DOCUMENTS / package / "copyright"
        shutil.copyfile(notice, target / f"{package}.txt")
        text = notice.read_text(errors="replace")
        referred.update(re.findall(r"/usr/share/common-licenses/([\w.-]*\w)", text))
        version = output("dpkg-query", "-W", "-f", "${source:Package} ${source:Version}", package)
        names = ", ".join(sorted(files.get(package, ["compiled into the programs"])))
        lines.append(f"{package} (Debian's source package {version}): {names}\n")
    for name in sorted(referred):
        shutil.copyfile(COMMON_LICENCES / name, target / name)
    (target / "LIBRARIES.txt").write_text(
        "The libraries that come with Kelvara are Debian's, unchanged. The notices of each package\n"
        "are in the file of its name, next to the licences that they refer to. The sources are in\n"
        "Debian's archive, under the names and versions given here. You may replace a library in\n"
        "lib/ or plugins/ by another build of it.\n\n" + "".join(lines)
    )


def main():
    plain_desktop = read_plain_desktop(pathlib.Path(sys.argv[1]))
    folder = pathlib.Path(sys.argv[2])
    qt_plugins = pathlib.Path(output("qmake6", "-query", "QT_INSTALL_PLUGINS").strip())
    plugins = {name: qt_plugins / name for name in sys.argv[3:]}
    programs = [folder / "kelvara", folder / "kelvara-cli"]
    libraries = libraries_of([*programs, *plugins.values()], plain_desktop)

    (folder / "lib").mkdir()
    for name, place in libraries.items():
        shutil.copyfile(place, folder / "lib" / name)
    for name, place in plugins.items():
        target = folder / "plugins" / name
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(place, target)

    files = {}
    for name, place in [*libraries.items(), *plugins.items()]:
        files.setdefault(package_of(place), []).append(name)
    copy_notices({*files, *COMPILED_IN}, files, folder / "licenses")


if __name__ == "__main__":
    main()
