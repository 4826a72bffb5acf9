#!/usr/bin/env python3
"""Measures the reading of PDF: the real reports of the golden cases are printed to PDF and must give the cells of their text.

  scripts/pdf_report.py --program build/bin/quillon [NAME ...]

Four PDFs of each: by LibreOffice (libreoffice-writer) in two fonts, by ghostscript (ghostscript) in two. Prints, report by
report, how many rows are missing and how many came instead; blanks within a cell count as one.
"""
import argparse
import csv
import html
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

GOLDEN = Path(__file__).resolve().parent.parent / "tests" / "golden"
OFFICE = {"office 7 pt": ("Liberation Mono", 7), "office 9 pt": ("DejaVu Sans Mono", 9)}
POSTSCRIPT = {"gs 7 pt": ("Courier", 7), "gs bold 10 pt": ("Courier-Bold", 10)}
MARGIN, HEIGHT = 40, 842


def pages_of(report):
    """Pages of lines, tabs at their stops."""
    data = report.read_bytes().rstrip(b"\x1a\0")
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = data.decode("cp1252", "replace")
    text = text.replace("\r\r\n", "\n").replace("\r\n", "\n").replace("\r", "\n")
    return [[line.expandtabs(8) for line in page.split("\n")] for page in text.split("\f")]


def width_of(pages, size):
    return int(max(len(line) for page in pages for line in page) * size * 0.602) + 2 * MARGIN + 10


def print_by_office(pages, font, size, made):
    style = (f"@page {{ size: {width_of(pages, size)}pt {HEIGHT}pt; margin: {MARGIN}pt }} "
             f"pre {{ font-family: '{font}'; font-size: {size}pt; margin: 0 }} pre + pre {{ page-break-before: always }}")
    body = "".join(f"<pre>{html.escape(chr(10).join(page))}</pre>" for page in pages)
    source = made.with_suffix(".html")
    source.write_text(f'<!DOCTYPE html><html><head><meta charset="utf-8"><style>{style}</style></head><body>{body}'
                      "</body></html>", encoding="utf-8")
    subprocess.run(["soffice", "--headless", "--convert-to", "pdf:writer_web_pdf_Export", "--outdir", made.parent, source],
                   check=True, capture_output=True)


def print_by_postscript(pages, font, size, made):
    lead = size * 1.2
    per_page = int((HEIGHT - 2 * MARGIN) / lead)
    script = [f"%!PS\n<</PageSize [{width_of(pages, size)} {HEIGHT}]>> setpagedevice",
              f"/{font} findfont dup length dict begin {{1 index /FID ne {{def}} {{pop pop}} ifelse}} forall",
              "/Encoding ISOLatin1Encoding def currentdict end /F exch definefont pop"]
    for page in pages:
        for first in range(0, max(1, len(page)), per_page):
            script.append(f"/F findfont {size} scalefont setfont")
            for number, line in enumerate(page[first:first + per_page]):
                shown = line.replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)")
                script.append(f"{MARGIN} {HEIGHT - MARGIN - number * lead:.1f} moveto ({shown}) show")
            script.append("showpage")
    source = made.with_suffix(".ps")
    source.write_bytes("\n".join(script).encode("latin-1", "replace"))
    subprocess.run(["ps2pdf", source, made], check=True, capture_output=True)


def rows_of(program, report, recipe, folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    subprocess.run([program, "convert", report, "-o", folder / "t.csv", "--recipe", recipe, "--quiet"], capture_output=True)
    rows = []
    for table in sorted(folder.glob("*.csv")):
        with open(table, encoding="utf-8", errors="replace", newline="") as file:
            rows += [tuple(" ".join(cell.split()) for cell in row) for row in csv.reader(file)]
    return rows


def cases(wanted):
    folder = GOLDEN / "tidy_reports"
    for recipe in sorted(folder.glob("*.rcp")):
        reports = [p for place in (folder, GOLDEN / recipe.stem) for p in place.glob(recipe.stem + ".*")
                   if p.suffix not in (".rcp", ".csv", ".md")]
        if reports and (not wanted or recipe.stem in wanted):
            yield reports[0], recipe


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, type=Path)
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    same = Counter()
    with tempfile.TemporaryDirectory(prefix="quillon-pdf-") as name:
        folder = Path(name)
        for report, recipe in cases(arguments.names):
            wanted = Counter(rows_of(arguments.program, report, recipe, folder / "text"))
            said = []
            for kind, (font, size) in (OFFICE | POSTSCRIPT).items():
                made = folder / "printed.pdf"
                (print_by_office if kind in OFFICE else print_by_postscript)(pages_of(report), font, size, made)
                got = Counter(rows_of(arguments.program, made, recipe, folder / "pdf"))
                same[kind] += got == wanted
                said.append("same" if got == wanted else f"-{(wanted - got).total()} +{(got - wanted).total()}")
            print(f"{report.name:32}{wanted.total():6} rows  " + "  ".join(f"{text:>12}" for text in said), flush=True)
    print("the same cells: " + ", ".join(f"{kind} {count}" for kind, count in same.items()))


if __name__ == "__main__":
    sys.exit(main())
