"""Starts of zorhost on a disk image that fail with one line and exit code 2. usage: starts.py BIN_DIR"""

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


if __name__ == "__main__":
    unittest.main()
