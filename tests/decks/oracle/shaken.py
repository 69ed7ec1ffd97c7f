"""What the decks expect of ground and supports that move, of macros one after another, and of a frame of beams under a pulse."""
import math

from dynamics import Bar, Bars, Linear, Motion, line_at
from frame import FULL, Frame, Member
from motions import SOLVER, about, line
from structures import TRIPOD_NODES


# --- supports that move -----------------------------------------------------------------------------------------------

FEET_EA, FEET_MASS, FEET_DT = 4.2e8, 5000.0, 0.005
WAVE = [(0.01 * n, 0.02 * math.sin(2.0 * math.pi * 0.01 * n / 0.4 - 0.5 * math.pi) + 0.02) for n in range(41)]
APEX = [(1, 0), (1, 1), (1, 2)]


def tripod(feet, damp):
    bars = [Bar(1, k, FEET_EA, BO=damp) for k in (2, 3, 4)]
    places = APEX + [(n, 0) for n in feet]
    return Motion(Bars(TRIPOD_NODES, bars, places), {d: FEET_MASS for d in APEX}, driven={(n, 0) for n in feet})


def tripod_lines(motion, page, tol=1e-6):
    lines = [about(f"displacement {axis} 1 print {page}", motion.at((1, k)), 1e-8, SOLVER) for k, axis in enumerate("XYZ")]
    lines += [about(f"velocity {axis} 1 print {page}", motion.at((1, k), motion.v), 1e-6, SOLVER) for k, axis in enumerate("XYZ")]
    return lines + [line(f"force 1 {e} print {page}", motion.model.force(e, motion.u), tol, SOLVER) for e in (1, 2, 3)]


def moved_supports():
    lines = []
    for e in (1, 2, 3):
        lines.append(about(f"force 1 {e} print 1", 0.0, 1e-4, "rigid motion of all supports"))
    for n in (1, 2, 3, 4):
        lines += [line(f"displacement X {n} print 1", 0.01, 1e-9, "0.1 t"), about(f"velocity X {n} print 1", 0.1, 1e-10, "0.1 t"),
                  about(f"acceleration X {n} print 1", 0.0, 1e-7, "0.1 t")]
    together = tripod((2, 3, 4), 0.0)
    together.begin({}, {(n, 0): 0.1 for n in (1, 2, 3, 4)}, {})
    for n in range(1, 21):
        together.step(FEET_DT, {}, {(foot, 0): 0.1 * FEET_DT * n for foot in (2, 3, 4)})
    together.begin({})
    for page in (2, 3):
        for n in range(20 * page - 39, 20 * page - 19):
            together.step(FEET_DT, {}, {(foot, 0): line_at(WAVE, FEET_DT * n, None) for foot in (2, 3, 4)})
        lines += tripod_lines(together, page)
    pages = (4, 5), (6, 7)
    for first, second in pages:
        alone = tripod((2,), 0.001)
        for page, start in ((first, 0.0), (second, 0.15)):
            alone.begin({})
            for n in range(1, 31):
                alone.step(FEET_DT, {}, {(2, 0): line_at(WAVE, start + FEET_DT * n, None) - line_at(WAVE, start, None)})
            lines += tripod_lines(alone, page)
            lines += [line(f"displacement X 2 print {page}", alone.at((2, 0)), 1e-9, "the record"),
                      line(f"velocity X 2 print {page}", alone.at((2, 0), alone.v), 1e-9, "the last step of the record"),
                      about(f"acceleration X 2 print {page}", 0.0, 1e-12, "supports have none")]
    lines += [line(f"row macro {m} step 30 external", alone.external, 1e-6, "work of the support, " + SOLVER) for m in (4, 6)]
    return lines


# --- ground under turned axes -----------------------------------------------------------------------------------------

GROUND = [(0.0, 0.0), (0.3, 3.0), (0.6, -2.0), (1.0, 0.0)]
TURNED_NODES = {1: (0.0, 0.0, 0.0), 2: (10.0, 10.0, 0.0), 3: (10.0, 0.0, 0.0)}


