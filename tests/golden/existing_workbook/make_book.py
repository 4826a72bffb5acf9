"""A workbook as somebody keeps it: a sheet that the run writes to, with notes below, and a sheet of their own."""
import openpyxl
from openpyxl.styles import Font

book = openpyxl.Workbook()
sheet = book.active
sheet.title = "Import"
for row in range(1, 9):
    for column in range(1, 4):
        sheet.cell(row, column, f"old {row},{column}")
sheet["B1"].number_format = "#,##0.000"
sheet["B1"].font = Font(bold=True)
sheet["F1"] = "=SUM(B1:B2)"
own = book.create_sheet("Mine")
own["A1"] = "Total"
own["B1"] = "=Import!F1"
book.save("kept.xlsx")
