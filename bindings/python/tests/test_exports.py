"""Every export on arrays that the rules themselves make up, and what holds for all of them."""
import ast
import inspect
import json

import numpy
import pytest

import lumivex
from conftest import BUILD, noise
from lumivex import _arrays
from lumivex import _rules as rules
from lumivex._exports import Export, NoRule
from lumivex._functions import FUNCTIONS
from lumivex._library import EXPORTS

HEIGHT, WIDTH, GUARD = 23, 37, 4096
SIZES = {"height": HEIGHT, "width": WIDTH, "side": 12, "points": 19, "count": 5, "row_length": WIDTH, "records": 30,
         "mask_height": 11, "mask_width": 17, "brush_height": 9, "columns": WIDTH - 5, "edges": HEIGHT * WIDTH * 4,
         "segments": 18, "entries": HEIGHT * (WIDTH + 1) + 1, "most": 30}
# Numbers that most operations make sense of, and those that need their own.
NUMBERS = {"width": WIDTH, "height": HEIGHT, "radius": 4, "cx": 9, "cy": 11, "opacity": 0.6, "end": 3, "start": 2,
           "gx": 0.02, "gy": 0.01, "m": 0.5, "amount": -30, "threshold": 90, "number": 4, "distance": 5.0}
# Tables whose entries are places in others.
HIGHEST = {"columns": WIDTH, "rows": 9, "seams": WIDTH - 5}
EVERY = pytest.mark.parametrize("export", EXPORTS, ids=lambda export: export.english)


def guarded(array):
    """The same array with bytes round it that nobody may write."""
    memory = numpy.full(array.nbytes + 2 * GUARD, 0xA5, numpy.uint8)
    inner = memory[GUARD:-GUARD].view(array.dtype).reshape(array.shape)
    inner[...] = array
    return inner, lambda: (memory[:GUARD] == 0xA5).all() and (memory[-GUARD:] == 0xA5).all()


def made_up(p, seed):
    shape = tuple(SIZES.get(part, part) for part in p.shape)
    random = numpy.random.default_rng(seed)
    if p.type in ("float", "double"):
        return (random.random(shape) * 20).astype(_arrays.DTYPES[p.type])
    array = random.integers(0, HIGHEST.get(p.name, 256), shape).astype(_arrays.DTYPES[p.type])
    if shape[2:] == (4,):
        # Places of whole black and white, as in masks, and of the colour that the numbers name.
        for level in (0, 40, 255):
            array[random.random(shape[:2]) < 0.25] = level
    return array


def arguments_of(export):
    required, _ = export.shown
    given = {p.name: made_up(p, seed) if p.pointer and p.role != "reference" else NUMBERS.get(p.name, 40)
             for seed, p in enumerate(required)}
    if export.english == "clone":
        given["opacity"] = 150
    if export.english == "walk_outline":
        graph = lumivex.edge_graph(lumivex.threshold(noise(HEIGHT, WIDTH), 90, 90, 90, 90))
        given.update(records=graph.records, map=graph.map, start=0)
    return given


def copied(given):
    return {name: value.copy() if isinstance(value, numpy.ndarray) else value for name, value in given.items()}


def as_list(result):
    return list(result) if isinstance(result, tuple) else [result]


def assert_same(one, other):
    for left, right in zip(as_list(one), as_list(other), strict=True):
        numpy.testing.assert_array_equal(left, right)


@EVERY
def test_results_are_the_same_wherever_they_are_put(export):
    """Inputs stay as they are; given arrays are filled as made ones are, and nothing beside them is written."""
    function, given = FUNCTIONS[export.english], arguments_of(export)
    assert getattr(lumivex, export.english) is getattr(lumivex, export.name) is function
    state = {p.name for p in export.parameters if p.role == "state"}
    used = copied(given)
    result = function(**used)
    for name in given.keys() - state:
        numpy.testing.assert_array_equal(used[name], given[name])

    again, checks = copied(given), []
    for p in export.parameters:
        name = "out" if p is export.main else p.name
        if name == "out" or (p.role == "made" and p.shape not in (rules.CUBE, rules.GRID)):
            again[name] = given.get(p.start if p.role != "changed" else p.name)
            if again[name] is None:
                again[name] = _arrays.make(p, SIZES, p.start or 0)
    for name, value in again.items():
        if isinstance(value, numpy.ndarray):
            again[name], intact = guarded(value)
            checks.append(intact)
    assert_same(function(**again), result)
    assert all(intact() for intact in checks)


@EVERY
def test_selections_in_place_and_progress(export):
    function, given = FUNCTIONS[export.english], arguments_of(export)
    optional = {p.name for p in export.shown[1]}
    plain = function(**copied(given))
    # Under a selection these do something else: the manual says so.
    if "selection" in optional and export.english != "alpha_from_grey":
        nobody, everybody = (numpy.full((HEIGHT, WIDTH, 4), level, numpy.uint8) for level in (0, 255))
        assert_same(function(**copied(given), selection=everybody), plain)
        picture = as_list(function(**copied(given), selection=nobody))[0]
        start = given[export.main.start if export.main.role == "written" else export.main.name]
        if export.english not in ("lab_blur", "lab_colour_blur"):
            assert (picture[..., :3] == start[..., :3]).all()
    if export.main and export.in_place:
        used = copied(given)
        source = used[export.main.start if export.main.role == "written" else export.main.name]
        in_place = as_list(function(**used, out=source))[0]
        assert in_place is source
        assert_same(in_place, as_list(plain)[0])
    if export.has_progress:
        seen = []
        assert_same(function(**copied(given), progress=seen.append), plain)
        assert seen and seen == sorted(seen)


def test_a_parameter_without_a_rule_is_not_guessed():
    entry = {"name": "IM_New", "english": "new", "manual": "", "result": "int32_t",
             "parameters": [{"name": "mystery", "type": "const float*"}]}
    with pytest.raises(NoRule, match=r"new: no rule for float\* mystery"):
        Export(entry, {"family": "core", "text": ""})


def test_the_stub_tells_of_every_function_as_it_is():
    stub = ast.parse((BUILD / "python" / "lumivex" / "__init__.pyi").read_text())
    told = {node.name: [a.arg for a in node.args.args + node.args.kwonlyargs] for node in stub.body
            if isinstance(node, ast.FunctionDef)}
    assert told == {name: list(inspect.signature(function).parameters) for name, function in FUNCTIONS.items()}
    assert len(told) == sum(len(section["exports"]) for section in
                            json.loads((BUILD / "python" / "lumivex" / "interface.json").read_text()))
