"""An independent solver for motions in time, for the figures that decks expect.

The unknowns are the accelerations at the end of a step (the program solves for increments of displacement), the law of a bar is
a return mapping from its total extension (the program goes on from event to event), every step is iterated until its residual
is a rounding error. The equation of a step is that of Hilber, Hughes and Taylor: loads and bar forces weighted with 1 - AB at the
end of the step and AB at its start, damping at the velocity v' - AB DT a, which is the time that those weights speak of.

Beside it: the exact motion of an oscillator under a record of straight lines, and the exact average acceleration recurrence.
"""
import math

from frame import dense_solve


class Bar:
    """A perfectly plastic branch of stiffness (1-r)EA/L beside an elastic one of rEA/L; BO, BT damp with EA/L and with the tangent."""

    def __init__(self, i, j, EA, r=0.0, fy=math.inf, BO=0.0, BT=0.0):
        self.i, self.j, self.EA, self.r, self.fy, self.BO, self.BT = i, j, EA, r, fy, BO, BT
        self.slip = 0.0  # of the plastic branch

    def place(self, nodes):
        way = [b - a for a, b in zip(nodes[self.i], nodes[self.j])]
        length = math.sqrt(sum(x * x for x in way))
        self.unit = [x / length for x in way]
        self.k = self.EA / length

    def ends(self):
        return [((self.i, a), -self.unit[a]) for a in range(3)] + [((self.j, a), self.unit[a]) for a in range(3)]

    def law(self, extension):
        """(force, tangent, slip) at a total extension."""
        stiff, soft = (1.0 - self.r) * self.k, self.r * self.k
        limit = (1.0 - self.r) * self.fy
        branch = stiff * (extension - self.slip)
        if abs(branch) <= limit:
            return branch + soft * extension, self.k, self.slip
        held = math.copysign(limit, branch)
        return held + soft * extension, soft, extension - held / stiff


class Bars:
    """Bars between nodes; `places` are the (node, axis) that move, by themselves or by a record."""

    def __init__(self, nodes, bars, places):
        self.places, self.bars = list(places), bars
        number = {d: k for k, d in enumerate(self.places)}
        for bar in bars:
            bar.place(nodes)
            bar.terms = [(number[d], c) for d, c in bar.ends() if d in number and c]

    def stretch(self, bar, vector):
        return sum(c * vector[p] for p, c in bar.terms)

    def respond(self, u, w):
        """(resisting forces, damping forces, tangents of the bars)."""
        R, D, tangents = [0.0] * len(u), [0.0] * len(u), []
        for bar in self.bars:
            force, tangent, _ = bar.law(self.stretch(bar, u))
            damp = (bar.BO * bar.k + bar.BT * tangent) * self.stretch(bar, w)
            tangents.append(tangent)
            for p, c in bar.terms:
                R[p] += c * force
                D[p] += c * damp
        return R, D, tuple(tangents)

    def matrices(self, tangents):
        """(tangent stiffness, damping matrix)."""
        n = len(self.places)
        K, C = ([[0.0] * n for _ in range(n)] for _ in range(2))
        for bar, tangent in zip(self.bars, tangents):
            for p, cp in bar.terms:
                for q, cq in bar.terms:
                    K[p][q] += cp * cq * tangent
                    C[p][q] += cp * cq * (bar.BO * bar.k + bar.BT * tangent)
        return K, C

    def accept(self, u):
        for bar in self.bars:
            bar.slip = bar.law(self.stretch(bar, u))[2]

    def force(self, number, u):
        return self.bars[number - 1].law(self.stretch(self.bars[number - 1], u))[0]


class Linear:
    """A stiffness matrix with damping BO K."""

    def __init__(self, places, K, BO=0.0):
        self.places, self.K, self.BO = list(places), K, BO

    def respond(self, u, w):
        return self.times(u), [self.BO * x for x in self.times(w)], ()

    def times(self, u):
        return [sum(k * x for k, x in zip(row, u)) for row in self.K]

    def matrices(self, _):
        return self.K, [[self.BO * k for k in row] for row in self.K]

    def accept(self, u):
        pass


