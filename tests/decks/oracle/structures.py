"""The structures of the decks, written down once more for the independent solvers."""
import math

from path import PathTruss
from truss import Bar, Truss


def free_nodes(numbers, axes=(0, 1, 2)):
    return {(n, a) for n in numbers for a in axes}


TRIPOD_NODES = {1: (0.0, 0.0, 5.0), 2: (3.0, 0.0, 0.0), 3: (-1.5, 2.59807621, 0.0), 4: (-1.5, -2.59807621, 0.0)}


def tripod():
    return Truss(TRIPOD_NODES, [Bar(1, k, 2.1e11 * 0.002) for k in (2, 3, 4)], free_nodes([1]))


THREEBAR_NODES = {1: (0.0, 0.0, 0.0), 2: (115.470054, 0.0, 0.0), 3: (230.940108, 0.0, 0.0), 4: (115.470054, -200.0, 0.0)}


def threebar(hardening=0.0):
    bars = [Bar(k, 4, 3000.0 * 10.0, hardening, 60.0 * 10.0) for k in (1, 2, 3)]
    return Truss(THREEBAR_NODES, bars, free_nodes([4], (0, 1)))


TOWER25_NODES = {
    1: (-37.5, 0.0, 200.0), 2: (37.5, 0.0, 200.0), 3: (-37.5, 37.5, 100.0), 4: (37.5, 37.5, 100.0),
    5: (37.5, -37.5, 100.0), 6: (-37.5, -37.5, 100.0), 7: (-100.0, 100.0, 0.0), 8: (100.0, 100.0, 0.0),
    9: (100.0, -100.0, 0.0), 10: (-100.0, -100.0, 0.0)}
TOWER25_BARS = [
    (1, 2), (1, 4), (2, 3), (1, 5), (2, 6), (2, 4), (2, 5), (1, 3), (1, 6), (3, 6), (4, 5), (3, 4), (5, 6), (3, 10),
    (6, 7), (4, 9), (5, 8), (4, 7), (3, 8), (5, 10), (6, 9), (6, 10), (3, 7), (4, 8), (5, 9)]
TOWER25_GROUPS = [1] + [2] * 4 + [3] * 4 + [4] * 2 + [5] * 2 + [6] * 4 + [7] * 4 + [8] * 4
TOWER25_AREAS = [0.01, 1.993, 3.056, 0.01, 0.01, 0.665, 1.642, 2.679]
TOWER25_CASES = [
    {(1, 1): 20000.0, (1, 2): -5000.0, (2, 1): -20000.0, (2, 2): -5000.0},
    {(1, 0): 1000.0, (1, 1): 10000.0, (1, 2): -5000.0, (2, 1): 10000.0, (2, 2): -5000.0, (3, 0): 500.0, (6, 0): 500.0}]


def tower25(yielding=False, areas=TOWER25_AREAS):
    """Elastic in lb and in; with `yielding` the bars yield at 40 ksi and buckle at the stress limits of their groups."""
    bars = []
    for (i, j), group in zip(TOWER25_BARS, TOWER25_GROUPS):
        A = areas[group - 1]
        if yielding:
            bars.append(Bar(i, j, 1.0e7 * A, 0.0, 40000.0 * A, BUCKLING_STRESSES[group - 1] * A, strut=True))
        else:
            bars.append(Bar(i, j, 1.0e7 * A))
    return Truss(TOWER25_NODES, bars, free_nodes(range(1, 7)))


BUCKLING_STRESSES = [35092.0, 11590.0, 17305.0, 35092.0, 35092.0, 6759.0, 6959.0, 11082.0]

TOWER72_NODES = {4 * s + c + 1: (x, y, 60.0 * s)
                 for s in range(5) for c, (x, y) in enumerate([(0.0, 0.0), (120.0, 0.0), (120.0, 120.0), (0.0, 120.0)])}
TOWER72_AREAS = [0.1565, 0.5456, 0.4104, 0.5697, 0.5237, 0.5171, 0.1, 0.1, 1.268, 0.5117, 0.1, 0.1, 1.8862, 0.5123, 0.1, 0.1]


