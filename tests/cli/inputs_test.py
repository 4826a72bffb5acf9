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
        for data, said in [(gzip.compress(text)[:-9], "ends too early"), (bytes(broken), "is damaged"),
                           (gzip.compress(text) + b"rubbish behind", "is damaged"),
                           (lzma.compress(text)[:-40], "ends too early"), (bz2.compress(text)[:-40], "ends too early"),
                           (b"PK\3\4 no archive", "is damaged"), (self.zipped(), "is empty"),
                           (self.zipped(("a", text), ("b", text)), "more than one file")]:
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


if __name__ == "__main__":
    unittest.main()
