"""Renders an Illustrator file of ours as a PNG, through Ghostscript and illustrator_prologue.ps.

    render_illustrator.py FILE.ai -o OUT.png [--size PIXELS] [--text-size PIXELS]

Fails when the file uses a word that the prologue does not define, when it leaves operands behind,
and when its groups do not match.
"""

import argparse
import os
import re
import subprocess
import sys
import tempfile

MARGIN = 60  # points around the bounding box, for what stands beside the fabric


def bounding_box(text):
    match = re.search(r"^%%BoundingBox: (-?\d+) (-?\d+) (-?\d+) (-?\d+)$", text, re.M)
    if match is None:
        sys.exit("no bounding box")
    return [int(value) for value in match.groups()]


def escaped(text):
    """The strings of the file with their parentheses and backslashes escaped, as PostScript wants
    them; the file has them as they are."""
    lines = []
    for line in text.split("\n"):
        match = re.fullmatch(r"(\d+) \((.*)\)t", line)
        if match:
            if int(match.group(1)) != len(match.group(2)):
                sys.exit(f"wrong length: {line}")
            words = re.sub(r"([\\()])", r"\\\1", match.group(2))
            line = f"{match.group(1)} ({words})t"
        lines.append(line)
    return "\n".join(lines)


def program(text, prologue, box, text_size):
    left, bottom = box[0] - MARGIN, box[1] - MARGIN
    return "\n".join([
        f"/kivTextSize {text_size} def",
        prologue,
        "gsave",
        f"{-left} {-bottom} translate",
        escaped(text),
        "grestore",
        "count 0 ne { (operands are left\\n) print /count cvx /rangecheck signalerror } if",
        "kivGroups 0 ne { (open groups\\n) print /u cvx /rangecheck signalerror } if",
        "showpage",
        "",
    ])


def render(path, out, pixels, text_size):
    with open(path, encoding="utf-8", errors="replace") as file:
        text = file.read()
    folder = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(folder, "illustrator_prologue.ps"), encoding="utf-8") as file:
        prologue = file.read()
    box = bounding_box(text)
    size = [box[2] - box[0] + 2 * MARGIN, box[3] - box[1] + 2 * MARGIN]
    scale = pixels / max(size)  # pixels of a point
    with tempfile.NamedTemporaryFile("w", suffix=".ps", encoding="latin-1",
                                     errors="replace") as page:
        page.write(program(text, prologue, box, text_size / scale))
        page.flush()
        result = subprocess.run(
            ["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m",
             "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4", f"-r{72 * scale}",
             f"-dDEVICEWIDTHPOINTS={size[0]}", f"-dDEVICEHEIGHTPOINTS={size[1]}", "-dFIXEDMEDIA",
             f"-sOutputFile={out}", page.name],
            capture_output=True, text=True, check=False)
    if result.returncode != 0 or result.stdout or result.stderr:
        sys.exit((result.stdout + result.stderr).strip() or "Ghostscript failed")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("file")
    parser.add_argument("-o", "--output", required=True)
    parser.add_argument("--size", type=int, default=1600,
                        help="of the picture's longer side, in pixels")
    parser.add_argument("--text-size", type=float, default=10, help="of all texts, in pixels")
    arguments = parser.parse_args()
    render(arguments.file, arguments.output, arguments.size, arguments.text_size)


if __name__ == "__main__":
    main()
