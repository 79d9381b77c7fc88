"""Does every condition of the task hold at the end?"""

from .. import conditions
from .loss import Loss


def grade(task, evidence, interface):
    if not evidence.host_survived:
        return [Loss(4, "The host ended before the attempt did, so its state at the end is unknown.", "host ended")]
    losses = [Loss(4, "The agent did not end within the time limit.", "time limit")] if evidence.hung else []
    if not evidence.became_idle:
        losses.append(Loss(4, "The host was still working when the attempt ended.", "unfinished"))
    return losses + [Loss(2, text + ".", "condition") for text in failed_conditions(task, evidence)]


def failed_conditions(task, evidence):
    findings = [conditions.evaluate(sentence, evidence.after, open_guide(evidence)) for sentence in task.end]
    return [finding.text for finding in findings if not finding.holds]


def open_guide(evidence):
    """The guide that was open when the agent ended; None without an open guide."""
    guide = None
    for event in evidence.events:
        if event["kind"] == "guide" and event["at"] <= evidence.ended + 0.002:
            guide = None
            if event["action"] == "opened":
                guide = {"open": True, "title": event["title"], "text": event["text"], "startable": event["canStart"]}
    return guide
