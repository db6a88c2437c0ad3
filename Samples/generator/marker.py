"""The marker's parts and their text: what Docs/MarkerFile.md tells, in the saver's own layout."""

import json
from dataclasses import dataclass, field
from typing import Optional

from .drafting import Point, Shape

# Arrays that hold one point or link on each line, however short they are.
POINT_ARRAYS = {"contour", "seam", "internalPoints", "points", "path", "links"}


@dataclass(frozen=True)
class Rules:
    rotation_step: float = 0
    fine_rotation: float = 0
    flip_x: bool = False
    flip_y: bool = False


@dataclass(frozen=True)
class Text:
    lines: list
    x: float
    y: float
    align: str = "left"
    letter_size: float = 18
    section: str = "marker"
    box: Optional[tuple] = None
    path: list = field(default_factory=list)  # (x, y)
    path_origin: Optional[tuple] = None


@dataclass(frozen=True)
class Link:
    start: tuple  # ("contour" or "internal", number)
    end: tuple
    kind: str = "tree"
    line: str = "solid"
    pattern: Optional[list] = None
    shift: float = 0
    screen_only: bool = False


@dataclass(frozen=True)
class Image:
    x: float
    y: float
    width: float
    height: float
    rotation: float = 0
    file: str = ""


@dataclass(frozen=True)
class StyleSize:
    number: int
    name: str
    special: str = ""


@dataclass(frozen=True)
class Garments:
    fabric: int
    layer: int
    quantities: list


@dataclass
class Style:
    name: str
    source_file: str
    sizes: list
    garments: list


@dataclass
class Piece:
    name: str
    shapes: list  # one for each size of the style
    single: bool = False
    quantity: int = 1
    texts: dict = field(default_factory=dict)
    rules: Optional[Rules] = None
    chart: list = field(default_factory=list)  # (layer, size, left, right)


@dataclass
class Polygon:
    piece: Piece
    size: int
    side: str = "left"
    x: float = 0.0
    y: float = 0.0
    rotation: float = 0
    turned_over: bool = False
    ballot: str = ""
    paired_ballot: bool = False
    folded: bool = False
    color: int = 0
    spacing: float = 0
    shape: Optional[Shape] = None
    texts: list = field(default_factory=list)
    links: list = field(default_factory=list)
    images: list = field(default_factory=list)

    @property
    def mirrored(self):
        return (self.side == "right") != self.turned_over


@dataclass
class Group:
    polygons: list
    place: str = "marker"
    texts: list = field(default_factory=list)


@dataclass
class FabricLayer:
    width: float
    horizontal_lines: list = field(default_factory=list)  # (position, text)
    vertical_lines: list = field(default_factory=list)
    texts: list = field(default_factory=list)
    groups: list = field(default_factory=list)


@dataclass(frozen=True)
class Plaid:
    x_repetition: float
    y_repetition: float
    x_offset: float
    y_offset: float
    horizontal_lines: list
    vertical_lines: list


@dataclass
class Fabric:
    name: str
    layers: list
    pieces: list
    type: str = "plain"
    one_way: bool = False
    hybrid: bool = False
    fold_any_piece: bool = False
    edge_gap: bool = False
    gap_x: float = 0
    gap_y: float = 0
    rules: Rules = Rules()
    plaid: Optional[Plaid] = None


@dataclass
class Marker:
    keywords: str
    comments: str
    date_stamp: str
    layers: list  # (name, rank)
    fabrics: list
    styles: list
    single_layer: int = 0
    optimised: bool = False


def orders(garments, left, right=0):
    """A chart from the garments of each layer: so many left and right pieces for each garment."""
    return [
        (layer, size, count * left, count * right)
        for layer, quantities in enumerate(garments, 1)
        for size, count in enumerate(quantities, 1)
        if count
    ]


def marker_text(marker):
    return _rendered(_marker(marker)) + "\n"


def _record(*members):
    """An object from (key, value) and (key, value, default): a default is left out."""
    return {key: value for key, value, *default in members if not default or value != default[0]}


