"""The OC4 reference jacket, written down once more for the independent solvers [N, m, kg].

Joints, members and tubes of OC4_Jacket_SD_Input.dat (OpenFAST, commit 2895884d, docs/source/user/subdyn/examples).
"""
import math

import frame
from beams import DIRECTIONS, SOLVER, line
from frame import FULL, SACS, Frame, Member, tube

# joint:x,y,z
JOINTS = """
1:6,6,-45.5 2:6,6,-45 3:5.967,5.967,-44.001 4:5.939,5.939,-43.127 5:5.333,5.333,-24.614 6:-6,6,-45.5 7:-6,6,-45
8:-5.967,5.967,-44.001 9:-5.939,5.939,-43.127 10:-5.333,5.333,-24.614 11:-6,-6,-45.5 12:-6,-6,-45
13:-5.967,-5.967,-44.001 14:-5.939,-5.939,-43.127 15:-5.333,-5.333,-24.614 16:6,-6,-45.5 17:6,-6,-45
18:5.967,-5.967,-44.001 19:5.939,-5.939,-43.127 20:5.333,-5.333,-24.614 21:4.82,4.82,-8.922 22:4.385,4.385,4.378
23:4.016,4.016,15.651 24:4,4,16.15 25:-4.82,4.82,-8.922 26:-4.385,4.385,4.378 27:-4.016,4.016,15.651 28:-4,4,16.15
29:-4.82,-4.82,-8.922 30:-4.385,-4.385,4.378 31:-4.016,-4.016,15.651 32:-4,-4,16.15 33:4.82,-4.82,-8.922
34:4.385,-4.385,4.378 35:4.016,-4.016,15.651 36:4,-4,16.15 37:5.62,0,-33.373 38:-5.62,0,-33.373 39:0,5.62,-33.373
40:0,-5.62,-33.373 41:5.064,0,-16.371 42:-5.064,0,-16.371 43:0,5.064,-16.371 44:0,-5.064,-16.371 45:4.592,0,-1.958
46:-4.592,0,-1.958 47:0,4.592,-1.958 48:0,-4.592,-1.958 49:4.193,0,10.262 50:-4.193,0,10.262 51:0,4.193,10.262
52:0,-4.193,10.262 53:4,4,20.15 54:-4,4,20.15 55:4,-4,20.15 56:-4,-4,20.15 57:6,-6,-49.5 58:6,6,-49.5 59:-6,-6,-49.5
60:-6,6,-49.5 61:6,-6,-50.001 62:6,6,-50.001 63:-6,-6,-50.001 64:-6,6,-50.001
"""
# joint-joint:tube
MEMBERS = """
1-2:2 2-3:2 3-4:2 4-5:2 6-7:2 7-8:2 8-9:2 9-10:2 11-12:2 12-13:2 13-14:2 14-15:2 16-17:2 17-18:2 18-19:2 19-20:2
5-21:3 21-22:3 22-23:3 23-24:3 10-25:3 25-26:3 26-27:3 27-28:3 15-29:3 29-30:3 30-31:3 31-32:3 20-33:3 33-34:3 34-35:3
35-36:3 8-3:1 13-8:1 13-18:1 18-3:1 4-37:1 37-20:1 19-37:1 37-5:1 9-38:1 38-15:1 14-38:1 38-10:1 4-39:1 39-10:1 9-39:1
39-5:1 19-40:1 40-15:1 14-40:1 40-20:1 5-41:1 41-33:1 20-41:1 41-21:1 10-42:1 42-29:1 15-42:1 42-25:1 5-43:1 43-25:1
10-43:1 43-21:1 20-44:1 44-29:1 15-44:1 44-33:1 21-45:1 45-34:1 33-45:1 45-22:1 25-46:1 46-30:1 29-46:1 46-26:1
21-47:1 47-26:1 25-47:1 47-22:1 33-48:1 48-30:1 29-48:1 48-34:1 22-49:1 49-35:1 34-49:1 49-23:1 26-50:1 50-31:1
30-50:1 50-27:1 22-51:1 51-27:1 26-51:1 51-23:1 34-52:1 52-31:1 30-52:1 52-35:1 24-53:4 28-54:4 32-56:4 36-55:4 58-1:5
57-16:5 60-6:5 59-11:5 62-58:6 61-57:6 64-60:6 63-59:6
"""
# tube: outside diameter, wall, density
TUBES = {1: (0.8, 0.02, 7850.0), 2: (1.2, 0.05, 7850.0), 3: (1.2, 0.035, 7850.0), 4: (1.2, 0.04, 7850.0),
         5: (2.082, 0.491, 3339.12), 6: (2.082, 0.06, 7850.0)}
