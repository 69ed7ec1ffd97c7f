"""Tubes of any place in seas of any kind: what six bars bear beside an integration of its own.

Each case draws a wave (Airy with and without stretching, Stokes, stream function, components, embedded, none), a current of several
levels in all directions, that may turn in time, with one of its stretchings, limits, ramp, factors, still water level, coefficients, and five tubes that
lean as they like, linear or of large displacement, with end moments or lever shares. The tubes hang with rigid offsets on one node that six
bars hold. Numbers are drawn by a generator of our own, so that each seed is the same case everywhere.
"""
import math
import unittest

from support import ProgramTest
import run_deck
import sea_jacket
from sea_loads import Profile, Sea, Tube, Turning, sum_of
from waves import Airy, Components, Draws, Embedded, Steady, Stokes

STEPS, RHO = 4, 1.025


def real(value):
    """A real of ten columns with as many digits as fit."""
    for digits in range(9, 0, -1):
        text = f"{value:.{digits}g}"
        mantissa, _, exponent = text.partition("e")
        text = (mantissa if "." in mantissa else mantissa + ".") + (f"E{int(exponent)}" if exponent else "")
        if len(text) <= 10:
            return text.rjust(10)
    raise ValueError(value)


def reals(*values):
    return "".join(map(real, values))


def ints(*values):
    return "".join(f"{v:5d}" for v in values)


