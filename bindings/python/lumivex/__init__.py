"""Lumivex on numpy arrays: image operations that are exact to the bit.

A picture is a uint8 array of shape (height, width, 4) in the order blue, green, red, alpha. Every function of the
library is here under its English name and under the name that the library exports: help(lumivex.box_blur) shows its
manual. Functions leave what they are given as it is and return a new array, unless `out` says where the result goes;
`out=picture` works in place. The steps of seam carving, and the records and maps of outlines, are changed in place.

`lumivex.raw` has the C functions with all their arguments, `lumivex.tables` the tables that calls share, and carve,
trace and stroke whole workflows.
"""
from . import pictures, tables, workflows
from ._functions import ALIASES, FUNCTIONS
from ._library import LibraryNotFound, raw
from ._version import version as __version__
from .tables import lab_tables
from .workflows import carve, stroke, trace

globals().update(FUNCTIONS)
globals().update(ALIASES)

__all__ = ["LibraryNotFound", "carve", "lab_tables", "pictures", "raw", "stroke", "tables", "trace", "workflows",
           "__version__", *FUNCTIONS, *ALIASES]
