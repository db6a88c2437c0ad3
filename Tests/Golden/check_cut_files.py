"""A second reader of ANSI cut files. It knows the cutter's language (blocks, knife, pen, units) and
nothing of the program's or of its configuration: it exports the samples with many settings, follows
the knife as a machine does and compares what is cut with the cut document of `kivhost svg`.

    check_cut_files.py KIVHOST PLUGINS"""

import json
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from collections import namedtuple
from concurrent.futures import ThreadPoolExecutor
from functools import lru_cache, partial
from pathlib import Path

SAMPLES = Path(__file__).resolve().parents[2] / "Samples"
INCH_HUNDREDTH, MILLIMETRE_TENTH = 0.0254, 0.01
BLOCK = re.compile(r"(?:([NMGD])(\d+))?(?:X(0|[1-9]\d*)Y(0|[1-9]\d*))?")
SPEEDS = {"0": None, "1": 61, "2": 63, "3": 65}
ACTS = ["label", "pen", "hole", "cut", "advance"] # as they follow each other in a piece
# What is in the document; each meets many ways of cutting it.
CONTENTS = [
    {"CutLabelM31": "true"},
    {"PenCutInfos": "true", "CutPenUpSynchro": "true"},
    {"CutCommandM69": "true", "CutLength": "200", "CutThresholdAdvance": "150",
     "CutFabricEdge": "true"},
    {"CutFabricEdge": "true", "CutFabricEdgeSpacing": "20", "CutExternalPunchHoles": "true"},
    {"CutExternalPunchHoles": "true", "CutExternalPunchHoleTool": "1", "CutLabelM31": "true",
     "PenCutInfos": "true"},
    {"MiniCutFileBlock": "true", "CutFusing": "2", "CutLabelM31": "true"},
    {"CutFusing": "1", "CutFabricEdge": "true"},
]

# What the machine does, in its units; `plunges` are those since the last cut, `word` is the tool of
# a hole or the text of a label.
Act = namedtuple("Act", "kind start end word plunges notch speed", defaults=[None] * 4)
# A cut that the document asks for, in centimetres.
Leg = namedtuple("Leg", "kind start end lifted notch", defaults=[False])


class Fault(Exception):
    pass


def check(right, text):
    if not right:
        raise Fault(text)


class Machine:
    """Runs a cut file. `parts` holds the acts of each N, from N1 on."""

    def __init__(self, text):
        self.parts, self.unit, self.message = [], INCH_HUNDREDTH, None
        self.at = self.speed = None
        self.knife = self.pen = self.notch = False
        self.plunges = 0
        *blocks, behind = text.split("*")
        check(blocks[0] == "H1", "the file does not start with H1")
        light = re.fullmatch(r"QX(\d+)Y0", blocks[-2])
        check(blocks[-4:-2] == ["D2", "M15"] and light and blocks[-1] == "M0" and not behind,
              f"the file ends with {blocks[-4:]}{behind}")
        self.occupied = int(light[1])
        rest = iter(blocks[1:-2])
        for block in rest:
            self.run(block, rest)
        check(self.plunges == 0, "the last plunge cuts nothing")

    def run(self, block, rest):
        match = BLOCK.fullmatch(block)
        check(block and match, f"no block: {block!r}")
        number = int(match[2] or -1)
        if match[1] == "N":
            check(number == len(self.parts) + 1, f"N{number} behind N{len(self.parts)}")
            check(not self.knife and self.plunges == 0, f"a cut is under way at {block}")
            self.parts.append([])
            self.notch, self.speed = False, None
        elif match[1] == "M":
            self.command(number, match, rest)
        elif block == "G71":
            check(self.at is None, "the unit changes behind the first coordinate")
            self.unit = MILLIMETRE_TENTH
        else:
            check(match[1] is None or block in ("D1", "D2"), f"unknown command {block}")
            self.pen = block == "D1" if match[1] else self.pen
        check(not self.knife or not self.pen, "knife and pen are down")
        if match[3]: # a command comes before the movement of its block
            self.move((int(match[3]), int(match[4])))

    def command(self, number, match, rest):
        if number == 14:
            self.plunges += not self.knife
            self.knife, self.notch = True, False
        elif number == 15:
            self.knife = False
        elif number == 19:
            self.notch = True
        elif number in SPEEDS.values():
            self.speed = number
        else:
            check(number in (20, 31, 43, 44, 69, 70), f"unknown command M{number}")
            check(not self.knife and not self.pen, f"a tool is down at M{number}")
            if number == 20:
                check(not self.parts and self.message is None, "a message among the pieces")
                self.message = next(rest)
            elif number == 31:
                place = match if match[3] else BLOCK.fullmatch(next(rest))
                check(place and place[3], "a label without a place")
                self.at = (int(place[3]), int(place[4]))
                self.act("label", word=next(rest))
            elif number == 69:
                self.act("advance")
            elif number != 70:
                self.act("hole", word=f"M{number}")

    def act(self, kind, to=None, **named):
        check(self.parts and self.at, f"{kind} in front of the first N or from nowhere")
        self.parts[-1].append(Act(kind, self.at, to or self.at, **named))

    def move(self, to):
        if self.knife and to != self.at:
            self.act("cut", to, plunges=self.plunges, notch=self.notch, speed=self.speed)
            self.plunges = 0
        elif self.pen:
            self.act("pen", to)
        self.at = to


