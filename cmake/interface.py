"""What include/lumivex.h says, read once for all that is derived from it."""
import re

DECLARATION = re.compile(r"/\* (\w+) - ((?:(?!\*/).)*?)\s*\*/\s*"
                         r"LUMIVEX_API\s+(\w+)\s+LUMIVEX_CALL\s+(\w+)\(([^)]*)\)\s*;", re.S)


def plain(comment):
    """A comment's text without the stars before its lines."""
    return re.sub(r"\n \* ?", "\n", comment).strip()


class Section:
    """A titled part of the header: "family" or "family: what", and what holds for all functions in it."""

    def __init__(self, comment):
        self.title, _, self.text = plain(re.sub(r"\n \* =+\s*$", "", comment)).partition("\n")
        self.text = self.text.strip()
        self.family = re.match(r"\w+", self.title).group()


class Export:
    """One exported function as the header declares it."""

    def __init__(self, section, english, manual, result, name, parameters):
        self.section = section
        self.family = section.family
        self.english = english
        self.manual = plain(manual)
        self.result = result
        self.name = name
        self.parameters = " ".join(parameters.split())

    @property
    def split_parameters(self):
        """Pairs of type and name."""
        return [re.fullmatch(r"(.*?)\s*(\w+)", p.strip()).groups() for p in self.parameters.split(",")]

    @property
    def arguments(self):
        return ", ".join(name for _, name in self.split_parameters)

    @property
    def stack_bytes(self):
        """What a 32-bit callee takes off the stack."""
        return sum(8 if kind in ("double", "int64_t", "uint64_t") else 4 for kind, _ in self.split_parameters)

    def symbol(self, bits):
        """The name of the function in the objects of a Windows build, but for the underscore before all names."""
        return f"{self.name}@{self.stack_bytes}" if bits == "32" else self.name


def read_exports(header):
    with open(header, encoding="utf-8") as file:
        text = file.read()
    exports = []
    for part in re.split(r"/\* =+\n \* ", text)[1:]:
        comment, _, code = part.partition("*/")
        section = Section(comment)
        exports += [Export(section, *match) for match in DECLARATION.findall(code)]
    declared = len(re.findall(r"^LUMIVEX_API ", text, flags=re.M))
    if len(exports) != declared:
        raise SystemExit(f"{header}: {declared} declarations, but {len(exports)} with a section, a name and a manual")
    return exports
