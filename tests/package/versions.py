"""The version of the project is the same everywhere. Only CMakeLists.txt sets it for the programs; each other file that must
contain it is compared. argv[1]: source directory, argv[2]: build directory."""

import json
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree

BUILD = pathlib.Path(sys.argv.pop(2))
SOURCE = pathlib.Path(sys.argv.pop(1))


def text_of(name):
    return (SOURCE / name).read_text(encoding="utf-8")


def json_of(name):
    return json.loads(text_of(name))


def found(pattern, text):
    """All texts of the pattern's group. A pattern that matches nothing would make a comparison vacuous."""
    texts = re.findall(pattern, text, re.MULTILINE)
    assert texts, f"{pattern} matches nothing"
    return texts


VERSION = found(r"^project\(AIBridge VERSION (\d+\.\d+\.\d+) ", text_of("CMakeLists.txt"))[0]


class Versions(unittest.TestCase):
    def check(self, *versions):
        self.assertEqual(set(versions), {VERSION})

    def output(self, *command):
        done = subprocess.run(command, cwd=SOURCE, capture_output=True, text=True, timeout=120, check=True)
        return done.stdout.strip()

    def test_Programs_PrintIt(self):
        for program in ("zorhost", "zorcall"):
            self.assertEqual(self.output(BUILD / "bin" / program, "--version"), f"{program} {VERSION}")
        self.assertEqual(self.output(SOURCE / "scripts/exam", "--version"), f"exam {VERSION}")

    @unittest.skipIf(shutil.which("node") is None, "node is missing")
    def test_DescriptionOfTheGateway_ContainsIt(self):
        self.check(json.loads(self.output("node", "agent/mcp/scripts/manual.js"))["version"])

    def test_FilesOfTheGateway_ContainIt(self):
        lock, server = json_of("agent/mcp/package-lock.json"), json_of("agent/mcp/server.json")
        self.check(json_of("agent/mcp/package.json")["version"], json_of("agent/mcp/manifest.json")["version"],
                   lock["version"], lock["packages"][""]["version"],
                   server["version"], *(package["version"] for package in server["packages"]))

    def test_ManualPages_ContainIt(self):
        pages = list((BUILD / "man").glob("*.1"))
        for page in pages:
            self.check(*found(r'^\.TH "[^"]+" 1 "" "\S+ ([0-9.]+)"', page.read_text(encoding="utf-8")))

    def test_CMakePackage_HasIt(self):
        text = (BUILD / "AIBridgeConfigVersion.cmake").read_text(encoding="utf-8")
        self.check(*found(r'^set\(PACKAGE_VERSION "([0-9.]+)"\)', text))

    def test_Changelogs_NameItAsTheNewestVersion(self):
        self.check(found(r"^aibridge \(([^)]+)\)", text_of("debian/changelog"))[0],
                   found(r"^## (\d[0-9.]*)$", text_of("CHANGELOG.md"))[0])

    def test_DesktopMetadata_NamesItAsTheNewestVersion(self):
        root = xml.etree.ElementTree.fromstring(text_of("host/desktop/io.github.aibridge.zorhost.metainfo.xml"))
        self.check(root.find("releases/release").get("version"))

    def test_DocumentedFileNames_ContainIt(self):
        for name in ("agent/mcp/README.md", "docs/mcp.md", "docs/mcp-clients.md", "docs/packages.md"):
            self.check(*found(r"(?:aibridge|zorhost|zorcall)[a-z-]*[-_](\d+\.\d+\.\d+)(?=\.tgz|\.mcpb|_)", text_of(name)))


if __name__ == "__main__":
    unittest.main()
