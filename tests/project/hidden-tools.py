#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""hidden-tools.py BUILD CTEST: nothing that was skipped may count as passed.

Runs tests with one of their tools hidden from the search path, and wants each to end as skipped and
to say why; and shows that a test which fails is not called skipped because it said SKIP before. Which
tool which test needs is declared below, and compared with what the sources of the tests look for.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
TESTS = pathlib.Path(__file__).resolve().parents[1]
RUNNER = TESTS / "support" / "run-test"
# Programs that the runner and the tests' own scripts are made of.
KEPT = ["sh", "mktemp", "rm", "cat", "tee", "grep", "sed", "dirname", "basename", "mkdir", "cp",
        "bash", "env", "git", "echo"]
# The tool, a test that needs it, and the word by which the test tells of it.
CASES = [
    ("softhsm2-util", "tst_signtoken", "SoftHSM"),
    ("softhsm2-util", "tst_requesttoken", "SoftHSM"),
    ("softhsm2-util", "qml_signing", "SoftHSM"),
    ("softhsm2-util", "tst_writing", "SoftHSM"),
    ("softhsm2-util", "tst_attributes", "SoftHSM"),
    ("softhsm2-util", "tst_app_tokens", "SoftHSM"),
    ("pkcs11-tool", "tst_signtoken", "pkcs11-tool"),
    ("pkcs11-tool", "tst_reading", "pkcs11-tool"),
    ("p11-kit", "tst_p11kit", "p11-kit"),
    ("Xvfb", "tst_app_lists", "Xvfb"),
    ("Xvfb", "tst_controls_types_Default_gui", "Xvfb"),
    ("certutil", "tst_nss", "NSS"),
    ("pk12util", "tst_nss:keyLeaves", "pk12util"),
    ("certtool", "tst_keyrequestkinds", "certtool"),
    ("openssl", "tst_app_selection", "openssl"),
    ("openssl", "tst_x509_properties", "openssl"),
    ("openssl", "tst_x509_certificates", "openssl"),
    ("openssl", "tst_signverify:signatureIsThatOfOpenssl", "openssl"),
    ("qmlplugindump", "type_information", "qmlplugindump"),
    ("qdoc", "reference", "qdoc"),
    ("clang-format", "project_format", "clang-format"),
    ("shellcheck", "project_scripts", "shellcheck"),
    ("qmllint", "project_qml", "qmllint"),
    ("nm", "project_symbols", "nm"),
    ("nm", "project_definitions", "nm"),
    ("reuse", "project_licences", "reuse"),
    ("desktop-file-validate", "desktop_files_desktop", "desktop-file-validate"),
    ("appstreamcli", "desktop_files_metainfo", "appstreamcli"),
    ("xmllint", "desktop_files_icon", "xmllint"),
    ("update-mime-database", "desktop_files_types", "update-mime-database"),
]


# How sources look for a program: Qt, shell scripts, Python and the checks of the repository.
LOOKS = [r'findExecutable\(\s*QStringLiteral\("([\w.+-]+)"\)', r'^\s*need ((?:[\w.+-]+ ?)+)$',
         r'command -v ([\w.+-]+)', r'shutil\.which\("([\w.+-]+)"\)',
         r'\btool\((?:"[\w.+-]+", )*"([\w.+-]+)"\)']
# Nothing that ctest runs: tried by hand, and static analysis.
BY_HAND = {"app/screenshots.cpp", "tokens/try-tokens", "project/analyse", "project/hidden-tools.py"}
# What a test uses where it is there, and does not miss.
OPTIONAL = {"qhelpgenerator"}  # one more form of the pages that are checked
# What makes a token in a test, and what a program that does so has to say SKIP with.
MAKES_TOKENS = re.compile(r"\b(TestToken|FaultyToken|TokenFixture|TokenWindowTest|SampleData)\b")
MAY_SKIP = re.compile(r"TRIVEX_NEED_TOKENS|return missingTokenTools|GostFixture|ConsoleTest|"
                      r"run(Token|Sample)WindowTest|runWindowTest<\w+>\(argc, argv, \w+, \w+|"
                      r"FirstHome|QSKIP|\"SKIP ")


