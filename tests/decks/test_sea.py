"""The waves and loads of the oracle against published figures; load lines and load files add up; core and disk; wrong wave sections and files."""
import math
import os
import shutil
import struct
import tempfile
import unittest

from equivalence import Result, deck_of, same_bytes, with_storage
from support import PROGRAM, ProgramTest, ROOT, read
import run_deck
import sea_jacket
import sea_push
import wave_pattern
from sea_loads import Profile, Sea, Tube, buoyancy, displaced, sum_of, total
from sea_piles import told_loads
from waves import Airy, Steady, Stokes, grid_file, sampled

EARTH = 9.80665
# Exact steady waves by a Fourier series of order 24 (32 for the longest), an independent program: H, T, d, g; L, crest, crest velocity, Q
EXACT = ((3.0, 8.0, 200.0, EARTH, 100.767377, 1.57097974, 1.28905883, 8.08926878), (8.0, 10.0, 50.001, EARTH, 155.078362, 4.38552844, 3.07033526, 12.2725964),
         (15.0, 14.0, 100.0, EARTH, 304.000177, 8.18191166, 4.06805134, 24.058385), (25.0, 14.0, 100.0, EARTH, 315.341342, 14.4734853, 7.54100964, 25.9198729),
         (9.0, 12.0, 20.0, EARTH, 163.389125, 6.14918821, 5.41674677, 9.57664944), (4.0, 15.0, 10.0, EARTH, 156.387621, 3.11655392, 3.4530604, 5.59546746),
         (60.0, 13.0, 300.0, 32.174, 883.270752, 33.8155592, 18.4887129, 71.8247582), (12.0, 8.0, 150.0, EARTH, 111.882595, 7.21472198, 6.63108793, 9.97227907))
# Stokes, fifth order with the corrected coefficient, an independent program: the same
FIFTH = ((8.0, 10.0, 50.001, EARTH, 155.064869, 4.3831256, 3.06982133, 12.2704746), (25.0, 14.0, 100.0, EARTH, 315.030223, 14.4074543, 7.52623724, 25.8692892),
         (9.0, 12.0, 20.0, EARTH, 162.986146, 6.06938645, 5.33261049, 9.53491207), (5.0, 5.5, 150.0, EARTH, 51.6545568, 2.91141516, 3.82539549, 4.49718992))
# on a current: U, L, crest, crest velocity with the current, Q of H 15, T 14, d 100
CARRIED = ((0.5, 315.750054, 8.16861675, 4.48303936, 24.817741), (1.5, 338.414134, 8.14933942, 5.33923746, 26.2334685))

# u, w, horizontal and vertical acceleration of H 15, T 14, d 100 at phase (degrees) and elevation, an independent program; local accelerations of
# Airy and Stokes, those of the particles in the steady wave
MOTION = {Airy: ((0.0, 7.5, 4.04523258, 0.0, 0.0, -1.77739409), (180.0, -7.5, -2.97307931, 0.0, 0.0, 1.28199053), (180.0, -20.0, -2.31367459, 0.0, 0.0, 0.970219359)),
          Stokes: ((0.0, -20.0, 2.30591703, 0.0, 0.0, -0.974950059), (30.0, 6.74575481, 3.39109133, 1.95832555, 0.930412743, -1.50534227),
                   (90.0, -20.0, -0.0288694021, 2.11751505, 1.02320968, 0.0258237108), (135.0, 0.0, -2.38860382, 2.2437656, 1.00957141, 1.03995791)),
          Steady: ((0.0, 8.18191166, 4.06805134, 0.0, 0.0, -1.48236296), (60.0, 3.28081446, 1.76685781, 3.10102221, 1.44897812, -0.486044374),
                   (135.0, -20.0, -1.61085607, 1.46702951, 0.702143404, 0.769236002), (90.0, -100.0, -0.00213030872, 0.0, 0.377450027, 0.0))}


