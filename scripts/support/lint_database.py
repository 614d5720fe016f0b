#!/usr/bin/env python3
"""Writes a compile database for the linter in which C++ sources share translation
units: most of what the linter does for a source it does for the headers of other
libraries, and that is then done once for several.

usage: lint_database.py COMPILE_COMMANDS FOLDER

Sources of one folder that are compiled alike share a unit. In a unit of tests the
headers of all come first; then each test follows in a namespace of its own, so
that equal names do not meet. Other sources just follow each other; where names
meet, the unit is halved. A source that several programs have is there once.
"""
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES_IN_A_UNIT = 16
COMPILER = "clang++"
INCLUDE = re.compile(r"^#include .*$", re.MULTILINE)
NEIGHBOUR = re.compile(r'"(\w+\.h)"')
# What is right in a source, but not beside others: a name taken into the global
# namespace, and the declaration of what another source defines.
SOLITARY = re.compile(r'^using \w+::|^extern "C"', re.MULTILINE)
OUTPUT = re.compile(r" -o \S+ -c \S+$")
# Options of GCC alone. The linter cannot read a header that GCC has compiled,
# and shall see whether a file includes what it uses.
FOREIGN = re.compile(r" -Winvalid-pch -include \S+| -Wno-maybe-uninitialized")


def is_test(source):
    return source.name.endswith("_test.cpp")


def is_solitary(source):
    return not is_test(source) and SOLITARY.search(source.read_text(encoding="utf-8"))


def includes_of(test):
    """The include lines; a header beside the test is named by its whole path."""
    def whole(found):
        beside = test.parent / found[1]
        return f'"{beside}"' if beside.exists() else found[0]

    return [NEIGHBOUR.sub(whole, line) for line in INCLUDE.findall(test.read_text(encoding="utf-8"))]


def include_source(source):
    """That a unit includes sources is its purpose."""
    return f'#include "{source}"  // NOLINT'


def unit_text(sources):
    if not is_test(sources[0]):
        return "\n".join(map(include_source, sources)) + "\n"
    parts = list(dict.fromkeys(line for test in sources for line in includes_of(test)))
    for number, test in enumerate(sources):
        parts += [f"namespace test_{number} {{", include_source(test), "}"]
    return "\n".join(parts) + "\n"


def compiles(options, directory, text):
    command = [COMPILER, *shlex.split(options)[1:], "-w", "-fsyntax-only", "-x", "c++", "-"]
    return subprocess.run(command, cwd=directory, input=text, text=True, check=False,
                          stderr=subprocess.DEVNULL).returncode == 0


def units_of(options, directory, sources):
    """The sources in as few units as halving finds."""
    if len(sources) == 1:
        return [sources]
    half = (len(sources) + 1) // 2
    if len(sources) <= SOURCES_IN_A_UNIT and compiles(options, directory, unit_text(sources)):
        return [sources]
    return [unit for part in (sources[:half], sources[half:])
            for unit in units_of(options, directory, part)]


def grouped(entries):
    """The sources that may share units, by what they have in common."""
    groups = collections.defaultdict(list)
    for entry in entries:
        source = pathlib.Path(entry["file"])
        options = OUTPUT.sub("", FOREIGN.sub("", entry["command"]))
        kind = source if is_solitary(source) else is_test(source)
        groups[options, entry["directory"], source.parent, kind].append(source)
    return groups


def copy_rules(folder):
    """The linter looks for its rules in the folders above a unit."""
    for rules in ROOT.glob("*/**/.clang-tidy"):
        if rules.is_relative_to(ROOT / "build"):
            continue
        copy = folder / rules.relative_to(ROOT)
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(rules, copy)


def main():
    database, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    shutil.rmtree(folder, ignore_errors=True)
    copy_rules(folder)
    by_file = {entry["file"]: entry for entry in json.loads(database.read_text(encoding="utf-8"))
               if not pathlib.Path(entry["file"]).name.startswith("cmake_pch")}
    entries = [entry for file, entry in by_file.items() if not file.endswith(".cpp")]
    groups = grouped(entry for file, entry in by_file.items() if file.endswith(".cpp"))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        units = pool.map(lambda item: units_of(*item[0][:2], sorted(item[1])), groups.items())
    for (options, directory, place, _), found in zip(groups, units):
        for sources in found:
            source = sources[0]
            if len(sources) > 1:
                source = folder / place.relative_to(ROOT) / f"unit_of_{source.name}"
                source.parent.mkdir(parents=True, exist_ok=True)
                source.write_text(unit_text(sources), encoding="utf-8")
            entries.append({"directory": directory, "file": str(source),
                            "command": f"{options} -c {source}"})
    (folder / "compile_commands.json").write_text(json.dumps(entries, indent=1), encoding="utf-8")


if __name__ == "__main__":
    main()
