"""The solver of motions against closed forms and against the bar laws of truss.py; what decks say of motions can fail; wrong records."""
import math
import os
import shutil
import struct
import tempfile
import unittest

from support import PROGRAM, ProgramTest, ROOT
import dynamics
import motions
import run_deck
import yielding
from dynamics import Bar, Bars, Motion
from truss import Bar as EventBar
from truss import ELASTIC


def free(k, mass, velocity, dt, steps, alpha=0.0):
    motion = motions.oscillator(k, mass, alpha=alpha)
    motion.begin({}, {(2, 0): velocity})
    for _ in range(steps):
        motion.step(dt)
        yield motion


class Scheme(unittest.TestCase):
    def test_a_free_oscillation_turns_by_the_closed_form_and_keeps_its_energy(self):
        turn = 2.0 * math.atan(0.1)
        for n, motion in enumerate(free(400.0, 4.0, 1.0, 0.02, 200), 1):
            self.assertAlmostEqual(motion.u[0], 0.1 * math.sin(n * turn), delta=1e-13)
            self.assertAlmostEqual(motion.kinetic() + motion.plastic, 2.0, delta=1e-12)
            self.assertAlmostEqual(motion.unbalance(), 0.0, delta=1e-12)

    def test_dissipation_is_that_of_the_published_scheme_at_long_steps(self):
        for alpha in (-0.05, -0.1, -0.3):
            sizes = [abs(motion.u[0]) + abs(motion.v[0]) for motion in free(1.0e12, 1.0, 1.0, 1.0, 60, alpha)]
            ratio = (sizes[-1] / sizes[-21]) ** (1.0 / 20.0)
            self.assertAlmostEqual(ratio, (1.0 + alpha) / (1.0 - alpha), delta=0.03)

    def test_the_error_falls_with_the_square_of_the_step_with_damping_and_dissipation(self):
        omega, zeta, errors = 2.0 * math.pi, 0.05, []
        for steps in (100, 200, 400):
            dt = 2.0 / steps
            motion = motions.oscillator(omega ** 2, 1.0, alpha=-0.1, dmass=2.0 * zeta * omega)
            motion.begin({}, {(2, 0): 1.0}, {(2, 0): -2.0 * zeta * omega})
            for _ in range(steps):
                motion.step(dt)
            damped = omega * math.sqrt(1.0 - zeta * zeta)
            errors.append(abs(motion.u[0] - math.exp(-zeta * omega * 2.0) * math.sin(2.0 * damped) / damped))
        for coarse, fine in zip(errors, errors[1:]):
            self.assertAlmostEqual(math.log2(coarse / fine), 2.0, delta=0.1)

    def test_supports_that_move_with_the_mass_make_no_force(self):
        bars = Bars({1: (0.0,) * 3, 2: (10.0, 0.0, 0.0)}, [Bar(1, 2, 1.0e6)], [(1, 0), (2, 0)])
        motion = Motion(bars, {(2, 0): 3.0}, driven={(1, 0)})
        motion.begin({}, {(1, 0): 0.2, (2, 0): 0.2})
        for n in range(1, 51):
            motion.step(0.01, {}, {(1, 0): 0.002 * n})
            self.assertAlmostEqual(bars.force(1, motion.u), 0.0, delta=1e-8)

    def test_exact_motion_is_that_of_the_closed_forms(self):
        omega, dt = 3.0, 0.01
        step = dynamics.exact_motion(omega, 0.0, dt, [1.0] * 501)
        rise = dynamics.exact_motion(omega, 0.0, dt, [dt * n for n in range(501)])
        for n in range(501):
            t = dt * n
            self.assertAlmostEqual(step[n], (1.0 - math.cos(omega * t)) / omega ** 2, delta=1e-12)
            self.assertAlmostEqual(rise[n], (t - math.sin(omega * t) / omega) / omega ** 2, delta=1e-12)
        damped = dynamics.exact_motion(omega, 0.1, dt, [1.0] * 5001)
        self.assertAlmostEqual(max(damped), (1.0 + math.exp(-0.1 * math.pi / math.sqrt(0.99))) / omega ** 2, delta=1e-5)
        self.assertAlmostEqual(damped[-1], 1.0 / omega ** 2, delta=1e-7)

    def test_records_jump_end_and_hold_as_told(self):
        points = [(0.0, 0.0), (1.0, 2.0), (1.0, 5.0), (3.0, 5.0)]
        for t, inside, held in ((0.5, 1.0, 1.0), (1.0, 5.0, 5.0), (3.0, 5.0, 5.0), (3.1, 0.0, 5.0), (-0.1, 0.0, 0.0)):
            self.assertEqual(dynamics.line_at(points, t), inside)
            self.assertEqual(dynamics.line_at(points, t, None), held)