class Waves(unittest.TestCase):
    def near(self, values, wanted, tol):
        for value, want in zip(values, wanted):
            self.assertAlmostEqual(value / want, 1.0, delta=tol)

    def test_the_steady_wave_is_that_of_another_program(self):
        for H, T, d, g, *wanted in EXACT:
            wave = Steady(H, T, d, g, order=24 if d == 10.0 else 16)
            self.near((wave.L, wave.crest, wave.motion(0.0, wave.crest, 0.0)[0], wave.Q), wanted, 1e-8)
        for U, *wanted in CARRIED:
            wave = Steady(15.0, 14.0, 100.0, EARTH, U)
            self.near((wave.L, wave.crest, wave.motion(0.0, wave.crest, 0.0)[0] + U, wave.Q), wanted, 1e-8)

    def test_the_fifth_order_is_that_of_another_program(self):
        for H, T, d, g, *wanted in FIFTH:
            wave = Stokes(H, T, d, g)
            self.near((wave.L, wave.eta(0.0, 0.0), wave.motion(0.0, wave.eta(0.0, 0.0), 0.0)[0], wave.Q), wanted, 1e-8)

    def test_motions_are_those_of_another_program(self):
        for kind, rows in MOTION.items():
            wave = kind(15.0, 14.0, 100.0, EARTH)
            for phase, z, *wanted in rows:
                for found, want in zip(wave.motion(math.radians(phase) / wave.k, z, 0.0), wanted):
                    self.assertAlmostEqual(found, want, delta=2e-7, msg=f"{kind.__name__} {phase} {z}")
        stretched = Airy(8.0, 10.0, 50.0, EARTH, wheeler=True).motion(0.0, 3.0, 0.0)[0]
        self.assertAlmostEqual(stretched, 2.49867381, delta=1e-8)
        self.assertAlmostEqual(Profile([(0.0, (1.0, 0.0)), (50.0, (0.2, 0.0))], 2).at_level(50.0 - 53.0 * 50.0 / 54.0)[0], 0.985185185, delta=1e-9)

    def test_accelerations_are_what_the_velocities_do(self):
        waves = {"local": (Airy(12.0, 12.0, 50.0, 9.81), Stokes(12.0, 12.0, 50.0, 9.81)), "total": (Steady(12.0, 12.0, 50.0, 9.81),)}
        h = 1e-5
        for kind, chosen in waves.items():
            for wave in chosen:
                for x, z, t in ((0.0, -5.0, -1.0), (30.0, 2.0, 0.5), (-70.0, -49.0, 3.3)):
                    u, w, a, b = wave.motion(x, z, t)
                    rates = [[(p - q) / (2.0 * h) for p, q in zip(wave.motion(*more)[:2], wave.motion(*less)[:2])]
                             for more, less in (((x, z, t + h), (x, z, t - h)), ((x + h, z, t), (x - h, z, t)), ((x, z + h, t), (x, z - h, t)))]
                    drift = (u, w) if kind == "total" else (0.0, 0.0)
                    for found, c in ((a, 0), (b, 1)):
                        self.assertAlmostEqual(found, rates[0][c] + drift[0] * rates[1][c] + drift[1] * rates[2][c], delta=1e-7)
                    self.assertAlmostEqual(rates[1][0] + rates[2][1], 0.0, delta=1e-8)  # no water is made

    def test_the_surface_of_the_steady_wave_moves_with_its_water_under_no_pressure(self):
        self.assertLess(Steady(12.0, 12.0, 50.0, 9.81).surface_error(), 1e-7)
        self.assertLess(Steady(18.0, 14.0, 75.0, 9.81, 1.5).surface_error(), 1e-7)

    def test_the_fifth_order_leaves_a_head_that_falls_with_the_sixth_power(self):
        left = []
        for H in (2.0, 4.0):
            wave = Stokes(H, 8.0, 12.0, 9.81)
            heads = []
            for m in range(25):
                x = math.pi * m / 24.0 / wave.k
                u, w, _, _ = wave.motion(x, wave.eta(x, 0.0), 0.0)
                heads.append(wave.eta(x, 0.0) + ((u - wave.C) ** 2 + w * w) / (2.0 * 9.81) - wave.Q)
            left.append(math.sqrt(sum(v * v for v in heads) / 25.0) * wave.k)
        order = math.log(left[1] / left[0]) / math.log(Stokes(4.0, 8.0, 12.0, 9.81).l / Stokes(2.0, 8.0, 12.0, 9.81).l)
        self.assertGreater(order, 5.5)