def turned_ground():
    bars = [Bar(1, 3, 1000.0, BO=0.002), Bar(2, 3, 400.0, BO=0.002)]
    motion = Motion(Bars(TURNED_NODES, bars, [(3, 0), (3, 1)]), {(3, 0): 2.0, (3, 1): 2.0}, dmass=0.5)

    def load(t):
        return {(3, 0): -2.0 * line_at(GROUND, t), (3, 1): -2.0 * 0.5 * line_at(GROUND, t + 0.1)}

    motion.begin(load(0.0))
    c, s, lines = math.cos(math.radians(30.0)), 0.5, []
    for n in range(1, 61):
        motion.step(0.02, load(0.02 * n))
        if n % 15 == 0:
            for what, (x, y) in (("displacement", motion.u), ("velocity", motion.v), ("acceleration", motion.a)):
                lines += [line(f"{what} X 3 print {n // 15}", c * x + s * y, 2e-6, SOLVER + ", turned by 30 degrees"),
                          line(f"{what} Y 3 print {n // 15}", c * y - s * x, 2e-6, SOLVER + ", turned by 30 degrees")]
            lines += [line(f"force 1 {e} print {n // 15}", motion.model.force(e, motion.u), 1e-6, SOLVER) for e in (1, 2)]
    return lines


# --- macros one after another -----------------------------------------------------------------------------------------

ROW_NODES = {1: (0.0, 0.0, 0.0), 2: (10.0, 0.0, 0.0), 3: (20.0, 0.0, 0.0)}
PULL = 12.0


def swell(t):
    """The sine record of the deck: period 0.5, phase 30 degrees, amplitude 3, mean 0.5, ramp 0.4, points 0.02 apart."""
    points = []
    for n in range(101):
        at = 0.02 * n
        points.append((at, 3.0 * math.sin(2.0 * math.pi * at / 0.5 + math.pi / 6.0) * (at / 0.4 if at < 0.4 - 1e-9 else 1.0) + 0.5))
    return line_at(points, t)


def macros_in_turn():
    u2, u3 = PULL / 600.0, PULL / 600.0 + PULL / 400.0
    lines = [line(f"displacement X {n} print {page}", u, 1e-9, source) for page, source in
             ((1, "P/k"), (2, "a state at rest stays"), (10, "the loads of records are gone")) for n, u in ((2, u2), (3, u3))]
    lines += [about(f"velocity X {n} print 2", 0.0, 1e-12, "a state at rest stays") for n in (2, 3)]
    bars = [Bar(1, 2, 6000.0, BO=0.001), Bar(2, 3, 4000.0, BO=0.001)]

    def run(motion, steps, pages, load, dt=0.02):
        motion.begin(load(0.0), *run.start)
        for n in range(1, steps + 1):
            motion.step(dt, load(dt * n))
            if n in pages:
                for node in (2, 3):
                    lines.append(about(f"displacement X {node} print {pages[n]}", motion.at((node, 0)), 1e-7, SOLVER))
                    lines.append(about(f"velocity X {node} print {pages[n]}", motion.at((node, 0), motion.v), 1e-6, SOLVER))

    def waves(start):
        return lambda t: {(2, 0): 2.0 * swell(start + t), (3, 0): PULL - swell(start + t)}

    def rest(_):
        return {(3, 0): PULL}

    def fresh(alpha=0.0):
        motion = Motion(Bars(ROW_NODES, bars, [(2, 0), (3, 0)]), {(2, 0): 2.0, (3, 0): 1.0}, alpha=alpha, dmass=0.3)
        motion.u = [u2, u3]
        return motion

    motion, run.start = fresh(), ()
    run(motion, 20, {10: 3, 20: 4}, waves(0.1))
    run(motion, 20, {10: 5, 20: 6}, waves(0.5))
    other = fresh(-0.05)
    other.u, run.start = motion.u, ({(2, 0): 0.5, (3, 0): -0.3}, {(3, 0): 2.0})
    run(other, 20, {10: 7, 20: 8}, rest)
    motion.u, run.start = other.u, ({}, {})
    run(motion, 10, {10: 9}, rest)
    motion, run.start = fresh(), ()
    run(motion, 5, {5: 11}, waves(0.1))
    run(motion, 5, {5: 12}, waves(0.2))
    times = ((1, 5, 0.1), (2, 20, 0.5), (3, 20, 0.9), (4, 20, 1.3), (5, 10, 1.5), (6, 5, 0.1), (7, 5, 0.2))
    return lines + [line(f"row macro {m} step {n} time", t, 1e-9, "TIME goes on from macro to macro; a STAT puts it back") for m, n, t in times]


