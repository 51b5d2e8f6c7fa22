#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""checks.py BUILD [--tests PATTERN]: which tests can't fail?

Runs the tests that are built in BUILD with -v2, by which Qt Test tells of each check that it makes,
and lists

  nothing   functions and rows that passed without a check: their outcome is that they came to an end
  never     checks of the source that no row has made: in a loop over a list that was empty, behind a
            condition that never held, in a row that was left out

Both may be meant: a test may only have to end, and what a tool is missing for can't be checked. A
person looks at each.
"""

import argparse
import concurrent.futures
import json
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import run  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
MADE = re.compile(r"^INFO\s*: .*?(QVERIFY|QCOMPARE)\(")
PLACE = re.compile(r"^\s*Loc: \[(.*)\((\d+)\)\]")
ENDED = re.compile(r"^(PASS|SKIP|XFAIL|FAIL!)\s*: (.*)")
WRITTEN = re.compile(r"^\s*(QVERIFY2?|QCOMPARE|QTEST|QTRY_\w+)\(", re.M)
OWN = ("initTestCase()", "cleanupTestCase()")


def sources_of(build):
    """The test's own source by the name of the program."""
    result = {}
    for one in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = pathlib.Path(one["file"])
        found = re.search(r"CMakeFiles/(tst_\w+)\.dir/" + re.escape(path.stem), one["command"])
        if found and path.stem.startswith("tst_"):
            result[found[1]] = path
    return result


def look(test):
    """(what passed unchecked, {(file name, line)} of the checks that were made)."""
    process = subprocess.run(test.command + ["-v2"], env=dict(run.os.environ, **test.environment),
                             cwd=test.directory, stdin=subprocess.DEVNULL, text=True,
                             errors="replace", capture_output=True, timeout=10 * test.timeout)
    unchecked, places = [], set()
    count, awaits = 0, False
    for line in process.stdout.splitlines():
        if MADE.match(line):
            count += 1
            awaits = True
        elif awaits and PLACE.match(line):
            name, number = PLACE.match(line).groups()
            places.add((pathlib.Path(name).name, int(number)))
            awaits = False
        elif ENDED.match(line):
            kind, name = ENDED.match(line).groups()
            if kind == "PASS" and count == 0 and not name.endswith(OWN):
                unchecked.append(name)
            count = 0
    return unchecked, places


def never_made(path, places):
    """The numbers of the lines of checks that were not made; a macro over several lines may be
    placed at any of them."""
    text = path.read_text(encoding="utf-8")
    lines = {line for name, line in places if name == path.name}
    result = []
    for found in WRITTEN.finditer(text):
        first = text.count("\n", 0, found.start(1)) + 1
        last = first + text[found.start(1):text.find(";\n", found.start(1))].count("\n")
        if not lines.intersection(range(first, last + 1)):
            result.append((first, text.splitlines()[first - 1].strip()))
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--tests", default="^tst_", help="a pattern of the tests that are run")
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()
    build = options.build.resolve()
    tests = run.tests_of(build, options.tests)
    sources = sources_of(build)
    if not tests:
        sys.exit("no such test was built")

    def one(test):
        try:
            return test, look(test)
        except subprocess.TimeoutExpired:
            return test, None

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for test, result in pool.map(one, tests):
            if result is None:
                print(f"late      {test.name}", flush=True)
                continue
            unchecked, places = result
            for name in unchecked:
                print(f"nothing   {test.name}: {name}")
            path = sources.get(pathlib.Path(test.command[0]).name)
            for line, text in never_made(path, places) if path else []:
                print(f"never     {path.relative_to(ROOT)}:{line} {text}")
            sys.stdout.flush()


if __name__ == "__main__":
    main()
