#!/usr/bin/env python3
"""Existing .xlsx workbooks of several makers, edited through the link and compared part by part: only the touched cells
may differ. Whatever is missing here (a writer, a reader) is named and passed over."""

import os
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
import zlib

try:
    import openpyxl
    import xlsxwriter
    from lxml import etree
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case
from link_case import SOFFICE, SSCONVERT
from xlsx_by_hand import BY_HAND, package


# Row, column, text, and what the cell then holds. Some lie in the data of each workbook, some beyond it.
WRITES = [(2, 1, "hello", "hello"), (3, 2, "1,234.50", 1234.5), (5, 7, "007", "007"), (50, 3, " x\n<&> ", " x\n<&> "),
          (51, 1, "=A1+B3", "=A1+B3")]


def png():
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 1, 1, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"\0\xff\0\0")) + chunk(b"IEND", b""))


# --- Workbooks of openpyxl -------------------------------------------------------------------------------------------

def openpyxl_book(fill):
    def build(path):
        book = openpyxl.Workbook()
        sheet = book.active
        for row in range(1, 9):
            sheet.append([row * column if column > 1 else f"item {row}" for column in range(1, 6)])
        book.create_sheet("Notes")["A1"] = "=Sheet!B2*2"
        fill(book, sheet)
        book.save(path)
    return build


def o_chart(book, sheet):
    from openpyxl.chart import BarChart, Reference
    chart = BarChart()
    chart.add_data(Reference(sheet, min_col=2, min_row=1, max_row=8))
    sheet.add_chart(chart, "H2")


def o_comments(book, sheet):
    from openpyxl.comments import Comment
    sheet["A2"].comment = Comment("look", "me")
    sheet["A2"].hyperlink = "https://example.org/"


def o_rules(book, sheet):
    from openpyxl.formatting.rule import ColorScaleRule, FormulaRule
    from openpyxl.styles import PatternFill
    from openpyxl.worksheet.datavalidation import DataValidation
    validation = DataValidation(type="list", formula1='"a,b"')
    sheet.add_data_validation(validation)
    validation.add("A2:A9")
    sheet.conditional_formatting.add("B1:B9", ColorScaleRule(start_type="min", start_color="FF0000", end_type="max",
                                                             end_color="00FF00"))
    sheet.conditional_formatting.add("C1:C9", FormulaRule(formula=["C1>3"], fill=PatternFill(bgColor="FFFF00")))


def o_names(book, sheet):
    from openpyxl.workbook.defined_name import DefinedName
    book.defined_names.append(DefinedName("Total", attr_text="Sheet!$B$1:$B$8"))
    sheet.auto_filter.ref = "A1:E8"
    sheet.print_title_rows = "1:1"
    sheet.freeze_panes = "B2"


def o_table(book, sheet):
    from openpyxl.worksheet.table import Table
    for column in range(1, 6):
        sheet.cell(1, column, f"Head {column}")
    sheet.add_table(Table(displayName="Stock", ref="A1:E8"))


def o_styles(book, sheet):
    from openpyxl.styles import Alignment, Font
    sheet.merge_cells("A6:C6")
    sheet["B3"].font = Font(bold=True)
    sheet["B3"].alignment = Alignment(horizontal="center")
    sheet.row_dimensions[4].height = 40
    sheet.column_dimensions["B"].width = 33
    sheet["D20"] = "=SUM(A1:A3)"
    sheet["D10"] = "=B1:B2*2"
    sheet.formula_attributes["D10"] = {"t": "array", "ref": "D10:D11"}


# --- Workbooks of xlsxwriter -----------------------------------------------------------------------------------------

def xlsxwriter_book(fill, options=None):
    def build(path):
        book = xlsxwriter.Workbook(path, options or {})
        sheet = book.add_worksheet("Data")
        book.add_worksheet("Notes").write_formula("A1", "=Data!B2*2", None, 2)
        for row in range(8):
            sheet.write(row, 0, f"item {row}")
            for column in range(1, 5):
                sheet.write(row, column, row * column)
        fill(book, sheet)
        book.close()
    return build


