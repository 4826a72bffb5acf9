// Any bytes as an .xls file: the compound file, then what the workbook in it allows.
#include <cstdint>
#include <string_view>

#include "clsTempFolder.h"
#include "clsXlsWorkbook.h"

using namespace quillon;

// The library that reads compound files forgets some bytes of one whose directory is damaged. To tell its leaks from
// ours takes whole stacks.
extern "C" const char* __asan_default_options() {
  return "fast_unwind_on_malloc=0";
}
extern "C" const char* __lsan_default_suppressions() {
  return "leak:gsf_infile_msole_new";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  const std::string sPath = folder.Write("fuzz.xls", {reinterpret_cast<const char*>(pData), nSize});
  Failure failure;
  const auto workbook = OpenXlsWorkbook(sPath, {}, failure);
  if (!workbook) return 0;
  std::string sText;
  workbook->ReadCell(1, 1, 1, sText, failure);
  workbook->WriteCell(1, 2, 2, "1,234.50", failure);
  workbook->SaveAs(folder.Path("out.xls"), kFormatXls, failure);
  return 0;
}
