"""Shared by the agents of these tests: a host in a scratch folder, and calls through zorcall."""

import json
import os
import pathlib
import shutil
import subprocess
import time

# Other tests run at the same time and can bind the port after it was found free.
TRIES = 8
NOT_LISTENING = 1
LIMIT = 60


def run_host(bin_dir, folder, agent, *options):
    """Runs zorhost with that agent until the agent has ended; gives its exit code and output."""
    environment = dict(os.environ, PATH=f"{bin_dir}:{os.environ['PATH']}", QT_QPA_PLATFORM="offscreen")
    for _ in range(TRIES):
        done = subprocess.run([f"{bin_dir}/zorhost", "--headless", "--agent", agent, "--exit-with-agent", *options],
                              cwd=folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, check=False)
        if done.returncode != NOT_LISTENING or "could not listen" not in done.stdout:
            break
    return done.returncode, done.stdout


def zorcall(*arguments):
    """One call without the gate; gives the parsed answer."""
    done = subprocess.run(["zorcall", *arguments], stdout=subprocess.PIPE, text=True, check=False)
    if done.returncode not in (0, 1):
        raise SystemExit(f"zorcall {' '.join(arguments)} ended with {done.returncode}")
    return json.loads(done.stdout)


def task_queued():
    """The answer of a tool whose order was accepted, from the build's description of the interface."""
    build = pathlib.Path(shutil.which("zorcall")).parent.parent
    description = json.loads((build / "gen-json" / "ZORNativePlugin.json").read_text(encoding="utf-8"))
    return next(constant["value"] for constant in description["constants"] if constant["name"] == "TASK_QUEUED")


def act(*arguments):
    """Calls a tool, whose order must be accepted."""
    answer = zorcall(*arguments)
    if answer != task_queued():
        raise SystemExit(f"{' '.join(arguments)}: {answer}")


def until(question, condition):
    """Polls the inventory until the question is answered with yes: an accepted order is not yet done."""
    deadline = time.monotonic() + LIMIT
    while time.monotonic() < deadline:
        answer = question()
        if answer:
            return answer
        time.sleep(0.02)
    raise SystemExit("timeout: " + condition)


def partitions(disk):
    return zorcall("ListPartitionsOnDisk", f"diskIndex={disk}")


def drive(letter):
    """The partition of that letter in the latest inventory, or None."""
    found = [p for p in zorcall("GetAllPartitionInfo") if p["driveLetter"][:1] == letter and not p["isUnallocated"]]
    return found[0] if found else None
