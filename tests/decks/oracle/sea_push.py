"""The jacket pushed by the pattern of a wave until its piles yield: a linear frame on four bars that yield, by superposition."""
import os

import jacket
from frame import FULL, Frame, Member
from sea_piles import line

SOLVER = "linear frame on yielding bars by superposition, tests/decks/oracle/sea_push.py"
DECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../decks/wave_push/TAModel.inp")
PILE, HARDENING, PULL, PRESS = 5.0e8, 0.05, 6.0e6, 8.0e6  # stiffness, yield forces of a pile
TIME = 9.0  # of the wave when its loads are the pattern
SIDE = 1.0e9  # stiffness of the feet's bars along x and y
LEVELS = (5.0, 7.0, 10.0)  # load factors of the three segments


def pattern():
    """The nodal loads of the deck's cards."""
    with open(DECK, encoding="latin-1") as file:
        lines = file.read().split("\n")
    head = next(n for n, text in enumerate(lines) if text[:1] != "*" and text[5:].startswith("wave loads"))
    loads = {}
    for text in lines[head + 1:head + 1 + int(lines[head][:5])]:
        for c in FULL:
            loads[int(text[:5]), c] = float(text[5 + 10 * c:15 + 10 * c] or 0.0)
    return loads


def bar(i, j, stiffness):
    """A bar of length 1: a beam with hinges at both ends."""
    area = stiffness / jacket.E_MODULUS
    return Member(i, j, (jacket.E_MODULUS, jacket.POISSON, 0.0), {"A": area, "J": 1e-3, "I2": 1e-3, "I3": 1e-3}, releases=(4, 5, 10, 11, 9))


def model():
    places = dict(jacket.joints())
    parts = [Member(i, j, (jacket.E_MODULUS, jacket.POISSON, 0.0), jacket.section(t), jacket.THIRD_NODE if leg else "SACS")
             for i, j, t, leg in jacket.members()]
    fixed = {n: (3, 4, 5) for n in jacket.BASE}
    for k, n in enumerate(jacket.BASE):
        for c in range(3):
            ground = 200 + 3 * k + c
            places[ground] = tuple(x - (m == c) for m, x in enumerate(places[n]))
            parts.append(bar(ground, n, HARDENING * PILE if c == 2 else SIDE))
            fixed[ground] = FULL
    return Frame(places, parts, fixed)


def clamp(value, low, high):
    return min(max(value, low), high)


def states():
    """Of each load factor (displacements, forces of the piles): piles act as soft bars and, up to their yield, as further forces."""
    solutions = model().solve(pattern(), *({(n, 2): 1.0} for n in jacket.BASE))
    push, unit = solutions[0], solutions[1:]
    rest = (1.0 - HARDENING) * PILE
    limits = ((1.0 - HARDENING) * -PRESS, (1.0 - HARDENING) * PULL)
    for level in LEVELS:
        extra = [0.0] * 4
        for _ in range(20000):
            moved = [level * push[n, 2] + sum(e * u[n, 2] for e, u in zip(extra, unit)) for n in jacket.BASE]
            wanted = [-clamp(rest * m, *limits) for m in moved]
            if max(abs(a - b) for a, b in zip(wanted, extra)) < 1e-4:
                break
            extra = [a + 0.02 * (b - a) for a, b in zip(extra, wanted)]
        u = {k: level * v + sum(e * w[k] for e, w in zip(extra, unit)) for k, v in push.items()}
        yield u, [HARDENING * PILE * u[n, 2] - e for n, e in zip(jacket.BASE, extra)]


def wave_push():
    lines = []
    for page, (u, forces) in enumerate(states(), 1):
        for n, c in ((24, 0), (24, 2), (53, 0), (5, 0), (62, 2), (63, 2)):
            lines.append(line(f"displacement {'XYZ'[c]} {n} print {page}", u[n, c], 2e-5, SOLVER))
        for k, force in enumerate(forces):
            lines.append(line(f"force 2 {3 * k + 3} print {page}", force, 2e-5, SOLVER))
            code = int(not -PRESS < force < PULL)
            lines.append(f"yield 2 {3 * k + 3} print {page} = {code}")
    return lines


DECKS = [wave_push]
