"""What the decks of piles in waves expect: shear and moment by integration, and the motion of a pile that gives way."""
import csv
import math
import os

from sea_loads import Sea, Tube, sum_of
from waves import Airy, Steady, Stokes

INTEGRAL = "Morison's equation integrated finely, tests/decks/oracle/sea_loads.py"
HALVED = "the same with four points a member and the surface by seven halvings"
HERE = os.path.dirname(os.path.abspath(__file__))
RHO, G = 1.025, 9.81


def line(what, value, tol, source):
    return f"{what} = {value:.7g} tol {tol:g} ; {source}"


def about(what, value, allowed, source):
    return f"{what} = {value:.7g} within {allowed:g} ; {source}"


def told_loads(case):
    """{time: (Fx, Fz, My) of the independent program, the same of HydroDyn} of a published case."""
    with open(os.path.join(HERE, "wave_loads.csv"), encoding="ascii") as file:
        rows = csv.DictReader(text for text in file if not text.startswith("#"))
        return {float(r["t_s"]): [tuple(float(r[f"{who}_{what}"]) for what in ("Fx_N", "Fz_N", "My_Nm")) for who in ("independent", "HydroDyn")]
                for r in rows if r["case"] == case}


def pile(levels, x=0.0, y=0.0, points=None, **coefficients):
    return [Tube((x, y, a), (x, y, b), 1.0, points=points, **coefficients) for a, b in zip(levels, levels[1:])]


def props(shear, moment, span):
    """Forces of the bars that hold a pile at its foot and at its top, from shear and moment about the foot."""
    return shear - moment / span, moment / span


def prop_lines(group, bars, page, loads, span, tol, source):
    """Lines for the two bars of a pile; the force of a bar that bears little is held to the tolerance of the larger one."""
    forces = props(*loads, span)
    allowed = tol * max(abs(f) for f in forces)
    return [about(f"force {group} {bar} print {page}", f, allowed, source) for bar, f in zip(bars, forces)]


# --- pile_wave: the vertical pile from the bed to 10 above still water -----------------------------------------------

LEVELS = (-50.0, -40.0, -30.0, -20.0, -10.0, 0.0, 10.0)
REFERENCE_LEVELS = (-50.001,) + LEVELS[1:]
STEPS = 12  # of a second, one period
PILE_WAVES = {"Airy": Airy(12.0, 12.0, 50.0, G), "Airy, Wheeler": Airy(12.0, 12.0, 50.0, G, wheeler=True),
              "Stokes": Stokes(12.0, 12.0, 50.0, G), "stream function": Steady(12.0, 12.0, 50.0, G)}
RAMP, SCALE = 6.0, ((1.0, 0.5), (2.0, 1.0), (4.0, 2.0))


def shear_and_moment(tubes, sea, t, upto, foot):
    F, M = sum_of(tubes, sea, t, upto, (0.0, 0.0, foot), 4)
    return F[0], M[1]


def multiplier(t, rows=SCALE):
    for (a, va), (b, vb) in zip(rows, rows[1:]):
        if a <= t < b:
            return va + (vb - va) * (t - a) / (b - a)
    return 1.0


def pile_wave():
    lines = []
    for problem, (name, wave) in enumerate(PILE_WAVES.items()):
        sea = rough = Sea(wave, RHO, 50.0)
        if name == "stream function":
            rough = Sea(Steady(12.0, 12.0, 50.0, G, points=37), RHO, 50.0)
        tol = 3e-4 if name == "stream function" else 5e-5
        for step in (2, 5, 7, 8, 10, 11, 12):
            page = STEPS * problem + step
            coarse = shear_and_moment(pile(LEVELS, points=4), rough, step, "halved", -50.0)
            fine = shear_and_moment(pile(LEVELS), sea, step, "surface", -50.0)
            for bars in ((1, 2), (3, 4)):
                lines += prop_lines(3, bars, page, coarse, 60.0, tol, f"{name}: {HALVED}")
            lines += prop_lines(3, (1, 2), page, fine, 60.0, 0.006, f"{name}: {INTEGRAL}")
    for problem, case in ((4, "cyl__w_8_10"), (5, "cyl__w_8_10_c1")):
        for t, programs in told_loads(case).items():
            page = STEPS * 4 + 20 * (problem - 4) + (round(2.0 * t) or 20)
            if t in (0.0, 8.0, 8.5, 9.0, 9.5):
                for who, (Fx, _, My) in zip(("an independent program", "HydroDyn"), programs):
                    lines += prop_lines(3, (1, 2), page, (Fx, My + 50.001 * Fx), 60.001, 3e-4, f"{case}: {who}, tests/decks/oracle/wave_loads.csv")
    sea = Sea(PILE_WAVES["Airy"], RHO, 50.0)
    for step in (1, 2, 3, 4, 5, 7, 8, 9, 12, 14, 16):
        t = 0.5 * step
        factor = min(t / RAMP, 1.0) * multiplier(t)
        loads = [factor * f for f in shear_and_moment(pile(LEVELS, points=4), sea, t, "halved", -50.0)]
        lines += prop_lines(3, (1, 2), STEPS * 4 + 40 + step, loads, 60.0, 5e-5, f"ramp and magnification {factor:g}: {HALVED}")
    return lines
