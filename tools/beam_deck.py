"""Decks of frames of beams (type 3) of any size, for benchmarks: a building and a jacket, six equations a node.

A `Frame` holds free nodes and supports in an order of its own; `model` numbers them for the deck, free nodes first and
supports behind them, so that the order of the free nodes is that of the equations.
"""
from dataclasses import dataclass, field

import lattice_deck

BAY, STOREY = 6.0, 4.0  # m, of the building
WIDTH, LEVEL = 20.0, 15.0  # m, of the jacket


@dataclass
class Frame:
    """A frame under construction. Nodes are keys of its own: ("n", k) free, ("s", k) support."""
    free: list = field(default_factory=list)      # places
    supports: list = field(default_factory=list)  # places
    members: list = field(default_factory=list)   # (node, node)
    cuts: int = 1                                 # pieces into which members are cut

    def node(self, x, y, z):
        self.free.append((x, y, z))
        return "n", len(self.free) - 1

    def support(self, x, y, z):
        self.supports.append((x, y, z))
        return "s", len(self.supports) - 1

    def place(self, node):
        return (self.free if node[0] == "n" else self.supports)[node[1]]

    def member(self, a, b):
        """A straight member, cut into pieces of one length."""
        start, end = self.place(a), self.place(b)
        for k in range(1, self.cuts):
            between = self.node(*(p + (q - p) * k / self.cuts for p, q in zip(start, end)))
            self.members.append((a, between))
            a = between
        self.members.append((a, b))

    def neighbours(self):
        """For each free node the free nodes that a member joins to it, in the order of the members."""
        found = [[] for _ in self.free]
        for (kind, a), (other, b) in self.members:
            if kind == other == "n":
                found[a].append(b)
                found[b].append(a)
        return found

    def reorder(self):
        """Puts the free nodes in the reverse order of Cuthill and McKee, from the end that makes the smaller profile."""
        nearby = self.neighbours()
        last = 0
        for _ in range(5):  # from end to end
            walk = breadth_first(nearby, last)
            last = walk[-1]
        order = min((breadth_first(nearby, end)[::-1] for end in (last, walk[0])), key=lambda found: profile(nearby, found))
        place = {node: k for k, node in enumerate(order)}
        self.free = [self.free[node] for node in order]
        self.members = [tuple((kind, place[k] if kind == "n" else k) for kind, k in pair) for pair in self.members]

    def model(self):
        number = {("n", k): k + 1 for k in range(len(self.free))}
        number.update({("s", k): len(self.free) + k + 1 for k in range(len(self.supports))})
        nodes = {number[node]: self.place(node) for node in number}
        codes = {n: "000000" if node[0] == "n" else "111111" for node, n in number.items()}
        return lattice_deck.Model(nodes, codes, [beam_group([(number[a], number[b]) for a, b in self.members])])


def breadth_first(nearby, start):
    """Nodes by their distance from one, those of few neighbours first."""
    order, seen = [start], {start}
    for node in order:
        found = sorted((n for n in dict.fromkeys(nearby[node]) if n not in seen), key=lambda n: len(nearby[n]))
        seen.update(found)
        order += found
    return order


def profile(nearby, order):
    """Entries of the profile, one for each node."""
    place = {node: k for k, node in enumerate(order)}
    return sum(place[node] - min([place[node]] + [place[n] for n in nearby[node]]) + 1 for node in order)


def beam_group(members):
    """A group of steel tubes of 0.5 by 0.02 m between the nodes of each pair."""
    def cards(number):
        lines = ["%5d%5d%5d%25sGROUP %d" % (3, len(members), 1, "", number), "    1    1", "    1        2.1E11       0.3"]
        lines += ["    1    0       0.5      0.02", "", ""]
        return lines + ["%5d%5d%5d%5d%5d%5d%5d" % (n, i, j, 0, 0, 1, 1) for n, (i, j) in enumerate(members, 1)]
    return cards


def building(nx, ny, storeys):
    """Columns in nx rows and ny lines, with beams along both at every storey, storey by storey: an equation reaches back to
    the storey below, which is 6 nx ny equations, and six of its own node."""
    frame = Frame()
    below = {(i, j): frame.support(BAY * i, BAY * j, 0.0) for j in range(ny) for i in range(nx)}
    for k in range(1, storeys + 1):
        here = {(i, j): frame.node(BAY * i, BAY * j, STOREY * k) for j in range(ny) for i in range(nx)}
        for i, j in here:
            frame.member(below[i, j], here[i, j])
            for neighbour in ((i - 1, j), (i, j - 1)):
                if neighbour in here:
                    frame.member(here[neighbour], here[i, j])
        below = here
    return frame


def jacket(bays, lowest, cuts):
    """Four legs, an X brace in each face of each bay; at each level chords, a diamond between their middles, and a conductor
    through the middle of each of its sides. Members of the lowest bays are cut into pieces, those above are not."""
    half, quarter = WIDTH / 2.0, WIDTH / 4.0
    corners = ((-half, -half), (half, -half), (half, half), (-half, half))
    middles = ((0.0, -half), (half, 0.0), (0.0, half), (-half, 0.0))
    sides = ((quarter, -quarter), (quarter, quarter), (-quarter, quarter), (-quarter, -quarter))
    frame = Frame()
    below = [frame.support(*at, 0.0) for at in corners]
    conductor = [frame.support(*at, 0.0) for at in sides]
    for bay in range(bays):
        frame.cuts = cuts if bay < lowest else 1
        top = LEVEL * (bay + 1)
        leg = [frame.node(*at, top) for at in corners]
        crossing = [frame.node(*at, top - LEVEL / 2.0) for at in middles]
        middle = [frame.node(*at, top) for at in middles]
        guide = [frame.node(*at, top) for at in sides]
        for face in range(4):
            after = (face + 1) % 4
            frame.member(below[face], leg[face])
            for end in (below[face], below[after], leg[face], leg[after]):
                frame.member(end, crossing[face])
            for end in (leg[face], leg[after], guide[face]):
                frame.member(middle[face], end)
            frame.member(guide[face], middle[after])
            frame.member(conductor[face], guide[face])
        below, conductor = leg, guide
    return frame
