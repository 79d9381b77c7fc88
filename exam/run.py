"""A run: each task K times, several at the same time, each attempt for itself."""

import concurrent.futures
import dataclasses
import json
import math
import subprocess
import time

from . import evidence
from .agent import stated_result
from .attempt import Attempt, Setup
from .graders.economy import number_of_calls
from .host import HostError
from .images import ImageError
from .interface import read_interface
from .marks import mark

NOT_EXAMINED_POINTS = 0
MOST_LINES = 3
# Characters of an answer or a line of the transcript that the report shows.
MOST_TEXT = 4000


def examined(given, tasks, root, folder):
    """Runs the agent on the tasks and returns the result, as report.json contains it."""
    interface = interface_of(given, root)
    setup = Setup(given.agent, root, given.bin.resolve(), given.bin.resolve() / "machines", interface, not given.close_input)
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(given.jobs) as pool:
        # All first attempts, then all second ones: an interrupted run has then attempted each task equally often.
        waiting = [(task, number, pool.submit(attempted, task, setup, folder / task.name / str(number)))
                   for number in range(1, given.repeat + 1) for task in tasks]
        attempts = {task.name: [] for task in tasks}
        for task, _, future in waiting:
            attempts[task.name].append(future.result())
            print_line(task, attempts[task.name][-1])
    return result_of(given.name or given.agent, tasks, attempts, time.monotonic() - begin)


def graded_again(given, tasks, root):
    """Grades the records of an earlier run."""
    interface = interface_of(given, root)
    attempts = {}
    for task in tasks:
        attempts[task.name] = [graded(task, evidence.read(path.parent), interface, path.parent)
                               for path in records(given.grade, task)]
    tasks = [task for task in tasks if attempts[task.name]]
    seconds = sum(attempt["seconds"] for own in attempts.values() for attempt in own)
    return result_of(given.name or given.agent or given.grade.name, tasks, attempts, seconds)


def records(folder, task):
    """The evidence of a task's attempts in the folder of a run."""
    return sorted((folder / task.name).glob("*/evidence.json"))


def interface_of(given, root):
    return read_interface(given.bin.resolve() / "zorcall", root / "agent/mcp/tools.json")


def attempted(task, setup, folder):
    """Runs and grades an attempt. No failure of an attempt may end the run."""
    try:
        return graded(task, Attempt(task, setup, folder).run(), setup.interface, folder)
    except (HostError, ImageError, OSError, ValueError, subprocess.CalledProcessError) as error:
        return {"points": NOT_EXAMINED_POINTS, "passed": False, "verdict": "not examined", "calls": 0, "seconds": 0,
                "stated": "", "folder": str(folder), "conversation": "",
                "losses": [{"grader": "goal", "points": 10, "reason": f"The task could not be run: {error}",
                            "kind": "not examined", "lines": []}]}


def graded(task, found, interface, folder):
    result = mark(task, found, interface)
    return {"points": result.points, "passed": result.passed, "verdict": result.verdict, "calls": number_of_calls(found),
            "seconds": round(found.seconds, 1), "stated": stated_result(found.output), "folder": f"{task.name}/{folder.name}",
            "conversation": found.output[:MOST_TEXT], "losses": [with_transcript(loss, found) for loss in result.losses]}


def with_transcript(loss, found):
    """The loss with the first lines of the transcript that show it."""
    events = [event for event in found.transcript if event["line"] in loss.lines]
    lines = [{"line": event["line"], "text": line_text(event)} for event in events]
    return {**dataclasses.asdict(loss), "transcript": lines[:MOST_LINES]}


def line_text(event):
    left_out = ("line", "at", "time", "thread", "ms", "kind")
    content = json.dumps({key: value for key, value in event.items() if key not in left_out})
    return f"{event['ms']} ms {event['kind']} {content}"[:MOST_TEXT]


def result_of(agent, tasks, attempts, seconds):
    rows = [{"name": task.name, "kind": task.kind, "request": task.request, "attempts": attempts[task.name],
             "passed": all(attempt["passed"] for attempt in attempts[task.name])} for task in tasks]
    repeats = min((len(row["attempts"]) for row in rows), default=0)
    return {"agent": agent, "seconds": round(seconds, 1), "repeats": repeats, "tasks": rows,
            "passed": sum(row["passed"] for row in rows),
            "points": sum(attempt["points"] for row in rows for attempt in row["attempts"]),
            "most_points": sum(10 * len(row["attempts"]) for row in rows),
            "pass_k": [pass_k(rows, k) for k in range(1, repeats + 1)]}


def pass_k(rows, k):
    """The share of tasks that succeed in all of k attempts, estimated from all subsets of k attempts."""
    shares = [math.comb(sum(attempt["passed"] for attempt in row["attempts"]), k) / math.comb(len(row["attempts"]), k)
              for row in rows]
    return round(sum(shares) / len(shares), 4)


def print_line(task, attempt):
    print(f"{task.name:32} {task.kind:10} {attempt['points']:4} {attempt['verdict']:12} {attempt['calls']:3} calls "
          f"{attempt['seconds']:6.1f} s", flush=True)
    for loss in attempt["losses"]:
        print(f"    -{loss['points']} {loss['grader']}: {loss['reason']}", flush=True)
