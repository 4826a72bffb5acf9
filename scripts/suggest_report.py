#!/usr/bin/env python3
"""Measures `quillon suggest`: printed reports whose tables are known, and real ones that people wrote recipes for.

  scripts/suggest_report.py --program build-dev/bin/quillon            prints the tables
  scripts/suggest_report.py --program build-dev/bin/quillon --accept   writes them into docs/suggest.md
  scripts/suggest_report.py --program build-dev/bin/quillon --check    fails if docs/suggest.md says otherwise
  ... --seed 5000 --count 2000                                         other printed reports, and more of them
  ... --reports FOLDER --truth FOLDER                                  reports of your own: NAME.* and NAME.csv, NAME.2.csv

Printed and own reports: the suggested recipe converts the report, and each record of the truth is looked for among the
rows by value ($1,040.00 is 1040, (5.00) is -5, 02-Mar-09 is 2009-03-02, --- is blank): exact if all of its cells are
right, core if all but those that are carried from a heading (names that begin with ^) are. A report is complete if all
records are exact and no row is anything else.

Real reports, with --today: a table is found if a section of the suggested recipe takes exactly its lines, and rightly cut
if it then gives the cells that are expected, blanks around them and empty cells at the end of a row aside. The pages of
one table, and what comes again, are one suggestion of several sections.
"""

import argparse
import csv
import io
import re
import subprocess
import sys
import tempfile
from collections import Counter, defaultdict
from datetime import datetime
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
GOLDEN = ROOT / "tests" / "golden"
PAGE = ROOT / "docs" / "suggest.md"
PRINTER = ROOT / "tests" / "printer" / "print_reports.py"
BLOCK = re.compile(r"(?<=<!-- measured -->\n).*?(?=<!-- end -->)", re.DOTALL)
PRINTED_BLOCK = re.compile(r"(?<=<!-- printed -->\n).*?(?=<!-- end of printed -->)", re.DOTALL)
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
        return "; ".join(re.findall(r"[^;\n]*the first on line \d+", text)) or "told, without a place"

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
            runner.run("suggest", report, "-o", suggested, "--today", *options)
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


DATES = ["%Y-%m-%d", "%Y%m%d", "%d.%m.%Y", "%m/%d/%Y", "%d/%m/%Y", "%d-%b-%y", "%d-%b-%Y"]


def date_of(text):
    for form in DATES:
        try:
            return datetime.strptime(text, form).strftime("%Y-%m-%d")
        except ValueError:
            pass
    return None


def value(text):
    """What a cell means, however it is written."""
    text = re.sub(r"\s+", " ", text.strip())
    if re.fullmatch(r"[-*/.]{1,5}|N/A", text):
        return ""
    if len(text) >= 8 and (date := date_of(text)):
        return date
    plain = re.sub(r"(?<=\d),(?=\d\d\d\b)", "", text.replace("$", "").replace(" ", "")).rstrip("%")
    if found := re.fullmatch(r"\(([\d.]+)\)|([\d.]+)(?:-|CR)", plain):
        plain = "-" + (found[1] or found[2])
    plain = re.sub("DR$", "", plain)
    if re.fullmatch(r"\d{10,}", plain):
        return plain.lstrip("0")
    if re.fullmatch(r"[-+]?(\d+\.?\d*|\.\d+)([EeDd][-+]?\d+)?", plain):
        return f"{float(re.sub('[Dd]', 'E', plain)) + 0.0:.9g}"
    return text


def cells_of(path):
    data = path.read_bytes()
    try:
        text = data.decode("utf-8-sig")
    except UnicodeDecodeError:
        text = data.decode("cp1252", "replace")
    return [[value(cell) for cell in row] for row in csv.reader(io.StringIO(text, newline=""))]


class Truth:
    """The records of one kind of table."""

    def __init__(self, path):
        with path.open(encoding="utf-8", newline="") as file:
            self.names = next(csv.reader(file))
        self.rows = [tuple(row) for row in cells_of(path)[1:]]
        self.own = [i for i, name in enumerate(self.names) if not name.startswith("^")]

    def layouts(self):
        """Indexes of the columns that a row may have: all, its own, or its own and some of the carried ones."""
        carried = [i for i in range(len(self.names)) if i not in self.own]
        for bits in range((1 << len(carried)) - 1, -1, -1):
            yield sorted(self.own + [c for k, c in enumerate(carried) if bits >> k & 1])


def trimmed(row):
    row = list(row)
    while row and row[-1] == "":
        row.pop()
    return tuple(row)


def squashed(row):
    """All text of a row without its cell boundaries and signs of writing."""
    return "".join(re.sub(r"[^0-9A-Za-z\u0080-\uffff]", "", cell).lstrip("0") for cell in row)


