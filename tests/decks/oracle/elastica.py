"""Plane beams of any displacement and rotation: the ordinary differential equations of an extensible elastica, by shooting.

x' = (1+e) cos t, z' = (1+e) sin t, t' = m/EI, m' = x' V' - ..., with a constant section force (H, V): no element, no frame and
no increment of it, so the method shares no idea with the program that it checks (E. Reissner, ZAMP 23 (1972) 795-804, without shear).
"""
import math

from frame import dense_solve

STEPS = 60


def rates(state, H, V, EI, EA):
    _, _, turn, moment = state
    c, s = math.cos(turn), math.sin(turn)
    stretch = 1.0 + (H * c + V * s) / EA
    x, z = stretch * c, stretch * s
    return x, z, moment / EI, H * z - V * x


def integrate(L, start, H, V, EI, EA):
    """(x, z, t, m) at the end of a straight beam of length L, by the classical Runge-Kutta method."""
    y, h = start, L / STEPS

    def ahead(k, part):
        return tuple(a + part * h * b for a, b in zip(y, k))

    for _ in range(STEPS):
        k1 = rates(y, H, V, EI, EA)
        k2 = rates(ahead(k1, 0.5), H, V, EI, EA)
        k3 = rates(ahead(k2, 0.5), H, V, EI, EA)
        k4 = rates(ahead(k3, 1.0), H, V, EI, EA)
        y = tuple(a + h / 6.0 * (p + 2.0 * q + 2.0 * r + s) for a, p, q, r, s in zip(y, k1, k2, k3, k4))
    return y


def root(function, unknowns, sizes):
    """Newton's method with differences."""
    for _ in range(30):
        rest = function(unknowns)
        columns = []
        for k, size in enumerate(sizes):
            moved = list(unknowns)
            moved[k] += 1e-6 * size
            columns.append([(a - b) / (1e-6 * size) for a, b in zip(function(moved), rest)])
        step = dense_solve([list(row) for row in zip(*columns)], [[r] for r in rest])
        unknowns = [u - d[0] for u, d in zip(unknowns, step)]
        if all(abs(d[0]) < 1e-10 * (size + abs(u)) for d, size, u in zip(step, sizes, unknowns)):
            return unknowns
    raise ArithmeticError("Newton's method has not converged")


class Toggle:
    """Two straight legs, clamped at both feet, stiffly joined at the crown; the crown moves down by w under P."""

    def __init__(self, half_span, rise, EA, EI):
        self.half_span, self.rise, self.EA, self.EI = half_span, rise, EA, EI
        self.L, self.slope = math.hypot(half_span, rise), math.atan2(rise, half_span)
        self.state = [0.0, 0.0, 0.0]

    def load(self, w):
        """P at a deflection near the one asked for before. By symmetry one leg, whose crown neither turns nor moves sideways."""
        def miss(unknowns):
            H, V, moment = unknowns
            x, z, turn, _ = integrate(self.L, (0.0, 0.0, self.slope, moment), H, V, self.EI, self.EA)
            return [(x - self.half_span) / self.L, (z - self.rise + w) / self.L, turn - self.slope]
        sizes = (self.EI / self.L ** 2, self.EI / self.L ** 2, self.EI / self.L)
        self.state = root(miss, self.state, sizes)
        return -2.0 * self.state[1]
