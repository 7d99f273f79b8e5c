#!/usr/bin/env python3
"""Checks that every local link, picture and anchor in a folder of HTML leads somewhere.

    check_links.py FOLDER
"""
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links = set(), []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.anchors |= {given[name] for name in ("id", "name") if given.get(name)}
        self.links += [given[name] for name in ("href", "src") if given.get(name)]


def faults(folder):
    pages = {path.resolve(): Page(path) for path in sorted(folder.rglob("*.html"))}
    if not pages:
        yield f"{folder}: no pages"
    for path, page in pages.items():
        for link in sorted(set(page.links)):
            parts = urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
            anchor = unquote(parts.fragment)
            if not target.exists():
                yield f"{path.relative_to(folder.resolve())}: {link} does not exist"
            elif anchor and target in pages and anchor not in pages[target].anchors:
                yield f"{path.relative_to(folder.resolve())}: {link} has no such anchor"


def main():
    found = list(faults(Path(sys.argv[1])))
    print("\n".join(found) or "all links lead somewhere")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
