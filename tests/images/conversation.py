"""The sample agent of scripts/run --image, and the reports of independent programs. usage: conversation.py BIN_DIR"""

import pathlib
import unittest

from images import LIMIT_SECONDS, MIB, ImageTest, run, start

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "lib"


class Conversation(ImageTest):
    def hold(self):
        """The exit code of the agent, and the log of host and agent."""
        log = self.folder / "host.log"
        host = start(["--image", str(self.image.path), "--headless", "--agent", f"'{SCRIPTS}/agent-disks'",
                      "--exit-with-agent"], self.folder, log)
        self.addCleanup(host.wait)
        self.addCleanup(host.kill)
        code = host.wait(2 * LIMIT_SECONDS)
        self.until_detached()
        return code, log.read_text()

    def test_ImageWithAPartition_KeepsItAndGetsThreeMore(self):
        run("sh", "-c", 'echo "size=100MiB" | sfdisk -q -X gpt "$0"', str(self.image.path))
        run("mkfs.ext4", "-q", "-F", "-L", "Mine", "-E", f"offset={MIB}", str(self.image.path), "100M")
        before = self.image.digest(MIB, 100 * MIB)
        code, log = self.hold()
        self.assertEqual(code, 0, log)
        self.assertRegex(log, r"rejected MergePartitions .*: [A-Z].*\.\n")
        self.assertEqual(self.image.layout(), [(1, 100, "ext4", "Mine"), (101, 59, "ntfs", "Last"),
                                               (160, 40, "exfat", "Third"), (200, 99, "ext4", "Overwritten")])
        self.assertEqual(self.image.digest(MIB, 100 * MIB), before)
        report = run(str(SCRIPTS / "disk-reports"), str(self.image.path))
        self.assertEqual(report.count("        exit code 0\n"), 4, report)

    def test_ExistingImageWithoutATable_IsNotInitialised(self):
        code, log = self.hold()
        self.assertEqual(code, 1, log)
        self.assertIn("The image has no partition table.", log)
        self.assertTrue(self.image.is_zero(0, self.mebibytes * MIB))


if __name__ == "__main__":
    unittest.main()
