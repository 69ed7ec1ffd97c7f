"""What the decks of linear motions expect: oscillators under pulses and an earthquake, hand tables, two storeys, moved supports."""
import math
import os

from dynamics import Bar, Bars, Motion, average_turn, exact_motion, line_at

SOLVER = "independent solver of motions, tests/decks/oracle/dynamics.py"
DECKS_FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../decks")


def line(what, value, tol, source):
    return f"{what} = {value:.9g} tol {tol:g} ; {source}"


def about(what, value, allowed, source):
    return f"{what} = {value:.9g} within {allowed:g} ; {source}"


def oscillator(k, mass, alpha=0.0, dmass=0.0, r=0.0, fy=math.inf, BO=0.0, BT=0.0):
    """A mass at (2, 0) on a spring along X."""
    bars = Bars({1: (0.0, 0.0, 0.0), 2: (10.0, 0.0, 0.0)}, [Bar(1, 2, 10.0 * k, r, fy, BO, BT)], [(2, 0)])
    return Motion(bars, {(2, 0): mass}, alpha=alpha, dmass=dmass)


def driven_by(motion, force, dt, steps, acceleration=0.0):
    """Force as a function of time on (2, 0), from rest; the largest displacement."""
    motion.begin({(2, 0): force(0.0)}, {}, {(2, 0): acceleration})
    for n in range(1, steps + 1):
        motion.step(dt, {(2, 0): force(n * dt)})
    return motion.extremes[2, 0][1]


# --- step, ramps, half sine pulses ------------------------------------------------------------------------------------

PULSE_MASS, PULSE_PERIOD, PULSE_DT, PULSE_STEPS = 0.006332574, 0.5, 0.0025, 500
STEP_START = 157.91367  # acceleration by the step, 1/mass
RISES = (0.25, 0.5, 0.75)
PULSES = (0.125, 0.25, 0.5, 0.75, 1.0)


def half_sine(duration):
    count = round(duration / PULSE_DT)
    points = [(n * PULSE_DT, math.sin(math.pi * n / count)) for n in range(count + 1)]
    return lambda t: line_at(points, t)


def ramp(rise):
    return lambda t: line_at([(0.0, 0.0), (rise, 1.0), (100.0, 1.0)], t)


def pulse_factor(b):
    """Largest dynamic factor of a half sine pulse that lasts b periods (A. K. Chopra, Dynamics of Structures, section 4.8)."""
    if b < 0.5:
        return 2.0 * b * math.cos(math.pi * b) / (0.25 - b * b) / 2.0
    if b == 0.5:
        return 0.5 * math.pi
    # while the pulse lasts: the response turns at t = 2 l td / (1 + 2 b)
    x = 1.0 / (2.0 * b)
    times = [2.0 * l / (1.0 + 1.0 / x) for l in range(1, 40)]
    return max(abs((math.sin(math.pi * t) - x * math.sin(math.pi * t / x)) / (1.0 - x * x)) for t in times if t <= 1.0 + 1e-12)


def oscillator_pulses():
    """Largest displacements by the closed forms, and of the scheme's own steps."""
    cases = [(lambda t: 1.0, 2.0, "step: 2", STEP_START)]
    for rise in RISES:
        x = math.pi * rise / PULSE_PERIOD
        cases.append((ramp(rise), 1.0 + abs(math.sin(x)) / x, "ramp: 1 + |sin(pi tr/T)|/(pi tr/T)", 0.0))
    for duration in PULSES:
        cases.append((half_sine(duration), pulse_factor(duration / PULSE_PERIOD), f"half sine of {duration / PULSE_PERIOD:g} periods", 0.0))
    lines = []
    for k, (force, factor, what, start) in enumerate(cases, 1):
        peak = driven_by(oscillator(1.0, PULSE_MASS), force, PULSE_DT, PULSE_STEPS, start)
        lines += [line(f"envelope X {9 + k} max print 1", factor, 5e-4, f"{what}, closed form"),
                  line(f"envelope X {9 + k} max print 1", peak, 1e-6, SOLVER)]
    return lines + [line("envelope X 10 tmax print 1", 0.25, 1e-9, "half a period")]


