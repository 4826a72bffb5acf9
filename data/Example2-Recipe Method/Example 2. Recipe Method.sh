#!/bin/sh
# A stock list of three pages to a workbook, by a recipe.
# The switches say what the conversion job Example2 holds; the log tells how it went.
quillon '/I%appdata%\Brindlemark, Inc\Quillon\Example2-Recipe Method\Stock List.txt /O%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Stock List.xlsx /R%appdata%\Brindlemark, Inc\Quillon\Example2-Recipe Method\Stock List.rcp /L%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Example 2.log' &&
  cat "${APPDATA:-${XDG_CONFIG_HOME:-$HOME/.config}}/Brindlemark, Inc/Quillon/Examples-Output-Folder/Example 2.log"
