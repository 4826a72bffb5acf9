#!/usr/bin/env bash
# Builds everything with warnings as errors and runs all tests. Further arguments go to ctest (-R golden ...).
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build tests gui
build_preset dev
ctest --preset dev -j "$(nproc)" --no-tests=error "$@"
