#!/usr/bin/env python3
"""Does every file include from its own folder and lower floors alone?

usage: check_floors.py [ROOT]

docs/floors.txt has the floors. Fails, too, on a folder with more than 25 files,
and on one with sources that no floor has.
"""
import collections
import os
import pathlib
import re
import sys

MOST_FILES = 25
CROWDED = ("fuzz/corpus/",)
CHECKED = ("bench", "host", "include", "memory", "platform", "simd", "state", "tools", "transfer",
           "world")
SOURCES = (".c", ".cpp", ".h")
INCLUDE = re.compile(r'\s*#\s*include\s+"([^"]+)"')
PUBLIC = ("include", *(f"host/{name}/include" for name in ("K", "Q", "QDE", "TRC", "TXT", "vetrix")))


def own_files(root):
    """All files, without what is built and what Git keeps."""
    for folder, folders, names in os.walk(root):
        place = os.path.relpath(folder, root)
        folders[:] = [name for name in folders
                      if not name.startswith(".git") and (place, name) != (".", "build")]
        yield from (os.path.normpath(os.path.join(place, name)) for name in names)


def read_floors(root):
    lines = (root / "docs/floors.txt").read_text(encoding="utf-8").splitlines()
    floors = [line.split() for line in lines if line and not line.startswith("#")]
    return {folder: floor for floor, folders in enumerate(floors) for folder in folders}


def folder_of_include(root, file, name):
    """As the compiler finds it: beside the file, from the root, among public headers."""
    for folder in (os.path.dirname(file), "", *PUBLIC):
        found = os.path.normpath(os.path.join(folder, name))
        if (root / found).is_file():
            return os.path.dirname(found)
    return None


def faults_of_file(root, file, floors):
    own = os.path.dirname(file)
    text = (root / file).read_text(encoding="utf-8")
    for number, line in enumerate(text.splitlines(), 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        folder = folder_of_include(root, file, found[1])
        if folder is None:
            yield f"{file}:{number}: {found[1]} is not there"
        elif folder != own and floors.get(folder, len(floors)) >= floors[own]:
            yield f"{file}:{number}: {own} includes from {folder}, which is no lower floor"


def faults(root):
    floors, files = read_floors(root), sorted(own_files(root))
    counts = collections.Counter(map(os.path.dirname, files))
    for folder, count in sorted(counts.items()):
        if count > MOST_FILES and not f"{folder}/".startswith(CROWDED):
            yield f"{folder}: {count} files, more than {MOST_FILES}"
    sources = [file for file in files
               if file.startswith(tuple(f"{top}/" for top in CHECKED)) and file.endswith(SOURCES)]
    for folder in sorted(set(map(os.path.dirname, sources)) - floors.keys()):
        yield f"{folder}: docs/floors.txt has no floor for it"
    for folder in sorted(floors.keys() - counts.keys()):
        yield f"docs/floors.txt: there is no file in {folder}"
    for file in sources:
        if os.path.dirname(file) in floors:
            yield from faults_of_file(root, file, floors)


def main():
    if len(sys.argv) > 2:
        sys.exit(__doc__)
    here = pathlib.Path(__file__).resolve().parents[2]
    found = list(faults(pathlib.Path(sys.argv[1]) if len(sys.argv) == 2 else here))
    print("\n".join(found), end="\n" if found else "", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