class Case:
    """One drawn case: `sea` and `tubes` for the oracle, `deck` for the program."""

    def __init__(self, seed, kind):
        self.kind, self.draws = kind, Draws()
        self.draws.j = 7919 * seed
        self.d, self.T, self.g, self.mwl = self.drawn(25, 110), self.drawn(7, 13), 9.81, self.one_of(0.0, 0.0, self.drawn(-5, 25))
        L = Airy(1.0, self.T, self.d, self.g).L
        self.H = round(min(0.4 * self.d, 0.1 * L * math.tanh(2.0 * math.pi * self.d / L) * self.drawn(0.2, 0.7)), 3)
        self.way = self.direction()
        self.stretching = int(self.one_of(1, 2, 3, 4)) if kind != 3 else 1
        self.levels = self.profile() if kind == 3 or self.drawn(0, 1) < 0.6 else None
        self.later = [(round(level * 0.9, 3), self.direction(), 0.05) for level, *_ in self.levels] if self.levels and self.drawn(0, 1) < 0.5 else None
        self.wheeler = kind in (1, 4, 8) and self.drawn(0, 1) < 0.5
        self.factor, self.start, self.ramp = self.one_of(1.0, self.drawn(0.7, 1.1)), self.drawn(-60, 60), self.one_of(0.0, self.drawn(2, 15))
        self.upper = self.one_of(0.0, round(self.mwl + self.drawn(0.1, 0.4) * self.H, 3)) if kind not in (3, 4) else 0.0
        self.lower = self.one_of(0.0, round(self.mwl - self.d * self.drawn(0.3, 0.8), 3)) if kind not in (3, 4) else 0.0
        self.dt = self.drawn(0.7, 2.3)
        self.parts = [(self.drawn(0.2, 0.5 * self.H + 0.3), self.drawn(6, 12), self.drawn(-180, 180), self.direction()) for _ in range(3)]
        self.D, coefficients = self.drawn(0.3, 3.0), {"CD": self.drawn(0, 1.5), "CM": self.drawn(0, 2.5), "CDS": self.one_of(0.0, self.drawn(0, 0.5))}
        self.coefficients = coefficients
        self.tubes = [self.tube() for _ in range(5)]
        self.large, self.moments = self.drawn(0, 1) < 0.4, int(self.one_of(0, 1))
        self.sea = self.make_sea()

    def drawn(self, low, high):
        return round(low + (high - low) * self.draws.next(), 3)

    def one_of(self, *values):
        return values[min(int(len(values) * self.draws.next()), len(values) - 1)]

    def direction(self):
        angle = self.drawn(0, 6.283)
        return (round(math.cos(angle), 8), round(math.sin(angle), 8))

    def profile(self):
        inner = sorted(round(self.drawn(0.05, 0.95) * self.d, 3) for _ in range(int(self.one_of(0, 1, 2))))
        return [(level, self.direction(), self.drawn(0.1, 1.5)) for level in (0.0, *inner, self.d)]

    def tube(self):
        """Not nearly upright: such members have axes of their own."""
        while True:
            A, B = (tuple(self.drawn(-30, 30) for _ in range(2)) + (round(self.mwl + self.drawn(-self.d, self.H), 3),) for _ in range(2))
            if self.drawn(0, 1) < 0.2:
                B = (A[0], A[1], B[2])
            tube = Tube(A, B, self.D, points=int(self.one_of(1, 2, 3, 4)), **self.coefficients)
            if tube.length > 3.0 and (abs(tube.e[2]) < 0.999 or A[:2] == B[:2]):
                return tube

    def make_sea(self):
        profiles = [Profile([(level, tuple(speed * c for c in way)) for level, way, speed in rows], {4: 0}.get(self.stretching, self.stretching))
                    for rows in (self.levels, self.later) if rows]
        current = Turning(*profiles, (1.0, 6.0)) if self.later else profiles[0] if profiles else None
        U = self.levels[0][2] * sum(a * b for a, b in zip(self.levels[0][1], self.way)) if self.levels else 0.0
        H, T, d, g, more = self.H, self.T, self.d, self.g, {"start": self.start, "factor": self.factor}
        components = Components(self.parts, d, g, self.wheeler, self.factor)
        components.L = 2.0 * math.pi / components.parts[-1][3]
        wave = None
        if self.kind == 1:
            wave = Airy(H, T, d, g, wheeler=self.wheeler, **more)
        elif self.kind == 2:
            wave = Stokes(H, T, d, g, **more)
        elif self.kind == 4:
            wave = components
        elif self.kind in (5, 8):
            wave = Steady(H, T, d, g, U, points=37, **more)
            if self.kind == 8:
                steady, wave = wave, Embedded(wave, components, 3.0, self.way)
                wave.L = steady.L
        low = max(self.lower, self.mwl - d) if self.lower else self.mwl - d
        upper = {3: self.mwl, 4: self.mwl + 0.5 * sum(H for H, *_ in self.parts)}.get(self.kind, self.upper or self.mwl + H)
        return Sea(wave, RHO, d, self.way, current, self.mwl, min(low, self.mwl - d) if current else low, upper, self.ramp, low)

    def wave_cards(self):
        cards = [ints(self.kind, int(bool(self.levels)), 0, 0) + real(self.ramp) + ints(0) + reals(self.factor, 0) + ints(0, 0)]
        if self.levels:
            cards += [ints(1 + bool(self.later), len(self.levels), 0) + real(0) + " " * 50 + ints(1)]
            for time, rows in ((1.0, self.levels), (6.0, self.later or [])):
                cards += [real(time)] * bool(rows) + [reals(level, *way, 0, speed) for level, way, speed in rows]
        if self.kind not in (3, 4):
            cards += [reals(self.H, self.T, *self.way, 0, self.start, self.d, 0, 3.0),
                      reals(self.upper, self.lower, 1e-11) + ints(2000 if self.kind == 1 else 60, int(self.wheeler), 12, 0, 0, 60, self.stretching)]
        if self.kind in (4, 8):
            cards += [real(self.d) + " " * 10 + real(0) + ints(int(self.wheeler), 0, self.stretching) + reals(0, 0), ints(2, 0, 3000) + real(1e-12), ints(3)]
            cards += [reals(T, H, phase, *way, 0) for H, T, phase, way in self.parts]
        return cards

    def tube_cards(self, centre):
        offsets = [ints(k) + "     " + reals(*(a - b for a, b in zip(tube.A, centre)), 0, 0, 0) for k, tube in enumerate(self.tubes, 1)]
        CD, CM, CDS = (self.coefficients[name] for name in ("CD", "CM", "CDS"))
        if self.large:
            return [ints(2, 5, 1), ints(1, 1, 2, self.moments) + "     " + ints(5, 0), ints(1) + "     " + reals(2.1e11, 0.3), "",
                    ints(1) + "     " + reals(0.6, 0.1, 1.8, 0.27, 0.27, 0.54, self.D), reals(CD, CM, 0, CDS, 0), "", *offsets] + [
                        ints(k, 1, 9 + k, 0, 0, 1, 1, 0, 0, 0, 2, tube.points, 0) + real(0) + ints(k) for k, tube in enumerate(self.tubes, 1)]
        return [ints(3, 5, 1), ints(1, 1, 2, self.moments, 5), ints(1) + "     " + reals(2.1e11, 0.3), ints(1, 0) + reals(2, 0.1),
                reals(self.D, CD, CM, 0, CDS), "", *offsets] + [
                    ints(k, 1, 9 + k, 0, 0, 1, 1, 0, 0, tube.points, 0) + real(0) + f"{k:2d}" for k, tube in enumerate(self.tubes, 1)]

    def deck(self):
        z = round(self.mwl - self.d, 3)
        self.centre = (0.0, 0.0, z)
        places = [self.centre, (10, 0, z), (0, 10, z), (-1, 0, z), (0, -1, z), (0, 0, z - 1), (10, 0, z - 1), (0, 10, z - 1), (10, -1, z)]
        places += [tube.B for tube in self.tubes]
        arms = [ints(3, 2, 1), ints(1, 1), ints(1) + "     " + reals(2.1e13, 0.3), ints(1, 0) + reals(4, 0.5), "", "", ints(1, 1, 2), ints(2, 1, 3)]
        bars = [ints(1, 6, 1), ints(1, 1), ints(1) + real(1e12), "", ints(1) + real(1), ""]
        bars += [ints(k + 1, 4 + k, node, 1, 1) for k, node in enumerate((1, 1, 1, 2, 3, 2))]
        lines = [" START  P4.314  SEA", "         0    0", "", " CORE SYMM         0", ints(14, 14, 0, 0, 0, 0, 1, 0, 0, 3, 1),
                 "   -Z     " + reals(self.mwl, RHO * self.g, RHO) + ints(0, 0) + real(self.g)]
        lines += [ints(n) + reals(*p) for n, p in enumerate(places, 1)] + [ints(4) + "    111111" + ints(9)]
        lines += self.tube_cards(self.centre) + arms + bars + ["", ints(0, 0, 0, 0, 0, 0, 1), *self.wave_cards(), ints(0, 0, 0)]
        lines += ["DYN2", real(self.dt), f"{STEPS:6d}{-1:4d}" + ints(0, 0, 0, 0, 1), ints(3, 1, 0, 1, 0) + real(1e9)]
        return ("\n".join(lines + ["NONE", " STOP"]) + "\n").encode()


