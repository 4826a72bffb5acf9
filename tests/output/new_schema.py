"""New .xlsx workbooks against the order and attribute rules of the format: a spreadsheet program repairs or refuses a file
that breaks one of them. The rules are written down here, and another writer's workbook has to pass them too."""

import os
import re
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile

try:
    import xlsxwriter
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(77)

import link_case

N, BOOL, REF, ID = r"\d+", "[01]|true|false", r"[A-Z]{1,3}[1-9]\d*", r"rId\d+"
REAL, ANY = r"-?\d+(\.\d+)?", "(?s).+"

# Per element the children in the order they must have, and the pattern of each attribute. "*" behind a child: many;
# "!" behind a child or an attribute: it must be there.
RULES = {
    "workbook": ("fileVersion fileSharing workbookPr workbookProtection bookViews sheets! functionGroups externalReferences "
                 "definedNames calcPr oleSize customWorkbookViews pivotCaches extLst", {}),
    "fileVersion": ("", {"appName": ANY, "lastEdited": N, "lowestEdited": N, "rupBuild": N}),
    "workbookPr": ("", {"date1904": BOOL, "defaultThemeVersion": N}),
    "bookViews": ("workbookView*!", {}),
    "workbookView": ("", {"xWindow": N, "yWindow": N, "windowWidth": N, "windowHeight": N, "activeTab": "[01]"}),
    "sheets": ("sheet*!", {}),
    "sheet": ("", {"name!": r"[^\[\]:*?/\\]{1,31}", "sheetId!": "[1-9]\\d*", "id!": ID}),
    "calcPr": ("", {"calcId": N, "fullCalcOnLoad": BOOL}),
    "worksheet": ("sheetPr dimension sheetViews sheetFormatPr cols sheetData! sheetCalcPr sheetProtection protectedRanges "
                  "scenarios autoFilter sortState dataConsolidate customSheetViews mergeCells phoneticPr "
                  "conditionalFormatting* dataValidations hyperlinks printOptions pageMargins pageSetup headerFooter "
                  "rowBreaks colBreaks customProperties cellWatches ignoredErrors drawing legacyDrawing tableParts extLst", {}),
    "dimension": ("", {"ref!": f"{REF}(:{REF})?"}),
    "sheetViews": ("sheetView*!", {}),
    "sheetView": ("pane selection*", {"tabSelected": BOOL, "workbookViewId!": "0"}),
    "sheetFormatPr": ("", {"baseColWidth": N, "defaultColWidth": REAL, "defaultRowHeight!": REAL}),
    "cols": ("col*!", {}),
    "col": ("", {"min!": N, "max!": N, "width": REAL, "style": N, "customWidth": BOOL}),
    "sheetData": ("row*", {}),
    "row": ("c*", {"r": N, "spans": r"\d+:\d+", "s": N, "customFormat": BOOL, "ht": REAL, "customHeight": BOOL}),
    "c": ("f v is", {"r": REF, "s": N, "t": "b|n|e|s|str|inlineStr"}),
    "f": ("", {"t": "normal"}), "v": ("", {}), "is": ("t r* phoneticPr", {}), "t": ("", {"space": "preserve"}),
    "pageMargins": ("", {name + "!": REAL for name in ("left", "right", "top", "bottom", "header", "footer")}),
    "styleSheet": ("numFmts fonts fills borders cellStyleXfs cellXfs cellStyles dxfs tableStyles colors extLst", {}),
    "numFmts": ("numFmt*!", {"count": N}), "numFmt": ("", {"numFmtId!": r"1[6-9]\d|[2-9]\d\d|\d{4,}", "formatCode!": ANY}),
    "fonts": ("font*!", {"count": N}), "fills": ("fill*!", {"count": N}), "borders": ("border*!", {"count": N}),
    "font": ("b i strike condense extend outline shadow u vertAlign sz color name family charset scheme", {}),
    "b": ("", {}), "sz": ("", {"val!": REAL}), "name": ("", {"val!": ".{1,31}"}), "family": ("", {"val!": "[0-5]"}),
    "scheme": ("", {"val!": "minor|major|none"}), "color": ("", {"theme": N, "rgb": "[0-9A-F]{8}"}),
    "fill": ("patternFill", {}), "patternFill": ("fgColor bgColor", {"patternType": "none|solid|gray125"}),
    "border": ("start end left right top bottom diagonal", {}),
    **{side: ("color", {"style": "[a-zA-Z]+"}) for side in ("left", "right", "top", "bottom", "diagonal")},
    "cellStyleXfs": ("xf*!", {"count": N}), "cellXfs": ("xf*!", {"count": N}),
    "xf": ("alignment protection extLst", {"numFmtId": N, "fontId": N, "fillId": N, "borderId": N, "xfId": N,
                                           "applyNumberFormat": BOOL, "applyFont": BOOL}),
    "cellStyles": ("cellStyle*!", {"count": N}), "cellStyle": ("", {"name": ANY, "xfId!": N, "builtinId": N}),
    "dxfs": ("dxf*", {"count": N}),
    "tableStyles": ("tableStyle*", {"count": N, "defaultTableStyle": ANY, "defaultPivotStyle": ANY}),
    "Types": ("Default* Override*", {}), "Default": ("", {"Extension!": r"\w+", "ContentType!": r"[\w.+-]+/[\w.+-]+"}),
    "Override": ("", {"PartName!": "/.+", "ContentType!": r"[\w.+-]+/[\w.+-]+"}),
    "Relationships": ("Relationship*!", {}),
    "Relationship": ("", {"Id!": ID, "Type!": "http://schemas.openxmlformats.org/.+", "Target!": "[^/].*"}),
}
KINDS = {"xl/workbook.xml": "sheet.main", "xl/styles.xml": "styles", "xl/worksheets/sheet1.xml": "worksheet",
         "xl/worksheets/sheet2.xml": "worksheet", "docProps/core.xml": "core-properties", "docProps/app.xml": "extended-properties"}


