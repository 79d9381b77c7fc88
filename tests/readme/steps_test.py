"""Each command and example of the README has a step in tests/readme/steps.py, so that none is left out by mistake."""

import pathlib
import sys
import unittest

from readme import assign, missing_commands, missing_lines
from steps import BLOCKS, SENTENCES, Left, Output, Run

README = (pathlib.Path(sys.argv.pop(1)) / "README.md").read_text(encoding="utf-8")
EXAMPLE = """# Title

Text with `scripts/run --all`.

    scripts/run
    .ci/run

Output:

    1 disk

      2 disks

End.
"""
STEPS = [Run("scripts/run", []), Left(".ci/run", "long"), Output("1 disk")]


class Steps(unittest.TestCase):
    def test_EachBlockOfTheReadme_HasItsSteps(self):
        assign(README, BLOCKS)

    def test_EachCommandInASentenceOfTheReadme_HasAStep(self):
        self.assertEqual(missing_commands(README, SENTENCES), [])

    def test_Block_IsDividedIntoItsSteps(self):
        self.assertEqual([(step.first, text) for step, text in assign(EXAMPLE, STEPS)],
                         [("scripts/run", "scripts/run\n"), (".ci/run", ".ci/run\n"),
                          ("1 disk", "1 disk\n\n  2 disks\n")])

    def test_BlockWithoutAStep_IsAnError(self):
        with self.assertRaisesRegex(ValueError, "no step for this block of the README:\n1 disk"):
            assign(EXAMPLE, STEPS[:2])

    def test_StepWithoutABlock_IsAnError(self):
        with self.assertRaisesRegex(ValueError, 'no block for the step "more"'):
            assign(EXAMPLE, [*STEPS, Left("more", "")])

    def test_CommandInASentenceWithoutAStep_IsReported(self):
        self.assertEqual(missing_commands(EXAMPLE, []), ["scripts/run --all"])
        self.assertEqual(missing_commands(EXAMPLE, [Run("scripts/run --all", [])]), [])

    def test_LineThatTheOutputDoesNotContain_IsReported(self):
        output = "12:00:00.001 order A\nagent> x\n"
        self.assertEqual(missing_lines("agent> x\n\n01:02:03.004 order A\n", output), [])
        self.assertEqual(missing_lines("agen...\n", output), [])
        self.assertEqual(missing_lines("user...\n", output), ["user..."])
        self.assertEqual(missing_lines("agent> y\n01:02:03.004 order A\n", output), ["agent> y"])


if __name__ == "__main__":
    unittest.main()
