"""Orders on a disk image over the wire, from zorcall to the bytes in the file. usage: orders.py BIN_DIR"""

import signal
import unittest

from images import MIB, SECTOR, ImageTest, run

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
        self.host.create(520, "FAT32", "STICK")
        self.end_and_check()
        self.assertEqual(self.image.table()["label"], "dos")
        self.assertEqual(self.image.layout(), [(1, 520, "vfat", "STICK")])

    def test_SplitAllocateAndHide_LeaveTheExpectedPartitions(self):
        host = self.host
        host.create(300, "NTFS", "Data")
        host.carry_out("SplitPartition", "driveLetter=D", f"newPartitionCapacity={100 * MIB}",
                       "newPartitionFileSystem=EXT4", "newPartitionLabel=Half")
        host.carry_out("AllocateSpaceFromPartitionToNewPartition", "sourceDriveLetter=D",
                       f"partitionCapacity={50 * MIB}", "fileSystem=exFAT", "label=More")
        host.carry_out("SetPartitionHidden", "driveLetter=E")
        self.assertEqual(host.drives(), [("D", 150, "NTFS", "Data"), ("F", 50, "exFAT", "More"),
                                         ("", 100, "EXT4", "Half")])
        self.end_and_check()
        self.assertEqual(self.image.layout(), [(1, 150, "ntfs", "Data"), (151, 50, "exfat", "More"),
                                               (201, 100, "ext4", "Half")])
        self.assertEqual([entry.get("attrs") for entry in self.image.table()["partitions"]], [None, None, "GUID:62"])

    def test_AutomaticPartitionsWipedAndActive_LeaveZerosAndAnActivePartition(self):
        host = self.host
        host.carry_out("AutoCreatePartitions", "diskIndex=0", "partitionCount=2", "GptOrMbr=MBR")
        first, second = (drive[0] for drive in host.drives())
        host.carry_out("SetPartitionActive", f"driveLetter={first}")
        host.carry_out("WipePartition", f"driveLetter={second}", "eraseCount=1")
        self.end_and_check()
        self.assertEqual(self.image.table()["label"], "dos")
        entries = self.image.table()["partitions"]
        self.assertEqual([(entry.get("bootable"), self.image.tag(entry, "TYPE")) for entry in entries],
                         [(True, "ntfs"), (None, "")])
        self.assertTrue(self.image.is_zero(entries[1]["start"] * SECTOR, entries[1]["size"] * SECTOR))

    def test_WipeDisk_LeavesOnlyZeros(self):
        self.host.create(100, "NTFS", "Data")
        self.host.carry_out("WipeDisk", "diskIndex=0", "eraseCount=1")
        self.assertTrue(self.host.call("ListAllDisks")[0]["isUninitialized"])
        self.assertEqual(self.host.end(signal.SIGTERM), 0, self.host.log.read_text())
        self.until_detached()
        self.assertTrue(self.image.is_zero(0, self.mebibytes * MIB))

    def test_RefusedOrder_ChangesNothingAndItsReasonIsLogged(self):
        self.host.create(100, "NTFS", "One")
        self.host.create(100, "NTFS", "Two")
        before = self.image.digest(0, self.mebibytes * MIB)
        self.assertEqual(self.host.call("MergePartitions", "driveLetter1=D", "driveLetter2=E"), "Task NotValid")
        self.assertRegex(self.host.log.read_text(), r"rejected MergePartitions .*: [A-Z].*\.\n")
        self.assertEqual(self.image.digest(0, self.mebibytes * MIB), before)


if __name__ == "__main__":
    unittest.main()
