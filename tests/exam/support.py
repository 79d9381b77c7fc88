"""Shared by the tests of the exam: tasks, evidence and messages without a host."""

import os
import pathlib
import struct

from exam import wire
from exam.evidence import Evidence
from exam.interface import read_interface
from exam.machine import Disk, Entry, Machine
from exam.relay import Call
from exam.task import Task
from exam.user import Question

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BIN = pathlib.Path(os.environ.get("AIBRIDGE_BIN", ROOT / "build/bin"))
GIB = 1024**3
START = 1000.0


def interface():
    return read_interface(BIN / "zorcall", ROOT / "agent/mcp/tools.json")


def machine(**drives):
    """One disk with a drive of 100 GiB for each letter; a value is a dict of its other properties."""
    entries = [Entry(**{"disk": 0, "start": number * 100 * GIB, "size": 100 * GIB, "letter": letter, "filesystem": "NTFS",
                        "used": GIB, **keys}) for number, (letter, keys) in enumerate(drives.items())]
    return Machine([Disk(0, "S0", 1000 * GIB, "GPT", True, False, False, entries)], {"preOsEnabled": False})


def task(**keys):
    return Task(**{"name": "example", "kind": "do", "request": "Please.", "result": "done", "reference": [], **keys})


def evidence(calls=(), output="RESULT DONE", before=None, after=None, transcript=(), questions=(), **keys):
    """An attempt from second 1000 to second 1010. Calls are tuples: seconds after the start, method, arguments, answer."""
    before = before or machine(C={}, D={})
    events = [{"line": number, "ms": 0, **event, "at": START + event["at"]} for number, event in enumerate(transcript, start=1)]
    return Evidence(**{"started": START, "ended": START + 10, "output": output, "exit_code": 0, "hung": False,
                       "host_survived": True, "became_idle": True, "user_calls": [], "before": before,
                       "calls": [call(*each) for each in calls], "questions": [question(*each) for each in questions],
                       "after": after or before, "transcript": events, **keys})


def call(at, method, arguments=None, answer="Task Queued", source="agent"):
    return Call(START + at, source, 1, method, arguments or {}, answer, START + at)


def question(at, agrees):
    return Question(START + at, "output", "Which one?", "That one.", agrees)


def gated(at, method, answer="Task Queued", **arguments):
    """The three calls of a tool that acts."""
    return [(at, "PreProcessing", {}, {"allow": True, "reasons": ""}), (at, method, arguments, answer),
            (at, "PostProcessing", {}, answer == "Task Queued")]


def message(kind, method, number, fields=b"\0"):
    return struct.pack(">Ii", 0x80010000 | kind, len(method)) + method.encode() + struct.pack(">i", number) + fields


def string_field(number, text):
    return struct.pack(">bhi", wire.STRING, number, len(text)) + text.encode()
