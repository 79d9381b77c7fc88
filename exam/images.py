"""Disk images of a task: making them, and reading them with programs that do not belong to this project."""

import hashlib
import json
import os
import pathlib
import random
import re
import subprocess
import tempfile

from .machine import SECTOR, Disk, Entry, Machine
from .sizes import parse_size

MIB = 1024**2
GPT_TYPE = "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7"
MBR_TYPE = "7"
# Content of the file in each new file system that can be filled without a mount.
FILE = "holiday.bin"
FILE_SIZE = MIB
MAKERS = {"NTFS": ["mkfs.ntfs", "-Q", "-F", "-L"], "EXT4": ["mkfs.ext4", "-q", "-F", "-L"],
          "FAT32": ["mkfs.fat", "-F", "32", "-n"], "exFAT": ["mkfs.exfat", "-L"]}
CHECKERS = {"NTFS": ["ntfsfix", "-n"], "EXT4": ["e2fsck", "-f", "-n"], "FAT": ["fsck.fat", "-n"],
            "FAT32": ["fsck.fat", "-n"], "exFAT": ["fsck.exfat", "-n"]}
NAMES = {"ntfs": "NTFS", "ext4": "EXT4", "exfat": "exFAT"}


class ImageError(Exception):
    """An image that could not be made or read."""


def run(*command, text=True):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=text, check=False)
    if done.returncode != 0:
        raise ImageError(f"{' '.join(map(str, command))} ended with {done.returncode}: {done.stderr or done.stdout}")
    return done.stdout


def copy_data(source, begin, size, target, at):
    """Copies a range of a sparse file; holes remain holes."""
    end = begin + size
    while begin < end:
        try:
            data = os.lseek(source, begin, os.SEEK_DATA)
        except OSError:
            return  # no data up to the end of the file
        hole = min(os.lseek(source, data, os.SEEK_HOLE), end)
        for position in range(min(data, end), hole, MIB):
            block = os.pread(source, min(MIB, hole - position), position)
            if block.count(0) != len(block):
                os.pwrite(target, block, at + position - (end - size))
        begin = hole


