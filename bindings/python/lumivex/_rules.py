"""What the header cannot say of an export's parameters: shapes, roles and defaults, by names and types.

The header gives every parameter a C type and a name, and the names are used alike everywhere. So a few tables say for
all exports which arrays a parameter wants, which numbers follow from the arrays, and which parameters a caller never
sees. A shape is a tuple of numbers and of names of sizes; names take their value from the first array that has them.
"""
from collections import namedtuple

# role:
#   input      an array to read; with a default it may be left out
#   changed    a picture to change: a copy of it, or `out`, is what the library works on
#   written    a picture that the library writes: starts as a copy of the array named by `start`, or as zeros
#   state      an array that is changed in place and belongs to the caller
#   made       an array that the binding makes, and returns; the caller may give one that goes on from an earlier call
#   scratch    an array that the binding makes and nobody sees
#   result     one number that the library writes
#   reference  one number that the library reads through a pointer
#   progress   the progress counter
#   number     a number to give
#   implied    a number that follows from what is given
Parameter = namedtuple("Parameter", "name type pointer role shape start default")

PICTURE = ("height", "width", 4)
CUBE = (256, 256, 256)
GRID = (546, 241, 241)
TONES = (101, 256)
CURVES = (256, 256)

# Pictures of width x height that are read.
PICTURES = ("source image softened guide base highlight shadow reference texture unpainted background restore root "
            "filtered clone key mask stroke grey equalised pixels").split()
# Pictures that may be left out, and what stands in for them: no picture at all, or one that selects everything.
OPTIONAL_PICTURES = {"selection": "nothing", "weights": "nothing", "test": "nothing", "gate": "nothing"}
CHANGED = "image picture pixels mask".split()
_SEAM_STEPS = "seam_remove seam_remove_show".split()

# Of constant arrays besides pictures, by type and name: shape, default.
INPUTS = {
    ("float", "lightness"): (CUBE, "lab"),
    ("float", "a"): (CUBE, "lab"),
    ("float", "b"): (CUBE, "lab"),
    ("uint8_t", "red"): (GRID, "lab"),
    ("uint8_t", "green"): (GRID, "lab"),
    ("uint8_t", "blue"): (GRID, "lab"),
    ("uint8_t", "family"): (CURVES, "curve_family"),
    ("float", "tone_table"): (TONES, "tone_table"),
    ("uint32_t", "master"): ((256,), "straight"),
    ("uint32_t", "red"): ((256,), "straight"),
    ("uint32_t", "green"): ((256,), "straight"),
    ("uint32_t", "blue"): ((256,), "straight"),
    ("uint32_t", "lightness_rows"): ((256,), "straight"),
    ("uint32_t", "a_rows"): ((256,), "straight"),
    ("uint32_t", "b_rows"): ((256,), "straight"),
    ("double", "gammas"): ((256,), "gammas"),
    ("int32_t", "master"): ((5,), "levels"),
    ("int32_t", "red"): ((5,), "levels"),
    ("int32_t", "green"): ((5,), "levels"),
    ("int32_t", "blue"): ((5,), "levels"),
    ("uint8_t", "table"): ((256,), None),
    ("uint8_t", "profile"): ((256,), None),
    ("float", "profile"): ((256,), None),
    ("float", "curve"): ((10001,), None),
    ("float", "points"): (("points", 2), None),
    ("float", "table"): (("points", 3), None),
    ("uint8_t", "brush"): (("side", "side", 4), None),
    ("uint32_t", "columns"): (("width",), None),
    ("uint32_t", "rows"): (("height",), None),
    ("uint8_t", "stop"): ((1,), "stop"),
    ("int32_t", "energy"): (("height", "width"), None),
    ("int32_t", "map"): (("height", "width"), None),
    ("uint32_t", "seams"): (("height", "count"), None),
}

