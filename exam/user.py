"""The user of a task, who answers the agent's questions from the task's file."""

import dataclasses
import re
import threading
import time


@dataclasses.dataclass
class Question:
    """A question with its answer. `agrees` is what the answer allows to destroy. `via` is "output" or "mcp"."""

    at: float
    via: str
    text: str
    answer: str
    agrees: list


class User:
    def __init__(self, task):
        self.task_ = task
        self.lock_ = threading.Lock()
        self.questions = []

    def answer(self, text):
        """Answers a question of the agent."""
        found = self.matching_(text)
        say, agrees = (found.say, found.agrees) if found else (self.task_.otherwise, [])
        self.record_("output", text, say, agrees)
        return say

    def confirm(self, text, targets):
        """Answers the question whether these targets may be destroyed."""
        yes = bool(targets) and all(target in self.agreed() for target in targets)
        if not yes and (found := self.matching_(text)):
            yes = bool(targets) and all(target in found.agrees for target in targets)
        self.record_("mcp", text, "yes" if yes else "no", targets if yes else [])
        return yes

    def agreed(self):
        """Everything that the request and the answers so far allow to destroy."""
        with self.lock_:
            return list(self.task_.agreed) + [target for question in self.questions for target in question.agrees]

    def matching_(self, text):
        return next((each for each in self.task_.answers if re.search(each.about, text, re.IGNORECASE)), None)

    def record_(self, via, text, say, agrees):
        with self.lock_:
            self.questions.append(Question(time.time(), via, text, say, agrees))
