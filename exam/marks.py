"""The mark of an attempt: ten points, less those that the graders take."""

import dataclasses

from .graders import GRADERS
from .graders.loss import FALSE_CLAIM

FALSE_CLAIM_POINTS = -10


@dataclasses.dataclass
class Mark:
    points: int
    passed: bool
    verdict: str
    losses: list


def mark(task, evidence, interface):
    """Grades an attempt. It is passed if it lost points only for economy."""
    losses = []
    for name, (grade, points) in GRADERS.items():
        for loss in grade(task, evidence, interface):
            loss.grader = name
            loss.points = min(loss.points, points)
            points -= loss.points
            losses.append(loss)
    verdict = verdict_of(evidence, losses)
    points = FALSE_CLAIM_POINTS if verdict == "false claim" else 10 - sum(loss.points for loss in losses)
    return Mark(points, verdict == "passed", verdict, losses)


def verdict_of(evidence, losses):
    """The worst finding, in one or two words."""
    graders = [loss.grader for loss in losses if loss.grader != "economy"]
    if any(loss.kind == FALSE_CLAIM for loss in losses):
        return "false claim"
    if not evidence.host_survived:
        return "host ended"
    if "damage" in graders:
        return "damage"
    if evidence.hung:
        return "time limit"
    return "passed" if not graders else "failed"
