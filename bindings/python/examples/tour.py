#!/usr/bin/env python3
"""A tour of the package as a page with pictures: every step is a function, shown with what it makes.

    tour.py [PICTURE] [-o FOLDER]    write FOLDER/index.html (FOLDER is "tour" by default)

Without a picture the command-line program draws its scene, if it is found on PATH or in this repository's build.
"""
import argparse
import html
import inspect
import shutil
import subprocess
import sys
import textwrap
import time
from pathlib import Path

import numpy

import lumivex
from lumivex import pictures, tables, workflows

STEPS = []


def step(function):
    STEPS.append(function)
    return function


def oval(picture):
    """A selection: any alpha but 0 selects."""
    height, width = picture.shape[:2]
    y, x = numpy.mgrid[0:height, 0:width]
    inside = numpy.hypot((x - width / 2) / width, (y - height / 2) / height) < 0.3
    selection = numpy.zeros_like(picture)
    selection[inside, 3] = 255
    return selection


@step
def blur_outside_a_selection(picture):
    """Functions take arrays and give a new one. With out= they write where they are told, in place too."""
    blurred = lumivex.box_blur(picture, radius=14, selection=oval(picture), invert=True)
    lumivex.contrast(blurred, 60, out=blurred)
    return blurred


@step
def bend_tones(picture):
    """Curves are given by points; each channel has its own, and there is one for all."""
    rows = tables.rows_of_curve([(0, 0), (64, 44), (192, 220), (255, 255)])
    warm = tables.rows_of_curve([(0, 0), (128, 146), (255, 255)])
    return lumivex.curves(picture, master=rows, red=warm)


@step
def histograms(picture):
    """Counters, tables and other results that C wants room for are made and returned."""
    counts = lumivex.histograms(picture)
    return "".join(curve_of(getattr(counts, name), colour)
                   for name, colour in (("red", "#c33"), ("green", "#393"), ("blue", "#36c")))


@step
def equalise_by_halves(picture):
    """The Lab tables are built once, when first needed. Equalisation is computed once; other strengths only mix."""
    whole, equalised = lumivex.equalise(picture, 100)
    half = lumivex.mix_equalised(picture, equalised, 50)
    width = picture.shape[1]
    return numpy.concatenate([picture[:, :width // 3], half[:, width // 3:2 * width // 3],
                              whole[:, 2 * width // 3:]], axis=1)


@step
def resize_along_seams(picture):
    """A quarter narrower: seams go first where little happens. Below, the seams that went."""
    width = picture.shape[1] * 3 // 4
    return [lumivex.carve(picture, width), lumivex.carve(picture, width, preview=True)]


@step
def paint(picture):
    """A stroke is many dabs; the binding clips them to the picture."""
    height, width = picture.shape[:2]
    wave = [(width * i / 8, height * (0.3 if i % 2 else 0.6)) for i in range(9)]
    painted = lumivex.stroke(picture, wave, brush="colour-root", radius=height // 16, opacity=0.6, hardness=0.2)
    return lumivex.stroke(painted, wave[2:7], brush="knife", radius=height // 30, colour=(242, 193, 78), thin=4)


@step
def to_curves(picture):
    """Outlines as polylines, as Bezier segments, and as an SVG picture."""
    drawing = lumivex.trace(lumivex.gaussian_9(picture), "edges", threshold=50)
    points = sum(len(outline) for outline in drawing.outlines)
    segments = sum(len(curve) for curve in drawing.curves)
    return f"<p>{points} points have become {segments} segments.</p>" + drawing.svg("#204060")


@step
def tiles(picture):
    """With Dask: tiles with the overlap that the operation needs, the same bytes as one call on the whole."""
    import lumivex.dask
    tiled = lumivex.dask.tiled("gaussian_9", picture, tile=256)
    assert (tiled == lumivex.gaussian_9(picture)).all()
    return workflows.equalise_channels(tiled)


def curve_of(counts, colour):
    highest = max(int(numpy.sort(counts)[-8]), 1)
    points = " ".join(f"{level * 2},{128 - min(int(count) / highest, 1) * 120:.1f}"
                      for level, count in enumerate(counts))
    return (f'<svg viewBox="0 0 512 130" class="chart"><polyline points="{points}" fill="none" stroke="{colour}" '
            'stroke-width="1.5"/></svg>')


def shown(result, folder, name):
    """What a step made, as HTML: text as it is, arrays as files."""
    if isinstance(result, str):
        return result
    images = []
    for number, picture in enumerate(result if isinstance(result, list) else [result]):
        file = f"{name}-{number}.png"
        pictures.write(folder / file, picture)
        images.append(f'<img src="{file}" width="{picture.shape[1]}" alt="{html.escape(name)}">')
    return "".join(images)


def default_picture(folder):
    built = Path(__file__).resolve().parents[3] / "build/release/tools/lumivex"
    program = shutil.which("lumivex") or (built if built.exists() else None)
    if program is None:
        sys.exit("tour.py: name a picture; the program that draws one is not here")
    subprocess.run([program, "scene", "-o", folder / "scene.png"], check=True)
    return folder / "scene.png"


STYLE = """body { font: 16px/1.5 sans-serif; max-width: 60rem; margin: 2rem auto; padding: 0 1rem; color: #222 }
img, svg { max-width: 100%; height: auto; display: block; margin: .5rem 0 } .chart { background: #f4f4f4; width: 100% }
pre { background: #f4f4f4; padding: .7rem 1rem; overflow-x: auto; font-size: 13px } small { color: #666 }"""


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("picture", nargs="?", help="PNG, JPEG or what else Pillow reads")
    parser.add_argument("-o", "--output", default="tour", type=Path, help="folder to write (default: tour)")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    picture = pictures.read(options.picture or default_picture(options.output))
    parts = [f"<!doctype html><meta charset=utf-8><title>Lumivex from Python</title><style>{STYLE}</style>"
             f"<h1>Lumivex {lumivex.__version__} from Python</h1>", shown(picture, options.output, "picture")]
    for function in STEPS:
        start = time.perf_counter()
        result = function(picture)
        milliseconds = (time.perf_counter() - start) * 1000
        body = inspect.getsource(function).partition('"""\n')[2]
        title = function.__name__.replace("_", " ").capitalize()
        parts.append(f"<h2>{title}</h2><p>{html.escape(function.__doc__)}</p>"
                     f"<pre>{html.escape(textwrap.dedent(body).strip())}</pre>"
                     f"{shown(result, options.output, function.__name__)}<small>{milliseconds:.0f} ms here</small>")
    (options.output / "index.html").write_text("\n".join(parts), encoding="utf-8")
    print(f"Open {options.output / 'index.html'} in a browser.")


if __name__ == "__main__":
    main()
