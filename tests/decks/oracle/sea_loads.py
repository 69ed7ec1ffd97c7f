"""Independent loads of the sea on slender members: Morison's equation integrated finely, current, buoyancy by pressure.

The vertical axis is Z, upward. A `Sea` answers for points in space; a member's load is summed over panels of five Gauss
points. Where a member begins to be dry is told by `upto`:
- "surface": the wave's own surface, found along the member, however often it cuts;
- an elevation: the still water level, say, whatever the surface does;
- "halved": the rule of thumb of a search that halves its step seven times from end A (two ends alone tell what is wet).
Above `upper` nothing counts.
"""
import math

from waves import Components

FIVE = tuple((0.5 + 0.5 * x, 0.5 * w) for x, w in (
    (0.0, 128.0 / 225.0), *((s * math.sqrt(5.0 - q * 2.0 * math.sqrt(10.0 / 7.0)) / 3.0, (322.0 + q * 13.0 * math.sqrt(70.0)) / 900.0)
                            for s in (-1.0, 1.0) for q in (1.0, -1.0))))
FOUR = tuple((0.5 + 0.5 * x, 0.5 * w) for x, w in (
    (s * math.sqrt(3.0 / 7.0 - q * 2.0 / 7.0 * math.sqrt(1.2)), (18.0 + q * math.sqrt(30.0)) / 36.0) for s in (-1.0, 1.0) for q in (1.0, -1.0)))
RULES = {1: ((0.5, 1.0),), 2: ((0.5 - math.sqrt(1.0 / 12.0), 0.5), (0.5 + math.sqrt(1.0 / 12.0), 0.5)),
         3: ((0.5 - math.sqrt(0.15), 5.0 / 18.0), (0.5, 8.0 / 18.0), (0.5 + math.sqrt(0.15), 5.0 / 18.0)), 4: FOUR, 5: FIVE}


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def along(A, B, f):
    return tuple(a + f * (b - a) for a, b in zip(A, B))


class Profile:
    """Current at levels below mean water level, straight between them and beyond the ends: [(level, (x, y))].

    stretching: 1 the value of level 0 above still water; 2 levels stretched in proportion from the bed to the surface;
    3 stretched as a water particle of a small wave rises; 0 as it stands."""

    def __init__(self, rows, stretching=1):
        self.rows, self.stretching = rows, stretching

    def now(self, t):
        return self

    def at_level(self, level):
        pairs = list(zip(self.rows, self.rows[1:]))
        (a, va), (b, vb) = next((p for p in pairs if level <= p[1][0]), pairs[-1])
        r = (level - a) / (b - a)
        return tuple(x + r * (y - x) for x, y in zip(va, vb))

    def level(self, z, eta, d, L):
        if self.stretching == 1:
            return max(-z, 0.0)
        if self.stretching == 2:
            return d - (d + z) * d / (d + eta)
        if self.stretching == 3:
            ratio = 2.0 * math.pi / L
            low, high = -d, d  # above the surface the level goes on
            for _ in range(80):
                middle = 0.5 * (low + high)
                here = middle - z + eta * math.sinh(ratio * (d + middle)) / math.sinh(ratio * d)
                low, high = (middle, high) if here < 0.0 else (low, middle)
            return -0.5 * (low + high)
        return -z


class Turning(Profile):
    """A current that turns from one profile at a time to another, each with its own levels; before and behind it stands still."""

    def __init__(self, first, last, times):
        super().__init__(first.rows, first.stretching)
        self.first, self.last, self.times = first, last, times

    def now(self, t):
        r = min(max((t - self.times[0]) / (self.times[1] - self.times[0]), 0.0), 1.0)
        rows = [(a + r * (b - a), tuple(x + r * (y - x) for x, y in zip(va, vb))) for (a, va), (b, vb) in zip(self.first.rows, self.last.rows)]
        return Profile(rows, self.stretching)


class Sea:
    """A wave (or none), a current (or none), water of mass density rho and depth d; direction is where the wave goes."""

    def __init__(self, wave, rho, d, direction=(1.0, 0.0), current=None, mwl=0.0, lower=None, upper=math.inf, ramp=0.0, floor=-math.inf):
        self.upper, self.floor = upper, floor  # no wave forces above and below; currents go on below the floor
        self.wave, self.rho, self.d, self.direction, self.current, self.mwl, self.ramp = wave, rho, d, direction, current, mwl, ramp
        self.lower = mwl - d if lower is None else lower
        self.reach = getattr(wave, "H", math.inf)  # no trough is deeper

    def place(self, p):
        return p[0] * self.direction[0] + p[1] * self.direction[1]

    def eta(self, p, t):
        if self.wave is None:
            return 0.0
        return self.wave.eta(p if isinstance(self.wave, Components) else self.place(p), t)

    def surface(self, p, t):
        return self.mwl + self.eta(p, t)

    def water(self, p, t):
        """Velocity with current, acceleration."""
        z = p[2] - self.mwl
        if self.wave is None or p[2] < self.floor:
            u, a, w, b = (0.0, 0.0), (0.0, 0.0), 0.0, 0.0
        elif isinstance(self.wave, Components):
            u, w, a, b = self.wave.motion(p, z, t)
        else:
            one, w, two, b = self.wave.motion(self.place(p), z, t)
            u, a = [one * c for c in self.direction], [two * c for c in self.direction]
        c = (0.0, 0.0)
        if self.current:
            eta = self.wave.eta_of_currents(self.place(p), t) if hasattr(self.wave, "eta_of_currents") else self.eta(p, t)
            current = self.current.now(t)
            c = current.at_level(current.level(z, eta, self.d, self.wave.L if self.wave else 1.0))
        return (u[0] + c[0], u[1] + c[1], w), (a[0], a[1], b)

    def factor(self, t):
        return t / self.ramp if self.ramp and t < self.ramp else 1.0


