"""A second reader of DXF-NESTER files. It works out from the marker's JSON, with nothing of the
program's, what has to stand in the file, takes the file apart group by group and compares the two;
then ezdxf, which knows DXF and not this dialect, has to read the same from it.

    check_dxf_nester.py KIVHOST MARKER.mar...

exports each marker with the pieces of the chart, with the groups in stand-by and with both, and
prints a line for each file, or each fault as a line and exits with 1. What the names of a marker
keep ezdxf from is no fault of the file: the line tells it."""

import argparse
import json
import math
import os
import re
import subprocess
import sys
import tempfile
from collections import Counter, namedtuple
from itertools import combinations, count, zip_longest
from pathlib import Path

ROUNDED = 0.5e-4 + 1e-9 # what four decimals leave open
JOINED = 0.0001         # polygons that are so near to each other are one shape
ALLOWED = 0.001         # how far a shape may move
CURVE_STEP = 0.5
SYMMETRICAL = 0.01      # how far an outline and its mirror image may be apart
SPREADS = {"foldBottom": "BOOK_FOLD", "foldTop": "BOOK_FOLD", "tubular": "TUBULAR"}
REFERENCE = re.compile(r"REFERENCE_LINE:\((.+),(.+)\)\((.+),(.+)\),(\d+)")

# What the file holds: texts as they stand, points as numbers.
FileBlock = namedtuple("FileBlock", "name line texts points")
Insert = namedtuple("Insert", "name sign bundle section")
NesterFile = namedtuple("NesterFile", "blocks texts inserts")

Rules = namedtuple("Rules", "step fine flip_x flip_y")
# Where a piece's shape goes: scaled, mirrored, turned, shifted.
Placement = namedtuple("Placement", "x y rotation mirrored scale_x scale_y")


class Fault(Exception):
    pass


def flag(value):
    return "TRUE" if value else "FALSE"


def real(number):
    return f"{number + 0.0:.4f}" # a zero has no sign


def short(number):
    """What is left of a count in 16 bits."""
    return (number + 0x8000) % 0x10000 - 0x8000


# Plane geometry

def distance(point, start, end):
    """From a point to a segment."""
    dx, dy = end[0] - start[0], end[1] - start[1]
    px, py = point[0] - start[0], point[1] - start[1]
    square = dx * dx + dy * dy
    part = min(1, max(0, (px * dx + py * dy) / square)) if square else 0
    return math.hypot(px - part * dx, py - part * dy)


def edges(outline):
    return list(zip(outline, outline[1:] + outline[:1]))


def border_distance(point, outline):
    return min(distance(point, *edge) for edge in edges(outline))


def crossing(first, second):
    """Where two segments cross, or None; those along each other do not."""
    (ax, ay), (bx, by) = first
    (cx, cy), (dx, dy) = second
    across = (bx - ax) * (dy - cy) - (by - ay) * (dx - cx)
    if across == 0:
        return None
    t = ((cx - ax) * (dy - cy) - (cy - ay) * (dx - cx)) / across
    u = ((cx - ax) * (by - ay) - (cy - ay) * (bx - ax)) / across
    return (ax + t * (bx - ax), ay + t * (by - ay)) if 0 <= t <= 1 and 0 <= u <= 1 else None


def crossings(a, b):
    found = (crossing(first, second) for first in edges(a) for second in edges(b))
    return [point for point in found if point]


def spans(outline, low, high):
    """The inside of an outline in the middle of a strip in which no edge ends."""
    middle = (low + high) / 2
    xs = sorted(a[0] + (middle - a[1]) * (b[0] - a[0]) / (b[1] - a[1])
                for a, b in edges(outline)
                if min(a[1], b[1]) <= low and max(a[1], b[1]) >= high and a[1] != b[1])
    return list(zip(xs[::2], xs[1::2]))


