"""What the decks of single members in the sea expect: buoyancy and static current by nodes, a pile that swings in a wave."""
import math

from sea_loads import Profile, RULES, Sea, Tube, along, buoyancy, fixed_ends
from sea_jacket import LIFT
from sea_piles import G, RHO, about, line
from waves import Airy

GAM = RHO * G


def table_lines(node, loads, problem, digits, source):
    """The six loads of a node in a table of nodal loads (three decimals): those that are not zero (a node without loads has no line)."""
    chosen = [(c, v) for c, v in enumerate(loads) if abs(v) > 1e-9]
    return [about(rf"number /(?m)^{node:>7}.{{{12 * c}}}(.{{12}})(?:.{{12}}){{{5 - c}}}$/ TAModel.out {problem}", v, digits, source)
            for c, v in chosen]


def lever_shares(A, B, ends):
    """Forces at the ends that have the sum and the moment of loads given by forces and moments at both ends."""
    FI, MI, FJ, MJ = ends
    length = math.dist(A, B)
    e = tuple((b - a) / length for a, b in zip(A, B))
    # the couple of the moments is borne by a pair of forces across the member
    M = [a + b for a, b in zip(MI, MJ)]
    pair = (M[1] * e[2] - M[2] * e[1], M[2] * e[0] - M[0] * e[2], M[0] * e[1] - M[1] * e[0])
    return ([a - p / length for a, p in zip(FI, pair)], [0.0] * 3, [a + p / length for a, p in zip(FJ, pair)], [0.0] * 3)


# --- buoyancy_cases ---------------------------------------------------------------------------------------------------

CASES = (("drowned, leaning", (0.0, 0.0, -10.0), (8.0, 0.0, -4.0), 1.0), ("cut by the surface", (0.0, 10.0, -4.0), (8.0, 10.0, 2.0), 1.0),
         ("upright through the surface", (0.0, 20.0, -50.0), (0.0, 20.0, 10.0), 1.0), ("dry", (0.0, 30.0, 2.0), (5.0, 30.0, 6.0), 1.0),
         ("drowned, level", (0.0, 40.0, -5.0), (6.0, 43.0, -5.0), 1.0), ("cut, end I dry", (8.0, 50.0, 2.0), (0.0, 50.0, -4.0), 1.0),
         ("up to the surface", (0.0, 60.0, -3.0), (4.0, 60.0, 0.0), 1.0), ("without buoyancy code", (0.0, 70.0, -10.0), (8.0, 70.0, -4.0), 0.0),
         ("wider for buoyancy than for waves", (1.0, 82.0, -9.0), (4.0, 86.0, 3.0), 1.5))
WET = (1.0, 2.0 / 3.0, 5.0 / 6.0, 0.0, 1.0, 2.0 / 3.0, 1.0, 0.0, 0.75)  # shares of the lengths under water
KINDS = ("end moments", "lever shares", "truss")  # groups 1, 2, 3: the cases once more, 100 and 200 further along y
LEVEL_OF_SECOND = 5.0


def case_nodes():
    """{node: (place)} and [(node I, node J, case, kind)]."""
    nodes, members = {}, []
    for k, _ in enumerate(KINDS):
        for c, (_, A, B, _) in enumerate(CASES):
            i = 1 + 2 * (c + len(CASES) * k)
            for n, p in ((i, A), (i + 1, B)):
                nodes[n] = (p[0], p[1] + 100.0 * k, p[2])
            members.append((i, i + 1, c, k))
    return nodes, members


def buoyancy_cases():
    nodes, members = case_nodes()
    lines = []
    for problem in (1, 2):
        lift = 0.0
        for i, j, c, k in members:
            what, _, _, D = CASES[c]
            ends = buoyancy(nodes[i], nodes[j], D, GAM)
            if k:
                ends = lever_shares(nodes[i], nodes[j], ends)
            lift += ends[0][2] + ends[2][2]
            source = f"{what}, {KINDS[k]}: water pressure on a closed tube, tests/decks/oracle/sea_loads.py"
            lines += table_lines(i, (*ends[0], *ends[1]), problem, 1e-6, source) + table_lines(j, (*ends[2], *ends[3]), problem, 1e-6, source)
        volumes = sum(0.25 * math.pi * D * D * math.dist(A, B) * share for (_, A, B, D), share in zip(CASES, WET))
        assert abs(3.0 * GAM * volumes - lift) < 1e-9 * lift
        lines.append(line(f"{LIFT} {problem}", 3.0 * GAM * volumes, 1e-9,
                          "Archimedes, volumes under water"))
    return lines


