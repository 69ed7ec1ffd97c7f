"""What the decks expect where bars yield, where DYN1 chooses its steps, where it searches a capacity, and of energies."""
import math

from dynamics import Bar, Bars, Motion, exact_motion, line_at
from motions import SOLVER, about, line, oscillator
from structures import PUSHOVER_LOAD, tower_pushover

# --- elastic-perfectly-plastic oscillators under a step ---------------------------------------------------------------

PLASTIC_MASS, PLASTIC_DT, PLASTIC_STEPS = 0.025330296, 0.005, 400
PLASTIC_LOADS = (0.5, 0.6, 0.7, 0.8, 0.9)
PLASTIC_STARTS = tuple(round(f / PLASTIC_MASS, 6) for f in PLASTIC_LOADS)


def plastic_step():
    lines = []
    for k, (load, start) in enumerate(zip(PLASTIC_LOADS, PLASTIC_STARTS), 1):
        motion, node = oscillator(1.0, PLASTIC_MASS, fy=1.0), 5 + k
        motion.begin({(2, 0): load}, {}, {(2, 0): start})
        for n in range(1, PLASTIC_STEPS + 1):
            motion.step(PLASTIC_DT, {(2, 0): load})
        ductility = 0.5 / (1.0 - load)
        for page in (1, 2, 3):
            lines.append(line(f"envelope X {node} max print {page}", ductility, 1e-3, "energy: F0 u = Fy (u - uy/2)"))
        for page in (1, 2):
            lines.append(line(f"envelope X {node} max print {page}", motion.extremes[2, 0][1], 1e-5, SOLVER))
            lines.append(about(f"displacement X {node} print {page}", motion.u[0], 2e-5 * ductility, SOLVER))
            lines.append(about(f"force 1 {k} print {page}", motion.model.force(1, motion.u), 2e-5, SOLVER))
            lines.append(about(f"plastic+ 1 {k} print {page}", motion.model.bars[0].slip, 2e-5, "all of it in the first swing"))
    return lines


# --- a braced frame whose diagonals yield -----------------------------------------------------------------------------

BRACED_NODES = {1: (0.0, 0.0, 0.0), 2: (6.0, 0.0, 0.0), 3: (0.0, 4.0, 0.0), 4: (6.0, 4.0, 0.0), 5: (0.0, 8.0, 0.0), 6: (6.0, 8.0, 0.0)}
STRONG = ((1, 3), (2, 4), (3, 5), (4, 6), (3, 4), (5, 6))
DIAGONALS = ((1, 4, 0.0012), (2, 3, 0.0012), (3, 6, 0.0007), (4, 5, 0.0007))
BRACED_E, STRONG_AREA, BRACED_R, BRACED_YIELD, FLOOR_MASS = 2.0e8, 0.01, 0.05, 250000.0, 10.0
SHAKE = [(0.0, 0.0), (0.06, 16.0), (0.16, -18.0), (0.27, 15.0), (0.36, -12.0), (0.45, 6.0), (0.52, 0.0)]
BRACED_PLACES = [(n, a) for n in (3, 4, 5, 6) for a in (0, 1)]


def braced(dt, seconds):
    """States at every tenth of a second: (displacements by place, bar forces), and the motion."""
    bars = [Bar(i, j, BRACED_E * STRONG_AREA) for i, j in STRONG]
    bars += [Bar(i, j, BRACED_E * A, BRACED_R, BRACED_YIELD * A) for i, j, A in DIAGONALS]
    motion = Motion(Bars(BRACED_NODES, bars, BRACED_PLACES), {d: FLOOR_MASS for d in BRACED_PLACES}, dmass=0.8)
    states = []
    motion.begin({})
    for n in range(1, round(seconds / dt) + 1):
        motion.step(dt, {(m, 0): -FLOOR_MASS * line_at(SHAKE, n * dt) for m in (3, 4, 5, 6)})
        if n % round(0.1 / dt) == 0:
            states.append((dict(zip(BRACED_PLACES, motion.u)), [motion.model.force(e, motion.u) for e in range(1, 11)]))
    return states, motion


WATCHED = ((3, 0), (5, 0), (6, 0), (6, 1))


