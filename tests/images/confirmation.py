"""The confirmation of an order on a device: the answers to an agent until a person decides. usage: confirmation.py BIN_DIR"""

import signal
import unittest

from images import ImageTest, run, until

BUSY = ("One or more tasks are currently in execution, please wait a few moments and try again. If you need further "
        "assistance, please let me know!")


class Confirmation(ImageTest):
    mebibytes = 64

    def setUp(self):
        super().setUp()
        run("sh", "-c", f"printf 'label: gpt\nsize=16MiB\n' | sfdisk -q '{self.image.path}'")
        run("mkfs.ext4", "-q", "-F", "-E", "offset=1048576", str(self.image.path), "16M")
        run("udisksctl", "loop-setup", "--no-user-interaction", "--file", str(self.image.path))
        self.device = self.image.loop_device()
        self.before = self.image.digest(0, self.image.path.stat().st_size)

    def start_device_host(self, *options):
        return self.start_host(*options, disk=("--device", self.device))

    def gate(self, host):
        return host.call("PreProcessing", "toolCalls=the next call")

    def actions(self, host):
        return [line["action"] for line in host.transcript("confirmation")]

    def test_OpenConfirmation_IsABusyHostForTheAgent(self):
        host = self.start_device_host()
        until(lambda: self.gate(host)["allow"], "the end of the pause after the start")
        host.order("DeletePartition", "driveLetter=D")
        until(lambda: self.actions(host) == ["requested"], "the confirmation")
        self.assertEqual(self.gate(host), {"allow": False, "reasons": BUSY})
        # The inventory can still be read.
        self.assertEqual([drive[:3] for drive in host.drives()], [("D", 16, "EXT4")])
        self.assertEqual(host.end(signal.SIGTERM), 0, host.log.read_text())
        self.assertEqual(self.actions(host), ["requested", "withdrawn"])
        self.assertEqual([end["state"] for end in host.transcript("taskEnd")], ["cancelled"])
        self.assertEqual(self.image.digest(0, self.image.path.stat().st_size), self.before)

    def test_HostWithoutAWindow_RejectsTheOrder(self):
        host = self.start_device_host("--headless")
        self.assertEqual(host.call("DeletePartition", "driveLetter=D"), "Task NotValid")
        self.assertIn("This order destroys data on a disk and needs a confirmation in the window.",
                      host.log.read_text())
        self.assertEqual(host.end(signal.SIGTERM), 0, host.log.read_text())
        self.assertEqual(self.image.digest(0, self.image.path.stat().st_size), self.before)

    def test_Unattended_ExecutesTheOrder(self):
        host = self.start_device_host("--headless", "--unattended")
        host.carry_out("DeletePartition", "driveLetter=D")
        self.assertEqual(self.image.table()["partitions"], [])
        self.assertEqual(self.actions(host), [])


if __name__ == "__main__":
    unittest.main()
