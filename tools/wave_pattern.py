#!/usr/bin/env python3
"""Turns the wave loads that a run has written into a nodal load pattern of a STAT deck.

    wave_pattern.py [--scale F] [--title TEXT] RUN-FOLDER TIME

The folder holds TAModel.sac and the TAModel.out of the same run; loads of linear beams (types 3 and 7) and of trusses are understood. The
cards of the pattern are printed: its head, then one card for each node. Member lines are linear loads between two places
of a member; each goes to the ends of the member by the law of the lever, and from an offset end to its node with its moment.
Sums of forces and moments about the origin are written on the error stream.
"""
import argparse
import math
import os
import re
import sys

AXES = "XYZ"


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def unit(a):
    length = math.sqrt(sum(x * x for x in a))
    return [x / length for x in a]


def member_axes(start, end, third, convention):
    """Local axes of a beam: by a third node, or by the convention of the group."""
    x = unit([b - a for a, b in zip(start, end)])
    if third:
        r = [b - a for a, b in zip(start, third)]
        along = sum(a * b for a, b in zip(r, x))
        y = unit([a - along * b for a, b in zip(r, x)])
        return x, y, cross(x, y)
    up = 2 if convention == "SACS" else 1
    if abs(x[up]) >= 0.999:
        return (x, [x[2], 0.0, 0.0], [0.0, 1.0, 0.0]) if up == 2 else (x, [-x[1], 0.0, 0.0], [0.0, 0.0, 1.0])
    if up == 2:
        y = unit([-x[1], x[0], 0.0])
        return x, y, cross(x, y)
    z = unit([-x[2], 0.0, x[0]])
    return x, cross(z, x), z


class Model:
    """Places of the nodes, and of each pair of nodes the offsets, third node and convention, as the report tells them."""

    def __init__(self, report):
        self.nodes, self.members = {}, {}
        section, convention, offsets = "", "SACS", {}
        for line in report:
            words = line.split()
            title = line.strip()
            if line[:1] == "1":
                section = ""
            elif title in ("NODE COORDINATES", "END ECCENTRICITY TYPES", "ELEMENT DATA"):
                section = title
                if title == "END ECCENTRICITY TYPES":
                    offsets = {}
            elif "SPECIFICATION, GROUP" in title:
                section, offsets = "", {}
            elif title.startswith("MEMBER AXES DEFAULT"):
                convention = "SACS" if "SACS" in title else "STRUDL"
            elif section == "NODE COORDINATES" and re.match(r" {0,9}\d+ ", line[:10] + " ") and len(line) > 51:
                self.nodes.setdefault(int(line[:10]), [float(line[10 + 14 * k:24 + 14 * k]) for k in range(3)])
            elif section == "END ECCENTRICITY TYPES" and len(words) == 7 and words[0].isdigit():
                offsets[int(words[0])] = ([float(w) for w in words[1:4]], [float(w) for w in words[4:7]])
            elif section == "ELEMENT DATA" and len(words) > 8 and all(re.fullmatch(r"-?\d+", w) for w in words[:4]):
                third = int(words[4]) if words[4].isdigit() else 0
                kind = int(words[12]) if len(words) > 16 and words[12].isdigit() else 0
                self.members.setdefault((int(words[1]), int(words[2])), (third, offsets.get(kind, ([0.0] * 3, [0.0] * 3)), convention))

    def ends(self, i, j):
        _, offsets, _ = self.members.get((i, j), (0, ([0.0] * 3, [0.0] * 3), "SACS"))
        return [[a + b for a, b in zip(self.nodes[n], e)] for n, e in zip((i, j), offsets)], offsets

    def direction(self, i, j, axis, system):
        if system == "GLOB":
            return [float(axis == a) for a in AXES]
        (start, end), _ = self.ends(i, j)
        third, _, convention = self.members.get((i, j), (0, None, "SACS"))
        return member_axes(start, end, self.nodes.get(third) if third else None, convention)[AXES.index(axis)]


