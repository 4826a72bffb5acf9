#!/usr/bin/env python3
"""The workbooks of the .xlsx round trip as other programs save them for .xls, edited through the link: charts, pictures,
comments, validations, conditional formats, names and filters come through record by record and stream by stream."""

import os
import shutil
import subprocess

import existing_xls
import existing_xlsx_roundtrip as books
import link_case
import xlwt
from link_case import SOFFICE, SSCONVERT

# Records that must be among those that come through.
HELD = {0x1C: "comment", 0xEB: "picture", 0xEC: "drawing", 0x1BE: "validation", 0x1B1: "conditional format", 0x18: "name",
        0x9D: "filter", 0x1002: "chart", 0x221: "array formula", 0x1B8: "link", 0xB0: "pivot table"}
BY_XLWT = {
    "frozen": lambda book, sheet: (sheet.set_panes_frozen(True), sheet.set_vert_split_pos(2)),
    "picture": lambda book, sheet: sheet.insert_bitmap_data(bitmap(), 4, 9),
    "outline and page": lambda book, sheet: (setattr(sheet.row(3), "level", 1), setattr(sheet, "header_str", b"&Lpage &P"),
                                             setattr(sheet, "horz_page_breaks", [(10, 0, 255)])),
    "links": lambda book, sheet: sheet.write(9, 1, xlwt.Formula('HYPERLINK("https://example.org/";"there")')),
    "protected and 1904": lambda book, sheet: (setattr(sheet, "protect", True), setattr(book, "dates_1904", True)),
}


def bitmap():
    return (b"BM" + (58).to_bytes(4, "little") + bytes(4) + (54).to_bytes(4, "little") + (40).to_bytes(4, "little") +
            (1).to_bytes(4, "little") * 2 + b"\1\0\x18\0" + bytes(24) + b"\0\0\xff\0")


def of_xlwt(folder):
    for name, fill in BY_XLWT.items():
        book = xlwt.Workbook()
        sheet = book.add_sheet("Data")
        for row in range(8):
            for column in range(5):
                sheet.write(row, column, row * column if column else f"item {row}")
        fill(book, sheet)
        book.add_sheet("Notes").write(0, 0, xlwt.Formula("Data!B2*2"))
        path = os.path.join(folder, f"xlwt {name}.xls")
        book.save(path)
        yield path


def sources(folder):
    for name, build in books.WORKBOOKS.items():
        if not name.startswith("by hand") or "pivot" in name:
            path = os.path.join(folder, name.replace(":", "") + ".xlsx")
            build(path)
            yield path


def of_libreoffice(folder, paths):
    target = os.path.join(folder, "libreoffice")
    subprocess.run([SOFFICE, f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", "xls",
                    "--outdir", target, *paths], capture_output=True, timeout=250)
    return [os.path.join(target, os.path.basename(path)[:-1]) for path in paths]


def of_gnumeric(folder, paths):
    os.mkdir(os.path.join(folder, "gnumeric"))
    for path in paths:
        made = os.path.join(folder, "gnumeric", os.path.basename(path)[:-1])
        subprocess.run([SSCONVERT, path, made], capture_output=True, check=True)
        yield made


class RoundTrips(existing_xls.EditedWorkbook):
    maxDiff = 3000

    def test_only_touched_cells_differ(self):
        folder = self.folder.name
        made = list(sources(folder))
        paths = [*of_xlwt(folder), *(of_libreoffice(folder, made) if SOFFICE else []),
                 *(of_gnumeric(folder, made) if SSCONVERT else [])]
        held = set()
        for self.path in paths:
            with self.subTest(self.path):
                shutil.copyfile(self.path, self.path + ".before.xls")
                self.edit_and_compare()
            book = existing_xls.streams(self.path)["Workbook"]
            held |= {number for part in existing_xls.records(book) for number, _ in part}
            sources_of_pivots = [body for part in existing_xls.records(book) for number, body in part if number == 0x51]
            self.assertTrue(all(b"Main (P1)" in body for body in sources_of_pivots), "a pivot table follows its sheet's name")
        if not (SOFFICE and SSCONVERT):
            self.skipTest("soffice or ssconvert is missing")
        self.assertGreaterEqual(len(paths), 20)
        self.assertEqual([what for number, what in HELD.items() if number not in held], [])
        for path in paths:  # what another program grumbles about in the workbook as it was, it may grumble about again
            runs = [subprocess.run([SSCONVERT, name, path + ".csv"], capture_output=True, text=True)
                    for name in (path + ".before.xls", path)]
            self.assertLessEqual(len(runs[1].stderr.splitlines()), len(runs[0].stderr.splitlines()), runs[1].stderr)
            with open(path + ".csv", encoding="utf-8") as file:
                self.assertIn("hello", file.read(), path)


if __name__ == "__main__":
    link_case.main()
