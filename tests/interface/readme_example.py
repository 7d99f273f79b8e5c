#!/usr/bin/env python3
"""Compiles the examples of the README against the built library, runs them and compares what they print.

    readme_example.py README C_COMPILER CXX_COMPILER LIBRARY INCLUDE_DIR...
"""
import os
import re
import subprocess
import sys
import tempfile


def check(language, example, expected, compilers, library, includes, folder):
    source = os.path.join(folder, f"example.{language}")
    program = os.path.join(folder, "example")
    with open(source, "w", encoding="utf-8") as file:
        file.write(example)
    subprocess.run([*compilers[language], "-Wall", "-Wextra", "-pedantic", "-Werror", *includes, source, library,
                    "-Wl,-rpath," + os.path.dirname(library), "-o", program], check=True)
    printed = subprocess.run([program], check=True, capture_output=True, text=True).stdout
    if printed != expected:
        sys.exit(f"the README says:\n{expected}but its example prints:\n{printed}")


def main():
    readme, c_compiler, cxx_compiler, library, *folders = sys.argv[1:]
    compilers = {"c": [c_compiler, "-std=c99"], "cpp": [cxx_compiler, "-std=c++20"]}
    with open(readme, encoding="utf-8") as file:
        examples = re.findall(r"```(c|cpp)\n(.*?)```\s*prints\s*```text\n(.*?)```", file.read(), re.S)
    if [language for language, _, _ in examples] != ["c", "cpp"]:
        sys.exit("the README has not one example in C and one in C++")
    with tempfile.TemporaryDirectory() as folder:
        for example in examples:
            check(*example, compilers, library, ["-I" + path for path in folders], folder)


if __name__ == "__main__":
    main()
