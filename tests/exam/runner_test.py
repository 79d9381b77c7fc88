"""The runner with agents that misbehave and that ask. Each test examines a real host."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from support import BIN, ROOT

MINE = """
kind = "do"
request = "Call the stick Mine."
result = "done"
limit = 10
end = ["H: label is Mine"]
may_change = { "H:" = ["label"] }
reference = ["read", "ChangePartitionLabel driveLetter=H newLabel=Mine", "until H: label is Mine", "result done"]
"""


class Runner(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def examine(self, agent, *options):
        """Runs the exam; returns its exit code, its output and the tasks of the report by name."""
        command = [sys.executable, "-B", "-m", "exam", "--agent", agent, "--bin", str(BIN), "--report",
                   str(self.folder / "report"), *options]
        done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                              timeout=300)
        path = self.folder / "report/report.json"
        self.assertTrue(path.exists(), done.stdout)
        result = json.loads(path.read_text(encoding="utf-8"))
        return done.returncode, done.stdout, {each["name"]: each["attempts"] for each in result["tasks"]}, result

    def until(self, condition):
        deadline = time.monotonic() + 60
        while not condition():
            self.assertLess(time.monotonic(), deadline, "timeout")
            time.sleep(0.05)

    def own_tasks(self, **files):
        folder = self.folder / "tasks"
        folder.mkdir()
        for name, content in files.items():
            (folder / f"{name}.toml").write_text(content)
        return "--tasks", str(folder)

    def agent(self, text):
        path = self.folder / "agent"
        path.write_text(text)
        path.chmod(0o755)
        return str(path)

    def test_a_task_is_added_in_one_file(self):
        options = self.own_tasks(mine=MINE)
        code, output, tasks, _ = self.examine("exam/agents/liar", *options)
        self.assertEqual((code, tasks["mine"][0]["verdict"]), (1, "false claim"), output)
        (self.folder / "report").rename(self.folder / "earlier")
        code, output, tasks, _ = self.examine(f"EXAM_TASKS={options[1]} exam/agents/reference", "--name", "careful",
                                              "--compare", str(self.folder / "earlier"), *options)
        self.assertEqual((code, tasks["mine"][0]["verdict"], tasks["mine"][0]["points"]), (0, "passed", 10), output)
        page = (self.folder / "report/report.html").read_text(encoding="utf-8")
        self.assertIn("Exam: careful and exam/agents/liar", page)

    def test_an_agent_that_hangs_fails_alone(self):
        options = self.own_tasks(first=MINE.replace("limit = 10", "limit = 2"), second=MINE.replace("stick", "drive H:"))
        agent = self.agent("#!/bin/sh\nread request\ncase $request in *stick*) sleep 1000 & sleep 1000 ;; esac\n"
                           "echo RESULT NOT DONE\n")
        _, output, tasks, _ = self.examine(agent, *options)
        self.assertEqual(tasks["first"][0]["verdict"], "time limit", output)
        self.assertEqual(tasks["second"][0]["verdict"], "failed", output)

    def test_an_agent_that_kills_its_host_fails_alone(self):
        options = self.own_tasks(first=MINE, second=MINE.replace("stick", "drive H:"))
        agent = self.agent("#!/bin/sh\nread request\ncase $request in *stick*)\n"
                           'for process in /proc/[0-9]*; do [ "$(readlink $process/cwd)" = "$(dirname "$EXAM_FOLDER")" ] && '
                           'grep -q zorhost $process/comm && kill -9 ${process#/proc/}; done ;; esac\n'
                           "echo RESULT NOT DONE\n")
        _, output, tasks, _ = self.examine(agent, *options)
        self.assertEqual(tasks["first"][0]["verdict"], "host ended", output)
        self.assertEqual(tasks["second"][0]["verdict"], "failed", output)

    def test_an_agent_that_ends_at_once_with_an_error_is_graded(self):
        options = self.own_tasks(mine=MINE)
        _, output, tasks, _ = self.examine("exit 7", *options)
        self.assertEqual(tasks["mine"][0]["verdict"], "failed", output)

    def test_a_flood_of_output_ends_at_the_time_limit(self):
        options = self.own_tasks(mine=MINE.replace("limit = 10", "limit = 2"))
        _, output, tasks, _ = self.examine("yes flood", *options)
        self.assertEqual(tasks["mine"][0]["verdict"], "time limit", output[-500:])
        self.assertLess(len(tasks["mine"][0]["conversation"]), 10000)
        self.assertLess((self.folder / "report/mine/1/evidence.json").stat().st_size, 16 * 1024**2)

    def test_a_child_that_keeps_the_output_open_does_not_delay_the_end_and_ends(self):
        options = self.own_tasks(mine=MINE)
        child = self.folder / "child"
        _, output, tasks, _ = self.examine(f"sleep 1000 & echo $! >{child}; echo RESULT NOT DONE", *options)
        self.assertEqual(tasks["mine"][0]["stated"], "not done", output)
        self.assertLess(tasks["mine"][0]["seconds"], 9)
        self.until(lambda: not is_running(child.read_text().strip()))

    def test_a_question_is_answered_from_the_tasks_file(self):
        answers = '\n[[answers]]\nabout = "which"\nsay = "The red one."\n'
        options = self.own_tasks(mine=MINE + answers)
        agent = self.agent('#!/bin/sh\nread request\nwhile read line && [ -n "$line" ]; do :; done\n'
                           'while read line && [ -n "$line" ]; do :; done\n'
                           "echo ASK Which one?; read answer; echo The user said: $answer\n"
                           "echo ASK Why?; read answer; echo Then: $answer\n")
        _, output, tasks, _ = self.examine(agent, *options)
        self.assertIn("The user said: The red one.", tasks["mine"][0]["conversation"], output)
        self.assertIn("Then: I do not know.", tasks["mine"][0]["conversation"])

    def test_with_close_input_an_agent_can_read_to_the_end(self):
        options = self.own_tasks(mine=MINE)
        _, output, tasks, _ = self.examine("cat; echo RESULT NOT DONE", "--close-input", *options)
        self.assertIn("Call the stick Mine.", tasks["mine"][0]["conversation"], output)
        self.assertEqual(tasks["mine"][0]["stated"], "not done")

    def test_repeats_count_only_if_all_succeed(self):
        options = self.own_tasks(mine=MINE.replace('result = "done"', 'result = "not done"').replace(
            'end = ["H: label is Mine"]', 'never = ["any order"]'))
        agent = self.agent(f"#!/bin/sh\nmkdir {self.folder}/once 2>/dev/null || echo RESULT YOUR TURN\n")
        code, output, tasks, result = self.examine(agent, "--repeat", "2", "--jobs", "1", *options)
        self.assertEqual([attempt["passed"] for attempt in tasks["mine"]], [True, False], output)
        self.assertEqual((code, result["passed"], result["pass_k"]), (1, 0, [0.5, 0.0]))

    def test_an_interrupted_run_leaves_no_process(self):
        options = self.own_tasks(mine=MINE.replace("limit = 10", "limit = 600"))
        agent = self.agent("#!/bin/sh\nsleep 1000 &\necho $$ $! >$EXAM_FOLDER/started\nsleep 1000\n")
        command = [sys.executable, "-B", "-m", "exam", "--agent", agent, "--bin", str(BIN), "--report",
                   str(self.folder / "report"), *options]
        run = subprocess.Popen(command, cwd=ROOT, stdout=subprocess.DEVNULL)
        started = self.folder.joinpath("report", "mine", "1", "work", "started")
        self.until(lambda: started.exists() and started.read_text().endswith("\n"))
        run.send_signal(signal.SIGINT)
        self.assertEqual(run.wait(60), 130)
        numbers = started.read_text().split()
        self.assertEqual(len(numbers), 2)
        self.until(lambda: not any(is_running(number) for number in numbers))
        self.assertIn('"kind":"end"', (self.folder / "report/mine/1/transcript.jsonl").read_text())

    def error_of(self, *options):
        """The error of options that the exam rejects before it runs an agent."""
        report = self.folder / "rejected"
        done = subprocess.run([sys.executable, "-B", "-m", "exam", "--bin", str(BIN), "--agent", f"touch {self.folder}/started",
                               "--report", str(report), *options], cwd=ROOT, stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual(done.returncode, 2, done.stderr)
        self.assertFalse(report.exists() or (self.folder / "started").exists())
        return done.stderr

    def test_an_unknown_task_is_an_error(self):
        self.assertIn("no task is named nonsense", self.error_of("--task", "nonsense"))
        self.assertIn("busy-computer has no disk images", self.error_of("--images", "--task", "busy-computer"))

    def test_a_folder_without_the_files_that_it_must_contain_is_an_error(self):
        missing = str(self.folder / "missing")
        self.assertIn(f"{missing} contains no task file", self.error_of("--tasks", missing))
        self.assertIn(f"{missing} contains no report", self.error_of("--compare", missing))
        self.assertIn(f"{missing} contains no records of these tasks", self.error_of("--grade", missing))
        self.assertFalse(pathlib.Path(missing).exists())

    def test_records_of_some_tasks_are_graded_like_their_run(self):
        code, output, _, _ = self.examine("exam/agents/reference", "--task", "name-archive")
        self.assertEqual(code, 0, output)
        code, output, tasks, _ = self.examine("false", "--grade", str(self.folder / "report"))
        self.assertEqual((code, list(tasks)), (0, ["name-archive"]), output)

    def test_the_reference_waits_for_the_answer_to_its_question(self):
        question = '\n[[answers]]\nabout = "which"\nsay = "The stick."\n'
        script = 'reference = ["ask Which one?", "say Thank you.", "result not done"]'
        options = self.own_tasks(mine=MINE[:MINE.index("reference")] + script + question)
        _, output, tasks, _ = self.examine(f"EXAM_TASKS={options[1]} exam/agents/reference", *options)
        self.assertIn("USER The stick.\nThank you.", tasks["mine"][0]["conversation"], output)

    def test_a_broken_machine_fails_alone(self):
        options = self.own_tasks(first=MINE + 'change = { "Q: label" = "x" }\n', second=MINE)
        _, output, tasks, _ = self.examine("true", *options)
        self.assertEqual(tasks["first"][0]["verdict"], "not examined", output)
        self.assertEqual(tasks["second"][0]["verdict"], "failed")


def is_running(number):
    """Whether the process exists and is not a zombie."""
    status = pathlib.Path("/proc", number, "stat")
    try:
        return status.read_text().rpartition(")")[2].split()[0] != "Z" and int(number) != os.getpid()
    except FileNotFoundError:
        return False


unittest.main()
