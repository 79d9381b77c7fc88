"""Shared by the tests of zorhost on disk images: an image in a scratch folder, the host on it as a child process, calls
through zorcall, and independent programs that read the image's file. Requires the disk service (with-disk-service)."""

import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

BIN = pathlib.Path(sys.argv.pop(1)).resolve()
MIB = 1024 ** 2
SECTOR = 512
LIMIT_SECONDS = 120
POLL_SECONDS = 0.05
# Another program can bind the port between the host's search and its start.
START_TRIES = 8
NOT_LISTENING = 1


def until(condition, what):
    deadline = time.monotonic() + LIMIT_SECONDS
    while time.monotonic() < deadline:
        found = condition()
        if found:
            return found
        time.sleep(POLL_SECONDS)
    raise AssertionError(f"timeout: {what}")


def run(*command, code=0):
    """The output of a program that must end with this exit code."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode != code:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout


class Image:
    """A sparse file and what other programs read from it."""

    def __init__(self, path, mebibytes):
        self.path = pathlib.Path(path)
        with open(path, "wb") as file:
            file.truncate(mebibytes * MIB)

    def loop_device(self):
        """The loop device of this file, or an empty string."""
        names = run("losetup", "--noheadings", "--output", "NAME", "--associated", str(self.path)).split()
        assert all(re.fullmatch(r"/dev/loop\d+", name) for name in names) and len(names) <= 1, names
        return names[0] if names else ""

    def detach(self):
        name = self.loop_device()
        if name:
            run("losetup", "--detach", name)

    def table(self):
        """The partition table as sfdisk reads it; its partitions are in the order of their starts."""
        table = json.loads(run("sfdisk", "--json", str(self.path)))["partitiontable"]
        table["partitions"] = sorted(table.get("partitions", []), key=lambda entry: entry["start"])
        return table

    def layout(self):
        """Start, size in MiB, file system and label of each partition, read by sfdisk and blkid."""
        return [(entry["start"] * SECTOR // MIB, entry["size"] * SECTOR // MIB,
                 self.tag(entry, "TYPE"), self.tag(entry, "LABEL")) for entry in self.table()["partitions"]]

    def tag(self, entry, name):
        # 2: the tag is missing.
        done = subprocess.run(["blkid", "-p", "-s", name, "-o", "value", "-O", str(entry["start"] * SECTOR),
                               "-S", str(entry["size"] * SECTOR), str(self.path)],
                              stdout=subprocess.PIPE, text=True, check=False)
        assert done.returncode in (0, 2), done
        return done.stdout.strip()

    def blocks(self, begin, size):
        with open(self.path, "rb") as file:
            file.seek(begin)
            while size > 0:
                block = file.read(min(size, MIB))
                assert block, "the region ends beyond the file"
                yield block
                size -= len(block)

    def digest(self, begin, size):
        """Of a region in bytes."""
        result = hashlib.sha256()
        for block in self.blocks(begin, size):
            result.update(block)
        return result.hexdigest()

    def is_zero(self, begin, size):
        return all(block.count(0) == len(block) for block in self.blocks(begin, size))

    def extracted(self, entry, folder):
        """A copy of a partition, for programs that do not accept an offset."""
        copy = pathlib.Path(folder) / f"partition{entry['start']}"
        run("dd", f"if={self.path}", f"of={copy}", "bs=1M", "iflag=skip_bytes,count_bytes", "conv=sparse",
            "status=none", f"skip={entry['start'] * SECTOR}", f"count={entry['size'] * SECTOR}")
        os.truncate(copy, entry["size"] * SECTOR)
        return copy

    def check_file_systems(self, folder):
        """Runs each file system's checker on a copy of its partition."""
        checkers = {"ntfs": ["ntfsfix", "-n"], "ext4": ["e2fsck", "-f", "-n"], "vfat": ["fsck.fat", "-n"],
                    "exfat": ["fsck.exfat", "-n"]}
        for entry in self.table()["partitions"]:
            kind = self.tag(entry, "TYPE")
            if kind:
                copy = self.extracted(entry, folder)
                run(*checkers[kind], str(copy))
                copy.unlink()


