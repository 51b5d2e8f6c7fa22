#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""byhand.py: what became of the changes in byhand.txt, and whether each still has its place.

byhand.py COPY lets those of C++ sleep in a copy of the sources, for run.py. byhand.py COPY NUMBER
makes that one, which may be of QML, for good.
"""

import collections
import json
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
OUTCOMES = ("noticed", "closed", "equivalent", "open")

Change = collections.namedtuple("Change", "number outcome file old new text")


def unescaped(text):
    return re.sub(r"\\(\\|n)", lambda found: "\n" if found[1] == "n" else "\\", text)


def changes():
    lines = [line for line in (HERE / "byhand.txt").read_text(encoding="utf-8").splitlines()
             if line and not line.startswith("#")]
    result = []
    for number, line in enumerate(lines, 1):
        outcome, file, old, new, text = line.split(" ;; ")
        if outcome not in OUTCOMES:
            sys.exit(f"no outcome: {line}")
        result.append(Change(number, outcome, file, unescaped(old), unescaped(new), text))
    return result


def fits(change, text):
    if text.count(change.old) == 1:
        return True
    print(f"{change.number}: {text.count(change.old)} places in {change.file}: {change.text}")
    return False


def make(tree, wanted, condition):
    """The changes that were made in the files of the tree, `condition(number)` for each @."""
    texts = {}
    made = []
    for change in wanted:
        path = tree / change.file
        text = texts.get(path) or path.read_text(encoding="utf-8")
        if not fits(change, text):
            continue
        line = text[:text.index(change.old)].count("\n") + 1
        new = change.new.replace("@", condition(change.number))
        texts[path] = text.replace(change.old, new)
        made.append({"number": change.number, "file": change.file, "line": line,
                     "kind": "byhand", "text": change.text})
    for path, text in texts.items():
        path.write_text(text, encoding="utf-8")
    return made


def tell(all_changes):
    counts = collections.Counter(one.outcome for one in all_changes)
    for one in all_changes:
        if one.outcome == "open":
            print(f"open: {one.file}: {one.text}")
    for one in all_changes:
        fits(one, (ROOT / one.file).read_text(encoding="utf-8"))
    print(f"{len(all_changes)} changes: " + ", ".join(f"{counts[one]} {one}" for one in OUTCOMES))


def main():
    all_changes = changes()
    if len(sys.argv) == 1:
        return tell(all_changes)
    tree = pathlib.Path(sys.argv[1])
    if len(sys.argv) == 3:
        wanted = [one for one in all_changes if one.number == int(sys.argv[2])]
        return make(tree, wanted, lambda _: "true")
    made = make(tree, [one for one in all_changes if not one.file.endswith(".qml")],
                lambda number: f"trivexMutant({number})")
    (tree / "mutants.json").write_text(json.dumps(made, indent=1), encoding="utf-8")
    print(f"{len(made)} changes sleep")


if __name__ == "__main__":
    main()
