"""The figures of the decks of linear beams, from closed forms and from the independent solver of frame.py."""
import math

from frame import FULL, SACS, STRUDL, Frame, Member, tube

SOLVER = "independent frame solver, tests/decks/oracle/frame.py"
DIRECTIONS = ("X", "Y", "Z", "XR", "YR", "ZR")
DIGITS = 1e-8  # a report page has five digits: the half unit of the last one is allowed on top


def line(what, value, tol, source):
    return f"{what} = {value:.9g} tol {tol:g} ; {source}"


def moves(u, nodes, page, components=FULL, tol=DIGITS, source=SOLVER):
    """Lines for displacements of nodes, those left out that are zero."""
    size = max(abs(value) for value in u.values())
    return [line(f"displacement {DIRECTIONS[c]} {n} print {page}", u[n, c], tol, source)
            for n in nodes for c in components if abs(u.get((n, c), 0.0)) > 1e-9 * size]


# --- cantilevers of a section that is not round, in every direction and by every rule of axes ------------------------

STEEL = (2.1e11, 0.25, 0.0)
PLATE = {"A": 0.02, "J": 6.0e-5, "I2": 2.0e-5, "I3": 8.0e-5}
LENGTH = 2.0
THIRD = (1.0, -2.0, 0.5)  # the third node, from the foot
ARMS = {"x": (LENGTH, 0.0, 0.0), "y": (0.0, LENGTH, 0.0), "z": (0.0, 0.0, LENGTH), "(1,2,3)": (0.5, 1.0, 1.5)}
ANGLE = 0.5
RULES = (("SACS", "linear"), ("STRUD", "linear"), ("K", "linear"), ("SACS", "large"), ("STRUD", "large"), ("K", "large"))
LOADS = (0.001,) * 6  # along X, Y, Z and about them, one after the other: small enough for the linear answer in large beams
TOGETHER = (0.0009, -0.0007, 0.0013, 0.0004, 0.0011, -0.0006)


def axes_members():
    """(number of the foot, arm, rule, type) of each cantilever; its tip is the next number."""
    return [(1 + 2 * k, arm, rule, kind)
            for k, (rule, kind, arm) in enumerate((r, t, a) for r, t in RULES for a in ARMS.values())]


def section_axes():
    nodes, members, fixed = {}, [], {}
    for foot, arm, rule, kind in axes_members():
        nodes[foot], nodes[foot + 1], fixed[foot] = (0.0, 0.0, 0.0), arm, FULL
        rule = {"SACS": SACS, "STRUD": STRUDL, "K": THIRD}[rule]
        members.append(Member(foot, foot + 1, STEEL, PLATE, rule, ANGLE if kind == "large" else 0.0))
    frame = Frame(nodes, members, fixed)
    tips = [foot + 1 for foot, *_ in axes_members()]
    cases = [{(n, c): LOADS[c] for n in tips} for c in FULL] + [{(n, c): TOGETHER[c] for n in tips for c in FULL}]
    lines = []
    for page, u in enumerate(frame.solve(*cases), 1):
        source = SOLVER if page < 7 else "the six together: " + SOLVER
        lines += moves(u, tips, page, (page - 1,) if page < 7 else (0, 1, 2), 1e-6, source)
    return lines


# --- shear flexibility ------------------------------------------------------------------------------------------------

