#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""Refuses texts of the window that use other words than docs/glossary.md, or that were found wanting.

check-texts.py ROOT            checks the catalogues, and how names come into their quotation marks
check-texts.py ROOT selftest   checks that each rule finds what it is for
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as xml

SOURCES = ("app", "controls", "tools", "console")
QUOTED = re.compile(r"«[^»]*%[1-9]|“[^”]*%[1-9]")
RAW = re.compile(r'q[st]TrId\(\s*"([\w-]+)"[^()"]*\)\s*\.(?:arg|replace)\(')
CATALOGUES = {"en": "trivex-app_en.ts", "ru": "trivex-app_ru.ts"}
# Said nothing, or something untrue, or was not what people call it.
REFUSED = {
    "en": ("Nothing is tried again by itself", "Now fill in the subject", "EMSA", "Manufacturer",
           "Few tries are left", "Check that it is inserted and try again", "Colours"),
    "ru": ("Повторных попыток программа сама не делает", "Попыток осталось мало", "Цвета", "EMSA",
           "Производитель", "Проверьте, вставлен ли он, и повторите"),
}
# In the middle of a text: algorithms as their standards write them.
FORMS = {
    "en": (r"\bSHA\d", r" {2}", r"[^.]\.{2}(?!\.)", r'"'),
    "ru": (r"\bSHA\d", r" {2}", r'"', r"[“”]"),
}
# In a line of the window a plain hyphen would be a place to break it: "PIN-" and "код" below. On a
# terminal, which may know no other hyphen, it is the plain one.
BROKEN = re.compile(r"\bPIN-код")
ON_TERMINALS = "trivex-console-"


def glossary(root):
    """The refused words of each language, from the table."""
    found = {"en": [], "ru": []}
    for line in (root / "docs/glossary.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")] if line[:1] == "|" else []
        if len(cells) != 5 or cells[0] == "English" or set(cells[0]) == {"-"}:
            continue
        for language, cell in (("en", cells[3]), ("ru", cells[4])):
            found[language] += [word.strip() for word in cell.split(",") if word.strip()]
    return found


def pattern(word):
    """A word by itself; "~" stands for any ending. "PIN" is no "PIN‑код"."""
    body = re.escape(word.rstrip("~")) + (r"\w*" if word.endswith("~") else "")
    flags = 0 if word.rstrip("~").isupper() else re.IGNORECASE
    return re.compile(rf"(?<![\w‑-]){body}(?![\w‑-])", flags)


def texts(path):
    for message in xml.parse(path).iter("message"):
        translation = message.find("translation")
        forms = [form.text or "" for form in translation.iter("numerusform")]
        for text in forms or [translation.text or ""]:
            yield message.get("id"), text


def breaks(identifier, text):
    return not identifier.startswith(ON_TERMINALS) and BROKEN.search(text) is not None


def findings(language, text, words):
    for word in words[language]:
        if pattern(word).search(text):
            yield f"“{word}” is not of the glossary"
    for sentence in REFUSED[language]:
        if sentence.lower() in text.lower():
            yield f"“{sentence}” was refused"
    for form in FORMS[language]:
        if re.search(form, text):
            yield f"/{form}/ is not how it is written"


def check(root):
    words = glossary(root)
    for language, name in CATALOGUES.items():
        for identifier, text in texts(root / "translations" / name):
            for finding in findings(language, text, words):
                yield f"{name}: {identifier}: {finding}: {text}"
            if breaks(identifier, text):
                yield f"{name}: {identifier}: a line may break within “PIN-код”: {text}"


def quoting(root):
    """The identifiers of the texts that put a name between quotation marks."""
    return {identifier for name in CATALOGUES.values()
            for identifier, text in texts(root / "translations" / name) if QUOTED.search(text)}


def misquotings(source, identifiers):
    """Names that come in as they are, with marks of their own inside those of the text."""
    for match in RAW.finditer(source):
        if match.group(1) in identifiers:
            yield f"{match.group(1)}: the name goes between quotation marks: use Texts.put"


def check_sources(root):
    identifiers = quoting(root)
    for folder in SOURCES:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".qml", ".cpp"):
                for finding in misquotings(path.read_text(encoding="utf-8"), identifiers):
                    yield f"{path.relative_to(root)}: {finding}"


def check_all(root):
    yield from check(root)
    yield from check_sources(root)


def selftest(root):
    words = glossary(root)
    if len(quoting(root)) < 20:
        yield "the texts that quote names were not found"
    for source in ('qsTrId("a-b").arg(name)', 'qsTrId("a-b", 2)\n    .replace("%1", name)'):
        if not list(misquotings(source, {"a-b"})) or list(misquotings(source, {"a-c"})):
            yield f"not told apart: {source}"
    if list(misquotings('Texts.put(qsTrId("a-b"), [name.replace(1, 2)])', {"a-b"})):
        yield "a name that is put in well was refused"
    if min(len(found) for found in words.values()) < 10:
        yield "the glossary was not read"
    for language in CATALOGUES:
        for word in words[language] + list(REFUSED[language]):
            sample = f"a {word.rstrip('~')} b"
            if not list(findings(language, sample, words)):
                yield f"{language}: “{word}” is not found in “{sample}”"
    for language, text in (("en", "RSA with SHA256"), ("ru", "Введите PIN токена"),
                           ("en", "The subjects"), ("ru", "Заявка")):
        if not list(findings(language, text, words)):
            yield f"{language}: nothing was found in “{text}”"
    for language, text in (("en", "RSA with SHA-256, to be certain"), ("ru", "Введите PIN-код"),
                           ("ru", "Введите PIN‑код")):
        for finding in findings(language, text, words):
            yield f"{language}: “{text}”: {finding}"
    if not breaks("trivex-app-x", "Введите PIN-код") or breaks("trivex-console-x", "PIN-код"):
        yield "a place to break a line is not found, or is found on a terminal"


def main():
    root = pathlib.Path(sys.argv[1])
    found = list((selftest if sys.argv[2:] == ["selftest"] else check_all)(root))
    print("\n".join(found) or "the texts use the words of the glossary")
    return 1 if found else 0


sys.exit(main())
