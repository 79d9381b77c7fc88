"""Lets an agent change the desktop machine and compares the saved machine with the expected one.

usage: desktop.py BIN_DIR EXPECTED [--write]     --write makes the saved machine the expected one
"""

import json
import pathlib
import shutil
import sys
import tempfile

from sandbox import run_host


def different(got, wanted, place="machine"):
    """Where two JSON values differ, in words."""
    if isinstance(got, dict) and isinstance(wanted, dict):
        return [line for key in sorted(got.keys() | wanted.keys())
                for line in different(got.get(key, "nothing"), wanted.get(key, "nothing"), f"{place}.{key}")]
    if isinstance(got, list) and isinstance(wanted, list) and len(got) == len(wanted):
        return [line for i, (g, w) in enumerate(zip(got, wanted)) for line in different(g, w, f"{place}[{i}]")]
    return [] if got == wanted else [f"{place}: {json.dumps(wanted)} became {json.dumps(got)}"]


def main():
    bin_dir, expected = sys.argv[1:3]
    here = pathlib.Path(__file__).parent
    with tempfile.TemporaryDirectory() as scratch:
        agent = f"{sys.executable} {here / 'desktop_agent.py'}"
        code, output = run_host(bin_dir, scratch, agent, "--machine", "desktop", "--speed", "instant",
                                "--start-guides", "--save", "after.json")
        if code != 0:
            sys.exit(f"ended with {code}:\n{output}")
        saved = pathlib.Path(scratch, "after.json")
        if "--write" in sys.argv:
            shutil.copy(saved, expected)
        lines = different(json.loads(saved.read_text()), json.loads(pathlib.Path(expected).read_text()))
    if lines:
        sys.exit("the machine differs:\n" + "\n".join(lines))
    print("the machine is the expected one")


main()
