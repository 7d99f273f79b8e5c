"""From a picture to curves: two-level map, graph of its edges, walks, smoothing, curves."""
import math

import numpy

from . import _arrays, _values
from ._functions import FUNCTIONS
from ._library import raw

# Smoothing keeps what lies more than 0.7 off its neighbours. In pixels these are real corners, by 1.06, but also the
# steps of slanted lines, by 0.71. A little smaller, only the former are.
SCALE = 1.25
SMOOTHINGS = (None, "smooth_6", "smooth_4", "smooth_6_even", "smooth_6_running")
_GRAPHS = {"green": ("edge_graph", 1), "blue": ("edge_graph_blue", 0), "alpha": ("edge_graph_alpha", 3)}


class Drawing:
    """The outlines of a picture, and the curves that were fitted to them.

    outlines    Closed polylines, float arrays of shape (points, 2); the first point is not repeated.
    curves      Bezier segments of each, float arrays of shape (segments, 4, 2): start, end, control 1, control 2.
    framed      The whole frame of the picture is inside, and no outline.
    The picture's upper left corner is (0, 0), so that pixel centres lie halfway between whole numbers.
    """

    def __init__(self, outlines, curves, framed, width, height):
        self.outlines = outlines
        self.curves = curves
        self.framed = framed
        self.width = width
        self.height = height

    def svg(self, paint="#000000", *, stroke=False, fill=None):
        """The curves as one path of an SVG picture, filled unless only stroked, with holes cut out."""
        fill = not stroke if fill is None else fill
        size = f'width="{self.width}" height="{self.height}"'
        lines = [f'<svg xmlns="http://www.w3.org/2000/svg" {size} viewBox="0 0 {self.width} {self.height}">',
                 f'<path fill="{paint if fill else "none"}" fill-rule="evenodd" '
                 f'stroke="{paint if stroke else "none"}" d="' + (self._frame() if self.framed else "")]
        paths = [_path(segments) for segments in self.curves]
        return "\n".join(lines) + "".join(path + "\n" for path in paths) + '"/>\n</svg>\n'

    def _frame(self):
        return f"M0,0H{self.width}V{self.height}H0Z\n"


def _decimal(value):
    """To a hundredth of a pixel, without needless zeros."""
    hundredths = numpy.float32(value * numpy.float32(100))
    rounded = numpy.float32(math.copysign(math.floor(abs(hundredths) + 0.5), hundredths)) / numpy.float32(100)
    return numpy.format_float_positional(rounded, trim="-")


def _point(point):
    return f"{_decimal(point[0])},{_decimal(point[1])}"


def _path(segments):
    start = "M" + _point(segments[0, 0])
    return start + "".join(f"C{_point(one)} {_point(two)} {_point(end)}" for _, end, one, two in segments) + "Z"


def _map_of(picture, by, colour, threshold, invert, thin):
    """A two-level map, and its byte that tells foreground."""
    if by == "colour":
        red, green, blue = colour
        result, channel = FUNCTIONS["threshold"](picture, red, green, blue, threshold, invert=invert), "green"
    elif by == "edges":
        result, channel = FUNCTIONS["edges"](picture, threshold, invert=invert), "green"
        # The outermost pixels, which the library leaves, become outside too.
        for rim in (result[0], result[-1], result[:, 0], result[:, -1]):
            rim[..., :3] = 0
    elif by == "blue":
        result, channel = FUNCTIONS["threshold_blue"](picture), "green"
    elif by == "white":
        inside = (picture[..., :3].sum(axis=2, dtype=numpy.int32) >= 3 * 128) != bool(invert)
        result, channel = picture.copy(), "blue"
        result[..., :3] = numpy.where(inside, 255, 0)[..., None]
    elif by == "alpha":
        if thin:
            raise ValueError("trace: thin: transparency is not thinned; by='white' takes a mask")
        return FUNCTIONS["black_plus_one"](picture), "alpha"
    else:
        raise ValueError(f"trace: by: expected colour, edges, blue, alpha or white, got {by!r}")
    for _ in range(thin):
        before = result.copy()
        FUNCTIONS["thin_white" if channel == "blue" else "thin_yellow"](result, out=result)
        if (result == before).all():
            break
    return result, channel


def _outlines(two_level, channel, smooth):
    height, width = two_level.shape[:2]
    export, byte = _GRAPHS[channel]
    graph = FUNCTIONS[export](two_level)
    records, index = graph.records, graph.map
    # No edge faces out of the picture although its first pixel is foreground: then the frame is.
    framed = graph.framed if channel == "green" else bool(two_level[0, 0, byte] and index[0, 0, 0] < 0)
    points = numpy.zeros((len(records), 2), numpy.float32)
    outlines = []
    for start in range(len(records)):
        if records[start, 0] == -1:
            continue
        # One array serves all walks.
        length = raw.TRACE_Parcourir(records, index, points, len(points), start, SCALE, SCALE, width * 4, 0, 0)
        outline = points[:length].copy()
        if smooth:
            FUNCTIONS[SMOOTHINGS[smooth]](outline, out=outline)
        outlines.append(outline * numpy.float32(SCALE) + numpy.float32(0.5))
    return outlines, framed


def _closed(outline):
    """Curves and paths are open: the first point follows the last one again."""
    return numpy.concatenate([outline, outline[:1]])


def trace(picture, by="colour", *, colour=(0, 0, 0), threshold=80, invert=False, thin=0, smooth=3, error=0.7,
          handle=67):
    """Traces a picture into Bezier curves.

    by         What is inside: "colour" for what is like a colour (red, green, blue), "edges", "blue" for a blue of
               255, "alpha" for what is not transparent, or "white" on black.
    threshold  How far from the colour, or how steep an edge.
    thin       Rounds of thinning at most.
    smooth     Which smoothing, 1 to 4; 0 for none.
    error      Pixels a curve may be off.
    handle     Length of handles, percent of half a chord.
    """
    _arrays.picture("trace: picture", picture)
    colour = _values.colour("trace: colour", colour)
    threshold = _values.whole("trace: threshold", threshold, 0, 255)
    thin = _values.whole("trace: thin", thin, 0)
    smooth = _values.whole("trace: smooth", smooth, 0, len(SMOOTHINGS) - 1)
    error = _values.above_zero("trace: error", error)
    handle = _values.real("trace: handle", handle)
    two_level, channel = _map_of(picture, by, colour, threshold, invert, thin)
    outlines, framed = _outlines(two_level, channel, smooth)
    curves = [FUNCTIONS["fit_curves"](_closed(outline), handle=handle, error=error) for outline in outlines]
    return Drawing(outlines, curves, framed, picture.shape[1], picture.shape[0])


def points_along(outline, step):
    """Points at equal distances of about `step` along a whole closed outline."""
    step = _values.above_zero("points_along: step", step)
    table = FUNCTIONS["path_lengths"](_closed(outline))
    length = table[-1, 2]
    count = max(1, math.floor(float(length / numpy.float32(step)) + 0.5))
    points = numpy.full((count, 2), -1, numpy.float32)
    for i in range(count):
        distance = length * numpy.float32(i) / numpy.float32(count)
        FUNCTIONS["path_point"](table, distance, result=points[i])
    return points
