"""The independent solvers behind the decks of beams, and what takes more than one figure of a run: orders, sums, equilibrium."""
import math
import os
import re
import tempfile
import unittest

from support import PROGRAM, ROOT
import beam_paths
import beams
import corotational
import elastica
import jacket
import jacket_push
from frame import FULL, Frame, Member, dense_solve, tube
from run_deck import run_deck


def run_of(case, name):
    folder = tempfile.TemporaryDirectory(prefix="tidearc-py-")
    case.addClassCleanup(folder.cleanup)
    return run_deck(PROGRAM, os.path.join(ROOT, "decks", name), folder.name)


class FrameSolver(unittest.TestCase):
    """frame.py against closed forms and published figures."""

    def test_a_cantilever_along_any_line_has_the_closed_form(self):
        material, section, L = (2.1e11, 0.3, 0.0), tube(0.5, 0.02), 6.0
        root = math.sqrt(14.0)
        frame = Frame({1: (0.0, 0.0, 0.0), 2: (L / root, 2.0 * L / root, 3.0 * L / root)}, [Member(1, 2, material, section)], {1: FULL})
        along, across = (1.0 / root, 2.0 / root, 3.0 / root), (-2.0 / math.sqrt(5.0), 1.0 / math.sqrt(5.0), 0.0)
        cases = [{(2, c): 1e6 * a for c, a in enumerate(along)}, {(2, c): 1e5 * a for c, a in enumerate(across)},
                 {(2, 3 + c): 1e5 * a for c, a in enumerate(along)}, {(2, 3 + c): 1e5 * a for c, a in enumerate(across)}]
        pull, bend, twist, couple = frame.solve(*cases)
        for u, axis, first, value in ((pull, along, 0, 0.000947350852), (bend, across, 0, 0.0394045415), (twist, along, 3, 0.00426882533),
                                      (couple, across, 3, 0.00328371179)):
            self.assertAlmostEqual(sum(u[2, first + c] * a for c, a in enumerate(axis)) / value, 1.0, 7)

    def test_a_released_end_bears_no_moment(self):
        frame = beams.hinged_beams()
        u, = frame.solve({(n, c): beams.HINGE_LOAD[c] for n in range(2, 3 * len(beams.HINGES), 3) for c in FULL})
        for number, member in enumerate(frame.members):
            forces = frame.end_forces(number, u)
            for freedom in member.releases:
                self.assertLess(abs(forces[freedom]), 1e-6 * max(map(abs, forces)))

    def test_the_jacket_has_the_published_mass_and_condensed_stiffness(self):
        mass = Frame(jacket.joints(), jacket.standing().members, {}).masses()
        self.assertAlmostEqual(sum(m for p, m in mass.items() if p[1] == 0) / 673882.7, 1.0, 6)
        for shear, (K, flexibility) in zip((False, True), jacket.CONDENSED.values()):
            n = jacket.REFERENCE_NODE
            cases = jacket.tied(shear).solve(*[{(n, c): 1.0} for c in FULL])
            F = [[u[n, c] for u in cases] for c in FULL]
            k = dense_solve(F, [[float(i == j) for j in FULL] for i in FULL])
            tol = 3e-6 if shear else 1e-8
            for found, value in zip((k[0][0], k[2][2], k[3][3], k[5][5], k[0][4], F[0][0], F[2][2], F[3][3], F[5][5], F[4][0]), K + flexibility):
                self.assertLess(abs(found / value - 1.0), tol)

    def test_modes_are_those_of_an_independent_program_with_the_same_masses(self):
        for (kind, count), wanted in beams.INDEPENDENT.items():
            for found, value in zip(beams.strip(count, kind).frequencies(), wanted):
                self.assertLess(abs(found / value - 1.0), 1e-8)


