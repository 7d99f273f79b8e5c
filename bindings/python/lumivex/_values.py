"""Numbers, points and colours as callers give them. `where` says in messages whose argument it is."""
import math
import operator


def _got(value):
    return f"got {value!r}" if isinstance(value, (int, float, str, tuple, list)) else f"got {type(value).__name__}"


def whole(where, value, low, high=None):
    """A whole number of low..high, ends included."""
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{where}: expected a whole number, got {type(value).__name__}") from None
    if number < low or (high is not None and number > high):
        raise ValueError(f"{where}: expected {low} or more, got {number}" if high is None else
                         f"{where}: expected {low}..{high}, got {number}")
    return number


def real(where, value, low=-math.inf, high=math.inf):
    """A number of low..high, ends included: neither infinite nor not-a-number."""
    try:
        # A text is no number, though it may spell one.
        number = math.fsum([value])
    except TypeError:
        raise TypeError(f"{where}: expected a number, got {type(value).__name__}") from None
    if not math.isfinite(number):
        raise ValueError(f"{where}: expected a finite number, got {number}")
    if not low <= number <= high:
        raise ValueError(f"{where}: expected {low:g} or more, got {number:g}" if high == math.inf else
                         f"{where}: expected {low:g}..{high:g}, got {number:g}")
    return number


def above_zero(where, value):
    number = real(where, value)
    if number <= 0:
        raise ValueError(f"{where}: expected more than 0, got {number:g}")
    return number


def points(where, value):
    """A list of (x, y), of one point at least."""
    try:
        given = [tuple(point) for point in value]
    except TypeError:
        raise TypeError(f"{where}: expected points (x, y), {_got(value)}") from None
    if not given:
        raise ValueError(f"{where}: expected at least one point")
    for point in given:
        if len(point) != 2:
            raise ValueError(f"{where}: expected points (x, y), got {len(point)} numbers for one of them")
    return [(real(where, x), real(where, y)) for x, y in given]


def colour(where, value):
    """Red, green and blue, 0..255 each."""
    try:
        given = tuple(value)
    except TypeError:
        raise TypeError(f"{where}: expected red, green and blue, {_got(value)}") from None
    if len(given) != 3:
        raise ValueError(f"{where}: expected red, green and blue, got {len(given)} values")
    return tuple(whole(where, level, 0, 255) for level in given)
