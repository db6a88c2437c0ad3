"""A second reader of Illustrator files. It works out from the marker's JSON, with nothing of the
program's, what has to stand in the file of each fabric, line by line, and compares the two: all
numbers as exactly as the file tells them, but for the place of a piece's information, which has to
lie in the piece, the curves of a few punches and the outlines of blocks.

    check_illustrator.py KIVHOST MARKER.mar...

exports each marker with many settings and prints a line for each set of them, or each fault as a
line and exits with 1. A file is read up to its first fault. With

    check_illustrator.py --falsify KIVHOST MARKER.mar...

it changes what was exported, one line at a time: each change has to be found."""

import argparse
import json
import math
import os
import random
import re
import struct
import subprocess
import sys
import tempfile
from collections import Counter, defaultdict, deque
from functools import lru_cache
from pathlib import Path, PurePosixPath

from check_dxf_nester import Fault, Placement, border_distance, edges, inside, moved, union_area, xy

CM_PER_INCH = 2.5396825396825
LADDER = [10, 18, 24, 27, 30, 36]
NOTHING = 0.00006          # a layer of that length is empty
COMPUTED = 1e-6            # what computing in another order may change, in points
ALLOWED = 0.002            # how far the outline of a block may be off, in cm
SHORTEST = 1e-9            # a stroke of less cm is none
MOST_STROKES = 10000       # a pattern with more of them is drawn as a solid line
BLACK = (0, 0, 0)
INFO = ["pieceTrait", "pieceName", "pieceCode", "pieceCodeReference", "pieceIdentification",
        "description", "styleName", "pattern", "ballot", "taille", "tissus", "quantite", "special"]
FACTOR = "Illustrator_export_factor"

# What is set in each export, beside the defaults of `kivhost settings`.
VARIANTS = {
    "defaults": {},
    "factor 0.1": {FACTOR: "0.1"},
    "factor 2": {FACTOR: "2"},
    "all information": {f"plot_{name}": "true" for name in INFO},
    "no information": {f"plot_{name}": "false" for name in INFO},
    "names and quantities": {f"plot_{name}": str(name in ("pieceName", "quantite")).lower()
                             for name in INFO},
    "sewing lines": {"plot_sewingLine": "true"},
    "texts at the bottom": {"plot_textInBottom": "true", "symbols_letterSize": "36"},
    "gaps of 5": {"plot_spaceLayers": "5", "plot_sewingLine": "true"},
    "gaps of 0.1, factor 0.3": {"plot_spaceLayers": "0.1", FACTOR: "0.3"},
    "long notches": {"plot_notchFactor": "2.5"},
    "no cross bars": {"plot_noNotchCrossBar": "true", "symbols_letterSize": "10"},
    "colours": {f"plot_color{number}": colour for number, colour in enumerate(
        ["#000000", "#ffffff", "#ff0000", "#808080", "#010203", "#00ff00", "#fefefe", "#0000ff"],
        1)},
}

FALSIFIED = ["gaps of 5", "factor 0.1"]
FLAWED_LINES = 400         # so many lines of a file are changed to falsify the check


def single(number):
    """In single precision."""
    return struct.unpack("f", struct.pack("f", number))[0]


def length_of(text):
    """In 16-bit units."""
    return len(text.encode("utf-16-le")) // 2


# --- Numbers of the file ------------------------------------------------------------------------

def digits_of(value):
    whole = len(str(math.trunc(value)))
    return 4 if whole < 2 else whole + 4


def number_text(value):
    text = f"{value:.{digits_of(value)}g}"
    return "0" if text == "-0" else text


def same_number(text, value):
    """Whether the text is the value, rounded as the file rounds."""
    if text == number_text(value):
        return True
    try:
        found = float(text)
    except ValueError:
        return False
    place = math.floor(math.log10(abs(value))) if abs(value) > COMPUTED else -4
    rounded = 0.5 * 10.0 ** (place + 1 - digits_of(value)) + COMPUTED
    return abs(found - value) <= rounded and number_text(found) == text


def colour_lines(rgb):
    inks = [1.0 - (component << 8) / 65535.0 for component in rgb]
    black = min(inks)
    text = " ".join(number_text(ink) for ink in [*(ink - black for ink in inks), black])
    return [text + "0 k", text + "0 K"]


# --- What has to stand in a file: texts as they are, and these ----------------------------------

class Pattern:
    def __init__(self, regex):
        self.regex = regex

    def read(self, file):
        line = file.take()
        if not re.fullmatch(self.regex, line):
            raise Fault(f"found {line!r}, expected {self.regex}")


class Numbers:
    """A line with numbers in it, points of the page or whole ones."""

    def __init__(self, before, values, behind):
        self.before, self.values, self.behind = before, values, behind

    def right(self, number, value):
        return same_number(number, value)

    def read(self, file):
        line = file.take()
        words = line[len(self.before):len(line) - len(self.behind)].split(" ")
        if (not line.startswith(self.before) or not line.endswith(self.behind) or
                len(words) != len(self.values) or
                not all(map(self.right, words, self.values))):
            wanted = " ".join(map(number_text, self.values))
            raise Fault(f"found {line!r}, expected {self.before}{wanted}{self.behind}")


class WholeNumbers(Numbers):
    def right(self, number, value):
        return number in {str(math.floor(value - 1e-9)), str(math.floor(value + 1e-9))}


