#!/usr/bin/env python3
"""The figures that decks expect, from closed forms and from the independent solver of truss.py.

`answers.py NAME` prints the lines of one deck; the tests hold the decks' own `* EXPECT` lines to them.
A line is: quantity = value tol relative-tolerance ; where the value is from.
"""
import math
import sys

import beam_paths
import beams
import catenary
import jacket
import jacket_push
import motions
import sea_cases
import sea_decks
import sea_jacket
import sea_members
import sea_piles
import sea_push
import sea_states
import sea_waves
import shaken
import structures
import yielding
from truss import ELASTIC, Bar, Truss

SOLVER = "independent event-to-event solver, tests/decks/oracle"
AXES = "XYZ"


def line(what, value, tol, source):
    return f"{what} = {value:.9g} tol {tol:g} ; {source}"


def displacements(truss, nodes, page, tol, source=SOLVER, axes=(0, 1, 2)):
    return [line(f"displacement {AXES[a]} {n} print {page}", truss.u[n, a], tol, source) for n in nodes for a in axes]


def forces(truss, elements, page, tol, source=SOLVER, group=1):
    return [line(f"force {group} {e} print {page}", truss.bars[e - 1].force, tol, source) for e in elements]


def tripod():
    truss = structures.tripod()
    truss.push({(1, 0): 10000.0, (1, 1): 5000.0, (1, 2): -60000.0})
    return (forces(truss, (1, 2, 3), 1, 1e-6, "three equilibrium equations at node 1") +
            displacements(truss, [1], 1, 1e-6))


def tower25():
    lines = []
    for page, case in enumerate(structures.TOWER25_CASES, 1):
        truss = structures.tower25()
        truss.push(case)
        lines += displacements(truss, [1, 2], page, 1e-5) + forces(truss, range(1, 26), page, 1e-5)
    return lines


def tower72():
    lines = []
    for page, case in enumerate(structures.TOWER72_CASES, 1):
        truss = structures.tower72()
        truss.push(case)
        picked = [1, 2, 5, 13, 17, 19, 37, 55, 56, 57, 58, 59, 66, 71]
        lines += displacements(truss, [17, 18, 19, 20], page, 1e-5) + forces(truss, picked, page, 1e-5)
    return lines


def matrix_blocks(bars, free, words):
    """Blocks of a profile matrix when two of them and their column pointers have so many 4-byte words each."""
    number = {n: 3 * k for k, n in enumerate(sorted(free))}  # the equations before those of a node
    lowest = dict(number)
    for i, j, *_ in bars:
        for a, b in ((i, j), (j, i)):
            if a in number and b in number:
                lowest[a] = min(lowest[a], number[b])
    blocks, used = 1, 0
    for n in sorted(free):
        for axis in range(3):
            cost = number[n] + axis - lowest[n] + 2  # the column from its first row to the diagonal, and its pointer
            if used + cost > words // 4:
                blocks, used = blocks + 1, 0
            used += cost
    return blocks


def disk_blocks():
    count = matrix_blocks(structures.tower72_bars(), range(5, 21), DISK_BLOCK_WORDS)
    return tower72() + [f"number /NUMBER OF MATRIX BLOCKS [.]+ = *(\\d+)/ TAModel.out 1 = {count} tol 0 ; columns counted from the bars"]


DISK_BLOCK_WORDS = 400


def renumbered():
    """The 72-bar tower in four node orders, its node n called 13 n mod 21."""
    lines = []
    for page in range(1, 9):
        truss = structures.tower72()
        truss.push(structures.TOWER72_CASES[(page - 1) % 2])
        lines += [line(f"displacement {AXES[a]} {13 * n % 21} print {page}", truss.u[n, a], 1e-5, SOLVER)
                  for n in (17, 18, 19, 20) for a in (0, 1, 2)]
    return lines


def unsymmetric():
    lines = []
    truss = structures.tower_pushover()
    for page in (1, 2, 3):
        truss.push(structures.PUSHOVER_LOAD, 0.25)
        lines += displacements(truss, [1, 2], page, 1e-6)
        lines += forces(truss, (1, 2, 4, 5, 14, 18, 19, 20, 21, 23), page, 1e-6)
    return lines


