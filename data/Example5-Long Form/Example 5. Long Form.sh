#!/bin/sh
# Two months of three departments to one workbook, which lands in the folder you are in: sheet 1 by department, sheet 2 the company.
# The recipe names its files without a folder, so the run takes place beside them.
output=$PWD
cd "$(dirname "$0")" && quillon convert --specification Costs.rcp --all-periods --trim -o "$output/Costs 2024.xlsx" --verbose
