#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""Checks over the repository: check.py NAME [ARGUMENT]...

Each prints what is wrong, one line a finding, and exits with 1 when there was any. A tool that is
missing is said aloud as SKIP.
"""

import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SKIPPED_FOLDERS = {".git", ".cache", "__pycache__"}


def files():
    """Every file of the project, build directories left out."""
    for path in sorted(ROOT.rglob("*")):
        parts = path.relative_to(ROOT).parts
        if SKIPPED_FOLDERS & set(parts) or parts[0].startswith("build"):
            continue
        if path.is_file() and path.suffix not in {".pyc", ".qm"}:
            yield path


def name(path):
    return path.relative_to(ROOT).as_posix()


def text_of(path):
    try:
        return path.read_text(encoding="utf-8")
    except UnicodeDecodeError:
        return None


def is_script(path):
    with path.open("rb") as stream:
        return stream.read(2) == b"#!"


def of_kind(*suffixes):
    return [path for path in files() if path.suffix in suffixes]


def sizes():
    """Files of a size that one can read in one go."""
    limits = {".cpp": 400, ".h": 200, ".qml": 250}
    tests = {".cpp": 650}
    for path in of_kind(*limits):
        lines = len(text_of(path).splitlines())
        # More wants a file of its own. A test program is a list of cases, which may be longer.
        limit = limits[path.suffix]
        if name(path).startswith("tests/"):
            limit = tests.get(path.suffix, limit)
        if lines > limit:
            yield f"{name(path)}: {lines} lines, at most {limit}"


def bodies(text):
    """The bodies of functions defined at the left margin, as (first line, list of lines)."""
    start = None
    lines = text.splitlines()
    for number, line in enumerate(lines):
        if line == "{":
            start = number
        elif line.startswith("}") and start is not None:
            yield start, lines[start + 1:number]
            start = None


def test_names():
    """Test classes: Test and the subject."""
    slots = re.compile(r"^class (\w+) : public \w+ \{\n    Q_OBJECT\n(?:public:\n(?:(?:    .*)?\n)*?)?"
                       r"private Q_SLOTS:", re.M)
    for path in of_kind(".cpp", ".h"):
        for found in slots.findall(text_of(path)):
            if name(path).startswith("tests/") and not re.fullmatch(r"Test[A-Z]\w*", found):
                yield f"{name(path)}: the test class {found} is not named Test and its subject"


def is_table(body):
    """A flat list of entries or cases, whose length is that of what it lists."""
    flat = re.compile(r"^\s*(case .*|default:|break;|return .*;|[{(\"'R].*,?|//.*|.*,|)$")
    return sum(bool(flat.match(line)) for line in body) >= 0.75 * len(body)


def functions():
    """Functions that are short, and none of more than sixty lines but tables."""
    lengths = []
    for path in of_kind(".cpp"):
        for start, body in bodies(text_of(path)):
            lengths.append(len(body))
            # A test may tell a story from its beginning to its end.
            limit = 90 if name(path).startswith("tests/") else 60
            if len(body) > limit and not is_table(body):
                yield f"{name(path)}:{start + 1}: a function of {len(body)} lines"
    middle = statistics.median(lengths)
    print(f"{len(lengths)} functions, median {middle} lines, longest {max(lengths)}")
    if middle >= 10:
        yield f"the median function has {middle} lines, fewer than 10 are wanted"


HIDDEN = (
    (re.compile(r"\bdata\((?:[^;]*?[(, ])?2[56]\d\)|\bcase 2[56]\d:|\bRole = 2[56]\d\b"),
     "a role by its number", ()),
    (re.compile(r"\b(?:SIGNAL|SLOT)\("), "a signal or slot by its text", ()),
    (re.compile(r'"[0-2](?:\.\d+){2,}\.?"'), "an object identifier by its numbers",
     # In the last of them it is the example in an empty field.
     ("qca/asn1/", "tests/", "benchmarks/", "fuzz/", "tour/", "examples/",
      "controls/RequestFields.qml")),
    (re.compile(r"\bCKR_\w"), "a code of PKCS#11", ("providers/", "tests/", "benchmarks/", "fuzz/")),
)


def hidden():
    """Numbers and texts in place of names: roles, signals, codes of a token above its provider."""
    for path in of_kind(".cpp", ".h", ".qml"):
        for number, line in enumerate(text_of(path).splitlines(), 1):
            code = line.split("//")[0]
            for pattern, what, rooms in HIDDEN:
                if pattern.search(code) and not name(path).startswith(rooms or ("-",)):
                    yield f"{name(path)}:{number}: {what}"
    yield from object_ids()


def object_ids():
    """Each object identifier has one name, and each name is used."""
    sources = {path: text_of(path) for path in of_kind(".cpp", ".h")}
    used = {word for path, text in sources.items() if not name(path).startswith("tests/")
            for word in re.findall(r"\bOid::(\w+)", text)}
    seen = {}
    for path, text in sources.items():
        if not name(path).startswith("qca/asn1/"):
            continue
        for word, dotted in re.findall(r'^inline constexpr char (\w+)\[\] = "([\d.]+)";', text, re.M):
            if dotted in seen:
                yield f"{name(path)}: {word} and {seen[dotted]} are both {dotted}"
            if word not in used:
                yield f"{name(path)}: nothing uses {word}"
            seen[dotted] = word
    if len(seen) < 100:
        yield f"qca/asn1: only {len(seen)} object identifiers found"


def licences():
    """Copyright and licence of every file, where the tool that reads them finds them."""
    program = tool("reuse")
    if program:
        result = subprocess.run([program, "--root", ROOT, "lint"], capture_output=True, text=True)
        if result.returncode != 0:
            yield from result.stdout.splitlines()


# Written in pieces, so that this list does not find itself.
FORBIDDEN = [
    (r"\bPart [1-5]" + r"\.[1-4]\b", "a reference to a document that readers don't have"),
    (r"\bParts [1-5]" + r"\.", "a reference to a document that readers don't have"),
    (r"spec" + r"\.md", "a reference to a document that readers don't have"),
    (r"\b(the|this|per the) " + r"spec(ification)?\b(?! of)", "a document that readers don't have"),
    (r"\bissue " + r"\d", "a number that says nothing: give the reason"),
    (r"\bhelper " + r"[A-F]\b", "how the work was shared out"),
    (r"\.\./" + r"shared|/wo" + r"rk/|/fa" + r"rm/", "a path of one machine"),
    (r"/home/" + r"(?!me/)[a-z]+/|/ro" + r"ot/|/tmp/" + r"build", "a path of one machine"),
    (r"deb\." + r"debian\.org|\bsnapshot\." + r"debian", "a mirror: packages go by name"),
]
KNOWN_HOSTS = re.compile(
    r"^(www\.w3\.org|schemas?\..*|.*\.example|example\.(org|com|net)|localhost|127\.0\.0\.1"
    r"|www\.freedesktop\.org|www\.debian\.org|affinix\.com|trivex|spdx\.org|%1|\$.*|\{.*)(:\d+)?$")


def words():
    """No references that readers can't follow, no machine's paths, no foreign hosts."""
    for path in files():
        text = text_of(path)
        if text is None or path.suffix in {".pem", ".crt", ".csr"}:
            continue
        for number, line in enumerate(text.splitlines(), 1):
            for pattern, reason in FORBIDDEN:
                if re.search(pattern, line):
                    yield f"{name(path)}:{number}: {reason}: {line.strip()[:100]}"
            for host in re.findall(r"https?://([^/\s\"'<>)\\]+)", line):
                if not KNOWN_HOSTS.match(host):
                    yield f"{name(path)}:{number}: the host {host}"


# Seven signs alone in a line, too, which may be the line below a heading of that length.
CONFLICT = re.compile(r"(?:<{7}|>{7}|\|{7})(?: |$)")


def conflict_lines(text):
    """The numbers of the lines that a merge has left."""
    before = ""
    for number, line in enumerate(text.splitlines(), 1):
        is_underline = len(before) == 7 and before != "=" * 7
        if CONFLICT.match(line) or (line == "=" * 7 and not is_underline):
            yield number
        before = line


def conflicts():
    """No marks of a merge that somebody did not finish."""
    for path in files():
        for number in conflict_lines(text_of(path) or ""):
            yield f"{name(path)}:{number}: the mark of a conflict"


def conflicts_selftest():
    """What that check finds in texts whose marks are known."""
    ours, theirs, base, between = "<" * 7 + " a", ">" * 7 + " b", "|" * 7 + " c", "=" * 7
    cases = [
        (f"1;\n{ours}\n2;\n{base}\n3;\n{between}\n4;\n{theirs}\n5;\n", [2, 4, 6, 8]),
        (f"a line that stayed\n{between}\nanother\n", [2]),
        (f"\n{between}\n", [2]),
        (f"}}\n{between}\n", [2]),
        (f"{between}\n{between}\n", [1, 2]),
        (f"{ours[:-2]}\n{theirs[:-2]}\n", [1, 2]),
        (f"Heading\n{between}\nText\n", []),
        (f"A longer heading\n{between * 2}==\n", []),
        (f" {ours}\nstream {ours}\n{'<' * 8}\n{'>' * 6} \n", []),
    ]
    for text, wanted in cases:
        found = list(conflict_lines(text))
        if found != wanted:
            yield f"found in the lines {found} instead of {wanted}:\n{text}"


# Folders that hold no production code.
OUTSIDE = ("tests", "tour", "benchmarks", "fuzz", "app/gallery")
LOCKS_AND_THREADS = re.compile(
    r"std::(?:shared_)?mutex\b(?![>)])|std::once_flag|std::thread\b[ (]|\bQThread (?:m_|\{)"
    r"|: public QThread\b|\bQThread::create\b")
# What changes and is there once in the process, or once in a thread: variables of namespaces and of
# classes, static ones of functions, and what is made at its first use and never deleted.
PROCESS_WIDE = re.compile(
    r"^ *static (?:const )?auto ?[*&]+(?:const )?\w+ = \*?new\b"
    r"|^ *static (?!const\b|constexpr\b|auto\b)[\w:]+(?:<[^;()]*>)?(?: \w+)?(?:\{[^;]*\})?;$"
    r"|^(?:static )?(?!class |struct |enum |union |using |return |namespace |typedef |extern |friend "
    r"|const |constexpr |inline |goto |static )[\w:]+(?:<[^;()]*>)? \*?\w+(?: = [^;(]*|\{[^;]*\})?;$"
    r"|^struct \w+ \w+(?: = [^;(]*|\{[^;]*\})?;$"
    r"|^thread_local\b", re.MULTILINE)
# Their place in the source and in the library goes with the standard library's threads.
OTHER_PRIMITIVES = re.compile(r"\b(?:QMutex|QReadWriteLock|QWaitCondition|QSemaphore|QThreadPool|QRunnable"
                              r"|QtConcurrent|pthread_create)\b")


def threads():
    """Every thread, lock and process-wide object of the production code stands in docs/threads.md."""
    page = text_of(ROOT / "docs" / "threads.md")
    once = page.partition("## What the process has once")[2]
    found = {"thread or lock": set(), "process-wide object": set()}
    for path in of_kind(".cpp", ".h"):
        if name(path).startswith(OUTSIDE):
            continue
        unit = name(path).rpartition(".")[0]
        text = text_of(path)
        for what, pattern, part in (("thread or lock", LOCKS_AND_THREADS, page),
                                    ("process-wide object", PROCESS_WIDE, once)):
            if pattern.search(text):
                found[what].add(unit)
                if f"`{unit}" not in part:
                    yield f"{name(path)}: its {what} is not in docs/threads.md"
        for primitive in OTHER_PRIMITIVES.findall(text):
            yield f"{name(path)}: {primitive}, where the standard library's primitives are used"
    for unit in re.findall(r"`((?:qca|providers|signing|tools|console|controls)/[\w/]+?)(?:\.cpp|\.h)?`",
                           page):
        if not list(ROOT.glob(f"{unit}.*")):
            yield f"docs/threads.md: {unit} is not there"
    rows = re.findall(r"^\| (`.+?`) \|", once, re.MULTILINE)
    listed = {unit for row in rows for unit in re.findall(r"`([\w/]+)`", row)}
    for unit in sorted(listed - found["process-wide object"]):
        yield f"docs/threads.md: {unit} has nothing that the process has once"
    if min(map(len, found.values())) < 20:
        yield f"too few found: {found}"


CONSTANT = re.compile(r"^ *(?:inline |static )?constexpr (?:const )?[\w:<>,* ]+?[ *&]+"
                      r"([a-z]\w*)(?=\s*(?:\[\w*\])?\s*[={])", re.MULTILINE)
LOCK = re.compile(r"\b(?:lock_guard|unique_lock|shared_lock)(?:<[^>]*>)? (\w+)")


def names():
    """One rule for constants (SomeLimit), as in .clang-tidy, and for locks (lock, or someLock)."""
    for path in of_kind(".cpp", ".h"):
        text = text_of(path)
        for found in CONSTANT.findall(text):
            yield f"{name(path)}: the constant {found} begins with a small letter"
        for found in LOCK.findall(text):
            if not re.fullmatch(r"lock|\w+Lock", found):
                yield f"{name(path)}: the lock {found} is not named lock or someLock"


def decisions():
    """Records are numbered one after the other, and the index names each by its title."""
    folder = ROOT / "docs" / "decisions"
    records = sorted(folder.glob("[0-9]*.md"))
    index = text_of(folder / "README.md")
    if len(re.findall(r"^- \[", index, re.MULTILINE)) != len(records):
        yield "docs/decisions/README.md: it has another number of records than there are"
    for number, path in enumerate(records, 1):
        heading = re.search(r"^# (\d{3}) (.+)$", text_of(path), re.MULTILINE)
        if not heading or path.name[:3] != f"{number:03}" or heading[1] != path.name[:3]:
            yield f"{name(path)}: its number or heading is not {number:03}"
        elif f"- [{heading[1]}]({path.name}) {heading[2]}\n" not in index:
            yield f"docs/decisions/README.md: does not name {path.name} by its title"
    for path in files():
        for cited in re.findall(r"\b(?:decision|record) (\d{3})\b", text_of(path) or ""):
            if not list(folder.glob(f"{cited}-*.md")):
                yield f"{name(path)}: there is no decision {cited}"


PLACES = re.compile(r"`((?:app|benchmarks|cmake|controls|debian|docs|examples|packaging|providers|qca|tests"
                    r"|tools|tour|translations)/[\w./-]*)")


def guides():
    """What the guides send their readers to is there."""
    pages = [ROOT / "README.md", ROOT / "CONTRIBUTING.md", *(ROOT / "docs" / "guides").glob("*.md")]
    for path in pages:
        for place in PLACES.findall(text_of(path)):
            if not (ROOT / place).exists():
                yield f"{name(path)}: there is no {place}"
    if len(pages) < 5:
        yield "docs/guides: there are guides for applications, administrators and contributors"


MISSING = []


def tool(*names):
    for candidate in names:
        # It lies outside the search path that hidden-tools.py makes.
        beside = None if os.environ.get("TRIVEX_HIDDEN_TOOL") == candidate else "/usr/lib/qt5/bin"
        found = shutil.which(candidate) or (beside and shutil.which(candidate, path=beside))
        if found:
            return found
    MISSING.append(names[0])
    return None


def findings_of(command, paths):
    """The lines that a checking program prints, when it fails."""
    result = subprocess.run([*command, *map(str, paths)], cwd=ROOT, capture_output=True, text=True)
    if result.returncode != 0:
        yield from (result.stdout + result.stderr).splitlines()


def format():
    """Sources in the project's one format, which each version of the tool takes for another."""
    program = tool("clang-format-14", "clang-format")
    if program and " 14." not in subprocess.run([program, "--version"], capture_output=True,
                                                text=True).stdout:
        MISSING.append("clang-format 14")
    elif program:
        yield from findings_of([program, "--dry-run", "-Werror"], of_kind(".cpp", ".h"))


