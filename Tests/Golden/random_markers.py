"""Markers that check_cut_documents.py makes up: the same for the same seed."""

import math
import random

NOTCHES = ("simpleNotch", "doubleNotch", "vNotch", "userNotch")


def contour_of(rng):
    """The corners of a piece: with few or many points, convex or not, round or with spikes."""
    kind = rng.choice(("convex", "star", "round", "box", "angle", "needle", "slit"))
    size = rng.choice((4, 12, 30, 50)) * rng.uniform(0.8, 1.2)
    a, b = round(size), round(size * rng.uniform(0.3, 1)) + 1
    if kind == "box":
        points = [(0, 0), (a, 0), (a, b), (0, b)]
    elif kind == "angle":
        points = [(0, 0), (a, 0), (a, b / 2), (a / 2, b / 2), (a / 2, b), (0, b)]
    elif kind == "slit":  # which passes one of its corners twice
        points = [(0, 0), (a, 0), (a, b), (a / 2, b), (a / 2, b / 2), (a / 2, b), (0, b)]
    elif kind == "needle":
        points = [(0, 0), (a, 0.1 * a), (a * rng.uniform(0.6, 1), 0.2 * a)]
    else:
        count = {"convex": rng.randint(3, 9), "star": 2 * rng.randint(3, 8),
                 "round": rng.choice((rng.randint(40, 120), 240))}[kind]
        wave = rng.uniform(0, 0.3)
        points = []
        for i in range(count):
            turn = 2 * math.pi * (i + (0 if kind == "round" else rng.uniform(0, 0.6))) / count
            radius = {"convex": 1, "star": rng.uniform(0.2, 1),
                      "round": 1 - wave + wave * math.cos(3 * turn)}[kind] * size / 2
            points.append((round(radius * math.cos(turn), 4),
                           round(0.8 * radius * math.sin(turn), 4)))
    if rng.random() < 0.4:
        points.reverse()
    first = rng.randrange(len(points))
    mark = {"type": "curve"} if kind == "round" else {}
    return [{"x": x, "y": y, **mark} for x, y in points[first:] + points[:first]]


def add_marks(rng, contour):
    """Notches and holes on the contour: at corners, the first among them, and beside them."""
    for _ in range(rng.choice((0, 1, 3, 6))):
        at = rng.choice((0, rng.randrange(len(contour))))
        if rng.random() < 0.6:
            a, b = contour[at], contour[(at + 1) % len(contour)]
            size = math.hypot(b["x"] - a["x"], b["y"] - a["y"])
            share = rng.choice((0.5, min(0.05 / size, 0.5), rng.random() * 0.98 + 0.01))
            at += 1
            contour.insert(at, {"x": a["x"] + share * (b["x"] - a["x"]),
                                "y": a["y"] + share * (b["y"] - a["y"])})
        point, way = contour[at], rng.uniform(0, 2 * math.pi)
        length = rng.choice((0, 0.4, 0.5, 1))
        if rng.random() < 0.15:
            point["type"] = rng.choice(("punch", "userPunch"))
            point.pop("notch", None)
            point.pop("notchWidth", None)
        elif point.get("type") not in NOTCHES:
            point["type"] = rng.choice(NOTCHES)
            point["notch"] = [length * math.cos(way), length * math.sin(way)]
            if point["type"] == "userNotch":
                point["notchWidth"] = rng.choice((0, 0.4))
        if rng.random() < 0.2:
            point["match"] = True


def box(points):
    return (min(p["x"] for p in points), min(p["y"] for p in points),
            max(p["x"] for p in points), max(p["y"] for p in points))


def size_of(rng, number):
    contour = contour_of(rng)
    left, bottom, right, top = box(contour)
    add_marks(rng, contour)
    if rng.random() < 0.2:
        contour[0]["match"] = True

    def place(slack):
        return {"x": rng.uniform(left - slack, right + slack),
                "y": rng.uniform(bottom - slack, top + slack)}
    slack = rng.choice((0, 0, 3))
    points = [{**place(slack), "type": rng.choice(("punch", "punch", "userPunch"))}
              for _ in range(rng.choice((0, 0, 1, 4)))]
    lines = [{"kind": rng.choice(("cut", "cut", "draw", "grain")),
              "points": [{**place(0), **({"type": "punch"} if rng.random() < 0.1 else {})}
                         for _ in range(rng.choice((2, 3, 8)))]}
             for _ in range(rng.choice((0, 0, 1, 2)))]
    return {"number": number, "contour": contour, "internalPoints": points, "internalLines": lines}


def moved(points, mirrored, rotation, dx, dy):
    """Points turned and shifted as a polygon's, their notches turned with them."""
    cos, sin = math.cos(math.radians(rotation)), math.sin(math.radians(rotation))

    def turned(x, y):
        y = -y if mirrored else y
        return x * cos - y * sin, x * sin + y * cos
    found = []
    for point in points:
        x, y = turned(point["x"], point["y"])
        found.append({**point, "x": x + dx, "y": y + dy})
        if "notch" in point:
            found[-1]["notch"] = list(turned(*point["notch"]))
    return found