def points(data):
    numbers = [float(word) for word in re.split(r"[ML,\s]+", data) if word]
    return list(zip(numbers[::2], numbers[1::2]))


def steps(path):
    corners = points(path.text)
    return list(enumerate(zip(corners, corners[1:]), 1))


class Comparison:
    """What a file has to make of a document with these settings."""

    def __init__(self, settings, unit):
        self.settings, self.unit = settings, unit
        self.notches, self.internals = settings["CutOrderCrans"], settings["CutInternalOrder"]
        self.scale = [float(settings.get(name, 100)) / 100 for name in ("CutScaleX", "CutScaleY")]

    def on(self, name):
        return self.settings.get(name) == "true"

    def near(self, place, point):
        """Half a unit, and what seven decimals of the document leave open."""
        return all(abs(number * self.unit - factor * wanted) <= self.unit / 2 + 2e-7
                   for number, factor, wanted in zip(place, self.scale, point))

    def notch_legs(self, path):
        """The knife comes along the outline with order 1, and stays down at the tip for some."""
        stays = self.on("CutCommandM19") and (
            self.notches == "1" or (self.notches == "2" and self.on("CutCuttingEdge")))
        lifts = {1: self.notches != "1", 2: not stays, 3: self.notches == "1"}
        return [Leg("notch", *ends, lifts.get(number, False),
                    number == 1 and self.on("CutCommandM19")) for number, ends in steps(path)]

    def outline_legs(self, path, notches):
        """The outline; with the notches, if given, wherever it names a notch's base twice."""
        lifts, lifted = path.get("LiftPlunge", "").split(), True
        for number, (start, end) in steps(path):
            lifted = lifted or str(number) in lifts
            if start != end:
                yield Leg("outline", start, end, lifted)
                lifted = False
            elif notches and points(notches[0].text)[0] == start:
                yield from self.notch_legs(notches.pop(0))
                lifted = True

    def legs(self, piece):
        """The cuts of an object, in order."""
        internal, notch, outline = (piece.findall(f"path[@t='{kind}']")
                                    for kind in ("internal", "notch", "outline"))
        lines = [Leg("internal", *ends, number == 1) for p in internal for number, ends in steps(p)]
        slits = [leg for path in notch for leg in self.notch_legs(path)]
        during = notch if self.notches == "1" else []
        around = [leg for path in outline for leg in self.outline_legs(path, during)]
        check(not during, "the outline of the document does not name a notch's base twice")
        return (lines * (self.internals == "1") + slits * (self.notches == "2") + around +
                slits * (self.notches == "3") + lines * (self.internals == "2"))

    def check_cuts(self, acts, legs, speed=None):
        lifted, cuts = False, iter(acts)
        cut = next(cuts, None)
        for leg in legs:
            lifted = lifted or leg.lifted
            if cut and self.near(cut.start, leg.start) and self.near(cut.end, leg.end):
                # A waste cut in two halves goes down in each of them.
                check(cut.plunges == lifted or (leg.kind == "waste" and cut.plunges == 2),
                      f"{cut.plunges} plunges in front of {leg}")
                check(cut.notch == leg.notch, f"M19 is {cut.notch} at {leg}")
                check(leg.kind != "outline" or cut.speed == speed, f"speed {cut.speed} at {leg}")
                lifted, cut = False, next(cuts, None)
            else:
                short = all(abs(a - b) * factor <= self.unit
                            for a, b, factor in zip(leg.start, leg.end, self.scale))
                check(short, f"{leg} is not cut, but {cut}")
        check(not cut, f"{cut} is in no document")

    def check_holes(self, acts, holes):
        check(len(acts) == len(holes) and all(
            act.word == tool and self.near(act.end, place)
            for act, (tool, place) in zip(acts, holes)), f"holes {acts} in place of {holes}")

    def check_piece(self, acts, piece, advances):
        kinds = [act.kind for act in acts]
        check(kinds == sorted(kinds, key=ACTS.index), "acts of a piece out of order")
        of = {kind: [act for act in acts if act.kind == kind] for kind in ACTS}
        check(len(of["advance"]) == advances, f"{len(of['advance'])} frame advances")

        label = piece.get("label")
        check([act.word for act in of["label"]] == [label] * (label is not None),
              f"{of['label']} in place of {label}")
        for act in of["label"]:
            check(len(act.word) <= 36, f"long label {act.word}")
            check(self.near(act.end, (float(piece.get("centreX")), float(piece.get("centreY")))),
                  f"place of {act}")

        self.check_holes(of["hole"], [
            (path.get("t") if self.on("PunchUserTool") else "M43", points(path.get("drill"))[0])
            for path in piece.findall("path[@drill]")])
        self.check_cuts(of["cut"], self.legs(piece), SPEEDS[piece.get("velocity")])

        check(bool(of["pen"]) == (piece.find("text") is not None), "pen texts")
        corners = [p for path in piece.findall("path[@t='outline']") for p in points(path.text)]
        for act in of["pen"]:
            for place, axis, factor in zip(act.end, zip(*corners), self.scale):
                check(min(axis) * factor - self.unit <= place * self.unit <=
                      max(axis) * factor + self.unit, f"{act} beside the piece")

    def check_file(self, machine, name, document):
        check(machine.unit == self.unit, f"the unit is {machine.unit} cm")
        length, width = float(document.get("tissuL")), float(document.get("tissuW"))
        check(self.near((machine.occupied, 0), (length, 0)), f"light spot at {machine.occupied}")
        message = f"{name}/L={length:.2f}/W={width:.2f}" if self.on("CutCommandM20") else None
        check(machine.message == message, f"message {machine.message}, not {message}")

        advances = {child: int(after.tag == "M69")
                    for child, after in zip(document, list(document)[1:])}
        jobs = [partial(self.check_holes, holes=[
            (outer.get("outil"), (float(circle.get("cx")), float(circle.get("cy"))))])
                for outer in document.findall("external") for circle in outer]
        jobs += [partial(self.check_piece, piece=piece, advances=advances.get(piece, 0))
                 for piece in document.findall("object")]
        for scrap in document.findall("scrap"):
            ends = [point for cut in scrap for point in points(cut.text)]
            jobs.append(partial(self.check_cuts, legs=[
                Leg("waste", *pair, True) for pair in zip(ends[::2], ends[1::2])]))
        check(len(machine.parts) == len(jobs), f"{len(machine.parts)} numbers, not {len(jobs)}")
        for number, (job, acts) in enumerate(zip(jobs, machine.parts), 1):
            try:
                job(acts)
            except Fault as fault:
                raise Fault(f"N{number}: {fault}") from fault


