#!/usr/bin/env bash
# How much of each reader the inputs that fuzzing kept run through: scripts/fuzz_coverage.sh [corpus folder]
# Builds the entries once more with the compiler's coverage (build-fuzz-coverage), and prints a table of lines.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/lib.sh

corpus=$(readlink -f "${1:-build-fuzz/corpus}")
top=$PWD/build-fuzz-coverage
profdata=$(command -v llvm-profdata || command -v llvm-profdata-14)
cov=$(command -v llvm-cov || command -v llvm-cov-14)
scripts/setup.sh build fuzz
quietly "$top/configure.log" cmake --preset fuzz -B "$top" -DCMAKE_CXX_FLAGS="-O1 -g1 -fprofile-instr-generate -fcoverage-mapping"
quietly "$top/build.log" cmake --build "$top" -j "$(nproc)"
export TMPDIR=$top/tmp
mkdir -p "$TMPDIR"

# The sources that an entry is there for.
readers='
cell_typing     output/typing/modCellTyping output/typing/modDateTyping output/typing/modNumberTyping
code_pages      foundation/clsCodePage foundation/modText
csv_rows        recipe/clsRowFields recipe/clsRow output/csv/clsCsvBlocks output/csv/clsCsvRowSink
export_run      recipe/clsExportSpecsProcess recipe/clsTableRun recipe/clsConProcess recipe/clsTitleProcess recipe/clsColumnProcess recipe/clsLineProcessor recipe/clsPeriodFiles
export_specs    recipe/clsExportSpecs recipe/clsTable recipe/clsTitle recipe/clsCon recipe/clsColumn recipe/clsDepartment
formula         output/formula/modFormula output/formula/clsFormulaScanner output/formula/modFormulaText output/formula/modFormulaWords
job_file        control/clsConversionOptions foundation/modPrivateProfile
language_file   foundation/modPhraseFile
line_reader     input/clsLineReader input/modTextEnds
long_recipe     recipe/clsRecipe recipe/clsSectionWriter
markup_run      recipe/modMarkup recipe/clsRecipe recipe/clsTableRun
number_text     foundation/modNumbers foundation/clsDecimal
profile         profile/modFixedWidthAttributes profile/modProfileFile profile/clsProfileGrid
profile_list    profile/modProfileList
profile_roads   output/csv/clsCsvBlocks output/csv/clsCsvRowSink profile/clsRowCutter profile/modCutPlan
recipe_run      recipe/clsRecipe recipe/modShortToLong recipe/modShortTable recipe/clsTableRun recipe/clsRowFields
ruler           recipe/clsTableParser
section_file    recipe/clsSectionFile recipe/modSectionFile
settings_file   foundation/clsIniFile
shared_strings  output/xlsx/modSheetValues output/xml/clsXmlScanner
sheet_xml       output/xlsx/clsSheetMerger output/xlsx/modSheetFacts output/xlsx/modSheetValues output/xml/clsXmlScanner
short_recipe    recipe/clsRecipe recipe/modShortToLong recipe/modShortTable
slash_text      control/modParseCommandLine
styles          output/xlsx/clsXlsxStyles output/typing/clsNumberFormats
suggest         look/modSuggestRecipe look/modTableBlocks look/modTableRuler look/clsReportLines
table_parser    recipe/clsTableParser
utf16           profile/clsUtf16Reader profile/clsCellwright
xls_file        output/xls/modCompoundFile output/xls/clsXlsExistingWorkbook
xls_records     output/xls/clsXlsGlobals output/xls/clsXlsSheet output/xls/clsXlsStrings output/xls/clsXlsStringTable output/xls/modXlsText output/xls/clsXlsSheetMerger output/xls/modXlsFormula
xlsx_package    output/xlsx/clsXlsxPackage output/xlsx/clsXlsxEditor output/xlsx/modXlsxParts output/xlsx/modXlsxTables output/xlsx/modXlsxWorkbookPart
'

printf '%-16s %6s %7s %6s  %s\n' entry lines run share readers
while read -r entry files; do
  program=$top/bin/${entry}_fuzzer
  [ -n "$entry" ] && [ -x "$program" ] && [ -d "$corpus/${entry}_fuzzer" ] || continue
  raw=$top/$entry.profraw
  LLVM_PROFILE_FILE=$raw "$program" -runs=0 -rss_limit_mb=4096 "$corpus/${entry}_fuzzer" >"$top/$entry.log" 2>&1 ||
    { echo "$entry: see $top/$entry.log" >&2; continue; }
  "$profdata" merge -sparse "$raw" -o "$top/$entry.profdata"
  "$cov" export -summary-only -instr-profile "$top/$entry.profdata" "$program" | python3 -c 'import json, sys
entry, *readers = sys.argv[1:]
wanted = tuple("/src/%s.cpp" % reader for reader in readers)
lines = [file["summary"]["lines"] for file in json.load(sys.stdin)["data"][0]["files"] if file["filename"].endswith(wanted)]
count, run = sum(line["count"] for line in lines), sum(line["covered"] for line in lines)
names = " ".join(reader.split("/")[-1] for reader in readers)
print("{:16} {:6} {:7} {:5.0f}%  {}".format(entry, count, run, 100 * run / max(1, count), names))' "$entry" $files
  rm -f "$raw"
done <<<"$readers"
rm -rf "$TMPDIR"