class Law(unittest.TestCase):
    def test_the_return_mapping_walks_as_the_bar_from_event_to_event(self):
        for r in (0.0, 0.05, 0.4):
            nodes = {1: (0.0, 0.0, 0.0), 2: (100.0, 0.0, 0.0)}
            mapped, walked = Bar(1, 2, 1000.0, r, 1.0), EventBar(1, 2, 1000.0, r, 1.0)
            for bar in (mapped, walked):
                bar.place(nodes)
            for target in (0.05, 0.13, 0.09, 0.3, -0.02, -0.4, -0.1, 0.2, 0.21, 0.0):
                left = target - walked.extension
                while abs(left) > 1e-14:
                    way = math.copysign(1.0, left)
                    if walked.reverses(way):
                        walked.mode = ELASTIC
                    part = min(walked.to_event(way), abs(left))
                    walked.advance(way * part, part < abs(left))
                    left -= way * part
                force, _, mapped.slip = mapped.law(target)
                self.assertAlmostEqual(force, walked.force, delta=1e-12, msg=f"{r} {target}")

    def test_ductilities_under_a_step_are_those_of_the_energy_balance(self):
        for load in yielding.PLASTIC_LOADS:
            motion = motions.oscillator(1.0, 0.0253302959, fy=1.0)
            motion.begin({(2, 0): load}, {}, {(2, 0): load / 0.0253302959})
            for _ in range(900):
                motion.step(0.002, {(2, 0): load})
            self.assertAlmostEqual(motion.extremes[2, 0][1] * (1.0 - load) / 0.5, 1.0, delta=2e-4)

    def test_diagonals_of_the_frame_yield_and_turn_many_times(self):
        _, motion = yielding.braced(0.002, 0.6)
        slips = [abs(bar.slip) * bar.k / bar.fy for bar in motion.model.bars[6:]]
        self.assertGreater(sum(slip > 0.2 for slip in slips), 2, slips)
        self.assertTrue(all(bar.slip == 0.0 for bar in motion.model.bars[:6]))


