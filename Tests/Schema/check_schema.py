#!/usr/bin/env python3
"""Holds Docs/marker.schema.json to the samples, which it accepts, and to broken files.

Every broken file is a small marker with one place changed, and must be refused at that place: a
schema that refuses it for something else does not know the fault. One line a case; exits with 1
when a case surprises.
"""

import copy
import json
import sys
from pathlib import Path

from jsonschema import Draft7Validator

ROOT = Path(__file__).resolve().parents[2]
REMOVED = object()

PIECE = ("fabrics", 0, "pieces", 0)
SIZE = PIECE + ("sizes", 0)
LAYER = ("fabrics", 0, "layers", 0)
POLYGON = LAYER + ("groups", 0, "polygons", 0)
STYLE = ("styles", 0)
CORNER = SIZE + ("contour", 0)
NOTCH = {"x": 0, "y": 0, "type": "simpleNotch", "notch": [0.5, 0]}
LINE = {"position": 0}
TEXT = {"lines": ["Lay"], "x": 0, "y": 0}
LINKS = POLYGON + ("links",)
LINK = {"from": {"contour": 1}, "to": {"internal": 1}}
IMAGE = {"x": 1, "y": 1, "width": 2, "height": 3}
TRIANGLE = {"contour": [[0, 0], [1, 0], [0, 1]]}


def small_marker():
    polygon = {"piece": 1, "size": 1}
    contour = [[0, 0], [10, 0], {"x": 10, "y": 5, "type": "curve"}, [0, 5]]
    piece = {
        "name": "Front",
        "style": 1,
        "sizes": [{"number": 38, "contour": contour}],
        "chart": [{"layer": 1, "size": 1, "left": 1}],
    }
    fabric = {
        "name": "Jersey",
        "layers": [{"width": 150, "groups": [{"polygons": [polygon]}]}],
        "pieces": [piece],
    }
    return {
        "format": "kiv-marker",
        "version": 1,
        "layers": [{"name": "Layer 1"}],
        "fabrics": [fabric],
        "styles": [{"name": "TEE", "sizes": [{"number": 38, "name": "S"}]}],
    }


# What is changed, where, the new value, and how many steps above that place the fault is seen
# (below it when negative).
REFUSED = [
    ("another format", ("format",), "kiv-drawing", 0),
    ("a later version", ("version",), 2, 0),
    ("no styles", ("styles",), REMOVED, 1),
    ("an unknown key of the document", ("colour",), "red", 1),
    ("no layer", ("layers",), [], 0),
    ("a date without a time", ("summary",), {"dateStamp": "2026-03-14"}, -1),
    ("a 13th month", ("summary",), {"dateStamp": "2026-13-01T00:00:00"}, -1),
    ("a line break in a name", STYLE + ("name",), "TEE\n", 0),
    ("a name of 10,001 characters", STYLE + ("name",), "x" * 10001, 0),
    ("a size with the number 0", STYLE + ("sizes", 0, "number"), 0, 0),
    ("half a garment", STYLE + ("garments",), [{"fabric": 1, "layer": 1, "quantities": [0.5]}], -3),
    ("an unknown type of fabric", ("fabrics", 0, "type"), "foldLeft", 0),
    ("a negative gap across", ("fabrics", 0, "gapY"), -0.5, 0),
    ("a turning step above 360", ("fabrics", 0, "rules"), {"rotationStep": 361}, -1),
    (
        "lines of an active plaid without a repetition",
        ("fabrics", 0, "plaid"),
        {"active": True, "xRepetition": 10, "horizontalLines": [LINE]},
        0,
    ),
    ("a fabric of width 0", LAYER + ("width",), 0, 0),
    ("a guide line without a position", LAYER + ("verticalLines",), [{"text": "Splice"}], -1),
    ("a text without lines", LAYER + ("texts",), [{"lines": [], "x": 0, "y": 0}], -2),
    ("a piece that a garment has not", PIECE + ("quantity",), 0, 0),
    ("a contour of two points", SIZE + ("contour",), [[0, 0], [1, 0]], 0),
    ("a point in space", CORNER, [1, 2, 3], 0),
    ("a point that is a text", CORNER, "0,0", 0),
    ("a coordinate beyond the limit", CORNER, [0, 100000.5], -1),
    ("a notch without a tip", CORNER, {"x": 0, "y": 0, "type": "vNotch"}, 0),
    ("a tip without a notch", CORNER, {**NOTCH, "type": "curve"}, -1),
    ("a cross bar of a simple notch", CORNER, {**NOTCH, "notchWidth": 0.4}, -1),
    ("the shape of a punch at a corner", CORNER, {"x": 0, "y": 0, "punch": {"plus": 1}}, -1),
    ("an unknown kind of line", SIZE + ("internalLines",), [{"kind": "score", "points": []}], -2),
    ("a fold without a shape", POLYGON + ("folded",), True, 1),
    ("a ballot of two characters", POLYGON + ("ballot",), "AB", 0),
    ("a ballot beyond U+00FF", POLYGON + ("ballot",), "\u0141", 0),
    ("a flag that is a number", POLYGON + ("mirrored",), 1, 0),
    ("a rank of 0", ("layers", 0, "rank"), 0, 0),
    ("a seam of two points", SIZE + ("seam",), [[0, 0], [1, 0]], 0),
    ("a negative spacing", POLYGON + ("spacing",), -1, 0),
    ("a link to a point 0", LINKS, [{**LINK, "to": {"internal": 0}}], -3),
    ("a link's end at two points", LINKS, [{**LINK, "to": {"internal": 1, "contour": 1}}], -2),
    ("a link with one end", LINKS, [{"from": {"contour": 1}}], -1),
    ("a dashed line without a pattern", LINKS, [{**LINK, "line": "dashed"}], -1),
    ("a dot in a dashed line", LINKS, [{**LINK, "line": "dashed", "pattern": [1, 1, 1]}], -2),
    ("a pattern of a solid line", LINKS, [{**LINK, "pattern": [1, 1]}], -2),
    ("a sewing link aside", LINKS, [{**LINK, "kind": "sewing", "shift": 1}], -2),
    ("an image without height", POLYGON + ("images",), [{**IMAGE, "height": 0}], -2),
    ("a path of two points", LAYER + ("texts",), [{**TEXT, "path": [[0, 0], [1, 0]]}], -2),
    ("the origin of no path", LAYER + ("texts",), [{**TEXT, "pathOrigin": [0, 0]}], -1),
    ("a box with a negative side", LAYER + ("texts",), [{**TEXT, "box": [1, -1]}], -3),
]

