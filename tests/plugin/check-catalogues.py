#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""Fails when a translation identifier of the plugin is not in both catalogues, or only there."""

import pathlib
import re
import sys
import xml.etree.ElementTree as xml

CODE = ("certificates", "keystores", "requests", "signing", "plugin")
CATALOGUES = ("trivex-qml-plugin_eng_en.ts", "trivex-qml-plugin-ru.ts")
IDENTIFIER = re.compile(r'"((?:trivex-(?:p-la|la|me|se)|plugin-la)-\w+)"')


def used(root):
    found = set()
    for folder in CODE:
        for path in (root / folder).glob("*.cpp"):
            found.update(IDENTIFIER.findall(path.read_text(encoding="utf-8")))
    return found


def messages(path):
    """The texts by identifier; None for an unfinished one."""
    texts = {}
    for message in xml.parse(path).iter("message"):
        translation = message.find("translation")
        done = translation.get("type") is None and (translation.text or "").strip()
        texts[message.get("id")] = translation.text if done else None
    return texts


def problems(root):
    wanted = used(root)
    if not wanted:
        yield "no identifier was found in the code"
    catalogues = {name: messages(root / "translations" / name) for name in CATALOGUES}
    for name, texts in catalogues.items():
        for identifier in sorted(wanted - texts.keys()):
            yield f"{name}: {identifier} is missing"
        for identifier in sorted(texts.keys() - wanted):
            yield f"{name}: {identifier} is used nowhere"
        for identifier in sorted(key for key, text in texts.items() if text is None):
            yield f"{name}: {identifier} has no finished text"
    english, russian = (catalogues[name] for name in CATALOGUES)
    for identifier in sorted(english.keys() & russian.keys()):
        places = [sorted(re.findall(r"%\w+", texts[identifier] or "")) for texts in (english, russian)]
        if places[0] != places[1]:
            yield f"{identifier}: the texts have different places to fill"


def main():
    found = list(problems(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every identifier is in both catalogues")
    return 1 if found else 0


sys.exit(main())
