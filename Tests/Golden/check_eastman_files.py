"""Reads Eastman cut files and label files back, and compares them with the cut documents that they are
written from. Usage: check_eastman_files.py KIVHOST"""

import itertools
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SAMPLES = Path(__file__).resolve().parents[2] / "Samples"
SVG = "{http://www.w3.org/2000/svg}"
HALF_UNIT = 0.0005 + 1e-9  # cm; three decimals
KINDS = ["PUNCH", "DRILL", "VNCH", "SLIT", "LASER"]
COORDINATES = re.compile(r"^(MOVE|CUT|NOTCH|HOLE|BURN) *(.{10})(.{10})(?:     *([\d.]+))?$")


def check(truth, message):
    if not truth:
        raise AssertionError(message)


def points(data):
    return [tuple(map(float, pair.split(","))) for pair in re.findall(r"[-\d.e]+,[-\d.e]+", data or "")]


def near(a, b):
    return all(abs(x - y) <= HALF_UNIT for x, y in zip(a, b))


def strokes_of(element, notches, internals):
    """What is cut of a piece, in order: (word, points)."""
    paths = element.findall(SVG + "path")
    lines = [("CUT", points(p.text)) for p in paths if p.get("t") == "internal"]
    cuts = [("NOTCH", points(p.text)) for p in paths if p.get("t") == "notch"]
    outlines = [("CUT", points(p.text)) for p in paths if p.get("t") == "outline"]
    body = {0: outlines, 2: cuts + outlines, 3: outlines + cuts}[notches]
    return (lines if internals == 1 else []) + body + (lines if internals == 2 else [])


def segments(strokes):
    return [(word, p + q) for word, stroke in strokes for p, q in zip(stroke, stroke[1:]) if p != q]


def same_segments(wanted, found):
    """Whether each of the one is one of the other, whatever their order."""
    left = segments(found)
    for word, way in segments(wanted):
        match = next((other for other in left if other[0] == word and near(way, other[1])), None)
        if match is None:
            return False
        left.remove(match)
    return not left


class Piece:
    def __init__(self, number):
        self.number, self.holes, self.strokes, self.place, self.speed = number, [], [], None, None

    def line(self, text, following):
        if text.startswith("SPEED"):
            self.speed = int(text.split()[1])
            check(len(text) == 16, f"a speed out of its column: {text!r}")
            return
        if text in KINDS:
            return
        found = COORDINATES.match(text)
        check(found, f"a line that nobody knows: {text!r}")
        word, place = found[1], (float(found[2]), float(found[3]))
        if word in ("HOLE", "BURN"):
            check(following in KINDS and (word == "BURN") == (following == "LASER"), text)
            self.holes.append((place, float(found[4]), following))
        elif word == "MOVE":
            self.place = place
            self.strokes.append(("", [place]))
        else:
            check(self.place is not None, "a cut without a place to start from")
            if self.strokes[-1][0] not in ("", word):
                self.strokes.append((word, [self.strokes[-1][1][-1]]))
            self.strokes[-1] = (word, self.strokes[-1][1] + [place])


def read(text):
    check(text.endswith("END\r\n") and "\n" not in text.replace("\r\n", ""), "line ends")
    lines = text.split("\r\n")[:-2]
    check(lines[0].startswith("NAME  ") and lines[1] == "UNIT  CM", "the head of the file")
    pieces = []
    for line, following in zip(lines[2:], lines[3:] + [""]):
        if line.startswith("PIECE"):
            check(len(line) >= 10, f"a number out of its column: {line!r}")
            pieces.append(Piece(int(line[6:])))
        elif line.startswith("WASTE"):
            check(int(line[6:]) == len(pieces) + 1, "the number of the waste")
            break
        else:
            pieces[-1].line(line, following)
    check([p.number for p in pieces] == list(range(1, len(pieces) + 1)), "numbers of pieces")
    return pieces


