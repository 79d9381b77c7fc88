"""The manual pages: each has the sections and the options of the program's --help, and groff accepts it."""

import pathlib
import re
import shutil
import subprocess
import sys

OPTION = re.compile(r"(?<![\w-])--[a-z][a-z0-9-]*")
SECTIONS = ["NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS"]


def output(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120, check=True)
    return done.stdout, done.stderr


def check(name, page, program):
    text, warnings = output("groff", "-man", "-Tascii", "-ww", "-P-cbou", str(page))
    if warnings:
        sys.exit(f"{page}: groff warns: {warnings}")
    headings = re.findall(r"^[A-Z][A-Z ]+$", text, re.MULTILINE)
    if headings[:4] != SECTIONS or headings[-1] != "SEE ALSO":
        sys.exit(f"{page}: its sections are {headings}")
    if not re.search(rf"NAME {name} - \w", " ".join(text.split())):
        sys.exit(f"{page}: the line for whatis(1) is missing:\n{text[:300]}")
    expected = set(OPTION.findall(output(*program, "--help")[0]))
    found = set(OPTION.findall(text))
    if not expected or expected != found:
        sys.exit(f"{page}: differs from --help in {sorted(expected ^ found)}")
    source = page.read_text(encoding="utf-8")
    if re.search(r"/(home|root|work|tmp)/|20\d\d", source):
        sys.exit(f"{page}: contains a path of this machine or a date")


def main():
    name, page, *program = sys.argv[1:]
    if shutil.which("groff") is None:
        print("skipped: groff is missing (scripts/test installs it)")
        sys.exit(77)
    check(name, pathlib.Path(page), program)


if __name__ == "__main__":
    main()
