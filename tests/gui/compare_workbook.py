#!/usr/bin/env python3
"""compare_workbook.py BOOK SHEET CSV [SHEET CSV...]: each sheet's rows below its heading against those of a CSV file.
compare_workbook.py --count BOOK: prints how many rows the first sheet has.

Cells are compared by value: 1.50 is 1.5, a date is what it shows in the CSV file's form. Names of columns don't count."""

import csv
import datetime
import sys
import zipfile

import openpyxl


def meaning(value):
    if value is None:
        return ""
    if isinstance(value, datetime.datetime):
        return value.date().isoformat() if value.time() == datetime.time() else value.isoformat(" ")
    text = str(value).strip()
    try:
        return repr(float(text.replace(",", "")))
    except ValueError:
        return text


def rows(cells):
    return [row for row in ([meaning(cell) for cell in line] for line in cells) if any(row)]


def count(path):
    with zipfile.ZipFile(path) as book, book.open("xl/worksheets/sheet1.xml") as sheet:
        found, held = 0, b""
        while block := sheet.read(1 << 20):
            held += block
            found += held.count(b"<row ")
            held = held[-4:] if not held.endswith(b"<row ") else b""
        return found


def sheet_of(book, name):
    return book.worksheets[int(name) - 1] if name.isdigit() else book[name]


def main():
    if sys.argv[1] == "--count":
        print(count(sys.argv[2]))
        return 0
    book = openpyxl.load_workbook(sys.argv[1], read_only=True)
    for name, path in zip(sys.argv[2::2], sys.argv[3::2]):
        got = rows(sheet_of(book, name).iter_rows(min_row=2, values_only=True))
        with open(path, newline="", encoding="utf-8-sig") as file:
            wanted = rows(list(csv.reader(file))[1:])
        if got == wanted:
            continue
        print(f"{name}: {len(got)} rows, {len(wanted)} wanted")
        for mine, theirs in zip(got, wanted):
            if mine != theirs:
                print(f"  got    {mine}\n  wanted {theirs}")
                break
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
