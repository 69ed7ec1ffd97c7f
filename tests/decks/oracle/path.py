"""Equilibrium paths of space trusses with large displacements, past limit points.

A bar has the engineering strain l/L - 1, a constant EA, and its force acts along the bar as it stands. The path is followed
by local parametrisation: at each point the unknown that moves fastest along the tangent, a displacement or the load level,
is prescribed, and Newton's method finds all the others (W. C. Rheinboldt and J. V. Burkardt, ACM Trans. Math. Software 9
(1983) 215-235). A limit point is where the level stops moving along the tangent; it is found by bisection. Neither arcs nor
signs of pivots decide anything, so the method shares no idea with the program that it checks.
"""
import math

from truss import solve


class PathTruss:
    """nodes {number: (x, y, z)}, bars [(i, j, EA)], free {(node, axis)}, load {(node, axis): force at level 1}.

    A point of the path is the list of all free displacements, in the order of `free` sorted, and the level behind them.
    """

    def __init__(self, nodes, bars, free, load):
        self.nodes, self.free = nodes, sorted(free)
        self.index = {d: k for k, d in enumerate(self.free)}
        self.bars = [(i, j, EA, math.dist(nodes[i], nodes[j])) for i, j, EA in bars]
        self.load = [load.get(d, 0.0) for d in self.free]
        self.n = len(self.free)
        self.largest = max(EA / L for _, _, EA, L in self.bars)
        self.level_size = max(map(abs, self.load)) / self.largest  # brings the load column to the size of the stiffness

    def start(self):
        return [0.0] * (self.n + 1)

    def place(self, node, x):
        return [c + (x[self.index[node, a]] if (node, a) in self.index else 0.0) for a, c in enumerate(self.nodes[node])]

    def bar_state(self, bar, x):
        """Length, unit vector from i to j, and force of a bar."""
        i, j, EA, L = bar
        apart = [b - a for a, b in zip(self.place(i, x), self.place(j, x))]
        length = math.sqrt(sum(d * d for d in apart))
        return length, [d / length for d in apart], EA * (length / L - 1.0)

    def terms(self, bar, a):
        """(unknown, sign) of the ends of a bar along an axis."""
        return [(self.index[n, a], s) for n, s in ((bar[0], -1.0), (bar[1], 1.0)) if (n, a) in self.index]

    def unbalance(self, x):
        rest = [x[-1] * p for p in self.load]
        for bar in self.bars:
            _, unit, force = self.bar_state(bar, x)
            for a in range(3):
                for p, s in self.terms(bar, a):
                    rest[p] -= s * force * unit[a]
        return rest

    def stiffness(self, x):
        K = [[0.0] * self.n for _ in range(self.n)]
        for bar in self.bars:
            length, unit, force = self.bar_state(bar, x)
            along, across = bar[2] / bar[3], force / length
            for a in range(3):
                for b in range(3):
                    k = (along - across) * unit[a] * unit[b] + (across if a == b else 0.0)
                    for p, s in self.terms(bar, a):
                        for q, t in self.terms(bar, b):
                            K[p][q] += s * t * k
        return K

    def direction(self, x, k, right, move):
        """Change of a point: K du - load dlevel = right, and `move` of the unknown k."""
        size = self.level_size
        matrix = [row + [-p / size] for row, p in zip(self.stiffness(x), self.load)]
        matrix.append([self.largest if j == k else 0.0 for j in range(self.n + 1)])
        d = solve(matrix, right + [self.largest * (move * size if k == self.n else move)])
        return d[:-1] + [d[-1] / size]

    def find(self, x, k, value):
        """The point whose unknown k has this value, from a point near by."""
        x = x[:]
        for _ in range(40):
            d = self.direction(x, k, self.unbalance(x), value - x[k])
            x = [a + b for a, b in zip(x, d)]
            if max(map(abs, d[:-1])) < 1e-12 * (1.0 + max(map(abs, x[:-1]))):
                return x
        raise ArithmeticError("Newton's method has not converged")

    def tangent(self, x, k):
        """Change of a point for a unit change of the unknown k."""
        return self.direction(x, k, [0.0] * self.n, 1.0)

    def trace(self, step, count):
        """`count` points behind the start, each `step` (largest displacement) from the one before."""
        x, points = self.start(), [self.start()]
        along = self.tangent(x, self.n)
        for _ in range(count):
            k = max(range(self.n), key=lambda p: abs(along[p]))
            x = self.find([a + b * step / abs(along[k]) for a, b in zip(x, along)], k, x[k] + math.copysign(step, along[k]))
            points.append(x)
            ahead = self.tangent(x, k)
            along = ahead if along[k] > 0.0 else [-a for a in ahead]
        return points

    def limit(self, before, after):
        """The limit point between two points of the path, by bisection on the sign of the level's change."""
        k = max(range(self.n), key=lambda p: abs(after[p] - before[p]))
        low, high = before[k], after[k]
        rising = self.tangent(before, k)[-1] > 0.0
        x = before
        while abs(high - low) > 1e-10 * (abs(high) + abs(low)):
            middle = 0.5 * (low + high)
            x = self.find(x, k, middle)
            if (self.tangent(x, k)[-1] > 0.0) == rising:
                low = middle
            else:
                high = middle
        return x

    def modified_newton(self, level, part, most, tolerance):
        """(steps, steps taken again) up to a level in steps of this part of it, with the stiffness of the start of each step:
        a step that leaves an unbalance above the tolerance after `most` iterations is taken again, and those behind it, in halves."""
        x, done, steps, again = self.start(), 0.0, 0, 0
        while done < 1.0:
            part = min(part, 1.0 - done)
            y, K, iterations = x[:-1] + [(done + part) * level], self.stiffness(x), 0
            while iterations < most and max(map(abs, rest := self.unbalance(y))) > tolerance:
                y = [a + b for a, b in zip(y, solve(K, rest))] + y[-1:]
                iterations += 1
            if max(map(abs, self.unbalance(y))) > tolerance:
                part, again = 0.5 * part, again + 1
            else:
                x, done, steps = y, done + part, steps + 1
        return steps, again

    def negative_pivots(self, x):
        """How many directions are unstable at a point: the negative pivots of the stiffness."""
        K = self.stiffness(x)
        count = 0
        for k in range(self.n):
            count += K[k][k] < 0.0
            for i in range(k + 1, self.n):
                f = K[i][k] / K[k][k]
                if f:
                    for j in range(k + 1, self.n):
                        K[i][j] -= f * K[k][j]
        return count