class Host:
    """zorhost on one image, or on the disk of the options in disk."""

    def __init__(self, image, folder, *options, disk=None):
        self.image = image
        self.transcript_file = pathlib.Path(folder) / "transcript.jsonl"
        self.log = pathlib.Path(folder) / "host.log"
        self.port = 0
        for _ in range(START_TRIES):
            self.process = start([*(disk or ("--image", str(image.path), "--headless")), "--transcript",
                                  str(self.transcript_file), *options], folder, self.log)
            until(lambda: self.process.poll() is not None or self.find_port(), "the agent service")
            if self.port or self.process.poll() != NOT_LISTENING:
                break
        assert self.port, self.log.read_text()

    def find_port(self):
        found = re.search(r"agent service on .*:(\d+)", self.log.read_text())
        self.port = int(found[1]) if found else 0
        return self.port

    def call(self, *arguments):
        done = subprocess.run([BIN / "zorcall", "--port", str(self.port), *arguments], stdout=subprocess.PIPE,
                              text=True, check=False)
        assert done.returncode in (0, 1), done
        return json.loads(done.stdout)

    def transcript(self, kind):
        """The complete lines of that kind."""
        lines = self.transcript_file.read_text().split("\n")[:-1]
        return [record for record in map(json.loads, lines) if record["kind"] == kind]

    def order(self, *arguments):
        """Calls a tool whose order must be accepted; no order reaches anything but the test's own loop device."""
        assert self.image.loop_device().startswith("/dev/loop")
        assert [disk["totalCapacity"] for disk in self.call("ListAllDisks")] == [self.image.path.stat().st_size]
        answer = self.call(*arguments)
        assert answer == "Task Queued", f"{arguments}: {answer}\n{self.log.read_text()}"

    def carry_out(self, *arguments, state="done"):
        """An order and its end, as the transcript reports it."""
        ended = len(self.transcript("taskEnd"))
        self.order(*arguments)
        end = until(lambda: self.transcript("taskEnd")[ended:], arguments)[0]
        assert end["state"] == state, f"{arguments}: {end}"
        return end

    def create(self, mebibytes, file_system, label, region=0):
        self.carry_out("CreatePartition", "diskIndex=0", f"capacity={mebibytes * MIB}", f"fileSystem={file_system}",
                       f"label={label}", f"unallocatedIndex={region}")

    def start_full_format(self, letter):
        """Returns when the host has started to overwrite the partition."""
        started = len(self.transcript("taskStart"))
        self.order("FormatPartition", f"driveLetter={letter}", "fileSystem=EXT4", "label=", "clusterSize=0",
                   "quickFormat=false")
        until(lambda: self.transcript("taskStart")[started:], "the start of the format")

    def drives(self):
        """Letter, size in MiB, file system and label of each partition in the inventory."""
        return [(p["driveLetter"][:1], p["rawCapacity"] // MIB, p["fileSystemType"], p["label"])
                for p in self.call("GetAllPartitionInfo") if not p["isUnallocated"]]

    def end(self, signal):
        """Sends a signal; returns the exit code."""
        self.process.send_signal(signal)
        return self.process.wait(LIMIT_SECONDS)


def start(arguments, folder, log, user=None):
    """Starts zorhost with its state in the scratch folder."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_STATE_HOME=f"{folder}/state",
                       HOME=str(folder), XDG_CONFIG_HOME=f"{folder}/config", PATH=f"{BIN}:{os.environ['PATH']}")
    with open(log, "wb") as output:
        return subprocess.Popen([BIN / "zorhost", *arguments], cwd=folder, env=environment, stdout=output,
                                stderr=subprocess.STDOUT, user=user, group=user, extra_groups=[] if user else None)


class ImageTest(unittest.TestCase):
    """Scratch folder, image and hosts of a test; all are removed at its end."""

    mebibytes = 600

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="images.")).resolve()
        self.addCleanup(shutil.rmtree, self.folder)
        self.image = Image(self.folder / "a disk.img", self.mebibytes)
        self.addCleanup(self.image.detach)

    def start_host(self, *options, disk=None):
        host = Host(self.image, self.folder, *options, disk=disk)
        self.addCleanup(host.process.wait)
        self.addCleanup(host.process.kill)
        return host

    def until_detached(self):
        until(lambda: not self.image.loop_device(), "the detached image")
