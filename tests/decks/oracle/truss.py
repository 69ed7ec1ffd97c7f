"""An independent space truss solver for the figures that decks expect: small displacements, piecewise linear bars.

It goes from event to event: between two events every bar has one tangent, the response to the load is a straight line,
and the next event is found exactly. There is no iteration and no tolerance on unbalance, so it shares no idea and no
line with the program that it checks. Sign: tension and extension are positive.
"""
import math

ELASTIC, TENSION, COMPRESSION = "elastic", "yields in tension", "yields in compression"
SINGULAR = 1e-9  # a pivot below this part of the largest one is a mechanism


class Mechanism(Exception):
    """The structure cannot carry more of the load."""


def solve(matrix, right):
    """Gauss elimination with row pivots; Mechanism when the matrix is singular."""
    n = len(right)
    a = [row[:] + [r] for row, r in zip(matrix, right)]
    largest = max((abs(x) for row in matrix for x in row), default=0.0)
    for k in range(n):
        p = max(range(k, n), key=lambda i: abs(a[i][k]))
        if abs(a[p][k]) <= SINGULAR * largest:
            raise Mechanism
        a[k], a[p] = a[p], a[k]
        for i in range(k + 1, n):
            f = a[i][k] / a[k][k]
            if f:
                for j in range(k, n + 1):
                    a[i][j] -= f * a[k][j]
    x = [0.0] * n
    for i in reversed(range(n)):
        x[i] = (a[i][n] - sum(a[i][j] * x[j] for j in range(i + 1, n))) / a[i][i]
    return x


class Bar:
    """Two parallel branches: a perfectly plastic one of stiffness (1-r)EA/L and an elastic one of rEA/L.

    `strut`: a bar that has buckled gives its shortening back at constant force before it becomes elastic again.
    """

    def __init__(self, i, j, EA, r=0.0, fy=math.inf, fc=None, strut=False):
        self.i, self.j, self.EA, self.r, self.strut = i, j, EA, r, strut
        self.top = (1 - r) * fy
        self.bottom = -(1 - r) * (fy if fc is None else fc)
        self.first = self.second = self.extension = 0.0
        self.shortening = 0.0  # plastic, not yet given back
        self.mode = ELASTIC

    def place(self, nodes):
        d = [b - a for a, b in zip(nodes[self.i], nodes[self.j])]
        self.L = math.sqrt(sum(x * x for x in d))
        self.unit = [x / self.L for x in d]
        self.k = self.EA / self.L

    @property
    def force(self):
        return self.first + self.second

    @property
    def tangent(self):
        return self.k if self.mode == ELASTIC else self.r * self.k

    def gives_back(self, rate):
        return self.mode == COMPRESSION and self.strut and rate > 0

    def reverses(self, rate):
        """A yielding bar whose extension rate turns is elastic from here on."""
        if self.mode == TENSION:
            return rate < 0
        return self.mode == COMPRESSION and rate > 0 and not self.strut

    def to_event(self, rate):
        """Part of the load until this bar changes, at this rate of extension per unit of load."""
        if self.mode == ELASTIC and rate != 0.0:
            limit = self.top if rate > 0 else self.bottom
            return math.inf if math.isinf(limit) else (limit - self.first) / ((1 - self.r) * self.k * rate)
        if self.gives_back(rate):
            return self.shortening / rate
        return math.inf

    def advance(self, change, at_event):
        rate_positive = change > 0
        if self.mode == ELASTIC:
            self.first += (1 - self.r) * self.k * change
            if at_event:
                self.mode = TENSION if rate_positive else COMPRESSION
                self.first = self.top if rate_positive else self.bottom
                self.shortening = 0.0
        elif self.mode == COMPRESSION:
            self.shortening -= change
            if at_event:
                self.mode = ELASTIC
        self.second += self.r * self.k * change
        self.extension += change


class Truss:
    """nodes: {number: (x, y, z)}; bars: list of Bar; free: set of (node, axis 0..2) that may move."""

    def __init__(self, nodes, bars, free):
        self.nodes, self.bars = nodes, bars
        self.index = {d: k for k, d in enumerate(sorted(free))}
        self.u = {(n, a): 0.0 for n in nodes for a in range(3)}
        self.events = []
        for bar in bars:
            bar.place(nodes)

    def stiffness(self):
        n = len(self.index)
        K = [[0.0] * n for _ in range(n)]
        for bar in self.bars:
            terms = self.terms(bar)
            for p, cp in terms:
                for q, cq in terms:
                    K[p][q] += bar.tangent * cp * cq
        return K

    def ends(self, bar):
        """(place, extension per unit of its displacement) of both ends."""
        return [((bar.i, a), -bar.unit[a]) for a in range(3)] + [((bar.j, a), bar.unit[a]) for a in range(3)]

    def terms(self, bar):
        return [(self.index[d], c) for d, c in self.ends(bar) if d in self.index]

    def rates(self, load, moves):
        """Displacements and extensions per unit of load and of support moves; bars that reverse are made elastic first."""
        given = [0.0] * len(self.index)
        for d, value in load.items():
            given[self.index[d]] += value
        stretch = [sum(c * moves[d] for d, c in self.ends(bar) if d in moves) for bar in self.bars]
        while True:
            right = given[:]
            for bar, rate in zip(self.bars, stretch):
                for p, c in self.terms(bar) if rate else ():
                    right[p] -= bar.tangent * rate * c
            v = solve(self.stiffness(), right)
            rates = [rate + sum(c * v[p] for p, c in self.terms(bar)) for bar, rate in zip(self.bars, stretch)]
            turning = [bar for bar, rate in zip(self.bars, rates) if bar.reverses(rate)]
            if not turning:
                return v, rates
            for bar in turning:
                bar.mode = ELASTIC

    def push(self, load, by=1.0, moves=None):
        """Adds `by` times the load {place: force} and the moves {supported place: displacement}.

        Returns the part that was carried: less than `by` at a mechanism.
        """
        moves = moves or {}
        done = 0.0
        while by - done > 1e-13 * by:
            try:
                v, rates = self.rates(load, moves)
            except Mechanism:
                break
            parts = [bar.to_event(rate) for bar, rate in zip(self.bars, rates)]
            nearest = min(parts)
            part = min(nearest, by - done)
            for number, (bar, rate) in enumerate(zip(self.bars, rates), 1):
                here = parts[number - 1] <= part * (1 + 1e-12)
                bar.advance(part * rate, here)
                if here:
                    self.events.append((done + part, number, bar.mode))
            for d, p in self.index.items():
                self.u[d] += part * v[p]
            for d, move in moves.items():
                self.u[d] += part * move
            done += part
        return done

    def forces(self):
        return [bar.force for bar in self.bars]