class Broken(Exception):
    pass


def require(fact, *what):
    if not fact:
        raise Broken(" ".join(map(str, what)))


def local(name):
    return name.rsplit("}", 1)[-1]


def check_element(element):
    name = local(element.tag)
    require(name in RULES, "no such element here:", name)
    children, attributes = RULES[name]
    pattern = "".join(f"({c.strip('*!')} )" + {"*": "*", "*!": "+", "!": ""}.get(c.lstrip("abcdefghijklmnopqrstuvwxyz"
                      "ABCDEFGHIJKLMNOPQRSTUVWXYZ"), "?") for c in children.split())
    found = "".join(local(child.tag) + " " for child in element)
    require(re.fullmatch(pattern, found), name, "holds", found)
    wanted = {attribute.rstrip("!"): rule for attribute, rule in attributes.items()}
    for attribute, value in element.attrib.items():
        require(re.fullmatch(wanted.get(local(attribute), "(?!)"), value), name, local(attribute), repr(value))
    missing = {a[:-1] for a in attributes if a.endswith("!")} - {local(a) for a in element.attrib}
    require(not missing, name, "lacks", *missing)
    require("count" not in element.attrib or int(element.get("count")) == len(element), name, "counts wrongly")
    for child in element:
        check_element(child)


def check_cells(root, formats):
    rows = [int(row.get("r")) for row in root.findall(".//{*}row")]
    require(rows == sorted(set(rows)), "rows out of order")
    columns = [(int(c.get("min")), int(c.get("max"))) for c in root.findall(".//{*}col")]
    require(all(a <= b < c for (a, b), (c, _) in zip(columns, columns[1:])), "columns out of order")
    for row in root.findall(".//{*}row"):
        places = [re.fullmatch(r"([A-Z]+)(\d+)", c.get("r")).groups() for c in row]
        letters = [(len(column), column) for column, _ in places]
        require(letters == sorted(set(letters)) and {n for _, n in places} <= {row.get("r")}, "cells of row", row.get("r"))
        for cell in row:
            require(int(cell.get("s", 0)) < formats, "no such format")
            inside = {local(child.tag) for child in cell}
            require(("is" in inside) == (cell.get("t") == "inlineStr") and not {"is", "v"} <= inside, "kind of cell")


def check_workbook(data):
    with zipfile.ZipFile(data) as package:
        names = package.namelist()
        parts = {name: ElementTree.fromstring(package.read(name)) for name in names}
    require(len(names) == len({name.lower() for name in names}), "a part twice")
    types = parts["[Content_Types].xml"]
    overrides = {o.get("PartName")[1:]: o.get("ContentType") for o in types.findall(".//{*}Override")}
    defaults = {d.get("Extension") for d in types.findall(".//{*}Default")}
    require(set(overrides) <= set(names), "a type without a part")
    for name, root in parts.items():
        require(name in overrides or name == "[Content_Types].xml" or name.rsplit(".", 1)[1] in defaults, "no type:", name)
        if name in KINDS and name in overrides:
            require(re.search(KINDS[name] + r"\+xml$", overrides[name]), "type of", name)
        if local(root.tag) in RULES:
            check_element(root)
        if name.endswith(".rels"):
            targets = [os.path.normpath(os.path.join(os.path.dirname(name), "..", r.get("Target"))) for r in root]
            require(set(targets) <= set(names) and len({r.get("Id") for r in root}) == len(root), "relations of", name)
    relations = {r.get("Id"): "xl/" + r.get("Target") for r in parts["xl/_rels/workbook.xml.rels"]}
    sheets = list(parts["xl/workbook.xml"].findall(".//{*}sheet"))
    require(len({s.get("name").lower() for s in sheets}) == len({s.get("sheetId") for s in sheets}) == len(sheets), "sheets")
    styles = parts["xl/styles.xml"]
    xfs = styles.find("{*}cellXfs")
    for xf in xfs:
        for attribute, table in (("fontId", "fonts"), ("fillId", "fills"), ("borderId", "borders"), ("xfId", "cellStyleXfs")):
            require(int(xf.get(attribute)) < len(styles.find("{*}" + table)), "format's", attribute)
        known = {n.get("numFmtId") for n in styles.findall(".//{*}numFmt")}
        require(int(xf.get("numFmtId")) < 50 or xf.get("numFmtId") in known, "no such number format")
    for sheet in sheets:
        part = relations[next(v for k, v in sheet.attrib.items() if local(k) == "id")]
        require(local(parts[part].tag) == "worksheet", "no sheet:", part)
        check_cells(parts[part], len(xfs))


