#!/usr/bin/env python3
"""Builds and runs the examples of the README by its very lines, and compares what they print.

    readme_example.py SOURCE BUILD C_COMPILER CXX_COMPILER

The lines run in a folder where the names that they use stand for the source, for the build and for its compilers.
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path


def lay_out(folder, source, build, compilers):
    (folder / "bin").mkdir()
    (folder / "build").mkdir()
    for link, target in {"include": Path(source) / "include", "build/release": build, **compilers}.items():
        (folder / link).symlink_to(target)


def check(folder, language, example, expected, lines):
    (folder / f"example.{language}").write_text(example, encoding="utf-8")
    (folder / "example").unlink(missing_ok=True)
    done = subprocess.run(["sh", "-eu", "-c", lines], cwd=folder, capture_output=True, text=True,
                          env=os.environ | {"PATH": f"{folder / 'bin'}:{os.environ['PATH']}"})
    if done.returncode or done.stderr:
        sys.exit(f"{lines}{done.stderr}")
    if done.stdout != expected:
        sys.exit(f"the README says:\n{expected}but its example prints:\n{done.stdout}")


def main():
    source, build, c_compiler, cxx_compiler = sys.argv[1:]
    readme = (Path(source) / "README.md").read_text(encoding="utf-8")
    examples = re.findall(r"```(c|cpp)\n(.*?)```\s*prints\s*```text\n(.*?)```.*?```sh\n(.*?)```", readme, re.S)
    if [language for language, *_ in examples] != ["c", "cpp"]:
        sys.exit("the README has not one example in C and one in C++")
    with tempfile.TemporaryDirectory() as folder:
        lay_out(Path(folder), source, build, {"bin/cc": c_compiler, "bin/c++": cxx_compiler})
        for example in examples:
            check(Path(folder), *example)


if __name__ == "__main__":
    main()
