#!/usr/bin/env python3
"""Runs golden cases: each folder here with a file `command`. README.md beside this file tells their form.

  run_golden.py --program build-dev/bin/quillon [--accept] [CASE ...]
  run_golden.py --program build-dev/bin/quillon --spreadsheet      what a spreadsheet program shows of our workbooks
"""

import argparse
import fnmatch
import shutil
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import golden  # noqa: E402
import workbooks  # noqa: E402

HERE = Path(__file__).resolve().parent
SKIPPED = 77
NOT_INPUT = {"command", "compare", "expected", "ORIGIN.md", "README.md"}


class Case:
    def __init__(self, name):
        self.name = name
        self.folder = HERE / name
        self.expected = self.folder / "expected"
        lines = (self.folder / "command").read_text(encoding="utf-8").splitlines()
        self.lines = [line for line in lines if line.strip() and not line.startswith("#")]
        rules = self.folder / "compare"
        self.rules = [line.split() for line in rules.read_text().splitlines() if line.strip()] if rules.exists() else []
        for rule in self.rules:
            if len(rule) < 2 or rule[1] not in ("bytes", "log", "sheet", "shape", "cells", "texts", "ignore"):
                sys.exit(f"{rules}: no such rule: {' '.join(rule)}")

    def run(self, world):
        """Runs the lines; returns the transcript."""
        for entry in self.folder.iterdir():
            if entry.name in NOT_INPUT:
                continue
            (shutil.copytree if entry.is_dir() else shutil.copyfile)(entry, world.work / entry.name)
        before = contents(world.work)
        transcript = []
        for line in self.lines:
            out, err, status = world.run(line)
            transcript.append(f"$ {line}")
            transcript += [f"| {text}" for text in out.splitlines()] + [f"! {text}" for text in err.splitlines()]
            if status:
                transcript.append(f"exit {status}")
        after = contents(world.work)
        self.made = sorted(name for name, data in after.items() if before.get(name) != data)
        self.gone = sorted(set(before) - set(after))
        return "\n".join(transcript + [f"gone: {name}" for name in self.gone]) + "\n"

    def rule(self, name):
        """(how, name of the expectation) of a file that the run made."""
        for pattern, how, *target in self.rules:
            if how != "texts" and fnmatch.fnmatchcase(name, pattern):
                return how, target[0] if target else default_target(name, how)
        suffix = Path(name).suffix.lower()
        how = {".log": "log", ".xlsx": "sheet", ".xls": "sheet"}.get(suffix, "bytes")
        return how, default_target(name, how)


def default_target(name, how):
    return f"{name}.txt" if how in ("sheet", "shape") else name


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def comparable(path, how, world):
    if how == "sheet":
        return workbooks.sheet_text(path).encode()
    if how == "shape":
        return workbooks.shape_text(path).encode()
    data = path.read_bytes()
    return world.steady(data).encode() if how == "log" else data


def shown(data):
    """Bytes so that a difference in them can be read."""
    return data.decode("utf-8", "backslashreplace").replace("\r", "\\r")


class Check:
    """Compares what came with what was expected, and writes down what came where that is asked for."""

    def __init__(self, case, accept):
        self.case, self.accept, self.failures, self.used = case, accept, [], set()

    def expect(self, target, got, name, how):
        self.used.add(target)
        path = self.case.expected / target
        wanted = path.read_bytes() if path.exists() else None
        if how == "cells" and wanted is not None:
            left, right = workbooks.csv_cells(wanted), workbooks.csv_cells(got)
        else:
            left, right = shown(wanted or b""), shown(got)
            if wanted is not None and wanted != got and left == right:
                right += "(other bytes)"
        if wanted is not None and left == right:
            return
        if self.accept and how != "cells":
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(got)
            print(f"{self.case.name}: accepted {target}")
            return
        if wanted is None:
            self.failures.append(f"{name}: no expected/{target}; what came (--accept keeps it):\n{shown(got)[:3000]}")
        else:
            self.failures.append(golden.difference(left, right, f"expected/{target}", name))

    def unused(self):
        """An expectation that no file of the run was held against is one that failed to appear."""
        if not self.case.expected.exists():
            return
        names = {str(p.relative_to(self.case.expected)) for p in self.case.expected.rglob("*") if p.is_file()}
        texts = {rule[2] for rule in self.case.rules if rule[1] == "texts"}
        for name in sorted(names - self.used - texts):
            if self.accept:
                (self.case.expected / name).unlink()
                print(f"{self.case.name}: dropped {name}")
            else:
                self.failures.append(f"expected/{name}: nothing of that name was made")


