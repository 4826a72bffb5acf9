#!/usr/bin/env python3
"""A year of a company: 20 departments x 2,000 accounts x 12 months become one sheet of sums, checked against sums made here.

  consolidation_test.py --program build-dev/bin/quillon

The departments list their accounts in an order of their own and leave some out. Prints the seconds of the run.
"""

import argparse
import random
import sys
import time
from decimal import Decimal
from pathlib import Path

import openpyxl

sys.path.insert(0, str(Path(__file__).resolve().parent))
import golden  # noqa: E402

DEPARTMENTS, ACCOUNTS, MONTHS = 20, 2000, 12
NAME, AMOUNT = 16, 14  # widths of the report's columns


def section(name, **keys):
    return [f"[{name}]"] + [f"{key}={value}" for key, value in keys.items()]


def block(start, end):
    return {"ReadStartLine": start, "ReadStartLineOffset": 1, "ReadEndLine": end, "ReadEndLineOffset": -1}


def recipe():
    return (section("Header", Product="QLN", FileType="RECIPE", FileFormat="1.1")
            + section("Output File", OutputFileName="year.xlsx", InputFileFirst=1, InputFileLast=1,
                      ExportSpecFileName="year.t2x", WriteDataFormat="NearestCent")
            + section("Input Files", FileName1="year.txt"))


def specification():
    lines = (section("Header", Product="QLN", FileType="EXPORT SPEC", FileFormat="1.1") + section("General", Name="Year")
             + section("Table 1", **block("YEAR", "CLOSED"), TotalColumns=1 + MONTHS))
    for m in range(1 + MONTHS):
        start, end = (1, NAME) if m == 0 else (NAME + (m - 1) * AMOUNT + 1, NAME + m * AMOUNT)
        lines += section(f"Table 1 Col {m + 1}", ReadColumnStart=start, ReadColumnEnd=end, WriteColumn=chr(65 + m),
                         PeriodOperator="")
    lines += section("Consolidate 1", Table=1, ReadAccountsColumn=1, TotalDepartments=DEPARTMENTS)
    for d in range(1, DEPARTMENTS + 1):
        lines += section(f"Con 1 Dept {d}", **block(f"DEPT {d:02}", f"END {d:02}"))
    return lines


def report(sums):
    """The lines of the report; its sums go into sums: account to cents of each month, in the order of first appearance."""
    numbers = random.Random(20241231)
    lines = ["YEAR"]
    for d in range(1, DEPARTMENTS + 1):
        accounts = [a for a in range(ACCOUNTS) if d == 1 + a % DEPARTMENTS or numbers.random() < 0.97]
        numbers.shuffle(accounts)
        lines.append(f"DEPT {d:02}")
        for a in accounts:
            cents = [numbers.randint(-99_999_99, 999_999_99) for _ in range(MONTHS)]
            name = f"ACCOUNT {a:04}"
            lines.append(f"{name:{NAME}}" + "".join(f"{Decimal(c).scaleb(-2):{AMOUNT},.2f}" for c in cents))
            before = sums.setdefault(name, [0] * MONTHS)
            sums[name] = [x + y for x, y in zip(before, cents)]
        lines.append(f"END {d:02}")
    return lines + ["CLOSED"]


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--program", required=True)
    options = arguments.parse_args()
    sums = {}
    with golden.World(options.program) as world:
        for name, lines in (("year.rcp", recipe()), ("year.t2x", specification()), ("year.txt", report(sums))):
            (world.work / name).write_text("\r\n".join(lines) + "\r\n", encoding="ascii", newline="")
        begin = time.monotonic()
        _, said, status = world.run("quillon convert --specification year.rcp")
        seconds = time.monotonic() - begin
        assert status == 0, said
        rows = list(openpyxl.load_workbook(world.work / "year.xlsx", read_only=True).worksheets[1].values)
    assert len(sums) == ACCOUNTS
    got = {str(row[0]).strip(): [round(value * 100) for value in row[1:]] for row in rows}
    assert len(rows) == len(got) == ACCOUNTS, f"{len(rows)} rows of {len(got)} accounts"
    wrong = [name for name in sums if got.get(name) != sums[name]]
    assert not wrong, f"{len(wrong)} accounts differ, such as {wrong[0]}: {got.get(wrong[0])}, not {sums[wrong[0]]}"
    assert list(got) == list(sums), "the accounts are not in the order of their first appearance"
    print(f"{DEPARTMENTS} x {ACCOUNTS} x {MONTHS}: all {ACCOUNTS * MONTHS} sums are right; {seconds:.2f} seconds")
    return 0


if __name__ == "__main__":
    sys.exit(main())