class Tube:
    """What the water sees of a member from A to B."""

    def __init__(self, A, B, D, CD=1.0, CM=2.0, CDS=0.0, points=None):
        self.A, self.B, self.D, self.CD, self.CM, self.CDS, self.points = A, B, D, CD, CM, CDS, points
        self.length = math.dist(A, B)
        self.e = tuple((b - a) / self.length for a, b in zip(A, B))

    def per_length(self, sea, p, t, velocity=(0.0, 0.0, 0.0)):
        v, a = sea.water(p, t)
        v = tuple(x - y for x, y in zip(v, velocity))
        vt, at = dot(v, self.e), dot(a, self.e)
        vn = tuple(x - vt * y for x, y in zip(v, self.e))
        an = tuple(x - at * y for x, y in zip(a, self.e))
        drag = 0.5 * self.CD * self.D * sea.rho * math.sqrt(dot(vn, vn))
        inertia = 0.25 * math.pi * self.CM * self.D ** 2 * sea.rho
        skin = 0.5 * math.pi * self.CDS * self.D * sea.rho * abs(vt) * vt
        return tuple(drag * x + inertia * y + skin * z for x, y, z in zip(vn, an, self.e))

    def wet_parts(self, sea, t, upto):
        """Fractions [(from, to)] of the length in the water and above the bed."""
        low, high = self.A[2], self.B[2]
        if upto in ("surface", "halved") and max(low, high) < sea.mwl - sea.reach and min(low, high) >= sea.lower:
            return [(0.0, 1.0)]
        if upto == "surface":
            def under(f):
                p = along(self.A, self.B, f)
                return min(sea.surface(p, t) - p[2], p[2] - sea.lower + 1e-9, sea.upper - p[2])
            return intervals(under)
        if upto == "halved":
            band = intervals(lambda f: min(sea.upper - (low + f * (high - low)), low + f * (high - low) - sea.lower + 1e-9))
            both = [(max(a, c), min(b, d)) for a, b in self.halved(sea, t) for c, d in band]
            return [(a, b) for a, b in both if a < b]
        return intervals(lambda f: min(upto - (low + f * (high - low)), low + f * (high - low) - sea.lower + 1e-9))

    def halved(self, sea, t):
        gap = [sea.surface(p, t) - p[2] for p in (self.A, self.B)]
        if gap[0] < 0.0 and gap[1] < 0.0:
            return []
        if gap[0] >= 0.0 and gap[1] >= 0.0:
            return [(0.0, 1.0)]
        f, step = 0.0, 1.0
        while step >= 0.01 and gap[0] != 0.0:
            step *= 0.5
            p = along(self.A, self.B, f + step)
            here = sea.surface(p, t) - p[2]
            f += step if gap[0] * here >= 0.0 else 0.0
            if here == 0.0:
                break
        return [(0.0, f)] if gap[0] >= 0.0 else [(f, 1.0)]

    def split(self, sea, parts, t=0.0):
        """Parts cut where the current's profile has a corner."""
        low, high = self.A[2] - sea.mwl, self.B[2] - sea.mwl
        corners = [(-level - low) / (high - low) for level, _ in sea.current.now(t).rows] if sea.current and low != high else []
        for a, b in parts:
            cuts = [a, *sorted(f for f in corners if a < f < b), b]
            yield from zip(cuts, cuts[1:])

    def loads(self, sea, t, upto="surface", panels=4, velocity=(0.0, 0.0, 0.0)):
        """[(point, force)] whose sum is the load."""
        rule, panels = (RULES[self.points], 1) if self.points else (FIVE, panels)
        found = []
        for a, b in self.split(sea, self.wet_parts(sea, t, upto), t):
            for k in range(panels):
                start, size = a + (b - a) * k / panels, (b - a) / panels
                for x, w in rule:
                    p = along(self.A, self.B, start + size * x)
                    share = w * size * self.length * sea.factor(t)
                    found.append((p, tuple(share * q for q in self.per_length(sea, p, t, velocity))))
        return found

    def straight_loads(self, sea, t):
        """The load as load lines tell it: straight between what acts at the two ends of each piece, the surface by halvings."""
        found = []
        for a, b in self.split(sea, self.wet_parts(sea, t, "halved"), t):
            first, last = (self.per_length(sea, along(self.A, self.B, f), t) for f in (a, b))
            half = 0.5 * (b - a) * self.length * sea.factor(t)
            found.append((along(self.A, self.B, a + (b - a) / 3.0), tuple(half * q for q in first)))
            found.append((along(self.A, self.B, b - (b - a) / 3.0), tuple(half * q for q in last)))
        return found


