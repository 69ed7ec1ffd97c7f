"""The path solver that decks are held to, its tables, and the check that a step lies on a path."""
import math
import os
import unittest

from support import ROOT
import curves
import structures
from deck_path import Path
from run_deck import Number

B, H, EA = 10.0, 0.5, 1.0e6
L0 = math.hypot(B, H)
TOP = math.sqrt((B * B * L0) ** (2.0 / 3.0) - B * B)  # height of the two-bar truss at its limits: l^3 = b^2 L0
LIMIT = 2.0 * EA * TOP * (1.0 / math.hypot(B, TOP) - 1.0 / L0)


def limits(truss, points):
    """(index of the point before, limit point) wherever the level turns between points of a path."""
    levels = [x[-1] for x in points]
    return [(m - 1, truss.limit(points[m - 1], points[m + 1])) for m in range(1, len(points) - 1)
            if (levels[m] - levels[m - 1]) * (levels[m + 1] - levels[m]) < 0.0]


class PathSolver(unittest.TestCase):
    def test_both_limit_points_of_the_shallow_truss_are_those_of_the_closed_form(self):
        truss = structures.shallow_truss(1.0)
        (_, upper), (_, lower) = limits(truss, truss.trace(0.03, 33))
        for point, load, deflection in ((upper, LIMIT, H - TOP), (lower, -LIMIT, H + TOP)):
            self.assertLess(abs(point[-1] / load - 1.0), 1e-8)
            self.assertLess(abs(-point[0] / deflection - 1.0), 1e-8)
        self.assertAlmostEqual(LIMIT, 47.9925245, 7)

    def test_every_point_of_a_trace_has_no_unbalance(self):
        truss, points = curves.dome_points()
        for x in points[::10]:
            self.assertLess(max(map(abs, truss.unbalance(x))), 1e-9)

    def test_the_stiffness_is_the_derivative_of_the_unbalance(self):
        truss, points = curves.dome_points()
        x, h = points[20], 1e-6
        K = truss.stiffness(x)
        for q in (0, 7, 20, 56):
            ahead, behind = (truss.unbalance([v + (s * h if p == q else 0.0) for p, v in enumerate(x)]) for s in (1.0, -1.0))
            for p in range(truss.n):
                self.assertAlmostEqual(K[p][q], (behind[p] - ahead[p]) / (2.0 * h), delta=1e-4 * truss.largest)

    def test_the_dome_has_three_limit_points_and_no_bifurcation(self):
        """The stiffness has one negative pivot where the level falls along the path and none where it rises."""
        truss, points = curves.dome_points()
        found = limits(truss, points)
        self.assertEqual([round(x[-1], 6) for _, x in found], [0.25456, -0.140089, 0.798006])
        for m in range(1, len(points)):
            moved = [b - a for a, b in zip(points[m - 1], points[m])]
            k = max(range(truss.n), key=lambda p: abs(moved[p]))
            rises = truss.tangent(points[m], k)[-1] * moved[k] > 0.0
            self.assertEqual(truss.negative_pivots(points[m]), 0 if rises else 1, f"point {m}")

    def test_the_tables_beside_the_decks_are_those_of_the_solver(self):
        for name, table in (("snap_through", curves.snap_through()), ("dome", curves.dome()), ("toggle", curves.toggle())):
            with open(os.path.join(ROOT, "decks", name, "path"), encoding="ascii") as file:
                rows = [line.split() for line in file]
            wanted = [line.split() for line in table.strip().split("\n")]
            self.assertEqual(rows[0], wanted[0])
            self.assertEqual(len(rows), len(wanted))
            for row, other in zip(rows[1:], wanted[1:]):
                for a, b in zip(row, other):
                    self.assertAlmostEqual(float(a), float(b), delta=1e-8 * max(1.0, abs(float(b))))


def numbers(*texts):
    return [Number(text) for text in texts]


class OnThePath(unittest.TestCase):
    def setUp(self):
        self.path = Path(curves.snap_through())

    def step(self, w, scale=1.0):
        return numbers("%.5f" % (scale * curves.shallow_load(w) / 60.0), "%.4E" % -w)

    def test_points_of_the_path_are_on_it_on_the_way_up_and_down(self):
        for w in (0.0123, 0.05, 0.2114, 0.4321, 0.5, 0.789, 0.95):
            self.assertLess(self.path.offset(self.step(w), 1e-4), 1e-5, w)

    def test_a_level_that_is_off_by_a_thousandth_of_the_limit_is_seen(self):
        for w in (0.05, 0.2114, 0.4321, 0.789):
            found = self.step(w)
            for sign in (1.0, -1.0):
                off = [Number("%.5f" % (found[0].value + sign * 0.0008)), found[1]]
                self.assertGreater(self.path.offset(off, 1e-4), 5e-4, w)

    def test_displacements_beyond_the_table_are_not_on_the_path(self):
        self.assertIsNone(self.path.offset(numbers("0.10000", "-0.1200E+01"), 1e-4))

    def test_of_several_displacements_each_must_fit(self):
        truss, points = curves.dome_points()
        path = Path(curves.dome())
        x = truss.find(points[30], truss.index[1, 2], points[30][truss.index[1, 2]] - 0.004)
        step = ["%.5f" % x[-1]] + ["%.4E" % x[truss.index[place]] for place in curves.DOME_WATCHED]
        self.assertLess(path.offset(numbers(*step), 1e-4), 1e-5)
        self.assertIsNone(path.offset(numbers(*step[:4], "%.4E" % (1.01 * float(step[4]))), 1e-4))


if __name__ == "__main__":
    unittest.main()
