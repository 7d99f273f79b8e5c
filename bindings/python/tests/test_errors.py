"""What is wrong with arguments is said before the library is called: it would read or write beyond them."""
import os
import subprocess
import sys
import threading

import numpy
import pytest

import lumivex
from conftest import BUILD, noise

P = noise(20, 30)
BRUSH, PROFILE = numpy.zeros((8, 8, 4), numpy.uint8), numpy.ones(256, numpy.float32)
SEAMS = numpy.zeros((20, 4), numpy.uint32)
CELLS = numpy.zeros((20, 30), numpy.int32)
RECORDS, MAP = numpy.zeros((5, 9), numpy.int32), numpy.full((20, 30, 4), -1, numpy.int32)
NAN = float("nan")
POINTS = numpy.arange(40, dtype=numpy.float32).reshape(20, 2)
PROFILE_BYTES = numpy.arange(256, dtype=numpy.uint8)
FROZEN = P.copy()
FROZEN.setflags(write=False)

WRONG = [
    (lambda: lumivex.box_blur(P.astype(float), 2), TypeError, r"box_blur: image: expected a uint8 array of shape "
     r"\(height, width, 4\), got float64 of shape \(20, 30, 4\)"),
    (lambda: lumivex.box_blur("photo.png", 2), TypeError, "box_blur: image: expected .* got str"),
    (lambda: lumivex.box_blur(P), TypeError, "box_blur: missing a required argument: 'radius'"),
    (lambda: lumivex.box_blur(P, 2, radious=3), TypeError, "box_blur: got an unexpected keyword argument 'radious'"),
    (lambda: lumivex.invert(P[..., :3]), ValueError, r"invert: image: .* got uint8 of shape \(20, 30, 3\)"),
    (lambda: lumivex.gaussian_5(P, selection=P[1:]), ValueError, r"selection: .*\(20, 30, 4\), got .*\(19, 30, 4\)"),
    (lambda: lumivex.map_levels(P, numpy.zeros(255, numpy.uint8)), ValueError, r"table: .*\(256,\).*\(255,\)"),
    (lambda: lumivex.map_levels(P, [300] * 256), TypeError, "map_levels: table: expected"),
    (lambda: lumivex.gamma(P, row=1, tone_table=numpy.zeros((256, 101), numpy.float32)), ValueError, r"\(101, 256\)"),
    (lambda: lumivex.brightness(P, 1.5), TypeError, "brightness: offset: expected a whole number, got float"),
    (lambda: lumivex.set_alpha(P, 256), ValueError, r"set_alpha: alpha: expected 0..255, got 256"),
    (lambda: lumivex.gaussian_5(P, out=P), ValueError, "gaussian_5: out and source share memory"),
    (lambda: lumivex.brightness(P, 1, out=noise(40, 30)[::2]), ValueError, "out: the array is written.*contiguous"),
    (lambda: lumivex.invert(P, out=FROZEN), ValueError, "out: the array is read-only"),
    (lambda: lumivex.paint_alpha(P, P.copy(), 0, x0=0, x1=30), ValueError, "inclusive rectangle x 0..30, y 0..19"),
    (lambda: lumivex.mask_grow(P, x0=0), ValueError, "half-open rectangle .* pixel to spare"),
    (lambda: lumivex.paint(P, BRUSH, PROFILE, 1, 2, 9, 0, 0, 0, dx0=-4), ValueError, "dab reaches out of the picture"),
    (lambda: lumivex.paint(P, BRUSH[:7, :7], PROFILE, 1, 2, 9, 0, 0, 0), ValueError, "brush: expected an even side"),
    (lambda: lumivex.curves(P, red=[256] * 256), ValueError, r"curves: red: expected 0..255, got 256..256"),
    (lambda: lumivex.brightness_contrast(P, weights=P), ValueError, "weights count under a selection only"),
    (lambda: lumivex.seam_map(CELLS, last_column=30), ValueError, "last_column: expected 0..29, got 30"),
    (lambda: lumivex.seam_record(SEAMS, CELLS, CELLS.copy(), 3, 4), ValueError, "number: expected 0..3, got 4"),
    (lambda: lumivex.seams_insert(SEAMS[:, :0].copy(), P[:, :0]), ValueError, "no column of the picture is left"),
    (lambda: lumivex.seams_insert(SEAMS + numpy.uint32(26), P), ValueError, "seams: expected 0..25"),
    (lambda: lumivex.walk_outline(RECORDS, MAP, 5), ValueError, "start: expected 0..4, got 5"),
    (lambda: lumivex.walk_outline(RECORDS, MAP, 0, points=numpy.zeros((3, 2), numpy.float32), most=4), ValueError,
     "most: expected 0..3"),
    (lambda: lumivex.edge_graph(P, records=numpy.zeros((9, 9), numpy.int32)), ValueError, "9 edges, where 2400"),
    (lambda: lumivex.path_lengths(numpy.zeros((0, 2), numpy.float32)), ValueError, "at least one point"),
    (lambda: lumivex.carve(P, 61), ValueError, "carve: width: expected 1..60, got 61"),
    (lambda: lumivex.carve(P), ValueError, "nothing to do"),
    (lambda: lumivex.carve(P, 20, protect=P), ValueError, "carve: protect: expected uint8 or bool"),
    (lambda: lumivex.trace(P, "color"), ValueError, "trace: by: expected colour, edges"),
    (lambda: lumivex.stroke(P, [(1, 1)], brush="pen"), ValueError, "stroke: brush: expected one of colour"),
    # Numbers that are none, and numbers beyond what makes sense.
    (lambda: lumivex.box_blur(P, -3), ValueError, "box_blur: radius: expected 1 or more, and at most half .*, got -3"),
    (lambda: lumivex.box_blur(P, 11), ValueError, "box_blur: radius: .* at most half .*, got 11"),
    (lambda: lumivex.fade_radial(P, PROFILE_BYTES, 3, 3, 0), ValueError, "fade_radial: radius: expected more than 0"),
    (lambda: lumivex.fit_curves(POINTS, error=-1), ValueError, "fit_curves: error: expected more than 0"),
    (lambda: lumivex.contrast(P, NAN), ValueError, "contrast: contrast: expected a finite number, got nan"),
    (lambda: lumivex.contrast(P, "60"), TypeError, "contrast: contrast: expected a number, got str"),
    (lambda: lumivex.contrast(P, 1e39), ValueError, r"contrast: contrast: expected -3.4.*, got 1e\+39"),
    (lambda: lumivex.smooth_4(POINTS * NAN), ValueError, "smooth_4: points: expected finite numbers"),
    (lambda: lumivex.gamma(P, row=1, tone_table=numpy.full((101, 256), numpy.inf, numpy.float32)), ValueError,
     "gamma: tone_table: expected finite"),
    (lambda: lumivex.levels(P, gammas=[NAN] * 256), ValueError, "levels: gammas: expected finite"),
    (lambda: lumivex.carve(P, 20.5), TypeError, "carve: width: expected a whole number, got float"),
    (lambda: lumivex.carve([[1]], 20), TypeError, "carve: picture: expected a uint8 array .*, got list"),
    (lambda: lumivex.trace(P, error=0), ValueError, "trace: error: expected more than 0, got 0"),
    (lambda: lumivex.trace(P, thin=-1), ValueError, "trace: thin: expected 0 or more, got -1"),
    (lambda: lumivex.trace(P, colour=(1, 2)), ValueError, "trace: colour: expected red, green and blue, got 2 values"),
    (lambda: lumivex.workflows.points_along(POINTS, NAN), ValueError, "points_along: step: expected a finite number"),
    (lambda: lumivex.stroke(P, [(1, 2, 3)]), ValueError, r"stroke: points: expected points \(x, y\), got 3 numbers"),
    (lambda: lumivex.stroke(P, [7]), TypeError, r"stroke: points: expected points \(x, y\), got \[7\]"),
    (lambda: lumivex.stroke(P, [(1, NAN)]), ValueError, "stroke: points: expected a finite number, got nan"),
    (lambda: lumivex.stroke(P, []), ValueError, "stroke: points: expected at least one point"),
    (lambda: lumivex.stroke(P, [(1, 1)], radius=0), ValueError, "stroke: radius: expected 1..32767, got 0"),
    (lambda: lumivex.stroke(P, [(1, 1)], radius=NAN), TypeError, "stroke: radius: expected a whole number, got float"),
    (lambda: lumivex.stroke(P, [(1, 1)], hardness=2), ValueError, "stroke: hardness: expected 0..1, got 2"),
    (lambda: lumivex.stroke(P, [(1, 1)], grain=NAN), ValueError, "stroke: grain: expected a finite number"),
    (lambda: lumivex.stroke(P, [(1, 1)], spacing=0), ValueError, "stroke: spacing: expected more than 0"),
    (lambda: lumivex.stroke(P, [(1, 1)], opacity=NAN), ValueError, "opacity: expected a finite number"),
    (lambda: lumivex.stroke(P, [(1, 1)], colour="red"), TypeError, "stroke: colour: expected a whole number, got str"),
    (lambda: lumivex.tables.rows_of_curve([(1, 2, 3)]), ValueError, "rows_of_curve: points: .* got 3 numbers"),
    (lambda: lumivex.tables.rows_of_curve([(1, NAN)]), ValueError, "rows_of_curve: points: expected a finite"),
    (lambda: lumivex.raw.IM_Nothing, AttributeError, "no export IM_Nothing"),
]


