"""Command lines of scripts/run that end before anything is installed or built. argv[1]: source directory."""

import os
import pathlib
import subprocess
import sys
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
DISPLAYS = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")


class RunOptions(unittest.TestCase):
    def check(self, line, *arguments):
        """The command must end with 2 and this line on standard error."""
        environment = {name: value for name, value in os.environ.items() if name not in DISPLAYS}
        done = subprocess.run([SOURCE / "scripts/run", *arguments], stdin=subprocess.DEVNULL, env=environment,
                              capture_output=True, text=True, timeout=300, check=False)
        self.assertEqual((done.returncode, done.stderr, done.stdout), (2, f"run: {line}\n", ""))

    def test_OptionsWithoutACommonEffect_AreRejected(self):
        for first, other in (("--all", "--machine"), ("--all", "--scan"), ("--all", "--mcp"), ("--scan", "--mcp"),
                             ("--scan", "--window"), ("--scan", "--language"), ("--mcp", "--window"),
                             ("--mcp", "--language")):
            values = {"--machine": ["laptop"], "--language": ["de"]}
            line = f"Options {first} and {other} exclude each other."
            self.check(line, first, other, *values.get(other, []))
            self.check(line, other, *values.get(other, []), first)

    def test_AnswerWithoutAScan_IsRejected(self):
        self.check("Option --answer needs --scan.", "--answer", "1")

    def test_AnswerThatIsNotANumber_IsRejected(self):
        self.check("Option --answer needs the number of a button, counted from 0.", "--scan", "--answer", "yes")

    def test_WindowWithoutADisplay_IsRejected(self):
        self.check("Option --window needs a display; DISPLAY and WAYLAND_DISPLAY are not set.", "--window")


if __name__ == "__main__":
    unittest.main()
