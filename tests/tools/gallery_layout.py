#!/usr/bin/env python3
"""Opens the gallery in a browser as wide as a desk's and as a phone's: nothing may reach beyond its right edge.

    gallery_layout.py PROGRAM    exits with 77 where there is no chromium
"""
import html
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

WIDTHS = (1280, 400)
# Windows are not narrower than some 500 pixels; frames are.
FRAME = '<iframe style="border: 0" width="{width}" height="900" srcdoc="{page}"></iframe>'
MEASURE = """<script>addEventListener("load", () => { document.title = [...document.querySelectorAll("iframe")].map(
    frame => frame.contentDocument.documentElement.scrollWidth).join(" ") + "." })</script>"""


def main():
    program, browser = sys.argv[1], shutil.which("chromium")
    if not browser:
        print("skipped: no chromium")
        sys.exit(77)
    with tempfile.TemporaryDirectory() as folder:
        # The layout hangs on the commands, which any picture gives.
        subprocess.run([program, "tone-table", "-o", f"{folder}/picture.png"], check=True)
        subprocess.run([program, "gallery", f"{folder}/picture.png", "--quiet", "-o", folder], check=True,
                       stdout=subprocess.DEVNULL)
        page = html.escape((Path(folder) / "index.html").read_text(encoding="utf-8"))
        frames = Path(folder) / "frames.html"
        frames.write_text("".join(FRAME.format(width=width, page=page) for width in WIDTHS) + MEASURE, encoding="utf-8")
        shown = subprocess.run([browser, "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                                "--disable-background-networking", "--disable-component-update", "--disable-sync",
                                "--hide-scrollbars", "--virtual-time-budget=20000",
                                f"--user-data-dir={folder}/profile", "--dump-dom",
                                frames.as_uri()], capture_output=True, text=True, timeout=120)
    title = re.search(r"<title>([\d ]+)\.</title>", shown.stdout)
    if not title:
        sys.exit(f"the browser shows nothing:\n{shown.stderr}")
    for width, reach in zip(WIDTHS, map(int, title.group(1).split())):
        print(f"{width} pixels wide: the page reaches to {reach}")
        if reach > width:
            sys.exit(1)


if __name__ == "__main__":
    main()
