"""Command lines of scripts/run for disk images that end before anything is installed or built. argv[1]: source directory."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))


class RunOnAnImage(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def check(self, line, *arguments):
        """The command must end with 2 and this line on standard error, and create no file."""
        files = sorted(self.folder.iterdir())
        done = subprocess.run([SOURCE / "scripts/run", *arguments], cwd=self.folder, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=100, check=False)
        self.assertEqual((done.returncode, done.stderr, done.stdout), (2, line + "\n", ""))
        self.assertEqual(sorted(self.folder.iterdir()), files)

    def test_MissingFileWithoutASize_NamesTheOption(self):
        self.check("run-image: new.img does not exist. Option --size creates it, for example --size 4G.",
                   "--image", "new.img")

    def test_SizeOfAnExistingFile_IsRejected(self):
        (self.folder / "old disk.img").write_bytes(b"content")
        self.check("run-image: old disk.img already exists. Omit --size to use it.",
                   "--image", "old disk.img", "--size", "1G")
        self.assertEqual((self.folder / "old disk.img").read_bytes(), b"content")

    def test_InvalidSizes_AreRejected(self):
        for size in ("4", "4X", "0G", "-4G", "+4G", "4.5G", "G", "4GB"):
            self.check("run-image: Option --size needs a whole number with M, G or T, for example 4G.",
                       "--image", "new.img", "--size", size)

    def test_FolderOrDevice_IsRejected(self):
        self.check("run-image: . is a folder, not a disk image.", "--image", ".")
        self.check("run-image: /dev/null is not a regular file.", "--image", "/dev/null")

    def test_OptionsOfTheSimulation_AreRejected(self):
        for option in ("--all", "--scan", "--mcp"):
            self.check(f"run: Options --image and {option} exclude each other.", "--image", "new.img", option)
        self.check("run: Options --image and --machine exclude each other.", "--machine", "laptop", "--image", "new.img")
        self.check("run: Option --size needs --image.", "--size", "4G")
        self.check("run: Option --image names one file.", "--image", "a.img", "--image", "b.img")
        self.check("run: Option --image needs a file.", "--image")


if __name__ == "__main__":
    unittest.main()