def union_area(outlines):
    """By horizontal strips between all corners and crossings."""
    levels = {y for outline in outlines for _, y in outline}
    for a, b in combinations(outlines, 2):
        levels.update(y for _, y in crossings(a, b))
    levels, area = sorted(levels), 0
    for low, high in zip(levels, levels[1:]):
        reached = -math.inf
        for left, right in sorted(s for outline in outlines for s in spans(outline, low, high)):
            area += max(0, right - max(left, reached)) * (high - low)
            reached = max(reached, right)
    return area


def inside(point, outline):
    x, y = point
    return sum((a[1] > y) != (b[1] > y) and
               x < a[0] + (y - a[1]) * (b[0] - a[0]) / (b[1] - a[1]) for a, b in edges(outline)) % 2


def touch(a, b):
    return (any(border_distance(point, other) <= JOINED or inside(point, other)
                for one, other in ((a, b), (b, a)) for point in one) or bool(crossings(a, b)))


def all_joined(outlines):
    reached, rest = [outlines[0]], list(outlines[1:])
    while reached and rest:
        here = reached.pop()
        near = [outline for outline in rest if touch(here, outline)]
        rest = [outline for outline in rest if outline not in near]
        reached += near
    return not rest


def symmetrical(outline):
    """About the horizontal line through the middle of what the outline takes up."""
    ys = [y for _, y in outline]
    middle = min(ys) + max(ys)
    tested = outline + [((a[0] + b[0]) / 2, (a[1] + b[1]) / 2) for a, b in edges(outline)]
    return all(border_distance((x, middle - y), outline) <= SYMMETRICAL for x, y in tested)


# The marker

def xy(point):
    return (point["x"], point["y"]) if isinstance(point, dict) else tuple(point)


def moved(point, placement):
    quarter = {0: (1, 0), 90: (0, 1), 180: (-1, 0), 270: (0, -1)}
    angle = math.radians(placement.rotation)
    cos, sin = quarter.get(placement.rotation % 360, (math.cos(angle), math.sin(angle)))
    x, y = point[0] * placement.scale_x, point[1] * placement.scale_y
    y = -y if placement.mirrored else y
    return x * cos - y * sin + placement.x, x * sin + y * cos + placement.y


def rules_of(holder):
    rules = holder.get("rules", {})
    return Rules(rules.get("rotationStep", 0), rules.get("fineRotation", 0),
                 rules.get("flipX", False), rules.get("flipY", False))


class Polygon:
    """A piece in one size and on one side, placed."""

    def __init__(self, fabric, number, size, left, placement, shape=None):
        self.number, self.left, self.placement, self.shape = number, left, placement, shape
        self.piece = fabric["pieces"][number - 1]
        self.size = self.piece["sizes"][size - 1]
        self.single = self.piece.get("single", False)
        self.rules = rules_of(self.piece if "rules" in self.piece else fabric)

    def outline(self):
        if self.shape:
            return [xy(point) for point in self.shape["contour"]]
        return [moved(xy(point), self.placement) for point in self.size["contour"]]

    def point(self, end):
        points = self.size["internalPoints" if end.get("internal") else "contour"]
        return moved(xy(points[end["point"] - 1]), self.placement)


class Block:
    """What one block has to be."""

    def __init__(self, name, polygons, rules, instances=1):
        self.name, self.polygons, self.rules, self.instances = name, polygons, rules, instances
        self.lines = []

    def texts(self, fabric_rules):
        texts = [f"NAME:{self.piece_name}", f"SIZE:{self.size}",
                 f"STYLE:{'sizeSTYLE' if self.style == 'size' else self.style}",
                 "NGROUP:FALSE", "FGROUP:FALSE", f"FOLDABLE:{flag(self.foldable)}"]
        if self.rules.step != fabric_rules.step:
            texts.append(f"ROT:{self.rules.step}")
        if self.rules.flip_x != fabric_rules.flip_x:
            texts.append(f"HFLIP:{flag(self.rules.flip_x)}")
        if self.rules.flip_y != fabric_rules.flip_y:
            texts.append(f"VFLIP:{flag(self.rules.flip_y)}")
        if self.rules.fine != fabric_rules.fine:
            tilt = f"{min(self.rules.fine, 22):.6g}"
            texts += [f"LTILTLTILT:{tilt}", f"RTILT:{tilt}"]
        return texts + self.lines + ["OPTIONAL:0", f"PREFLIP:{flag(self.flipped)}", "PREROT:0"]


