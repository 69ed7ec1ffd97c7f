"""What the tests of equivalent runs share: decks of many shapes, their variants, and comparisons.

Two comparisons. `same_bytes`: everything behind the first macro card of each problem, and the files of the analysis, to the
byte. `apart`: the printed tables to one unit of their last digit, and to 1e-10 of the largest number of a column where the
print shows it (a small number beside large ones); the files that carry all digits, load levels (16 digits) and changes of
element states (binary), to 1e-10. The log of states stands in the folder after disk jobs alone; core jobs keep it in memory.
"""
import os
import re
import struct
import subprocess
import tempfile

import support
import lattice_deck
import ring2
import run_deck
from lattice_deck import Shape

TOLERANCE = 1e-10
NUMBER = re.compile(r"[-+]?\d*\.\d+(?:[ED]?[-+]\d+)?")
ELEMENT_ROW = re.compile(r" {0,4}\d+ +\d+ +\d+ +\d+( +\S+){4}\s*$")
# Lines that count work and not results.
WORK = re.compile(r"STIFFNESS FORMED|NUMBER OF NEGATIVE")


class Result:
    """What a run left: report behind the macro cards, progress rows, load levels, changes of element states."""

    def __init__(self, deck, arguments=()):
        with tempfile.TemporaryDirectory(prefix="tidearc-py-", dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
            with open(os.path.join(folder, "TAModel.inp"), "w", encoding="latin-1") as file:
                file.write(deck)
            process = subprocess.run([support.PROGRAM, *(arguments or run_deck.pool_argument())], cwd=folder, stdin=subprocess.DEVNULL,
                                     stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=support.TIME_LIMIT)
            self.status = process.returncode
            self.report = ring2.stable(os.path.join(folder, "TAModel.out")).decode("latin-1").split("\n")
            self.progress = [without_negative_pivots(line) for line in
                             ring2.stable(os.path.join(folder, "TAP53")).decode("latin-1").split("\n")]
            self.errors = support.read(folder, "TAP.err")
            self.levels = support.read(folder, "TAP.ULTFAC").split("\n")
            self.changes = binary(os.path.join(folder, "OVRLOAD"))
        self.analysis = behind_macro_cards(self.report)

    def figure(self, label):
        """A whole number of the storage report or of the blocking report; of the last problem that tells it."""
        found = re.findall(re.escape(label) + r"[ .]*= *(\d+)", "\n".join(self.report))
        return int(found[-1]) if found else 0

    @property
    def blocks(self):
        return self.figure("NUMBER OF MATRIX BLOCKS")


def without_negative_pivots(line):
    """A progress row without its last column, which is counted in symmetric jobs of one block alone."""
    return line[:88] if run_deck.progress_row(line) else line


def binary(path):
    if not os.path.exists(path):
        return b""
    with open(path, "rb") as file:
        return file.read()


def behind_macro_cards(report):
    """Of each problem the lines from its first macro to its time log."""
    kept, inside = [], False
    for line in report:
        if "STORAGE FOR STRUCTURE STIFFNESS MATRIX" in line:
            inside = True
        elif "E X E C U T I O N   T I M E" in line:
            inside = False
        elif inside:
            kept.append(line)
    return kept


def same_bytes(first, second):
    """Names of what differs between two runs; the log of states only between two disk jobs."""
    names = ["status", "analysis", "progress", "levels"] + (["changes"] if first.changes and second.changes else [])
    return [name for name in names if getattr(first, name) != getattr(second, name)]


# --- numbers --------------------------------------------------------------------------------------------------------
def tables(lines):
    """(kind, rows) of the report: results of nodes and elements, and single lines of anything else."""
    rows, kind = [], ""
    for line in lines + [""]:
        now = "nodes" if line.startswith("      DISPLACEMENT ") else "elements" if ELEMENT_ROW.match(line) else "text"
        if now == "text" and kind == "nodes" and (not line.strip() or line.startswith("      NODE NUMBER")):
            continue  # a table of nodes goes on in the next eight columns
        if rows and (now != kind or now == "text"):
            yield kind, rows
            rows = []
        kind = now
        rows.append(line)


def number_apart(a, b, size):
    a, b = run_deck.Number(a), run_deck.Number(b)
    return abs(a.value - b.value) > TOLERANCE * max(size, abs(a.value), abs(b.value)) + 2.02 * max(a.half_unit, b.half_unit)


def rows_apart(kind, first, second):
    """The first pair of rows that differ by more than is allowed, or None."""
    numbers = [[NUMBER.findall(row) for row in rows] for rows in (first, second)]
    columns = {}
    for rows in numbers:
        for row in rows:
            for k, text in enumerate(row):
                k = k if kind == "elements" else 0
                columns[k] = max(columns.get(k, 0.0), abs(run_deck.Number(text).value))
    for left, right, a, b in zip(first, second, *numbers):
        if left == right:
            continue
        if NUMBER.sub("", left).split() != NUMBER.sub("", right).split() or len(a) != len(b):
            return left, right
        for k, (x, y) in enumerate(zip(a, b)):
            size = 0.0 if kind == "text" else columns[k if kind == "elements" else 0]
            if x != y and number_apart(x, y, size):
                return left, right
    return None if len(first) == len(second) else (f"{len(first)} rows", f"{len(second)} rows")


def tables_apart(first, second):
    left, right = ([table for table in tables(result.analysis) if not WORK.search(table[1][0])] for result in (first, second))
    for (kind, rows), (other, others) in zip(left, right):
        differing = (rows, others) if kind != other else rows_apart(kind, rows, others)
        if differing:
            return differing
    return None if len(left) == len(right) else (f"{len(left)} tables", f"{len(right)} tables")


def steps_of(result):
    """Of each progress row: step, iteration, level, step factor, applied load. Norms of what has converged are noise."""
    return [(line[:10].split(), line[16:40].split()) for line in result.progress if run_deck.progress_row(line)]


def levels_apart(first, second):
    """Load levels of saved steps, all 16 digits."""
    left, right = ([line.split() for line in result.levels if line[1:2].isdigit()] for result in (first, second))
    largest = max((abs(float(words[2])) for words in left), default=0.0)
    for a, b in zip(left, right):
        if a[0] != b[0] or a[4:] != b[4:] or abs(float(a[2]) - float(b[2])) > TOLERANCE * largest:
            return a, b
    return None if len(left) == len(right) else (len(left), len(right))


def records(data):
    at = 0
    while at < len(data):
        length = struct.unpack_from("<i", data, at)[0]
        yield data[at + 4:at + 4 + length]
        at += length + 8


def changes_apart(first, second):
    """Changes of element states: who, when and to what must be equal, forces and extensions to 1e-10 of the largest."""
    left, right = ([struct.unpack("<8i8d", r) for r in records(result.changes) if len(r) == 96] for result in (first, second))
    largest = [max((abs(r[k]) for r in left), default=0.0) for k in range(16)]
    for a, b in zip(left, right):
        if a[:8] != b[:8] or any(abs(x - y) > TOLERANCE * size for x, y, size in zip(a[8:], b[8:], largest[8:])):
            return a, b
    return None if len(left) == len(right) else (f"{len(left)} changes", f"{len(right)} changes")


def apart(first, second):
    """The first thing in which two runs differ by more than rounding, or None."""
    if first.status != second.status:
        return first.status, second.status, second.errors
    if len(steps_of(first)) != len(steps_of(second)):
        return f"{len(steps_of(first))} iterations", f"{len(steps_of(second))} iterations"
    return tables_apart(first, second) or levels_apart(first, second) or changes_apart(first, second)


# --- decks ----------------------------------------------------------------------------------------------------------
def with_storage(deck, card):
    """The deck with another storage card in each of its problems."""
    lines = deck.split("\n")
    for n, line in enumerate(lines):
        if line[1:5] in ("STAR", "CHEC") and not line.startswith("*"):
            lines[n + 3] = card
    return "\n".join(lines)


def with_ordering(deck, code):
    """The deck with another band-width reduction code in each of its problems."""
    lines = deck.split("\n")
    for n, line in enumerate(lines):
        if line[1:5] in ("STAR", "CHEC") and not line.startswith("*"):
            lines[n + 4] = lines[n + 4][:70].split("<")[0].ljust(70) + f"{code:5}"
    return "\n".join(lines)


def deck_of(name):
    return support.deck_bytes(name).decode("latin-1")


PUSH = 600.0
YIELD = 150.0
MOVE = 0.1
MATERIALS = 7  # with other yield stresses, so that which of two bars yields first is no matter of rounding


def lattice(shape, split=False, idle=None):
    """A lattice pushed sideways until some bars yield, pulled back, and pushed by a given move of its top.

    split: each segment is a macro of its own, whose first assembly begins from nothing. idle: a bar without load on the
    first equation, elastic (0) or followed through large displacements (1), which has it formed anew each time.
    """
    offset = 0 if idle is None else 2
    top = shape.node(shape.nx - 1, shape.ny - 1, shape.nz - 1) + offset
    other = shape.node(0, 0, shape.nz - 1) + offset
    materials = [(30000.0, 0.1, YIELD + 3.0 * m) for m in range(MATERIALS)]
    model = lattice_deck.lattice_model(shape, materials, lambda k: 1 + k % MATERIALS, lambda n: n + offset)
    if idle is not None:
        model.nodes.update({1: (-100.0, 0.0, 0.0), 2: (-110.0, 0.0, 0.0)})
        model.codes.update({1: "011111", 2: "111111"})
        model.groups.append(idle_group(idle))
    loads = lattice_deck.load_cards([[(top, PUSH, 0.3 * PUSH, -0.2 * PUSH)], [(other, 0.0, 0.5 * PUSH, -0.5 * PUSH)]], [top, other])
    segments = [lattice_deck.load_segment((1.0, 0.5), 0.25, 4, events=1), lattice_deck.load_segment((-1.5, 0.5), 0.5, 2, events=1),
                lattice_deck.vector_segment((1.0, 0.25), top, 1, MOVE)]
    macros = [lattice_deck.static_macro(s) for s in segments] if split else [lattice_deck.static_macro(*segments)]
    return "\n".join(lattice_deck.problem(model.cards(), loads, *macros) + [" STOP", ""])


def idle_group(code):
    """A bar between nodes 1 and 2 with this code of its geometry."""
    def cards(number):
        lines = lattice_deck.bar_group([(1, 2, 1)], lattice_deck.ELASTIC)(number)
        return lines[:-1] + [lines[-1] + "%10s%5d" % ("", code)]
    return cards


# Under sanitizers a run takes ten times as long: half of the lattices have to do.
QUICK = bool(os.environ.get("TIDEARC_QUICK"))
SHAPES = {"tower": Shape(2, 2, 9, uneven=0.9), "slab": Shape(6, 2, 3, uneven=0.9), "wall": Shape(9, 2, 4, uneven=0.9),
          "cube": Shape(4, 4, 4, uneven=0.9), "scattered tower": Shape(2, 2, 8, 3, 0.9), "scattered cube": Shape(3, 3, 4, 7, 0.9)}
if not QUICK:
    SHAPES |= {"frame": Shape(3, 2, 6, uneven=0.9), "plate": Shape(8, 3, 2, uneven=0.9), "column": Shape(2, 3, 12, uneven=0.9),
               "block": Shape(5, 3, 4, uneven=0.9), "mast": Shape(2, 2, 14, uneven=0.9), "strip": Shape(10, 2, 2, uneven=0.9)}
LATTICES = {name: lattice(shape) for name, shape in SHAPES.items()}
NAMED = ("tower25", "tower72", "tower_collapse", "threebar_cyclic", "threebar_events", "skew_supports", "identical_displacements",
         "moving_supports", "surface_pressure", "follower_force", "strut_buckling", "ductility_failure", "restep", "restep_limit",
         "fewer_factorisations", "several_problems", "offsets")


def one_problem(deck, number):
    """A deck of one problem of several. Those that count negative pivots to find their way need a matrix in one block."""
    lines = deck.split("\n")
    starts = [n for n, line in enumerate(lines) if line[1:5] == "STAR" and not line.startswith("*")] + [lines.index(" STOP")]
    return "\n".join(lines[starts[number - 1]:starts[number]] + [" STOP", ""])


DECKS = {**{name: deck_of(name) for name in NAMED}, "dome by vectors": one_problem(deck_of("dome"), 2), **LATTICES}
