#!/usr/bin/env python3
"""New .xls workbooks made through the link, read back by programs of other makers. Whatever is missing here is named and
passed over."""

import csv
import hashlib
import os
import subprocess
import sys
import unittest

try:
    import xlrd
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case
from link_case import SOFFICE, SSCONVERT


T, N, D, B = xlrd.XL_CELL_TEXT, xlrd.XL_CELL_NUMBER, xlrd.XL_CELL_DATE, xlrd.XL_CELL_BOOLEAN

# Text as written, and kind, value and number format as read.
TYPED = [
    ("1234.50", N, 1234.5, "0.00"), ("  1,234.50", N, 1234.5, "#,##0.00"), ("12.50-", N, -12.5, None), ("7%", N, 0.07, "0%"),
    ("0.1", N, 0.1, None), ("123456789.125", N, 123456789.125, None), ("-5", N, -5, "General"), ("007", T, "007", None),
    ("1234567890123456", T, "1234567890123456", None), ("1-2", T, "1-2", None), ("12/31/2024", D, 45657, None),
    ("2024-02-29", D, 45351, None), ("2023-02-29", T, "2023-02-29", None), ("TRUE", B, 1, None), ("#N/A", T, "#N/A", None),
    ("=====", T, "=====", None), ("=Other!A1", T, "=Other!A1", None), ("'x", T, "'x", None),
    ("Gr\u00fc\u00dfe", T, "Gr\u00fc\u00dfe", None), ("\u20ac \U0001f642", T, "\u20ac \U0001f642", None),
    ("a\\nb", T, "a\nb", None), ("x" * 32767, T, "x" * 32767, None), ("\u20ac" * 20000, T, "\u20ac" * 20000, None),
]
FORMULAS = [("=A1+B1*2", 32), ("=SUM(A1:B1)", 22), ("=IF(A1>10,\"more\",\"less\")", "more"), ("=ROUND(A1/7,2)", 1.71),
            ("=SUMPRODUCT((A1:B1>0)*A1:B1)", 22), ("=-A1^2", 144), ("=\"a\"&A1", "a12"), ("=MAX($A$1,5)%", 0.12),
            ("=LEFT(\"abc\")", "a"), ("=COUNT($B:$B)", 1)]


class NewWorkbooks(link_case.XlsCase):
    def test_types_each_text_as_the_sheet_shows_it(self):
        self.run_link(*(f"write\t1\t1\t{column}\t{case[0]}" for column, case in enumerate(TYPED, 1)), f"save\t{self.path}")
        book = xlrd.open_workbook(self.path, formatting_info=True)
        for column, (text, kind, value, code) in enumerate(TYPED):
            cell = book.sheet_by_index(0).cell(0, column)
            self.assertEqual((cell.ctype, cell.value), (kind, value), text[:40])
            if code:
                self.assertEqual(book.format_map[book.xf_list[cell.xf_index].format_key].format_str, code, text)

    def test_has_two_sheets_fonts_and_widths(self):
        self.run_link("write\t1\t1\t1\tshort", "write\t1\t1\t2\t" + "w" * 25, "write\t1\t1\t3\t" + "w" * 100,
                      "name\t1\tLedger (P1)", f"save\t{self.path}")
        book = xlrd.open_workbook(self.path, formatting_info=True)
        self.assertEqual(book.sheet_names(), ["Ledger (P1)", "Sheet2"])
        self.assertEqual({font.name for font in book.font_list}, {"Courier New"})
        self.assertEqual({font.height for font in book.font_list}, {200})
        widths = {column: info.width // 256 for column, info in book.sheet_by_index(0).colinfo_map.items()}
        self.assertEqual(widths, {1: 25, 2: 60})

    def test_takes_any_order_the_last_text_and_the_limits(self):
        answers = self.run_link("write\t1\t65536\t256\tlast", "write\t1\t2\t2\told", "write\t1\t1\t1\tfirst",
                                "write\t1\t2\t2\tnew", "write\t1\t65537\t1\tx", "write\t1\t1\t257\tx", "write\t3\t1\t1\tx",
                                "write\t1\t1\t1\t" + "x" * 32768, "read\t1\t2\t2", "used", f"save\t{self.path}")
        self.assertEqual([answer.split()[0] for answer in answers], ["ok"] * 4 + ["failed"] * 4 + ["ok"] * 3)
        self.assertEqual(answers[8:10], ["ok new", "ok 1 1 65536 256"])
        sheet = xlrd.open_workbook(self.path).sheet_by_index(0)
        self.assertEqual([sheet.cell_value(*place) for place in ((0, 0), (1, 1), (65535, 255))], ["first", "new", "last"])

    def test_gives_the_same_bytes_for_the_same_cells(self):
        digests = set()
        for name in ("a.xls", "b.xls"):
            self.path = os.path.join(self.folder.name, name)
            self.run_link("write\t1\t1\t1\ttext", "write\t1\t1\t2\t12/31/2024", f"save\t{self.path}")
            with open(self.path, "rb") as file:
                digests.add(hashlib.sha256(file.read()).hexdigest())
        self.assertEqual(len(digests), 1)

    def calculated(self, convert):
        lines = [f"write\t1\t{row}\t1\t{formula}" for row, (formula, _) in enumerate(FORMULAS, 2)]
        self.run_link("write\t1\t1\t1\t12", "write\t1\t1\t2\t10", *lines, f"save\t{self.path}")
        subprocess.run(convert, check=True, capture_output=True, timeout=200)
        with open(self.path[:-4] + ".csv", encoding="utf-8") as file:
            shown = [row[0] for row in csv.reader(file)][1:]
        for (formula, result), text in zip(FORMULAS, shown, strict=True):
            self.assertEqual(float(text) if isinstance(result, (int, float)) else text, result, formula)

    @unittest.skipUnless(SOFFICE, "no soffice")
    def test_is_calculated_by_libreoffice(self):
        self.calculated([SOFFICE, "--headless", "--convert-to", "csv", "--outdir", self.folder.name, self.path])

    @unittest.skipUnless(SSCONVERT, "no ssconvert")
    def test_is_calculated_by_gnumeric(self):
        self.calculated([SSCONVERT, self.path, self.path[:-4] + ".csv"])


if __name__ == "__main__":
    link_case.main()
