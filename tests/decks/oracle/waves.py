"""Independent waves for the figures that decks expect [any consistent units]: Airy, Stokes' fifth order, the exact steady wave.

Every wave answers for x along its direction, z above mean water level and time t: `eta(x, t)` and `motion(x, z, t)`, the
horizontal and vertical velocity and acceleration of the water, upward positive. Crests stand at `k (start + x) = omega t`.
Airy wave numbers come from bisection, Stokes' from two nested bisections, the steady wave from Newton's method on a
Fourier series that meets both surface conditions in points (M. M. Rienecker and J. D. Fenton, J. Fluid Mech. 104 (1981)):
no least squares, no iteration on the surface, and no formula of a Jacobian.
"""
import math
import struct

TAU = 2.0 * math.pi


def bisect(f, low, high, turns=200):
    """Where a function that is negative at `low` and positive at `high` passes zero."""
    for _ in range(turns):
        middle = 0.5 * (low + high)
        if not low < middle < high and not high < middle < low:
            break
        low, high = (middle, high) if f(middle) < 0.0 else (low, middle)
    return 0.5 * (low + high)


def wave_number(T, d, g, U=0.0):
    """k of (2 pi / T - k U)^2 = g k tanh(k d), the wave that runs with the current when U is positive."""
    omega = TAU / T
    # up to where the wave stands still in the water the right side falls short; against a current the crossing is the first one
    top = omega / U if U > 0.0 else 40.0 * omega * omega / g + 10.0 / d
    return bisect(lambda k: g * k * math.tanh(k * d) - (omega - k * U) ** 2, 0.0, top)


def depth_ratios(k, d, s):
    """cosh(k s) / sinh(k d) and sinh(k s) / sinh(k d) without overflow."""
    up, down, whole = math.exp(k * (s - d)), math.exp(-k * (s + d)), -math.expm1(-2.0 * k * d)
    return (up + down) / whole, (up - down) / whole


class Airy:
    """T is the period that a fixed observer sees, U the current that carries the wave; Wheeler's stretching on request."""

    def __init__(self, H, T, d, g, U=0.0, wheeler=False, start=0.0, factor=1.0):
        self.H, self.T, self.d, self.g, self.wheeler, self.start, self.factor = H, T, d, g, wheeler, start, factor
        self.k = wave_number(T, d, g, U)
        self.L = TAU / self.k
        self.C = math.sqrt(g * math.tanh(self.k * d) / self.k)  # in the water
        self.T_water = self.L / self.C

    def theta(self, x, t):
        return self.k * (self.start + x) - TAU * t / self.T

    def eta(self, x, t):
        return 0.5 * self.H * math.cos(self.theta(x, t))

    def motion(self, x, z, t):
        theta = self.theta(x, t)
        c, s = math.cos(theta), math.sin(theta)
        height = self.d + z
        if self.wheeler:
            height *= self.d / (self.d + self.eta(x, t))
        omega = TAU / self.T_water
        a, (ch, sh) = 0.5 * self.H * omega, depth_ratios(self.k, self.d, height)
        f = self.factor
        return a * ch * c * f, a * sh * s, a * omega * ch * s * f, -a * omega * sh * c

    def pressure(self, x, z, t, rho):
        """Dynamic part."""
        ch, _ = depth_ratios(self.k, self.d, self.d + z)
        return 0.5 * rho * self.g * self.H * ch * math.tanh(self.k * self.d) * math.cos(self.theta(x, t))