class ChartBlock(Block):
    def __init__(self, marker, polygon, number, instances):
        piece, fabric = polygon.piece, marker.fabric
        tail = "$0" if number == 1 else f"$0${number - 2}"
        super().__init__(piece["name"] + tail, [polygon], polygon.rules, instances)
        self.piece_name, self.size = piece["name"], polygon.size["number"]
        self.style = marker.style(polygon)["name"]
        self.foldable = (
            fabric.get("type", "plain") != "plain" and polygon.single and
            piece.get("cutDown", "none") == "none" and
            (fabric.get("foldAnyPiece", False) or
             symmetrical([xy(point) for point in polygon.size["contour"]])))
        self.sign = 1 if polygon.left else -1
        self.flipped = not polygon.left and not polygon.single

    def outline_faults(self, found):
        """Points of curves may be left out where the outline hardly moves; nothing else may."""
        polygon = self.polygons[0]
        curve = [isinstance(point, dict) and point.get("type") == "curve"
                 for point in polygon.size["contour"]]
        yield from compare_points(found, list(zip(polygon.outline(), curve)))


class GroupBlock(Block):
    sign, foldable, flipped = 1, False, False

    def __init__(self, marker, polygons, number):
        hybrid = marker.fabric.get("hybrid", False)
        each = [polygon.rules for polygon in polygons]
        rules = marker.rules if hybrid else Rules(
            math.lcm(*(r.step for r in each)), min(r.fine for r in each),
            all(r.flip_x for r in each), all(r.flip_y for r in each))
        super().__init__(f"POLYSTANDBY{number}", polygons, rules)
        self.piece_name, self.size = self.name, number
        self.style = "STYLE" if hybrid else marker.style(polygons[0])["name"]

    def outline_faults(self, found):
        outlines = [polygon.outline() for polygon in self.polygons]
        if len(outlines) == 1:
            yield from compare_points(found, [(point, False) for point in outlines[0]])
            return
        # What lies on borders everywhere and holds the polygons is their outline, holes filled.
        for start, end in edges(found):
            for point in (start, ((start[0] + end[0]) / 2, (start[1] + end[1]) / 2)):
                if min(border_distance(point, outline) for outline in outlines) > ALLOWED:
                    yield f"{point} is on no border of the group's polygons"
        area, wanted = union_area([found]), union_area([found, *outlines])
        if abs(area - wanted) > wanted * 1e-4:
            yield f"the outline takes {area:.4f} cm2, with the group's polygons {wanted:.4f}"


def compare_points(found, wanted):
    """`wanted` has pairs of a point and whether it may be left out."""
    kept = []
    for number, (point, _) in enumerate(wanted):
        if len(kept) < len(found) and all(abs(a - b) <= ROUNDED
                                          for a, b in zip(point, found[len(kept)])):
            kept.append(number)
    if len(kept) < len(found) or not kept or kept[0] != 0:
        at = len(kept) if kept and kept[0] == 0 else 0
        yield (f"point {at + 1} of {len(found)} {found[at] if found else ''} is not one of the "
               f"outline's {len(wanted)} points in their order")
        return
    for before, behind in zip(kept, kept[1:] + [len(wanted)]):
        start, end = wanted[before][0], wanted[behind % len(wanted)][0]
        for point, leavable in wanted[before + 1:behind]:
            if not (leavable and math.dist(start, point) < CURVE_STEP and
                    distance(point, start, end) <= ALLOWED):
                yield f"the outline's point {point} is missing"


