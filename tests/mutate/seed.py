#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""seed.py BUILD TARGET FOLDER...: a copy of the sources with a switchable change in many places.

Reads the C++ sources of the folders as the build in BUILD compiles them and writes the copy to the
directory TARGET, with TARGET/mutants.json: number, file, line, kind and text of each change. All
changes are in one copy, each asleep until TRIVEX_MUTANT names it (mutant.h), so that one build
serves all of them. Everything is inserted round what was written, so that changes may nest.

Kinds:
  condition   the condition of an `if` or `?:` is turned round
  and-or      && becomes ||, || becomes &&
  limit       < becomes <=, <= becomes <, > becomes >=, >= becomes >, of integers
  statement   a call, an assignment or a signal is left out
  result      a bool that is returned is turned round
  one         1 more or less: the 1 of `+ 1` and `- 1` becomes 0
  swap        two neighbouring arguments of one type change places
"""

import argparse
import json
import multiprocessing
import pathlib
import random
import shutil
import sys

from clang import cindex
from clang.cindex import CursorKind as K

ROOT = pathlib.Path(__file__).resolve().parents[2]
MOST_IN_FILE = 400
LOGICAL = {"&&", "||"}
# Operator: what the change adds, to its left side or to its right one.
LIMITS = {"<": ("right", "+"), "<=": ("right", "-"), ">": ("left", "+"), ">=": ("right", "+")}
# Statements that no test can be expected to notice: texts for engineers.
SPOKEN = ("qWarning", "qDebug", "qInfo", "qCritical", "qCWarning", "qCDebug", "Q_UNUSED", "Q_ASSERT")


def text_of(cursor, source):
    return source[cursor.extent.start.offset:cursor.extent.end.offset].decode()


def children(cursor):
    return list(cursor.get_children())


def bare(cursor):
    """Without what the compiler put round it."""
    while cursor.kind in (K.UNEXPOSED_EXPR, K.PAREN_EXPR) and len(children(cursor)) == 1:
        cursor = children(cursor)[0]
    return cursor


def operator_of(cursor, source):
    """The operator between the two sides of a binary expression, "" when it can't be told."""
    sides = children(cursor)
    if len(sides) != 2:
        return ""
    between = source[sides[0].extent.end.offset:sides[1].extent.start.offset].decode()
    return between.strip()


def is_integer(cursor):
    kind = cursor.type.get_canonical().kind
    return kind in (cindex.TypeKind.INT, cindex.TypeKind.UINT, cindex.TypeKind.LONG,
                    cindex.TypeKind.ULONG, cindex.TypeKind.LONGLONG, cindex.TypeKind.ULONGLONG,
                    cindex.TypeKind.SHORT, cindex.TypeKind.USHORT)