def stokes_terms(kd):
    """Coefficients of L. Skjelbreia and J. Hendrickson (Proc. 7th Conf. Coastal Eng., 1960), C2 as corrected later (H. Nishimura,
    M. Isobe, K. Horikawa, J. Fac. Eng. Univ. Tokyo 34 (1977))."""
    s, c = math.sinh(kd), math.cosh(kd)
    e = c * c
    P, R = 6.0 * e - 1.0, 8.0 * e * e - 11.0 * e + 3.0

    def poly(*a):
        total = 0.0
        for x in a:
            total = total * e + x
        return total
    A = {(1, 1): 1.0 / s, (1, 3): -e * (5.0 * e + 1.0) / (8.0 * s ** 5),
         (1, 5): -poly(1184, -1440, -1992, 2641, -249, 18) / (1536.0 * s ** 11), (2, 2): 3.0 / (8.0 * s ** 4),
         (2, 4): poly(192, -424, -312, 480, -17) / (768.0 * s ** 10), (3, 3): (13.0 - 4.0 * e) / (64.0 * s ** 7),
         (3, 5): poly(512, 4224, -6800, -12808, 16704, -3154, 107) / (4096.0 * s ** 13 * P),
         (4, 4): poly(80, -816, 1338, -197) / (1536.0 * s ** 10 * P),
         (5, 5): -poly(2880, -72480, 324000, -432000, 163470, -16245) / (61440.0 * s ** 11 * P * R)}
    B = {(2, 2): (2.0 * e + 1.0) * c / (4.0 * s ** 3), (2, 4): c * poly(272, -504, -192, 322, 21) / (384.0 * s ** 9),
         (3, 3): 3.0 * (8.0 * e ** 3 + 1.0) / (64.0 * s ** 6),
         (3, 5): poly(88128, -208224, 70848, 54000, -21816, 6264, -54, -81) / (12288.0 * s ** 12 * P),
         (4, 4): c * poly(768, -448, -48, 48, 106, -21) / (384.0 * s ** 9 * P),
         (5, 5): poly(192000, -262720, 83680, 20160, -7280, 7160, -1800, -1050, 225) / (12288.0 * s ** 10 * P * R)}
    C = {1: poly(8, -8, 9) / (8.0 * s ** 4), 2: poly(3840, -4096, -2592, -1008, 5944, -1830, 147) / (512.0 * s ** 10 * P),
         3: -1.0 / (4.0 * s * c), 4: poly(12, 36, -162, 141, -27) / (192.0 * c * s ** 9)}
    return A, B, C


class Stokes:
    """Fifth order. `T_water` is the period in the water, T the one that a fixed observer sees."""

    def __init__(self, H, T, d, g, U=0.0, start=0.0, factor=1.0):
        self.H, self.T, self.d, self.g, self.start, self.factor = H, T, d, g, start, factor
        self.T_water = T if U == 0.0 else bisect(lambda Tw: Tw - T * (1.0 + U / self.solve(Tw)), 0.5 * T, 2.0 * T, 60)
        self.C = self.solve(self.T_water)
        A, B, C = stokes_terms(self.k * d)
        l = self.l
        self.L = TAU / self.k
        self.F = (l, l ** 2 * B[2, 2] + l ** 4 * B[2, 4], l ** 3 * B[3, 3] + l ** 5 * B[3, 5], l ** 4 * B[4, 4], l ** 5 * B[5, 5])
        self.G = tuple(self.C * n * sum(l ** m * A.get((n, m), 0.0) for m in range(1, 6)) for n in range(1, 6))
        self.Q = self.C ** 2 / (2.0 * g) - (l ** 2 * C[3] + l ** 4 * C[4]) / self.k

    def solve(self, T):
        """Celerity in the water; leaves k and lambda."""
        L0 = self.g * T * T / TAU

        def steepness(kd):
            _, B, _ = stokes_terms(kd)
            want = 0.5 * self.H / self.d * kd
            return bisect(lambda l: l + B[3, 3] * l ** 3 + (B[3, 5] + B[5, 5]) * l ** 5 - want, 0.0, want)

        def depth(kd):
            _, _, C = stokes_terms(kd)
            l = steepness(kd)
            return kd * math.tanh(kd) * (1.0 + C[1] * l * l + C[2] * l ** 4) - TAU * self.d / L0
        linear = wave_number(T, self.d, self.g) * self.d
        kd = bisect(depth, 0.75 * linear, 1.0001 * linear, 80)
        self.k, self.l = kd / self.d, steepness(kd)
        return TAU / (self.k * T)

    def theta(self, x, t):
        return self.k * (self.start + x) - TAU * t / self.T

    def eta(self, x, t):
        theta = self.theta(x, t)
        return sum(f * math.cos(n * theta) for n, f in enumerate(self.F, 1)) / self.k

    def eta_of_currents(self, x, t):
        """The surface that currents are stretched to: of first order."""
        return 0.5 * self.H * math.cos(self.theta(x, t))

    def motion(self, x, z, t):
        theta, s, f = self.theta(x, t), self.d + z, self.factor
        u = w = a = b = 0.0
        for n, G in enumerate(self.G, 1):
            ch, sh = G * math.cosh(n * self.k * s), G * math.sinh(n * self.k * s)
            c, si = math.cos(n * theta), math.sin(n * theta)
            u, w, a, b = u + ch * c, w + sh * si, a + n * ch * si, b - n * sh * c
        kC = self.k * self.C
        return u * f, w, a * kC * f, b * kC


