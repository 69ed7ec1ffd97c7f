"""Numbers as the files of a run print them."""
import re


class Missing(Exception):
    """What an expectation speaks of is not in the files of the run."""


class Number:
    """A printed number and half a unit of its last digit."""

    def __init__(self, text):
        text = text.strip()
        match = re.fullmatch(r"([-+]?)(\d*)\.?(\d*)(?:[ED]?([-+]\d+))?", text)
        if not match or not (match[2] or match[3]):
            raise Missing(f"'{text}' is no number")
        exponent = int(match[4] or 0)
        self.value = float(f"{match[1]}{match[2] or 0}.{match[3] or 0}E{exponent}")
        self.half_unit = 0.5 * 10.0 ** (exponent - len(match[3]))
