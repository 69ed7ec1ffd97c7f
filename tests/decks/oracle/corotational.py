"""Space frames of large displacements and rotations, in equilibrium as a whole: no increments.

A node has a place and a rotation matrix. A member's axes follow from the chord and the mean of its turned axes 2; its natural deformations
are the logarithms of the end rotations against these axes and the change of the chord's length (M. A. Crisfield, Comput. Methods Appl. Mech. Eng. 81
(1990)). Forces on the nodes are the natural forces on the virtual work of the deformations, whose derivatives are taken by differences. Equilibrium is
found by Newton's method; states that it left can be checked alone. Unknowns and loads as in frame.py.
"""
import math

from frame import FULL, cross, dot, less, local_axes, unit

STEP = 1e-6  # of the differences, in members' lengths and radians


def turned(R, a):
    return tuple(dot(row, a) for row in R)


def product(A, B):
    columns = list(zip(*B))
    return [[dot(row, column) for column in columns] for row in A]


def rotation(w):
    """The matrix that turns by the vector w."""
    angle = math.sqrt(dot(w, w))
    s, c = (math.sin(angle) / angle, (1.0 - math.cos(angle)) / angle ** 2) if angle > 1e-8 else (1.0, 0.5)
    x, y, z = w
    W = [[0.0, -z, y], [z, 0.0, -x], [-y, x, 0.0]]
    WW = product(W, W)
    return [[float(i == j) + s * W[i][j] + c * WW[i][j] for j in range(3)] for i in range(3)]


def vector_of(triad, frame):
    """The rotation from a frame to a triad, as a vector in the frame."""
    M = [[dot(r, a) for a in triad] for r in frame]
    w = (0.5 * (M[2][1] - M[1][2]), 0.5 * (M[0][2] - M[2][0]), 0.5 * (M[1][0] - M[0][1]))
    sine = math.sqrt(dot(w, w))
    f = math.asin(sine) / sine if sine > 1e-9 else 1.0
    return tuple(f * c for c in w)


def deformations(chord, L, triad_i, triad_j):
    """About axis 2 at I and J, about axis 3 at I and J, twist, extension; and the axes of the member."""
    x = unit(chord)
    z = unit(cross(x, tuple(a + b for a, b in zip(triad_i[1], triad_j[1]))))
    frame = (x, cross(z, x), z)
    a, b = vector_of(triad_i, frame), vector_of(triad_j, frame)
    return (a[1], b[1], a[2], b[2], b[0] - a[0], math.sqrt(dot(chord, chord)) - L), frame


