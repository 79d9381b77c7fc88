"""The commands and examples of the README in their order, and how run.py treats each of them.

A step names the first line of its block and is one of:
  Run     runs the block, or `instead`, in the root; the output must contain `expects`. `host` starts a program first, whose
          port the commands find in AGENT_NATIVE_PORT. `network` keeps the network of this computer.
  File    saves the block under a name
  Output  lines that the output of the previous Run must contain
  Left    is not run, for a reason
"""

import dataclasses

# Starts the gateway that the printed configuration names.
START_CONFIGURATION = """scripts/run --mcp --once 2>/dev/null | sed -n '/^{/,/^}/p' >configuration.json
python3 -c 'import json, subprocess
server = json.load(open("configuration.json"))["mcpServers"]["disks"]
subprocess.run([server["command"], *server["args"], "--version"], check=True)'"""
SANDBOX = "build/bin/zorhost --headless"
NO_LOOP = "The root has no loop devices. The tests with the disk service run the same commands."


@dataclasses.dataclass
class Run:
    first: str
    expects: list
    instead: str = ""
    host: str = ""
    network: bool = False


@dataclasses.dataclass
class File:
    first: str
    name: str


@dataclasses.dataclass
class Output:
    first: str


@dataclasses.dataclass
class Left:
    first: str
    reason: str


BLOCKS = [
    Left("agent  --- Thrift on loopback", "A drawing."),
    Run("scripts/run", ["agent ended with exit code 0"], network=True),
    Output("--- Read the disks."),
    Left("scripts/run --image stick.img --size 4G", NO_LOOP),
    Left("--- Shrink the NTFS partition", NO_LOOP),
    Left('export PATH="$PWD/build/bin:$PATH"', NO_LOOP),
    # One step for each line of the block.
    Left("scripts/test  ", "Takes too long here. CI runs it."),
    Run("scripts/test -R Gate", ["100% tests passed"], network=True),
    Run("scripts/bench", ["ratio"], instead="scripts/bench --smoke"),
    Left(".ci/run", "Takes too long here. CI is this command."),
    Run("cmake --build build --target distribution", ["Linking CXX executable examplehost"]),
    Left("build/example/examplehost", "Runs with the next command."),
    Run("build/bin/zorcall --gated --patient ChangePartitionLabel", ["Task Queued"],
        host="QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software build/example/examplehost"),
    Left("find_package(AIBridge REQUIRED)", "Lines for a file of one's own. The test of the example host compiles them."),
    Left("#include <hostcheck/ComponentCheck.h>", "The test of the example host compiles these lines."),
    Run('export PATH="$PWD/build/bin:$PATH"', ["GetPartitionInfo(", '"driveLetter": "C"', "Task Queued"], host=SANDBOX),
    Run("zorcall watch", ['"change": "initial"'], host=SANDBOX,
        instead="timeout 3 build/bin/zorcall watch || [ $? -eq 124 ]"),
    File("import os, sys, time", "my_agent.py"),
    Run("thrift --gen py service/ZORNativePlugin.thrift", ["0 NVMe 931.51 GB", "The host answered: Task Queued"],
        host=SANDBOX),
    File('#include "ZORNativePlugin.h"', "my_agent.cpp"),
    Run("thrift --gen cpp service/ZORNativePlugin.thrift", ["3 USB 59.63 GB"], host=SANDBOX),
    Run("scripts/run --mcp --once", ["--- End of the conversation", '"mcpServers"'], network=True),
    Left("{", "An example with another path. The step before prints the lines for this root, and the next step starts them."),
    Left("scripts/windows/test", "Needs the toolchain for Windows, whose build takes an hour. CI runs it."),
]

# Commands in the README's sentences, and the options of its table.
SENTENCES = [
    Run("scripts/run --machine laptop", ["agent ended with exit code 0"]),
    Run("scripts/run --window", ["run: Option --window needs a display"],
        instead="scripts/run --window 2>&1 || [ $? -eq 2 ]"),
    Run("scripts/run --language de", ["agent ended with exit code 0"]),
    Run("scripts/run --all", ["LowLevelFormat"]),
    Run("scripts/run --scan", ["recommendation answered with button 1"], instead="scripts/run --scan --answer 1"),
    Run("scripts/run --mcp", ["aibridge-mcp "], instead=START_CONFIGURATION),
    Left("zorhost --device /dev/sdb", "The root has no disks."),
    Run('zorhost --headless --agent "python3 my_agent.py"', ["The host answered: Task Queued"],
        instead='PATH="$PWD/build/bin:$PATH"; zorhost --headless --agent "python3 my_agent.py" --exit-with-agent'),
    Run("scripts/exam --agent COMMAND", ["10 passed"], network=True,
        instead="scripts/exam --agent exam/agents/reference --task already-named"),
]
