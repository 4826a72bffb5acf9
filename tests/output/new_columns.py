#!/usr/bin/env python3
"""What the cells of a column decide together, the same in new and existing workbooks of both forms."""

import datetime
import os
import sys
import unittest

try:
    import openpyxl
    import xlrd
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case

# The texts of a column, and what becomes of each: n number, d date, t text.
COLUMNS = [
    ("codes", ["007", "12 ", " 4711", "-5", "1.5", "Total"], "tttnnt"),
    ("too long for a number", ["12", "1234567890123456", "3,000"], "ttn"),
    ("ports", ["1/1/40", "1/1/1", "1/1/240"], "ttt"),
    ("all dates", ["1/1/40", "12/31/2024", "n/a"], "ddt"),
    ("a day above 12", ["1/2/24", "31/12/2024"], "dd"),
    ("neither order", ["1/31/24", "31/1/24"], "tt"),
    ("points", ["1.2.24", "31.12.24"], "dd"),
    ("sections", ["1.2.24", "3.4.24"], "tt"),
    ("year first beside another form", ["2024-01-31", "2024-02-30", "31-12-2024"], "ttd"),
    ("exponents of zero", [".591E0", "24.41E0", "1.2", "0.00E+00"], "nnnn"),
    ("exponents that no format shows", ["12.5E+3", "1.2E+3", "7"], "ttt"),
    ("comma for a point", ["1,234", "1,5", "12"], "ttt"),
    ("point with nothing behind", ["5.", "1.5", "1,234."], "nnn"),
    ("list of points", ["1.", "2.", "x"], "ttt"),
    ("a sign far off", ["7%        -", "7%", "8.00 -", "-   3", "$    5.00"], "tnntn"),
]
HEIGHT = max(len(texts) for _, texts, _ in COLUMNS)


class Columns(link_case.XlsCase):
    def lines(self, top):
        return [f"write\t1\t{top + row}\t{column}\t{texts[row]}" for row in range(HEIGHT)
                for column, (_, texts, _) in enumerate(COLUMNS, 1) if row < len(texts)]

    def kinds(self, top):
        """Of each column, as its texts are expected."""
        if self.path.endswith("xlsx"):
            sheet = openpyxl.load_workbook(self.path).worksheets[0]
            letter = {str: "t", int: "n", float: "n", datetime.datetime: "d"}
            cell = lambda row, column: letter[type(sheet.cell(row, column).value)]
        else:
            sheet = xlrd.open_workbook(self.path).sheet_by_index(0)
            cell = lambda row, column: "?tnd"[sheet.cell_type(row - 1, column - 1)]
        return ["".join(cell(top + row, column) for row in range(len(texts)))
                for column, (_, texts, _) in enumerate(COLUMNS, 1)]

    def write(self, *lines):
        answers = self.run_link(*lines, f"save\t{self.path}")
        self.assertEqual(set(answers), {"ok"})

    def test_each_column_is_typed_as_one(self):
        expected = [kinds for _, _, kinds in COLUMNS]
        for form in ("xlsx", "xls"):
            self.path = os.path.join(self.folder.name, "a." + form)
            self.write(*self.lines(1))
            self.assertEqual(self.kinds(1), expected, form)
            shown = self.run_link(*(line.replace("write", "read") for line in self.lines(1)))
            written = [line.split("\t")[4].strip() for line in self.lines(1)]
            for text, answer, place in zip(written, shown, self.lines(1)):
                if text[0] in "01" and "/" not in text and "." not in text and "," not in text:
                    self.assertEqual(answer[3:].strip(), text, place)
            # Below the first, in the file that is there now.
            self.write("table\t1", *self.lines(21))
            self.assertEqual(self.kinds(1) + self.kinds(21), expected * 2, form)

    def test_tables_decide_by_themselves_in_any_order_of_rows(self):
        for form in ("xlsx", "xls"):
            self.path = os.path.join(self.folder.name, "b." + form)
            self.write("write\t1\t1\t1\t007", "write\t1\t2\t1\t12", "table\t1", "write\t1\t3\t1\t13", "write\t1\t5\t1\t15",
                       "table\t1", "write\t1\t6\t1\t16", "write\t1\t7\t1\t017", "write\t1\t4\t1\t014")
            answers = self.run_link(*(f"read\t1\t{row}\t1" for row in range(1, 8)))
            self.assertEqual(answers, ["ok 007", "ok 12", "ok 13", "ok 014", "ok 15", "ok 16", "ok 017"])
            sheet = openpyxl.load_workbook(self.path).worksheets[0] if form == "xlsx" else None
            if sheet:
                self.assertEqual({type(sheet.cell(row, 1).value) for row in range(1, 8)}, {str})

    def test_the_order_of_dates_may_be_given(self):
        for mode, *expected in (("mdy", "2024-12-31", "2024-01-02"), ("dmy", None, "2024-02-01"),
                                ("ymd", None, None), ("day", "2024-12-31", "2024-02-01")):
            self.path = os.path.join(self.folder.name, mode + ".xlsx")
            script = os.path.join(self.folder.name, "script")
            with open(script, "w", encoding="utf-8") as file:
                file.write(f"write\t1\t1\t1\t12/31/24\nwrite\t1\t1\t2\t1/2/24\nsave\t{self.path}\n")
            link_case.drive(self.path, script, mode)
            sheet = openpyxl.load_workbook(self.path).worksheets[0]
            dates = [cell.value.strftime("%Y-%m-%d") if cell.is_date else None for cell in sheet[1]]
            self.assertEqual(dates, expected, mode)


if __name__ == "__main__":
    link_case.main()
