"""A second reader of cut documents: works out from a marker's JSON, with nothing of the program's,
what the documents that `kivhost svg` prints have to hold, for the samples and for random markers.

    check_cut_documents.py KIVHOST                all, as the tests do
    check_cut_documents.py KIVHOST FILE.mar...    these markers
    check_cut_documents.py KIVHOST --seed N       one random marker, which is kept

A fault is told with the marker, the property and the call that shows it."""

import json
import math
import os
import random
import subprocess
import sys
import tempfile
from collections import Counter
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path
from xml.etree.ElementTree import ParseError

from cut_properties import (CUTS, LABELS, PAIRED, covers_cloth, labels_lie_as_pieces_are_cut,
                            told_out_of_range, what_is_out_of_range_is_told)
from cut_reading import NEAR, Document, Laid
from random_markers import random_marker

ROOT = Path(__file__).resolve().parents[2]
EASTMAN = {"CutNotchSize", "CutOrderCrans", "CutInternalOrder", "CutBlocking", "CutFusing",
           "MiniCutFileBlock"}
DEFAULTS = {
    "CutNotchSize": 0.5, "CutOrderCrans": 2, "CutInternalOrder": 1, "EastCutInternalOrder": 1,
    "ReducePointsTolerance": 0.05, "EastCutTypeDrill": 2, "CutInterPointsFreq": 50,
    "CutFabricEdgeSpacing": 50, "CutFabricEdgeLength": 10,
    "CutLength": 180, "CutThresholdAdvance": 120, "CutScaleX": 100, "CutScaleY": 100,
    "EastCutScaleX": 100, "EastCutScaleY": 100, "EastCutNotchSize": 0.5, "EastCutOrderCrans": 2}
RANDOM = 200
SEEN = {  # no run is worth anything that has not met all of these
    "piece", "joined", "rough", "blocks with a document", "labels", "bases that stand twice",
    "notch at the start", "simpleNotch", "doubleNotch", "vNotch", "userNotch", "internal lines",
    "intermediate points", "sharp corners", "M43", "M44", "holes outside", "frames", "waste cuts",
    "rough outlines beside others", "pen texts", "M31", "refused, frames", "refused, range",
    "scaled", "labels in cutting order", "notches gathered", "short notches",
    "beyond the lower edge of the fabric", "beyond the upper edge of the fabric",
    "beyond the start of the fabric", "beyond the start of the next layer", "refused, start",
    "holes left out: in a piece", "holes left out: elsewhere", "frames that start with nothing",
    "gaps of rough outlines"}


class Run:
    """One call of the program and what is expected of it."""

    def __init__(self, call, marker, path, fabric, kind, settings):
        self.kind, self.settings, self.seen, self.pairs = kind, settings, Counter(), None
        self.laid = Laid(marker, fabric, settings.get("plot_spaceLayers", 0))
        self.scale = (1, 1) if kind != "eastman" else (
            self.asked("EastCutScaleX") / 100, self.asked("EastCutScaleY") / 100)
        self.arguments = ["svg", path, "--fabric", str(fabric), "--for", kind]
        for name, value in settings.items():
            self.arguments += ["--set", f"{name}={str(value).lower()}"]
        self.call = call
        self.status, self.out, self.err = call(self.arguments)
        self.documents = []

    def read(self):
        """Every document of the fabric can be read."""
        if self.status == 0:
            counted = bool(self.asked("CutOrderCrans")), bool(self.asked("CutInternalOrder"))
            documents = [Document(self.out, self.scale, *counted)]
            for block in range(1, len(self.expected()) + (len(self.expected()) > 1)):
                status, out, err = self.call(self.arguments + ["--block", str(block)])
                assert (status == 0) == (block < len(self.expected())), f"block {block}: {err}"
                documents += [Document(out, self.scale, *counted)] if status == 0 else []
            self.documents = documents

    def asked(self, name):
        if self.kind == "labels" and name in ("CutBlocking", "CutFusing"):
            return 0
        if self.kind == "eastman" and name == "CutCommandM69":
            return False
        name = "East" + name if self.kind == "eastman" and name in EASTMAN else name
        return self.settings.get(name, DEFAULTS.get(name, False))

    def machine_scale(self):
        return 1 if self.kind == "eastman" else self.asked("CutScaleX") / 100

    def tolerance(self):
        return self.asked("ReducePointsTolerance") if self.asked("ReducePoints") else 0

    def see(self, what, count=1):
        self.seen[what] += count

    def expected(self):
        """For each document what its objects are: kind and pieces."""
        main, blocks = [], []
        for group in self.laid.groups:
            several, fusing = len(group) > 1, self.asked("CutFusing")
            rough = fusing == 2 if several else self.asked("CutBlocking")
            rough = rough and any(map(covers_cloth, group))
            main += [("rough", group)] if rough else []
            if several and self.asked("MiniCutFileBlock"):
                blocks.append([("piece", [piece]) for piece in group])
            elif not rough and several and fusing == 1:
                main.append(("joined", group))
            elif not rough:
                main += [("piece", [piece]) for piece in group]
        return [main] + blocks


