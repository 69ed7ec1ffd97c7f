"""What the decks of a topside that the wave reaches and of a member that sheds vortices expect."""
import math

from sea_piles import about
from waves import Steady

RHO, G = 1.025, 9.81


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


class Topside:
    """A box at `corner`, its first side at `turned` degrees from x, in a wave that runs along `direction` from the origin: drag,
    slam and inertia on the two sides that the water meets, the same and buoyancy from below."""

    def __init__(self, wave, direction, corner, turned, sides, solid, factors, drag, inertia, constant, slam):
        self.wave, self.direction, self.corner, self.sides, self.solid = wave, direction, corner, sides, solid
        self.factors, self.drag, self.inertia, self.constant, self.slam = factors, drag, inertia, constant, slam
        c, s = math.cos(math.radians(turned)), math.sin(math.radians(turned))
        self.axes = ((c, s, 0.0), (-s, c, 0.0), (0.0, 0.0, 1.0))

    def place(self, p, q):
        """Global horizontal place of box coordinates."""
        return tuple(self.corner[i] + p * self.axes[0][i] + q * self.axes[1][i] for i in (0, 1))

    def along(self, place):
        return place[0] * self.direction[0] + place[1] * self.direction[1]

    def wet(self, place, t):
        return min(max(self.wave.eta(self.along(place), t) - self.corner[2], 0.0), self.sides[2])

    def water(self, place, z, t):
        """Velocity and acceleration along the axes of the box."""
        u, w, a, b = self.wave.motion(self.along(place), z, t)
        dx, dy = self.direction
        return [[f * sum(x * y for x, y in zip(axis, vector)) for f, axis in zip(self.factors, self.axes)]
                for vector in ((u * dx, u * dy, w), (a * dx, a * dy, b))]

    def loads(self, t, nx, ny, centre):
        """Force and moment about a point, by nx and ny strips along the sides."""
        F, M = [0.0] * 3, [0.0] * 3
        (l, b, _), z0 = self.sides, self.corner[2]

        def act(axis, size, place, z):
            force = [size * c for c in self.axes[axis]]
            turn = cross([x - y for x, y in zip((*place, z), centre)], force)
            for i in range(3):
                F[i] += force[i]
                M[i] += turn[i]
        middle = self.place(0.5 * l, 0.5 * b)
        met, _ = self.water(middle, z0 + 0.5 * self.wet(middle, t), t)
        for axis, strips, breadth, depth in ((0, ny, b, l), (1, nx, l, b)):
            front = depth if met[axis] < 0.0 else 0.0
            for m in range(strips):
                across = (m + 0.5) * breadth / strips
                place = self.place(*((front, across) if axis == 0 else (across, front)))
                h = self.wet(place, t)
                if h > 0.0:
                    v, a = self.water(place, z0 + 0.5 * h, t)
                    A = self.solid * h * breadth / strips
                    c = self.drag[axis] + (self.slam[axis] if v[2] > 0.0 else 0.0)
                    act(axis, 0.5 * RHO * c * v[axis] * abs(v[axis]) * A + RHO * self.inertia[axis] * a[axis] * A * depth, place, z0 + 0.5 * h)
        A, wet = self.solid * l * b / (nx * ny), False
        for m in range(nx):
            for n in range(ny):
                place = self.place((m + 0.5) * l / nx, (n + 0.5) * b / ny)
                h = self.wet(place, t)
                if h > 0.0:
                    wet = True
                    v, a = self.water(place, z0, t)
                    head = 0.5 * RHO * v[2] * v[2] * (self.drag[2] + self.slam[2] if v[2] > 0.0 else -self.drag[2])
                    act(2, A * (head + RHO * h * (self.inertia[2] * a[2] + G)), place, z0)
        if wet:
            for axis in (0, 1):
                for i in range(3):
                    F[i] += self.constant[axis] * self.axes[axis][i]
        return F, M


# --- deck_inundation: four columns under a topside, the crest of H 18, T 14, d 75 up to 10.2 ---------------------------

COLUMN = {"L": 10.0, "EI": 1e8, "EA": 1e8, "GJ": 4e7}
NODES = ((-10.0, -12.0), (18.0, -12.0), (18.0, 10.0), (-10.0, 10.0))
HEAD = 6.0  # level of the nodes
TOPSIDE = {"direction": (0.8, 0.6), "corner": (-16.0, -24.0, 7.0), "turned": 25.0, "sides": (40.0, 30.0, 5.0), "solid": 0.8,
           "factors": (0.9, 0.95, 1.1), "drag": (2.0, 1.9, 1.5), "inertia": (0.6, 0.5, 0.8), "constant": (100.0, -50.0), "slam": (3.0, 2.5, 4.0)}
STRIPS = (16, 12)
TIMES = (0.5, 1.0, 1.5, 2.0, 7.0, 11.5, 12.0, 12.5, 13.0, 13.5, 14.0)  # the surface falls from the crest, is far below, comes back


