"""New .xlsx workbooks, read back by programs of other makers: what a sheet shows, what its parts look like, and whether
cells in any order end where they should."""

import datetime
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile
from pathlib import Path

import link_case
import openpyxl

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"

# A sheet must show each of these as it stands, runs of blanks aside, whether it became a number, a date or a text.
SHOWN = """0|7|-12|12345678901|123456789012|123456789012345|1234567890123456|12.50|-0.5|0.00|.5|-.50|5.|123456789.123456
007|00.5|1,234|-1,234,567.8|1,234.50|12,34|1.234,50|+5|-0|-0.00|12.50-|12.50 -|0.00-|7+|- 5|(12)|(1,234.50)|( 3.10 )|(0)
$5|-$5.00|$-5|$ -1,000.00|$   37.50|($5)|($ 1,250.00)|$5.00-|€ 9.90|£3|¥1,000|7%|12.5 %|-150%|0.25%-|(7%)|0%|1.5E+3|-2.50E-12
6.02E23|1E5|1E+05|1.5E-7|15.0E+3|12/31/2024|1/5/2024|01/5/24|10/5/24|2-29-2024|02/29/2023|02/28/1900|03/01/1900|12/31/9999
2024-12-31|2024/1/5|1999-3-1|31.12.24|12/5|10:30|1/1/2024 10:00|MAR1|TRUE|FALSE|true|#N/A|1-2|5CR|'x|=====|= = =|12 Main St
a & b < c > d|"quoted"|comma, inside|_x0041_|ÄÖÜ ß|𝄞 clef""".replace("\n", "|").split("|")


def escaped(text):
    text = text.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t")
    return "".join(f"\\x{ord(c):02x}" if ord(c) < 32 else c for c in text)


def unescaped(text):
    return re.sub("_x([0-9A-Fa-f]{4})_", lambda m: chr(int(m.group(1), 16)), text)


def collapsed(text):
    return re.sub(" +", " ", text).strip()


