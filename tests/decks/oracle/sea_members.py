"""What the decks of element types in waves, of axes, and of macros in turn expect."""
import math

from beams import mode_lines
from frame import FULL, Frame, Member, tube
from sea_loads import Profile, Sea, Tube, along, sum_of, wet_share
from sea_piles import G, HALVED, INTEGRAL, LEVELS, RHO, line, pile, prop_lines, shear_and_moment
from waves import Airy, Components

# --- wave_elements ----------------------------------------------------------------------------------------------------

MWL = 7.0
STEPS = 12
FOOT, TOP = (-10.0, -50.0), (2.0, 10.0)  # x and z of the leaning pile
COEFFICIENTS = {"CD": 0.9, "CM": 1.8, "CDS": 0.5}
STREAM = ((0.0, 1.0), (20.0, 0.6), (50.0, 0.2))
KINDS = ("type 2", "type 7", "truss")
FLOOR = -30.0


def leaning(points=None):
    """The pile's six tubes, still water at MWL."""
    def place(z):
        f = (z - FOOT[1]) / (TOP[1] - FOOT[1])
        return (FOOT[0] + f * (TOP[0] - FOOT[0]), 0.0, z + MWL)
    return [Tube(place(a), place(b), 1.0, points=points, **COEFFICIENTS) for a, b in zip(LEVELS, LEVELS[1:])]


def wave_elements():
    wave = Airy(10.0, 12.0, 50.0, G, start=20.0, factor=0.9)
    current = Profile([(level, (v, 0.0)) for level, v in STREAM])
    sea = Sea(wave, RHO, 50.0, current=current, mwl=MWL, floor=FLOOR + MWL)
    foot = (FOOT[0], 0.0, FOOT[1] + MWL)
    lines = []
    for step in (1, 4, 7, 10, 12):
        coarse, fine = (sum_of(leaning(points), sea, step, upto, foot, 4) for points, upto in ((4, "halved"), (None, "surface")))
        for axes in range(3):
            for k, kind in enumerate(KINDS):
                page, bars = STEPS * axes + step, (2 * k + 1, 2 * k + 2)
                lines += prop_lines(6, bars, page, (coarse[0][0], coarse[1][1]), 60.0, 5e-5, f"{kind}: {HALVED}")
                if axes == 0 and k == 0:
                    lines += prop_lines(6, bars, page, (fine[0][0], fine[1][1]), 60.0, 0.006, f"{kind}: {INTEGRAL}")
    return lines


# --- wave_macros ------------------------------------------------------------------------------------------------------

FIRST = ((2.0, 12.0, 30.0), (3.0, 8.0, -75.0))
SECOND = ((3.5, 11.0, -20.0), (1.0, 7.0, 100.0))


def wave_macros():
    sea, lines = Sea(Airy(12.0, 12.0, 50.0, G, start=5.0), RHO, 50.0), []
    times = [1.0, 2.0, 3.0, 4.0] + [4.5, 5.0, 5.5, 6.0] + [6.7, 7.4, 8.1]
    for page, t in enumerate(times, 1):
        coarse = shear_and_moment(pile(LEVELS, points=4), sea, t, "halved", -50.0)
        lines += prop_lines(2, (1, 2), page, coarse, 60.0, 5e-5, f"{('DYN2', 'DYN1', 'DYN2 again')[(page > 4) + (page > 8)]}, time {t:g}: {HALVED}")
    for parts, begin, page in ((FIRST, 0.0, len(times) + 1), (SECOND, 7.5, len(times) + 4)):
        block = Sea(Components([(*part, (1.0, 0.0)) for part in parts], 50.0, G), RHO, 50.0)
        for step in (1, 2, 3):
            coarse = shear_and_moment(pile(LEVELS, points=4), block, 2.5 * step, "halved", -50.0)
            lines += prop_lines(2, (1, 2), page + step - 1, coarse, 60.0, 1e-4, f"block that begins at {begin:g}, time in it {2.5 * step:g}: {HALVED}")
    return lines


# --- wet_modes --------------------------------------------------------------------------------------------------------

STEEL, WALL, KM = (2.1e8, 0.3, 7.85), 0.05, 1.1
UPRIGHT, LEANING = ((0.0, 0.0, -60.0), (0.0, 0.0, -5.0)), ((0.0, 0.0, -50.0), (6.0, 9.0, 10.0))
PARTS = 6


def cantilever(ends):
    nodes = {k + 1: along(*ends, k / PARTS) for k in range(PARTS + 1)}
    return Frame(nodes, [Member(k, k + 1, STEEL, tube(1.0, WALL)) for k in range(1, PARTS + 1)], {1: FULL})


def added_masses(frame):
    """Half of each tube's share of the water to either end: across the tube, of the length under still water."""
    extra = {}
    for m in frame.members:
        A, B = frame.ends(m)
        length = math.dist(A, B)
        wet = length * sum(b - a for a, b in wet_share(A, B))
        for n in (m.i, m.j):
            for c in range(3):
                e = (B[c] - A[c]) / length
                extra[n, c] = extra.get((n, c), 0.0) + 0.5 * KM * RHO * 0.25 * math.pi * wet * (1.0 - e * e)
    return {k: v for k, v in extra.items() if k[0] != 1}


def wet_modes():
    upright, leaning_one = cantilever(UPRIGHT), cantilever(LEANING)
    dry = upright.frequencies()[:4]
    lines = mode_lines(dry, 1)
    for problem, frame in ((2, upright), (3, leaning_one)):
        lines += mode_lines(frame.frequencies(added_masses(frame))[:4], problem)
    steel = STEEL[2] * tube(1.0, WALL)["A"]
    ratio = math.sqrt(steel / (steel + KM * RHO * 0.25 * math.pi))
    source = f"dry frequency times {ratio:.6f}, the root of steel over steel and water"
    return lines + [line(rf"number /(?m)^0 +{m} +\S+ +(\S+) +\S+/ TAModel.out 2", ratio * dry[m - 1], 1e-5, source) for m in (1, 2, 3, 4)]


DECKS = [wave_elements, wave_macros, wet_modes]