E_MODULUS, G_MODULUS = 2.1e11, 8.0769e10
POISSON = 0.5 * E_MODULUS / G_MODULUS - 1.0
GRAVITY = 9.80665
BASE = (61, 62, 63, 64)
TOP = (24, 28, 32, 36)  # interface joints that a push is shared by
INTERFACE = TOP + (53, 54, 55, 56)
REFERENCE = (0.0, 0.0, 18.15)  # the point that the interface is tied to
THIRD_NODE = (0.0, 0.0, -20.0)  # of legs, sleeves and stubs
PUSH = 1.0e6
CELL = 1.0e17  # stiffness of the bars that measure base reactions


def joints():
    found = {}
    for word in JOINTS.split():
        number, place = word.split(":")
        found[int(number)] = tuple(float(c) for c in place.split(","))
    return found


def members():
    """[(joint, joint, tube, whether it is a leg, a sleeve or a stub)]"""
    found, places = [], joints()
    for word in MEMBERS.split():
        ends, number = word.split(":")
        i, j = (int(n) for n in ends.split("-"))
        apart = [abs(b - a) for a, b in zip(places[i], places[j])]
        found.append((i, j, int(number), apart[2] > 0.99 * math.hypot(*apart)))
    return found


def cowper(OD, t):
    """Shear area of a tube (G. R. Cowper, J. Appl. Mech. 33 (1966))."""
    m, nu = 1.0 - 2.0 * t / OD, POISSON
    k = 6.0 * (1.0 + nu) ** 2 * (1.0 + m * m) ** 2 / (
        (1.0 + m * m) ** 2 * (7.0 + 14.0 * nu + 8.0 * nu * nu) + 4.0 * m * m * (5.0 + 10.0 * nu + 4.0 * nu * nu))
    return k * tube(OD, t)["A"]


def five_columns(area):
    """A shear area on the card's field of five columns."""
    return float(f"{area:.4f}") if area < 1.0 else float(f"{area:.3f}")


def section(number, shear=False):
    OD, t, _ = TUBES[number]
    sheared = {"As2": five_columns(cowper(OD, t)), "As3": cowper(OD, t)} if shear else {}
    return {**tube(OD, t), **sheared}


def standing():
    """The jacket clamped at its base joints."""
    parts = [Member(i, j, (E_MODULUS, POISSON, TUBES[t][2]), section(t), THIRD_NODE if leg else SACS) for i, j, t, leg in members()]
    return Frame(joints(), parts, {n: FULL for n in BASE})


REFERENCE_NODE = 66


def tied_members():
    """(ends, tube, leg, offset of end J): the interface joints are rigid arms of the reference point."""
    places = joints()
    for i, j, t, leg in members():
        if i not in INTERFACE:
            e = frame.less(places[j], REFERENCE) if j in INTERFACE else None
            yield i, REFERENCE_NODE if e else j, t, leg, e


def tied(shear):
    places = {**joints(), REFERENCE_NODE: REFERENCE}
    parts = [Member(i, j, (E_MODULUS, POISSON, 0.0), section(t, shear), THIRD_NODE if leg else SACS, offsets=((0.0,) * 3, e) if e else None)
             for i, j, t, leg, e in tied_members()]
    return Frame(places, parts, {n: FULL for n in BASE})


def push_and_weight():
    structure = standing()
    mass = structure.masses()
    weight = {p: -GRAVITY * m for p, m in mass.items() if p[1] == 2}
    push = {(n, 0): PUSH / len(TOP) for n in TOP}
    return structure, structure.solve(push, weight)


LUMPED = (2.73595131, 2.73595131, 4.96396455, 5.42132786, 7.86429775, 7.86429775, 8.474725, 8.64103111, 8.97157032, 9.37615579)
CONDENSED = {  # K11, K33, K44, K66, K15 at the reference point, and the flexibilities uxx, uzz, rxx, rzz, and ry under Fx
    "bending alone": ((89137154.0, 1996787730.0, 103311427000.0, 8605037670.0, -2258054680.0),
                      (2.51361375e-08, 5.00804359e-10, 2.16874727e-11, 1.16210996e-10, 5.49394915e-10)),
    "with shear": ((88193490.4, 1992615820.0, 102484386000.0, 8457464320.0, -2231228690.0),
                   (2.52419974e-08, 5.01852887e-10, 2.17221372e-11, 1.18238750e-10, 5.49553662e-10))}