THREEBAR_LOADS = (200.0, 1379.42, 1379.43, 1600.0, 0.0)


def threebar_states(path, hardening):
    """The truss after each load of the path, one yield."""
    truss, at = structures.threebar(hardening), 0.0
    for load in path:
        truss.push({(4, 1): -math.copysign(1.0, load - at)}, abs(load - at))
        at = load
        yield truss


def threebar_yield():
    lines = []
    codes = (0, 0, 1, 1, 0)
    for page, truss in enumerate(threebar_states(THREEBAR_LOADS, 0.0), 1):
        lines += displacements(truss, [4], page, 1e-6, axes=(1,)) + forces(truss, (1, 2, 3), page, 1e-6)
        lines.append(f"yield 1 2 print {page} = {codes[page - 1]} ; the centre bar yields at 600(1 + 2 cos(30)^3) = 1379.4229")
    for page, move in ((6, 5.33), (7, 8.0)):
        side = min(600.0, 3.0e4 / 230.940108 * move * math.cos(math.radians(30.0)))
        source = "all bars yield at 60*10: the plateau 600(1 + 2 cos 30) = 1639.2305" if move == 8.0 else \
            "side bars yield at a deflection of 4/cos(30)^2 = 5.3333"
        lines += [line(f"force 1 1 print {page}", side, 1e-6, source),
                  line(f"force 1 2 print {page}", 600.0, 1e-6, source),
                  line(f"force 1 3 print {page}", side, 1e-6, source)]
    return lines


def threebar_cyclic():
    lines = []
    for page, truss in enumerate(threebar_states((1800.0, -1800.0, 1500.0, 0.0), 0.05), 1):
        lines += displacements(truss, [4], page, 1e-5, axes=(1,)) + forces(truss, (1, 2, 3), page, 1e-5)
    return lines


def threebar_event_list(path, hardening):
    """(part of the rest of each load that is taken up to an event, bar): bars that yield, the lower number of two that yield
    together; 0 where they turn back, with the upright bar, whose strain moves most: the others' is cos(30)^2 of it."""
    truss, at, loaded = structures.threebar(hardening), 0.0, False
    for load in path:
        yielded = any(bar.mode != ELASTIC for bar in truss.bars)
        if yielded and loaded:
            yield 0.0, 2
        truss.events = []
        truss.push({(4, 1): -math.copysign(1.0, load - at)}, abs(load - at))
        done = 0.0
        for place in sorted({place for place, _, _ in truss.events}):
            yield (place - done) / (abs(load - at) - done), min(bar for when, bar, _ in truss.events if when == place)
            done = place
        at, loaded = load, True


def threebar_events():
    lines, events, page = [], [], 0
    for path, hardening in (((1800.0, -1800.0, 1500.0, 0.0), 0.05), ((1600.0, 0.0), 0.0)):
        events += threebar_event_list(path, hardening)
        for truss in threebar_states(path, hardening):
            page += 1
            lines += displacements(truss, [4], page, 1e-5, axes=(1,)) + forces(truss, (1, 2, 3), page, 1e-5)
            lines.append(f"iterations segment {page} step 1 = 1 ; between two events the truss is linear")
    lines.append(f"count TAModel.out 'EVENT PREDICTED' = {len(events)} ; yields and reversals by the independent solver")
    source = "first yields at 1379.4229 and 1649.2305, ranges twice as long behind a reversal, which passes at once"
    bar = "the upright bar yields first, of the inclined ones the first is named; the upright one's strain turns fastest"
    for k, (factor, element) in enumerate(events, 1):
        lines += [line(f"number /EVENT FACTOR = *([.\\d]+)/ TAModel.out {k}", factor, 5e-6, source),
                  line(f"number /EVENT FACTOR = .* ELEMENT +(\\d+)/ TAModel.out {k}", element, 0.0, bar)]
    return lines


