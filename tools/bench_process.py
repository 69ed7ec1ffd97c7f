#!/usr/bin/env python3
"""Whole-process figures: start-up of a small deck, and reading, echoing and assembling a large one.

Usage: bench_process.py PROGRAM [SCRATCH]   (SCRATCH: a folder on tmpfs, /dev/shm when it exists)

Each figure is printed beside what it is compared with in the same run. Times are the best of several runs. Then frames of
beams of 100,000 equations in core and out of core: a building in a tenth of the core job's storage, a jacket in the smallest
pool in which it runs. And what a step costs that changes one member.
"""
import os
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import time

import beam_deck
import lattice_deck

BARS_PER_GROUP = 60000


def small_deck():
    """Three bars that meet at one loaded node."""
    lines = [" STAR   P4.314  THREE BARS", "", "", ""]
    lines.append("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d" % (4, 4, 0, 0, 0, 0, 4, 0, 0, 1))
    for n, (x, y) in enumerate(((-100.0, 100.0), (0.0, 100.0), (100.0, 100.0), (0.0, 0.0)), 1):
        lines.append("%5d%10.3f%10.3f%10.3f" % (n, x, y, 0.0))
    for n in (1, 2, 3):
        lines.append("%5d    111111" % n)
    lines.append("    4    001111")
    lines += truss_group(1, [(1, 4), (2, 4), (3, 4)])
    lines += loads_and_static(4)
    return lines


def truss_group(number, bars):
    lines = ["%5d%5d%5d%25sGROUP %d" % (1, len(bars), 1, "", number), "    1    1    0"]
    lines += ["    1   30000.0", "", "    1       1.0", ""]
    lines += ["%5d%5d%5d    1    1" % (k, i, j) for k, (i, j) in enumerate(bars, 1)]
    return lines


def loads_and_static(node):
    lines = ["    1", "    1LOAD", "%5d%10.1f%10.1f" % (node, 10.0, -20.0), "", "    0    0    0"]
    lines += ["STAT    ONE STEP", "    1", "    1    0              0    1       1.0    1    0    1    0    1    2"]
    lines += ["    1    1    0    0    0", "    0    0      0.01"]
    lines += ["       1.0", "", "", "", "", "", "NONE", " STOP"]
    return lines


def tower_members(levels):
    """Node pairs of a braced tower of four legs: 4 nodes and 12 members a level."""
    members = []
    for level in range(1, levels):
        below, above = 4 * (level - 1), 4 * level
        for k in range(4):
            members.append((below + k + 1, above + k + 1))
            members.append((above + k + 1, above + (k + 1) % 4 + 1))
            members.append((below + k + 1, above + (k + 1) % 4 + 1))
    return members


def tower_cards(levels, constraints, groups):
    """A deck of the tower with these constraint cards and element groups (lists of cards), loaded at its last node."""
    nodes = 4 * levels
    corner = ((0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0))
    lines = [" STAR   P4.314  TOWER", "", "", ""]
    lines.append("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d" % (nodes, nodes, 0, 0, 0, 0, len(constraints), 0, 0, len(groups)))
    for level in range(levels):
        for k, (x, y) in enumerate(corner):
            lines.append("%5d%10.2f%10.2f%10.1f" % (4 * level + k + 1, x, y, 10.0 * level))
    lines += constraints
    for group in groups:
        lines += group
    return lines + loads_and_static(nodes)


CLAMPED_FOOT = "    1    111111    4    1"


def tower_deck(levels):
    """The tower of bars."""
    bars = tower_members(levels)
    groups = [bars[i:i + BARS_PER_GROUP] for i in range(0, len(bars), BARS_PER_GROUP)]
    return tower_cards(levels, ["    1    000111%5d    1" % (4 * levels), CLAMPED_FOOT],
                       [truss_group(number, group) for number, group in enumerate(groups, 1)])