class Loads(unittest.TestCase):
    def test_a_pile_in_an_airy_wave_bears_the_closed_form(self):
        for H, T, d, D, CD, FD, FI, MD, MI in ((8.0, 10.0, 50.001, 1.0, 1.0, 45452.8214, 61205.087, 1672557.03, 1915047.73),
                                               (15.0, 14.0, 100.0, 2.0, 0.7, 222277.76, 460082.013, 16463776.4, 28936826.7)):
            tube, sea = Tube((0.0, 0.0, -d), (0.0, 0.0, 0.0), D, CD), Sea(Airy(H, T, d, EARTH), 1025.0, d)
            crest, quarter = (total(tube.loads(sea, t, 0.0), (0.0, 0.0, -d)) for t in (0.0, 0.75 * T))
            for (F, M), force, moment in ((crest, FD, MD), (quarter, FI, MI)):
                self.assertAlmostEqual(F[0] / force, 1.0, delta=1e-6)
                self.assertAlmostEqual(M[1] / moment, 1.0, delta=1e-6)

    def test_a_leaning_tube_in_a_uniform_current_bears_its_normal_drag(self):
        tube = Tube((0.0, 0.0, -20.0), (10.0, 5.0, -5.0), 0.8)
        sea = Sea(None, 1025.0, 50.0, current=Profile([(0.0, (1.5, 0.0)), (50.0, (1.5, 0.0))]))
        for found, wanted in zip(total(tube.loads(sea, 0.0))[0], (10418.5755, -2083.7151, -6251.1453)):
            self.assertAlmostEqual(found, wanted, delta=1e-3)

    def test_the_jacket_bears_the_history_of_another_program(self):
        sea = Sea(Airy(8.0, 10.0, 50.001, EARTH), 1025.0, 50.001)
        for t, (independent, hydrodyn) in told_loads("jck_clean__w_8_10").items():
            F, M = sum_of(sea_jacket.tubes(), sea, t, 0.0, panels=1)
            for found, one, other, size in zip((F[0], F[2], M[1]), independent, hydrodyn, (1.0, 1.0, 20.0)):
                self.assertAlmostEqual(found, one, delta=0.6 * size)  # of 759 kN and 14 MNm
                self.assertAlmostEqual(found, other, delta=8.0 * size)

    def test_buoyancy_is_the_weight_of_the_water_displaced(self):
        for A, B in (((0.0, 0.0, -10.0), (8.0, 0.0, -4.0)), ((0.0, 0.0, -4.0), (8.0, 0.0, 2.0)), ((3.0, 1.0, 2.0), (1.0, -1.0, -7.0))):
            FI, MI, FJ, MJ = buoyancy(A, B, 1.0, 10.05525)
            lift = 10.05525 * displaced(A, B, 1.0)
            self.assertAlmostEqual(FI[2] + FJ[2], lift, delta=1e-9)
            self.assertAlmostEqual(FI[0] + FJ[0], 0.0, delta=1e-9)


# --- whole runs -------------------------------------------------------------------------------------------------------

