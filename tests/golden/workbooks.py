"""Workbooks as text: what their cells hold, by meaning, whatever the bytes of the file are.

Read by openpyxl and xlrd, which are nobody of ours, so that a file only we understand doesn't pass.
"""

import csv
import datetime
import io
import re
from pathlib import Path


def _column(number):
    letters = ""
    while number:
        number, rest = divmod(number - 1, 26)
        letters = chr(65 + rest) + letters
    return letters


def _number(value):
    return format(value, ".15g")


def _meaning(value, fmt):
    """(kind, text, format) of a value as a reader of the file gets it."""
    if isinstance(value, bool):
        return "bool", str(value).upper(), fmt
    if isinstance(value, (int, float)):
        return "number", _number(value), fmt
    if isinstance(value, (datetime.datetime, datetime.date, datetime.time)):
        text = value.isoformat()
        return "date", text[:-9] if text.endswith("T00:00:00") else text, fmt
    if isinstance(value, str) and value.startswith("=") and fmt == "formula":
        return "formula", value, ""
    return "text", str(value), fmt


def _cells_of_xlsx(path):
    import openpyxl
    book = openpyxl.load_workbook(path)
    for sheet in book.worksheets:
        cells = []
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is None:
                    continue
                if cell.data_type == "f":
                    cells.append((cell.row, cell.column, "formula", str(cell.value), cell.number_format))
                else:
                    kind, text, fmt = _meaning(cell.value, cell.number_format)
                    cells.append((cell.row, cell.column, kind, text, fmt))
        yield sheet.title, cells


def _cells_of_xls(path):
    import xlrd
    book = xlrd.open_workbook(path, formatting_info=True)
    for sheet in book.sheets():
        cells = []
        for r in range(sheet.nrows):
            for c in range(sheet.ncols):
                cell = sheet.cell(r, c)
                if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                    continue
                fmt = book.format_map[book.xf_list[cell.xf_index].format_key].format_str
                value = cell.value
                if cell.ctype == xlrd.XL_CELL_DATE:
                    value = xlrd.xldate.xldate_as_datetime(value, book.datemode)
                elif cell.ctype == xlrd.XL_CELL_BOOLEAN:
                    value = bool(value)
                kind, text, fmt = _meaning(value, fmt)
                cells.append((r + 1, c + 1, kind, text, fmt))
        yield sheet.name, cells


def cells_of(path):
    """Per sheet its name and its cells as (row, column, kind, text, number format)."""
    return list((_cells_of_xls if Path(path).suffix.lower() == ".xls" else _cells_of_xlsx)(path))


def _format(fmt):
    return "" if fmt in ("General", "") else f"  [{fmt}]"


def sheet_text(path):
    """Every cell on a line of its own."""
    lines = []
    for name, cells in cells_of(path):
        lines.append(f"sheet {name}")
        for row, column, kind, text, fmt in cells:
            shown = text.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r").replace("\t", "\\t")
            lines.append(f"  {_column(column)}{row} {kind} {shown!r}{_format(fmt)}" if kind == "text"
                         else f"  {_column(column)}{row} {kind} {shown}{_format(fmt)}")
    return "\n".join(lines) + "\n"


def shape_text(path):
    """What each column holds, counted: for sheets too long to list."""
    lines = []
    for name, cells in cells_of(path):
        rows = max((cell[0] for cell in cells), default=0)
        lines.append(f"sheet {name}, {rows} rows")
        kinds = {}
        for _, column, kind, text, fmt in cells:
            entry = kinds.setdefault((column, kind, fmt), [0, 0.0])
            entry[0] += 1
            if kind == "number":
                entry[1] += float(text)
        for (column, kind, fmt), (count, total) in sorted(kinds.items()):
            total = f", sum {_number(round(total, 6))}" if kind == "number" else ""
            lines.append(f"  {_column(column)} {count} {kind}{_format(fmt)}{total}")
    return "\n".join(lines) + "\n"


def csv_cells(data, as_shown=False):
    """Rows of trimmed cells, without the empty cells that end a row and the empty rows that end the file: a text of one
    row a line, cells between bars, for two CSV files that say the same in different forms. As a sheet shows them, blanks between a sign and its amount are one."""
    rows = csv.reader(io.StringIO(data.decode("latin-1"), newline=""))
    lines = []
    for row in rows:
        cells = [cell.strip(" ") for cell in row]
        if as_shown:
            cells = [re.sub(r"^\$ +", "$ ", cell) for cell in cells]
        while cells and not cells[-1]:
            cells.pop()
        lines.append(" | ".join(cells))
    while lines and not lines[-1]:
        lines.pop()
    return "\n".join(lines) + "\n"