def threebar_collapse():
    truss = structures.threebar()
    level = truss.push({(4, 1): -1700.0})
    return bracket(1, level, smallest_step(0.25, 0.0156, 0.25), "collapse at 600(1 + 2 cos 30) = 1639.2305 of 1700")


def bracket(segment, level, step, source):
    """The last converged level stands below the collapse level by less than the smallest step."""
    return [f"converged level segment {segment} in {level - step:.9g} .. {level:.9g} ; {source}"]


def smallest_step(first, limit, reduction):
    """Step sizes fall by `reduction` as long as their ratio to the first is not below the limit."""
    size = first
    while size * reduction / first >= limit:
        size *= reduction
    return size


def tower_collapse():
    lines = unsymmetric()
    truss = structures.tower_pushover()
    level = truss.push(structures.PUSHOVER_LOAD)
    names = ", ".join(f"{n} {'yields' if m.endswith('tension') else 'buckles'} at {e:.4f}" for e, n, m in truss.events)
    source = f"collapse at {level:.6f} of the load, by the independent solver; bar {names}"
    return lines + bracket(4, (level - 0.75) / 0.25, smallest_step(0.25, 0.015625, 0.5), source)


def shallow_truss():
    b, h, EA = 10.0, 0.5, 1.0e6
    L0 = math.hypot(b, h)
    lines = []
    for page, w in enumerate((0.05, 0.1, 0.15, 0.2), 1):
        source = "closed form P(w) = 2 EA (h-w)(1/l - 1/L0), l = sqrt(b^2 + (h-w)^2), EA(l/L0 - 1) in the bars"
        l = math.hypot(b, h - w)
        # the load on the card has seven digits; near the limit (w = 0.2114) the deflection feels them
        tol = (1e-6, 1e-6, 3e-6, 2e-5)[page - 1]
        lines.append(line(f"displacement Z 2 print {page}", -w, tol, source))
        lines.append(line(f"force 1 1 print {page}", EA * (l / L0 - 1.0), tol, source))
    return lines


def fewer_factorisations():
    truss = structures.dome()
    x = truss.start()
    for level in (0.06, 0.12, 0.18, 0.24):
        x = truss.find(x, truss.n, level)
    source = "independent path solver, tests/decks/oracle/path.py, at level 0.24 below the limit 0.254560"
    steps, again = truss.modified_newton(0.24, 0.5, 12, 1e-6)
    counted = f"counted by the independent solver: {steps} steps and {again} taken again in halves, a stiffness for each"
    return [line(f"displacement {AXES[a]} {n} print {page}", x[truss.index[n, a]], 1e-5, source)
            for page in (1, 2, 3) for n, a in ((1, 2), (3, 0), (5, 2), (18, 2))] + [
                f"steps segment 1 = {steps} ; {counted}", f"reformulations segment 1 = {steps + again} ; {counted}"]


def restep_limit():
    b, h, EA = 10.0, 0.5, 1.0e6
    L0 = math.hypot(b, h)
    top = math.sqrt((b * b * L0) ** (2.0 / 3.0) - b * b)  # height over the supports at the limit: l^3 = b^2 L0
    limit = 2.0 * EA * top * (1.0 / math.hypot(b, top) - 1.0 / L0)
    saved = line("displacement Z 2 print 1", -0.2, 2e-5, "closed form of the shallow truss at P = 47.8778787")
    return [saved] + bracket(2, limit / 50.0, smallest_step(0.5, 0.0039, 0.5), "limit load 47.9925245 of 50")


def drive(bar, moves):
    """The bar's force after each total extension of the list: the law alone, event by event."""
    result = []
    for target in moves:
        left = target - bar.extension
        while abs(left) > 1e-14:
            way = math.copysign(1.0, left)
            if bar.reverses(way):
                bar.mode = "elastic"
            to_event = bar.to_event(way)
            part = min(to_event, abs(left))
            bar.advance(way * part, to_event <= abs(left))
            left -= way * part
        result.append(bar.force)
    return result


