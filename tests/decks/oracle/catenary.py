"""Catenaries in closed form: one curve, asked for in six ways.

A hanging line with a = H/w, spans h and v, has its low point at x0 = h/2 - a asinh(v / (2a sinh(h/2a))) from A.
"""
import math


class Curve:
    def __init__(self, H, w, h, v):
        self.H, self.a, self.h, self.v = H, H / w, h, v
        self.x0 = h / 2 - self.a * math.asinh(v / (2 * self.a * math.sinh(h / (2 * self.a))))
        self.length = math.hypot(v, 2 * self.a * math.sinh(h / (2 * self.a)))

    def height(self, x):
        return self.a * (math.cosh((x - self.x0) / self.a) - math.cosh(self.x0 / self.a))

    def tension(self, x):
        return self.H * math.cosh((x - self.x0) / self.a)

    def slope(self, x):
        """Angle from the horizontal, degrees, upward positive from A to B."""
        return math.degrees(math.atan(math.sinh((x - self.x0) / self.a)))

    def at_part(self, part):
        """x of the point at a part of the line's length from A."""
        start = math.sinh(-self.x0 / self.a)
        return self.x0 + self.a * math.asinh(start + part * self.length / self.a)


W, SPAN, RISE = 10.0, 150.0, 50.0
REFERENCE = Curve(1000.0, W, SPAN, RISE)


def sagging_root():
    """The second curve with the same tension at B, below the tension's minimum."""
    target = REFERENCE.tension(SPAN)
    tension = lambda H: Curve(H, W, SPAN, RISE).tension(SPAN)
    low, high = 100.0, 1000.0
    for _ in range(200):
        middle = 0.5 * (low + high)
        falls = tension(middle * 1.0001) < tension(middle)  # still below the minimum
        if falls and tension(middle) > target:
            low = middle
        else:
            high = middle
    return Curve(low, W, SPAN, RISE)


# Mooring line: 60 on the bed, then a hanging part of span 120 that leaves the bed horizontally, a = 100.
LAID = 60.0
HANGING = Curve(1000.0, W, 120.0, 100.0 * (math.cosh(1.2) - 1.0))
MOORING_LENGTH = LAID + 100.0 * math.sinh(1.2)


def parameters():
    """Card parameter of options 1 to 6."""
    c = REFERENCE
    return [c.tension(SPAN), c.H, c.length, c.slope(0.0), c.slope(SPAN), MOORING_LENGTH]


def lines():
    result = []
    source = "one curve, H/w = 100, span 150, rise 50, in closed form"
    horizontal = "number /HORIZONTAL LOAD \\.+ =\\s*([-+0-9.E]+)/ TAModel.out"
    node = 0
    for option in range(1, 6):
        result.append(f"{horizontal} {option} = 1000 tol 1e-6 ; {source}")
        for k in (1, 2, 3):
            x = REFERENCE.at_part(k / 4)
            n = node + 1 + k
            result.append(f"coordinate X {n} = {x:.9g} tol 1e-6 ; {source}")
            result.append(f"coordinate Z {n} = {REFERENCE.height(x):.9g} tol 1e-6 ; {source}")
        node += 5
    source = "60 on the bed, then a curve that leaves the bed horizontally, H/w = 100, span 120"
    result.append(f"{horizontal} 6 = 1000 tol 1e-6 ; {source}")
    touch = round(LAID / MOORING_LENGTH * 10)
    for k in range(1, 10):
        if k <= touch:
            x, z = LAID * k / touch, 0.0
        else:
            x = HANGING.at_part((k - touch) / (10 - touch))
            z = HANGING.height(x)
            x += LAID
        result.append(f"coordinate X {26 + k} = {x:.9g} tol 1e-6 ; {source}")
        result.append(f"coordinate Z {26 + k} = {z:.9g} tol 1e-6 ; {source}")
    sag = sagging_root()
    source = "the other curve with the same tension at B, by bisection"
    result.append(f"{horizontal} 7 = {sag.H:.9g} tol 1e-6 ; {source}")
    for k in (1, 2, 3):
        x = sag.at_part(k / 4)
        result.append(f"coordinate X {37 + k} = {x:.9g} tol 1e-6 ; {source}")
        result.append(f"coordinate Z {37 + k} = {sag.height(x):.9g} tol 1e-6 ; {source}")
    return result