# --- a table by hand --------------------------------------------------------------------------------------------------

TABLE_U = (0.0437, 0.2326, 0.6121, 1.0825, 1.4309, 1.4231, 0.9622, 0.1908, -0.6044, -1.1442)
TABLE_V = (0.8733, 2.9057, 4.6833, None, 2.2421, -2.3996, -6.8192, -8.6092, -7.2932, -3.5026)  # the fourth is misprinted
TABLE_A = (17.4666, 23.1801, 12.3719, -11.5175, -38.1611, -54.6722, -33.6997, -2.1211, 28.4423, 47.3701)
TABLE_MASS, TABLE_K, TABLE_C = 0.2533, 10.0, 0.159154013


def newmark_table():
    book = "A. K. Chopra, Dynamics of Structures, example 5.3, worked with four decimals"
    motion = oscillator(TABLE_K, TABLE_MASS, dmass=0.6283222)
    motion.begin({})
    lines = []
    for n in range(1, 11):
        motion.step(0.1, {(2, 0): 10.0 * math.sin(math.pi * n / 6.0) if n <= 6 else 0.0})
        for what, table, now, allowed in (("displacement", TABLE_U, motion.u[0], 1e-3), ("velocity", TABLE_V, motion.v[0], 1e-3),
                                          ("acceleration", TABLE_A, motion.a[0], 3e-3)):
            if table[n - 1] is not None:
                lines.append(about(f"{what} X 2 print {n}", table[n - 1], allowed, book))
            lines.append(line(f"{what} X 2 print {n}", now, 1e-6, SOLVER))
    return lines


# --- five oscillators under an earthquake -----------------------------------------------------------------------------

G = 386.4
QUAKE = ((0.5, 0.02, 2.67), (1.0, 0.02, 5.97), (2.0, 0.02, 7.47), (2.0, 0.0, 9.91), (2.0, 0.05, 5.37))


def quake_springs():
    """(stiffness, damping of it) for mass 1, as cards hold them."""
    return [(round(4.0 * math.pi ** 2 / T ** 2, 7), round(z * T / math.pi, 10)) for T, z, _ in QUAKE]


def quake():
    """The record of the deck, in parts of g."""
    with open(os.path.join(DECKS_FOLDER, "earthquake/elcentro.at2"), encoding="ascii") as file:
        return [float(word) for text in file.read().split("\n")[4:] for word in text.split()]


def earthquake():
    record, lines = quake(), []
    pairs = [(0.02 * n, -G * a) for n, a in enumerate(record)]
    for page, dt, steps in ((1, 0.02, 1558), (2, 0.005, 3200)):
        for k, ((T, zeta, published), (stiff, damp)) in enumerate(zip(QUAKE, quake_springs()), 1):
            node = 5 + k
            motion = oscillator(stiff, 1.0, BO=damp if k % 2 else 0.0, BT=0.0 if k % 2 else damp)
            motion.begin({(2, 0): pairs[0][1]}, {}, {(2, 0): START_OF_QUAKE})
            each = round(0.02 / dt)
            forces = [a + (b - a) * m / each for (_, a), (_, b) in zip(pairs, pairs[1:]) for m in range(each)] + [pairs[-1][1]]
            for force in forces[1:steps + 1]:
                motion.step(dt, {(2, 0): force})
            exact = exact_motion(2.0 * math.pi / T, zeta, dt, forces[:steps + 1])
            low, high = motion.extremes[2, 0]
            side = "max" if high > -low else "min"
            lines.append(line(f"envelope X {node} {side} print {page}", high if high > -low else low, 1e-6, SOLVER))
            peak = max(exact, key=abs)
            lines.append(line(f"envelope X {node} {side} print {page}", peak, 7e-3 if page == 1 else 1e-3,
                              f"exact motion under straight lines, T {T:g}, damping {zeta:g}"))
            if page == 2:
                lines.append(line(f"envelope X {node} {side} print {page}", math.copysign(published, peak), 1e-2,
                                  "A. K. Chopra, Dynamics of Structures, section 6.4"))
    return lines


