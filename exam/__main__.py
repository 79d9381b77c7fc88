"""Examines an agent: runs the tasks, grades them, and writes the report. Options: --help; description: docs/exam.md."""

import argparse
import os
import pathlib
import signal
import sys
import tempfile

from . import children, report, run
from .task import FOLDER, TaskError, load_all, on_images

ROOT = pathlib.Path(__file__).resolve().parent.parent


def options(arguments):
    parser = argparse.ArgumentParser(prog="scripts/exam", description="Examines an agent on simulated machines.")
    parser.add_argument("--agent", metavar="COMMAND", help="the agent; started through the shell for each task")
    parser.add_argument("--name", metavar="NAME", help="the agent's name in the report")
    parser.add_argument("--task", metavar="NAME", action="append", default=[], help="only this task; can be repeated")
    parser.add_argument("--repeat", metavar="K", type=positive, default=1, help="attempts of each task (1)")
    parser.add_argument("--jobs", metavar="N", type=positive, default=4, help="tasks at the same time (4)")
    parser.add_argument("--report", metavar="DIR", type=pathlib.Path,
                        help="folder of the report and the records (a new temporary folder, or that of --grade)")
    parser.add_argument("--close-input", action="store_true",
                        help="closes the agent's input after the request; its questions remain unanswered")
    parser.add_argument("--grade", metavar="DIR", type=pathlib.Path, help="grades the records of an earlier run again")
    parser.add_argument("--compare", metavar="DIR", type=pathlib.Path,
                        help="shows the report of an earlier run next to this one")
    parser.add_argument("--images", action="store_true",
                        help="runs the tasks that have disk images on these (requires UDisks2)")
    parser.add_argument("--list", action="store_true", help="lists the tasks")
    parser.add_argument("--tasks", metavar="DIR", type=pathlib.Path, default=FOLDER,
                        help="folder of the task files (exam/tasks)")
    parser.add_argument("--bin", metavar="DIR", type=pathlib.Path, default=ROOT / "build/bin",
                        help="folder of the programs (build/bin)")
    return parser, parser.parse_args(arguments)


def positive(text):
    number = int(text)
    if number < 1:
        raise argparse.ArgumentTypeError("must be at least 1")
    return number


def selected(tasks, names):
    unknown = sorted(set(names) - {task.name for task in tasks})
    if unknown:
        raise TaskError(f"no task is named {', '.join(unknown)}")
    return [task for task in tasks if not names or task.name in names]


def tasks_of(given):
    """The tasks that the options select. Raises TaskError."""
    tasks = selected(load_all(given.tasks), given.task)
    if not given.images:
        return tasks
    simulated = [task.name for task in tasks if not task.real and task.name in given.task]
    if simulated:
        raise TaskError(f"{', '.join(simulated)} has no disk images")
    return [on_images(task) for task in tasks if task.real]


def check_folders(given, tasks):
    """An invalid folder would otherwise be reported only after the run. Raises TaskError."""
    if given.compare and not (given.compare / report.JSON).is_file():
        raise TaskError(f"{given.compare} contains no report")
    if given.grade and not any(run.records(given.grade, task) for task in tasks):
        raise TaskError(f"{given.grade} contains no records of these tasks")


def main():
    parser, given = options(sys.argv[1:])
    try:
        tasks = tasks_of(given)
        check_folders(given, tasks)
    except TaskError as error:
        parser.error(str(error))
    if given.list:
        for task in tasks:
            print(f"{task.name:32} {task.kind:10} {task.request}")
        return 0
    if not given.agent and not given.grade:
        parser.error("--agent is required")
    folder = given.report or given.grade or pathlib.Path(tempfile.mkdtemp(prefix="exam-"))
    result = run.graded_again(given, tasks, ROOT) if given.grade else run.examined(given, tasks, ROOT, folder.resolve())
    folder.mkdir(parents=True, exist_ok=True)
    report.write(result, folder, report.read(given.compare) if given.compare else None)
    print(f"report: {folder / 'report.html'}")
    return 0 if result["passed"] == len(result["tasks"]) else 1


def interrupted(number, frame):
    """Ends the hosts and agents of the run, then the run."""
    children.end_all()
    os._exit(128 + number)


for number in (signal.SIGINT, signal.SIGTERM):
    signal.signal(number, interrupted)
sys.exit(main())
