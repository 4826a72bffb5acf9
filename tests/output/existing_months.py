#!/usr/bin/env python3
"""One report, month after month, into one workbook that people work in: what they see is what was printed, and what is
theirs stays."""

import os
import random
import shutil
import subprocess
import sys
import unittest

try:
    import openpyxl
    import xlrd
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case
from link_case import SOFFICE

HEAD = ["Item", "Amount", "Share", "Booked", "Code"]


def month(number):
    """The texts of a month's report: other forms of numbers each time, and another number of rows."""
    pick = random.Random(number)
    amount = pick.choice([lambda n: f"{n:,.2f}", lambda n: f"${n:,.0f}", lambda n: f"{n:.3f}", lambda n: f"({n:,.2f})"])
    share = pick.choice([lambda n: f"{n % 100}%", lambda n: f"{n % 100}.5", lambda n: f"{n % 100}.25%"])
    booked = pick.choice([lambda d: f"2026-{number:02}-{d:02}", lambda d: f"{number:02}/{d:02}/2026", lambda d: f"{d}.{number}.2026"])
    rows = [[f"item {pick.randrange(10 ** pick.randrange(1, 14))}", amount(pick.randrange(10 ** pick.randrange(2, 8)) + 1),
             share(pick.randrange(1000)), booked(day), f"{pick.randrange(10 ** 5):05}"] for day in range(13, 13 + pick.randrange(3, 15))]
    return [HEAD] + rows


def make(path):
    """The first month's workbook, as a user has built on it: a summary of formulas, a chart, colours, a width."""
    from openpyxl.chart import BarChart, Reference
    from openpyxl.styles import Font, PatternFill
    book = openpyxl.Workbook()
    data, summary = book.active, book.create_sheet("Summary")
    data.title = "Data"
    data["B2"], data["B3"] = 1, 2
    data["A2"].fill = PatternFill("solid", fgColor="FFFF00")
    data["B2"].font = Font(bold=True)
    data["B2"].number_format = data["B3"].number_format = '"$"#,##0'
    data.column_dimensions["D"].width = 31.25
    summary["A1"], summary["A2"] = "=SUM(Data!B2:B99)", "=COUNTA(Data!A:A)"
    chart = BarChart()
    chart.add_data(Reference(data, min_col=2, min_row=1, max_row=9))
    summary.add_chart(chart, "D1")
    book.save(path)


def shown_by_soffice(path):
    """Cells of the first sheet and the summary as a spreadsheet program shows them."""
    folder = path + ".csv"
    os.makedirs(folder, exist_ok=True)
    subprocess.run([SOFFICE, "--headless", "--convert-to", 'csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false,false,-1',
                    "--outdir", folder, path], check=True, capture_output=True, timeout=200)
    import csv
    found = {}
    for name in os.listdir(folder):
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            found[name.rsplit("-", 1)[1][:-4]] = [[cell.strip() for cell in row] for row in csv.reader(file)]
    shutil.rmtree(folder)
    return found


class Months(link_case.XlsCase):
    def run_month(self, number):
        lines = [f"write\t1\t{row}\t{column}\t{text}" for row, texts in enumerate(month(number), 1)
                 for column, text in enumerate(texts, 1)]
        answers = self.run_link("clearused", *lines, f"save\t{self.path}", "notes")
        self.assertEqual([a for a in answers if not a.startswith("ok")], [])

    def check_values(self, number):
        """Read by a script: values are those of the report, and no formula shows an old result."""
        rows = month(number)
        book = openpyxl.load_workbook(self.path)
        sheet = book.worksheets[0]
        for row, texts in enumerate(rows[1:], 2):
            text = texts[1].replace(",", "").replace("$", "")
            amount = -float(text[1:-1]) if text[0] == "(" else float(text)
            self.assertAlmostEqual(sheet.cell(row, 2).value, amount, 6, texts)
            self.assertEqual(sheet.cell(row, 4).value.strftime("%m-%d"), f"{number:02}-{row + 11:02}")
            self.assertEqual(f"{sheet.cell(row, 5).value:>05}", texts[4])
        left = [cell.value for row in sheet.iter_rows(min_row=len(rows) + 1) for cell in row if cell.value is not None]
        self.assertEqual(left, [])
        self.assertEqual((sheet["A2"].fill.fgColor.rgb[2:], sheet["B2"].font.b), ("FFFF00", True))
        self.assertAlmostEqual(sheet.column_dimensions["D"].width, 31.25, 0)
        kept = openpyxl.load_workbook(self.path, data_only=True)["Summary"]
        self.assertEqual([kept["A1"].value, kept["A2"].value], [None, None])
        self.assertEqual(len(book["Summary"]._charts), 1)

    def test_months_of_one_report_in_an_xlsx_workbook(self):
        self.path = os.path.join(self.folder.name, "book.xlsx")
        make(self.path)
        save_between = set(range(2, 13, int(os.environ.get("QUILLON_MONTHS_STEP", "5"))))
        for number in range(1, 13):
            self.run_month(number)
            self.check_values(number)
            if SOFFICE and number in save_between:
                shown = shown_by_soffice(self.path)
                expected = [[text.strip() for text in row] for row in month(number)]
                self.assertEqual([row[:5] for row in shown["Data"][:len(expected)]], expected, number)
                self.assertNotIn("###", str(shown))
                # A user saves it there, and the next month comes.
                subprocess.run([SOFFICE, "--headless", "--convert-to", "xlsx:Calc MS Excel 2007 XML", "--outdir",
                                self.folder.name + "/saved", self.path], check=True, capture_output=True, timeout=200)
                shutil.move(os.path.join(self.folder.name, "saved", "book.xlsx"), self.path)


if __name__ == "__main__":
    link_case.main()