class Within:
    """The place of a text somewhere in an outline."""

    def __init__(self, page, outline, x0):
        self.page, self.outline, self.x0 = page, outline, x0

    def read(self, file):
        line = file.take()
        file.loose[file.at] = 10000.0
        match = re.fullmatch(r"\[1 0 0 1 (\S+) (\S+)\]e", line)
        try:
            x, y = (float(word) / self.page.points(1) for word in match.groups())
        except (AttributeError, ValueError):
            raise Fault(f"found {line!r}, expected the place of a text") from None
        for word in match.groups():
            if number_text(float(word)) != word:
                raise Fault(f"found {line!r} with {word}, which no number of a file looks like")
        if not inside((x - self.x0, y), self.outline):
            raise Fault(f"found {line!r}, expected a place in the piece")


class Run:
    """A path of straight lines of which not each point is known; one may be moved by less than
    `reach` cm and more than ALLOWED without a fault."""

    def __init__(self, page, x0, reach, judge):
        self.page, self.x0, self.reach, self.judge = page, x0, reach, judge

    def read(self, file):
        points, word = [], "m"
        while not points or file.peek().endswith(" L"):
            line = file.take()
            file.loose[file.at] = self.page.points(2 * self.reach)
            file.runs.add(file.at)
            match = re.fullmatch(rf"(\S+) (\S+) {word}", line)
            if not match or any(number_text(float(text)) != text for text in match.groups()):
                raise Fault(f"found {line!r}, expected a point with {word}")
            x, y = (float(text) / self.page.points(1) for text in match.groups())
            points.append((x - self.x0, y))
            word = "L"
        fault = self.judge(points)
        if fault:
            raise Fault(fault)


class Maybe:
    """Lines that may be missing."""

    def __init__(self, items):
        self.items = items

    def read(self, file):
        start = file.at
        try:
            for item in self.items:
                file.read(item)
        except Fault:
            file.at = start


class Part:
    """Names the part of the file that follows, for faults."""

    def __init__(self, name):
        self.name = name

    def read(self, file):
        file.part = self.name


class Lines:
    def __init__(self, data):
        if b"\r" in data or not data.endswith(b"\n"):
            raise Fault("lines do not end with a line feed alone")
        self.lines, self.at, self.part = data.decode("utf-8").split("\n")[:-1], 0, "head"
        self.loose = {} # numbers of lines in which a number may change, and by what it may not
        self.runs = set() # those of paths of which not each point is known

    def peek(self):
        return self.lines[self.at] if self.at < len(self.lines) else ""

    def take(self):
        if self.at == len(self.lines):
            raise Fault("the file ends too early")
        self.at += 1
        return self.lines[self.at - 1]

    def read(self, item):
        if not isinstance(item, str):
            item.read(self)
        elif self.take() != item:
            raise Fault(f"found {self.lines[self.at - 1]!r}, expected {item!r}")

    def compare(self, expected):
        for item in expected:
            try:
                self.read(item)
            except Fault as fault:
                raise Fault(f"line {self.at}, {self.part}: {fault}") from None
        if self.at < len(self.lines):
            raise Fault(f"line {self.at + 1}: there is more behind the end")


# --- The page: centimetres become points --------------------------------------------------------

class Page:
    def __init__(self, factor, family, settings):
        self.factor, self.family, self.settings = single(factor), family, settings

    def points(self, cm):
        return (cm / CM_PER_INCH) * 72.0 * self.factor

    def point(self, x, y, word):
        return Numbers("", [self.points(x), self.points(y)], f" {word}")

    def path(self, points, end):
        for number, (x, y) in enumerate(points):
            yield self.point(x, y, "L" if number else "m")
        yield end

    def font(self, letter_size):
        number = LADDER.index(letter_size) + 1
        return f"/_{self.family} {number} {math.trunc(number * 1.2)} 0 1 z"

    def place(self, x, y):
        return Numbers("[1 0 0 1 ", [self.points(x), self.points(y)], "]e")

    def text(self, lines, place):
        yield from ["u", self.font(int(self.settings["symbols_letterSize"])), place]
        yield from (text_line(line) for line in lines)
        yield from ["T", "U"]


def text_line(text):
    return f"{length_of(text)} ({text})t"


def fitting(text, size, room):
    while length_of(text) * (size * 0.07 * (6 / 7) * 1.2) > room and size > LADDER[0]:
        size = LADDER[LADDER.index(size) - 1]
    return size