def scripts():
    """Shell scripts that the shell can read, and that shellcheck has no complaint about."""
    shell = [path for path in files()
             if path.suffix == ".sh" or (is_script(path) and b"sh" in path.read_bytes()[:20])]
    for path in shell:
        yield from findings_of(["bash" if b"bash" in path.read_bytes()[:20] else "sh", "-n"], [path])
    program = tool("shellcheck")
    if program:
        yield from findings_of([program, "-x", "-S", "warning", "-e",
                                "SC1090,SC1091,SC2034,SC2154,SC2317"], shell)


def qml(modules):
    """QML that parses, and finds the project's types in what `modules` says of them."""
    program = tool("qmllint")
    if not program:
        return
    yield from findings_of([program], of_kind(".qml"))
    described = set()
    for path in of_kind(".qmltypes"):
        described |= set(re.findall(r'"Trivex\.Crypto[\w.]*/(\w+) 1\.0"', text_of(path)))
    # It knows little of Qt's own types, so that most of what it says of them is not so.
    for path in of_kind(".qml"):
        said = subprocess.run([program, "-U", "-I", modules, path], capture_output=True, text=True)
        for found in re.findall(r"^warning: (\w+) was not found", said.stdout + said.stderr, re.M):
            if found in described:
                yield f"{name(path)}: {found} is in no plugins.qmltypes that is built"