def held_against(rows, truths):
    """(records, exact, core, rows that are no record, records that no row holds the text of); a row of names for each
    kind of table isn't counted."""
    left = [trimmed(row) for row in rows if any(row)]
    total = sum(len(truth.rows) for truth in truths)
    texts = Counter(squashed(row) for row in rows)
    missing = 0
    for truth in truths:
        for row in truth.rows:
            own = next((text for layout in truth.layouts() if texts[text := squashed(row[i] for i in layout)] > 0), None)
            missing += own is None
            texts[own] -= 1
    counts = []
    for core in (False, True):
        done = 0
        for truth in truths:
            for layout in truth.layouts() if core else [range(len(truth.names))]:
                wanted = Counter(trimmed(row[i] for i in layout) for row in truth.rows)
                rest = []
                for row in left:
                    if wanted[row] > 0:
                        wanted[row] -= 1
                        done += 1
                    else:
                        rest.append(row)
                left = rest
        counts.append(done)
    return total, counts[0], min(counts[1], total - counts[0]), max(len(left) - len(truths), 0), missing


def suggest_and_convert(runner, report, folder, options=()):
    """The rows of all files that the suggested recipe makes, and what suggest says."""
    recipe, output = folder / "suggested.rcp", folder / "suggested.csv"
    done = subprocess.run([runner.program, "suggest", report, "-o", recipe, *options], capture_output=True, check=False, timeout=120)
    if not recipe.exists():
        return [], done.stderr.decode("utf-8", "replace")
    runner.run("convert", report, "-o", output, "--recipe", recipe, "--quiet", *options)
    rows = []
    for file in sorted(folder.glob("suggested*.csv")):
        rows += cells_of(file)
    return rows, done.stderr.decode("utf-8", "replace")


def measure_one(runner, report, truths, options=()):
    """(records, exact, core, junk, whether records are missing and nothing says so, whether they aren't right and nothing
    does, whether all is right and something is said)"""
    with tempfile.TemporaryDirectory(prefix="quillon-suggest-") as folder:
        rows, said = suggest_and_convert(runner, report, Path(folder), options)
    total, exact, core, junk, missing = held_against(rows, truths)
    is_said = "incomplete" in said or "0 tables" in said
    return (total, exact, core, junk, missing > 0 and not is_said, exact + core < total and not is_said,
            exact == total and junk == 0 and is_said)


def lines_of(results):
    """Lines of a table from (name, results of measure_one)."""
    lines = ["| layout | reports | records exact | core | complete | with other rows | records missing, nothing said | not right, nothing said | complete, called incomplete |",
             "|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    everything = []
    for name, some in [*sorted(results.items()), ("all", everything)]:
        count = len(some)
        exact = 100 * sum(r[1] / r[0] for r in some) / count
        core = 100 * sum(r[2] / r[0] for r in some) / count
        complete = sum(r[1] == r[0] and r[3] == 0 for r in some)
        lines.append(f"| {name} | {count} | {exact:.0f} % | {core:.0f} % | {complete} | {sum(r[3] > 0 for r in some)} | {sum(r[4] for r in some)} | {sum(r[5] for r in some)} | {sum(r[6] for r in some)} |")
        everything += some if name != "all" else []
    return "\n".join(lines) + "\n"


def measure_printed(program, seed, count):
    runner = Runner(program)
    results = defaultdict(list)
    with tempfile.TemporaryDirectory(prefix="quillon-printed-") as folder:
        subprocess.run([sys.executable, PRINTER, "--seed", str(seed), "--count", str(count), "--out", folder], check=True)
        for layout in sorted(Path(folder).iterdir()):
            truths = [Truth(path) for path in sorted(layout.glob("report*.csv"))]
            results[layout.name.rsplit("_", 1)[0]].append(measure_one(runner, layout / "report.txt", truths))
    return lines_of(results)


def measure_own(program, reports, truth):
    runner = Runner(program)
    results = {}
    for report in sorted(path for path in Path(reports).iterdir() if path.is_file() and path.suffix != ".csv" and (Path(truth) / f"{path.stem}.csv").exists()):
        paths = [Path(truth) / f"{report.stem}.csv", *sorted(Path(truth).glob(f"{report.stem}.[0-9].csv"))]
        options = ["--unix"] if b"\r\r\n" in report.read_bytes()[:100000] else []
        results[report.stem] = [measure_one(runner, report, [Truth(path) for path in paths], options)]
    return lines_of(results)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--accept", action="store_true")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--seed", type=int, default=100)
    parser.add_argument("--count", type=int, default=32)
    parser.add_argument("--reports")
    parser.add_argument("--truth")
    arguments = parser.parse_args()
    if arguments.reports:
        print(measure_own(arguments.program, arguments.reports, arguments.truth), end="")
        return 0
    printed = measure_printed(arguments.program, arguments.seed, arguments.count)
    table = measure(arguments.program)
    print(printed, table, sep="\n", end="")
    if not (arguments.accept or arguments.check):
        return 0
    page = PAGE.read_text(encoding="utf-8")
    if arguments.accept:
        page = PRINTED_BLOCK.sub(lambda _: printed, page)
        PAGE.write_text(BLOCK.sub(lambda _: table, page), encoding="utf-8")
        return 0
    said = BLOCK.search(page), PRINTED_BLOCK.search(page)
    if all(said) and said[0].group() == table and said[1].group() == printed:
        return 0
    print("docs/suggest.md says otherwise: run with --accept and read what changed", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
