"""Did the agent need a reasonable number of calls and seconds?"""

from .loss import Loss

GATE = ("Init", "PreProcessing", "PostProcessing")


def grade(task, evidence, interface):
    count = number_of_calls(evidence)
    if count > task.calls:
        yield Loss(1, f"The agent made {count} calls; {task.calls} are reasonable.", "calls")
    if evidence.seconds > task.seconds:
        yield Loss(1, f"The agent took {evidence.seconds:.0f} s; {task.seconds} s are reasonable.", "seconds")


def number_of_calls(evidence):
    """Calls of tools. The gate's calls do not count, and a call of the gateway counts once."""
    return sum(1 for call in evidence.calls if call.source != "mcp" and call.method not in GATE)