QML_TEXT = re.compile(r"^\s*(?:[\w.]+: )?(?:T\.)?(?:Label|Text|PlaceholderText) \{", re.MULTILINE)


def plain_texts():
    """Labels say how their text is read: by itself, a name with a tag in it would be rich text."""
    for path in of_kind(".qml"):
        text = text_of(path)
        for start in QML_TEXT.finditer(text):
            depth = 0
            body = ""
            for character in text[start.end() - 1:]:
                depth += {"{": 1, "}": -1}.get(character, 0)
                body += character if depth == 1 else ""
                if depth == 0:
                    break
            if "textFormat" not in body and not name(path).startswith("tests/"):
                line = text.count("\n", 0, start.end()) + 1
                yield f"{name(path)}:{line}: a text without textFormat"


def window_texts(language):
    """What the window says in that language, without what stands behind it: marks, kinds of files."""
    catalogue = text_of(ROOT / "translations" / f"trivex-app_{language}.ts")
    found = re.findall(r"<(?:translation|numerusform)>\s*([^<]+?)\s*</", catalogue)
    return {re.sub(r"…$| \([^()]*\)$", "", text) for text in found}


def manual():
    """The manual says the same in each language, has its pictures, and names buttons by their texts."""
    folder = ROOT / "docs" / "manual"
    shapes = {}
    for path in sorted(folder.glob("manual-*.html")):
        text = text_of(path)
        shapes[name(path)] = [len(re.findall(f"<{tag}\\b", text))
                              for tag in ("h2", "li", "img", "tr", "code")]
        for picture in re.findall(r'<img src="([^"]+)"', text):
            if not (folder / picture).exists():
                yield f"{name(path)}: {picture} is missing"
        known = window_texts(path.stem[-2:])
        for found in re.findall(r"<b>(.*?)</b>", text, re.S):
            if re.sub(r"\s+", " ", found) not in known:
                yield f"{name(path)}: nothing in the window is called {found} (<strong> is for other words)"
        for found in re.findall(r"<img(?![^>]* alt=\"[^\"]+\")", text):
            yield f"{name(path)}: a picture without a text in its place: {found}"
    shown = text_of(ROOT / "README.md") + "".join(map(text_of, folder.glob("*.html")))
    for path in sorted((ROOT / "docs" / "screenshots").glob("*.png")):
        if f"screenshots/{path.name}" not in shown:
            yield f"{name(path)}: neither the README nor the manual shows it"
    if len(set(map(tuple, shapes.values()))) != 1 or len(shapes) < 2:
        yield f"docs/manual: the languages differ in headings, points, pictures, keys: {shapes}"


