"""What the decks of irregular seas, embedded waves and grid waves expect."""
import math

from sea_loads import Sea
from sea_piles import G, HALVED, INTEGRAL, LEVELS, RHO, line, pile, prop_lines, shear_and_moment
from waves import Airy, Components, Embedded, Steady, drawn_phases, pierson_moskowitz, sampled, wave_number

DRAWN = "generator of phases, written down once more"


def row(number, place, problem=1):
    """A figure of the table of components: frequency, period, height, phase, the two in the water, length, direction."""
    return rf"number /(?m)^ {{6}}{number:>10} {{10}}(?: +\S+){{{place}}} +(\S+)/ TAModel.out {problem}"


HEIGHT, PHASE, LENGTH, ANGLE = 2, 3, 6, 7


def significant(problem):
    return rf"number /SIGNIFICANT WAVE HEIGHT +=? +(\S+)/ TAModel.out {problem}"


def pile_lines(sea, levels, times, dt, page, group, tol, what, upto_tol=0.01):
    """Both bars of a pile at some steps of a dynamic macro whose first page is `page`."""
    lines, span = [], levels[-1] - levels[0]
    for step in times:
        coarse = shear_and_moment(pile(levels, points=4), sea, step * dt, "halved", levels[0])
        fine = shear_and_moment(pile(levels), sea, step * dt, "surface", levels[0])
        lines += prop_lines(group, (1, 2), page + step - 1, coarse, span, tol, f"{what}: {HALVED}")
        lines += prop_lines(group, (1, 2), page + step - 1, fine, span, upto_tol, f"{what}: {INTEGRAL}")
    return lines


# --- irregular_sea ----------------------------------------------------------------------------------------------------

WIND, BAND, DEPTH = 20.0, (0.04, 0.30, 0.01), 100.0
SEA_LEVELS = tuple(-100.0 + 10.0 * k for k in range(13))


def spectral_parts(low, high, df, skip=0):
    count = int((high - low) / df) + 1
    phases = drawn_phases(count, skip)
    parts = []
    for n, phase in enumerate(phases):
        f = low + n * df
        parts.append((2.0 * math.sqrt(2.0 * pierson_moskowitz(f, WIND, G) * df), 1.0 / f, phase, (1.0, 0.0)))
    return parts


def height_of(parts):
    return 4.0 * math.sqrt(sum((0.5 * H) ** 2 / 2.0 for H, *_ in parts))


def irregular_sea():
    parts = spectral_parts(*BAND)
    lines = [line(significant(1), height_of(parts), 1e-6, "4 sqrt(sum S df), Pierson-Moskowitz, wind 20")]
    for n in (1, 2, 4, 10, 27):
        H, T, phase, _ = parts[n - 1]
        lines += [line(row(n, HEIGHT), H, 1e-6, "2 sqrt(2 S df)"), line(row(n, PHASE), phase, 1e-6, DRAWN),
                  line(row(n, LENGTH), 2.0 * math.pi / wave_number(T, DEPTH, G), 1e-6, "dispersion by bisection")]
    lines += pile_lines(Sea(Components(parts, DEPTH, G), RHO, DEPTH), SEA_LEVELS, (1, 2, 3, 4), 2.5, 1, 2, 1e-4, "27 components")
    lines += pile_lines(Sea(Components(parts, DEPTH, G, wheeler=True), RHO, DEPTH), SEA_LEVELS, (1, 2, 3, 4), 2.5, 5, 2, 1e-4, "27 components, Wheeler")
    many = spectral_parts(0.04, 0.43991, 0.0001)
    lines.append(line(significant(3), height_of(many), 1e-6, "4 sqrt(sum S df) of 4000 components"))
    lines.append(line(significant(3), 2.0 * WIND ** 2 / G * math.sqrt(0.0081 / 0.74), 2e-3, "2 W^2 / g sqrt(0.0081 / 0.74), the whole spectrum"))
    lines += [line(row(n, PHASE, 1), many[n - 1][2], 1e-6, DRAWN + ", component %d" % n) for n in (1000, 4000)]
    skipped = spectral_parts(0.06, 0.10, 0.01, 3)
    lines += [line(row(n, PHASE, 4), skipped[n - 1][2], 1e-6, DRAWN + ", three skipped") for n in (1, 2, 3)]
    return lines


