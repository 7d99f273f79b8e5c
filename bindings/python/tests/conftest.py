"""The package put together beside the build, pictures to work on, and the command-line program to compare with.

LUMIVEX_BUILD is the folder of the build; without it that of the release preset.
"""
import os
import shlex
import subprocess
import sys
from pathlib import Path

import numpy
import pytest

BINDING = Path(__file__).resolve().parents[1]
BUILD = Path(os.environ.get("LUMIVEX_BUILD", BINDING.parents[1] / "build" / "release"))
PROGRAM = BUILD / "tools" / "lumivex"

subprocess.run([sys.executable, BINDING / "packaging" / "stage.py", BUILD / "python",
                BUILD / "src" / "liblumivex.so.1"], check=True)
sys.path.insert(0, str(BUILD / "python"))
os.environ.pop("LUMIVEX_LIBRARY", None)
# Workers of a cluster are processes of their own.
os.environ["PYTHONPATH"] = str(BUILD / "python")


def noise(height, width, seed=1):
    return numpy.random.default_rng(seed).integers(0, 256, (height, width, 4), numpy.uint8)


@pytest.fixture(scope="session")
def folder(tmp_path_factory):
    return tmp_path_factory.mktemp("pictures")


@pytest.fixture(scope="session")
def scene(folder):
    """A part of the program's drawn scene, as large as tests need, and transparent toward one side."""
    import lumivex
    subprocess.run([PROGRAM, "scene", "-o", folder / "whole.png"], check=True)
    picture = lumivex.pictures.read(folder / "whole.png")[200:420, 380:640].copy()
    picture[:, :60, 3] = numpy.arange(60) * 4
    lumivex.pictures.write(folder / "scene.png", picture)
    return picture


@pytest.fixture(scope="session")
def selection(folder, scene):
    """An oval, soft at its rim."""
    import lumivex
    height, width = scene.shape[:2]
    y, x = numpy.mgrid[0:height, 0:width]
    away = numpy.hypot((x - width / 2) / width, (y - height / 2) / height)
    picture = numpy.full_like(scene, 90)
    picture[..., 3] = numpy.clip(255 * (6 - 16 * away), 0, 255)
    lumivex.pictures.write(folder / "selection.png", picture)
    return picture


@pytest.fixture(scope="session")
def run(folder, scene, selection):
    """Runs the program on the scene; the words of the arguments may name other pictures of the folder."""
    import lumivex

    def run(arguments, suffix="png"):
        operation, *others = shlex.split(arguments)
        output = folder / f"output.{suffix}"
        done = subprocess.run([PROGRAM, operation, "scene.png", "-o", output, *others], cwd=folder, capture_output=True,
                              text=True)
        assert done.returncode == 0, done.stderr
        return lumivex.pictures.read(output) if suffix == "png" else (output.read_text(), done.stdout)

    return run
