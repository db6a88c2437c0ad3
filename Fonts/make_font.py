#!/usr/bin/env python3
"""Makes io/KIVFNT.TBL, the letters of the cutters' pens, from lists of strokes.

    make_font.py            writes the table
    make_font.py --check    fails if the table is not what would be written

roman.jhf and greek.jhf are the Hershey fonts "Roman simplex" and "Greek simplex" as Debian's
package hershey-fonts-data has them; io/KIVFNT.txt holds their notice. own_shapes.py holds the
letters and marks that they lack. The format of the table stands in Source/KivPlotOut/FontTable.h.
"""

import math
import struct
import sys
import unicodedata
from pathlib import Path

import own_shapes

HERE = Path(__file__).resolve().parent
TABLE = HERE.parent / "io" / "KIVFNT.TBL"

CAPITAL, SMALL, BASE = -12, -5, 9  # y of tops and of the base line
UNIT_X, UNIT_Y = 2.2, 2.8          # from a list's units to those of the table
MIDDLE_Y = -1.5                    # between accents of capitals, -19, and descenders, 16


def listed(name):
    """The strokes of a list, by the ASCII character at which each stands."""
    shapes = {}
    for index, line in enumerate((HERE / name).read_text("ascii").splitlines()):
        pairs = line[10:]  # number, count of pairs, and the sides, which a fixed pitch has no use for
        assert len(pairs) == 2 * (int(line[5:8]) - 1), (name, index)
        strokes = "".join(pairs).replace(" R", "\n").split("\n") if pairs else []
        shapes[chr(32 + index)] = [
            [(ord(s[i]) - ord("R"), ord(s[i + 1]) - ord("R")) for i in range(0, len(s), 2)]
            for s in strokes]
    return shapes


def drawn(text):
    return [[tuple(map(int, point.split(","))) for point in stroke.split()]
            for stroke in text.split(";")]


def moved(shape, x, y, scale_x=1.0, scale_y=None):
    scale_y = scale_x if scale_y is None else scale_y
    return [[(px * scale_x + x, py * scale_y + y) for px, py in stroke] for stroke in shape]


def extent(shape, axis):
    values = [point[axis] for stroke in shape for point in stroke]
    return min(values), max(values)


def middle(shape, axis=0):
    return sum(extent(shape, axis)) / 2


def half_turned(shape):
    return moved(shape, 2 * middle(shape), SMALL + BASE, -1)


def circle(radius):
    steps = [math.radians(22.5 * i) for i in range(17)]
    return [[(radius * math.sin(a), MIDDLE_Y - radius * math.cos(a)) for a in steps]]


def inside_circle(shape):
    return circle(10) + moved(shape, -middle(shape) / 2, MIDDLE_Y / 2, 0.5)


def raised(shape):
    """A small figure or letter that hangs from the top of the capitals."""
    top = extent(shape, 1)[0]
    return moved(shape, -middle(shape) * 0.6, CAPITAL - top * 0.6, 0.6)


def fraction(above, below):
    return (moved(above, -6, CAPITAL * 0.5, 0.55) + drawn("7,-12 -7,9") +
            moved(below, 6, BASE * 0.45, 0.55))


def small_capital(shape):
    scale = (BASE - SMALL) / (BASE - CAPITAL)
    return moved(shape, 0, BASE - BASE * scale, 0.85, scale)


MARKS = {name: drawn(text) for name, text in own_shapes.MARKS.items()}
ABOVE = {0x300: "grave", 0x301: "acute", 0x302: "circumflex", 0x303: "tilde", 0x304: "macron",
         0x306: "breve", 0x307: "dot", 0x308: "diaeresis", 0x30A: "ring", 0x30B: "double acute",
         0x30C: "caron"}
BELOW = {0x327: "cedilla", 0x328: "ogonek"}


