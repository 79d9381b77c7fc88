"""An agent in another language: drives the sandbox host over the wire and prints the results.

usage: agent.py FOLDER-OF-GENERATED-CODE
"""

import os
import sys
import time

sys.path.insert(0, sys.argv[1])

from thrift.protocol import TBinaryProtocol  # noqa: E402
from thrift.transport import TSocket, TTransport  # noqa: E402

from ZORNativePlugin import ZORNativePlugin  # noqa: E402

LIMIT = 60


def report(*words):
    """One write a line, so that the host's own lines cannot fall into it."""
    sys.stdout.write(" ".join(str(word) for word in words) + "\n")
    sys.stdout.flush()


def until(question, condition):
    """Asks again until the answer is a yes; the gate and the host's work both take their time."""
    deadline = time.monotonic() + LIMIT
    while time.monotonic() < deadline:
        answer = question()
        if answer:
            return answer
        time.sleep(0.05)
    sys.exit("timeout: " + condition)


def gated(agent, name, tool):
    until(lambda: agent.PreProcessing(name).allow, "the gate, for " + name)
    answer = tool()
    counted = agent.PostProcessing(answer)
    report(name, "->", answer, counted)
    return answer


def main():
    assert os.environ["AGENT_CHAT_PORT"] != os.environ["AGENT_NATIVE_PORT"]
    transport = TTransport.TBufferedTransport(TSocket.TSocket("localhost", int(os.environ["AGENT_NATIVE_PORT"])))
    agent = ZORNativePlugin.Client(TBinaryProtocol.TBinaryProtocol(transport))
    transport.open()
    disks = agent.ListAllDisks()
    report("disks", [disk.diskIndex for disk in disks])
    gib = 1024**3
    gated(agent, "CreatePartition", lambda: agent.CreatePartition(0, 10 * gib, "NTFS", "Fresh", -1))
    fresh = until(lambda: [p for p in agent.ListPartitionsOnDisk(0) if p.label == "Fresh"], "the new partition")[0]
    report("created", fresh.driveLetter, fresh.rawCapacity, fresh.fileSystemType, fresh.isUnallocated)
    gated(agent, "ChangePartitionLabel", lambda: agent.ChangePartitionLabel(fresh.driveLetter, "Renamed"))
    until(lambda: agent.GetPartitionInfo(fresh.driveLetter).label == "Renamed", "the new label")
    gated(agent, "DeletePartition", lambda: agent.DeletePartition("C"))
    transport.close()


main()
