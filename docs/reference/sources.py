# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""What the sources say of the public types: their members, and the comments beside them."""

import dataclasses
import re

NAMED = (
    re.compile(r"Q_PROPERTY\(\s*[\w:<>, *&]+?[ *&]+(\w+)\s+(?:READ|MEMBER|WRITE)"),
    re.compile(r"^\s*enum (?:class )?(\w+)"),
    re.compile(r"^class (?:\w+_EXPORT )?(\w+)(?: : public (?:Trivex::)?(\w+))?[^;]*\{"),
    re.compile(r"\b(\w+)\("),
)
ENUMERATOR = re.compile(r"^\s*(\w+)(?: = [^,]+)?,\s*///< (.*)")
TRAILING = re.compile(r"///< (.*)")
ROLE = re.compile(r'\{(\w+Role), (?:QByteArrayLiteral\()?"(\w+)"\)?\}')


@dataclasses.dataclass
class Component:
    name: str
    uri: str
    comment: str
    members: list  # (kind, signature, comment)
    tables: list  # (title, [(word, text)])


class Comments:
    """The comments of headers: by class and member."""

    def __init__(self, paths):
        self.texts = {}
        self.classes = {} # the header of each
        self.bases = {}
        for path in paths:
            self._read(path)

    def of(self, owner, member=""):
        """The comment; that of a base class for a member which has none of its own."""
        text = self.texts.get((owner, member), "")
        while member and not text and owner in self.bases:
            owner = self.bases[owner]
            text = self.texts.get((owner, member), "")
        return text

    def _read(self, path):
        owner, held, waiting = "", [], ""
        for line in path.read_text(encoding="utf-8").splitlines():
            stripped = line.strip()
            trailing = ENUMERATOR.match(line)
            if stripped.startswith("///") and not stripped.startswith("///<"):
                held.append(stripped[3:].removeprefix(" "))
                continue
            if trailing:
                self.texts[owner, trailing[1]] = trailing[2]
            elif stripped.startswith("///<"):
                continue
            waiting = f"{waiting} {TRAILING.sub('', stripped)}".strip()
            if waiting.startswith("Q_PROPERTY(") and not waiting.endswith(")"):
                continue # it goes on in the next line
            named = next((found for found in (pattern.search(waiting) for pattern in NAMED) if found),
                         None)
            if named and waiting.startswith("class "):
                owner = named[1]
                self.classes[owner] = path
                self.bases[owner] = named[2]
            trailing = TRAILING.search(line)
            if named and trailing:
                held.append(trailing[1])
            if named and held:
                key = "" if waiting.startswith("class ") else named[1]
                self.texts.setdefault((owner, key), "\n".join(held))
            held, waiting = [], ""


def parameters(text):
    found = re.findall(r'Parameter \{ name: "(\w+)"; type: "([^"]+)"', text)
    return ", ".join(f"{plain(kind)} {name}" for name, kind in found)


def plain(kind):
    """A type as QML has it."""
    kind = kind.replace("Trivex::", "").replace("QCA::", "").rstrip("*")
    return {"QStringList": "list<string>", "qlonglong": "double", "QVariantList": "list<var>",
            "QVariant": "var", "QVariantMap": "var", "QUrl": "url", "QDateTime": "date",
            "QByteArray": "bytes"}.get(kind, re.sub(r"[<>:]", "_", kind))


