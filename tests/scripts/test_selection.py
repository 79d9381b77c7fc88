"""The arguments of scripts/test select tests of its two steps. argv[1]: source directory.

A fake ctest knows the tests of each step and appends its arguments to a file.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
CTEST = """#!/bin/sh
case "$*" in
    *--label-exclude*) names="Gate Broken" ;;
    *) names="Disk" ;;
esac
case "$*" in
    *"-R "*) wanted=${*##*-R }; wanted=${wanted%% *} ;;
esac
count=0
for name in $names; do
    [ "${wanted:-$name}" = "$name" ] && count=$((count + 1))
done
case "$*" in
    *--show-only*) echo "Total Tests: $count"; exit 0 ;;
esac
echo "$*" >>"$CALLS"
[ "$wanted" != Broken ]
"""


class TestSelection(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        shutil.copytree(SOURCE / "scripts", self.folder / "scripts", symlinks=True)
        programs = self.folder / "programs"
        programs.mkdir()
        for name, text in {"ctest": CTEST, "cmake": "#!/bin/sh\n", "node": "#!/bin/sh\n", "npm": "#!/bin/sh\n",
                           "dpkg-query": "#!/bin/sh\necho install ok installed\n"}.items():
            (programs / name).write_text(text)
            (programs / name).chmod(0o755)
        self.calls = self.folder / "calls"
        self.environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}", CALLS=str(self.calls))
        for name in ("AIBRIDGE_DISK_TESTS", "AIBRIDGE_PRESET"):
            self.environment.pop(name, None)

    def run_script(self, *arguments):
        done = subprocess.run([self.folder / "scripts/test", *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=100, check=False)
        steps = ["disk" if "--label-regex disk-service" in call else "other"
                 for call in (self.calls.read_text().splitlines() if self.calls.exists() else [])]
        return done.returncode, steps, done.stderr

    def test_WithoutArguments_RunsBothSteps(self):
        self.assertEqual(self.run_script(), (0, ["other", "disk"], ""))

    def test_ArgumentsForOneStep_RunOnlyThisStep(self):
        self.assertEqual(self.run_script("-R", "Gate"), (0, ["other"], ""))

    def test_ArgumentsForTheOtherStep_RunOnlyThatStep(self):
        self.assertEqual(self.run_script("-R", "Disk"), (0, ["disk"], ""))

    def test_ArgumentsThatSelectNothing_AreAnError(self):
        self.assertEqual(self.run_script("-R", "Gaate"), (2, [], "test: No test is selected.\n"))

    def test_FailedStep_GivesTheExitCode(self):
        self.assertEqual(self.run_script("-R", "Broken"), (1, ["other"], ""))


if __name__ == "__main__":
    unittest.main()