class Host:
    def __init__(self, program, folder):
        self.program, self.folder, self.seen = program, folder, set()
        self.environment = {**os.environ, "LC_ALL": "C", "HOME": str(folder),
                            "XDG_CONFIG_HOME": str(folder)}

    def call(self, plugins, settings, *arguments):
        for name, value in settings:
            arguments += ("--set", f"{name}={value}")
        return subprocess.run([self.program, "--plugins", str(plugins), *arguments],
                              env=self.environment, capture_output=True, check=False)

    @lru_cache(maxsize=None)
    def documents(self, plugins, marker, fabric, settings):
        """The documents of a fabric: its own, then those of the blocks."""
        found = []
        while not found or ("MiniCutFileBlock", "true") in settings:
            block = ("--block", str(len(found))) if found else ()
            result = self.call(plugins, settings, "svg", str(marker), "--for", "ansi", "--fabric",
                               str(fabric), *block)
            if found and b"there is no document of a block" in result.stderr:
                break
            check(result.returncode == 0, f"svg: {result.stderr.decode()}")
            found.append(ElementTree.fromstring(re.sub(rb' xmlns="[^"]*"', b"", result.stdout)))
        return found

    def check_run(self, run):
        """The first fault of a run, if it has one."""
        number, plugins, unit, marker, settings = run
        # The document does not depend on these.
        key = tuple((name, value) for name, value in settings.items() if name not in (
            "CutCommandM19", "CutCommandM20", "PunchUserTool", "CutCuttingEdge", "CutScaleY"))
        name = ""
        try:
            result = self.call(plugins, settings.items(), "export", str(marker), "--format",
                               "cut_ansi", "-o", str(self.folder / str(number)), "--json")
            check(result.returncode == 0, f"export: {result.stderr.decode()}")
            files = [Path(entry["path"]) for entry in json.loads(result.stdout)["files"]]
            fabrics = range(1, len(json.loads(marker.read_text())["fabrics"]) + 1)
            documents = [d for f in fabrics for d in self.documents(plugins, marker, f, key)]
            check(len(files) == len(documents), f"{len(files)} files, {len(documents)} documents")
            for path, document in zip(files, documents):
                name, block = path.stem, document.get("block_index")
                main = main if block else name
                # A name that begins with Zent does not tell the block, so that it is taken.
                suffix = "" if not block else (
                    f" ({int(block) + 1})" if main.startswith("Zent") else f"Blk{block}")
                check(name == main + suffix, f"not {main}{suffix}")
                machine = Machine(path.read_bytes().decode("utf-8"))
                Comparison(settings, unit).check_file(machine, name, document)
                self.seen |= {(act.kind, act.word if act.kind == "hole" else "")
                              for acts in machine.parts for act in acts}
        except Fault as fault:
            return f"{marker.name}, {name}, {settings}: {fault}"
        return None


