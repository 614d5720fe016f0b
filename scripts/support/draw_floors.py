#!/usr/bin/env python3
"""Draws docs/floors.svg from docs/floors.txt.

usage: draw_floors.py [--check] [ROOT]

--check writes nothing: it fails if the drawing differs from the one of the list.
"""
import html
import pathlib
import sys

# Titles of the towers, and the folders whose floors stand in each: the first that fits.
TOWERS = (
    ("host/vetrix", ("host/vetrix/",)),
    ("host/K", ("host/K/",)),
    ("host/QDE", ("host/QDE/",)),
    ("host", ("host",)),
    ("tools", ("tools/",)),
    ("bench", ("bench", "tests/")),
    ("the module", ("",)),
)
ORDER = ("the module", "host", "host/vetrix", "host/K", "host/QDE", "tools", "bench")
CAPTION = ("The numbers are the lines of the list, from the ground up. A file includes from its "
           "own folder and from folders with lower numbers.")

MARGIN, GAP, NUMBER, ROW, SPACE, TITLE = 20, 24, 26, 24, 6, 34
CHARACTER, PADDING = 7.6, 20


def read_floors(root):
    lines = (root / "docs/floors.txt").read_text(encoding="utf-8").splitlines()
    return [line.split() for line in lines if line.strip() and not line.startswith("#")]


def tower_of(folders):
    """All folders of a floor belong to the same part of the system."""
    return next(title for title, prefixes in TOWERS
                if all(folder.startswith(prefixes) for folder in folders))


def towers_of(floors):
    towers = {title: [] for title in ORDER}
    for number, folders in enumerate(floors, 1):
        towers[tower_of(folders)].append((number, folders))
    return {title: floors for title, floors in towers.items() if floors}


def height_of(floors):
    return sum(ROW * len(folders) + SPACE for _, folders in floors)


def name_in(title, folder):
    """The rooms of one library are named without it; elsewhere one tower holds several parts."""
    return folder.removeprefix(f"{title}/") if "/" in title else folder


def width_of(title, floors):
    names = [name_in(title, folder) for _, folders in floors for folder in folders]
    return NUMBER + CHARACTER * max(map(len, [title, *names])) + PADDING


def text(x, y, words, attributes=""):
    return f'<text x="{x:.0f}" y="{y:.0f}"{attributes}>{html.escape(words)}</text>'


def floor_at(x, top, width, number, names):
    height = ROW * len(names)
    yield (f'<rect x="{x:.0f}" y="{top:.0f}" width="{width:.0f}" height="{height}" rx="4"'
           ' fill="#eef2f7" stroke="#8a97a8"/>')
    yield text(x + NUMBER - 6, top + height / 2 + 5, str(number),
               ' text-anchor="end" fill="#6b7683"')
    for row, name in enumerate(names):
        yield text(x + NUMBER + 6, top + ROW * row + 17, name)


def tower_at(x, ground, width, title, floors):
    top = ground
    for number, folders in floors:
        top -= ROW * len(folders) + SPACE
        names = [name_in(title, folder) for folder in folders]
        yield from floor_at(x, top, width, number, names)
    yield text(x, top - 10, title, ' font-weight="bold"')


def drawing(floors):
    towers = towers_of(floors)
    widths = {title: width_of(title, floors) for title, floors in towers.items()}
    width = 2 * MARGIN + sum(widths.values()) + GAP * (len(widths) - 1)
    ground = MARGIN + TITLE + max(map(height_of, towers.values()))
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:.0f}" height="{ground + 50}"'
           f' viewBox="0 0 {width:.0f} {ground + 50}" font-family="DejaVu Sans, Helvetica, Arial,'
           ' sans-serif" font-size="13" fill="#18181c">')
    yield '<!-- made from docs/floors.txt by scripts/support/draw_floors.py -->'
    yield f'<rect width="{width:.0f}" height="{ground + 50}" fill="#ffffff"/>'
    x = MARGIN
    for title, floors_of_tower in towers.items():
        yield from tower_at(x, ground, widths[title], title, floors_of_tower)
        x += widths[title] + GAP
    yield (f'<line x1="{MARGIN}" y1="{ground}" x2="{width - MARGIN:.0f}" y2="{ground}"'
           ' stroke="#18181c"/>')
    yield text(MARGIN, ground + 28, CAPTION, ' fill="#5c5c64"')
    yield "</svg>"


def main():
    arguments = sys.argv[1:]
    check = arguments[:1] == ["--check"]
    roots = arguments[1:] if check else arguments
    if len(roots) > 1 or (roots and roots[0].startswith("-")):
        sys.exit(__doc__)
    root = pathlib.Path(roots[0]) if roots else pathlib.Path(__file__).resolve().parents[2]
    file = root / "docs/floors.svg"
    drawn = "\n".join(drawing(read_floors(root))) + "\n"
    if not check:
        file.write_text(drawn, encoding="utf-8")
    elif not file.is_file() or file.read_text(encoding="utf-8") != drawn:
        sys.exit("docs/floors.svg is not drawn from docs/floors.txt: "
                 "run scripts/support/draw_floors.py")


if __name__ == "__main__":
    main()
