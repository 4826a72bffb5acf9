#!/usr/bin/env python3
"""Reports that are no plain text files give the very bytes that their text gives.

inputs_test.py PROGRAM
"""
import bz2
import gzip
import lzma
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve()
GOLDEN = pathlib.Path(__file__).resolve().parent.parent / "golden"
CASES = [("account_limits", "account_limits.prt", "account_limits.rcp"),
         ("epanet_net1_pages", "epanet_net1_pages.rpt", "epanet_net1_pages.rcp"),
         ("fastiron_arp_crlf", "fastiron_arp_crlf.txt", "fastiron_arp_crlf.rcp")]


def ebcdic(text, page="cp037"):
    return text.encode(page)


def asa(text):
    """The lines of a text as records with ASA carriage control."""
    records = []
    for line in text.split("\n")[:-1]:
        feeds = len(line) - len(line.lstrip("\f"))
        records += ["1"] * (feeds - 1) + [("1" if feeds else " ") + line.lstrip("\f")]
    return records


def pdf(pages, size, bold=False):
    """A PDF of pages of lines, in Courier; bold: the second half of each line first, and all of it drawn twice."""
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", None, b"<</Type/Font/Subtype/Type1/BaseFont/Courier>>"]
    kids = []
    height = int(size * 1.2 * max(map(len, pages), default=0)) + 80
    for lines in pages:
        shown = ""
        for line in lines:
            middle = len(line) // 2
            steps = [(line, 0)] if not bold else [(line[middle:], middle * size * 0.6), (line[:middle], 0)] * 2
            for text, right in steps:
                text = text.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
                shown += f"{right:.2f} 0 Td ({text}) Tj {-right:.2f} 0 Td\n"
            shown += "T*\n"
        stream = f"BT /F1 {size} Tf {size * 1.2} TL 40 {height - 40} Td\n{shown}ET".encode("latin-1")
        objects.append(b"<</Length %d>>stream\n%s\nendstream" % (len(stream), stream))
        objects.append(b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 1200 %d]/Contents %d 0 R"
                       b"/Resources<</Font<</F1 3 0 R>>>>>>" % (height, len(objects)))
        kids.append(b"%d 0 R" % len(objects))
    objects[1] = b"<</Type/Pages/Count %d/Kids[%s]>>" % (len(kids), b" ".join(kids))
    made, places = b"%PDF-1.4\n", []
    for number, thing in enumerate(objects, 1):
        places.append(len(made))
        made += b"%d 0 obj\n%s\nendobj\n" % (number, thing)
    table = b"".join(b"%010d 00000 n \n" % place for place in places)
    return made + b"xref\n0 %d\n0000000000 65535 f \n%strailer<</Size %d/Root 1 0 R>>\nstartxref\n%d\n%%%%EOF\n" % (
        len(objects) + 1, table, len(objects) + 1, len(made))


