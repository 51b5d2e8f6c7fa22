#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""definitions.py BUILD [SOURCE]: one definition for each name of the product.

Plugins and libraries meet in one process, where two functions or types of one name are one to the
linker, or to whoever casts: which of them is used is chance. Two ways of looking:

- the object files: a function or variable that two of them define, or a table of virtual functions
  that differs in size between two;
- the sources: a class, struct or enumeration that two files define in the same namespace. A test
  may not define one that the product has, because it runs in the same process.
"""

import collections
import pathlib
import re
import shutil
import subprocess
import sys

from floors import FLOORS

ROOT = pathlib.Path(__file__).resolve().parents[2]
PRODUCT = sorted({folder.split("/")[0] for folder in FLOORS})
OTHERS = ["tests", "tour", "benchmarks"]
# What each program or plugin has to define for itself.
OWN_TO_EACH = {"main", "qt_plugin_instance", "qt_plugin_query_metadata"}

TOKEN = re.compile(r"""
    (?P<skipped>//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*|R"\((?:.*?)\)"|"(?:[^"\\\n]|\\.)*"
        |'(?:[^'\\\n]|\\.)+')
    |(?P<word>[A-Za-z_]\w*(?:::[A-Za-z_]\w*)*)
    |(?P<sign>[{};()<>=:,])
""", re.VERBOSE | re.DOTALL | re.MULTILINE)


def tokens(text):
    for match in TOKEN.finditer(text):
        if match.lastgroup != "skipped":
            yield match.group()


def type_name(words):
    """The name of the type that a brace after `words` opens; None when it opens something else."""
    for place, word in enumerate(words):
        if word in ("class", "struct", "enum", "union") and "<" not in words[:place]:
            break
    else:
        return None
    head = []
    for word in words[place + 1:]:
        if word == ":":
            break
        if word in "(=<,":
            return None  # a function, a variable, a specialisation
        head.append(word)
    names = [word for word in head if word not in ("class", "struct", "final")]
    return names[-1] if names else None


def scopes(words):
    """What a brace after `words` opens: names to add to the path, or None for what is local."""
    if words and words[0] == "inline":
        words = words[1:]
    if words and words[0] == "namespace":
        return words[1:2] or None
    name = type_name(words)
    return [name] if name else None


def defined_types(text):
    """The full names of the types that a file defines for others to see."""
    path = []  # one for each open brace
    words = []
    for token in tokens(text):
        if token == "{":
            scope = scopes(words)
            path.append(scope)
            if type_name(words) and None not in path:
                yield "::".join(name for names in path for name in names)
            words = []
        elif token == "}":
            if path:
                path.pop()
            words = []
        elif token == ";":
            words = []
        else:
            words.append(token)


def sources(root, folders):
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                yield path


def types_twice(root):
    places = collections.defaultdict(list)
    for path in sources(root, PRODUCT):
        for name in defined_types(path.read_text(encoding="utf-8")):
            places[name].append(path.relative_to(root).as_posix())
    for path in sources(root, OTHERS):
        for name in set(defined_types(path.read_text(encoding="utf-8"))):
            if name in places:
                places[name].append(path.relative_to(root).as_posix())
    for name, where in sorted(places.items()):
        if len(where) > 1:
            yield f"{name} is defined in {' and '.join(where)}"
    if len(places) < 50 and root == ROOT:
        yield f"only {len(places)} types found: the sources are not read as they should be"


def is_current(build, path):
    """Not left by a source that has moved since: its folder holds a source of that name."""
    folder, _, rest = path.relative_to(build).as_posix().partition("/CMakeFiles/")
    source = rest.partition("/")[2].removesuffix(".o")
    return "_autogen/" in rest or (ROOT / folder / source).exists()


def objects(build):
    for folder in PRODUCT:
        yield from (path for path in sorted((build / folder).rglob("*.o"))
                    if is_current(build, path))


def listing(paths):
    """What the object files define: file, size, kind and name."""
    output = subprocess.run(["nm", "-C", "-A", "--defined-only", "--print-size", *map(str, paths)],
                            check=True, capture_output=True, text=True).stdout
    for line in output.splitlines():
        parts = re.fullmatch(r"(.*?\.o):[0-9a-f]+(?: ([0-9a-f]+))? (\w) (.*)", line)
        if parts:
            yield pathlib.Path(parts[1]), int(parts[2] or "0", 16), parts[3], parts[4]


def symbols_twice(build):
    strong = collections.defaultdict(set)
    tables = collections.defaultdict(dict)
    for path, size, kind, symbol in listing(list(objects(build))):
        if kind in "TDBR" and symbol not in OWN_TO_EACH:
            strong[symbol].add(path)
        elif kind == "V" and symbol.startswith("vtable for "):
            tables[symbol][path] = size
    for symbol, where in sorted(strong.items()):
        if len(where) > 1:
            names = " and ".join(path.relative_to(build).as_posix() for path in sorted(where))
            yield f"{symbol} is defined in {names}"
    for symbol, sizes in sorted(tables.items()):
        if len(set(sizes.values())) > 1:
            yield f"{symbol} differs: {sorted(set(sizes.values()))}"
    if len(strong) < 50:
        yield f"only {len(strong)} symbols found below {build}"


def main():
    build = pathlib.Path(sys.argv[1])
    root = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else ROOT
    findings = list(types_twice(root))
    if shutil.which("nm"):
        findings += symbols_twice(build)
    else:
        print(f"{'missing:' if findings else 'SKIP'} nm is not installed")
    print("\n".join(findings + [f"definitions: {len(findings)} finding(s)"]))
    sys.exit(1 if findings else 0)


if __name__ == "__main__":
    main()