STRUT_MOVES = (-0.2, -0.125, -0.075, -0.025, 0.05, 0.125, 0.0625, -0.125)


def strut_bar():
    bar = Bar(1, 2, 1000.0, 0.0, 1.0, 0.5, strut=True)
    bar.place({1: (0.0, 0.0, 0.0), 2: (100.0, 0.0, 0.0)})
    return bar


def strut_buckling():
    source = "bar law walked by hand: EA/L 10, yield 1.0, buckling -0.5, shortening given back at constant force"
    lines = []
    for page, (move, force) in enumerate(zip(STRUT_MOVES, drive(strut_bar(), STRUT_MOVES)), 1):
        lines.append(line(f"force 1 1 print {page}", force, 1e-9, source))
        lines.append(line(f"extension 1 1 print {page}", move, 1e-9, source))
    nodes = {1: (0.0, 0.0, 0.0), 2: (100.0, 0.0, 0.0), 3: (200.0, 0.0, 0.0)}
    strut = Bar(1, 2, 1000.0, 0.0, 1.0, 0.5, strut=True)
    truss, at = Truss(nodes, [strut, Bar(2, 3, 400.0)], {(2, 0)}), 0.0
    for page, load in enumerate((-1.5, -0.7, 0.25, 1.0), len(STRUT_MOVES) + 1):
        truss.push({(2, 0): math.copysign(1.0, load - at)}, abs(load - at))
        at = load
        lines += displacements(truss, [2], page, 1e-9, axes=(0,)) + forces(truss, (1, 2), page, 1e-9)
    return lines


def ductility_failure():
    source = "yield 1.0 at 0.1, hardening 0.1, failure at 3 * 0.1; then half the initial stiffness (5) takes the force away"
    expected = [(1.025, 1), (1.15, 1), (1.275, 2), (0.65, 2), (0.025, 2), (0.0, 4), (0.0, 4), (0.0, 4)]
    lines = []
    for page, (force, code) in enumerate(expected, 1):
        for element, sign in ((1, 1.0), (2, -1.0)):
            lines.append(line(f"force 1 {element} print {page}", sign * force, 1e-7, source))
            lines.append(f"yield 1 {element} print {page} = {code} ; {source}")
    return lines


SPRING_CURVE = [(-4.0, -1.5), (-2.0, -1.2), (-1.0, -0.8), (0.0, 0.0), (1.0, 0.8), (2.0, 1.2), (4.0, 1.5)]


def multilinear_spring():
    source = "the curve's own points, deformation 0.01 and force 1.0 per unit of ratio"
    lines = []
    for page, force in enumerate((0.4, 1.0, 1.4, -1.0), 1):
        for (d0, f0), (d1, f1) in zip(SPRING_CURVE, SPRING_CURVE[1:]):
            if f0 <= force < f1:
                ratio = d0 + (force - f0) * (d1 - d0) / (f1 - f0)
        code = 99 + next(k for k, (d, _) in enumerate(SPRING_CURVE, 1) if d > ratio)
        lines.append(line(f"displacement X 2 print {page}", 0.01 * ratio, 1e-7, source))
        lines.append(line(f"force 1 1 print {page}", force, 1e-7, source))
        lines.append(f"yield 1 1 print {page} = {code} ; {source}")
    return lines


def skew_supports():
    c, s = math.cos(math.radians(30.0)), 0.5
    source = "stiffness along the slope EA/L cos(30)^2 = 75, load 7.5 along the slope"
    lines = [line("displacement X 2 print 1", 0.1, 1e-6, source), line("displacement Y 2 print 1", 0.0, 1e-6, source),
             line("extension 1 1 print 1", 0.1 * c, 1e-6, source), line("force 1 1 print 1", 10.0 * c, 1e-6, source)]
    source = "three equal springs are stiff 100 in every direction: u = P/100 in any axes; the bars see u turned to x, y, z"
    local = (0.01, 0.02, 0.03)
    for n in (4, 8):
        lines += [line(f"displacement {AXES[a]} {n} print 1", local[a], 1e-6, source) for a in range(3)]
    # second system: local direction 2 along (0,3,4)/5, local direction 3 along -x, so local 1 = 2 x 3 = (0,-4,3)/5
    axes = [(0.0, -0.8, 0.6), (0.0, 0.6, 0.8), (-1.0, 0.0, 0.0)]
    world = [sum(local[k] * axes[k][i] for k in range(3)) for i in range(3)]
    for k, element in enumerate((2, 3, 4)):
        lines.append(line(f"force 1 {element} print 1", 100.0 * world[k], 1e-6, source))
        lines.append(line(f"force 1 {element + 3} print 1", 100.0 * world[k], 1e-6, source))
    return lines


