"""Conditions on a machine or on the host's guide, written as sentences that a person can read.

    C: size is 515 GiB            D: used >= 100 GiB             H: filesystem is exFAT or FAT32
    Music size about 100 GiB      G: is gone                     disk 1 table is GPT
    disk 0 free >= 250 GiB        guide title is Clone: drive C to disk 4
"""

import dataclasses
import re

from .sizes import parse_size, size_text

SENTENCE = re.compile(r"(?P<subject>[A-Z]:|disk \d+|guide|machine|.+?) "
                      r"(?P<property>size|used|start|label|letter|filesystem|cluster|hidden|active|primary|disk|table|"
                      r"free|partitions|online|readonly|dynamic|title|text|open|startable|preOsEnabled) "
                      r"(?P<operator>is not|is|>=|<=|about) (?P<value>.*)")
PRESENCE = re.compile(r"(?P<subject>[A-Z]:|disk \d+|.+?) (?P<operator>exists|is gone)")
# Partitions begin at multiples of 1 MiB, so a size can differ by less than two of them.
TOLERANCE = 2 * 1024**2


class ConditionError(Exception):
    """A sentence that is not a condition."""


@dataclasses.dataclass
class Finding:
    holds: bool
    text: str


def parsed(sentence):
    """The parts of a condition. Raises ConditionError."""
    parts = PRESENCE.fullmatch(sentence) or SENTENCE.fullmatch(sentence)
    if not parts:
        raise ConditionError(f"not a condition: {sentence}")
    return parts


def evaluate(sentence, machine, guide=None):
    """Whether the condition holds, with a sentence about what was found."""
    parts = parsed(sentence)
    subject = subject_of(parts["subject"], machine, guide)
    if parts.re is PRESENCE:
        exists = subject is not None
        return Finding(exists == (parts["operator"] == "exists"), f"{parts['subject']} {'exists' if exists else 'is gone'}")
    return compared(parts, subject)


def compared(parts, subject):
    name, expected = f"{parts['subject']} {parts['property']}", parts["value"]
    if subject is None:
        return Finding(False, f"{parts['subject']} does not exist; expected: {name} {parts['operator']} {expected}")
    value = value_of(subject, parts["property"])
    return Finding(holds(value, parts["operator"], expected),
                   f"{name} is {shown(value)}; expected: {parts['operator']} {expected}")


def subject_of(text, machine, guide):
    """The entry of a letter or label, a disk, the open guide, or the machine's settings; None if it does not exist."""
    if text == "machine":
        return machine.settings
    if text == "guide":
        return guide if guide is not None else {"open": False, "title": "no guide", "text": "", "startable": False}
    if text.startswith("disk "):
        return machine.disk(int(text[5:]))
    if re.fullmatch("[A-Z]:", text):
        return machine.drive(text[0])
    labelled = machine.labelled(text)
    return labelled[0] if labelled else None


def value_of(subject, name):
    if isinstance(subject, dict):
        return subject.get(name, "")
    value = getattr(subject, name)
    return len(value) if isinstance(value, list) else value


def holds(value, operator, expected):
    if isinstance(value, bool):
        return (value == (expected == "yes")) == (operator == "is")
    if isinstance(value, int):
        number = parse_size(expected)
        number = int(expected) if number is None else number
        return {"is": value == number, "is not": value != number, ">=": value >= number, "<=": value <= number,
                "about": abs(value - number) < TOLERANCE}[operator]
    if operator in (">=", "<=", "about"):
        raise ConditionError(f"{operator} needs a number, not {value}")
    return (value in expected.split(" or ")) == (operator == "is")


def shown(value):
    if isinstance(value, bool):
        return "yes" if value else "no"
    return size_text(value) if isinstance(value, int) and value > 1024 else str(value) or "empty"