def x_chart(book, sheet):
    chart = book.add_chart({"type": "line"})
    chart.add_series({"values": "=Data!$B$1:$B$8"})
    sheet.insert_chart("H2", chart)
    pie = book.add_chart({"type": "pie"})
    pie.add_series({"values": "=Data!$C$1:$C$8"})
    book.add_chartsheet("Picture").set_chart(pie)


def x_pictures(book, sheet):
    import io
    sheet.insert_image("H2", "dot.png", {"image_data": io.BytesIO(png())})
    sheet.insert_textbox("H9", "a box")
    sheet.set_header("&Lpage &P")


def x_rules(book, sheet):
    sheet.conditional_format("B1:B9", {"type": "data_bar", "data_bar_2010": True})
    sheet.data_validation("A2:A9", {"validate": "list", "source": ["a", "b"]})
    sheet.add_sparkline("G1", {"range": "Data!B1:E1"})
    sheet.write_comment("B3", "look")


def x_table(book, sheet):
    sheet.add_table("B1:E8", {"name": "Stock", "columns": [{"header": f"Head {i}"} for i in range(4)]})
    book.define_name("Total", "=Data!$B$1:$B$8")


def x_formulas(book, sheet):
    sheet.write_array_formula("G10:G12", "{=B1:B3*2}")
    sheet.write_rich_string("A4", "a ", book.add_format({"bold": True}), "bold", " text")
    sheet.write_formula("F1", "=SUM(B1:E1)", book.add_format({"num_format": "0.00"}), 10)
    sheet.set_row(5, 30, None, {"level": 1, "hidden": True})
    sheet.protect()


WORKBOOKS = {f"openpyxl {name}": openpyxl_book(fill) for name, fill in {
    "chart": o_chart, "comments": o_comments, "rules": o_rules, "names and filter": o_names, "table": o_table,
    "styles": o_styles}.items()}
WORKBOOKS.update({f"xlsxwriter {name}": xlsxwriter_book(fill) for name, fill in {
    "chart and chart sheet": x_chart, "pictures": x_pictures, "rules": x_rules, "table": x_table,
    "formulas": x_formulas}.items()})
WORKBOOKS["xlsxwriter 1904"] = xlsxwriter_book(lambda book, sheet: None, {"date_1904": True})
WORKBOOKS.update({f"by hand: {name}": build for name, build in BY_HAND.items()})
# The same again as other programs save them.
RESAVED = ["openpyxl chart", "openpyxl rules", "openpyxl names and filter", "xlsxwriter table", "xlsxwriter formulas"]


# --- Comparison ------------------------------------------------------------------------------------------------------

def canonical(element):
    return etree.tostring(element, method="c14n")


def local(element):
    return etree.QName(element).localname if isinstance(element.tag, str) else ""


def cells_of(root):
    """Cells by place, numbered or not."""
    cells, row = {}, 0
    for element in root.iter("{*}row"):
        row, column = int(element.get("r", row + 1)), 0
        for cell in element:
            if local(cell) == "c":
                place = cell.get("r")
                column = openpyxl.utils.cell.coordinate_to_tuple(place)[1] if place else column + 1
                cells[row, column] = cell
    return cells


def names_of_sheets(archive):
    """Part names by workbook order."""
    relations = etree.fromstring(archive.read("xl/_rels/workbook.xml.rels"))
    targets = {r.get("Id"): r.get("Target") for r in relations}
    book = etree.fromstring(archive.read("xl/workbook.xml"))
    names = []
    for sheet in book.iter("{*}sheet"):
        target = targets[[v for k, v in sheet.attrib.items() if k.endswith("}id")][0]]
        names.append(target[1:] if target.startswith("/") else "xl/" + target)
    return names


def without(root, *names):
    for element in list(root):
        if local(element) in names:
            tail = element.tail
            root.remove(element)
            if tail and tail.strip():
                raise AssertionError("text between elements")
    return root


def without_results(root):
    """Formulas without what they gave when the file was saved last: that may depend on any cell."""
    for cell in root.iter("{*}c"):
        if cell.find("{*}f") is not None:
            for value in cell.findall("{*}v"):
                before = value.getprevious()
                before.tail = ((before.tail or "") + (value.tail or "")) or None
                cell.remove(value)
            cell.attrib.pop("t", None)
    return root


