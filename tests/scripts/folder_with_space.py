"""scripts/run from a checkout whose path has a space and an apostrophe. argv[1]: source directory, argv[2]: build directory.

The checkout consists of links, and uses the build of the tests. Fake programs replace the build and the installation of packages.
"""

import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))
# Another test can take the port of the service.
TRIES = 5
NOT_LISTENING = "could not listen"


class FolderWithSpace(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.checkout = pathlib.Path(scratch.name, "a user's b")
        self.checkout.mkdir()
        for entry in SOURCE.iterdir():
            if entry.name != "build":
                (self.checkout / entry.name).symlink_to(entry)
        (self.checkout / "build").symlink_to(BUILD)
        self.programs = pathlib.Path(scratch.name, "programs")
        self.programs.mkdir()
        self.add_program("cmake", "exit 0")
        self.add_program("dpkg-query", "echo install ok installed")

    def add_program(self, name, line):
        program = self.programs / name
        program.write_text(f"#!/bin/sh\n{line}\n")
        program.chmod(0o755)

    def run_script(self, *arguments):
        environment = dict(os.environ, PATH=f"{self.programs}:{os.environ['PATH']}")
        for _ in range(TRIES):
            done = subprocess.run([self.checkout / "scripts/run", *arguments], cwd="/", stdin=subprocess.DEVNULL,
                                  env=environment, capture_output=True, text=True, timeout=250, check=False)
            if NOT_LISTENING not in done.stdout + done.stderr:
                break
        self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)
        return done.stdout

    def test_Conversation_ReachesItsEnd(self):
        output = self.run_script("--once")
        self.assertIn("order CreatePartition", output)
        self.assertIn("agent ended with exit code 0", output)

    def test_TreeThatCannotBeWritten_IsNamedInOneSentence(self):
        (self.checkout / "build").unlink()
        # A file instead of the folder, because root can write into every folder.
        (self.checkout / "build").write_text("")
        done = subprocess.run([self.checkout / "scripts/run", "--once"], stdin=subprocess.DEVNULL, capture_output=True,
                              env=dict(os.environ, PATH=f"{self.programs}:{os.environ['PATH']}"), text=True,
                              timeout=250, check=False)
        self.assertEqual((done.returncode, done.stderr), (
            2, f"run: The build needs the folder {self.checkout}/build, which cannot be written. "
               "Use a writable copy of the source.\n"))

    def test_AllTools_PrintsTheTable(self):
        self.assertIn("LowLevelFormat", self.run_script("--all"))

    def test_Scan_AnswersItsRecommendation(self):
        self.assertIn("recommendation answered with button 0", self.run_script("--scan"))

    def test_LinkCommandOfTheLibrary_KeepsEachPathInOnePiece(self):
        build = self.checkout / "new build"
        for command in (["cmake", "-G", "Ninja", "-S", self.checkout, "-B", build],
                        ["ninja", "-C", build, "-t", "commands", "-s", "bin/AIBridge.so"]):
            done = subprocess.run(command, capture_output=True, text=True, timeout=250, check=False)
            self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(str(build / "platform/libaibridge_platform.a"), shlex.split(done.stdout.splitlines()[-1]))


if __name__ == "__main__":
    unittest.main()