ACCEPTED = [
    ("no fabric and no style", (), {**small_marker(), "fabrics": [], "styles": []}),
    ("lines of a plaid that is not active", ("fabrics", 0, "plaid"), {"horizontalLines": [LINE]}),
    ("a negative gap along", ("fabrics", 0, "gapX"), -0.5),
    ("a line break in the comments", ("summary",), {"comments": "one\r\ntwo"}),
    ("a simple notch", CORNER, NOTCH),
    ("a user notch", CORNER, {**NOTCH, "type": "userNotch", "notchWidth": 0.4}),
    ("a punch without a shape", SIZE + ("internalPoints",), [{"x": 1, "y": 1, "type": "punch"}]),
    ("a fold with a shape", POLYGON, {"piece": 1, "size": 1, "folded": True, "shape": TRIANGLE}),
    ("ranks and unused layers", ("layers",), [{"name": "", "rank": 1, "unused": True}]),
    ("a dashed link", LINKS, [{**LINK, "line": "dashed", "pattern": [1, 0.5]}]),
    ("a sewing link", LINKS, [{**LINK, "kind": "sewing"}]),
    ("an image", POLYGON + ("images",), [IMAGE]),
    ("a text on a path", LAYER + ("texts",), [{**TEXT, "path": [[0, 0], [1, 1], [2, 0]]}]),
    ("the last ballot", POLYGON + ("ballot",), "\u00ff"),
]


def changed(path, value):
    document = small_marker()
    if not path:
        return value
    *above, last = path
    place = document
    for step in above:
        place = place[step]
    if value is REMOVED:
        del place[last]
    else:
        place[last] = copy.deepcopy(value)
    return document


def refused_at(validator, document, path, above):
    """Whether there is a fault, and all lie at the place: `above` it, or so far below it."""
    faults = [tuple(fault.absolute_path) for fault in validator.iter_errors(document)]
    depth = len(path) - above
    start = path[: min(depth, len(path))]
    return bool(faults) and all(len(f) == depth and f[: len(start)] == start for f in faults)


def single_pieces_stay_left(validator):
    document = changed(PIECE + ("single",), True)
    left_only = validator.is_valid(document)
    document["fabrics"][0]["pieces"][0]["chart"][0]["right"] = 1
    path = PIECE + ("chart", 0, "right")
    return left_only and refused_at(validator, document, path, 0)


def cases(validator):
    """Pairs of a sentence and whether it holds."""
    samples = sorted((ROOT / "Samples").glob("*.mar"))
    yield "there are samples", bool(samples)
    for sample in samples:
        yield f"{sample.name} is valid", validator.is_valid(json.loads(sample.read_bytes()))
    yield "the small marker is valid", validator.is_valid(small_marker())
    for name, path, value in ACCEPTED:
        yield f"accepted: {name}", validator.is_valid(changed(path, value))
    for name, path, value, above in REFUSED:
        yield f"refused: {name}", refused_at(validator, changed(path, value), path, above)
    yield "refused: a single piece on the right", single_pieces_stay_left(validator)


def main():
    schema = json.loads((ROOT / "Docs" / "marker.schema.json").read_bytes())
    Draft7Validator.check_schema(schema)
    failed = 0
    for sentence, holds in cases(Draft7Validator(schema)):
        print(("ok      " if holds else "FAILED  ") + sentence)
        failed += not holds
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
