"""Orders on a disk image over the wire, from zorcall to the bytes in the file. usage: orders.py BIN_DIR"""

import signal
import unittest

from images import MIB, ImageTest, run

CONTENT = "".join(f"line {i}\n" for i in range(5000))


class GptDisk(ImageTest):
    def setUp(self):
        super().setUp()
        self.host = self.start_host()
        self.host.carry_out("InitializeDiskToGpt", "diskIndex=0")

    def end_and_check(self):
        self.assertEqual(self.host.end(signal.SIGTERM), 0, self.host.log.read_text())
        self.until_detached()
        self.image.check_file_systems(self.folder)

    def test_CreateFormatLabelAndDelete_LeaveTheExpectedPartitions(self):
        host = self.host
        host.create(100, "NTFS", "Data")
        host.create(150, "EXT4", "Files")
        host.create(60, "exFAT", "Exchange")
        self.assertEqual(host.drives(), [("D", 100, "NTFS", "Data"), ("E", 150, "EXT4", "Files"),
                                         ("F", 60, "exFAT", "Exchange")])
        host.carry_out("FormatPartition", "driveLetter=D", "fileSystem=exFAT", "label=Empty", "clusterSize=0",
                       "quickFormat=false")
        host.carry_out("ChangePartitionLabel", "driveLetter=E", "newLabel=Archive")
        host.carry_out("ChangePartitionDriveLetter", "driveLetter=F", "newDriveLetter=x")
        self.assertEqual(host.drives(), [("D", 100, "exFAT", "Empty"), ("E", 150, "EXT4", "Archive"),
                                         ("X", 60, "exFAT", "Exchange")])
        host.carry_out("DeletePartition", "driveLetter=D")
        host.create(90, "NTFS", "InItsPlace")
        self.end_and_check()
        self.assertEqual(self.image.layout(), [(1, 90, "ntfs", "InItsPlace"), (101, 150, "ext4", "Archive"),
                                               (251, 60, "exfat", "Exchange")])

    def test_FilesOfShrunkAndGrownPartitions_KeepTheirContent(self):
        host = self.host
        host.create(200, "NTFS", "Data")
        host.create(200, "EXT4", "Files")
        source = self.folder / "source"
        source.write_text(CONTENT)
        loop = self.image.loop_device()
        run("ntfscp", f"{loop}p1", str(source), "file")
        run("debugfs", "-w", "-R", f"write {source} file", f"{loop}p2")
        host.carry_out("ResizePartition", "driveLetter=D", f"newPartitionCapacity={120 * MIB}")
        host.carry_out("ResizePartitionRelative", "driveLetter=E", f"sizeAdjustment={-100 * MIB}")
        host.create(80, "NTFS", "Third")
        host.carry_out("ResizePartition", "driveLetter=E", f"newPartitionCapacity={250 * MIB}")
        self.assertEqual(host.drives(), [("D", 120, "NTFS", "Data"), ("F", 80, "NTFS", "Third"),
                                         ("E", 250, "EXT4", "Files")])
        self.end_and_check()
        self.assertEqual(self.image.layout(), [(1, 120, "ntfs", "Data"), (121, 80, "ntfs", "Third"),
                                               (201, 250, "ext4", "Files")])
        ntfs, _, ext4 = (str(self.image.extracted(entry, self.folder)) for entry in self.image.table()["partitions"])
        self.assertEqual(run("ntfscat", ntfs, "file"), CONTENT)
        run("debugfs", "-R", f"dump file {self.folder}/copy", ext4)
        self.assertEqual((self.folder / "copy").read_text(), CONTENT)

    def test_DeleteAllAndInitializeToMbr_LeaveAnEmptyTable(self):
        self.host.create(100, "NTFS", "One")
        self.host.create(100, "EXT4", "Two")
        self.host.carry_out("DeleteAllPartitions", "diskIndex=0")
        self.assertEqual((self.image.table()["label"], self.image.table()["partitions"]), ("gpt", []))
        self.host.carry_out("InitializeDiskToMbr", "diskIndex=0")
        self.host.create(300, "FAT32", "STICK")
        self.end_and_check()
        self.assertEqual(self.image.table()["label"], "dos")
        self.assertEqual(self.image.layout(), [(1, 300, "vfat", "STICK")])

    def test_RefusedOrder_ChangesNothingAndItsReasonIsLogged(self):
        self.host.create(100, "NTFS", "One")
        self.host.create(100, "NTFS", "Two")
        before = self.image.digest(0, self.mebibytes * MIB)
        self.assertEqual(self.host.call("MergePartitions", "driveLetter1=D", "driveLetter2=E"), "Task NotValid")
        self.assertRegex(self.host.log.read_text(), r"rejected MergePartitions .*: [A-Z].*\.\n")
        self.assertEqual(self.image.digest(0, self.mebibytes * MIB), before)


if __name__ == "__main__":
    unittest.main()