# The version stands in CMakeLists.txt; the formats of others have it once more.
STATED_VERSIONS = {
    "packaging/org.trivex.Trivex.metainfo.xml": r'<release version="([^"]+)"',
    "debian/changelog": r"\Atrivex \(([^)]+)\)",
}


def settings():
    """Defaults that packages rely on, and one version."""
    build = text_of(ROOT / "CMakeLists.txt")
    version = re.search(r"^project\(Trivex VERSION ([\d.]+) ", build, re.MULTILINE)[1]
    for file, pattern in STATED_VERSIONS.items():
        stated = re.search(pattern, text_of(ROOT / file), re.MULTILINE)
        if not stated or stated[1] != version:
            yield f"{file}: its newest version is not {version}, which CMakeLists.txt states"
    wanted = r'set\(TRIVEX_TRANSLATIONS_DIR "/usr/share/translations" CACHE '
    if not re.search(wanted, build):
        yield "TRIVEX_TRANSLATIONS_DIR does not default to /usr/share/translations"
    listed = text_of(ROOT / "packaging" / "debian-packages.txt").splitlines()
    names = [line for line in listed if line and line[0] not in "#["]
    for entry in names:
        if not re.fullmatch(r"[a-z0-9][a-z0-9+.-]+\??", entry):
            yield f"packaging/debian-packages.txt: {entry!r} is no package name"


