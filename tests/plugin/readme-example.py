#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""Starts the README's example by the README's own command, and waits for it to show rows.

usage: readme-example.py <README.md> <build directory>
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

PATIENCE = 60  # seconds until the system's list must have come


def blocks(text, language):
    return re.findall(rf"^```{language}\n(.*?)^```", text, re.M | re.S)


def run(command, folder):
    """The output of the command up to the first count of rows that is not 0."""
    environment = dict(os.environ, HOME=str(folder), XDG_RUNTIME_DIR=str(folder),
                       QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                       TRIVEX_PKCS11_MODULES="/nonexistent.so")
    for name in ("QML2_IMPORT_PATH", "QCA_PLUGIN_PATH", "XDG_DATA_HOME", "XDG_CONFIG_HOME"):
        environment.pop(name, None)
    os.chmod(folder, 0o700)
    # The program is Qt's own: it lacks the sanitizer that the module may have been built with.
    preload = environment.pop("TRIVEX_TEST_PRELOAD", "")
    if preload:
        command = f"LD_PRELOAD='{preload}' {command}"
    process = subprocess.Popen(["timeout", str(PATIENCE), "sh", "-c", "exec env " + command],
                               cwd=folder, env=environment, text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    lines = []
    rows = 0
    for line in process.stdout:
        lines.append(line)
        found = re.search(r"(\d+) certificates", line)
        rows = int(found[1]) if found else 0
        if rows:
            break
    process.terminate()
    process.wait()
    return rows, "".join(lines)


def main():
    readme = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    commands = [line for block in blocks(readme, "sh") for line in block.splitlines()
                if line.endswith("example.qml")]
    examples = blocks(readme, "qml")
    if len(commands) != 1 or len(examples) != 1:
        sys.exit(f"README.md has {len(commands)} commands for {len(examples)} examples")
    program = commands[0].split()[-2]
    if not shutil.which(program):
        print(f"SKIP {program} is not installed")
        return
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "example.qml").write_text(examples[0], encoding="utf-8")
        (folder / "build").symlink_to(pathlib.Path(sys.argv[2]).resolve())
        rows, output = run(commands[0], folder)
    problems = re.findall(r".*example\.qml:\d+.*(?:Error|not a type|Cannot|Unable).*", output)
    if not rows or problems:
        sys.exit(f"The README's example shows {rows} rows and says:\n{output}")
    print(f"{rows} rows")


main()
