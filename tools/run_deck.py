#!/usr/bin/env python3
"""Runs one deck in a scratch folder and checks what its head lines expect.

    run_deck.py [--program FILE] DECK-FOLDER

A deck's head are the lines before its first card. In it, `* RUN arguments` gives the command line of the program and
each `* EXPECT` line is one check; behind a semicolon stands where the expected figure is from:

    exit N
    displacement X|Y|Z|XR|YR|ZR NODE print K = VALUE tol T      K-th results page of that direction, 1 the first
    velocity|acceleration X|.. NODE print K = VALUE tol T
    displacement X|.. NODE macro M at TIME = VALUE tol T        between two prints of the run's M-th dynamic macro: the cubic through
                                                                displacements and velocities
    envelope X|.. NODE max|min|tmax|tmin print K = VALUE tol T  K-th table of nodal displacement envelopes; tmax, tmin: their times
    row macro M step S COLUMN = VALUE tol T                     row of TAP53 that ends a step of the M-th dynamic macro (S `last`: its last
                                                                one); columns as deck_motion.py names them
    lines macro M type T in LOW .. HIGH                         rows of a type in a DYN1 macro
    force|extension|plastic+|plastic- GROUP ELEMENT print K = VALUE tol T
    yield GROUP ELEMENT print K = CODE
    coordinate X|Y|Z NODE = VALUE tol T                         first table of node coordinates
    iterations segment S step N = COUNT                         rows of the progress file; S-th segment of the run
    steps segment S = COUNT
    reformulations segment S = COUNT                            how often the stiffness was assembled and factored
    fewer reformulations segment S than segment T
    converged level segment S in LOW .. HIGH                    highest level of a row within the tolerance
    turns segment S = COUNT                                     how often the level turns from step to step on the report
    path segment S FILE within T                                each step of the report lies on the path of a table beside
                                                                the deck (deck_path.py): T is a part of the largest level
    number /REGEX/ FILE K = VALUE tol T                         first group of the K-th match
    count FILE 'TEXT' = COUNT
    text FILE has|lacks 'TEXT'
    file NAME exists|absent

T is relative; `within A` in place of `tol T` is an absolute tolerance, for figures that are 0 or near it. Half a unit of the last
digit that the report prints comes on top: more the report cannot say.
"""
import argparse
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

import deck_motion
from deck_motion import DIRECTIONS
from deck_number import Missing, Number
from deck_path import Path

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TITLES = ("RESPONSE AT NODES", " RESULTS FOR GROUP", "NODAL DISPLACEMENT ENVELOPES")
TIME_LIMIT = 120.0


