"""What the files of a run tell of a motion: responses of nodes at a time, envelopes, rows of the dynamic macros on TAP53."""
import re

from deck_number import Missing, Number
from deck_path import cubic

DIRECTIONS = {"X": " X", "Y": " Y", "Z": " Z", "XR": "XR", "YR": "YR", "ZR": "ZR"}
MACRO_HEAD = " DYNAMIC ANALYSIS CONTROL INFORMATION"
DYN1_COLUMNS = {"type": (0, 1), "step": (1, 8), "substep": (8, 11), "load_step": (11, 16), "formed": (16, 21), "time": (22, 31), "dt": (32, 39),
                "applied": (40, 48), "norm": (49, 57), "error": (58, 66), "largest": (67, 75), "unbalance": (76, 85), "external": (86, 94),
                "kinetic": (95, 103), "elastic": (104, 112), "viscous": (113, 121), "level": (122, 128), "node": (128, 133), "direction": (133, 135),
                "velocity": (136, 144)}
DYN2_COLUMNS = {"step": (0, 7), "iteration": (7, 10), "load_step": (10, 15), "formed": (15, 20), "time": (21, 30), "applied": (31, 39), "norm": (40, 48),
                "unbalance": (49, 58), "external": (59, 67), "kinetic": (68, 76), "elastic": (77, 85), "viscous": (86, 94)}
END_OF_STEP = ("1", "2")


def node_columns(lines, node, names):
    """Fields of a node in the response block of one direction."""
    found, nodes = {}, []
    for line in lines:
        if line.startswith("      NODE NUMBER "):
            nodes = [int(line[k:k + 13]) for k in range(20, len(line.rstrip()), 13)]
        elif node in nodes and line[6:18].strip() in names:
            at = 25 + 13 * nodes.index(node)
            found.setdefault(line[6:18].strip(), line[at:at + 13])
    return found


def macro_lines(lines, macro):
    """Report lines of the dynamic macro of that number in the run."""
    starts = [n for n, line in enumerate(lines) if line.startswith(MACRO_HEAD)] + [len(lines)]
    if not 1 <= macro < len(starts):
        raise Missing(f"macro {macro} of {len(starts) - 1}")
    return lines[starts[macro - 1]:starts[macro]]


def responses(lines, direction, node):
    """(time, displacement, velocity) at each print of a macro's lines."""
    title = re.compile(rf"^ {{5}}{DIRECTIONS[direction]} +(?:DISPLACEMENT|ROTATION) RESPONSE AT NODES, TIME =(.*)")
    found = []
    for n, line in enumerate(lines):
        match = title.match(line)
        if match:
            end = next((k for k in range(n + 1, len(lines)) if "RESPONSE AT NODES" in lines[k]), len(lines))
            fields = node_columns(lines[n + 1:end], node, ("DISPLACEMENT", "VELOCITY"))
            if len(fields) == 2:
                found.append((Number(match[1]).value, Number(fields["DISPLACEMENT"]), Number(fields["VELOCITY"])))
    return found


def displacement_at(lines, direction, node, time):
    """Displacement at any time between two prints: the cubic through displacements and velocities."""
    prints = responses(lines, direction, node)
    for (t0, u0, v0), (t1, u1, v1) in zip(prints, prints[1:]):
        if t0 <= time <= t1 and t0 < t1:
            at = Number(f"{cubic(time, (t0, t1), (u0.value, u1.value), (v0.value, v1.value)):.17E}")
            at.half_unit = max(u0.half_unit, u1.half_unit)
            return at
    raise Missing(f"no prints of node {node} on both sides of time {time}")


def envelope(lines, direction, node, which):
    """Field of the displacement envelopes: max, min and their times tmax, tmin."""
    rows = {"max": 0, "tmax": 1, "min": 2, "tmin": 3}
    for n, line in enumerate(lines):
        if line[:9].strip() == str(node) and line[11:19] == "POSITIVE":
            at = 18 * list(DIRECTIONS).index(direction)
            if which in ("max", "min"):
                return Number(lines[n + rows[which]][19 + at:37 + at])
            return Number(lines[n + rows[which]][19 + at:35 + at])
    raise Missing(f"node {node} is not in the envelopes")


def macro_rows(lines, macro):
    """Rows of the progress file of the dynamic macro of that number: {column: field}."""
    number, columns, rows = 0, None, []
    for line in lines:
        match = re.match(r" +START OF (DYN[12]) MACRO: NUMBER =", line)
        if match:
            number += 1
            columns = DYN1_COLUMNS if match[1] == "DYN1" else DYN2_COLUMNS
        elif line.startswith("     ") and " MACRO NUMBER " in line:
            columns = None
        if columns and number == macro and len(line) == max(end for _, end in columns.values()):
            row = {name: line[a:b] for name, (a, b) in columns.items()}
            if row["step"].strip().isdigit():
                rows.append(row)
    if not rows:
        raise Missing(f"no rows of dynamic macro {macro} on TAP53")
    return rows


def row_value(lines, macro, step, column):
    """Field of the row that ends a step; step `last` is the macro's last one."""
    rows = [row for row in macro_rows(lines, macro) if row.get("type", "1") in END_OF_STEP]
    picked = rows[-1:] if step == "last" else [row for row in rows if int(row["step"]) == int(step)]
    if not picked:
        raise Missing(f"no step {step} in macro {macro}")
    return Number(picked[-1][column])


def lines_of_type(lines, macro, kind):
    return sum(row.get("type") == kind for row in macro_rows(lines, macro))