def newton(residuals, x, scale, turns=30):
    """Newton's method with a matrix of differences; `scale` is a size for each unknown."""
    for _ in range(turns):
        r = residuals(x)
        rows = [[0.0] * len(x) + [-v] for v in r]
        for j, step in enumerate(scale):
            moved = list(x)
            moved[j] += 1e-7 * step
            for row, a, b in zip(rows, residuals(moved), r):
                row[j] = (a - b) / (1e-7 * step)
        change = eliminate(rows)
        x = [a + b for a, b in zip(x, change)]
        if max(abs(b) / s for b, s in zip(change, scale)) < 1e-11:
            break
    return x


def eliminate(rows):
    """Solution of a dense system whose right side is the last column."""
    n = len(rows)
    for k in range(n):
        p = max(range(k, n), key=lambda i: abs(rows[i][k]))
        rows[k], rows[p] = rows[p], rows[k]
        for i in range(k + 1, n):
            f = rows[i][k] / rows[k][k]
            if f:
                rows[i] = [0.0] * k + [a - f * b for a, b in zip(rows[i][k:], rows[k][k:])]
    x = [0.0] * n
    for i in reversed(range(n)):
        x[i] = (rows[i][n] - sum(rows[i][j] * x[j] for j in range(i + 1, n))) / rows[i][i]
    return x


class Steady:
    """The exact steady wave by a Fourier series of `order` terms, on a uniform current U along it. T is the period that a fixed
    observer sees; `motion` is the wave's part, without the current; accelerations are those of particles that it alone moves, in
    the frame of the crest over the ground. With `points` the surface is straight between so many points from crest to trough."""

    def __init__(self, H, T, d, g, U=0.0, order=16, start=0.0, factor=1.0, points=0):
        self.H, self.T, self.d, self.g, self.U, self.N, self.start, self.factor = H, T, d, g, U, order, start, factor
        N, k = order, wave_number(T, d, g, U)
        c = TAU / (k * T) - U
        # k, stream function and Bernoulli constant at the surface, elevations, coefficients
        x = [k, 0.0, 0.5 * c * c / g] + [0.0] * (2 * N + 1)
        for part in (0.3, 0.6, 0.85, 1.0):
            size = 0.5 * part * H
            if part == 0.3:
                x[3:4 + N] = [size * math.cos(math.pi * m / N) for m in range(N + 1)]
                x[4 + N] = size * g * k / math.sqrt(g * k * math.tanh(k * d))
            scale = [k, c * H, H] + [H] * (N + 1) + [c] * N
            x = newton(lambda y, h=part * H: self.residuals(y, h), x, scale)
        self.k, _, self.Q = x[:3]
        self.B = x[4 + N:]
        self.etas = x[3:4 + N]
        self.L = TAU / self.k
        self.C = self.L / T  # over the ground
        self.crest, self.trough = self.etas[0], self.etas[-1]
        self.points = 0
        if points:
            self.table = [self.eta(0.5 * m / (points - 1) * self.L - start, 0.0) for m in range(points)]
            self.points = points

    def series(self, k, B, z, c):
        """Stream function, horizontal and vertical velocity of the waves alone, c(n) = cos and sin of n theta."""
        psi = u = w = 0.0
        for n, b in enumerate(B, 1):
            kn = n * k
            up, down = math.exp(kn * z), math.exp(-kn * (2.0 * self.d + z))
            whole = 1.0 + math.exp(-2.0 * kn * self.d)
            co, si = c[n - 1]
            psi += b * (up - down) / whole / kn * co
            u += b * (up + down) / whole * co
            w += b * (up - down) / whole * si
        return psi, u, w

    def residuals(self, x, H):
        N, k, psi0, Q = self.N, *x[:3]
        eta, B = x[3:4 + N], x[4 + N:]
        c = TAU / (k * self.T) - self.U
        out = []
        for m in range(N + 1):
            turns = [(math.cos(math.pi * n * m / N), math.sin(math.pi * n * m / N)) for n in range(1, N + 1)]
            psi, u, w = self.series(k, B, eta[m], turns)
            out.append((psi - c * eta[m] - psi0) / (c * self.H))
            out.append((eta[m] + ((u - c) ** 2 + w * w) / (2.0 * self.g) - Q) / self.H)
        out.append((0.5 * (eta[0] + eta[N]) + sum(eta[1:N])) / (N * self.H))
        out.append((eta[0] - eta[N] - H) / self.H)
        return out

    def theta(self, x, t):
        return self.k * (self.start + x) - TAU * t / self.T

    def eta(self, x, t):
        """The collocation points' own cosine series, which is the surface to the solution's accuracy."""
        if not hasattr(self, "surface"):
            N, e = self.N, self.etas
            self.surface = [2.0 / N * sum((0.5 if m in (0, N) else 1.0) * e[m] * math.cos(math.pi * m * n / N) for m in range(N + 1))
                            for n in range(N + 1)]
        theta = self.theta(x, t)
        if self.points:
            place = abs(math.remainder(theta, TAU)) / math.pi * (self.points - 1)
            m = min(int(place), self.points - 2)
            return self.table[m] + (place - m) * (self.table[m + 1] - self.table[m])
        return sum((0.5 if n in (0, self.N) else 1.0) * a * math.cos(n * theta) for n, a in enumerate(self.surface))

    def motion(self, x, z, t):
        theta = self.theta(x, t)
        c, s = math.cos(theta), math.sin(theta)
        u = w = ux = uz = 0.0
        co, si = 1.0, 0.0
        for n, b in enumerate(self.B, 1):
            co, si = co * c - si * s, si * c + co * s
            kn = n * self.k
            up, down = math.exp(kn * z), math.exp(-kn * (2.0 * self.d + z))
            whole = 1.0 + math.exp(-2.0 * kn * self.d)
            ch, sh = b * (up + down) / whole, b * (up - down) / whole
            u, w, ux, uz = u + ch * co, w + sh * si, ux - kn * ch * si, uz + kn * sh * co
        v = u - self.C
        return u * self.factor, w, (v * ux + w * uz) * self.factor, v * uz - w * ux  # wx = uz, wz = -ux

    def surface_error(self, points=97):
        """Largest misfit of the Bernoulli head on the surface, also between the points that were solved for."""
        worst = 0.0
        for m in range(points):
            x = math.pi * m / (points - 1) / self.k - self.start
            z = self.eta(x, 0.0)
            u, w, _, _ = self.motion(x, z, 0.0)
            worst = max(worst, abs(z + ((u / self.factor - self.C + self.U) ** 2 + w * w) / (2.0 * self.g) - self.Q))
        return worst


