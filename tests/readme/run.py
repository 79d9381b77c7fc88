"""Follows the README in a fresh minimal Debian root: run.py ROOT [--from N] [--to N]. scripts/lib/readme-test makes the root.

Each command runs as root in a chroot, with an empty environment. A command that needs no network has only loopback, so that
it does not find services of this computer. --from and --to choose steps in an existing root.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import time

from readme import assign, missing_commands, missing_lines
from steps import BLOCKS, File, Left, Output, Run, SENTENCES

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CHECKOUT = "/root/check out"
LIMIT = 1800
# Argument 0 is the root, 1 the file with the shell script. The mounts end with the namespace.
INSIDE = """
ip link set lo up 2>/dev/null || true
mount -t proc proc "$0/proc"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$0/dev/pts" 2>/dev/null || true
mkdir -p "$0/ccache"
[ -z "$README_CCACHE" ] || mount --bind "$README_CCACHE" "$0/ccache"
exec chroot "$0" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root CCACHE_DIR=/ccache \
    ${npm_config_registry:+npm_config_registry="$npm_config_registry"} \
    ${npm_config_cafile:+npm_config_cafile="$npm_config_cafile"} bash -e -o pipefail -c "$1"
"""
WITH_HOST = """
: >/tmp/host.log # the line of an earlier host would end the wait below
{host} >/tmp/host.log 2>&1 &
host=$!
trap 'kill $host; wait $host || true; sed "s/^/host> /" /tmp/host.log' EXIT
for _ in $(seq 300); do grep -q 'service on .*[0-9]$' /tmp/host.log && break; sleep 0.1; done
export AGENT_NATIVE_PORT=$(sed -n 's/^.*service on .*[ :]\\([0-9]*\\)$/\\1/p' /tmp/host.log | head -n 1)
"""


class Root:
    def __init__(self, folder):
        self.folder = folder
        self.output = ""

    def run(self, step, command):
        """Runs a command in the checkout. Its output is in self.output; gives its exit code."""
        host = WITH_HOST.format(host=step.host) if step.host else ""
        script = f"cd '{CHECKOUT}'\n{host}\n{command}"
        namespaces = ["--mount", "--pid", "--fork", "--kill-child"] + ([] if step.network else ["--net"])
        try:
            done = subprocess.run(["unshare", *namespaces, "--", "sh", "-ec", INSIDE, self.folder, script], text=True,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  timeout=LIMIT, check=False, errors="replace")
        except subprocess.TimeoutExpired as error:
            self.output = (error.stdout or b"").decode(errors="replace")
            return f"no end after {LIMIT} s"
        self.output = done.stdout
        return done.returncode

    def save(self, name, text):
        (pathlib.Path(self.folder + CHECKOUT) / name).write_text(text, encoding="utf-8")


def failure(root, step, text):
    """None if the step succeeds, otherwise what is wrong."""
    if isinstance(step, File):
        root.save(step.name, text)
    elif isinstance(step, Output):
        lines = missing_lines(text, root.output)
        return "The output has not these lines of the README:\n" + "\n".join(lines) if lines else None
    elif isinstance(step, Run):
        code = root.run(step, step.instead or text)
        absent = [part for part in step.expects if part not in root.output]
        if code or absent:
            return f"{root.output[-4000:]}\nexit code {code}; missing in the output: {absent}"
    return None


def describe(step, text):
    if isinstance(step, Run):
        return (step.instead or text).strip().split("\n")[0]
    if isinstance(step, File):
        return f"saves {step.name}"
    if isinstance(step, Output):
        return "compares the output with the README"
    return f"left out: {text.split(chr(10), maxsplit=1)[0].strip()[:60]} - {step.reason}"


def main():
    parser = argparse.ArgumentParser(prog="run.py")
    parser.add_argument("root")
    parser.add_argument("--from", dest="first", type=int, default=1, metavar="N")
    parser.add_argument("--to", dest="last", type=int, metavar="N")
    options = parser.parse_args()
    text = (SOURCE / "README.md").read_text(encoding="utf-8")
    pairs = assign(text, BLOCKS) + [(step, step.first) for step in SENTENCES]
    if missing := missing_commands(text, SENTENCES):
        sys.exit(f"The README and tests/readme/steps.py differ: {missing}")
    chosen = pairs[options.first - 1:options.last]
    root = Root(options.root)
    begun = time.monotonic()
    for number, (step, part) in enumerate(chosen, options.first):
        started = time.monotonic()
        wrong = failure(root, step, part)
        print(f"[{number}/{len(pairs)}] {time.monotonic() - started:6.1f} s  {describe(step, part)}", flush=True)
        if wrong:
            sys.exit(wrong)
    ran = sum(isinstance(step, Run) for step, _ in chosen)
    print(f"The README works: {ran} steps with commands in {time.monotonic() - begun:.0f} s.")


os.environ.setdefault("README_CCACHE", "")
main()