def tower72_bars():
    """(node I, node J, group) of the 72 bars: storey by storey from the top, columns, faces, ring, plan diagonals."""
    bars = []
    for storey in range(4):
        b, t, g = 13 - 4 * storey, 17 - 4 * storey, 4 * storey
        bars += [(b + c, t + c, g + 1) for c in range(4)]
        faces = [(b, t + 1), (b + 1, t), (b + 1, t + 2), (b + 2, t + 1), (b + 2, t + 3), (b + 3, t + 2)]
        bars += [(i, j, g + 2) for i, j in faces + [(b + 3, t), (b, t + 3)]]
        bars += [(t, t + 1, g + 3), (t + 1, t + 2, g + 3), (t + 2, t + 3, g + 3), (t + 3, t, g + 3)]
        bars += [(t, t + 2, g + 4), (t + 1, t + 3, g + 4)]
    return bars


def tower72():
    bars = [Bar(i, j, 1.0e7 * TOWER72_AREAS[g - 1]) for i, j, g in tower72_bars()]
    return Truss(TOWER72_NODES, bars, free_nodes(range(5, 21)))


TOWER72_CASES = [{(17, 0): 5000.0, (17, 1): 5000.0, (17, 2): -5000.0}, {(n, 2): -5000.0 for n in (17, 18, 19, 20)}]

# The pushover of the tower: practical areas, one side of the line pulls harder; 1.5 times the load stands at level 1.
PUSHOVER_AREAS = [0.1, 0.3, 3.4, 0.1, 2.1, 1.0, 0.5, 3.4]
PUSHOVER_LOAD = {(1, 0): 7500.0, (1, 1): 30000.0, (1, 2): -7500.0, (2, 1): -7500.0, (2, 2): -7500.0}


def tower_pushover():
    return tower25(yielding=True, areas=PUSHOVER_AREAS)


SHALLOW_NODES = {1: (-10.0, 0.0, 0.0), 2: (0.0, 0.0, 0.5), 3: (10.0, 0.0, 0.0)}


def shallow_truss(load):
    return PathTruss(SHALLOW_NODES, [(1, 2, 1.0e6), (2, 3, 1.0e6)], {(2, 2)}, {(2, 2): -load})


DOME_RINGS, DOME_SPAN, DOME_RISE = 3, 15.0, 1.5


def dome_grid():
    """Points of a triangular grid of unit bars, ring by ring around the crown."""
    corners = [(math.cos(math.radians(60 * k)), math.sin(math.radians(60 * k))) for k in range(6)]
    points = [(0, 0.0, 0.0)]
    for ring in range(1, DOME_RINGS + 1):
        for (xa, ya), (xb, yb) in zip(corners, corners[1:] + corners[:1]):
            points += [(ring, ring * xa + m * (xb - xa), ring * ya + m * (yb - ya)) for m in range(ring)]
    return points


def dome_nodes():
    """The grid with its rings drawn out to circles, on a paraboloid; coordinates as a card holds them."""
    nodes = {}
    for n, (ring, x, y) in enumerate(dome_grid(), 1):
        r = DOME_SPAN * ring / DOME_RINGS
        size = r / math.hypot(x, y) if ring else 0.0
        nodes[n] = (round(x * size, 4), round(y * size, 4), round(DOME_RISE * (1.0 - (ring / DOME_RINGS) ** 2), 4))
    return nodes


def dome_bars():
    """Neighbours on the grid; supports are not joined."""
    grid = dome_grid()
    return [(i + 1, j + 1) for i, a in enumerate(grid) for j, b in enumerate(grid)
            if i < j and a[0] < DOME_RINGS and math.dist(a[1:], b[1:]) < 1.01]


DOME_EA = 2.0e5
DOME_LOADS = {n: 24.0 if n == 1 else 8.0 + 0.4 * n for n in range(1, 20)}


def dome():
    """72 bars on three rings, heavier loaded toward the nodes of high number. [kN, m]"""
    load = {(n, 2): -p for n, p in DOME_LOADS.items()}
    return PathTruss(dome_nodes(), [(i, j, DOME_EA) for i, j in dome_bars()], free_nodes(range(1, 20)), load)
