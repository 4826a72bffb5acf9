#!/usr/bin/env python3
"""Existing .xls workbooks of several makers, edited through the link and compared record by record and stream by stream:
only the touched cells may differ. Whatever is missing here (a writer, a reader) is named and passed over."""

import csv
import datetime
import io
import os
import struct
import subprocess
import sys
import unittest

try:
    import xlrd
    import xlrd.compdoc
    import xlwt
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case
from link_case import SOFFICE, SSCONVERT


WRITES = [(1, 3, 1, "hello", "hello"), (1, 3, 2, "77.5", 77.5), (1, 5, 3, "007", "007"), (1, 4, 6, "12/31/2023", 45291),
          (1, 6, 4, "Gr\u00fc\u00dfe \u20ac", "Gr\u00fc\u00dfe \u20ac"), (1, 120, 2, "1,234.50", 1234.5),
          (1, 121, 20, "x" * 9000, "x" * 9000), (1, 2, 8, "=B2*3", None), (2, 3, 1, "note", "note")]
TOUCHED = {(sheet - 1, row - 1, column - 1) for sheet, row, column, _, _ in WRITES}

# Records that say where something lies or what was added; compared by what they mean, not byte by byte.
MOVED = {0x51, 0x7D, 0x85, 0xFC, 0xFF, 0x20B, 0xD7, 0x200, 0x208, 0x41E, 0xE0, 0x1C1}
CELLS = {0x201, 0x203, 0x204, 0x205, 0x27E, 0xFD, 0xBD, 0xBE, 0x06}


def sample(path):
    book = xlwt.Workbook()
    sheet, notes = book.add_sheet("Data"), book.add_sheet("Notes")
    bold = xlwt.easyxf("font: bold on; pattern: pattern solid, fore_colour yellow", num_format_str="0.00")
    date = xlwt.easyxf(num_format_str="dd.mm.yyyy")
    for row in range(100):
        sheet.write(row, 0, f"line {row} \u20ac")
        sheet.write(row, 1, row * 1.5, bold)
        sheet.write(row, 2, row)
        sheet.write(row, 3, xlwt.Formula(f"B{row + 1}*2"))
        sheet.write(row, 5, datetime.date(2024, 1, 1 + row % 28), date)
    sheet.write(5, 7, True)
    sheet.write(6, 7, xlwt.Formula('A1&"!"'))
    sheet.write_merge(20, 21, 8, 9, "merged")
    sheet.col(0).width = 5000
    sheet.set_panes_frozen(True)
    sheet.set_horz_split_pos(1)
    notes.write(0, 0, xlwt.Formula("SUM(Data!B1:B100)"))
    notes.write(1, 0, "kept")
    book.save(path)


def streams(path):
    """All streams of a compound file by name."""
    with open(path, "rb") as file:
        document = xlrd.compdoc.CompDoc(file.read(), logfile=io.StringIO())
    return {entry.name: document.get_named_stream(entry.name) for entry in document.dirlist if entry.etype == 2}


def records(stream):
    """Substreams of a workbook as lists of records (number, data); what CONTINUEs hold belongs to their record."""
    parts, place = [], 0
    while place + 4 <= len(stream):
        number, length = struct.unpack_from("<HH", stream, place)
        if number == 0x809:
            parts.append([])
        data = stream[place + 4:place + 4 + length]
        if number == 0x3C:
            parts[-1][-1] = (parts[-1][-1][0], parts[-1][-1][1] + b"<continued>" + data)
        elif parts and number:
            parts[-1].append((number, data))
        place += 4 + length
    return parts


def cells(sheet):
    found = {}
    for row in range(sheet.nrows):
        for column in range(sheet.row_len(row)):
            cell = sheet.cell(row, column)
            if cell.ctype != xlrd.XL_CELL_EMPTY:
                found[row, column] = (cell.ctype, cell.value, cell.xf_index)
    return found


def formulas(stream):
    """Places of the formulas, by sheet."""
    return {(index, *struct.unpack_from("<HH", data)) for index, part in
            enumerate(part for part in records(stream)[1:] if part[0][1][2:4] != b"\x20\0") for number, data in part if number == 0x06}


def convert(path, target):
    subprocess.run([SOFFICE, "--headless", "--convert-to", target, "--outdir", os.path.dirname(path), path], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=200)


