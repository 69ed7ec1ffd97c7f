"""Decks of lattice trusses of any size, for benchmarks and for tests that want many shapes of profile.

A lattice is a box of cells with a bar along each edge and one diagonal in each face; its lowest layer is supported. A
`Shape` tells how many nodes it has each way, and in which order its nodes are numbered: layer by layer, so that the half band
is about three times the nodes of a layer, or scattered.
"""
import random
from dataclasses import dataclass

BARS_PER_GROUP = 60000
SPACING = 10.0


@dataclass
class Shape:
    """Nodes along x, y, z; with a seed the numbers are scattered over the nodes; `uneven` moves each node by up to so much."""
    nx: int
    ny: int
    nz: int
    seed: int = 0
    uneven: float = 0.0

    def __post_init__(self):
        self.count = self.nx * self.ny * self.nz
        numbers = list(range(1, self.count + 1))
        if self.seed:
            random.Random(self.seed).shuffle(numbers)
        self.numbers = numbers

    def node(self, i, j, k):
        return self.numbers[(k * self.ny + j) * self.nx + i]

    def places(self):
        """(number, x, y, z, whether it is a support) by rising number."""
        chance = random.Random(self.count)
        found = []
        for k in range(self.nz):
            for j in range(self.ny):
                for i in range(self.nx):
                    place = (SPACING * c + self.uneven * chance.uniform(-1.0, 1.0) for c in (i, j, k))
                    found.append((self.node(i, j, k), *place, k == 0))
        return sorted(found)

    def bars(self):
        """Node pairs, layer by layer; nothing joins two supports."""
        ways = ((1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 1, 0), (1, 0, 1), (0, 1, 1))
        for k in range(self.nz):
            for j in range(self.ny):
                for i in range(self.nx):
                    for a, b, c in ways:
                        if i + a < self.nx and j + b < self.ny and k + c < self.nz and k + c > 0:
                            yield self.node(i, j, k), self.node(i + a, j + b, k + c)


@dataclass
class Model:
    """What the cards of a model tell: nodes, their constraint codes, element groups."""
    nodes: dict   # {number: (x, y, z)}
    codes: dict   # {number: six characters, 1 constrained}
    groups: list  # functions that make the cards of a group with a given number

    def cards(self, storage=None, ordering=0):
        """Cards from the storage card to the last element group."""
        constraints = list(self.constraints())
        counts = (len(self.nodes), len(self.nodes), 0, 0, 0, 0, len(constraints), 0, 0, len(self.groups), 0, 0, 0, 0, ordering)
        lines = [storage or storage_card(), "".join("%5d" % count for count in counts)]
        lines += ["%5d%10.3f%10.3f%10.3f" % (n, *place) for n, place in sorted(self.nodes.items())] + constraints
        for number, group in enumerate(self.groups, 1):
            lines += group(number)
        return lines

    def constraints(self):
        """One card for each row of nodes with the same code."""
        first = 1
        for n in range(2, len(self.nodes) + 2):
            if self.codes.get(n) != self.codes[first]:
                yield "%5d    %s%5d    1" % (first, self.codes[first], n - 1)
                first = n


def storage_card(scheme="CORE", stiffness="SYMM", words=0):
    return f" {scheme:4} {stiffness:4}{words:10}"


def bar_group(bars, materials):
    """A group of bars (node, node, material) of unit area; materials: (E, EH/E, yield stress or 0)."""
    def cards(number):
        lines = ["%5d%5d%5d%25sGROUP %d" % (1, len(bars), 1, "", number), "%5d    1    0" % len(materials)]
        for m, (E, r, fy) in enumerate(materials, 1):
            lines += ["%5d%10.1f%10.4f%10.4f%10.4f" % (m, E, r, fy, fy), ""]
        lines += ["    1       1.0", ""]
        return lines + ["%5d%5d%5d%5d    1" % (n, *bar) for n, bar in enumerate(bars, 1)]
    return cards


def curve_group(ends, stiffness, curve):
    """One bar on a force-deformation curve of up to ten (deformation, force), as ratios to 1 and to its stiffness by length."""
    def cards(number):
        lines = ["%5d%5d%5d%25sGROUP %d" % (1, 1, 1, "", number), "    1    1    0", "    1%10.1f" % stiffness, "", "    1       1.0", ""]
        lines.append("%5d%5d%5d    1    1%10s%5d%5d%5d" % (1, *ends, "", 0, 0, 2))
        return lines + ["".join("%10.5f%10.5f" % pair for pair in curve)]
    return cards


