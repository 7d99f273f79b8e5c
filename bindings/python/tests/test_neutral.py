"""Neutral settings of tones change nothing, on every level of every channel, and one step off them changes little.

What goes through the grid of L*a*b* is coarser than a picture: there the way through the grid and back is the measure.
"""
import shlex
import subprocess

import numpy
import pytest

import lumivex
from conftest import PROGRAM
from lumivex import tables, workflows

LEVELS = numpy.arange(256, dtype=numpy.uint8)
# The greys, then a ramp of each channel over dark, middle and light others.
RAMPS = numpy.stack([numpy.stack([LEVELS if channel in (ramp, 3) else numpy.full_like(LEVELS, level)
                                  for channel in range(3)] + [LEVELS], axis=-1)
                     for ramp, level in [(3, 0)] + [(ramp, level) for ramp in range(3) for level in (0, 90, 255)]])
RAMPS[0, :, :3] = LEVELS[:, None]
BENT = [(0, 0), (128, 129), (255, 255)]
ALL = numpy.full_like(RAMPS, 255)


@pytest.fixture(scope="module")
def program(tmp_path_factory):
    folder = tmp_path_factory.mktemp("neutral")
    lumivex.pictures.write(folder / "in.png", RAMPS)
    lumivex.pictures.write(folder / "half.png", numpy.full_like(RAMPS, 128))

    def run(arguments):
        operation, *others = shlex.split(arguments)
        subprocess.run([PROGRAM, operation, "in.png", "-o", "out.png", *others], cwd=folder, check=True)
        return lumivex.pictures.read(folder / "out.png")[:len(RAMPS), :256]

    return run


def farthest(picture, other=RAMPS):
    return numpy.abs(picture[..., :3].astype(int) - other[..., :3]).max()


def guided(operation, **given):
    return operation(RAMPS, selection=ALL, weights=numpy.full_like(RAMPS, 128), x=9, tolerance=9, **given)


# The program's neutral setting, one step off it, and how far that may move a level.
SETTINGS = [
    ("brightness --offset", "0", "1", 1), ("shift --offset", "0", "1", 1), ("contrast --contrast", "50", "51", 3),
    ("levels --white 255 --black", "0", "1", 2), ("levels --black 0 --white 255 --grey", "50", "51", 4),
    ("levels --black 0 --white 255 --channel blue --output-white", "255", "254", 1),
    ("curves --curve", "0,0 255,255", "0,0 128,129 255,255", 2),
    ("curves --curve '0,0 255,255' --red", "0,0 255,255", "0,0 128,129 255,255", 2),
    ("gamma --row", "50", "51", 5), ("gamma --rows even --row", "100", "99", 2),
    ("gamma --pick 9,0 --weight half.png --row", "50", "51", 5),
    ("brightness-contrast --contrast 50 --brightness", "0", "1", 1),
    ("brightness-contrast --brightness 0 --contrast", "50", "51", 3),
    ("brightness-contrast --contrast 50 --pick 9,0 --brightness", "0", "1", 1),
    ("contrast-histograms --contrast 50 --brightness", "0", "1", 1), ("equalise --strength", "0", "1", 1),
]


@pytest.mark.parametrize("arguments, neutral, off, step", SETTINGS, ids=[row[0] for row in SETTINGS])
def test_of_the_program(arguments, neutral, off, step, program):
    numpy.testing.assert_array_equal(program(f"{arguments} '{neutral}'"), RAMPS)
    assert 0 < farthest(program(f"{arguments} '{off}'")) <= step


CALLS = [
    (lambda: lumivex.brightness(RAMPS, 0), lambda: lumivex.brightness(RAMPS, 1), 1),
    (lambda: lumivex.shift(RAMPS, 0), lambda: lumivex.shift(RAMPS, 1), 1),
    (lambda: lumivex.contrast(RAMPS, 50), lambda: lumivex.contrast(RAMPS, 51), 3),
    (lambda: lumivex.levels(RAMPS), lambda: lumivex.levels(RAMPS, red=[1, 128, 255, 0, 255]), 2),
    (lambda: lumivex.map_levels(RAMPS, LEVELS), lambda: lumivex.map_levels(RAMPS, numpy.maximum(LEVELS, 1)), 1),
    (lambda: lumivex.curves(RAMPS), lambda: lumivex.curves(RAMPS, green=tables.rows_of_curve(BENT)), 2),
    (lambda: lumivex.gamma(RAMPS, row=50), lambda: lumivex.gamma(RAMPS, row=51), 5),
    (lambda: guided(lumivex.gamma, row=50), lambda: guided(lumivex.gamma, row=49), 5),
    (lambda: lumivex.brightness_contrast(RAMPS), lambda: lumivex.brightness_contrast(RAMPS, contrast=51), 3),
    (lambda: guided(lumivex.brightness_contrast), lambda: guided(lumivex.brightness_contrast, brightness=3), 3),
    (lambda: lumivex.contrast_histograms(RAMPS)[0], lambda: lumivex.contrast_histograms(RAMPS, brightness=-1)[0], 1),
    (lambda: workflows.equalise(RAMPS, 0), lambda: workflows.equalise(RAMPS, 1), 1),
]


@pytest.mark.parametrize("neutral, off, step", CALLS)
def test_of_the_package(neutral, off, step):
    numpy.testing.assert_array_equal(neutral(), RAMPS)
    assert 0 < farthest(off()) <= step


def through_the_grid(picture):
    return lumivex.balance(picture, lightness_shift=0)


@pytest.mark.parametrize("arguments, neutral, off", [
    ("balance --a 0 --b 0 --lightness", "0", "1"), ("balance --lightness 0 --b 0 --a", "0", "1"),
    ("lab-curves --lightness", "0,0 255,255", "0,0 128,129 255,255"),
    ("lab-curves --lightness '0,0 255,255' --a", "0,0 255,255", "0,0 128,129 255,255"),
    ("lab-curves --lightness '0,0 255,255' --b", "0,0 255,255", "0,0 128,129 255,255")])
def test_in_lab(arguments, neutral, off, program):
    still, moved = (program(f"{arguments} '{value}'") for value in (neutral, off))
    coarse = through_the_grid(RAMPS)
    assert farthest(still) <= farthest(coarse)
    assert 0 < farthest(moved, still) <= farthest(coarse)
    greys, coarse_greys = (numpy.abs(picture[0, :, :3].astype(int) - RAMPS[0, :, :3]) for picture in (still, coarse))
    assert (greys <= coarse_greys).all()


def test_all_colours_through_straight_curves():
    """Axes go through 256 bytes besides, so that single colours may move further than by the grid alone; none moves
    further than the grid moves the farthest."""
    some = numpy.append(LEVELS[::3], LEVELS[1::85])
    blue, green, red = numpy.meshgrid(some, some, some, indexing="ij")
    colours = numpy.stack([blue, green, red, numpy.full_like(red, 255)], axis=-1).reshape(len(some), -1, 4)
    assert farthest(lumivex.lab_curves(colours), colours) <= farthest(through_the_grid(colours), colours)