def refused_with_the_reason(run, calm):
    """A call is refused for a piece out of range or one that no frame can hold, by name."""
    names = [told[0] for told in told_out_of_range(run)] if run.kind == "ansi" else []
    run.see("refused, range", bool(names))
    if not names and run.asked("CutCommandM69"):
        for kind, pieces, found, _ in (calm.pairs if calm else None) or ():
            length = run.asked("CutLength") / run.machine_scale() / run.scale[0]
            fault = ("cm long; the cutter reaches"
                     if found.reach[2] - found.reach[0] > length + 2 * NEAR else
                     "cm before the first frame" if found.reach[0] < -2 * NEAR else None)
            if fault:
                names += [piece.name for piece in pieces]
                assert fault in run.err, f"not told: {pieces[0].name} {fault}"
                run.see("refused, " + ("frames" if "long" in fault else "start"))
    assert (run.status == 1) == bool(names), f"status {run.status}, expected faults of {names}"
    if names:
        assert not run.out, "a refused document is printed"
        assert all(f'"{name}"' in run.err for name in names), f"{names} not named: {run.err}"


def same_text_again(run):
    """Whatever the order of hash tables and the language."""
    again = run.call(run.arguments, QT_HASH_SEED="77", LC_ALL="de_DE.UTF-8")
    assert (run.status, run.out) == again[:2], "another text in a second run"


def scale_changes_coordinates_alone(run, full):
    for scaled, whole in zip(run.documents, full.documents):
        for name in "tissuL", "tissuW":
            assert scaled.root.get(name) == whole.root.get(name), name
        assert [n[:2] for n in scaled.numbers] == [n[:2] for n in whole.numbers], "other elements"
        for (name, axis, a), (_, _, b) in zip(scaled.numbers, whole.numbers):
            assert abs(float(a) - run.scale[axis] * float(b)) <= NEAR, f"{name} {a}, whole {b}"
        run.see("scaled")


class Case:
    """A fabric of a marker with the calls that are made for it."""

    def __init__(self, program, marker, path, fabric):
        self.program, self.marker, self.path, self.fabric = program, marker, path, fabric
        self.seen, self.faults = Counter(), []

    def call(self, arguments, **environment):
        done = subprocess.run([self.program, *arguments], capture_output=True, check=False,
                              text=True, encoding="utf-8", env={**os.environ, **environment})
        return done.returncode, done.stdout, done.stderr

    def expect(self, check, run, *arguments):
        try:
            check(run, *arguments)
        except (AssertionError, ParseError) as fault:
            self.faults.append(f"{check.__name__}: {fault}\n"
                               f"    kivhost {' '.join(map(str, run.arguments))}")

    def check(self, kind, settings):
        run, calm = Run(self.call, self.marker, self.path, self.fabric, kind, settings), None
        self.expect(Run.read, run)
        self.expect(what_is_out_of_range_is_told, run)
        if run.status and run.asked("CutCommandM69") and not told_out_of_range(run):
            calm = self.check(kind, {**settings, "CutCommandM69": False})
        self.expect(refused_with_the_reason, run, calm)
        if run.documents:
            for check in LABELS if kind == "labels" else CUTS:
                if run.pairs is not None or check not in PAIRED:
                    self.expect(check, run)
        self.seen += run.seen
        run.seen.clear()
        return run

    def check_labels(self, settings):
        run = self.check("labels", settings)
        cut = Run(self.call, self.marker, self.path, self.fabric, "ansi", {
            **settings, "CutBlocking": False, "CutFusing": 0, "CutLabelM31": True})
        self.expect(Run.read, cut)
        self.expect(labels_lie_as_pieces_are_cut, run, cut)
        self.seen += run.seen


