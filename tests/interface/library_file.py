#!/usr/bin/env python3
"""Check the library as the linker sees it.

    library_file.py file LIBRARY EXPORTS     exported names, soname and needed libraries
    library_file.py level LEVEL OBJECT...    names that the objects of one processor level define
    library_file.py dll OBJDUMP LIBRARY IMPORTS EXPORTS   the tables of a Windows library, and its import library
"""
import re
import subprocess
import sys

ALLOWED = re.compile(r"(libc|libm|libstdc\+\+|libgcc_s|ld-linux[^.]*)\.so\.\d+")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def check_file(library, exports):
    with open(exports, encoding="utf-8") as file:
        wanted = file.read().split()
    exported = sorted(line.split()[-1] for line in run("nm", "-D", "--defined-only", library).splitlines())
    for name in sorted(set(wanted) ^ set(exported)):
        yield f"{name} is " + ("not exported" if name in wanted else "exported, but not declared in the header")
    dynamic = run("readelf", "-d", library)
    if "soname: [liblumivex.so.1]" not in dynamic:
        yield "the soname is not liblumivex.so.1"
    for needed in re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic):
        if not ALLOWED.fullmatch(needed):
            yield f"the library needs {needed}"
    if not wanted:
        yield "the list of exports is empty"


def check_dll(objdump, library, imports, exports):
    """Exports under plain names, nothing needed but the system's own, and an import library that names them all."""
    with open(exports, encoding="utf-8") as file:
        wanted = file.read().split()
    tables = run(objdump, "-p", library)
    names = tables.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    exported = re.findall(r"\] (?:\+base\[ *\d+\] +\w+ )?(\S+)", names)
    for name in sorted(set(wanted) ^ set(exported)):
        yield f"{name} is " + ("not exported" if name in wanted else "exported, but not declared in the header")
    for needed in re.findall(r"DLL Name: (\S+)", tables):
        if needed.lower() not in ("kernel32.dll", "msvcrt.dll"):
            yield f"the library needs {needed}"
    linked = re.findall(r"__imp__?(\w+?)(?:@\d+)?$", run(objdump, "-t", imports), re.M)
    for name in sorted(set(wanted) ^ set(linked)):
        yield f"{name} is in only one of the import library and the header"
    if not wanted:
        yield "the list of exports is empty"


def check_level(level, objects):
    """A function that two levels share is kept once by the linker, maybe with instructions an older processor lacks."""
    own = f"7lumivex{len(level)}{level}"
    defined = 0
    for item in objects:
        for line in run("nm", "--defined-only", item).splitlines():
            kind, name = line.split()[-2:]
            if not (kind.isupper() or kind in "uvw"):
                continue
            defined += 1
            if own not in name:
                yield f"{item} defines {run('c++filt', name).strip()} ({kind})"
    if defined == 0:
        yield f"no names found in the objects of {level}"


def main():
    check = {"file": check_file, "dll": check_dll, "level": lambda level, *objects: check_level(level, objects)}[sys.argv[1]]
    faults = list(check(*sys.argv[2:]))
    print("\n".join(faults) or "as it should be")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
