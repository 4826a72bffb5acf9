// Any bytes as the records of an .xls workbook, in a sound file: read, changed, cleared, renamed and saved.
#include <array>
#include <cstdint>
#include <string_view>

#include "clsTempFolder.h"
#include "clsXlsWorkbook.h"
#include "modCompoundFile.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  Failure failure;
  const std::array<std::string_view, 1> pieces = {{{reinterpret_cast<const char*>(pData), nSize}}};
  if (!SaveCompoundFile(folder.Path("fuzz.xls"), nullptr, "Workbook", pieces, failure)) return 0;
  const auto workbook = OpenXlsWorkbook(folder.Path("fuzz.xls"), {}, failure);
  if (!workbook) return 0;
  std::string sText;
  for (int nSheet = 1; nSheet <= workbook->SheetCount() && nSheet < 4; ++nSheet) {
    for (int nRow = 1; nRow < 12; ++nRow)
      for (int nColumn = 1; nColumn < 8; ++nColumn) workbook->ReadCell(nSheet, nRow, nColumn, sText, failure);
    workbook->ClearContents(nSheet, {2, 1, 3, 2}, failure);
    workbook->WriteCell(nSheet, 1, 2, "12/31/2024", failure);
    workbook->WriteCell(nSheet, 40, 2, "=A1+B2", failure);
  }
  if (const auto range = workbook->ActiveUsedRange()) workbook->ClearContents(1, *range, failure);
  workbook->SetSheetName(1, "Name (P1)", failure);
  workbook->ActivateSheet(2);
  if (!workbook->SaveAs(folder.Path("out.xls"), kFormatXls, failure)) return 0;
  // What we wrote we can read.
  if (!OpenXlsWorkbook(folder.Path("out.xls"), {}, failure)) __builtin_trap();
  return 0;
}
