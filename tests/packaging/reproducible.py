#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""reproducible.py CMAKE part|all: the same bytes, whatever folder the sources lie in.

Builds copies of the sources in two folders and compares what comes of them. `part` builds one
library with its resources, the compiled QML of one module, and the catalogues: every kind of
generated file is in these. `all` builds everything, installs it and compares each file, which takes
as long as two builds.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CMAKE = sys.argv[1]
PARTS = ("trivex_app", "trivex_catalogues", "trivex_controls_files")
KINDS = ("*.qm", "*.qmlc", "libtrivex_app.a")


def run(*command):
    environment = {**os.environ, "CCACHE_DISABLE": "1"}
    result = subprocess.run([str(part) for part in command], env=environment, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}:\n{result.stdout[-3000:]}")


def copy_sources(target):
    def left_out(folder, names):
        here = pathlib.Path(folder) == SOURCE
        return [name for name in names if name in (".git", ".cache", "__pycache__")
                or (here and name.startswith("build"))]
    shutil.copytree(SOURCE, target, ignore=left_out)


def built(folder, whole):
    """The files of a build in `folder`: their names, and where each lies."""
    copy_sources(folder / "sources")
    build = folder / "build"
    run(CMAKE, "-S", folder / "sources", "-B", build, "-G", "Ninja",
        "-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DCMAKE_INSTALL_PREFIX=/usr")
    if whole:
        run(CMAKE, "--build", build)
        run(CMAKE, "--install", build, "--prefix", folder / "installed")
        files = [path for path in (folder / "installed").rglob("*") if path.is_file()]
        return {str(path.relative_to(folder / "installed")): path for path in files}
    run(CMAKE, "--build", build, "--target", *PARTS)
    return {str(path.relative_to(build)): path for kind in KINDS for path in build.rglob(kind)}


def main():
    whole = sys.argv[2] == "all"
    with tempfile.TemporaryDirectory() as name:
        first = built(pathlib.Path(name) / "a", whole)
        second = built(pathlib.Path(name) / "a longer name" / "b", whole)
        wrong = sorted(set(first) ^ set(second))
        wrong += [file for file in first if file in second
                  and first[file].read_bytes() != second[file].read_bytes()]
        if len(first) < (60 if whole else 5):
            sys.exit(f"too little was built: {sorted(first)}")
    for file in wrong:
        print(f"{file} differs between two folders")
    print(f"{len(first)} files, {len(wrong)} differ")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