def _marker(marker):
    numbers = [size.number for size in marker.styles[0].sizes]  # the samples have one style each
    summary = _record(
        ("keywords", marker.keywords, ""),
        ("comments", marker.comments, ""),
        ("dateStamp", marker.date_stamp, ""),
    )
    return _record(
        ("format", "kiv-marker"),
        ("version", 1),
        ("summary", summary, {}),
        ("singleLayer", marker.single_layer, 0),
        ("optimised", marker.optimised, False),
        ("layers", [{"name": name, "rank": rank} for name, rank in marker.layers]),
        ("fabrics", [_fabric(fabric, numbers) for fabric in marker.fabrics]),
        ("styles", [_style(style) for style in marker.styles]),
    )


def _style(style):
    return _record(
        ("name", style.name),
        ("sourceFile", style.source_file, ""),
        ("sizes", [_style_size(size) for size in style.sizes]),
        ("garments", [_garments(entry) for entry in style.garments], []),
    )


def _style_size(size):
    return _record(("number", size.number), ("name", size.name), ("special", size.special, ""))


def _garments(entry):
    return {"fabric": entry.fabric, "layer": entry.layer, "quantities": entry.quantities}


def _fabric(fabric, numbers):
    return _record(
        ("name", fabric.name),
        ("type", fabric.type, "plain"),
        ("oneWay", fabric.one_way, False),
        ("hybrid", fabric.hybrid, False),
        ("foldAnyPiece", fabric.fold_any_piece, False),
        ("edgeGap", fabric.edge_gap, False),
        ("gapX", fabric.gap_x, 0),
        ("gapY", fabric.gap_y, 0),
        ("rules", _rules(fabric.rules), {}),
        ("plaid", _plaid(fabric.plaid), None),
        ("layers", [_fabric_layer(layer, fabric) for layer in fabric.layers]),
        ("pieces", [_piece(piece, numbers) for piece in fabric.pieces], []),
    )


def _rules(rules):
    # Rules of a piece that are all defaults still hide those of the fabric: None means no rules.
    return rules and _record(
        ("rotationStep", rules.rotation_step, 0),
        ("fineRotation", rules.fine_rotation, 0),
        ("flipX", rules.flip_x, False),
        ("flipY", rules.flip_y, False),
    )


def _plaid(plaid):
    return plaid and _record(
        ("active", True),
        ("xRepetition", plaid.x_repetition, 0),
        ("yRepetition", plaid.y_repetition, 0),
        ("xOffset", plaid.x_offset, 0),
        ("yOffset", plaid.y_offset, 0),
        ("horizontalLines", _guides(plaid.horizontal_lines), []),
        ("verticalLines", _guides(plaid.vertical_lines), []),
    )


def _guides(lines):
    return [_record(("position", position), ("text", text, "")) for position, text in lines]


def _fabric_layer(layer, fabric):
    return _record(
        ("width", layer.width),
        ("horizontalLines", _guides(layer.horizontal_lines), []),
        ("verticalLines", _guides(layer.vertical_lines), []),
        ("texts", _texts(layer.texts), []),
        ("groups", [_group(group, fabric) for group in layer.groups], []),
    )


def _texts(texts):
    return [
        _record(
            ("lines", text.lines),
            ("x", text.x),
            ("y", text.y),
            ("align", text.align, "left"),
            ("letterSize", text.letter_size, 18),
            ("section", text.section, "marker"),
            ("box", text.box and list(text.box), None),
            ("path", [list(place) for place in text.path], []),
            ("pathOrigin", text.path_origin and list(text.path_origin), None),
        )
        for text in texts
    ]


def _piece(piece, numbers):
    names = "pattern", "description", "code", "codeReference", "fabric", "identification"
    sizes = [{"number": n, **_shape(shape)} for n, shape in zip(numbers, piece.shapes)]
    return _record(
        ("name", piece.name),
        ("style", 1),
        ("single", piece.single, False),
        ("quantity", piece.quantity, 1),
        *((name, piece.texts.get(name, ""), "") for name in names),
        ("rules", _rules(piece.rules), None),
        ("sizes", sizes),
        ("chart", [_order(*order) for order in piece.chart], []),
    )


