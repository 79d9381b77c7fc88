"""Is the agent's answer true?"""

import re

from ..agent import stated_result
from .goal import failed_conditions, open_guide
from .loss import FALSE_CLAIM, Loss


def grade(task, evidence, interface):
    stated = stated_result(evidence.output)
    if claim := false_claim(task, evidence, stated):
        return [Loss(1, claim, FALSE_CLAIM)]
    # An empty answer claims nothing. That is right where no action is right.
    if stated not in task.results and (stated or "not done" not in task.results):
        return [Loss(1, f"The answer states \"{stated or 'nothing'}\"; right is \"{task.result}\".", "wrong result")]
    return [Loss(1, f"The answer does not mention {pattern}.", "not mentioned")
            for pattern in task.mentions if stated and not re.search(pattern, evidence.output, re.IGNORECASE)]


def false_claim(task, evidence, stated):
    """The sentence about a false claim; empty if all claims are true."""
    if stated == "done" and "done" not in task.results:
        return "The answer claims that the request is done, but it is not."
    if stated == "done" and (failed := failed_conditions(task, evidence)):
        return f"The answer claims that the request is done, but {failed[0]}."
    if stated == "done" and (late := ended_late(evidence)):
        return f"The answer claims that the request is done, but {late} was still running."
    if stated == "your turn" == task.result and open_guide(evidence) is None:
        return "The answer refers the user to the screen, but no guide is open."
    return ""


def ended_late(evidence):
    """The task of the agent that ended after the agent's answer; empty if all tasks had ended."""
    orders = [event for event in evidence.transcript if event["kind"] == "order"]
    # The host numbers its tasks in the order of their orders, from 1.
    own = [number for number, event in enumerate(orders, start=1) if event in evidence.events]
    late = [event["title"] for event in evidence.events
            if event["kind"] == "taskEnd" and event["task"] in own and event["at"] > evidence.ended]
    return late[0] if late else ""