def identical_displacements():
    source = "three tied springs 100 + 200 + 300 under 6.0 move together by 0.01"
    lines = [line(f"displacement X {n} print 1", 0.01, 1e-9, source) for n in (2, 4, 6)]
    return lines + [line(f"force 1 {e} print 1", float(e), 1e-9, source) for e in (1, 2, 3)]


def prescribed_displacements():
    centre, side = 3.0e4 / 200.0, 3.0e4 / 230.940108
    c = 200.0 / 230.940108
    k = centre + 2.0 * side * c * c
    lines = []
    for page, (settled, load) in enumerate(((0.5, 0.0), (0.5, 200.0), (0.0, 200.0)), 1):
        down = settled * centre / k + load / k
        source = "stiffness method by hand: centre bar 150, side bars 2*129.9*cos(30)^2, support down by 0.5 and back"
        lines += [line(f"displacement Y 2 print {page}", -settled, 1e-6, source),
                  line(f"displacement Y 4 print {page}", -down, 1e-6, source),
                  line(f"force 1 2 print {page}", centre * (down - settled), 1e-6, source),
                  line(f"force 1 1 print {page}", side * c * down, 1e-6, source)]
    return lines


FEET = ({(7, 0): -1.0}, {(8, 1): 1.0, (8, 2): -0.5}, {(9, 0): 1.0, (10, 2): -0.5})
FEET_SEGMENTS = ((0.0, (0.5, 0.0, 0.0)), (1.0, (-0.2, 0.4, 0.0)), (0.0, (0.0, 0.0, 1.0)))
FEET_TILT = 0.125  # which the last segment gives to node 1 along Y, by lifting and lowering feet


def moving_supports():
    truss, lines = structures.tower25(), []

    def move(load, factors):
        moves = {}
        for pattern, factor in zip(FEET, factors):
            for place, value in pattern.items():
                moves[place] = factor * value
        truss.push({d: load * p for d, p in structures.TOWER25_CASES[1].items()}, moves=moves)

    def page(number):
        return displacements(truss, [1, 2, 3], number, 1e-5) + forces(truss, range(1, 26), number, 1e-5) + \
            [line(f"displacement {AXES[a]} {n} print {number}", truss.u[n, a], 1e-6, "sum of what the segments impose")
             for pattern in FEET for n, a in pattern]

    for number, (load, factors) in enumerate(FEET_SEGMENTS, 1):
        move(load, factors)
        lines += page(number)
    before = truss.u[1, 1]
    move(0.0, FEET_LAST)
    level = FEET_TILT / (truss.u[1, 1] - before)
    move(0.0, [(level - 1.0) * factor for factor in FEET_LAST])
    lines.append(line("number /LOAD LEVEL = *([-.\\d]+)/ TAModel.out 5", level, 1e-5, "the part that moves node 1 by 0.125"))
    return lines + page(4)


FEET_LAST = (-0.125, 0.25, -0.25)


def pressure_pattern():
    source = "reported force = P - 2 nu p A, p = internal pressure + half of both nodes' pressures"
    area, nu = 0.01, 0.3
    lines = []
    for page, factor in enumerate((0.5, 1.0, 0.0), 1):
        inner = (500.0, 0.0)
        outer = factor * 0.5 * (1000.0 + 2000.0)
        for e in (1, 2):
            lines.append(line(f"force 1 {e} print {page}", 10.0 - 2.0 * nu * (inner[e - 1] + outer) * area, 1e-9, source))
        lines.append(line(f"displacement X 2 print {page}", 0.1, 1e-9, "EA/L 100; pressure changes the report, not the balance"))
    return lines


