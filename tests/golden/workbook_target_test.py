#!/usr/bin/env python3
"""Which sheet of a workbook that exists is written, by every method, and what is left of the rest of it."""

import argparse
import os
import subprocess
import sys
import tempfile
import unittest

try:
    import openpyxl
    import xlrd
    import xlwt
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(0)

PROGRAM = None
REPORT = "Item      Amount\n" + "".join(f"part {n:<5}{n}.50\n" for n in range(1, 4))
ROWS = [["Item", "Amount"]] + [[f"part {n}", n + 0.5] for n in range(1, 4)]
PROFILE = "".join(f"{place}\t{width}\t[32] Space\tLeft\tNo\t{place}\t\t\r\n" for place, width in ((1, 10), (2, 8)))
RECIPE = "[Table 1]\nReadStartLine=Item\nReadStartLineOffset=0\nReadEndLine=END\nReadEndLineOffset=-1\nParsing=--------- --------\nWriteColumn=A\n"


def values(path, sheet):
    """Rows of a sheet without the empty ones behind; texts without the blanks around them."""
    if path.endswith(".xlsx"):
        rows = [list(row) for row in openpyxl.load_workbook(path)[sheet].iter_rows(values_only=True)]
    else:
        table = xlrd.open_workbook(path).sheet_by_name(sheet)
        rows = [[value if value != "" else None for value in table.row_values(row)] for row in range(table.nrows)]
    rows = [[cell.strip() if isinstance(cell, str) else cell for cell in row] for row in rows]
    while rows and not any(cell is not None for cell in rows[-1]):
        rows.pop()
    return [row[:2] for row in rows]


def make(path, cells=60):
    """A workbook of a user: data with a formula in it, and a summary."""
    if path.endswith(".xlsx"):
        book = openpyxl.Workbook()
        data, summary = book.active, book.create_sheet("Summary")
        data.title = "Data"
        for row in range(1, cells + 1):
            data.cell(row, 1, f"old {row}")
        data["B1"], summary["A1"] = "=1+1", "=SUM(Data!B1:B99)"
    else:
        book = xlwt.Workbook()
        data, summary = book.add_sheet("Data"), book.add_sheet("Summary")
        for row in range(cells):
            data.write(row, 0, f"old {row + 1}")
        data.write(0, 1, xlwt.Formula("1+1"))
        summary.write(0, 0, xlwt.Formula("SUM(Data!B1:B99)"))
    book.save(path)


