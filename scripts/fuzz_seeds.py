#!/usr/bin/env python3
"""Writes beginnings for the fuzz entries, a folder each, from golden cases, examples and texts of the tests."""

import argparse
import bz2
import gzip
import lzma
import pathlib
import re
import struct
import subprocess
import tempfile
import zipfile

TREE = pathlib.Path(__file__).resolve().parent.parent
MOST = 12000  # bytes of a report: longer inputs only slow an entry down
PLAIN, BY_CONTENT = b"\x40", b"\x43"  # tab size 8 and windows-1252, or the page by content


class Seeds:
    def __init__(self, folder):
        self.folder = folder
        self.count = 0

    def add(self, entry, *parts):
        place = self.folder / (entry + "_fuzzer")
        place.mkdir(parents=True, exist_ok=True)
        self.count += 1
        (place / f"seed-{self.count:05}").write_bytes(b"".join(parts))


def files(*suffixes):
    found = []
    for top in ("tests/golden", "data"):
        found += [path for path in sorted((TREE / top).rglob("*")) if path.is_file() and "expected" not in path.parts]
    return [path for path in found if path.suffix.lower() in suffixes]


def beginning(path):
    text = path.read_bytes()
    return text if len(text) <= MOST else text[:text.rfind(b"\n", 0, MOST) + 1]


def workbook_stream(book):
    """The records of an .xls file of our own making, whose streams lie in one piece."""
    shift, = struct.unpack_from("<H", book, 30)
    directory, = struct.unpack_from("<I", book, 48)
    at = (directory + 1) << shift
    for entry in range(at, at + (1 << shift), 128):
        length, = struct.unpack_from("<H", book, entry + 64)
        if book[entry:entry + max(length - 2, 0)].decode("utf-16-le", "replace") == "Workbook":
            start, size = struct.unpack_from("<II", book, entry + 116)
            return book[(start + 1) << shift:][:size]
    return b""


def from_reports(seeds, reports):
    for path in reports:
        text = beginning(path)
        for entry in ("line_reader", "suggest", "markup_run"):
            seeds.add(entry, PLAIN, text)
        seeds.add("line_reader", BY_CONTENT, text)
        seeds.add("code_pages", b"\x00", text[:1500])
        for packed in (gzip.compress(text), bz2.compress(text), lzma.compress(text), text.decode("latin-1").encode("utf-16")):
            seeds.add("report_text", b"\x01", packed)
        seeds.add("csv_rows", bytes([0, 1, 8, 0, 9, 10, 19, 20, 9, 31, 40]), text)
        seeds.add("profile_roads", bytes([9, 6, 10, 32, 1, 12, 32, 2, 20, 32, 0]), text)
        seeds.add("utf16", b"\xff\xfe", text[:3000].decode("latin-1").encode("utf-16-le"))
        for word in set(re.findall(rb"[-+(]?[$]?[0-9][-0-9.,/%)]*", text[:4000])):
            seeds.add("number_text", word)
            seeds.add("cell_typing", b"\x00", word)


def from_recipes(seeds, recipes):
    for path in recipes:
        recipe = path.read_bytes()
        seeds.add("long_recipe", PLAIN, recipe)
        seeds.add("section_file", PLAIN, b"Table 1\0ReadStartLine\0", recipe)
        reports = [other for other in sorted(path.parent.iterdir()) if other.suffix in (".txt", ".prt", ".rpt", ".dat", ".idx")]
        for report in reports[:2]:
            for entry in ("short_recipe", "recipe_run"):
                seeds.add(entry, PLAIN, recipe, b"\0", beginning(report))
            for ruler in re.findall(rb"^Parsing=(.*)$", recipe, re.M)[:2]:
                seeds.add("table_parser", PLAIN, ruler.strip(), b"\0", beginning(report))
        for ruler in re.findall(rb"^Parsing=(.*)$", recipe, re.M):
            seeds.add("ruler", ruler.strip())
    for path in files(".t2x"):
        body = re.sub(rb"(?s)^.*?FileFormat=1.1\r?\n", b"", path.read_bytes())
        seeds.add("export_specs", PLAIN, body)
        for report in [other for other in sorted(path.parent.iterdir()) if other.suffix == ".txt"][:2]:
            seeds.add("export_run", PLAIN, b"\x21", body, b"\0", beginning(report), b"\0", beginning(report))


def from_small_files(seeds):
    for path in files(".qln"):
        seeds.add("job_file", PLAIN, path.read_bytes())
        seeds.add("settings_file", PLAIN, b"QLN\0lTabSize\x004\0bUnix\0", path.read_bytes())
    for path in sorted((TREE / "data/Languages").iterdir()):
        seeds.add("language_file", BY_CONTENT, b"New text\0", path.read_bytes()[:2000])
    for path in files(".txt"):
        if "profile" in path.name.lower() or path.parent.name == "Profiles":
            seeds.add("profile", path.read_bytes()[:MOST])
    seeds.add("profile_list", b"Bank\0Bank.txt\0Old.TXT\0notes.md\0a.txt.txt")
    for command in sorted((TREE / "tests/golden").glob("*/command")):
        for text in re.findall(r"quillon '(/[^']*)'", command.read_text()):
            seeds.add("slash_text", text.encode())
    for text in sorted(set(re.findall(r'"([^"\\]{2,80})"', (TREE / "tests/output/modFormula_test.cpp").read_text()))):
        seeds.add("formula", text.encode())


def from_workbooks(seeds, program, recipes):
    """Small workbooks that the program makes of golden cases, whole and in their parts."""
    with tempfile.TemporaryDirectory() as folder:
        for path in recipes:
            reports = [other for other in sorted(path.parent.iterdir()) if other.suffix == ".txt" and other.stat().st_size < MOST]
            for kind in ("xlsx", "xls"):
                book = pathlib.Path(folder) / ("a." + kind)
                book.unlink(missing_ok=True)
                if reports:
                    subprocess.run([program, "convert", reports[0], "-o", book, "--recipe", path, "--quiet"], check=False,
                                   stderr=subprocess.DEVNULL, env={"HOME": folder, "TMPDIR": folder})
                if not book.exists() or book.stat().st_size > 30000:
                    continue
                if kind == "xls":
                    seeds.add("xls_file", book.read_bytes())
                    seeds.add("xls_records", workbook_stream(book.read_bytes()))
                    continue
                seeds.add("xlsx_package", book.read_bytes())
                for part in zipfile.ZipFile(book).infolist():
                    for word, entry in (("sheet1", "sheet_xml"), ("sharedStrings", "shared_strings"), ("styles", "styles")):
                        if word in part.filename:
                            seeds.add(entry, zipfile.ZipFile(book).read(part))


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("folder", type=pathlib.Path)
    options.add_argument("--program", help="quillon, which makes the workbooks; without it there are none")
    given = options.parse_args()
    seeds = Seeds(given.folder)
    from_reports(seeds, files(".txt", ".prt", ".rpt", ".dat", ".idx"))
    from_recipes(seeds, files(".rcp"))
    from_small_files(seeds)
    if given.program:
        from_workbooks(seeds, given.program, files(".rcp"))
    print(f"{seeds.count} seeds in {given.folder}")


if __name__ == "__main__":
    main()
