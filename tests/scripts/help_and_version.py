"""-h, --help and --version of each script end at once and change nothing. argv[1]: source directory."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
VERSION = re.search(r"^project\(AIBridge VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text(encoding="utf-8"),
                    re.MULTILINE).group(1)
# A service for windows/end-to-end, not a command for people.
INTERNAL = ["windows/referral-service"]
# These answer with their options. The other scripts answer with the comment at their top.
OWN_HELP = {"run": "usage: scripts/run ", "exam": "usage: scripts/exam ", "mutations": "usage: scripts/mutations "}
HELP = {
    "format": "Formats the C++ files with .clang-format. With --check, it changes nothing, lists the files that need formatting, and\n",
    "test": "Installs missing packages, builds, and runs every test. Arguments are passed to ctest, for example: "
            "scripts/test -R Gate\n",
    "windows/wine-run": "Runs a Windows program under Wine with the toolchain's libraries on its path: wine-run PROGRAM",
}


def scripts():
    folder = SOURCE / "scripts"
    found = [path for path in [*folder.iterdir(), *(folder / "windows").iterdir()]
             if path.is_file() and os.access(path, os.X_OK)]
    return sorted({str(path.relative_to(folder)) for path in found} - set(INTERNAL))


class HelpAndVersion(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        programs = self.folder / "programs"
        programs.mkdir()
        # A script that installs, builds or starts something fails.
        for name in ("dpkg-query", "apt-get", "cmake", "ctest", "git", "npm", "wine"):
            (programs / name).write_text(f"#!/bin/sh\necho {name} was called >&2\nexit 99\n")
            (programs / name).chmod(0o755)
        self.environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}")

    def output(self, script, option):
        done = subprocess.run([SOURCE / "scripts" / script, option], cwd=self.folder, env=self.environment,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""), f"{script} {option}: {done.stdout}")
        return done.stdout

    def test_Help_PrintsThePurpose(self):
        self.assertGreaterEqual(len(scripts()), 17)
        for script in scripts():
            with self.subTest(script):
                text = self.output(script, "--help")
                self.assertRegex(text, r"\A[A-Zu].*")
                self.assertTrue(text.startswith(OWN_HELP.get(script, HELP.get(script, ""))), text)
                self.assertNotIn("#", text.split("\n")[0])
                self.assertEqual(self.output(script, "-h"), text)

    def test_Version_IsThatOfTheProject(self):
        for script in scripts():
            with self.subTest(script):
                self.assertEqual(self.output(script, "--version"), f"{pathlib.Path(script).name} {VERSION}\n")

    def test_HelpOfTheCompleteRun_StartsNothing(self):
        for option in ("-h", "--help"):
            done = subprocess.run([SOURCE / ".ci/run", option], cwd=self.folder, env=self.environment,
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertRegex(done.stdout, r"\ACI runs this on a clean clone: .*\n\Z")

    def test_HelpInACopy_DoesNotNeedTheBuild(self):
        shutil.copytree(SOURCE / "scripts", self.folder / "a b/scripts", symlinks=True)
        shutil.copy(SOURCE / "CMakeLists.txt", self.folder / "a b")
        done = subprocess.run([self.folder / "a b/scripts/soak", "--version"], env=self.environment, capture_output=True,
                              text=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr, done.stdout), (0, "", f"soak {VERSION}\n"))


if __name__ == "__main__":
    unittest.main()
