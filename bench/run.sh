#!/usr/bin/env bash
# Builds a release and measures it beside the programs that people use today, side by side in one run on the same files.
#
#   bench/run.sh [--rows N] [--runs N]      one table on standard output; about five minutes
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

scripts/setup.sh build bench
build_preset release -DQUILLON_BENCH=ON -DQUILLON_TESTS=OFF
exec python3 bench/run.py build/bin "$@"