def pierson_moskowitz(f, W, g):
    return 0.0081 * g ** 2 / TAU ** 4 * f ** -5 * math.exp(-0.74 * (g / (TAU * W * f)) ** 4)


class Draws:
    """The generator of phases, as the theory tells it."""

    def __init__(self):
        self.j = 0

    def next(self):
        self.j = (1664525 * self.j + 1013904223) % 2 ** 32
        return self.j / 2 ** 32


def drawn_phases(count, skip=0):
    """Degrees."""
    draws, phases = Draws(), []
    for _ in range(count):
        for _ in range(skip):
            draws.next()
        a, b = draws.next(), draws.next()
        phases.append(-180.0 * b if a >= 0.5 else 180.0 * b)
    return phases


class Components:
    """Sum of Airy waves, each (height, period, phase in degrees, direction): all horizontal, in three dimensions.
    `eta(p, t)` and `motion(p, z, t)` take horizontal places (x, y); horizontal parts are vectors."""

    def __init__(self, parts, d, g, wheeler=False, factor=1.0):
        self.d, self.wheeler, self.factor = d, wheeler, factor
        self.parts = [(0.5 * H, TAU / T, math.radians(phase), wave_number(T, d, g), direction) for H, T, phase, direction in parts]

    def thetas(self, p, t):
        for a, omega, phase, k, (dx, dy) in self.parts:
            yield a, omega, k, (dx, dy), k * (p[0] * dx + p[1] * dy) - omega * t - phase

    def eta(self, p, t):
        return sum(a * math.cos(theta) for a, _, _, _, theta in self.thetas(p, t))

    def motion(self, p, z, t):
        s = self.d + z
        if self.wheeler:
            s *= self.d / (self.d + self.eta(p, t))
        u, a, w, b = [0.0, 0.0], [0.0, 0.0], 0.0, 0.0
        for amplitude, omega, k, direction, theta in self.thetas(p, t):
            ch, sh = depth_ratios(k, self.d, s)
            c, si = math.cos(theta), math.sin(theta)
            for m in (0, 1):
                u[m] += amplitude * omega * ch * c * direction[m] * self.factor
                a[m] += amplitude * omega ** 2 * ch * si * direction[m] * self.factor
            w += amplitude * omega * sh * si
            b -= amplitude * omega ** 2 * sh * c
        return u, w, a, b


