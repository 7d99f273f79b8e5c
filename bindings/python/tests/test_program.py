"""The same bytes as the command-line program, which calls the library in C++ with parameters of its own."""
import subprocess

import numpy
import pytest

import lumivex
from conftest import PROGRAM
from lumivex import tables, workflows

POINTS = [(20, 150), (90, 40), (170, 180), (300, 60)]
STROKE = '--stroke "' + " ".join(f"{x},{y}" for x, y in POINTS) + '" '


def masked(selection):
    """What the program makes of a selection where the library wants a mask picture."""
    mask = selection[..., 3:].repeat(4, axis=2)
    mask[..., 3] = 255
    return mask


def soft(scene):
    return lumivex.gaussian_9(scene)


# Arguments of the program, and the same on arrays: one of every kind of rule at least, from every family.
OPERATIONS = {
    "invert": lambda p, s: lumivex.invert(p),
    "grey --selection selection.png": lambda p, s: lumivex.grey(p, selection=s),
    "black-and-white --red 30 --row 60": lambda p, s: lumivex.black_and_white(p, red=30, row=60),
    "brightness --offset 50": lambda p, s: lumivex.brightness(p, 50),
    "contrast --contrast 80": lambda p, s: lumivex.contrast(p, 80),
    "curves --curve '0,0 64,40 192,220 255,255'": lambda p, s: lumivex.curves(
        p, master=tables.rows_of_curve([(0, 0), (64, 40), (192, 220), (255, 255)])),
    "lab-curves --lightness '0,0 100,140 255,255' --selection selection.png": lambda p, s: lumivex.lab_curves(
        p, selection=s, lightness_rows=tables.rows_of_curve([(0, 0), (100, 140), (255, 255)])),
    "levels --black 30 --grey 40 --white 220": lambda p, s: lumivex.levels(p, master=[30, 106, 220, 0, 255]),
    "gamma --row 55 --rows even": lambda p, s: lumivex.gamma(p, row=55, tone_table=tables.tone_table("even")),
    "brightness-contrast --brightness 60 --contrast 50 --pick 20,20 --weight selection.png --selection selection.png":
        lambda p, s: lumivex.brightness_contrast(p, selection=s, weights=s, tolerance=40, x=20, y=20, brightness=60),
    "balance --lightness 5 --b 20": lambda p, s: lumivex.balance(p, lightness_shift=5, b_shift=20),
    "equalise --strength 60 --selection selection.png": lambda p, s: workflows.equalise(p, 60, selection=s),
    "equalise-channels": lambda p, s: workflows.equalise_channels(p),
    "box-blur --radius 12 --selection selection.png --invert":
        lambda p, s: lumivex.box_blur(p, 12, selection=s, invert=True),
    "gaussian-7 --selection selection.png": lambda p, s: lumivex.gaussian_7(p, selection=s),
    "lab-blur": lambda p, s: lumivex.lab_blur(p),
    "sharpen --strength 2 --selection selection.png":
        lambda p, s: lumivex.sharpen(p, soft(p), amount=-30, selection=s),
    "high-pass --amount 55 --grey": lambda p, s: lumivex.high_pass(p, soft(p), 55, grey=True),
    "erode-lab": lambda p, s: lumivex.erode_lab(p, lumivex.lab_image(p)),
    "edge-map --threshold 90 --areas 20303a --edges ffd9a0":
        lambda p, s: lumivex.edge_map(p, 0x20, 0x30, 0x3a, 0xff, 0xd9, 0xa0, 90),
    "paint-alpha --stroke selection.png --alpha 60 --from 10,20 --to 120,90":
        lambda p, s: lumivex.paint_alpha(masked(s), p, 60, x0=10, x1=120, y0=20, y1=90),
    "fade-radial --centre 130,110 --radius 90 --selection selection.png":
        lambda p, s: lumivex.fade_radial(p, list(range(256)), 130, 110, 90, selection=s),
    "clone --stroke selection.png --offset 18,-6":
        lambda p, s: lumivex.clone(masked(s), p, p, 255, 18, -6),
    "edges --threshold 80": lambda p, s: framed_by_black(lumivex.edges(p, 80)),
    "layers --channel red": lambda p, s: lumivex.layers(p).red,
    "carve --width 200 --height 240 --protect selection.png":
        lambda p, s: lumivex.carve(p, 200, 240, protect=s[..., 3]),
    "carve --width 300 --preview": lambda p, s: lumivex.carve(p, 300, preview=True),
    "carve --remove selection.png": lambda p, s: lumivex.carve(p, remove=numpy.where(s[..., 3] > 0, s[..., 3], 0)),
    "paint --radius 30 --grain 0.5 " + STROKE: lambda p, s: lumivex.stroke(p, POINTS, radius=30, grain=0.5),
    "paint --brush knife-background --thin 4 --other selection.png --selection selection.png " + STROKE:
        lambda p, s: lumivex.stroke(p, POINTS, brush="knife-background", thin=4, other=s, selection=s),
}
for _brush in ("colour-root", "grain", "eraser", "fade", "restore"):
    OPERATIONS[f"paint --hardness 0.2 --brush {_brush} " + STROKE] = (
        lambda p, s, brush=_brush: lumivex.stroke(p, POINTS, brush=brush, hardness=0.2))


def framed_by_black(picture):
    for rim in (picture[0], picture[-1], picture[:, 0], picture[:, -1]):
        rim[:, :3] = 0
    return picture


@pytest.mark.parametrize("arguments", OPERATIONS)
def test_as_the_program(arguments, run, scene, selection):
    before = scene.copy(), selection.copy()
    result = OPERATIONS[arguments](scene, selection)
    numpy.testing.assert_array_equal(result, run(arguments))
    assert (scene == before[0]).all() and (selection == before[1]).all()
    assert result.shape != scene.shape or (result != scene).any()


@pytest.mark.parametrize("arguments, options, drawing", [
    ("", {"by": "colour"}, {}),
    ("--by edges --stroke --paint a01010 --thin 2", {"by": "edges", "thin": 2}, {"stroke": True, "paint": "#a01010"}),
    ("--by white --invert --smooth 1 --error 2", {"by": "white", "invert": True, "smooth": 1, "error": 2}, {}),
    ("--by alpha --smooth 0 --handle 40", {"by": "alpha", "smooth": 0, "handle": 40}, {})])
def test_curves_as_the_program(arguments, options, drawing, run, scene):
    traced = lumivex.trace(scene, **options)
    svg, report = run("trace " + arguments, "svg")
    assert traced.svg(**drawing) == svg
    assert report.startswith(f"{len(traced.outlines)} outlines, {sum(map(len, traced.outlines))} points")


def test_points_along_an_outline_as_the_program(run, scene, folder):
    printed = subprocess.run([PROGRAM, "path", "scene.png", "--by", "white", "--step", "9", "-o", "path.png"],
                             cwd=folder, check=True, capture_output=True, text=True).stdout
    outline = max(lumivex.trace(scene, "white").outlines, key=len)
    points = workflows.points_along(outline, 9)
    assert "".join(f"{x:.2f} {y:.2f}\n" for x, y in points.tolist()) == printed