def compare(pieces, document, notches, internals, drill, angle):
    objects = document.findall(SVG + "object")
    check(len(pieces) == len(objects), "a piece too many or too few")
    for piece, element in zip(pieces, objects):
        holes = [points(p.get("drill"))[0] for p in element.findall(SVG + "path") if p.get("drill")]
        check(len(holes) == len(piece.holes) if drill else not piece.holes, "holes")
        for place, (found, turned, kind) in zip(holes, piece.holes):
            check(near(place, found) and turned == angle and kind == KINDS[drill - 1], "a hole")
        check(piece.speed == [100, 90, 80, 70][int(element.get("velocity"))], "speed")
        if notches == 1:  # broken off at notches: the same cuts in all, whatever their order
            wanted = strokes_of(element, 2, internals)
            check(same_segments(wanted, piece.strokes), f"cuts of piece {piece.number}")
            continue
        wanted = strokes_of(element, notches, internals)
        check(len(wanted) == len(piece.strokes), f"strokes of piece {piece.number}")
        for (word, way), (found, cut) in zip(wanted, piece.strokes):
            check(word == found and len(way) == len(cut) and all(map(near, way, cut)),
                  f"{word} of piece {piece.number}")


def documents(host, sample, kind, settings):
    for fabric in (1, 2):
        for block in range(10):
            arguments = [a for n, v in settings.items() for a in ("--set", f"{n}={v}")]
            shown = subprocess.run([host, "svg", SAMPLES / f"{sample}.mar", "--fabric", str(fabric),
                                    "--for", kind, "--block", str(block)] + arguments,
                                   capture_output=True, text=True)
            if shown.returncode:
                break
            yield ElementTree.fromstring(shown.stdout), block


def files(host, folder, sample, tag, settings):
    arguments = [a for n, v in settings.items() for a in ("--set", f"{n}={v}")]
    subprocess.run([host, "export", SAMPLES / f"{sample}.mar", "--format", tag, "-o", folder] + arguments,
                   check=True, capture_output=True)
    return {path.stem: path.read_bytes().decode() for path in (folder / tag).iterdir()}


def check_run(host, sample, settings):
    with tempfile.TemporaryDirectory() as name:
        written = files(host, Path(name), sample, "cut_eastman", settings)
        count = 0
        for document, block in documents(host, sample, "eastman", settings):
            zent = sample == "tshirt"
            stem = ("Zent" if zent else "") + document.get("fabric")
            stem += (f" ({block + 1})" if zent else f"Blk{block}") if block else ""
            compare(read(written[stem]), document, settings["EastCutOrderCrans"],
                    settings["EastCutInternalOrder"], settings["EastCutTypeDrill"],
                    settings["EastCutAnglePunchHole"])
            count += 1
        check(count == len(written), "files")
        labels = files(host, Path(name), sample, "cut_labels", settings)
        for document, block in documents(host, sample, "labels", settings):
            stem = document.get("fabric") + (f" ({block + 1})" if block else "")
            wanted = [element.get("label") for element in document.findall(SVG + "object")]
            check(labels.pop(stem) == "".join(label + "\r\n" for label in wanted), "labels")
        check(not labels, "files of labels")


def main():
    failed = 0
    cases = itertools.product(("tshirt", "trousers"), range(4), range(3))
    for index, (sample, notches, internals) in enumerate(cases):
        settings = {"EastCutOrderCrans": notches, "EastCutInternalOrder": internals,
                    "EastCutTypeDrill": index % 6, "EastCutAnglePunchHole": 45 * (index % 2),
                    "EastCutScaleX": 98.5 if index % 3 else 100, "EastCutFusing": index % 3,
                    "EastMiniCutFileBlock": str(index % 4 == 1).lower(),
                    "MiniCutFileBlock": str(index % 4 == 1).lower(),
                    "CutFabricEdge": str(index % 5 == 2).lower()}
        try:
            check_run(sys.argv[1], sample, settings)
        except (AssertionError, KeyError) as fault:
            failed += 1
            print(f"{sample} {settings}: {fault!r}")
    print("every Eastman and label file is as its document" if not failed else f"{failed} runs failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
