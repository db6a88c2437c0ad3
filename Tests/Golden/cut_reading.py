"""Reads markers and cut documents for check_cut_documents.py."""

import math
import re
import struct
import xml.etree.ElementTree as ElementTree
from collections import namedtuple

NEAR = 1e-6  # cm: rounding of a coordinate
PATH = re.compile(r"M (\S+,\S+)((?: L \S+,\S+)*)$")

Mark = namedtuple("Mark", "x y type vector width match")
Piece = namedtuple("Piece", "name contour marks drills lines matches cloth")
Cloth = namedtuple("Cloth", "start end width next")
Outline = namedtuple("Outline", "texts points notches lifts")
Object = namedtuple("Object", "attributes outlines drills lines texts matches loose children reach")


# Plane geometry

def edges(ring):
    return zip(ring, ring[1:] + ring[:1])


def area(ring):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in edges(ring)) / 2


def box(points):
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return min(xs), min(ys), max(xs), max(ys)


def boxes_meet(a, b, margin):
    return (a[0] <= b[2] + margin and b[0] <= a[2] + margin and a[1] <= b[3] + margin and
            b[1] <= a[3] + margin)


def to_edge(p, a, b):
    dx, dy = b[0] - a[0], b[1] - a[1]
    size = dx * dx + dy * dy
    share = ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / size if size else 0
    share = min(max(share, 0), 1)
    return math.hypot(p[0] - a[0] - share * dx, p[1] - a[1] - share * dy)


def clearance(p, ring):
    """Distance to the border, below zero outside."""
    inside = False
    for a, b in edges(ring):
        if (a[1] > p[1]) != (b[1] > p[1]):
            inside ^= p[0] < a[0] + (p[1] - a[1]) / (b[1] - a[1]) * (b[0] - a[0])
    distance = min(to_edge(p, a, b) for a, b in edges(ring))
    return distance if inside else -distance


def beside(p, a, b):
    size = math.dist(a, b)
    return ((b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])) / size if size else 0


def between(a, p, b):
    """Degrees between the edges at p."""
    ax, ay, bx, by = a[0] - p[0], a[1] - p[1], b[0] - p[0], b[1] - p[1]
    return math.degrees(math.atan2(abs(ax * by - ay * bx), ax * bx + ay * by))


def cross(a, b, c, d, depth):
    """Whether two edges cross and go further than the depth beyond each other."""
    sides = [beside(c, a, b), beside(d, a, b), beside(a, c, d), beside(b, c, d)]
    return sides[0] * sides[1] < 0 and sides[2] * sides[3] < 0 and min(map(abs, sides)) > depth


def meets(a, b, rect):
    """Whether an edge has a part in a rectangle."""
    first, last = 0, 1
    for axis in (0, 1):
        way = b[axis] - a[axis]
        low, high = rect[axis] - a[axis], rect[axis + 2] - a[axis]
        if way:
            low, high = sorted((low / way, high / way))
            first, last = max(first, low), min(last, high)
        elif low > 0 or high < 0:
            return False
    return first <= last


def crosses_itself(ring):
    sides = [(a, b, box((a, b))) for a, b in edges(ring)]
    return any(boxes_meet(s[2], t[2], 0) and cross(*s[:2], *t[:2], NEAR)
               for i, s in enumerate(sides) for t in sides[:i])


def gap(a, b, c, d):
    """Distance of two edges."""
    if cross(a, b, c, d, 0):
        return 0
    return min(to_edge(a, c, d), to_edge(b, c, d), to_edge(c, a, b), to_edge(d, a, b))


def same(a, b, tolerance=NEAR):
    return abs(a[0] - b[0]) <= tolerance and abs(a[1] - b[1]) <= tolerance


def same_path(a, b):
    return len(a) == len(b) and all(map(same, a, b))


# The marker

def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


def turned(polygon, x, y):
    if polygon is None:
        return x, y
    y = -y if polygon.get("mirrored", polygon.get("side") == "right") else y
    turn = math.radians(polygon.get("rotation", 0))
    return x * math.cos(turn) - y * math.sin(turn), x * math.sin(turn) + y * math.cos(turn)


def read_marks(points, polygon, dx, dy):
    found = []
    for point in points:
        point = point if isinstance(point, dict) else {"x": point[0], "y": point[1]}
        x, y = turned(polygon, point["x"], point["y"])
        vector = turned(polygon, *map(single, point.get("notch", [0, 0])))
        found.append(Mark(x + dx, y + dy, point.get("type", "corner"), vector,
                          single(point.get("notchWidth", 0)), point.get("match", False)))
    return found


