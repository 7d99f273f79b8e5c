#!/usr/bin/env python3
"""Derive from include/lumivex.h what would otherwise be typed twice.

    derive.py HEADER dispatch LEVEL...   C++ source of the exports: each forwards to the level chosen at load
    derive.py HEADER declarations        C++ declarations of every export, for the namespace of a level
    derive.py HEADER version-script      the linker's version script
    derive.py HEADER names               the exported names, one a line
    derive.py HEADER interface           everything the header says, as JSON
    derive.py HEADER calls               the C++ header of every export on views
    derive.py HEADER cxx-names           the C++ header of every export's two names

The first level given to `dispatch` is the one every processor has.
"""
import json
import sys

from calls import calls, names
from interface import read_exports


def dispatch(exports, levels):
    lines = ['#include "core/dispatch.h"', '#include "lumivex.h"', ""]
    for level in levels:
        lines += [f"namespace lumivex::{level}", "{", '#include "declarations.inc"', "}"]
    lines += ["", "namespace lumivex", "{", "namespace", "{", "struct Exports", "{"]
    lines += [f"    {e.result} (*{e.name})({e.parameters});" for e in exports]
    lines += ["};", ""]
    for level in levels:
        lines += [f"constexpr Exports {level}Exports = {{"]
        lines += [f"    {level}::{e.name}," for e in exports] + ["};", ""]
    # Constant-initialised to the level every processor has, so that a call from another library's constructor is safe.
    lines += [f"const Exports* active = &{levels[0]}Exports;", ""]
    lines += ["[[gnu::constructor]] void chooseExports()", "{", "    switch (chooseLevel()) {"]
    for level in levels[1:]:
        lines += [f"    case Level::{level}: active = &{level}Exports; break;"]
    lines += ["    default: break;", "    }", "}", "} // namespace", "} // namespace lumivex", ""]
    for e in exports:
        lines += [f"{e.result} LUMIVEX_CALL {e.name}({e.parameters})", "{"]
        lines += [f"    return lumivex::active->{e.name}({e.arguments});", "}"]
    return lines


def interface(exports):
    sections = dict.fromkeys(e.section for e in exports)
    return [{"family": s.family, "title": s.title, "text": s.text,
             "exports": [{"name": e.name, "english": e.english, "manual": e.manual, "result": e.result,
                          "parameters": [{"name": name, "type": kind} for kind, name in e.split_parameters]}
                         for e in exports if e.section is s]} for s in sections]


def main():
    exports = read_exports(sys.argv[1])
    what = sys.argv[2]
    if what == "dispatch":
        lines = dispatch(exports, sys.argv[3:])
    elif what == "declarations":
        lines = [f"{e.result} {e.name}({e.parameters});" for e in exports]
    elif what == "version-script":
        lines = ["{", "  global:"] + [f"    {e.name};" for e in exports] + ["  local: *;", "};"]
    elif what == "interface":
        lines = [json.dumps(interface(exports), indent=1)]
    elif what == "calls":
        lines = calls(exports)
    elif what == "cxx-names":
        lines = names(exports)
    elif what == "names":
        lines = sorted(e.name for e in exports)
    else:
        sys.exit(f"derive.py: no such output: {what}")
    print("\n".join(lines))


if __name__ == "__main__":
    main()
