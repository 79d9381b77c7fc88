"""The README's agents as typed: its commands generate the clients and compile, and the agents work on the sandbox host.

argv[1]: source directory, argv[2]: build directory
"""

import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))
# Debian's python3-thrift belongs to Debian's Python.
ENVIRONMENT = dict(os.environ, PATH="/usr/bin:" + os.environ["PATH"])
ENVIRONMENT.pop("AGENT_NATIVE_PORT", None)
DISKS = "0 NVMe 931.51 GB\n1 SATA 3.64 TB\n2 SATA 232.89 GB\n3 USB 59.63 GB\n"
# Another test can take the port of the service.
TRIES = 5
NOT_LISTENING = "could not listen"


def code_after(sentence):
    """The indented block of the README after a sentence, without its indentation."""
    text = (SOURCE / "README.md").read_text(encoding="utf-8")
    block = re.compile(r"\n\n((?:    .*\n|\n)+)").search(text, text.index(sentence)).group(1)
    return re.sub("^    ", "", block, flags=re.MULTILINE)


class ReadmeAgents(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name, "check out")
        self.folder.mkdir()
        for entry in SOURCE.iterdir():
            if not entry.name.startswith(("gen-", "my_agent")):
                (self.folder / entry.name).symlink_to(entry)

    def run_in_folder(self, command, **environment):
        return subprocess.run(command, cwd=self.folder, env=dict(ENVIRONMENT, **environment), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=300, check=False)

    def prepare(self, name, last_command):
        """Saves the example of that name, and runs the README's commands for it except the one that starts it."""
        sentence = f"Save the example as `{name}`:"
        (self.folder / name).write_text(code_after(sentence), encoding="utf-8")
        text = (SOURCE / "README.md").read_text(encoding="utf-8")
        rest = text[text.index(sentence):]
        commands = re.search(r"\n\n((?:    .*\n)*    thrift --gen .*\n(?:    .*\n)*)", rest).group(1).split("\n    ")
        self.assertEqual(commands[-1].strip(), last_command)
        done = self.run_in_folder(["sh", "-e", "-c", "\n".join(commands[:-1])])
        self.assertEqual((done.returncode, done.stdout), (0, ""))

    def run_with_host(self, agent):
        for _ in range(TRIES):
            done = self.run_in_folder([BUILD / "bin/zorhost", "--headless", "--agent", agent, "--exit-with-agent"])
            if NOT_LISTENING not in done.stdout:
                break
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    @staticmethod
    def closed_port():
        """A port on which nothing listens, and the socket that keeps other programs from using it."""
        holder = socket.socket()
        holder.bind(("localhost", 0))
        return holder, str(holder.getsockname()[1])

    def test_Python_ReadsTheDisksAndChangesALabel(self):
        self.prepare("my_agent.py", "python3 my_agent.py")
        output = self.run_with_host("python3 my_agent.py")
        self.assertIn(DISKS, output)
        self.assertIn('order ChangePartitionLabel driveLetter="D" newLabel="Data"', output)
        self.assertIn("The host answered: Task Queued\n", output)
        # The gate rejects the first attempt, because the agent has just read the disks.
        self.assertIn("The gate rejected the call: An operation is currently in progress", output)
        without = self.run_in_folder(["python3", "my_agent.py"])
        self.assertEqual((without.returncode, without.stdout), (1, "AGENT_NATIVE_PORT is not set.\n"))

    def test_Cpp_LinksAndReadsTheDisks(self):
        self.prepare("my_agent.cpp", "./my_agent")
        self.assertIn(DISKS, self.run_with_host("./my_agent"))
        without = self.run_in_folder(["./my_agent"])
        self.assertEqual((without.returncode, without.stdout), (2, "AGENT_NATIVE_PORT is not set.\n"))
        holder, port = self.closed_port()
        with holder:
            refused = self.run_in_folder(["./my_agent"], AGENT_NATIVE_PORT=port)
        self.assertEqual(refused.returncode, 3, refused.stdout)
        self.assertIn("The service does not answer: connect() failed: Connection refused\n", refused.stdout)


if __name__ == "__main__":
    unittest.main()
