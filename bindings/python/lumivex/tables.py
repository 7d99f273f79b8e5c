"""Tables that many calls share: built when first needed, once for the whole program, and read-only."""
import functools
import math
import threading
from collections import namedtuple

import numpy

from . import _values
from ._library import raw

LabTables = namedtuple("LabTables", "lightness a b red green blue")
_lock = threading.RLock()


def _shared(build):
    """Builds once, whatever threads ask at the same time, and lets nobody write to the result."""
    cached = functools.lru_cache(maxsize=None)(build)

    @functools.wraps(build)
    def get(*arguments):
        with _lock:
            return cached(*arguments)

    return get


def _frozen(table):
    table.setflags(write=False)
    return table


@_shared
def _cube():
    tables = [numpy.empty((256, 256, 256), numpy.float32) for _ in range(3)]
    raw.IM_SetDataLab(*tables, numpy.zeros(1, numpy.uint32))
    return [_frozen(table) for table in tables]


@_shared
def _grid():
    tables = [numpy.empty((546, 241, 241), numpy.uint8) for _ in range(3)]
    raw.IM_SetDataRGB(*tables, numpy.zeros(1, numpy.uint32))
    return [_frozen(table) for table in tables]


def lab_tables():
    """The Lab cube (lightness, a, b) and the RGB-from-Lab grid (red, green, blue): 282 MB together."""
    return LabTables(*_cube(), *_grid())


def lab_table(name):
    """One of them, without building the others' half."""
    place = LabTables._fields.index(name)
    return _cube()[place] if place < 3 else _grid()[place - 3]


@_shared
def tone_table(kind="logarithmic"):
    """A tone table of 101 x 256 floats: "logarithmic" or "even", by how gamma grows with the row."""
    builders = {"logarithmic": "IM_SetDataGamma", "even": "IM_SetDataGammaSimple"}
    if kind not in builders:
        raise ValueError(f"tone_table: expected one of {', '.join(builders)}, got {kind!r}")
    table = numpy.empty((101, 256), numpy.float32)
    getattr(raw, builders[kind])(table, 0)
    return _frozen(table)


@_shared
def curve_family():
    """The curve family, 256 x 256 bytes."""
    family = numpy.empty((256, 256), numpy.uint8)
    raw.IM_SetDataCourbe(family, 0)
    return _frozen(family)


@_shared
def gammas_by_position():
    """256 gammas for `levels`, each of which maps a grey at 0..255 between black and white to the middle."""
    shares = [max(position - 0.5, 0.5) / 255 for position in range(256)]
    return _frozen(numpy.array([min(max(math.log(share) / math.log(0.5), 0.1), 10.0) for share in shares]))


def _slopes(points):
    """Slopes at the points of a curve that rises and falls only where they do (Fritsch and Carlson, with Butland's
    harmonic means)."""
    rises = [(y1 - y0) / (x1 - x0) for (x0, y0), (x1, y1) in zip(points, points[1:])]
    if not rises:
        return [0.0]
    inner = [2 * one * two / (one + two) if one * two > 0 else 0.0 for one, two in zip(rises, rises[1:])]
    return [rises[0], *inner, rises[-1]]


def _curve_at(points, slopes, x):
    after = next((i for i, point in enumerate(points) if point[0] >= x), None)
    if after is None or after == 0:
        return points[-1 if after is None else 0][1]
    (x0, y0), (x1, y1) = points[after - 1], points[after]
    width = x1 - x0
    t = (x - x0) / width
    rest = 1 - t
    return (rest * rest * ((1 + 2 * t) * y0 + t * width * slopes[after - 1])
            + t * t * ((1 + 2 * rest) * y1 - rest * width * slopes[after]))


def _nearest_row(curve, level):
    """The row whose byte at a level comes nearest to the curve. Several may have that byte, all of them at level 0.
    Lightness goes through the formula of its row instead of the byte, from this level up to the next, and is truncated
    to the grid then: so of several the one counts that is nearest to the curve where the level ends."""
    away = numpy.abs(curve_family()[:, level].astype(float) - curve(float(level)))
    end = min(level + 1, 255)
    wanted = curve(float(end))
    return min(numpy.flatnonzero(away == away.min()).tolist(),
               key=lambda row: abs(math.pow(end / 255, (row + 1) / (256 - end)) * 255 - wanted))


def rows_of_curve(points):
    """For each level the row of the curve family that comes nearest to a smooth curve through (x, y) points.

    Levels 0 and 255 always stay, and dark ones can be darkened only a little.
    """
    points = sorted(_values.points("rows_of_curve: points", points))
    if not all(0 <= level <= 255 for point in points for level in point):
        raise ValueError("rows_of_curve: expected points of levels from 0 to 255")
    if any(one[0] == two[0] for one, two in zip(points, points[1:])):
        raise ValueError("rows_of_curve: two points at the same level")
    slopes = _slopes(points)
    curve = functools.partial(_curve_at, points, slopes)
    return numpy.array([_nearest_row(curve, level) for level in range(256)], numpy.uint32)


@_shared
def straight_rows():
    """The rows that change nothing, as nearly as the curve family can."""
    return _frozen(rows_of_curve([(0, 0), (255, 255)]))
