"""Compares the option table of a document with --help.

usage: options.py BIN_DIR DOCUMENT
"""

import pathlib
import re
import subprocess
import sys


def documented(document):
    """The options in the first cells of the table below the heading."""
    text = pathlib.Path(document).read_text(encoding="utf-8")
    section = text[text.index("\n## Options\n"):]
    table = re.search(r"^\|[ -|]*-\|\n((?:\|.*\n)+)", section, re.MULTILINE)
    return {name for line in table.group(1).splitlines() for name in re.findall(r"`(--[\w-]+)", line.split("|")[1])}


def offered(bin_dir):
    text = subprocess.run([f"{bin_dir}/zorhost", "--help"], stdout=subprocess.PIPE, text=True, check=True).stdout
    return set(re.findall(r"^  (?:-\w, )?(--[\w-]+)", text, re.MULTILINE))


def main():
    bin_dir, document = sys.argv[1:]
    table, options = documented(document), offered(bin_dir)
    if not options or table != options:
        sys.exit(f"not documented: {sorted(options - table)}\nnot an option: {sorted(table - options)}")
    print(f"{len(options)} options")


main()
