"""What the decks of the jacket in waves expect: base forces beside published ones and beside an integration of its own."""
import math

import jacket
from sea_loads import Profile, Sea, Tube, buoyancy, displaced, sum_of
from sea_piles import HALVED, INTEGRAL, about, line, told_loads
from waves import Airy, Steady

RHO, G, DEPTH = 1025.0, 9.80665, 50.001
CENTRE = (0.0, 0.0, -50.001)
ARM = 10.0
PERIOD, STEPS, DT = 10.0, 20, 0.5
PUBLISHED = "tests/decks/oracle/wave_loads.csv"
NEAR_CREST = (0.0, 0.5, 1.0, 1.5, 2.0, 8.0, 8.5, 9.0, 9.5)  # the surface stands above still water at every leg


def tubes(points=None, **coefficients):
    places = jacket.joints()
    return [Tube(places[i], places[j], jacket.TUBES[t][0], points=points, **coefficients) for i, j, t, _ in jacket.members()]


def balance(F, M):
    """Forces of the six bars that hold the feet: along x, y, z at the centre, z at 10 m along x and along y, y at 10 m along x."""
    pitch, roll, yaw = -M[1] / ARM, M[0] / ARM, M[2] / ARM
    return F[0], F[1] - yaw, F[2] - pitch - roll, pitch, roll, yaw


def bar_lines(page, F, M, tol, source, bars=(1, 3, 4), group=3):
    forces = balance(F, M)
    allowed = tol * max(abs(f) for f in forces)
    return [about(f"force {group} {bar} print {page}", forces[bar - 1], allowed, source) for bar in bars]


def history(sea, first_page, what, coarse, fine, bars, steps, table=None):
    """Lines of one problem: the program's own rule to `coarse` (in the sea `table`, whose surface is straight between points), the
    true surface to `fine`."""
    lines = []
    rough = sea if table is None else table
    for step in steps:
        t = step * DT
        lines += bar_lines(first_page + step - 1, *sum_of(tubes(4), rough, t, "halved", CENTRE), coarse, f"{what}: {HALVED}", bars)
        if step % 2 == 0:
            lines += bar_lines(first_page + step - 1, *sum_of(tubes(), sea, t, "surface", CENTRE, 1), fine, f"{what}: {INTEGRAL}", bars)
    return lines


def waves_along_x():
    return Airy(8.0, PERIOD, DEPTH, G), Steady(8.0, PERIOD, DEPTH, G)


def jacket_wave():
    airy, steady = waves_along_x()
    lines = []
    for t, programs in told_loads("jck_clean__w_8_10").items():
        if t in NEAR_CREST:
            for who, (Fx, Fz, My) in zip(("an independent program", "HydroDyn"), programs):
                lines += bar_lines(round(t / DT) or STEPS, (Fx, 0.0, Fz), (0.0, My + 50.001 * Fx, 0.0), 3e-4, f"{who}, {PUBLISHED}")
    every = range(1, STEPS + 1)
    lines += history(Sea(airy, RHO, DEPTH, upper=1e-9), 1, "Airy to still water", 5e-5, 0.006, (1, 3, 4), every)
    rough = Steady(8.0, PERIOD, DEPTH, G, points=37)
    lines += history(Sea(steady, RHO, DEPTH), STEPS + 1, "stream function", 2e-4, 0.006, (1, 3, 4), every, Sea(rough, RHO, DEPTH))
    return lines


# --- jacket_published -------------------------------------------------------------------------------------------------

# H, T, times on either side of the crest at which the surface stands above still water at every leg
CASES = (("jck_clean__w_17_15", 17.48, 15.0, 3.0), ("jck_drag__w_8_10", 8.0, 10.0, 2.0), ("jck_iner__w_8_10", 8.0, 10.0, 2.0),
         ("jck_mg__w_8_10", 8.0, 10.0, 2.0))
GROWTH, GROWN = 0.2, (-40.0, -2.0)  # added to the diameter between two elevations


def grown_parts():
    """(number, end fractions, whether grown) of the pieces of each tube that growth covers or not."""
    places = jacket.joints()
    for n, (i, j, *_) in enumerate(jacket.members(), 1):
        low, high = places[i][2], places[j][2]
        cuts = sorted((z - low) / (high - low) for z in GROWN if (low - z) * (high - z) < 0.0) if low != high else []
        ends = [0.0, *cuts, 1.0]
        for a, b in zip(ends, ends[1:]):
            yield n, a, b, GROWN[0] < low + 0.5 * (a + b) * (high - low) < GROWN[1]