class Filler:
    """Puts polygons into columns from the start of a layer, no two over each other."""

    def __init__(self, rng, width, alone):
        self.rng, self.width = rng, width
        # From -1 on pieces lie beyond the cloth, at a place that documents must not hold; a little
        # beyond is in range, but before the first frame.
        self.margin = rng.choice((0, 0.5, 2.5)) if rng.random() < 0.8 or not alone else (
            rng.choice((-1, -0.0005, -0.0005)))
        self.gap = rng.choice((0, 0.3, 2))
        self.roomy = rng.random() < 0.8  # holes and lines outside lie over no neighbour
        self.x, self.y, self.right = self.margin, self.margin, self.margin

    def polygon(self, fabric, layer):
        rng = self.rng
        number = rng.randrange(len(fabric["pieces"]))
        piece = fabric["pieces"][number]
        size_number = rng.randrange(len(piece["sizes"]))
        size = piece["sizes"][size_number]
        side = "left" if piece.get("single") else rng.choice(("left", "right"))
        mirrored = rng.choice((side == "right", not side == "right", False))
        rotation = rng.choice((0, 0, 90, 180, 270, round(rng.uniform(-180, 180), 2)))
        points = list(size["contour"])
        if self.roomy:
            points += size["internalPoints"]
            points += [p for line in size["internalLines"] for p in line["points"]]
        left, bottom, right, top = box(moved(points, mirrored, rotation, 0, 0))
        if self.y > self.margin and self.y + top - bottom + self.margin > self.width:
            self.x, self.y = self.right + self.gap, self.margin
        dx, dy = self.x - left, self.y - bottom
        self.y += top - bottom + self.gap
        self.right = max(self.right, self.x + right - left)
        entry = next((e for e in piece["chart"] if (e["layer"], e["size"]) ==
                      (layer, size_number + 1)), None)
        if entry is None:
            entry = {"layer": layer, "size": size_number + 1}
            piece["chart"].append(entry)
        entry[side] = entry.get(side, 0) + 1
        polygon = {"piece": number + 1, "size": size_number + 1, "side": side, "x": dx, "y": dy,
                   "rotation": rotation, "mirrored": mirrored,
                   "ballot": rng.choice(("", "A", "\u00c4"))}
        if rng.random() < 0.15:
            polygon["folded"] = rng.random() < 0.5
            polygon["shape"] = {
                "contour": moved(size["contour"], mirrored, rotation, dx, dy),
                "internalPoints": moved(size["internalPoints"], mirrored, rotation, dx, dy),
                "internalLines": [
                    {"kind": line["kind"],
                     "points": moved(line["points"], mirrored, rotation, dx, dy)}
                    for line in size["internalLines"]]}
        return polygon


def shift_back(groups, way):
    """To before the start of the layer."""
    for polygon in (polygon for group in groups for polygon in group["polygons"]):
        polygon["x"] -= way
        shape = polygon.get("shape", {})
        for points in [shape.get("contour", []), shape.get("internalPoints", [])] + [
                line["points"] for line in shape.get("internalLines", [])]:
            for point in points:
                point["x"] -= way


def random_marker(seed):
    rng = random.Random(seed)
    layers = rng.choice((1, 1, 2))
    pieces = [{"name": f"Piece {chr(65 + i)}{rng.choice(('', ' * x', ' übergroß'))}", "style": 1,
               "single": rng.random() < 0.3,
               "sizes": [size_of(rng, n) for n in range(1, rng.choice((1, 1, 2)) + 1)], "chart": []}
              for i in range(rng.randint(1, 5))]
    fabric = {"name": "Cloth", "type": rng.choice(("plain", "foldBottom", "tubular")),
              "gapX": rng.choice((0, 0.2, 1)), "gapY": rng.choice((0, 0.2, 1)), "layers": [],
              "pieces": pieces}
    if rng.random() < 0.5:
        fabric["gapX"] = fabric["gapY"] = 0
    for layer in range(1, layers + 1):
        filler = Filler(rng, rng.choice((70, 100, 150)), layers == 1)
        groups = [{"polygons": [filler.polygon(fabric, layer)
                                for _ in range(rng.choice((1, 1, 1, 2, 3)))]}
                  for _ in range(rng.choice((1, 3, 6)))]
        if layers > 1 and rng.random() < 0.2:
            groups = groups if layer == layers else []
        elif len(groups) > 1 and rng.random() < 0.3:
            groups[-1]["place"] = "standby"
        if layers > 1 and rng.random() < 0.1:
            shift_back(groups, filler.right)
        fabric["layers"].append({"width": filler.width, "groups": groups})
    fabrics = [fabric]
    if rng.random() < 0.2:
        fabrics.insert(0, {"name": "Lining", "layers": [{"width": 90}] * layers})
    return {"format": "kiv-marker", "version": 1, "optimised": rng.random() < 0.4,
            "layers": [{"name": f"Layer {i + 1}"} for i in range(layers)], "fabrics": fabrics,
            "styles": [{"name": "Style",
                        "sizes": [{"number": 1, "name": "S"}, {"number": 2, "name": "M"}]}]}
