"""An independent solver of linear space frames for the figures that decks expect.

A member's stiffness is the inverse of its flexibility as a cantilever, integrated along the member with two Gauss points;
a released freedom is an unknown of its own; equations are eliminated in the order of the fewest neighbours; modes are those
of the massive freedoms by Jacobi's method. No formula of a beam matrix, no profile, no condensation inside a member and no
iteration on vectors: it shares no idea with the program that it checks.
"""
import math

SACS, STRUDL = "SACS", "STRUDL"
GAUSS = ((0.5 - math.sqrt(1.0 / 12.0), 0.5), (0.5 + math.sqrt(1.0 / 12.0), 0.5))
FULL = (0, 1, 2, 3, 4, 5)


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def unit(a):
    length = math.sqrt(dot(a, a))
    return tuple(x / length for x in a)


def less(a, b):
    return tuple(x - y for x, y in zip(a, b))


def local_axes(start, end, rule=SACS, angle=0.0):
    """Axes x, 2 and 3: `rule` is a convention or the place of a third node; the angle turns 2 towards 3."""
    x = unit(less(end, start))
    if rule == SACS and abs(x[2]) >= 0.999:
        y, z = (x[2], 0.0, 0.0), (0.0, 1.0, 0.0)
    elif rule == STRUDL and abs(x[1]) >= 0.999:
        y, z = (-x[1], 0.0, 0.0), (0.0, 0.0, 1.0)
    elif rule == SACS:
        y = unit(cross((0.0, 0.0, 1.0), x))
        z = cross(x, y)
    elif rule == STRUDL:
        z = unit(cross(x, (0.0, 1.0, 0.0)))
        y = cross(z, x)
    else:
        r = less(rule, start)
        y = unit(tuple(a - dot(r, x) * b for a, b in zip(r, x)))
        z = cross(x, y)
    c, s = math.cos(angle), math.sin(angle)
    return x, tuple(c * a + s * b for a, b in zip(y, z)), tuple(c * b - s * a for a, b in zip(y, z))


def tube(OD, t):
    """Area, torsion constant and inertia."""
    inner = OD - 2.0 * t
    I = math.pi / 64.0 * (OD ** 4 - inner ** 4)
    return {"A": math.pi / 4.0 * (OD ** 2 - inner ** 2), "J": 2.0 * I, "I2": I, "I3": I}


def dense_solve(a, columns):
    """Gauss-Jordan of a small positive definite matrix with several right sides (rows of the result go with rows of a)."""
    n = len(a)
    rows = [list(row) + list(right) for row, right in zip(a, columns)]
    for k in range(n):
        p = max(range(k, n), key=lambda i: abs(rows[i][k]))
        rows[k], rows[p] = rows[p], rows[k]
        pivot = rows[k][k]
        rows[k] = [value / pivot for value in rows[k]]
        for i in range(n):
            f = rows[i][k]
            if i != k and f:
                rows[i] = [a - f * b for a, b in zip(rows[i], rows[k])]
    return [row[n:] for row in rows]


def member_matrix(L, E, G, A, J, I2, I3, As2=0.0, As3=0.0):
    """The 12 by 12 matrix in local freedoms, from the flexibility of end J against end I."""
    soft = [1.0 / (E * A), 1.0 / (G * As2) if As2 else 0.0, 1.0 / (G * As3) if As3 else 0.0,
            1.0 / (G * J), 1.0 / (E * I2), 1.0 / (E * I3)]
    F = [[0.0] * 6 for _ in range(6)]
    for place, weight in GAUSS:
        arm = L * (1.0 - place)
        B = [[float(i == j) for j in range(6)] for i in range(6)]  # section forces of the six end forces
        B[4][2], B[5][1] = -arm, arm
        for i in range(6):
            for j in range(6):
                F[i][j] += weight * L * sum(B[k][i] * soft[k] * B[k][j] for k in range(6))
    S = dense_solve(F, [[float(i == j) for j in range(6)] for i in range(6)])
    relative = [[-float(i == j) for j in range(6)] + [float(i == j) for j in range(6)] for i in range(6)]
    relative[1][5], relative[2][4] = -L, L  # what a rotation of I moves J by
    return [[sum(relative[a][i] * S[a][b] * relative[b][j] for a in range(6) for b in range(6) if relative[a][i] and relative[b][j])
             for j in range(12)] for i in range(12)]


class Member:
    """releases: local end freedoms 0..11 that are free; offsets: master components at I and J."""

    def __init__(self, i, j, material, section, rule=SACS, angle=0.0, releases=(), offsets=None):
        self.i, self.j, self.section, self.rule, self.angle, self.releases = i, j, section, rule, angle, releases
        self.E, self.nu, self.rho = material
        self.offsets = offsets or ((0.0,) * 3, (0.0,) * 3)


