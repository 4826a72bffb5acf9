#!/bin/sh
# Converts many reports with all cores of this machine, by GNU parallel. Run it again after any mishap: what is done is
# left out, so the same command goes on where the last one ended.
#
#   INPUTS='in/*.txt' OUTPUTS='out/*.csv' RECIPE=ledger.rcp LISTS=lists ./parallel.sh [further options of convert]
#
# PARTS, a part per core if not set: into how many parts the inputs are divided. More parts than cores even the load
# out. Stay with the number that a folder of lists began with: a list knows the files of its own part alone.
set -eu
: "${INPUTS:?a quoted pattern of reports}" "${OUTPUTS:?a pattern of outputs, such as out/*.csv}"
: "${RECIPE:?a recipe}" "${LISTS:?a folder for the result lists}"
parts=${PARTS:-$(nproc)}
mkdir -p "$LISTS"

seq "$parts" | parallel --quote --jobs "${JOBS:-$(nproc)}" \
  quillon convert "$INPUTS" --recursive -o "$OUTPUTS" --recipe "$RECIPE" \
  --shard "{}/$parts" --report "$LISTS/{}.jsonl" --skip-done --quiet "$@"
