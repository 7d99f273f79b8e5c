"""Operations over folders of pictures and over the tiles of large ones, with Dask: on threads, or on a cluster.

Both run where Dask runs: on the client that is current, else on threads of this process, for which calls release the
interpreter's lock.
"""
import os

import dask
import numpy

from . import _values, pictures
from ._functions import FUNCTIONS, RESULTS, bind
from ._library import EXPORTS

_POINTWISE = """
    invert grey black_and_white brightness contrast cut_out restore_outside lab_image curves lab_curves levels
    map_levels brightness_contrast gamma mix_equalised balance unsharp sharpen high_pass shift detail mask_from_red
    mask_show mask_contrast mask_invert opaque invert_alpha fill take_colours take_alpha fill_outside grey_from_alpha
    white_to_alpha set_alpha alpha_from_grey restore retouch_tone retouch_filter retouch_colour retouch_tint wash
    texture_wash threshold threshold_blue black_plus_one"""
# How many pixels round a pixel have a part in it, or at least: how far the operation keeps from the picture's rim.
# Those that grow and shrink by giving to their neighbours also keep from the rim with what they give.
HALO = {**dict.fromkeys(_POINTWISE.split(), 0),
        **dict.fromkeys("erode dilate erode_lab edge_map edges mask_outline red_mask_outline soft_mask_grow "
                        "soft_mask_shrink layers".split(), 1),
        **dict.fromkeys("gaussian_5 average_5 average_5_whole lab_blur lab_colour_blur mask_soften threshold_grey "
                        "mask_grow mask_shrink red_mask_grow opaque_grow opaque_shrink colour_grow colour_shrink "
                        "texture_grow texture_shrink".split(), 2),
        **dict.fromkeys("gaussian_7 soft_7".split(), 3),
        "gaussian_9": 4,
        # Two rounds of a box that reaches radius - 1, and the last row and column, which never enter an average.
        "box_blur": lambda arguments: 2 * arguments["radius"] - 1}
# What makes an operation look at more than that.
_REFUSED = {"brightness_contrast": ("weights", "its picked pixel"), "gamma": ("weights", "its picked pixel"),
            "lab_blur": ("selection", "the order of all pixels"),
            "lab_colour_blur": ("selection", "the order of all pixels")}
_CORNERS = ("x0", "x1", "y0", "y1")
_BY_NAME = {name: export for export in EXPORTS for name in (export.english, export.name)}


def _export(operation):
    if operation not in _BY_NAME:
        raise ValueError(f"no operation is called {operation!r}")
    return _BY_NAME[operation]


def _tileable(operation):
    export = _export(operation)
    if export.english not in HALO:
        raise ValueError(f"{export.english} cannot be cut into tiles: what it does to a pixel depends on the whole "
                         "picture, or on the pixel's place in it")
    return export


def halo(operation, arguments):
    """How far the tiles of an operation have to overlap. Raises ValueError where no overlap is enough."""
    export = _tileable(operation)
    argument, why = _REFUSED.get(export.english, (None, None))
    if arguments.get(argument) is not None:
        raise ValueError(f"{export.english} with {argument} cannot be cut into tiles: it depends on {why}")
    given = [name for name in _CORNERS if arguments.get(name) is not None]
    if export.rectangle and given:
        raise ValueError(f"{export.english} with {', '.join(given)} cannot be cut into tiles: places would move")
    reach = HALO[export.english]
    return reach(arguments) if callable(reach) else reach


def _tile(operation, arguments, keep):
    """The operation on a tile and what lies round it, without that in the end."""
    result = FUNCTIONS[operation](**arguments)
    arrays = result if isinstance(result, tuple) else (result,)
    return [numpy.ascontiguousarray(array[keep]) for array in arrays]


def _pieces(size, tile, reach):
    """For each tile along an axis: its place, and that of the tile with its halo."""
    for start in range(0, size, tile):
        end = min(start + tile, size)
        yield slice(start, end), slice(max(start - reach, 0), min(end + reach, size))


