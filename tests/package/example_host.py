"""The README's commands for a host, as typed: they install the build, build the example host and start it; an agent's call
reaches its page. The README's lines for a host's own code are compiled as well.

argv[1]: source directory, argv[2]: build directory, argv[3]: scratch directory
"""

import os
import pathlib
import shutil
import subprocess
import sys
import unittest

SCRATCH = pathlib.Path(sys.argv.pop(3))
BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))
DEPLOYED = ["AIBridge.so", "components.ini", "libLLFProc.so", "libUIUtility.so", "libZorLog.so"]
OWN_HOST = """cmake_minimum_required(VERSION 3.25)
project(OwnHost LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
add_executable(myhost main.cpp)
"""


def blocks(section):
    """The indented blocks of a section of the README, without their indentation."""
    text = (SOURCE / "README.md").read_text(encoding="utf-8")
    lines = text[text.index(f"\n## {section}\n"):].split("\n")[2:]
    found = [[]]
    for line in lines[:next(i for i, line in enumerate(lines) if line.startswith("## "))]:
        if line.startswith("    "):
            found[-1].append(line[4:])
        elif line or not found[-1]:
            found.append([])
        else:
            found[-1].append("")
    return ["\n".join(block).strip() for block in found if block]


class ExampleHost(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(SCRATCH, ignore_errors=True)
        cls.root = SCRATCH / "check out"
        (cls.root / "build").mkdir(parents=True)
        (cls.root / "examples").symlink_to(SOURCE / "examples")
        # The commands may write only into folders of the scratch directory.
        for entry in BUILD.iterdir():
            if entry.name not in ("installed", "example"):
                (cls.root / "build" / entry.name).symlink_to(entry)
        cls.commands, cls.call, cls.cmake, cls.code = blocks("Load it in a host")
        # The test's own build has made the files, and another ninja must not run in its folder.
        commands = cls.commands.split("\n")
        assert commands[0] == "cmake --build build --target distribution", commands[0]
        assert commands[-1] == "build/example/examplehost", commands[-1]
        cls.run_command("\n".join(commands[1:-1]), cls.root)

    @staticmethod
    def run_command(command, folder):
        done = subprocess.run(["sh", "-e", "-c", command], cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, timeout=800, check=False)
        if done.returncode != 0:
            raise AssertionError(f"{command}\nexit code {done.returncode}\n{done.stdout}")
        return done.stdout

    def test_CallOfAnAgent_ReachesThePage(self):
        self.assertEqual(self.call, "build/bin/zorcall --gated --patient ChangePartitionLabel driveLetter=D newLabel=Renamed")
        self.run_command(f"'{SOURCE}/tests/package/call-example-host' build/bin/zorcall {self.commands.split()[-1]}",
                         self.root)

    def test_Deployment_CopiesTheComponentItsLibrariesAndTheIni(self):
        for name in DEPLOYED:
            self.assertTrue((self.root / "build/example" / name).is_file(), name)

    def test_Deployment_KeepsAnIniOfTheHost(self):
        ini = self.root / "build/example/components.ini"
        original = ini.read_bytes()
        self.addCleanup(ini.write_bytes, original)
        ini.write_text("[COMPONENT7]\nname=Own\n")
        (self.root / "build/example/examplehost").unlink()
        self.run_command("cmake --build build/example", self.root)
        self.assertEqual(ini.read_text(), "[COMPONENT7]\nname=Own\n")

    def test_LinesForOwnCode_BuildAHostThatLoadsTheComponent(self):
        folder = SCRATCH / "own host"
        folder.mkdir()
        (folder / "CMakeLists.txt").write_text(OWN_HOST + self.cmake + "\n")
        lines = self.code.split("\n")
        includes = [line for line in lines if line.startswith("#")]
        body = "\n".join(line for line in lines if not line.startswith("#"))
        (folder / "main.cpp").write_text("\n".join([
            *includes, "#include <QGuiApplication>", "#include <QQmlApplicationEngine>", "#include <cstdio>",
            "int main(int argc, char** argv) {", "QGuiApplication application(argc, argv);", body,
            # Without the release, which would have to wait for the service.
            'std::puts(components.component("AIBridge") != nullptr ? "loaded" : "not loaded");',
            "std::fflush(stdout);", "std::_Exit(0);", "}", ""]))
        self.run_command(f"cmake -S . -B build -D CMAKE_PREFIX_PATH='{self.root}/build/installed'"
                         " && cmake --build build", folder)
        output = self.run_command("QT_QPA_PLATFORM=offscreen build/myhost 2>/dev/null", folder)
        self.assertEqual(output, "loaded\n")


if __name__ == "__main__":
    unittest.main()
