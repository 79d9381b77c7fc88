"""Where an attempt takes place: a simulated machine or disk images, at the start and at the end."""

import dataclasses
import json
import subprocess

from .edits import machine_content
from .images import Image, letters_of, machine_of_images
from .machine import Disk, Entry, Machine, machine_of_file, machine_of_inventory


class Simulated:
    """A machine in the host's memory."""

    def __init__(self, task, folder, machines):
        self.folder_ = folder
        content = json.dumps(machine_content(task, machines))
        (folder / "before.json").write_text(content, encoding="utf-8")
        self.options = ["--machine", "before.json", "--speed", str(task.speed), *task.host]
        self.before = machine_of_file(folder / "before.json")

    def started(self, zorcall, port):
        """Called after the calls that the user makes before the agent starts; a simulated machine is known already."""

    def ended(self):
        """The machine after the host has ended; a killed host leaves no file, so its machine counts as unchanged."""
        path = self.folder_ / "after.json"
        return machine_of_file(path) if path.exists() else self.before


class Images:
    """Disk images that the host changes through the disk service."""

    def __init__(self, task, folder):
        self.folder_ = folder
        self.images_ = [Image(folder / f"disk{number}.img") for number in range(len(task.images))]
        for image, description in zip(self.images_, task.images):
            image.make(description)
        self.options = [word for image in self.images_ for word in ("--image", image.path.name)] + task.host
        self.before = None
        self.read_ = machine_of_images(self.images_, {})

    def started(self, zorcall, port):
        """Reads the letters that the host gave to the partitions."""
        answers = [subprocess.run([zorcall, "--port", str(port), method], stdout=subprocess.PIPE, check=True).stdout
                   for method in ("ListAllDisks", "GetAllPartitionInfo")]
        letters = letters_of(machine_of_inventory(*map(json.loads, answers)))
        for entry in self.read_.partitions:
            entry.letter = letters.get((entry.disk, entry.start), "")
        self.before = self.read_

    def ended(self):
        for image in self.images_:
            image.detach()
        path = self.folder_ / "after.json"
        after = machine_of_images(self.images_, letters_of(machine_of_file(path)) if path.exists() else {})
        for image in self.images_:
            image.path.unlink()
        return after


def to_json(machine):
    return dataclasses.asdict(machine)


def from_json(content):
    disks = [Disk(**{**disk, "entries": [Entry(**entry) for entry in disk["entries"]]}) for disk in content["disks"]]
    return Machine(disks, content["settings"])
