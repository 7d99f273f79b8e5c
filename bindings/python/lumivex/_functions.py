"""The exports as functions on arrays: built from the header and the rules when the package is imported."""
import ctypes
import inspect
import sys
from collections import namedtuple

import numpy

from . import _arrays, _checks, tables
from ._library import C_TYPES, EXPORTS, raw
from ._progress import Watch

NOTHING_FOUND = 0xFFFFFFFF


# What an array that was left out is taken to be: how the documentation says it, and the array.
_STAND_INS = {
    "nothing": ("there is none", lambda p, call: None),
    "everything": ("all is selected", lambda p, call: _arrays.make(p, call.sizes, 255)),
    "lab": ("that of tables.lab_tables()", lambda p, call: tables.lab_table(p.name)),
    "curve_family": ("tables.curve_family()", lambda p, call: tables.curve_family()),
    "tone_table": ("tables.tone_table()", lambda p, call: tables.tone_table()),
    "straight": ("changes nothing", lambda p, call: tables.straight_rows()),
    "levels": ("changes nothing", lambda p, call: numpy.array([0, 128, 255, 0, 255], numpy.int32)),
    "gammas": ("tables.gammas_by_position()", lambda p, call: tables.gammas_by_position()),
    "stop": ("never stops", lambda p, call: numpy.zeros(1, numpy.uint8)),
    "equalising_table": ("that of the source", lambda p, call: FUNCTIONS["equalising_table"](call.arrays["source"])),
}


class _Call:
    """One call: what was given, turned step by step into what the library takes."""

    def __init__(self, export, given, out):
        self.export = export
        self.given = given
        self.out = out
        self.sizes = {}
        self.arrays = {}
        self.numbers = {}
        self.copied = None
        self._take_arrays()
        self._take_numbers()
        self._make_arrays()
        _checks.check(export, self)

    def where(self, name):
        return f"{self.export.english}: {name}"

    def _take_arrays(self):
        for p in self.export.parameters:
            value = self.given.get(p.name)
            if p.role not in ("input", "changed", "state", "made") or (value is None and p.default is not None):
                continue
            if value is None and p.role == "made":
                continue
            take = _arrays.writable if p.role in ("state", "made") else _arrays.readable
            self.arrays[p.name] = take(self.where(p.name), p, value, self.sizes)
        _checks.add_sizes(self.export, self)
        for p in self.export.parameters:
            if p.role == "input" and p.name not in self.arrays:
                self.arrays[p.name] = _STAND_INS[p.default][1](p, self)

    def _take_numbers(self):
        for p in self.export.parameters:
            if p.role == "implied":
                self.numbers[p.name] = self.export.implied(p.name, self.sizes, self.given)
            elif p.role in ("number", "reference"):
                value = self.given[p.name]
                if value is None:
                    value = _checks.usual(self.export, p.name, self)
                self.numbers[p.name] = _arrays.number(self.where(p.name), p, value)
                _checks.learn(self.export, p.name, self)

    def _make_arrays(self):
        for p in self.export.parameters:
            start = self.arrays.get(p.start)
            if p is self.export.main:
                self.arrays[p.name] = self._main(p, self.arrays[p.name] if p.role == "changed" else start)
            elif p.role in ("made", "scratch") and p.name not in self.arrays:
                self.arrays[p.name] = _arrays.make(p, self.sizes, p.start or 0) if start is None else start.copy()

    def _main(self, p, start):
        """The picture that the library writes. A picture to change is copied to `out`, once all arguments have been
        found right. A destination is not, because what `out` holds counts where nothing is written."""
        if self.out is None:
            return _arrays.make(p, self.sizes, 0) if start is None else start.copy()
        out = _arrays.writable(self.where("out"), p, self.out, self.sizes)
        if p.role == "changed" and out is not start:
            self.copied = start
        return out

    def run(self, progress):
        if self.copied is not None:
            numpy.copyto(self.out, self.copied)
        references = {p.name: C_TYPES[p.type](self.numbers.get(p.name, p.start or 0))
                      for p in self.export.parameters if p.role in ("result", "reference")}
        with Watch(progress) as counter:
            def argument(p):
                if p.role == "progress":
                    return ctypes.byref(counter)
                if p.name in references:
                    return ctypes.byref(references[p.name])
                return self.arrays[p.name] if p.pointer else self.numbers[p.name]
            returned = getattr(raw, self.export.name)(*[argument(p) for p in self.export.parameters])
        found = {name: reference.value for name, reference in references.items()}
        return self._results({**self.arrays, **found, "returned": returned})

    def _results(self, values):
        if "framed" in values:
            values["framed"] = bool(values["framed"])
        if values.get("end") == NOTHING_FOUND:
            values["end"] = None
        for p in self.export.parameters:
            kept = self.export.kept(p.name)
            if kept:
                # A copy: the whole, made for the worst case, would stay in memory as long as a part of it is in use.
                values[p.name] = values[p.name][:values[kept]].copy()
        results = [values[name] for name in self.export.results]
        if len(results) > 1:
            return RESULTS[self.export.english](*results)
        return results[0] if results else None


