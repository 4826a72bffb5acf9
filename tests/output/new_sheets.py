#!/usr/bin/env python3
"""Sheets asked for by name, headings and cells of a settled kind, in new and existing workbooks of both forms."""

import os
import shutil
import sys
import unittest

try:
    import openpyxl
    import xlrd
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case

HEADING = ["settle\t{0}\t1\t1\tH\t\t\tNo", "settle\t{0}\t1\t2\tH\t\t\t2024", "heading\t{0}\t1"]
ROWS = ["settle\t{0}\t2\t1\tT\t\t\t12", "settle\t{0}\t2\t2\tN\t-1234.5\t0.00\t1.234,50-",
        "settle\t{0}\t3\t1\tN\t45657\tdd\\.mm\\.yyyy\t31.12.2024", "settle\t{0}\t3\t2\tN\t1x\t0\tone", "write\t{0}\t4\t2\t7"]
SHOWN = [["No", "2024"], ["12", -1234.5], [45657, "one"], ["", 7]]


class Sheets(link_case.XlsCase):
    def write(self, name, *lines):
        self.path = os.path.join(self.folder.name, name)
        answers = self.run_link(*lines, f"save\t{self.path}")
        self.assertEqual([answer for answer in answers if answer.startswith("failed")], [])
        return answers

    def made(self, number):
        return [line.format(number) for line in HEADING + ROWS]

    def check_xlsx(self, book, name, new):
        sheet = book[name]
        rows = [[cell.value for cell in row] for row in sheet.iter_rows()]
        self.assertEqual(rows[2][0].strftime("%d.%m.%Y"), "31.12.2024")
        rows[2][0], rows[3][0] = 45657, ""
        self.assertEqual(rows, SHOWN)
        self.assertEqual((sheet["B2"].number_format, sheet["A3"].number_format), ("0.00", r"dd\.mm\.yyyy"))
        self.assertEqual([cell.font.b for cell in sheet[1]], [new or None] * 2 if new else [sheet["A1"].font.b] * 2)
        self.assertFalse(sheet["A2"].font.b)
        self.assertEqual(sheet.freeze_panes, "A2" if new else None)
        self.assertEqual(sheet.auto_filter.ref, "A1:B4" if new else None)

    def check_xls(self, book, name, new):
        sheet = book.sheet_by_name(name)
        self.assertEqual([sheet.row_values(row) for row in range(sheet.nrows)], SHOWN)
        bold = [book.font_list[book.xf_list[sheet.cell_xf_index(0, column)].font_index].weight for column in range(2)]
        self.assertEqual(bold, [700, 700] if new else [400, 400])
        self.assertEqual((sheet.panes_are_frozen, sheet.horz_split_pos), (1, 1) if new else (0, 0))

    def test_new_workbook_takes_sheets_behind_its_two(self):
        answers = self.write("a.xlsx", "sheet\tTotals", *self.made(3), "sheet\tTOTALS", "sheet\tSheet2", "names")
        self.assertEqual([answers[0]] + answers[-4:-1], ["ok 3", "ok 3", "ok 2", "ok Sheet1|Sheet2|Totals"])
        book = openpyxl.load_workbook(self.path)
        self.check_xlsx(book, "Totals", True)
        self.write("a.xls", "sheet\tTotals", *self.made(3))
        self.check_xls(xlrd.open_workbook(self.path, formatting_info=True), "Totals", True)
        self.assertEqual(self.run_link("sheet\ta/b")[0][:6], "failed")

    def test_existing_workbook_takes_sheets_behind_its_own(self):
        for name in ("b.xlsx", "b.xls"):
            self.write(name, "write\t1\t1\t1\t=2+3", "write\t2\t1\t1\tkept")
            self.write(name, "write\t1\t2\t1\tmore", "sheet\tTotals", *self.made(3), "sheet\tEmpty", "activate\t3", "read\t3\t3\t1")
            answers = self.run_link("names", "read\t1\t2\t1", "read\t2\t1\t1", "read\t3\t2\t2")
            self.assertEqual(answers[:3], ["ok Sheet1|Sheet2|Totals|Empty", "ok more", "ok kept"])
            if name.endswith("xlsx"):
                book = openpyxl.load_workbook(self.path)
                self.check_xlsx(book, "Totals", False)
                self.assertEqual(book.active.title, "Totals")
            else:
                self.check_xls(xlrd.open_workbook(self.path, formatting_info=True), "Totals", False)
            # Again into the file with the added ones.
            again = os.path.join(self.folder.name, "again." + name.split(".")[1])
            shutil.copy(self.path, again)
            self.write(os.path.basename(again), "sheet\ttotals", "write\t3\t9\t1\tlast", "sheet\tFifth", "write\t5\t1\t1\tfirst")
            self.assertEqual(self.run_link("names", "read\t3\t9\t1", "read\t5\t1\t1"),
                             ["ok Sheet1|Sheet2|Totals|Empty|Fifth", "ok last", "ok first"])


if __name__ == "__main__":
    link_case.main()
