#!/usr/bin/env python3
"""Installs the build into a directory of its own and runs the program from there.

    check_installation.py CMAKE BUILD-DIRECTORY DIRECTORY-OF-PROGRAMS
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

SAMPLE = Path(__file__).resolve().parents[2] / "Samples" / "tshirt.mar"
EXPECTED = (
    "share/applications/kivhost.desktop",
    "share/mime/packages/kivhost.xml",
    "share/icons/hicolor/scalable/apps/kivhost.svg",
    "share/icons/hicolor/48x48/apps/kivhost.png",
    "share/man/man1/kivhost.1.gz",
    "share/bash-completion/completions/kivhost",
    "share/zsh/vendor-completions/_kivhost",
    "share/kiv/samples/tshirt.mar",
)


def main():
    cmake, build, programs = sys.argv[1:]
    with tempfile.TemporaryDirectory() as directory:
        prefix = Path(directory) / "usr"
        subprocess.run(
            [cmake, "--install", build, "--prefix", prefix, "--component", "Runtime"],
            check=True, stdout=subprocess.DEVNULL)
        for name in EXPECTED:
            assert (prefix / name).is_file(), f"{name} is not installed"
        files = [path for path in prefix.rglob("*") if path.is_file()]
        assert not [path for path in files if path.suffix == ".h"], "users have no need of headers"
        for path in files:
            readable = path.stat().st_mode & 0o044 == 0o044
            assert readable, f"{path.relative_to(prefix)} is not for everybody to read"

        # The build has nothing to do with it any more: no variable, no search path leads there.
        environment = {"HOME": directory, "PATH": "/usr/bin"}
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                environment[name] = os.environ[name]
        program = prefix / programs / "kivhost"
        for path in (program, *prefix.rglob("*.so*")):
            assert build.encode() not in runtime_paths(path), f"{path.name} searches the build"
        run = subprocess.run(
            [program, "export", SAMPLE, "--format", "cut_ansi", "--format", "txt", "-o",
             Path(directory) / "out"],
            env=environment, capture_output=True, text=True)
        assert run.returncode == 0, run.stderr
        written = [line.split("\t")[0] for line in run.stdout.splitlines()]
        assert len(written) >= 2, run.stdout
        for name in written:
            assert os.path.getsize(name) > 0, f"{name} is empty"


def runtime_paths(path):
    """The lines of the dynamic section that tell where libraries are searched."""
    dump = subprocess.run(["readelf", "--dynamic", path], capture_output=True, check=True).stdout
    return b"\n".join(line for line in dump.splitlines() if b"PATH" in line)


main()