class Marker:
    """The current fabric of a marker that is set to one layer, and what has to be exported."""

    def __init__(self, path, chart, standby):
        self.json = json.loads(path.read_text(encoding="utf-8"))
        self.fabric_number = self.json.get("currentFabric", 1)
        self.layer_number = self.json.get("singleLayer", 0)
        if self.layer_number == 0:
            raise Fault("the marker is not set to a single layer")
        self.fabric = self.json["fabrics"][self.fabric_number - 1]
        self.layer = self.fabric["layers"][self.layer_number - 1]
        self.rules = rules_of(self.fabric)
        self.blocks = []
        if chart:
            self.add_chart()
        self.instances = sum(block.instances for block in self.blocks)
        if standby:
            self.add_standby()
        self.constraints = self.add_constraints()

    def style(self, polygon):
        return self.json["styles"][polygon.piece["style"] - 1]

    def garments(self, polygon):
        style = self.style(polygon)
        for entry in style.get("garments", []):
            if (entry["fabric"], entry["layer"]) == (self.fabric_number, self.layer_number):
                numbers = [size["number"] for size in style["sizes"]]
                return entry["quantities"][numbers.index(polygon.size["number"])]
        return 0

    def add_chart(self):
        gone = Counter((polygon["piece"], polygon["size"], polygon.get("side", "left"))
                       for group in self.layer.get("groups", []) for polygon in group["polygons"])
        for piece_number, piece in enumerate(self.fabric.get("pieces", []), 1):
            ordered = {entry["size"]: entry for entry in piece.get("chart", [])
                       if entry["layer"] == self.layer_number}
            move, numbers = piece.get("transform", {}), count(1)
            for size in range(1, len(piece["sizes"]) + 1):
                for side in ("left", "right"):
                    mirrored = move.get("mirrored", False) != (side == "right")
                    polygon = Polygon(self.fabric, piece_number, size, side == "left",
                                      Placement(0, 0, move.get("rotation", 0), mirrored,
                                                move.get("scaleX", 1), move.get("scaleY", 1)))
                    waiting = (ordered.get(size, {}).get(side, 0) -
                               gone[piece_number, size, side])
                    if waiting <= 0 or self.garments(polygon) <= 0:
                        continue
                    one_way = self.fabric.get("oneWay", False)
                    for instances in [1] * waiting if one_way else [waiting]:
                        self.blocks.append(ChartBlock(self, polygon, next(numbers), instances))

    def placed(self, entry):
        left = entry.get("side", "left") == "left"
        return Polygon(self.fabric, entry["piece"], entry["size"], left,
                       Placement(entry.get("x", 0), entry.get("y", 0), entry.get("rotation", 0),
                                 entry.get("mirrored", not left), entry.get("scaleX", 1),
                                 entry.get("scaleY", 1)), entry.get("shape"))

    def add_standby(self):
        groups = [group for group in self.layer.get("groups", [])
                  if group.get("place") == "standby"]
        for number, group in enumerate(groups, 1):
            polygons = [self.placed(entry) for entry in group["polygons"]]
            if all_joined([polygon.outline() for polygon in polygons]):
                self.blocks.append(GroupBlock(self, polygons, number))

    def add_constraints(self):
        """Gives the blocks their reference lines; the result is how many constraints there are."""
        plaid = self.fabric.get("plaid", {})
        if not plaid.get("active") or not self.blocks:
            return 0
        strokes = [(0.1, 0)] * bool(plaid.get("horizontalLines"))
        strokes += [(0, 0.1)] * bool(plaid.get("verticalLines"))
        style = self.blocks[0].polygons[0].piece["style"]
        links = [link for link in self.fabric.get("links", [])
                 if all(self.fabric["pieces"][link[end]["piece"] - 1]["style"] == style
                        for end in ("first", "second"))]
        number = 0
        for one, other in combinations(self.blocks, 2):
            for a in one.polygons:
                for b in other.polygons:
                    ends = next(filter(None, (tied(link, a, b) for link in links)), None)
                    for dx, dy in strokes if ends else []:
                        number += 1
                        for block, (x, y) in zip((one, other), ends):
                            block.lines.append(
                                f"REFERENCE_LINE:({real(x)},{real(y)})"
                                f"({real(x + dx)},{real(y + dy)}),{number}")
        return number

    def texts(self):
        fabric, plaid = self.fabric, self.fabric.get("plaid", {})
        spread = fabric.get("type", "plain")
        gap = max(abs(fabric.get("gapX", 0)), fabric.get("gapY", 0))
        edge = real(max(0.01, gap if fabric.get("edgeGap") else 0))
        tilt = real(min(self.rules.fine, 22))
        texts = [
            f"MARKER:{fabric['name']}", f"SPREAD:{SPREADS.get(spread, 'SINGULAR')}",
            f"NPIECE:{short(len(self.blocks))}", f"NINSTANCE:{short(self.instances)}", "UNIT:CM",
            "SCALE:1.0000", f"WIDTH:{real(self.layer['width'] - 0.01)}",
            f"GAP:{real(max(0.01, gap))}",
            f"TSALV:{'0.0000' if spread in ('foldTop', 'tubular') else edge}",
            f"BSALV:{'0.0000' if spread in ('foldBottom', 'tubular') else edge}",
            f"LSALV:{edge}", "NAPACTIVE:FALSE", "FLIPACTIVE:FALSE", f"ROT:{self.rules.step}",
            f"HFLIP:{flag(self.rules.flip_x)}", f"VFLIP:{flag(self.rules.flip_y)}",
            f"LTILT:{tilt}", f"RTILT:{tilt}"]
        texts += [f"SP_GROUP:{number},ONGOING" for number in range(1, self.constraints + 1)]
        for axis, lines in (("x", "verticalLines"), ("y", "horizontalLines")):
            if plaid.get(lines):
                word = axis.upper()
                texts += [f"{word}_REPETITION:{real(plaid.get(axis + 'Repetition', 0))}",
                          f"{word}_REP_OFFSET:{real(plaid.get(axis + 'Offset', 0))}"]
        return texts

    def inserts(self):
        return [Insert(block.name, block.sign, bundle, 1)
                for block in self.blocks for bundle in range(block.instances)]


