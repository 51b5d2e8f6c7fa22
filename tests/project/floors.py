#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""What stands on what: floors.py check | picture | selftest.

Reads every include of the project. Each folder with production sources stands on the folders that
FLOORS names and on those below them; it includes nothing else. No folders and no files include each
other in a circle, where a header and the source of the same name count as one. `picture` prints the
floors as docs/architecture.md shows them.
"""

import pathlib
import re
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Each folder, and those that it stands on directly: only folders named before it.
FLOORS = {
    "qca/base": [],
    "qca/asn1": ["qca/base"],
    "qca/keys": ["qca/asn1"],
    "qca/x509": ["qca/keys"],
    "qca/describe": ["qca/x509"],
    "qca/chains": ["qca/x509"],
    "qca/pkcs12": ["qca/x509"],
    "qca/cms": ["qca/chains"],
    "qca/questions": ["qca/base"],
    "qca/tokens": ["qca/keys", "qca/questions"],
    "qca/adapter": ["qca/pkcs12", "qca/cms", "qca/tokens"],
    "providers/openssl": ["qca/pkcs12", "qca/cms", "qca/tokens"],
    "providers/pkcs11/calls": ["qca/x509", "qca/tokens"],
    "providers/pkcs11/contents": ["providers/pkcs11/calls"],
    "providers/pkcs11/cache": ["providers/pkcs11/contents"],
    "providers/pkcs11/life": ["providers/pkcs11/cache"],
    "providers/pkcs11/operations": ["providers/pkcs11/life"],
    "providers/pkcs11/contexts": ["providers/pkcs11/operations"],
    "providers/pkcs11": ["providers/pkcs11/contexts"],
    "providers/gost": ["providers/pkcs11/contexts"],
    "certificates": ["qca/adapter"],
    "keystores": ["certificates"],
    "requests": ["keystores"],
    "signing": ["certificates"],
    "plugin": ["requests", "signing"],
    "tools": ["qca/describe", "qca/chains", "qca/adapter"],
    "controls": ["qca/base"],
    "console": ["tools"],
    "app": ["console"],
    "app/gallery": ["app"],
}

# The QML modules that the QML files of a folder may import; what a program draws stands on them.
QML_IMPORTS = {
    "controls": ["plugin", "tools", "controls"],
    "app": ["plugin", "tools", "controls"],
}
QML_MODULES = {"Trivex.Crypto": "plugin", "Trivex.Crypto.Tools": "tools",
               "Trivex.Crypto.Controls": "controls"}

# Folders that work with certificates and keys through the platform library alone.
WITHOUT_OPENSSL = ("certificates", "keystores", "requests", "signing", "plugin", "tools", "controls",
                   "console", "app", "app/gallery")

# Programs and tests look at everything, and nothing looks at them.
OUTSIDE = ("tests", "tour", "benchmarks", "fuzz", "examples", "debian")

# What stands for other people's programs: they have the installed modules, and no sources.
STRANGERS = ("examples", "debian")

QML_IMPORT = re.compile(r"^import (Trivex[\w.]*)", re.MULTILINE)
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
OPENSSL = re.compile(r"^\s*#\s*include\s+<openssl/", re.MULTILINE)


def folder_of(name):
    return name.rpartition("/")[0]


def unit_of(name):
    """A header and its source are one."""
    return name.rpartition(".")[0]


class Sources:
    """The C++ files below `root`, with what they include of the project."""

    def __init__(self, root):
        self.texts = {}
        for path in sorted(root.rglob("*")):
            name = path.relative_to(root).as_posix()
            if name.startswith(("build", ".")) or path.suffix not in {".h", ".cpp", ".c"}:
                continue
            self.texts[name] = path.read_text(encoding="utf-8")
        self.includes = {}
        for name, text in self.texts.items():
            found = [self.resolved(name, target) for target in INCLUDE.findall(text)]
            self.includes[name] = [target for target in found if target]

    def resolved(self, name, target):
        for candidate in (target, f"{folder_of(name)}/{target}"):
            if candidate in self.texts:
                return candidate
        return None

    def production(self):
        return [name for name in self.texts if name.split("/")[0] not in OUTSIDE]


def below(floors, folder):
    """Every folder that `folder` stands on, itself included."""
    result = {folder}
    for lower in floors.get(folder, []):
        result |= below(floors, lower)
    return result


def table_findings(floors):
    """Folders that name what comes after them."""
    seen = set()
    for folder, lower in floors.items():
        for other in lower:
            if other not in seen:
                yield f"{folder} stands on {other}, which is not named before it"
        seen.add(folder)


def upward_findings(sources, floors):
    reach = {folder: below(floors, folder) for folder in floors}
    for name in sources.production():
        folder = folder_of(name)
        if folder not in floors:
            yield f"{name}: its folder has no floor; name it in {pathlib.Path(__file__).name}"
            continue
        for target in sources.includes[name]:
            if folder_of(target) not in reach[folder]:
                yield f"{name}: must not know {target}"


def stranger_findings(sources):
    for name, included in sources.includes.items():
        for target in included:
            if name.split("/")[0] in STRANGERS and folder_of(target) != folder_of(name):
                yield f"{name}: has no {target} where it is used"


def circles(edges):
    """The groups of nodes that reach each other (Tarjan's strongly connected components)."""
    index, low, stack, result = {}, {}, [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        for target in sorted(edges.get(node, ())):
            if target not in index:
                visit(target)
                low[node] = min(low[node], low[target])
            elif target in stack:
                low[node] = min(low[node], index[target])
        if low[node] == index[node]:
            group = stack[stack.index(node):]
            del stack[stack.index(node):]
            if len(group) > 1:
                result.append(sorted(group))

    sys.setrecursionlimit(10000)
    for node in sorted(edges):
        if node not in index:
            visit(node)
    return result


def edges_between(sources, part):
    """Which `part` (folder or unit) of the tree includes which other one."""
    edges = {}
    for name, targets in sources.includes.items():
        own = part(name)
        edges.setdefault(own, set()).update(part(target) for target in targets)
        edges[own].discard(own)
    return edges


def circle_findings(sources):
    for kind, part in (("folders", folder_of), ("files", unit_of)):
        for group in circles(edges_between(sources, part)):
            yield f"{kind} in a circle: {', '.join(group)}"


def openssl_findings(sources):
    """Files that reach OpenSSL's headers from where nobody should know of it."""
    reached = {name: name for name, text in sources.texts.items() if OPENSSL.search(text)}
    changed = True
    while changed:
        changed = False
        for name, targets in sources.includes.items():
            through = next((target for target in targets if target in reached), None)
            if name not in reached and through:
                reached[name] = through
                changed = True
    for name, through in reached.items():
        if folder_of(name) in WITHOUT_OPENSSL:
            yield f"{name}: knows OpenSSL" + (f" through {through}" if through != name else "")


def qml_findings(root):
    """QML files that import a module of ours which stands above them."""
    for path in sorted(root.rglob("*.qml")):
        name = path.relative_to(root).as_posix()
        top = name.split("/")[0]
        if top in OUTSIDE or name.startswith(("build", ".")):
            continue
        for module in QML_IMPORT.findall(path.read_text(encoding="utf-8")):
            if QML_MODULES.get(module) not in QML_IMPORTS.get(top, []):
                yield f"{name}: must not import {module}"


def picture(floors):
    """The floors as a graph, the highest first."""
    lines = ["```mermaid", "graph TD"]
    for folder, lower in reversed(floors.items()):
        node = folder.replace("/", "_")
        lines.append(f'    {node}["{folder}"]')
        lines += [f"    {node} --> {other.replace('/', '_')}" for other in lower]
    for folder, modules in QML_IMPORTS.items():
        lines += [f"    {folder} -. QML .-> {module}" for module in modules if module != folder]
    return "\n".join(lines + ["```"])


def picture_findings(root, floors):
    page = root / "docs" / "architecture.md"
    if not page.exists() or picture(floors) not in page.read_text(encoding="utf-8"):
        yield "docs/architecture.md: its picture is not that of `tests/project/floors.py picture`"


JOURNEY = re.compile(r"^\d+\. `([\w/]+)`: `(?:(\w+)::)?(\w+)`$")


def journey_findings(root, floors):
    """Steps of the journeys in docs/architecture.md that are not there, or climb a floor."""
    reach = {folder: below(floors, folder) for folder in floors}
    previous = None
    steps = 0
    for line in (root / "docs" / "architecture.md").read_text(encoding="utf-8").splitlines():
        step = JOURNEY.match(line)
        if not step:
            previous = None if line.strip() else previous
            continue
        steps += 1
        folder, owner, function = step.groups()
        text = "".join(path.read_text(encoding="utf-8") for path in (root / folder).glob("*.*")
                       if path.suffix in {".h", ".cpp", ".qml"})
        defined = f"{owner}::{function}(" in text or (
            re.search(rf"\bclass (?:\w+_EXPORT )?{owner}\b", text)
            and re.search(rf"\b{function}\(", text))
        there = defined if owner else (f"{function}(" in text
                                       or (root / folder / f"{function}.qml").exists())
        if not there:
            yield f"docs/architecture.md: {folder} has no {owner or ''}::{function}"
        if previous in reach and folder in reach and folder not in reach[previous]:
            if previous in reach[folder]:
                yield f"docs/architecture.md: {function} climbs from {previous} to {folder}"
        previous = folder
    if steps < 15:
        yield "docs/architecture.md: its journeys are not read"


def findings(root, floors):
    sources = Sources(root)
    if not sources.production():
        yield "no sources found"
    yield from table_findings(floors)
    yield from upward_findings(sources, floors)
    yield from stranger_findings(sources)
    yield from circle_findings(sources)
    yield from openssl_findings(sources)
    yield from qml_findings(root)


def selftest():
    """Trees with one fault each: every one is found, and a sound tree is not complained of."""
    floors = {"low": [], "high": ["low"], "certificates": ["low"]}
    sound = {
        "low/a.h": "", "low/a.cpp": '#include "low/a.h"\n#include <openssl/evp.h>\n',
        "low/b.h": '#include "low/a.h"\n', "high/c.cpp": '#include "low/b.h"\n',
        "certificates/d.h": '#include "low/b.h"\n',
    }
    faults = {
        "must not know": {"low/b.h": '#include "high/c.h"\n', "high/c.h": ""},
        "where it is used": {"examples/h/main.cpp": '#include "low/a.h"\n'},
        "no floor": {"attic/e.h": ""},
        "files in a circle": {"low/a.cpp": '#include "low/b.h"\n'},
        "folders in a circle": {"high/c.h": '#include "tests/f.h"\n',
                                "tests/f.h": '#include "high/c.h"\n'},
        "must not import": {"controls/g.qml": "import Trivex.App 1.0\n"},
        "knows OpenSSL": {"certificates/d.h": "#include <openssl/x509.h>\n"},
        "knows OpenSSL through": {"low/b.h": "#include <openssl/x509.h>\n"},
    }
    for expected, change in [(None, {}), *faults.items()]:
        with tempfile.TemporaryDirectory() as directory:
            root = pathlib.Path(directory)
            for name, text in {**sound, **change}.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            found = list(findings(root, floors))
        if expected is None and found:
            yield f"a sound tree is refused: {found}"
        if expected is not None and not any(expected in line for line in found):
            yield f"not found: {expected} (only {found})"
    if not list(table_findings({"a": ["b"], "b": ["a"]})):
        yield "not found: a table in a circle"


def main():
    command = sys.argv[1] if len(sys.argv) > 1 else "check"
    if command == "picture":
        print(picture(FLOORS))
        return 0
    found = list(selftest()) if command == "selftest" else [
        *findings(ROOT, FLOORS), *picture_findings(ROOT, FLOORS), *journey_findings(ROOT, FLOORS)]
    print("\n".join(found))
    print(f"floors {command}: {len(found)} finding(s)")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
