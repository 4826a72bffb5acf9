#!/usr/bin/env python3
"""Lets requests for memory fail in whole runs, one a run, and gives runs on hostile files less memory than those ask for.
After each the old output is whole or the new one is, there is a report with its code, and no temporary file stays."""

import argparse
import io
import os
import pathlib
import resource
import struct
import subprocess
import sys
import tempfile
import zipfile

REPORT = "TOP\n" + "".join(f"{i:<8} {'Item ' + str(i):<14} {i * 1.25:10,.2f}\n" for i in range(300)) + "END\n"
RECIPE = ("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\nReadStartLine=TOP\r\n"
          "ReadStartLineOffset=1\r\nReadEndLine=END\r\nReadEndLineOffset=-1\r\nParsing=-------- -------------- ----------\r\n"
          "WriteColumn=A\r\n")
PROFILE = "".join(f"{i}\t{w}\t[32] Space\tLeft\tNo\t{i}\t\t\r\n" for i, w in ((1, 9), (2, 15), (3, 10)))
LONG = ("[Header]\r\nProduct=QLN\r\nFileType=RECIPE\r\nFileFormat=1.1\r\n[Output File]\r\nOutputFileName=out.csv\r\n"
        "InputFileFirst=1\r\nInputFileLast=1\r\nExportSpecFileName=l.t2x\r\n[Input Files]\r\nFileName1=in.txt\r\n")
SPECIFICATION = ("[Header]\r\nProduct=QLN\r\nFileType=EXPORT SPEC\r\nFileFormat=1.1\r\n[General]\r\nName=x\r\n[Title 1]\r\nWriteSheet=1\r\n"
                 "WriteColumn=A\r\nTotalLines=2147483647\r\nText1=x\r\n[Table 1]\r\nReadStartLine=TOP\r\nReadStartLineOffset=1\r\n"
                 "ReadEndLine=END\r\nReadEndLineOffset=-1\r\nTotalColumns=2147483647\r\n[Table 1 Col 1]\r\nReadColumnStart=1\r\n"
                 "ReadColumnEnd=2147483647\r\nWriteColumn=A\r\nPeriodOperator=\r\n")
JOB = "[QLN]\r\nsInputFile=in.txt\r\nsOutputFile=out.csv\r\nsRecipeFile=r.rcp\r\nlConversionMethod=1\r\n"


class Runs:
    def __init__(self, program, layer, folder):
        self.program, self.layer, self.folder = program, layer, folder
        self.tried = self.failed = 0
        for name, text in (("in.txt", REPORT), ("r.rcp", RECIPE), ("p.txt", PROFILE), ("j.QLN", JOB)):
            (folder / name).write_text(text)
        for name in ("data", "tmp"):
            (folder / name).mkdir()

    def run(self, arguments, megabytes=0, at=0):
        environment = {"PATH": os.environ["PATH"], "SOURCE_DATE_EPOCH": "1700000000", "HOME": str(self.folder / "data"), "TMPDIR": str(self.folder / "tmp"),
                       "APPDATA": str(self.folder / "data"), "LC_ALL": "C.UTF-8"}
        mark = self.folder.parent / "mark"
        mark.unlink(missing_ok=True)
        if at:
            environment.update(LD_PRELOAD=str(self.layer), QUILLON_MEMORY_AT=str(at), QUILLON_MEMORY_MARK=str(mark))
        limit = (megabytes << 20, megabytes << 20)
        done = subprocess.run([self.program, *arguments], cwd=self.folder, env=environment, capture_output=True, text=True,
                              errors="replace", preexec_fn=(lambda: resource.setrlimit(resource.RLIMIT_AS, limit))
                              if megabytes else None)
        self.tried += 1
        return done, mark.exists()

    def files(self):
        return sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*") if path.is_file())

    def judge(self, where, done, target, old, new):
        now = target.read_bytes() if target.exists() else None
        assert done.returncode in (0, 1, 70), (where, done.returncode, done.stderr)
        if done.returncode == 0:
            assert new is None or now == new, (where, "says that all is done", done.stderr)
            return
        self.failed += 1
        assert now in (old, new), (where, "neither the old output nor the new one", done.stderr)
        assert done.stderr.startswith("quillon: ") or "Error [" in done.stderr, (where, "no report", done.stderr)

    def walk(self, name, arguments, output, old):
        """Each request for memory fails once; behind the first 200 only every tenth part more, up to the last."""
        target = self.folder / output

        def prepare():
            target.unlink(missing_ok=True)
            if old is not None:
                target.write_bytes(old)

        prepare()
        self.run(arguments)
        new = target.read_bytes()
        usual = self.files()
        at = 1
        while True:
            prepare()
            done, let_loose = self.run(arguments, at=at)
            self.judge(f"{name}, request {at}", done, target, old, new)
            strange = [file for file in self.files() if file not in usual]
            assert not strange, (name, at, strange)
            if not let_loose:
                assert at > 1 and done.returncode == 0, (name, at, done.stderr)
                return
            at += 1 + max(0, at - 200) // 10

    def hostile(self, name, arguments, output, old, limits):
        target = self.folder / output
        target.write_bytes(old)
        usual = self.files()
        for megabytes in limits:
            target.write_bytes(old)
            done, _ = self.run(arguments, megabytes=megabytes)
            self.judge(f"{name} with {megabytes} MB", done, target, old, None)
            strange = [file for file in self.files() if file not in usual]
            assert not strange, (name, megabytes, strange)


def package(parts):
    """A workbook of the program's own with parts put in place of its own, or with more."""
    out = io.BytesIO()
    with zipfile.ZipFile(io.BytesIO(parts.pop("")), "r") as book, zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as bomb:
        for part in book.infolist():
            bomb.writestr(part.filename, parts.pop(part.filename, None) or book.read(part.filename))
        for name, text in parts.items():
            bomb.writestr(name, text)
    return out.getvalue()


