"""The exports as a caller in Python sees them: what the header says, and what the tables of rules add."""
import json
import os
import re

from . import _rules as rules


class NoRule(Exception):
    """A parameter that no table knows: the header has grown, and the tables have not."""


def _array(export, name, type_, const, names):
    """Role, shape, start and default of an array."""
    if (export, name) in rules.EXCEPTIONS:
        return rules.EXCEPTIONS[export, name]
    if const:
        if type_ == "uint8_t" and name in rules.OPTIONAL_PICTURES:
            return "input", rules.PICTURE, None, rules.OPTIONAL_PICTURES[name]
        if type_ == "uint8_t" and name in rules.PICTURES:
            return "input", rules.PICTURE, None, None
        if (type_, name) in rules.INPUTS:
            shape, default = rules.INPUTS[type_, name]
            return "input", shape, None, default
    elif type_ == "uint8_t" and name in rules.CHANGED:
        return "changed", rules.PICTURE, None, None
    elif (type_, name) in rules.OUTPUTS:
        role, shape, start = rules.OUTPUTS[type_, name]
        if role == "written":
            start = next((base for base in ("source", "image", "base") if base in names), 0)
        return role, shape, start, None
    raise NoRule(f"{export}: no rule for {type_}* {name}")


class Export:
    """One export with what the tables say about it."""

    def __init__(self, entry, section):
        self.name = entry["name"]
        self.english = entry["english"]
        self.result = entry["result"]
        self.family = section["family"]
        self.manual = entry["manual"]
        self.section = section["text"]
        names = [parameter["name"] for parameter in entry["parameters"]]
        self.parameters = [self._parameter(given, names) for given in entry["parameters"]]
        said = [re.search(r"In\s+place:\s+(yes|no)", text) for text in (self.manual, self.section)]
        self.in_place = next((found.group(1) == "yes" for found in said if found), False)
        self.main = next((p for p in self.parameters if p.role in ("changed", "written")), None)
        self.rectangle = all(p in names for p in ("x0", "x1", "y0", "y1")) and self._type("x0") == "int32_t"
        self.dab = "dx0" in names

    def _type(self, name):
        return next(p.type for p in self.parameters if p.name == name)

    def _parameter(self, given, names):
        name, type_ = given["name"], given["type"]
        if type_.endswith("*"):
            const, bare = type_.startswith("const "), type_.rstrip("*").replace("const ", "")
            bare = rules.ONE_TYPE.get(name, bare)
            role, shape, start, default = _array(self.english, name, bare, const, names)
            return rules.Parameter(name, bare, True, role, shape, start, default)
        # offset_table has no picture to take its size from.
        implied = (name in rules.FLAGS or re.match(r"unused|ignored", name)
                   or (self.english, name) in rules.IMPLIED_HERE
                   or (name in rules.IMPLIED and self.english != "offset_table"))
        default = rules.DEFAULTS_HERE.get((self.english, name), rules.DEFAULTS.get(name, "none"))
        # A rectangle's corners are whole numbers. fade_linear has a point of the same names.
        if default is None and type_ not in ("int32_t", "uint32_t"):
            default = "none"
        return rules.Parameter(name, type_, False, "implied" if implied else "number", (), None, default)

    def implied(self, name, sizes, given):
        """A number that the caller does not give."""
        if name in rules.FLAGS:
            return int(given[rules.FLAGS[name]] is not None)
        rule = rules.IMPLIED_HERE.get((self.english, name)) or rules.IMPLIED.get(name)
        return rule(sizes) if rule else 0

    @property
    def shown(self):
        """The parameters that a caller may give: those that have to be given, and the others."""
        required = [p for p in self.parameters if p.role in ("changed", "state", "reference")
                    or (p.role == "input" and p.default is None) or (p.role == "number" and p.default == "none")]
        optional = [p for p in self.parameters if p.role == "made" or (p.role == "input" and p.default is not None)
                    or (p.role == "number" and p.default != "none")]
        return required, optional

    @property
    def has_progress(self):
        return any(p.role == "progress" for p in self.parameters)

    @property
    def result_name(self):
        """What the named tuple of several results is called."""
        return "".join(word.capitalize() for word in self.english.split("_")) + "Result"

    def kept(self, name):
        """The number that says how much is kept of an array that is made as long as it may have to be."""
        return rules.KEPT.get((self.english, name))

    @property
    def results(self):
        """What a call gives back, by name."""
        hidden = {self.kept(p.name) for p in self.parameters}
        names = [p.name for p in self.parameters
                 if p.role in ("changed", "written", "made", "result") and p.name not in hidden]
        return names + ["returned"] if self.english in rules.RETURNING else names


def read_exports(folder=os.path.dirname(os.path.abspath(__file__))):
    with open(os.path.join(folder, "interface.json"), encoding="utf-8") as file:
        sections = json.load(file)
    return [Export(entry, section) for section in sections for entry in section["exports"]]
