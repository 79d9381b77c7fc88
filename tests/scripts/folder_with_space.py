"""scripts/run from a checkout whose path has a space and an apostrophe. argv[1]: source directory, argv[2]: build directory.

The checkout consists of links, and uses the build of the tests. Fake programs replace the build and the installation of packages.
"""

import json
import os
import pathlib
import pty
import shlex
import signal
import subprocess
import sys
import tempfile
import threading
import unittest

BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))
# Another test can take the port of the service.
TRIES = 5
NOT_LISTENING = "could not listen"
# An agent that starts the gateway of a configuration, its argument, and lets it read the disks.
MCP_AGENT = """import json, subprocess, sys
server = json.loads(sys.argv[1])["mcpServers"]["disks"]
gateway = subprocess.Popen([server["command"], *server["args"]], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
def send(**message):
    gateway.stdin.write(json.dumps({"jsonrpc": "2.0", **message}) + "\\n")
    gateway.stdin.flush()
send(id=1, method="initialize", params={"protocolVersion": "2025-06-18", "capabilities": {},
                                        "clientInfo": {"name": "test", "version": "1"}})
print(gateway.stdout.readline())
send(method="notifications/initialized")
send(id=2, method="tools/call", params={"name": "ListAllDisks", "arguments": {}})
print(gateway.stdout.readline())
gateway.stdin.close()
sys.exit(gateway.wait())
"""


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
        # The settings of the run that starts this test are not those of the scripts under test.
        settings = ("AIBRIDGE_PRESET", "AIBRIDGE_DISK_TESTS", "AIBRIDGE_TEST_JOBS")
        self.environment = {name: value for name, value in os.environ.items() if name not in settings}
        self.environment["PATH"] = f"{self.programs}:{os.environ['PATH']}"
        self.add_program("cmake", "exit 0")
        self.add_program("dpkg-query", "echo install ok installed")

    def add_program(self, name, line):
        program = self.programs / name
        program.write_text(f"#!/bin/sh\n{line}\n")
        program.chmod(0o755)

    def run_program(self, program, *arguments):
        for _ in range(TRIES):
            done = subprocess.run([self.checkout / program, *arguments], cwd="/", stdin=subprocess.DEVNULL,
                                  env=self.environment, capture_output=True, text=True, timeout=250, check=False)
            if NOT_LISTENING not in done.stdout + done.stderr:
                break
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done

    def run_script(self, *arguments):
        done = self.run_program("scripts/run", *arguments)
        self.assertEqual(done.stderr, "", done.stdout)
        return done.stdout

    def start_at_a_terminal(self, *arguments):
        terminal, end = pty.openpty()
        self.addCleanup(os.close, terminal)
        process = subprocess.Popen([self.checkout / "scripts/run", *arguments], cwd="/", stdin=end, text=True,
                                   env=self.environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
        os.close(end)
        limit = threading.Timer(200, os.killpg, (process.pid, signal.SIGKILL))
        limit.start()
        self.addCleanup(limit.cancel)
        return process

    def test_Conversation_ReachesItsEnd(self):
        output = self.run_script("--once")
        self.assertIn("== starting: zorhost --machine desktop ", output)
        self.assertIn("order CreatePartition", output)
        self.assertIn("agent ended with exit code 0", output)

    def test_TreeThatCannotBeWritten_IsNamedInOneSentence(self):
        (self.checkout / "build").unlink()
        # A file instead of the folder, because root can write into every folder.
        (self.checkout / "build").write_text("")
        done = subprocess.run([self.checkout / "scripts/run", "--once"], stdin=subprocess.DEVNULL, capture_output=True,
                              env=self.environment, text=True,
                              timeout=250, check=False)
        self.assertEqual((done.returncode, done.stderr), (
            2, f"run: The build needs the folder {self.checkout}/build, which cannot be written. "
               "Use a writable copy of the source.\n"))

    def test_AllTools_PrintsTheTable(self):
        self.assertIn("LowLevelFormat", self.run_script("--all"))

    def test_Scan_AnswersItsRecommendation(self):
        self.assertIn("recommendation answered with button 0", self.run_script("--scan"))

    def test_HostAtATerminal_EndsItsOutputWithItsPort(self):
        with self.start_at_a_terminal() as process:
            lines = []
            for line in process.stdout:
                lines.append(line)
                if line.startswith("export "):
                    break
            self.assertRegex(lines[-1], r"\Aexport AGENT_NATIVE_PORT=\d+\n\Z", "".join(lines))
            example = lines[-2].removeprefix("== ").strip()
            called = subprocess.run(["sh", "-e", "-c", lines[-1] + example], capture_output=True, text=True, timeout=250,
                                    check=False)
            os.killpg(process.pid, signal.SIGINT)
            rest = process.stdout.read()
        self.assertEqual(called.stderr, "")
        self.assertEqual(len(json.loads(called.stdout)), 4)
        self.assertEqual((process.returncode, rest), (0, ""))

    def test_Mcp_PrintsAConfigurationThatStartsTheGateway(self):
        output = self.run_program("scripts/run", "--mcp", "--once").stdout
        configuration = output[output.index("{\n    \"mcpServers\""):]
        configuration = configuration[:configuration.index("\n}") + 2]
        path = str(self.checkout / "agent/mcp/bin/aibridge-mcp.js")
        self.assertEqual(json.loads(configuration)["mcpServers"]["disks"]["args"], [path])
        agent = shlex.join([sys.executable, "-c", MCP_AGENT, configuration])
        answers = self.run_program("build/bin/zorhost", "--headless", "--agent", agent, "--exit-with-agent").stdout
        self.assertIn('"serverInfo":{"name":"aibridge-mcp"', answers)
        self.assertIn("3.64 TB", answers)

    def test_Exam_ExaminesAnAgentOfTheCheckout(self):
        agent = shlex.quote(str(self.checkout / "exam/agents/reference"))
        output = self.run_program("scripts/exam", "--agent", agent, "--task", "already-named", "--report",
                                  self.checkout / "report").stdout
        self.assertRegex(output, r"already-named +recover +10 passed ")

    def test_Test_PassesItsFoldersInOnePiece(self):
        for name in ("cmake", "ctest"):
            self.add_program(name, f'printf "%s|" {name} "$PWD" "$@"; echo')
        self.assertIn(f"ctest|{self.checkout}|--preset|default|--parallel|4|", self.run_program("scripts/test", "-R", "Gate").stdout)

    def test_LinkCommandOfTheLibrary_KeepsEachPathInOnePiece(self):
        build = self.checkout / "new build"
        for command in (["cmake", "-G", "Ninja", "-S", self.checkout, "-B", build],
                        ["ninja", "-C", build, "-t", "commands", "-s", "bin/AIBridge.so"]):
            done = subprocess.run(command, capture_output=True, text=True, timeout=250, check=False)
            self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(str(build / "platform/libaibridge_platform.a"), shlex.split(done.stdout.splitlines()[-1]))


if __name__ == "__main__":
    unittest.main()