@pytest.mark.parametrize("number", range(len(WRONG)), ids=lambda number: WRONG[number][2][:40])
def test_wrong_arguments_are_told(number):
    call, kind, words = WRONG[number]
    with pytest.raises(kind, match=words):
        call()


def test_a_stroke_ends_wherever_its_points_are():
    far = lumivex.stroke(P, [(-9, 10), (1e300, 10)], spacing=400)
    assert (far[10] != P[10]).any()


def test_what_only_just_fits_is_taken():
    # A dab of radius 4 that touches two rims, and pictures side by side in memory.
    both = numpy.stack([P, P])
    lumivex.paint(P, BRUSH, PROFILE, 1, 3, 16, 0, 0, 0, dx0=-4, dx1=4, dy0=-4, dy1=4)
    lumivex.gaussian_5(both[0], out=both[1])
    numpy.testing.assert_array_equal(both[1], lumivex.gaussian_5(P))


def test_steps_meet_the_end_of_a_line():
    assert lumivex._strokes.dabs_along([(0, 5), (30, 5)], 10, 3, 99, 9) == [(0, 5), (10, 5), (20, 5), (30, 5)]
    # 30 pixels round a square, in steps of nearly 8.
    square = numpy.float32([(0, 0), (7.5, 0), (7.5, 7.5), (0, 7.5)])
    assert len(lumivex.workflows.points_along(square, 8)) == 4