class PathSolvers(unittest.TestCase):
    def test_the_elastica_by_shooting_is_that_of_the_elliptic_integrals(self):
        """Dead transverse load on a cantilever: the root moment is found so that the tip bears none."""
        for alpha, deflection, shortening, turn in ((1.0, 0.301720774, 0.0564332363, 0.46135195), (5.0, 0.713791524, 0.387628361, 1.21536812),
                                                    (10.0, 0.810609025, 0.554995598, 1.43028554)):
            moment, = elastica.root(lambda m, P=alpha: [elastica.integrate(1.0, (0.0, 0.0, 0.0, m[0]), 0.0, P, 1.0, 1e12)[3]], [0.5 * alpha], [1.0])
            x, z, t, _ = elastica.integrate(1.0, (0.0, 0.0, 0.0, moment), 0.0, alpha, 1.0, 1e12)
            for found, value in ((z, deflection), (1.0 - x, shortening), (t, turn)):
                self.assertLess(abs(found / value - 1.0), 1e-6)

    def test_the_toggle_agrees_with_co_rotational_elements_in_the_limit_of_many(self):
        """Another program, loads at 0.1, 0.2, 0.3 with 20 and 40 straight elements for each leg: errors in the ratio of four."""
        frame = beam_paths.curves.williams_toggle()
        for w, coarse, fine in ((0.1, 25.2233453, 25.208), (0.2, 33.5578266, 33.514), (0.3, 32.9297364, 32.868)):
            self.assertAlmostEqual(frame.load(w), fine - (coarse - fine) / 3.0, delta=2e-3)
        (_, upper), (_, lower) = beam_paths.limits_of_toggle()
        self.assertLess(abs(upper / 33.87 - 1.0), 1e-3)
        self.assertLess(abs(lower / 31.3 - 1.0), 1e-3)

    def test_columns_buckle_at_the_loads_of_an_independent_program(self):
        wanted = {("pinned", 1): 1008000.0, ("pinned", 2): 835283.1, ("pinned", 4): 829471.4, ("cantilever", 1): 208820.8,
                  ("cantilever", 2): 207367.8, ("cantilever", 4): 207268.5, ("fixed-pinned", 1): 2520000.0, ("fixed-pinned", 2): 1739539.0,
                  ("fixed-pinned", 4): 1699506.0, ("fixed-sliding", 2): 3360000.0, ("fixed-sliding", 4): 3341133.0}
        found = {(name, count): load for name, count, _, _, load in beam_paths.columns()}
        for column, load in wanted.items():
            self.assertLess(abs(found[column] / load - 1.0), 3e-7, column)
        for name, exact in (("pinned", 829046.77), ("cantilever", 207261.692), ("fixed-pinned", 1696019.55), ("fixed-sliding", 3316187.08)):
            self.assertLess(abs(beam_paths.euler_load(name) / exact - 1.0), 2e-6)
            self.assertLess(found[name, 8] / exact - 1.0, 1e-3)

    def test_small_motions_of_the_co_rotational_frame_are_those_of_the_linear_one(self):
        nodes = {1: (0.0, 0.0, 0.0), 2: (1.0, 2.0, 3.0), 3: (2.0, 2.5, 0.5)}
        members = [Member(1, 2, beams.STEEL, beams.PLATE, angle=0.4), Member(2, 3, beams.STEEL, beams.PLATE)]
        load = {(3, c): f for c, f in enumerate((1.0, -2.0, 0.5, 0.3, -0.2, 0.4))}
        linear, = Frame(nodes, members, {1: FULL}).solve(load)
        space = corotational.Space(nodes, members, {1: FULL})
        state, _ = space.find(space.start(), {}, load, ((3, 0), None), 1.0, 1e-6)
        for c in range(3):
            self.assertLess(abs(state[3][0][c] / linear[3, c] - 1.0), 1e-5)

    def test_a_rigid_motion_of_the_co_rotational_frame_gives_no_force(self):
        nodes = {1: (0.0, 0.0, 0.0), 2: (1.0, 2.0, 3.0)}
        space = corotational.Space(nodes, [Member(1, 2, beams.STEEL, beams.PLATE)], {})
        R = corotational.rotation((0.7, -1.1, 0.4))
        state = {n: (tuple(a - b for a, b in zip(corotational.turned(R, x), x)), R) for n, x in nodes.items()}
        self.assertLess(max(map(abs, space.forces(state)[0].values())), 1e-9 * 2.1e11 * 0.02)

    def test_the_stored_states_of_the_pushed_jacket_are_in_equilibrium(self):
        space, dead, push = jacket_push.space(), jacket_push.weight(), jacket_push.pattern()
        for move, (level, state) in zip(jacket_push.MOVES, jacket_push.states()):
            load = {p: dead.get(p, 0.0) + level * push.get(p, 0.0) for p in space.free}
            self.assertLess(max(map(abs, space.unbalance(state, load).values())), 2.0 * jacket_push.TOLERANCE, move)
            self.assertLess(abs(state[24][0][0] - move), 1e-4)


class Runs(unittest.TestCase):
    """What takes more than one figure of a run."""

    def test_lumped_masses_are_of_second_order_at_a_free_end_and_of_fourth_between_supports(self):
        run = run_of(self.__class__, "beam_modes")
        pages = run.text("TAModel.out").split("STRUCTURE FREQUENCIES")[:-1]
        last = [re.findall(r"CURRENT EIGENVALUES, ITERATION +\d+\n +(\S+)", page)[-1] for page in pages]
        first = [math.sqrt(float(value)) / (2.0 * math.pi) for value in last]
        for exact, found, ratios in ((10.1695841, first[:4], ((3.6, 3.7), (3.9, 3.93), (3.97, 4.0))),
                                     (28.5464552, first[4:], ((23.0, 24.5), (17.0, 18.5), (16.0, 17.0)))):
            errors = [exact - f for f in found]
            self.assertTrue(all(e > 0.0 for e in errors), errors)
            for coarse, fine, (low, high) in zip(errors, errors[1:], ratios):
                self.assertTrue(low < coarse / fine < high, errors)

    def test_reactions_of_the_pushed_jacket_equal_its_loads(self):
        run = run_of(self.__class__, "jacket_push")
        weight = -sum(jacket_push.weight().values())
        for step, (level, _) in enumerate(run.steps(3), 1):
            forces = [run.element("force", 2, element, 2 + step) for element in range(1, 13)]
            for axis, load, allowed in ((0, level.value * jacket_push.LEVEL_LOAD, level.half_unit * jacket_push.LEVEL_LOAD), (1, 0.0, 1.0), (2, -weight, 1.0)):
                total = sum(f.value for f in forces[axis::3])
                digits = sum(f.half_unit for f in forces[axis::3])
                self.assertLessEqual(abs(total - load), digits + allowed, f"step {step}, axis {axis}")

    def test_the_start_frame_is_of_first_order_and_the_frame_half_way_of_second(self):
        run = run_of(self.__class__, "roll_up")
        for code, low, high in ((1, 1.8, 2.1), (2, 3.9, 4.1), (3, 3.9, 4.1)):
            tip = code * (beam_paths.ROLL_ELEMENTS + 1)
            errors = [math.hypot(1.0 + run.displacement("X", tip, page).value, run.displacement("Y", tip, page).value) for page in (3, 6)]
            self.assertTrue(low < errors[0] / errors[1] < high, (code, errors))


if __name__ == "__main__":
    unittest.main()
