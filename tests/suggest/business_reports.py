#!/usr/bin/env python3
"""Writes business reports as accounting and stock programs print them, each with the tables that it should become.

  tests/suggest/business_reports.py --seed 3 --out FOLDER               NAME.txt, NAME.csv, NAME.2.csv ... of each report
  tests/suggest/business_reports.py --seed 3 --months 12 --out FOLDER   NAME_01.txt and so on: other values, rows and pages

A column whose name begins with ^ isn't on the record's own line. The same seed always gives the same bytes.
"""

import argparse
import csv
from pathlib import Path

import groups
import lists
import registers
from stationery import Rng

REPORTS = {f.__name__: f for f in (
    groups.payroll, groups.aged, groups.ledger, groups.stock, groups.sales, groups.orders, groups.assets, groups.timesheet,
    groups.purchases, lists.bank, lists.invoices, lists.trial, lists.loan, lists.cobol, lists.german_list, lists.checks,
    lists.journal, lists.utilities, lists.brokers, registers.vendors, registers.branches, registers.commissions,
    registers.calls, registers.budget, registers.freight, registers.census, registers.receipts, registers.production,
    registers.schedule)}


def write(name, seed, month, folder, suffix=""):
    report, tables = REPORTS[name](Rng(f"{name} {seed} {month}"), month)
    (folder / f"{name}{suffix}.txt").write_text(report.text(), encoding="utf-8")
    for i, table in enumerate(tables):
        path = folder / (f"{name}{suffix}.csv" if i == 0 else f"{name}{suffix}.{i + 1}.csv")
        with path.open("w", encoding="utf-8", newline="") as file:
            csv.writer(file, lineterminator="\n").writerows([table.names, *table.rows])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--months", type=int, default=0)
    parser.add_argument("--out", type=Path, required=True)
    options = parser.parse_args()
    options.out.mkdir(parents=True, exist_ok=True)
    for name in REPORTS:
        if not options.months:
            write(name, options.seed, 5, options.out)
        for month in range(1, options.months + 1):
            write(name, options.seed, month, options.out, f"_{month:02d}")


if __name__ == "__main__":
    main()
