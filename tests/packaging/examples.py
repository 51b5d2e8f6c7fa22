#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""examples.py CMAKE BUILD|installed: builds each example against the modules, and starts it.

With BUILD, against an installation of that build to a temporary folder; with "installed", against
that of the system. Each example is a project of its own, and each must find the token that
with-token.sh makes.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
EXAMPLES = HERE.parents[1] / "examples"
CMAKE = sys.argv[1]
PATIENCE = 60  # seconds until an example must have said what it is known by
# What each says by itself when it works; an empty text where it waits for its user.
SAYS = {"console": "  rsa, with its key", "list": "2 certificates",
        "pin-dialog": "2 certificates", "import": "", "request": "", "signing": ""}
COMPLAINTS = ("Error", "is not a type", "is not installed", "Cannot", "Unable to assign",
              "is not defined", "Binding loop")


def run(*command):
    result = subprocess.run([str(part) for part in command], text=True, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}:\n{result.stdout[-3000:]}")


def said_by(program, wanted, folder):
    """What the program says until `wanted`, or within three seconds where it waits for its user."""
    patience = PATIENCE if wanted else 3
    environment = {**os.environ, "TMPDIR": str(folder)}
    for name in ("QML2_IMPORT_PATH", "QCA_PLUGIN_PATH"):
        environment.pop(name, None)
    process = subprocess.Popen(
        ["sh", str(HERE / "with-token.sh"), "timeout", str(patience), str(program)],
        env=environment, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    lines = []
    for line in process.stdout:
        lines.append(line.rstrip("\n"))
        if wanted and wanted in line and "console" not in str(program):
            process.terminate()
            break
    process.wait()
    ended_by_itself = not wanted and process.returncode != 124  # the code of timeout
    return lines, ended_by_itself


def main():
    found = sorted(path.parent.name for path in EXAMPLES.glob("*/CMakeLists.txt"))
    if found != sorted(SAYS):
        sys.exit(f"examples that are known: {sorted(SAYS)}, that are there: {found}")
    wrong = 0
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        (work / "tmp").mkdir()
        options = []
        if sys.argv[2] != "installed":
            run(CMAKE, "--install", sys.argv[2], "--prefix", work / "prefix")
            options = [f"-DCMAKE_PREFIX_PATH={work / 'prefix'}"]
        for example, wanted in SAYS.items():
            run(CMAKE, "-S", EXAMPLES / example, "-B", work / example, *options)
            run(CMAKE, "--build", work / example)
            lines, ended = said_by(work / example / f"{example}-example", wanted, work / "tmp")
            if any(line.startswith("SKIP") for line in lines):
                print("\n".join(lines))
                continue
            bad = [line for line in lines if any(word in line for word in COMPLAINTS)]
            if bad or ended or (wanted and not any(wanted in line for line in lines)):
                wrong += 1
                print(f"{example} says:", *lines, sep="\n    ")
            else:
                print(f"{example}: built and started")
        left = [path.name for path in (work / "tmp").iterdir() if path.name.startswith("tmp.")]
        if left:
            wrong += 1
            print(f"left behind: {left}")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
