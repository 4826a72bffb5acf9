#!/usr/bin/env bash
# Puts all sources into the form of .clang-format; with --check only says which are not.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
how=(-i)
[ "${1:-}" = --check ] && how=(--dry-run --Werror)
folders=()
for folder in src tests bench fuzz; do [ -d "$folder" ] && folders+=("$folder"); done
find "${folders[@]}" -name '*.cpp' -o -name '*.h' | LC_ALL=C sort | xargs -r -d '\n' clang-format "${how[@]}"
