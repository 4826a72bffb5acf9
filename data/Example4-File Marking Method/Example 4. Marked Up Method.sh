#!/bin/sh
# A marked bank statement to a workbook.
# The switches say what the conversion job Example4 holds; the log tells how it went.
quillon '/I%appdata%\Brindlemark, Inc\Quillon\Example4-File Marking Method\Bank Statement.txt /O%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Bank Statement.xlsx /L%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Example 4.log' &&
  cat "${APPDATA:-${XDG_CONFIG_HOME:-$HOME/.config}}/Brindlemark, Inc/Quillon/Examples-Output-Folder/Example 4.log"
