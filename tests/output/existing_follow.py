#!/usr/bin/env python3
"""What follows the data of a sheet that was emptied and written anew, what goes with the old data, and what is told."""

import csv
import os
import subprocess
import sys
import unittest
import zipfile

try:
    import openpyxl
    import xlrd
    import xlsxwriter
    import xlwt
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case
from link_case import SOFFICE


def writes(rows):
    return [f"write\t1\t{row}\t{column}\t{text}" for row, texts in enumerate(rows, 1) for column, text in enumerate(texts, 1)]


class Follow(link_case.XlsCase):
    def use(self, name):
        self.path = os.path.join(self.folder.name, name)
        return self.path

    def rewrite(self, rows, *more):
        """Empties the first sheet, writes the rows; gives the notes."""
        answers = self.run_link("clearused", *writes(rows), *more, f"save\t{self.path}", "notes")
        self.assertEqual([answer for answer in answers if not answer.startswith("ok")], [])
        return answers[-1]

    def soffice(self, form, folder):
        subprocess.run([SOFFICE, f"-env:UserInstallation=file://{self.folder.name}/profile", "--headless", "--convert-to", form,
                        "--outdir", os.path.join(self.folder.name, folder), self.path], check=True, capture_output=True, timeout=200)

    def test_texts_of_emptied_cells_are_not_in_the_file(self):
        book = openpyxl.Workbook()
        for row in range(1, 9):
            book.active.cell(row, 1, f"secret {row}")
        book.create_sheet("Other")["A1"] = "secret 3"
        book.save(self.use("a.xlsx"))
        self.rewrite([["new"]])
        with zipfile.ZipFile(self.path) as package:
            texts = b"".join(package.read(name) for name in package.namelist())
        self.assertEqual(texts.count(b"secret"), 1)
        self.assertEqual(openpyxl.load_workbook(self.path)["Other"]["A1"].value, "secret 3")
        book = xlwt.Workbook()
        data, other = book.add_sheet("Data"), book.add_sheet("Other")
        for row in range(3000):
            data.write(row, 0, f"secret {row} " + "x" * (row % 50) + ("\u20ac" if row % 3 else ""))
        other.write(0, 0, "open 1")
        other.write(1, 0, "secret 2222 " + "x" * (2222 % 50) + "\u20ac")
        book.save(self.use("a.xls"))
        self.rewrite([["new"], ["open 1"]])
        with open(self.path, "rb") as file:
            texts = file.read()
        self.assertEqual(texts.count(b"secret") + texts.count("secret".encode("utf-16-le")), 1)
        sheets = xlrd.open_workbook(self.path).sheets()
        self.assertEqual([sheet.col_values(0) for sheet in sheets],
                         [["new", "open 1"], ["open 1", "secret 2222 " + "x" * (2222 % 50) + "\u20ac"]])
        size = len(texts)
        for month in range(3):
            self.rewrite([[f"new {month}"], ["open 1"]])
        self.assertLess(os.path.getsize(self.path), size + 4096)

    def test_merged_protected_and_what_no_table_takes_in_is_told(self):
        book = openpyxl.Workbook()
        book.active.append(["Item", "Qty"])
        book.active.append(["a", 1])
        book.active.merge_cells("D1:E2")
        book.active.protection.sheet = True
        book.save(self.use("m.xlsx"))
        told = self.rewrite([["x", "y", "z", "seen", "unseen"]])
        self.assertIn("protected", told)
        self.assertIn("only the first is seen: 1", told)
        book = xlwt.Workbook()
        sheet = book.add_sheet("Data")
        sheet.write_merge(0, 1, 3, 4, "m")
        sheet.protect = True
        book.save(self.use("m.xls"))
        told = self.rewrite([["x", "y", "z", "seen", "unseen"]])
        self.assertIn("protected", told)
        self.assertIn("only the first is seen: 1", told)
        book = xlsxwriter.Workbook(self.use("t.xlsx"))
        sheet = book.add_worksheet()
        sheet.add_table(0, 0, 3, 1, {"name": "T", "total_row": True, "columns": [{"header": "A"}, {"header": "B", "total_function": "sum"}]})
        book.close()
        self.assertEqual(self.run_link(*writes([["A", "B"], [1, 2], [3, 4], [5, 6], [7, 8], [9, 10]]), f"save\t{self.path}", "notes")[-1],
                         "ok Rows that lie behind the end of a table: 2")

    def test_a_file_of_our_own_is_the_same_the_second_time_as_when_new(self):
        months = [[["Item", "Amount", "On"]] + [[f"item {n}", text(n), f"2026-03-{n + 10}"] for n in range(count)]
                  for text, count in ((lambda n: f"{n}.50", 9), (lambda n: f"${n},000", 5), (lambda n: f"{n:03}", 12))]
        for form in ("xlsx", "xls"):
            for rows in months:
                self.use("own." + form)
                self.rewrite(rows, "sheet\tMore", "write\t3\t1\t1\tfurther")
                again = self.path
                os.path.exists(self.use("new." + form)) and os.remove(self.path)
                self.rewrite(rows, "sheet\tMore", "write\t3\t1\t1\tfurther")
                self.assertEqual(self.shown(again), self.shown(self.path))

    def shown(self, path):
        if path.endswith(".xls"):
            book = xlrd.open_workbook(path, formatting_info=True)
            code = lambda cell: book.format_map[book.xf_list[cell.xf_index].format_key].format_str
            return [(sheet.name, [[(cell.value, code(cell)) for cell in sheet.row(row)] for row in range(sheet.nrows)],
                     {n: info.width for n, info in sheet.colinfo_map.items()}) for sheet in book.sheets()]
        book = openpyxl.load_workbook(path)
        return [(sheet.title, [[(cell.value, cell.number_format) for cell in row] for row in sheet.iter_rows()],
                 {n: info.width for n, info in sheet.column_dimensions.items()}) for sheet in book.worksheets]

    def test_names_of_an_xls_follow_its_data_and_truth_values_show_as_such(self):
        if not SOFFICE:
            self.skipTest("soffice is missing")
        book = xlsxwriter.Workbook(self.use("n.xlsx"))
        sheet = book.add_worksheet("Data")
        for row in range(6):
            sheet.write_row(row, 0, ["a", row, "b"])
        book.define_name("Amounts", "=Data!$B$2:$B$6")
        book.define_name("Half", "=Data!$B$2:$B$4")
        sheet.print_area(0, 0, 5, 2)
        book.close()
        self.soffice("xls:MS Excel 97", "xls")
        self.path = os.path.join(self.folder.name, "xls", "n.xls")
        self.rewrite([["a", "1", "TRUE"]] + [["a", str(row), "FALSE"] for row in range(8)])
        names = {name.name: name.result.text for name in xlrd.open_workbook(self.path).name_obj_list if name.result}
        self.assertEqual((names["Amounts"], names["Half"]), ("Data!$B$2:$B$9", "Data!$B$2:$B$4"))
        self.assertIn("Data!$A$1:$C$9", names.values())
        self.soffice("csv", "csv")
        with open(os.path.join(self.folder.name, "csv", "n.csv"), encoding="utf-8") as file:
            self.assertEqual([row[2] for row in csv.reader(file)], ["TRUE"] + ["FALSE"] * 8)


if __name__ == "__main__":
    link_case.main()