# Of arrays that are written besides pictures, by type and name: role, shape, start.
OUTPUTS = {
    ("uint8_t", "destination"): ("written", PICTURE, None),
    ("uint8_t", "equalised"): ("made", PICTURE, "source"),
    ("uint8_t", "scratch"): ("scratch", PICTURE, None),
    ("uint8_t", "touched"): ("made", PICTURE, 0),
    ("uint8_t", "least"): ("made", PICTURE, 255),
    ("uint8_t", "flags"): ("made", ("height", "width"), 0),
    ("uint8_t", "colour"): ("made", (4,), 0),
    ("float", "lab"): ("made", PICTURE, 0),
    ("float", "lightness"): ("made", CUBE, 0),
    ("float", "a"): ("made", CUBE, 0),
    ("float", "b"): ("made", CUBE, 0),
    ("uint8_t", "red"): ("made", GRID, 0),
    ("uint8_t", "green"): ("made", GRID, 0),
    ("uint8_t", "blue"): ("made", GRID, 0),
    ("float", "ramp"): ("made", (10001,), 0),
    ("float", "bell"): ("made", (256,), 0),
    ("uint8_t", "family"): ("made", CURVES, 0),
    ("uint8_t", "table"): ("made", (256,), 0),
    ("uint32_t", "table"): ("made", ("entries",), 0),
    ("float", "mean"): ("made", (256,), 0),
    ("float", "red"): ("made", (256,), 0),
    ("float", "green"): ("made", (256,), 0),
    ("float", "blue"): ("made", (256,), 0),
    ("uint32_t", "grey"): ("made", (256,), 0),
    ("uint32_t", "red"): ("made", (256,), 0),
    ("uint32_t", "green"): ("made", (256,), 0),
    ("uint32_t", "blue"): ("made", (256,), 0),
    ("int32_t", "counters"): ("made", ("height", "columns"), 0),
    ("uint32_t", "seams"): ("state", ("height", "count"), None),
    ("int32_t", "energy"): ("state", ("height", "width"), None),
    ("int32_t", "map"): ("state", ("height", "width"), None),
    ("uint8_t", "companion"): ("state", PICTURE, None),
    ("float", "points"): ("changed", ("points", 2), None),
    ("float", "segments"): ("made", ("segments", 4, 2), 0),
    ("float", "result"): ("made", (2,), 0),
    ("int32_t", "left"): ("result", (), 0),
    ("int32_t", "right"): ("result", (), 0),
    ("int32_t", "top"): ("result", (), 0),
    ("int32_t", "bottom"): ("result", (), 0),
    ("int32_t", "largest"): ("result", (), 0),
    ("uint8_t", "framed"): ("result", (), 0),
    ("uint32_t", "segment_count"): ("result", (), 0),
    # What stays 0xffffffff says that no seam was found.
    ("uint32_t", "end"): ("result", (), 0xFFFFFFFF),
    ("uint32_t", "start"): ("result", (), 0),
    ("uint32_t", "progress"): ("progress", (), 0),
}

# Where a name means something else than everywhere else: role, shape, start, default.
EXCEPTIONS = {
    ("cut_out", "destination"): ("changed", PICTURE, None, None),
    ("restore_outside", "destination"): ("changed", PICTURE, None, None),
    ("take_colours", "destination"): ("changed", PICTURE, None, None),
    ("take_alpha", "destination"): ("changed", PICTURE, None, None),
    ("fill_outside", "destination"): ("changed", PICTURE, None, None),
    ("layers", "red"): ("made", PICTURE, "source", None),
    ("layers", "green"): ("made", PICTURE, "source", None),
    ("layers", "blue"): ("made", PICTURE, "source", None),
    ("layers", "grey"): ("made", PICTURE, "source", None),
    ("gamma_table", "table"): ("made", TONES, 0, None),
    ("gamma_table_even", "table"): ("made", TONES, 0, None),
    ("path_lengths", "table"): ("made", ("points", 3), 0, None),
    ("erode_lab", "lightness"): ("input", PICTURE, None, None),
    ("mask_cut", "mask"): ("input", ("mask_height", "mask_width", 4), None, None),
    ("paint_pattern", "brush"): ("input", ("brush_height", "width", 4), None, None),
    ("probe_7", "values"): ("input", (7,), None, None),
    ("probe_4", "values"): ("input", (4,), None, None),
    ("probe_8", "values"): ("input", (8,), None, None),
    ("equalise", "table"): ("input", (256,), None, "equalising_table"),
    ("seams_insert", "image"): ("changed", ("height", "row_length", 4), None, None),
    ("seams_insert_show", "image"): ("changed", ("height", "row_length", 4), None, None),
    ("seam_energy", "energy"): ("made", ("height", "width"), 0, None),
    ("seam_map", "map"): ("made", ("height", "width"), 0, None),
    ("seam_map_update", "start"): ("reference", (), None, None),
    ("walk_outline", "records"): ("state", ("records", 9), None, None),
    ("walk_outline", "map"): ("state", PICTURE, None, None),
    ("walk_outline", "points"): ("made", ("most", 2), 0, None),
    ("fade_linear", "selection"): ("input", PICTURE, None, "everything"),
    ("fade_radial", "selection"): ("input", PICTURE, None, "everything"),
}
for _name in ("edge_graph", "edge_graph_blue", "edge_graph_alpha"):
    EXCEPTIONS[_name, "records"] = ("made", ("edges", 9), 0, None)
    EXCEPTIONS[_name, "map"] = ("made", PICTURE, -1, None)
for _name in _SEAM_STEPS:
    EXCEPTIONS[_name, "image"] = ("state", PICTURE, None, None)

# The header passes this map under several types, though its cells are the same everywhere.
ONE_TYPE = {"energy": "int32_t"}

