#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""run.py TREE: does the test suite notice changes? TREE was made by seed.py and built in TREE/build.

First every test that was built runs once without a change, which tells how long it takes and which
changes it reaches. Then a sample of the changes is made, one at a time, and those tests that reach
it run, the quickest first, until one fails. The outcome of each change is a line of JSON in
TREE/outcomes.jsonl; a run that is started again goes on where the last one ended.

A change is
  noticed     a test failed, crashed or did not end
  survived    every test that reaches it passed
  unreached   no test reaches it, which is as bad
  equivalent  it stands in equivalents.txt: nobody could tell the difference, and why
"""

import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent


class Test:
    """One test as ctest would run it."""

    def __init__(self, known):
        self.name = known["name"]
        self.command = known["command"]
        self.environment = {}
        self.timeout = 120.0
        self.directory = None
        for one in known.get("properties", []):
            if one["name"] == "ENVIRONMENT":
                self.environment = dict(text.split("=", 1) for text in one["value"])
            elif one["name"] == "TIMEOUT":
                self.timeout = float(one["value"])
            elif one["name"] == "WORKING_DIRECTORY":
                self.directory = one["value"]
        # What wraps a test looks at skips, which are no matter here.
        if any(word.endswith("/run-test") for word in self.command):
            at = next(i for i, word in enumerate(self.command) if word.endswith("/run-test"))
            self.command = self.command[at + 1:]
        self.seconds = 0.0
        self.reached = set()

    def is_built(self):
        return pathlib.Path(self.command[0]).exists()

    def run(self, further, timeout):
        """"passed", "failed" at the first failure, or "hangs"."""
        environment = dict(os.environ, **self.environment, **further)
        process = subprocess.Popen(
            self.command, env=environment, cwd=self.directory, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
        late = threading.Event()

        def end():
            late.set()
            kill(process)

        timer = threading.Timer(timeout, end)
        timer.start()
        failed = False
        for line in process.stdout:
            if line.startswith((b"FAIL!", b"QFATAL")):
                failed = True
                kill(process)
                break
        process.stdout.close()
        code = process.wait()
        timer.cancel()
        kill(process)
        if failed:
            return "failed"
        if late.is_set():
            return "hangs"
        return "failed" if code else "passed"


def kill(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass


def tests_of(build, pattern):
    found = subprocess.run(["ctest", "--show-only=json-v1"], cwd=build, capture_output=True,
                           text=True, check=True).stdout
    known = [Test(one) for one in json.loads(found)["tests"] if one.get("command")]
    return [one for one in known if one.is_built() and re.search(pattern, one.name)]


def measure_one(test):
    with tempfile.TemporaryDirectory() as folder:
        log = pathlib.Path(folder) / "log"
        begin = time.monotonic()
        outcome = test.run({"TRIVEX_MUTANT_LOG": str(log)}, test.timeout)
        test.seconds = time.monotonic() - begin
        if log.exists():
            test.reached = {int(line) for line in log.read_text().split()}
    print(f"{test.name}: {outcome}, {test.seconds:.1f} s, reaches {len(test.reached)}", flush=True)
    return outcome


def measure(tests, most, jobs):
    """Runs each test without a change; those that pass within `most` seconds, with what they reach."""
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        outcomes = list(pool.map(measure_one, tests))
    return [test for test, outcome in zip(tests, outcomes)
            if outcome == "passed" and test.seconds <= most and test.reached]


def equivalents():
    """(file, kind, text of the change), judged by a person."""
    path = HERE / "equivalents.txt"
    result = set()
    for line in path.read_text(encoding="utf-8").splitlines() if path.exists() else []:
        parts = line.split(" | ")
        if len(parts) == 4:
            result.add((parts[0], parts[1], parts[2]))
    return result


def try_one(mutant, tests):
    """The outcome with the test that noticed it."""
    reaching = sorted((one for one in tests if mutant["number"] in one.reached),
                      key=lambda one: one.seconds)
    if not reaching:
        return "unreached", ""
    for test in reaching:
        # What takes many times as long has come to a stop.
        outcome = test.run({"TRIVEX_MUTANT": str(mutant["number"])}, 20 + 8 * test.seconds)
        if outcome != "passed":
            return "noticed", f"{test.name} {outcome}"
    return "survived", ""


def sample(mutants, count, seed):
    """So many of each folder at the root as it has of all, five at least."""
    chosen = random.Random(seed)
    folders = collections.defaultdict(list)
    for one in mutants:
        folders[one["file"].partition("/")[0]].append(one)
    result = []
    for folder in sorted(folders):
        share = max(5, round(count * len(folders[folder]) / len(mutants)))
        result += chosen.sample(folders[folder], min(share, len(folders[folder])))
    chosen.shuffle(result)
    return result


def summary(outcomes):
    counts = collections.Counter(one["outcome"] for one in outcomes)
    judged = sum(counts.values()) - counts["equivalent"]
    share = 100 * counts["noticed"] / judged if judged else 0
    for one in sorted(outcomes, key=lambda one: (one["file"], one["line"])):
        if one["outcome"] in ("survived", "unreached"):
            print(f"{one['outcome']:9} {one['file']}:{one['line']} {one['kind']}: {one['text']}")
    print(f"{len(outcomes)} changes: {dict(counts)}; {share:.1f} % of {judged} noticed")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("tree", type=pathlib.Path)
    parser.add_argument("--sample", type=int, default=400)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", default="", help="a pattern of the files whose changes are made")
    parser.add_argument("--tests", default="^tst_", help="a pattern of the tests that look")
    parser.add_argument("--most", type=float, default=60, help="seconds of a test that is used")
    parser.add_argument("--jobs", type=int, default=2, help="changes that are tried side by side")
    parser.add_argument("--summary", action="store_true", help="only tell what is known")
    options = parser.parse_args()
    known = options.tree / "outcomes.jsonl"
    outcomes = [json.loads(line) for line in known.read_text().splitlines()] \
        if known.exists() else []
    if options.summary:
        return summary(outcomes)
    mutants = json.loads((options.tree / "mutants.json").read_text(encoding="utf-8"))
    mutants = [one for one in mutants if re.search(options.files, one["file"])]
    if not mutants:
        sys.exit("no change in such a file")
    tests = measure(tests_of(options.tree / "build", options.tests), options.most,
                    options.jobs)
    if not tests:
        sys.exit("no test was built, or none passes: nothing can be said")
    done = {one["number"] for one in outcomes}
    todo = [one for one in sample(mutants, options.sample, options.seed)
            if one["number"] not in done]
    same = equivalents()

    def judge(mutant):
        if (mutant["file"], mutant["kind"], mutant["text"]) in same:
            return mutant, "equivalent", ""
        return mutant, *try_one(mutant, tests)

    with known.open("a", encoding="utf-8") as file, \
            concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for future in concurrent.futures.as_completed([pool.submit(judge, one) for one in todo]):
            mutant, outcome, by = future.result()
            mutant.update(outcome=outcome, by=by)
            outcomes.append(mutant)
            file.write(json.dumps(mutant) + "\n")
            file.flush()
            print(f"{outcome}: {mutant['file']}:{mutant['line']} {mutant['kind']} {by}", flush=True)
    summary(outcomes)


if __name__ == "__main__":
    main()
