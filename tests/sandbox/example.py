"""Runs the worked example of the document unchanged: agent, command and check.

usage: example.py BIN_DIR DOCUMENT
"""

import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

from sandbox import run_host


def block_after(text, words):
    """The indented block that follows the first line with these words, without its indentation."""
    lines = text[text.index(words):].split("\n")
    begin = next(i for i, line in enumerate(lines) if line.startswith("    "))
    block = []
    for line in lines[begin:]:
        if line and not line.startswith("    "):
            break
        block.append(line[4:])
    return "\n".join(block).rstrip() + "\n"


def judged(bin_dir, folder, options, agent):
    """The output and exit code of the document's check for a run."""
    code, output = run_host(bin_dir, folder, agent, *options)
    if code != 0:
        sys.exit(f"ended with {code}:\n{output}")
    done = subprocess.run([sys.executable, "check.py"], cwd=folder, stdout=subprocess.PIPE, text=True, check=False)
    return done.stdout.strip(), done.returncode


def main():
    bin_dir, document = sys.argv[1:]
    text = pathlib.Path(document).read_text(encoding="utf-8")
    command = shlex.split(block_after(text, "The run, a hundred times").replace("\\\n", " "))
    if command[0] != "zorhost" or "python3 free20.py" not in command or "--exit-with-agent" not in command:
        sys.exit(f"not the command that was expected: {command}")
    # The agent's option and the two that run_host adds.
    options = [word for word in command[1:]
               if word not in ("--agent", "python3 free20.py", "--exit-with-agent", "--headless")]
    agent = f"{sys.executable} free20.py"
    broken = ["--fail", "AllocateSpace after 50%"]
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "free20.py").write_text(block_after(text, "`free20.py`"))
        check = block_after(text, "`check.py`")
        pathlib.Path(folder, "check.py").write_text(check)
        if len(check.splitlines()) != 10:
            sys.exit("the check has not ten lines")
        for name, verdict in (("unchanged", judged(bin_dir, folder, options, agent)),
                              ("with the task failing", judged(bin_dir, folder, options + broken, agent)),
                              ("with an agent that does nothing", judged(bin_dir, folder, options, "true"))):
            wanted = ("freed", 0) if name == "unchanged" else ("not freed", 1)
            print(name, verdict)
            if verdict != wanted:
                sys.exit(f"expected {wanted}")


main()
