#!/usr/bin/env bash
# Builds everything with warnings as errors and runs all tests. Further arguments go to ctest (-R golden ...). What the
# machine can't do (no pseudo terminals, no cluster) is left out, named and counted at the end.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build tests gui
build_preset dev
status=0
ctest --preset dev -j "$(nproc)" --no-tests=error "$@" || status=$?
skipped=$(grep -hE '^SKIPPED: ' build-dev/Testing/Temporary/LastTest.log | sort -u || true)
if [ -n "$skipped" ]; then
  printf '\n%s tests or parts of tests were left out on this machine:\n%s\n' "$(wc -l <<<"$skipped")" "$skipped"
fi
exit "$status"
