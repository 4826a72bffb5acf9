#!/usr/bin/env python3
"""Random reports, read by recipes that fit and by recipes broken on purpose: `check` must not say that nothing is lost
while records are missing, and must not take offence at a recipe that fits.

  tests/printer/honesty_test.py --program build-dev/bin/quillon                a short run
  tests/printer/honesty_test.py --program build-dev/bin/quillon --count 1500 --table   many, with a table by kind of break

A record is missing if the cells of its own line don't come out as one row.
"""

import argparse
import csv
import random
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

import broken_recipes
from layouts import KINDS


BLOCKS = ("plain", "groups", "pages", "negatives", "bare", "touching", "side")


def read_csv(path):
    with path.open(encoding="utf-8-sig", newline="") as file:
        return list(csv.reader(file))


def records(rows, names):
    """How often each record comes, by the cells that have one of these names."""
    if not rows:
        return Counter()
    own = [i for i, name in enumerate(rows[0]) if name in names]
    return Counter(tuple(row[i] for i in own) for row in rows[1:])


def missing(folder, sheets):
    """How many records of the truth don't come out."""
    lost = 0
    for sheet in sheets:
        own = [name for name in sheet.names if not name.startswith("^")]
        want = records([[name.lstrip("^") for name in sheet.names], *sheet.rows], own)
        path = folder / (f"out-{sheet.name}.csv" if sheet.name else "out.csv")
        lost += (want - records(read_csv(path) if path.exists() else [], own)).total()
    return lost


def run(program, *arguments):
    return subprocess.run([program, *arguments], capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=120)


def ask(program, folder, recipe, sheets):
    """Missing records, what check says last, all it says, and its exit status."""
    (folder / "recipe.rcp").write_text(recipe, encoding="utf-8")
    for old in folder.glob("out*.csv"):
        old.unlink()
    run(program, "convert", "-q", folder / "report.txt", "-o", folder / "out.csv", "--recipe", folder / "recipe.rcp")
    checked = run(program, "check", folder / "report.txt", "--recipe", folder / "recipe.rcp")
    lines = checked.stdout.strip().splitlines() or [checked.stderr.strip()]
    return missing(folder, sheets), lines[-1], checked.stdout, checked.returncode


class Tally:
    def __init__(self):
        self.tried, self.missing, self.lies, self.told = Counter(), Counter(), Counter(), []

    def take(self, name, lost, lie, text):
        self.tried[name] += 1
        self.missing[name] += 1 if lost else 0
        self.lies[name] += 1 if lie else 0
        if lie:
            self.told.append(text)


def try_one(program, kind, seed, tally, keep):
    layout = KINDS[kind](random.Random(f"{kind} {seed}"))
    fitting = "\n".join(layout.recipe()) + "\n"
    paper, sheets = layout.print(random.Random(f"{kind} {seed} 0"), 0)
    with tempfile.TemporaryDirectory() as name:
        folder = keep / f"{kind}_{seed}" if keep else Path(name)
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "report.txt").write_bytes(paper.text(layout.end).encode("utf-8"))
        lost, said, text, status = ask(program, folder, fitting, sheets)
        tally.take("fits", lost, status != 0, f"{kind}_{seed}: fits, but: {said}")
        for how, broken in broken_recipes.BREAKS.items():
            rng = random.Random(f"{kind} {seed} {how}")
            recipe = broken_recipes.sections(fitting)
            if rng.random() < 0.5 and how not in ("ended_early", "one_page") or not broken(recipe, paper, rng):
                continue
            if rng.random() < 0.7:
                # Totals that nothing names, as in a recipe that was just begun.
                for _, keys in recipe:
                    keys[:] = [[k, v] for k, v in keys if k != "Totals"]
            lost, said, text, status = ask(program, folder, broken_recipes.written(recipe), sheets)
            lie = lost and (status == 0 or "Nothing is lost" in said)
            if lie and keep:
                (folder / f"{how}.rcp").write_text(broken_recipes.written(recipe), encoding="utf-8")
            tally.take(how, lost, lie, f"{kind}_{seed}: {how}, {lost} missing, but: {said}")


def ruler(columns):
    """Columns as the ruler of a table without tidy keys; None if two of them touch."""
    text = ""
    for column in columns:
        if text and column.start <= len(text) + 1:
            return None
        text = text.ljust(column.start - 1) + "-" * column.width
    return text


def try_block(program, kind, seed, tally, keep):
    """A recipe that takes the lines from one row to another as they stand: it fits if these are the first and the last."""
    layout = KINDS[kind](random.Random(f"{kind} {seed}"))
    layout.recipe()
    paper, _ = layout.print(random.Random(f"{kind} {seed} 0"), 0)
    drawn = ruler(layout.listing.columns if hasattr(layout, "listing") else layout.columns)
    rows = broken_recipes.rows_of(paper)
    rng = random.Random(f"{kind} {seed} block")
    if drawn is None or len(rows) < 6:
        return
    for name in ("block fits", "block too short"):
        first, last = rows[0], rows[-1]
        if name == "block too short" and rng.random() < 0.5:
            first = rng.choice(rows[1:-2])
        elif name == "block too short":
            last = rng.choice(rows[1:-1])
        if sum(paper.lines[first] in line for line in paper.lines) > 1 or sum(paper.lines[last] in line for line in paper.lines) > 1:
            return
        recipe = (f"[Table 1]\nReadStartLine={paper.lines[first].strip()}\nReadEndLine={paper.lines[last].strip()}\n"
                  f"Parsing={drawn}\nWriteColumn=A\n")
        lost = sum(i < first or i > last for i in rows)
        with tempfile.TemporaryDirectory() as temporary:
            folder = keep / f"{kind}_{seed}_block" if keep else Path(temporary)
            folder.mkdir(parents=True, exist_ok=True)
            (folder / "report.txt").write_bytes(paper.text(layout.end).encode("utf-8"))
            (folder / "recipe.rcp").write_text(recipe, encoding="utf-8")
            checked = run(program, "check", folder / "report.txt", "--recipe", folder / "recipe.rcp")
        said = (checked.stdout.strip().splitlines() or [checked.stderr.strip()])[-1]
        lie = lost and (checked.returncode == 0 or not any(word in said for word in ("row", "figures")))
        tally.take(name, lost, lie, f"{kind}_{seed}: {name}, {lost} missing, but: {said}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=len(KINDS))
    parser.add_argument("--kind", action="append", choices=KINDS)
    parser.add_argument("--table", action="store_true", help="what each kind of break came to")
    parser.add_argument("--keep", type=Path, help="a folder for what was noticed wrongly")
    options = parser.parse_args()
    tally = Tally()
    kinds = options.kind or list(KINDS)
    for i in range(options.count):
        kind = kinds[i % len(kinds)]
        try_one(options.program, kind, options.seed + i, tally, options.keep)
        if kind in BLOCKS:
            try_block(options.program, kind, options.seed + i, tally, options.keep)
    if options.table:
        print(f"{'recipe':<17}{'tried':>6}{'lacking records':>17}{'said wrongly':>14}")
        for name in tally.tried:
            print(f"{name:<17}{tally.tried[name]:>6}{tally.missing[name]:>17}{tally.lies[name]:>14}")
    print("\n".join(tally.told[:40]))
    sys.exit(1 if tally.told else 0)


if __name__ == "__main__":
    main()
