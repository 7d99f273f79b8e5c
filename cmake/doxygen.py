#!/usr/bin/env python3
"""Doxygen's input filter: gives the readable comments of the headers the form that Doxygen knows.

    doxygen.py FILE    lumivex.h as groups and functions, C++ with documentation for comments, a page with links
"""
import re
import sys
from pathlib import Path

from interface import plain, read_exports

HEADER = Path(__file__).resolve().parents[1] / "include" / "lumivex.h"
ARGUMENTS = re.compile(r"(\w+(?:, \w+)*|\w+ \.\.\. \w+)  +(\S.*)")


def escaped(text):
    """Words stay words: no tags, commands, links, emphasis."""
    text = text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
    text = re.sub(r"([\\@#%$])", r"\\\1", text)
    return re.sub(r"[Cc]hapter (\d+)", r'@ref chapter_\1 "\g<0>"', text)


def blocks(text):
    """What a comment is made of, in order: ("arguments", [(names, words)...]), ("formula", text) or ("words", text).

    Argument lines and what is indented under them are one block, as are the indented lines of a formula.
    """
    found = []
    for line in text.split("\n"):
        kind, last = None, found[-1] if found else (None, None)
        arguments = ARGUMENTS.fullmatch(line)
        if not line.strip():
            found.append((None, None))
        elif arguments:
            if last[0] != "arguments":
                found.append(("arguments", []))
            found[-1][1].append(list(arguments.groups()))
        elif line.startswith("  ") and last[0] == "arguments":
            last[1][-1][1] += " " + line.strip()
        else:
            kind = "formula" if line.startswith("    ") else "words"
            if last[0] == kind:
                found[-1] = (kind, last[1] + "\n" + line)
            else:
                found.append((kind, line))
    return [block for block in found if block[0]]


def argument_names(words, parameters):
    """The parameters an argument line is about: "a, b" or "a ... d"."""
    if " ... " in words:
        first, last = words.split(" ... ")
        if first in parameters and last in parameters:
            low, high = sorted((parameters.index(first), parameters.index(last)))
            return parameters[low:high + 1]
        return []
    return words.split(", ")


def in_words(kind, content):
    if kind == "formula":
        return ["@verbatim", content, "@endverbatim"]
    if kind == "words":
        return [escaped(content), ""]
    lines = ["<dl>"]
    for names, words in content:
        lines.append(f"<dt>{escaped(names)}</dt><dd>{escaped(words)}</dd>")
    return lines + ["</dl>", ""]


def parted(manual):
    """The manual as a sentence for lists, the rest, and what is returned."""
    manual, _, returned = re.fullmatch(r"(.*?)((?:^|\s)Returns (.*))?", manual, re.S).groups()
    first = re.split(r"\n(?=\n|  )", manual)[0].replace("\n", " ")
    sentence = re.match(r".*?\S\.(?=\s+[A-Z]|\s*$)", first)
    if sentence:
        return sentence.group(), manual[sentence.end():].strip("\n"), returned
    return re.split(r":(?=\s|$)", first)[0] + ".", manual, returned


def function(export):
    parameters = [name for _, name in export.split_parameters]
    said = {}
    # What the section says of an argument holds unless the function says something itself.
    for text in (export.section.text, export.manual):
        for kind, content in blocks(text):
            if kind == "arguments":
                for names, words in content:
                    said |= {name: words for name in argument_names(names, parameters)}
    brief, rest, returned = parted(export.manual)
    lines = ["/**", f"@brief <b>{export.english}</b> - {escaped(brief)}", ""]
    for kind, content in blocks(rest):
        if kind == "arguments" and all(name in parameters for names, _ in content
                                       for name in argument_names(names, parameters)):
            continue
        lines += in_words(kind, content)
    lines += [f"@param {name} {escaped(said[name])}" for name in parameters if name in said]
    if returned:
        lines.append(f"@return {escaped(returned[0].upper() + returned[1:])}")
    return lines + ["*/", f"{export.result} {export.name}({export.parameters});", ""]


def group_name(section):
    return "reference_" + re.sub(r"\W+", "_", section.title.lower())


def chapters(text):
    """The opening chapters, as the first page."""
    comment = plain(re.match(r"/\* (.*?)\*/", text, re.S).group(1))
    opening, _, rest = re.sub(r"\n-{9,}\n", "\n\f\n", comment).partition("\f")
    lines = ["/**", "@mainpage", escaped(opening.strip()), "", "@ref how_do_i \"How do I ...?\" answers for those who "
             "know another library. @ref families \"The families\" shows what each function does to a picture.", ""]
    for block in re.split(r"\n(?=\d+\. )", "\n" + rest.strip()):
        if not block.strip():
            continue
        title, _, words = block.strip().partition("\n")
        lines.append(f"@section chapter_{title.partition('.')[0]} {title}")
        for kind, content in blocks(words):
            lines += in_words(kind, content)
    return lines + ["*/", ""]


def header():
    text = HEADER.read_text(encoding="utf-8")
    lines = ["/** @file lumivex.h", "The whole boundary, and the manual of it. */", ""] + chapters(text)
    lines += ["/** The version of the library that this header belongs to. */",
              re.search(r"#define LUMIVEX_VERSION .*", text).group(), ""]
    exports = read_exports(HEADER)
    for section in dict.fromkeys(export.section for export in exports):
        lines += [f"/** @defgroup {group_name(section)} {section.title}"]
        for kind, content in blocks(section.text):
            lines += in_words(kind, content)
        lines += ["@{ */", ""]
        for export in exports:
            if export.section is section:
                lines += function(export)
        lines += ["/** @} */", ""]
    return "\n".join(lines)


def linked(name, text):
    """A page called after its file. What looks like a function becomes a link, so that one that is no longer there is noticed."""
    families = {export.name.partition("_")[0] for export in read_exports(HEADER)}
    text = re.sub(r"\A# [^{\n]*(?=\n)", rf"\g<0> {{#{name.replace('-', '_')}}}", text)
    return re.sub(rf"`((?:{'|'.join(sorted(families))})_\w+)`", r"@ref \1", text)


def cxx_header(name, text):
    """Comments before declarations become documentation; those inside functions stay comments."""
    first, _, rest = text.partition("\n")
    lines, scopes, before = [f"/** @file {name} @brief {escaped(first.removeprefix('// '))} */"], [], ""
    for line in rest.split("\n"):
        code = line.strip()
        if code.startswith("// ") and all(scopes):
            line = line.replace(code, "/// " + escaped(code[3:]))
        elif code == "{":
            scopes.append(bool(re.match(r"(class|struct|enum|namespace)\b", before)))
        elif code.endswith("{"):
            scopes.append(False)
        elif code.startswith("}") and scopes:
            scopes.pop()
        if code and not code.startswith("//"):
            before = code
        lines.append(line)
    return "\n".join(lines)


def main():
    path = Path(sys.argv[1])
    sys.stdout.reconfigure(encoding="utf-8")
    if path.name == HEADER.name:
        print(header())
    elif path.suffix == ".md":
        print(linked(path.stem, path.read_text(encoding="utf-8")))
    elif path.suffix == ".hpp":
        print(cxx_header(path.name, path.read_text(encoding="utf-8")), end="")
    else:
        print(path.read_text(encoding="utf-8"), end="")


if __name__ == "__main__":
    main()
