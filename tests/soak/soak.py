"""Runs a host under three agents, kills clients in mid-message, opens and drops connections, and monitors the host's
memory, threads and descriptors. Exit code 1 on growth, a wrong answer or a stalled call. With --fault the host injects
a fault, and the exit code is 0 if the run detects it."""
import argparse
import contextlib
import os
import queue
import random
import select
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time

AGENTS = 3
# Allowed growth from the middle third of a run to the last, in bytes: noise of a busy machine. Thousands of calls with a
# leak exceed it.
HELD_GROWTH = 1 << 20
RESIDENT_GROWTH = 16 << 20
# Allowed above the start at any moment: three connections, the scan, and on a busy machine finished ones that the system
# still counts. A leak exceeds this, or remains after all clients have disconnected.
THREADS_ABOVE = 40
DESCRIPTORS_ABOVE = 40
# First word of the finding for each fault.
FOUND = {"leak": "growth", "stall": "stalled", "wrong": "wrong", "descriptor": "growth", "thread": "growth"}


class Finding(Exception):
    pass


class Host:
    """The host process, its output, and its figures from /proc."""

    def __init__(self, folder, seed, fault):
        command = [f"{folder}/soak_host", str(seed)] + ([fault] if fault else [])
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.lines = queue.Queue()
        self.counts = {}
        self.left = {}
        self.wrong_answer = None
        threading.Thread(target=self._read, daemon=True).start()
        try:
            self.port = int(self.lines.get(timeout=60).split()[1])
        except (queue.Empty, IndexError, ValueError):
            raise Finding("the host did not start")

    def _read(self):
        for line in self.process.stdout:
            words = line.split()
            if words[0] == "holds":
                self.counts = dict(zip(words[::2], map(int, words[1::2])))
            elif words[0] == "left":
                self.left = dict(zip(words[1::2], map(int, words[2::2])))
            elif words[0] == "wrong:":
                self.wrong_answer = line.strip()
            else:
                self.lines.put(line)

    def sample(self):
        if self.process.poll() is not None:
            raise Finding(f"the host ended with exit code {self.process.returncode}")
        status = {}
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as file:
            for line in file:
                key, _, value = line.partition(":")
                status[key] = value.split()
        return {
            "held": self.counts.get("holds", 0),
            "resident": int(status["VmRSS"][0]) * 1024,
            "threads": int(status["Threads"][0]),
            "descriptors": len(os.listdir(f"/proc/{self.process.pid}/fd")),
        }

    def end(self):
        self.process.stdin.close()
        try:
            code = self.process.wait(timeout=60)
        except subprocess.TimeoutExpired:
            raise Finding("the host did not shut down")
        if code != 0:
            raise Finding(f"the host ended with exit code {code}")


def agents(folder, port, options, scratch, environment):
    return [
        subprocess.Popen(
            [f"{folder}/soak_agent", str(port), str(options.seed * 10 + i), str(options.seconds), str(options.limit),
             f"{scratch}/lock"], stdout=subprocess.PIPE, text=True, env=environment)
        for i in range(AGENTS)
    ]


class Disturbance(threading.Thread):
    """Clients that are killed in mid-message, and connections that are opened and dropped."""

    def __init__(self, folder, port, seed, environment):
        super().__init__(daemon=True)
        self.folder, self.port, self.environment = folder, port, environment
        self.random = random.Random(seed)
        self.stop = threading.Event()
        self.killed = self.dropped = 0

    def run(self):
        while not self.stop.wait(self.random.uniform(0.02, 0.2)):
            if self.random.random() < 0.3:
                self.kill_one()
            else:
                self.drop_one()

    def end(self):
        self.stop.set()
        if self.is_alive():
            self.join()

    def kill_one(self):
        client = subprocess.Popen([f"{self.folder}/soak_agent", str(self.port), str(self.random.randrange(1000)), "half"],
                                  stdout=subprocess.PIPE, env=self.environment)
        # Waits until the client has sent its partial message, or is blocked.
        select.select([client.stdout], [], [], 5)
        time.sleep(self.random.uniform(0, 0.05))
        client.kill()
        client.wait()
        client.stdout.close()
        self.killed += 1

    def drop_one(self):
        with contextlib.suppress(OSError), socket.create_connection(("localhost", self.port), timeout=30) as connection:
            if self.random.random() < 0.5:
                connection.sendall(bytes(self.random.randrange(256) for _ in range(self.random.randrange(200))))
            if self.random.random() < 0.5:
                # Closing then resets the connection.
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, b"\1\0\0\0\0\0\0\0")
        self.dropped += 1


