"""A task of the exam: one TOML file, described in docs/exam.md."""

import dataclasses
import pathlib
import re
import tomllib

from . import conditions

FOLDER = pathlib.Path(__file__).parent / "tasks"
# The disk service takes longer than the simulation, and an agent polls meanwhile.
SLOWER = 3
KINDS = ("do", "guide", "decline", "ask first", "recover")
RESULTS = ("done", "your turn", "not done")
EVENT = re.compile(r"any order|order \w+|guide (opened|started)")


class TaskError(Exception):
    """An invalid task file."""


@dataclasses.dataclass
class Answer:
    """The user's answer to a question that matches `about`, a regular expression. `agrees` names what may be destroyed."""

    about: str
    say: str
    agrees: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Meanwhile:
    """A call that the user makes just before the agent's first call of `before`."""

    before: str
    call: str


@dataclasses.dataclass
class Task:
    """The keys of a task's file. docs/exam.md describes them."""

    name: str
    kind: str
    request: str
    result: str
    reference: list
    machine: str = "desktop"
    change: dict = dataclasses.field(default_factory=dict)
    new_disk: list = dataclasses.field(default_factory=list)
    host: list = dataclasses.field(default_factory=list)
    speed: float = 50
    before: list = dataclasses.field(default_factory=list)
    meanwhile: list = dataclasses.field(default_factory=list)
    agreed: list = dataclasses.field(default_factory=list)
    must_ask: bool = False
    answers: list = dataclasses.field(default_factory=list)
    otherwise: str = "I do not know. Do nothing that could lose my data."
    end: list = dataclasses.field(default_factory=list)
    never: list = dataclasses.field(default_factory=list)
    may_change: dict = dataclasses.field(default_factory=dict)
    mentions: list = dataclasses.field(default_factory=list)
    calls: int = 20
    seconds: int = 30
    limit: int = 60
    # The keys of the task on disk images, if it has them.
    real: dict = dataclasses.field(default_factory=dict)
    images: list = dataclasses.field(default_factory=list)

    @property
    def results(self):
        """The results that an answer may rightly state."""
        return self.result.split(" or ")


def load(path):
    """Reads a task file. Raises TaskError with the file's name."""
    try:
        content = tomllib.loads(path.read_text(encoding="utf-8"))
        content["answers"] = [Answer(**answer) for answer in content.get("answers", [])]
        content["meanwhile"] = [Meanwhile(**entry) for entry in content.get("meanwhile", [])]
        task = Task(name=path.stem, **content)
    except (OSError, TypeError, tomllib.TOMLDecodeError) as error:
        raise TaskError(f"{path.name}: {error}") from error
    check(task, path.name)
    return task


def check(task, name):
    if task.kind not in KINDS:
        raise TaskError(f"{name}: kind must be one of {', '.join(KINDS)}")
    if not set(task.results) <= set(RESULTS):
        raise TaskError(f"{name}: result must be one of {', '.join(RESULTS)}")
    if task.real and "image" not in task.real:
        raise TaskError(f"{name}: real has no image")
    if "\n" in task.request.strip():
        raise TaskError(f"{name}: the request must be one line")
    check_sentences(task, name)
    if task.real:
        check_sentences(on_images(task), name)


def check_sentences(task, name):
    """A mistake would otherwise end the grading, or leave an event unnoticed."""
    steps = [line.partition(" ") for line in task.reference]
    try:
        for sentence in [*task.end, *(rest for word, _, rest in steps if word in ("until", "unless"))]:
            conditions.parsed(sentence)
    except conditions.ConditionError as error:
        raise TaskError(f"{name}: {error}") from error
    for event in task.never:
        if not EVENT.fullmatch(event):
            raise TaskError(f"{name}: not an event: {event}")


def on_images(task):
    """The task on disk images: the keys of its table `real` replace those of the simulated machine."""
    keys = {"change": {}, "new_disk": [], "host": [], "before": [], "meanwhile": [], "calls": SLOWER * task.calls,
            "seconds": SLOWER * task.seconds, "limit": SLOWER * task.limit, **task.real}
    return dataclasses.replace(task, real={}, images=keys.pop("image"), **keys)


def load_all(folder=FOLDER):
    paths = sorted(folder.glob("*.toml"))
    if not paths:
        raise TaskError(f"{folder} contains no task file")
    return [load(path) for path in paths]