def shear_beam():
    E, G, OD, As = 2.1e11, 2.1e11 / 2.6, 0.5, 0.015122787
    I, L, P = tube(OD, 0.02)["I3"], 6.0, 1.0e5
    bend, shear = P * L ** 3 / (3.0 * E * I), P * L / (G * As)
    lines = [line("displacement Z 2 print 1", bend + shear, DIGITS, "PL^3/3EI + PL/GAs"),
             line("displacement YR 2 print 1", -P * L * L / (2.0 * E * I), DIGITS, "PL^2/2EI: shear does not turn a section's normal"),
             line("displacement Y 2 print 2", bend, DIGITS, "no shear area on the other axis: PL^3/3EI")]
    clamped = P * L ** 3 / (192.0 * E * I) + P * L / (4.0 * G * As)
    lines.append(line("displacement Z 4 print 1", clamped, DIGITS, "clamped at both ends: PL^3/192EI + PL/4GAs"))
    # propped cantilever under P in its middle: reaction of the prop by the unit load method
    half = L / 2.0
    free = P * (5.0 * L ** 3 / (48.0 * E * I) + half / (G * As))
    prop = free / (L ** 3 / (3.0 * E * I) + L / (G * As))
    source = "propped, reaction by the unit load method with shear"
    middle = P * (half ** 3 / (3.0 * E * I) + half / (G * As)) - prop * (5.0 * L ** 3 / (48.0 * E * I) + half / (G * As))
    turned = (P * half ** 2 - prop * L ** 2) / (2.0 * E * I)
    lines += [line("displacement Z 7 print 1", middle, DIGITS, source), line("displacement YR 8 print 1", -turned, DIGITS, source)]
    # two-beam tubular cantilever
    I, As, L, P = tube(1.0, 0.025)["I3"], 0.038329659, 10.0, 2.0e6
    source = "closed form with shear; OpenFAST r-test SD_2Beam_Cantilever tends to 0.11220 and 0.35511"
    for node, a in ((10, 5.0), (11, 10.0)):
        value = P * (a * a * (3.0 * L - a) / (6.0 * E * I) + a / (G * As))
        lines.append(line(f"displacement X {node} print 1", value, DIGITS, source))
    return lines


# --- hinges -----------------------------------------------------------------------------------------------------------

HINGED = {"A": 0.01, "J": 3.0e-5, "I2": 2.0e-5, "I3": 5.0e-5}
# (hinge code at the outer end of the first, inner end of the first, inner end of the second, outer end of the second)
HINGES = ((0, 0, 0, 0), (1, 0, 0, 0), (10, 0, 0, 0), (11, 0, 0, 11), (0, 11, 0, 0), (100, 0, 0, 0), (1000, 0, 0, 0),
          (1111, 0, 0, 0), (0, 0, 10, 1001), (1, 0, 100, 10))
SPAN, HINGE_LOAD = 4.0, (3.0e4, 2.0e4, -1.0e4, 5.0e3, 4.0e3, -6.0e3)


