#!/usr/bin/env python3
"""Random reports of the printer beside this, converted by their recipes: what comes out must equal the truth.

  tests/printer/printer_test.py --program build-dev/bin/quillon                          two of each kind
  tests/printer/printer_test.py --program build-dev/bin/quillon --seed 100 --count 10000 many
"""

import argparse
import csv
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

from layouts import KINDS
from print_reports import print_layout


def rows_of(path):
    """Cells of a CSV; None if there is no such file."""
    if not path.exists():
        return None
    with path.open(encoding="utf-8-sig", newline="") as file:
        return list(csv.reader(file))


def wanted(path):
    """The truth as a tidy table writes it: names without the sign of what is carried."""
    rows = rows_of(path)
    return [[name.lstrip("^") for name in rows[0]], *rows[1:]]


def first_difference(got, want):
    """Nothing if both are equal."""
    if got is None:
        return "no output"
    for i, (a, b) in enumerate(zip(got, want), 1):
        if a != b:
            return f"row {i}: {a} for {b}"
    return "" if len(got) == len(want) else f"{len(got)} rows for {len(want)}"


def convert(program, folder, report):
    """Converts a report of a layout's folder. Gives the CSV's path and what was said."""
    out = folder / "out" / f"{report}.csv"
    out.parent.mkdir(exist_ok=True)
    done = subprocess.run([program, "convert", folder / f"{report}.txt", "-o", out, "--recipe", folder / "recipe.rcp"],
                          capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=120)
    return out, done


def faults(program, folder, report):
    """What is wrong with a converted report: a text for each sheet that differs."""
    out, done = convert(program, folder, report)
    found = [] if done.returncode == 0 else [f"status {done.returncode}: {done.stderr.strip()}"]
    for truth in sorted(folder.glob(f"{report}.csv")) + sorted(folder.glob(f"{report}-*.csv")):
        difference = first_difference(rows_of(out.parent / truth.name), wanted(truth))
        if difference:
            found.append(f"{truth.name}: {difference}")
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=len(KINDS) * 2)
    parser.add_argument("--kind", action="append", choices=KINDS)
    parser.add_argument("--show", type=int, default=10, help="so many faults are told whole")
    options = parser.parse_args()
    kinds = options.kind or list(KINDS)
    done, bad = Counter(), Counter()
    for i in range(options.count):
        kind, seed = kinds[i % len(kinds)], options.seed + i
        with tempfile.TemporaryDirectory() as folder:
            folder = print_layout(kind, seed, 1, Path(folder))
            found = faults(options.program, folder, "report") + faults(options.program, folder, "month_01")
        done[kind] += 1
        bad[kind] += 1 if found else 0
        if found and sum(bad.values()) <= options.show:
            print(f"{kind}_{seed}: " + "\n    ".join(found))
    for kind in kinds:
        print(f"{kind:<11} {done[kind] - bad[kind]} of {done[kind]} equal the truth")
    sys.exit(1 if bad.total() else 0)


if __name__ == "__main__":
    main()
