#!/usr/bin/env python3
"""Writes the shipped machines into its own folder. Computes the sizes so that the partitions fill their disks."""

import json
import pathlib

MIB = 1024**2
GIB = 1024**3
SECTOR = 512
FIRST = 2048  # the usual first sector of a partition


def part(size, fs="NTFS", letter="", label="", used=0, **more):
    entry = {"size": size, "usedSize": used, "fsString": fs, "driveLetter": letter, "label": label}
    if fs:
        entry["clusterSize"] = 8
    entry.update(more)
    return entry


def disk(index, size, interface, entries, first=FIRST, **keys):
    """Places the entries in order; the remaining space becomes a free region."""
    sector = first
    for entry in entries:
        entry["startSector"] = sector
        entry["size"] -= entry["size"] % MIB if first == FIRST else entry["size"] % SECTOR
        sector += entry["size"] // SECTOR
    end = sector * SECTOR
    tail = (33 * SECTOR) if keys.get("isGPT") else 0
    left = size - end - tail
    if left >= MIB and not keys.get("isUnInitialize"):
        entries.append({"unallocated": True, "startSector": sector, "size": left - left % SECTOR})
    if keys.get("isUnInitialize"):
        entries.append({"unallocated": True, "startSector": 0, "size": size - size % SECTOR})
    return {"diskIndex": index, "size": size, "diskInterface": interface, **keys, "partitions": entries}


def system_parts(c_size, used, **c_keys):
    return [
        part(260 * MIB, "FAT32", used=40 * MIB, gptEFI=True, isSystem=True),
        part(16 * MIB, "", gptReserved=True),
        part(c_size, letter="C", label="Windows", used=used, isBoot=True, defBoot=True, **c_keys),
        part(800 * MIB, label="Recovery", used=600 * MIB, gptRecovery=True),
    ]


def laptop():
    entries = system_parts(420 * GIB, 160 * GIB, bltState=2, isBitLocker=True)
    return {
        "name": "laptop",
        "win11CheckerEnabled": False,
        "disks": [disk(0, 512110190592, "NVMe", entries, isGPT=True, isSSD=True, serialNO="S64ANX0R512345")],
    }


def desktop():
    nvme = system_parts(465 * GIB, 210 * GIB) + [part(300 * GIB, letter="D", label="Data", used=120 * GIB)]
    archive = [part(2047 * GIB, letter="E", label="Archive", used=900 * GIB)]
    old_ssd = [
        part(100 * GIB, letter="F", label="Games", used=70 * GIB, isActive=True),
        part(80 * GIB, letter="G", label="Scratch", used=10 * GIB, isPrimary=False),
    ]
    stick = [part(59 * GIB, "FAT32", letter="H", label="STICK", used=3 * GIB)]
    return {
        "name": "desktop",
        "win11CheckerEnabled": False,
        "disks": [
            disk(0, 1000204886016, "NVMe", nvme, isGPT=True, isSSD=True, serialNO="S4EWNX0R100200"),
            disk(1, 4000787030016, "SATA", archive, serialNO="WD-WCC7K4ARCHIV"),
            disk(2, 250059350016, "SATA", old_ssd, first=63, isSSD=True, serialNO="S21NNXAG250250"),
            disk(3, 64023257088, "USB", stick, isUSB=True, isRemoveUsb=True, serialNO="4C530001230925"),
        ],
    }


def server():
    disks = [disk(0, 480103981056, "NVMe", system_parts(300 * GIB, 90 * GIB), isGPT=True, isSSD=True,
                  serialNO="PHLJ0000480GB")]
    disks.append(disk(1, 480103981056, "NVMe", [part(440 * GIB, letter="D", label="Mirror", used=90 * GIB)],
                      isGPT=True, isSSD=True, serialNO="PHLJ0001480GB"))
    letters = "EFGHIJKLMNOPQRSTUVWX"
    size = 8001563222016
    for number, letter in enumerate(letters, start=2):
        entries = [part(7000 * GIB, letter=letter, label="Bay %02d" % number, used=number * 200 * GIB)]
        disks.append(disk(number, size, "SAS", entries, isGPT=True, serialNO="ZA1BAY%02d8TB" % number))
    disks.append(disk(22, size, "SAS", [part(7000 * GIB, label="Spare", used=0)], isGPT=True, isOffline=True,
                      serialNO="ZA1BAY228TB"))
    disks.append(disk(23, size, "SAS", [], isUnInitialize=True, serialNO="ZA1BAY238TB"))
    return {"name": "server", "bootMediaEnabled": False, "smartErrors": [7], "toolbox": {"passwordReset": False},
            "disks": disks}


def lines(machine):
    """JSON with a line for each entry of a disk, so that it can be read and changed by hand."""
    disks = machine.pop("disks")
    out = ["{"]
    for key, value in machine.items():
        out.append('    "%s": %s,' % (key, json.dumps(value)))
    out.append('    "disks": [')
    for number, item in enumerate(disks):
        entries = item.pop("partitions")
        head = json.dumps(item)[:-1]
        out.append("        %s, \"partitions\": [" % head)
        out.extend("            %s%s" % (json.dumps(entry), "," if i + 1 < len(entries) else "")
                   for i, entry in enumerate(entries))
        out.append("        ]}%s" % ("," if number + 1 < len(disks) else ""))
    out.extend(["    ]", "}", ""])
    return "\n".join(out)


def main():
    folder = pathlib.Path(__file__).parent
    for make in (laptop, desktop, server):
        (folder / (make.__name__ + ".json")).write_text(lines(make()))


if __name__ == "__main__":
    main()
