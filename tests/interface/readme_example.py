#!/usr/bin/env python3
"""Compiles the C example of the README against the built library, runs it and compares what it prints.

    readme_example.py README COMPILER INCLUDE_DIR LIBRARY
"""
import os
import re
import subprocess
import sys
import tempfile


def main():
    readme, compiler, include, library = sys.argv[1:]
    with open(readme, encoding="utf-8") as file:
        text = file.read()
    example = re.search(r"```c\n(.*?)```", text, re.S).group(1)
    expected = re.search(r"```text\n(.*?)```", text, re.S).group(1)
    with tempfile.TemporaryDirectory() as folder:
        source = os.path.join(folder, "example.c")
        program = os.path.join(folder, "example")
        with open(source, "w", encoding="utf-8") as file:
            file.write(example)
        subprocess.run([compiler, "-std=c99", "-Wall", "-Wextra", "-pedantic", "-Werror", "-I", include, source, library,
                        "-Wl,-rpath," + os.path.dirname(library), "-o", program], check=True)
        printed = subprocess.run([program], check=True, capture_output=True, text=True).stdout
    if printed != expected:
        sys.exit(f"the README says:\n{expected}but its example prints:\n{printed}")


if __name__ == "__main__":
    main()
