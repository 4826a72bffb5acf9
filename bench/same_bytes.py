#!/usr/bin/env python3
"""Whether two builds write the same bytes: what was made faster must have stayed what it was.

same_bytes.py BEFORE NOW [--rows N] [--reports N] [--seed N] [--no-golden]

BEFORE and NOW are programs. Compared are the outputs of all golden cases, of random printed reports with their recipes, and
of random rows in each code page by recipe and by profile, in each quoting, with tabs, trimmed and as workbooks. Prints what
differs and ends with 1, or tells how much was compared.
"""

import argparse
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(ROOT / "tests/golden"), str(ROOT / "tests/printer")]
import golden  # noqa: E402
import print_reports  # noqa: E402
import run_golden  # noqa: E402

OUTPUTS = {".csv", ".xlsx", ".xls"}
PAGES = ("windows-1252", "cp437", "cp850", "ISO-8859-1", "ISO-8859-7", "windows-1251", "UTF-8")
CODECS = {"ISO-8859-1": "latin-1"}
WIDTHS = (3, 8, 16, 17, 20, 1, 33, 12)
FRAME = "TABLE STARTS HERE"


def field(chance, width, letters):
    """A value of one of the kinds that take roads of their own, in its column or beyond."""
    kind = chance.randrange(12)
    if kind < 4:
        text = f"{chance.random() * 10 ** chance.randrange(8):,.{chance.randrange(4)}f}{chance.choice(['', '-', ' CR'])}".rjust(width)
    elif kind < 7:
        text = "".join(chance.choice(letters) for _ in range(chance.randrange(width + 1))).ljust(width)
    else:
        text = {7: "", 8: chance.choice('",=+-@\t') * chance.randrange(1, 4) + "x", 9: '"' * chance.randrange(width + 1),
                10: " =SUM(A1)", 11: f"{chance.randrange(28) + 1:02}.{chance.randrange(12) + 1:02}.2024"}[kind].ljust(width)
    return text if chance.random() < 0.02 else text[:width]


def random_rows(seed, page, count):
    chance = random.Random(f"{seed} {page}")
    codec = CODECS.get(page, page)
    letters = [chr(c) for c in range(32, 127)]
    high = "äöüßéÄ€–ÇñДжЯщΩλμπ漢字ب" + "\u0301" if page == "UTF-8" else bytes(range(128, 256)).decode(codec, "ignore")
    letters += [c for c in high if c.isprintable()] * 3
    rows = []
    for _ in range(count):
        cells = [field(chance, width, letters) for width in WIDTHS]
        row = chance.choice([" ", "", "  "]).join(cells) if chance.random() < 0.05 else " ".join(cells)
        if chance.random() < 0.1:
            row = row[:chance.randrange(len(row) + 1)]
        rows.append(row.replace("\n", " ").replace("\r", " "))
    text = FRAME + "\n" + "\n".join(rows) + "\n" + FRAME[::-1] + "\n"
    return text.encode(codec, "replace")


def ways():
    """What each report of random rows goes through: (output, options, needs the page)."""
    recipe, profile = ["--recipe", "r.rcp"], ["--profile", "p.txt"]
    yield "plain.csv", recipe
    yield "trimmed.csv", [*recipe, "--trim"]
    yield "bar.csv", [*recipe, "--delimiter", "bar"]
    yield "safe.csv", [*recipe, "--safe-csv"]
    yield "worked.csv", ["--recipe", "w.rcp"]
    yield "tabs.csv", [*recipe, "--tab-size", "4"]
    yield "sheet.xlsx", recipe
    for quote in ("never", "sometimes", "always"):
        yield f"profile-{quote}.csv", [*profile, "--quote", quote]
    yield "profile.xlsx", profile


def convert(program, folder, source, output, options):
    run = subprocess.run([program, "convert", source, "-o", output, "--quiet", "--keep", *options], cwd=folder, capture_output=True,
                         env={"HOME": str(folder), "LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"]}, check=False)
    if b"--keep" in run.stderr:  # a build that wrote what there was without being asked
        run = subprocess.run([program, "convert", source, "-o", output, "--quiet", *options], cwd=folder, capture_output=True,
                             env={"HOME": str(folder), "LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"]}, check=False)


def without_time(path):
    """The parts of a workbook, but for the second in which it was made."""
    with zipfile.ZipFile(path) as book:
        return [(part.filename, re.sub(rb"\d{4}-\d\d-\d\dT[\d:]{8}Z", b"", book.read(part))) for part in book.infolist()]


