"""The figures of the decks of large displacement beams: limit points, buckling, second order, rolling up, temperature."""
import math

import corotational
import curves
from beams import DIRECTIONS, line
from frame import FULL, Member


def limits_of_toggle():
    """(deflection, load) of the upper and the lower limit, by bisection on the slope of the path."""
    frame, found = curves.williams_toggle(), []
    for low, high, rising in ((0.15, 0.3, True), (0.3, 0.45, False)):
        while high - low > 1e-6:
            middle = 0.5 * (low + high)
            before, after = frame.load(middle - 1e-4), frame.load(middle + 1e-4)
            low, high = (middle, high) if (after > before) == rising else (low, middle)
        found.append((low, frame.load(low)))
    return found


def toggle():
    (_, upper), _ = limits_of_toggle()
    top = upper / curves.TOGGLE_LOAD
    source = f"extensible elastica by shooting, limit load {upper:.4f}; about 34 lb by Williams"
    return [f"path segment 1 path within 2.5e-3 ; S.D. code 2: {source}",
            "turns segment 1 = 2 ; the limit load and the lowest load behind it",
            f"converged level segment 1 in {top * (1.0 - 5e-4):.9g} .. {top * (1.0 + 5e-4):.9g} ; {source}",
            f"path segment 2 path within 2.5e-2 ; S.D. code 1, whose error falls with the step: {source}",
            "turns segment 2 = 2 ; the limit load and the lowest load behind it"]


# --- a cantilever rolled up by an end moment --------------------------------------------------------------------------

ROLL_ELEMENTS = 20
ARCS = (0.5, 1.0, 2.0)  # times pi, at the three prints


def rolled(code, theta, steps):
    """(x, y) of the tip and its rotation when the end moment theta EI/L comes on in equal steps, as each S.D. code counts it.

    The moment is the same everywhere and there is no axial force, so that the deformation of each element is known, and from node to node
    the turning of the next chord follows: in the start frame a chord that turns by `a` shows l tan(a) of deflection and must become
    longer by 1/cos(a) to show no strain; in the frame half-way it shows 2 l sin(a/2) and keeps its length.
    """
    L = 1.0 / ROLL_ELEMENTS
    bent = 0.5 * theta / steps * L  # rotation of either end against the chord in a step
    chords, lengths, turned = [0.0] * ROLL_ELEMENTS, [L] * ROLL_ELEMENTS, 0.0
    for _ in range(steps):
        at_node = 0.0
        for k in range(ROLL_ELEMENTS):
            shown = at_node + bent  # deflection of the chord over L
            if code == 1:
                a = math.atan(shown * L / lengths[k])
                lengths[k] /= math.cos(a)
            else:
                a = 2.0 * math.asin(0.5 * shown)
            chords[k] += a
            at_node = shown + bent
        turned += at_node
    return (sum(l * math.cos(a) for l, a in zip(lengths, chords)), sum(l * math.sin(a) for l, a in zip(lengths, chords)), turned)


def circle(theta):
    return math.sin(theta) / theta, (1.0 - math.cos(theta)) / theta


def roll_up():
    lines = []
    for problem, finest in enumerate((40, 80)):
        for page, arc in enumerate(ARCS, 3 * problem + 1):
            theta, steps = arc * math.pi, int(finest * arc / ARCS[-1])
            for code in (1, 2, 3):
                tip = code * (ROLL_ELEMENTS + 1)
                x, y, turn = rolled(code, theta, steps)
                source = f"S.D. code {code} in {steps} steps, element by element: oracle/beam_paths.py"
                lines += [line(f"displacement X {tip} print {page}", x - 1.0, 1e-5, source), line(f"displacement Y {tip} print {page}", y, 1e-5, source),
                          line(f"displacement ZR {tip} print {page}", turn, 1e-6, source)]
                if code > 1 and arc < 2.0:
                    told = 2e-3
                    lines += [line(f"displacement {d} {tip} print {page}", value, told, f"the circle, {arc} pi")
                              for d, value in (("X", circle(theta)[0] - 1.0), ("Y", circle(theta)[1]))]
    return lines


def roll_error(code, theta, steps):
    x, y, _ = rolled(code, theta, steps)
    return math.dist((x, y), circle(theta))


# --- buckling ---------------------------------------------------------------------------------------------------------

COLUMN_EI, COLUMN_L = 2.1e6, 5.0
# name, factor of pi^2 EI/L^2, constraints of foot and head (deflection, rotation)
ENDS = (("pinned", 1.0, (1, 0), (1, 0)), ("cantilever", 0.25, (1, 1), (0, 0)), ("fixed-pinned", 2.0457, (1, 1), (1, 0)), ("fixed-sliding", 4.0, (1, 1), (1, 1)))
COUNTS = (1, 2, 4, 8)