def compact(field):
    """A number of seven columns, whose exponent may stand without its letter."""
    field = field.strip()
    match = re.fullmatch(r"([-+]?)(\d*\.?\d*)([-+]\d+)?", field)
    if not match or not match[2].strip("."):
        raise ValueError(f"'{field}' is no number")
    return float(f"{match[1]}{match[2]}E{match[3] or 0}")


def lines_at(sac, time):
    """Load lines of one time: ("member", axis, i, j, start, first, length, last, system) or ("joint", node, six values)."""
    for line in sac:
        line = line.rstrip("\n").ljust(80)
        if not line.startswith("LOAD") or abs(float(line[72:80]) - time) > 0.005:
            continue
        if line[65:69] == "JOIN":
            yield "joint", int(line[7:11]), [compact(line[at:at + 7]) for at in (16, 23, 30, 37, 45, 52)]
        else:
            yield ("member", line[5], int(line[6:11]), int(line[11:15]), float(line[16:23]), compact(line[23:30]), float(line[30:37]),
                   compact(line[37:44]), line[60:64])


class Pattern:
    """Forces and moments of nodes."""

    def __init__(self, model):
        self.model, self.loads = model, {}

    def add(self, node, values):
        load = self.loads.setdefault(node, [0.0] * 6)
        for k, value in enumerate(values):
            load[k] += value

    def add_member(self, axis, i, j, start, first, length, last, system):
        (A, B), offsets = self.model.ends(i, j)
        size = 0.5 * (first + last) * length
        moment = length * (start * 0.5 * (first + last) + length * (first + 2.0 * last) / 6.0)  # about end A
        direction = self.model.direction(i, j, axis, system)
        at_j = moment / math.dist(A, B)
        for node, share, e in ((i, size - at_j, offsets[0]), (j, at_j, offsets[1])):
            force = [share * d for d in direction]
            self.add(node, force + cross(e, force))

    def total(self):
        """Sums of forces and of moments about the origin."""
        F, M = [0.0] * 3, [0.0] * 3
        for node, load in self.loads.items():
            turned = cross(self.model.nodes[node], load[:3])
            for k in range(3):
                F[k] += load[k]
                M[k] += turned[k] + load[3 + k]
        return F, M


def pattern_at(folder, time):
    with open(os.path.join(folder, "TAModel.out"), encoding="latin-1") as file:
        pattern = Pattern(Model(file.read().split("\n")))
    with open(os.path.join(folder, "TAModel.sac"), encoding="latin-1") as file:
        for kind, *values in lines_at(file, time):
            pattern.add(values[0], values[1]) if kind == "joint" else pattern.add_member(*values)
    return pattern


def card_number(value):
    """A real in ten columns with as many digits as fit."""
    for digits in range(9, 1, -1):
        text = f"{value:.{digits}g}"
        mantissa, _, exponent = text.partition("e")
        text = mantissa if "." in mantissa else mantissa + "."
        text += f"E{int(exponent)}" if exponent else ""
        if len(text) <= 9:
            return text.rjust(10)
    return "0.".rjust(10)


def cards(pattern, scale=1.0, title="wave loads"):
    size = max((abs(v) for load in pattern.loads.values() for v in load), default=0.0)
    kept = {n: [scale * v if abs(v) > 1e-9 * size else 0.0 for v in load] for n, load in sorted(pattern.loads.items())}
    kept = {n: load for n, load in kept.items() if any(load)}
    return [f"{len(kept):5d}{title[:40]}"] + [f"{n:5d}" + "".join(card_number(v) for v in load) for n, load in kept.items()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--scale", type=float, default=1.0)
    parser.add_argument("--title", default="wave loads")
    parser.add_argument("folder")
    parser.add_argument("time", type=float)
    options = parser.parse_args()
    pattern = pattern_at(options.folder, options.time)
    if not pattern.loads:
        sys.exit(f"no load lines of time {options.time} in {options.folder}")
    print("\n".join(cards(pattern, options.scale, options.title)))
    F, M = pattern.total()
    print("forces", *(f"{v:.6g}" for v in F), " moments about the origin", *(f"{v:.6g}" for v in M), file=sys.stderr)


if __name__ == "__main__":
    main()