class Seeds:
    """The changes of one file."""

    def __init__(self, path, name, arguments, first):
        self.source = path.read_bytes()
        self.name = name
        self.number = first
        self.found = []
        self.inserted = []  # (offset, order, text)
        index = cindex.Index.create()
        self.unit = index.parse(
            str(path), args=arguments,
            options=cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        self.path = str(path)
        self.macros = [
            (one.extent.start.offset, one.extent.end.offset)
            for one in self.unit.cursor.get_children()
            if one.kind == K.MACRO_INSTANTIATION and self.here(one)
            and one.extent.end.offset > one.extent.start.offset]
        self.visit(self.unit.cursor, None, 0)
        if len(self.found) >= MOST_IN_FILE:
            sys.exit(f"{name}: {len(self.found)} changes, more than have numbers")

    def here(self, cursor):
        place = cursor.location.file
        return place is not None and place.name == self.path

    def usable(self, cursor):
        """Both ends stand in this file as they are written, in no macro's argument."""
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if not self.here(cursor) or end <= start:
            return False
        return not any(first <= start < last or first < end < last
                       for first, last in self.macros
                       if not (start <= first and last <= end))

    def visit(self, cursor, function, depth):
        for child in cursor.get_children():
            if cursor.kind == K.TRANSLATION_UNIT and not self.here(child):
                continue
            inner = function
            if child.kind in (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR,
                              K.CONVERSION_FUNCTION, K.LAMBDA_EXPR):
                inner = child
                if self.is_constant(child):
                    continue
            if child.kind == K.FUNCTION_TEMPLATE or child.kind == K.STATIC_ASSERT:
                continue
            if child.kind == K.DECL_STMT and "constexpr" in text_of(child, self.source):
                continue
            if function is not None:
                self.look(child, cursor, function, depth)
            self.visit(child, inner, depth + 1)

    def is_constant(self, function):
        for token in function.get_tokens():
            if token.spelling == "constexpr":
                return True
            if token.spelling in ("{", ";"):
                return False
        return False

    def look(self, cursor, parent, function, depth):
        if not self.usable(cursor):
            return
        if parent.kind == K.IF_STMT and children(parent)[0] == cursor:
            head = self.source[parent.extent.start.offset:cursor.extent.start.offset].decode()
            if "constexpr" not in head and ";" not in head and cursor.kind != K.DECL_STMT \
                    and cursor.kind != K.VAR_DECL:
                self.turn("condition", cursor, depth)
        elif parent.kind == K.CONDITIONAL_OPERATOR and children(parent)[0] == cursor:
            self.turn("condition", cursor, depth)
        elif parent.kind == K.RETURN_STMT and function.kind != K.LAMBDA_EXPR \
                and function.result_type.get_canonical().kind == cindex.TypeKind.BOOL:
            self.turn("result", cursor, depth)
        if cursor.kind == K.BINARY_OPERATOR:
            self.look_at_operator(cursor, depth)
        if cursor.kind == K.CALL_EXPR:
            self.look_at_arguments(cursor, depth)
        if parent.kind in (K.COMPOUND_STMT, K.IF_STMT, K.FOR_STMT, K.CXX_FOR_RANGE_STMT):
            self.look_at_statement(cursor, parent, depth)

    def look_at_operator(self, cursor, depth):
        sign = operator_of(cursor, self.source)
        left, right = (children(cursor) + [None, None])[:2]
        if not left or not right or not self.usable(left) or not self.usable(right):
            return
        if sign in LOGICAL:
            number = self.add("and-or", cursor)
            turned = f"trivexMutant({number}) != bool("
            self.wrap(cursor, f"(trivexMutant({number}) != bool(", "))", depth)
            self.wrap(left, f"({turned}", "))", depth + 0.5)
            self.wrap(right, f"({turned}", "))", depth + 0.5)
        elif sign in LIMITS and is_integer(left) and is_integer(right):
            side, what = LIMITS[sign]
            changed = left if side == "left" else right
            number = self.add("limit", cursor)
            self.wrap(changed, "((", f") {what} (trivexMutant({number}) ? 1 : 0))", depth + 0.5)
        elif sign in ("+", "-") and bare(right).kind == K.INTEGER_LITERAL \
                and text_of(right, self.source) == "1":
            number = self.add("one", cursor)
            self.wrap(right, f"(trivexMutant({number}) ? 0 : ", ")", depth + 0.5)

    def look_at_arguments(self, cursor, depth):
        arguments = list(cursor.get_arguments())
        for first, second in zip(arguments, arguments[1:]):
            if first is None or second is None:
                continue
            plain = [bare(one) for one in (first, second)]
            if any(one.kind != K.DECL_REF_EXPR or not self.usable(one) for one in plain):
                continue
            texts = [text_of(one, self.source) for one in plain]
            types = [one.type.get_canonical().spelling for one in plain]
            if types[0] != types[1] or texts[0] == texts[1]:
                continue
            number = self.add("swap", cursor)
            self.wrap(plain[0], f"(trivexMutant({number}) ? {texts[1]} : ", ")", depth + 0.5)
            self.wrap(plain[1], f"(trivexMutant({number}) ? {texts[0]} : ", ")", depth + 0.5)
            return

    def look_at_statement(self, cursor, parent, depth):
        if parent.kind == K.IF_STMT and children(parent)[0] == cursor:
            return
        if parent.kind in (K.FOR_STMT, K.CXX_FOR_RANGE_STMT) and children(parent)[-1] != cursor:
            return
        inner = cursor
        if inner.kind == K.UNEXPOSED_EXPR and children(inner):
            inner = children(inner)[0]
        is_assignment = inner.kind == K.COMPOUND_ASSIGNMENT_OPERATOR or (
            inner.kind == K.BINARY_OPERATOR and operator_of(inner, self.source) == "=")
        if inner.kind != K.CALL_EXPR and not is_assignment:
            return
        text = text_of(cursor, self.source)
        if text.startswith(SPOKEN):
            return
        end = cursor.extent.end.offset
        rest = self.source[end:end + 1]
        if rest != b";":
            return
        number = self.add("statement", cursor)
        # In braces of its own, so that a following `else` stays with its `if`.
        self.inserted.append(
            (cursor.extent.start.offset, depth, f" {{ if (!trivexMutant({number})) {{ "))
        self.inserted.append((end + 1, -depth, " } }"))

    def turn(self, kind, cursor, depth):
        number = self.add(kind, cursor)
        self.wrap(cursor, f"(trivexMutant({number}) != bool(", "))", depth)

    def add(self, kind, cursor):
        self.number += 1
        text = " ".join(text_of(cursor, self.source).split())
        self.found.append({"number": self.number, "file": self.name,
                           "line": cursor.extent.start.line, "kind": kind, "text": text[:200]})
        return self.number

    def wrap(self, cursor, before, after, depth):
        """Outer text stands outside of inner text that is inserted at the same place; what is
        inserted round a part of an expression is half a step deeper than what is round it all."""
        self.inserted.append((cursor.extent.start.offset, depth, before))
        self.inserted.append((cursor.extent.end.offset, -depth, after))

    def written(self):
        # An end comes before a beginning at the same place; of two ends the inner one comes first.
        ordered = sorted(enumerate(self.inserted),
                         key=lambda one: (one[1][0], one[1][1] >= 0, one[1][1], one[0]))
        result, at = [], 0
        for _, (offset, _, text) in ordered:
            result += [self.source[at:offset], text.encode()]
            at = offset
        return b"".join(result + [self.source[at:]])


def arguments_of(build):
    """The compiler's arguments for each source file."""
    result = {}
    for one in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        words = one.get("arguments") or one["command"].split()
        kept = [word.replace('\\"', '"') for word in words
                if word.startswith(("-I", "-D", "-std", "-f"))]
        for position, word in enumerate(words[:-1]):
            if word == "-isystem":
                kept += [word, words[position + 1]]
        result[one["file"]] = kept
    return result


def chosen(folders, arguments, seed):
    """The files that get changes, drawn from each folder: "qca=0.3" is three of ten in qca."""
    dice = random.Random(seed)
    result = []
    for folder, _, share in (one.partition("=") for one in folders):
        files = [path.relative_to(ROOT) for path in sorted((ROOT / folder).rglob("*.cpp"))
                 if str(path) in arguments]
        result += sorted(dice.sample(files, max(1, round(float(share or 1) * len(files)))))
    return result


def seeded(one):
    """The changes and the new text of one file; each file has numbers of its own."""
    name, arguments, first = one
    seeds = Seeds(ROOT / name, name.as_posix(), arguments, first)
    return name, seeds.found, seeds.written()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("target", type=pathlib.Path)
    parser.add_argument("folders", nargs="+", help="FOLDER or FOLDER=SHARE of its files")
    parser.add_argument("--seed", type=int, default=1, help="which files make the share")
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()
    arguments = arguments_of(options.build)
    if options.target.exists():
        sys.exit(f"{options.target} is there already")
    shutil.copytree(ROOT, options.target, symlinks=True,
                    ignore=shutil.ignore_patterns("build*", ".git"))
    # Files are read side by side, so that the numbers of each begin at a round one.
    todo, first = [], 0
    for name in chosen(options.folders, arguments, options.seed):
        todo.append((name, arguments[str(ROOT / name)], first))
        first += MOST_IN_FILE
    mutants = []
    with multiprocessing.Pool(options.jobs) as pool:
        for name, found, text in pool.imap(seeded, todo):
            (options.target / name).write_bytes(text)
            mutants += found
    (options.target / "mutants.json").write_text(json.dumps(mutants, indent=1), encoding="utf-8")
    print(f"{len(mutants)} changes in {len({one['file'] for one in mutants})} files")


if __name__ == "__main__":
    main()