class Space:
    """nodes and members as in frame.Frame; bowing: the curved member's axis is longer than its chord."""

    def __init__(self, nodes, members, fixed, bowing=False):
        self.nodes, self.members, self.bowing = nodes, members, bowing
        used = sorted({n for m in members for n in (m.i, m.j)})
        self.free = [(n, c) for n in used for c in FULL if c not in fixed.get(n, ())]
        self.used = used
        self.parts = []
        for m in members:
            start, end = nodes[m.i], nodes[m.j]
            self.parts.append((m, math.dist(start, end), local_axes(start, end, m.rule, m.angle)))

    def start(self):
        return {n: ((0.0, 0.0, 0.0), rotation((0.0, 0.0, 0.0))) for n in self.used}

    def member_state(self, part, state):
        m, L, axes = part
        (ui, Ri), (uj, Rj) = state[m.i], state[m.j]
        chord = tuple(b - a + q - p for a, b, p, q in zip(self.nodes[m.i], self.nodes[m.j], ui, uj))
        return chord, [turned(Ri, a) for a in axes], [turned(Rj, a) for a in axes]

    def natural_forces(self, part, e):
        """The forces of the six deformations and the stiffness that a tangent takes for them."""
        m, L, _ = part
        G = m.E / (2.0 * (1.0 + m.nu))
        s = m.section
        strain = e[5] / L
        if self.bowing:
            strain += sum(2.0 * a * a - a * b + 2.0 * b * b for a, b in (e[:2], e[2:4])) / 30.0
        P = m.E * s["A"] * strain
        k = [[0.0] * 6 for _ in range(6)]
        for first, I in ((0, s["I2"]), (2, s["I3"])):
            own, other = 4.0 * m.E * I / L + P * L / 7.5, 2.0 * m.E * I / L - P * L / 30.0
            k[first][first] = k[first + 1][first + 1] = own
            k[first][first + 1] = k[first + 1][first] = other
        k[4][4] = G * s["J"] / L
        q = [sum(a * b for a, b in zip(row, e)) for row in k[:5]] + [P]
        k[5][5] = m.E * s["A"] / L
        return q, k

    def gradient(self, part, chord, ti, tj):
        """Rows of the derivatives of the six deformations by the twelve end freedoms (spins for rotations)."""
        L = part[1]
        rows = [[0.0] * 12 for _ in range(6)]
        for c in range(9):
            sides = []
            for h in (STEP, -STEP):
                moved = [list(chord), ti, tj]
                if c < 3:
                    moved[0][c] += h * L
                else:
                    spin = tuple(h * float(c % 3 == k) for k in range(3))
                    end = 1 if c < 6 else 2
                    moved[end] = [tuple(p + q for p, q in zip(a, cross(spin, a))) for a in moved[end]]
                sides.append(deformations(moved[0], L, moved[1], moved[2])[0])
            span = 2.0 * STEP * (L if c < 3 else 1.0)
            for k in range(6):
                d = (sides[0][k] - sides[1][k]) / span
                if c < 3:
                    rows[k][c], rows[k][6 + c] = -d, d
                else:
                    rows[k][c if c < 6 else c + 3] = d
        return rows

    def forces(self, state, matrix=False):
        """Internal forces of all freedoms {(node, component): force}, and the rows of a tangent."""
        f, rows = {(n, c): 0.0 for n in self.used for c in FULL}, {p: {} for p in self.free}
        for part in self.parts:
            m, L, _ = part
            chord, ti, tj = self.member_state(part, state)
            e, frame = deformations(chord, L, ti, tj)
            q, k = self.natural_forces(part, e)
            B = self.gradient(part, chord, ti, tj)
            places = [(m.i, c) for c in FULL] + [(m.j, c) for c in FULL]
            for a, p in enumerate(places):
                f[p] += sum(q[n] * B[n][a] for n in range(6))
            if matrix:
                self.add_tangent(rows, places, B, k, q[5] / L, frame[0])
        return f, rows

    @staticmethod
    def add_tangent(rows, places, B, k, tension, x):
        kB = [[sum(k[n][o] * B[o][b] for o in range(6) if k[n][o]) for b in range(12)] for n in range(6)]
        for a, p in enumerate(places):
            if p not in rows:
                continue
            for b, q in enumerate(places):
                if q in rows:
                    value = sum(B[n][a] * kB[n][b] for n in range(6))
                    if a % 6 < 3 and b % 6 < 3:
                        string = tension * (float(a % 6 == b % 6) - x[a % 6] * x[b % 6])
                        value += string if (a < 6) == (b < 6) else -string
                    rows[p][q] = rows[p].get(q, 0.0) + value

    def unbalance(self, state, load):
        f, _ = self.forces(state)
        return {p: load.get(p, 0.0) - f[p] for p in self.free}

    def moved(self, state, d):
        new = {}
        for n, (u, R) in state.items():
            shift = tuple(d.get((n, c), 0.0) for c in range(3))
            spin = tuple(d.get((n, 3 + c), 0.0) for c in range(3))
            new[n] = (tuple(a + b for a, b in zip(u, shift)), product(rotation(spin), R) if any(spin) else R)
        return new

    def find(self, state, dead, pattern, target, level, tolerance):
        """(state, level) where the freedom `target` = ((node, component), value) under dead + level pattern; value None: that level."""
        for _ in range(60):
            f, rows = self.forces(state, matrix=True)
            rest = {p: dead.get(p, 0.0) + level * pattern.get(p, 0.0) - f[p] for p in self.free}
            place, value = target
            miss = 0.0 if value is None else value - state[place[0]][0][place[1]]
            if max(map(abs, rest.values())) < tolerance and abs(miss) < 1e-9:
                return state, level
            own, by_load = solve_rows(rows, [rest, pattern])
            change = 0.0 if value is None else (miss - own[place]) / by_load[place]
            level += change
            state = self.moved(state, {p: own[p] + change * by_load[p] for p in self.free})
        raise ArithmeticError("Newton's method has not converged")


def solve_rows(rows, cases):
    """Solutions of a symmetric system of sparse rows, unknowns eliminated in the order of the fewest neighbours."""
    rows = {p: dict(row) for p, row in rows.items()}
    right = {p: [case.get(p, 0.0) for case in cases] for p in rows}
    done = []
    left = set(rows)
    while left:
        p = min(left, key=lambda q: (len(rows[q]), q))
        left.discard(p)
        row, own = rows.pop(p), right.pop(p)
        pivot = row.pop(p)
        done.append((p, pivot, row, own))
        for q in row:
            other = rows[q]
            f = other.pop(p) / pivot
            for r, value in row.items():
                other[r] = other.get(r, 0.0) - f * value
            right[q] = [a - f * b for a, b in zip(right[q], own)]
    answers = [{} for _ in cases]
    for p, pivot, row, own in reversed(done):
        for k, u in enumerate(answers):
            u[p] = (own[k] - sum(value * u[q] for q, value in row.items())) / pivot
    return answers


def apart(a, b):
    return max(abs(x) for x in less(a, b))