def texts():
    """The sources of the tests by their path below tests/, and the tests that lie elsewhere."""
    elsewhere = [path for folder in ("docs", "qml")
                 for path in sorted((TESTS.parent / folder).rglob("*.py"))]
    for path in sorted(TESTS.rglob("*")) + elsewhere:
        name = path.relative_to(TESTS).as_posix() if path not in elsewhere else path.name
        if path.is_file() and path.suffix not in {".der", ".p12", ".pem"} and name not in BY_HAND:
            yield name, path.read_text(encoding="utf-8", errors="replace")


def undeclared():
    """Tools that are looked for and hidden nowhere, or the other way; tests that can't skip."""
    declared = {case[0] for case in CASES}
    wanted = set()
    for name, text in texts():
        for look in LOOKS:
            for found in re.findall(look, text, re.MULTILINE):
                wanted.update(found.split())
        program = re.search(r"QTEST_\w*MAIN|int main\(", text)
        if program and name.endswith(".cpp") and MAKES_TOKENS.search(text) \
                and not MAY_SKIP.search(text):
            yield f"tests/{name} makes tokens and does not skip without them"
    for tool in sorted(wanted - declared - OPTIONAL):
        yield f"{tool} is looked for, and no case hides it"
    for tool in sorted(declared - wanted):
        yield f"{tool} is hidden, and nothing looks for it"


def registered(build, ctest):
    """The tests of the build: name, command and environment."""
    listing = subprocess.run([ctest, "--show-only=json-v1"], cwd=build, check=True,
                             capture_output=True, text=True).stdout
    tests = {}
    for test in json.loads(listing)["tests"]:
        properties = {entry["name"]: entry["value"] for entry in test.get("properties", [])}
        settings = dict(line.split("=", 1) for line in properties.get("ENVIRONMENT", []) if line)
        tests[test["name"]] = (test.get("command"), settings)
    return tests


def path_without(tool, folder):
    """A search path with every program that the tests may look for, but `tool`."""
    for name in sorted({case[0] for case in CASES} | set(KEPT)):
        found = shutil.which(name)
        if found and name != tool:
            (folder / name).symlink_to(found)
    return str(folder)


def wrong_with(tool, name, word, tests):
    """What is wrong about test `name` when `tool` is hidden; an empty text when nothing is."""
    name, _, function = name.partition(":")
    if name not in tests:
        return ""  # built without this area
    command, settings = tests[name]
    if not command:
        return f"{name} is not built"
    with tempfile.TemporaryDirectory() as folder:
        environment = {**os.environ, **settings, "TRIVEX_HIDDEN_TOOL": tool,
                       "PATH": path_without(tool, pathlib.Path(folder))}
        environment.pop("DISPLAY", None)
        # What stands for an interpreter may be a script that needs the whole search path.
        command = [sys.executable if pathlib.Path(part).name.startswith("python") else part
                   for part in command] + ([function] if function else [])
        result = subprocess.run(command, env=environment, capture_output=True, text=True,
                                errors="replace")
    lines = [line for line in result.stdout.splitlines() if "SKIP" in line]
    if result.returncode != SKIPPED:
        return f"{name} without {tool} ends with {result.returncode}, not as skipped"
    if not any(word in line for line in lines):
        return f"{name} without {tool} does not say that {word} is missing: {lines}"
    return ""


def runner_is_honest():
    """What a test that says SKIP ends with when it fails, passes, or says nothing."""
    expected = [("echo SKIP x; exit 3", 3), ("echo SKIP x", SKIPPED), ("echo; echo SKIP x", SKIPPED),
                ("echo 'SKIP   : Test::one() x'", SKIPPED), ("echo fine", 0), ("kill -9 $$", 137),
                ("echo 'QINFO  : Test::one() SKIP x'", SKIPPED), ("echo noSKIP x", 0)]
    for script, code in expected:
        got = subprocess.run(["sh", RUNNER, "sh", "-c", script], capture_output=True).returncode
        if got != code:
            yield f"the runner ends with {got}, not {code}, after: {script}"


def main():
    build, ctest = sys.argv[1:3]
    tests = registered(build, ctest)
    findings = list(runner_is_honest()) + list(undeclared())
    findings += filter(None, (wrong_with(*case, tests) for case in CASES))
    for line in findings:
        print(line)
    print(f"{len(CASES)} hidden tools, {len(findings)} finding(s)")
    sys.exit(1 if findings else 0)


if __name__ == "__main__":
    main()
