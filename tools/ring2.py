#!/usr/bin/env python3
"""Ring 2 of the tests: the program itself on every deck, and what surrounds it.

    ring2.py PROGRAM [OTHER-PROGRAM]

For each deck of decks/ and tests/decks/: its expectations hold; a second run leaves the same bytes; another build (the
debug build) leaves the same bytes. Then the tests of tests/decks: bad input, the runner itself, the expected figures.
Ends with the line `N passed, N failed`.
"""
import concurrent.futures
import os
import re
import subprocess
import sys
import tempfile

import run_deck

ROOT = run_deck.ROOT
# Lines that tell date, time of day or seconds used.
VOLATILE = re.compile(rb"^1DATE +\d|^ TIDEARC Version: |^ [A-Z \-]+( +-?\d*\.\d{3}){1,2} *$")
TEXT_FILES = ("TAModel.out", "TAP53")
TIMES_ALONE = {"fort.12"}  # nothing but seconds


def decks():
    for folder in ("decks", "tests/decks"):
        top = os.path.join(ROOT, folder)
        for name in sorted(os.listdir(top)):
            if os.path.exists(os.path.join(top, name, "TAModel.inp")):
                yield os.path.join(top, name)


def stable(path):
    """A file's bytes without the lines that may differ from run to run."""
    with open(path, "rb") as file:
        data = file.read()
    if os.path.basename(path) not in TEXT_FILES:
        return data
    return b"\n".join(line for line in data.split(b"\n") if not VOLATILE.search(line))


def differences(first, second):
    """Names of files that two runs did not leave alike."""
    names = sorted((set(os.listdir(first)) | set(os.listdir(second))) - TIMES_ALONE)
    return [name for name in names
            if not (os.path.exists(os.path.join(first, name)) and os.path.exists(os.path.join(second, name)) and
                    stable(os.path.join(first, name)) == stable(os.path.join(second, name)))]


def test_deck(deck, programs):
    """[(test name, None or why it failed)] of one deck."""
    name = os.path.relpath(deck, ROOT)
    results, scratches = [], []
    with tempfile.TemporaryDirectory(prefix="tidearc-ring2-") as top:
        for k, program in enumerate([programs[0], *programs]):
            scratches.append(os.path.join(top, str(k)))
            os.mkdir(scratches[-1])
            run = run_deck.run_deck(program, deck, scratches[-1])
            if k == 0:
                _, texts = run_deck.failures(run, deck)
                results.append((f"{name} holds its expectations", "\n    ".join(texts) or None))
            else:
                what = "a second run" if k == 1 else "the other build"
                differing = differences(scratches[0], scratches[-1])
                results.append((f"{name}: {what} leaves the same bytes", ", ".join(differing) or None))
    return results


def test_decks(programs):
    with concurrent.futures.ThreadPoolExecutor(2) as workers:
        for results in workers.map(lambda deck: test_deck(deck, programs), decks()):
            yield from results


def run_test_file(program, name):
    """(passed, failed) of one file of tests/decks; tells what fails and what is skipped."""
    environment = dict(os.environ, TIDEARC=program, PYTHONDONTWRITEBYTECODE="1")
    run = subprocess.run([sys.executable, "-m", "unittest", "discover", "-v", "-s", os.path.join(ROOT, "tests/decks"), "-p", name],
                         env=environment, capture_output=True, text=True, stdin=subprocess.DEVNULL)
    ran = re.search(r"Ran (\d+) test", run.stderr)
    bad = sum(int(n) for n in re.findall(r"(?:failures|errors)=(\d+)", run.stderr))
    skipped = sum(int(n) for n in re.findall(r"skipped=(\d+)", run.stderr))
    if run.returncode or not ran:
        print(run.stderr)
        bad = max(bad, 1)
    for line in run.stderr.splitlines():
        if "... skipped" in line:
            print("skipped  " + line)
    return (int(ran[1]) if ran else 0) - bad - skipped, bad


def unit_tests(program):
    """The python tests of tests/decks, one count per test; files side by side."""
    names = sorted(name for name in os.listdir(os.path.join(ROOT, "tests/decks")) if re.fullmatch(r"test_.*\.py", name))
    with concurrent.futures.ThreadPoolExecutor(2) as workers:
        counts = list(workers.map(lambda name: run_test_file(program, name), names))
    return sum(good for good, _ in counts), sum(bad for _, bad in counts)


def main():
    programs = [os.path.abspath(program) for program in sys.argv[1:]]
    if not programs or not all(os.access(program, os.X_OK) for program in programs):
        sys.exit("usage: ring2.py PROGRAM [OTHER-PROGRAM]; build them first")
    passed = failed = 0
    for name, why in test_decks(programs):
        if why:
            failed += 1
            print(f"FAILED  {name}\n    {why}")
        else:
            passed += 1
    good, bad = unit_tests(programs[0])
    passed, failed = passed + good, failed + bad
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
