#!/usr/bin/env python3
"""Applies the changes of mutations.py to a copy of the sources, one at a time, and runs the test program that must
detect each of them.

Usage: run.py SOURCES COPY [--list] [NAME...]

SOURCES is a git work tree. COPY is a folder for the copy; it keeps its build folder, so that later runs are
incremental. NAMEs select changes; the default is all of them. --list prints the changes and neither copies nor builds.

Exit code 0 if every selected change is detected, 1 if one is not, 2 if a row is invalid or a test program fails
without a change.
"""
import argparse
import collections
import filecmp
import os
import pathlib
import shutil
import subprocess
import sys

from mutations import MUTATIONS

LIBRARY = ("bridge", "recscan", "tools", "inventory", "win11", "telemetry", "service", "plugin", "platform", "closed",
           "hostcheck")
FOLDERS = (*LIBRARY, "host")
OUTCOMES = ("killed", "SURVIVED", "does not build")
TIMEOUT_SECONDS = 300

Mutation = collections.namedtuple("Mutation", "name file old new program")


class InvalidRow(Exception):
    pass


def find_file(root, name):
    """The file with this base name, or with this path below one of the folders."""
    found = [path for folder in FOLDERS for path in sorted((root / folder).rglob(pathlib.Path(name).name))
             if path.as_posix().endswith("/" + name)]
    if len(found) != 1:
        places = ", ".join(str(path.relative_to(root)) for path in found) or "nowhere"
        raise InvalidRow(f"the file {name} must exist exactly once; found: {places}")
    return found[0]


def hint(root, snippet):
    """Names the files that contain a snippet, for a row whose code has moved."""
    found = [str(path.relative_to(root)) for folder in FOLDERS for path in sorted((root / folder).rglob("*"))
             if path.is_file() and snippet in path.read_text()]
    return f"; it is in {', '.join(found)}" if found else ""


def changed_text(root, mutation):
    """The file of a change, its text and the changed text."""
    path = find_file(root, mutation.file)
    text = path.read_text()
    count = text.count(mutation.old)
    if count != 1:
        raise InvalidRow(f"{path.relative_to(root)} must contain the snippet exactly once, not {count} times"
                         + (hint(root, mutation.old) if count == 0 else ""))
    return path, text, text.replace(mutation.old, mutation.new)


def selected(names):
    rows = [Mutation(*row) for row in MUTATIONS]
    known = [row.name for row in rows]
    errors = [f"{name}: the name is used more than once" for name in sorted(set(known)) if known.count(name) > 1]
    errors += [f"{name}: no change has this name" for name in names if name not in known]
    if errors:
        fail(errors)
    return [row for row in rows if not names or row.name in names]


def fail(errors):
    for error in errors:
        print(error, file=sys.stderr)
    sys.exit(2)


def check_rows(root, rows):
    errors = []
    for row in rows:
        try:
            changed_text(root, row)
        except InvalidRow as error:
            errors.append(f"{row.name}: {error}")
    if errors:
        fail(errors)


def update_copy(sources, copy):
    """Makes COPY equal to the tracked files of SOURCES. Unchanged files keep their time, so they are not rebuilt."""
    listing = subprocess.run(["git", "-C", str(sources), "ls-files", "-z"], stdout=subprocess.PIPE, check=True).stdout
    tracked = {name for name in listing.decode().split("\0") if name and (sources / name).is_file()}
    for name in tracked:
        target = copy / name
        if target.is_file() and filecmp.cmp(sources / name, target, shallow=False):
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(sources / name, target)
    # A file that was moved must not be found at its old place.
    for folder, folders, files in os.walk(copy):
        if pathlib.Path(folder) == copy:
            folders[:] = [name for name in folders if not name.startswith("build")]
        for path in (pathlib.Path(folder) / name for name in files):
            if path.relative_to(copy).as_posix() not in tracked:
                path.unlink()


def run(command, folder, **variables):
    return subprocess.run(command, cwd=folder, env=dict(os.environ, **variables), stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, check=False).returncode == 0


def passes(tree, tests):
    """True if the test program passes, or its tests that match the filter; None if it cannot be built."""
    program, _, tests_filter = tests.partition(" ")
    build = tree / "build"
    if not run(["cmake", "--build", str(build), "--target", program], tree):
        return None
    folder = build / "tests" / program
    command = ["timeout", str(TIMEOUT_SECONDS), str(folder / program), "--gtest_brief=1", "--gtest_fail_fast",
               f"--gtest_filter={tests_filter or '*'}"]
    return run(command, folder / "scratch", QT_QPA_PLATFORM="offscreen", AIBRIDGE_BUILD_DIR=str(build),
               AIBRIDGE_SOURCE_DIR=str(tree))


def judge(tree, mutation):
    path, text, changed = changed_text(tree, mutation)
    path.write_text(changed)
    try:
        return {None: "does not build", True: "SURVIVED", False: "killed"}[passes(tree, mutation.program)]
    finally:
        path.write_text(text)


def judge_all(tree, rows):
    """Prints the outcome of each change; returns the folder and the outcome of each."""
    results = []
    for row in rows:
        outcome = judge(tree, row)
        results.append((find_file(tree, row.file).relative_to(tree).parts[0], outcome))
        print(f"{outcome:14}  {row.name} ({row.program})", flush=True)
    return results


def print_summary(results):
    print(f"\n{'folder':10}  {'changes':>7}  " + "  ".join(f"{outcome:>14}" for outcome in OUTCOMES))
    for folder in [*FOLDERS, "all"]:
        outcomes = [outcome for place, outcome in results if folder in (place, "all")]
        if outcomes:
            print(f"{folder:10}  {len(outcomes):7}  "
                  + "  ".join(f"{outcomes.count(outcome):14}" for outcome in OUTCOMES))


def print_rows(root, rows):
    for row in rows:
        print(f"{find_file(root, row.file).relative_to(root)}  {row.program}  {row.name}")


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutations", usage="%(prog)s [--list] [NAME...]",
                                     description="Verifies that the tests detect small changes of the sources.")
    parser.add_argument("sources", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("copy", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("--list", action="store_true", help="print file, test program and name of each change")
    parser.add_argument("names", metavar="NAME", nargs="*", help="a change; default: all changes")
    arguments = parser.parse_intermixed_args()
    sources, tree = arguments.sources.resolve(), arguments.copy.resolve()
    rows = selected(arguments.names)
    check_rows(sources, rows)
    if arguments.list:
        print_rows(sources, rows)
        return 0
    update_copy(sources, tree)
    subprocess.run(["cmake", "--preset", "default"], cwd=tree, stdout=subprocess.DEVNULL, check=True)
    # A program that fails without a change would report every change as detected.
    broken = [program for program in sorted({row.program for row in rows}) if not passes(tree, program)]
    if broken:
        fail([f"{program} fails without a change" for program in broken])
    results = judge_all(tree, rows)
    print_summary(results)
    return 0 if all(outcome == "killed" for _, outcome in results) else 1


sys.exit(main())