class Vocabulary(unittest.TestCase):
    """What decks say of motions fails when it is not so."""

    @classmethod
    def setUpClass(cls):
        cls.folders, cls.runs = [], {}
        for name in ("newmark_table", "plastic_step", "pulse_steps"):
            folder = tempfile.mkdtemp(prefix="tidearc-py-")
            cls.addClassCleanup(shutil.rmtree, folder)
            cls.runs[name] = run_deck.run_deck(PROGRAM, os.path.join(ROOT, "decks", name), folder)

    def holds(self, name, text):
        return run_deck.check(self.runs[name], text)[0]

    def test_a_figure_that_is_changed_in_its_third_digit_fails(self):
        kinds = set()
        for name, run in self.runs.items():
            for text in run_deck.head_lines(os.path.join(ROOT, "decks", name, "TAModel.inp"), "EXPECT"):
                before, mark, rest = text.partition(" = ")
                word = before.split()[0]
                if not mark or word in ("count", "number", "plastic+") or " macro " in before and " at " in before:
                    continue
                value, limit, allowed = rest.split(" ; ")[0].split()
                wrong = float(value) * 1.02 + (1.0 if before.endswith("type") or not float(value) else 0.0)
                wrong += 3.0 * float(allowed) if limit == "within" else 0.0
                source = f"{limit} {allowed}"
                self.assertTrue(run_deck.check(run, text)[0], text)
                self.assertFalse(run_deck.check(run, f"{before} = {wrong!r} {source}")[0], text)
                kinds.add(word)
        self.assertLessEqual({"displacement", "velocity", "acceleration", "envelope", "row", "force"}, kinds)

    def test_a_displacement_between_two_prints_is_seen(self):
        self.assertTrue(self.holds("newmark_table", "displacement X 2 macro 1 at 0.5 = 1.43095 tol 1e-5"))
        self.assertTrue(self.holds("newmark_table", "displacement X 2 macro 1 at 0.55 = 1.4810 tol 2e-2"))
        self.assertFalse(self.holds("newmark_table", "displacement X 2 macro 1 at 0.55 = 1.43095 tol 2e-2"))
        for place in ("macro 1 at 0.05", "macro 1 at 1.01", "macro 2 at 0.5"):
            self.assertFalse(self.holds("newmark_table", f"displacement X 2 {place} = 0.01 tol 1e9"), place)

    def test_lines_are_counted_by_type_and_macro(self):
        count = sum(row[0] == 4 for row in yielding.chosen_steps(3, yielding.MIDSTEP))
        self.assertTrue(self.holds("pulse_steps", f"lines macro 1 type 4 in {count} .. {count}"))
        self.assertFalse(self.holds("pulse_steps", f"lines macro 1 type 4 in {count + 1} .. 99"))
        self.assertFalse(self.holds("pulse_steps", "lines macro 1 type 3 in 1 .. 99"))
        self.assertFalse(self.holds("pulse_steps", "lines macro 4 type 1 in 0 .. 999"))

    def test_what_is_not_there_fails(self):
        for text in ("row macro 9 step 1 time = 0 tol 1", "row macro 1 step 9999 time = 0 tol 1", "row macro 1 step 1 nothing = 0 tol 1",
                     "envelope X 2 max print 1 = 0 tol 1", "velocity X 9 print 1 = 0 tol 1", "velocity Q 2 print 1 = 0 tol 1"):
            self.assertFalse(self.holds("pulse_steps", text), text)

    def test_a_tolerance_of_either_kind_is_kept(self):
        self.assertTrue(self.holds("newmark_table", "displacement X 2 print 5 = 1.4300 within 0.001"))
        self.assertFalse(self.holds("newmark_table", "displacement X 2 print 5 = 1.4290 within 0.001"))
        self.assertFalse(self.holds("newmark_table", "displacement Y 2 print 5 = 1e-3 tol 1e-1"))


class EnergyFiles(ProgramTest):
    def test_group_energies_are_those_of_the_independent_solver_and_sum_up(self):
        with open(os.path.join(ROOT, "decks/energies/TAModel.inp"), "rb") as file:
            self.run_deck(file.read())
        with open(os.path.join(self.folder, "TAP45"), "rb") as file:
            data = file.read()
        self.assertEqual(len(data), 100 * (8 + 4 * 8))
        motion, wanted, before = yielding.energy_row(), [0.0] * 4, None
        for n in range(101):
            if n:
                motion.step(0.01, yielding.energy_load(n))
            now = []
            for bar in motion.model.bars:
                stretch = motion.model.stretch(bar, motion.u)
                force, tangent, _ = bar.law(stretch)
                now.append((stretch, force, (bar.BO * bar.k + bar.BT * tangent) * motion.model.stretch(bar, motion.v)))
            for g, (new, old) in enumerate(zip(now, before or now)):
                wanted[2 * g] += 0.5 * (new[0] - old[0]) * (new[1] + old[1])
                wanted[2 * g + 1] += 0.5 * (new[0] - old[0]) * (new[2] + old[2])
            before = now
            if n:
                length, *figures, again = struct.unpack_from("<i4di", data, 40 * (n - 1))
                self.assertEqual((length, again), (32, 32))
                for place, (figure, value) in enumerate(zip(figures, wanted)):
                    self.assertAlmostEqual(figure, value, delta=1e-9, msg=f"step {n}, item {place}")