def latin_shapes():
    shapes = listed("roman.jhf")
    shapes["°"] = shapes.pop(chr(127))
    shapes["\u00a0"] = []
    shapes.update({c: drawn(text) for c, text in own_shapes.LETTERS.items()})
    dot = MARKS["dot"]
    shapes.update({
        "¡": half_turned(shapes["!"]), "¿": half_turned(shapes["?"]),
        "¢": shapes["c"] + drawn("0,-9 0,13"),
        "¤": moved(shapes["o"], 0, 0, 0.8) + drawn("-8,-6 -5,-3; 8,-6 5,-3; -8,10 -5,7; 8,10 5,7"),
        "¥": shapes["Y"] + drawn("-6,0 6,0; -6,4 6,4"),
        "©": inside_circle(shapes["C"]), "®": inside_circle(shapes["R"]),
        "ª": raised(shapes["a"]) + drawn("-4,0 4,0"), "º": raised(shapes["o"]) + drawn("-4,0 4,0"),
        "¹": raised(shapes["1"]), "²": raised(shapes["2"]), "³": raised(shapes["3"]),
        "¼": fraction(shapes["1"], shapes["4"]), "½": fraction(shapes["1"], shapes["2"]),
        "¾": fraction(shapes["3"], shapes["4"]),
        "¨": MARKS["diaeresis"], "¯": MARKS["macron"], "´": MARKS["acute"], "¸": MARKS["cedilla"],
        "·": moved(dot, 0, 10), "÷": drawn("-9,0 9,0") + moved(dot, 0, 3) + moved(dot, 0, 17),
        "æ": moved(shapes["a"], -4.5, 0, 0.75, 1) + moved(shapes["e"], 4.5, 0, 0.75, 1),
        "œ": moved(shapes["o"], -4.9, 0, 0.75, 1) + moved(shapes["e"], 4.5, 0, 0.75, 1),
        "Ø": shapes["O"] + drawn("7,-13 -7,10"), "ø": shapes["o"] + drawn("7,-7 -6,11"),
        "Ð": shapes["D"] + drawn("-10,-2 -1,-2"), "Đ": shapes["D"] + drawn("-10,-2 -1,-2"),
        "þ": shapes["p"] + drawn("-6,-12 -6,-5"), "đ": shapes["d"] + drawn("1,-9 9,-9"),
        "Ħ": shapes["H"] + drawn("-10,-7 10,-7"), "ħ": shapes["h"] + drawn("-8,-9 0,-9"),
        "Ł": shapes["L"] + drawn("-10,1 0,-5"), "ł": shapes["l"] + drawn("-4,1 4,-5"),
        "Ŋ": shapes["N"] + drawn("7,9 7,12 6,15 4,16 1,16"),
        "ŋ": shapes["n"] + drawn("6,9 6,12 5,15 3,16 0,16"),
        "Ŧ": shapes["T"] + drawn("-5,-1 5,-1"), "ŧ": shapes["t"] + drawn("-4,1 4,1"),
        "Ŀ": shapes["L"] + moved(dot, 3, 8), "ŀ": shapes["l"] + moved(dot, 5, 8),
        "ŉ": moved(MARKS["apostrophe"], -8, 0) + moved(shapes["n"], 2, 0),
        "Ĳ": moved(shapes["I"], -7, 0) + moved(shapes["J"], 3, 0),
        "ĳ": moved(shapes["i"], -4, 0) + moved(shapes["j"], 4, 0),
        "‘": moved(MARKS["turned comma"], 0, 1), "’": moved(MARKS["apostrophe"], 0, 1),
        "“": moved(MARKS["turned comma"], -3, 1) + moved(MARKS["turned comma"], 3, 1),
        "”": moved(MARKS["apostrophe"], -3, 1) + moved(MARKS["apostrophe"], 3, 1),
        "‚": shapes[","], "„": moved(shapes[","], -3, 0) + moved(shapes[","], 3, 0),
        "…": [s for x in (-9, 0, 9) for s in moved(shapes["."], x, 0)],
    })
    return shapes


def add_greek(shapes):
    greek = listed("greek.jhf")
    for first, capitals in (("A", "ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ"), ("a", "αβγδεζηθικλμνξοπρστυφχψω")):
        for index, letter in enumerate(capitals):
            shapes[letter] = greek[chr(ord(first) + index)]
    shapes["µ"] = shapes["μ"]
    shapes["Υ"] = shapes["Y"]  # the list's has horns


