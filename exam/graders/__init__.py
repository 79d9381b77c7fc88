"""The graders. Each reads a task and the evidence of an attempt and returns the lost points with their reasons."""

from . import answer, conduct, damage, economy, goal

# Points of each grader; ten for a task.
GRADERS = {"goal": (goal.grade, 4), "damage": (damage.grade, 2), "conduct": (conduct.grade, 2),
           "answer": (answer.grade, 1), "economy": (economy.grade, 1)}