def jacket_published():
    lines, page = [], 0
    for case, _, period, near in CASES:
        steps = round(period / DT)
        for t, programs in told_loads(case).items():
            if t <= near or t >= period - near:
                for who, (Fx, Fz, My) in zip(("an independent program", "HydroDyn"), programs):
                    tol, bars = (6e-4, (1, 4)) if "mg" in case else (3e-4, (1, 3, 4))  # the published vertical load has the growth's weight
                    lines += bar_lines(page + (round(t / DT) or steps), (Fx, 0.0, Fz), (0.0, My + 50.001 * Fx, 0.0), tol, f"{case}: {who}, {PUBLISHED}", bars)
        page += steps
    return lines


# --- with current, obliquely ------------------------------------------------------------------------------------------

ANGLE, CURRENT_ANGLE = math.radians(30.0), math.radians(60.0)
WAY = (round(math.cos(ANGLE), 8), round(math.sin(ANGLE), 8))
CURRENT = ((0.0, 1.2), (20.0, 0.8), (50.001, 0.2))
CURRENT_WAY = (round(math.cos(CURRENT_ANGLE), 8), round(math.sin(CURRENT_ANGLE), 8))


def profile(stretching):
    return Profile([(level, tuple(v * c for c in CURRENT_WAY)) for level, v in CURRENT], stretching)


def jacket_wave_current():
    along = CURRENT[0][1] * math.cos(CURRENT_ANGLE - ANGLE)
    airy = Airy(8.0, PERIOD, DEPTH, G, wheeler=True)
    seas = [("Airy, Wheeler, current stretched in proportion", airy, airy, 2, 5e-5),
            ("stream function, current as it stands", Steady(8.0, PERIOD, DEPTH, G, U=along), Steady(8.0, PERIOD, DEPTH, G, U=along, points=37), 1, 2e-4)]
    lines = []
    for problem, (what, wave, rough, stretching, tol) in enumerate(seas):
        sea, table = (Sea(w, RHO, DEPTH, WAY, profile(stretching)) for w in (wave, rough))
        lines += history(sea, 1 + STEPS * problem, what, tol, 0.006, (1, 2, 3, 4, 5, 6), (2, 5, 8, 11, 14, 17, 19, 20), table)
    return lines


# --- buoyancy ---------------------------------------------------------------------------------------------------------

LIFT = r"number /TOTAL BUOYANCY FORCES IN GLOBAL DIRECTIONS:(?s:.)*?\n {8}[-+.E\d ]{24}([-+.E\d ]{12})/ TAModel.out"
VOLUME, SUBMERGED = 666.57754, 497.37099  # published, all tubes, overlaps counted as modelled
PUBLISHED_LIFT = 4999481.84
FLOODED = (*range(1, 19), 21, 22, 25, 26, 29, 30, *range(105, 113))


def jacket_buoyancy():
    density = RHO * G
    ends = [(tube, buoyancy(tube.A, tube.B, tube.D, density)) for tube in tubes()]
    lines = [line(LIFT + " 1", PUBLISHED_LIFT, 1e-7,
                  "HydroDyn and closed form: 497.37099 m3 of water")]
    page = 1
    for chosen in (range(1, 113), [n for n in range(1, 113) if n not in FLOODED]):
        F, M = [0.0] * 3, [0.0] * 3
        for n in chosen:
            tube, (FI, MI, FJ, MJ) = ends[n - 1]
            for p, q, m in ((tube.A, FI, MI), (tube.B, FJ, MJ)):
                r = tuple(a - b for a, b in zip(p, CENTRE))
                turn = (r[1] * q[2] - r[2] * q[1], r[2] * q[0] - r[0] * q[2], r[0] * q[1] - r[1] * q[0])
                for i in range(3):
                    F[i] += q[i]
                    M[i] += turn[i] + m[i]
        source = "pressure of the water on closed tubes, tests/decks/oracle/sea_loads.py"
        lines += [about(f"force 3 {bar} print {page}", f, 1.0, source) for bar, f in zip(range(1, 7), (f if abs(f) > 1e-3 else 0.0 for f in balance(F, M)))]
        lift = sum(displaced(ends[n - 1][0].A, ends[n - 1][0].B, ends[n - 1][0].D) for n in chosen) * density
        lines.append(about(f"force 3 3 print {page}", lift, 1.0, "Archimedes: all legs alike, so the bars on the arms bear nothing"))
        page += 1
    return lines


DECKS = [jacket_wave, jacket_published, jacket_wave_current, jacket_buoyancy]
