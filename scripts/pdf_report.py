#!/usr/bin/env python3
"""Measures the reading of PDF: the real reports of the golden cases are printed to PDF and must give the cells of their text.

  scripts/pdf_report.py --program build/bin/quillon [--pdfs FOLDER] [NAME ...]

Four PDFs of each: by LibreOffice (libreoffice-writer) in two fonts, by ghostscript (ghostscript) in two. Prints, report by
report, how many rows are missing and how many came instead; blanks within a cell count as one. PDFs that FOLDER holds
are taken as they are, the others are left there.
"""
import argparse
import csv
import html
import io
import re
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


def text_of(file):
    """Of a report, or of the CSV that keeps its code page."""
    data = file.read_bytes()
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("cp1252", "replace")


def pages_of(report):
    """Pages of lines, tabs at their stops."""
    text = text_of(report).rstrip("\x1a\0")
    text = text.replace("\r\r\n", "\n").replace("\r\n", "\n").replace("\r", "\n")
    return [[line.expandtabs(8) for line in page.split("\n")] for page in text.split("\f")]


def width_of(pages, size):
    return int(max(len(line) for page in pages for line in page) * size * 0.602) + 2 * MARGIN + 10


OFFICE_FORM = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" office:version="1.3"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 office:mimetype="application/vnd.oasis.opendocument.text">
<office:font-face-decls><style:font-face style:name="F" svg:font-family="'{font}'" style:font-pitch="fixed"/></office:font-face-decls>
<office:automatic-styles>
<style:page-layout style:name="Paper"><style:page-layout-properties fo:page-width="{width}pt" fo:page-height="{height}pt"
 fo:margin="{margin}pt"/></style:page-layout>
<style:style style:name="Line" style:family="paragraph"><style:text-properties style:font-name="F" fo:font-size="{size}pt"/></style:style>
<style:style style:name="Top" style:family="paragraph"><style:paragraph-properties fo:break-before="page"/>
<style:text-properties style:font-name="F" fo:font-size="{size}pt"/></style:style>
</office:automatic-styles>
<office:master-styles><style:master-page style:name="Standard" style:page-layout-name="Paper"/></office:master-styles>
<office:body><office:text>{body}</office:text></office:body></office:document>
"""


def print_by_office(pages, font, size, made):
    """A paragraph for each line: a web page would lay its page break on every one of them."""
    lines = [("Top" if number and not at else "Line", line) for number, page in enumerate(pages) for at, line in enumerate(page)]
    body = "".join(f'<text:p text:style-name="{style}">{office_text(line)}</text:p>' for style, line in lines)
    source = made.with_suffix(".fodt")
    source.write_text(OFFICE_FORM.format(font=font, size=size, width=width_of(pages, size), height=HEIGHT, margin=MARGIN,
                                         body=body), encoding="utf-8")
    subprocess.run(["soffice", "--headless", "--convert-to", "pdf", "--outdir", made.parent, source],
                   check=True, capture_output=True)


def office_text(line):
    """Blanks in a row are one unless each is named; what is no character of a document (control codes) is left out."""
    shown = html.escape("".join(c for c in line if c >= " "))
    return re.sub(" +", lambda blanks: f'<text:s text:c="{len(blanks[0])}"/>', shown)


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
        rows += [tuple(" ".join(cell.split()) for cell in row) for row in csv.reader(io.StringIO(text_of(table), newline=""))]
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
    parser.add_argument("--program", required=True, type=lambda name: Path(name).resolve())
    parser.add_argument("--pdfs", type=Path)
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    same = Counter()
    with tempfile.TemporaryDirectory(prefix="quillon-pdf-") as name:
        folder = Path(name)
        pdfs = arguments.pdfs or folder
        pdfs.mkdir(parents=True, exist_ok=True)
        for report, recipe in cases(arguments.names):
            wanted = Counter(rows_of(arguments.program, report, recipe, folder / "text"))
            said = []
            for kind, (font, size) in (OFFICE | POSTSCRIPT).items():
                made = (pdfs / f"{report.stem} {kind}.pdf").resolve()
                if not made.exists():
                    (print_by_office if kind in OFFICE else print_by_postscript)(pages_of(report), font, size, made)
                got = Counter(rows_of(arguments.program, made, recipe, folder / "pdf"))
                same[kind] += got == wanted
                said.append("same" if got == wanted else f"-{(wanted - got).total()} +{(got - wanted).total()}")
            print(f"{report.name:32}{wanted.total():6} rows  " + "  ".join(f"{text:>12}" for text in said), flush=True)
    print("the same cells: " + ", ".join(f"{kind} {count}" for kind, count in same.items()))


if __name__ == "__main__":
    sys.exit(main())
