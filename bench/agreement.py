#!/usr/bin/env python3
"""Checks that kelvara-cli and the plain Python replay read the same matrix from a session.

Usage: agreement.py KELVARA_CLI SESSION
"""

import json
import pathlib
import subprocess
import sys

PEER = pathlib.Path(__file__).parent / "replay_peer.py"


def console_results(console, session):
    """The results of kelvara-cli, in the form that the peer prints."""
    command = [console, "replay", session, "--json", "-"]
    results = json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
    rpns = [aa["rpn"] for aa in results["aas"]]
    cells = sorted(
        [rpns[c["from"]], rpns[c["to"]], c["sum"], c["count"], c["max"], c["min"]]
        for c in results["cells"]
    )
    return {"reports": results["reports"], "cells": cells}


def peer_results(session):
    command = [sys.executable, PEER, session]
    return json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)


def disagreement(console, session):
    """The difference between the two as a text; empty if they agree."""
    ours, theirs = console_results(console, session), peer_results(session)
    if not ours["cells"]:
        return "there is nothing to compare"
    return "" if ours == theirs else f"kelvara-cli: {ours}\nplain replay: {theirs}"


def main():
    differences = disagreement(*sys.argv[1:])
    print(differences or "Both read the same matrix.")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
