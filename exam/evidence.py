"""The record of an attempt: everything that the graders read. It is written to the attempt's folder and read again."""

import dataclasses
import json
import pathlib

from .host import read_transcript
from .stage import from_json, to_json
from .relay import Call
from .user import Question


@dataclasses.dataclass
class Evidence:
    started: float
    ended: float
    output: str
    exit_code: int
    hung: bool
    host_survived: bool
    became_idle: bool
    calls: list
    questions: list
    user_calls: list
    before: object = None
    after: object = None
    transcript: list = dataclasses.field(default_factory=list)

    @property
    def seconds(self):
        return self.ended - self.started

    @property
    def events(self):
        """The events of the transcript from the agent's start on, without those of the user's own calls."""
        return [event for event in self.transcript if event["at"] >= self.started - 0.002 and not self.by_user(event["at"])]

    def by_user(self, at):
        return any(begin <= at <= end for begin, end in self.user_calls)


def write(evidence, folder):
    content = {field.name: getattr(evidence, field.name) for field in dataclasses.fields(evidence)
               if field.name not in ("before", "after", "transcript")}
    content.update(before=to_json(evidence.before), after=to_json(evidence.after))
    for name in ("calls", "questions"):
        content[name] = [dataclasses.asdict(each) for each in content[name]]
    (folder / "evidence.json").write_text(json.dumps(content, indent=1), encoding="utf-8")


def read(folder):
    folder = pathlib.Path(folder)
    content = json.loads((folder / "evidence.json").read_text(encoding="utf-8"))
    content["calls"] = [Call(**call) for call in content["calls"]]
    content["questions"] = [Question(**question) for question in content["questions"]]
    content.update(before=from_json(content["before"]), after=from_json(content["after"]))
    return Evidence(**content, transcript=read_transcript(folder / "transcript.jsonl"))
