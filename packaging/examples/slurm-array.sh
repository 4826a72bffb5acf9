#!/bin/sh
# Converts many reports as a Slurm job array, a part of them in each task.
#
#   export SHARDS=100 INPUTS='/shared/in/*.txt' OUTPUTS='/shared/out/*.csv' RECIPE=/shared/ledger.rcp LISTS=/shared/lists
#   mkdir -p "$LISTS" && sbatch --array=1-$SHARDS slurm-array.sh
#
# Single tasks are run again with the same SHARDS: sbatch --array=7,42 slurm-array.sh. What is done is left out.
#SBATCH --job-name=quillon
#SBATCH --ntasks=1
#SBATCH --cpus-per-task=1
#SBATCH --mem=128M
#SBATCH --requeue
#SBATCH --open-mode=append
set -eu
# The number of tasks that Slurm knows is no help here: it is smaller when single tasks are run again.
: "${SHARDS:?the number of parts}" "${SLURM_ARRAY_TASK_ID:?run me by sbatch --array=1-SHARDS}"
: "${INPUTS:?a quoted pattern of reports}" "${OUTPUTS:?a pattern of outputs}" "${RECIPE:?a recipe}"
: "${LISTS:?a folder for the result lists}"

exec quillon convert "$INPUTS" --recursive -o "$OUTPUTS" --recipe "$RECIPE" \
  --shard "$SLURM_ARRAY_TASK_ID/$SHARDS" --report "$LISTS/$SLURM_ARRAY_TASK_ID.jsonl" --skip-done