def place_of_text(text):
    """Where the first line stands: its anchor is at x, y; on a path at the path's middle point."""
    x, y = text["x"], text["y"]
    path = text.get("path")
    if not path:
        return x, y
    origin = text.get("pathOrigin", [x, y])
    width, height = text.get("box", [0, 0])
    middle = path[len(path) // 2]
    aside = {"left": -0.5, "center": 0, "right": 0.5}[text.get("align", "left")]
    across = (height / 2 - height / (len(text["lines"]) - 1) if len(text["lines"]) > 1
              else -height / 2)
    return middle[0] - (origin[0] - x) + aside * width, middle[1] - (origin[1] - y) + across


# --- Symbols --------------------------------------------------------------------------------------

def bar(page, ex, ey, dx, dy):
    if page.settings["plot_noNotchCrossBar"] != "true":
        ax, ay = ex + 0.15 * dy, ey - 0.15 * dx
        yield from page.path([(ax, ay), (ax - 0.3 * dy, ay + 0.3 * dx)], "S")


def stroke_with_bar(page, x, y, dx, dy):
    factor = float(page.settings["plot_notchFactor"])
    end = (factor * dx + x, factor * dy + y)
    yield from page.path([(x, y), end], "S")
    yield from bar(page, *end, dx, dy)


def simple_notch(page, x, y, dx, dy):
    yield from ["u", *stroke_with_bar(page, x, y, dx, dy), "U"]


def double_notch(page, x, y, dx, dy):
    yield from ["u", *stroke_with_bar(page, x + 0.5 * dy, y - 0.5 * dx, dx, dy),
                *stroke_with_bar(page, x - 0.5 * dy, y + 0.5 * dx, dx, dy), "U"]


def v_notch(page, x, y, dx, dy):
    factor = float(page.settings["plot_notchFactor"])
    gx, gy = factor * dx, factor * dy
    yield from ["u", *page.path([(x + gy / 2, y - gx / 2), (x + gx, y + gy),
                                 (x - gy / 2, y + gx / 2)], "S"), "U"]


def user_notch(page, x, y, dx, dy, width):
    if abs(dx) <= 1e-12 and abs(dy) <= 1e-12:
        return
    yield from ["u", *page.path([(x, y), (x + dx, y + dy)], "S")]
    if width > 1e-12:
        length = math.hypot(dx, dy)
        ax, ay = width / 2 * dy / length, width / 2 * dx / length
        yield from page.path([(x + dx + ax, y + dy - ay), (x + dx - ax, y + dy + ay)], "S")
    yield "U"


def match_mark(page, x, y):
    h = 0.25
    yield from ["u",
                *page.path([(x - h, y - h), (x + h, y - h), (x + h, y + h), (x - h, y + h),
                            (x - h, y - h)], "s"),
                *page.path([(x, y - h), (x, y + h)], "S"),
                *page.path([(x - h, y), (x + h, y)], "S"), "U"]


def bars_of_punch(page, x, y, sizes):
    """The four bars with their end strokes, a tenth of both opposite bars to each side."""
    for names, along in ((("barLeft", "barRight"), True), (("barDown", "barUp"), False)):
        both = single(sum(sizes[name] for name in names))
        half = single(single(single(both / CM_PER_INCH) * single(0.50793654)) * 0.5)
        for name, sign in zip(names, (-1, 1)):
            size = sizes[name] * sign
            if abs(size) <= 1e-12:
                continue
            end = single((x if along else y) + size)
            if along:
                yield from page.path([(x + size, y), (x, y)], "S")
                yield from page.path([(end, y - half), (end, y + half)], "S")
            else:
                yield from page.path([(x, y + size), (x, y)], "S")
                yield from page.path([(x - half, end), (x + half, end)], "S")


def straight_figures(sizes):
    """The strokes of each figure about the origin, with how they end."""
    s = {name: size for name, size in sizes.items() if abs(size) > 1e-12}
    if "plus" in s:
        h = s["plus"] / 2
        yield from [([(-h, 0), (h, 0)], "S"), ([(0, -h), (0, h)], "S")]
    if "cross" in s:
        h = s["cross"] / 2
        yield from [([(-h, -h), (h, h)], "S"), ([(-h, h), (h, -h)], "S")]
    if "bowTie" in s:
        h, q = s["bowTie"] / 2, s["bowTie"] / 6
        yield [(-h, q), (h, -q), (h, q), (-h, -q), (-h, q)], "s"
    if "square" in s:
        h = s["square"] / 2
        yield [(-h, h), (-h, -h), (h, -h), (h, h), (-h, h)], "s"
    if "diamond" in s:
        h = s["diamond"] / 2
        yield [(-h, 0), (0, -h), (h, 0), (0, h), (-h, 0)], "s"
    if "octagon" in s:
        h, q = s["octagon"] / 2, s["octagon"] / 5
        yield [(-h, -q), (-q, -h), (q, -h), (h, -q), (h, q), (q, h), (-q, h), (-h, q),
               (-h, -q)], "s"


def curved_run(page, place, reach, *ways):
    """A figure with curves: it passes all the points of one of the ways, in their order."""
    def judge(points):
        if any(math.dist(point, place) > reach + ALLOWED for point in points):
            return f"a curved punch at {place} reaches further than {reach}"
        if math.dist(points[0], points[-1]) > ALLOWED:
            return f"a curved punch at {place} is open"
        return None if any(passes(points, way) for way in ways) else (
            f"a curved punch at {place} does not pass {ways[0]}")
    return Run(page, 0, reach, judge)


def passes(points, way):
    rest = iter(points)
    return (math.dist(points[0], way[0]) <= ALLOWED and
            all(any(math.dist(point, wanted) <= ALLOWED for point in rest) for wanted in way))


def hook(size, side):
    return [(0.28 * size * side, 0.4 * size), (-0.42 * size * side, -0.61 * size),
            (-0.2 * size * side, -0.29 * size), (0.28 * size * side, 0.4 * size)]


def half_disc(x, y, radius, degrees):
    """Its curve passes the quarters of the circle."""
    quarters = [quarter for quarter in range(-360, 540, 90) if degrees < quarter < degrees + 180]
    angles = map(math.radians, [degrees, *quarters, degrees + 180])
    return [(x, y), *((x + radius * math.cos(angle), y + radius * math.sin(angle))
                      for angle in angles)]


def turned_figures(page, x, y, sizes, matrix):
    a, b, c, d = matrix

    def place(u, v):
        return a * u + c * v + x, b * u + d * v + y

    s = {name: size for name, size in sizes.items() if abs(size) > 1e-05}
    for name, sign in (("triangleLeft", -1), ("triangleRight", 1)):
        if name in s:
            h = s[name] / 2
            corners = [(sign * h, 0), (-sign * h, h), (-sign * h, -h), (sign * h, 0)]
            yield from page.path([place(*corner) for corner in corners], "s")
    if "twinStroke" in s:
        size = s["twinStroke"]
        locals_ = [(size * u, size * v) for u, v in (
            (0.375, 0.375), (0.3, 0.44), (0.5, 0.5), (-0.5, -0.5), (-0.3, -0.44),
            (-0.375, -0.375))]
        yield from list(page.path([place(*local) for local in locals_], ""))[:-1]
        yield from page.path([place(-v, u) for u, v in locals_], "s")
    if "twinCurve" in s:
        size = s["twinCurve"]
        first = [place(*local) for local in hook(size, 1)]
        both = first + [place(*local) for local in hook(size, -1)] + first[:1]
        for way in (first, both):
            yield curved_run(page, (x, y), abs(size) * math.hypot(*matrix), way)
        yield "s"
    if "halfDiscs" in s:
        h = s["halfDiscs"] / 2
        turn = math.degrees(math.atan2(b * h, a * h)) # whole degrees of it
        yield curved_run(page, (x, y), abs(h), *(
            half_disc(x, y, h, degrees) + half_disc(x, y, h / 2, degrees) + [(x, y)]
            for degrees in {math.trunc(turn - 1e-9), math.trunc(turn + 1e-9)}))
        yield "s"
    if "corner" in s:
        size = s["corner"]
        inner = [place(*local) for local in ((0, size), (size / 5, size), (size / 5, size / 5),
                                             (size, size / 5), (size, 0))]
        yield from page.path([(x, y), *inner, (x, y)], "s")


def punch(page, x, y, feature):
    sizes = defaultdict(float, {name: single(size) for name, size in feature["sizes"].items()})
    yield from ["u", *bars_of_punch(page, x, y, sizes)]
    for strokes, end in straight_figures(sizes):
        yield from page.path([(x + u, y + v) for u, v in strokes], end)
    yield from turned_figures(page, x, y, sizes, feature["matrix"])
    yield "U"


def marks(page, point, x0, notches):
    """What is drawn at a point: of the contour with its notches, inside without."""
    x, y, kind = point["x"] + x0, point["y"], point["type"]
    draw = {"simpleNotch": simple_notch, "doubleNotch": double_notch, "vNotch": v_notch}
    if notches and kind in draw:
        yield from draw[kind](page, x, y, *point["notch"])
    if notches and kind == "userNotch": # it stays where it is
        yield from user_notch(page, point["x"], y, *point["notch"], point["width"])
    if kind in ("punch", "userPunch"):
        yield from punch(page, x, y, point["punch"])
    if point["match"]:
        yield from match_mark(page, x, y)


# --- The marker -----------------------------------------------------------------------------------

def placed_point(point, placement):
    """A point of the marker file with its marks in the marker; None places nothing."""
    entry = point if isinstance(point, dict) else {}
    direction = placement and placement._replace(x=0, y=0, scale_x=1, scale_y=1)

    def turned(vector):
        return tuple(moved(vector, direction)) if direction else tuple(vector)

    x, y = moved(xy(point), placement) if placement else xy(point)
    notch = [single(number) for number in entry.get("notch", (0, 0))]
    plain = {"plus": 0.5} if entry.get("type") in ("punch", "userPunch") else {}
    sizes = dict(entry.get("punch", plain))
    a, b, c, d = sizes.pop("matrix", (1, 0, 0, 1))
    return {"x": x, "y": y, "type": entry.get("type", "corner"), "match": entry.get("match", False),
            "notch": [single(number) for number in turned(notch)],
            "width": single(entry.get("notchWidth", 0)),
            "punch": {"sizes": sizes, "matrix": [*turned((a, b)), *turned((c, d))]}}


class Polygon:
    """A placed piece or, with `partner`, the other half of one that is cut down."""

    def __init__(self, marker, fabric, entry, partner=None):
        self.piece = fabric["pieces"][entry["piece"] - 1]
        self.size = self.piece["sizes"][entry["size"] - 1]
        self.style = marker["styles"][self.piece["style"] - 1]
        self.color = entry.get("color", 0)
        place = entry if partner is None else partner
        right = entry.get("side", "left") == "right"
        placement = Placement(place.get("x", 0), place.get("y", 0), place.get("rotation", 0),
                              place.get("mirrored", right), place.get("scaleX", 1),
                              place.get("scaleY", 1))
        self.scaled = (placement.scale_x, placement.scale_y) != (1, 1)
        self.entry = entry if partner is None else {}
        shape = self.entry.get("shape")
        shape, placement = (shape, None) if shape else (self.size, placement)
        self.contour, self.seam, self.inner = (
            [placed_point(point, placement) for point in shape.get(key, [])]
            for key in ("contour", "seam", "internalPoints"))
        self.outline = [(point["x"], point["y"]) for point in self.contour]
        self.right_end = max(x for x, _ in self.outline)
        self.blocking = (partner or {}).get("blocked", False)
        self.partner = (Polygon(marker, fabric, entry, entry["cutDown"])
                        if partner is None and "cutDown" in entry else None)

    def end(self, link_end):
        key, number = next(iter(link_end.items()))
        point = (self.inner if key == "internal" else self.contour)[number - 1]
        return point["x"], point["y"]


class Group:
    def __init__(self, marker, fabric, entry):
        self.entry, self.blocked = entry, entry.get("blocked", False)
        self.polygons = [Polygon(marker, fabric, polygon) for polygon in entry["polygons"]]
        for polygon in self.polygons:
            polygon.blocking = self.blocked


class Layer:
    def __init__(self, marker, fabric, number):
        self.number, self.entry = number, fabric["layers"][number - 1]
        self.width = self.entry["width"]
        self.unused = marker["layers"][number - 1].get("unused", False)
        self.entries = self.entry.get("groups", [])
        self.groups = [(place, Group(marker, fabric, entry))
                       for place, entry in enumerate(self.entries, 1)
                       if entry.get("place", "marker") == "marker"]
        self.length = max((polygon.right_end for _, group in self.groups
                           for polygon in group.polygons), default=0)
        self.occupied = self.length > NOTHING

    def relation(self, place):
        """The number of a group's master or first follower, and F behind or in front of it."""
        master = self.entries[place - 1].get("master", 0)
        if master:
            return master, "F", ""
        followers = [number for number, entry in enumerate(self.entries, 1)
                     if entry.get("master", 0) == place]
        return (followers[0], "", "F") if followers else (0, "", "")


@lru_cache(maxsize=None)
def layers_of(path, fabric_number):
    """The layers of a fabric in their order side by side."""
    marker = json.loads(path.read_text(encoding="utf-8"))
    fabric = marker["fabrics"][fabric_number - 1]
    numbers = range(1, len(marker["layers"]) + 1)
    ranked = sorted(numbers, key=lambda number: marker["layers"][number - 1].get("rank", number))
    return [Layer(marker, fabric, number) for number in ranked]


# --- The information of a piece -------------------------------------------------------------------

def split(text):
    """In two at the blank nearest to the middle, if it leaves three characters before it."""
    left = len(text) // 2
    right = left + 1
    while left >= 2 and right < len(text):
        cut = next((at for at in (left, right) if text[at] == " "), None)
        if cut is not None:
            return [text[:cut], text[cut + 1:]] if 3 <= cut < len(text) - 1 else [text]
        left, right = left - 1, right + 1
    return [text]


class Information:
    """The lines that tell what a piece is."""

    def __init__(self, settings, polygon):
        self.on = {name for name in INFO if settings[f"plot_{name}"] == "true"}
        self.polygon = polygon

    def piece_line(self):
        piece, entry = self.polygon.piece, self.polygon.entry
        number = self.polygon.size["number"]
        ballot = entry.get("ballot", "")
        special = next(size.get("special", "") for size in self.polygon.style["sizes"]
                       if size["number"] == number)
        source = self.polygon.style.get("sourceFile", "")
        line = str(number) if "taille" in self.on else ""
        if "ballot" in self.on and ballot:
            line += ballot + ("/" + ballot if entry.get("pairedBallot", False) else "")
        for name, text in [
                ("special", special), ("pieceName", piece["name"]),
                ("pattern", piece.get("pattern")), ("description", piece.get("description")),
                ("pieceCode", piece.get("code")),
                ("pieceCodeReference", piece.get("codeReference")),
                ("pieceIdentification", piece.get("identification")),
                ("tissus", piece.get("fabric")), ("styleName", PurePosixPath(source).name)]:
            if name in self.on and text:
                line += " " + text
        if "quantite" in self.on:
            line += f" {piece.get('quantity', 1)} {'Single' if piece.get('single') else 'Paired'}"
        return line

    def mark_line(self, relation):
        polygon, (index, before, behind) = self.polygon, relation
        words = []
        if index:
            words.append(f"{before}Block {index}{behind}")
        elif not polygon.blocking and polygon.partner and polygon.partner.blocking:
            words.append("Block")
        if polygon.entry.get("folded", False):
            words.append("Fold")
        if polygon.scaled:
            words.append("Scale")
        return ("Cut Down" if polygon.partner else "") + "".join(" " + word for word in words)

    def lines(self, relation):
        line = self.piece_line()
        lines = [line] if length_of(line) < 16 else split(line)
        mark = self.mark_line(relation) if "pieceTrait" in self.on else ""
        return [mark] * bool(mark) + lines


# --- Links ----------------------------------------------------------------------------------------

def from_the_roots(ways):
    """Behind all that end where it starts; else in the order so far."""
    awaited = Counter(end for _, end, _ in ways)
    ready = deque(way for way in ways if way[0] not in awaited)
    while ready:
        way = ready.popleft()
        yield way
        awaited[way[1]] -= 1
        if awaited[way[1]] == 0:
            ready.extend(other for other in ways if other[0] == way[1])


def strokes(length, link):
    """From and to along the way. The last may be as short as what computing leaves of nothing."""
    parts = list(link.get("pattern", []))
    if len(parts) == 3: # the gap stands behind the dot, too
        parts.append(parts[1])
    if not parts or length / sum(parts) * len(parts) / 2 > MOST_STROKES:
        return [(0, length)]
    found, number = [], 0
    while number * sum(parts) <= length + SHORTEST:
        start = number * sum(parts)
        for at in range(0, len(parts), 2):
            begin = start + sum(parts[:at])
            if begin < length + SHORTEST:
                found.append((begin, min(begin + parts[at], length)))
        number += 1
    return found


def tree_lines(page, polygon, x0):
    ways = [(polygon.end(link["from"]), polygon.end(link["to"]), link)
            for link in polygon.entry.get("links", [])
            if link.get("kind", "tree") == "tree" and not link.get("screenOnly", False)]
    for (ax, ay), (bx, by), link in from_the_roots(ways):
        length = math.hypot(bx - ax, by - ay)
        if length == 0:
            continue
        ux, uy = (bx - ax) / length, (by - ay) / length
        shift = link.get("shift", 0)
        left, bottom = ax + x0 - shift * uy, ay + shift * ux
        for begin, end in strokes(length, link):
            stroke = ["u", *page.path([(left + begin * ux, bottom + begin * uy),
                                       (left + end * ux, bottom + end * uy)], "S"), "U"]
            yield from stroke if end - begin > SHORTEST else [Maybe(stroke)]


def sewing_lines(page, polygon, x0):
    links = [link for link in polygon.entry.get("links", []) if link.get("kind") == "sewing"]
    if links and page.settings["plot_sewingLine"] == "true":
        yield "u"
        for link in links:
            yield from page.path([(x + x0, y) for x, y in
                                  (polygon.end(link["from"]), polygon.end(link["to"]))], "S")
        yield "U"


# --- The file -------------------------------------------------------------------------------------

class FabricFile:
    """What has to stand in the file of a fabric."""

    def __init__(self, path, fabric_number, page):
        marker = json.loads(path.read_text(encoding="utf-8"))
        self.fabric = marker["fabrics"][fabric_number - 1]
        self.layers = layers_of(path, fabric_number)
        self.single_layer = marker.get("singleLayer", 0)
        self.page, self.settings = page, page.settings
        self.space = single(float(self.settings["plot_spaceLayers"]))
        self.laid, x0 = [], 0.0
        for layer in self.layers:
            if layer.occupied:
                self.laid.append((layer, x0))
                x0 = x0 + layer.length + self.space
        self.length = self.laid[-1][1] + self.laid[-1][0].length if self.laid else 0
        self.width = max(layer.width for layer in self.layers)

    def is_exported(self):
        return self.fabric.get("status", 1) == 1 and self.length > NOTHING

    def lines(self, title):
        yield from self.head(title)
        yield from self.frame()
        if self.fabric.get("plaid", {}).get("active", False):
            yield from self.samples()
        yield from self.guides()
        yield from self.separations()
        yield from self.layer_texts()
        yield from self.groups()
        yield from [Part("tail"), "%%Trailer", "%%EOF"]

    def head(self, title):
        page = self.page
        yield from [
            "%!PS-Adobe-2.0", "%%Creator: KIV System ", f"%%Title: ({title})",
            Pattern(r"%%Creation Date: \((0[1-9]|1[0-2])/(0[1-9]|[12]\d|3[01])/\d{4}\) "
                    r"\(([01]\d|2[0-3]):[0-5]\d\)"),
            f"%%DocumentFonts: {page.family}", "%%DocumentProcSets: Adobe_Illustrator881",
            WholeNumbers("%%BoundingBox: ",
                         [0, 0, page.points(self.length), page.points(self.width)], ""),
            "%%EndComments", "%%EndProlog", "%%BeginSetup", "%%EndSetup",
            *colour_lines(BLACK), "1 i", "0 J", "0 j", "1 w", "4 M", "[]0 d",
            *colour_lines(BLACK)]

    def frame(self):
        corners = [(0, 0), (0, self.width), (self.length, self.width), (self.length, 0), (0, 0)]
        yield from [Part("frame"), "u", *self.page.path(corners, "s"), "U"]

    def samples(self):
        yield Part("stripes")
        if self.single_layer:
            layer = next(layer for layer in self.layers if layer.number == self.single_layer)
            yield from self.samples_of(layer, 0, layer.length)
            return
        x0 = 0
        for layer in self.layers:
            if layer.entries and not layer.unused:
                yield from self.samples_of(layer, x0, x0 + layer.length)
                x0 = x0 + layer.length + self.space

    def samples_of(self, layer, start, end):
        yield "u"
        for y in self.stripes("y", "horizontalLines", layer.width):
            if 0 <= y <= layer.width:
                yield from self.page.path([(start - 1.5, y), (min(start, end), y)], "S")
        for distance in self.stripes("x", "verticalLines", end):
            x = start + distance
            if start <= x <= end:
                yield from self.page.path([(x, -1.5), (x, 0)], "S")
        yield "U"

    def stripes(self, axis, lines, last):
        plaid = self.fabric["plaid"]
        if not plaid.get(lines):
            return
        step, offset = plaid[axis + "Repetition"], plaid.get(axis + "Offset", 0)
        v = 0 if offset == 0 else offset - (math.trunc(offset / step) + 1) * step
        while v <= last:
            yield from (line["position"] + v for line in plaid[lines])
            v += step

    def flag(self, tip, first, second):
        return self.page.path([tip, first, second, tip], "s")

    def guides(self):
        yield from [Part("guide lines"), "u"]
        for layer, x0 in self.laid:
            x1 = x0 + layer.length
            for line in layer.entry.get("horizontalLines", []):
                p = line["position"]
                if 0 < p <= layer.width:
                    yield from self.flag((x0, p), (x0 - 1.5, p - 1), (x0 - 1.5, p + 1))
                    yield from self.flag((x1, p), (x1 + 1.5, p - 1), (x1 + 1.5, p + 1))
            lines = layer.entry.get("verticalLines", [])
            for line, following in zip(lines, [*lines[1:], None]):
                if 0 < line["position"] + x0 <= x1:
                    yield from self.vertical_guide(line, following, layer.width, x0)
        yield "U"

    def vertical_guide(self, line, following, width, x0):
        bottom = self.settings["plot_textInBottom"] == "true"
        x, text = line["position"] + x0, line.get("text", "")
        under = self.flag((x, 0), (x - 1, -1.5), (x + 1, -1.5))
        over = self.flag((x, width), (x - 1, width + 1.5), (x + 1, width + 1.5))
        for flag in (over, under) if bottom else (under, over):
            yield from flag
        if not text:
            return
        room = self.length - x - 1
        if following is not None:
            behind = max(-32768, min(32767, math.trunc(following["position"]))) + x0
            if behind <= self.length:
                room = behind - x - 2
        size = fitting(text, int(self.settings["symbols_letterSize"]), room)
        yield from [self.page.font(size), # x0 counts twice
                    self.page.place(x + 1 + x0, -1.5 if bottom else width + 0.5),
                    text_line(text), "T"]

    def separations(self):
        yield from [Part("separation lines"), "u"]
        last = self.layers[-1]
        for layer, x0 in self.laid:
            if layer is last:
                continue
            x = x0 + layer.length + self.space
            yield from self.page.path([(x, layer.width), (x, 0)], "S")
            if self.space > NOTHING and x - self.space > NOTHING and last.occupied:
                end = x - self.space
                yield from self.page.path([(end, layer.width), (end, 0)], "S")
        yield "U"

    def texts(self, entries, x0):
        yield "u"
        for entry in entries:
            x, y = place_of_text(entry)
            yield from self.page.text(entry["lines"], self.page.place(x + x0, y))
        yield "U"

    def layer_texts(self):
        for layer, x0 in self.laid:
            entries = layer.entry.get("texts", [])
            if entries:
                yield Part(f"texts of layer {layer.number}")
                yield from self.texts([entry for entry in entries
                                       if entry.get("section", "marker") == "marker"], x0)

    def groups(self):
        for layer, x0 in self.laid:
            for place, group in layer.groups:
                name = f"layer {layer.number}, group {place}"
                yield from [Part(name), "u"]
                if group.blocked:
                    yield from [self.block_outline(group, x0), "s", "u", "U"]
                relation = layer.relation(place)
                for number, polygon in enumerate(group.polygons, 1):
                    yield from self.polygon(polygon, x0, relation, f"{name}, polygon {number}")
                    if polygon.partner: # it has the number and no relation
                        yield from self.polygon(polygon.partner, x0, (relation[0], "", ""),
                                                f"{name}, partner of {number}")
                yield from [Part(f"{name}, texts"), *self.texts(group.entry.get("texts", []), x0),
                            "U"]

    def block_outline(self, group, x0):
        """It lies on borders of the polygons everywhere and holds them all."""
        outlines = [polygon.outline for polygon in group.polygons]

        def judge(points):
            for start, end in edges(points):
                for point in (start, ((start[0] + end[0]) / 2, (start[1] + end[1]) / 2)):
                    if min(border_distance(point, outline) for outline in outlines) > ALLOWED:
                        return f"the block's outline leaves its polygons at {point}"
            area, wanted = union_area([points]), union_area([points, *outlines])
            return (f"the block's outline takes {area}, with its polygons {wanted} cm2"
                    if abs(area - wanted) > 1e-3 * wanted else None)
        return Run(self.page, x0, 0.5, judge)

    def polygon(self, polygon, x0, relation, name):
        page = self.page
        colour = colour_lines(self.colour(polygon.color))
        yield from [Part(f"{name}, contours"), *colour]
        if polygon.seam:
            yield from self.contour(polygon.seam, x0)
        yield from self.contour(polygon.contour, x0)
        yield from [Part(f"{name}, images"), "u"]
        for image in polygon.entry.get("images", []):
            yield from ["u", "[]0 d", *page.path(corners_of(image), "S"), "U"]
        yield from [Part(f"{name}, information"), *colour_lines(BLACK)]
        yield from page.text(Information(self.settings, polygon).lines(relation),
                             Within(page, polygon.outline, x0))
        yield from [Part(f"{name}, links"), *colour]
        yield from tree_lines(page, polygon, x0)
        yield from sewing_lines(page, polygon, x0)
        yield Part(f"{name}, internal points")
        for point in polygon.inner:
            yield from marks(page, point, x0, notches=False)
        yield from [Part(f"{name}, texts"), *colour_lines(BLACK)]
        yield from self.texts(polygon.entry.get("texts", []), x0)
        yield "U"

    def colour(self, number):
        if number == 0:
            return BLACK
        return tuple(bytes.fromhex(self.settings[f"plot_color{(number - 1) % 8 + 1}"][1:]))

    def contour(self, points, x0):
        yield from self.page.path([(point["x"] + x0, point["y"]) for point in points], "s")
        yield "u"
        for point in points[1:]: # the first has no symbol
            yield from marks(self.page, point, x0, notches=True)
        yield "U"


def corners_of(image):
    placement = Placement(image["x"], image["y"], image.get("rotation", 0), False, 1, 1)
    width, height = image["width"], image["height"]
    corners = [(0, 0), (width, 0), (width, height), (0, height), (0, 0)]
    return [moved(corner, placement) for corner in corners]


# --- Exports --------------------------------------------------------------------------------------

class CannotBeSet(Exception):
    pass


def defaults_of(kivhost, environment, changes):
    """The defaults of the settings, if the changes are in their ranges."""
    listed = subprocess.run([kivhost, "settings", "--json"], check=True, env=environment,
                            capture_output=True)
    defaults = {}
    for entry in json.loads(listed.stdout):
        span = re.match(r"a number from (\S+) to ([\d.]+)", entry["type"])
        value = changes.get(entry["name"])
        if span and value and not float(span[1]) <= float(value) <= float(span[2]):
            raise CannotBeSet(f"left out, {entry['name']} is {entry['type']}")
        defaults[entry["name"]] = entry["default"]
    return defaults


def export(kivhost, marker, folder, changes):
    """Exports in the C locale; all settings and the folder of the files, which is missing when
    there are none."""
    environment = dict(os.environ, LC_ALL="C", HOME=folder, XDG_CONFIG_HOME=folder)
    settings = defaults_of(kivhost, environment, changes)
    command = [kivhost, "export", marker, "-o", folder, "--format", "ill_tm"]
    for name, value in changes.items():
        if name in settings:
            command += ["--set", f"{name}={value}"]
        else: # no setting of kivhost's, but one that the format's panel keeps
            store = Path(folder, "KivSystem", "kivhost.ini")
            store.parent.mkdir()
            store.write_text(f"[General]\n{name}={value}\n", encoding="utf-8")
    done = subprocess.run(command, check=False, env=environment, capture_output=True, text=True)
    if done.returncode != 0 and done.stderr != (
            "kivhost: Illustrator(TM): was not written: the marker holds nothing for it\n"):
        raise Fault(done.stderr.split("\n", maxsplit=1)[0].replace(folder + "/", "") or
                    f"kivhost ends with {done.returncode}")
    return {FACTOR: "1", **settings, **changes}, Path(folder, "ill_tm")


def file_names(fabrics):
    taken = Counter()
    for fabric in fabrics:
        name = re.sub(r"[/\\:*?\"<>|\x00-\x1f]|^\.", "_", fabric.fabric["name"])
        taken[name] += 1
        yield (f"{name} ({taken[name]})" if taken[name] > 1 else name) + ".ai"


def family_of(data):
    match = re.search(rb"^%%DocumentFonts: (\S+)$", data, re.M)
    if not match:
        raise Fault("no line with a font without blanks")
    return match[1].decode("utf-8")


def expected_files(marker, settings):
    """The file of each fabric that gets one, by name; the page still needs its font."""
    count = len(json.loads(marker.read_text(encoding="utf-8"))["fabrics"])
    page = Page(float(settings[FACTOR]), None, settings)
    fabrics = [FabricFile(marker, number, page) for number in range(1, count + 1)]
    exported = [fabric for fabric in fabrics if fabric.is_exported()]
    return dict(zip(file_names(exported), exported))


def compare(fabric, name, data):
    """The lines; a fault is thrown."""
    fabric.page.family = family_of(data)
    lines = Lines(data)
    lines.compare(fabric.lines(name))
    return lines


def check(marker, files, settings):
    """The faults, and what to say if there are none."""
    expected = expected_files(marker, settings)
    found = {path.name for path in files.iterdir()} if files.exists() else set()
    faults, done = [], []
    if found != set(expected):
        faults.append(f"found the files {sorted(found)}, expected {sorted(expected)}")
    for name in sorted(found & set(expected)):
        try:
            lines = compare(expected[name], name, (files / name).read_bytes())
            done.append(f"{name} {len(lines.lines)} lines")
        except (Fault, UnicodeDecodeError) as fault:
            faults.append(f"{name}: {fault}")
    return faults, ", ".join(done) or "no file"


# --- Falsifying -----------------------------------------------------------------------------------

def flaws_of(line, change):
    """Other lines in its place; none at all for None. Numbers are changed by `change`, 0 for the
    least that a file can tell."""
    others = [None, line + " ", "u", "U", "S", "s"]
    for match in re.finditer(r"-?\d+\.?\d*(e-\d+)?", line):
        number = float(match[0])
        place = math.floor(math.log10(abs(number) or 1))
        least = 2 * 10.0 ** (place - digits_of(number) + 1)
        others.append(line[:match.start()] + number_text(number + (change or least)) +
                      line[match.end():])
        others.append(line[:match.start()] + match[0] + "0" + line[match.end():])
    return [other for other in others if other != line]


def unseen_flaws(fabric, name, data):
    """Changes of one line that the check does not find. The date may be any."""
    good = compare(fabric, name, data)
    lines, tried = good.lines, 0
    for at in sorted(random.Random(1).sample(range(len(lines)), min(FLAWED_LINES, len(lines)))):
        dated = lines[at].startswith("%%Creation")
        for flaw in flaws_of(lines[at], good.loose.get(at + 1, 0))[:1 if dated else None]:
            changed = lines[:at] + ([] if flaw is None else [flaw]) + lines[at + 1:]
            bent = at + 1 in good.runs and flaw is None # curves may have fewer points
            if changed == lines or bent or (flaw is None and lines[at] == lines[at - 1]):
                continue
            tried += 1
            try:
                compare(fabric, name, ("\n".join(changed) + "\n").encode())
                yield f"{name}: line {at + 1}, {lines[at]!r} may be {flaw!r}"
            except Fault:
                pass
    print(f"{name}: {tried} changes of a line", flush=True)


def falsify(marker, files, settings):
    faults = []
    for name, fabric in expected_files(marker, settings).items():
        faults += unseen_flaws(fabric, name, (files / name).read_bytes())
    return faults, "each change was found"


def main():
    parser = argparse.ArgumentParser(description="A second reader of Illustrator files.")
    parser.add_argument("--falsify", action="store_true")
    parser.add_argument("kivhost")
    parser.add_argument("markers", type=Path, nargs="+")
    options = parser.parse_args()
    failed = False
    for marker in options.markers:
        for variant in FALSIFIED if options.falsify else VARIANTS:
            name = f"{marker.stem}, {variant}"
            with tempfile.TemporaryDirectory() as folder:
                try:
                    settings, files = export(options.kivhost, marker, folder,
                                             VARIANTS[variant])
                    judge = falsify if options.falsify else check
                    faults, done = judge(marker, files, settings)
                except CannotBeSet as reason:
                    faults, done = [], str(reason)
                except (Fault, OSError, subprocess.CalledProcessError) as error:
                    faults, done = [str(error)], ""
            for fault in faults:
                print(f"{name}: {fault}")
            if not faults:
                print(f"{name}: {done}")
            failed = failed or bool(faults)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