def test_pictures_cut_from_others_are_read_as_they_are():
    part = P[3:17, 5:20]
    numpy.testing.assert_array_equal(lumivex.gaussian_5(part), lumivex.gaussian_5(part.copy()))


def test_the_raw_functions_take_what_c_takes():
    picture, counter = P.copy(), numpy.zeros(1, numpy.uint32)
    assert lumivex.raw.IM_Gris(picture, None, 30, 20, 0, counter) == 20
    numpy.testing.assert_array_equal(picture, lumivex.grey(P))
    assert counter[0] == 95


def test_progress_is_told_from_a_thread_and_stop_is_heard():
    """Only while the library runs without the interpreter's lock can a callback come in between."""
    calls = []
    lumivex.lab_cube(progress=lambda value: calls.append((value, threading.current_thread())))
    values = [value for value, _ in calls]
    assert any(0 < value < 99 for value in values) and values == sorted(values) and values[-1] == 99
    assert calls[0][1] is not threading.main_thread()

    stopped = lumivex.edge_map(P, 0, 0, 0, 9, 9, 9, 90, stop=numpy.ones(1, numpy.uint8))
    assert (stopped[2:] == P[2:]).all() and (stopped[1] != P[1]).any()

    def fail(value):
        raise RuntimeError("enough")

    with pytest.raises(RuntimeError, match="enough"):
        lumivex.grey(P, progress=fail)


def test_a_library_that_is_not_there_is_named():
    environment = {**os.environ, "LUMIVEX_LIBRARY": "/nowhere/liblumivex.so.1"}
    done = subprocess.run([sys.executable, "-c", "import lumivex; lumivex.probe()"], cwd=BUILD / "python",
                          env=environment, capture_output=True, text=True)
    assert "LibraryNotFound" in done.stderr and "/nowhere/liblumivex.so.1" in done.stderr
    environment["LUMIVEX_LIBRARY"] = str(BUILD / "src" / "liblumivex.so.1")
    done = subprocess.run([sys.executable, "-c", "import lumivex; print(lumivex.probe())"], cwd=BUILD / "python",
                          env=environment, capture_output=True, text=True)
    assert done.stdout == "30\n", done.stderr
