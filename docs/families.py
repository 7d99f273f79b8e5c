#!/usr/bin/env python3
"""Writes a page for each family of functions, with the pictures of the gallery.

    families.py GALLERY FOLDER    from GALLERY/index.html, into FOLDER; links to pictures are relative to GALLERY's parent
"""
import html
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "cmake"))
from doxygen import group_name  # noqa: E402
from interface import read_exports  # noqa: E402

CARD = re.compile(r'<article id="([\w-]+)">.*?<span class="name">(.*?)</span><p>(.*?)</p></header>\n'
                  r'(<div class="figures.*?</div>)\n</article>', re.S)


class Card:
    """What the gallery shows of one operation."""

    def __init__(self, operation, exports, summary, figures):
        self.operation = operation
        self.exports = re.findall(r"\w+", exports)
        self.summary = html.unescape(summary)
        self.figures = figures

    def figures_below(self, folder):
        return re.sub(r'(href|src)="', rf'\1="{folder}/', self.figures)


def references(names):
    return ", ".join(f"@ref {name}" for name in names)


def page(family, exports, cards, gallery):
    lines = [f"# Family: {family} {{#family_{family}}}", "", "Reference:", ""]
    lines += [f"- @ref {group_name(section)}" for section in dict.fromkeys(export.section for export in exports)]
    lines.append("")
    for card in cards:
        lines += [f"## {card.operation} {{#shown_{card.operation.replace('-', '_')}}}", "", card.summary, "",
                  f"In the library: {references(card.exports)}.", "", "@htmlonly", card.figures_below(gallery),
                  "@endhtmlonly", ""]
    shown = {name for card in cards for name in card.exports}
    others = [export.name for export in exports if export.name not in shown]
    if others:
        lines += ["## Without a picture here {#others_" + family + "}", "", references(others) + ".", ""]
    return "\n".join(lines)


def main():
    gallery, folder = map(Path, sys.argv[1:])
    exports = read_exports(ROOT / "include" / "lumivex.h")
    family_of = {export.name: export.family for export in exports}
    cards = [Card(*match) for match in CARD.findall((gallery / "index.html").read_text(encoding="utf-8"))]
    unknown = [card.operation for card in cards if not card.exports or card.exports[0] not in family_of]
    if unknown or not cards:
        sys.exit(f"families.py: the gallery does not say which exports these are: {unknown or 'no operation is shown'}")

    folder.mkdir(parents=True, exist_ok=True)
    contents = ["# The families {#families}", "",
                "Each page shows what the functions of a family do to one picture, with the command that made it. "
                f'<a href="{gallery.name}/index.html">The gallery</a> has them all on one page.', ""]
    for family in dict.fromkeys(family_of.values()):
        own = [export for export in exports if export.family == family]
        # An operation that calls several exports belongs to the family of the first.
        shown = [card for card in cards if family_of[card.exports[0]] == family]
        (folder / f"{family}.md").write_text(page(family, own, shown, gallery.name), encoding="utf-8")
        contents.append(f"- @subpage family_{family}")
    (folder / "families.md").write_text("\n".join(contents) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
