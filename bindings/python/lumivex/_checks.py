"""What the library trusts its host with: places that lie in their arrays, rectangles in their picture, memory apart."""
import numpy

from . import _rules as rules


def _follow(export, sizes, name, value):
    """A size that follows from others. An array that somebody gave for a result may have told it already."""
    if sizes.setdefault(name, value) != value:
        raise ValueError(f"{export.english}: an array that was given for a result has {sizes[name]} {name}, "
                         f"where {value} are needed")


def add_sizes(export, call):
    """Sizes of arrays yet to be made, by the sizes of those that were given."""
    sizes = call.sizes
    if "row_length" in sizes:
        columns = sizes["row_length"] - sizes["count"]
        if columns < 1:
            raise ValueError(f"{export.english}: the image has {sizes['row_length']} columns, room included, and the "
                             f"seam table {sizes['count']}: no column of the picture is left")
        _follow(export, sizes, "columns", columns)
    if "points" in sizes:
        _follow(export, sizes, "segments", max(sizes["points"] - 1, 1))
        if sizes["points"] < 1 and export.english in ("path_lengths", "path_point"):
            raise ValueError(f"{export.english}: expected at least one point")
    if "width" in sizes and "height" in sizes:
        _follow(export, sizes, "edges", sizes["width"] * sizes["height"] * 4)
    if sizes.get("side", 0) % 2:
        raise ValueError(f"{export.english}: brush: expected an even side, twice the radius, got {sizes['side']}")


def learn(export, name, call):
    """Sizes that a number tells."""
    value, sizes = call.numbers[name], call.sizes
    if name == "last_column":
        _below(call, name, value, sizes["width"])
        sizes["in_use"] = value + 1
    elif name == "most":
        _below(call, name, value, sizes.setdefault("most", value) + 1)
    elif export.english == "offset_table":
        if value < 1:
            raise ValueError(f"{call.where(name)}: expected 1 or more, got {value}")
        sizes[name] = value
        if "width" in sizes and "height" in sizes:
            _follow(export, sizes, "entries", sizes["height"] * (sizes["width"] + 1) + 1)


def usual(export, name, call):
    """What a number that was left out is taken to be."""
    sizes = call.sizes
    if name == "last_column":
        return sizes["width"] - 1
    if name == "most":
        return sizes.get("most", sizes["records"])
    if export.dab:
        # What of the circle lies in the picture.
        radius, x, y = sizes["side"] // 2, call.given["cx"], call.given["cy"]
        return {"dx0": max(-radius, -x), "dy0": max(-radius, -y), "dx1": min(radius, sizes["width"] - 1 - x),
                "dy1": min(radius, sizes["height"] - 1 - y)}[name]
    border, end = _limits(export)
    return border if name in ("x0", "y0") else sizes["width" if name == "x1" else "height"] - border - end


def _limits(export):
    """How far a rectangle keeps from the picture's edges, and whether its ends belong to it."""
    return int(export.english in rules.SPARING), int(export.english in rules.INCLUSIVE)


def check(export, call):
    for (english, name), limit in rules.BELOW.items():
        if english == export.english:
            value = call.numbers.get(name, call.arrays.get(name))
            _below(call, name, value, call.sizes.get(limit, limit))
    for name, value in call.numbers.items():
        lies, words = rules.RANGES.get((export.english, name), (None, ""))
        if lies and not lies(value, call.sizes):
            raise ValueError(f"{call.where(name)}: expected {words}, got {value}")
    if export.rectangle:
        _check_rectangle(export, call)
    if export.dab:
        _check_dab(export, call)
    if call.given.get("weights") is not None and call.given.get("selection") is None:
        raise ValueError(f"{call.where('weights')}: weights count under a selection only; an opaque picture selects "
                         "all")
    if export.english == "walk_outline" and call.sizes["height"] * call.sizes["width"] == 0:
        raise ValueError(f"{call.where('map')}: there are no pixels to walk round")
    _check_apart(export, call)


def _below(call, name, value, limit):
    entries = numpy.asarray(value)
    if entries.size and not (0 <= int(entries.min()) and int(entries.max()) < limit):
        got = value if entries.ndim == 0 else f"{entries.min()}..{entries.max()}"
        raise ValueError(f"{call.where(name)}: expected 0..{limit - 1}, got {got}")


def _check_rectangle(export, call):
    x0, x1, y0, y1 = (call.numbers[name] for name in ("x0", "x1", "y0", "y1"))
    border, end = _limits(export)
    if x0 >= x1 + end or y0 >= y1 + end:
        return
    width, height = call.sizes["width"], call.sizes["height"]
    if min(x0, y0) < border or x1 > width - border - end or y1 > height - border - end:
        kept = " with a pixel to spare on every side" if border else ""
        kind = "inclusive" if end else "half-open"
        raise ValueError(f"{export.english}: the {kind} rectangle x {x0}..{x1}, y {y0}..{y1} does not lie in the "
                         f"picture of {width} x {height}{kept}")


def _check_dab(export, call):
    get, radius = call.numbers.__getitem__, call.sizes["side"] // 2
    for centre, first, last, size in (("cx", "dx0", "dx1", "width"), ("cy", "dy0", "dy1", "height")):
        # The circle's outermost columns and rows have no pixel inside it.
        low, high = max(get(first), 1 - radius), min(get(last), radius - 1)
        if low <= high and not (0 <= get(centre) + low and get(centre) + high < call.sizes[size]):
            raise ValueError(f"{export.english}: the dab reaches out of the picture: {centre} {get(centre)} with "
                             f"{first} {get(first)}, {last} {get(last)}; without {first} and {last} it is clipped")


def _may_share(export, written, other):
    """Whether two parameters may be the same memory: what is written, and what is read at the same place."""
    if written is not export.main or other.role != "input":
        return False
    return export.in_place or (written.role == "changed" and other.name in ("selection", "test"))


def _check_apart(export, call):
    places = []
    for p in export.parameters:
        array = call.arrays.get(p.name)
        if array is not None:
            address = array.ctypes.data
            places.append((p, address, address + array.nbytes))
    for written, start, end in places:
        if written.role == "input":
            continue
        for other, first, last in places:
            if other is written or end <= first or last <= start:
                continue
            if (start, end) == (first, last) and _may_share(export, written, other):
                continue
            name = "out" if written is export.main else written.name
            raise ValueError(f"{export.english}: {name} and {other.name} share memory, which this function "
                             "does not allow")
