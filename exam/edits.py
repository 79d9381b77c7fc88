"""The machine file of a task: one of the host's machines with the changes that the task lists."""

import json

from .machine import SECTOR
from .sizes import parse_size

MIB = 1024**2
FIRST_SECTOR = 2048
GPT_TAIL = 33 * SECTOR


def machine_content(task, machines):
    """The content of the machine file. `machines` is the folder of the host's machines."""
    content = json.loads((machines / f"{task.machine}.json").read_text(encoding="utf-8"))
    for place, value in task.change.items():
        change(content, place, plain(value))
    for disk in task.new_disk:
        content["disks"].append(new_disk(len(content["disks"]), disk))
    return content


def plain(value):
    """A size with a unit becomes bytes; every other value remains."""
    size = parse_size(value) if isinstance(value, str) else None
    return value if size is None else size


def change(content, place, value):
    """Sets a key: "C: usedSize", "disk 3 readonly" or "machine busy"."""
    subject, _, key = place.rpartition(" ")
    records = [content] if subject == "machine" else found(content, subject)
    if len(records) != 1:
        raise ValueError(f"{place}: the machine has {len(records)} such records")
    records[0][key] = value


def found(content, subject):
    if subject.startswith("disk "):
        return [disk for disk in content["disks"] if disk["diskIndex"] == int(subject[5:])]
    return [
        entry
        for disk in content["disks"]
        for entry in disk["partitions"]
        if entry.get("driveLetter", "") == subject.rstrip(":")
    ]


def new_disk(index, description):
    """Places the partitions one after another; the remaining space becomes a free region."""
    keys = {key: plain(value) for key, value in description.items() if key != "partitions"}
    disk = {"diskIndex": index, **keys}
    disk["size"] -= disk["size"] % SECTOR
    if disk.get("isUnInitialize"):
        return {**disk, "partitions": [{"unallocated": True, "startSector": 0, "size": disk["size"]}]}
    entries, sector = [], FIRST_SECTOR
    for partition in description.get("partitions", []):
        entry = {key: plain(value) for key, value in partition.items()}
        entry["startSector"] = sector
        entry["size"] -= entry["size"] % MIB
        sector += entry["size"] // SECTOR
        entries.append(entry)
    left = disk["size"] - sector * SECTOR - (GPT_TAIL if disk.get("isGPT") else 0)
    if left >= MIB:
        entries.append({"unallocated": True, "startSector": sector, "size": left})
    return {**disk, "partitions": entries}
