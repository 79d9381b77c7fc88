"""The exam for agents: tasks, a runner, graders and a report."""
