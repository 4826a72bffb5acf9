"""What other programs find in the two workbooks: per row the first and last character and how often a sheet counts one."""
import openpyxl
import xlrd

for name, column in (("long.xlsx", [cell.value for cell in openpyxl.load_workbook("long.xlsx").worksheets[0]["A"]]),
                     ("long.xls", xlrd.open_workbook("long.xls").sheet_by_index(0).col_values(0))):
    for row, text in enumerate(column, 1):
        print(name, row, text and f"{text[0]}...{text[-1]} {len(text.encode('utf-16-le')) // 2}")