class Frame:
    """nodes {number: (x, y, z)}, members, fixed {node: components 0..5}; unknowns are (node, component)."""

    def __init__(self, nodes, members, fixed):
        self.nodes, self.members = nodes, members
        used = {n for m in members for n in (m.i, m.j)}
        self.free = [(n, c) for n in sorted(used) for c in FULL if c not in fixed.get(n, ())]
        self.rows = {d: {} for d in self.free}
        self.local = []
        for number, member in enumerate(members):
            self.add(number, member)

    def ends(self, member):
        return [tuple(a + b for a, b in zip(self.nodes[n], e)) for n, e in zip((member.i, member.j), member.offsets)]

    def length(self, member):
        return math.dist(*self.ends(member))

    def freedoms(self, number, member):
        """For each local end freedom its terms {unknown: factor}."""
        frame = local_axes(*self.ends(member), member.rule, member.angle)
        terms = []
        for a in range(12):
            if a in member.releases:
                terms.append({("release", number, a): 1.0})
                continue
            node, e = (member.i, member.offsets[0]) if a < 6 else (member.j, member.offsets[1])
            axis = frame[a % 3]
            if a % 6 >= 3:
                terms.append({(node, 3 + c): axis[c] for c in range(3)})
            else:  # u + r x e, along the axis
                turned = cross(e, axis)
                terms.append({**{(node, c): axis[c] for c in range(3)}, **{(node, 3 + c): turned[c] for c in range(3)}})
        return terms

    def add(self, number, member):
        G = member.E / (2.0 * (1.0 + member.nu))
        k = member_matrix(self.length(member), member.E, G, **member.section)
        terms = self.freedoms(number, member)
        self.local.append((k, terms))
        for a in range(12):
            if a in member.releases:
                self.rows.setdefault(("release", number, a), {})
        for a in range(12):
            for b in range(12):
                if k[a][b]:
                    self.scatter(terms[a], terms[b], k[a][b])

    def scatter(self, left, right, k):
        for p, u in left.items():
            if p in self.rows and u:
                row = self.rows[p]
                for q, v in right.items():
                    if q in self.rows and v:
                        row[q] = row.get(q, 0.0) + u * k * v

    def eliminate(self, right, keep=()):
        """Eliminates all unknowns but `keep`: (what is left of the matrix, of the right sides, the eliminated rows)."""
        rows = {p: dict(row) for p, row in self.rows.items()}
        right = {p: list(right.get(p, [0.0] * width(right))) for p in rows}
        left, done = {p for p in rows if p not in set(keep)}, []
        while left:
            p = min(left, key=lambda q: (len(rows[q]), str(q)))
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
        return rows, right, done

    def solve(self, *cases):
        """Displacements {unknown: value} of each load case {(node, component): force}."""
        right = {}
        for k, case in enumerate(cases):
            for p, force in case.items():
                if p in self.rows:
                    right.setdefault(p, [0.0] * len(cases))[k] += force
        _, _, done = self.eliminate(right)
        answers = [{} for _ in cases]
        for p, pivot, row, own in reversed(done):
            for k, u in enumerate(answers):
                u[p] = (own[k] - sum(value * u[q] for q, value in row.items())) / pivot
        return answers

    def end_forces(self, number, u):
        """The twelve local forces on the ends of a member."""
        k, terms = self.local[number]
        d = [sum(f * u.get(p, 0.0) for p, f in t.items()) for t in terms]
        return [sum(a * b for a, b in zip(row, d)) for row in k]

    def masses(self):
        """Half of each member's mass on the translations of its nodes."""
        mass = {p: 0.0 for p in self.free if p[1] < 3}
        for m in self.members:
            half = 0.5 * m.rho * m.section["A"] * self.length(m)
            for n in (m.i, m.j):
                for c in range(3):
                    if (n, c) in mass:
                        mass[n, c] += half
        return mass

    def frequencies(self, extra=None):
        """All natural frequencies of the lumped masses, cycles per second, rising."""
        mass = self.masses()
        for p, m in (extra or {}).items():
            mass[p] = mass.get(p, 0.0) + m
        keep = [p for p in self.free if mass.get(p, 0.0) > 0.0]
        rows, _, _ = self.eliminate({}, keep)
        a = [[rows[p].get(q, 0.0) / math.sqrt(mass[p] * mass[q]) for q in keep] for p in keep]
        return [math.copysign(math.sqrt(abs(v)), v) / (2.0 * math.pi) for v in sorted(jacobi(a))]


def width(right):
    return max((len(row) for row in right.values()), default=0)


def jacobi(a):
    """Eigenvalues of a symmetric matrix by cyclic rotations."""
    n = len(a)
    a = [row[:] for row in a]
    size = max(abs(a[i][i]) for i in range(n))
    for _ in range(60):
        if max((abs(a[p][q]) for p in range(n) for q in range(p)), default=0.0) < 1e-13 * size:
            break
        for p in range(n - 1):
            for q in range(p + 1, n):
                if abs(a[p][q]) < 1e-15 * size:
                    continue
                theta = (a[q][q] - a[p][p]) / (2.0 * a[p][q])
                t = math.copysign(1.0, theta) / (abs(theta) + math.hypot(theta, 1.0))
                c = 1.0 / math.hypot(t, 1.0)
                s = t * c
                a[p], a[q] = [c * x - s * y for x, y in zip(a[p], a[q])], [s * x + c * y for x, y in zip(a[p], a[q])]
                for row in a:
                    row[p], row[q] = c * row[p] - s * row[q], s * row[p] + c * row[q]
    return [a[i][i] for i in range(n)]