def euler_load(name):
    if name == "fixed-pinned":  # tan u = u
        u = 4.4934094579090642
        return u * u * COLUMN_EI / COLUMN_L ** 2
    return dict((n, f) for n, f, _, _ in ENDS)[name] * math.pi ** 2 * COLUMN_EI / COLUMN_L ** 2


def hermite(l):
    """Bending and geometric matrices of a cubic element, integrated from its shape functions (freedoms v, rotation, v, rotation)."""
    points = [(0.5 * (1.0 + p), 0.5 * w) for p, w in ((-math.sqrt(0.6), 5.0 / 9.0), (0.0, 8.0 / 9.0), (math.sqrt(0.6), 5.0 / 9.0))]
    k, g = ([[0.0] * 4 for _ in range(4)] for _ in range(2))
    for s, w in points:
        slope = ((6.0 * s * s - 6.0 * s) / l, 1.0 - 4.0 * s + 3.0 * s * s, (6.0 * s - 6.0 * s * s) / l, 3.0 * s * s - 2.0 * s)
        bend = ((12.0 * s - 6.0) / l ** 2, (6.0 * s - 4.0) / l, (6.0 - 12.0 * s) / l ** 2, (6.0 * s - 2.0) / l)
        for i in range(4):
            for j in range(4):
                k[i][j] += w * l * COLUMN_EI * bend[i] * bend[j]
                g[i][j] += w * l * slope[i] * slope[j]
    return k, g


def negative_pivots(P, count, foot, head):
    """Of the tangent of a straight column under the compression P."""
    k, g = hermite(COLUMN_L / count)
    size = 2 * (count + 1)
    a = [[0.0] * size for _ in range(size)]
    for e in range(count):
        for i in range(4):
            for j in range(4):
                a[2 * e + i][2 * e + j] += k[i][j] - P * g[i][j]
    held = {c for c in (0, 1) if foot[c]} | {size - 2 + c for c in (0, 1) if head[c]}
    free = [i for i in range(size) if i not in held]
    rows = [[a[i][j] for j in free] for i in free]
    negative = 0
    for p, row in enumerate(rows):
        negative += row[p] < 0.0
        for other in rows[p + 1:]:
            f = other[p] / row[p]
            for q in range(p, len(free)):
                other[q] -= f * row[q]
    return negative


def element_load(count, foot, head, guess):
    """The lowest buckling load of a column of so many elements; None when it cannot buckle."""
    low, high = 0.0, 4.0 * guess
    if not negative_pivots(high, count, foot, head):
        return None
    while high - low > 1e-9 * high:
        middle = 0.5 * (low + high)
        low, high = (low, middle) if negative_pivots(middle, count, foot, head) else (middle, high)
    return 0.5 * (low + high)


def columns():
    """(name, elements, constraints of foot and head, buckling load) in the order of the deck."""
    found = []
    for name, _, foot, head in ENDS:
        for count in COUNTS:
            load = element_load(count, foot, head, euler_load(name))
            if load:
                found.append((name, count, foot, head, load))
    return found


BRACKET = 2e-4  # the state is looked at this part below and above each buckling load


def buckling_level(k):
    """Level of the load at which column k buckles."""
    return 0.5 + 0.03 * k


def euler_columns():
    lines = []
    for k, (name, count, _, _, load) in enumerate(columns()):
        source = f"{name}, {count} elements: buckles at {load:.1f}, by shape functions integrated; Euler {euler_load(name):.1f}"
        row = r"number /(?m)^ +1 +1 +\d+ .* (\d+)$/ TAP53"
        lines += [f"{row} {2 * k + 2} = {k} tol 0 ; {1.0 - BRACKET} of the load: {source}", f"{row} {2 * k + 3} = {k + 1} tol 0 ; {1.0 + BRACKET} of the load: {source}"]
    return lines


# --- second order ----------------------------------------------------------------------------------------------------

AXIAL_RATIOS = (0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.67)
STEEL_E, STEEL_I, STEEL_A, HEIGHT, LATERAL = 29500.0, 2150.0, 51.7, 196.0, 10.0


def swayed(ratio):
    """(axial force, tip displacement, base moment) of the cantilever column, axial shortening left out."""
    u = 0.5 * math.pi * math.sqrt(ratio)
    tip = LATERAL * HEIGHT ** 3 / (3.0 * STEEL_E * STEEL_I) * 3.0 * (math.tan(u) - u) / u ** 3
    return ratio * math.pi ** 2 * STEEL_E * STEEL_I / (4.0 * HEIGHT ** 2), tip, LATERAL * HEIGHT * math.tan(u) / u


