"""A sandbox host of its own for each attempt: start, transcript, end."""

import datetime
import json
import os
import re
import subprocess
import threading
import time

from . import children

ADDRESS = re.compile(r"agent service on .*:(\d+)")
# The host chooses its port before it binds it. Hosts that start at the same time could choose the same one.
STARTING = threading.Lock()
NOT_LISTENING = 1
TRIES = 10
START_LIMIT = 60
# Longer than the host's own limit for a client that keeps calling tools.
END_LIMIT = 12
POLL = 0.02


class HostError(Exception):
    """The host did not start."""


class Host:
    def __init__(self, bin_dir, folder, options):
        self.bin_dir_ = bin_dir
        self.folder_ = folder
        self.options_ = options
        self.process_ = None
        self.port = 0

    def start(self):
        with STARTING:
            for _ in range(TRIES):
                if self.start_once_():
                    return
        raise HostError("the host found no free port")

    def start_once_(self):
        log = self.folder_ / "host.log"
        command = [str(self.bin_dir_ / "zorhost"), "--headless", "--transcript", "transcript.jsonl", "--save", "after.json",
                   *self.options_]
        # Drive letters of disk images are kept in the state folder.
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_STATE_HOME=str(self.folder_ / "state"))
        with open(log, "wb") as output:
            self.process_ = children.start(command, cwd=self.folder_, env=environment, stdin=subprocess.DEVNULL,
                                           stdout=output, stderr=subprocess.STDOUT)
        deadline = time.monotonic() + START_LIMIT
        while time.monotonic() < deadline:
            text = log.read_text(encoding="utf-8", errors="replace")
            if found := ADDRESS.search(text):
                self.port = int(found[1])
                return True
            if self.process_.poll() is not None:
                if self.process_.returncode == NOT_LISTENING:
                    return False
                raise HostError(f"the host ended with {self.process_.returncode}: {text.strip()}")
            time.sleep(POLL)
        self.stop()
        raise HostError(f"the host did not start within {START_LIMIT} s")

    def is_running(self):
        return self.process_.poll() is None

    def call(self, line):
        """A call that the user makes, without the gate. Waits until its work has ended."""
        subprocess.run([str(self.bin_dir_ / "zorcall"), "--port", str(self.port), *line.split()],
                       stdout=subprocess.DEVNULL, check=True)

    def wait_until_idle(self, limit):
        """Waits until each order has ended. Returns False at the limit, in seconds, or if the host ends."""
        deadline = time.monotonic() + limit
        while self.is_running():
            kinds = [event["kind"] for event in self.transcript()]
            if kinds.count("order") <= kinds.count("taskEnd"):
                return True
            if time.monotonic() > deadline:
                return False
            time.sleep(0.1)
        return False

    def transcript(self):
        return read_transcript(self.folder_ / "transcript.jsonl")

    def stop(self):
        """Ends the host, which then writes the machine. Returns its exit code."""
        if self.is_running():
            children.terminate(self.process_)
        try:
            self.process_.wait(END_LIMIT)
        except subprocess.TimeoutExpired:
            self.process_.kill()
        children.forget(self.process_)
        return self.process_.wait()


def read_transcript(path):
    """The events with `line`, counted from 1, and `at`, in seconds since the epoch. An incomplete last line is skipped."""
    events = []
    if not path.exists():
        return events
    for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), start=1):
        try:
            event = json.loads(line)
        except json.JSONDecodeError:
            break
        time_text = event["time"].replace("Z", "+00:00")
        events.append({**event, "line": number, "at": datetime.datetime.fromisoformat(time_text).timestamp()})
    return events
