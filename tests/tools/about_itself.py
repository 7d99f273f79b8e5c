#!/usr/bin/env python3
"""Holds the manual page and the completion scripts to what the program says of each operation in its help.

    about_itself.py PROGRAM
"""
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


class Bash:
    def __init__(self, script, folder):
        self.script, self.folder = script, folder

    def offers(self, *words):
        """What is offered for the last of the words after the program's name."""
        line = ('source "$0"; COMP_WORDS=(lumivex "$@"); COMP_CWORD=$#; _lumivex; '
                'printf "%s\\n" "${COMPREPLY[@]}"')
        return set(run("bash", "-c", line, self.script, *words, cwd=self.folder).split())


def faults(program, folder):
    manual = run(program, "manual").replace("\\-", "-")
    scripts = {shell: folder / shell for shell in ("bash", "zsh", "fish")}
    for shell, path in scripts.items():
        path.write_text(run(program, "completion", shell), encoding="utf-8")
        if shutil.which(shell):
            run(shell, "-n", path)
    bash = Bash(scripts["bash"], folder)
    (folder / "picture.png").touch()

    summaries = dict(re.findall(r"^  (\S+) +(.*)", run(program, "list"), flags=re.M))
    names = list(summaries)
    for name, summary in summaries.items():
        # The help of one operation shows no other before it.
        if summary.lower().startswith("the same"):
            yield f"the summary of {name} leans on another"
    others = {"list", "gallery", "scene"}
    if bash.offers("") != {*names, *others, "--help", "--version"}:
        yield f"bash offers {bash.offers('')} as commands"
    sections = dict(re.findall(r'^\.SS "(.*?)"\n(.*?)(?=^\.S[SH])', manual, flags=re.M | re.S))
    for name in [*names, *others]:
        text = run(program, name, "--help")
        options = set(re.findall(r"^\s+(?:-\w,)?(--[\w-]+)", text, flags=re.M))
        if {word for word in bash.offers(name, "-") if word.startswith("--")} != options:
            yield f"bash offers other options of {name} than its help"
        common = {"--help", "--output", "--selection", "--quiet", "--format"}
        for option in options - common:
            if f"\\fB{option}\\fR" not in sections.get(name, ""):
                yield f"the manual says nothing of {name} {option}"
        zsh = re.search(rf"^    {name}\) (.*?) ;;$", scripts["zsh"].read_text("utf-8"), flags=re.M | re.S).group(1)
        if set(re.findall(r"(--[\w-]+)(?:'\[|})", zsh)) != options:
            yield f"zsh offers other options of {name} than its help"
        fish = re.findall(rf"_from {name}'.*? -l ([\w-]+)", scripts["fish"].read_text("utf-8"))
        if {"--" + option for option in fish} != options:
            yield f"fish offers other options of {name} than its help"
        for option, choices in re.findall(r"(--[\w-]+) ([A-Za-z-]+(?:\|[\w-]+)+) ", text):
            if bash.offers(name, option, "") != set(choices.split("|")):
                yield f"bash offers {bash.offers(name, option, '')} after {name} {option}"
    for words in (("invert", "pic"), ("invert", "picture.png", "--output", "")):
        if "picture.png" not in bash.offers(*words):
            yield f"bash offers no file after {words}"
    if bash.offers("brightness", "picture.png", "--offset", ""):
        yield "bash offers something for a number"


def main():
    with tempfile.TemporaryDirectory() as folder:
        found = list(faults(sys.argv[1], Path(folder)))
    print("\n".join(found) or "as it should be")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