def released(code, end):
    """Local freedoms of a hinge code at an end: rotation about 3, rotation about 2, torsion, axial."""
    return [6 * end + freedom for place, freedom in enumerate((5, 4, 3, 0)) if code // 10 ** place % 10]


def hinged_beams():
    nodes, members, fixed = {}, [], {}
    for k, (a, b, c, d) in enumerate(HINGES):
        first, y = 1 + 3 * k, 5.0 * k
        for m in range(3):
            nodes[first + m] = (m * SPAN / 2.0, y, 0.0)
        fixed[first] = fixed[first + 2] = FULL
        members += [Member(first, first + 1, STEEL, HINGED, releases=released(a, 0) + released(b, 1)),
                    Member(first + 1, first + 2, STEEL, HINGED, releases=released(c, 0) + released(d, 1))]
    return Frame(nodes, members, fixed)


def hinges():
    frame = hinged_beams()
    middles = [2 + 3 * k for k in range(len(HINGES))]
    u, = frame.solve({(n, c): HINGE_LOAD[c] for n in middles for c in FULL})
    lines = moves(u, middles, 1)
    P, (EI2, EI3) = HINGE_LOAD, (STEEL[0] * HINGED["I2"], STEEL[0] * HINGED["I3"])
    L3 = SPAN ** 3
    closed = (("Z", 2, P[2] * L3 / (192.0 * EI2), "clamped at both ends: PL^3/192EI"),
              ("Y", 11, P[1] * L3 / (48.0 * EI3), "a ball joint at both ends: PL^3/48EI"),
              ("Z", 11, P[2] * L3 / (48.0 * EI2), "a ball joint at both ends: PL^3/48EI"),
              ("X", 20, P[0] * 0.5 * SPAN / (STEEL[0] * HINGED["A"]), "axial release on one side: the other half bears all, P (L/2)/EA"),
              ("XR", 17, P[3] * 0.5 * SPAN * 2.5 / (STEEL[0] * HINGED["J"]), "torsion release on one side: T (L/2)/GJ"))
    return lines + [line(f"displacement {d} {n} print 1", value, DIGITS, source) for d, n, value, source in closed]


# --- offsets ----------------------------------------------------------------------------------------------------------

OFFSET_LOADS = {2: (1.0, 0.0, 0.0, 0.0, 0.0, 0.0), 4: (1.0, 0.0, 0.0, 0.0, 0.0, 0.0), 6: (0.3, -0.4, 0.5, 0.2, 0.6, -0.1),
                8: (0.3, -0.4, 0.5, 0.2, 0.6, -0.1), 10: (0.0, 0.0, 0.0, 0.0, 1.0, 0.0), 12: (1.0, 0.0, 0.0, 0.0, 0.0, 0.0)}
ARM = ((0.0, 0.0, 0.5), (0.0, 0.0, 0.5))
SKEW = ((0.1, 0.2, -0.3), (-0.2, 0.15, 0.25))
TWIN = (((0.0, 0.0, 0.25), (0.0, 0.0, 0.25)), ((0.0, 0.0, -0.25), (0.0, 0.0, -0.25)))
CORNERS = (((0.0, 0.0, 0.0), (0.0, 0.0, -0.3)), ((0.4, 0.0, 0.0), (-0.4, 0.0, 0.0)), ((0.0, 0.0, -0.3), (0.0, 0.0, 0.0)))
OFFSET_NODES = {1: (0.0, 0.0, 0.0), 2: (3.0, 0.0, 0.0), 3: (0.0, 5.0, 0.0), 4: (3.0, 5.0, 0.0), 5: (0.0, 10.0, 0.0),
                6: (2.0, 12.0, 1.0), 7: (0.0, 15.0, 0.0), 8: (2.0, 17.0, 1.0), 9: (0.0, 20.0, 0.0), 10: (3.0, 20.0, 0.0),
                11: (0.0, 25.0, 0.0), 12: (0.0, 25.0, 4.0), 13: (6.0, 25.0, 4.0), 14: (6.0, 25.0, 0.0)}


def offset_members():
    """(ends, section angle, offsets); the second and the fourth are large displacement beams."""
    return [(1, 2, 0.0, ARM), (3, 4, 0.0, ARM), (5, 6, 0.0, SKEW), (7, 8, ANGLE, SKEW), (9, 10, 0.0, TWIN[0]), (9, 10, 0.0, TWIN[1]),
            (11, 12, 0.0, CORNERS[0]), (12, 13, 0.0, CORNERS[1]), (13, 14, 0.0, CORNERS[2])]


def offsets():
    members = [Member(i, j, STEEL, PLATE, SACS, angle, offsets=e) for i, j, angle, e in offset_members()]
    fixed = {n: FULL for n in (1, 3, 5, 7, 9, 11, 14)}
    frame = Frame(OFFSET_NODES, members, fixed)
    u, = frame.solve({(n, c): load[c] for n, load in OFFSET_LOADS.items() for c in FULL})
    lines = moves(u, (6, 8, 12, 13), 1, tol=1e-6)
    E, A, I = STEEL[0], PLATE["A"], PLATE["I2"]
    for n in (2, 4):
        lines += [line(f"displacement X {n} print 1", 3.0 / (E * A) + 0.25 * 3.0 / (E * I), 1e-6, "L/EA + e^2 L/EI under a unit force at the end of the arm"),
                  line(f"displacement YR {n} print 1", -0.5 * 3.0 / (E * I), 1e-6, "eL/EI")]
    twin = 2.0 * E * (I + A * 0.25 ** 2)
    return lines + [line("displacement YR 10 print 1", 3.0 / twin, 1e-6, "two members 0.5 apart: ML/2E(I + A h^2/4)"),
                    line("displacement Z 10 print 1", -4.5 / twin, 1e-6, "ML^2/2 of the same")]


# --- grillage, portal frames ------------------------------------------------------------------------------------------

def grillage():
    EI1, L1, EI2, L2, P = 3.0e7, 8.0, 1.0e7, 5.0, 1.0e5
    k1, k2 = 48.0 * EI1 / L1 ** 3, 48.0 * EI2 / L2 ** 3
    w = P / (k1 + k2)
    lines = [line("displacement Z 2 print 1", -w, DIGITS, "P/(k1 + k2), k = 48EI/L^3")]
    for element, foot, k, L in ((1, 1, k1, L1), (3, 4, k2, L2)):
        row = rf"number /\n {{0,4}}{element} +{foot}(?: +\S+){{%d}} +-?(\S+)/ TAModel.out 1"
        lines += [line(row % 2, 0.5 * k * w, DIGITS, "shear of half of its share of the load"),
                  line(row.replace(rf"\n {{0,4}}{element} +{foot}", rf"\n {{0,4}}{element} +{foot}.*\n +2") % 4,
                       0.25 * k * w * L, DIGITS, "moment under the crossing, a quarter of share times span")]
    return lines


def portal(EA, feet_hinged):
    nodes = {1: (0.0, 0.0, 0.0), 2: (0.0, 4.0, 0.0), 3: (6.0, 4.0, 0.0), 4: (6.0, 0.0, 0.0)}
    section = {"A": EA / 2.0e7, "J": 1.0, "I2": 1.0, "I3": 1.0}
    releases = ([4, 5], [], [10, 11]) if feet_hinged else ([], [], [])
    members = [Member(i, i + 1, (2.0e7, 0.25, 0.0), section, releases=r) for i, r in zip((1, 2, 3), releases)]
    return Frame(nodes, members, {1: FULL, 4: FULL, 2: (2, 3, 4), 3: (2, 3, 4)})


def portal_frame():
    lines = []
    stiff = "independent program, and Kleinlogel's formula for the inextensible frame"
    for first, EA, hinged in ((0, 2.0e9, False), (4, 2.0e9, True), (8, 2.0e13, False)):
        u, = portal(EA, hinged).solve({(2, 0): 5.0e4})
        lines += [text.replace("X 2 ", f"X {first + 2} ").replace("X 3 ", f"X {first + 3} ").replace("ZR 2 ", f"ZR {first + 2} ")
                  for text in moves(u, (2,), 1, (0, 5)) + moves(u, (3,), 1, (0,))]
    lines.append(line("displacement X 10 print 1", 0.0106666667, 1e-5, stiff))
    for element, foot, figures in ((7, 9, ((0, 13333.3333, "axial"), (1, 25000.0, "shear"), (5, 60000.0, "base moment PH/2 (3k+1)/(6k+1)"))),
                                   (8, 10, ((5, 40000.0, "knee moment"),))):
        for place, value, what in figures:
            row = rf"number /\n {{0,4}}{element} +{foot}(?: +\S+){{{place}}} +-?(\S+)/ TAModel.out 1"
            lines.append(line(row, value, 1e-5, f"{what}, inextensible"))
    return lines


# --- a space frame ----------------------------------------------------------------------------------------------------

FLOOR = ((0.0, 0.0), (6.0, 0.0), (7.0, 5.0), (0.0, 4.0))
HEIGHTS = (0.0, 3.5, 6.5)
FRAME_STEEL = (2.0e11, 0.25, 7850.0)
COLUMN = {"A": 0.012, "J": 2.0e-6, "I2": 4.0e-5, "I3": 1.2e-4}
BEAM = {"A": 0.008, "J": 1.0e-6, "I2": 1.6e-4, "I3": 1.0e-5}
BRACE = {"A": 0.002, "J": 2.0e-6, "I2": 1.0e-6, "I3": 1.0e-6}
FRAME_K = (3.0, 2.0, 20.0)  # the third node of two columns
FRAME_LOAD = {(9, 0): 1.0e4, (10, 1): -5.0e3, (11, 2): -2.0e4, (12, 5): 3.0e3, (6, 0): 8.0e3, (7, 3): 4.0e3, (5, 1): 6.0e3}
FLOOR_MASS = 2000.0  # at each joint of the upper floor
CUT_OFF, SHIFT = 15.5, 1.0  # cycles per second


def space_nodes():
    return {1 + 4 * storey + corner: (x, y, z) for storey, z in enumerate(HEIGHTS) for corner, (x, y) in enumerate(FLOOR)}


def space_members():
    """(ends, section, third node or convention, hinged brace)."""
    members = []
    for storey in (0, 1):
        low, high = 1 + 4 * storey, 5 + 4 * storey
        members += [(low + c, high + c, COLUMN, FRAME_K if c in (1, 2) else SACS, False) for c in range(4)]
        members += [(high + c, high + (c + 1) % 4, BEAM, SACS, False) for c in range(4)]
        members.append((low, high + 1, BRACE, SACS, True))
    return members


def space_structure(free=False):
    members = [Member(i, j, FRAME_STEEL, section, rule, releases=(4, 5, 10, 11) if brace else ())
               for i, j, section, rule, brace in space_members()]
    return Frame(space_nodes(), members, {} if free else {n: FULL for n in (1, 2, 3, 4)})


def space_masses():
    return {(n, c): FLOOR_MASS for n in range(9, 13) for c in range(3)}


def mode_lines(frequencies, problem, first=1):
    return [line(rf"number /(?m)^0 +{m} +\S+ +(\S+) +\S+/ TAModel.out {problem}", f, 2e-5, "Hz, masses by Jacobi's method: " + SOLVER)
            for m, f in enumerate(frequencies, 1) if m >= first]


def sturm_print(frame, frequencies):
    """What the Sturm check prints: columns above one entry whose pivot keeps the sign of its assembled coefficient, and one.

    By Sylvester's law as many pivots are negative as modes lie below the cut-off; no assembled coefficient is.
    """
    mass, cut = frame.masses(), (2.0 * math.pi * CUT_OFF) ** 2
    for p, m in space_masses().items():
        mass[p] += m
    assert all(frame.rows[p][p] > cut * m for p, m in mass.items())
    return len(frame.free) - 1 - sum(f < CUT_OFF for f in frequencies) + 1


def space_frame():
    frame = space_structure()
    u, = frame.solve(FRAME_LOAD)
    lines = moves(u, (5, 6, 9, 11), 1)
    standing = frame.frequencies(space_masses())
    lines += mode_lines(standing[:6], 1)
    lines.append(line("number /NO. OF EIGENVALUE EXISTING +=(.*)/ TAModel.out 1", sturm_print(frame, standing), 0,
                      "columns but the first, less five modes below the cut-off, and one"))
    free = space_structure(free=True).frequencies(space_masses())
    lines += mode_lines(free[:9], 1, first=7)
    shift = -(2.0 * math.pi * SHIFT) ** 2
    for m in range(6):
        skip = r"(?: +\S+\n*){%d}" % m
        lines.append(line(rf"number /(?s).*CURRENT EIGENVALUES, ITERATION +\d+\n{skip} +(\S+)/ TAModel.out 1", shift, 1e-6,
                          "rigid body: eigenvalue 0 less the square of the shift"))
    return lines


# --- frequencies and their order --------------------------------------------------------------------------------------

STRIP = {"A": 0.01, "J": 2.0e-5, "I2": 1.0e-5, "I3": 1.0e-5}
STRIP_STEEL = (2.1e11, 0.3, 7850.0)
DIVISIONS = (2, 4, 8, 16)
INDEPENDENT = {("cantilever", 2): (9.12896257, 47.0241189), ("cantilever", 4): (9.88620247, 58.1085411),
               ("cantilever", 8): (10.097196, 62.1903263), ("supported", 2): (28.3392308, 420.023266),
               ("supported", 4): (28.5377461, 113.356923), ("supported", 8): (28.5459662, 114.150985)}


def strip(count, kind):
    """A beam of 3 m along x that bends in the plane of X and Z."""
    nodes = {k + 1: (3.0 * k / count, 0.0, 0.0) for k in range(count + 1)}
    fixed = {n: (1, 3, 5) for n in nodes}
    fixed[1] = FULL if kind == "cantilever" else (0, 1, 2, 3, 5)
    if kind == "supported":
        fixed[count + 1] = (1, 2, 3, 5)
    return Frame(nodes, [Member(k, k + 1, STRIP_STEEL, STRIP) for k in range(1, count + 1)], fixed)


def beam_modes():
    lines, problem = [], 0
    for kind in ("cantilever", "supported"):
        for count in DIVISIONS:
            problem += 1
            lines += mode_lines(strip(count, kind).frequencies()[:2], problem)
            for m, f in enumerate(INDEPENDENT.get((kind, count), ()), 1):
                lines.append(line(rf"number /(?m)^0 +{m} +\S+ +(\S+) +\S+/ TAModel.out {problem}", f, 2e-5, f"independent program, lumped masses, {count} elements"))
    return lines


DECKS = [section_axes, shear_beam, hinges, offsets, grillage, portal_frame, space_frame, beam_modes]