class Motion:
    """mass {place: mass}; `driven` places follow what each step tells them. Loads and moves are {place: value}."""

    def __init__(self, model, mass, driven=(), alpha=0.0, dmass=0.0, damped=True):
        self.model, self.places = model, model.places
        n = len(self.places)
        self.M = [mass.get(d, 0.0) for d in self.places]
        self.driven = [d in driven for d in self.places]
        self.AB, self.dmass, self.damped = -alpha, dmass, damped
        self.beta, self.gamma = 0.25 * (1.0 - alpha) ** 2, 0.5 - alpha
        self.u, self.v, self.a = [0.0] * n, [0.0] * n, [0.0] * n
        self.time, self.external, self.plastic, self.viscous = 0.0, 0.0, 0.0, 0.0
        self.inverses, self.extremes = {}, {}

    def vector(self, values):
        return [values.get(d, 0.0) for d in self.places]

    def kinetic(self):
        return 0.5 * sum(m * v * v for m, v, held in zip(self.M, self.v, self.driven) if not held)

    def unbalance(self):
        return self.external - self.kinetic() - self.plastic - self.viscous

    def begin(self, load=None, velocity=None, acceleration=None):
        """Start of a macro: load at its first moment; what is not told of velocities and accelerations stays."""
        before = self.kinetic()
        if velocity is not None or acceleration is not None:
            self.v, self.a = self.vector(velocity or {}), self.vector(acceleration or {})
        self.external += self.kinetic() - before
        self.P = self.vector(load or {})
        self.R, D, _ = self.model.respond(self.u, self.v)
        self.D = [d + self.dmass * m * v for d, m, v in zip(D, self.M, self.v)]
        self.start = self.u[:]
        self.note()

    def trial(self, dt, a):
        b, g = self.beta, self.gamma
        u = [x + dt * v + dt * dt * ((0.5 - b) * old + b * new) for x, v, old, new in zip(self.u, self.v, self.a, a)]
        v = [y + dt * ((1.0 - g) * old + g * new) for y, old, new in zip(self.v, self.a, a)]
        return u, v, [y - self.AB * dt * old for y, old in zip(v, self.a)]

    def inverse(self, dt, tangents):
        key = dt, tangents
        if key not in self.inverses:
            K, C = self.model.matrices(tangents)
            n = len(self.places)
            J = [[(1.0 - self.AB) * self.beta * dt * dt * K[p][q] + self.gamma * dt * (C[p][q] + (self.dmass * self.M[p] if p == q else 0.0)) +
                  (self.M[p] if p == q else 0.0) for q in range(n)] for p in range(n)]
            for p in range(n):
                if self.driven[p]:
                    J[p] = [float(p == q) for q in range(n)]
            self.inverses[key] = dense_solve(J, [[float(p == q) for q in range(n)] for p in range(n)])
        return self.inverses[key]

    def step(self, dt, load=None, moved=None):
        """One step of constant size; `moved`: how far each driven place is from where the macro began."""
        P, moved = self.vector(load or {}), self.vector(moved or {})
        for p in range(len(P)):
            if self.driven[p]:
                self.v[p], self.a[p] = (self.start[p] + moved[p] - self.u[p]) / dt, 0.0
        a, AB, before = [0.0 if held else x for x, held in zip(self.a, self.driven)], self.AB, math.inf
        for count in range(60):
            u, v, w = self.trial(dt, a)
            R, D, tangents = self.model.respond(u, w)
            D = [d + self.dmass * m * x for d, m, x in zip(D, self.M, w)]
            G = [0.0 if held else (1.0 - AB) * (p - r) + AB * (p0 - r0) - m * x - d
                 for held, p, p0, r, r0, m, x, d in zip(self.driven, P, self.P, R, self.R, self.M, a, D)]
            change = [sum(f * g for f, g in zip(row, G)) for row in self.inverse(dt, tangents)]
            a = [x + y for x, y in zip(a, change)]
            largest, size = max(map(abs, change)), 1.0 + max(map(abs, a))
            if count and (largest <= 1e-13 * size or 0.5 * before <= largest <= 1e-7 * size):  # as small as rounding lets it become
                break
            before = largest
        else:
            raise ArithmeticError(f"no equilibrium at {self.time + dt}")
        self.finish(dt, a, P)

    def finish(self, dt, a, P):
        u, v, w = self.trial(dt, a)
        R, D, _ = self.model.respond(u, w)
        D = [d + self.dmass * m * x for d, m, x in zip(D, self.M, w)]
        for p, m in enumerate(self.M):
            way = u[p] - self.u[p]
            if m == 0.0 and not self.driven[p]:
                v[p] = v[p] if self.damped else way / dt
                a[p] = (v[p] - self.v[p]) / dt
            self.external += 0.5 * way * (self.R[p] + R[p] + self.D[p] + D[p] if self.driven[p] else self.P[p] + P[p])
            self.plastic += 0.5 * way * (self.R[p] + R[p])
            self.viscous += 0.5 * way * (self.D[p] + D[p])
        self.u, self.v, self.a, self.P, self.R, self.D = u, v, a, P, R, D
        self.model.accept(u)
        self.time += dt
        self.note()

    def note(self):
        for d, x in zip(self.places, self.u):
            low, high = self.extremes.get(d, (0.0, 0.0))
            self.extremes[d] = min(low, x), max(high, x)

    def at(self, place, vector=None):
        return (self.u if vector is None else vector)[self.places.index(place)]


def line_at(points, t, outside=0.0):
    """Value of a record of straight lines between (time, value); None for `outside` holds the ends."""
    if t < points[0][0] or t > points[-1][0] + 1e-6 * (points[-1][0] - points[-2][0]):
        if outside is None:
            return points[0][1] if t < points[0][0] else points[-1][1]
        return outside
    k = max([0] + [n for n, point in enumerate(points[:-1]) if point[0] <= t])
    (t0, f0), (t1, f1) = points[k], points[k + 1]
    return f1 if t1 == t0 else f0 + (f1 - f0) * min((t - t0) / (t1 - t0), 1.0)


def exact_motion(omega, zeta, dt, forces):
    """Displacements at the points of a record of forces per mass, straight between them, from rest: no error but rounding.

    On each stretch the particular solution is a straight line, the rest a free motion.
    """
    damped, fade = omega * math.sqrt(1.0 - zeta * zeta), zeta * omega
    c, s = math.exp(-fade * dt) * math.cos(damped * dt), math.exp(-fade * dt) * math.sin(damped * dt)
    u, v, path = 0.0, 0.0, [0.0]
    for f0, f1 in zip(forces, forces[1:]):
        rate = (f1 - f0) / dt / omega ** 2
        level = f0 / omega ** 2 - 2.0 * zeta / omega * rate
        x = u - level
        y = (v - rate + fade * x) / damped
        u = level + rate * dt + c * x + s * y
        v = rate + (damped * y - fade * x) * c - (damped * x + fade * y) * s
        path.append(u)
    return path


def average_turn(omega, dt):
    """Angle by which the average acceleration method turns an undamped free oscillation in a step."""
    return 2.0 * math.atan(0.5 * omega * dt)
