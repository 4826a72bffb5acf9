#!/bin/sh
# All trial balances of the folder to workbooks, by a recipe.
# The switches say what the conversion job Example3 holds; the log tells how it went.
quillon '/I%appdata%\Brindlemark, Inc\Quillon\Example3-Recipe Method\Trial Balance*.txt /O%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\*.xlsx /R%appdata%\Brindlemark, Inc\Quillon\Example3-Recipe Method\Trial Balance.rcp /L%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Example 3.log' &&
  cat "${APPDATA:-${XDG_CONFIG_HOME:-$HOME/.config}}/Brindlemark, Inc/Quillon/Examples-Output-Folder/Example 3.log"