class NewWorkbook(unittest.TestCase):
    maxDiff = 2000

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="quillon-test-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def make(self, name, commands, mode="stream", epoch=315532800):
        """Runs the commands and saves; gives the path and the answers."""
        path = self.folder / name
        script = self.folder / "script"
        script.write_bytes("".join(c + "\n" for c in [*commands, f"save\t{path}"]).encode())
        environment = {k: v for k, v in os.environ.items() if k != "SOURCE_DATE_EPOCH"}
        if epoch is not None:
            environment["SOURCE_DATE_EPOCH"] = str(epoch)
        answers = link_case.drive(path, script, mode, env=environment)
        self.assertEqual(answers[-1], "ok")
        return path, answers

    def write_all(self, name, texts, mode="stream"):
        return self.make(name, [f"write\t1\t{i}\t1\t{escaped(t)}" for i, t in enumerate(texts, 1)], mode)[0]

    def inline_texts(self, path, sheet=1):
        root = ElementTree.fromstring(zipfile.ZipFile(path).read(f"xl/worksheets/sheet{sheet}.xml"))
        return {c.get("r"): unescaped(c.find(f"{MAIN}is/{MAIN}t").text or "")
                for c in root.iter(f"{MAIN}c") if c.get("t") == "inlineStr"}

    def test_a_spreadsheet_shows_what_the_report_did(self):
        if not shutil.which("soffice"):
            self.skipTest("no spreadsheet program here")
        path = self.write_all("shown.xlsx", SHOWN)
        subprocess.run(["soffice", f"-env:UserInstallation=file://{self.folder}/profile", "--headless", "--convert-to",
                        "csv:Text - txt - csv (StarCalc):9,0,76,1,,0,false,true", "--outdir", self.folder, path],
                       check=True, capture_output=True, timeout=240)
        shown = (self.folder / "shown.csv").read_text().splitlines()
        self.assertEqual(len(shown), len(SHOWN))
        for text, seen in zip(SHOWN, shown):
            with self.subTest(text):
                self.assertEqual(collapsed(seen), collapsed(text))

    def test_sums_see_numbers(self):
        path = self.write_all("sums.xlsx", [" 1,234.50", "(12)", "12.50-", "$5", "7%", "1.5E+3", "12/31/2024", "007", "  "])
        values = [row[0].value for row in openpyxl.load_workbook(path).worksheets[0].iter_rows(max_row=8)]
        self.assertEqual(values[:6], [1234.5, -12, -12.5, 5, 0.07, 1500])
        self.assertEqual((values[6].year, values[6].month, values[6].day, values[7]), (2024, 12, 31, "007"))

    def test_parts_stand_in_order_and_fit_together(self):
        path = self.write_all("parts.xlsx", SHOWN)
        package = zipfile.ZipFile(path)
        self.assertIsNone(package.testzip())
        self.assertEqual(package.namelist()[0], "[Content_Types].xml")
        types = package.read("[Content_Types].xml").decode()
        for part in package.namelist()[1:]:
            ElementTree.fromstring(package.read(part))
            self.assertTrue(part.endswith(".rels") or f'"/{part}"' in types, part)
        styles = ElementTree.fromstring(package.read("xl/styles.xml"))
        self.assertEqual([e.tag[len(MAIN):] for e in styles],
                         ["numFmts", "fonts", "fills", "borders", "cellStyleXfs", "cellXfs", "cellStyles", "dxfs",
                          "tableStyles"])
        formats = len(styles.find(f"{MAIN}cellXfs"))
        for element in styles:
            self.assertEqual(int(element.get("count")), len(element), element.tag)
        sheet = ElementTree.fromstring(package.read("xl/worksheets/sheet1.xml"))
        self.assertEqual([e.tag[len(MAIN):] for e in sheet],
                         ["dimension", "sheetViews", "sheetFormatPr", "cols", "sheetData", "pageMargins"])
        for cell in sheet.iter(f"{MAIN}c"):
            self.assertLessEqual(set(cell.keys()), {"r", "s", "t"})
            self.assertLess(int(cell.get("s", 0)), formats)

    def test_columns_fit_their_longest_value(self):
        path = self.make("widths.xlsx", ["write\t1\t1\t1\tab", "write\t1\t1\t2\t            123,456,789.00",
                                         "write\t1\t1\t3\t" + "x" * 200, "write\t1\t2\t2\t  1", "write\t1\t1\t5\tÄÖÜÄÖÜÄÖÜ"])[0]
        widths = openpyxl.load_workbook(path).worksheets[0].column_dimensions
        self.assertEqual([widths[c].width for c in "ABCE"], [8.625, 14.625, 60.625, 9.625])
        self.assertNotIn("D", widths)

    def test_every_character_comes_back(self):
        texts = ["".join(map(chr, range(1, 32))) + "x", " blanks around ", "two\nlines", "\ttab", "\ufffe\uffff", "_x000D_",
                 "_xZZZZ_ _x00411_", "\U0001d11e" * 5, "]]>&amp;<!--", "x" * 32767, "\U0001d11e" * 16383 + "x"]
        path = self.write_all("characters.xlsx", texts)
        seen = self.inline_texts(path)
        self.assertEqual([seen[f"A{i}"] for i in range(1, len(texts) + 1)], texts)
        _, answers = self.make("long.xlsx", ["write\t1\t1\t1\t" + "x" * 32768, "write\t1\t1\t1\t" + "\U0001d11e" * 16384,
                                             "write\t1\t1048577\t1\tx", "write\t1\t1\t16385\tx", "write\t3\t1\t1\tx",
                                             "write\t1\t1048576\t16384\tx"])
        self.assertEqual([a.split()[0] for a in answers], ["failed"] * 5 + ["ok"] * 2)

    def test_cells_in_any_order_end_where_they_belong(self):
        chance = random.Random(4)
        for mode in ("stream", "readback"):
            expected, commands = ({}, {}), []
            for _ in range(3000):
                sheet, row, column = chance.randint(1, 2), chance.randint(1, 60), chance.randint(1, 40)
                text = chance.choice(["", "text ", "17", "x" * chance.randint(1, 9)])
                commands.append(f"write\t{sheet}\t{row}\t{column}\t{text}")
                expected[sheet - 1][row, column] = text
            path, _ = self.make(f"{mode}.xlsx", commands, mode)
            for sheet, cells in zip(openpyxl.load_workbook(path).worksheets, expected):
                seen = {(c.row, c.column): str(c.value) for r in sheet.iter_rows() for c in r if c.value is not None}
                self.assertEqual(set(seen.items()) ^ {(k, v) for k, v in cells.items() if v}, set())

    def test_a_row_larger_than_the_buffer_takes_late_cells(self):
        commands = [f"write\t1\t5\t{c}\t{'<' * 30000}" for c in range(3, 40)]
        commands += ["write\t1\t5\t1\tfirst", "write\t1\t5\t20\tmiddle", "write\t1\t5\t50\tlast", "write\t1\t4\t2\tabove",
                     "write\t1\t6\t1\tbelow", "save\t" + str(self.folder / "row.xlsx"), "write\t1\t5\t2\tafter saving"]
        seen = self.inline_texts(self.make("row.xlsx", commands)[0])
        self.assertEqual(len(seen), 37 + 5)
        self.assertEqual([seen[c] for c in ("A5", "B5", "C5", "T5", "AX5", "B4", "A6")],
                         ["first", "after saving", "<" * 30000, "middle", "last", "above", "below"])

    def test_clearing_empties_what_it_covers(self):
        cells = [f"write\t1\t{r}\t{c}\tv{r}{c}" for r in range(1, 4) for c in range(1, 4)]
        path, answers = self.make("part.xlsx", [*cells, "used", "clear\t1\t1\t2\t2\t9"])
        self.assertEqual(answers[9], "ok 1 1 3 3")
        self.assertEqual(set(self.inline_texts(path)), {"A1", "A2", "A3", "B3", "C3"})
        path, _ = self.make("all.xlsx", [*cells, "clearused", "write\t1\t2\t2\tnew"])
        self.assertEqual(self.inline_texts(path), {"B2": "new"})

    def test_same_input_same_bytes(self):
        first, second = self.write_all("a.xlsx", SHOWN), self.write_all("b.xlsx", SHOWN)
        self.assertEqual(first.read_bytes(), second.read_bytes())
        dated, _ = self.make("c.xlsx", ["write\t1\t1\t1\tx"], epoch=1700000000)
        self.assertEqual(openpyxl.load_workbook(dated).properties.created.isoformat(), "2023-11-14T22:13:20")
        now, _ = self.make("d.xlsx", ["write\t1\t1\t1\tx"], epoch=None)
        made = openpyxl.load_workbook(now).properties.created.replace(tzinfo=datetime.timezone.utc)
        self.assertLess(abs(made.timestamp() - time.time()), 300)

    def test_a_disk_that_fills_leaves_nothing_behind(self):
        def fill_early():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))

        chance = random.Random(5)
        script = self.folder / "script"
        cells = [f"write\t1\t{r}\t1\t{chance.random()}" for r in range(1, 9000)]
        script.write_text("\n".join([*cells, f"save\t{self.folder}/full.xlsx", ""]))
        answers = link_case.drive(self.folder / "full.xlsx", script, "stream", preexec_fn=fill_early)
        self.assertRegex(answers[-1], "^failed .*File too large")
        self.assertEqual(os.listdir(self.folder), ["script"])

    def test_another_spreadsheet_reads_it_without_a_word(self):
        if not shutil.which("ssconvert"):
            self.skipTest("no second spreadsheet program here")
        path, _ = self.make("other.xlsx", ["write\t1\t1\t1\t12", "write\t1\t2\t1\t=A1*2", "write\t1\t3\t1\t a", "name\t2\tA & B"])
        done = subprocess.run(["ssconvert", path, self.folder / "other.csv"], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual((self.folder / "other.csv").read_text().splitlines(), ["12", "24", '" a"'])


if __name__ == "__main__":
    link_case.main()