class Run:
    """The files that a run left, read once when an expectation asks for them."""

    def __init__(self, folder, status):
        self.folder, self.status = folder, status
        self.cache = {}

    def text(self, name):
        if name not in self.cache:
            path = os.path.join(self.folder, name)
            if not os.path.exists(path):
                raise Missing(f"there is no file {name}")
            with open(path, encoding="latin-1") as file:
                self.cache[name] = file.read()
        return self.cache[name]

    def lines(self, name):
        return self.text(name).splitlines()

    def pages(self, title, lines=None):
        """Report lines behind each line that matches a title, up to the next results title."""
        lines = self.lines("TAModel.out") if lines is None else lines
        marks = [n for n, line in enumerate(lines) if any(mark in line for mark in TITLES) or line[:1] == "1"]
        for k, n in enumerate(marks):
            if re.search(title, lines[n]):
                yield lines[n + 1:marks[k + 1] if k + 1 < len(marks) else len(lines)]

    def page(self, title, number, lines=None):
        pages = list(self.pages(title, lines))
        if not 1 <= number <= len(pages):
            raise Missing(f"print {number} of {len(pages)} pages")
        return pages[number - 1]

    def response(self, what, direction, node, number, lines=None):
        page = self.page(rf"^ {{5}}{DIRECTIONS[direction]} +(DISPLACEMENT|ROTATION) RESPONSE AT NODES", number, lines)
        fields = deck_motion.node_columns(page, node, (what,))
        if not fields:
            raise Missing(f"node {node} is not on the page")
        return Number(fields[what])

    def displacement(self, direction, node, number, lines=None):
        return self.response("DISPLACEMENT", direction, node, number, lines)

    def displacement_at(self, direction, node, macro, time):
        return deck_motion.displacement_at(deck_motion.macro_lines(self.lines("TAModel.out"), macro), direction, node, time)

    def envelope(self, direction, node, which, number):
        return deck_motion.envelope(self.page(r"^ NODAL DISPLACEMENT ENVELOPES", number), direction, node, which)

    def element(self, column, group, element, number):
        for line in self.page(rf" RESULTS FOR GROUP *{group} \(THREE DIMENSIONAL TRUSS", number):
            if re.match(r" {0,4}\d+ ", line) and line[:5].strip() == str(element):
                if column == "yield":
                    return int(line[21:26])
                at = 26 + 17 * ("force", "extension", "plastic+", "plastic-").index(column)
                return Number(line[at:at + 17])
        raise Missing(f"element {element} is not on the page")

    def steps(self, segment):
        """Steps of a segment on the report: (load level, lines up to the next step)."""
        number, steps = 0, []
        for line in self.lines("TAModel.out"):
            number += "LOAD SEGMENT NO." in line
            if number == segment and line.startswith(" RESPONSE AT LOAD STEP"):
                steps.append((Number(line.split("LOAD LEVEL =")[1]), []))
            elif number == segment and steps:
                steps[-1][1].append(line)
        if not steps:
            raise Missing(f"no steps of segment {segment} on the report")
        return steps

    def turns(self, segment):
        levels = [level.value for level, _ in self.steps(segment)]
        moves = [b - a for a, b in zip([0.0] + levels, levels) if b != a]
        return sum(a * b < 0.0 for a, b in zip(moves, moves[1:]))

    def off_path(self, segment, file, tolerance):
        """(number of steps, the largest offset from a path and its step); offset infinite where a step is not on it."""
        path = Path(self.text(file))
        worst = (0.0, 0)
        steps = self.steps(segment)
        for number, (level, lines) in enumerate(steps, 1):
            places = [name.split(":") for name in path.names]
            found = [level] + [self.displacement(direction, int(node), 1, lines) for direction, node in places]
            offset = path.offset(found, tolerance)
            worst = max(worst, (math.inf if offset is None else offset, number))
        return len(steps), worst

    def coordinate(self, axis, node):
        inside = False
        for line in self.lines("TAModel.out"):
            inside = inside or line.strip() == "NODE COORDINATES"
            if inside and line[:10].strip() == str(node) and len(line) > 52:
                at = 10 + 14 * "XYZ".index(axis)
                return Number(line[at:at + 14])
        raise Missing(f"node {node} is not in the table of coordinates")

    def segments(self):
        """(number of the problem, progress rows, largest tolerance) of each segment of the run."""
        problem, found = 0, []
        for line in self.lines("TAP53"):
            problem += line.startswith(" TIDEARC Version")
            if "STATIC MACRO OUTPUT INFORMATION FOR SEGMENT" in line:
                found.append((problem, [], math.inf))
            limit = re.search(r"OUT-OF-BALANCE LOAD \(MAX= *([-+.\dE]+)\)", line)
            if found and limit:
                found[-1] = (*found[-1][:2], Number(limit[1]).value)
            row = progress_row(line)
            if found and row:
                found[-1][1].append(row)
        return found

    def segment(self, number):
        found = self.segments()
        if not 1 <= number <= len(found) or not found[number - 1][1]:
            raise Missing(f"no rows of segment {number} on TAP53")
        return found[number - 1]

    def rows(self, segment):
        """Progress rows of a segment as progress_row() gives them, and the segment's largest tolerance."""
        return self.segment(segment)[1:]

    def reformulations(self, number):
        """Of one segment alone: the progress file counts on through the segments of a problem."""
        problem, rows, _ = self.segment(number)
        before = self.segments()[:number - 1]
        counted = [r[-1][4] for p, r, _ in before if p == problem and r]
        return rows[-1][4] - (counted[-1] if counted else 0)


def progress_row(line):
    """(step, iteration, level, norm, reformulations) of a row of the progress file, None when the line is no row."""
    try:
        row = int(line[0:7]), int(line[7:10]), float(line[16:23]), float(line[41:49]), int(line[57:62])
    except ValueError:
        return None
    return row if line[50:53] in ("YES", "NO ") else None


def near(number, wanted, tolerance, absolute=False):
    return abs(number.value - wanted) <= tolerance * (1.0 if absolute else abs(wanted)) + number.half_unit * (1.0 + 1e-9)


