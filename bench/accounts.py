"""Measures what the check of a client's account costs, and what a client of another account costs the served ones.

usage: python3 bench/accounts.py BUILD    BUILD: the folder of a build with tests, for example build
Only root can start a client as another user.
"""

import os
import socket
import statistics
import struct
import subprocess
import sys
import tempfile
import time

if len(sys.argv) != 2 or sys.argv[1].startswith("-"):
    print(__doc__.strip())
    sys.exit(0 if sys.argv[1:] in (["-h"], ["--help"]) else 2)
BUILD = os.path.abspath(sys.argv[1])
OTHER_USER = "65534"
NAME = b"ListAllDisks"
CALL = struct.pack(">HBBi", 0x8001, 0, 1, len(NAME)) + NAME + struct.pack(">i", 7) + b"\0"
# Connects, calls and is rejected, as often as possible, until its standard input ends.
STORM = r"""
import select, socket, sys
port, call, count = int(sys.argv[1]), bytes.fromhex(sys.argv[2]), 0
while not select.select([sys.stdin], [], [], 0)[0]:
    with socket.create_connection(("127.0.0.1", port)) as client:
        try:
            client.sendall(call)
            client.recv(1)
        except OSError:
            pass
    count += 1
print(count)
"""


class Service:
    def __init__(self, folder, same_user_only):
        os.makedirs(folder)
        program = os.path.join(folder, "service_host")
        os.link(os.path.join(BUILD, "tests/service_host/service_host"), program)
        with open(os.path.join(folder, "config.ini"), "w", encoding="ascii") as file:
            file.write(f"[main]\naiAddress=127.0.0.1\naiSameUserOnly={same_user_only}\n")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment)
        self.port = int(self.process.stdout.readline().split(b'"native":"')[1].split(b'"')[0])

    def end(self):
        self.process.stdin.close()
        self.process.wait(30)


def call(client):
    client.sendall(CALL)
    received = client.recv(65536)
    while received[-1:] != b"\0":
        received += client.recv(65536)


def first_answers(service, count):
    """The times from connect to the complete answer, in microseconds."""
    times = []
    for _ in range(count):
        begun = time.perf_counter()
        with socket.create_connection(("127.0.0.1", service.port)) as client:
            call(client)
            times.append((time.perf_counter() - begun) * 1e6)
    return times


def reads(client, count):
    times = []
    for _ in range(count):
        begun = time.perf_counter()
        call(client)
        times.append((time.perf_counter() - begun) * 1e6)
    return times


def storm(service):
    return subprocess.Popen(["setpriv", "--reuid", OTHER_USER, "--clear-groups", sys.executable, "-c", STORM,
                             str(service.port), CALL.hex()], stdin=subprocess.PIPE, stdout=subprocess.PIPE, cwd="/")


def main():
    if os.geteuid() != 0:
        sys.exit("bench/accounts.py: requires root")
    if not os.path.exists(os.path.join(BUILD, "tests/service_host/service_host")):
        sys.exit(f"bench/accounts.py: {BUILD} has no service_host. Run scripts/test first.")
    with tempfile.TemporaryDirectory(dir=BUILD) as folder:
        checked = Service(os.path.join(folder, "on"), "true")
        unchecked = Service(os.path.join(folder, "off"), "false")
        on, off = [], []
        for _ in range(21):
            on += first_answers(checked, 100)
            off += first_answers(unchecked, 100)
        print(f"first answer of a new connection, check on      {statistics.median(on):8.1f} us")
        print(f"first answer of a new connection, check off     {statistics.median(off):8.1f} us")

        quiet, loud, late, rejected = [], [], [], 0
        with socket.create_connection(("127.0.0.1", checked.port)) as client:
            for _ in range(11):
                quiet += reads(client, 2000)
                other = storm(checked)
                time.sleep(0.2)
                loud += reads(client, 2000)
                late += first_answers(checked, 100)
                rejected += int(other.communicate(b"\n")[0])
        print(f"read of a served client, alone                  {statistics.median(quiet):8.1f} us")
        print(f"with {rejected} clients of another account, one after another, rejected meanwhile:\n"
              f"read of a served client                         {statistics.median(loud):8.1f} us\n"
              f"first answer of a new connection                {statistics.median(late):8.1f} us")
        checked.end()
        unchecked.end()


main()
