#!/usr/bin/env python3
"""The jacket pushed over: states of equilibrium by corotational.py and the figures that follow from them.

`jacket_push.py` finds the states anew (a minute) and writes them into jacket_push.states beside this file; the figures need the file alone, and
tests check that what stands there is in equilibrium. A row is: node, displacements, rotation vector; a row of one number is the level.
"""
import math
import os

import corotational
import jacket
from beams import DIRECTIONS, line
from frame import FULL, SACS, Frame, Member

FILE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "jacket_push.states")
MOVES = (1.0, 3.0, 5.0)  # of joint 24 along the push, from where the weight leaves it
BETWEEN = 0.5
LEVEL_LOAD = 2.5e8  # at level 1
FIRST_PUSH = 1.0e4
TOLERANCE = 1.0  # newton: differences leave some hundredths
TARGET = (jacket.TOP[0], 0)


def parts():
    return [Member(i, j, (jacket.E_MODULUS, jacket.POISSON, jacket.TUBES[t][2]), jacket.section(t), jacket.THIRD_NODE if leg else SACS)
            for i, j, t, leg in jacket.members()]


def space(bowing=False):
    return corotational.Space(jacket.joints(), parts(), {n: FULL for n in jacket.BASE}, bowing)


def weight():
    mass = Frame(jacket.joints(), parts(), {}).masses()
    return {p: -jacket.GRAVITY * m for p, m in mass.items() if p[1] == 2}


def pattern():
    return {(n, 0): LEVEL_LOAD / len(jacket.TOP) for n in jacket.TOP}


def states():
    """[(level, state)] of the file, in the order of MOVES."""
    found = []
    with open(FILE, encoding="ascii") as file:
        for row in file:
            numbers = [float(word) for word in row.split()]
            if len(numbers) == 1:
                found.append((numbers[0], {}))
            else:
                found[-1][1][int(numbers[0])] = (tuple(numbers[1:4]), corotational.rotation(numbers[4:7]))
    return found


def rotation_vector(R):
    identity = ((1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, 1.0))
    return corotational.vector_of([corotational.turned(R, a) for a in identity], identity)


def find_states():
    structure, dead, push = space(), weight(), pattern()
    state, level = structure.find(structure.start(), dead, push, (TARGET, None), 0.0, 1e-2)
    rows, move, start = [], 0.0, state[TARGET[0]][0][TARGET[1]]
    while move < MOVES[-1]:
        move += BETWEEN
        state, level = structure.find(state, dead, push, (TARGET, start + move), level, TOLERANCE)
        if any(math.isclose(move, m) for m in MOVES):
            rows.append(f"{level:.15g}")
            rows += [f"{n} " + " ".join(f"{x:.15g}" for x in (*u, *rotation_vector(R))) for n, (u, R) in sorted(state.items())]
    return "\n".join(rows) + "\n"


def jacket_push():
    structure, dead = space(), weight()
    lines = [line("displacement X 24 print 1", FIRST_PUSH * 2.31614175e-8, 1e-6, "small push: the stiffness of the linear jacket, 43175300 N/m"),
             line("displacement Z 24 print 2", -0.00118802184, 1e-5, "weight: independent co-rotational solver, tests/decks/oracle/corotational.py")]
    for move, (level, state) in zip(MOVES, states()):
        page, source = 2 + round(move / BETWEEN), f"joint 24 moved by {move} m: independent co-rotational solver"
        lines.append(line(f"displacement X 24 print {page}", state[24][0][0], 1e-6, "the step"))
        lines.append(line(rf"number /LOAD LEVEL = *([-.\d]+)/ TAModel.out {page}", level, 3e-4, source))
        for n, c, tol in ((24, 2, 3e-4), (53, 0, 3e-4), (53, 2, 3e-4), (5, 0, 5e-4), (45, 0, 5e-4), (45, 2, 3e-3), (41, 0, 2e-3)):
            lines.append(line(f"displacement {DIRECTIONS[c]} {n} print {page}", state[n][0][c], tol, source))
        forces, _ = structure.forces(state)
        for leg, n in enumerate(jacket.BASE):
            for c, tol in ((0, 7e-3), (2, 5e-4)):
                reaction = forces[n, c] - dead.get((n, c), 0.0)
                lines.append(line(f"force 2 {3 * leg + 1 + c} print {page}", -reaction, tol, "reaction, " + source))
    return lines


if __name__ == "__main__":
    with open(FILE, "w", encoding="ascii") as out:
        out.write(find_states())
