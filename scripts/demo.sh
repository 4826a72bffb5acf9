#!/usr/bin/env bash
# Builds the program and converts real reports: to CSV and to a workbook, shown beside the lines they came from.
# Works on a bare Debian 12 with nothing but apt; a second run takes seconds.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build demo
first=()
# Neither the desktop program nor the tests are needed here; a tree that was configured otherwise is left as it is.
[ -e build/CMakeCache.txt ] || first=(-DQUILLON_GUI=OFF -DQUILLON_TESTS=OFF)
[ -x build/bin/quillon ] || echo "Building once, which takes a minute or two ..."
build_preset release "${first[@]}" -- quillon
exec python3 scripts/demo.py build/bin/quillon build/demo