class Target(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name, text in (("lines.txt", REPORT), ("r.txt", REPORT + "END\n"), ("p.txt", PROFILE), ("r.rcp", RECIPE)):
            with open(os.path.join(self.folder, name), "w", encoding="utf-8", newline="") as file:
                file.write(text)

    def run_program(self, *words, status=0):
        environment = {**os.environ, "HOME": self.folder, "LC_ALL": "C.UTF-8", "XDG_CONFIG_HOME": self.folder,
                       "QUILLON_DRIVE_C": self.folder}
        done = subprocess.run([PROGRAM, *words], cwd=self.folder, capture_output=True, text=True, env=environment, timeout=100)
        self.assertEqual(done.returncode, status, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def convert(self, output, *words, method=("--recipe", "r.rcp"), status=0):
        report = "r.txt" if method[0] == "--recipe" else "lines.txt"
        return self.run_program("convert", report, "-o", output, *method, *words, status=status)

    def path(self, name):
        return os.path.join(self.folder, name)

    def test_every_method_changes_the_first_sheet_and_keeps_the_others(self):
        for kind in ("xlsx", "xls"):
            for method in (("--recipe", "r.rcp"), ("--profile", "./p.txt")):
                with self.subTest(kind=kind, method=method[0]):
                    name = f"{method[0][2:]}.{kind}"
                    make(self.path(name))
                    told = self.convert(name, "--backup", method=method)
                    self.assertEqual(values(self.path(name), "Data"), ROWS)
                    self.assertIn('"Data" was emptied', told)
                    self.assertIn("61, formulas: 1", told)
                    self.assertEqual(len(values(self.path(name), "Summary")), 1 if kind == "xlsx" else 0)
                    os.rename(self.path(name + "~"), self.path("kept." + kind))
                    self.assertEqual(values(self.path("kept." + kind), "Data")[59][0], "old 60")
                    self.assertNotIn("emptied", self.convert("new." + kind, method=method) + self.convert("new." + kind, method=method))

    def test_a_profile_leaves_what_is_below_it_with_no_clear_and_all_else_goes_with_replace(self):
        for kind in ("xlsx", "xls"):
            with self.subTest(kind=kind):
                make(self.path("a." + kind))
                self.convert("a." + kind, "--no-clear", method=("--profile", "./p.txt"))
                rows = values(self.path("a." + kind), "Data")
                self.assertEqual((rows[:4], rows[4]), (ROWS, ["old 5", None]))
                self.convert("a." + kind, "--replace", method=("--profile", "./p.txt"))
                self.assertEqual(values(self.path("a." + kind), "Quillon-Sheet-Name"), ROWS)
                with self.assertRaises((KeyError, xlrd.XLRDError)):
                    values(self.path("a." + kind), "Summary")

    def test_the_sheet_is_chosen_by_name_or_number_and_made_where_it_is_missing(self):
        for kind in ("xlsx", "xls"):
            for method in (("--recipe", "r.rcp"), ("--profile", "./p.txt")):
                with self.subTest(kind=kind, method=method[0]):
                    name = "s." + kind
                    make(self.path(name))
                    self.convert(name, "--sheet", "New", method=method)
                    self.assertEqual(values(self.path(name), "New"), ROWS)
                    self.convert(name, "--sheet", "2", method=method)
                    self.assertEqual(values(self.path(name), "Summary"), ROWS)
                    self.assertEqual(values(self.path(name), "Data")[59][0], "old 60")
                    self.convert("fresh." + kind, "--sheet", "Budget", method=method)
                    self.assertEqual(values(self.path("fresh." + kind), "Budget"), ROWS)
                    os.remove(self.path("fresh." + kind))

    def test_a_job_names_the_sheet_for_the_long_form_alone(self):
        make(self.path("j.xlsx"))
        with open(self.path("j.QLN"), "w", encoding="utf-8") as file:
            file.write(f"[QLN]\nsInputFile={self.path('r.txt')}\nsOutputFile={self.path('j.xlsx')}\nsRecipeFile={self.path('r.rcp')}\nlConversionMethod=1\nsSheetTarget=Summary\n"
                       "bClearOutputFileBeforeProcessing=TRUE\n")
        self.run_program("job", "j.QLN")
        self.assertEqual(values(self.path("j.xlsx"), "Summary"), ROWS)
        self.assertEqual(values(self.path("j.xlsx"), "Data")[0][0], "old 1")
        self.run_program("/JC:\\j.QLN")
        self.assertEqual(values(self.path("j.xlsx"), "Data"), ROWS)

    def test_nothing_is_overwritten_where_that_is_asked_for(self):
        for method in (("--recipe", "r.rcp"), ("--profile", "./p.txt")):
            make(self.path("n.xlsx"))
            with open(self.path("n.xlsx"), "rb") as file:
                before = file.read()
            told = self.convert("n.xlsx", "--no-overwrite", method=method, status=1)
            self.assertIn("nothing is to be overwritten", told)
            with open(self.path("n.xlsx"), "rb") as file:
                self.assertEqual(file.read(), before)
            self.convert("n.xlsx", "--no-overwrite", "--sheet", "Other", method=method)
            self.assertEqual(values(self.path("n.xlsx"), "Other"), ROWS)

    def test_a_sheet_in_front_of_the_one_that_is_written_is_told(self):
        make(self.path("f.xlsx"))
        book = openpyxl.load_workbook(self.path("f.xlsx"))
        book.active = 1
        book.save(self.path("f.xlsx"))
        self.assertIn("Another sheet is in front", self.convert("f.xlsx"))
        self.assertEqual(values(self.path("f.xlsx"), "Data")[4][0], "old 5")
        self.assertNotIn("Another sheet", self.convert("f.xlsx", "--sheet", "Data"))
        self.assertEqual(values(self.path("f.xlsx"), "Data"), ROWS)

    def test_the_order_of_dates_is_that_of_option_recipe_column_and_locale_in_turn(self):
        def first(*words, rows=("1/2/24", "3/4/24"), recipe=""):
            with open(self.path("d.txt"), "w", encoding="utf-8") as file:
                file.write("DAY\n" + "\n".join(rows) + "\nEND\n")
            with open(self.path("d.rcp"), "w", encoding="utf-8") as file:
                file.write(recipe + "[Table 1]\nReadStartLine=DAY\nReadStartLineOffset=1\nReadEndLine=END\nReadEndLineOffset=-1\n"
                           "Parsing=--------\nWriteColumn=A\n")
            told = self.run_program("convert", "d.txt", "-o", "d.xlsx", "--recipe", "d.rcp", "--replace", *words)
            return openpyxl.load_workbook(self.path("d.xlsx")).worksheets[0]["A1"].value, told

        day, told = first()
        self.assertEqual((day.month, day.day), (1, 2))
        self.assertIn("month before day, as is usual here", told)
        day, told = first(rows=("1/2/24", "31/12/24"))
        self.assertEqual((day.month, day.day), (2, 1))
        self.assertNotIn("usual here", told)
        day, told = first(recipe="[General]\nDateOrder=dmy\n")
        self.assertEqual((day.month, day.day), (2, 1))
        day, told = first("--date-order", "ymd", rows=("24/2/1",), recipe="[General]\nDateOrder=dmy\n")
        self.assertEqual((day.year, day.month, day.day), (2024, 2, 1))
        with open(self.path("d.rcp"), encoding="utf-8") as file:
            text = file.read()
        with open(self.path("d.rcp"), "w", encoding="utf-8") as file:
            file.write(text.replace("dmy", "soon"))
        self.assertIn("DateOrder", self.run_program("convert", "d.txt", "-o", "e.xlsx", "--recipe", "d.rcp", status=1))
        self.assertFalse(os.path.exists(self.path("e.xlsx")))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    known, rest = parser.parse_known_args()
    PROGRAM = os.path.abspath(known.program)
    unittest.main(argv=[sys.argv[0], *rest])
