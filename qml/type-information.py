#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""type-information.py check|write BUILD: the plugins.qmltypes of the three modules.

Qt's own tool asks each built plugin for its types. `write` puts what it says into the sources;
`check` compares, and exits with 1 where the sources say something else.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[1]
HEAD = """// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick.tooling 1.2

// This file describes the plugin-supplied types contained in the library.
// It is used for QML tooling purposes only.
// Made by the target trivex_type_information; a test compares it with the plugin.

"""
# The module and the folder of its qmldir.
MODULES = {"Trivex.Crypto": "qml", "Trivex.Crypto.Tools": "tools",
           "Trivex.Crypto.Controls": "controls"}


def lay_out(module, build, folder):
    """The module alone, without its QML files: the tool loads every module below the path that it
    is given, and can't wait for a singleton that is written in QML. Tools read QML files themselves."""
    place = pathlib.Path(*module.split("."))
    target = folder / place
    target.mkdir(parents=True)
    lines = (build / "qml" / place / "qmldir").read_text().splitlines()
    kept = [line for line in lines if line.split(" ")[0] in ("module", "plugin", "classname")]
    (target / "qmldir").write_text("\n".join(kept) + "\n")
    plugin = next(line.split()[1] for line in kept if line.startswith("plugin "))
    shutil.copy(build / "qml" / place / f"lib{plugin}.so", target)


def described(program, module, build):
    """What the plugin says of its types."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        lay_out(module, build, folder)
        environment = {**os.environ, "LD_LIBRARY_PATH": str(build / "lib"),
                       "QT_QPA_PLATFORM": "minimal", "XDG_RUNTIME_DIR": name, "HOME": name}
        environment.pop("QML2_IMPORT_PATH", None)
        result = subprocess.run([program, "-nonrelocatable", module, "1.0", name],
                                env=environment, capture_output=True, text=True, timeout=120)
    found = re.search(r"^Module \{.*^\}", result.stdout, re.MULTILINE | re.DOTALL)
    if result.returncode != 0 or not found:
        sys.exit(f"{module}: {program} ends with {result.returncode}:\n{result.stderr}")
    return HEAD + found[0] + "\n"


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ("check", "write"):
        sys.exit(__doc__)
    build = pathlib.Path(sys.argv[2]).resolve()
    program = shutil.which("qmlplugindump")
    if not program:
        print("SKIP qmlplugindump is not installed")
        return
    wrong = 0
    for module, folder in MODULES.items():
        path = SOURCE / folder / "plugins.qmltypes"
        made = described(program, module, build)
        if sys.argv[1] == "write":
            path.write_text(made, encoding="utf-8")
            continue
        if not path.exists() or path.read_text(encoding="utf-8") != made:
            wrong += 1
            print(f"{folder}/plugins.qmltypes is not what {module} is made of;"
                  " build the target trivex_type_information")
        if "typeinfo plugins.qmltypes" not in (path.parent / "qmldir").read_text():
            wrong += 1
            print(f"{folder}/qmldir does not name it")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