def yielding_frame():
    lines, runs = [], [braced(dt, 0.6) for dt in (0.0002, 0.002)]
    fine, motion = runs[0]
    peak, tol = max(abs(x) for pair in motion.extremes.values() for x in pair), 2e-5
    for macro, (states, motion) in enumerate(runs, 1):
        for number, (u, forces) in enumerate(states, 1):
            page = 6 * (macro - 1) + number
            lines += [about(f"displacement {'XY'[a]} {n} print {page}", u[n, a], tol * peak, SOLVER) for n, a in WATCHED]
            lines += [about(f"force 1 {e} print {page}", forces[e - 1], tol * 300.0, SOLVER) for e in (1, 7, 8, 9, 10)]
        for n, a in ((3, 0), (5, 0)):
            low, high = motion.extremes[n, a]
            lines += [about(f"envelope X {n} max print {macro}", high, tol * peak, SOLVER), about(f"envelope X {n} min print {macro}", low, tol * peak, SOLVER)]
        for name, value in (("external", motion.external), ("elastic", motion.plastic), ("viscous", motion.viscous)):
            lines.append(line(f"row macro {macro} step last {name}", value, 1e-4, SOLVER))
    lines += [f"lines macro {macro} type 3 in 8 .. 30 ; the diagonals yield and turn" for macro in (2, 3)]
    for macro in (2, 3, 4, 5):
        for tenth in (1, 2, 3, 4, 5):
            u = fine[tenth - 1][0]
            where = f"macro {macro} at 0.{tenth}" if macro > 2 else f"print {6 + tenth}"
            lines += [about(f"displacement X {n} {where}", u[n, 0], 0.01 * peak, "constant steps of 0.0002, " + SOLVER) for n in (3, 5)]
    return lines


# --- chosen steps -----------------------------------------------------------------------------------------------------

CHOSEN_K, CHOSEN_MASS, CHOSEN_END = 40.0, 1.0, 1.4
PULSE = [(0.0, 0.0), (0.5, 0.0), (0.55, 60.0), (0.6, 0.0), (5.0, 0.0)]
MIDSTEP = {"DTMIN": 0.00125, "DTMAX": 0.04, "REDF": 0.5, "INCF": 2.0, "ERRUP": 1.0, "ERRLO": 0.2, "NBELOW": 2}
LOCAL = {"DTMIN": 0.0005, "DTMAX": 0.08, "REDF": 0.0, "INCF": 0.0, "ERRUP": 0.004, "ERRLO": 0.0004, "NBELOW": 2}


def chosen_steps(ksol, rules, dt=0.01, velocity=0.5):
    """[(line type, time of the line, size of the next step, error, displacement)] of a linear oscillator."""
    u, v, a, t, low, rows = 0.0, velocity, 0.0, 0.0, 0, []
    while t < CHOSEN_END:
        k = CHOSEN_K + 4.0 * CHOSEN_MASS / dt ** 2
        load = line_at(PULSE, t + dt)
        d = (load - CHOSEN_K * u + CHOSEN_MASS * (4.0 * v / dt + a)) / k
        a2 = 4.0 * d / dt ** 2 - 4.0 * v / dt - a
        if ksol == 4:
            error = abs(a2 - a) * dt * dt / 12.0
        else:
            mean = 2.0 * (d / dt - v) / dt
            error = abs(line_at(PULSE, t + 0.5 * dt) - CHOSEN_K * (u + 0.25 * (d + v * dt)) - CHOSEN_MASS * mean)
        wish = math.sqrt(rules["ERRUP"] * rules["ERRLO"]) / error if error else 0.0
        keep = False
        if error >= rules["ERRUP"]:
            low = 0
            smaller = dt * rules["REDF"] if rules["REDF"] else max(rules["DTMIN"], dt * wish ** 0.333333333)
            if smaller >= rules["DTMIN"] and smaller < dt:
                rows.append((4, t + smaller, smaller, error, u))
                dt = smaller
                continue
        elif error >= rules["ERRLO"]:
            low, keep = 0, True
        else:
            low += 1
            keep = low < rules["NBELOW"]
        u, v, a, t = u + d, 2.0 * d / dt - v, a2, t + dt
        kind = 1
        if not keep and error < rules["ERRUP"]:
            if rules["INCF"]:
                larger = dt * rules["INCF"]
            else:
                larger = 2.0 * dt if dt == rules["DTMAX"] or not error else min(rules["DTMAX"], dt * wish ** 0.3333333)
            if larger <= rules["DTMAX"]:
                kind, dt = 2, larger
        rows.append((kind, t, dt, error, u))
    return rows


