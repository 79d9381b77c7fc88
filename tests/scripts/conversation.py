"""The sample agents on a machine whose drives have nearly all letters. argv: source directory, build directory."""

import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))


class Conversation(unittest.TestCase):
    def test_DriveThatDoesNotExist_IsNoneOfTheMachine(self):
        environment = dict(os.environ, PATH=f"{BUILD}/bin:{os.environ['PATH']}", QT_QPA_PLATFORM="offscreen")
        with tempfile.TemporaryDirectory() as scratch:
            for _ in range(5):
                done = subprocess.run(
                    [f"{BUILD}/bin/zorhost", "--headless", "--machine", "server", "--exit-with-agent", "--agent",
                     shlex.quote(f"{SOURCE}/scripts/lib/agent-conversation")],
                    cwd=scratch, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                    stderr=subprocess.STDOUT, text=True, timeout=120, check=False)
                if "could not listen" not in done.stdout:  # another test took the port
                    break
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertIn(" rejected FormatPartition ", done.stdout)
        self.assertNotIn(" order FormatPartition ", done.stdout)


if __name__ == "__main__":
    unittest.main()
