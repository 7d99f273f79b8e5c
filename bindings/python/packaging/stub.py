#!/usr/bin/env python3
"""The type stub of the package, from the header and the rules: what editors and type checkers read.

    stub.py FOLDER    the stub of the package in FOLDER, printed
"""
import sys
import textwrap
import types

_HEADER = '''"""Lumivex on numpy arrays. Derived from the header."""
from typing import Callable, NamedTuple, Optional

import numpy

from . import pictures as pictures, tables as tables, workflows as workflows
from ._library import LibraryNotFound as LibraryNotFound, raw as raw
from .tables import lab_tables as lab_tables
from .workflows import carve as carve, stroke as stroke, trace as trace

__version__: str
Array = numpy.ndarray
Progress = Optional[Callable[[int], object]]
'''


def _number(type_):
    return "float" if type_ in ("float", "double") else "int"


def _parameters(export):
    required, optional = export.shown
    parts = [f"{p.name}: {'Array' if p.pointer and p.role != 'reference' else _number(p.type)}" for p in required]
    extra = []
    for p in optional:
        kind = "Array" if p.pointer else _number(p.type)
        if p.role == "number" and p.default is not None:
            extra.append(f"{p.name}: {kind} = {p.default}")
        else:
            extra.append(f"{p.name}: Optional[{kind}] = None")
    if export.main:
        extra.append("out: Optional[Array] = None")
    if export.has_progress:
        extra.append("progress: Progress = None")
    return ", ".join(parts + (["*"] + extra if extra else []))


def _result(export, name):
    if name == "returned":
        return _number(export.result)
    if name == "end":
        return "Optional[int]"
    if name == "framed":
        return "bool"
    return "int" if next(p for p in export.parameters if p.name == name).role == "result" else "Array"


def _function(export):
    results = export.results
    lines = []
    if not results:
        gives = "None"
    elif len(results) == 1:
        gives = _result(export, results[0])
    else:
        gives = export.result_name
        lines += [f"class {gives}(NamedTuple):"] + [f"    {name}: {_result(export, name)}" for name in results] + [""]
    manual = textwrap.indent(export.manual.replace("\\", "\\\\"), "    ").strip()
    lines += [f"def {export.english}({_parameters(export)}) -> {gives}:", f'    """{manual}"""', "    ...",
              f"{export.name} = {export.english}", ""]
    return lines


def main():
    # The package's own start would want numpy and the library, which a build has no need of.
    package = types.ModuleType("lumivex")
    package.__path__ = [sys.argv[1]]
    sys.modules["lumivex"] = package
    from lumivex._exports import read_exports
    lines = [_HEADER]
    for export in read_exports():
        lines += _function(export)
    sys.stdout.reconfigure(encoding="utf-8")
    print("\n".join(lines))


if __name__ == "__main__":
    main()