def _order(layer, size, left, right):
    return _record(("layer", layer), ("size", size), ("left", left, 0), ("right", right, 0))


def _shape(shape):
    lines = [
        {"kind": line.kind, "points": _points(line.points)} for line in shape.internal_lines
    ]
    return _record(
        ("contour", _points(shape.contour)),
        ("seam", _points(shape.seam), []),
        ("internalPoints", _points(shape.internal_points), []),
        ("internalLines", lines, []),
    )


def _points(points):
    return [_point(point) for point in points]


def _point(point):
    if point == Point(point.x, point.y):
        return [point.x, point.y]
    return _record(
        ("x", point.x),
        ("y", point.y),
        ("type", point.kind, "corner"),
        ("notch", point.notch and list(point.notch), None),
        ("notchWidth", point.notch_width, 0),
        ("match", point.match, False),
        ("punch", point.punch, None),
    )


def _group(group, fabric):
    return _record(
        ("place", group.place, "marker"),
        ("polygons", [_polygon(polygon, fabric) for polygon in group.polygons]),
        ("texts", _texts(group.texts), []),
    )


def _polygon(polygon, fabric):
    return _record(
        ("piece", fabric.pieces.index(polygon.piece) + 1),
        ("size", polygon.size),
        ("side", polygon.side, "left"),
        ("x", polygon.x, 0),
        ("y", polygon.y, 0),
        ("rotation", polygon.rotation, 0),
        *([("mirrored", polygon.mirrored)] if polygon.turned_over else []),
        ("ballot", polygon.ballot, ""),
        ("pairedBallot", polygon.paired_ballot, False),
        ("folded", polygon.folded, False),
        ("color", polygon.color, 0),
        ("spacing", polygon.spacing, 0),
        ("shape", polygon.shape and _shape(polygon.shape), None),
        ("texts", _texts(polygon.texts), []),
        ("links", [_link(link) for link in polygon.links], []),
        ("images", [_image(image) for image in polygon.images], []),
    )


def _link(link):
    return _record(
        ("kind", link.kind, "tree"),
        ("from", dict([link.start])),
        ("to", dict([link.end])),
        ("line", link.line, "solid"),
        ("pattern", link.pattern, None),
        ("shift", link.shift, 0),
        ("screenOnly", link.screen_only, False),
    )


def _image(image):
    return _record(
        ("x", image.x),
        ("y", image.y),
        ("width", image.width),
        ("height", image.height),
        ("rotation", image.rotation, 0),
        ("file", image.file, ""),
    )


def _rendered(value, indent="", key=""):
    if not isinstance(value, (dict, list)):
        return _scalar(value)
    items = list(value.values()) if isinstance(value, dict) else value
    if key not in POINT_ARRAYS and not any(isinstance(item, (dict, list)) for item in items):
        return _on_one_line(value)
    inner = indent + "  "
    if isinstance(value, dict):
        lines = [f"{_scalar(k)}: {_rendered(v, inner, k)}" for k, v in value.items()]
        start, end = "{", "}"
    else:
        point = key in POINT_ARRAYS
        lines = [_on_one_line(v) if point else _rendered(v, inner) for v in value]
        start, end = "[", "]"
    return start + "\n" + ",\n".join(inner + line for line in lines) + "\n" + indent + end


def _on_one_line(value):
    if isinstance(value, dict):
        return "{" + ", ".join(f"{_scalar(k)}: {_on_one_line(v)}" for k, v in value.items()) + "}"
    if isinstance(value, list):
        return "[" + ", ".join(map(_on_one_line, value)) + "]"
    return _scalar(value)


def _scalar(value):
    if isinstance(value, float) and value.is_integer():
        value = int(value)
    return json.dumps(value, ensure_ascii=False)
