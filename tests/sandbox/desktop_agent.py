"""Creates, formats, resizes, merges, converts and deletes on the desktop machine, and waits for each effect."""

from sandbox import act, drive, partitions, until, zorcall

GIB = 1024 ** 3


def create_and_format():
    act("CreatePartition", "diskIndex=0", f"capacity={40 * GIB}", "fileSystem=NTFS", "label=Work",
        "unallocatedIndex=-1")
    until(lambda: drive("I"), "the new partition")
    act("FormatPartition", "driveLetter=I", "fileSystem=exFAT", "label=Exchange", "clusterSize=65536",
        "quickFormat=false")
    until(lambda: drive("I")["fileSystemType"] == "exFAT", "the format")
    act("ConvertPartitionToNtfs", "driveLetter=I")
    until(lambda: drive("I")["fileSystemType"] == "NTFS", "the file system that the guide converts to")


def resize_split_and_merge():
    act("ResizePartition", "driveLetter=I", f"newPartitionCapacity={30 * GIB}")
    until(lambda: drive("I")["rawCapacity"] == 30 * GIB, "the smaller partition")
    act("SplitPartition", "driveLetter=D", f"newPartitionCapacity={50 * GIB}", "newPartitionFileSystem=NTFS",
        "newPartitionLabel=Half")
    until(lambda: drive("J"), "the split-off partition")
    act("ResizePartitionRelative", "driveLetter=I", f"sizeAdjustment={5 * GIB}")
    until(lambda: drive("I")["rawCapacity"] == 35 * GIB, "the larger partition")
    act("MergePartitions", "driveLetter1=D", "driveLetter2=J")
    until(lambda: drive("J") is None, "the merged partition")
    act("AllocateSpaceFromPartitionToPartition", "sourceDriveLetter=D", "targetDriveLetter=C",
        f"newPartitionCapacity={20 * GIB}")
    until(lambda: drive("C")["rawCapacity"] == 485 * GIB, "the larger system drive")


def convert_and_delete():
    act("ConvertPartitionToPrimary", "driveLetter=G")
    until(lambda: drive("G")["isPrimary"], "the primary partition")
    act("ConvertDiskToGpt", "diskIndex=2")
    until(lambda: zorcall("ListAllDisks")[2]["isGpt"], "the GPT disk")
    act("AlignDiskTo4k", "diskIndex=2")
    until(lambda: not zorcall("ListAllDisks")[2]["not4kAligned"], "the aligned disk")
    act("DeletePartition", "driveLetter=G")
    until(lambda: drive("G") is None, "the deleted partition")
    act("CreatePartition", "diskIndex=2", f"capacity={60 * GIB}", "fileSystem=EXT4", "label=linux",
        "unallocatedIndex=-1")
    until(lambda: drive("G"), "the partition in its place")
    act("ChangePartitionDriveLetter", "driveLetter=G", "newDriveLetter=x")
    until(lambda: drive("X"), "the new letter")
    act("DeleteAllPartitions", "diskIndex=3")
    until(lambda: len(partitions(3)) == 1, "the empty stick")


def wipe_and_clone():
    act("WipeDisk", "diskIndex=3", "eraseCount=2")
    until(lambda: zorcall("ListAllDisks")[3]["isUninitialized"], "the wiped stick")
    act("AutoCreatePartitions", "diskIndex=3", "partitionCount=2", "GptOrMbr=MBR")
    until(lambda: len([p for p in partitions(3) if not p["isUnallocated"]]) == 2, "the two new partitions")
    act("ClonePartitionToPartition", "sourceDriveLetter=I", "destDriveLetter=X")
    until(lambda: drive("X")["label"] == "Exchange", "the clone")


create_and_format()
resize_split_and_merge()
convert_and_delete()
wipe_and_clone()