def pierced(marker, folder):
    """A copy of a marker whose pieces have holes beside them as well."""
    def pierce(node):
        for value in node.values() if isinstance(node, dict) else node:
            if isinstance(value, (dict, list)):
                pierce(value)
        if isinstance(node, dict) and "internalPoints" in node:
            right = max(p["x"] if isinstance(p, dict) else p[0] for p in node["contour"])
            node["internalPoints"].append({"x": right + 1, "y": 9, "type": "punch"})

    tree = json.loads(marker.read_text())
    pierce(tree)
    copy = folder / marker.name
    copy.write_text(json.dumps(tree))
    return copy


def runs(plugins, folder):
    """Every order of notches and lines with and without M19, the rest by lot, always the same."""
    lot = random.Random(173)
    metric = folder / "metric"
    shutil.copytree(plugins, metric)
    dialects = metric / "io" / "CutFileConfig"
    shutil.copy(dialects / "ANSI-millimetres.xml", dialects / "ANSI.xml")
    markers = [SAMPLES / "trousers.mar", pierced(SAMPLES / "tshirt.mar", folder)]
    for number in range(50):
        settings = {**CONTENTS[number % len(CONTENTS)], "CutOrderCrans": str(number % 4),
                    "CutInternalOrder": str(number // 4 % 3),
                    "CutCommandM19": ("false", "true")[number // 12 % 2]}
        for name in ("CutCommandM20", "PunchUserTool", "CutCuttingEdge"):
            settings[name] = lot.choice(("false", "true"))
        if lot.choice((False, True)):
            settings.update({"CutScaleX": "98.5", "CutScaleY": "101"})
        yield ((number, plugins, INCH_HUNDREDTH, markers[number // 24], settings) if number < 48
               else (number, metric, MILLIMETRE_TENTH, markers[number % 2], settings))


def main():
    program, plugins = (Path(argument).resolve() for argument in sys.argv[1:])
    with tempfile.TemporaryDirectory() as folder:
        host = Host(program, Path(folder))
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            faults = list(filter(None, pool.map(host.check_run, runs(plugins, Path(folder)))))
    missing = {("label", ""), ("cut", ""), ("hole", "M43"), ("hole", "M44"),
               ("advance", "")} - host.seen
    if missing and not faults:
        faults = [f"no run has {missing}"]
    print("\n".join(faults) or "every cut file is as its document")
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main())