def signature(export):
    required, optional = export.shown
    kinds = inspect.Parameter
    parameters = [kinds(p.name, kinds.POSITIONAL_OR_KEYWORD) for p in required]
    extra = [kinds(p.name, kinds.KEYWORD_ONLY, default=p.default if p.role == "number" else None) for p in optional]
    if export.main:
        extra.append(kinds("out", kinds.KEYWORD_ONLY, default=None))
    if export.has_progress:
        extra.append(kinds("progress", kinds.KEYWORD_ONLY, default=None))
    return inspect.Signature(parameters + extra)


SIGNATURES = {export.english: signature(export) for export in EXPORTS}


def bind(export, arguments, named):
    """Arguments by their names."""
    try:
        return SIGNATURES[export.english].bind(*arguments, **named)
    except TypeError as failure:
        raise TypeError(f"{export.english}: {failure}") from None


def _argument(p):
    """A line of the documentation: what an argument has to be."""
    if not p.pointer or p.role == "reference":
        return f"    {p.name:<16}{'number' if p.type in ('float', 'double') else 'whole number'}"
    kind = f"{_arrays.DTYPES[p.type]} array of shape {_arrays.describe(p.shape)}"
    if p.role == "state":
        kind += ", changed in place"
    elif p.role == "made":
        kind += "; made and returned unless it is given"
    elif p.default:
        kind += f"; without it: {_STAND_INS[p.default][0]}"
    return f"    {p.name:<16}{kind}"


def documentation(export):
    required, optional = export.shown
    lines = [_argument(p) for p in required + optional]
    if export.main:
        lines.append("    out             where the result goes; without it: a new array")
    if export.has_progress:
        lines.append("    progress        called with the library's counter while the call runs, from a thread")
    parts = [export.manual, f"In C this is {export.name}. What it takes there besides these follows from them:\n\n"
             + "\n".join(lines)]
    gives = [{"returned": "what C returns"}.get(name, name) for name in export.results]
    parts.append(f"Gives {', '.join(gives) or 'nothing'}.")
    if export.section:
        parts.append(f"Of all functions of this section:\n\n{export.section}")
    return "\n\n".join(parts)


def _make(export):
    def function(*arguments, **named):
        bound = bind(export, arguments, named)
        bound.apply_defaults()
        given = dict(bound.arguments)
        progress = given.pop("progress", None)
        return _Call(export, given, given.pop("out", None)).run(progress)

    function.__name__ = function.__qualname__ = export.english
    function.__module__ = __package__
    function.__doc__ = documentation(export)
    function.__signature__ = SIGNATURES[export.english]
    return function


def _make_results():
    """Named tuples for exports that give several things; attributes of this module, so that they can be pickled."""
    made = {}
    for export in EXPORTS:
        if len(export.results) > 1:
            made[export.english] = namedtuple(export.result_name, export.results, module=__name__)
            setattr(sys.modules[__name__], export.result_name, made[export.english])
    return made


RESULTS = _make_results()
FUNCTIONS = {export.english: _make(export) for export in EXPORTS}
# The names that the library exports stand for the same functions.
ALIASES = {export.name: FUNCTIONS[export.english] for export in EXPORTS}
