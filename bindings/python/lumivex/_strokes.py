"""Strokes of a brush: dabs along a line, clipped to the picture, and what they are stamped with."""
import math

import numpy

from . import _arrays, _values
from ._functions import FUNCTIONS

# By the brush's name: the export, and what the profile says.
BRUSHES = {"colour": ("paint", "left"), "colour-root": ("paint_strongest", "left"),
           "background": ("paint_background", "left"), "grain": ("grain", "covered"),
           "grain-background": ("grain_background", "covered"), "knife": ("knife", "covered"),
           "knife-background": ("knife_background", "covered"), "eraser": ("erase", "left"),
           "fade": ("paint_fade", None), "restore": ("paint_fade", None)}


# The radius of the largest tip, in pixels.
LARGEST = 32767
# Beyond it no dab can reach a picture; the walk along a stroke has an end wherever its points are.
FARTHEST = 1e6


def _rounded(value):
    """The nearest whole number, halves away from 0."""
    return int(math.copysign(math.floor(abs(value) + 0.5), value))


def tip(radius, hardness=0.5, grain=0.0):
    """A round tip: full strength up to `hardness` of the radius, then in an S to nothing at the rim.

    A picture of 2 radius x 2 radius: byte 0 is 0 where the brush is strongest, 255 where it does nothing. `grain` is
    how much of it specks take away.
    """
    # As the library's own program, to the bit: single precision where that takes its numbers in.
    hardness = float(numpy.float32(_values.real("stroke: hardness", hardness, 0, 1)))
    grain = float(numpy.float32(_values.real("stroke: grain", grain, 0, 1)))
    side = 2 * radius
    y, x = numpy.mgrid[0:side, 0:side].astype(float) - radius
    outward = numpy.sqrt(x * x + y * y) / radius
    t = numpy.clip((1 - outward) / max(1 - hardness, 1e-6), 0.0, 1.0)
    bits = numpy.arange(side * side, dtype=numpy.uint32).reshape(side, side) * numpy.uint32(2654435761)
    bits = (bits ^ bits >> numpy.uint32(15)) * numpy.uint32(2246822519)
    speck = (bits ^ bits >> numpy.uint32(13)) / 4294967295.0
    strength = t * t * (3 - 2 * t) * (1 - grain * speck)
    picture = numpy.zeros((side, side, 4), numpy.uint8)
    picture[..., 0] = numpy.floor(255 * (1 - strength) + 0.5)
    return picture


def dabs_along(points, spacing, radius, width, height):
    """Centres of the dabs along a line of points that touch the picture, `spacing` pixels from one to the next."""
    dabs = []
    until_next = 0.0
    points = [tuple(min(max(place, -FARTHEST), FARTHEST) for place in point) for point in points]
    for i, (px, py) in enumerate(points):
        lx, ly = points[max(i - 1, 0)]
        length = math.sqrt((px - lx) * (px - lx) + (py - ly) * (py - ly))
        while until_next <= length:
            x = _rounded(lx + (px - lx) * until_next / length if length > 0 else lx)
            y = _rounded(ly + (py - ly) * until_next / length if length > 0 else ly)
            if -radius <= x < width + radius and -radius <= y < height + radius:
                dabs.append((x, y))
            until_next += max(spacing, 1.0)
        until_next -= length
    return dabs


def stroke(picture, points, *, brush="colour", radius=24, hardness=0.5, grain=0.0, spacing=20, colour=(216, 52, 44),
           opacity=0.8, thin=1.0, other=None, selection=None, out=None):
    """Paints a stroke along (x, y) points.

    brush      One of colour, colour-root, background, grain, grain-background, knife, knife-background, eraser, fade
               and restore. Dabs add up, but with colour-root the strongest wins.
    spacing    From dab to dab, in percent of the radius.
    colour     Red, green, blue.
    thin       What divides the opacity of the knives.
    other      The picture that shows through, for the backgrounds, or that the eraser brings back.
    selection  Chapter 5 of the manual: any alpha but 0 selects.
    """
    if brush not in BRUSHES:
        raise ValueError(f"stroke: brush: expected one of {', '.join(BRUSHES)}, got {brush!r}")
    _arrays.picture("stroke: picture", picture)
    points = _values.points("stroke: points", points)
    spacing = _values.above_zero("stroke: spacing", spacing)
    radius = _values.whole("stroke: radius", radius, 1, LARGEST)
    picture = picture.copy() if out is None else _copied(picture, out)
    export, profile = BRUSHES[brush]
    arguments = {"brush": tip(radius, hardness, grain), "opacity": opacity}
    left = numpy.arange(256, dtype=numpy.float32) / numpy.float32(255)
    if profile:
        arguments["profile"] = left if profile == "left" else 1 - left
    if selection is not None:
        # Brushes want an alpha of 255, where elsewhere any but 0 selects.
        _arrays.picture("stroke: selection", selection)
        arguments["selection"] = numpy.where(selection[..., 3:] != 0, numpy.uint8(255), numpy.uint8(0)).repeat(4, 2)
    if brush.startswith("knife"):
        arguments["divisor"] = thin
    if brush == "restore":  # the one brush that wants its values the other way round
        arguments["brush"][..., 0] = 255 - arguments["brush"][..., 0]
    if export == "paint_fade":
        arguments["restore"] = brush == "restore"
    elif export == "erase":
        arguments["restore"] = _other(picture, other)
    else:
        arguments.update(zip(("red", "green", "blue"), _values.colour("stroke: colour", colour)))
    if brush.endswith("background"):
        arguments["background"] = _other(picture, other)
    arguments.update(_planes(export, picture))
    height, width = picture.shape[:2]
    for x, y in dabs_along(points, radius * float(numpy.float32(spacing)) / 100, radius, width, height):
        FUNCTIONS[export](picture, cx=x, cy=y, out=picture, **arguments)
    return picture


def _copied(picture, out):
    if out is not picture:
        numpy.copyto(out, picture)
    return out


def _other(picture, other):
    return numpy.zeros_like(picture) if other is None else other


def _planes(export, picture):
    """What a brush remembers from dab to dab."""
    if export == "paint_strongest":
        return {"root": picture.copy(), "least": numpy.full_like(picture, 255)}
    if export in ("grain", "grain_background", "knife", "knife_background"):
        return {"touched": numpy.zeros_like(picture)}
    return {}
