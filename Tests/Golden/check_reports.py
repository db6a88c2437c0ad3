"""A second reader of marker files: works out the reports of every sample from its JSON, with nothing
of the program's, and compares them with the golden files. Those with a semicolon between the fields
are read as a spreadsheet does, which must give the very values."""

import csv
import json
import math
import sys
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TYPES = {"plain": "Plain", "foldBottom": "Fold on Bottom", "foldTop": "Fold on Top",
         "tubular": "Tubular"}


def shown(number):
    return str(Decimal(number).quantize(Decimal("0.01"), ROUND_HALF_UP))


def xy(point):
    return (point["x"], point["y"]) if isinstance(point, dict) else tuple(point)


def outline(fabric, polygon):
    """The polygon's contour in the marker."""
    if "shape" in polygon:
        return [xy(p) for p in polygon["shape"]["contour"]]
    size = fabric["pieces"][polygon["piece"] - 1]["sizes"][polygon["size"] - 1]
    mirrored = polygon.get("mirrored", polygon.get("side") == "right")
    turn = math.radians(polygon.get("rotation", 0))
    points = []
    for x, y in map(xy, size["contour"]):
        y = -y if mirrored else y
        points.append((x * math.cos(turn) - y * math.sin(turn) + polygon.get("x", 0),
                       x * math.sin(turn) + y * math.cos(turn) + polygon.get("y", 0)))
    return points


def area(points):
    return abs(sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1]))) / 2


def made_sizes(style, piece, garments):
    """Name, special text and quantity of each size that is made."""
    by_number = {size["number"]: (size, quantity)
                 for size, quantity in zip(style["sizes"], garments)}
    made = [by_number[size["number"]] for size in piece["sizes"]]
    made = [(size, quantity) for size, quantity in made if quantity > 0]
    return [(size["name"], size.get("special", ""), str(quantity)) for size, quantity in made]


def garments_of(style, fabric, layer):
    for entry in style.get("garments", []):
        if (entry["fabric"], entry["layer"]) == (fabric, layer):
            return entry["quantities"]
    return [0] * len(style["sizes"])


def fields(marker, name, style_number, fabric_number, layer_number):
    """The fields of a style on a fabric in a layer but the sizes, and what is made."""
    style = marker["styles"][style_number - 1]
    fabric = marker["fabrics"][fabric_number - 1]
    layer = fabric["layers"][layer_number - 1]
    pieces = fabric["pieces"]
    placed = [outline(fabric, polygon) for group in layer.get("groups", [])
              if group.get("place", "marker") == "marker" for polygon in group["polygons"]]
    ordered = sum(entry.get("left", 0) + entry.get("right", 0)
                  for piece in pieces for entry in piece.get("chart", [])
                  if entry["layer"] == layer_number)
    length = max((x for points in placed for x, _ in points), default=0)
    whole = length * layer["width"]
    involved = {piece["style"] for piece in pieces}
    garments = sum(sum(garments_of(marker["styles"][number - 1], fabric_number, layer_number))
                   for number in involved)
    summary = marker["summary"]
    year, month, day = summary["dateStamp"][:10].split("-")
    gap_x, gap_y = fabric.get("gapX", 0), fabric.get("gapY", 0)
    made = made_sizes(style, next(p for p in pieces if p["style"] == style_number),
                      garments_of(style, fabric_number, layer_number))
    return [
        name + ".mar", "@FOLDER@", summary["comments"].replace("\n", "").replace("\r", "\x0b"),
        summary["keywords"], "@DATE@", "@DATE@", f"{int(day)}/{int(month)}/{year}",
        style["name"], fabric["name"], TYPES[fabric.get("type", "plain")],
        "Yes" if fabric.get("oneWay") else "No",
        shown(gap_x) + ("" if gap_y >= abs(gap_x) else " " + shown(gap_y)), shown(layer["width"]),
        marker["layers"][layer_number - 1]["name"], shown(length),
        shown(length / garments if garments else 0),
        shown(100 * sum(map(area, placed)) / whole if whole else 0), str(len(placed)),
        str(ordered - len(placed))], made


def records(marker, name):
    return [fields(marker, name, style, fabric, layer)
            for style in range(1, len(marker["styles"]) + 1)
            for fabric in range(1, len(marker["fabrics"]) + 1)
            if any(piece["style"] == style for piece in marker["fabrics"][fabric - 1]["pieces"])
            for layer in range(1, len(marker["layers"]) + 1)]


def with_all_sizes(marker, name):
    return [common + ["\x1d".join(size[part] for size in made) for part in range(3)]
            for common, made in records(marker, name)]


def with_a_line_per_size(marker, name):
    return [common + list(size) for common, made in records(marker, name) for size in made]


def spreadsheet(path):
    with open(path, encoding="utf-8", newline="\n") as file:
        return list(csv.reader(file, delimiter=";"))


def tabbed(path):
    lines = path.read_bytes().decode().split("\n")
    assert lines.pop() == ""
    return [line.split("\t") for line in lines]


def main():
    failed = 0
    for path in sorted((ROOT / "Samples").glob("*.mar")):
        marker, name = json.loads(path.read_text(encoding="utf-8")), path.stem
        for folder, read, expected in (("kiv_txt/" + name, tabbed, with_all_sizes),
                                       ("txt/" + name, tabbed, with_all_sizes),
                                       (f"txt/{name}/semicolon", spreadsheet, with_all_sizes),
                                       (f"txt/{name}/line-per-size", spreadsheet,
                                        with_a_line_per_size)):
            golden = ROOT / "Tests/Golden" / folder / (name + ".txt")
            same = read(golden) == expected(marker, name)
            print(("same: " if same else "DIFFERS: ") + str(golden))
            failed += not same
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