def lay_piece(fabric, polygon, cloth):
    piece = fabric["pieces"][polygon["piece"] - 1]
    shape, moved = polygon.get("shape"), None
    dx, dy = cloth.start, 0
    if shape is None:
        shape, moved = piece["sizes"][polygon["size"] - 1], polygon
        dx, dy = dx + polygon.get("x", 0), polygon.get("y", 0)
    marks = read_marks(shape["contour"], moved, dx, dy)
    points = marks + read_marks(shape.get("internalPoints", []), moved, dx, dy)
    for line in shape.get("internalLines", []):
        points += read_marks(line["points"], moved, dx, dy)
    lines = [[m[:2] for m in read_marks(line["points"], moved, dx, dy)]
             for line in shape.get("internalLines", []) if line["kind"] == "cut"]
    drills = [(m[:2], "M44" if m.type == "userPunch" else "M43") for m in points
              if m.type in ("punch", "userPunch")]
    return Piece(piece["name"], [m[:2] for m in marks], marks, drills, lines,
                 [m[:2] for m in points if m.match], cloth)


class Laid:
    """The groups on a fabric as lists of pieces, layer behind layer."""

    def __init__(self, marker, fabric_number, space):
        fabric = marker["fabrics"][fabric_number - 1]
        self.length, self.width = 0, max(layer["width"] for layer in fabric["layers"])
        self.gaps = fabric.get("gapX", 0), fabric.get("gapY", 0)
        self.cloths, laid = [], []
        for layer in fabric["layers"]:
            groups = [group["polygons"] for group in layer.get("groups", [])
                      if group.get("place", "marker") == "marker"]
            start = self.length + space if self.length else 0
            cloth = Cloth(start, start, layer["width"], math.inf)
            if not groups:
                continue
            end = max(x for group in groups for polygon in group
                      for x, _ in lay_piece(fabric, polygon, cloth).contour)
            if end > start:
                self.length, cloth = end, cloth._replace(end=end)
                self.cloths = [c if c.next < math.inf else c._replace(next=start)
                               for c in self.cloths]
            else:  # all lies before the layer's start
                cloth = cloth._replace(start=self.length, end=self.length)
            self.cloths.append(cloth)
            laid += [(len(self.cloths) - 1, group) for group in groups]
        self.groups = [[lay_piece(fabric, polygon, self.cloths[i]) for polygon in group]
                       for i, group in laid]
        self.pieces = [piece for group in self.groups for piece in group]


def walked(ring, index, way):
    """The place so far along the ring from a vertex, backwards with a negative way."""
    step, rest = (1 if way > 0 else -1), abs(way)
    rest = min(rest, sum(math.dist(a, b) for a, b in edges(ring)) / 4)
    while True:
        a, b = ring[index % len(ring)], ring[(index + step) % len(ring)]
        size = math.dist(a, b)
        if rest <= size:
            return a[0] + (b[0] - a[0]) * rest / size, a[1] + (b[1] - a[1]) * rest / size
        rest, index = rest - size, index + step


def depths(ring, base, way, length):
    """What is left of a notch's length when it keeps to half of the way to where its line crosses
    the ring; several where the line just touches it."""
    found = []
    for turn in (0, -3e-7, 3e-7):
        dx, dy = way[0] - turn * way[1], way[1] + turn * way[0]
        sides = [dx * (y - base[1]) - dy * (x - base[0]) for x, y in ring]
        nearest = 2 * length
        for (p, a), (q, b) in edges(list(zip(ring, sides))):
            if (a > 0) != (b > 0):
                x, y = p[0] + a / (a - b) * (q[0] - p[0]), p[1] + a / (a - b) * (q[1] - p[1])
                along = dx * (x - base[0]) + dy * (y - base[1])
                nearest = min(nearest, along) if along > NEAR else nearest
        found.append(nearest / 2)
    return found


def notches_of(piece, longest):
    """Type, ways to cut and possible lengths of each notch of a contour."""
    ring, found = piece.contour, []
    for i, mark in enumerate(piece.marks if longest > 0 else []):
        if not mark.type.endswith("Notch"):
            continue
        dx, dy = mark.vector
        if dx == 0 and dy == 0:  # square to the outline and inward
            before, behind = ring[i - 1], ring[(i + 1) % len(ring)]
            side = 1 if area(ring) > 0 else -1
            dx, dy = -side * (behind[1] - before[1]), side * (behind[0] - before[0])
        dx, dy = dx / math.hypot(dx, dy), dy / math.hypot(dx, dy)
        lengths = depths(ring, ring[i], (dx, dy), longest)
        strokes = [strokes_of(ring, i, mark, dx, dy, length) for length in lengths]
        found += [(mark.type, [way for ways in same for way in ways], lengths)
                  for same in zip(*strokes)]
    return found