# Qt's own modules bring it in without a word.
IMPLICIT_MODULES = {"qml-module-qtqml-models2"}


def imported_modules(*folders):
    """The packages of Qt's modules that the QML below the folders imports, without a major version."""
    found = set()
    for path in (path for path in of_kind(".qml", ".cpp") if name(path).split("/")[0] in folders):
        for module in re.findall(r"\bimport (Qt[\w.]+) [0-9]", text_of(path)):
            found.add("qml-module-" + module.removesuffix(".impl").lower().replace(".", "-"))
    return found


def packages():
    """Of Qt's QML modules the packages that are named are those that something imports."""
    control = text_of(ROOT / "debian" / "control")
    stanzas = {stanza.split("\n")[0]: stanza for stanza in re.split(r"^Package: ", control, flags=re.M)}
    modules, program = {"qml", "tools", "controls"}, {"app"}
    listed = text_of(ROOT / "packaging" / "debian-packages.txt")
    groups = dict(re.findall(r"^\[(\w+)\]\n(.*?)(?=^\[|\Z)", listed, re.M | re.S))
    cases = [
        ("debian/control, qml-module-trivex-crypto", stanzas["qml-module-trivex-crypto"],
         imported_modules(*modules)),
        ("debian/control, trivex", stanzas["trivex"],
         imported_modules(*program) - imported_modules(*modules)),
        ("packaging/debian-packages.txt, [run]", groups["run"], imported_modules(*modules, *program)),
        ("packaging/debian-packages.txt", listed,
         imported_modules(*modules, *program, "examples", "tour", "tests", "benchmarks")),
    ]
    for where, text, wanted in cases:
        named = set(re.findall(r"\bqml-module-qt[\w-]+", text)) - IMPLICIT_MODULES
        named = {package.removesuffix("2") for package in named}
        for package in sorted(named - wanted):
            yield f"{where}: nothing imports what {package} has"
        for package in sorted(wanted - named):
            yield f"{where}: {package} is imported, and not named"