def component_of(described, comments):
    """A type that is written in C++."""
    exported = re.search(r'"(Trivex\.Crypto[\w.]*)/(\w+) 1\.0"', described)
    uri, name = exported[1], exported[2]
    owner = re.search(r'name: "(?:Trivex::)?(\w+)"', described)[1]
    members = []
    for line in re.findall(r"Property \{ (.*) \}", described):
        member = re.search(r'name: "(\w+)"', line)[1]
        kind = plain(re.search(r'type: "([^"]+)"', line)[1])
        kind = f"list<{kind}>" if "isList: true" in line else kind
        members.append(("qmlproperty", f"{kind} {name}::{member}", comments.of(owner, member)))
    for kind in ("Signal", "Method"):
        pattern = rf'^        {kind} \{{(?: name: "(\w+)"(?:; type: "([^"]+)")?(?:; revision: \d+)? \}}|\n(.*?)^        \}})'
        for single, single_type, body in re.findall(pattern, described, re.M | re.S):
            member = single or re.search(r'name: "(\w+)"', body)[1]
            found = re.search(r'^            type: "([^"]+)"', body, re.M)
            result = plain(single_type or (found[1] if found else "void"))
            signature = f"{name}::{member}({parameters(body)})"
            if kind == "Method":
                signature = f"{result} {signature}"
            members.append((f"qml{kind.lower()}", signature, comments.of(owner, member)))
    members = without_changes(unique(members))
    return Component(name, uri, comments.of(owner), members, tables_of(described, owner, comments))


def unique(members):
    """Each member once: a default argument makes two methods of one."""
    return list({signature.split("(")[0]: (kind, signature, text)
                 for kind, signature, text in reversed(members)}.values())[::-1]


def without_changes(members):
    """Without the signals that only tell of a property's change: each property has one."""
    names = {re.split(r"[ (]", signature.split("::")[1])[0]: kind for kind, signature, _ in members}
    changes = {f"{name}Changed" for name, kind in names.items() if kind == "qmlproperty"}
    return [(kind, signature, text) for kind, signature, text in members
            if text or kind != "qmlsignal" or signature.split("::")[1].split("(")[0] not in changes]


def tables_of(described, owner, comments):
    """Enumerations with their numbers, and roles."""
    tables = []
    for name, body in re.findall(r'Enum \{\n\s+name: "(\w+)"\n.*?values: \{\n(.*?)\}', described, re.S):
        rows = [(f"{owner}.{value}", f"{number}. {comments.of(owner, value)}".strip())
                for value, number in re.findall(r'"(\w+)": (-?\d+)', body)]
        tables.append((f"enum {name}", rows))
    while owner in comments.classes and "| role " not in comments.of(owner):
        source = comments.classes[owner].with_suffix(".cpp")
        roles = ROLE.findall(source.read_text(encoding="utf-8")) if source.exists() else []
        if roles:
            tables.append(("Roles", [(role, comments.of(owner, word) or "Of each row.")
                                     for word, role in roles]))
        owner = comments.bases[owner]
    return tables


def qml_type(name, path):
    """A control: the comment above its root object, and what it declares for applications: QML has
    no private members, so those that no application needs are marked by a line "// internal"."""
    comment, held, members = "", [], []
    depth = 0
    hidden = False
    for line in path.read_text(encoding="utf-8").splitlines():
        stripped = line.strip()
        if depth <= 1 and stripped.startswith("///"):
            held.append(stripped[3:].removeprefix(" "))
            continue
        if depth == 0 and stripped.endswith("{"):
            comment = "\n".join(held)
        if TRAILING.search(line):
            held.append(TRAILING.search(line)[1])
        if depth == 1 and not hidden:
            members += member_of(name, stripped, "\n".join(held))
        held, hidden = [], stripped == "// internal"
        depth += line.count("{") - line.count("}")
    return Component(name, "Trivex.Crypto.Controls", comment, members, [])


def member_of(owner, line, comment):
    found = re.match(r"(?:default )?(?:readonly )?(?:required )?property (alias|[\w.<>]+) (\w+)", line)
    if found:
        kind = "var" if found[1] == "alias" else found[1]
        yield "qmlproperty", f"{kind} {owner}::{found[2]}", comment
    found = re.match(r"signal (\w+)(\(.*\))?", line)
    if found:
        yield "qmlsignal", f"{owner}::{found[1]}{found[2] or '()'}", comment
    found = re.match(r"function (\w+)\((.*?)\)", line)
    if found:
        words = ", ".join(f"var {word.strip()}" for word in found[2].split(",") if word.strip())
        yield "qmlmethod", f"var {owner}::{found[1]}({words})", comment
