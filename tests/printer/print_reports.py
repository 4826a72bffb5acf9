#!/usr/bin/env python3
"""Prints random tables as reports, each with a recipe that fits and with what it should become.

  tests/printer/print_reports.py --seed 7 --count 20 --out FOLDER                  all kinds by turns
  tests/printer/print_reports.py --seed 7 --count 20 --out FOLDER --kind pages     one kind; --list names them
  tests/printer/print_reports.py --seed 7 --count 1 --out FOLDER --months 12       and the next months of each layout

Each layout gets a folder KIND_SEED with recipe.rcp, report.txt, report.csv (report-NAME.csv for each further sheet) and,
by month, month_01.txt, month_01.csv and so on: the same layout with other values. facts.json tells the sheets and, of
each report, its lines by kind and its printed totals. In a CSV the first row names the columns; a name that begins with ^
is that of a value which isn't on the record's own line, but carried from a heading or from a row above.

The same seed, kind and month always give the same bytes.
"""

import argparse
import csv
import json
import random
from collections import Counter
from pathlib import Path

from layouts import KINDS


def write_truth(path, sheet):
    with path.open("w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(sheet.names)
        writer.writerows(sheet.rows)


def print_layout(kind, seed, months, folder):
    """Prints one layout into the folder."""
    folder.mkdir(parents=True, exist_ok=True)
    layout = KINDS[kind](random.Random(f"{kind} {seed}"))
    (folder / "recipe.rcp").write_text("\n".join(layout.recipe()) + "\n", encoding="utf-8")
    facts = {"kind": kind, "seed": seed, "reports": {}}
    for month in range(months + 1):
        paper, sheets = layout.print(random.Random(f"{kind} {seed} {month}"), month)
        name = f"month_{month:02d}" if month else "report"
        (folder / f"{name}.txt").write_bytes(paper.text(layout.end).encode("utf-8"))
        for sheet in sheets:
            write_truth(folder / (f"{name}-{sheet.name}.csv" if sheet.name else f"{name}.csv"), sheet)
        facts["sheets"] = [sheet.name for sheet in sheets]
        written = Counter(k for k, line in zip(paper.kinds, paper.lines) if line.strip())
        facts["reports"][name] = {"rows": sum(len(sheet.rows) for sheet in sheets), "lines": dict(sorted(written.items()))}
    (folder / "facts.json").write_text(json.dumps(facts, indent=1) + "\n", encoding="utf-8")
    return folder


def print_all(seed, count, out, kinds, months):
    """Prints `count` layouts, the kinds by turns, and returns their folders."""
    chosen = kinds or list(KINDS)
    folders = []
    for i in range(count):
        kind = chosen[i % len(chosen)]
        folders.append(print_layout(kind, seed + i, months, out / f"{kind}_{seed + i}"))
    return folders


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=len(KINDS))
    parser.add_argument("--out", type=Path)
    parser.add_argument("--kind", action="append", choices=KINDS)
    parser.add_argument("--months", type=int, default=0)
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    if options.list or options.out is None:
        print("\n".join(f"{name:<11} {kind.__doc__.splitlines()[0]}" for name, kind in KINDS.items()))
        return
    print_all(options.seed, options.count, options.out, options.kind, options.months)


if __name__ == "__main__":
    main()