# --- a frame of beams -------------------------------------------------------------------------------------------------

FRAME_NODES = {1: (0.0, 0.0, 0.0), 2: (0.0, 4.0, 0.0), 3: (6.0, 4.0, 0.0), 4: (6.0, 0.0, 0.0)}
FRAME_SECTION = {"A": 0.012, "J": 2.0e-6, "I2": 4.0e-5, "I3": 1.2e-4}
BLAST = [(0.0, 0.0), (0.05, 5.0e4), (0.1, 0.0)]


def frame_pulse():
    members = [Member(i, i + 1, (2.0e11, 0.25, 0.0), FRAME_SECTION) for i in (1, 2, 3)]
    frame = Frame(FRAME_NODES, members, {1: FULL, 4: FULL, 2: (2, 3, 4), 3: (2, 3, 4)})
    places = frame.free
    K = [[frame.rows[p].get(q, 0.0) for q in places] for p in places]
    mass = {(n, c): 2000.0 for n in (2, 3) for c in (0, 1)}
    lines = []
    for problem, alpha in enumerate((0.0, -0.1)):
        motion = Motion(Linear(places, K, BO=0.002), mass, alpha=alpha, dmass=1.0)
        motion.begin({})
        for n in range(1, 81):
            motion.step(0.005, {(2, 0): line_at(BLAST, 0.005 * n)})
            if n % 20 == 0:
                page = n // 20 + 4 * problem
                for node in (2, 3):
                    for name, c in (("X", 0), ("Y", 1), ("ZR", 5)):
                        lines.append(line(f"displacement {name} {node} print {page}", motion.at((node, c)), 3e-6, SOLVER))
                    lines.append(line(f"velocity X {node} print {page}", motion.at((node, 0), motion.v), 3e-6, SOLVER))
                lines.append(line(f"velocity ZR 2 print {page}", motion.at((2, 5), motion.v), 3e-6, SOLVER))
        lines += [line(f"row macro {problem + 1} step 80 {name}", value, 1e-6, SOLVER) for name, value in
                  (("external", motion.external), ("kinetic", motion.kinetic()), ("elastic", motion.plastic), ("viscous", motion.viscous))]
    return lines


# --- a floor of tied nodes --------------------------------------------------------------------------------------------

FLOOR_NODES = {1: (0.0, 0.0, 0.0), 2: (10.0, 0.0, 0.0), 3: (20.0, 0.0, 0.0)}
FLOOR_RECORD = [(0.0, 0.0), (0.2, 1.0), (0.5, -1.0), (0.7, 0.5), (1.0, 0.0)]


