#!/usr/bin/env python3
"""Writes the sample markers tshirt.mar and trousers.mar beside this script.

    python3 make_samples.py           rewrites both
    python3 make_samples.py --check   exits with 1 if a file differs from what would be written

The modules in generator/ draft and lay out the markers; the same files come out each time.
"""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the check runs in source trees that must stay clean

from generator import trousers, tshirt  # noqa: E402
from generator.layout import check  # noqa: E402
from generator.marker import marker_text  # noqa: E402

SAMPLES = {"tshirt.mar": tshirt, "trousers.mar": trousers}


def main():
    parser = argparse.ArgumentParser(description="Writes the sample markers beside this script.")
    parser.add_argument("--check", action="store_true", help="compare only, exit with 1 if stale")
    compare_only = parser.parse_args().check

    markers = {name: sample.marker() for name, sample in SAMPLES.items()}
    for marker in markers.values():
        check(marker)

    stale = False
    for name, marker in markers.items():
        content = marker_text(marker).encode("utf-8")
        path = Path(__file__).resolve().parent / name
        if not compare_only:
            path.write_bytes(content)
        elif not path.exists() or path.read_bytes() != content:
            stale = True
            print(f"{path}: differs from what make_samples.py writes", file=sys.stderr)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