def run_case(name, program, accept):
    case = Case(name)
    with golden.World(program) as world:
        transcript = case.run(world)
        check = Check(case, accept)
        check.expect("transcript", transcript.encode(), "transcript", "bytes")
        for made in case.made:
            how, target = case.rule(made)
            if how != "ignore":
                check.expect(target, comparable(world.work / made, how, world), made, how)
        check.unused()
    for failure in check.failures:
        print(f"FAILED {name}\n{failure}\n")
    return not check.failures


def run_spreadsheet(program):
    """Each workbook with a rule `texts`, opened by a spreadsheet program and saved as CSV: the shown cells are the report's."""
    soffice = shutil.which("soffice") or shutil.which("libreoffice")
    if not soffice:
        print("SKIPPED: golden.spreadsheet: soffice is not installed (libreoffice-calc-nogui)")
        return SKIPPED
    wanted, failed = {}, 0
    with golden.World(program) as collected:
        for name in case_names():
            case = Case(name)
            rules = [rule for rule in case.rules if rule[1] == "texts"]
            if not rules:
                continue
            with golden.World(program) as world:
                case.run(world)
                for pattern, _, target in rules:
                    for made in fnmatch.filter(case.made, pattern):
                        flat = f"{name}--{made.replace('/', '-').replace('.', '-')}{Path(made).suffix}"
                        shutil.copyfile(world.work / made, collected.work / flat)
                        wanted[flat] = case.expected / target
        # Separator, quote, UTF-8 (76), from row 1, no column formats, language, quote no texts, (import), cells as shown, no formulas.
        how = "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false"
        subprocess.run([soffice, "--headless", f"-env:UserInstallation=file://{collected.home}/office", "--convert-to", how,
                        "--outdir", str(collected.base / "csv")] + [str(collected.work / flat) for flat in wanted],
                       stdin=subprocess.DEVNULL, capture_output=True, timeout=280, check=False)
        for flat, target in wanted.items():
            result = collected.base / "csv" / Path(flat).with_suffix(".csv")
            if not result.exists():
                print(f"FAILED {flat}: the spreadsheet program could not open it")
                failed += 1
                continue
            got = workbooks.csv_cells(result.read_text(encoding="utf-8").encode("latin-1", "replace"), True)
            text = golden.difference(workbooks.csv_cells(target.read_bytes(), True), got, target.name, flat)
            if text:
                print(f"FAILED {flat}\n{text}\n")
                failed += 1
    print(f"{len(wanted) - failed} of {len(wanted)} workbooks show what the reports show")
    return 1 if failed or not wanted else 0


def case_names():
    return sorted(path.parent.name for path in HERE.glob("*/command"))


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--program", required=True)
    arguments.add_argument("--accept", action="store_true", help="write what came as the expectation")
    arguments.add_argument("--spreadsheet", action="store_true")
    arguments.add_argument("cases", nargs="*", metavar="CASE")
    options = arguments.parse_args()
    if options.spreadsheet:
        return run_spreadsheet(options.program)
    results = [run_case(name.rstrip("/"), options.program, options.accept) for name in options.cases or case_names()]
    print(f"{sum(results)} of {len(results)} cases passed")
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