def check_numbers(run, text):
    """(passed, found) for the quantities that are compared with a value; None when the line is none of them."""
    match = re.fullmatch(r"(.+) = (\S+)(?: (tol|within) (\S+))?", text)
    if not match:
        return None
    what, wanted, tolerance = match[1], float(match[2]), float(match[4] or 0.0)
    words = what.split()
    if match[4]:
        if words[0] in ("displacement", "velocity", "acceleration") and words[3] == "print":
            found = run.response(words[0].upper(), words[1], int(words[2]), int(words[4]))
        elif words[0] == "displacement":
            found = run.displacement_at(words[1], int(words[2]), int(words[4]), float(words[6]))
        elif words[0] == "envelope":
            found = run.envelope(words[1], int(words[2]), words[3], int(words[5]))
        elif words[0] == "row":
            found = deck_motion.row_value(run.lines("TAP53"), int(words[2]), words[4], words[5])
        elif words[0] in ("force", "extension", "plastic+", "plastic-"):
            found = run.element(words[0], int(words[1]), int(words[2]), int(words[4]))
        elif words[0] == "coordinate":
            found = run.coordinate(words[1], int(words[2]))
        elif words[0] == "number":
            regex, file, k = re.fullmatch(r"number /(.+)/ (\S+) (\d+)", what).groups()
            matches = re.findall(regex, run.text(file))
            if len(matches) < int(k):
                raise Missing(f"{len(matches)} matches")
            found = Number(matches[int(k) - 1])
        else:
            return None
        return near(found, wanted, tolerance, match[3] == "within"), found.value
    if words[0] == "yield":
        found = run.element("yield", int(words[1]), int(words[2]), int(words[4]))
    elif words[0] == "iterations":
        found = max((r[1] for r in run.rows(int(words[2]))[0] if r[0] == int(words[4])), default=0)
    elif words[0] == "steps":
        found = max(r[0] for r in run.rows(int(words[2]))[0])
    elif words[0] == "reformulations":
        found = run.reformulations(int(words[2]))
    elif words[0] == "turns":
        found = run.turns(int(words[2]))
    elif words[0] == "count":
        file, literal = re.fullmatch(r"count (\S+) '(.+)'", what).groups()
        found = run.text(file).count(literal)
    else:
        return None
    return found == wanted, found


def check_facts(run, text):
    """(passed, found) for expectations without a value; None when the line is none of them."""
    if match := re.fullmatch(r"exit (\d+)", text):
        return run.status == int(match[1]), run.status
    if match := re.fullmatch(r"file (\S+) (exists|absent)", text):
        there = os.path.exists(os.path.join(run.folder, match[1]))
        return there == (match[2] == "exists"), "there" if there else "not there"
    if match := re.fullmatch(r"text (\S+) (has|lacks) '(.+)'", text):
        there = match[3] in run.text(match[1])
        return there == (match[2] == "has"), "there" if there else "not there"
    if match := re.fullmatch(r"converged level segment (\d+) in (\S+) \.\. (\S+)", text):
        rows, limit = run.rows(int(match[1]))
        level = max((r[2] for r in rows if r[3] <= limit), default=0.0)
        return float(match[2]) - 5e-5 <= level <= float(match[3]) + 5e-5, level  # levels print with four decimals
    if match := re.fullmatch(r"lines macro (\d+) type (\d) in (\d+) \.\. (\d+)", text):
        count = deck_motion.lines_of_type(run.lines("TAP53"), int(match[1]), match[2])
        return int(match[3]) <= count <= int(match[4]), count
    if match := re.fullmatch(r"fewer reformulations segment (\d+) than segment (\d+)", text):
        counts = [run.reformulations(int(number)) for number in match.groups()]
        return counts[0] < counts[1], f"{counts[0]} and {counts[1]}"
    if match := re.fullmatch(r"path segment (\d+) (\S+) within (\S+)", text):
        count, (offset, step) = run.off_path(int(match[1]), match[2], float(match[3]))
        return offset <= float(match[3]), f"{count} steps, step {step} is off by {offset:.2g}"
    return None


def check(run, expectation):
    """(passed, what was found) of one line."""
    text = expectation.split(" ; ")[0].strip()
    try:
        result = check_numbers(run, text) or check_facts(run, text)
    except Missing as missing:
        return False, str(missing)
    except (ValueError, IndexError, KeyError, AttributeError):
        result = None
    return result or (False, "this line is not understood")


