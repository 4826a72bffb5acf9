// Any bytes as a profile: read for a run and for the editor, then a text converted by it.
#include <cstdint>

#include "clsProfileGrid.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "clsWorkbook.h"
#include "modCellwright_DLL.h"
#include "modFixedWidthAttributes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  static const clsTempFolder folder;
  static const std::string sInput = folder.Write("in.txt", "0007Smith, J   1,234.50*North\r\n\r\n\xE4\xF6\"short\r\n");
  static clsTestHost host;
  std::string sProfile = folder.Write("p.txt", {reinterpret_cast<const char*>(pBytes), nBytes});

  ProfileFault fault;
  const bool bDone = AssignFixedWidthAttributes(sProfile, true, nBytes % 2 == 0, host, fault) == kProfileDone;
  if (bDone != fault.sExpected.empty()) __builtin_trap();
  OptInputFileSet(sInput.c_str());
  OptOutputFileSet(folder.Path("out.csv").c_str());
  OptOutputFileTypeSet(kFormatCsv);
  OptUseDoubleQuotesSet(static_cast<int32_t>(nBytes % 3));
  if (bDone && ConvertFile() != 0) __builtin_trap();

  clsProfileGrid grid;
  OpenProfileFromDisk(sProfile, grid, host);
  ResetProfileGlobals();
  return 0;
}