def record_deck(kind, control, points, layout="(2F10.0)"):
    """A mass on a spring with one force or displacement record, used in two macros."""
    force = kind == "force"
    heads = ["    1", "RECORD".ljust(60) + layout, control] + points
    counts = "    0    1    0    1    0   10" if force else "    0    0    1    0    1   10"
    macro = ["DYN2", "      0.01", f"     5   0    0{'    1    0' if force else '    0    1'}", "    5    1    1    1    0       1.0",
             "    1    1       0.0       1.0    2"]
    lines = [" STAR   P4.314  RECORD", "", "", " CORE SYMM         0", "    3    3    0    0    0    0    2    0    1    1", "    1       0.0",
             "    2      10.0", "    3      20.0", "    1    111111", "    2    011111    3", "    3       1.0",
             "    1    2    1                         SPRINGS", "    1    1", "    1    1000.0", "", "    1       1.0", "",
             "    1    1    2    1    1", "    2    2    3    1    1", "", counts]
    return ("\n".join(lines + heads + ["   -1"] + macro + macro + ["NONE", " STOP"]) + "\n").encode()


KINDS = (("force", "DYNAMIC FORCE RECORD"), ("displacement", "DISPLACEMENT RECORD"))


class WrongRecords(ProgramTest):
    def control(self, name="motion.dat", points=3, interval="0.0"):
        return f"{points:5d}    0{interval:>10}       1.0         1{name:<40}"

    def run_file(self, kind, data, **options):
        if data is not None:
            self.place("motion.dat", data)
        return self.run_deck(record_deck(kind, self.control(**options), []))

    def test_a_good_file_is_read(self):
        for kind, _ in KINDS:
            outcome = self.run_file(kind, b"       0.0       0.0\n       1.0       2.0\n       3.0       4.0\n")
            self.assertEqual(outcome.status, 0, outcome.errors)

    def test_short_binary_and_falling_files_stop_the_run_by_the_name_of_the_kind(self):
        for kind, name in KINDS:
            for data in (b"", b"       0.0       1.0\n", b"\0\1\2\377" * 500, b"       0.0       abc\n" * 3,
                         b"       0.0       1.0\n       1.0       1.0\n       0.5       1.0\n"):
                outcome = self.run_file(kind, data)
                self.assert_fails(outcome, 1)
                told = f"PROGRAM STOPS DUE TO DATA ERROR IN READING {name}", "PROGRAM STOPS DUE TO THE END OF FILE ERROR"
                self.assertTrue(any(text in outcome.report for text in told), outcome.report[-400:])
                self.assertIn("motion.dat", outcome.report + outcome.errors)

    def test_a_folder_and_a_missing_file_stop_the_run(self):
        for kind, name in KINDS:
            self.clear()
            outcome = self.run_file(kind, None)
            self.assert_fails(outcome, 1)
            self.assertIn(" ERROR! CAN NOT OPEN FILE, motion.dat", outcome.report)
            os.mkdir(os.path.join(self.folder, "motion.dat"))
            outcome = self.run_file(kind, None)
            self.assert_fails(outcome, 1)
            self.assertIn(f"PROGRAM STOPS DUE TO DATA ERROR IN READING {name}", outcome.report)

    def test_more_points_than_there_is_room_for_stop_the_run(self):
        for kind, _ in KINDS:
            outcome = self.run_file(kind, b"       0.0       1.0\n" * 20, points=11)
            self.assert_fails(outcome, 1)
            self.assertIn("NUMBER OF RECORD VALUES EXCEEDS THE MAXIMUM ALLOWABLE NUMBER.", outcome.report)

    def test_a_record_on_the_deck_that_falls_stops_the_run(self):
        for kind, name in KINDS:
            points = ["       0.0       1.0", "       1.0       1.0", "       0.9       1.0"]
            outcome = self.run_deck(record_deck(kind, "    3    0       0.0       1.0", points))
            self.assert_fails(outcome, 1)
            self.assertIn(f"PROGRAM STOPS DUE TO DATA ERROR IN READING {name}", outcome.report)


if __name__ == "__main__":
    unittest.main()
