#!/usr/bin/env python3
"""Tidy tables in new workbooks: what openpyxl and xlrd read back of headings, kinds of cells and what these show.

  tidy_workbooks_test.py --program build-dev/bin/quillon
"""

import argparse
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import openpyxl
import xlrd

REPORT = """G: North
  101 Bolt    $1,234.50  31.12.24  12.5%  0010
  102 Nut        (5.00)  01.01.25   3%    0020
G: South
  103 Pump        n/a     x       (1.25)% 0030
SUM     1
"""
RECIPE = """[Table 1]
Needs=A digits
Places=3-5 7-12 13-23 26-33 35-41 43-46
Names=No|Item|Value|Day|Share|Code
Types=A text, C number, D date DD.MM.YY, E number, F text
Blank=n/a
[Heading 1.1]
Text=G:
Names=Region
[Table 2]
Like=SUM
Places=1-3 5-10
Names=Word|Sum
Types=B number
Sheet=Sums
"""
NAMES = ["Region", "No", "Item", "Value", "Day", "Share", "Code"]
DAYS = [45657, 45658]
ROWS = [["North", "101", "Bolt", 1234.5, DAYS[0], 0.125, "0010"],
        ["North", "102", "Nut", -5, DAYS[1], 0.03, "0020"],
        ["South", "103", "Pump", "", "x", -0.0125, "0030"]]
SHOWN = [['"$"#,##0.00', r"dd\.mm\.yy", "0.0%"], ["0.00;(0.00)", r"dd\.mm\.yy", "0%"]]


class TidyWorkbooks(unittest.TestCase):
    program = ""

    def convert(self, name):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder)
            (path / "report.txt").write_text(REPORT)
            (path / "recipe.rcp").write_text(RECIPE)
            command = [self.program, "convert", "-q", "report.txt", "--recipe", "recipe.rcp", "-o", name]
            run = subprocess.run(command, cwd=path, capture_output=True, text=True, check=False)
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            return openpyxl.load_workbook(path / name) if name.endswith("x") else \
                xlrd.open_workbook(path / name, formatting_info=True)

    def test_xlsx(self):
        book = self.convert("out.xlsx")
        sheet = book.worksheets[0]
        self.assertEqual([cell.value for cell in sheet[1]], NAMES)
        rows = [["" if cell.value is None else cell.value for cell in row] for row in sheet.iter_rows(min_row=2)]
        for row, day in zip(rows, DAYS):
            self.assertEqual((row[4] - xlrd.xldate.xldate_as_datetime(day, 0)).total_seconds(), 0)
            row[4] = day
        self.assertEqual(rows, ROWS)
        self.assertEqual([[cell.number_format for cell in sheet[r][3:6]] for r in (2, 3)], SHOWN)
        self.assertEqual([cell.font.b for cell in sheet[1]], [True] * len(NAMES))
        self.assertFalse(any(cell.font.b for cell in sheet[2]))
        self.assertEqual((sheet.freeze_panes, sheet.auto_filter.ref), ("A2", "A1:G4"))
        sums = book["Sums"]
        self.assertEqual([[cell.value for cell in row] for row in sums.iter_rows()], [["Word", "Sum"], ["SUM", 1]])
        self.assertEqual((sums.freeze_panes, sums.auto_filter.ref), ("A2", "A1:B2"))

    def test_xls(self):
        book = self.convert("out.xls")
        sheet = book.sheet_by_index(0)
        self.assertEqual([sheet.row_values(row) for row in range(sheet.nrows)], [NAMES] + ROWS)
        kinds = [sheet.row_types(row) for row in (1, 2)]
        self.assertEqual([list(row) for row in kinds], [[1, 1, 1, 2, 3, 2, 1]] * 2)
        shown = [[book.format_map[book.xf_list[cell.xf_index].format_key].format_str for cell in sheet.row(r)[3:6]]
                 for r in (1, 2)]
        self.assertEqual(shown, SHOWN)
        weights = [book.font_list[book.xf_list[sheet.cell_xf_index(r, 0)].font_index].weight for r in (0, 1)]
        self.assertEqual(weights, [700, 400])
        self.assertEqual((sheet.panes_are_frozen, sheet.horz_split_pos), (1, 1))
        self.assertEqual(book.sheet_by_name("Sums").row_values(1), ["SUM", 1])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, type=lambda text: str(Path(text).resolve()))
    TidyWorkbooks.program = parser.parse_args().program
    unittest.main(argv=sys.argv[:1])
