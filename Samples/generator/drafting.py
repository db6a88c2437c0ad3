"""Pattern drafting: points with types, lines and outlines with notches.

Centimetres throughout. A piece is drafted for the left-hand side with the grain along x; outlines
run counter-clockwise, so that the fabric lies to the left of every step.
"""

import math
from dataclasses import dataclass, field, replace
from typing import Optional

DECIMALS = 4  # keeps the files readable; a plotter resolves 0.01 cm at best
FLATNESS = 0.015  # the most that a sampled curve leaves its Bezier
NOTCH_DEPTH = 0.5


def rounded(value):
    return round(value, DECIMALS) + 0.0  # + 0.0 makes -0.0 a plain zero


@dataclass(frozen=True)
class Point:
    x: float
    y: float
    kind: str = "corner"
    notch: Optional[tuple] = None
    notch_width: float = 0.0
    match: bool = False
    punch: Optional[dict] = None


@dataclass(frozen=True)
class Line:
    kind: str  # cut, draw or grain
    points: list


@dataclass(frozen=True)
class Shape:
    contour: list
    internal_points: list = field(default_factory=list)
    internal_lines: list = field(default_factory=list)
    seam: list = field(default_factory=list)


@dataclass(frozen=True)
class Notch:
    """A notch at right angles to its seam; at a corner `toward` tells the direction (unit)."""

    kind: str = "simpleNotch"
    depth: float = NOTCH_DEPTH
    width: float = 0.0
    match: bool = False
    toward: Optional[tuple] = None


def corner(x, y, **more):
    return Point(rounded(x), rounded(y), **more)


def straight(kind, *places):
    return Line(kind, [corner(x, y) for x, y in places])


class Outline:
    """A pen that draws an outline step by step and sets the notches of a seam on its way."""

    def __init__(self, x, y, notch=None):
        self.points = []
        self._place = (x, y)
        self._add((x, y), "corner", notch, None)

    def line_to(self, x, y, notches=(), notch=None):
        """`notches`: pairs of place (0 to 1 of the way) and Notch; `notch`: the one at the end."""
        start, end = self._place, (x, y)
        tangent = (end[0] - start[0], end[1] - start[1])
        for part, mark in notches:
            self._add(_between(start, end, part), "corner", mark, tangent)
        self._add(end, "corner", notch, None)
        self._place = end
        return self

    def curve_to(self, control1, control2, end, notches=(), notch=None, smooth=False):
        """A cubic Bezier; with `smooth` its end is no corner because the seam runs on."""
        bezier = (self._place, control1, control2, end)
        marks = dict(notches)
        for part in _parameters(bezier, marks):
            self._add(_on_bezier(bezier, part), "curve", marks.get(part), _slope(bezier, part))
        self._add(end, "curve" if smooth else "corner", notch, _slope(bezier, 1.0))
        self._place = end
        return self

    def _add(self, place, kind, notch, tangent):
        x, y = rounded(place[0]), rounded(place[1])
        if notch is None:
            self.points.append(Point(x, y, kind))
            return
        toward = notch.toward or _inward(tangent)
        tip = (rounded(toward[0] * notch.depth), rounded(toward[1] * notch.depth))
        self.points.append(Point(x, y, notch.kind, tip, notch.width, notch.match))


def _between(start, end, part):
    return (start[0] + part * (end[0] - start[0]), start[1] + part * (end[1] - start[1]))


def _on_bezier(bezier, t):
    weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t**3)
    return tuple(sum(w * p[axis] for w, p in zip(weights, bezier)) for axis in (0, 1))


def _slope(bezier, t):
    a, b, c, d = bezier
    weights = ((1 - t) ** 2, 2 * t * (1 - t), t * t)
    steps = [(q[0] - p[0], q[1] - p[1]) for p, q in ((a, b), (b, c), (c, d))]
    return tuple(sum(w * s[axis] for w, s in zip(weights, steps)) for axis in (0, 1))