def frame_deck(levels, type_number):
    """The tower of beams of type 2 or 3."""
    members = tower_members(levels)
    group = ["%5d%5d%5d%25sFRAME" % (type_number, len(members), 1, "")]
    if type_number == 3:
        group += ["    1    1", "    1        2.1E11       0.3", "    1    0       0.5      0.02", "", ""]
        group += ["%5d%5d%5d%5d%5d%5d%5d" % (n, i, j, 0, 0, 1, 1) for n, (i, j) in enumerate(members, 1)]
    else:
        group += ["    1    1    1", "    1        2.1E11       0.3", ""]
        group += ["    1           0.03      0.02      0.46    8.7E-4    8.7E-4   17.4E-4", "", ""]
        group += ["%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d" % (n, i, j, 0, 0, 1, 1, 0, 0, 0, 2) for n, (i, j) in enumerate(members, 1)]
    return tower_cards(levels, [CLAMPED_FOOT], [group])


class Job:
    """One timed run of a deck: wall seconds, peak resident MiB, exit status, report."""

    def __init__(self, program, scratch, lines, *arguments):
        folder = tempfile.mkdtemp(dir=scratch)
        try:
            with open(os.path.join(folder, "TAModel.inp"), "w") as deck:
                deck.write("\n".join(lines) + "\n")
            start = time.perf_counter()
            done = subprocess.run(["/usr/bin/time", "-v", program, *arguments], cwd=folder, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.PIPE, text=True, check=False)
            self.seconds = time.perf_counter() - start
            self.status = int(re.search(r"Exit status: (\d+)", done.stderr).group(1))
            self.resident = int(re.search(r"Maximum resident set size \(kbytes\): (\d+)", done.stderr).group(1)) / 1024.0
            with open(os.path.join(folder, "TAModel.out"), errors="replace") as report:
                self.report = report.read()
        finally:
            shutil.rmtree(folder)

    def figure(self, label):
        return int(re.search(re.escape(label) + r"[ .]*= *(\d+)", self.report).group(1))

    def log(self, phase):
        """CPU seconds of a line of the time log."""
        return float(re.search(phase + r"\s+(-?\d+\.\d+)\s+(-?\d+\.\d+)", self.report).group(2))

    def results(self):
        """The report from the first macro to the time log."""
        return self.report[self.report.index("STATIC ANALYSIS CONTROL"):self.report.index("E X E C U T I O N")]


MILLION = 1000000


def beam_deck_of(frame, scheme):
    """A frame of beams, pushed and pulled at its last node."""
    last = len(frame.free)
    return lattice_deck.problem(frame.model().cards(lattice_deck.storage_card(scheme)),
                                lattice_deck.load_cards([[(last, 5000.0, 2000.0, -3000.0)]], [last]),
                                lattice_deck.static_macro(lattice_deck.load_segment([1.0], tolerance=1.0))) + [" STOP"]


def core_figures(program, scratch, figure, kind, frame):
    """The core job of a frame of beams: what its figures are called, the job, the words it needs."""
    core = Job(program, scratch, beam_deck_of(frame, "CORE"))
    need = core.figure("MINIMUM TOTAL STORAGE REQUIRED")
    equations, reals = core.figure("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS"), core.figure("STORAGE FOR STRUCTURE STIFFNESS MATRIX")
    name = "%s of %d equations, " % (kind, equations)
    figure(name + "core: exit status", core.status, "0", core.status == 0)
    figure(name + "mean height of a column", reals / equations, "-", True)
    figure(name + "core: storage", need / MILLION, "-", True, "M words")
    figure(name + "core: wall time", core.seconds, "-", True, "s")
    figure(name + "core: resident memory", core.resident, "-", True, "MiB")
    return name, core, need


def disk_figures(figure, name, core, disk, pool):
    figure(name + "disk: matrix blocks", disk.figure("NUMBER OF MATRIX BLOCKS"), "-", True)
    figure(name + "disk: wall time", disk.seconds, "-", True, "s")
    most = pool * MILLION * 4 / 2**20 + 64.0
    figure(name + "disk: resident memory", disk.resident, "%.0f" % most, disk.resident <= most, "MiB")
    same = disk.results() == core.results()
    figure(name + "disk: digits of the core job", same, "True", same)


