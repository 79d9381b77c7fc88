"""A lost point with its reason."""

import dataclasses

FALSE_CLAIM = "false claim"


@dataclasses.dataclass
class Loss:
    """`lines` are lines of the transcript, counted from 1. `kind` names the finding for other programs."""

    points: int
    reason: str
    kind: str
    lines: list = dataclasses.field(default_factory=list)
    grader: str = ""