def tied_floor():
    """One equation for three nodes: masses, springs and entries add, the ground pushes each mass once."""
    lines = []

    def told(motion, page):
        for node, place in ((4, 2), (5, 2), (6, 2), (7, 3)):
            lines.append(about(f"displacement X {node} print {page}", motion.at((place, 0)), 1e-7, SOLVER))
            lines.append(about(f"velocity X {node} print {page}", motion.at((place, 0), motion.v), 1e-6, SOLVER))

    def model(driven):
        bars = [Bar(1, 2, 6000.0, BO=0.004), Bar(2, 3, 500.0, BO=0.004)]
        return Motion(Bars(FLOOR_NODES, bars, [(2, 0), (3, 0)]), {(2, 0): 6.0, (3, 0): 1.0}, driven=driven)

    def shaken(t):
        a = 2.0 * line_at(FLOOR_RECORD, t)
        return {(2, 0): 15.0 * line_at(FLOOR_RECORD, t) - 6.0 * a, (3, 0): -a}

    free = model(())
    free.begin(shaken(0.0), {(2, 0): 0.3}, {})
    for n in range(1, 31):
        free.step(0.02, shaken(0.02 * n))
        if n % 10 == 0:
            told(free, n // 10)
    held = model({(2, 0)})
    held.u, held.v, held.a = free.u, free.v, free.a
    held.begin({})
    for n in range(1, 21):
        held.step(0.02, {}, {(2, 0): (0.02 + 0.01) * line_at(FLOOR_RECORD, 0.02 * n, None)})
        if n % 10 == 0:
            told(held, 3 + n // 10)
    return lines


# --- a pendulum -------------------------------------------------------------------------------------------------------

PENDULUM_L, PENDULUM_G, PENDULUM_EA = 10.0, 10.0, 1.0e6


def pendulum_time(sine):
    """Complete elliptic integral K over the frequency of small swings, by the arithmetic-geometric mean: a quarter of the period."""
    a, b = 1.0, math.sqrt(1.0 - sine * sine)
    while abs(a - b) > 1e-15:
        a, b = 0.5 * (a + b), math.sqrt(a * b)
    return 0.5 * math.pi / a / math.sqrt(PENDULUM_G / PENDULUM_L)


def pendulum():
    """Swings of 60 degrees to either side: speed 10 at the bottom, rises by half the length."""
    quarter, side = pendulum_time(0.5), PENDULUM_L * math.sin(math.pi / 3.0)
    lines = []
    for macro, allowed in ((1, 0.02), (2, 0.05), (3, 0.02)):  # the second does not iterate
        for count, x, y in ((1, side, 5.0), (2, 0.0, 0.0), (3, -side, 5.0), (4, 0.0, 0.0), (8, 0.0, 0.0)):
            t = quarter * count
            for axis, place in (("X", x), ("Y", y)):
                lines.append(about(f"displacement {axis} 2 macro {macro} at {t:.6f}", place, allowed, f"{count} quarters of the period 4K(sin 30)"))
        for what, reach in (("X 2 max", side), ("X 2 min", -side), ("Y 2 max", 5.0)):
            lines.append(about(f"envelope {what} print {macro}", reach, 0.1 * allowed, "L sin 60, L (1 - cos 60)"))
    return lines


# --- wrong commands, then a good problem ------------------------------------------------------------------------------

WRONG_ENTRIES = ("line 63, columns 31-35: there is no node 9", "line 64, columns 1-5: there is no dynamic force record 3",
                 "line 65, columns 6-10: there is no component 7", "line 110, columns 1-5: there is no ground acceleration record 2",
                 "line 110, columns 26-30: there is no ground acceleration record -1", "line 111, columns 31-35: there is no node 9",
                 "line 112, columns 1-5: there is no imposed displacement record 2", "line 113, columns 6-10: there is no component 0",
                 "line 158, columns 1-5: there is no component 8", "line 159, columns 26-30: NODE 12 OUT OF RANGE, ENTERING CHEC MODE")


def wrong_commands():
    bars = [Bar(1, 2, 1000.0), Bar(2, 3, 1000.0)]
    motion = Motion(Bars(ROW_NODES, bars, [(2, 0), (3, 0)]), {(2, 0): 1.0, (3, 0): 1.0})
    motion.begin({(2, 0): 10.0})
    for _ in range(2):
        motion.step(0.1, {(2, 0): 10.0})
    lines = [line(f"displacement X {n} print 1", motion.at((n, 0)), 1e-6, SOLVER) for n in (2, 3)]
    lines += [f"text TAP.err has '{text}' ; told with its place" for text in WRONG_ENTRIES]
    return lines + ["text TAP.err has '2 entries in the commands' ; room for one",
                    "count TAP53 'TERMINATED: FATAL ERRORS ENCOUNTERED IN INPUT CARDS' = 5 ; the marked macros",
                    "count TAP53 'TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO' = 3 ; the macros behind them",
                    "count TAP53 'COMPLETED: MAXIMUM NUMBER OF STEPS REACHED' = 1 ; the good problem",
                    "count TAModel.out 'DISPLACEMENT RESPONSE AT NODES' = 3 ; X, Y, Z of the good problem alone"]


DECKS = [moved_supports, turned_ground, macros_in_turn, frame_pulse, tied_floor, pendulum, wrong_commands]