# --- static_current ---------------------------------------------------------------------------------------------------

LINEAR = ((0.0, (1.0, 0.0)), (50.0, (0.0, 0.0)))
THREE = ((0.0, (1.0, 0.0)), (20.0, (0.5, 0.0)), (50.0, (0.0, 0.0)))
UNIFORM = ((0.0, (1.5, 0.0)), (50.0, (1.5, 0.0)))
STREAMS = (("linear profile", LINEAR, (0.0, 0.0, -50.0), (0.0, 0.0, 0.0), 1.0), ("profile of three levels", THREE, (0.0, 0.0, -50.0), (0.0, 0.0, 0.0), 1.0),
           ("uniform, leaning tube", UNIFORM, (0.0, 0.0, -20.0), (10.0, 5.0, -5.0), 0.8),
           ("linear profile, through the surface, D 2", LINEAR, (0.0, 0.0, -40.0), (3.0, 4.0, 10.0), 2.0))


def static_current():
    lines = []
    for problem, (what, rows, A, B, D) in enumerate(STREAMS, 1):
        tube, sea = Tube(A, B, D, CM=0.0), Sea(None, RHO, 50.0, current=Profile(list(rows), 0))
        parts = [(a, b) for a, b in tube.split(sea, tube.wet_parts(sea, 0.0, 0.0))]
        ends = fixed_ends(A, B, lambda f: tube.per_length(sea, along(A, B, f), 0.0), parts)
        for i, chosen in ((1, ends), (3, lever_shares(A, B, ends))):
            lines += table_lines(i, (*chosen[0], *chosen[1]), problem, 1e-5, f"{what}: drag by integration, tests/decks/oracle/sea_loads.py")
            lines += table_lines(i + 1, (*chosen[2], *chosen[3]), problem, 1e-5, f"{what}: drag by integration, tests/decks/oracle/sea_loads.py")
    return lines


# --- wave_oscillator --------------------------------------------------------------------------------------------------

SWING_DT, SWING_STEPS, SWING_PRINT = 0.02, 1500, 250
MASS, RAMP = 20.0, 6.0
SOFT = 6.0  # of the pile that drifts by metres
SPRING = 98.994  # a period near 4 s with the added mass
PILES = {"drowned": (-30.0, -5.0), "through the surface, added mass that varies": (-30.0, 10.0)}
WAVE = Airy(6.0, 8.0, 50.0, G, start=1.3)  # at no step does the surface pass still water: halvings would hang on a rounding
SECTION_AREA = 0.25 * math.pi * RHO  # D 1


def swing_force(levels, varies, t, v, a, relative=True):
    """Load on a pile that moves by v and a, four points, the surface by seven halvings; second: what added mass takes off."""
    A, B = (0.0, 0.0, levels[0]), (0.0, 0.0, levels[1])
    sea, tube, force = Sea(WAVE, RHO, 50.0), Tube(A, B, 1.0, points=4), 0.0
    parts = tube.wet_parts(sea, t, "halved")
    moved = (v, 0.0, 0.0) if relative and t else (0.0, 0.0, 0.0)
    ramp = min(t / RAMP, 1.0)
    for start, end in parts:
        for x, w in RULES[4]:
            p = along(A, B, start + (end - start) * x)
            share = w * (end - start) * tube.length
            force += share * ramp * tube.per_length(sea, p, t, moved)[0]
            if varies and p[2] > 0.0:
                force -= share * SECTION_AREA * a
    if varies:
        top = A[2] + tube.length * (parts[-1][1] if parts else 0.0)
        force += max(0.0, min(B[2], 0.0) - top) * SECTION_AREA * a
    return force


