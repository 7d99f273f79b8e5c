"""The exports as C++ calls on views, tables and rectangles: include/lumivex.hpp brings them in.

What a pointer means is told by its type and name, for all exports at once where that is clear and by export where it is
not. A pointer, size or rectangle that no rule knows ends the build: a new export adds its rule here.
"""
import re
import textwrap

# Runs of arguments that become one: names, type, the type and name in C++.
GROUPS = [
    ("cx cy dx0 dy0 dx1 dy1", "int32_t", "const Dab&", "dab", "x y left top right bottom"),
    ("left right top bottom", "int32_t*", "InclusiveRectangle&", "bounds", "left right top bottom"),
    ("red green blue", "uint8_t", "Colour", "colour", "red green blue"),
    ("red1 green1 blue1", "uint8_t", "Colour", "colour1", "red green blue"),
    ("red2 green2 blue2", "uint8_t", "Colour", "colour2", "red green blue"),
    ("lightness a b", "const float*", "const LabCubeView&", "cube", "lightness a b"),
    ("red green blue", "const uint8_t*", "const RgbGridView&", "grid", "red green blue"),
]

# Tables by type and name, with their length; a name with an export before it counts for that export alone.
TABLES = {
    "float": {"tone_table": "toneTableLength", "table": "toneTableLength", "ramp": "rampLength", "curve": "rampLength",
              "bell": "256", "profile": "256", "mean": "256", "red": "256", "green": "256", "blue": "256",
              "lightness": "labCubeLength", "a": "labCubeLength", "b": "labCubeLength",
              "probe_7.values": "7", "probe_4.values": "4", "probe_8.values": "8"},
    "double": {"gammas": "256"},
    "uint8_t": {"family": "curveFamilyLength", "table": "256", "profile": "256", "colour": "4",
                "rgb_grid.red": "rgbGridLength", "rgb_grid.green": "rgbGridLength", "rgb_grid.blue": "rgbGridLength"},
    "uint32_t": dict.fromkeys("master grey red green blue lightness_rows a_rows b_rows".split(), "256"),
    "int32_t": dict.fromkeys("master red green blue".split(), "5"),
}

# Maps and other arrays that are not pictures.
VIEWS = {"lab_image.lab": "LabView", "erode_lab.lightness": "LabView", "map": "MapView", "energy": "MapView",
         "counters": "MapView", "seams": "SeamTableView", "flags": "FlagsView", "records": "RecordsView",
         "edge_graph.map": "IndexView", "edge_graph_blue.map": "IndexView", "edge_graph_alpha.map": "IndexView",
         "walk_outline.map": "IndexView"}
SPANS = {"points": "Point", "segments": "CurveSegment", "path_lengths.table": "PathPoint",
         "path_point.table": "PathPoint", "offset_table.table": "uint32_t", "columns": "uint32_t", "rows": "uint32_t"}
PICTURES = set("background base brush clone companion destination equalised filtered gate grey guide highlight image "
               "key least mask picture pixels reference restore root scratch selection shadow softened source stroke test "
               "texture touched unpainted weights layers.red layers.green layers.blue".split())
OUT = {"largest", "framed", "end", "start", "segment_count"}

# Pictures that may be left out, with the flag that says so.
OPTIONAL = {"selection": ("selection_only", "use_selection"), "weights": ("guided",), "test": ("use_test",),
            "gate": ("use_gate",)}
FLAGS = {"invert", "clipping_warning", "other_side", "protect_above", "want_transparent", "disable", "high_pass.grey",
         "paint_fade.restore", "mask_from_red.value"}
HANDED_BACK = {"passed", "ignored"}

# What views say already.
SIZES = {"width": "{first}.width", "height": "{first}.height", "r": "brush.width / 2",
         "mask_width": "mask.width", "mask_height": "mask.height", "last_row": "{first}.height - 1",
         "stride": "{first}.width", "walk_outline.stride": "map.width * 4", "count": "seams.width",
         "seam_record.count": "static_cast<uint32_t>(seams.width)", "row_length": "image.width",
         "seams_insert.columns": "counters.width", "seams_insert_show.columns": "counters.width",
         "seams_insert.height": "counters.height", "seams_insert_show.height": "counters.height",
         "fit_curves.count": "inner::size32(points)", "last": "inner::size32(points) - 1",
         "path_point.last": "inner::size32(table) - 1", "most": "inner::size32(points)"}
WITHOUT_PICTURE = {"offset_table"}
OTHER_SIZE = {"brush", "mask_cut.mask", "seams", "seams_insert.image", "seams_insert_show.image"}

RECTANGLES = {
    "InclusiveRectangle": "mask_show_clip mask_outline_clip paint_alpha paint_opaque clone",
    "HalfOpenRectangle": "mask_grow mask_shrink red_mask_grow alpha_from_mask restore retouch_tone retouch_filter "
                         "retouch_colour retouch_tint opaque_grow opaque_shrink colour_grow colour_shrink texture_grow "
                         "texture_shrink",
}
# These write the neighbours of what is in the rectangle.
WRITES_AROUND = set("mask_grow mask_shrink red_mask_grow opaque_grow opaque_shrink colour_grow colour_shrink "
                    "texture_grow texture_shrink".split())

