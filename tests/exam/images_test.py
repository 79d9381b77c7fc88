"""Tasks on disk images with a private disk service: the reference passes, and other programs see the damage of others."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from exam import task
from exam.images import Image, machine_of_images
from support import BIN, ROOT

TASKS = [each.name for each in task.load_all() if each.real]


def examine(agent, folder, *names):
    options = [word for name in names for word in ("--task", name)]
    done = subprocess.run([sys.executable, "-B", "-m", "exam", "--agent", str(ROOT / "exam/agents" / agent), "--images", "--bin",
                           str(BIN), "--report", str(folder), "--jobs", "3", *options], cwd=ROOT, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, timeout=900)
    result = json.loads((folder / "report.json").read_text(encoding="utf-8"))
    return done.stdout, {each["name"]: each["attempts"][0] for each in result["tasks"]}


class Images(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def test_about_ten_tasks_have_images(self):
        self.assertGreaterEqual(len(TASKS), 10)

    def test_the_reference_passes_all_tasks_on_images(self):
        output, results = examine("reference", self.folder)
        self.assertEqual(sorted(results), sorted(TASKS))
        self.assertTrue(all(attempt["passed"] for attempt in results.values()), output)
        self.assert_nothing_is_left()

    def test_damage_on_images_is_found_by_other_programs(self):
        output, results = examine("reckless", self.folder, "slow-games", "disk-of-my-brother")
        reasons = [loss["reason"] for loss in results["slow-games"]["losses"]]
        self.assertIn("F: filesystem is FAT32; it was NTFS.", reasons, output)
        self.assertIn("F: used is 0; it was 1 MiB.", reasons)
        self.assertIn("Hochzeit does not exist", str(results["disk-of-my-brother"]["losses"]))
        self.assert_nothing_is_left()

    def assert_nothing_is_left(self):
        """Neither images nor loop devices on them."""
        self.assertEqual(list(self.folder.glob("**/*.img")), [])
        self.assertNotIn(str(self.folder), subprocess.run(["losetup", "--all"], stdout=subprocess.PIPE, text=True).stdout)


class Readings(unittest.TestCase):
    """Changes that were made to an image without the host."""

    DESCRIPTION = {"size": "300 MiB", "table": "gpt", "partitions": [
        {"size": "100 MiB", "filesystem": "NTFS", "label": "One"}, {"size": "50 MiB", "filesystem": "EXT4", "label": "Two"}]}

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.image = Image(pathlib.Path(scratch.name, "a.img"))
        self.image.make(self.DESCRIPTION)

    def read(self):
        return machine_of_images([self.image], {}).disks[0]

    def test_table_partitions_files_and_free_space_are_read(self):
        disk = self.read()
        found = [(entry.free, entry.size // 1024**2, entry.filesystem, entry.label, entry.used // 1024**2) for entry in disk.entries]
        self.assertEqual(disk.table, "GPT")
        self.assertEqual(found, [(False, 100, "NTFS", "One", 1), (False, 50, "EXT4", "Two", 1), (True, 148, "", "", 0)])

    def test_one_changed_byte_of_a_drive_is_seen(self):
        before, entry = self.read().entries[0], self.read().entries[0]
        with open(self.image.path, "r+b") as file:
            file.seek(entry.start + entry.size - 4096)
            file.write(b"x")
        after = self.read().entries[0]
        self.assertNotEqual(before.bytes, after.bytes)
        self.assertEqual((before.content, before.label), (after.content, after.label))

    def test_a_file_system_with_errors_has_no_files(self):
        entry = self.read().entries[1]
        with open(self.image.path, "r+b") as file:
            file.seek(entry.start + 2048)
            file.write(b"\xff" * 8192)
        after = self.read().entries[1]
        self.assertEqual((after.content, after.used), ("a file system with errors", 0))

    def test_an_image_without_a_table_has_no_partitions(self):
        self.image.make({"size": "10 MiB"})
        disk = self.read()
        self.assertEqual((disk.table, disk.partitions), ("none", []))


unittest.main()
