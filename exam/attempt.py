"""One attempt of a task: a host, the agent, and the record of what happened."""

import dataclasses
import json
import os
import shutil
import threading
import time

from . import evidence
from .agent import Agent
from .host import Host, HostError
from .mcp_examiner import McpExaminer, configuration
from .stage import Images, Simulated
from .relay import CallRelay
from .user import User

# Seconds for work that goes on after the agent has ended, and for a call of the user.
IDLE_LIMIT = 30
CALL_LIMIT = 60


@dataclasses.dataclass
class Setup:
    """Options of a run. `root` is the repository, `bin_dir` the folder of the programs."""

    command: str
    root: object
    bin_dir: object
    machines: object
    interface: object
    keeps_input_open: bool = True


class Attempt:
    def __init__(self, task, setup, folder):
        self.task_ = task
        self.setup_ = setup
        self.folder_ = folder
        self.user_ = User(task)
        self.user_calls_ = []
        self.pending_ = list(task.meanwhile)
        self.meanwhile_lock_ = threading.Lock()

    def run(self):
        """Returns the evidence, which it also writes to the folder. Raises HostError if the host does not start."""
        shutil.rmtree(self.folder_, ignore_errors=True)
        self.folder_.mkdir(parents=True)
        stage = Images(self.task_, self.folder_) if self.task_.images else \
            Simulated(self.task_, self.folder_, self.setup_.machines)
        host = Host(self.setup_.bin_dir, self.folder_, stage.options)
        host.start()
        try:
            found = self.run_on_(host, stage)
        finally:
            host.stop()
        found.before, found.after = stage.before, stage.ended()
        evidence.write(found, self.folder_)
        return found

    def run_on_(self, host, stage):
        for line in self.task_.before:
            self.call_as_user_(host, line)
            if self.task_.images:
                host.wait_until_idle(CALL_LIMIT)
        stage.started(self.setup_.bin_dir / "zorcall", host.port)
        relay = CallRelay(host.port, self.setup_.interface.arguments, lambda method: self.meanwhile_(host, method))
        examiner = McpExaminer(self.user_, self.setup_.interface)
        try:
            agent = Agent(self.setup_.command, self.folder_, self.environment_(relay, examiner), self.user_)
            agent.converse(self.task_.request, self.task_.limit, self.setup_.keeps_input_open)
        finally:
            examiner.close()
        survived = host.is_running()
        idle = host.wait_until_idle(IDLE_LIMIT)
        relay.close()
        if relay.errors:
            raise HostError(f"the user's call failed before {relay.errors[0]}")
        return self.evidence_(agent, relay.calls + examiner.calls, survived and host.stop() == 0, idle)

    def environment_(self, relay, examiner):
        config = self.folder_ / "mcp.json"
        config.write_text(json.dumps(configuration(self.setup_.root, examiner.port, relay.ports["mcp"]), indent=2),
                          encoding="utf-8")
        return dict(os.environ, PATH=f"{self.setup_.bin_dir}:{os.environ['PATH']}", EXAM_MCP_CONFIG=str(config),
                    EXAM_DISKS="images" if self.task_.images else "simulated",
                    AGENT_NATIVE_PORT=str(relay.ports["agent"]))

    def meanwhile_(self, host, method):
        """Called before the agent's call reaches the host. The lock keeps calls of other connections from overtaking."""
        with self.meanwhile_lock_:
            for entry in [entry for entry in self.pending_ if entry.before == method]:
                self.pending_.remove(entry)
                self.call_as_user_(host, entry.call)
                host.wait_until_idle(CALL_LIMIT)
                self.user_calls_[-1][1] = time.time()

    def call_as_user_(self, host, line):
        self.user_calls_.append([time.time() - 0.002, 0])
        host.call(line)
        self.user_calls_[-1][1] = time.time()

    def evidence_(self, agent, calls, survived, idle):
        return evidence.Evidence(
            started=agent.started, ended=agent.ended, output=agent.output.decode("utf-8", "replace"),
            exit_code=agent.exit_code, hung=agent.hung, host_survived=survived, became_idle=idle,
            calls=sorted(calls, key=lambda call: call.at), questions=self.user_.questions, user_calls=self.user_calls_,
            transcript=evidence.read_transcript(self.folder_ / "transcript.jsonl"))
