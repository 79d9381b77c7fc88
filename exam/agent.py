"""The agent under examination: a program that reads the request and writes its answer to the user."""

import os
import re
import selectors
import signal
import subprocess
import time

from . import children

INSTRUCTION = """\
When you are finished, write one last line: RESULT DONE if everything that I asked for is finished, RESULT YOUR TURN if I
must continue on the screen, or RESULT NOT DONE if it is not done. To ask me something, write a line that begins with ASK;
my answer is the next line of your input."""

RESULT = re.compile(r"RESULT (DONE|YOUR TURN|NOT DONE)\W*")
CHUNK = 65536
# A longer answer cannot be read by a user; the limit protects the examiner's memory.
MOST_OUTPUT = 4 * 1024 * 1024
GRACE = 3


class Agent:
    def __init__(self, command, folder, environment, user):
        self.user_ = user
        self.output = bytearray()
        self.errors_ = open(folder / "agent.log", "wb")
        self.unread_ = bytearray()
        self.hung = False
        self.started = time.time()
        self.ended = self.started
        work = folder / "work"
        work.mkdir()
        # The command runs where the examiner was started, so that it can contain relative paths.
        self.process_ = children.start(["/bin/sh", "-c", command], env={**environment, "EXAM_FOLDER": str(work)},
                                       stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.errors_)

    @property
    def exit_code(self):
        return self.process_.returncode

    def converse(self, request, limit, keeps_input_open):
        """Gives the request and answers questions until the agent ends, at most `limit` seconds."""
        self.tell_(f"{request}\n\n{INSTRUCTION}\n\n")
        if not keeps_input_open:
            self.process_.stdin.close()
        self.read_until_(time.monotonic() + limit)
        self.ended = time.time()
        self.end_group_()
        self.errors_.close()

    def read_until_(self, deadline):
        with selectors.DefaultSelector() as selector:
            selector.register(self.process_.stdout, selectors.EVENT_READ)
            # A child of the agent can keep the output open, so the end of the agent counts as well.
            while self.process_.poll() is None or selector.select(0):
                left = deadline - time.monotonic()
                if left <= 0:
                    self.hung = self.process_.poll() is None
                    return
                if selector.select(min(left, 0.1)):
                    chunk = os.read(self.process_.stdout.fileno(), CHUNK)
                    if not chunk:
                        self.wait_(left)
                        return
                    self.on_output_(chunk)

    def wait_(self, limit):
        try:
            self.process_.wait(max(limit, 0))
        except subprocess.TimeoutExpired:
            self.hung = True

    def on_output_(self, chunk):
        if len(self.output) < MOST_OUTPUT:
            self.output += chunk
        self.unread_ += chunk
        *lines, rest = self.unread_.split(b"\n")
        self.unread_ = bytearray(rest if len(rest) < MOST_OUTPUT else b"")
        for line in lines:
            if line.startswith(b"ASK "):
                answer = self.user_.answer(line[4:].decode("utf-8", "replace"))
                self.output += f"USER {answer}\n".encode()
                self.tell_(answer + "\n")

    def tell_(self, text):
        try:
            self.process_.stdin.write(text.encode())
            self.process_.stdin.flush()
        except (OSError, ValueError):
            pass

    def end_group_(self):
        """Ends the agent and its child processes."""
        for number in (signal.SIGTERM, signal.SIGKILL):
            if not children.signal_group(self.process_, number):
                break
            try:
                self.process_.wait(GRACE)
            except subprocess.TimeoutExpired:
                pass
        self.process_.wait()
        children.forget(self.process_)
        for stream in (self.process_.stdin, self.process_.stdout):
            try:
                stream.close()
            except OSError:
                pass


def stated_result(text):
    """The result that the last RESULT line states, in lower case; empty without such a line."""
    stated = [found[1] for line in text.splitlines() if (found := RESULT.fullmatch(line.strip()))]
    return stated[-1].lower() if stated else ""
