"""scripts/windows/toolchain with archives: a small folder instead of a toolchain, a compiler that only prints its version,
and package tools that do not install anything. argv[1]: source directory."""

import os
import pathlib
import subprocess
import sys
import tarfile
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
PACKED_AT = "/somewhere/else//"
PROGRAMS = {
    "x86_64-w64-mingw32-g++-posix": "echo 12",
    "dpkg-query": "echo install ok installed",
    "apt-get": "exit 1",
}
EMPTY_FILES = (
    "qt/bin/Qt5Quick.dll qt/bin/Qt5QuickControls2.dll qt/plugins/platforms/qwindows.dll thrift/lib/libthrift.a "
    "qt/qml/QtQuick/Layouts/qquicklayoutsplugin.dll googletest/lib/libgmock.a boost/boost/version.hpp "
    "bin/x86_64-w64-mingw32-g++"
).split()


def write(path, content, mode=0o644):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content if isinstance(content, bytes) else content.encode())
    path.chmod(mode)


class ToolchainArchive(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name).resolve()
        for name, body in PROGRAMS.items():
            write(self.scratch / "programs" / name, "#!/bin/sh\n" + body + "\n", 0o755)
        self.cache = self.scratch / "cache"
        self.archives = self.scratch / "archives"
        self.archives.mkdir()
        self.dir = pathlib.Path(self.run_toolchain("--path").stdout.strip())
        self.name = self.dir.name

    def run_toolchain(self, *arguments, cache=None, archives=None):
        environment = dict(
            os.environ,
            PATH=f"{self.scratch}/programs:{os.environ['PATH']}",
            AIBRIDGE_WINDOWS_CACHE=str(cache or self.cache),
            AIBRIDGE_WINDOWS_ARCHIVES=str(archives or self.archives),
        )
        return subprocess.run(
            [SOURCE / "scripts/windows/toolchain", *arguments],
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            timeout=100,
            check=False,
        )

    # A folder that passes the toolchain's check at its packed path. changes: file name to content, None to omit the file.
    def make_archive(self, **changes):
        folder = self.scratch / "made" / self.name
        place = PACKED_AT + self.name
        files = {name: "x" for name in EMPTY_FILES}
        files["qt/bin/moc"] = "#!/bin/sh\nexit 0\n"
        files["qt/bin/Qt5Core.dll"] = b"\0\1" + place.encode() + b"/qt\0rest"
        files["thrift/lib/pkgconfig/thrift.pc"] = f"prefix={place}/thrift\nlibdir={place}/thrift/lib\n"
        files["qt/lib/Qt5Core.prl"] = f"LIBS = -L{place}/qt/lib {place}/qt/lib/a.a\n"
        files["complete"] = ""
        files.update(changes)
        for name, content in files.items():
            if content is not None:
                write(folder / name, content, 0o755 if name == "qt/bin/moc" else 0o644)
        archive = self.archives / (self.name + ".tar.xz")
        with tarfile.open(archive, "w:xz") as tar:
            tar.add(folder, self.name)
        return archive

    def assert_builds(self, result):
        self.assertIn("building the toolchain", result.stdout)
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(self.run_toolchain("--check").returncode, 1)
        self.assertEqual(list(self.cache.glob("unpack.*")), [])

    def test_archive_is_unpacked_and_its_text_files_receive_the_local_path(self):
        self.make_archive()
        result = self.run_toolchain()
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertNotIn("building", result.stdout)
        self.assertEqual(self.run_toolchain("--check").returncode, 0)
        self.assertEqual(
            (self.dir / "qt/lib/Qt5Core.prl").read_text(), f"LIBS = -L{self.dir}/qt/lib {self.dir}/qt/lib/a.a\n"
        )
        core = b"\0\1" + (PACKED_AT + self.name).encode() + b"/qt\0rest"
        self.assertEqual((self.dir / "qt/bin/Qt5Core.dll").read_bytes(), core)
        self.assertIn("cached", self.run_toolchain().stdout)

    def test_missing_archive_starts_a_build(self):
        self.assert_builds(self.run_toolchain())

    def test_archive_of_another_recipe_is_ignored(self):
        self.make_archive().rename(self.archives / "qt5-of-another-recipe.tar.xz")
        self.assert_builds(self.run_toolchain())

    def test_archive_with_a_missing_file_is_ignored(self):
        self.make_archive(**{"googletest/lib/libgmock.a": None})
        self.assert_builds(self.run_toolchain())

    def test_archive_whose_programs_do_not_start_is_ignored(self):
        self.make_archive(**{"qt/bin/moc": "#!/no/such/interpreter\n"})
        self.assert_builds(self.run_toolchain())

    def test_archive_without_its_packed_path_is_ignored(self):
        self.make_archive(**{"thrift/lib/pkgconfig/thrift.pc": "prefix=thrift\n"})
        self.assert_builds(self.run_toolchain())

    def test_truncated_archive_is_ignored(self):
        archive = self.make_archive(**{"qt/doc": os.urandom(100000)})
        archive.write_bytes(archive.read_bytes()[:50000])
        self.assert_builds(self.run_toolchain())

    def test_unpack_does_not_start_a_build(self):
        result = self.run_toolchain("--unpack")
        self.assertEqual(result.returncode, 1)
        self.assertNotIn("building", result.stdout)

    def test_pack_removes_local_paths_and_unpacks_elsewhere(self):
        self.make_archive()
        self.run_toolchain()
        write(self.dir / "logs/secret.log", "x")
        packed = self.scratch / "packed"
        result = self.run_toolchain("--pack", str(packed))
        self.assertEqual(result.returncode, 0, result.stdout)
        with tarfile.open(packed / (self.name + ".tar.xz")) as tar:
            members = tar.getmembers()
            contents = {member.name: tar.extractfile(member).read() for member in members if member.isfile()}
        for name, content in contents.items():
            for path in (str(self.scratch), str(self.cache), PACKED_AT):
                self.assertNotIn(path.encode(), content, name)
        self.assertEqual({(member.uid, member.gid, member.uname, member.mtime) for member in members}, {(0, 0, "", 0)})
        self.assertFalse([name for name in contents if "/logs/" in name or name.endswith("/lock")])
        core = self.name + "/qt/bin/Qt5Core.dll"
        self.assertEqual(len(contents[core]), (self.dir / "qt/bin/Qt5Core.dll").stat().st_size)
        elsewhere = self.scratch / "elsewhere"
        result = self.run_toolchain(cache=elsewhere, archives=packed)
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertEqual(
            (elsewhere / self.name / "thrift/lib/pkgconfig/thrift.pc").read_text(),
            f"prefix={elsewhere}/{self.name}/thrift\nlibdir={elsewhere}/{self.name}/thrift/lib\n",
        )

    def test_pack_is_reproducible(self):
        self.make_archive()
        self.run_toolchain()
        archives = []
        for name in ("first", "second"):
            self.run_toolchain("--pack", str(self.scratch / name))
            archives.append((self.scratch / name / (self.name + ".tar.xz")).read_bytes())
        self.assertEqual(archives[0], archives[1])

    def test_pack_rejects_an_incomplete_toolchain(self):
        self.assertEqual(self.run_toolchain("--pack", str(self.scratch)).returncode, 2)


unittest.main()
