#!/usr/bin/env python3
"""Saves the examples of the README and runs all its shell lines in order, in the checkout of a machine of its own.

What takes long and has a run of its own is left out: the tests, the packages, the documentation.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

ELSEWHERE = ("./run demo", "./run test", "./run packages", "./run docs")
WRITTEN = ("example", "blurred.png", "narrow.png", "drawing.svg", "grey/scene.png", "out/installed/lib/liblumivex.so.1",
           "out/installed/share/man/man1/lumivex.1")


def main():
    lines = ["set -eux"]
    for language, block in re.findall(r"```(c|cpp|python|sh)\n(.*?)```", Path("README.md").read_text(encoding="utf-8"), re.S):
        if language != "sh":
            name = f"example.{ {'python': 'py'}.get(language, language) }"
            lines.append(f"cat > {name} <<'END'\n{block}END")
            continue
        lines += [line for line in block.splitlines() if not line.startswith(ELSEWHERE)]
    # The person at the keyboard says yes.
    answers = Path("/etc/apt/apt.conf.d/yes")
    answers.write_text('APT::Get::Assume-Yes "true"; quiet "2";\n', encoding="utf-8")
    done = subprocess.run(["sh", "-c", "\n".join(lines)], env=os.environ | {"DEBIAN_FRONTEND": "noninteractive"})
    answers.unlink()
    missing = [file for file in WRITTEN if not list(Path().glob(file.replace("lib/", "lib*/**/")))]
    if done.returncode or missing:
        sys.exit(f"the README's lines end with {done.returncode}; missing: {missing}")


if __name__ == "__main__":
    main()