def _parameters(bezier, marks):
    """Even steps, fine enough for FLATNESS; a step that a notch nearly hits gives way to it."""
    a, b, c, d = bezier
    bend = max(
        math.hypot(p[0] - 2 * q[0] + r[0], p[1] - 2 * q[1] + r[1])
        for p, q, r in ((a, b, c), (b, c, d))
    )
    count = max(3, math.ceil(math.sqrt(0.75 * bend / FLATNESS)))
    even = [step / count for step in range(1, count)]
    kept = [t for t in even if all(abs(t - mark) > 0.4 / count for mark in marks)]
    return sorted(kept + list(marks))


def _inward(tangent):
    length = math.hypot(*tangent)
    return (-tangent[1] / length, tangent[0] / length)


def symmetric(half):
    """The whole outline from its half at y <= 0; points on the fold (y = 0) stand once."""
    return half + [_mirrored(point) for point in reversed(half) if point.y != 0]


def _mirrored(point):
    notch = point.notch and (point.notch[0], rounded(-point.notch[1]))
    return replace(point, y=rounded(-point.y), notch=notch)


def sewn(shape, allowance):
    """The shape with its seam, which runs inside of the contour by the allowance."""
    contour, seam = shape.contour, []
    for before, point, after in zip(contour[-1:] + contour, contour, contour[1:] + contour[:1]):
        first = _inward((point.x - before.x, point.y - before.y))
        second = _inward((after.x - point.x, after.y - point.y))
        reach = allowance / (1 + first[0] * second[0] + first[1] * second[1])
        x = point.x + reach * (first[0] + second[0])
        y = point.y + reach * (first[1] + second[1])
        seam.append(corner(x, y, kind="curve" if point.kind == "curve" else "corner"))
    return replace(shape, seam=seam)


def folded_half(shape, upper):
    """The half of a symmetric shape that lies on folded cloth, its fold along y = 0."""

    def lies_here(point):
        return point.y >= 0 if upper else point.y <= 0

    def half_of(points):
        first = next(
            index
            for index, point in enumerate(points)
            if lies_here(point) and not lies_here(points[index - 1])
        )
        half = [point for point in points[first:] + points[:first] if lies_here(point)]
        # A notch on the fold would run along the fold's edge: the fold itself marks that place.
        return [Point(point.x, 0.0) if point.y == 0 else point for point in half]

    lines = [line for line in shape.internal_lines if all(map(lies_here, line.points))]
    marks = list(filter(lies_here, shape.internal_points))
    return Shape(half_of(shape.contour), marks, lines, half_of(shape.seam) if shape.seam else [])


def shifted(shape, dx, dy):
    def move(points):
        return [replace(p, x=rounded(p.x + dx), y=rounded(p.y + dy)) for p in points]

    lines = [Line(line.kind, move(line.points)) for line in shape.internal_lines]
    return Shape(move(shape.contour), move(shape.internal_points), lines, move(shape.seam))


def number_of(points, x, y):
    """The number by which a link refers to the point at that place."""
    return [(point.x, point.y) for point in points].index((rounded(x), rounded(y))) + 1


def area(points):
    ahead = points[1:] + points[:1]
    return sum(p.x * q.y - q.x * p.y for p, q in zip(points, ahead)) / 2


def encloses(points, x, y):
    inside = False
    for p, q in zip(points, points[1:] + points[:1]):
        if (p.y > y) != (q.y > y) and x < p.x + (y - p.y) * (q.x - p.x) / (q.y - p.y):
            inside = not inside
    return inside


def crosses_itself(points):
    edges = list(zip(points, points[1:] + points[:1]))
    return any(
        _cross(*edges[i], *edges[j])
        for i in range(len(edges))
        for j in range(i + 2, len(edges) - (i == 0))
    )


def _cross(a, b, c, d):
    def turn(p, q, r):
        return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x)

    return turn(a, b, c) * turn(a, b, d) < 0 and turn(c, d, a) * turn(c, d, b) < 0
