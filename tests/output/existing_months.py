#!/usr/bin/env python3
"""One report, month after month, into one workbook that people work in: what they see is what was printed, no formula
shows an old result, and what is theirs stays.

Two more months by each method and in each form; --months 12 for a whole year by hand (--seed N for another one)."""

import argparse
import csv
import os
import random
import shutil
import subprocess
import sys
import tempfile
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

SOFFICE = shutil.which("soffice")
PROGRAM, MONTHS, SEED, WHOLE_YEAR = None, 3, 1, False

HEAD = ["Item", "Amount", "Share", "Booked", "Code"]
WIDTHS = [26, 18, 12, 14, 8]
RECIPE = ("[Table 1]\nReadStartLine=Item\nReadStartLineOffset=0\nReadEndLine=END\nReadEndLineOffset=-1\n"
          f"Parsing={' '.join('-' * (width - 1) for width in WIDTHS)}\nWriteColumn=A\n")
PROFILE = "".join(f"{n}\t{width}\t[32] Space\tLeft\tNo\t{n}\t\t\r\n" for n, width in enumerate(WIDTHS, 1))


def month(number, method=("--recipe",)):
    """The texts of a month's report: other forms of numbers each time, and another number of rows. By a profile codes
    lose their zeros."""
    pick = random.Random(SEED * 1000 + number)
    amount = pick.choice([lambda n: f"{n / 100:,.2f}", lambda n: f"${n:,.0f}", lambda n: f"{n / 1000:.3f}",
                          lambda n: f"({n / 100:,.2f})", lambda n: f"{n}"])
    share = pick.choice([lambda n: f"{n % 100}%", lambda n: f"{n % 100}.5", lambda n: f"{n % 100}.25%"])
    booked = pick.choice([lambda d: f"2026-{number:02}-{d:02}", lambda d: f"{number:02}/{d:02}/2026"])
    return [HEAD] + [[f"item {pick.randrange(10 ** pick.randrange(1, 14))}",
                      amount(pick.randrange(10 ** pick.randrange(2, 8)) + 1), share(pick.randrange(1000)), booked(day),
                      f"{pick.randrange(10 ** 4):0{5 if method[0] == '--recipe' else 1}}"] for day in range(13, 13 + pick.randrange(2, 15))]


def number_of(text):
    bare = text.replace(",", "").replace("$", "").strip("()")
    return -float(bare) if text.startswith("(") else float(bare)


# --- The workbook as its user has built it on the first month's sheet

def by_openpyxl(path, rows):
    from openpyxl.chart import BarChart, Reference
    from openpyxl.styles import Font, PatternFill
    from openpyxl.workbook.defined_name import DefinedName
    from openpyxl.worksheet.table import Table, TableStyleInfo
    book = openpyxl.Workbook()
    data, summary = book.active, book.create_sheet("Summary")
    data.title = "Data"
    for row in rows:
        data.append(row)
    data["A2"].fill = PatternFill("solid", fgColor="FFFF00")
    data["B2"].font = Font(bold=True)
    data["B2"].number_format = data["B3"].number_format = '"$"#,##0'
    data.column_dimensions["D"].width = 31.25
    table = Table(displayName="Stock", ref=f"A1:E{len(rows)}")
    table.tableStyleInfo = TableStyleInfo(name="TableStyleMedium9", showRowStripes=True)
    data.add_table(table)
    name = DefinedName("Everything", attr_text=f"Data!$A$1:$E${len(rows)}")
    book.defined_names.append(name) if hasattr(book.defined_names, "append") else book.defined_names.add(name)
    data.print_area = f"A1:E{len(rows)}"
    summary["A1"], summary["A2"] = "=SUM(Data!B2:B99)", "=COUNTA(Data!A2:A99)"
    summary["A3"] = "kept"
    chart = BarChart()
    chart.add_data(Reference(data, min_col=2, min_row=1, max_row=9))
    summary.add_chart(chart, "D1")
    book.save(path)
    add_pivot(path, len(rows))