def intervals(f, steps=24):
    """Where a function on 0 to 1 is not negative."""
    found, start = [], 0.0 if f(0.0) >= 0.0 else None
    for k in range(steps):
        a, b = k / steps, (k + 1) / steps
        if (f(a) >= 0.0) != (f(b) >= 0.0):
            wet = f(a) >= 0.0
            for _ in range(60):
                middle = 0.5 * (a + b)
                a, b = (middle, b) if (f(middle) >= 0.0) == wet else (a, middle)
            if wet:
                found.append((start, a))
                start = None
            else:
                start = b
    return found + ([(start, 1.0)] if start is not None and start < 1.0 else [])


def total(loads, about=(0.0, 0.0, 0.0)):
    """Force and moment of point loads about a point."""
    F, M = [0.0] * 3, [0.0] * 3
    for p, q in loads:
        m = cross([a - b for a, b in zip(p, about)], q)
        for i in range(3):
            F[i] += q[i]
            M[i] += m[i]
    return tuple(F), tuple(M)


def sum_of(tubes, sea, t, upto="surface", about=(0.0, 0.0, 0.0), panels=2):
    return total([load for tube in tubes for load in tube.loads(sea, t, upto, panels)], about)


# --- buoyancy ---------------------------------------------------------------------------------------------------------

def wet_share(A, B, mwl=0.0):
    """Fractions of the axis under still water."""
    return intervals(lambda f: mwl - along(A, B, f)[2])


def fixed_ends(A, B, density, parts):
    """(force at I, moment at I, force at J, moment at J) of a line load `density(f)` on a member clamped at both ends:
    each piece of load by the shapes that the member would bend into, forces along the axis by straight shapes."""
    length = math.dist(A, B)
    e = tuple((b - a) / length for a, b in zip(A, B))
    FI, MI, FJ, MJ = ([0.0] * 3 for _ in range(4))
    for a, b in parts:
        for k in range(4):
            start, size = a + (b - a) * k / 4, (b - a) / 4
            for x, w in FIVE:
                f = start + size * x
                q = tuple(w * size * length * v for v in density(f))
                qt = dot(q, e)
                across, axial = tuple(v - qt * c for v, c in zip(q, e)), tuple(qt * c for c in e)
                turn = cross(e, across)
                shapes = (1.0 - 3.0 * f * f + 2.0 * f ** 3, 3.0 * f * f - 2.0 * f ** 3,
                          length * (f - 2.0 * f * f + f ** 3), -length * (f * f - f ** 3))
                for i in range(3):
                    FI[i] += shapes[0] * across[i] + (1.0 - f) * axial[i]
                    FJ[i] += shapes[1] * across[i] + f * axial[i]
                    MI[i] += shapes[2] * turn[i]
                    MJ[i] += shapes[3] * turn[i]
    return FI, MI, FJ, MJ


def ring(e, p, radius, density, turns=48):
    """Force per length of the water's pressure on the skin of a tube about p (all of the ring under water)."""
    side = (1.0, 0.0, 0.0) if abs(e[0]) < 0.9 else (0.0, 1.0, 0.0)
    n1 = cross(e, side)
    n1 = tuple(x / math.sqrt(dot(n1, n1)) for x in n1)
    n2 = cross(e, n1)
    F = [0.0] * 3
    for k in range(turns):
        a = 2.0 * math.pi * k / turns
        n = tuple(math.cos(a) * x + math.sin(a) * y for x, y in zip(n1, n2))
        pressure = -density * (p[2] + radius * n[2])
        for i in range(3):
            F[i] -= pressure * n[i] * radius * 2.0 * math.pi / turns
    return tuple(F)


def buoyancy(A, B, D, density, mwl=0.0):
    """Closed tube under its water pressure: end loads (force, moment at I, at J) of the clamped member and its caps."""
    length = math.dist(A, B)
    e = tuple((b - a) / length for a, b in zip(A, B))
    low = [(a[0], a[1], a[2] - mwl) for a in (A, B)]
    FI, MI, FJ, MJ = fixed_ends(A, B, lambda f: ring(e, along(*low, f), 0.5 * D, density), wet_share(A, B, mwl))
    area = 0.25 * math.pi * D * D
    for F, p, sign in ((FI, low[0], 1.0), (FJ, low[1], -1.0)):
        for i in range(3):
            F[i] += sign * density * max(-p[2], 0.0) * area * e[i]
    return FI, MI, FJ, MJ


def displaced(A, B, D, mwl=0.0):
    """Volume under still water of a tube."""
    return 0.25 * math.pi * D * D * math.dist(A, B) * sum(b - a for a, b in wet_share(A, B, mwl))