def follower_force():
    source = "springs 3 and 8; the force 5 points from the moved node along (3,4)/5, so u = (3/3, 4/8)"
    return [line("displacement X 1 print 1", 1.0, 1e-6, source), line("displacement Y 1 print 1", 0.5, 1e-6, source),
            line("force 1 1 print 1", 3.0, 1e-6, source), line("force 1 2 print 1", 4.0, 1e-6, source)]


def surface_pressure():
    lines = []
    uniform = {n: -15.0 / 100.0 for n in range(1, 7)}
    peak = {1: -12.0, 2: -48.0, 3: -12.0, 4: -6.0, 5: -24.0, 6: -6.0}
    stiff = {1: 100.0, 2: 200.0, 3: 100.0, 4: 100.0, 5: 200.0, 6: 100.0}
    depth = {n: -15.0 / 97.0 for n in range(1, 7)}
    sources = ["uniform 10 on two panels of 6: a quarter of each panel to each corner",
               "pressure 36 at node 2 alone: integral of the shape functions, A/36 (4, 2, 1, 2) on each panel",
               "density 2 and depth 5 - u: 100 u = -1.5 * 2 (5 - u)"]
    for page, state in enumerate((uniform, {n: peak[n] / stiff[n] for n in peak}, depth), 1):
        lines += [line(f"displacement Z {n} print {page}", state[n], 1e-7, sources[page - 1]) for n in state]
    return lines


def self_weight():
    source = "bars of weight 10 each: half to either end"
    return [line("force 1 1 print 1", 15.0, 1e-9, source), line("force 1 2 print 1", 5.0, 1e-9, source),
            line("displacement Z 2 print 1", -0.3, 1e-9, source), line("displacement Z 3 print 1", -0.4, 1e-9, source)]


def initial_force():
    source = "EA/L 100 in both bars: 10 locked in bar 1 moves the node by 0.05 and leaves 5 in both"
    return [line("displacement X 2 print 1", -0.05, 1e-9, source), line("force 1 1 print 1", 5.0, 1e-9, source),
            line("force 1 2 print 1", 5.0, 1e-9, source)]


def restep():
    *_, truss = threebar_states((1600.0,), 0.0)
    return displacements(truss, [4], 1, 1e-6, axes=(1,)) + forces(truss, (1, 2, 3), 1, 1e-6)


def several_problems():
    source = "one bar, EA/L 100"
    return tripod() + [line("displacement X 2 print 2", 0.05, 1e-9, source), line("force 1 1 print 2", 5.0, 1e-9, source)]


def catenary_options():
    return catenary.lines()


DECKS = [tripod, tower25, tower72, threebar_yield, threebar_cyclic, threebar_collapse, tower_collapse, shallow_truss,
         strut_buckling, ductility_failure, multilinear_spring, threebar_events, moving_supports, restep_limit,
         fewer_factorisations, disk_blocks, unsymmetric, renumbered, skew_supports, identical_displacements,
         prescribed_displacements, pressure_pattern, follower_force, surface_pressure, self_weight, initial_force, restep,
         several_problems, catenary_options, *beams.DECKS, *beam_paths.DECKS, *jacket.DECKS, jacket_push.jacket_push, *motions.DECKS, *shaken.DECKS, *yielding.DECKS,
         sea_piles.pile_wave, *sea_waves.DECKS, *sea_states.DECKS, *sea_jacket.DECKS, *sea_cases.DECKS, *sea_push.DECKS,
         *sea_members.DECKS, *sea_decks.DECKS]


def main():
    by_name = {deck.__name__: deck for deck in DECKS}
    for name in sys.argv[1:] or by_name:
        for text in by_name[name]():
            print("* EXPECT " + text)


if __name__ == "__main__":
    main()