# --- user_components --------------------------------------------------------------------------------------------------

USERS = ((2.0, 12.0, 30.0), (3.0, 8.0, -75.0))  # height, period, phase
SPREAD = ((2.0, 12.0, 30.0, (1.0, 0.0)), (3.0, 8.0, -75.0, (0.8, 0.6)), (1.5, 7.0, 140.0, (0.6, -0.8)))


def user_components():
    one = Components([(*part, (1.0, 0.0)) for part in USERS], 50.0, G)
    lines = [line(significant(1), math.sqrt(26.0), 1e-6, "sqrt(2 (2^2 + 3^2))")]
    lines += pile_lines(Sea(one, RHO, 50.0), LEVELS, (1, 2, 3, 4), 2.5, 1, 2, 1e-4, "two components")
    single = Airy(12.0, 12.0, 50.0, G)
    lines += pile_lines(Sea(single, RHO, 50.0), LEVELS, (10, 11, 12), 1.0, 5, 2, 5e-5, "one component is an Airy wave")
    lines.append(line(significant(2), math.sqrt(2.0) * 12.0, 1e-6, "sqrt(2) H"))
    spread = Components(list(SPREAD), 50.0, G)
    lines.append(line(significant(3), math.sqrt(2.0 * (4.0 + 9.0 + 2.25)), 1e-6, "sqrt(2 sum H^2)"))
    for n, angle in ((2, math.degrees(math.acos(0.8))), (3, 360.0 - math.degrees(math.acos(0.6)))):
        lines.append(line(row(n, ANGLE, 2 if n == 2 else 1), angle, 6e-4, "arc cosine, told with 3.14 for pi"))
    for step in (1, 2, 3, 4):
        tubes = pile(LEVELS, points=4)
        loads = [load for tube in tubes for load in tube.loads(Sea(spread, RHO, 50.0), 2.5 * step, "halved")]
        moments = [sum(q[c] * (p[2] + 50.0) for p, q in loads) for c in (0, 1)]
        for c in (0, 1):
            shear = sum(q[c] for _, q in loads)
            lines += prop_lines(2, (2 * c + 1, 2 * c + 2), 16 + step, (shear, moments[c]), 60.0, 1e-4, f"three directions, along {'XY'[c]}: {HALVED}")
    return lines


# --- embedded_wave ----------------------------------------------------------------------------------------------------

PEAK, PERIOD = 6.0, 12.0


def embedded():
    sea = Components([(*part, (1.0, 0.0)) for part in USERS], 50.0, G)
    return Embedded(Steady(12.0, PERIOD, 50.0, G), sea, PEAK)


def embedded_wave():
    sea = Sea(embedded(), RHO, 50.0)
    lines = []
    for step in (1, 4, 7, 8, 9, 10):
        weight = sea.wave.weight(1.5 * step)
        coarse = shear_and_moment(pile(LEVELS, points=4), sea, 1.5 * step, "halved", -50.0)
        lines += prop_lines(2, (1, 2), step, coarse, 60.0, 1e-3, f"weight {weight:.4g}: {HALVED}")
    return lines


# --- grid_wave --------------------------------------------------------------------------------------------------------

COLUMNS, ROWS, GRID_DT, GRID_STEPS = (-20.0, -12.0, -3.0, 5.0, 14.0), (-50.0, -35.0, -20.0, -10.0, -4.0, 0.0, 4.0, 10.0), 1.5, 4
SHIFT, DROPPED = 3.0, 2


def grid():
    return sampled(Airy(12.0, 12.0, 50.0, G), COLUMNS, ROWS, GRID_DT, GRID_STEPS)


def grid_wave():
    return pile_lines(Sea(grid(), RHO, 50.0), LEVELS, (1, 2, 3, 4), GRID_DT, 1, 2, 1e-3, "grid", 0.02)


DECKS = [irregular_sea, user_components, embedded_wave, grid_wave]