def tiled(operation, *arrays, tile=1024, **arguments):
    """One operation over the tiles of a picture: the same bytes as one call on the whole, by as many workers as there
    are.

    `operation` is a name like "gaussian_9"; the arguments are those of the function. Raises ValueError for operations
    that look at the whole picture.
    """
    tile = _values.whole("tiled: tile", tile, 1)
    export = _tileable(operation)
    arguments = bind(export, arrays, arguments).arguments
    reach = halo(operation, arguments)
    for name in ("out", "progress", "stop"):
        if arguments.get(name) is not None:
            raise ValueError(f"tiled: {name} has no meaning for tiles")
    cut = [p.name for p in export.parameters if p.shape[:2] == ("height", "width")
           and arguments.get(p.name) is not None]
    height, width = arguments[cut[0]].shape[:2]
    for name in cut:
        if arguments[name].shape[:2] != (height, width):
            raise ValueError(f"{export.english}: {name}: expected {height} x {width} pixels, got "
                             f"{arguments[name].shape}")
    places, tasks = [], []
    for rows, outer_rows in _pieces(height, tile, reach):
        for columns, outer_columns in _pieces(width, tile, reach):
            piece = {**arguments, **{name: arguments[name][outer_rows, outer_columns] for name in cut}}
            keep = (slice(rows.start - outer_rows.start, rows.stop - outer_rows.start),
                    slice(columns.start - outer_columns.start, columns.stop - outer_columns.start))
            places.append((rows, columns))
            tasks.append(dask.delayed(_tile, pure=False)(export.english, piece, keep))
    return _together(export, height, width, places, dask.compute(*tasks))


def _together(export, height, width, places, done):
    results = [numpy.empty((height, width, 4), array.dtype) for array in done[0]]
    for place, arrays in zip(places, done):
        for result, array in zip(results, arrays):
            result[place] = array
    return RESULTS[export.english](*results) if len(results) > 1 else results[0]


class FailedPictures(Exception):
    """Some pictures of a folder failed; the others are done.

    failed   For each source path that failed, why, in a sentence.
    written  The paths that were written.
    """

    def __init__(self, failed, written):
        super().__init__(failed, written)
        self.failed = failed
        self.written = written

    def __str__(self):
        reasons = "".join(f"\n{source}: {reason}" for source, reason in self.failed.items())
        return f"{len(self.failed)} of {len(self.failed) + len(self.written)} pictures failed:{reasons}"


def _one_file(operation, source, target, arguments):
    """Why it failed, or nothing. A reason in words travels from any worker, which not every exception does."""
    function = FUNCTIONS[operation] if isinstance(operation, str) else operation
    try:
        pictures.write(target, function(pictures.read(source), **arguments))
    except Exception as failure:
        return f"{type(failure).__name__}: {failure}"
    return None


def folder(operation, source, target, *, extensions=(".png", ".jpg", ".jpeg"), suffix=None, **arguments):
    """One operation on every picture of a folder, written under the same names to another; gives the paths written.

    A picture that fails does not keep the others from being done: in the end FailedPictures names those that did.

    `operation` is a name like "gaussian_9", or any function from a picture to a picture that workers can import.
    `suffix` writes another kind of file, ".png" say. A file is there whole or not at all, so that a worker that dies
    leaves none half-written, and Dask gives its work to another.
    """
    if isinstance(operation, str):
        export = _export(operation)
        operation = export.english
        # What no picture could be called with is no fault of the pictures.
        bind(export, (None,), arguments)
    names = sorted(name for name in os.listdir(source) if name.lower().endswith(tuple(extensions)))
    if not names:
        raise ValueError(f"folder: no pictures in {os.fspath(source)}")
    targets = [os.path.join(target, os.path.splitext(name)[0] + suffix if suffix else name) for name in names]
    if len(set(targets)) < len(targets):
        raise ValueError("folder: two pictures would be written under one name")
    os.makedirs(target, exist_ok=True)
    sources = [os.path.join(source, name) for name in names]
    reasons = dask.compute(*[dask.delayed(_one_file, pure=False)(operation, path, to, arguments)
                             for path, to in zip(sources, targets)])
    _sweep(target, targets)
    written = [to for to, reason in zip(targets, reasons) if reason is None]
    if len(written) < len(targets):
        raise FailedPictures({path: reason for path, reason in zip(sources, reasons) if reason is not None}, written)
    return written


def _sweep(target, written):
    """Takes away what workers that died had begun to write."""
    begun = tuple(f".{os.path.basename(path)}." for path in written)
    for name in os.listdir(target):
        if name.startswith(begun):
            os.unlink(os.path.join(target, name))
