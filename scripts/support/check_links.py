#!/usr/bin/env python3
"""Follows the links among the pages of a folder; names those that lead nowhere.

usage: check_links.py FOLDER
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse


# A link of a paper that was taken for text.
RAW_LINK = re.compile(r"\[[^\]]+\]\([\w./-]+\)")


class Page(html.parser.HTMLParser):
    """The places of a page that can be linked to, and what it links to."""

    def __init__(self, path):
        super().__init__()
        self.places = set()
        self.links = []
        self.raw = []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name in ("id", "name"):
                self.places.add(value)
            elif name in ("href", "src") and value:
                self.links.append(value)

    def handle_data(self, data):
        self.raw += RAW_LINK.findall(data)


def lost_links(folder):
    pages = {path: Page(path) for path in sorted(folder.glob("*.html"))}
    if not pages:
        yield f"{folder}: there is no page"
    for path, page in pages.items():
        if not path.name.endswith("_source.html"):
            for link in page.raw:
                yield f"{path.name} shows {link}, which is no link there"
        for link in page.links:
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            target = path.parent / urllib.parse.unquote(parts.path) if parts.path else path
            place = urllib.parse.unquote(parts.fragment)
            if not target.is_file():
                yield f"{path.name} links to {link}, which is not there"
            elif place and target in pages and place not in pages[target].places:
                yield f"{path.name} links to {link}, a place that is not there"


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    lost = list(lost_links(pathlib.Path(sys.argv[1])))
    print("\n".join(lost), end="\n" if lost else "", file=sys.stderr)
    sys.exit(1 if lost else 0)


main()