class Edited:
    def __init__(self, path, script, mode=""):
        self.path = path
        self.before = path[:-5] + ".before.xlsx"
        shutil.copyfile(path, self.before)
        with open(path + ".script", "w", encoding="utf-8", newline="") as file:
            for command in script:
                fields = [str(field).replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t")
                          for field in command]
                file.write("\t".join(fields) + "\n")
        self.answers = link_case.drive(path, path + ".script", mode)


class ExistingWorkbooks(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="quillon-existing-")
        self.addCleanup(shutil.rmtree, self.folder)

    def build(self, name):
        path = os.path.join(self.folder, re.sub(r"\W+", "-", name) + ".xlsx")
        WORKBOOKS[name](path)
        return path

    def check_part_by_part(self, edited, touched):
        with zipfile.ZipFile(edited.before) as old, zipfile.ZipFile(edited.path) as new:
            self.assertIsNone(new.testzip())
            sheet = names_of_sheets(old)[0]
            kept = [i for i in old.infolist() if "calcChain" not in i.filename or i.filename in new.namelist()]
            self.assertEqual(sorted(i.filename for i in kept), sorted(new.namelist()))
            self.assertEqual([i.filename for i in kept if i.filename != "[Content_Types].xml"], new.namelist()[1:])
            listed = {sheet, "xl/workbook.xml", "xl/styles.xml"}
            if len(kept) < len(old.infolist()):
                listed |= {"[Content_Types].xml", "xl/_rels/workbook.xml.rels"}
            for name in set(names_of_sheets(old)[1:]) & set(new.namelist()) - listed:
                if b"<f" in old.read(name) or b":f" in old.read(name):
                    listed.add(name)
                    roots = [etree.fromstring(archive.read(name)) for archive in (old, new)]
                    self.assertEqual(canonical(without_results(roots[0])), canonical(roots[1]), name)
            strings = "xl/sharedStrings.xml"
            if strings in new.namelist() and old.read(strings) != new.read(strings):
                # Only what stood in the cells that were written over is gone from it.
                listed.add(strings)
                items = [[canonical(item) for item in etree.fromstring(a.read(strings))] for a in (old, new)]
                gone = [item for item, left in zip(*items) if item != left]
                self.assertEqual(len(items[0]), len(items[1]))
                self.assertLessEqual(len(gone), len(touched))
                self.assertFalse([left for item, left in zip(*items) if item != left and "item" in str(left)])
            for part in kept:
                if part.filename not in listed:
                    self.assertEqual(old.read(part.filename), new.read(part.filename), part.filename)
                    self.assertEqual(part.compress_size, new.getinfo(part.filename).compress_size, part.filename)
            self.check_sheet(old.read(sheet), new.read(sheet), touched)
            books = [without(etree.fromstring(a.read("xl/workbook.xml")), "calcPr") for a in (old, new)]
            self.assertEqual(*map(canonical, books))
            calculation = etree.fromstring(new.read("xl/workbook.xml")).find("{*}calcPr")
            self.assertEqual(calculation.get("fullCalcOnLoad"), "1")

    def check_sheet(self, old, new, touched):
        old, new = without_results(etree.fromstring(old)), etree.fromstring(new)
        before, after = cells_of(old), cells_of(new)
        self.assertEqual(set(before) | touched, set(after))
        for place in set(before) - touched:
            one, other = before[place], after[place]
            other.attrib.pop("r", None)
            one.attrib.pop("r", None)
            self.assertEqual(canonical(one), canonical(other), place)
        places = [(r, c) for r, c in after]
        self.assertEqual(places, sorted(places), "cells in order")
        rows = [{k: v for k, v in row.attrib.items() if k not in ("spans", "r")} for row in old.iter("{*}row")]
        kept = [{k: v for k, v in row.attrib.items() if k not in ("spans", "r")} for row in new.iter("{*}row")]
        self.assertEqual([r for r in rows if r], [r for r in kept if r])
        self.assertEqual(*[canonical(without(root, "sheetData", "dimension")) for root in (old, new)])

    def check_values(self, path, sheet=0):
        book = openpyxl.load_workbook(path)
        sheet = book[book.sheetnames[sheet]]
        for row, column, _, value in WRITES:
            self.assertEqual(sheet.cell(row, column).value, value)

    def edit_and_compare(self, path):
        edited = Edited(path, [("write", 1, r, c, text) for r, c, text, _ in WRITES] + [("save", path)])
        self.assertEqual(edited.answers, ["ok"] * (len(WRITES) + 1))
        self.check_part_by_part(edited, {(r, c) for r, c, _, _ in WRITES})

    def test_only_touched_cells_differ(self):
        paths = []
        for name in WORKBOOKS:
            with self.subTest(name):
                path = self.build(name)
                self.edit_and_compare(path)
                if not name.startswith("by hand: strict"):
                    self.check_values(path)
                paths.append(path)
        self.assertGreaterEqual(len(paths), 20)
        self.open_elsewhere(paths)

    def open_elsewhere(self, paths):
        """Other programs read them; each takes all files in one go."""
        if SSCONVERT:
            # It reads neither the strict namespace nor cells without numbers, edited or not.
            for path in (path for path in paths if not re.search("strict|unnumbered", path)):
                # What it grumbles about in the workbook as it was, it may grumble about again.
                runs = [subprocess.run([SSCONVERT, name, path + ".csv"], capture_output=True, text=True)
                        for name in (path[:-5] + ".before.xlsx", path)]
                changing = r"![A-Z]+\d+|ssconvert:\d+|[\d:.]{12}"
                self.assertEqual(*[(run.returncode, re.sub(changing, "", run.stderr)) for run in runs], path)
                with open(path + ".csv", encoding="utf-8") as file:
                    self.assertIn("hello", file.read(), path)
        if SOFFICE:
            target = os.path.join(self.folder, "csv")
            subprocess.run([SOFFICE, f"-env:UserInstallation=file://{self.folder}/profile", "--headless",
                            "--convert-to", "csv", "--outdir", target] + paths, capture_output=True, timeout=250)
            for path in paths:
                with open(os.path.join(target, os.path.basename(path)[:-5] + ".csv"), encoding="utf-8") as file:
                    self.assertIn("hello", file.read(), path)

    def test_workbooks_saved_by_other_programs(self):
        sources = [self.build(name) for name in RESAVED]
        if SSCONVERT:
            for source in sources:
                path = source.replace(".xlsx", "-gnumeric.xlsx")
                subprocess.run([SSCONVERT, source, path], capture_output=True, check=True)
                with self.subTest(path):
                    self.edit_and_compare(path)
                    self.check_values(path)
        if SOFFICE:
            target = os.path.join(self.folder, "resaved")
            subprocess.run([SOFFICE, f"-env:UserInstallation=file://{self.folder}/profile", "--headless",
                            "--convert-to", "xlsx:Calc MS Excel 2007 XML", "--outdir", target] + sources,
                           capture_output=True, timeout=250)
            for source in sources:
                with self.subTest(source):
                    path = os.path.join(target, os.path.basename(source))
                    self.edit_and_compare(path)
                    self.check_values(path)
        if not (SSCONVERT and SOFFICE):
            self.skipTest("soffice or ssconvert is missing")

    def test_clearing_takes_values_and_keeps_formats(self):
        path = self.build("openpyxl styles")
        edited = Edited(path, [("used",), ("clearused",), ("write", 1, 1, 1, "new"), ("read", 1, 2, 1), ("save", path)])
        self.assertEqual(edited.answers, ["ok 1 1 20 5", "ok", "ok", "ok", "ok"])
        before, after = openpyxl.load_workbook(edited.before), openpyxl.load_workbook(path)
        values = [c.value for row in after["Sheet"].iter_rows() for c in row if c.value is not None]
        self.assertEqual(values, ["new"])
        self.assertTrue(after["Sheet"]["B3"].font.bold)
        self.assertEqual(after["Sheet"].row_dimensions[4].height, 40)
        self.assertEqual(after["Notes"]["A1"].value, before["Notes"]["A1"].value)

    def test_a_new_name_is_followed_everywhere(self):
        for name in ("openpyxl chart", "openpyxl names and filter", "xlsxwriter rules", "by hand: pivot table"):
            with self.subTest(name):
                path = self.build(name)
                with zipfile.ZipFile(path) as archive:
                    old = re.search(r'<sheet [^>]*name="([^"]+)"', archive.read("xl/workbook.xml").decode()).group(1)
                edited = Edited(path, [("name", 1, "It's (P1)"), ("names",), ("save", path)])
                self.assertEqual(edited.answers, ["ok", "ok It's (P1)|Notes", "ok"])
                with zipfile.ZipFile(path) as archive:
                    for part in archive.namelist():
                        text = archive.read(part).decode("utf-8", "replace")
                        self.assertNotIn(old + "!", text, part)
                        self.assertNotIn(f'sheet="{old}"', text, part)
                book = openpyxl.load_workbook(path)
                self.assertEqual(book.sheetnames[0], "It's (P1)")
                self.assertEqual(book["Notes"]["A1"].value, "='It''s (P1)'!B2*2")

    def test_headings_of_tables_agree_with_their_cells(self):
        path = self.build("openpyxl table")
        with zipfile.ZipFile(path) as archive:
            parts = {n: archive.read(n) for n in archive.namelist()}
        parts["xl/worksheets/sheet2.xml"] = parts["xl/worksheets/sheet2.xml"].replace(
            b"Sheet!B2*2", b"SUM(Stock[Head 2])+SUM(Stock[[#All],[Head 3]])")
        parts["xl/tables/table1.xml"] = re.sub(rb'(<tableColumn [^>]*name="Head 5"[^>]*?) ?/>',
                                               rb"\1><calculatedColumnFormula>Stock[Head 2]*2</calculatedColumnFormula>"
                                               rb"</tableColumn>", parts["xl/tables/table1.xml"])
        package(path, parts)
        edited = Edited(path, [("clear", 1, 1, 3, 1, 3), ("write", 1, 1, 1, "10"), ("write", 1, 1, 2, "10"),
                               ("save", path)])
        self.assertEqual(edited.answers, ["ok"] * 4)
        book = openpyxl.load_workbook(path)
        table = book["Sheet"].tables["Stock"]
        self.assertEqual([c.name for c in table.tableColumns], ["10", "10 (2)", "Column3", "Head 4", "Head 5"])
        self.assertEqual(table.tableColumns[4].calculatedColumnFormula.attr_text, "Stock[10 (2)]*2")
        self.assertEqual([c.value for c in book["Sheet"][1]], ["10", "10 (2)", "Column3", "Head 4", "Head 5"])
        self.assertEqual(book["Notes"]["A1"].value, "=SUM(Stock[10 (2)])+SUM(Stock[[#All],[Column3]])")

    def test_shared_formulas_outlive_their_first_cell(self):
        path = self.build("by hand: shared formulas and chain")
        edited = Edited(path, [("write", 1, 1, 3, "gone"), ("clear", 1, 2, 3, 2, 3), ("save", path)])
        self.assertEqual(edited.answers, ["ok"] * 3)
        sheet = openpyxl.load_workbook(path)["Data"]
        self.assertEqual([sheet.cell(r, 3).value for r in range(1, 6)],
                         ["gone", None, "=A3*$B$1", "=A4*$B$1", "=A5*$B$1"])
        with zipfile.ZipFile(path) as archive:
            self.assertNotIn("xl/calcChain.xml", archive.namelist())
            self.assertNotIn(b"calcChain", archive.read("[Content_Types].xml"))

    def test_array_formulas_change_as_a_whole(self):
        path = self.build("xlsxwriter formulas")
        edited = Edited(path, [("write", 1, 11, 7, "x"), ("clear", 1, 10, 1, 11, 9), ("clear", 1, 10, 7, 12, 7),
                               ("write", 1, 11, 7, "x"), ("save", path)])
        self.assertEqual([a.split()[0] for a in edited.answers], ["failed", "failed", "ok", "ok", "ok"])
        sheet = openpyxl.load_workbook(path)["Data"]
        self.assertEqual([sheet.cell(r, 7).value for r in range(10, 13)], [None, "x", None])

    def test_cells_keep_their_formats_and_take_fitting_values(self):
        path = self.build("by hand: formats")
        written = [("1,234.50", 1234.5, "#,##0.00"), ("7", "7", "0%"), ("7%", 0.07, "0%"), ("12.5", 12.5, "0.000"),
                   ("12/31/2024", "12/31/2024", "0.000"), ("5", "5", "@"), ("=A1", "=A1", "@")]
        script = [("write", 1, row, 1, text) for row, (text, _, _) in enumerate(written, 1)]
        script += [("write", 1, 8, 1, "12/31/2024"), ("write", 1, 9, 1, "5")]
        edited = Edited(path, [("read", 1, 20, 1), ("read", 1, 21, 1), ("read", 1, 22, 1)] + script + [("save", path)])
        self.assertEqual(edited.answers[:3], ["ok 12/31/2024", "ok 0.3", "ok TRUE"])
        sheet = openpyxl.load_workbook(path).worksheets[0]
        for row, (text, value, code) in enumerate(written, 1):
            cell = sheet.cell(row, 1)
            self.assertEqual((cell.value, cell.number_format), (value, code), text)
            self.assertEqual(cell.data_type == "s", isinstance(value, str), text)
        self.assertEqual((sheet["A8"].value.year, sheet["A8"].number_format), (2024, "d mmm yy"))
        self.assertEqual((sheet["A9"].value, sheet["A9"].number_format), ("5", "d mmm yy"))

    def test_dates_of_the_1904_system(self):
        path = self.build("xlsxwriter 1904")
        Edited(path, [("write", 1, 9, 1, "12/31/2024"), ("write", 1, 10, 1, "12/31/1903"), ("save", path)])
        sheet = openpyxl.load_workbook(path)["Data"]
        self.assertEqual((sheet["A9"].value.isoformat()[:10], sheet["A10"].value), ("2024-12-31", "12/31/1903"))
        self.assertEqual(Edited(path, [("read", 1, 9, 1)]).answers, ["ok 12/31/2024"])

    def test_killed_at_any_moment_the_old_or_the_new_file_is_whole(self):
        path = self.build("openpyxl chart")
        script = path + ".script"
        with open(script, "w", encoding="utf-8") as file:
            file.writelines(f"write\t1\t{row}\t9\tvalue {row}\n" for row in range(1, 4000))
            file.write(f"save\t{path}\n")
        with open(path, "rb") as file:
            old = file.read()
        start = time.monotonic()
        link_case.drive(path, script)
        whole = time.monotonic() - start
        with open(path, "rb") as file:
            new = file.read()
        chance, found = random.Random(1), set()
        for _ in range(200):
            with open(path, "wb") as file:
                file.write(old)
            process = subprocess.Popen([link_case.PROGRAM, path, script], stdout=subprocess.DEVNULL)
            time.sleep(chance.uniform(0, whole * 1.2))
            process.kill()
            process.wait()
            with open(path, "rb") as file:
                seen = file.read()
            found.add("old" if seen == old else "new" if link_case.content(seen) == link_case.content(new) else "damaged")
        self.assertEqual(found, {"old", "new"})

    def test_sheets_count_in_workbook_order(self):
        path = self.build("by hand: reordered sheets")
        edited = Edited(path, [("names",), ("read", 2, 1, 1), ("write", 3, 1, 1, "x"), ("write", 4, 1, 1, "x"),
                               ("used",), ("activate", 2), ("used",), ("save", path), ("save", path[:-5] + ".xls")])
        self.assertEqual(edited.answers[:2], ["ok Front|Back|Chart", "ok back"])
        self.assertEqual([a.split()[0] for a in edited.answers[2:]],
                         ["failed", "failed", "ok", "ok", "ok", "ok", "failed"])
        self.assertEqual(openpyxl.load_workbook(path).active.title, "Back")
        self.assertFalse(os.path.exists(path[:-5] + ".xls"))

    def test_a_hidden_window_is_shown(self):
        path = os.path.join(self.folder, "hidden.xlsx")
        book = openpyxl.Workbook()
        book.views[0].visibility = "hidden"
        book.save(path)
        Edited(path, [("save", path)])
        self.assertEqual(openpyxl.load_workbook(path).views[0].visibility, "visible")

    def test_the_same_edit_gives_the_same_bytes(self):
        path = self.build("by hand: pivot table")
        other = path + "-2.xlsx"
        shutil.copyfile(path, other)
        for name in (path, other):
            Edited(name, [("write", 1, 9, 1, "x"), ("save", name)])
        with open(path, "rb") as one, open(other, "rb") as two:
            self.assertEqual(one.read(), two.read())


if __name__ == "__main__":
    link_case.main()
