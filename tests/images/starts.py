"""Starts of zorhost on a disk image that fail with one line and exit code 2. usage: starts.py BIN_DIR"""

import pathlib
import shutil
import unittest

import images
from images import LIMIT_SECONDS, Image, ImageTest, start

NOBODY = 65534


class FailedStart(ImageTest):
    mebibytes = 32

    def line_of(self, *arguments, user=None):
        """The only line of a start that must fail."""
        log = self.folder / "failed.log"
        process = start(["--headless", *arguments], self.folder, log, user=user)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.assertEqual(process.wait(LIMIT_SECONDS), 2, log.read_text())
        lines = log.read_text().splitlines()
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith("zorhost: "), lines)
        return lines[0]

    def test_UnreadableImage_IsReportedToAnOrdinaryUser(self):
        programs = self.folder / "bin"
        programs.mkdir()
        for name in ("zorhost", "AIBridge.so", "libZorLog.so", "libUIUtility.so", "libLLFProc.so", "components.ini"):
            shutil.copy(images.BIN / name, programs)
        self.folder.chmod(0o755)
        self.image.path.chmod(0o600)
        self.addCleanup(setattr, images, "BIN", images.BIN)
        images.BIN = programs
        self.assertEqual(self.line_of("--image", str(self.image.path), user=NOBODY),
                         f"zorhost: {self.image.path}: Permission denied")
        self.assertEqual(self.image.loop_device(), "")

    def test_SecondHostOnTheSameImage_IsRejectedAndTheFirstGoesOn(self):
        host = self.start_host()
        loop = self.image.loop_device()
        self.assertEqual(self.line_of("--image", str(self.image.path)),
                         f"zorhost: {self.image.path}: the image is already open in another host or program")
        self.assertEqual(self.image.loop_device(), loop)
        host.carry_out("InitializeDiskToGpt", "diskIndex=0")

    def test_ImageAttachedByAnotherProgram_IsRejectedAndStaysAttached(self):
        images.run("losetup", "--find", str(self.image.path))
        loop = self.image.loop_device()
        images.run("udevadm", "settle")
        self.assertRegex(self.line_of("--image", str(self.image.path)),
                         f"a disk.img: another program has attached the image as {loop}\\b")
        self.assertEqual(self.image.loop_device(), loop)

    def test_FileSystemWithoutATable_IsReportedAndStays(self):
        images.run("mkfs.ext4", "-q", "-F", str(self.image.path))
        before = self.image.digest(0, self.image.path.stat().st_size)
        line = self.line_of("--image", str(self.image.path))
        self.assertTrue(line.startswith(f"zorhost: {self.image.path}: "), line)
        self.assertIn("a file system without a partition table", line)
        self.until_detached()
        self.assertEqual(self.image.digest(0, self.image.path.stat().st_size), before)

    def test_SecondImageRejected_DetachesBoth(self):
        second = Image(self.folder / "second.img", self.mebibytes)
        self.addCleanup(second.detach)
        images.run("mkfs.ext4", "-q", "-F", str(second.path))
        self.line_of("--image", str(self.image.path), "--image", str(second.path))
        self.until_detached()
        images.until(lambda: not second.loop_device(), "the detached second image")

    def test_DeviceWithAMountedPartition_IsRefusedAndStaysAsItIs(self):
        size = self.image.path.stat().st_size
        images.run("sh", "-c", f"printf 'label: gpt\nsize=16MiB\n' | sfdisk -q '{self.image.path}'")
        images.run("mkfs.ext4", "-q", "-F", "-E", "offset=1048576", str(self.image.path), "16M")
        images.run("udisksctl", "loop-setup", "--no-user-interaction", "--file", str(self.image.path))
        device = self.image.loop_device()
        folder = self.folder / "mounted"
        folder.mkdir()
        images.until(lambda: pathlib.Path(device + "p1").exists(), "the partition")
        # Mounting leaves the file system as it is.
        images.run("mount", "-o", "ro,noload", device + "p1", str(folder))
        try:
            before = self.image.digest(0, size)
            self.assertEqual(self.line_of("--device", device),
                             f"zorhost: {device}p1 holds a mounted file system ({folder}).")
            self.assertEqual(self.image.digest(0, size), before)
        finally:
            images.run("umount", str(folder))
        self.assertEqual(self.image.loop_device(), device)

    def test_WrongKindOfDisk_IsNamed(self):
        path = str(self.image.path)
        self.assertEqual(self.line_of("--device", path), f"zorhost: {path}: a regular file; use --image")
        self.assertEqual(self.line_of("--image", path, "--image", path), f"zorhost: {path}: named twice")
        self.assertEqual(self.line_of("--device", "/dev/null"), "zorhost: /dev/null: not an existing block device")
        images.run("udisksctl", "loop-setup", "--no-user-interaction", "--file", path)
        device = self.image.loop_device()
        self.assertEqual(self.line_of("--image", device), f"zorhost: {device}: a block device; use --device")


if __name__ == "__main__":
    unittest.main()
