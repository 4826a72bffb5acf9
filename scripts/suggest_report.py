#!/usr/bin/env python3
"""Runs `quillon suggest` on the real reports of the golden cases and compares with the recipes that people wrote.

  scripts/suggest_report.py --program build-dev/bin/quillon            prints the table
  scripts/suggest_report.py --program build-dev/bin/quillon --accept   writes it into docs/suggest.md
  scripts/suggest_report.py --program build-dev/bin/quillon --check    fails if docs/suggest.md says otherwise

A table is found if a section of the suggested recipe takes exactly its lines, and rightly cut if it then gives the cells
that are expected, blanks around them and empty cells at the end of a row aside. The pages of one table, and what comes
again, are one suggestion of several sections.
"""

import argparse
import csv
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
GOLDEN = ROOT / "tests" / "golden"
PAGE = ROOT / "docs" / "suggest.md"
BLOCK = re.compile(r"(?<=<!-- measured -->\n).*?(?=<!-- end -->)", re.DOTALL)
LINES = re.compile(r"^  lines (\d+) to (\d+): (\d+) rows?, (\d+) columns?$", re.MULTILINE)


def cases():
    """(name, report, recipe, CSV expected, options) of each case with a real report and a recipe."""
    for origin in sorted(GOLDEN.glob("*/ORIGIN.md")):
        folder = origin.parent
        recipes = sorted(folder.glob("*.rcp"))
        if not recipes or not (folder / "command").exists():
            continue
        command = (folder / "command").read_text(encoding="utf-8")
        report = next(f for f in sorted(folder.iterdir())
                      if f.is_file() and f.stem == folder.name and f.suffix != ".rcp")
        expected = folder / "expected" / f"{folder.name}.csv"
        if not expected.exists():
            expected = folder / "expected" / "long.csv"
        yield folder.name, report, recipes[0], expected, ["--unix"] if "--unix" in command else []


def rows_of(path):
    """Rows of cells without the blanks around them and without empty ones at the end."""
    data = path.read_bytes()
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = data.decode("cp1252", "replace")
    rows = []
    for row in csv.reader(text.splitlines()):
        cells = [cell.strip() for cell in row]
        while cells and not cells[-1]:
            cells.pop()
        rows.append(cells)
    return rows


class Runner:
    def __init__(self, program):
        self.program = str(Path(program).resolve())

    def run(self, *arguments):
        done = subprocess.run([self.program, *map(str, arguments)], capture_output=True, check=False, timeout=120)
        return done.stdout.decode("utf-8", "replace")

    def loss(self, report, recipe, options):
        """"none", or what `quillon check` finds lost, table by table."""
        text = self.run("check", report, "--recipe", recipe, *options)
        if text.endswith("\nNothing is lost.\n"):
            return "none"
        return "; ".join(re.findall(r"[^;\n]*the first on line \d+", text)) or "not converted"

    def tables(self, report, recipe, options):
        """(first line, last line, columns) of each table."""
        text = self.run("check", report, "--recipe", recipe, *options)
        return [tuple(map(int, found.group(1, 2, 4))) for found in LINES.finditer(text)]


def suggestions(recipe):
    """The number of the suggestion that each section of a suggested recipe belongs to, and whether each is doubtful."""
    of_section, doubtful = [], []
    for line in recipe.read_text(encoding="utf-8").splitlines():
        if line.startswith("; Suggestion "):
            doubtful.append(line.endswith("perhaps no table."))
        elif line.startswith("[Table "):
            of_section.append(len(doubtful) - 1)
    return of_section, doubtful


def others(got_tables, wanted_tables, of_section, doubtful):
    """How many suggestions hold no table that is expected: those that look like tables, and the doubtful ones."""
    hit = {of_section[i] for i, got in enumerate(got_tables) if any(got[:2] == w[:2] for w in wanted_tables)}
    rest = [is_doubtful for i, is_doubtful in enumerate(doubtful) if i not in hit]
    return len(rest) - sum(rest), sum(rest)


def verdict(table, index, wanted, got_tables, got_rows):
    """What became of one expected table: (found, rightly cut, what to say)."""
    first, last, columns = table
    if table[:2] not in [t[:2] for t in got_tables]:
        near = [t for t in got_tables if t[0] <= last and t[1] >= first]
        if not near:
            return False, False, f"table {index}, lines {first} to {last}: not found"
        pieces = " and ".join(f"{t[0]} to {t[1]}" for t in near[:3]) + (" ..." if len(near) > 3 else "")
        return False, False, f"table {index}, lines {first} to {last}: found as lines {pieces}"
    number = [t[:2] for t in got_tables].index(table[:2])
    start = sum(t[1] - t[0] + 1 for t in got_tables[:number])
    cells = got_rows[start:start + last - first + 1]
    if cells == wanted:
        return True, True, ""
    differing = sum(a != b for a, b in zip(cells, wanted))
    return True, False, (f"table {index}: {got_tables[number][2]} columns instead of {columns}, "
                         f"{differing} of {len(wanted)} rows differ")


def measure(program):
    runner = Runner(program)
    lines = ["| report | tables expected | found | rightly cut | others suggested | doubtful ones | sections | lost | misses |",
             "|---|---:|---:|---:|---:|---:|---:|---|---|"]
    totals = [0, 0, 0, 0, 0, 0]
    with tempfile.TemporaryDirectory(prefix="quillon-suggest-") as folder:
        for name, report, recipe, expected, options in cases():
            suggested, output = Path(folder, name + ".rcp"), Path(folder, name + ".csv")
            runner.run("suggest", report, "-o", suggested, *options)
            wanted_tables = runner.tables(report, recipe, options)
            got_tables, got_rows, loss = [], [], "-"
            of_section, doubtful = [], []
            if suggested.exists():
                of_section, doubtful = suggestions(suggested)
                loss = runner.loss(report, suggested, options)
                runner.run("convert", report, "-o", output, "--recipe", suggested, "--quiet", *options)
                got_tables, got_rows = runner.tables(report, suggested, options), rows_of(output)
            wanted_rows = rows_of(expected)
            if len(wanted_rows) != sum(last - first + 1 for first, last, _ in wanted_tables):
                sys.exit(f"{name}: the expected rows are not those of the recipe's tables")
            found = cut = done = 0
            misses = []
            for index, table in enumerate(wanted_tables, 1):
                size = table[1] - table[0] + 1
                is_found, is_cut, text = verdict(table, index, wanted_rows[done:done + size], got_tables, got_rows)
                done += size
                found, cut = found + is_found, cut + is_cut
                misses += [text] if text else []
            counts = (len(wanted_tables), found, cut, *others(got_tables, wanted_tables, of_section, doubtful),
                      len(of_section))
            totals = [a + b for a, b in zip(totals, counts)]
            lines.append(f"| {name} | {' | '.join(map(str, counts))} | {loss} | {'; '.join(misses)} |")
    lines.append("| all | " + " | ".join(map(str, totals)) + " | | |")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()
    table = measure(arguments.program)
    print(table, end="")
    if not (arguments.accept or arguments.check):
        return 0
    page = PAGE.read_text(encoding="utf-8")
    if arguments.accept:
        PAGE.write_text(BLOCK.sub(lambda _: table, page), encoding="utf-8")
        return 0
    said = BLOCK.search(page)
    if said and said.group() == table:
        return 0
    print("docs/suggest.md says otherwise: run with --accept and read what changed", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
