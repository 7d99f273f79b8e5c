#!/usr/bin/env python3
"""Writes Debian's changelog of the newest entry of CHANGELOG.md, compressed.

    changelog.py SOURCE VERSION MAINTAINER OUTPUT
"""
import gzip
import os
import re
import subprocess
import sys
import textwrap
from email.utils import formatdate
from pathlib import Path


def moment(source):
    """When the sources were last changed, so that the same sources give the same package."""
    if "SOURCE_DATE_EPOCH" in os.environ:
        return int(os.environ["SOURCE_DATE_EPOCH"])
    return int(subprocess.run(["git", "-C", source, "log", "-1", "--format=%ct"], check=True, capture_output=True,
                              text=True).stdout)


def main():
    source, version, maintainer, output = sys.argv[1:]
    text = (Path(source) / "CHANGELOG.md").read_text(encoding="utf-8")
    entry = re.split(r"^## .*$", text, flags=re.M)[1]
    lines = [f"lumivex ({version}) unstable; urgency=medium", ""]
    for item in re.split(r"^- ", entry, flags=re.M)[1:]:
        lines += textwrap.wrap(" ".join(item.split()), 76, initial_indent="  * ", subsequent_indent="    ")
    lines += ["", f" -- {maintainer}  {formatdate(moment(source))}", ""]
    with gzip.GzipFile(output, "wb", mtime=0) as file:
        file.write("\n".join(lines).encode())


if __name__ == "__main__":
    main()