# Numbers that follow from sizes or from what is given; functions of the sizes.
IMPLIED = {
    "width": lambda sizes: sizes["width"],
    "height": lambda sizes: sizes["height"],
    "stride": lambda sizes: sizes["width"],
    "last_row": lambda sizes: sizes["height"] - 1,
    "last": lambda sizes: sizes["points"] - 1,
    "count": lambda sizes: sizes["count"],
    "columns": lambda sizes: sizes["columns"],
    "row_length": lambda sizes: sizes["row_length"],
    "r": lambda sizes: sizes["side"] // 2,
    "mask_width": lambda sizes: sizes["mask_width"],
    "mask_height": lambda sizes: sizes["mask_height"],
    "horizontal_scale": lambda sizes: sizes["mask_width"] / max(sizes["width"], 1),
    "vertical_scale": lambda sizes: sizes["mask_height"] / max(sizes["height"], 1),
    "passed": lambda sizes: 0,
}
IMPLIED_HERE = {
    ("walk_outline", "stride"): lambda sizes: sizes["width"] * 4,
    ("fit_curves", "count"): lambda sizes: sizes["points"],
}
# Bytes that say whether a picture is given.
FLAGS = {"selection_only": "selection", "use_selection": "selection", "use_test": "test", "use_gate": "gate",
         "guided": "weights"}

# Defaults of numbers. None: the rectangle is the whole picture, a dab is clipped to it.
DEFAULTS = {"invert": 0, "clipping_warning": 0, "disable": 0, "restore": 0, "other_side": 0, "protect_above": 0,
            "grey": 0, "want_transparent": 0, "divisor": 1.0, "scale_x": 1.0, "scale_y": 1.0, "scale": 1.0, "bias": 0,
            "step": 2, "weight": 1, "handle": 67.0, "error": 0.7, "lightness_shift": 0,
            "a_shift": 0, "b_shift": 0, "last_column": None, "most": None,
            "x0": None, "x1": None, "y0": None, "y1": None, "dx0": None, "dx1": None, "dy0": None, "dy1": None}
DEFAULTS_HERE = {
    **{("black_and_white", name): 0.0 for name in ("red", "green", "blue")},
    ("black_and_white", "row"): 50.0,
    ("alpha_from_grey", "offset"): 0,
    ("walk_outline", "offset_x"): 0, ("walk_outline", "offset_y"): 0,
    **{(export, name): 0 for export in ("brightness_contrast", "gamma") for name in ("tolerance", "x", "y")},
    **{(export, "brightness"): 0 for export in ("brightness_contrast", "contrast_histograms")},
    **{(export, "contrast"): 50.0 for export in ("brightness_contrast", "contrast_histograms")},
}

# Rectangles: both ends belong to it, or pixels that it keeps from the picture's edges. The others are half-open.
INCLUSIVE = frozenset("mask_show_clip mask_outline_clip paint_alpha paint_opaque clone".split())
SPARING = frozenset(("mask_grow mask_shrink red_mask_grow opaque_grow opaque_shrink colour_grow colour_shrink "
                     "texture_grow texture_shrink").split())

# Numbers and entries of arrays that the library trusts as places in another array: they have to be less than a size.
# `in_use` is last_column + 1.
BELOW = {
    ("curves", "master"): 256, ("curves", "red"): 256, ("curves", "green"): 256, ("curves", "blue"): 256,
    ("lab_curves", "a_rows"): 256, ("lab_curves", "b_rows"): 256,
    ("paint_pattern", "columns"): "width", ("paint_pattern", "rows"): "brush_height",
    ("seams_insert", "seams"): "columns", ("seams_insert_show", "seams"): "columns",
    ("seam_remove", "end"): "in_use", ("seam_remove_show", "end"): "in_use", ("seam_record", "end"): "in_use",
    ("seam_record", "number"): "count",
    ("walk_outline", "start"): "records",
}

# Numbers that have to lie somewhere for the library to do anything: whether one does, by the sizes, and where in words.
RANGES = {
    ("box_blur", "radius"): (lambda radius, sizes: 1 <= radius <= min(sizes["width"], sizes["height"]) / 2,
                             "1 or more, and at most half of width and of height"),
    ("fade_radial", "radius"): (lambda radius, sizes: radius > 0, "more than 0"),
    ("fit_curves", "error"): (lambda error, sizes: error > 0, "more than 0"),
}

# Exports whose C result says something; and what is kept of arrays that were made as long as they may have to be.
RETURNING = frozenset("hue probe probe_4 probe_7 probe_8".split())
KEPT = {("edge_graph", "records"): "returned", ("edge_graph_blue", "records"): "returned",
        ("edge_graph_alpha", "records"): "returned", ("walk_outline", "points"): "returned",
        ("fit_curves", "segments"): "segment_count"}