class RandomSeas(ProgramTest):
    def compare(self, kind, seeds, tolerance):
        loaded = 0
        for seed in seeds:
            self.clear()
            case = Case(seed, kind)
            outcome = self.run_deck(case.deck())
            self.assertEqual(outcome.status, 0, outcome.errors + outcome.report[-800:])
            run = run_deck.Run(self.folder, 0)
            for step in range(1, STEPS + 1):
                wanted = sea_jacket.balance(*sum_of(case.tubes, case.sea, step * case.dt, "halved", case.centre))
                size = max(abs(f) for f in wanted)
                loaded += size > 1.0
                for bar, force in enumerate(wanted, 1):
                    found = run.element("force", 3, bar, step).value
                    self.assertAlmostEqual(found, force, delta=tolerance * size + 1e-9, msg=f"kind {kind} seed {seed} step {step} bar {bar}")
        self.assertGreater(loaded, 3 * len(seeds))

    def test_airy(self):
        self.compare(1, range(12), 6e-5)  # bars are printed with five digits

    def test_stokes(self):
        self.compare(2, range(8), 6e-5)

    def test_current_alone(self):
        self.compare(3, range(4), 6e-5)

    def test_components(self):
        self.compare(4, range(6), 6e-5)

    def test_stream_function(self):
        self.compare(5, range(8), 2e-3)

    def test_embedded(self):
        self.compare(8, range(5), 2e-3)


if __name__ == "__main__":
    unittest.main()
