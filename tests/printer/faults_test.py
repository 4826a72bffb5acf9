#!/usr/bin/env python3
"""Random reports with totals, each damaged in one place: a row deleted, a digit changed, two pages exchanged, one left
out. A strict conversion must notice, and must not take offence at the whole report.

  tests/printer/faults_test.py --program build-dev/bin/quillon --count 500

A difference of one in the last digit is told, but no failure, as reports round. Pages that are exchanged are noticed by
their numbers; --unnumbered prints none, and then only by sums: where groups end with their pages and no page has a
total, nothing that is printed says it, so those are counted and not asked for.
"""

import argparse
import random
import re
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

from layouts import KINDS
from print_reports import print_layout

WITH_TOTALS = ("groups", "pages", "repeats", "negatives", "plain", "records", "wrapped")


def without_row(paper, layout, rng):
    """The text without one of its rows and the lines that belong to it."""
    i = rng.choice([i for i, kind in enumerate(paper.kinds) if kind == "row"])
    j = i + 1
    while j < len(paper.kinds) and paper.kinds[j] in ("further", "joined"):
        j += 1
    return paper.lines[:i] + paper.lines[j:]


def with_digit(paper, layout, rng):
    """The text with another digit somewhere in a number of a row."""
    rows = [i for i, kind in enumerate(paper.kinds) if kind == "row"]
    for _ in range(100):
        i, column = rng.choice(rows), rng.choice(layout.listing.total_columns)
        line = paper.lines[i]
        places = [n for n in range(column.start - 1, min(column.end, len(line))) if line[n].isdigit()]
        if places:
            n = rng.choice(places)
            digit = rng.choice([d for d in "0123456789" if d != line[n]])
            return paper.lines[:i] + [line[:n] + digit + line[n + 1:]] + paper.lines[i + 1:]
    return None


def with_pages_exchanged(paper, layout, rng):
    """The text with two pages in each other's place; nothing if it has no two."""
    if len(paper.starts) < 3:
        return None
    starts = paper.starts + [len(paper.lines)]
    pages = [paper.lines[a:b] for a, b in zip(starts, starts[1:])]
    a, b = rng.sample(range(len(pages) - 1), 2)
    pages[a], pages[b] = pages[b], pages[a]
    return [line for page in pages for line in page]


def without_page(paper, layout, rng):
    """The text without one of its pages, neither the first nor the last."""
    if len(paper.starts) < 3:
        return None
    n = rng.randrange(1, len(paper.starts) - 1)
    return paper.lines[:paper.starts[n]] + paper.lines[paper.starts[n + 1]:]


FAULTS = {"row deleted": without_row, "digit changed": with_digit, "pages exchanged": with_pages_exchanged,
          "page left out": without_page}


def strict_status(program, folder, text):
    """The exit status of a strict conversion, and what it said."""
    report = folder / "damaged.txt"
    report.write_bytes(text.encode("utf-8"))
    done = subprocess.run([program, "convert", report, "-o", folder / "damaged.csv", "--recipe", folder / "recipe.rcp",
                           "--strict"], capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=120)
    return done.returncode, done.stderr


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=24)
    parser.add_argument("--unnumbered", action="store_true", help="pages without numbers")
    options = parser.parse_args()
    tried, noticed, told, unasked, bad = Counter(), Counter(), Counter(), 0, []
    seed = options.seed
    while tried.total() < options.count:
        seed += 1
        kind = WITH_TOTALS[seed % len(WITH_TOTALS)]
        layout = KINDS[kind](random.Random(f"{kind} {seed}"))
        if not layout.listing.totals or not layout.listing.grand:
            continue
        fault = list(FAULTS)[tried.total() % len(FAULTS)]
        with tempfile.TemporaryDirectory() as name:
            folder = print_layout(kind, seed, 0, Path(name))
            layout = KINDS[kind](random.Random(f"{kind} {seed}"))
            layout.recipe()
            paper, _ = layout.print(random.Random(f"{kind} {seed} 0"), 0)
            if options.unnumbered:
                paper.lines = [re.sub(r" +PAGE +\d+$", "", line) for line in paper.lines]
            status, said = strict_status(options.program, folder, paper.text(layout.end))
            if status != 0:
                unasked += 1
                bad.append(f"{kind}_{seed}: whole, but {said.strip()}")
            lines = FAULTS[fault](paper, layout, random.Random(seed))
            if lines is None:
                continue
            status, said = strict_status(options.program, folder, layout.end.join(lines) + layout.end)
        tried[fault] += 1
        noticed[fault] += status != 0
        last_digit = status == 0 and "but for the last digit" in said
        told[fault] += last_digit
        if status == 0 and not last_digit and not (fault == "pages exchanged" and options.unnumbered):
            bad.append(f"{kind}_{seed}: {fault}, and not noticed")
    for fault in FAULTS:
        print(f"{fault:<16} {noticed[fault]} of {tried[fault]} noticed, {told[fault]} more told as one in the last digit")
    print(f"{unasked} false alarms")
    print("\n".join(bad[:20]))
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