def symbols(library):
    """The QML plugin shows Qt its two entry points and nothing else."""
    program = tool("nm")
    if not program:
        return
    listing = subprocess.run([program, "-D", "--defined-only", library], check=True,
                             capture_output=True, text=True).stdout
    # Lower case is local: not exported, although it has a place in the table.
    found = {line.split()[-1].split("@")[0] for line in listing.splitlines()
             if line.split()[-2].isupper()}
    wanted = {"qt_plugin_instance", "qt_plugin_query_metadata"}
    for symbol in sorted(found ^ wanted):
        yield f"{library}: {'exported' if symbol in found else 'missing'}: {symbol}"


# The commands that make a target, and how its name comes from their first argument.
MAKES_TARGET = {
    "add_library": "{}", "add_executable": "{}", "add_custom_target": "{}",
    "trivex_subsystem": "trivex_{}", "trivex_provider": "trivex_provider_{}",
    "trivex_benchmark": "{}", "trivex_test_program": "{}", "trivex_add_test": "{}",
    "trivex_add_token_test": "{}"}
# The commands whose arguments name targets, and the words after which other commands name them.
NAMES_TARGETS = re.compile(r"add_dependencies|target_\w+|set_target_properties")
TARGET_WORDS = {"LINK", "DEPENDS", "TARGETS"}
OWN_TARGET = re.compile(r"(trivex[_-][\w-]+|tst_[\w-]+|bench_\w+|qmltests)$")


def build_commands(path):
    """The commands of a CMake file as (line, name, arguments), once for each turn of a loop."""
    text = re.sub(r'(?m)(^|[ \t])#[^"\n]*$', "", text_of(path))
    loops = re.findall(r"foreach\((\w+)\s+([^()$]*)\)", text)
    for match in re.finditer(r"(?m)^[ \t]*(\w+)\s*\(((?:[^()]|\([^()]*\))*)\)", text):
        line = text.count("\n", 0, match.start(1)) + 1
        turns = [match[2].replace('"', " ")]
        for variable, values in loops:
            if f"${{{variable}}}" in turns[0]:
                turns = [turn.replace(f"${{{variable}}}", value)
                         for turn in turns for value in values.split()]
        for turn in turns:
            yield line, match[1].lower(), turn


def named_targets(command, arguments):
    """The words of a command that stand where CMake expects a target."""
    yield from re.findall(r"\$<TARGET_\w+:([\w-]+)>", arguments)
    heading = None
    for word in re.split(r"\bPROPERTIES\b", arguments)[0].split():
        heading = word if re.fullmatch(r"[A-Z_]{4,}", word) else heading
        if NAMES_TARGETS.match(command) or heading in TARGET_WORDS:
            yield word


def targets():
    """The sources of a target are listed, and each target that is named exists."""
    yield from dict.fromkeys(wrong_targets())


