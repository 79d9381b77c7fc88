"""The machine as the exam sees it: disks and their entries, read from a machine file or from the inventory."""

import dataclasses
import json

SECTOR = 512


@dataclasses.dataclass
class Entry:
    """A partition or a free region. Sizes are in bytes."""

    disk: int
    start: int
    size: int
    free: bool = False
    letter: str = ""
    label: str = ""
    filesystem: str = ""
    used: int = 0
    cluster: int = 0
    hidden: bool = False
    active: bool = False
    primary: bool = True
    guid: str = ""
    # Of a partition on a disk image: digests of its files and of all its bytes.
    content: str = ""
    bytes: str = ""

    @property
    def name(self):
        if self.letter:
            return self.letter + ":"
        return f"disk {self.disk} {self.label}" if self.label else f"disk {self.disk} at {self.start}"


@dataclasses.dataclass
class Disk:
    index: int
    serial: str
    size: int
    table: str
    online: bool
    readonly: bool
    dynamic: bool
    entries: list

    @property
    def name(self):
        return f"disk {self.index}"

    @property
    def partitions(self):
        return [entry for entry in self.entries if not entry.free]

    @property
    def free(self):
        """Size of the largest free region."""
        return max((entry.size for entry in self.entries if entry.free), default=0)


@dataclasses.dataclass
class Machine:
    disks: list
    settings: dict = dataclasses.field(default_factory=dict)

    @property
    def partitions(self):
        return [entry for disk in self.disks for entry in disk.partitions]

    def disk(self, index):
        return next((disk for disk in self.disks if disk.index == index), None)

    def drive(self, letter):
        return next((entry for entry in self.partitions if entry.letter == letter), None)

    def labelled(self, label):
        return [entry for entry in self.partitions if entry.label == label]


def table_of(is_initialized, is_gpt):
    return ("GPT" if is_gpt else "MBR") if is_initialized else "none"


def entry_of_file(disk, entry):
    return Entry(
        disk=disk,
        start=entry.get("startSector", 0) * entry.get("sectorSize", SECTOR),
        size=entry["size"],
        free=entry.get("unallocated", False),
        letter=entry.get("driveLetter", "")[:1],
        label=entry.get("label", ""),
        filesystem=entry.get("fsString", ""),
        used=entry.get("usedSize", 0),
        cluster=entry.get("clusterSize", 0) * entry.get("sectorSize", SECTOR),
        hidden=entry.get("isHidden", False),
        active=entry.get("isActive", False),
        primary=entry.get("isPrimary", True),
        guid=entry.get("partGUID", ""),
    )


def disk_of_file(disk):
    return Disk(
        index=disk["diskIndex"],
        serial=disk.get("serialNO", ""),
        size=disk["size"],
        table=table_of(not disk.get("isUnInitialize", False), disk.get("isGPT", False)),
        online=not disk.get("isOffline", False),
        readonly=disk.get("readonly", False) or disk.get("isProtected", False),
        dynamic=disk.get("isDynamic", False),
        entries=[entry_of_file(disk["diskIndex"], entry) for entry in disk.get("partitions", [])],
    )


def machine_of_file(path):
    """Reads a machine file of the host, for example one that --save has written."""
    content = json.loads(path.read_text(encoding="utf-8"))
    settings = {key: value for key, value in content.items() if key in ("preOsEnabled", "win11CheckerEnabled")}
    return Machine([disk_of_file(disk) for disk in content["disks"]], settings)


def entry_of_inventory(record):
    return Entry(
        disk=record["diskIndex"],
        start=record["startingOffset"],
        size=record["rawCapacity"],
        free=record["isUnallocated"],
        letter=record["driveLetter"][:1].strip("*"),
        label=record["label"],
        filesystem=record["fileSystemType"],
        used=record["usedSize"],
        cluster=record["clusterSize"],
        hidden=record["isHidden"],
        active=record["isActive"],
        primary=record["isPrimary"],
        guid=record["partitionGuid"],
    )


def machine_of_inventory(disks, partitions):
    """Converts the answers of ListAllDisks and GetAllPartitionInfo."""
    entries = [entry_of_inventory(record) for record in partitions]
    return Machine([
        Disk(
            index=disk["diskIndex"],
            serial=disk["serialNumber"],
            size=disk["totalCapacity"],
            table=table_of(not disk["isUninitialized"], disk["isGpt"]),
            online=not disk["isOffline"],
            readonly=disk["isReadOnly"] or disk["isWriteProtected"],
            dynamic=disk["isDynamic"],
            entries=[entry for entry in entries if entry.disk == disk["diskIndex"]],
        )
        for disk in disks
    ])