def column_head(F, M):
    """Displacements and rotations of a fixed column's free head."""
    L, EI = COLUMN["L"], COLUMN["EI"]
    return (F[0] * L ** 3 / (3 * EI) + M[1] * L ** 2 / (2 * EI), F[1] * L ** 3 / (3 * EI) - M[0] * L ** 2 / (2 * EI), F[2] * L / COLUMN["EA"],
            M[0] * L / EI - F[1] * L ** 2 / (2 * EI), M[1] * L / EI + F[0] * L ** 2 / (2 * EI), M[2] * L / COLUMN["GJ"])


def deck_inundation():
    centre = tuple(0.25 * sum(n[i] for n in NODES) for i in (0, 1)) + (HEAD,)
    straight = Topside(Steady(18.0, 14.0, 75.0, G, points=37), **TOPSIDE)
    smooth = Topside(Steady(18.0, 14.0, 75.0, G), **TOPSIDE)
    pages = {}
    for t in TIMES:
        parts = [[0.25 * v for v in load] for load in straight.loads(t, *STRIPS, centre)]
        fine = [[0.25 * v for v in load] for load in smooth.loads(t, 4 * STRIPS[0], 4 * STRIPS[1], centre)]
        pages[round(2 * t)] = column_head(*parts), column_head(*fine)
    lines = []
    for c, axis in enumerate(("X", "Y", "Z", "XR", "YR", "ZR")):
        largest = max(abs(page[0][c]) for page in pages.values())
        for number, (coarse, fine) in pages.items():
            node = 1 + (number + c) % 4
            lines.append(about(f"displacement {axis} {node} print {number}", coarse[c], 5e-4 * largest,
                               "loads of the same strips in the exact steady wave, heads of columns"))
            lines.append(about(f"displacement {axis} {node} print {number}", fine[c], 0.04 * largest, "the same integrated finely"))
    return lines


# --- vortex_lift: rigid piles that shed vortices in a steady current, held across it by bars ---------------------------

SPEED, DIAMETER, LENGTH = 1.5, 0.5, 20.0
MASK = 2 ** 64 - 1


def random_part(*numbers):
    """The output function of SplitMix over seed, stream and index."""
    z = 0
    for n in numbers:
        z = (z + (n & 0xFFFFFFFF) + 0x9E3779B97F4A7C15) & MASK
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9 & MASK
        z = (z ^ z >> 27) * 0x94D049BB133111EB & MASK
        z ^= z >> 31
    return (z >> 11) / 2.0 ** 53


def strouhal(Re):
    """Between the end of Fey, Koenig and Eckelmann's last branch (2E5) and Roshko's 0.27 (3.5E6)."""
    low, high = 2.0e5, 3.5e6
    end = 0.1776 + 2.2023 / math.sqrt(low)
    return end + (0.27 - end) * math.log(Re / low) / math.log(high / low)


def shed(t, group, wakes, seed, St, cl, spread, begin, growth):
    """Lifts of equal parts of a pile, with a wake each."""
    stream = 4096 * group + 1
    whole = 0.5 * RHO * cl * DIAMETER * SPEED ** 2 * LENGTH * min(max((t - begin) / growth, 0.0), 1.0)
    lifts = []
    for wake in range(wakes):
        f = St * SPEED / DIAMETER * (1.0 + spread * (2.0 * random_part(seed, stream, 4 + wake) - 1.0))
        lifts.append(whole / wakes * math.sin(2.0 * math.pi * (random_part(seed, stream, wake) + f * t)))
    return lifts


def shares(place):
    """Of a force at a part of a fixed beam, at both ends."""
    b = 1.0 - place
    return b * b * (3.0 * place + b), place * place * (3.0 * b + place)


def vortex_lift():
    lines = []
    tops = [0.5 * (1.0 + x) for x in (0.8611363115940526, 0.3399810435848563)]  # points of four, weights behind
    weights = (0.3478548451374538, 0.6521451548625461)
    near_top = sum(w * shares(x)[1] for w, x in zip(weights, tops))
    for step in (1, 5, 17, 30, 42, 55, 68, 80, 93, 100):
        t = 0.1 * step
        (one,) = shed(t, 1, 1, 42, 0.2, 0.8, 0.0, 1.0, 4.0)
        upper, lower = shed(t, 2, 2, 7, strouhal(SPEED * DIAMETER / 1.19e-6), 0.5, 0.15, 0.0, 1e-9)
        foot, head = lower * near_top + upper * (1.0 - near_top), upper * near_top + lower * (1.0 - near_top)
        for bar, force, allowed in ((1, 0.5 * one, 2e-5), (2, 0.5 * one, 2e-5), (3, foot, 2e-5), (4, head, 2e-5)):
            lines.append(about(f"force 3 {bar} print {step}", force, allowed, "Strouhal's frequency and the phases of the seed, closed form"))
    return lines


DECKS = [deck_inundation, vortex_lift]
