"""Runs the walk over all tools in its own host and compares the answers with the expected ones.

usage: walk.py BIN_DIR AGENT EXPECTED INTERFACE_JSON
       walk.py --check TABLE EXPECTED INTERFACE_JSON     compares the table of an earlier walk

EXPECTED contains the answers other than TASK_QUEUED.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

# Other tests run at the same time and can bind the port after it was found free.
TRIES = 8
NOT_LISTENING = 1


def walk(bin_dir, agent, scratch):
    environment = dict(os.environ, PATH=f"{bin_dir}:{os.environ['PATH']}", QT_QPA_PLATFORM="offscreen",
                       ZORHOST_LOG=f"{scratch}/log", ZORHOST_TABLE=f"{scratch}/table")
    with open(f"{scratch}/log", "w", encoding="utf-8") as log:
        return subprocess.run([f"{bin_dir}/zorhost", "--machine", "desktop", "--headless", "--agent", agent,
                               "--exit-with-agent"], env=environment, stdout=log, check=False).returncode


def answers(table):
    """Tool and answer of each row. A row with a further line of the host's log has neither."""
    rows = [line for line in table.splitlines() if line[:1].strip() and not line.endswith("tools called")]
    # The gate's answer depends on the time since the start, so only its type is compared.
    return [(row[:42].strip(), "a TaskInfo" if '{"allow"' in row else row[43:85].strip()) for row in rows]


def table_of_a_walk(bin_dir, agent):
    with tempfile.TemporaryDirectory() as scratch:
        for _ in range(TRIES):
            code = walk(bin_dir, agent, scratch)
            if code != NOT_LISTENING:
                break
        if code != 0:
            sys.exit(f"zorhost ended with {code}:\n" + pathlib.Path(scratch, "log").read_text(encoding="utf-8"))
        return pathlib.Path(scratch, "table").read_text(encoding="utf-8")


def check(table, expected, interface):
    description = json.loads(pathlib.Path(interface).read_text(encoding="utf-8"))
    methods = [function["name"] for function in description["services"][0]["functions"]]
    queued = next(c["value"] for c in description["constants"] if c["name"] == "TASK_QUEUED")
    got = answers(table)
    if sorted(tool for tool, _ in got) != sorted(methods):
        called = {tool for tool, _ in got}
        sys.exit(f"not called: {set(methods) - called}, unknown: {called - set(methods)}, rows: {len(got)}")
    others = dict(answers(pathlib.Path(expected).read_text(encoding="utf-8")))
    if not set(others) <= set(methods):
        sys.exit(f"expected answers of unknown tools: {set(others) - set(methods)}")
    different = [f"{tool} answered {answer}, expected {others.get(tool, queued)}"
                 for tool, answer in got if answer != others.get(tool, queued)]
    if different:
        sys.exit("answers differ:\n" + "\n".join(different))


def main():
    if sys.argv[1] == "--check":
        table = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8")
    else:
        table = table_of_a_walk(*sys.argv[1:3])
    print(table)
    check(table, *sys.argv[3:])


main()
