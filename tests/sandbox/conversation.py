"""The sample agent on a machine with many drives: the drive that it wants to format really does not exist.

usage: conversation.py BIN_DIR AGENT
"""

import shlex
import sys
import tempfile

import sandbox


def main():
    bin_dir, agent = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        code, output = sandbox.run_host(bin_dir, folder, shlex.quote(agent), "--machine", "server")
    if code != 0 or " rejected FormatPartition " not in output or " order FormatPartition " in output:
        raise SystemExit(f"exit code {code}\n{output}")


main()