def add_pivot(path, rows):
    """A pivot table of amounts by item on the summary sheet."""
    main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
    office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
    relation = ('<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" '
                f'Type="{office}/%s" Target="%s"/></Relationships>')
    fields = "".join(f'<cacheField name="{name}" numFmtId="0"><sharedItems/></cacheField>' for name in HEAD)
    fields = fields.replace("<sharedItems/>", '<sharedItems count="2"><s v="a"/><s v="b"/></sharedItems>', 1)
    plain = '<pivotField showAll="0"/>'
    added = {
        "xl/pivotCache/pivotCacheDefinition1.xml":
            f'<pivotCacheDefinition xmlns="{main}" xmlns:r="{office}" r:id="rId1" refreshOnLoad="1" recordCount="0"><cacheSource '
            f'type="worksheet"><worksheetSource ref="A1:E{rows}" sheet="Data"/></cacheSource><cacheFields count="5">{fields}'
            "</cacheFields></pivotCacheDefinition>",
        "xl/pivotCache/_rels/pivotCacheDefinition1.xml.rels": relation % ("pivotCacheRecords", "pivotCacheRecords1.xml"),
        "xl/pivotCache/pivotCacheRecords1.xml": f'<pivotCacheRecords xmlns="{main}" count="0"/>',
        "xl/pivotTables/pivotTable1.xml":
            f'<pivotTableDefinition xmlns="{main}" name="P" cacheId="1" dataCaption="Values" updatedVersion="3" '
            'minRefreshableVersion="3" createdVersion="3"><location ref="A20:B23" firstHeaderRow="1" firstDataRow="1" '
            'firstDataCol="1"/><pivotFields count="5"><pivotField axis="axisRow" showAll="0"><items count="3"><item x="0"/><item '
            f'x="1"/><item t="default"/></items></pivotField>{plain * 4}</pivotFields><rowFields count="1"><field x="0"/></rowFields>'
            "</pivotTableDefinition>",
        "xl/pivotTables/_rels/pivotTable1.xml.rels":
            relation % ("pivotCacheDefinition", "../pivotCache/pivotCacheDefinition1.xml")}
    new = {"xl/workbook.xml": ("</workbook>", f'<pivotCaches><pivotCache xmlns:r="{office}" cacheId="1" r:id="rId99"/></pivotCaches></workbook>'),
           "xl/_rels/workbook.xml.rels": ("</Relationships>", f'<Relationship Id="rId99" Type="{office}/pivotCacheDefinition" '
                                          'Target="pivotCache/pivotCacheDefinition1.xml"/></Relationships>'),
           "xl/worksheets/_rels/sheet2.xml.rels": ("</Relationships>", f'<Relationship Id="rId99" Type="{office}/pivotTable" '
                                                   'Target="../pivotTables/pivotTable1.xml"/></Relationships>'),
           "[Content_Types].xml": ("</Types>", "".join(
               f'<Override PartName="/xl/{part}1.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.{kind}+xml"/>'
               for part, kind in (("pivotCache/pivotCacheDefinition", "pivotCacheDefinition"),
                                  ("pivotCache/pivotCacheRecords", "pivotCacheRecords"), ("pivotTables/pivotTable", "pivotTable"))) +
               "</Types>")}
    with zipfile.ZipFile(path) as package:
        parts = {name: package.read(name) for name in package.namelist()}
    for name, (before, after) in new.items():
        parts[name] = parts[name].decode("utf-8").replace(before, after).encode("utf-8")
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        for name, data in {**parts, **{name: text.encode("utf-8") for name, text in added.items()}}.items():
            package.writestr(name, data)


def by_xlsxwriter(path, rows):
    book = xlsxwriter.Workbook(path)
    data, summary = book.add_worksheet("Data"), book.add_worksheet("Summary")
    data.write_row(1, 0, rows[1], book.add_format({"bg_color": "#FFFF00"}))
    for number, row in enumerate(rows[2:], 2):
        data.write_row(number, 0, row)
    data.set_column("D:D", 31.25)
    data.add_table(0, 0, len(rows), 4, {"name": "Stock", "total_row": True, "columns": [
        {"header": "Item", "total_string": "All"}, {"header": "Amount", "total_function": "sum"}, {"header": "Share"},
        {"header": "Booked"}, {"header": "Code"}]})
    summary.write_formula("A1", "=SUM(Stock[Amount])", None, 500)
    summary.write_formula("A2", "=COUNTA(Data!A2:A99)", None, 17)
    summary.write("A3", "kept")
    chart = book.add_chart({"type": "line"})
    chart.add_series({"values": "=Data!$B$2:$B$9"})
    summary.insert_chart("D1", chart)
    book.close()


