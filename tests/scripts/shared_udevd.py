"""udevd is shared by the private disk services of a computer, with a fake udevd in folders of the test."""
import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = sys.argv.pop()
SERVICE = """
set -euo pipefail
. "$1/scripts/lib/disk-service/udevd.sh"
start_udevd "$FOLDER/log" "" || { echo failed; exit 1; }
echo started
read -r line || true
stop_udevd
echo stopped
"""
UDEVD = """#!/bin/sh
mkdir -p "$FOLDER/udev/watch" && : >"$FOLDER/udev/control"
ls "$FOLDER/udev/watch" >>"$FOLDER/watches"
ln -s b7:0 "$FOLDER/udev/watch/1"
echo $$ >"$FOLDER/running"
echo start >>"$FOLDER/starts"
exec sleep 600
"""
UDEVADM = """#!/bin/sh
kill -0 "$(cat "$FOLDER/running")"
"""
LIMIT = 60


class SharedUdevd(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = scratch.name
        for name, text in (("udevd", UDEVD), ("udevadm", UDEVADM)):
            path = os.path.join(self.folder, name)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
            os.chmod(path, 0o755)
        self.environment = dict(
            os.environ, FOLDER=self.folder, PATH=self.folder + ":" + os.environ["PATH"], UDEVD=self.path("udevd"),
            UDEVD_STATE=self.path("state"), UDEVD_FOLDERS=self.path("udev") + " " + self.path("other"))
        self.addCleanup(self.end_udevd)

    def path(self, name):
        return os.path.join(self.folder, name)

    def is_running(self):
        return subprocess.run(["udevadm"], env=self.environment, stderr=subprocess.DEVNULL).returncode == 0

    def end_udevd(self):
        if self.is_running():
            with open(self.path("running"), encoding="utf-8") as file:
                os.kill(int(file.read()), signal.SIGKILL)

    def start(self):
        service = subprocess.Popen(["bash", "-c", SERVICE, "service", ROOT], env=self.environment, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(service.stdout.close)
        self.addCleanup(service.stdin.close)
        self.addCleanup(service.kill)
        self.assertEqual(service.stdout.readline(), "started\n")
        return service

    def stop(self, service):
        service.stdin.write("\n")
        service.stdin.flush()
        self.assertEqual(service.stdout.readline(), "stopped\n")
        self.assertEqual(service.wait(LIMIT), 0)

    def starts(self):
        with open(self.path("starts"), encoding="utf-8") as file:
            return len(file.readlines())

    def test_the_last_service_ends_udevd_and_removes_its_folders(self):
        first, second = self.start(), self.start()
        self.assertEqual(self.starts(), 1)
        self.stop(first)
        self.assertTrue(self.is_running())
        self.stop(second)
        self.assertFalse(self.is_running())
        self.assertFalse(os.path.exists(self.path("udev")))

    def test_a_killed_service_does_not_keep_udevd(self):
        first, second = self.start(), self.start()
        first.kill()
        first.wait(LIMIT)
        self.assertTrue(self.is_running())
        self.stop(second)
        self.assertFalse(self.is_running())

    def test_a_udevd_of_the_system_is_used_and_stays(self):
        system = subprocess.Popen([self.path("udevd")], env=self.environment)
        self.addCleanup(system.wait)
        self.addCleanup(system.kill)
        deadline = time.monotonic() + LIMIT
        while not self.is_running():
            self.assertLess(time.monotonic(), deadline)
        self.stop(self.start())
        self.assertTrue(self.is_running())
        self.assertTrue(os.path.exists(self.path("udev")))
        self.assertEqual(self.starts(), 1)

    def test_a_folder_that_existed_stays(self):
        os.mkdir(self.path("other"))
        self.stop(self.start())
        self.assertTrue(os.path.exists(self.path("other")))
        self.assertFalse(os.path.exists(self.path("udev")))

    def test_udevd_starts_without_the_watches_of_an_earlier_one(self):
        os.makedirs(self.path("udev/watch.old"))
        os.symlink("b7:1", self.path("udev/watch.old/2"))
        self.stop(self.start())
        self.stop(self.start())
        self.assertEqual(self.starts(), 2)
        self.assertTrue(os.path.exists(self.path("udev")))
        self.assertFalse(os.path.exists(self.path("udev/watch.old")))
        with open(self.path("watches"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "")


if __name__ == "__main__":
    unittest.main()
