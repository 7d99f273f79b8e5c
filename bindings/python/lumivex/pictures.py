"""Picture files as arrays, through Pillow, which has to be installed for this module alone."""
import os
import tempfile

import numpy

from . import _arrays


def _pillow():
    try:
        from PIL import Image
    except ImportError:
        raise ImportError("reading and writing picture files takes Pillow: python3-pil on Debian") from None
    return Image


def from_pillow(image):
    """A Pillow image of any mode as blue, green, red, alpha."""
    return numpy.ascontiguousarray(numpy.asarray(image.convert("RGBA"))[..., [2, 1, 0, 3]])


def to_pillow(picture):
    _arrays.picture("pictures: picture", picture)
    return _pillow().fromarray(numpy.ascontiguousarray(picture[..., [2, 1, 0, 3]]), "RGBA")


def read(path):
    """A picture file as a uint8 array of shape (height, width, 4)."""
    with _pillow().open(path) as image:
        return from_pillow(image)


def write(path, picture, **options):
    """Writes a picture whole or not at all: beside its place first, and then under its name.

    The kind of file follows from the name. A JPEG has no transparency. Options go to Pillow.
    """
    path = os.fspath(path)
    image = to_pillow(picture)
    extension = os.path.splitext(path)[1].lower()
    if extension in (".jpg", ".jpeg"):
        image = image.convert("RGB")
    folder, name = os.path.split(path)
    handle, beside = tempfile.mkstemp(prefix=f".{name}.", suffix=extension, dir=folder or ".")
    os.close(handle)
    try:
        image.save(beside, **options)
        # As a file made by hand would be, where the one for temporary use is private.
        mask = os.umask(0)
        os.umask(mask)
        os.chmod(beside, 0o666 & ~mask)
        os.replace(beside, path)
    except BaseException:
        os.unlink(beside)
        raise
