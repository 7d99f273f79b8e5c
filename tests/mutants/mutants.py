#!/usr/bin/env python3
"""Puts faults into a copy of the sources, one at a time, and tells which of them no test catches.

    mutants.py SOURCE FOLDER [WORD]    in FOLDER, which is kept; only faults whose place or kind has WORD in it

Each fault of faults.txt is a place and a kind, the line that stands there and the line that is put in its stead. One
that changes nothing that a caller can see gives the reason in a line that starts with "=": nothing is expected to catch
it. Ends with 1 if a fault survives that should not, or the other way round, or if a line no longer stands.
"""
import os
import re
import subprocess
import sys
import time
from pathlib import Path

# The suites of a folder of sources, beside the conventions that all exports keep.
SUITES = {"adjust": ["tone", "histogram", "lab_tone"], "brush": ["brush"],
          "core": ["points", "colour", "inside", "tone", "lab_tone", "brush", "mask", "retouch", "blur", "edges"],
          "filters": ["blur", "edges", "sharpen"], "mask": ["mask"], "retouch": ["retouch"], "seam": ["seam"],
          "thinning": ["thinning"], "trace": ["trace"]}


class Fault:
    def __init__(self, block):
        head, *lines = block.splitlines()
        self.place, self.kind = head.split(" ", 1)
        texts = {line[0]: line[2:] for line in lines}
        self.old, self.new, self.harmless = texts["-"], texts["+"], texts.get("=")

    def applied(self, text):
        lines = text.split("\n")
        places = [i for i, line in enumerate(lines) if line.strip() == self.old]
        if len(places) != 1:
            sys.exit(f"{self.place}: stands {len(places)} times, not once: {self.old}")
        lines[places[0]] = self.new
        return "\n".join(lines)


def run(*command, seconds=600, only="*"):
    """The exit status and what was printed; a fault may make the tests run for ever. One failure will do."""
    try:
        done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, errors="replace", timeout=seconds,
                              env=os.environ | {"GTEST_FAIL_FAST": "1", "GTEST_FILTER": only})
    except subprocess.TimeoutExpired:
        return -1, ""
    return done.returncode, done.stdout


def copy_sources(source, folder):
    """What git knows, as it is now. Files that have not changed keep their dates, so that little is built again."""
    names = subprocess.run(["git", "-C", source, "ls-files", "-z"], check=True, capture_output=True, text=True).stdout
    for name in filter(None, names.split("\0")):
        there, here = folder / name, Path(source) / name
        if here.is_file() and (not there.exists() or there.read_bytes() != here.read_bytes()):
            there.parent.mkdir(parents=True, exist_ok=True)
            there.write_bytes(here.read_bytes())
            there.chmod(here.stat().st_mode)


def build(folder, suites):
    targets = [f"{suite}_test" for suite in suites] + ["conventions_test", "abuse"]
    return run("cmake", "--build", folder / "build", "--target", *targets, seconds=3600)


def exports_of(tree, place):
    """A filter for the conventions of what the file exports, or its family, or the library where the file is the frame's."""
    every = re.findall(r"LUMIVEX_CALL (\w+)\(", (tree / "include/lumivex.h").read_text(encoding="utf-8"))
    path = tree / "src" / place
    for sources in ([path], path.parent.glob("*.cpp")):
        words = set(re.findall(r"\w+", "".join(source.read_text(encoding="utf-8") for source in sources)))
        found = [name for name in every if name in words]
        if found and path.parent.name != "core":
            return ":".join(f"*/{name}" for name in found)
    return "*"


def caught(folder, fault):
    """What caught it, or nothing."""
    suites = SUITES[fault.place.split("/")[0]]
    status, printed = build(folder, suites)
    if status != 0:
        # A static_assert may be what catches it; a line that is no C++ is a mistake of the list.
        return "the compiler" if "static assertion failed" in printed else "does not compile"
    for what, tests, only in (("the family's suites", "^(" + "|".join(suites) + ")_test", "*"),
                              ("the conventions", "^conventions_test", exports_of(folder, fault.place)),
                              ("checksums", "^checksums", "*")):
        if run("ctest", "--test-dir", folder / "build", "-j2", "--stop-on-failure", "--timeout", "300", "-R", tests,
               only=only)[0]:
            return what
    return None


def main():
    source, folder, word = (*sys.argv[1:], "")[:3]
    tree = Path(folder) / "tree"
    copy_sources(source, tree)
    blocks = (Path(__file__).parent / "faults.txt").read_text(encoding="utf-8").strip().split("\n\n")
    faults = [fault for fault in map(Fault, blocks) if word in f"{fault.place} {fault.kind}"]
    originals = {fault.place: (tree / "src" / fault.place).read_text(encoding="utf-8") for fault in faults}
    for fault in faults:
        fault.applied(originals[fault.place])
    run("cmake", "-S", tree, "-B", tree / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DLUMIVEX_TOOLS=OFF",
        "-DLUMIVEX_BENCH=OFF", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON")
    families = {fault.place.split("/")[0] for fault in faults}
    status, printed = build(tree, sorted({suite for family in families for suite in SUITES[family]}))
    if status != 0:
        sys.exit(printed)
    wrong, begun = [], time.monotonic()
    for fault in faults:
        path = tree / "src" / fault.place
        path.write_text(fault.applied(originals[fault.place]), encoding="utf-8")
        by = caught(tree, fault)
        path.write_text(originals[fault.place], encoding="utf-8")
        if (by is None) != (fault.harmless is not None) or by == "does not compile":
            wrong.append((fault, by or "survives"))
        print(f"{fault.place} {fault.kind}: {by or 'survives'} ({time.monotonic() - begun:.0f} s)", flush=True)
    for fault, by in wrong:
        reason = "" if fault.harmless is None else f", though it says: {fault.harmless}"
        print(f"\n{fault.place} {fault.kind}: {by}{reason}\n- {fault.old}\n+ {fault.new}")
    print(f"\n{len(faults)} faults in {(time.monotonic() - begun) / 60:.0f} minutes, {len(wrong)} not as the list has them")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