TEXTS = ["12.50-", " (1,234.50)", "$5", "€ 9.90", "7%", "1.5E+3", "12/31/2024", "2024-2-29", "TRUE", "=A1+B1", "=1<2", "#N/A",
         "a & <b>", " blanks ", "\\x01", "_x0041_", "007", "w" * 90]
SCRIPTS = {
    "empty": [],
    "texts": [f"write\t{sheet}\t{row}\t{sheet}\t{text}" for sheet in (1, 2) for row, text in enumerate(TEXTS, 1)],
    "any order": [f"write\t1\t{(row * 7) % 30 + 1}\t{(row * 11) % 40 + 1}\t{row}.50" for row in range(400)],
    "names": ["write\t1\t1\t1\tx", "name\t1\tA & \"B\" (P1)", "name\t2\t<Über>", "activate\t2"],
    "corners": ["write\t1\t1048576\t16384\tx", "write\t1\t1\t1\t1,000", "write\t1\t1048576\t26\tz"],
    "cleared": ["write\t1\t2\t2\t5%", "write\t1\t4\t4\tx", "clearused", "write\t1\t3\t3\t5%"],
}
BREAKS = [("xl/worksheets/sheet1.xml", r"(<dimension.*?/>)(<sheetViews>.*?</sheetViews>)", r"\2\1"),
          ("xl/worksheets/sheet1.xml", r'(<row .*?</row>)(<row .*?</row>)', r"\2\1"),
          ("xl/worksheets/sheet1.xml", ' s="1"', ' s="99"'), ("xl/worksheets/sheet1.xml", 't="b"', 't="bool"'),
          ("xl/styles.xml", "(<fonts.*?</fonts>)(<fills.*?</fills>)", r"\2\1"), ("xl/styles.xml", 'count="1"', 'count="2"'),
          ("xl/styles.xml", 'numFmtId="164"', 'numFmtId="999"'), ("xl/workbook.xml", 'name="Sheet2"', 'name="SHEET1"'),
          ("xl/_rels/workbook.xml.rels", "sheet2.xml", "sheet3.xml"), ("[Content_Types].xml", "/xl/styles.xml", "/xl/style.xml")]


class NewWorkbooks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def make(self, name, mode=""):
        path, script = os.path.join(self.folder, f"{name}{mode}.xlsx"), os.path.join(self.folder, "script")
        with open(script, "w", encoding="utf-8") as file:
            file.writelines(line + "\n" for line in [*SCRIPTS[name], f"save\t{path}"])
        answers = link_case.drive(path, script, mode)
        self.assertEqual({answer.split()[0] for answer in answers}, {"ok"}, answers)
        return path

    def test_every_part_keeps_the_rules(self):
        for name in SCRIPTS:
            for mode in ("stream", "readback"):
                with self.subTest(name, mode=mode):
                    check_workbook(self.make(name, mode))

    def test_the_rules_pass_another_writer_and_find_what_breaks_them(self):
        path = os.path.join(self.folder, "other.xlsx")
        book = xlsxwriter.Workbook(path, {"in_memory": True})
        book.add_worksheet().write_row(0, 0, [1, 2.5, True])
        book.add_worksheet().write(3, 3, 12, book.add_format({"num_format": "0.000", "bold": True}))
        book.close()
        check_workbook(path)
        with zipfile.ZipFile(self.make("texts", "stream")) as package:
            parts = {name: package.read(name).decode() for name in package.namelist()}
        for part, old, new in BREAKS:
            with self.subTest(part, old=old):
                changed, count = re.subn(old, new, parts[part], count=1)
                self.assertEqual(count, 1)
                with zipfile.ZipFile(path, "w") as package:
                    for name, text in parts.items():
                        package.writestr(name, changed if name == part else text)
                self.assertRaises(Broken, check_workbook, path)


if __name__ == "__main__":
    link_case.main()
