#!/usr/bin/env python3
"""Exports a marker onto disks with too little room: none at all, some, and enough.

    full_disk.py KIVHOST

Needs to mount a small file system; where that is refused it exits with 77, which skips the test.
An export must either be there whole, or fail with one sentence that names the file and the cause,
leave the old file as it was, and leave nothing else behind.
"""

import json
import os
import subprocess
import sys
import tempfile

PAGE = 4096
DISK = 64 * PAGE
OLD = b"the old file\n"
LONGEST_TEXT = 10000
MARKER = {  # its report takes five pages
    "format": "kiv-marker",
    "version": 1,
    "summary": {"keywords": "k" * LONGEST_TEXT, "comments": "c" * LONGEST_TEXT},
    "layers": [{"name": "A"}],
    "fabrics": [{"name": "Shell", "layers": [{"width": 100}], "pieces": [
        {"name": "Front", "style": 1,
         "sizes": [{"number": 1, "contour": [[0, 0], [10, 0], [0, 10]]}]}]}],
    "styles": [{"name": "Tee", "sizes": [{"number": 1, "name": "M"}],
                "garments": [{"fabric": 1, "layer": 1, "quantities": [1]}]}],
}


def fill(directory, free):
    """Takes all room on the disk but `free` bytes."""
    stat = os.statvfs(directory)
    with open(os.path.join(directory, "filler"), "wb") as filler:
        filler.write(b"f" * max(0, stat.f_bavail * stat.f_frsize - free))


def contents(directory):
    return sorted(os.path.relpath(os.path.join(folder, name), directory)
                  for folder, folders, files in os.walk(directory) for name in folders + files)


def check(host, marker, disk, free):
    name = os.path.splitext(os.path.basename(marker))[0] + ".txt"
    folder = os.path.join(disk, "kiv_txt")
    target = os.path.join(folder, name)
    os.mkdir(folder)
    with open(target, "wb") as old:
        old.write(OLD)
    fill(disk, free)
    before = contents(disk)

    run = subprocess.run([host, "export", marker, "--format", "kiv_txt", "-o", disk],
                         capture_output=True, text=True, timeout=60, check=False)

    with open(target, "rb") as file:
        now = file.read()
    assert contents(disk) == before, f"left behind: {contents(disk)}"
    if run.returncode == 0:
        assert len(now) > 2 * LONGEST_TEXT and f"{len(now)} bytes" in run.stdout, run
        return "written"
    assert run.returncode == 1, run
    assert now == OLD, "the old file was changed"
    assert run.stdout == "", run.stdout
    sentences = {f"kivhost: {target}: was not written: No space left on device\n",
                 f"kivhost: {folder}: the directory cannot be written: No space left on device\n"}
    assert run.stderr in sentences, run.stderr
    return "refused"


def check_all(host, marker):
    outcomes = []
    for pages in (0, 1, 2, 3, 8, 32):
        with tempfile.TemporaryDirectory() as disk:
            mount = subprocess.run(
                ["mount", "-t", "tmpfs", "-o", f"size={DISK}", "kivhost-test", disk],
                capture_output=True, text=True, check=False)
            if mount.returncode != 0:
                print(f"skipped: no file system can be mounted here: {mount.stderr.strip()}")
                return 77
            try:
                outcomes.append(check(host, marker, disk, pages * PAGE))
            finally:
                subprocess.run(["umount", disk], check=True)
    print(outcomes)
    assert outcomes[0] == "refused" and outcomes[-1] == "written", outcomes
    return 0


def main():
    with tempfile.TemporaryDirectory() as directory:
        marker = os.path.join(directory, "full.mar")
        with open(marker, "w", encoding="utf-8") as file:
            json.dump(MARKER, file)
        return check_all(sys.argv[1], marker)


if __name__ == "__main__":
    sys.exit(main())
