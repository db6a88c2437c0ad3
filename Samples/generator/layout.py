"""Laying polygons on the fabric, and the checks that every sample has to pass."""

import math
from collections import Counter
from dataclasses import dataclass

from .drafting import area, corner, crosses_itself, encloses, folded_half, rounded, shifted
from .marker import Group

TOLERANCE = 1e-6


@dataclass(frozen=True)
class Box:
    left: float
    bottom: float
    right: float
    top: float

    @property
    def center(self):
        return rounded((self.left + self.right) / 2), rounded((self.bottom + self.top) / 2)


class LayoutError(Exception):
    """A sample that a marker maker would not accept."""


def turned(contour, mirrored, rotation):
    """Places of a contour, mirrored and turned about its origin; quarter turns are exact."""
    exact = {0: (1, 0), 90: (0, 1), 180: (-1, 0), 270: (0, -1)}
    angle = math.radians(rotation)
    cos, sin = exact.get(rotation % 360, (math.cos(angle), math.sin(angle)))
    flip = -1 if mirrored else 1
    return [
        (point.x * cos - flip * point.y * sin, point.x * sin + flip * point.y * cos)
        for point in contour
    ]


def box_of(polygon):
    if polygon.shape:
        places = [(point.x, point.y) for point in polygon.shape.contour]
    else:
        contour = polygon.piece.shapes[polygon.size - 1].contour
        places = turned(contour, polygon.mirrored, polygon.rotation)
        places = [(x + polygon.x, y + polygon.y) for x, y in places]
    xs, ys = zip(*places)
    return Box(min(xs), min(ys), max(xs), max(ys))


def placed(polygon, x, y):
    """Where a place of the piece lies once its polygon has been laid."""
    turned_place = turned([corner(x, y)], polygon.mirrored, polygon.rotation)[0]
    return rounded(turned_place[0] + polygon.x), rounded(turned_place[1] + polygon.y)


class Table:
    """One layer of a fabric while it is laid: each piece goes as far left as its box can."""

    def __init__(self, fabric, layer):
        self._fabric, self._layer = fabric, layer
        self._boxes = []

    def lay(self, *polygons, texts=()):
        """Places the polygons one after the other and makes them one group."""
        for polygon in polygons:
            box = box_of(polygon)
            spot = min(self._spots(box.right - box.left, box.top - box.bottom))
            polygon.x = _up(spot[0] - box.left)
            polygon.y = _up(spot[1] - box.bottom)
            if polygon.shape:
                polygon.shape = shifted(polygon.shape, polygon.x, polygon.y)
            self._boxes.append(box_of(polygon))
        return self._grouped(Group(list(polygons), texts=list(texts)))

    def lay_folded(self, polygon, top=False):
        """Puts half of a symmetric piece on the fold at the bottom or top edge of the fabric."""
        half = folded_half(polygon.piece.shapes[polygon.size - 1], upper=not top)
        polygon.folded, polygon.shape = True, half
        box = box_of(polygon)
        polygon.y = float(self._layer.width) if top else 0.0
        bottom = polygon.y + box.bottom
        polygon.x = _up(self._free_from(bottom, box.top - box.bottom) - box.left)
        polygon.shape = shifted(half, polygon.x, polygon.y)
        self._boxes.append(box_of(polygon))
        return self._grouped(Group([polygon]))

    def stand_by(self, *polygons):
        """Keeps polygons beside the fabric, above its upper edge."""
        x = 0.0
        for polygon in polygons:
            box = box_of(polygon)
            polygon.x = _up(x - box.left)
            polygon.y = _up(self._layer.width + 10 - box.bottom)
            x = box_of(polygon).right + 5
        return self._grouped(Group(list(polygons), "standby"))

    def _grouped(self, group):
        self._layer.groups.append(group)
        return group

    def _spots(self, length, height):
        edge = self._fabric.gap_y if self._fabric.edge_gap else 0
        for bottom in [edge] + [box.top + self._fabric.gap_y for box in self._boxes]:
            if _up(bottom) + height <= self._layer.width - edge:
                yield self._free_from(bottom, height), bottom

    def _free_from(self, bottom, height):
        gap_x, gap_y = self._fabric.gap_x, self._fabric.gap_y
        start = gap_x if self._fabric.edge_gap else 0
        near = [
            box.right + gap_x
            for box in self._boxes
            if box.bottom < bottom + height + gap_y - TOLERANCE
            and box.top + gap_y > bottom + TOLERANCE
        ]
        return max([start, *near])


