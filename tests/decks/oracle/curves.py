#!/usr/bin/env python3
"""The equilibrium paths that decks are held to: `curves.py NAME` prints the table that stands as `path` beside a deck.

The form of the tables is told in tools/deck_path.py.
"""
import functools
import math
import sys

import elastica
import structures

SHALLOW_LOAD = 60.0  # at level 1
DOME_POINTS = 75


def table(names, points):
    lines = ["# level " + " ".join(names)]
    return "\n".join(lines + [" ".join(f"{number:.9g}" for number in point) for point in points]) + "\n"


def shallow_load(w):
    """P(w) of the two-bar truss."""
    b, h, EA = 10.0, 0.5, 1.0e6
    return 2.0 * EA * (h - w) * (1.0 / math.hypot(b, h - w) - 1.0 / math.hypot(b, h))


def shallow_slope(w):
    b, h, EA = 10.0, 0.5, 1.0e6
    return 2.0 * EA * (1.0 / math.hypot(b, h) - b * b / math.hypot(b, h - w) ** 3)


def snap_through():
    """The closed form, both limit points inside."""
    deflections = [0.025 * k for k in range(43)]
    return table(["Z:2"], [(shallow_load(w) / SHALLOW_LOAD, -w, shallow_slope(w) / SHALLOW_LOAD, -1.0) for w in deflections])


DOME_WATCHED = ((1, 2), (3, 0), (5, 2), (18, 2))


@functools.lru_cache
def dome_points():
    truss = structures.dome()
    return truss, truss.trace(0.01, DOME_POINTS)


def dome():
    """Through three limit points, at the third of which the crown comes back up while the load falls."""
    truss, points = dome_points()
    places = [truss.n] + [truss.index[place] for place in DOME_WATCHED]
    rows = []
    for m, x in enumerate(points):
        moved = [b - a for a, b in zip(points[max(m - 1, 0)], points[max(m, 1)])]
        k = max(range(truss.n), key=lambda p: abs(moved[p]))
        along = truss.tangent(x, k)
        sign = math.copysign(1.0, moved[k])
        rows.append([x[p] for p in places] + [sign * along[p] for p in places])
    return table([f"{'XYZ'[a]}:{n}" for n, a in DOME_WATCHED], rows)


TOGGLE_LOAD = 60.0  # at level 1
TOGGLE_CROWN = 21


def williams_toggle():
    return elastica.Toggle(12.943, 0.386, 1884683.7, 9274.05732)


def toggle():
    """Williams' toggle by shooting, slopes by differences of what is on either side."""
    frame, space, h = williams_toggle(), 0.0125, 1e-4
    rows = []
    for k in range(40):
        before, load, after = (frame.load(space * k + side) / TOGGLE_LOAD for side in (-h, 0.0, h))
        rows.append((load, -space * k, (after - before) / (2.0 * h), -1.0))
    return table([f"Z:{TOGGLE_CROWN}"], rows)


TABLES = {"snap_through": snap_through, "dome": dome, "toggle": toggle}


def main():
    for name in sys.argv[1:]:
        sys.stdout.write(TABLES[name]())


if __name__ == "__main__":
    main()