PUBLISHED = "OpenFAST SubDyn, commit 2895884d, and an independent program"


def stub_row(element, node, place):
    return rf"number /\n {{0,4}}{element} +{node}(?: +\S+){{{place}}} +(\S+)/ TAModel.out"


def jacket():
    structure, (push, weight) = push_and_weight()
    lines = [line("displacement X 24 print 1", 2.31614175e-08 * PUSH, 1e-8, "push: 2.31614175E-08 m/N by two independent programs")]
    for page, u, what in ((1, push, "push"), (2, weight, "weight")):
        lines += [line(f"displacement {DIRECTIONS[c]} {n} print {page}", u[n, c], 1e-8, f"{what}: {SOLVER}")
                  for n, c in ((24, 0), (24, 2), (53, 0), (5, 0), (5, 1), (24, 3), (24, 4), (45, 2))]
    for element, node, stub in ((109, 62, 108), (111, 64, 110)):
        forces = structure.end_forces(stub, push)
        lines.append(line(stub_row(element, node, 0) + " 1", forces[0], 1e-8, "base reaction of the push (the report has two digits): " + SOLVER))
        forces = structure.end_forces(stub, weight)
        lines.append(line(stub_row(element, node, 0) + " 2", forces[0], 1e-8, "base reaction of the weight, a quarter of it: " + SOLVER))
    for m, f in enumerate(LUMPED, 1):
        lines.append(line(rf"number /(?m)^0 +{m} +\S+ +(\S+) +\S+/ TAModel.out 1", f, 1e-6, "Hz, independent program with the same lumped masses (printed with four digits)"))
    return lines


def condensed_load(K, component):
    """The published column of the condensed stiffness for a component, six forces."""
    K11, K33, K44, K66, K15 = K
    return {0: (K11, 0.0, 0.0, 0.0, K15, 0.0), 1: (0.0, K11, 0.0, -K15, 0.0, 0.0), 2: (0.0, 0.0, K33, 0.0, 0.0, 0.0),
            3: (0.0, -K15, 0.0, K44, 0.0, 0.0), 4: (K15, 0.0, 0.0, 0.0, K44, 0.0), 5: (0.0, 0.0, 0.0, 0.0, 0.0, K66)}[component]


CONDENSED_MOVE = 1.0e-3


def jacket_stiffness():
    lines, n = [], REFERENCE_NODE
    for problem, (kind, (_, flexibility)) in enumerate(CONDENSED.items()):
        page = 12 * problem
        # the shear areas on axis 2 have a field of five columns: three to four digits, 2E-6 of the stiffness
        tol = 1e-7 if problem == 0 else 1e-5
        u = tied(shear=problem == 1).solve(*[{(n, c): 1.0e6} for c in FULL])
        for c in FULL:
            lines.append(line(f"displacement {DIRECTIONS[c]} {n} print {page + 1 + c}", u[c][n, c], 1e-8, f"1E6 on it, {kind}: {SOLVER}"))
            lines.append(line(f"displacement {DIRECTIONS[c]} {n} print {page + 7 + c}", CONDENSED_MOVE, tol,
                              f"loads of 0.001 times column {c + 1} of the condensed stiffness, {kind}: {PUBLISHED}"))
        uxx, uzz, rxx, rzz, ryx = flexibility
        for c, d, value in ((0, 0, uxx), (1, 1, uxx), (2, 2, uzz), (3, 3, rxx), (4, 4, rxx), (5, 5, rzz), (0, 4, ryx), (1, 3, -ryx)):
            lines.append(line(f"displacement {DIRECTIONS[d]} {n} print {page + 1 + c}", 1.0e6 * value, tol, f"published flexibility, {kind}: {PUBLISHED}"))
        for leg in range(4):
            lines.append(line(f"force 2 {3 * leg + 1} print {page + 1}", 0.25e6, 1e-6, "a push along x: each leg bears a quarter, by symmetry"))
            lines.append(line(f"force 2 {3 * leg + 3} print {page + 3}", 0.25e6, 1e-6, "a pull along z: each leg bears a quarter, by symmetry"))
    return lines


DECKS = [jacket, jacket_stiffness]