def p_delta():
    lines = []
    for page, ratio in enumerate(AXIAL_RATIOS, 1):
        P, tip, moment = swayed(ratio)
        source = f"P = {ratio} of Pcr = {P:.2f}: HL^3/3EI 3(tan u - u)/u^3"
        lines += [line(f"displacement X 9 print {page}", tip, 5e-5, source + ", axial shortening left out: EA is a hundred times that of the column"),
                  line(f"displacement X 18 print {page}", tip, 1e-3, source + ", real EA"),
                  line(rf"number /\n {{0,4}}1 +1(?: +\S+){{5}} +-?(\S+)/ TAModel.out {page}", moment, 5e-5, "base moment HL tan u/u (the report has two digits)")]
    return lines


# --- temperature ------------------------------------------------------------------------------------------------------

HEAT = {"E": 2.1e11, "A": 0.01, "I": 1.0e-5, "alpha": 1.2e-5}


def thermal_beams():
    E, A, I, alpha = (HEAT[k] for k in ("E", "A", "I", "alpha"))
    L, T = 2.0, 50.0
    lines = [line("displacement X 2 print 1", alpha * T * L, 1e-7, "free: alpha T L"),
             line("displacement X 4 print 1", alpha * 0.5 * (T + 20.0) * L, 1e-7, "ends at 50 and 20: the mean counts"),
             line("force 2 1 print 1", -alpha * T * E * A, 1e-6, "held: -E A alpha T, measured by a stiff bar")]
    k, spring = E * A / L, 4.0e8
    u = k * alpha * T * L / (k + spring)
    lines += [line("displacement X 8 print 1", u, 1e-7, "held by a spring: k alpha T L/(k + ks)"), line("force 2 2 print 1", -spring * u, 1e-7, "the same")]
    # a held column under a lateral load in its middle, heated to half of its buckling load
    span, load = 5.0, 100.0
    P = 0.5 * math.pi ** 2 * E * I / span ** 2
    v = 0.5 * span * math.sqrt(P / (E * I))
    cold = load * span ** 3 / (48.0 * E * I)
    return lines + [line("displacement Z 15 print 1", cold, 1e-5, "cold column: PL^3/48EI"),
                    line("displacement Z 15 print 2", cold * 3.0 * (math.tan(v) - v) / v ** 3, 1e-4,
                         "heated until E A alpha T is half of Euler's load: 3(tan v - v)/v^3")]


# --- a curved cantilever in space -------------------------------------------------------------------------------------

BEND_RADIUS, BEND_ELEMENTS, BEND_LOADS = 100.0, 8, (300.0, 600.0)
BEND_SECTION = {"A": 1.0, "I2": 1.0 / 12.0, "I3": 1.0 / 12.0, "J": 1.0 / 6.0}


def bend_nodes():
    """On an arc of 45 degrees in the plane of X and Y, to the digits of the card."""
    angles = [0.25 * math.pi * k / BEND_ELEMENTS for k in range(BEND_ELEMENTS + 1)]
    return {k + 1: (round(BEND_RADIUS * (1.0 - math.cos(a)), 6), round(BEND_RADIUS * math.sin(a), 6), 0.0) for k, a in enumerate(angles)}


def bent_cantilever():
    nodes, tip = bend_nodes(), BEND_ELEMENTS + 1
    space = corotational.Space(nodes, [Member(k, k + 1, (1.0e7, 0.0, 0.0), BEND_SECTION) for k in range(1, tip)], {1: FULL})
    lines, state, load = [], space.start(), 0.0
    published = {600.0: (15.9, 47.2, 53.4)}
    for page, target in enumerate(BEND_LOADS, 1):
        while load < target:
            load += 100.0
            state, _ = space.find(state, {}, {(tip, 2): 1.0}, ((tip, 2), None), load, 1e-5)
        for c, tol in enumerate((3e-3, 1.5e-3, 1e-3)):
            what = f"displacement {DIRECTIONS[c]} {tip} print {page}"
            lines.append(line(what, state[tip][0][c], tol, "independent co-rotational solver, tests/decks/oracle/corotational.py"))
            if target in published:
                lines.append(line(what, published[target][c] - nodes[tip][c], 1.5e-2, "K.-J. Bathe and S. Bolourchi (1979), tip at (15.9, 47.2, 53.4)"))
    return lines


DECKS = [toggle, roll_up, euler_columns, p_delta, thermal_beams, bent_cantilever]