def wrong_targets():
    commands = [(path, *command) for path in files()
                if path.name == "CMakeLists.txt" or path.suffix == ".cmake"
                for command in build_commands(path)]
    made = {MAKES_TARGET[command].format(arguments.split()[0])
            for _, _, command, arguments in commands if command in MAKES_TARGET}
    for path, line, command, arguments in commands:
        words = arguments.split()
        where = f"{name(path)}:{line}:"
        if command == "file" and words[0].startswith("GLOB"):
            yield f"{where} file({words[0]}): list the files"
        if command in {"if", "elseif"} and "TARGET" in words:
            yield f"{where} if(TARGET ...): the options decide which targets exist"
        for target in sorted(set(named_targets(command, arguments))):
            if OWN_TARGET.match(target) and target not in made:
                yield f"{where} there is no target {target}"


# What is called on QCA's side of the token provider: contexts, and what hands them their results.
QCA_SIDE = re.compile(r"contexts?|signing")


def memory():
    """No secure memory of QCA's on the threads of tokens and bundles, which may outlive QCA."""
    wanted = re.compile(r"\b(SecureArray|toSecureArray|MemoryRegion|BigInteger|SymmetricKey)\b")
    places = [path for path in of_kind(".cpp", ".h") if name(path).startswith("providers/pkcs11/")
              and not QCA_SIDE.search(path.stem)]
    places += [path for path in of_kind(".cpp", ".h") if name(path).startswith("qca/")
               and path.stem in {"keymaterial", "bundleopening", "bundlereader", "bundlepassword",
                                 "operation"}]
    for path in places:
        for number, line in enumerate(text_of(path).splitlines(), 1):
            found = wanted.search(line.split("//")[0])
            if found:
                yield f"{name(path)}:{number}: {found.group()} on a thread that may outlive QCA"


def test_functions():
    """The functions of each test program, by the program's name."""
    found = {}
    for path in of_kind(".cpp"):
        if not path.stem.startswith("tst_"):
            continue
        functions = set(re.findall(r"^(?:void Test\w+::|    void )(\w+)\(\)\n\s*\{", text_of(path), re.M))
        # Programs of a folder may bear its name: tst_x509_keys is made of x509/tst_keys.cpp.
        for program in (path.stem, path.stem.replace("tst_", f"tst_{path.parent.name}_", 1)):
            found.setdefault(program, set()).update(functions)
    return found


def cited_tests(page, heading, columns):
    """The rows of a table that cites tests, and what is wrong with them."""
    text = text_of(ROOT / "docs" / page).partition(f"{columns}\n|---|---|\n")[2]
    rows = re.findall(r"^\| (.+?) \| (.*) \|$", text, re.M)
    if not rows:
        yield f"docs/{page}: there is no table of {heading}"
    functions = test_functions()
    checks = {check.__name__ for check in CHECKS}
    examples = {path.stem.replace("tst_", "example_", 1)
                for path in (ROOT / "tests" / "examples").glob("tst_*.qml")}
    for row, tests in rows:
        cited = re.findall(r"`([\w-]+?)(?:::(\w+))?`", tests)
        if not cited:
            yield f"docs/{page}: nothing holds: {row}"
        for program, function in cited:
            if function:
                known = function in functions.get(program, ())
            else:
                known = program in examples or program.startswith("project_") and program[8:] in checks
            if not known:
                yield f"docs/{page}: there is no test {program}{function and '::' + function}"


def promises():
    """Each promise of the threat model names tests, and those are there."""
    yield from cited_tests("threat-model.md", "promises", "| promise | held by |")


def capabilities():
    """Each thing that the program can do names tests, and those are there."""
    yield from cited_tests("capabilities.md", "capabilities", "| what | shown by |")


# Local sockets are none: the first instance of the program hears of the second through one.
NETWORK = re.compile(r"\b(?:QTcp\w+|QUdp\w+|QSsl\w+|QNetwork\w+|QHttp\w+|XMLHttpRequest|WebSocket"
                     r"|QtWeb\w+|connect\(.*sockaddr|getaddrinfo|BIO_new_connect|OSSL_HTTP\w+|X509_load_http)\b")


def network():
    """Nothing of ours opens a connection to another machine."""
    for path in of_kind(".cpp", ".h", ".qml", ".js"):
        if name(path).startswith(OUTSIDE):
            continue
        for number, line in enumerate(text_of(path).splitlines(), 1):
            found = NETWORK.search(line.split(" // ")[0])
            if found:
                yield f"{name(path)}:{number}: {found.group()} reaches the network"


