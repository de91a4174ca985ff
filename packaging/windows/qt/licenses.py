#!/usr/bin/env python3
"""Collects the licences of what a static Qt contains: licenses.py QT_SOURCE FOLDER

Qt describes each third-party component in a file qt_attribution.json next to it.
"""

import json
import pathlib
import shutil
import sys

# The modules of Qt that Kelvara links, as the attributions name them.
MODULES = {"qtcore", "qtgui", "qtwidgets"}
QT_LICENSES = ["LGPL-3.0-only.txt", "GPL-3.0-only.txt"]


def components(source):
    """Every third-party component of the modules, with the folder of its attribution."""
    for file in sorted((source / "src").rglob("qt_attribution.json")):
        described = json.loads(file.read_text(encoding="utf-8"), strict=False)
        for component in described if isinstance(described, list) else [described]:
            if component["QDocModule"] in MODULES:
                yield file.parent, component


def license_text(folder, component):
    names = component.get("LicenseFiles") or [component.get("LicenseFile", "")]
    files = [folder / name for name in names if name]
    return "\n".join(file.read_text(encoding="utf-8", errors="replace") for file in files)


def describe(folder, component):
    title = " ".join(filter(None, [component["Name"], component.get("Version", "")]))
    holders = component.get("Copyright", "")
    lines = [title, "=" * len(title), component["License"],
             *([holders] if isinstance(holders, str) else holders), "",
             license_text(folder, component).strip()]
    return "\n".join(lines) + "\n\n\n"


def main():
    source, target = map(pathlib.Path, sys.argv[1:])
    target.mkdir(parents=True, exist_ok=True)
    for name in QT_LICENSES:
        shutil.copyfile(source / "LICENSES" / name, target / f"Qt-{name}")
    texts = [describe(folder, component) for folder, component in components(source)]
    if not texts:
        sys.exit(f"licenses.py: {source} has no attributions")
    (target / "Qt-third-party.txt").write_text("".join(texts), encoding="utf-8")


if __name__ == "__main__":
    main()
