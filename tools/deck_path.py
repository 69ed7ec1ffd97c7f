"""Holds the steps of a run to an equilibrium path that is known from elsewhere.

The path is a table: a first line `# level X:3 Z:1 ...` that names the load level and displacements (direction, node), then
one line for each point with the values and, behind them, how fast each changes along the path. Between two points each
value is the cubic through both ends and their rates, over the displacement that moves most there; so the path may turn back
in its level and in any single displacement.
"""


def cubic(at, ends, values, rates):
    """The Hermite cubic through two points with given slopes."""
    width = ends[1] - ends[0]
    t = (at - ends[0]) / width
    rest = 1.0 - t
    return (values[0] * rest * rest * (1.0 + 2.0 * t) + values[1] * t * t * (3.0 - 2.0 * t) +
            width * t * rest * (rates[0] * rest - rates[1] * t))


class Path:
    def __init__(self, text):
        head, *rows = text.strip().split("\n")
        self.names = head.split()[2:]
        points = [[float(word) for word in row.split()] for row in rows]
        self.points = [(p[:len(p) // 2], p[len(p) // 2:]) for p in points]
        self.largest = [max(abs(values[k]) for values, _ in self.points) for k in range(len(self.names) + 1)]

    def between(self, first, second, k, at):
        """All values where value k of the stretch between two points is `at`."""
        (v0, r0), (v1, r1) = first, second
        at = min(max(at, min(v0[k], v1[k])), max(v0[k], v1[k]))
        return [cubic(at, (v0[k], v1[k]), (v0[j], v1[j]), (r0[j] / r0[k], r1[j] / r1[k])) for j in range(len(v0))]

    def offset(self, found, tolerance):
        """How far the level of a step is from the path where its displacements are, as a part of the largest level.

        found: printed numbers (value, half unit of the last digit), the level first. What half a unit of a displacement
        changes in the level is not held against the step. None when the displacements are nowhere on the path.
        """
        least = None
        for first, second in zip(self.points, self.points[1:]):
            moved = [abs(b - a) for a, b in zip(first[0], second[0])]
            k = max(range(1, len(moved)), key=lambda j: moved[j])
            low, high = sorted((first[0][k], second[0][k]))
            value, half = found[k].value, found[k].half_unit
            if value + half < low or value - half > high:
                continue
            sides = [self.between(first, second, k, value + side) for side in (-half, 0.0, half)]
            ranges = [(min(s[j] for s in sides), max(s[j] for s in sides)) for j in range(len(moved))]
            away = [max(lo - n.value - n.half_unit, n.value - n.half_unit - hi, 0.0) / size
                    for n, (lo, hi), size in zip(found, ranges, self.largest)]
            if max(away[1:]) <= tolerance and (least is None or away[0] < least):
                least = away[0]
        return least