# Further things to make sure of, of a Shape or on their own.
SEAM = ['.below("last_column", last_column, {first}.width)']
FOLLOW = SEAM + ['.below("end", static_cast<uint32_t>(end), {first}.width)']
INSERT = ['.size("seams", seams, seams.width, counters.height)',
          '.size("image", image, int64_t{{counters.width}} + seams.width, counters.height)']
SHAPES = {
    "mask_cut": ['.below("a place in the mask", inner::lastPlace(horizontal_scale, vertical_scale, image.width, '
                 'image.height, mask.width), int64_t{{mask.width}} * mask.height)'],
    "paint_pattern": ['.size("brush", brush, picture.width, brush.height)',
                      '.below("a column", columns, picture.width)', '.below("a row", rows, brush.height)',
                      '.below("the last column", picture.width - 1, inner::size32(columns))',
                      '.below("the last row", picture.height - 1, inner::size32(rows))'],
    "seam_map": SEAM, "seam_map_update": SEAM, "seam_expand_update": SEAM, "seam_remove": FOLLOW,
    "seam_remove_show": FOLLOW,
    "seam_record": FOLLOW + ['.size("seams", seams, seams.width, map.height)',
                             '.below("number", number, seams.width)'],
    "walk_outline": ['.below("start", start, int64_t{{records.width}} * records.height * 4)'],
    "seams_insert": INSERT, "seams_insert_show": INSERT,
}
LENGTHS = {
    "offset_table": '"table", table.size(), static_cast<size_t>(std::max(height, 0)) * (static_cast<size_t>('
                    'std::max(width, 0)) + 1) + 1',
    "fit_curves": '"segments", segments.size(), std::max<size_t>(points.size(), 2) - 1',
    "path_lengths": '"table", table.size(), std::max<size_t>(points.size(), 1)',
}

# What a call says; all others return a number that the caller has passed, or 1.
RESULTS = set("hue probe probe_4 probe_7 probe_8 edge_graph edge_graph_blue edge_graph_alpha walk_outline".split())


def wrapped(line, indent=4):
    """A line of code as lines of 120 characters, broken between arguments alone."""
    kept = re.sub(r"<[^<>()]*>|\"[^\"]*\"|(?<!,) ", lambda found: found.group().replace(" ", "\0"), line)
    lines = textwrap.wrap(kept, 120, initial_indent=" " * indent, subsequent_indent=" " * (indent + 8),
                          break_long_words=False, break_on_hyphens=False)
    return [line.replace("\0", " ") for line in lines]


