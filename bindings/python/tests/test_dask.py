"""Tiles give the bytes of one call on the whole; folders come out whole whatever happens to workers."""
import os
import signal
import threading
import time

import numpy
import pytest

import lumivex
import lumivex.dask
from conftest import noise
from lumivex._library import EXPORTS
from test_exports import arguments_of, assert_same

distributed = pytest.importorskip("distributed")


@pytest.fixture(scope="module")
def cluster():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None,
                                  silence_logs=50) as cluster, distributed.Client(cluster) as client:
        yield client


@pytest.mark.parametrize("export", [e for e in EXPORTS if e.english in lumivex.dask.HALO],
                         ids=lambda export: export.english)
def test_tiles_are_the_whole(export):
    """Any halo that is too small shows at the edges of small tiles, and so does any rim that is not the picture's."""
    import dask
    given = arguments_of(export)
    whole = getattr(lumivex, export.english)(**given)
    with dask.config.set(scheduler="synchronous"):
        assert_same(lumivex.dask.tiled(export.name, tile=7, **given), whole)


def test_tiles_on_a_cluster(cluster):
    picture, selection = noise(300, 410), noise(300, 410, 2) // 128 * 255
    tiled = lumivex.dask.tiled("gaussian_9", picture, selection=selection, tile=128)
    numpy.testing.assert_array_equal(tiled, lumivex.gaussian_9(picture, selection=selection))


@pytest.mark.parametrize("operation, arguments, words", [
    ("equalising_table", {}, "whole picture"), ("fade_linear", {}, "place in it"), ("seam_map", {}, "cannot be cut"),
    ("gamma", {"row": 60, "weights": noise(20, 30)}, "picked pixel"),
    ("lab_blur", {"selection": noise(20, 30)}, "order of all pixels"),
    ("restore", {"x0": 3}, "places would move"), ("bluur", {}, "no operation"),
    ("invert", {"out": noise(20, 30)}, "no meaning"), ("gaussian_5", {"selection": noise(20, 31)}, "expected 20 x 30")])
def test_what_cannot_be_cut_is_refused(operation, arguments, words):
    pictures = [noise(20, 30)] * (3 if operation == "restore" else 1)
    with pytest.raises(ValueError, match=words):
        lumivex.dask.tiled(operation, *pictures, **arguments)


def test_a_worker_that_dies_loses_nothing(cluster, tmp_path):
    source, target = tmp_path / "in", tmp_path / "out"
    source.mkdir()
    originals = {f"{number:02}.png": noise(260, 340, number) for number in range(24)}
    for name, picture in originals.items():
        lumivex.pictures.write(source / name, picture)
    victim = next(iter(cluster.run(os.getpid).values()))
    half_way = []

    def kill():
        for _ in range(3000):
            done = [name for name in os.listdir(target) if not name.startswith(".")] if target.exists() else []
            if len(done) >= 5:
                os.kill(victim, signal.SIGKILL)
                half_way.append(len(done))
                return
            time.sleep(0.002)

    killer = threading.Thread(target=kill)
    killer.start()
    written = lumivex.dask.folder("box_blur", source, target, radius=9)
    killer.join()
    assert half_way and half_way[0] < len(originals), "the worker was to die half-way"
    assert victim not in cluster.run(os.getpid).values()
    assert written == [str(target / name) for name in originals]
    assert sorted(os.listdir(target)) == list(originals)
    for name, picture in originals.items():
        numpy.testing.assert_array_equal(lumivex.pictures.read(target / name), lumivex.box_blur(picture, 9))


@pytest.mark.parametrize("scheduler", ["threads", "cluster"])
def test_a_bad_file_does_not_keep_the_others(scheduler, tmp_path, request):
    if scheduler == "cluster":
        request.getfixturevalue("cluster")
    source, target = tmp_path / "in", tmp_path / "out"
    source.mkdir()
    for name, size in (("a.png", 30), ("c.png", 30), ("small.png", 10)):
        lumivex.pictures.write(source / name, noise(size, 40))
    (source / "bad.png").write_bytes(b"not a picture at all")
    with pytest.raises(lumivex.dask.FailedPictures) as caught:
        lumivex.dask.folder("box_blur", source, target, radius=9)
    assert caught.value.written == [str(target / "a.png"), str(target / "c.png")]
    assert sorted(os.listdir(target)) == ["a.png", "c.png"]
    assert list(caught.value.failed) == [str(source / "bad.png"), str(source / "small.png")]
    assert "2 of 4" in str(caught.value) and "small.png: ValueError: box_blur: radius" in str(caught.value)
    numpy.testing.assert_array_equal(lumivex.pictures.read(target / "c.png"),
                                     lumivex.box_blur(lumivex.pictures.read(source / "c.png"), 9))


def test_folders_that_make_no_sense_are_refused(tmp_path):
    with pytest.raises(ValueError, match="no pictures"):
        lumivex.dask.folder("invert", tmp_path, tmp_path / "out")
    for name in ("a.png", "a.jpg"):
        lumivex.pictures.write(tmp_path / name, noise(4, 5))
    with pytest.raises(ValueError, match="under one name"):
        lumivex.dask.folder("invert", tmp_path, tmp_path / "out", suffix=".png")
    with pytest.raises(ValueError, match="no operation"):
        lumivex.dask.folder("bluur", tmp_path, tmp_path / "out")
    with pytest.raises(TypeError, match="box_blur: missing a required argument: 'radius'"):
        lumivex.dask.folder("box_blur", tmp_path, tmp_path / "out")
    with pytest.raises(TypeError, match="picture: expected a uint8 array"):
        lumivex.pictures.write(tmp_path / "b.png", noise(4, 5) / 2)