ELASTIC = ((30000.0, 0.0, 0.0),)


def lattice_model(shape, materials=ELASTIC, material_of=lambda k: 1, number=lambda n: n):
    """The lattice, its nodes numbered anew by `number`, which keeps their order."""
    places = shape.places()
    bars = [(number(i), number(j), material_of(k)) for k, (i, j) in enumerate(shape.bars())]
    groups = [bar_group(bars[k:k + BARS_PER_GROUP], materials) for k in range(0, len(bars), BARS_PER_GROUP)]
    return Model({number(n): (x, y, z) for n, x, y, z, _ in places},
                 {number(n): "111111" if supported else "000111" for n, _, _, _, supported in places}, groups)


def with_two_bars(shape, curve, place):
    """A lattice with a bar on a curve at its first equations and one at `place` of them all, and the nodes that pull these.

    Each bar pulls a node of its own along X, numbered beside the one that it is joined to. The force in it is what is put on
    that node, so loads decide how often its stiffness changes.
    """
    free = [n for n, _, _, _, supported in shape.places() if not supported]
    joint = free[int(place * len(free))]

    def number(n):
        return n + 1 if n <= joint else n + 2

    model = lattice_model(shape, number=number)
    pulled = (1, number(joint) + 1)
    for node, at, way in ((pulled[0], number(free[0]), -SPACING), (pulled[1], number(joint), SPACING)):
        x, y, z = model.nodes[at]
        model.nodes[node], model.codes[node] = (x + way, y, z), "011111"
        model.groups.append(curve_group((node, at), ELASTIC[0][0], curve))
    return model, pulled


def load_cards(patterns, watched):
    """Nodal patterns of (node, Fx, Fy, Fz), no dynamic loads, and the print list."""
    lines = ["%5d" % len(patterns)]
    for entries in patterns:
        lines += ["%5dLOAD" % len(entries)] + ["%5d%10.4f%10.4f%10.4f" % entry for entry in entries]
    lines += ["    0    0    0", "%5d%5d%5d" % ((len(watched),) * 3)]
    rows = ["".join("%5d" % n for n in watched[k:k + 16]) for k in range(0, len(watched), 16)]
    return lines + rows * 3


def load_segment(factors, step=1.0, steps=1, iterations=20, events=0, tolerance=1.0e-6, printing=2):
    """A load segment with the stiffness formed in every iteration."""
    return ["%5d%5s%10s%5s%5s%10.7f%5d%5d%5d%5d%5d%5d%10.1f" % (1, "", "", "", "", step, steps, events, 1, 0, iterations, 1, -2.0),
            "%5d%5d%5d%5d%5d%5d%5d%5d%5d" % (1, 1, 0, 0, printing, 0, 0, 0, 1), "%5d%5d%10.2E" % (0, 0, tolerance),
            "".join("%10.4f" % f for f in factors), "", "", "", "", ""]


def vector_segment(factors, node, component, move, iterations=20, tolerance=1.0e-6, printing=2):
    """One displacement step that moves a component of a node by a given amount, its load found to all digits."""
    return ["%5d%5d%10s%5d%5d%10.7f%5d%5d%5d%5d%5d%5d%10.1f" % (2, 3, "", 1, 2, 1.0, 1, 0, 2, 3, iterations, 1, -2.0),
            "%5d%10.6fTHE MOVE" % (1, abs(move)), "%5d%5d%10.1f" % (node, component, 1.0 if move > 0.0 else -1.0),
            "%5d%5d%5d%5d%5d%5d%5d%5d%5d" % (1, 1, 0, 0, printing, 0, 0, 0, 1), "%5d%5d%10.2E" % (0, 0, tolerance),
            "".join("%10.4f" % f for f in factors), "", "", "", "", ""]


def static_macro(*segments):
    return ["STAT    LATTICE", "%5d   LATTICE" % len(segments)] + [line for segment in segments for line in segment]


def problem(model, loads, *macros, title="LATTICE"):
    """A whole problem from the cards of its parts; the deck needs its ` STOP` behind the last one."""
    return [" STAR   P4.314  " + title, "", ""] + model + loads + [line for macro in macros for line in macro] + ["NONE"]
