"""Runs the walk over all tools in a host of its own and compares tool and answer with the expected table.

usage: walk.py BIN_DIR AGENT EXPECTED INTERFACE_JSON
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

# The port is free when it is chosen and may be taken when it is bound, as other tests run beside this one.
TRIES = 8
NOT_LISTENING = 1


def walk(bin_dir, agent, scratch):
    environment = dict(os.environ, PATH=f"{bin_dir}:{os.environ['PATH']}", QT_QPA_PLATFORM="offscreen",
                       ZORHOST_LOG=f"{scratch}/log", ZORHOST_TABLE=f"{scratch}/table")
    with open(f"{scratch}/log", "w", encoding="utf-8") as log:
        return subprocess.run([f"{bin_dir}/zorhost", "--machine", "desktop", "--headless", "--agent", agent,
                               "--exit-with-agent"], env=environment, stdout=log, check=False).returncode


def answers(table):
    """Tool and answer of each row; rows that only go on with what the host was asked have neither."""
    rows = [line for line in table.splitlines() if line[:1].strip() and not line.endswith("tools called")]
    # Whether the gate allows a call depends on the time since the start, so its answer is only known by its shape.
    return [(row[:42].strip(), "a TaskInfo" if '{"allow"' in row else row[43:85].strip()) for row in rows]


def main():
    bin_dir, agent, expected, interface = sys.argv[1:]
    with tempfile.TemporaryDirectory() as scratch:
        for _ in range(TRIES):
            code = walk(bin_dir, agent, scratch)
            if code != NOT_LISTENING:
                break
        if code != 0:
            sys.exit(f"zorhost ended with {code}:\n" + pathlib.Path(scratch, "log").read_text(encoding="utf-8"))
        table = pathlib.Path(scratch, "table").read_text(encoding="utf-8")
    print(table)
    got = answers(table)
    methods = {f["name"] for f in json.loads(pathlib.Path(interface).read_text())["services"][0]["functions"]}
    called = {tool for tool, _ in got}
    if called != methods or len(got) != len(methods):
        sys.exit(f"not called: {methods - called}, called but unknown: {called - methods}, rows: {len(got)}")
    wanted = answers(pathlib.Path(expected).read_text(encoding="utf-8"))
    different = [f"{w} became {g}" for w, g in zip(wanted, got) if w != g]
    if different or len(wanted) != len(got):
        sys.exit("answers differ:\n" + "\n".join(different))


main()
