"""Orders on a disk image that fail, are interrupted or outlive their host. usage: ends.py BIN_DIR"""

import os
import signal
import time
import unittest

from images import MIB, SECTOR, ImageTest, run, until

# GPT keeps a second table in the last 33 sectors.
BACKUP_TABLE = 33 * SECTOR


class InterruptedOrder(ImageTest):
    """Overwriting the last partition takes several seconds."""

    mebibytes = 1100

    def setUp(self):
        super().setUp()
        self.host = self.start_host()
        self.host.carry_out("InitializeDiskToGpt", "diskIndex=0")
        self.host.create(60, "NTFS", "Data")
        self.host.create(1000, "NTFS", "Subject")
        self.others = self.everything_but_the_subject()

    def everything_but_the_subject(self):
        """The other partition, its entry in the table and the free space. The format changes the subject's own entry."""
        other, subject = self.image.table()["partitions"]
        free = (subject["start"] + subject["size"]) * SECTOR
        return (other, self.image.digest(other["start"] * SECTOR, other["size"] * SECTOR),
                self.image.digest(free, self.mebibytes * MIB - free - BACKUP_TABLE))

    def test_SIGTERM_CancelsTheOrderAndDetachesTheImage(self):
        self.host.start_full_format("E")
        self.assertEqual(self.host.end(signal.SIGTERM), 0, self.host.log.read_text())
        self.until_detached()
        self.assertEqual(self.host.transcript("taskEnd")[-1]["state"], "cancelled")
        self.assertEqual(self.host.transcript("end")[-1]["exitCode"], 0)
        self.assertEqual(self.everything_but_the_subject(), self.others)
        self.image.check_file_systems(self.folder)

    def test_SIGKILL_TheNextHostStartsOnTheSameImage(self):
        self.host.start_full_format("E")
        self.host.end(signal.SIGKILL)
        loop = self.image.loop_device()
        host = self.start_when_unused()
        self.assertEqual(self.image.loop_device(), loop)
        self.assertIn(f"was still attached as {loop} by a host that ended unexpectedly", host.log.read_text())
        self.assertEqual(host.drives()[0], ("D", 60, "NTFS", "Data"))
        self.assertEqual(self.everything_but_the_subject(), self.others)
        # The disk service finishes or abandons the order of the killed host; until then it refuses others.
        until(lambda: self.labelled(host), "an order of the next host")
        self.assertEqual(host.end(signal.SIGTERM), 0, host.log.read_text())
        self.until_detached()
        self.assertEqual(self.image.layout()[0], (1, 60, "ntfs", "Later"))
        self.image.check_file_systems(self.folder)

    def start_when_unused(self):
        """The disk service can still be carrying out the order of the killed host."""
        deadline = time.monotonic() + 120
        while True:
            try:
                return self.start_host()
            except AssertionError as error:
                if "is in use" not in str(error) or time.monotonic() > deadline:
                    raise
            time.sleep(0.2)

    def labelled(self, host):
        ended = len(host.transcript("taskEnd"))
        host.order("ChangePartitionLabel", "driveLetter=D", "newLabel=Later")
        return until(lambda: host.transcript("taskEnd")[ended:], "the label")[0]["state"] == "done"


FORMAT = ("FormatPartition", "driveLetter=D", "fileSystem=NTFS", "label=New", "clusterSize=0", "quickFormat=true")


class FailedOrder(ImageTest):
    def setUp(self):
        super().setUp()
        self.host = self.start_host()
        self.host.carry_out("InitializeDiskToGpt", "diskIndex=0")
        self.host.create(100, "EXT4", "Data")

    def format(self, state):
        return self.host.carry_out(*FORMAT, state=state)

    def test_TranscriptIsComplete(self):
        held = os.open(self.image.loop_device() + "p1", os.O_RDONLY | os.O_EXCL)
        end = self.format("failed")
        os.close(held)
        self.assertRegex(end["error"], r"busy|in use")
        self.format("done")
        self.assertEqual(self.host.end(signal.SIGTERM), 0, self.host.log.read_text())
        states = [end["state"] for end in self.host.transcript("taskEnd")]
        self.assertEqual(states, ["done", "done", "failed", "done"])
        self.assertEqual([start["task"] for start in self.host.transcript("taskStart")], [1, 2, 3, 4])
        self.assertEqual([end["exitCode"] for end in self.host.transcript("end")], [0])

    def test_MountedFileSystem_IsNotChanged(self):
        place = self.folder / "place"
        place.mkdir()
        # A writable mount writes to the file system itself, and at any later time.
        run("mount", "-o", "ro,noload", self.image.loop_device() + "p1", str(place))
        self.addCleanup(run, "umount", str(place))
        before = self.image.digest(0, self.mebibytes * MIB)
        # An order that arrives before the host has noticed the mount fails; later ones are rejected.
        until(lambda: self.host.call(*FORMAT) == "Task NotValid", "the rejection")
        self.assertIn(f"p1 holds a mounted file system ({place}).", self.host.log.read_text())
        self.assertNotIn("done", [end["state"] for end in self.host.transcript("taskEnd")[2:]])
        self.assertEqual(self.image.digest(0, self.mebibytes * MIB), before)


if __name__ == "__main__":
    unittest.main()