def strokes_of(ring, i, mark, dx, dy, length):
    """The strokes of one notch, each with the ways to cut it."""
    before, behind = walked(ring, i, -length / 2), walked(ring, i, length / 2)

    def tip(base):
        return base[0] + length * dx, base[1] + length * dy
    if mark.type == "doubleNotch":
        return [[[p, tip(p)]] for p in (before, behind)]
    if mark.type == "vNotch":
        return [[[before, tip(ring[i]), behind]]]
    if mark.type == "userNotch" and mark.width:
        top, w = tip(ring[i]), mark.width / 2
        ends = (top[0] + w * dy, top[1] - w * dx), (top[0] - w * dy, top[1] + w * dx)
        return [[[ring[i], top, *ends], [ring[i], top, *ends[::-1]]]]
    return [[[ring[i], tip(ring[i])]]]


# The document

class Document:
    def __init__(self, text, scale, cuts_notches, cuts_lines):
        self.root, self.scale = ElementTree.fromstring(text), scale
        self.cuts_notches, self.cuts_lines = cuts_notches, cuts_lines
        self.root.remove(self.root.find("{http://www.w3.org/2000/svg}g"))
        for element in self.root.iter():
            element.tag = element.tag.split("}")[-1]
        self.numbers = [(f"{e.tag} {a}", int(a[-1] in "yY"), e.get(a)) for e in self.root.iter()
                        for a in ("centreX", "centreY", "cx", "cy", "x", "y", "matchPointX",
                                  "matchPointY", "advance") if e.get(a) is not None]
        self.objects, self.advances = [], {}
        self.skips = False  # the first frame, in which nothing is cut
        for child in self.root:
            if child.tag == "object" and not len(child) and child.get("label") is None:
                assert not (self.objects or self.skips), "an empty object that is not the first"
                self.skips = True
            elif child.tag == "object":
                self.objects.append(self.read_object(child))
            elif child.tag == "M69":
                assert len(self.objects) not in self.advances, "two M69 in a row"
                self.advances[len(self.objects)] = child.attrib
        external = self.root.find("external")
        self.tool = external.get("outil") if external is not None else None
        self.holes = [self.place(c, "cx", "cy") for c in self.root.iter("circle")]
        self.cuts = self.read_cuts()

    def points(self, texts):
        return [(x / self.scale[0], y / self.scale[1])
                for x, y in (map(float, text.split(",")) for text in texts)]

    def place(self, element, x, y):
        return self.points([element.get(x) + "," + element.get(y)])[0]

    def read_path(self, data):
        match = PATH.match(data)
        assert match, "bad path data " + data[:40]
        texts = [match[1]] + match[2].split(" L ")[1:]
        self.numbers += [("path", i, n) for text in texts for i, n in enumerate(text.split(","))]
        return texts

    def read_object(self, element):
        outlines, notches, drills, lines = [], [], [], []
        for path in element.iter("path"):
            texts = self.read_path(path.get("drill") or path.text)
            points = self.points(texts)
            if path.get("drill"):
                drills.append((points[0], path.get("t")))
            elif path.get("t") == "outline":
                lifts = [int(i) for i in path.get("LiftPlunge", "").split()]
                outlines.append(Outline(texts, points, notches, lifts))
                notches = []
            elif path.get("t") == "notch":
                notches.append((texts, points))
            else:
                assert path.get("t") == "internal", path.get("t")
                lines.append(points)
        matches = [self.place(m, "matchPointX", "matchPointY") for m in element.iter("match_point")]
        reach = [p for o in outlines for p in o.points] + [p for p, _ in drills]
        if self.cuts_notches:
            reach += [p for o in outlines for _, notch in o.notches for p in notch]
        if self.cuts_lines:
            reach += [p for line in lines for p in line]
        return Object(element.attrib, outlines, drills, lines, list(element.iter("text")), matches,
                      notches, [c.tag for c in element], box(reach) if reach else None)

    def read_cuts(self):
        cuts, start = [], None
        for data in (s.text for s in self.root.iter("s")):
            points = self.points(self.read_path(re.sub("^L", "M", data)))
            if len(points) == 2:
                cuts.append((*points, False))
            elif start is None:
                assert data[0] == "M", "an open waste cut that ends before it starts"
                start = points[0]
            else:
                assert data[0] == "L", "two open waste cuts start"
                cuts.append((start, points[0], True))
                start = None
        assert start is None, "an open waste cut without an end"
        return cuts


def ring_of(outline):
    """The corners of an outline without the repetition at its end and at bases of notches."""
    texts = outline.texts
    return [p for i, p in enumerate(outline.points) if i == 0 or texts[i] != texts[i - 1]][:-1]
