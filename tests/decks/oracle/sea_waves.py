"""What the decks of waves expect on the report: lengths, celerities, Bernoulli constants, heights of components."""
from sea_piles import about, line
from waves import Airy, Steady, Stokes

G = 9.81
STEADY = "exact steady wave by a Fourier series, tests/decks/oracle/waves.py"
BISECTION = "dispersion by bisection, tests/decks/oracle/waves.py"
FIFTH = "fifth order by nested bisections, tests/decks/oracle/waves.py"
PUBLISHED = "published solution of the exact steady wave, order 24"
# H, T, d from deep to shallow
SIX = ((6.0, 8.0, 100.0), (12.0, 12.0, 50.0), (18.0, 14.0, 75.0), (24.0, 15.5, 120.0), (8.0, 9.0, 25.0), (5.0, 10.0, 12.0))
# H, T, d, tolerance of the stream function against the exact wave: nearer to breaking a fit in 37 points tells less
STEEP = ((15.0, 14.0, 100.0, 2e-4), (25.0, 14.0, 100.0, 1e-3), (9.0, 12.0, 20.0, 3e-3), (4.0, 15.0, 10.0, 1e-2))
CARRIED = (1.5, -1.0)  # currents on H 18, T 14, d 75


class Report:
    """Lines for the wave blocks of a deck, in the order of its problems."""

    def __init__(self):
        self.lines, self.waves, self.heads = [], 0, 0

    def wave(self, C, tol, source, Q=None, T=None):
        """Celerity (and Bernoulli constant, and period in the water) of the next problem's wave."""
        self.waves += 1
        self.lines.append(line(rf"number /WAVE CELERITY +(\S+)/ TAModel.out {self.waves}", C, tol, source))
        if T is not None:
            self.lines.append(line(rf"number /WAVE PERIOD RELATED TO WATER +(\S+)/ TAModel.out {self.waves}", T, tol, source))
        if Q is not None:
            self.heads += 1
            self.lines.append(line(rf"number /BERNOULLI CONST. \(REF. MOVING WITH CREST\) +(\S+)/ TAModel.out {self.heads}", Q, tol, source))


def regular_waves():
    report = Report()
    for H, T, d in SIX:
        what = f"H {H:g}, T {T:g}, d {d:g}: "
        airy, stokes, steady = Airy(H, T, d, G), Stokes(H, T, d, G), Steady(H, T, d, G)
        report.wave(airy.C, 1e-7, "Airy, " + what + BISECTION)
        report.wave(stokes.C, 1e-6, "Stokes, " + what + FIFTH, stokes.Q)
        report.wave(steady.C, 2e-4, "stream function, " + what + STEADY, steady.Q)
    for H, T, d, tol in STEEP:
        steady = Steady(H, T, d, G, order=24 if d == 10.0 else 16)
        report.wave(steady.C, tol, f"stream function of order 15, H {H:g}, T {T:g}, d {d:g}: {STEADY}", steady.Q)
    for U in CARRIED:
        what = f"H 18, T 14, d 75, current {U:g}: "
        airy, stokes, steady = Airy(18.0, 14.0, 75.0, G, U), Stokes(18.0, 14.0, 75.0, G, U), Steady(18.0, 14.0, 75.0, G, U)
        report.wave(airy.C, 1e-6, "Airy, " + what + BISECTION, T=airy.T_water)
        report.wave(stokes.C, 1e-6, "Stokes, " + what + FIFTH, stokes.Q, stokes.T_water)
        report.wave(steady.C, 2e-4, "stream function, " + what + "over the ground, " + STEADY, steady.Q, 14.0)
    for U, C, Q in ((0.5, 22.5535753, 24.817741), (1.0, 23.3723406, 25.5420186), (1.5, 24.1724382, 26.2334685)):
        report.wave(C, 2e-4, f"stream function, H 15, T 14, d 100, g 9.80665, current {U:g}: {PUBLISHED}", Q)
    for H, T, d, U, Tw, C in ((8.0, 10.0, 50.0, 1.0, 10.6320813, 15.8207484), (8.0, 10.0, 50.0, -0.5, 9.66029434, 14.7186243),
                              (15.0, 14.0, 100.0, 1.5, 14.9426985, 22.2764745)):
        report.wave(C, 1e-6, f"Airy, H {H:g}, T {T:g}, d {d:g}, g 9.80665, current {U:g}: (omega - k U)^2 = g k tanh k d", T=Tw)
    return report.lines


DEEP = ((3.0, 8.0, 200.0), (12.0, 8.0, 150.0), (5.0, 5.5, 150.0), (3.0, 5.0, 121.0015), (6.0, 8.0, 800.0))


def deep_water_waves():
    report = Report()
    for H, T, d in DEEP:
        what = f"H {H:g}, T {T:g}, d {d:g}: "
        steady = Steady(H, T, d, G)
        report.wave(G * T / (2.0 * 3.141592653589793), 1e-6, "Airy, " + what + "g T / 2 pi")
        reference = Stokes(H, T, min(d, 2.5 * steady.L), G)  # deeper is the same wave
        report.wave(reference.C, 1e-5, "Stokes, " + what + FIFTH, reference.Q)
        report.wave(steady.C, 2e-3 if H == 12.0 else 5e-4, "stream function, " + what + STEADY, steady.Q)
    return report.lines + ["count TAModel.out 'WAVE SOLUTION BASED ON DEEP WATER STOKES V' = 5", "count TAModel.out 'WAVE SOLUTION FAILED D/L' = 3",
                           "count TAP53 'WAVE SOLUTION FAILED D/L' = 3"]


FEET = (40.0, 12.0, 160.0)


def no_gravity_wave():
    report = Report()
    H, T, d = FEET
    airy, stokes, steady = Airy(H, T, d, 32.2), Stokes(H, T, d, 32.2), Steady(H, T, d, 32.2)
    report.wave(airy.C, 1e-6, "Airy, feet: " + BISECTION)
    report.wave(stokes.C, 1e-6, "Stokes, feet: " + FIFTH, stokes.Q)
    report.wave(steady.C, 2e-4, "stream function, feet: " + STEADY, steady.Q)
    return report.lines + [about(f"force 2 {bar} print {page}", 0.0, 1e-12, "no water without a gravity card") for page in (1, 5, 12) for bar in (1, 2)]


DECKS = [regular_waves, deep_water_waves, no_gravity_wave]
