"""Whole jobs that take several calls in their right order, as an editor makes them."""
from ._carving import carve
from ._functions import FUNCTIONS
from ._strokes import stroke
from ._tracing import points_along, trace

__all__ = ["carve", "equalise", "equalise_channels", "points_along", "stroke", "trace"]


def equalise(picture, strength=70, *, selection=None, progress=None):
    """Gives all lightnesses the same share of the picture, by so many percent."""
    return FUNCTIONS["equalise"](picture, strength, selection=selection, progress=progress).destination


def equalise_channels(picture):
    """The same table for red, green and blue themselves, which shifts colours too."""
    return FUNCTIONS["map_levels"](picture, FUNCTIONS["equalising_table"](picture))