# What our programs and scripts take from the environment.
READ_VARIABLE = re.compile(r"(?:getenv|qEnvironmentVariable\w*)\(\"(TRIVEX_\w+)\"|\$\{(TRIVEX_\w+):-")
# Of tests, and of the tour that sets it for itself.
INNER_VARIABLES = re.compile(r"TRIVEX_(?:NO_GOST_ENGINE|TOUR_\w+)")


def environment():
    """The environment variables that people are told of, and those that are read."""
    man = text_of(ROOT / "packaging" / "trivex.1")
    pages = [ROOT / "README.md", ROOT / "docs" / "threat-model.md", ROOT / "packaging" / "trivex.1",
             *(ROOT / "docs" / "guides").glob("*.md"), *(ROOT / "docs" / "manual").glob("*.html")]
    sources = {path: text_of(path) for path in files()
               if not name(path).startswith(("tests/", "fuzz/", "benchmarks/", "docs/"))}
    read = {found[0] or found[1]: path for path, text in sources.items()
            for found in READ_VARIABLE.findall(text)}
    build = "\n".join(text for path, text in sources.items()
                      if path.name == "CMakeLists.txt" or path.suffix in (".cmake", ".in"))
    if len(pages) < 5 or "TRIVEX_PKCS11_MODULES" not in read:
        yield "tests/project/check.py: the pages or the code that reads the environment are elsewhere now"
    for page in pages:
        for variable in sorted(set(re.findall(r"\bTRIVEX_\w+", text_of(page)))):
            if variable not in read and not re.search(rf"\b{variable}\b", build):
                yield f"{name(page)}: {variable} is read by nothing"
    for variable, path in read.items():
        if path.suffix in (".cpp", ".h") and not INNER_VARIABLES.fullmatch(variable) \
                and f".B {variable}\n" not in man:
            yield f"packaging/trivex.1: says nothing of {variable}, which {name(path)} reads"
    # The one list among them: its separator is told where it is explained.
    splits = "list.split(QLatin1Char(';')" in text_of(ROOT / "providers/pkcs11/life/modulelist.cpp")
    for page in (ROOT / "packaging" / "trivex.1", ROOT / "docs" / "guides" / "administrators.md"):
        told = re.search(r"TRIVEX_PKCS11_MODULES`?[,\n][^.]*\bsemicolons\b", text_of(page))
        if not (splits and told):
            yield f"{name(page)}: TRIVEX_PKCS11_MODULES and its reader do not both have semicolons"


# A pause that an earlier line names says by its name what it is for.
FIXED_WAIT = re.compile(r"\b(?:QTest::qWait|QTest::qSleep|QThread::m?sleep|u?sleep_for)\((?!LookPause)")


def waits():
    """Tests that wait for a fixed time say why there is nothing else to wait for."""
    for path in of_kind(".cpp", ".h"):
        lines = text_of(path).splitlines() if name(path).startswith("tests/") else []
        for number, line in enumerate(lines):
            # Beside the wait, or above it in the same paragraph.
            near = [line, *lines[number + 1:number + 2]] if not line.rstrip().endswith(";") else [line]
            for above in reversed(lines[max(0, number - 4):number]):
                if not above.strip():
                    break
                near.append(above)
            # Between two looks at what is awaited there is a pause.
            looks = number > 0 and re.match(r"\s*while \(", lines[number - 1])
            if FIXED_WAIT.search(line) and not looks and not any("//" in one for one in near):
                yield f"{name(path)}:{number + 1}: a wait for a fixed time that does not say why"


CHECKS = [sizes, functions, hidden, test_names, licences, words, threads, decisions, names, guides, format,
          scripts, conflicts, conflicts_selftest, qml, plain_texts, manual, settings, packages, targets,
          symbols, memory, promises, capabilities, network, environment, waits]


def main():
    checks = {check.__name__: check for check in CHECKS}
    if len(sys.argv) < 2 or sys.argv[1] not in checks:
        sys.exit(f"{__doc__}\nNames: {', '.join(checks)}")
    wrong = list(checks[sys.argv[1]](*sys.argv[2:]))
    # A line that begins with SKIP makes ctest call the test skipped, so findings come without it.
    for program in MISSING:
        print(f"{'missing:' if wrong else 'SKIP'} {program} is not installed")
    for line in wrong:
        print(line)
    print(f"{sys.argv[1]}: {len(wrong)} finding(s)")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
