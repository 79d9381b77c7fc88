"""Sizes with binary units, as the host shows them: "50 GiB" is 50 * 1024^3 bytes."""

import re

UNITS = {"B": 1, "KiB": 1024, "MiB": 1024**2, "GiB": 1024**3, "TiB": 1024**4}
PATTERN = re.compile(r"(-?\d+(?:\.\d+)?) ?(B|KiB|MiB|GiB|TiB)")


def parse_size(text):
    """The number of bytes; None if the text is not a size with a unit."""
    found = PATTERN.fullmatch(text.strip())
    return round(float(found[1]) * UNITS[found[2]]) if found else None


def size_text(count):
    """The number of bytes with the largest unit of which it is at least one, for example "50 GiB"."""
    for unit in ("TiB", "GiB", "MiB", "KiB"):
        if abs(count) >= UNITS[unit]:
            return f"{count / UNITS[unit]:.2f}".rstrip("0").rstrip(".") + " " + unit
    return f"{count} B"