def are_same(one, other):
    if not (one.exists() and other.exists()):
        return one.exists() == other.exists()
    if one.read_bytes() == other.read_bytes():
        return True
    return zipfile.is_zipfile(one) and zipfile.is_zipfile(other) and without_time(one) == without_time(other)


class Comparison:
    def __init__(self, before, now):
        self.programs, self.files, self.bytes, self.differ = (before, now), 0, 0, []

    def file(self, name, one, other):
        """Two files that are there or not."""
        texts = [path.read_bytes() if path.exists() else None for path in (one, other)]
        self.files += 1
        self.bytes += len(texts[0] or b"")
        if not are_same(one, other):
            at = "there or not" if None in texts else next(
                (i for i, (a, b) in enumerate(zip(*texts)) if a != b), min(map(len, texts)))
            self.differ.append(f"{name}: {at}")

    def both(self, folder, source, output, options, name):
        paths = []
        for program in self.programs:
            made = folder / output
            made.unlink(missing_ok=True)
            convert(program, folder, source, output, options)
            kept = folder / f"kept-{len(paths)}"
            kept.unlink(missing_ok=True)
            if made.exists():
                made.rename(kept)
            paths.append(kept)
        self.file(name, *paths)

    def random_rows(self, folder, seed, count):
        ruler = " ".join("-" * width for width in WIDTHS)
        for name, parsing in (("r.rcp", ruler), ("w.rcp", "=")):
            (folder / name).write_text(f"[Table 1]\nReadStartLine={FRAME}\nReadStartLineOffset=1\nReadEndLine={FRAME[::-1]}\n"
                                       f"ReadEndLineOffset=-1\nParsing={parsing}\nWriteColumn=A\n")
        (folder / "p.txt").write_text("".join(
            f"{n}\t{width + 1}\t[32] Space\t{side}\tNo\t{n}\t\t\r\n"
            for n, (width, side) in enumerate(zip(WIDTHS, ["Left", "Right", "Both"] * 3), 1)))
        for page in PAGES:
            (folder / "rows.txt").write_bytes(random_rows(seed, page, count))
            for output, options in ways():
                self.both(folder, "rows.txt", output, [*options, "--encoding", page], f"{page}, {output}")

    def printed(self, folder, seed, count):
        for each in print_reports.print_all(seed, count, folder, None, 0):
            for output in ("out.csv", "out.xlsx"):
                self.both(each, "report.txt", output, ["--recipe", "recipe.rcp"], f"{each.name}, {output}")
            shutil.rmtree(each)

    def golden(self, program, name):
        """The outputs of a golden case by a program."""
        with golden.World(program) as world:
            link = world.base / "bin"
            link.mkdir()
            (link / "quillon").symlink_to(program)
            world.env["PATH"] = f"{link}:/usr/bin:/bin"
            case = run_golden.Case(name)
            case.run(world)
            return {made: (world.work / made).read_bytes() for made in case.made if Path(made).suffix.lower() in OUTPUTS}

    def golden_cases(self):
        for command in sorted((ROOT / "tests/golden").glob("*/command")):
            one, other = (self.golden(program, command.parent.name) for program in self.programs)
            for made in sorted({*one, *other}):
                self.files += 1
                self.bytes += len(one.get(made, b""))
                if one.get(made) != other.get(made):
                    there = "there or not" if (made in one) != (made in other) else "other bytes"
                    self.differ.append(f"golden {command.parent.name}, {made}: {there}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("before", type=Path)
    parser.add_argument("now", type=Path)
    parser.add_argument("--rows", type=int, default=2000)
    parser.add_argument("--reports", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--no-golden", action="store_true")
    chosen = parser.parse_args()
    comparison = Comparison(chosen.before.resolve(), chosen.now.resolve())
    with tempfile.TemporaryDirectory(prefix="quillon-same-") as name:
        comparison.random_rows(Path(name), chosen.seed, chosen.rows)
        print(f"{chosen.rows} rows in each of {len(PAGES)} code pages: {comparison.files} files", flush=True)
        comparison.printed(Path(name), chosen.seed, chosen.reports)
        print(f"{chosen.reports} printed reports: {comparison.files} files so far", flush=True)
    if not chosen.no_golden:
        comparison.golden_cases()
    print("\n".join(comparison.differ[:200]))
    print(f"{comparison.files} files, {comparison.bytes / 1e6:.1f} MB; {len(comparison.differ)} differ")
    return 1 if comparison.differ else 0


if __name__ == "__main__":
    sys.exit(main())