def by_xlwt(path, rows):
    book = xlwt.Workbook()
    data, summary = book.add_sheet("Data"), book.add_sheet("Summary")
    money = xlwt.easyxf("font: bold on; pattern: pattern solid, fore_colour yellow", num_format_str='"$"#,##0')
    for number, row in enumerate(rows):
        for column, text in enumerate(row):
            data.write(number, column, text)
    data.write(number + 1, 1, 3.5, money)
    data.col(3).width = 8000
    summary.write(0, 0, xlwt.Formula("SUM(Data!B2:B99)"))
    summary.write(1, 0, xlwt.Formula("COUNTA(Data!A2:A99)"))
    summary.write(2, 0, "kept")
    book.save(path)


MAKERS = {"openpyxl.xlsx": by_openpyxl, "xlsxwriter.xlsx": by_xlsxwriter, "xlwt.xls": by_xlwt}


class Months(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name, text in (("r.rcp", RECIPE), ("p.txt", PROFILE)):
            self.write(name, text)

    def write(self, name, text):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8", newline="") as file:
            file.write(text)

    def soffice(self, form, path, folder):
        subprocess.run([SOFFICE, f"-env:UserInstallation=file://{self.folder}/profile", "--headless", "--convert-to", form,
                        "--outdir", os.path.join(self.folder, folder), path], check=True, capture_output=True, timeout=200)

    def run_month(self, path, method, number):
        lines = ["".join(text.ljust(width) for text, width in zip(row, WIDTHS)).rstrip() for row in month(number)]
        self.write("report.txt", "\n".join(lines + (["END"] if method[0] == "--recipe" else [])) + "\n")
        done = subprocess.run([PROGRAM, "convert", "report.txt", "-o", path, *method, "--sheet", "Data"], cwd=self.folder,
                              env={**os.environ, "HOME": self.folder, "LC_ALL": "C.UTF-8", "XDG_CONFIG_HOME": self.folder},
                              capture_output=True, text=True, timeout=100)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def check_values(self, path, rows, totals):
        """As a script reads them: the report's values, and no formula with an old result."""
        if path.endswith(".xls"):
            book = xlrd.open_workbook(path)
            sheet, summary = book.sheet_by_name("Data"), book.sheet_by_name("Summary")
            got = [sheet.row_values(row) for row in range(1, sheet.nrows)]
            results = [summary.cell_value(row, 0) for row in range(2)]
            self.assertEqual(summary.cell_value(2, 0), "kept")
        else:
            sheet = openpyxl.load_workbook(path)["Data"]
            got = [[cell.value for cell in row] for row in sheet.iter_rows(min_row=2)]
            results = [openpyxl.load_workbook(path, data_only=True)["Summary"][name].value for name in ("A1", "A2")]
            self.assertEqual(openpyxl.load_workbook(path)["Summary"]["A3"].value, "kept")
        for values, texts in zip(got, rows[1:]):
            self.assertAlmostEqual(values[1], number_of(texts[1]), 6, texts)
            code = values[4] if isinstance(values[4], str) else str(int(values[4]))
            self.assertEqual((values[0].strip(), code.strip()), (texts[0], texts[4]))
        sums = [None, ""] + [sum(number_of(texts[1]) for texts in rows[1:])]
        self.assertTrue(any(results[0] == wanted for wanted in sums[:2]) or abs(results[0] - sums[2]) < 1e-6, results)
        left = [value for values in got[len(rows) - 1:] for value in values if value not in (None, "")]
        self.assertEqual([value for value in left if not str(value).startswith("=SUBTOTAL")], ["All"] * totals)

    def check_users_own(self, path, rows, totals):
        if path.endswith(".xls"):
            return
        book = openpyxl.load_workbook(path)
        data = book["Data"]
        self.assertEqual(data["A2"].fill.fgColor.rgb[2:], "FFFF00")
        self.assertAlmostEqual(data.column_dimensions["D"].width, 31.25, delta=1)
        self.assertEqual(len(book["Summary"]._charts), 1)
        for table in data.tables.values():
            self.assertEqual(table.ref, f"A1:E{len(rows) + totals}")
        if "openpyxl" in path:
            with zipfile.ZipFile(path) as package:
                self.assertIn("xl/pivotTables/pivotTable1.xml", package.namelist())
            self.assertEqual(book.defined_names["Everything"].attr_text.replace("$Data.", ""), f"Data!$A$1:$E${len(rows)}")
            self.assertIn(f"A1:E{len(rows)}", str(data.print_area).replace("$", ""))

    def check_shown(self, path, rows, totals):
        self.soffice('csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false,false,-1', path, "csv")
        shown = {}
        for name in os.listdir(os.path.join(self.folder, "csv")):
            with open(os.path.join(self.folder, "csv", name), encoding="utf-8") as file:
                shown[name.rsplit("-", 1)[1][:-4]] = [[cell.strip() for cell in row] for row in csv.reader(file)]
        shutil.rmtree(os.path.join(self.folder, "csv"))
        self.assertEqual([row[:5] for row in shown["Data"][:len(rows)]], rows)
        self.assertNotIn("###", str(shown))
        self.assertEqual(shown["Summary"][1][0], str(len(rows) - 1 + totals))

    def totals_rows(self, path):
        if path.endswith(".xls"):
            return 0
        return sum(table.totalsRowCount or 0 for table in openpyxl.load_workbook(path)["Data"].tables.values())

    def other_parts(self, path):
        """All of a package but what a run has to touch."""
        touched = ("sheet1.xml", "styles.xml", "workbook.xml", "sharedStrings.xml", "calcChain.xml", "table1.xml", "sheet2.xml",
                   "[Content_Types].xml", "workbook.xml.rels")
        with zipfile.ZipFile(path) as package:
            return {name: package.read(name) for name in package.namelist() if not name.endswith(touched)}

    def live_through(self, name, method):
        path = os.path.join(self.folder, name)
        saves = random.Random(SEED)
        MAKERS[name](path, month(1))
        for number in range(2, MONTHS + 1):
            before = None if path.endswith(".xls") else self.other_parts(path)
            totals = self.totals_rows(path)
            self.run_month(path, method, number)
            rows = month(number, method)
            with self.subTest(month=number):
                self.check_values(path, rows, totals)
                self.check_users_own(path, rows, totals)
                if before is not None:
                    self.assertEqual(self.other_parts(path), before)
            saved = SOFFICE and number < MONTHS and (saves.random() < 0.5 if WHOLE_YEAR else method[0] == "--recipe")
            if SOFFICE and (number == MONTHS or (saved and WHOLE_YEAR)):
                with self.subTest(month=number, shown=True):
                    self.check_shown(path, rows, totals)
            if saved:
                # The user saves it there, and the next month comes.
                self.soffice("xls:MS Excel 97" if path.endswith(".xls") else "xlsx:Calc MS Excel 2007 XML", path, "saved")
                shutil.move(os.path.join(self.folder, "saved", name), path)

    def test_by_recipe(self):
        for name in MAKERS:
            with self.subTest(name=name):
                self.live_through(name, ("--recipe", "r.rcp"))

    def test_by_profile(self):
        for name in MAKERS if WHOLE_YEAR else ("openpyxl.xlsx", "xlwt.xls"):
            with self.subTest(name=name):
                self.live_through(name, ("--profile", "./p.txt"))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--months", type=int, default=MONTHS)
    parser.add_argument("--seed", type=int, default=SEED)
    known, rest = parser.parse_known_args()
    # The program that converts lies beside the one that drives the link.
    PROGRAM = os.path.join(os.path.dirname(os.path.abspath(known.program)), "quillon")
    MONTHS, SEED, WHOLE_YEAR = known.months, known.seed, known.months > 3
    unittest.main(argv=[sys.argv[0], *rest])