class EditedWorkbook(link_case.XlsCase):
    def edit_and_compare(self):
        before, stream_before = xlrd.open_workbook(self.path, formatting_info=True), streams(self.path)
        lines = [f"write\t{s}\t{r}\t{c}\t{text}" for s, r, c, text, _ in WRITES]
        answers = self.run_link(*lines, "name\t1\tMain (P1)", f"save\t{self.path}")
        self.assertEqual(answers, ["ok"] * len(answers))
        after, stream_after = xlrd.open_workbook(self.path, formatting_info=True), streams(self.path)

        self.assertEqual([sheet.name for sheet in after.sheets()], ["Main (P1)"] + before.sheet_names()[1:])
        calculated = formulas(stream_before["Workbook"])
        for index, (old, new) in enumerate(zip(before.sheets(), after.sheets())):
            old_cells, new_cells = cells(old), cells(new)
            for place in old_cells.keys() | new_cells.keys():
                if (index, *place) in calculated - set(TOUCHED):
                    self.assertEqual(new_cells[place][1:], ("", old_cells[place][2]), (index, place))
                elif (index, *place) not in TOUCHED:
                    self.assertEqual(old_cells.get(place), new_cells.get(place), (index, place))
            self.assertEqual(old.merged_cells, new.merged_cells)
            # Columns with a value too long for them have grown, but for those of the user's own.
            grown = {column for sheet, row, column in TOUCHED if sheet == index} - {0}
            widths = [{n: vars(c)["width"] for n, c in info.colinfo_map.items()} for info in (old, new)]
            self.assertEqual({n: w for n, w in widths[0].items() if n not in grown},
                             {n: w for n, w in widths[1].items() if n not in grown})
            self.assertGreaterEqual(widths[1].get(19, 0), 60 * 256 if index == 0 else 0)
        for s, r, c, _, value in WRITES:
            cell = after.sheet_by_index(s - 1).cell(r - 1, c - 1)
            if value is not None:
                self.assertEqual(cell.value, value - 1462 * after.datemode if cell.ctype == xlrd.XL_CELL_DATE else value)
            place = (r - 1, c - 1)
            if place in cells(before.sheet_by_index(s - 1)):
                self.check_format(before, before.sheet_by_index(s - 1).cell_xf_index(*place), after, cell.xf_index)
        self.compare_records(stream_before, stream_after)
        return after

    def check_format(self, before, old, after, new):
        """A cell keeps its format; one of General takes the number format of what is written, and keeps all else."""
        looks = [(x.font_index, x.parent_style_index, vars(x.alignment), vars(x.background), vars(x.border)) for x in
                 (before.xf_list[old], after.xf_list[new])]
        self.assertEqual(*looks)
        if before.format_map[before.xf_list[old].format_key].format_str != "General":
            self.assertEqual(old, new)

    def compare_records(self, before, after):
        self.assertEqual(before.keys(), after.keys())
        for name in before.keys() - {"Workbook"}:
            self.assertEqual(before[name], after[name], name)
        old, new = records(before["Workbook"]), records(after["Workbook"])
        self.assertEqual(len(old), len(new))
        for old_part, new_part in zip(old, new):
            if old_part[0][1][2:4] == b"\x20\0":  # a chart, with cells of its own
                self.assertEqual(old_part, new_part)
                continue
            self.assertEqual(*([(n, data) for n, data in part if n not in MOVED | CELLS and n != 0x207]
                               for part in (old_part, new_part)))
            rows = [{data[:2]: data[6:] for n, data in part if n == 0x208} for part in (old_part, new_part)]
            self.assertLessEqual(rows[0].items(), rows[1].items())
            for number in (0x41E, 0xE0):
                kept = [data for n, data in old_part if n == number]
                self.assertEqual(kept, [data for n, data in new_part if n == number][:len(kept)])
        for place, record in self.index_entries(after["Workbook"]):
            self.assertEqual(record, 0xD7, place)

    def index_entries(self, stream):
        for part in records(stream):
            for number, data in part:
                for entry in range(16, len(data) if number == 0x20B else 0, 4):
                    place = struct.unpack_from("<I", data, entry)[0]
                    yield place, struct.unpack_from("<H", stream, place)[0]


class ExistingWorkbooks(EditedWorkbook):
    def test_of_xlwt(self):
        sample(self.path)
        self.edit_and_compare()

    @unittest.skipUnless(SOFFICE, "no soffice")
    def test_of_libreoffice_and_calculated_there(self):
        sample(os.path.join(self.folder.name, "made.xls"))
        convert(os.path.join(self.folder.name, "made.xls"), "ods")
        os.rename(os.path.join(self.folder.name, "made.ods"), os.path.join(self.folder.name, "a.ods"))
        convert(os.path.join(self.folder.name, "a.ods"), "xls")
        self.edit_and_compare()
        convert(self.path, "csv")
        with open(self.path[:-4] + ".csv", encoding="latin-1") as file:
            shown = list(csv.reader(file))
        self.assertEqual(shown[2][3], "155")  # B3*2, with 77.5 in B3
        self.assertEqual(shown[1][7], "4.5")

    @unittest.skipUnless(SSCONVERT, "no ssconvert")
    def test_of_gnumeric_and_calculated_there(self):
        made = os.path.join(self.folder.name, "made.xls")
        sample(made)
        subprocess.run([SSCONVERT, made, self.path], check=True, capture_output=True)
        self.edit_and_compare()
        done = subprocess.run([SSCONVERT, "-S", self.path, self.path + ".%n.csv"], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        with open(self.path + ".1.csv", encoding="utf-8") as file:
            self.assertEqual(file.readline().strip(), "7499.5")  # the sum over the first sheet

    def test_reads_as_shown_and_clears_the_used_range(self):
        sample(self.path)
        answers = self.run_link("read\t1\t3\t1", "read\t1\t3\t2", "read\t1\t3\t6", "read\t1\t6\t8", "read\t2\t2\t1",
                                "used", "clearused", "read\t1\t3\t1", "write\t1\t1\t1\tnew", f"save\t{self.path}")
        self.assertEqual(answers[:6], ["ok line 2 \u20ac", "ok 3", "ok 01/03/2024", "ok TRUE", "ok kept", "ok 1 1 100 10"])
        self.assertEqual(answers[7], "ok")
        book = xlrd.open_workbook(self.path, formatting_info=True)
        filled = {place: cell for place, cell in cells(book.sheet_by_index(0)).items() if cell[0] != xlrd.XL_CELL_BLANK}
        self.assertEqual([(place, cell[1]) for place, cell in filled.items()], [((0, 0), "new")])
        self.assertEqual(cells(book.sheet_by_index(0))[2, 1][2], 18)  # the yellow cells stay yellow
        self.assertEqual(book.sheet_by_index(1).cell_value(1, 0), "kept")


if __name__ == "__main__":
    link_case.main()
