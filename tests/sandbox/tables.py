"""Compares the tables of the documents with the program.

usage: tables.py functions HEADER DOCUMENT    the rows of the function table with the enumeration, in its order
"""

import pathlib
import re
import sys


def rows(document, heading):
    """The first cell of each row of the first table after the heading."""
    text = pathlib.Path(document).read_text(encoding="utf-8")
    section = text[text.index(f"\n## {heading}\n"):]
    table = re.search(r"^\|[ -|]*-\|\n((?:\|.*\n)+)", section, re.MULTILINE)
    return [line.split("|")[1].strip() for line in table.group(1).splitlines()]


def documented_functions(document):
    return [row.strip("`") for row in rows(document, "Functions")]


def functions_of(header):
    body = re.search(r"enum class Function : int \{(.*?)\};", pathlib.Path(header).read_text(encoding="utf-8"), re.DOTALL)
    return re.findall(r"^\s*(\w+)", body.group(1), re.MULTILINE)


def main():
    kind, program, document = sys.argv[1:]
    documented, actual = {"functions": (documented_functions, functions_of)}[kind]
    documented, actual = documented(document), actual(program)
    missing = [name for name in actual if name not in documented]
    unknown = [name for name in documented if name not in actual]
    if missing or unknown or not actual:
        sys.exit(f"missing in {document}: {missing}\nnot in {program}: {unknown}")
    if documented != actual:
        sys.exit(f"{document} has another order than {program}: {documented}")
    print(f"{len(actual)} {kind}")


main()