def swing(levels, varies, dt=SWING_DT, steps=SWING_STEPS, relative=True):
    """Displacements by the average acceleration method; the load sees the motion at the step's start."""
    mass = MASS + SECTION_AREA * (min(levels[1], 0.0) - levels[0])
    u = v = a = 0.0
    found = [0.0]
    for n in range(1, steps + 1):
        P = swing_force(levels, varies, n * dt, v, a, relative)
        new = (P + mass * (4.0 * u / dt ** 2 + 4.0 * v / dt + a)) / (SPRING + 4.0 * mass / dt ** 2)
        change = new - u
        a = 4.0 * (change - dt * v) / dt ** 2 - a
        v = 2.0 * change / dt - v
        u = new
        found.append(u)
    return found


def drift(levels, dt=0.5, steps=32):
    """Displacements without mass, on a soft spring, in loads where the pile stood at the step's start."""
    u, found = 0.0, []
    for n in range(1, steps + 1):
        sea = Sea(WAVE, RHO, 50.0)
        tube = Tube((u, 0.0, levels[0]), (u, 0.0, levels[1]), 1.0, points=4)
        u = min(n * dt / RAMP, 1.0) * sum(q[0] for _, q in tube.loads(sea, n * dt, "halved")) / SOFT
        found.append(u)
    return found


def swing_closely(levels, varies, dt=0.1, steps=300):
    """The same motion by Runge and Kutta's fourth order, with the load of the moment and the true surface's mass."""
    A = levels[0]

    def acceleration(t, u, v):
        sea, tube = Sea(WAVE, RHO, 50.0), Tube((0.0, 0.0, A), (0.0, 0.0, levels[1]), 1.0)
        loads = tube.loads(sea, t, "surface", 3, (v, 0.0, 0.0)) if t else []
        wet = min(levels[1], WAVE.eta(0.0, t) if varies else 0.0) - A
        return (min(t / RAMP, 1.0) * sum(q[0] for _, q in loads) - SPRING * u) / (MASS + SECTION_AREA * wet)
    u = v = 0.0
    found = [0.0]
    for n in range(steps):
        t = n * dt
        a1 = acceleration(t, u, v)
        a2 = acceleration(t + 0.5 * dt, u + 0.5 * dt * v, v + 0.5 * dt * a1)
        a3 = acceleration(t + 0.5 * dt, u + 0.5 * dt * v + 0.25 * dt * dt * a1, v + 0.5 * dt * a2)
        a4 = acceleration(t + dt, u + dt * v + 0.5 * dt * dt * a2, v + dt * a3)
        u, v = u + dt * v + dt * dt * (a1 + a2 + a3) / 6.0, v + dt * (a1 + 2.0 * a2 + 2.0 * a3 + a4) / 6.0
        found.append(u)
    return found


def wave_oscillator():
    lines, prints = [], SWING_STEPS // SWING_PRINT
    source = "average acceleration, tests/decks/oracle/sea_cases.py"
    for problem, (what, levels) in enumerate(PILES.items()):
        steps, close = swing(levels, problem == 1), swing_closely(levels, problem == 1)
        size = max(abs(u) for u in steps)
        for k in range(1, prints + 1):
            where = f"displacement X 2 print {k + problem * prints}"
            lines.append(about(where, steps[SWING_PRINT * k], 2e-5 * size, f"{what}: {source}"))
            lines.append(about(where, close[round(SWING_PRINT * k * SWING_DT / 0.1)], (0.02, 0.03)[problem] * size, f"{what}: Runge and Kutta, there"))
        # each macro ends with one table of envelopes
        lines.append(line(f"envelope X 2 max print {problem + 1}", max(steps), 2e-5, f"{what}: {source}"))
        lines.append(line(f"envelope X 2 min print {problem + 1}", min(steps), 2e-5, f"{what}: {source}"))
    blind, moved = swing(PILES["drowned"], False, relative=False), drift(PILES["drowned"])
    for k in range(1, prints + 1):
        lines.append(about(f"displacement X 2 print {2 * prints + k}", blind[SWING_PRINT * k], 2e-5 * max(blind), f"not narrower than the cutoff: {source}"))
    for k, u in enumerate(moved, 1):
        lines.append(about(f"displacement X 2 print {3 * prints + k}", u, 5e-5 * max(moved), "loads where the pile stands, tests/decks/oracle/sea_cases.py"))
    return lines


DECKS = [buoyancy_cases, static_current, wave_oscillator]
