"""Arrays as the library wants them: their types, shapes and places in memory."""
import numpy

from ._rules import PICTURE, Parameter
from ._values import real, whole

DTYPES = {"uint8_t": numpy.dtype(numpy.uint8), "int32_t": numpy.dtype(numpy.int32),
          "uint32_t": numpy.dtype(numpy.uint32), "float": numpy.dtype(numpy.float32),
          "double": numpy.dtype(numpy.float64)}
LIMITS = {name: (int(numpy.iinfo(dtype).min), int(numpy.iinfo(dtype).max))
          for name, dtype in DTYPES.items() if dtype.kind in "iu"}


def describe(shape):
    return "(" + ", ".join(str(part) for part in shape) + ("," if len(shape) == 1 else "") + ")"


def _wanted(parameter, sizes):
    shape = [sizes.get(part, part) for part in parameter.shape]
    return f"{DTYPES[parameter.type]} array of shape {describe(shape)}"


def _got(value):
    if isinstance(value, numpy.ndarray):
        return f"{value.dtype} of shape {describe(value.shape)}"
    return type(value).__name__


def _mismatch(where, parameter, value, sizes):
    return f"{where}: expected a {_wanted(parameter, sizes)}, got {_got(value)}"


def fit(where, parameter, value, sizes):
    """Checks an array's type and shape, and learns the sizes that its shape tells. `where` is for the message."""
    if not isinstance(value, numpy.ndarray) or value.dtype != DTYPES[parameter.type]:
        raise TypeError(_mismatch(where, parameter, value, sizes))
    if value.ndim != len(parameter.shape):
        raise ValueError(_mismatch(where, parameter, value, sizes))
    learnt = {}
    for part, length in zip(parameter.shape, value.shape):
        wanted = sizes.get(part, learnt.get(part, length if isinstance(part, str) else part))
        if length != wanted:
            raise ValueError(_mismatch(where, parameter, value, sizes))
        if isinstance(part, str):
            learnt[part] = length
    sizes.update(learnt)


def _from_list(where, parameter, value, sizes):
    """Short tables are often lists. Their numbers have to fit, too."""
    try:
        given = numpy.array(value)
        array = given.astype(DTYPES[parameter.type])
        fits = array.dtype.kind == "f" or (array == given).all()
    except (TypeError, ValueError):
        fits = False
    if not fits:
        raise TypeError(f"{where}: expected a {_wanted(parameter, sizes)}, and the list is none")
    return array


def readable(where, parameter, value, sizes):
    """An array to read; a copy of it if its rows are not packed."""
    if isinstance(value, (list, tuple)):
        value = _from_list(where, parameter, value, sizes)
    fit(where, parameter, value, sizes)
    if value.dtype.kind == "f" and not numpy.isfinite(value).all():
        raise ValueError(f"{where}: expected finite numbers, and some are infinite or not-a-number")
    return numpy.ascontiguousarray(value)


def picture(where, value):
    """A picture of whatever size, with pixels."""
    fit(where, Parameter("picture", "uint8_t", True, "input", PICTURE, None, None), value, {})
    if 0 in value.shape:
        raise ValueError(f"{where}: expected a picture with pixels, got shape {describe(value.shape)}")
    return value


def writable(where, parameter, value, sizes):
    """An array that the library writes: it has to be the caller's own memory, so no copy will do."""
    fit(where, parameter, value, sizes)
    if not value.flags.c_contiguous:
        raise ValueError(f"{where}: the array is written, so it must be contiguous")
    if not value.flags.writeable:
        raise ValueError(f"{where}: the array is read-only")
    return value


def make(parameter, sizes, fill):
    shape = tuple(sizes.get(part, part) for part in parameter.shape)
    if fill == 0:
        return numpy.zeros(shape, DTYPES[parameter.type])
    return numpy.full(shape, fill, DTYPES[parameter.type])


def number(where, parameter, value):
    """A number that fits its C type: C itself would cut it off without a word."""
    if parameter.type in LIMITS:
        return whole(where, value, *LIMITS[parameter.type])
    reach = float(numpy.finfo(DTYPES[parameter.type]).max)
    return real(where, value, -reach, reach)
