#!/usr/bin/env bash
# Builds all fuzz entries and runs each in turn, for so many minutes (1): scripts/fuzz.sh [minutes] [entry ...]
# Inputs that reached new code stay in build-fuzz/corpus, those that failed in build-fuzz/findings; ends with 1 if one did.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

minutes=1
if [[ ${1:-} =~ ^[0-9]+$ ]]; then minutes=$1; shift; fi
scripts/setup.sh build fuzz
build_preset fuzz
entries=("$@")
[ $# -gt 0 ] || mapfile -t entries < <(cd fuzz && ls ./*_fuzzer.cpp | sed 's|^\./||; s|_fuzzer\.cpp$||')
top=$PWD/build-fuzz
python3 scripts/fuzz_seeds.py "$top/seeds" --program "$top/bin/quillon"

export TMPDIR="$top/tmp"
failed=0
row='%-18s %8s %12s %8s %8s %9s\n'
# shellcheck disable=SC2059
printf "$row" entry 'CPU s' executions cover corpus findings
for entry in "${entries[@]}"; do
  name=${entry%_fuzzer}_fuzzer
  rm -rf "$TMPDIR"
  mkdir -p "$TMPDIR" "$top/corpus/$name" "$top/seeds/$name" "$top/findings/$name" "$top/logs"
  log=$top/logs/$name.log
  dictionary=()
  [ ! -e "fuzz/$name.dict" ] || dictionary=("-dict=fuzz/$name.dict")
  before=$(find "$top/findings/$name" -type f | wc -l)
  cpu=$( { TIMEFORMAT='%U %S'; time nice "$top/bin/$name" "$top/corpus/$name" "$top/seeds/$name" "${dictionary[@]}" \
    "-max_total_time=$((minutes * 60))" -rss_limit_mb=2048 -timeout=60 -print_final_stats=1 \
    "-artifact_prefix=$top/findings/$name/" >"$log" 2>&1 || failed=1; echo "$failed" >"$top/failed"; } 2>&1 |
    awk '{ printf "%.0f", $1 + $2 }')
  failed=$(cat "$top/failed")
  executions=$(grep -a -oE '^stat::number_of_executed_units: *[0-9]+|^#[0-9]+' "$log" | tail -1 | tr -dc 0-9 || true)
  cover=$(grep -a -oE 'cov: [0-9]+' "$log" | tail -1 | tr -dc 0-9 || true)
  found=$(($(find "$top/findings/$name" -type f | wc -l) - before))
  # shellcheck disable=SC2059
  printf "$row" "${name%_fuzzer}" "$cpu" "$executions" "$cover" "$(find "$top/corpus/$name" -type f | wc -l)" "$found"
done
rm -rf "$TMPDIR"
[ "$failed" -eq 0 ] || echo "fuzz: see build-fuzz/findings and build-fuzz/logs" >&2
exit "$failed"
