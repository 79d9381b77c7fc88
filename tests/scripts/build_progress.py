"""The scripts' builds print their progress only while they take long. argv[1]: source directory.

A fake cmake starts ninja on a few commands.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
BUILD = 'source "$1/scripts/lib/common.sh"; build default'


class BuildProgress(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        programs = self.folder / "programs"
        programs.mkdir()
        (programs / "cmake").write_text(f"#!/bin/sh\ncd '{self.folder}' && exec ninja -j1\n")
        (programs / "cmake").chmod(0o755)
        self.environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}")
        self.environment.pop("AIBRIDGE_PROGRESS_SECONDS", None)

    def write_steps(self, *commands):
        rules = "".join(f"rule r{i}\n  command = {command} && touch $out\nbuild out{i}: r{i} {f'out{i - 1}' if i else ''}\n"
                        for i, command in enumerate(commands))
        (self.folder / "build.ninja").write_text(rules)

    def start(self, **variables):
        return subprocess.Popen(["bash", "-c", BUILD, "build", SOURCE], env=dict(self.environment, **variables),
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def build(self, **variables):
        with self.start(**variables) as process:
            output = process.communicate(timeout=100)[0]
        return process.returncode, output

    def test_StepThatTakesLong_PrintsTimeAndSteps(self):
        # Ends after 30 s without the file.
        self.write_steps("true", "for i in $$(seq 300); do [ -e continue ] && break; sleep 0.1; done")
        with self.start(AIBRIDGE_PROGRESS_SECONDS="1") as process:
            line = process.stdout.readline()
            (self.folder / "continue").touch()
            process.communicate(timeout=100)
        self.assertRegex(line, r"\A +[1-9]\d* s, 1 of 2 steps\n\Z")
        self.assertEqual(process.returncode, 0)

    def test_ShortBuild_PrintsNothing(self):
        self.write_steps("true", "true")
        self.assertEqual(self.build(), (0, ""))

    def test_CompleteBuild_PrintsNothing(self):
        self.write_steps("true", "true")
        self.build()
        self.assertEqual(self.build(AIBRIDGE_PROGRESS_SECONDS="0"), (0, ""))

    def test_EachStepCounts(self):
        self.write_steps("true", "true", "true")
        code, output = self.build(AIBRIDGE_PROGRESS_SECONDS="0")
        self.assertEqual(code, 0)
        for steps in ("1 of 3 steps\n", "2 of 3 steps\n", "3 of 3 steps\n"):
            self.assertIn(steps, output)

    def test_FailedStep_KeepsItsMessagesAndExitCode(self):
        self.write_steps("true", "echo '  a message' && false")
        code, output = self.build()
        self.assertNotEqual(code, 0)
        self.assertIn("FAILED: out1", output)
        self.assertIn("\n  a message\n", output)
        self.assertNotIn("@steps", output)


if __name__ == "__main__":
    unittest.main()
