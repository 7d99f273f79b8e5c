#!/usr/bin/env python3
"""Derive from include/lumivex.h what would otherwise be typed twice.

    derive.py HEADER dispatch LEVEL...   C++ source of the exports: each forwards to the level chosen at load
    derive.py HEADER declarations        C++ declarations of every export, for the namespace of a level
    derive.py HEADER version-script      the linker's version script
    derive.py HEADER names               the exported names, one a line
    derive.py HEADER interface           everything the header says, as JSON
    derive.py HEADER calls               the C++ header of every export on views
    derive.py HEADER cxx-names           the C++ header of every export's two names
    derive.py HEADER families            the words by which the sections call their families
    derive.py HEADER call-table          C++ source of a table of all exports, to be called with values from outside
    derive.py HEADER definition BITS     the module definition of the Windows library: plain names
    derive.py HEADER imports BITS        the one its import library is made from: on 32 bits, with argument bytes

The first level given to `dispatch` is the one every processor has.
"""
import json
import sys

from calls import calls, names
from interface import read_exports


def dispatch(exports, levels):
    lines = ['#include "core/dispatch.h"', '#include "lumivex.h"', ""]
    # 32-bit hosts keep their stack aligned to 4 bytes, and vectors want 16.
    lines += ["#if defined(__i386__)", "#define LUMIVEX_ENTRY [[gnu::force_align_arg_pointer]]", "#else"]
    lines += ["#define LUMIVEX_ENTRY", "#endif", ""]
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
        lines += [f"LUMIVEX_ENTRY {e.result} LUMIVEX_CALL {e.name}({e.parameters})", "{"]
        lines += [f"    return lumivex::active->{e.name}({e.arguments});", "}"]
    return lines


def call_table(exports):
    # With a level, its own functions rather than those that the library chooses; or those of a library at hand.
    lines = ['#include "calls.h"', "", "#if defined(LUMIVEX_LEVEL)", '#include "core/level.h"']
    lines += ["#define JOIN_(a, b) a##b", "#define JOIN(a, b) JOIN_(a, b)"]
    lines += ["#define TABLE JOIN(exports_, LUMIVEX_LEVEL)", "#define CALLEE(name) lumivex::LUMIVEX_LEVEL::name"]
    lines += ["#elif defined(LUMIVEX_LOADED)", '#include "loaded.h"', '#include "lumivex.h"', "#define TABLE exports"]
    lines += ["#define CALLEE(name) abuse::loaded<decltype(name)>(#name)"]
    lines += ["#else", '#include "lumivex.h"', "#define TABLE exports", "#define CALLEE(name) name", "#endif", ""]
    lines += ["const std::vector<abuse::Export>& abuse::TABLE()", "{"]
    lines += ["    static const std::vector<Export> all = {"]
    for e in exports:
        parameters = ", ".join(f'{{"{name}", "{kind}"}}' for kind, name in e.split_parameters)
        arguments = ", ".join(f"to<{kind}>(v[{i}])" for i, (kind, _) in enumerate(e.split_parameters))
        lines += [f'        {{"{e.family}", "{e.name}", {{{parameters}}},']
        lines += [f"         [](const Value* v) {{ return static_cast<double>(CALLEE({e.name})({arguments})); }}}},"]
    return lines + ["    };", "    return all;", "}"]


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
    elif what == "families":
        lines = list(dict.fromkeys(e.family for e in exports))
    elif what == "call-table":
        lines = call_table(exports)
    elif what == "version-script":
        lines = ["{", "  global:"] + [f"    {e.name};" for e in exports] + ["  local: *;", "};"]
    elif what == "definition":
        bits = sys.argv[3]
        lines = ["LIBRARY lumivex.dll", "EXPORTS"]
        lines += [f"    {e.name} = {e.symbol(bits)}" if bits == "32" else f"    {e.name}" for e in exports]
    elif what == "imports":
        lines = ["LIBRARY lumivex.dll", "EXPORTS"] + [f"    {e.symbol(sys.argv[3])}" for e in exports]
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
