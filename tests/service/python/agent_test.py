"""A client in Python that calls the service through code generated from its interface file.

Arguments: the folder of the generated code, the service host, the interface description (JSON), a scratch folder.
"""

import json
import os
import subprocess
import sys
import tempfile
import time
import unittest

GENERATED, HOST, DESCRIPTION, SCRATCH = sys.argv[1:5]
sys.path.insert(0, GENERATED)

from unused_port import unused_port
from thrift.Thrift import TApplicationException, TMessageType
from thrift.protocol import TBinaryProtocol
from thrift.transport import TSocket, TTransport

from ZORNativePlugin import ZORNativePlugin
from ZORNativePlugin.constants import OPERATION_IN_PROGRESS, TASK_NOT_VALID, TASK_QUEUED
from ZORNativePlugin.ttypes import TaskInfo


class Service:
    """The host process, on an unused port."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(dir=SCRATCH)
        for _ in range(10):
            report = self.start(unused_port())
            if report["running"]:
                self.port = int(report["native"])
                return
            self.end()
        raise RuntimeError("the service did not start")

    def start(self, port):
        netstat = os.path.join(self.folder.name, "netstat")
        with open(netstat, "w", encoding="ascii") as script:
            script.write("#!/bin/sh\n" + "".join(f"echo ':{busy}'\n" for busy in range(9090, port)))
        os.chmod(netstat, 0o700)
        environment = dict(os.environ, PATH=self.folder.name + ":" + os.environ["PATH"])
        self.process = subprocess.Popen([HOST], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment)
        return json.loads(self.process.stdout.readline())

    def end(self):
        self.process.stdin.close()
        code = self.process.wait(30)
        self.process.stdout.close()
        return code


class AgentTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.service = Service()

    @classmethod
    def tearDownClass(cls):
        code = cls.service.end()
        cls.service.folder.cleanup()
        assert code == 0, f"the host's exit code is {code}"

    def setUp(self):
        connection = TSocket.TSocket("localhost", self.service.port)
        connection.setTimeout(20000)
        self.transport = TTransport.TBufferedTransport(connection)
        self.client = ZORNativePlugin.Client(TBinaryProtocol.TBinaryProtocol(self.transport))
        self.transport.open()

    def tearDown(self):
        self.transport.close()

    def test_init_returns_true(self):
        self.assertIs(self.client.Init(), True)

    def test_disks_keep_the_hosts_order_and_sizes(self):
        disks = self.client.ListAllDisks()
        self.assertEqual([disk.diskIndex for disk in disks], [0, 1])
        self.assertEqual([disk.serialNumber for disk in disks], ["S-0", "S-1"])
        self.assertEqual(disks[0].totalCapacity, 8 << 40)
        self.assertEqual(disks[0].partitionCount, 2)

    def test_partitions_of_one_disk(self):
        self.assertEqual([p.driveLetter for p in self.client.ListPartitionsOnDisk(0)], ["C", "D"])
        self.assertEqual([p.driveLetter for p in self.client.ListPartitionsOnDisk(1)], ["E"])
        self.assertEqual(self.client.ListPartitionsOnDisk(9), [])

    def test_non_ascii_string_is_unchanged(self):
        self.assertEqual(self.client.GetPartitionInfo("D").label, "gr\u00fc\u00dfe")

    def test_record_of_an_unknown_letter_has_every_field(self):
        empty = self.client.GetPartitionInfo("Q")
        values = vars(empty)
        self.assertEqual(len(values), 46)
        for name, value in values.items():
            self.assertIn(value, (False, 0, ""), name)
            self.assertIsNotNone(value, name)

    def test_all_partitions(self):
        self.assertEqual([p.driveLetter for p in self.client.GetAllPartitionInfo()], ["C", "D", "E"])

    def test_gate_returns_a_record(self):
        rejected = self.pre_process_within_the_pause()
        self.assertIsInstance(rejected, TaskInfo)
        self.assertIs(rejected.allow, False)
        self.assertEqual(rejected.reasons, OPERATION_IN_PROGRESS)
        limit = time.monotonic() + 60
        admitted = rejected
        while not admitted.allow and time.monotonic() < limit:
            self.assertEqual(admitted.reasons, OPERATION_IN_PROGRESS)
            admitted = self.client.PreProcessing("ListAllDisks()")
        self.assertIs(admitted.allow, True)
        self.assertEqual(admitted.reasons, "")

    def pre_process_within_the_pause(self):
        """Returns PreProcessing's record within two seconds of a PostProcessing; retries on a slow machine."""
        for _ in range(20):
            start = time.monotonic()
            self.client.PostProcessing(TASK_NOT_VALID)
            answer = self.client.PreProcessing("ListAllDisks()")
            if time.monotonic() - start < 2:
                return answer
        self.fail("two calls took longer than the pause")

    def test_post_processing_accepts_only_the_exact_string(self):
        self.assertIs(self.client.PostProcessing(TASK_QUEUED), True)
        self.assertIs(self.client.PostProcessing(TASK_QUEUED + " "), False)
        self.assertIs(self.client.PostProcessing(TASK_NOT_VALID), False)

    def test_tool_is_queued_or_rejected(self):
        self.assertEqual(self.client.CreatePartition(0, 1 << 35, "NTFS", "gr\u00fcn", -1), TASK_QUEUED)
        self.assertEqual(self.client.DeletePartition("7"), TASK_NOT_VALID)

    def test_missing_arguments_have_default_values(self):
        self.assertEqual([p.driveLetter for p in self.client.ListPartitionsOnDisk(None)], ["C", "D"])
        self.assertEqual(self.client.GetPartitionInfo(None).driveLetter, "")

    def test_unknown_method_raises_and_the_connection_stays_open(self):
        protocol = TBinaryProtocol.TBinaryProtocol(self.transport)
        protocol.writeMessageBegin("Nothing", TMessageType.CALL, 11)
        protocol.writeStructBegin("args")
        protocol.writeFieldStop()
        protocol.writeStructEnd()
        protocol.writeMessageEnd()
        self.transport.flush()
        self.assertEqual(protocol.readMessageBegin(), ("Nothing", TMessageType.EXCEPTION, 11))
        exception = TApplicationException()
        exception.read(protocol)
        protocol.readMessageEnd()
        self.assertEqual(exception.type, TApplicationException.UNKNOWN_METHOD)
        self.assertEqual(exception.message, "Invalid method name: 'Nothing'")
        self.assertIs(self.client.Init(), True)

    def test_generated_client_has_every_method_of_the_interface(self):
        with open(DESCRIPTION, encoding="utf-8") as file:
            service = json.load(file)["services"][0]
        names = [function["name"] for function in service["functions"]]
        self.assertTrue(names)
        for name in names:
            self.assertTrue(callable(getattr(self.client, name)), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