def memory_figures(program, scratch, figure, frame):
    """A building of beams in core, and out of core in a tenth of the storage that the core job needs."""
    name, core, need = core_figures(program, scratch, figure, "building", frame)
    pool = need // 10 // MILLION
    disk = Job(program, scratch, beam_deck_of(frame, "DISK"), f"{pool}M")
    figure(name + "disk: pool", pool, "-", True, "M words")
    figure(name + "disk: exit status", disk.status, "0", disk.status == 0)
    if disk.status == 0:
        disk_figures(figure, name, core, disk, pool)


def least_pool_figures(program, scratch, figure, frame):
    """A jacket of beams out of core in the smallest pool in which it runs.

    The share of the core job's storage bears no limit, because a tenth is out of reach of these low columns. With NEQ equations
    and columns of mean height h a core job takes 4 h NEQ words for matrix and factor, beside its vectors and element records. A
    disk job takes 0.2 h NEQ words at least, as it has two blocks at a time and a matrix has at most 20, and the same vectors,
    some 64 NEQ words. For the jacket, with h of 180, that is 100 NEQ words; a tenth of its core job is 93 NEQ.
    """
    name, core, need = core_figures(program, scratch, figure, "jacket", frame)
    deck = beam_deck_of(frame, "DISK")
    for pool in range(need // 10 // MILLION, need // MILLION):
        disk = Job(program, scratch, deck, f"{pool}M")
        if disk.status == 0:
            break
    figure(name + "disk: exit status", disk.status, "0", disk.status == 0)
    figure(name + "disk: smallest pool", pool, "-", True, "M words")
    figure(name + "disk: share of the core job's storage", pool * MILLION / need, "-", True)
    if disk.status == 0:
        disk_figures(figure, name, core, disk, pool)


def step_figures(program, scratch, figure, shape, steps=8):
    """Steps in each of which one member changes its stiffness: at the first equations, at nine tenths of them, at none.

    A step with a change takes an iteration more than one without, with a solution and a pass over the elements; what is left
    when that is taken off is the assembly of the change and the factorisation from its equations on.
    """
    # the load of a step takes a bar by one on its axis of ten pairs, each with a slope of its own
    places = [-1.0] + [k + 0.5 for k in range(9)]
    forces = [-1.0]
    for k, (a, b) in enumerate(zip(places, places[1:])):
        forces.append(forces[-1] + (b - a) * (1.0 if k % 2 == 0 else 0.9))
    model, pulled = lattice_deck.with_two_bars(shape, list(zip(places, forces)), 0.9)
    force = ELASTIC_FORCE
    loads = lattice_deck.load_cards([[(pulled[0], -force, 0.0, 0.0)], [(pulled[1], force, 0.0, 0.0)]], list(pulled))

    def job(first, last, count):
        segment = lattice_deck.load_segment([first, last], 1.0 / count, count, printing=0, tolerance=1.0e-3)
        deck = lattice_deck.problem(model.cards(), loads, lattice_deck.static_macro(segment)) + [" STOP"]
        jobs = [Job(program, scratch, deck, "200M") for _ in range(3)]
        return min(done.log("STATIC ANALYSIS") for done in jobs), jobs[0]

    def beyond_elastic(first, last):
        """Seconds of a step beyond one in the elastic range, seconds of an iteration, and the two jobs."""
        elastic, quiet = job(0.04 * first, 0.04 * last, steps)
        changing, work = job(first, last, steps)
        return (changing - elastic) / steps, (job(0.04 * first, 0.04 * last, 2 * steps)[0] - elastic) / steps, (quiet, work)

    whole, with_whole, jobs = beyond_elastic(7.6, 0.0)
    tail, with_tail, more = beyond_elastic(0.0, 7.6)
    jobs += more
    formed = [done.report.count("STIFFNESS FORMED") for done in jobs]
    name = "lattice of %d equations, " % jobs[0].figure("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS")
    status = max(done.status for done in jobs)
    figure(name + "steps: exit status", status, "0", status == 0)
    figure(name + "steps: matrices formed", formed[3], str(formed[1]), formed == [1, steps + 1, 1, steps + 1])
    figure(name + "iteration under a load at the first equations", with_whole, "-", True, "s")
    figure(name + "iteration under a load at nine tenths", with_tail, "-", True, "s")
    figure(name + "change at the first equations", whole, "-", True, "s")
    figure(name + "change at nine tenths", tail, "-", True, "s")
    figure(name + "ratio of these", tail / whole, "-", True)
    ratio = (tail - with_tail) / (whole - with_whole)
    figure(name + "ratio without the iteration", ratio, "0.2", ratio <= 0.2)


ELASTIC_FORCE = lattice_deck.ELASTIC[0][0] / lattice_deck.SPACING  # that takes an end bar by one on its axis


def run(program, scratch, lines, repeats):
    """Best wall seconds, peak resident MiB, seconds of data input and the exit status of the program on a deck."""
    folder = tempfile.mkdtemp(dir=scratch)
    try:
        with open(os.path.join(folder, "TAModel.inp"), "w") as deck:
            deck.write("\n".join(lines) + "\n")
        best = 1e9
        for _ in range(repeats):
            start = time.perf_counter()
            done = subprocess.run([program], cwd=folder, stdout=subprocess.DEVNULL, check=False)
            best = min(best, time.perf_counter() - start)
        timed = subprocess.run(["/usr/bin/time", "-v", program], cwd=folder, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE, text=True, check=False)
        resident = int(re.search(r"Maximum resident set size \(kbytes\): (\d+)", timed.stderr).group(1)) / 1024.0
        with open(os.path.join(folder, "TAModel.out"), errors="replace") as report:
            log = re.search(r"DATA INPUT AND GENERATION\s+(\S+)\s+(\S+)", report.read())
        return best, resident, float(log.group(2)), done.returncode
    finally:
        shutil.rmtree(folder)


def main():
    program = os.path.abspath(sys.argv[1])
    scratch = sys.argv[2] if len(sys.argv) > 2 else ("/dev/shm" if os.path.isdir("/dev/shm") else None)
    failed = []

    def figure(name, value, limit, good, unit=""):
        verdict = "ok" if good else "MISSED"
        print("%-58s %12.4g %-8s limit %-10s %s" % (name, value, unit, limit, verdict))
        if not good:
            failed.append(name)

    seconds, resident, _, status = run(program, scratch, small_deck(), 20)
    figure("three-bar deck, default pool: exit status", status, "0", status == 0)
    figure("three-bar deck, default pool: wall time", 1e3 * seconds, "20", seconds < 0.020, "ms")
    figure("three-bar deck, default pool: resident memory", resident, "30", resident < 30.0, "MiB")
    small, large = tower_deck(1500), tower_deck(15000)
    t_small, _, _, s_small = run(program, scratch, small, 3)
    t_large, resident, input_large, s_large = run(program, scratch, large, 2)
    figure("tower decks: exit status", max(s_small, s_large), "0", s_small == 0 and s_large == 0)
    figure("60,000 nodes against 6,000: wall time ratio", t_large / t_small, "12", t_large <= 12 * t_small)
    figure("60,000 nodes: wall time", t_large, "-", True, "s")
    figure("60,000 nodes: resident memory", resident, "-", True, "MiB")
    rate = len(large) / input_large
    figure("60,000 nodes: deck lines read and echoed a second", rate, "150000", rate >= 150000)
    for type_number in (3, 2):
        frame = frame_deck(835, type_number)
        name = "%d beams of type %d: " % (12 * 834, type_number)
        inputs, status = [], 0
        for _ in range(5):
            _, _, seconds, status = run(program, scratch, frame, 1)
            inputs.append(seconds)
        figure(name + "exit status", status, "0", status == 0)
        rate = len(frame) / min(inputs)
        figure(name + "deck lines read and echoed a second", rate, "150000", rate >= 150000)
    memory_figures(program, scratch, figure, beam_deck.building(8, 8, 262))
    jacket = beam_deck.jacket(200, 85, 5)
    jacket.reorder()
    least_pool_figures(program, scratch, figure, jacket)
    step_figures(program, scratch, figure, lattice_deck.Shape(15, 15, 50))
    return 1 if failed else 0


if __name__ == "__main__":
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    sys.exit(main())
