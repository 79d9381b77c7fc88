#!/usr/bin/env python3
"""Updates the catalogues from the sources: adds new texts and removes obsolete ones.

usage: update.py LUPDATE [FOLDER]    FOLDER contains the catalogues (default: this file's folder)

New texts are unfinished in every language except English, which uses the source texts. Plural forms are written by hand in
English as well.
"""
import subprocess
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LANGUAGES = ("en", "de")
# The catalogues of the library, for every host, and of the sandbox host's window.
SOURCES = {
    "aibridge": ("bridge", "inventory", "plugin", "recscan", "service", "telemetry", "tools", "win11"),
    "zorhost": ("host",),
}


def catalogue(folder, name, language):
    return folder / f"{name}_{language}.ts"


def update(lupdate, folder):
    for name, folders in SOURCES.items():
        files = [str(catalogue(folder, name, language)) for language in LANGUAGES]
        present = [entry for entry in folders if (ROOT / entry).is_dir()]
        options = ["-no-obsolete", "-locations", "none", "-no-ui-lines", "-source-language", "en"]
        subprocess.run([lupdate, *options, *present, "-ts", *files], cwd=ROOT, check=True)


def complete_english(file):
    tree = xml.parse(file)
    tree.getroot().set("language", "en")
    for message in tree.iter("message"):
        translation = message.find("translation")
        if message.get("numerus") != "yes":
            translation.text = message.findtext("source")
            translation.attrib.pop("type", None)
    body = xml.tostring(tree.getroot(), encoding="unicode")
    file.write_text(f'<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n{body}\n', encoding="utf-8")


def main():
    folder = Path(sys.argv[2]) if len(sys.argv) > 2 else ROOT / "translations"
    update(sys.argv[1], folder.resolve())
    for name in SOURCES:
        complete_english(catalogue(folder, name, "en"))


if __name__ == "__main__":
    main()
