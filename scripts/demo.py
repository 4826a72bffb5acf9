#!/usr/bin/env python3
"""Converts reports of tests/golden and shows rows beside the report lines they came from.

  demo.py PROGRAM FOLDER       outputs go to FOLDER

The workbooks are read back here with nothing but zip and XML, so that what is shown is what is in the file.
"""

import csv
import os
import shlex
import subprocess
import sys
import time
import zipfile
from pathlib import Path
from xml.etree import ElementTree

TREE = Path(__file__).resolve().parent.parent
MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"

# Report, recipe, first line and first output row shown, what there is to see, column with a total printed in the report.
REPORTS = [
    ("account_limits", "account_limits.prt", 6, 1, 4, True,
     "a print-out of a COBOL program; the columns are cut by a ruler drawn in the recipe", ("C", "$47,500,000.00")),
    ("fastiron_arp_crlf", "fastiron_arp_crlf.txt", 4, 1, 5, False,
     "a switch's table; the recipe says \"=\", so the columns are worked out from all 443 rows", None),
]


class Paint:
    """Colours on a terminal that wants them, else none."""

    def __init__(self):
        self.on = sys.stdout.isatty() and "NO_COLOR" not in os.environ and os.environ.get("TERM") != "dumb"

    def __call__(self, code, text):
        return f"\033[{code}m{text}\033[0m" if self.on else text


paint = Paint()


def workbook_cells(path):
    """Cells of the first sheet: {(column letters, row): (is a number, value)}."""
    with zipfile.ZipFile(path) as package:
        names = package.namelist()
        shared = []
        if "xl/sharedStrings.xml" in names:
            for item in ElementTree.fromstring(package.read("xl/sharedStrings.xml")):
                shared.append("".join(text.text or "" for text in item.iter(MAIN + "t")))
        sheet = ElementTree.fromstring(package.read("xl/worksheets/sheet1.xml"))
    cells = {}
    for cell in sheet.iter(MAIN + "c"):
        reference = cell.get("r")
        letters = reference.rstrip("0123456789")
        value = cell.findtext(MAIN + "v")
        if cell.get("t") == "s":
            entry = (False, shared[int(value)])
        elif cell.get("t") == "inlineStr":
            entry = (False, "".join(text.text or "" for text in cell.iter(MAIN + "t")))
        else:
            entry = (cell.get("t") is None and value is not None, value or "")
        cells[letters, int(reference[len(letters):])] = entry
    return cells


def convert(program, report, recipe, output, options):
    line = [program, "convert", report, "-o", output, "--recipe", recipe, *options]
    print("  " + paint("36", "$ " + shlex.join(line)))
    started = time.monotonic()
    done = subprocess.run(line, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False)
    if done.returncode:
        sys.exit(f"{done.stdout}\ndemo.py: the conversion ended with {done.returncode}")
    return (time.monotonic() - started) * 1000, done.stdout.strip()


def ruler_of(recipe):
    for line in Path(recipe).read_text(encoding="latin-1").splitlines():
        if line.startswith("Parsing="):
            return line[len("Parsing="):]
    return ""


def in_columns(cells, widths):
    """Cells under the characters that they were cut from: numbers to the right, as a sheet shows them."""
    return "|".join(f"{text:>{width - 1}}" if right else f"{text:<{width - 1}}" for (right, text), width in zip(cells, widths))


def show(number, program, folder, name, file, first_line, first_row, rows, unix, about, total):
    report = str(Path("tests/golden") / name / file)
    recipe = str(Path("tests/golden") / name / f"{name}.rcp")
    print(f"\n{paint('1', f'{number}. {file}')}: {about}\n")
    outputs = [str(folder / f"{name}.csv"), str(folder / f"{name}.xlsx")]
    options = ["--unix"] if unix else []
    to_csv, _ = convert(program, report, recipe, outputs[0], options)
    to_xlsx, account = convert(program, report, recipe, outputs[1], options + ["--trim"])

    lines = Path(report).read_text(encoding="latin-1").split("\n")
    with open(outputs[0], newline="", encoding="latin-1") as rows_:
        table = list(csv.reader(rows_))
    cells = workbook_cells(outputs[1])

    ruler = ruler_of(recipe)
    widths = [len(cell) for cell in table[first_row - 1]]
    if ruler.startswith("="):
        ruler = "".join("-" * (width - 1) + " " for width in widths).rstrip()
        print(f"\n{'worked out':>12}  {paint('33', ruler)}")
    else:
        print(f"\n{'ruler':>12}  {paint('33', ruler)}")
    for i in range(rows):
        row = first_row + i
        print(f"{f'line {first_line + i}':>12}  {lines[first_line - 1 + i].rstrip()}")
        as_cut = "|".join(cell.removesuffix(" ") for cell in table[row - 1])
        print(f"{f'CSV row {row}':>12}  {paint('32', as_cut)}")
        in_sheet = [cells.get((chr(65 + k), row), (False, "")) for k in range(len(widths))]
        print(f"{f'XLSX row {row}':>12}  {paint('35', in_columns(in_sheet, widths))}")
    numbers = sum(1 for is_number, _ in cells.values() if is_number)
    print(f"\n  {account.removeprefix('quillon: ')}")
    print(f"  To CSV in {to_csv:.0f} ms, to XLSX in {to_xlsx:.0f} ms, start included; {numbers:,} of {len(cells):,} cells are numbers,"
          " which show as printed.")
    if total:
        letters, printed = total
        added = sum(float(value) for (column, _), (is_number, value) in cells.items() if is_number and column == letters)
        agrees = f"${added:,.2f}" == printed and any(printed in line for line in lines)
        print(f"  Column {letters} of the workbook adds up to ${added:,.2f}; the report prints {printed}:"
              f" {paint('32;1', 'equal') if agrees else paint('31;1', 'NOT EQUAL')}.")
        if not agrees:
            sys.exit(1)
    return outputs


def main():
    program, folder = sys.argv[1], Path(sys.argv[2])
    os.chdir(TREE)
    folder.mkdir(parents=True, exist_ok=True)
    made = []
    for number, report in enumerate(REPORTS, 1):
        made += show(number, program, folder, *report)
    print(f"\n{paint('1', 'The files')}")
    for path in made:
        print(f"  {TREE / path}")
    print(f"\nYours next:  {program} convert --help")
    print("The window:  scripts/window.sh")


if __name__ == "__main__":
    main()