class Call:
    """One export as a C++ function: its parameters, what it checks, and the arguments of the C function."""

    def __init__(self, export):
        self.export = export
        self.name = export.english
        self.required, self.defaulted, self.arguments, self.before, self.shape = [], [], [], [], []
        self.views = []
        rest = export.split_parameters
        while rest:
            rest = rest[self.take_group(rest) or self.take_one(*rest[0]):]
        self.shape = [f'.same("{view}", {view})' for view in self.views[1:]] + self.shape + SHAPES.get(self.name, [])

    def told(self, rules, name):
        return rules.get(f"{self.name}.{name}", rules.get(name))

    def among(self, names, name):
        return name in names or f"{self.name}.{name}" in names

    def add(self, kind, name, *arguments, default=None):
        (self.defaulted if default else self.required).append(f"{kind} {name}" + (f" = {default}" if default else ""))
        self.arguments += arguments

    def take_group(self, rest):
        for names, kind, becomes, called, members in self.groups():
            names = names.split()
            if [(kind, name) for name in names] != rest[:len(names)]:
                continue
            if any(f"{self.name}.{name}" in VIEWS for name in names):
                continue
            suffix = ".data()" if kind.startswith("const") else ""
            prefix = "&" if kind.endswith("*") and not suffix else ""
            self.add(becomes, called, *(f"{prefix}{called}.{member}{suffix}" for member in members.split()))
            if called == "dab":
                self.shape.append(".inside(dab, brush)")
            elif called == "area":
                self.shape.append(f".inside(area{', 1' if self.name in WRITES_AROUND else ''})")
            return len(names)
        return 0

    def groups(self):
        kinds = [kind for kind, names in RECTANGLES.items() if self.name in names.split()]
        return GROUPS + [("x0 x1 y0 y1", "int32_t", f"const {kind}&", "area", "left right top bottom")
                         for kind in kinds]

    def take_one(self, kind, name):
        pointed = re.fullmatch(r"(const )?(\w+)\*", kind)
        if name.startswith("unused") or name in HANDED_BACK:
            self.arguments.append("0")
        elif any(name in flags for flags in OPTIONAL.values()):
            picture = next(picture for picture, flags in OPTIONAL.items() if name in flags)
            self.arguments.append(f"{picture}.given()")
        elif name == "progress":
            self.add("Progress*", name, "(progress != nullptr ? *progress : unwatched).counter()", default="nullptr")
            self.before.append("Progress unwatched;")
        elif name == "stop":
            self.add("const Stop*", name, "(stop != nullptr ? *stop : never).byte()", default="nullptr")
            self.before.append("const Stop never;")
        elif pointed:
            self.take_pointer(*pointed.groups(default=""), name)
        elif self.told(SIZES, name) and self.name not in WITHOUT_PICTURE:
            self.arguments.append(self.told(SIZES, name))
        elif self.among(FLAGS, name):
            self.add("bool", name, name)
        elif name in ("x0", "x1", "y0", "y1") and kind == "int32_t":
            raise SystemExit(f"calls.py: which kind of rectangle does {self.name} take?")
        else:
            self.add(kind, name, name)
        return 1

    def take_pointer(self, const, kind, name):
        view = self.told(VIEWS, name)
        table = self.told(TABLES[kind], name)
        span = self.told(SPANS, name)
        if name in OUT:
            self.add(kind if const else f"{kind}&", name, "&" + name)
        elif self.name == "path_point" and name == "result":
            self.add("Point&", name, "&result.x")
        elif view:
            # The energies that some exports change are bytes or unsigned there.
            other = name == "energy" and kind != "int32_t"
            self.take_view(f"Const{view}" if const else view, name,
                           f"reinterpret_cast<{kind}*>({name}.data)" if other else None)
        elif span:
            fits = f"inner::floats({name})" if kind == "float" else f"{name}.data()"
            self.add(f"std::span<{const}{span}>", name, fits)
        elif table:
            self.add(f"TableView<{const}{kind}, {table}>", name, f"{name}.data()")
        elif name in OPTIONAL and self.has(*OPTIONAL[name]):
            self.add("const OptionalPicture&" if name != "selection" else "const Selection&", name, f"{name}.data()",
                     default="{}")
            self.shape.append(f'.same("{name}", {name})')
        elif kind == "uint8_t" and self.among(PICTURES, name):
            self.take_view("ConstPictureView" if const else "PictureView", name)
        else:
            raise SystemExit(f"calls.py: what is {const}{kind}* {name} of {self.name}?")

    def take_view(self, kind, name, argument=None):
        self.add(kind, name, argument or f"{name}.data")
        if not self.among(OTHER_SIZE, name):
            self.views.append(name)

    def has(self, *flags):
        return any(name in flags for _, name in self.export.split_parameters)

    def lines(self):
        first = self.views[0] if self.views else ""
        result = self.export.result if self.name in RESULTS else "void"
        sentence = re.split(r"\.(?:\s|$)|:?\n(?:\n|    )", self.export.manual)[0]
        comment = textwrap.wrap(f"{' '.join(sentence.split())}. In C: {self.export.name}", 117)
        body = []
        if self.shape:
            body.append(f'inner::Shape("{self.name}", "{first}", {first})' +
                        "".join(part.format(first=first) for part in self.shape) + ";")
        if self.name in LENGTHS:
            body.append(f'inner::length("{self.name}", {LENGTHS[self.name]});')
        arguments = ", ".join(argument.format(first=first) for argument in self.arguments)
        body += self.before + [("return " if result != "void" else "") + f"{self.export.name}({arguments});"]
        declaration = wrapped(f"inline {result} {self.name}({', '.join(self.required + self.defaulted)})", 0)
        return [*("// " + line for line in comment), *declaration, "{",
                *(line for statement in body for line in wrapped(statement)), "}", ""]


def calls(exports):
    """The lines of lumivex/calls.hpp."""
    english = {export.english for export in exports}
    ruled = set(SHAPES) | set(LENGTHS) | RESULTS | WRITES_AROUND | WITHOUT_PICTURE
    ruled |= {name for names in RECTANGLES.values() for name in names.split()}
    if not ruled <= english:
        raise SystemExit(f"calls.py: rules for what is no export: {', '.join(sorted(ruled - english))}")
    lines = ["// Every export by its English name, on views, tables and rectangles. Derived from lumivex.h, its manual.",
             "#pragma once", "", '#include "lumivex.h"']
    lines += [f'#include "lumivex/{name}.hpp"' for name in "areas checks points progress tables views".split()]
    lines += ["", "#include <algorithm>", "#include <span>", "", "namespace lumivex", "{"]
    for export in exports:
        lines += Call(export).lines()
    return lines[:-1] + ["} // namespace lumivex"]


def names(exports):
    """The lines of lumivex/names.hpp."""
    return ["// What the exports are called: in English, and in the library. Derived from lumivex.h.", "#pragma once", "",
            "#include <string_view>", "", "namespace lumivex", "{", "struct ExportName", "{",
            "    std::string_view english;", "    std::string_view exported;", "};", "",
            "inline constexpr ExportName exportNames[] = {",
            *(f'    {{"{export.english}", "{export.name}"}},' for export in exports), "};", "} // namespace lumivex"]
