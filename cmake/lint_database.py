#!/usr/bin/env python3
"""Writes a compile database for the linter in which the tests of one program
share translation units: most of what the linter does for a test it does for
GoogleTest's headers, and that is then done once for several tests. A source that
several programs have is there once: the linter would do it once for each.

usage: lint_database.py COMPILE_COMMANDS FOLDER

In a unit the headers of all its tests come first; then each test follows in a
namespace of its own, so that equal names do not meet.
"""
import collections
import json
import pathlib
import re
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TESTS_IN_A_UNIT = 16
INCLUDE = re.compile(r"^#include .*$", re.MULTILINE)
NEIGHBOUR = re.compile(r'"(\w+\.h)"')
OUTPUT = re.compile(r" -o \S+ -c \S+$")
# Options of GCC alone. The linter cannot read a header that GCC has compiled,
# and shall see whether a file includes what it uses.
FOREIGN = re.compile(r" -Winvalid-pch -include \S+| -Wno-maybe-uninitialized")


def includes_of(test):
    """The include lines; a header beside the test is named by its whole path."""
    def whole(found):
        beside = test.parent / found[1]
        return f'"{beside}"' if beside.exists() else found[0]

    return [NEIGHBOUR.sub(whole, line) for line in INCLUDE.findall(test.read_text(encoding="utf-8"))]


def unit_text(tests):
    """The unit of several tests. That it includes sources is its purpose."""
    parts = list(dict.fromkeys(line for test in tests for line in includes_of(test)))
    for number, test in enumerate(tests):
        parts += [f"namespace test_{number} {{", f'#include "{test}"  // NOLINT', "}"]
    return "\n".join(parts) + "\n"


def main():
    database, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    shutil.rmtree(folder, ignore_errors=True)
    entries = []
    groups = collections.defaultdict(list)
    every_file = {entry["file"]: entry for entry in json.loads(database.read_text(encoding="utf-8"))}
    for entry in every_file.values():
        file = pathlib.Path(entry["file"])
        entry["command"] = FOREIGN.sub("", entry["command"])
        if file.name.startswith("cmake_pch"):
            continue
        if file.name.endswith("_test.cpp"):
            options = OUTPUT.sub("", entry["command"])
            groups[options, entry["directory"]].append(file)
        else:
            entries.append(entry)
    # The linter looks for its rules in the folders above a file.
    (folder / "tests").mkdir(parents=True)
    shutil.copy(ROOT / "tests/.clang-tidy", folder / "tests")
    for number, ((options, directory), tests) in enumerate(groups.items()):
        for start in range(0, len(tests), TESTS_IN_A_UNIT):
            unit = folder / f"tests/unit_{number}_{start}.cpp"
            unit.write_text(unit_text(tests[start:start + TESTS_IN_A_UNIT]), encoding="utf-8")
            entries.append({"directory": directory, "file": str(unit),
                            "command": f"{options} -c {unit}"})
    (folder / "compile_commands.json").write_text(json.dumps(entries, indent=1), encoding="utf-8")


if __name__ == "__main__":
    main()
