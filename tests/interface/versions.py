#!/usr/bin/env python3
"""Checks that all that carries the version says the same, the one in the header.

    versions.py SOURCE LIBRARY [PROGRAM]
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path


def found(source, library, program):
    """Pairs of where and what."""
    yield "the newest heading of CHANGELOG.md", re.search(r"^## ([\d.]+)", (source / "CHANGELOG.md").read_text("utf-8"),
                                                          flags=re.M).group(1)
    yield "the library's file name", library.resolve().name.removeprefix("liblumivex.so.")
    stage = source / "bindings" / "python" / "packaging" / "stage.py"
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, "-B", stage, folder], check=True)
        yield "the Python package", re.search(r'version = "(.*)"', (Path(folder) / "lumivex" / "_version.py").read_text(
            "utf-8")).group(1)
    if program:
        printed = subprocess.run([program, "--version"], check=True, capture_output=True, text=True).stdout
        yield "the program", printed.split()[1]


def main():
    source, library, *program = map(Path, sys.argv[1:])
    header = (source / "include" / "lumivex.h").read_text("utf-8")
    wanted = re.search(r'#define LUMIVEX_VERSION "(.*)"', header).group(1)
    faults = [f"{where} is {what}, the header says {wanted}"
              for where, what in found(source, library, *program or [None]) if what != wanted]
    print("\n".join(faults) or f"{wanted} everywhere")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