def _up(value):
    return rounded(math.ceil(value * 1e4 - 1e-3) / 1e4)


def check(marker):
    """Raises LayoutError for anything that would not be cut as it is meant."""
    garments = {(g.fabric, g.layer): g.quantities for g in marker.styles[0].garments}
    for fabric_number, fabric in enumerate(marker.fabrics, 1):
        for piece in fabric.pieces:
            for shape in piece.shapes:
                _check_shape(piece.name, shape)
        for number, layer in enumerate(fabric.layers, 1):
            where = f"{fabric.name}, layer {number}"
            _check_orders(where, fabric, number, garments.get((fabric_number, number), []))
            _check_places(where, fabric, layer)
            _check_chart(where, number, layer)


def _demand(condition, message):
    if not condition:
        raise LayoutError(message)


def _check_shape(name, shape):
    _demand(area(shape.contour) > 0, f"{name}: the contour does not run counter-clockwise")
    _demand(not crosses_itself(shape.contour), f"{name}: the contour crosses itself")
    for point in shape.contour:
        if point.notch:
            x, y = point.x + point.notch[0], point.y + point.notch[1]
            _demand(encloses(shape.contour, x, y), f"{name}: a notch leaves the piece at {point}")
    if shape.seam:
        _demand(area(shape.seam) > 0, f"{name}: the seam is turned inside out")
        _demand(not crosses_itself(shape.seam), f"{name}: the seam crosses itself")
    for point in shape.internal_points + shape.seam:
        _demand(encloses(shape.contour, point.x, point.y), f"{name}: {point} lies outside")


def _check_orders(where, fabric, number, garments):
    """The chart must order what the garments need; folded cloth cuts a pair from one polygon."""
    pair = 2 if fabric.type in ("foldBottom", "foldTop") else 1
    for piece in fabric.pieces:
        cut = 1 if piece.single else pair
        ordered = {o[1]: (o[2] + o[3]) * cut for o in piece.chart if o[0] == number}
        needed = {size: n * piece.quantity for size, n in enumerate(garments, 1) if n}
        _demand(ordered == needed, f"{where}: {piece.name} orders {ordered}, needs {needed}")


def _check_places(where, fabric, layer):
    placed = [p for group in layer.groups if group.place == "marker" for p in group.polygons]
    boxes = [box_of(polygon) for polygon in placed]
    for polygon, box in zip(placed, boxes):
        inside = box.left >= 0 and box.bottom >= 0 and box.top <= layer.width
        _demand(inside, f"{where}: {polygon.piece.name} leaves the fabric: {box}")
        on_fold = box.bottom == 0 or (fabric.type == "tubular" and box.top == layer.width)
        _demand(on_fold or not polygon.folded, f"{where}: {polygon.piece.name} is off the fold")
    for index, a in enumerate(boxes):
        for b in boxes[:index]:
            apart_x = max(a.left, b.left) - min(a.right, b.right) >= fabric.gap_x - TOLERANCE
            apart_y = max(a.bottom, b.bottom) - min(a.top, b.top) >= fabric.gap_y - TOLERANCE
            _demand(apart_x or apart_y, f"{where}: {a} and {b} overlap")


def _check_chart(where, number, layer):
    lying = Counter()
    for polygon in (p for group in layer.groups for p in group.polygons):
        lying[polygon.piece.name, polygon.size, polygon.side] += 1
        orders = [o for o in polygon.piece.chart if o[:2] == (number, polygon.size)]
        ordered = sum(o[2] if polygon.side == "left" else o[3] for o in orders)
        count = lying[polygon.piece.name, polygon.size, polygon.side]
        _demand(count <= ordered, f"{where}: {count} of {polygon.piece.name}, ordered {ordered}")
