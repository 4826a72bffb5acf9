#!/bin/sh
# An aged receivables ledger to CSV, by a profile.
# The switches say what the conversion job Example1 holds; the log tells how it went.
quillon '/I%appdata%\Brindlemark, Inc\Quillon\Example1-Profile Method\Aged Receivables.txt /O%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Aged Receivables.csv /PAged-Receivables /L%appdata%\Brindlemark, Inc\Quillon\Examples-Output-Folder\Example 1.log' &&
  cat "${APPDATA:-${XDG_CONFIG_HOME:-$HOME/.config}}/Brindlemark, Inc/Quillon/Examples-Output-Folder/Example 1.log"