class Inputs(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillon-inputs-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def run_program(self, *arguments, **more):
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder, capture_output=True, timeout=60,
                              env={"PATH": os.environ["PATH"], "HOME": str(self.folder), "LC_ALL": "C.UTF-8"}, **more)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    def convert(self, source, recipe, output="out.csv", *options):
        path = self.folder / output
        path.unlink(missing_ok=True)
        status, _, said = self.run_program("convert", source, "-o", output, "--recipe", recipe, *options)
        return status, path.read_bytes() if path.exists() else None, said

    def zipped(self, *members):
        path = self.folder / "made.zip"
        with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
            for name, data in members:
                archive.writestr(name, data)
        return path.read_bytes()

    def test_packed_reports_give_the_bytes_of_their_text(self):
        for case, report, recipe in CASES:
            text, recipe = (GOLDEN / case / report).read_bytes(), GOLDEN / case / recipe
            status, wanted, _ = self.convert(GOLDEN / case / report, recipe)
            self.assertEqual((status, bool(wanted)), (0, True), case)
            half = len(text) // 2
            packed = {"gzip": gzip.compress(text), "xz": lzma.compress(text), "bzip2": bz2.compress(text),
                      "two streams, padded": gzip.compress(text[:half]) + gzip.compress(text[half:]) + bytes(512),
                      "zip": self.zipped(("in/", b""), ("in/" + report, text)),
                      "gzip in zip": self.zipped(("a.gz", gzip.compress(text)))}
            if shutil.which("zstd"):
                packed["zstd"] = subprocess.run(["zstd", "-c"], input=text, capture_output=True, check=True).stdout
            for kind, data in packed.items():
                (self.folder / "packed").write_bytes(data)
                self.assertEqual(self.convert("packed", recipe)[:2], (0, wanted), f"{case} {kind}")

    def test_what_is_no_whole_archive_leaves_the_output_alone(self):
        case, report, recipe = CASES[0]
        text, recipe = (GOLDEN / case / report).read_bytes(), GOLDEN / case / recipe
        broken = bytearray(gzip.compress(text))
        broken[-6] ^= 1
        nested = text
        for _ in range(5):
            nested = gzip.compress(nested)
        for data, said in [(gzip.compress(text)[:-9], "ends too early"), (bytes(broken), "is damaged"),
                           (gzip.compress(text) + b"rubbish behind", "is damaged"),
                           (lzma.compress(text)[:-40], "ends too early"), (bz2.compress(text)[:-40], "ends too early"),
                           (b"PK\3\4 no archive", "is damaged"), (self.zipped(), "is empty"),
                           (self.zipped(("a", text), ("b", text)), "more than one file"), (nested, "unpacks to more")]:
            (self.folder / "in.txt").write_bytes(data)
            status, made, errors = self.convert("in.txt", recipe)
            self.assertEqual((status, made), (1, None), said)
            self.assertIn(said, errors)

    def test_the_name_of_what_is_packed_names_the_output(self):
        case, report, recipe = CASES[0]
        (self.folder / "in").mkdir()
        for name in ["may.txt.gz", "june.gz", "july.prt"]:
            text = (GOLDEN / case / report).read_bytes()
            (self.folder / "in" / name).write_bytes(gzip.compress(text) if name.endswith("gz") else text)
        self.run_program("convert", "in/*", "-o", "out/*.csv", "--recipe", GOLDEN / case / recipe)
        self.assertEqual(sorted(p.name for p in (self.folder / "out").iterdir()), ["july.csv", "june.csv", "may.csv"])

    def test_every_method_reads_utf_16_that_has_a_mark(self):
        case, report, recipe = CASES[0]
        text, recipe = (GOLDEN / case / report).read_bytes(), GOLDEN / case / recipe
        _, wanted, _ = self.convert(GOLDEN / case / report, recipe)
        for data in [text.decode().encode("utf-16"), b"\xfe\xff" + text.decode().encode("utf-16-be")]:
            (self.folder / "in.txt").write_bytes(data)
            status, made, said = self.convert("in.txt", recipe)
            self.assertEqual((status, made), (0, wanted))
            self.assertIn("note: in.txt: read as UTF-16", said)
            self.assertEqual(self.run_program("check", "in.txt", "--recipe", recipe)[0], 0)

    def test_mainframe_files_give_the_bytes_of_their_text(self):
        for case, report, recipe in CASES:
            recipe = GOLDEN / case / recipe
            # Blanks at the ends of lines can't be told from those that fill up records.
            lines = [line.rstrip(" ") for line in (GOLDEN / case / report).read_bytes().decode().split("\n")]
            lines = [line.rstrip("\r").rstrip(" ") for line in lines]
            text = "".join(line + "\n" for line in lines).rstrip("\n") + "\n"
            lines = text.split("\n")[:-1]
            (self.folder / "plain.txt").write_text(text, newline="")
            _, wanted, _ = self.convert("plain.txt", recipe)
            records = asa(text)
            width = max(map(len, records))
            counted = [ebcdic(r) for r in records]
            rdw = [(len(r) + 4).to_bytes(2, "big") + bytes(2) + r for r in counted]
            found = {"NEL": b"".join(ebcdic(line) + b"\x15" for line in lines), "RDW": b"".join(rdw),
                     "blocks": b"".join((len(r) + 4).to_bytes(2, "big") + bytes(2) + r for r in rdw)}
            fixed = b"".join(ebcdic(r.ljust(width)) for r in records)
            said = ["--encoding", "cp037", "--record-length", width, "--carriage-control", "asa"]
            control = {"NEL": []}
            made = [(k, d, control.get(k, said[-2:])) for k, d in found.items()] + [("fixed", fixed, said)]
            for kind, data, options in made:
                (self.folder / "spool").write_bytes(data)
                status, made, told = self.convert("spool", recipe, "out.csv", *options)
                self.assertEqual((status, made), (0, wanted), f"{case} {kind} {told}")
                self.assertIn("read as EBCDIC (cp037)", told)

    def test_a_job_keeps_how_its_reports_are_read(self):
        case, report, recipe = CASES[0]
        lines, recipe = (GOLDEN / case / report).read_bytes().decode().splitlines(), GOLDEN / case / recipe
        text = "".join(line.rstrip() + "\n" for line in lines)
        (self.folder / "plain.txt").write_text(text)
        _, wanted, _ = self.convert("plain.txt", recipe)
        (self.folder / "spool").write_bytes("".join(r.ljust(140) for r in asa(text)).encode())
        job = f"[QLN]\r\nsInputFile=spool\r\nsOutputFile=job.csv\r\nsRecipeFile={recipe}\r\nlConversionMethod=1\r\n"
        for keys, status in [("lRecordLength=140\r\nsCarriageControl=asa\r\n", 0), ("sRecords=odd\r\n", 1)]:
            (self.folder / "a.QLN").write_text(job + keys)
            self.assertEqual(self.run_program("job", "a.QLN")[0], status, keys)
        self.assertEqual((self.folder / "job.csv").read_bytes(), wanted)
        self.assertEqual(self.convert("spool", recipe, "o.csv", "--records", "odd")[0], 2)

    def test_a_recipe_says_how_its_reports_are_read(self):
        case, report, recipe = CASES[0]
        recipe = (GOLDEN / case / recipe).read_bytes()
        lines = (GOLDEN / case / report).read_bytes().decode().splitlines()
        text = "".join(line.rstrip() + "\n" for line in lines)
        (self.folder / "plain.txt").write_text(text)
        (self.folder / "r.rcp").write_bytes(recipe)
        _, wanted, _ = self.convert("plain.txt", "r.rcp")
        (self.folder / "spool").write_bytes("".join(r.ljust(140) for r in asa(text)).encode())
        header = b"[Header]\r\nProduct=QLN-B\r\nInput=%s\r\n"
        (self.folder / "r.rcp").write_bytes(header % b"record-length 140, Carriage-Control asa" + recipe)
        self.assertEqual(self.convert("spool", "r.rcp")[:2], (0, wanted))
        self.assertEqual(self.run_program("check", "spool", "--recipe", "r.rcp")[0], 0)
        place = str(self.folder).replace("/", "\\")
        self.run_program(f"/I{place}\\spool /O{place}\\slash.csv /R{place}\\r.rcp")
        self.assertEqual((self.folder / "slash.csv").read_bytes(), wanted)
        # What the command says holds over the recipe.
        self.assertEqual(self.convert("plain.txt", "r.rcp", "o.csv", "--records", "lines", "--carriage-control", "none")[1],
                         wanted)
        for key, said in [(b"recods fixed", '"recods" is none of records'), (b"records odd", "records: one of auto"),
                          (b"record-length many", "a whole number")]:
            (self.folder / "r.rcp").write_bytes(header % key + recipe)
            for command in (["convert", "-o", "no.csv"], ["check"]):
                status, _, told = self.run_program(command[0], "spool", "--recipe", "r.rcp", *command[1:])
                self.assertEqual(status, 1, told)
                self.assertIn(said, told)

    @unittest.skipUnless(shutil.which("pdftotext"), "poppler-utils is not installed")
    def test_a_pdf_gives_the_cells_of_its_text(self):
        # Columns count from the leftmost character of the document, so a text that is indented as a whole moves.
        for case, report, recipe in CASES[::2]:
            text, recipe = (GOLDEN / case / report).read_bytes().decode(), GOLDEN / case / recipe
            pages = [page.splitlines() for page in text.split("\f")]
            for size, bold in [(7, False), (10, False), (8, True)]:
                (self.folder / "in.pdf").write_bytes(pdf(pages, size, bold))
                status, made, said = self.convert("in.pdf", recipe, "out.csv", "--trim")
                _, plain, _ = self.convert(GOLDEN / case / report, recipe, "plain.csv", "--trim")
                self.assertEqual((status, made), (0, plain), f"{case} {size} {bold} {said}")

    @unittest.skipUnless(shutil.which("pdftotext"), "poppler-utils is not installed")
    def test_a_pdf_that_is_no_text_is_refused_with_the_reason(self):
        case, _, recipe = CASES[0]
        recipe = GOLDEN / case / recipe
        for data, said in [(b"%PDF-1.4\nrubbish", "can't be read"), (pdf([[]], 10), "is it a scan?")]:
            (self.folder / "in.pdf").write_bytes(data)
            status, made, told = self.convert("in.pdf", recipe)
            self.assertEqual((status, made), (1, None), told)
            self.assertIn(said, told)
        hanging = self.folder / "bin" / "pdftotext"
        hanging.parent.mkdir()
        for script, said in [("#!/bin/sh\nkill -9 $$\n", "takes too long or too much"), (None, "poppler-utils")]:
            hanging.unlink(missing_ok=True)
            if script:
                hanging.write_text(script)
                hanging.chmod(0o755)
            told = subprocess.run([PROGRAM, "convert", "in.pdf", "-o", "out.csv", "--recipe", str(recipe)],
                                  cwd=self.folder, capture_output=True, timeout=60,
                                  env={"PATH": str(hanging.parent), "HOME": str(self.folder)}).stderr.decode()
            self.assertIn(said, told)


if __name__ == "__main__":
    unittest.main()