def varied(rng, kind):
    """Settings of a run, those of a fresh installation left out."""
    def pick(*values):
        return rng.choice(values)
    east = "East" if kind == "eastman" else ""
    settings = {
        "ReducePoints": rng.random() < 0.3, "ReducePointsTolerance": pick(0.01, 0.05, 0.3, 1),
        "CutInterPoints": rng.random() < 0.3, "CutInterPointsFreq": pick(12.7, 20, 50),
        "CutLabelM31": pick(True, False), "PenCutInfos": pick(True, False),
        "plot_pieceInfoLetterSize": pick(10, 18, 36), "plot_spaceLayers": pick(0, 3, 12.5),
        "CutFabricEdge": pick(True, False), "CutFabricEdgeSpacing": pick(3, 10, 17.3),
        "CutFabricEdgeLength": pick(5, 20, 100), "CutExternalPunchHoles": pick(True, True, False),
        "CutExternalPunchHoleTool": pick(0, 1), "CutCommandM69": rng.random() < 0.5,
        "CutLength": pick(45, 80, 180), "CutThresholdAdvance": pick(5, 40, 120),
        east + "CutNotchSize": pick(0, 0.3, 0.5, 2), east + "CutOrderCrans": pick(0, 1, 2, 3),
        east + "CutInternalOrder": pick(0, 1, 2),
        east + "CutBlocking": rng.random() < 0.3, east + "CutFusing": pick(0, 1, 2),
        east + "MiniCutFileBlock": rng.random() < 0.3,
        **({"EastCutScaleX": pick(97.5, 100), "EastCutScaleY": pick(98, 100),
            "EastCutTypeDrill": pick(0, 1, 2, 5)} if east else {"CutScaleX": pick(99, 100)})}
    return {name: value for name, value in settings.items() if value != DEFAULTS.get(name, 0)}


def check_fabric(program, marker, path, fabric, seed, runs):
    rng, case = random.Random(seed), Case(program, marker, path, fabric)
    for index in range(runs):
        run = case.check("ansi", varied(rng, "ansi"))
        if (seed + index) % 3 == 0:
            case.expect(same_text_again, run)
            case.check_labels(run.settings)
        else:
            settings = varied(rng, "eastman")
            run = case.check("eastman", settings)
            full = {**settings, "EastCutScaleX": 100, "EastCutScaleY": 100, "CutCommandM69": False}
            case.expect(scale_changes_coordinates_alone, run, case.check("eastman", full))
            case.seen += run.seen
    return case.seen, case.faults


def check_file(program, path):
    marker, seen, faults = json.loads(Path(path).read_text(encoding="utf-8")), Counter(), []
    for fabric in range(1, len(marker["fabrics"]) + 1):
        found = check_fabric(program, marker, str(path), fabric, fabric, 6)
        seen, faults = seen + found[0], faults + found[1]
    return seen, faults


def check_random(program, folder, seed):
    marker, path = random_marker(seed), Path(folder) / f"random-{seed}.mar"
    path.write_text(json.dumps(marker), encoding="utf-8")
    return check_fabric(program, marker, str(path), len(marker["fabrics"]), seed, 1)


def main():
    program, *rest = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder, ProcessPoolExecutor(2) as pool:
        os.environ["XDG_CONFIG_HOME"] = folder  # the user's own settings take no part
        if rest[:1] == ["--seed"]:
            jobs = [pool.submit(check_random, program, ".", int(seed)) for seed in rest[1:]]
        else:
            files = rest or sorted((ROOT / "Samples").glob("*.mar"))
            jobs = [pool.submit(check_file, program, path) for path in files]
        if not rest:
            jobs += [pool.submit(check_random, program, folder, seed) for seed in range(RANDOM)]
        seen, faults = Counter(), []
        for job in jobs:
            found = job.result()
            seen, faults = seen + found[0], faults + found[1]
    print(*(f"{count:7} {what}" for what, count in sorted(seen.items())), sep="\n")
    if not rest:
        faults += [f"nothing tested: {what}" for what in sorted(SEEN - set(seen))]
    print(*faults, f"{len(faults)} faults", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