class Image:
    def __init__(self, path):
        self.path = pathlib.Path(path)

    @property
    def size(self):
        return self.path.stat().st_size

    def make(self, description):
        """Makes the image of a task's file: `size`, `table` and `partitions`."""
        with open(self.path, "wb") as file:
            file.truncate(parse_size(description["size"]))
        if "table" not in description:
            return
        partitions = description.get("partitions", [])
        kind = GPT_TYPE if description["table"] == "gpt" else MBR_TYPE
        lines = [f"label: {description['table']}"]
        lines += [f"size={parse_size(each['size']) // MIB}MiB, type={kind}" for each in partitions]
        subprocess.run(["sfdisk", "--quiet", str(self.path)], input="\n".join(lines) + "\n", text=True, check=True,
                       stdout=subprocess.DEVNULL)
        for entry, each in zip(self.table_()["partitions"], partitions):
            self.fill_(entry, each)

    def fill_(self, entry, description):
        with tempfile.TemporaryDirectory(dir=self.path.parent) as folder:
            part = pathlib.Path(folder, "partition")
            with open(part, "wb") as file:
                file.truncate(entry["size"] * SECTOR)
            content = pathlib.Path(folder, FILE)
            content.write_bytes(random.Random(str(description)).randbytes(FILE_SIZE))
            filesystem = description["filesystem"]
            run(*MAKERS[filesystem], description.get("label", ""), part)
            if filesystem == "NTFS":
                run("ntfscp", "-f", part, content, FILE)
            elif filesystem == "EXT4":
                run("debugfs", "-w", "-R", f"write {content} {FILE}", part)
            with open(part, "rb") as source, open(self.path, "r+b") as target:
                copy_data(source.fileno(), 0, entry["size"] * SECTOR, target.fileno(), entry["start"] * SECTOR)

    def table_(self):
        done = subprocess.run(["sfdisk", "--json", str(self.path)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, check=False)
        if done.returncode != 0:
            return {"label": "none", "partitions": []}
        table = json.loads(done.stdout)["partitiontable"]
        return {**table, "partitions": sorted(table.get("partitions", []), key=lambda entry: entry["start"])}

    def disk(self, index):
        """The disk as sfdisk, blkid and the tools of the file systems read it."""
        table = self.table_()
        entries = [self.entry_(index, entry) for entry in table["partitions"]]
        name = {"gpt": "GPT", "dos": "MBR"}.get(table["label"], "none")
        return Disk(index, self.path.name, self.size, name, True, False, False, entries + self.free_(index, entries))

    def free_(self, index, entries):
        """The gaps of at least 1 MiB between the partitions."""
        ends = [(MIB, MIB)] + [(entry.start, entry.start + entry.size) for entry in entries] + [(self.size - MIB, 0)]
        gaps = [(end, start - end) for (_, end), (start, _) in zip(ends, ends[1:])]
        return [Entry(index, start, size, free=True) for start, size in gaps if size >= MIB]

    def entry_(self, index, entry):
        with tempfile.TemporaryDirectory(dir=self.path.parent) as folder:
            part = pathlib.Path(folder, "partition")
            self.extract_(entry, part)
            tags = blkid(part)
            filesystem = NAMES.get(tags.get("TYPE", ""), tags.get("VERSION", ""))
            filesystem = "FAT" if filesystem in ("FAT12", "FAT16") else filesystem
            content, used = content_of(part, filesystem)
            whole = digest_of(part)
        return Entry(disk=index, start=entry["start"] * SECTOR, size=entry["size"] * SECTOR, label=tags.get("LABEL", ""),
                     filesystem=filesystem, used=used, active=entry.get("bootable", False), guid=entry.get("uuid", ""),
                     content=content, bytes=whole)

    def extract_(self, entry, part):
        with open(self.path, "rb") as source, open(part, "wb") as target:
            target.truncate(entry["size"] * SECTOR)
            copy_data(source.fileno(), entry["start"] * SECTOR, entry["size"] * SECTOR, target.fileno(), 0)

    def detach(self):
        """Removes a loop device that a killed host left."""
        for line in run("losetup", "--noheadings", "--output", "NAME", "--associated", self.path).split():
            if re.fullmatch(r"/dev/loop\d+", line):
                run("losetup", "--detach", line)


def blkid(part):
    done = subprocess.run(["blkid", "-p", "-o", "export", str(part)], stdout=subprocess.PIPE, text=True, check=False)
    return dict(line.split("=", 1) for line in done.stdout.splitlines() if "=" in line)


def content_of(part, filesystem):
    """A digest of the files with their size, where a tool can read them. A file system with errors has another digest."""
    if filesystem not in CHECKERS:
        return "", 0
    if subprocess.run([*CHECKERS[filesystem], str(part)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                      check=False).returncode != 0:
        return "a file system with errors", 0
    if filesystem in ("NTFS", "EXT4"):
        command = ["ntfscat", "-f", part, FILE] if filesystem == "NTFS" else ["debugfs", "-R", f"cat {FILE}", part]
        done = subprocess.run(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        return hashlib.sha256(done.stdout).hexdigest(), len(done.stdout)
    return "", 0


def digest_of(part):
    """Of the blocks that are not empty, with their places."""
    result = hashlib.sha256()
    with open(part, "rb") as file:
        position = 0
        while True:
            try:
                position = os.lseek(file.fileno(), position, os.SEEK_DATA)
            except OSError:
                return result.hexdigest()
            position -= position % MIB
            block = os.pread(file.fileno(), MIB, position)
            if block.count(0) != len(block):
                result.update(position.to_bytes(8, "big") + block)
            position += MIB


def machine_of_images(images, letters):
    """`letters` contains the host's drive letters by disk number and start, because images have none."""
    machine = Machine([image.disk(index) for index, image in enumerate(images)])
    for entry in machine.partitions:
        entry.letter = letters.get((entry.disk, entry.start), "")
    return machine


def letters_of(machine):
    return {(entry.disk, entry.start): entry.letter for entry in machine.partitions if entry.letter}
