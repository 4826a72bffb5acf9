#!/usr/bin/env python3
"""What `check` says of the real reports of tidy_reports, by suggested recipes and by good ones, held against the truth: it
must not say that nothing is lost while a record is missing.

  check_says_test.py --program build-dev/bin/quillon [NAME ...]
  check_says_test.py --program build-dev/bin/quillon --table                       lines by kind, totals and the sentence
  check_says_test.py --program build-dev/bin/quillon --table --truth FOLDER        NAME.csv, NAME.2.csv ... of one's own

Without --truth the good recipe's output is the truth. A record is there if one row holds the values of all of its cells;
columns whose name begins with ^ are carried from elsewhere and don't count.
"""

import argparse
import csv
import io
import re
import sys
import tempfile
from collections import Counter, defaultdict
from pathlib import Path

from line_kinds_test import run
from tidy_reports_test import CASES, report_of

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
from suggest_report import value  # noqa: E402


def plain(text):
    return re.sub(r"[^0-9A-Za-z\u0080-\uffff]", "", text)


def bare(cell):
    return plain(value(cell))


def text_of(path):
    data = path.read_bytes()
    try:
        return data.decode("utf-8-sig")
    except UnicodeDecodeError:
        return data.decode("cp1252", "replace")


def truths(program, name, folder, truth):
    """The own values of each record."""
    if truth:
        paths = [truth / f"{name}.csv", *sorted(truth.glob(f"{name}.[0-9].csv"))]
    else:
        run(program, folder, "convert", "-q", report_of(name), "-o", folder / "truth.csv", "--recipe", CASES / f"{name}.rcp")
        paths = sorted(folder.glob("truth*.csv"))
    recipe = (CASES / f"{name}.rcp").read_text(encoding="utf-8")
    named = "Names=" in recipe
    carried = set(re.findall(r"[^|\n]+", "\n".join(re.findall(r"\[Heading [^\[]*?Names=([^\n]*)", recipe))))
    for path in paths:
        rows = list(csv.reader(io.StringIO(text_of(path), newline="")))
        own = [i for i, cell in enumerate(rows[0]) if not cell.startswith("^") and (truth or cell not in carried)]
        for row in rows[1 if truth or named else 0:]:
            yield [(cell, plain(row[i])) for i in own if i < len(row) and (cell := bare(row[i]))]


def missing(wanted, rows):
    """(records, those of which no row holds all values)"""
    cells = [{cell for each in row if (cell := bare(each))} for row in rows]
    texts = ["".join(bare(each) for each in row) for row in rows]
    printed = ["".join(plain(each) for each in row) for row in rows]
    whole, where = defaultdict(list), defaultdict(list)
    for i, row in enumerate(cells):
        whole[texts[i]].append(i)
        for cell in row:
            where[cell].append(i)
    used, total, lost = set(), 0, 0
    for own in wanted:
        total += 1
        hit = next((i for i in whole.get("".join(cell for cell, _ in own), []) if i not in used), None)
        if hit is None and own:
            near = min((where[cell] for cell, _ in own if cell in where), key=len, default=range(len(rows)))
            hit = next((i for i in near if i not in used and all(
                cell in cells[i] or cell in texts[i] or text in printed[i] for cell, text in own)), None)
        if hit is not None:
            used.add(hit)
        lost += hit is None and bool(own)
    return total, lost


def look(program, name, truth):
    """For each recipe: how it was made, records, missing ones, status, what check says last, and all of it."""
    with tempfile.TemporaryDirectory() as temporary:
        folder = Path(temporary)
        wanted = list(truths(program, name, folder, truth))
        run(program, folder, "suggest", report_of(name), "-o", folder / "suggested.rcp")
        for how, recipe in (("suggested", folder / "suggested.rcp"), ("good", CASES / f"{name}.rcp")):
            if not recipe.exists():
                continue
            run(program, folder, "convert", "-q", report_of(name), "-o", folder / f"{how}.csv", "--recipe", recipe)
            rows = [row for path in sorted(folder.glob(f"{how}*.csv"))
                    for row in csv.reader(io.StringIO(text_of(path), newline=""))]
            checked = run(program, folder, "check", report_of(name), "--recipe", recipe)
            text = checked.stdout.decode("utf-8", "replace").rstrip()
            yield how, *missing(wanted, rows), checked.returncode, text.splitlines()[-1] if text else "", text


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True, type=lambda text: Path(text).resolve())
    parser.add_argument("--table", action="store_true")
    parser.add_argument("--truth", type=Path)
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    if options.table:
        print("| report | recipe | records | missing | lines by kind | totals | check says |\n|---|---|---:|---:|---|---|---|")
    sums, wrong = Counter(), []
    for name in options.names or sorted(path.stem for path in CASES.glob("*.rcp")):
        for how, total, lost, status, said, text in look(options.program, name, options.truth):
            lies = lost > 0 and (status == 0 or "Nothing is lost" in said)
            sums[f"{how} recipes"] += 1
            sums[f"{how} recipes that lack records"] += lost > 0
            sums[f"{how} recipes said to lose nothing"] += status == 0
            if lies:
                wrong.append(f"{name}, {how} recipe: {lost} of {total} records are missing, but: {said}")
            if options.table:
                kinds = re.search(r"^Lines: (.*)$", text, re.MULTILINE)
                totals = re.search(r"^\d+ printed totals? agrees?.*$", text, re.MULTILINE)
                print(f"| {name} | {how} | {total} | {lost} | {kinds[1] if kinds else ''} | "
                      f"{totals[0].replace(' printed totals', '') if totals else ''} | {said} |")
    print("\n".join([*(f"{count} {what}" for what, count in sums.items()), *wrong]))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