def growth(samples, key):
    third = len(samples) // 3
    middle = statistics.median(sample[key] for sample in samples[third:2 * third])
    return statistics.median(sample[key] for sample in samples[2 * third:]) - middle


def judge(samples, base, memory):
    for key, above in (("threads", THREADS_ABOVE), ("descriptors", DESCRIPTORS_ABOVE)):
        most = max(sample[key] for sample in samples)
        if most > base[key] + above:
            raise Finding(f"growth: {most} {key}, {base[key]} at the start")
    if not memory:
        return
    for key, limit in (("held", HELD_GROWTH), ("resident", RESIDENT_GROWTH)):
        if growth(samples, key) > limit:
            raise Finding(f"growth: {growth(samples, key) / 1024:.0f} KiB of {key} memory from the middle third of the "
                          f"run to its last")


def watch(host, clients):
    samples = []
    while True:
        running = any(client.poll() is None for client in clients)
        samples.append(host.sample())
        if host.wrong_answer:
            raise Finding(host.wrong_answer)
        for client in clients:
            if client.poll() not in (None, 0):
                raise Finding(client.stdout.readline().strip() or f"an agent ended with exit code {client.returncode}")
        if not running:
            return samples
        time.sleep(0.25)


def wait_until_idle(host, base):
    end = time.monotonic() + 30
    while True:
        sample = host.sample()
        if sample["descriptors"] <= base["descriptors"] and sample["threads"] <= base["threads"] + 1:
            return
        if time.monotonic() > end:
            raise Finding(f"growth: {sample['descriptors']} descriptors and {sample['threads']} threads after all clients "
                          f"have disconnected, {base['descriptors']} and {base['threads']} before")
        time.sleep(0.1)


def run(options):
    folder = f"{options.build}/tests/soak"
    environment = dict(os.environ, AIBRIDGE_BUILD_DIR=options.build)
    clients = []
    disturbance = None
    with tempfile.TemporaryDirectory() as scratch:
        host = Host(folder, options.seed, options.fault)
        try:
            while not host.counts:
                time.sleep(0.05)
            base = host.sample()
            disturbance = Disturbance(folder, host.port, options.seed, environment)
            clients = agents(folder, host.port, options, scratch, environment)
            disturbance.start()
            samples = watch(host, clients)
            disturbance.end()
            judge(samples, base, options.memory)
            wait_until_idle(host, base)
            host.end()
            if any(count > 0 for count in host.left.values()):
                raise Finding(f"growth: remaining at the end: {host.left}")
            report(host, clients, disturbance, samples, base)
        finally:
            if disturbance:
                disturbance.end()
            for process in clients + [host.process]:
                process.kill()
                process.wait()


def report(host, clients, disturbance, samples, base):
    calls = connections = 0
    for client in clients:
        words = client.stdout.readline().split()
        calls += int(words[1])
        connections += int(words[3])
    counts = host.counts
    print(f"calls {calls}, connections {connections}, killed in mid-message {disturbance.killed}, opened and dropped "
          f"{disturbance.dropped}")
    print(f"host: calls {counts['calls']}, refreshes {counts['refreshes']}, scans {counts['scans']}, recommendations "
          f"answered {counts['answers']}")
    for key, unit in (("held", 1024), ("resident", 1024), ("threads", 1), ("descriptors", 1)):
        print(f"{key:12} start {base[key] // unit:7}  most {max(s[key] for s in samples) // unit:7}  "
              f"middle to last third {growth(samples, key) / unit:+.0f}{' KiB' if unit > 1 else ''}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("seconds", type=int)
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--build", required=True)
    parser.add_argument("--fault", choices=FOUND)
    parser.add_argument("--limit", type=int, default=30, help="seconds that a call may take")
    parser.add_argument("--no-memory", dest="memory", action="store_false")
    options = parser.parse_args()
    if options.seed is None:
        options.seed = random.randrange(1 << 20)
    if options.fault == "stall":
        options.limit = 4
    print(f"seed {options.seed}", flush=True)
    try:
        run(options)
    except Finding as finding:
        print(finding)
        return 0 if options.fault and str(finding).startswith(FOUND[options.fault]) else 1
    print("no growth, no wrong answer, no stalled call")
    return 1 if options.fault else 0


sys.exit(main())