def head_lines(deck, word):
    """Texts behind `* WORD` in the lines before the first card."""
    found = []
    with open(deck, encoding="latin-1") as file:
        for line in file:
            if line[1:5] in ("STAR", "CHEC", "STOP"):
                break
            if line.startswith(f"* {word} "):
                found.append(line[len(word) + 3:].strip())
    return found


class Follower:
    """Shows the newest row of TAP53 while the program runs; the program knows nothing of it."""

    def __init__(self, folder):
        self.path, self.began, self.length = os.path.join(folder, "TAP53"), time.monotonic(), 0

    def newest(self):
        """The last row so far, None before the first."""
        try:
            with open(self.path, encoding="latin-1") as file:
                rows = [row for row in map(progress_row, file) if row]
        except OSError:
            return None
        return rows[-1] if rows else None

    def look(self):
        row = self.newest()
        if row:
            seconds = time.monotonic() - self.began
            text = f"step {row[0]} iteration {row[1]}  level {row[2]:.4f}  norm {row[3]:.3E}  {seconds:.0f} s"
            sys.stdout.write("\r" + text.ljust(self.length))
            sys.stdout.flush()
            self.length = len(text)

    def end(self):
        if self.length:
            sys.stdout.write("\r" + " " * self.length + "\r")


def pool_argument():
    """A pool size for runs that ask for none: sanitizers spend a second on shadowing the default one."""
    return os.environ.get("TIDEARC_POOL", "").split()


def run_program(program, folder, arguments=(), limit=TIME_LIMIT, follower=None):
    """Exit status of the program in a folder; minus a number for a signal, None when the time ran out."""
    process = subprocess.Popen([program, *(arguments or pool_argument())], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    began = time.monotonic()
    while True:
        try:
            output, _ = process.communicate(timeout=0.5 if follower else limit)
            with open(os.path.join(folder, "console"), "wb") as file:
                file.write(output)
            return process.returncode
        except subprocess.TimeoutExpired:
            if follower:
                follower.look()
            if limit and time.monotonic() - began > limit:
                process.kill()
                process.communicate()
                return None
        finally:
            if follower and process.returncode is not None:
                follower.end()


def run_deck(program, deck_folder, scratch, limit=TIME_LIMIT, follow=False):
    """Copies the deck to the scratch folder and runs it there."""
    for name in os.listdir(deck_folder):
        if name != "README.md":
            shutil.copy(os.path.join(deck_folder, name), scratch)
    arguments = [word for line in head_lines(os.path.join(deck_folder, "TAModel.inp"), "RUN") for word in line.split()]
    follower = Follower(scratch) if follow else None
    return Run(scratch, run_program(program, scratch, arguments, limit, follower))


def failures(run, deck_folder):
    """(number of expectations, texts of those that do not hold)."""
    expectations = head_lines(os.path.join(deck_folder, "TAModel.inp"), "EXPECT")
    texts = []
    for expectation in expectations:
        passed, found = check(run, expectation)
        if not passed:
            texts.append(f"{expectation}: found {found}")
    if not expectations:
        texts.append("the deck expects nothing")
    return len(expectations), texts


def show(run, deck_folder, count, texts):
    """What a person sees of a run: the macro lines of TAP53, the files, the checks."""
    try:
        for line in run.lines("TAP53"):
            if "MACRO" in line or line.startswith(" SEGMENT") or "SEGMENT" in line and "MACRO OUTPUT" not in line:
                print(line.rstrip())
    except Missing as missing:
        print(missing)
    print(f"exit status {run.status}; files in {run.folder}")
    for text in texts:
        print("FAILED  " + text)
    print(f"{os.path.basename(deck_folder.rstrip('/'))}: {count - len(texts)} of {count} expectations hold")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--program", default=os.path.join(ROOT, "build/release/tidearc"))
    parser.add_argument("deck")
    options = parser.parse_args()
    if not os.path.exists(os.path.join(options.deck, "TAModel.inp")):
        sys.exit(f"{options.deck} holds no TAModel.inp")
    scratch = tempfile.mkdtemp(prefix="tidearc-run-")
    run = run_deck(os.path.abspath(options.program), options.deck, scratch, limit=None, follow=sys.stdout.isatty())
    count, texts = failures(run, options.deck)
    show(run, options.deck, count, texts)
    return 1 if texts else 0


if __name__ == "__main__":
    sys.exit(main())
