#!/usr/bin/env python3
"""Measures whether a suggested recipe holds next month: that of month 1, run on the same report of later months.

  scripts/suggest_months.py --program build-dev/bin/quillon                          some printed and all business reports
  scripts/suggest_months.py --program build/bin/quillon --count 200 --months 12      as many layouts, as many months

Printed reports come from tests/printer, business reports from tests/suggest; the later months have other values, more or
fewer rows, groups and pages. Shown are the records that are exact in month 1 and in the later ones, and the months in
which fewer are than the recipe had in month 1.
"""

import argparse
import subprocess
import sys
import tempfile
from collections import defaultdict
from pathlib import Path

from suggest_report import PRINTER, ROOT, Runner, Truth, cells_of, held_against

BUSINESS = ROOT / "tests" / "suggest" / "business_reports.py"


def printed(seed, count, months, folder):
    """(kind, [(report, truths) of each month]) of printed layouts."""
    subprocess.run([sys.executable, PRINTER, "--seed", str(seed), "--count", str(count), "--months", str(months),
                    "--out", folder], check=True)
    for layout in sorted(folder.iterdir()):
        yield layout.name.rsplit("_", 1)[0], [
            (report, sorted(layout.glob(f"{report.stem}*.csv"))) for report in sorted(layout.glob("month_*.txt"))]


def business(seed, months, folder):
    subprocess.run([sys.executable, BUSINESS, "--seed", str(seed), "--months", str(months), "--out", folder], check=True)
    for first in sorted(folder.glob("*_01.txt")):
        name = first.stem[:-3]
        yield name, [(report, sorted(folder.glob(f"{report.stem}.csv")) + sorted(folder.glob(f"{report.stem}.[0-9].csv")))
                     for report in sorted(folder.glob(f"{name}_[0-9][0-9].txt"))]


def exact_share(runner, report, recipe, truths, folder):
    """The share of the records that the recipe gets right."""
    for old in folder.glob("out*.csv"):
        old.unlink()
    runner.run("convert", report, "-o", folder / "out.csv", "--recipe", recipe, "--quiet")
    rows = [row for file in sorted(folder.glob("out*.csv")) for row in cells_of(file)]
    total, exact, *_ = held_against(rows, [Truth(path) for path in truths])
    return exact / total


def measure(runner, layouts, show):
    """Shares of (month 1, [later months]) by kind."""
    results = defaultdict(list)
    with tempfile.TemporaryDirectory(prefix="quillon-months-") as name:
        recipe = Path(name, "month1.rcp")
        for kind, months in layouts:
            recipe.unlink(missing_ok=True)
            runner.run("suggest", months[0][0], "-o", recipe)
            shares = [exact_share(runner, *month[:1], recipe, month[1], Path(name)) if recipe.exists() else 0.0
                      for month in months]
            results[kind].append(shares)
            if show and min(shares) < shares[0]:
                print(f"{months[0][0]}: " + " ".join(f"{100 * share:.0f}" for share in shares), file=sys.stderr)
    return results


def lines_of(results):
    lines = ["| layout | reports | exact in month 1 | exact in later months | months with less than month 1 |",
             "|---|---:|---:|---:|---:|"]
    everything = []
    for name, some in [*sorted(results.items()), ("all", everything)]:
        later = [share for shares in some for share in shares[1:]]
        fewer = sum(share < shares[0] - 1e-9 for shares in some for share in shares[1:])
        lines.append(f"| {name} | {len(some)} | {100 * sum(s[0] for s in some) / len(some):.0f} % | "
                     f"{100 * sum(later) / max(len(later), 1):.0f} % | {fewer} of {len(later)} |")
        everything += some if name != "all" else []
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--seed", type=int, default=100)
    parser.add_argument("--count", type=int, default=32)
    parser.add_argument("--months", type=int, default=4)
    parser.add_argument("--only", choices=("printed", "business"))
    parser.add_argument("--show", action="store_true", help="name the reports of which a month has less")
    options = parser.parse_args()
    runner = Runner(options.program)
    results = {}
    with tempfile.TemporaryDirectory(prefix="quillon-printed-") as folder:
        if options.only != "business":
            results |= measure(runner, printed(options.seed, options.count, options.months, Path(folder)), options.show)
    with tempfile.TemporaryDirectory(prefix="quillon-business-") as folder:
        if options.only != "printed":
            results |= measure(runner, business(options.seed, options.months, Path(folder)), options.show)
    print(lines_of(results), end="")


if __name__ == "__main__":
    main()
