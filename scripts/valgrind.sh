#!/usr/bin/env bash
# Runs the golden cases under valgrind's memcheck, on a build without sanitizers: scripts/valgrind.sh [case ...]
# Faults and lost memory fail the case that has them; their reports stay in build-dev/valgrind. About ten minutes.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build tests valgrind
[ -e build-dev/CMakeCache.txt ] && build_preset dev -- quillon || build_preset dev -DQUILLON_GUI=OFF -- quillon
top=$PWD/build-dev
rm -rf "$top/valgrind"
mkdir -p "$top/valgrind"
cat >"$top/valgrind/quillon" <<END
#!/bin/sh
exec valgrind --quiet --leak-check=full --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect \\
  --error-exitcode=99 --child-silent-after-fork=yes "--log-file=$top/valgrind/%p.log" "$top/bin/quillon" "\$@"
END
chmod +x "$top/valgrind/quillon"

cases=("$@")
[ $# -gt 0 ] || mapfile -t cases < <(cd tests/golden && ls -- */command | cut -d/ -f1)
failed=0
# Debian's own interpreter, as the workbook readers are packages of it.
for case in "${cases[@]}"; do
  /usr/bin/python3 tests/golden/run_golden.py --program "$top/valgrind/quillon" "$case" || failed=1
done
find "$top/valgrind" -name '*.log' -empty -delete
reports=$(find "$top/valgrind" -name '*.log' | sort)
[ -z "$reports" ] || { failed=1; echo "valgrind:" "$reports" >&2; }
[ "$failed" -ne 0 ] || echo "valgrind: ${#cases[@]} cases, nothing found"
exit "$failed"