START_OF_QUAKE = -2.43432  # -0.0063 g


# --- periods of the average acceleration method -----------------------------------------------------------------------

TURN_DT, TURN_PAGE = 0.01, 333
TURN_K = (39.478418, 986.96044, 3947.8418, 15791.367)


def period_elongation():
    lines = []
    for page in (1, 2, 3):
        for k, stiff in enumerate(TURN_K, 1):
            turn, elastic = average_turn(math.sqrt(stiff), TURN_DT), 2.0 * math.pi / math.sqrt(stiff)
            longer = 2.0 * math.pi / turn * TURN_DT / elastic
            lines.append(about(f"displacement X {4 + k} print {page + 1}", math.cos(page * TURN_PAGE * turn), 2e-5,
                               f"cos(n 2 atan(omega DT/2)): the period is longer by the factor {longer:.8g}"))
    lines += [about(f"row macro 1 step {n} unbalance", 0.0, 1e-8, "no energy is lost") for n in (1, 100, 999)]
    for page in (1, 2):
        for k, stiff in enumerate(TURN_K, 1):
            motion = oscillator(stiff, 1.0, alpha=-0.1)
            motion.u = [1.0]
            motion.begin({}, {}, {(2, 0): -stiff})
            for _ in range(100 * page):
                motion.step(TURN_DT)
            lines.append(about(f"displacement X {4 + k} print {page + 5}", motion.u[0], 1e-6, SOLVER + ", ALPHA -0.1"))
    return lines


# --- two storeys ------------------------------------------------------------------------------------------------------

STOREY_NODES = {1: (0.0, 0.0, 0.0), 2: (10.0, 0.0, 0.0), 3: (20.0, 0.0, 0.0)}
STOREY_CASE = ((1, 3.63353801, 0.754771487), (2, -1.88181007, 2.72002465), (5, -2.09974468, 0.111101679), (10, 1.48134382, 0.233151241))
STOREY_PEAKS = (5.51311545, 2.8651374)
STOREY_BO, STOREY_BT = 0.03, 0.0065425889


def storeys(alpha):
    bars = [Bar(1, 2, 50.0, BO=STOREY_BO, BT=STOREY_BT), Bar(2, 3, 30.0, BO=STOREY_BO, BT=STOREY_BT)]
    return Motion(Bars(STOREY_NODES, bars, [(2, 0), (3, 0)]), {(2, 0): 2.0, (3, 0): 4.0}, alpha=alpha, dmass=0.0500380007)


def two_storeys():
    lines, other = [], "another independent program"
    for second, u1, u2 in STOREY_CASE:
        lines += [line(f"displacement X {n} print {second}", u, 1e-5, other) for n, u in ((2, u1), (3, u2))]
    lines += [line(f"envelope X {n} max print 1", u, 1e-5, other) for n, u in zip((2, 3), STOREY_PEAKS)]
    for macro, alpha in ((1, 0.0), (2, -0.2)):
        motion = storeys(alpha)
        motion.begin({})
        for n in range(1, 501):
            motion.step(0.02, {(2, 0): 100.0 * math.sin(2.0 * math.pi * 0.02 * n)})
            if n % 50 == 0:
                page = n // 50 + 10 * (macro - 1)
                lines += [line(f"displacement X {node} print {page}", motion.at((node, 0)), 1e-6, SOLVER) for node in (2, 3)]
                lines += [line(f"velocity X {node} print {page}", motion.at((node, 0), motion.v), 1e-5, SOLVER) for node in (2, 3)]
        for name, energy in (("external", motion.external), ("kinetic", motion.kinetic()), ("elastic", motion.plastic), ("viscous", motion.viscous)):
            lines.append(line(f"row macro {macro} step 500 {name}", energy, 1e-6, SOLVER))
        for node in (2, 3):
            low, high = motion.extremes[node, 0]
            lines += [line(f"envelope X {node} {side} print {macro}", u, 1e-6, SOLVER) for side, u in (("max", high), ("min", low))]
    return lines


DECKS = [oscillator_pulses, newmark_table, earthquake, period_elongation, two_storeys]