def pulse_steps():
    lines = []
    for macro, ksol, rules in ((1, 3, MIDSTEP), (2, 4, LOCAL), (3, 1, MIDSTEP)):
        rows = chosen_steps(ksol, rules)
        for kind in (1, 2, 4):
            count = sum(row[0] == kind for row in rows)
            lines.append(f"lines macro {macro} type {kind} in {count} .. {count} ; the rules of the step walked by hand")
        ends = [row for row in rows if row[0] != 4]
        for n in range(1, len(ends) + 1, max(1, len(ends) // 12)):
            kind, t, dt, error, u = ends[n - 1]
            lines += [line(f"row macro {macro} step {n} type", kind, 0, "the rules of the step"),
                      line(f"row macro {macro} step {n} time", t, 1e-9, "the rules of the step"),
                      line(f"row macro {macro} step {n} dt", dt, 1e-9, "the rules of the step"),
                      about(f"row macro {macro} step {n} error", error, 1e-5 * abs(error) + 1e-9, "error of the linear oscillator")]
        lines.append(about(f"row macro {macro} step last time", ends[-1][1], 1e-9, "the first step that passes 1.4"))
        omega = math.sqrt(CHOSEN_K / CHOSEN_MASS)
        for tenth in (3, 7, 10, 13):
            t = 0.1 * tenth
            forced = exact_motion(omega, 0.0, 0.005, [line_at(PULSE, 0.005 * n) for n in range(20 * tenth + 1)])[-1]
            lines.append(about(f"displacement X 2 macro {macro} at {t:g}", forced + 0.5 / omega * math.sin(omega * t), 0.02, "exact motion"))
    return lines


# --- energies ---------------------------------------------------------------------------------------------------------

ENERGY_NODES = {1: (0.0, 0.0, 0.0), 2: (10.0, 0.0, 0.0), 3: (20.0, 0.0, 0.0)}
SWAY = [(0.0, 0.0), (0.2, 6.0), (0.5, -6.0), (0.8, 3.0), (0.9, 0.0)]


def energy_row():
    """The row at its start, with the velocity of node 3."""
    bars = [Bar(1, 2, 2000.0, 0.1, 4.0, BO=0.002), Bar(2, 3, 1500.0, BT=0.003)]
    motion = Motion(Bars(ENERGY_NODES, bars, [(2, 0), (3, 0)]), {(2, 0): 1.0, (3, 0): 0.5}, dmass=0.2)
    motion.begin({}, {(3, 0): 0.4}, {})
    return motion


def energy_load(n):
    return {(3, 0): line_at(SWAY, 0.01 * n)}


def energies():
    motion, lines = energy_row(), []
    for n in range(1, 101):
        motion.step(0.01, energy_load(n))
        if n in (1, 10, 25, 50, 75, 100):
            figures = (("external", motion.external), ("kinetic", motion.kinetic()),
                       ("elastic", motion.plastic), ("viscous", motion.viscous))
            for place, (name, value) in enumerate(figures, 1):
                lines.append(about(f"row macro 1 step {n} {name}", value, 1e-6, SOLVER))
                row = r"number /(?m)^" + r"\s*\S+\s+" * place + r"(\S+)/ TAP46 " + str(n)
                lines.append(about(row, value, 1e-6, SOLVER))
            lines.append(about(f"row macro 1 step {n} unbalance", motion.unbalance(), 1e-8,
                               "constant: the start alone is not in balance, its acceleration is 0"))
    return lines


# --- capacity ---------------------------------------------------------------------------------------------------------

def tower_capacity():
    """Levels at rest below the static collapse, none above it."""
    truss = tower_pushover()
    truss.push(PUSHOVER_LOAD, 0.2)
    largest = max(abs(x) for x in truss.u.values())
    collapse = tower_pushover().push(PUSHOVER_LOAD)
    levels = [0.2]
    while levels[-1] < collapse:
        levels.append(levels[-1] + 0.08)
    source = f"static collapse at {collapse:.6f} by the independent event-to-event solver"
    lines = ["text TAP53 has 'DYN1 MACRO NUMBER  1 COMPLETED: MAXIMUM ULT LOAD LEVEL REACHED' ; at rest at the last level",
             "text TAP53 has 'DYN1 MACRO NUMBER  2 COMPLETED: EXCEEDING MAXIMUM DISPLACEMENT LIMIT' ; the tower has collapsed",
             line("row macro 1 step last level", 0.2, 1e-9, "the largest level of the first macro"),
             line("row macro 1 step last largest", largest, 1e-3, "static displacement, event-to-event solver"),
             line("row macro 2 step last level", levels[-1], 1e-9, source)]
    for macro_levels in zip(levels, levels[1:]):
        row = r"number /(?m)^.{122} %.3f.{7} (\.\d{3}E[-+]\d\d)\n.{122} %.3f/ TAP53 1" % macro_levels
        if macro_levels[0] > 0.2:
            lines.append(about(row, 0.0, 0.01, "velocity of the last step on a level: at rest"))
    return lines


DECKS = [plastic_step, yielding_frame, pulse_steps, energies, tower_capacity]
