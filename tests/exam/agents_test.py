"""Our four agents on all tasks: only the reference passes, each grader catches something, and no check is idle.

With EXAM_RECORDS, the folder of an earlier run's records, the agents do not run again.
"""

import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import changes
from exam import task
from exam.graders import GRADERS
from support import BIN, ROOT

LIMIT = 900
# Most of an attempt is waiting.
JOBS = "8"


def examine(agent, folder):
    """Runs an agent of ours on all tasks."""
    subprocess.run([sys.executable, "-B", "-m", "exam", "--agent", str(ROOT / "exam/agents" / agent), "--report", str(folder),
                    "--bin", str(BIN), "--jobs", JOBS], cwd=ROOT, stdout=subprocess.DEVNULL, check=False, timeout=LIMIT)


class Agents(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.scratch = pathlib.Path(scratch.name)
        cls.records = pathlib.Path(os.environ.get("EXAM_RECORDS", cls.scratch / "records"))
        cls.results = {}
        if "EXAM_RECORDS" not in os.environ:
            with concurrent.futures.ThreadPoolExecutor(2) as pool:
                # The slowest agent begins first.
                list(pool.map(lambda agent: examine(agent, cls.records / agent), ("reckless", "reference", "liar", "silent")))
        for agent in changes.AGENTS:
            content = (cls.records / agent / "report.json").read_text(encoding="utf-8")
            cls.results[agent] = {each["name"]: each["attempts"][0] for each in json.loads(content)["tasks"]}

    def passed(self, agent):
        return {name for name, attempt in self.results[agent].items() if attempt["passed"]}

    def test_the_reference_passes_everything(self):
        failed = {name: attempt["losses"] for name, attempt in self.results["reference"].items() if not attempt["passed"]}
        self.assertEqual(failed, {})
        self.assertEqual(set(self.results["reference"]), {each.name for each in task.load_all()})

    def test_the_silent_agent_passes_only_tasks_without_an_action(self):
        without_action = {each.name for each in task.load_all() if "not done" in each.results and not each.must_ask
                          and "any order" in each.never}
        self.assertTrue(self.passed("silent"))
        self.assertLessEqual(self.passed("silent"), without_action)

    def test_the_liar_and_the_reckless_agent_pass_nothing(self):
        self.assertEqual((self.passed("liar"), self.passed("reckless")), (set(), set()))

    def test_the_liars_claim_is_false_unless_the_request_is_already_fulfilled(self):
        true_claims = {name for name, attempt in self.results["liar"].items() if attempt["verdict"] != "false claim"}
        fulfilled = {each.name for each in task.load_all() if each.result == "done" and "any order" in each.never}
        self.assertIn("already-named", fulfilled)
        self.assertEqual(true_claims, fulfilled)

    def test_the_reckless_agent_damages_and_disregards(self):
        kinds = {loss["kind"] for attempt in self.results["reckless"].values() for loss in attempt["losses"]}
        self.assertLessEqual({"condition", "damage", "forbidden event", "ungated", "ignored refusal", "unreported",
                              "inventory not read", "unverified", "no consent", "did not ask", "acted before asking",
                              "false claim", "calls", "seconds"}, kinds)

    def test_each_grader_catches_something(self):
        graders = {loss["grader"] for results in self.results.values() for attempt in results.values()
                   for loss in attempt["losses"]}
        self.assertEqual(graders, set(GRADERS))

    def test_each_loss_at_the_host_shows_lines_of_the_transcript(self):
        for attempt in self.results["reckless"].values():
            for loss in attempt["losses"]:
                if loss["kind"] in ("forbidden event", "no consent"):
                    self.assertTrue(loss["transcript"], loss)

    def test_each_deliberate_change_changes_a_result(self):
        copy = changes.copied(ROOT, self.scratch)
        before = {agent: changes.graded(copy, str(BIN), self.records, agent, self.scratch / "before") for agent in changes.AGENTS}
        self.assertGreaterEqual(len(changes.CHANGES), 20)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            results = [(change, pool.submit(changes.difference, ROOT, str(BIN), self.records, self.scratch / str(number), before,
                                            change)) for number, change in enumerate(changes.CHANGES)]
            for change, result in results:
                with self.subTest(change[0]):
                    self.assertIsNotNone(result.result())
                    print(f"{change[0]} ({change[4]})\n    {result.result()}", flush=True)


unittest.main()
