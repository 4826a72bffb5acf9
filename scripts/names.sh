#!/usr/bin/env bash
# Do the headers speak one dialect? All of them together in one translation unit: names are held to the conventions below, and no two
# headers may mean different things by one name. Prints each finding; ends with 1 if there is one.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
command -v clang-tidy >/dev/null || { echo "names: clang-tidy is missing (scripts/setup.sh checks)"; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
screen=()
for package in Qt6Widgets Qt6DBus; do
  if pkg-config --exists "$package" 2>/dev/null; then read -ra flags <<<"$(pkg-config --cflags "$package")" && screen+=("${flags[@]}"); fi
done
# Where the screen toolkit isn't installed, its rooms are left out.
find src -name '*.h' | sort | while IFS= read -r header; do
  if [ ${#screen[@]} -eq 0 ] && grep -q '#include <Q[A-Z]' "$header"; then continue; fi
  printf '#include "%s"\n' "$PWD/$header"
done >"$folder/all.cpp"
mapfile -t rooms < <(find src -type d | sed "s|^|-I$PWD/|")
clang-tidy --quiet "$folder/all.cpp" --config-file=scripts/names.yml -- -std=c++20 "${rooms[@]}" "${screen[@]}" 2>/dev/null |
  grep -E '^[^ ]+: (warning|error): ' | sed "s|^$PWD/||" | sort -u >"$folder/findings" || true
cat "$folder/findings"
[ ! -s "$folder/findings" ]