def try_hostile_files(runs):
    convert = ["convert", "in.txt", "--recipe", "r.rcp", "--quiet", "-o"]
    books = {}
    for kind in ("xlsx", "xls"):
        runs.run(convert + [f"plain.{kind}"])
        books[kind] = (runs.folder / f"plain.{kind}").read_bytes()
    book = books["xlsx"]
    sheet = next(name for name in zipfile.ZipFile(io.BytesIO(book)).namelist() if name.endswith("sheet1.xml"))
    head = '<?xml version="1.0"?><{0} xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">'
    strings = head.format("sst") + "<si><t>" + "x" * (100 << 20) + "</t></si></sst>"
    many = head.format("sst") + "<si><t>a</t></si>" * 2_000_000 + "</sst>"
    rows = head.format("worksheet") + "<sheetData>" + "".join(
        f'<row r="{i}"><c r="A{i}" t="inlineStr"><is><t>{"y" * 3000}</t></is></c></row>' for i in range(1, 33_000)
    ) + "</sheetData></worksheet>"
    bombs = {"one shared string of 100 MB": {"xl/sharedStrings.xml": strings},
             "two million shared strings": {"xl/sharedStrings.xml": many},
             "a sheet of 100 MB": {sheet: rows}}
    limits = (64, 96, 192, 400)
    for name, parts in bombs.items():
        runs.hostile(name, convert + ["out.xlsx"], "out.xlsx", package({"": book, **parts}), limits)

    # Every 32-bit word of the header and of the first records as large as it can be.
    for at in [*range(28, 80, 4), *range(512, 560, 4)]:
        bad = bytearray(books["xls"])
        struct.pack_into("<I", bad, at, 0x7FFFFFFF)
        runs.hostile(f"an .xls file with a large number at {at}", convert + ["out.xls"], "out.xls", bytes(bad), (128,))

    (runs.folder / "p.txt").write_text("".join(f"{i}\t2147483647\t[32] Space\tLeft\tNo\t{i}\t\t\r\n" for i in range(1, 9)))
    profile = ["convert", "in.txt", "--profile", "./p.txt", "--quiet", "-o", "out.csv"]
    runs.hostile("a profile of the widest columns", profile, "out.csv", b"old\r\n", (64, 128))
    with open(runs.folder / "p.txt", "w") as many_columns:
        many_columns.writelines(f"{i}\t5\t[32] Space\tLeft\tNo\t{i}\t\t\r\n" for i in range(1, 2_000_000))
    runs.hostile("a profile of two million columns", profile, "out.csv", b"old\r\n", (64, 128))

    # Counts that lie: what was read of the specification is converted, and what is missing is told.
    (runs.folder / "l.rcp").write_text(LONG)
    (runs.folder / "l.t2x").write_text(SPECIFICATION)
    done, _ = runs.run(["convert", "in.txt", "--specification", "l.rcp", "-o", "lie.xlsx"], megabytes=128)
    assert done.returncode == 1 and done.stderr, (done.returncode, done.stderr)

    with open(runs.folder / "in.txt", "wb") as report:  # A hole in the file: it takes no space.
        report.write(b"TOP\n")
        report.truncate(2 << 30)
    for kind, old in (("csv", b"old\r\n"), *books.items()):
        runs.hostile(f"a line of 2 GB to .{kind}", convert + [f"out.{kind}"], f"out.{kind}", old, (96, 400))
    (runs.folder / "small.txt").write_text(REPORT)
    done, _ = runs.run(["convert", "in.txt", "small.txt", "--recipe", "r.rcp", "-o", "batch/*.csv"], megabytes=96)
    assert done.returncode == 1 and "Error [-1003]" in done.stderr, done.stderr
    assert os.listdir(runs.folder / "batch") == ["small.csv"], "the batch goes on"
    runs.hostile("a line of 2 GB by a profile", ["convert", "in.txt", "--profile", "./q.txt", "--quiet", "-o", "out.csv"],
                 "out.csv", b"old\r\n", (96, 400))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--layer", required=True)
    chosen = parser.parse_args()
    if b"libasan" in subprocess.run(["ldd", chosen.program], capture_output=True, check=True).stdout:
        print("the sanitizer has a memory of its own")
        return 77
    with tempfile.TemporaryDirectory(prefix="quillon-memory-") as name:
        folder = pathlib.Path(name).resolve() / "work"
        folder.mkdir()
        runs = Runs(os.path.abspath(chosen.program), os.path.abspath(chosen.layer), folder)
        (folder / "q.txt").write_text(PROFILE)
        for kind in ("csv", "xlsx", "xls"):
            convert = ["convert", "in.txt", "--quiet", "-o", f"out.{kind}"]
            runs.walk(f"recipe to .{kind}", convert + ["--recipe", "r.rcp"], f"out.{kind}", None)
            old = (folder / f"out.{kind}").read_bytes()
            runs.walk(f"recipe to a .{kind} that exists", convert + ["--recipe", "r.rcp"], f"out.{kind}", old)
        runs.walk("profile to .csv", ["convert", "in.txt", "--quiet", "-o", "out.csv", "--profile", "./p.txt"], "out.csv", b"o\r\n")
        runs.walk("a job", ["job", "j.QLN"], "out.csv", b"o\r\n")
        print(f"{runs.tried} runs, {runs.failed} ended for want of memory, nothing lost")
        try_hostile_files(runs)
        print(f"{runs.tried} runs with those on hostile files, {runs.failed} ended, nothing lost")
    return 0


if __name__ == "__main__":
    sys.exit(main())