class Embedded(Components):
    """A steady wave inside an irregular sea: it alone near its time, the sea alone from 0.75 periods on."""

    def __init__(self, steady, sea, peak, direction=(1.0, 0.0)):
        self.steady, self.sea, self.peak, self.direction = steady, sea, peak, direction

    def weight(self, t):
        r = abs(t - self.peak) / self.steady.T
        return 1.0 if r <= 0.5 else 0.5 + 0.5 * math.cos(4.0 * math.pi * (r - 0.5)) if r < 0.75 else 0.0

    def along(self, p):
        return p[0] * self.direction[0] + p[1] * self.direction[1]

    def eta(self, p, t):
        w = self.weight(t)
        return w * self.steady.eta(self.along(p), t) + (1.0 - w) * self.sea.eta(p, t)

    def motion(self, p, z, t):
        f = self.weight(t)
        u, w, a, b = self.steady.motion(self.along(p), z, t)
        us, ws, as_, bs = self.sea.motion(p, z, t)
        mixed = [[f * one * c + (1.0 - f) * two for c, two in zip(self.direction, many)] for one, many in ((u, us), (a, as_))]
        return mixed[0], f * w + (1.0 - f) * ws, mixed[1], f * b + (1.0 - f) * bs


class Grid:
    """Values at points of a grid, between them bilinear: columns, rows, and per step surfaces and {(column, row): (u, w, a, b, p)}.
    Times are whole multiples of dt, step 1 is the first."""

    def __init__(self, columns, rows, dt, steps):
        self.columns, self.rows, self.dt, self.steps = columns, rows, dt, steps
        self.L = 1.0

    @staticmethod
    def place(values, x):
        k = next((k for k in range(len(values) - 1) if values[k + 1] > x), len(values) - 2)
        return k, (x - values[k]) / (values[k + 1] - values[k])

    def eta(self, x, t):
        surface, _ = self.steps[round(t / self.dt) - 1]
        i, r = self.place(self.columns, x)
        return surface[i] + r * (surface[i + 1] - surface[i])

    def motion(self, x, z, t):
        _, values = self.steps[round(t / self.dt) - 1]
        (i, r), (j, s) = self.place(self.columns, x), self.place(self.rows, z)
        s = min(max(s, 0.0), 1.0)
        corners = ((i, j, (1 - r) * (1 - s)), (i + 1, j, r * (1 - s)), (i, j + 1, (1 - r) * s), (i + 1, j + 1, r * s))
        return tuple(sum(w * values[i, j][q] for i, j, w in corners) for q in range(4))


def sampled(wave, columns, rows, dt, count, rho=0.0, surface=None):
    """A grid of a wave's motion at the times dt, 2 dt, ..; `surface` in place of its own."""
    steps = []
    for n in range(1, count + 1):
        t = n * dt
        values = {(i, j): (*wave.motion(x, z, t), 0.0) for i, x in enumerate(columns) for j, z in enumerate(rows)}
        steps.append(([wave.eta(x, t) if surface is None else surface for x in columns], values))
    return Grid(columns, rows, dt, steps)


def grid_file(grid, shift=0.0, before=0):
    """Bytes of a grid wave file; `before` steps of nonsense stand in front of the grid's own."""
    nh, nv = len(grid.columns), len(grid.rows)
    parts = [struct.pack("<4id", 7, nh, nv, 7, 7.0), struct.pack(f"<{nh}d", *(x + shift for x in grid.columns)), struct.pack(f"<{nv}d", *grid.rows)]
    parts += [struct.pack(f"<{nh + 5 * nh * nv}d", *([99.0] * (nh + 5 * nh * nv)))] * before
    for surface, values in grid.steps:
        parts.append(struct.pack(f"<{nh}d", *surface))
        parts += [struct.pack("<5d", *values[i, j]) for j in range(nv) for i in range(nh)]
    return b"".join(parts)
