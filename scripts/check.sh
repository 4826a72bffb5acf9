#!/usr/bin/env bash
# What a script can check, a script checks. Names every finding, and ends with 1 if there is one.
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")/.." || exit 2

failed=0
finding() {
  echo "check: $1" >&2
  [ $# -lt 2 ] || sed 's/^/    /' <<<"$2" >&2
  failed=1
}
# All files of the tree that are ours, whether it is a clone or was unpacked.
ours() {
  { git ls-files --cached --others --exclude-standard -- "$@" 2>/dev/null || find "$@" -type f; } | sed 's|^\./||' |
    grep -vE '^build|^\.git/' | while IFS= read -r file; do [ -f "$file" ] && printf '%s\n' "$file"; done
}

# 1. Form.
command -v clang-format >/dev/null || finding "clang-format is missing (scripts/setup.sh checks)"
unformatted=$(scripts/format.sh --check 2>&1 | grep -oE '^[^ :]+:[0-9]+' | sort -u | head -20)
[ -z "$unformatted" ] || finding "not in the form of .clang-format (scripts/format.sh mends it)" "$unformatted"

# 2. A room includes only what stands below it, and rooms form no circle. The build refuses it too; this says where.
upward=$(scripts/census.py --quiet 2>&1) || finding "rooms that look up" "$upward"
head -1 <<<"$upward"
screen=$(grep -rnE '#include <Q[A-Z]' src --include='*.h' --include='*.cpp' | grep -vE '^src/(ui/qt|app)/')
[ -z "$screen" ] || finding "the screen toolkit is used outside of src/ui/qt and src/app" "$screen"

threads=$(grep -rnE 'std::(jthread|thread|async)\b|pthread_create|QThread|QtConcurrent' src --include='*.h' --include='*.cpp' |
  grep -vE '^src/(foundation/clsOutputFile|output/zip/clsSideThread)\.(h|cpp):')
[ -z "$threads" ] || finding "threads outside of clsOutputFile and clsSideThread" "$threads"

names=$(scripts/names.sh) || finding "names that break the conventions (scripts/names.yml tells them)" "$names"

# 3. Words that stay out: left-overs, places of one machine, pages that a reader of this tree hasn't got.
words='\b(TO''DO|FIX''ME|X''XX|HA''CK)\b|/(wo''rk|ro''ot)/|/bash_jo''bs|\bParts? [1-6]\.[0-9]+|\bspec''\.md\b|[Tt]he spec''ification says'
left=$(ours . | grep -vE '^tests/golden/[^/]+/|\.svg$' | xargs -r -d '\n' grep -nIE "$words" 2>/dev/null | head -20)
[ -z "$left" ] || finding "words that stay out of the tree" "$left"

# 4. Text files end with a line end and have no blanks at line ends; sources have no tabs.
texts() { ours . | grep -E '(\.(cpp|h|in|cmake|sh|py|md|json|yml)|CMakeLists\.txt|/run)$' | grep -vE '^tests/golden/[^/]+/|^data/'; }
blanks=$(texts | grep -v "\.md$" | xargs -r -d '\n' grep -nE '[[:blank:]]+$' | head)
[ -z "$blanks" ] || finding "blanks at line ends" "$blanks"
unended=$(texts | while IFS= read -r file; do [ -s "$file" ] && [ -n "$(tail -c1 "$file")" ] && echo "$file"; done)
[ -z "$unended" ] || finding "no line end at the end of" "$unended"

# 5. Size of the tests and of files.
count() { ours "$1" | grep -E '\.(cpp|h)$' | xargs -r -d '\n' cat | grep -cvE '^\s*(//.*)?$'; }
code=$(count src)
tests=$(count tests)
if [ "$code" -gt 500 ]; then
  share=$((tests * 100 / code))
  echo "tests are $share % of the code by lines ($tests to $code)"
  { [ "$share" -lt 20 ] || [ "$share" -gt 38 ]; } && finding "tests are $share % of the code; 20 to 38 is the range"
fi
long=$(find src -name '*.cpp' -o -name '*.h' | xargs wc -l | awk '$1 > 450 && $2 != "total"')
[ -z "$long" ] || finding "files of more than 450 lines: split by concern" "$long"

# 6. Scripts parse; what the documents link to exists.
for script in scripts/*.sh .ci/run; do bash -n "$script" || finding "$script does not parse"; done
dead=$(ours . | grep '\.md$' | while IFS= read -r page; do
  grep -oE '\]\([^)#: ]+[)#]' "$page" | sed -E 's/^\]\(//; s/[)#]$//' | while IFS= read -r target; do
    [ -e "$(dirname "$page")/$target" ] || echo "$page: $target"
  done
done)
[ -z "$dead" ] || finding "links that lead nowhere" "$dead"

# 7. What the page on architecture names exists.
unknown=$(grep -ohE '`([a-z_]+/)*(mod|cls|frm|CFile|Main)[A-Za-z_]*`' docs/architecture.md | tr -d '`' | sed 's#.*/##' | sort -u |
  while IFS= read -r name; do
    [ -n "$(find src -name "$name.*" -print -quit)" ] || grep -rqw --include='*.h' "$name" src || echo "$name"
  done)
[ -z "$unknown" ] || finding "docs/architecture.md names what isn't there" "$unknown"

# 8. The manual explains every code that a message can have.
codes=$(grep -rhoE '(= |\{)-[0-9]{1,4}\b' src/control/modRunMessages.h src/recipe/modRecipeMessages.h src/foundation/modCollections.cpp | grep -oE -- '-[0-9]+' | sort -u)
unexplained=$(for code in $codes; do grep -q -- "^| $code |" docs/manual/troubleshooting.md || echo "$code"; done)
[ -z "$unexplained" ] || finding "codes that docs/manual/troubleshooting.md lacks" "$unexplained"

[ "$failed" -eq 0 ] && echo "check: nothing found"
exit "$failed"
