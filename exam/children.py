"""The child processes of a run, so that an interrupted run leaves none."""

import os
import signal
import subprocess
import threading
import time

# Longer than a host needs to detach its disk images.
LIMIT = 12

lock = threading.Lock()
running = set()
terminated = set()


def start(command, **options):
    """Starts a process in its own group, which no interrupt of the terminal reaches."""
    with lock:
        process = subprocess.Popen(command, start_new_session=True, **options)
        running.add(process)
    return process


def forget(process):
    with lock:
        running.discard(process)
        terminated.discard(process)


def terminate(process):
    """Sends SIGTERM to the process and its children, once: a second one ends a host without its shutdown."""
    with lock:
        first = process not in terminated
        terminated.add(process)
    if first:
        signal_group(process, signal.SIGTERM)


def end_all():
    """Ends each process with its children: SIGTERM, then SIGKILL at the limit."""
    with lock:
        left = list(running)
    for process in left:
        terminate(process)
    deadline = time.monotonic() + LIMIT
    while any(process.poll() is None for process in left) and time.monotonic() < deadline:
        time.sleep(0.05)
    for process in left:
        signal_group(process, signal.SIGKILL)


def signal_group(process, number):
    """Returns False if the group has no process left."""
    try:
        os.killpg(process.pid, number)
        return True
    except ProcessLookupError:
        return False