def tied(link, a, b):
    """The points of a and b that the link ties, or None."""
    first, second = link["first"], link["second"]
    if first["piece"] == second["piece"]: # its first end is the left one's
        fits, swapped = a.left != b.left, not a.left
    else:
        fits = a.left == b.left or a.single or b.single
        swapped = a.number != first["piece"]
    if swapped:
        first, second = second, first
    if (fits and a.size["number"] == b.size["number"] and
            (a.number, b.number) == (first["piece"], second["piece"])):
        return a.point(first), b.point(second)
    return None


# The file

class Groups:
    """The groups of a file one after the other."""

    def __init__(self, data):
        if b"\r" in data:
            raise Fault("there is a carriage return in the file")
        lines = data.decode("utf-8").split("\n")
        if lines.pop() != "" or len(lines) % 2:
            raise Fault("the file does not end with a whole group")
        self.pairs, self.at = list(zip(lines[::2], lines[1::2])), 0

    line = property(lambda self: 2 * self.at + 1)

    def next_is(self, code, value):
        return self.pairs[self.at:self.at + 1] == [(f"{code:>3}", value)]

    def take(self, code, value=None):
        """The value of the next group, which must have this code."""
        if self.at == len(self.pairs):
            raise Fault(f"the file ends where a group {code} has to follow")
        found = self.pairs[self.at]
        wanted = f"group {code}" + ("" if value is None else f" {value!r}")
        if found[0] != f"{code:>3}" or value not in (None, found[1]):
            raise Fault(f"line {self.line}: found {found[0]!r} {found[1]!r}, expected {wanted}")
        self.at += 1
        return found[1]

    def matching(self, code, pattern):
        line, value = self.line, self.take(code)
        match = re.fullmatch(pattern, value, re.ASCII)
        if not match:
            raise Fault(f"line {line}: {value!r} has another form than expected")
        return match[1]

    def each(self, code_values):
        for code, value in code_values:
            self.take(code, value)

    def texts(self):
        while self.next_is(0, "TEXT"):
            self.each([(0, "TEXT"), (8, "NESTER_SETTINGS"), (10, "0.0000"), (20, "0.0000"),
                       (40, "0.1000")])
            yield self.take(1)

    def vertices(self):
        while self.next_is(0, "VERTEX"):
            self.each([(0, "VERTEX"), (8, "1")])
            yield tuple(float(self.matching(code, r"(-?\d+\.\d{4})")) for code in (10, 20))

    def blocks(self):
        while self.next_is(0, "BLOCK"):
            self.each([(0, "BLOCK"), (8, "1")])
            line, name = self.line, self.take(2)
            self.each([(70, "64"), (10, "0.0000"), (20, "0.0000")])
            texts = list(self.texts())
            self.each([(0, "POLYLINE"), (8, "1"), (66, "1"), (70, "1")])
            points = list(self.vertices())
            self.each([(0, "SEQEND"), (8, "1"), (0, "ENDBLK")])
            yield FileBlock(name, line, texts, points)

    def inserts(self):
        while self.next_is(0, "INSERT"):
            self.each([(0, "INSERT"), (8, "1")])
            name = self.take(2)
            self.each([(10, "0.0000"), (20, "0.0000"), (50, "0.0000")])
            sign = int(self.matching(42, r"(-?1)"))
            bundle = int(self.matching(999, r"BUNDLE:(\d+)"))
            self.take(999, "PLACEHOLDER:TRUE")
            yield Insert(name, sign, bundle, int(self.matching(999, r"SECTION_ID:(\d+)")))

    def whole_file(self):
        self.each([(0, "SECTION"), (2, "BLOCKS")])
        blocks = list(self.blocks())
        self.each([(0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")])
        texts, inserts = list(self.texts()), list(self.inserts())
        self.each([(0, "ENDSEC"), (0, "EOF")])
        if self.at < len(self.pairs):
            raise Fault(f"line {self.line}: there is more behind EOF")
        return NesterFile(blocks, texts, inserts)


def same_text(found, wanted):
    """The coordinates of a reference line are rounded from computed ones."""
    found_line, wanted_line = REFERENCE.fullmatch(found or ""), REFERENCE.fullmatch(wanted or "")
    if not found_line or not wanted_line:
        return found == wanted
    numbers, places = found_line.groups(), wanted_line.groups()
    return (numbers[4] == places[4] and
            all(re.fullmatch(r"-?\d+\.\d{4}", a) and abs(float(a) - float(b)) < 1.1e-4
                for a, b in zip(numbers[:4], places[:4])))


def compare(what, found, wanted, same=lambda a, b: a == b):
    """The first difference of two sequences."""
    for number, (a, b) in enumerate(zip_longest(found, wanted), 1):
        if not same(a, b):
            yield f"{what} {number}: found {a!r}, expected {b!r}"
            return


def compare_with_marker(file, marker):
    yield from compare("block", [block.name for block in file.blocks],
                       [block.name for block in marker.blocks])
    for found, wanted in zip(file.blocks, marker.blocks):
        if found.name != wanted.name:
            break
        faults = [*compare("text", found.texts, wanted.texts(marker.rules), same_text),
                  *wanted.outline_faults(found.points)]
        yield from (f"block {found.name}: {fault}" for fault in faults)
    yield from compare("global text", file.texts, marker.texts())
    yield from compare("insert", file.inserts, marker.inserts())


# The file as ezdxf reads it

def names_beyond_dxf(file):
    """The first name that no DXF table can hold, told by its group."""
    from ezdxf.lldxf.validator import is_valid_table_name
    names = Counter(block.name.lower() for block in file.blocks)
    return next((f"group   2 {block.name!r} at line {block.line}" for block in file.blocks
                 if names[block.name.lower()] > 1 or not is_valid_table_name(block.name)), None)


def compare_entities(what, entities, texts):
    found = [entity for entity in entities if entity.dxftype() == "TEXT"]
    yield from compare(what + " text", [entity.dxf.text for entity in found], texts)
    if any(entity.dxf.layer != "NESTER_SETTINGS" or any(entity.dxf.insert)
           for entity in found):
        yield f"{what} has a text elsewhere than in NESTER_SETTINGS at the origin"


def compare_with_ezdxf(path, file):
    import ezdxf
    try: # there is no header that would tell the encoding
        document = ezdxf.readfile(path, encoding="utf-8")
    except Exception as error: # whatever it throws, it does not read the file
        yield f"cannot read the file: {error}"
        return
    found = {block.name: block for block in document.blocks if not block.name.startswith("*")}
    yield from compare("block", found, [block.name for block in file.blocks])
    for block in file.blocks:
        entities = list(found.get(block.name, []))
        yield from compare_entities(f"block {block.name}", entities, block.texts)
        lines = [entity for entity in entities if entity.dxftype() == "POLYLINE"]
        if (len(lines) != 1 or not lines[0].is_closed or lines[0].dxf.layer != "1" or
                len(entities) != len(block.texts) + 1):
            yield f"block {block.name} does not hold its texts and one closed polyline"
            continue
        places = [tuple(vertex.dxf.location)[:2] for vertex in lines[0].vertices]
        yield from compare(f"block {block.name}, vertex", places, block.points)
    entities = list(document.modelspace())
    yield from compare_entities("ENTITIES", entities, file.texts)
    inserts = [entity.dxf for entity in entities if entity.dxftype() == "INSERT"]
    yield from compare("insert", [(insert.name, insert.yscale) for insert in inserts],
                       [(insert.name, insert.sign) for insert in file.inserts])
    if any(insert.layer != "1" or insert.rotation or any(insert.insert)
           for insert in inserts):
        yield "an insert is not on layer 1, at the origin and unturned"


def check(marker_path, file_path, chart, standby):
    """The faults, and what to say if there are none."""
    file = Groups(file_path.read_bytes()).whole_file()
    marker = Marker(marker_path, chart, standby)
    faults = list(compare_with_marker(file, marker))
    done = (f"{len(file.blocks)} blocks, {len(file.inserts)} inserts, "
            f"{marker.constraints} constraints, ")
    unreadable = names_beyond_dxf(file)
    if unreadable:
        return faults, done + f"not read by ezdxf, which has no place for {unreadable}"
    faults += [f"ezdxf: {fault}" for fault in compare_with_ezdxf(file_path, file)]
    return faults, done + "ezdxf reads the same"


def export(kivhost, marker, folder, chart, standby):
    """Exports in the C locale with the default settings but for the two; the file's path."""
    environment = dict(os.environ, LC_ALL="C", HOME=folder, XDG_CONFIG_HOME=folder)
    subprocess.run([kivhost, "export", marker, "-o", folder, "--format", "dxf_nester",
                    "--set", f"nest_piecesInChart={str(chart).lower()}",
                    "--set", f"nest_piecesInStandby={str(standby).lower()}"],
                   check=True, env=environment, stdout=subprocess.DEVNULL)
    return next(Path(folder, "dxf_nester").iterdir())


def main():
    parser = argparse.ArgumentParser(description="A second reader of DXF-NESTER files.")
    parser.add_argument("kivhost")
    parser.add_argument("markers", type=Path, nargs="+")
    options = parser.parse_args()
    failed = False
    for marker in options.markers:
        for chart, standby in ((True, True), (True, False), (False, True), (False, False)):
            name = f"{marker.stem}{' chart' * chart}{' standby' * standby}"
            with tempfile.TemporaryDirectory() as folder:
                try:
                    file = export(options.kivhost, marker, folder, chart, standby)
                    faults, done = check(marker, file, chart, standby)
                except (Fault, ImportError, OSError, UnicodeDecodeError,
                        subprocess.CalledProcessError) as error:
                    faults, done = [str(error)], ""
            for fault in faults:
                print(f"{name}: {fault}")
            if not faults:
                print(f"{name}: {done}")
            failed = failed or bool(faults)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
