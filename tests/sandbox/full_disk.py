"""Full file systems: the host reports what it could not write, keeps the old file and leaves no half of a record.

usage: full_disk.py BIN_DIR

The file system is a small tmpfs in a private mount namespace, which ends with this process.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

import sandbox

SKIPPED = 77
OLD = '{"old": "content"}'
FILL = "cat /dev/zero >filler 2>/dev/null; "
NO_SPACE = "No space left on device"
# Longer than the free rest of a page, so that the record that does not fit is written in part.
CALL = "zorcall GetAllPartitionInfo >/dev/null; zorcall --gated --patient DiskHealthCheck diskIndex=0 >/dev/null; "


def run_in_namespace(bin_dir):
    """Runs this script again in a mount namespace of its own, as root or with mapped user identifiers."""
    for options in (["--mount"], ["--mount", "--map-root-user"]):
        if subprocess.run(["unshare", *options, "mount", "-t", "tmpfs", "none", "/mnt"], check=False,
                          stderr=subprocess.DEVNULL).returncode == 0:
            with tempfile.TemporaryDirectory() as scratch:
                inside = ["unshare", *options, sys.executable, __file__, bin_dir, scratch]
                sys.exit(subprocess.run(inside, check=False).returncode)
    print("skipped: a private mount namespace is not permitted")
    sys.exit(SKIPPED)


def expect(condition, *facts):
    if not condition:
        raise SystemExit("failed: " + "\n".join(str(fact) for fact in facts))


def expect_failure(code, output, beginning):
    errors = [line for line in output.splitlines() if line.startswith("zorhost: ")]
    expect(code == 2, "exit code", code, output)
    expect(len(errors) == 1, "not one line", output)
    expect(errors[0].startswith("zorhost: " + beginning) and NO_SPACE in errors[0], "another line", errors[0])


def expect_old(folder, name):
    expect((folder / name).read_text() == OLD, "the old file was changed", (folder / name).read_bytes()[:200])
    expect([entry.name for entry in folder.iterdir() if entry.name.startswith(name)] == [name],
           "a temporary file remains", list(folder.iterdir()))


def small_file_system():
    folder = pathlib.Path(tempfile.mkdtemp(dir=sys.argv[2]))
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "none", str(folder)], check=True)
    return folder


def full_from_the_start(bin_dir, machine):
    folder = small_file_system()
    (folder / "after.json").write_text(OLD)
    subprocess.run(["sh", "-c", FILL], cwd=folder, check=False)
    code, output = sandbox.run_host(bin_dir, folder, "true", "--machine", machine, "--save", "after.json")
    expect_failure(code, output, "save after.json: ")
    expect_old(folder, "after.json")


def full_at_the_end(bin_dir, machine, option, name):
    folder = small_file_system()
    # The agent writes the old file, because a start that finds its port in use saves the machine and is repeated.
    agent = f"printf '%s' '{OLD}' >{name}; {FILL}"
    code, output = sandbox.run_host(bin_dir, folder, agent, "--machine", machine, "--" + option, name)
    expect_failure(code, output, f"{option} {name}: ")
    expect_old(folder, name)


def transcript_that_cannot_continue(bin_dir):
    folder = small_file_system()
    agent = FILL + 4 * CALL + "rm filler; " + 2 * CALL
    code, output = sandbox.run_host(bin_dir, folder, agent, "--transcript", "t.jsonl")
    expect_failure(code, output, "transcript t.jsonl: ")
    text = (folder / "t.jsonl").read_text()
    expect(text.endswith("}\n"), "the last record is incomplete", text[-200:])
    kinds = [json.loads(line)["kind"] for line in text.splitlines()]
    expect(kinds[0] == "begin" and "end" not in kinds, "unexpected records", kinds)


def main():
    bin_dir = os.path.abspath(sys.argv[1])
    if len(sys.argv) < 3:
        run_in_namespace(bin_dir)
    # A small file fits a write buffer, so its error appears only when the buffer is flushed.
    for machine in ("laptop", "server"):
        full_from_the_start(bin_dir, machine)
        full_at_the_end(bin_dir, machine, "save", "after.json")
    full_at_the_end(bin_dir, "laptop", "screenshot", "window.png")
    transcript_that_cannot_continue(bin_dir)
    print("all written files were checked")


main()
