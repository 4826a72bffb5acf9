// Any bytes as an existing workbook: it is refused and left alone, or can be opened again after an edit.
#include <cstdint>

#include "clsTempFolder.h"
#include "clsXlsxEditor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  static const clsTempFolder folder;
  const std::string sPath = folder.Write("a.xlsx", {reinterpret_cast<const char*>(pBytes), nBytes});
  Failure failure;
  const auto workbook = OpenXlsxWorkbook(sPath, {}, failure);
  if (workbook == nullptr) return 0;
  std::string sText;
  workbook->ReadCell(1, 1, 1, sText, failure);
  workbook->SetSheetName(1, "It's", failure);
  if (const auto range = workbook->ActiveUsedRange()) workbook->ClearContents(1, *range, failure);
  const bool bWritten = workbook->WriteCell(1, 2, 2, "1,234.50", failure);
  if (!workbook->SaveAs(sPath, kFormatXlsx, failure) || !bWritten) return 0;
  const auto again = OpenXlsxWorkbook(sPath, {}, failure);
  if (again == nullptr || !again->ReadCell(1, 2, 2, sText, failure)) __builtin_trap();
  return 0;
}