class WaveRun(unittest.TestCase):
    """One run of the jacket in its wave, with load lines and member forces in files."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="tidearc-py-")
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.left = run_deck.run_deck(PROGRAM, os.path.join(ROOT, "decks/jacket_wave"), cls.folder)

    def bars(self, step):
        return [self.left.element("force", 3, bar, step).value for bar in range(1, 7)]

    def balance(self, pattern):
        F, M = pattern.total()
        at = sea_jacket.CENTRE
        return F, (M[0] + at[2] * F[1], M[1] - at[2] * F[0], M[2])

    def test_load_lines_add_up_to_what_the_bars_bear(self):
        """Lines tell straight loads between the ends of a segment. Drag grows faster than that towards the surface: a few percent more."""
        sea = Sea(sea_jacket.waves_along_x()[0], 1025.0, 50.001, upper=1e-9)
        for step in (3, 8, 17, 18, 20):
            pattern = wave_pattern.pattern_at(self.folder, 0.5 * step)
            bars = self.bars(step)
            lines = sea_jacket.balance(*self.balance(pattern))
            straight = [load for tube in sea_jacket.tubes() for load in tube.straight_loads(sea, 0.5 * step)]
            for found, told, bar in zip(lines, sea_jacket.balance(*total(straight, sea_jacket.CENTRE)), bars):
                self.assertAlmostEqual(found, told, delta=3e-4 * max(abs(v) for v in bars))  # places have two decimals
                self.assertAlmostEqual(found, bar, delta=0.05 * max(abs(v) for v in bars))
            self.assertGreater(len(pattern.loads), 40)

    def test_times_of_load_lines_are_counted(self):
        lines = read(self.folder, "TAModel.sac").splitlines()
        self.assertTrue(all(len(line) == 80 and line.startswith("LOAD") for line in lines))
        times = {line[72:80] for line in lines}
        self.assertEqual(int(read(self.folder, "TAModel.wavno")), len(times))
        self.assertGreaterEqual({float(t) for t in times}, {0.5 * n for n in range(1, 21)})
        pairs = [line for line in lines if line[60:64] == "MEMB"]
        self.assertEqual({line[5] for line in pairs}, {"Y", "Z"})
        self.assertEqual(len([line for line in pairs if line[5] == "Y"]), len([line for line in pairs if line[5] == "Z"]))

    def test_member_end_forces_in_the_file_are_in_balance_with_the_bars(self):
        with open(os.path.join(self.folder, "TAModel.rlo"), "rb") as file:
            data, records, at = file.read(), [], 0
        while at < len(data):
            length, = struct.unpack_from("<i", data, at)
            records.append(data[at + 4:at + 4 + length])
            self.assertEqual(struct.unpack_from("<i", data, at + 4 + length)[0], length)
            at += length + 8
        self.assertEqual(struct.unpack_from("<i", records[0])[0], 20)
        self.assertAlmostEqual(struct.unpack_from("<d" if len(records[0]) == 12 else "<f", records[0], 4)[0], 0.5)
        members = [struct.unpack("<3i6f", r) for r in records[1:]]
        self.assertEqual(len(members), 20 * 114)  # and the two arms
        model = wave_pattern.Model(read(self.folder, "TAModel.out").split("\n"))
        for step in (1, 10, 17):
            F = [0.0] * 3
            for element, i, j, *forces in members[114 * (step - 1):114 * step]:
                if i == 62 and element > 100:  # stubs: the force at the bed on the jacket
                    (start, end), _ = model.ends(i, j)
                    axes = wave_pattern.member_axes(start, end, model.nodes[61], "SACS")
                    F = [f + sum(q * e[c] for q, e in zip(forces[:3], axes)) for c, f in enumerate(F)]
            bars = self.bars(step)
            self.assertAlmostEqual(-F[0], bars[0], delta=2e-5 * max(abs(v) for v in bars))
            self.assertAlmostEqual(-F[2], sum(bars[2:5]), delta=2e-5 * max(abs(v) for v in bars))


class Pushed(ProgramTest):
    def test_the_pattern_of_the_pushed_jacket_is_that_of_its_recorded_wave(self):
        outcome = self.run_deck(deck_of("wave_push").encode("latin-1"))
        self.assertEqual(outcome.status, 0, outcome.errors)
        pattern, cards = wave_pattern.pattern_at(self.folder, sea_push.TIME), sea_push.pattern()
        size = max(abs(v) for v in cards.values())
        self.assertEqual(set(pattern.loads), {n for n, _ in cards})
        for (node, c), value in cards.items():
            self.assertAlmostEqual(pattern.loads[node][c], value, delta=1e-6 * size, msg=f"node {node}")
        sea = Sea(Steady(8.0, 10.0, 50.001, EARTH, points=37), 1025.0, 50.001)
        straight = total([load for tube in sea_jacket.tubes() for load in tube.straight_loads(sea, sea_push.TIME)])
        for found, told, load in zip(pattern.total(), straight, sum_of(sea_jacket.tubes(), sea, sea_push.TIME, "surface")):
            for a, b, c in zip(found, told, load):
                self.assertAlmostEqual(a, b, delta=3e-4 * max(abs(v) for v in told))
                self.assertAlmostEqual(a, c, delta=0.04 * max(abs(v) for v in load))


class Equivalent(unittest.TestCase):
    def test_disk_jobs_have_the_bytes_of_core_jobs_in_waves(self):
        for name in ("pile_wave", "wave_oscillator", "irregular_sea", "embedded_wave", "wave_elements", "wave_macros", "jacket_wave_current"):
            with self.subTest(deck=name):
                core, disk = Result(deck_of(name)), Result(with_storage(deck_of(name), " DISK SYMM         0"))
                self.assertEqual(core.status, 0, core.errors)
                self.assertTrue(core.analysis)
                self.assertEqual(same_bytes(core, disk), [])


# --- a small deck of our own ------------------------------------------------------------------------------------------

def field(value):
    return (f"{value}." if isinstance(value, int) else value if isinstance(value, str) else f"{value:.6g}").rjust(10)


def ints(*values):
    return "".join(f"{v:5d}" for v in values)


def reals(*values):
    return "".join(field(v) for v in values)


WATER = "   -Z     " + reals(0, 10.05525, 1.025) + ints(0, 0) + reals(9.81)
MEMBERS = (((0, 0, -50), (0, 0, -20)), ((0, 0, -20), (0, 0, 10)))


def control(kind, current=0, ramp=0.0, noramp=0):
    return ints(kind, current, 0, 0) + field(ramp) + ints(0) + reals(0, 0) + ints(noramp, 0)


def regular(H=6, T=8, d=50, direction=(1, 0, 0), limits=(0, 0, 0), counts=(100,)):
    return [reals(H, T, *direction, 0, d, 0, 0), reals(*limits) + ints(*counts)]


def deck(wave, water=WATER, members=MEMBERS, kind=3, steps=4, krisav=0, islult=0, dt=1.0, iwave=1):
    """Members that are held at all their ends; the last one may move along x."""
    places = sorted({p for member in members for p in member})
    number = {p: n for n, p in enumerate(places, 1)}
    lines = [" START  P4.314  SEA", "         0    0", "", " CORE SYMM         0",
             ints(len(places), len(places), 0, 0, 0, 0, 2, 0, 0, 1, 1 if water else 0)] + ([water] if water else [])
    lines += [ints(n) + reals(*p) for p, n in number.items()] + [ints(1) + "    111111" + ints(len(places) - 1), ints(len(places)) + "    011111"]
    if kind == 1:
        lines += [ints(1, len(members), 1), ints(1, 1, 4), ints(1) + reals(210000000), "", ints(1) + reals(0.1, 0, 0, 1, 1, 2)[:60], ""]
        lines += [ints(n, number[a], number[b], 1, 1) + field(0) + ints(0, 0, 0, 0, 4) for n, (a, b) in enumerate(members, 1)]
    else:
        lines += [ints(3, len(members), 1), ints(1, 1, 4, 1), ints(1) + "     " + reals(210000000, 0.3), ints(1, 0) + reals(1, 0.05), reals(1, 1, 2), ""]
        lines += [ints(n, number[a], number[b], 0, 0, 1, 1) for n, (a, b) in enumerate(members, 1)]
    lines += [ints(0), ints(0, 0, 0, 0, 0, 0, iwave), *wave, ints(0, 0, 0)]
    lines += ["DYN2", field(dt), f"{steps:6d}{-1:4d}" + ints(*[0] * 10, krisav), ints(1, 1, 0, 1, 0) + field(1.0e6) + ints(0, 0, 0, islult)]
    return ("\n".join(lines + ["NONE", " STOP"]) + "\n").encode()


def uniform(levels=((0, 1.5), (50, 1.5))):
    return [ints(1, len(levels), 0) + field(0) + " " * 50 + ints(1), field(0)] + [reals(level, 1, 0, 0, v) for level, v in levels]


class Lines(ProgramTest):
    def test_straight_loads_come_out_of_the_lines_as_they_went_in(self):
        """Drag of a uniform current: members write lines in their own axes, trusses in the global ones."""
        leaning = (((0, 0, -20), (10, 5, -5)), ((0, 0, -20), (-6, 4, -10)))
        sea = Sea(None, 1.025, 50.0, current=Profile([(0.0, (1.5, 0.0)), (50.0, (1.5, 0.0))]))
        wanted = total([load for A, B in leaning for load in Tube(A, B, 1.0).loads(sea, 1.0)])
        for kind, system in ((3, "MEMB"), (1, "GLOB")):
            self.clear()
            outcome = self.run_deck(deck([control(3, 1), *uniform()], members=leaning, kind=kind, steps=2, krisav=1, islult=1))
            self.assertEqual(outcome.status, 0, outcome.errors + outcome.report[-500:])
            self.assertIn(f"{system} UNIF", read(self.folder, "TAModel.sac"))
            found = wave_pattern.pattern_at(self.folder, 2.0).total()
            size = max(abs(v) for v in wanted[0])
            for a, b in zip(found[0], wanted[0]):
                self.assertAlmostEqual(a, b, delta=1e-3 * size)  # lengths have two decimals
            for a, b in zip(found[1], wanted[1]):
                self.assertAlmostEqual(a, b, delta=2e-3 * max(abs(v) for v in wanted[1]))

    def test_without_lines_there_is_no_count(self):
        self.run_deck(deck([control(1), *regular()]))
        self.assertFalse({"TAModel.sac", "TAModel.rlo", "TAModel.wavno"} & set(os.listdir(self.folder)))

    def test_the_recording_option_solves_nothing(self):
        outcome = self.run_deck(deck([control(1), *regular()], krisav=1, islult=1))
        self.assertEqual(outcome.status, 0, outcome.errors)
        self.assertTrue(os.path.getsize(os.path.join(self.folder, "TAModel.sac")))


class WrongSections(ProgramTest):
    def stops(self, wave, words, status=1, **options):
        outcome = self.run_deck(deck(wave, **options))
        self.assert_fails(outcome, status)
        self.assertIn(words, outcome.report, outcome.errors)
        return outcome

    def test_a_good_section_runs(self):
        outcome = self.run_deck(deck([control(1), *regular()]))
        self.assertEqual(outcome.status, 0, outcome.errors)

    def test_wave_types_that_there_are_not_stop_the_run(self):
        for kind in (9, -1, 99999):
            self.stops([control(kind), *regular()], "WAVE TYPE MUST BE BETWEEN 0 AND 7")

    def test_heights_and_periods_that_are_not_positive_stop_at_once(self):
        for kind in (1, 2, 5, 8):
            for H in (0, -1):
                self.stops([control(kind), *regular(H=H)], "ERROR-----  WAVE HEIGHT IS NOT POSITIVE.")
            for T in (0, -8):
                self.stops([control(kind), *regular(T=T)], "ERROR-----  WAVE PERIOD IS NOT POSITIVE.")

    def test_a_direction_that_leaves_the_horizontal_plane_stops(self):
        self.stops([control(1), *regular(direction=(1, 0, 0.1))], "WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE")

    def test_one_current_level_stops(self):
        self.stops([control(1, 1), *uniform(((0, 1.0),)), *regular()], "NUMBER OF CURRENT LEVEL IS LESS THAN 2")

    def test_as_many_scale_points_as_a_card_can_ask_for_are_read(self):
        card = control(1)[:55] + "99999    0"
        outcome = self.run_deck(deck([card, *regular(), *(reals(n, 1) for n in range(3))]))
        self.assertNotIn("NORAMP CANNOT EXCEED 10000", outcome.report)
        self.assertNotEqual(outcome.status, 0)  # the cards come to an end before

    def test_waves_beyond_breaking_stop_without_the_limit(self):
        outcome = self.stops([control(5), *regular(H=14, T=8, d=20)], "WAVE HEIGHT EXCEEDS BREAKING WAVE HEIGHT OF APPROXIMATETELY    0.00 UNITS LENGTH.")
        self.assertIn("CHECK INPUT PARAMETERS.", outcome.report)
        self.stops([control(5), *regular(H=21, T=8, d=10)], "UNREALISTIC WAVE DEFINED, CHECK WAVE HEIGHT")
        near = self.run_deck(deck([control(5), *regular(H=12.4, T=8, d=20)]))
        self.assertIn("INPUT WAVE PARAMETERS ARE WITHIN THE ACCURACY OF THE BREAKING INDICATOR", near.report)

    def test_a_stream_function_whose_sums_overflow_stops(self):
        self.stops([control(5), *regular(T=8, d=700)], "CONVERGENCE IMPOSSIBLE")

    def test_without_a_gravity_card_there_is_no_load(self):
        outcome = self.run_deck(deck([control(1), *regular()], water=None, krisav=1))
        self.assertEqual(outcome.status, 0, outcome.errors)
        for line in read(self.folder, "TAModel.sac").splitlines():
            self.assertTrue("UNIF" not in line or wave_pattern.compact(line[23:30]) == 0.0, line)

    def test_a_misspelled_vertical_axis_analyses_nothing(self):
        outcome = self.run_deck(deck([control(1), *regular()], water=WATER.replace("-Z", "-z")))
        self.assertNotEqual(outcome.status, 0)
        self.assertIn("ERROR IN SPELLING OF WATER DIRECTION, WDIR =", outcome.report)

    def test_cards_that_are_missing_or_not_numbers_are_told_with_their_line(self):
        outcome = self.run_deck(deck([control(1), *regular()]).replace(b"        6.        8.", b"       6x.        8."))
        self.assert_fails(outcome, 2)
        whole = deck([control(1), *regular()])
        outcome = self.run_deck(whole[:whole.index(b"        6.        8.")])
        self.assert_fails(outcome, 2)

    def test_load_files_without_waves_stop(self):
        outcome = self.run_deck(deck([], krisav=1, iwave=0))
        self.assert_fails(outcome, 1)
        self.assertIn("***ERROR*** NODAL WAVE OUTPUT PARAMETERS INCONSISTENT (SEG H & SEG L)", outcome.report)
        outcome = self.run_deck(deck([control(1), *regular()], krisav=0, islult=1))
        self.assertNotEqual(outcome.status, 0)
        self.assertIn("EXECUTATION TO BE TERMINATED", outcome.report)


COLUMNS, ROWS = (-4.0, 1.0, 6.0), (-50.0, -25.0, 0.0, 12.0)


class GridFiles(ProgramTest):
    def grid(self, steps=4):
        return sampled(Airy(6.0, 8.0, 50.0, 9.81), COLUMNS, ROWS, 1.0, steps)

    def cards(self, first=1, limits=(0, 0)):
        return [control(6), reals(50, 1, 0, 0, *limits) + ints(0, first) + field(0), "waves.grd"]

    def run_grid(self, data, first=1, **options):
        self.clear()
        if data is not None:
            self.place("waves.grd", data)
        return self.run_deck(deck(self.cards(first), **options))

    def stops(self, data, words=None, **options):
        outcome = self.run_grid(data, **options)
        self.assertIn(outcome.status, (1, 2), outcome.errors)
        self.assertTrue(outcome.errors.strip())
        self.assertFalse(outcome.done)
        if words:
            self.assertIn(words, outcome.report + outcome.errors)

    def test_a_whole_file_serves_as_many_steps_as_it_has(self):
        outcome = self.run_grid(grid_file(self.grid()))
        self.assertEqual(outcome.status, 0, outcome.errors)
        self.stops(grid_file(self.grid()), steps=5)
        self.assertEqual(self.run_grid(grid_file(self.grid(), before=3), first=4).status, 0)
        self.stops(grid_file(self.grid(), before=3), first=5)

    def test_a_file_that_ends_early_stops_wherever_it_ends(self):
        whole = grid_file(self.grid())
        for length in (0, 3, 4, 8, 12, 16, 23, 24, 40, 60, 80, 100, 500, len(whole) - 8, len(whole) - 1):
            self.stops(whole[:length])

    def test_a_file_that_says_more_columns_than_it_has_stops(self):
        whole = grid_file(self.grid(1))
        for columns, rows in ((100, 4), (3, 200), (50, 100)):
            self.stops(whole[:4] + struct.pack("<2i", columns, rows) + whole[12:])

    def test_numbers_of_columns_and_rows_out_of_range_stop(self):
        whole = grid_file(self.grid())
        for columns, rows in ((0, 4), (101, 4), (-1, 4), (3, 0), (3, 201), (3, -5), (2 ** 31 - 1, 2 ** 31 - 1)):
            self.stops(whole[:4] + struct.pack("<2i", columns, rows) + whole[12:], " SHOULD NOT BE 0 OR GREATER THAH ")

    def test_no_file_and_a_folder_stop(self):
        self.stops(None, "FAIL TO OPEN GRID FILE")
        self.clear()
        os.mkdir(os.path.join(self.folder, "waves.grd"))
        outcome = self.run_deck(deck(self.cards()))
        self.assertIn(outcome.status, (1, 2))

    def test_members_outside_the_columns_stop_with_the_point(self):
        outside = (((0, 0, -50), (8, 0, -20)), ((8, 0, -20), (9, 0, 10)))
        self.clear()
        self.place("waves.grd", grid_file(self.grid()))
        outcome = self.run_deck(deck(self.cards(), members=outside))
        self.assert_fails(outcome, 1)
        for words in ("FORCE POINT OUTSIDE LIMITS OF GRID", "POINT COORDINATES =", "TRANSFORMED COORDINATES ="):
            self.assertIn(words, outcome.report)

    def test_a_vertical_axis_that_points_down_stops(self):
        self.place("waves.grd", grid_file(self.grid()))
        outcome = self.run_deck(deck(self.cards(limits=(-10, 12)), water=WATER.replace("-Z", " Z")))
        self.assert_fails(outcome, 1)
        self.assertIn("GLOBAL VERTICAL AXIS IS NOT DIRECTED UP (OPPOSITE GRAVITY)", outcome.report)

    def test_the_jacket_on_a_fine_grid_to_still_water_bears_the_published_history(self):
        """A grid tells the surface apart from the motion: it stands above still water at all times, where the upper limit cuts."""
        airy = Airy(8.0, 10.0, 50.001, EARTH)
        columns, rows = [-7.0 + k for k in range(15)], [-50.001 + 50.001 * k / 50.0 for k in range(51)] + [25.0]
        self.place("waves.grd", grid_file(sampled(airy, columns, rows, 0.5, 20, surface=2.0)))
        text = deck_of("jacket_wave").split("\n")
        start = next(n for n, line in enumerate(text) if "wave: type" in line)
        second = [n for n, line in enumerate(text) if "P4.314" in line and "STREAM" in line][0]
        cards = [control(6), reals("50.001", 1, 0, 0, "1.E-9", 0) + ints(0, 1) + field(0), "waves.grd"]
        outcome = self.run_deck(("\n".join(text[:start] + cards + text[start + 3:second] + [" STOP"]) + "\n").encode("latin-1"))
        self.assertEqual(outcome.status, 0, outcome.errors)
        run = run_deck.Run(self.folder, 0)
        for t, (independent, _) in told_loads("jck_clean__w_8_10").items():
            step = round(2.0 * t) or 20
            wanted = sea_jacket.balance((independent[0], 0.0, independent[1]), (0.0, independent[2] + 50.001 * independent[0], 0.0))
            for bar in (1, 3, 4):
                self.assertAlmostEqual(run.element("force", 3, bar, step).value, wanted[bar - 1], delta=1.5e-3 * 2.4e6, msg=f"{t} bar {bar}")


if __name__ == "__main__":
    unittest.main()
