#!/usr/bin/env python3
"""Puts the package together: its modules, what is derived from the header, and the library if one is given.

    stage.py FOLDER [LIBRARY]    the package as FOLDER/lumivex
"""
import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

BINDING = Path(__file__).resolve().parents[1]
ROOT = BINDING.parents[1]
HEADER = ROOT / "include" / "lumivex.h"


def version():
    return re.search(r'#define LUMIVEX_VERSION "([^"]+)"', HEADER.read_text(encoding="utf-8")).group(1)


def _printed(*command):
    return subprocess.run([sys.executable, "-B", *command], check=True, capture_output=True).stdout.decode("utf-8")


def interface():
    """What the header says, as the package keeps it."""
    derived = json.loads(_printed(ROOT / "cmake" / "derive.py", HEADER, "interface"))
    return json.dumps(derived, separators=(",", ":"))


def stage(folder, library=None):
    package = Path(folder) / "lumivex"
    shutil.rmtree(package, ignore_errors=True)
    package.mkdir(parents=True)
    for module in sorted((BINDING / "lumivex").glob("*.py")):
        shutil.copy(module, package)
    (package / "py.typed").touch()
    (package / "interface.json").write_text(interface(), encoding="utf-8")
    (package / "_version.py").write_text(f'"""Derived from the header."""\nversion = "{version()}"\n', encoding="utf-8")
    (package / "__init__.pyi").write_text(_printed(BINDING / "packaging" / "stub.py", package), encoding="utf-8")
    if library:
        name = "lumivex.dll" if Path(library).suffix == ".dll" else "liblumivex.so.1"
        shutil.copyfile(Path(library).resolve(), package / name)
    return package


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    stage(*sys.argv[1:])