def add_cyrillic(shapes):
    for letter, like in zip("АВГЕКМНОПРСТФХЅІЈасеорхуѕіј", "ABΓEKMHOΠPCTΦXSIJaceopxysij"):
        shapes[letter] = shapes[like]
    shapes["Э"] = moved(shapes["C"], 0, 0, -1, 1) + drawn("-1,-2 7,-2")
    shapes["Є"] = shapes["C"] + drawn("-7,-2 1,-2")
    shapes["Я"] = moved(shapes["R"], 0, 0, -1, 1)
    shapes["Ю"] = drawn("-10,-12 -10,9; -10,-2 -3,-2") + moved(shapes["O"], 4, 0, 0.85, 1)
    shapes["ћ"] = shapes["ħ"]
    for letter in "вгджзиклмнптцчшщъыьэюяєљњџґ":
        shapes[letter] = small_capital(shapes[letter.upper()])


def accented(letter, shapes):
    """A letter from its base and marks; none when it has no such parts."""
    parts = unicodedata.normalize("NFD", letter)
    base, marks = parts[0], [ord(mark) for mark in parts[1:]]
    if not marks or base not in shapes or any(m not in ABOVE and m not in BELOW for m in marks):
        return None
    if letter in "ďľťĽ":
        shape = shapes[base]
        beside = extent(shape, 0)[1] + 3 if letter in "ďľ" else 5
        return shape + moved(MARKS["apostrophe"], beside, 0)
    if letter in "ĢĶķĻļŅņŖŗ":
        return shapes[base] + moved(MARKS["comma below"], middle(shapes[base]), 0)
    if letter == "ģ":
        return shapes[base] + moved(MARKS["turned comma"], middle(shapes[base]), 0)
    if any(mark in ABOVE for mark in marks):  # in place of the dot
        base = {"i": "ı", "і": "ı", "j": "ȷ"}.get(base, base)
    shape = list(shapes[base])
    (left, right), top, centre = extent(shape, 0), extent(shape, 1)[0], middle(shape)
    if base == "ȷ":
        centre = 1
    for mark in marks:
        if mark in BELOW:
            foot = centre + (right - centre) * 0.6 if BELOW[mark] == "ogonek" else centre
            shape += moved(MARKS[BELOW[mark]], foot, 0)
        elif letter in "ΆΈΉΊΌΎΏ":
            shape += moved(MARKS["acute"], left - 5, 0)
        else:
            shape += moved(MARKS[ABOVE[mark]], centre, top - SMALL)
    return shape


def all_shapes():
    shapes = latin_shapes()
    add_greek(shapes)
    add_cyrillic(shapes)
    wanted = [*range(0x20, 0x7F), *range(0xA0, 0x180), *range(0x386, 0x3CF), *range(0x400, 0x460),
              *map(ord, "Ґґ–—‘’‚“”„•…€")]
    result = {}
    for code in wanted:
        if unicodedata.category(chr(code)) == "Cn":
            continue
        shape = shapes.get(chr(code))
        if shape is None:
            shape = accented(chr(code), shapes)
        if shape is not None:
            result[code] = shape
        elif code < 0x180:
            raise SystemExit(f"no strokes for {code:04X} {chr(code)}")
    return result


def glyph(code, shape):
    """The record of a shape, in the middle of its cell."""
    steps = []
    if shape:
        centre, cell = (75, 50) if code <= 0xFF else (50, 100)
        low, high = extent(shape, 0)
        unit = min(UNIT_X, (cell - 4) / max(high - low, 1))
        for stroke in shape:
            points = [(round(centre + unit * (x - (low + high) / 2)),
                       round(50 - UNIT_Y * (y - MIDDLE_Y))) for x, y in stroke]
            kept = [p for i, p in enumerate(points) if i == 0 or p != points[i - 1]]
            steps += [(int(i > 0), x, y) for i, (x, y) in enumerate(kept)]
    record = struct.pack("<bB", len(steps), 0)
    return record + b"".join(struct.pack("<Bbb", *step) for step in steps)


def table():
    index, data = b"", b""
    shapes = all_shapes()
    for code in sorted(shapes):
        index += struct.pack("<Hi", code, len(data))
        data += glyph(code, shapes[code])
    return struct.pack("<i", len(shapes)) + index + data


def main():
    made = table()
    if sys.argv[1:] == ["--check"]:
        if TABLE.read_bytes() != made:
            raise SystemExit(f"{TABLE} is not what {Path(__file__).name} writes")
    else:
        TABLE.write_bytes(made)


if __name__ == "__main__":
    main()
