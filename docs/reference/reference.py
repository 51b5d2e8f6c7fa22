#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""reference.py write|check OUTPUT: the reference of the three QML modules, as HTML and .qch.

The members come from plugins.qmltypes and the QML files of the controls, the texts from the comments
beside the code, and qdoc makes pages of both. `check` wants a page for each public type, each member
on its page, and a text for each of them; qdoc may not complain.
"""

import html
import os
import pathlib
import re
import shutil
import subprocess
import sys

from sources import Comments, component_of, qml_type

ROOT = pathlib.Path(__file__).resolve().parents[2]
DESCRIBED = {"qml": ("plugin", "certificates", "keystores", "requests", "signing"),
             "tools": ("tools",), "controls": ("controls",)}
CONFIGURATION = """project = trivex
description = Trivex reference
version = {version}
sourcedirs = .
sources.fileextensions = "*.qdoc"
spurious = "Undocumented parameter.*" "Undocumented return value.*"
outputdir = html
outputformats = HTML
HTML.stylesheets =
qhp.projects = Trivex
qhp.Trivex.file = trivex.qhp
qhp.Trivex.namespace = org.trivex.reference
qhp.Trivex.virtualFolder = trivex
qhp.Trivex.indexTitle = Trivex reference
qhp.Trivex.indexRoot =
"""
INDEX = """/*!
    \\page index.html
    \\title Trivex reference
    Types of \\l {Trivex.Crypto}, \\l {Trivex.Crypto.Tools} and \\l {Trivex.Crypto.Controls}.
*/
"""


def module_page(uri):
    return (f"/*!\n    \\qmlmodule {uri} 1.0\n    \\title {uri}\n    \\brief The types of {uri}.\n\n"
            f"    Import it with:\n    \\code\n    import {uri} 1.0\n    \\endcode\n*/\n")


def table_row(line):
    """A row of a table as qdoc has it; nothing for the line below a heading."""
    cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
    if not all(re.fullmatch(r":?-+:?", cell) for cell in cells):
        yield "\\row"
        for cell in cells:
            yield "\\li " + re.sub(r"`([^`]+)`", r"\\c {\1}", cell)


def text_of(comment):
    """A comment as qdoc reads it: words in backticks are code, and so are indented lines; lines that
    begin with a bar are a table."""
    lines, in_code, in_table = [], False, False
    for line in [*comment.splitlines(), ""]:
        if line.startswith("|") != in_table:
            in_table = not in_table
            lines += ["\\endcode"] if in_code else []
            in_code = False
            lines.append("\\table" if in_table else "\\endtable")
        if in_table:
            lines += table_row(line)
            continue
        code = line.startswith("    ")
        if code != in_code and line.strip():
            lines.append("\\code" if code else "\\endcode")
            in_code = code
        line = line.replace("\\", "\\\\") if not code else line
        lines.append(line if code else re.sub(r"`([^`]+)`", r"\\c {\1}", line))
    if in_code:
        lines.append("\\endcode")
    return "\n".join("    " + line for line in lines)


def block(command, comment):
    return f"/*!\n    {command}\n\n{text_of(comment)}\n*/\n"


def type_page(component):
    """The type, and each of its members in the order of their description."""
    name, uri = component.name, component.uri
    first = re.split(r"\n\s*\n|\n    |\n\|", component.comment)[0].replace("\n", " ")
    brief = first.split(". ")[0].rstrip(".:").replace("`", "")
    body = component.comment
    for title, rows in component.tables:
        body += f"\n\n@table {title}\n" + "\n".join(f"{left}\t{right}" for left, right in rows)
    text, *tables = body.split("\n\n@table ")
    head = [f"/*!\n    \\qmltype {name}\n    \\inqmlmodule {uri}\n    \\brief {brief}.\n", text_of(text)]
    for table in tables:
        title, *rows = table.split("\n")
        head.append(f"\n    \\section1 {title}\n    \\table")
        for row in rows:
            left, right = row.split("\t")
            head.append(f"    \\row\n    \\li \\c {{{left}}}\n    \\li {text_of(right).strip()}")
        head.append("    \\endtable")
    pages = ["\n".join(head) + "\n*/\n"]
    for kind, signature, comment in component.members:
        pages.append(block(f"\\{kind} {signature}", comment))
    return "\n".join(pages)


def components():
    """Every public type: what is written in C++ by its description, controls by their files."""
    for folder, code in DESCRIBED.items():
        comments = Comments([path for name in code for path in sorted((ROOT / name).glob("*.h"))])
        described = (ROOT / folder / "plugins.qmltypes").read_text(encoding="utf-8")
        for found in re.findall(r"^    Component \{\n(.*?)^    \}", described, re.M | re.S):
            if "exports:" in found:
                yield component_of(found, comments)
    for line in (ROOT / "controls" / "qmldir").read_text(encoding="utf-8").splitlines():
        found = re.fullmatch(r"(?:singleton )?(\w+) 1\.0 (\w+\.qml)", line)
        if found:
            yield qml_type(found[1], ROOT / "controls" / found[2])


def make(output, types):
    """The pages, and what qdoc said of them."""
    shutil.rmtree(output, ignore_errors=True)
    output.mkdir(parents=True)
    version = re.search(r"^project\(Trivex VERSION ([\d.]+)",
                        (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"), re.M)[1]
    (output / "trivex.qdocconf").write_text(CONFIGURATION.format(version=version))
    modules = sorted({component.uri for component in types})
    (output / "modules.qdoc").write_text(INDEX + "\n".join(map(module_page, modules)))
    for component in types:
        (output / f"{component.uri}.{component.name}.qdoc").write_text(type_page(component),
                                                                       encoding="utf-8")
    result = subprocess.run([tool("qdoc"), "trivex.qdocconf"], cwd=output, capture_output=True,
                            text=True)
    said = [line for line in (result.stdout + result.stderr).splitlines() if "warning:" in line
            or "error:" in line]
    generator = tool("qhelpgenerator")
    if generator and not result.returncode:
        subprocess.run([generator, "html/trivex.qhp", "-o", "trivex.qch"], cwd=output, check=True,
                       capture_output=True)
    return said + ([] if result.returncode == 0 else [f"qdoc ends with {result.returncode}"])


def wrong_with(component, output):
    page = output / "html" / f"qml-{component.uri.lower().replace('.', '-')}-{component.name.lower()}.html"
    if not page.exists():
        yield f"{component.name} has no page"
        return
    text = html.unescape(re.sub(r"<[^>]+>", "", page.read_text(encoding="utf-8")))
    if re.search(r"\\(?:table|row|li|code|c)\b", text):
        yield f"{component.name}: a command of qdoc is shown as text"
    if not component.comment.strip():
        yield f"{component.name} has no text"
    for kind, signature, comment in component.members:
        member = re.split(r"[ (]", signature.split("::")[1])[0]
        # What tells only that a property has changed says so by its name.
        is_change = kind == "qmlsignal" and member.endswith("Changed")
        if not comment and not is_change:
            yield f"{component.name}.{member} has no text"
        if not re.search(rf"\b{member}\b", text):
            yield f"{component.name} does not tell of {member}"
    for _, rows in component.tables:
        for left, _ in rows:
            if left not in text:
                yield f"{component.name} does not tell of {left}"


def tool(name):
    """Debian keeps Qt's tools in a folder of their own; a search path that was made to hide one counts."""
    hidden = os.environ.get("TRIVEX_HIDDEN_TOOL") == name
    return None if hidden else shutil.which(name) or shutil.which(name, path="/usr/lib/qt5/bin")


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ("write", "check"):
        sys.exit(__doc__)
    if not tool("qdoc"):
        print("SKIP qdoc is not installed")
        return
    output = pathlib.Path(sys.argv[2]).resolve()
    types = list(components())
    wrong = make(output, types)
    for component in types:
        wrong += wrong_with(component, output)
    for line in wrong:
        print(line)
    members = sum(len(component.members) for component in types)
    print(f"{len(types)} types, {members} members")
    sys.exit(1 if wrong and sys.argv[1] == "check" else 0)


if __name__ == "__main__":
    main()
