// Any bytes as a report that is packed or of another kind than plain text: it is read or refused with a reason, and the
// second opening gives what the first gave.

#include <string>

#include "clsFuzzInput.h"
#include "clsLineReader.h"
#include "clsTempFolder.h"
#include "modReportText.h"

using namespace quillon;

namespace {

/// The rows, or why there are none.
std::string Read(const std::string& sFile, const TextFileOptions& text) {
  clsLineReader reader;
  Failure failure;
  if (!reader.Open(sFile, text, failure)) {
    Must(failure.Failed() && !failure.sText.empty(), "a refusal has its reason");
    return failure.sText;
  }
  std::string sAll;
  for (std::string_view sRow; reader.ReadRow(sRow);) sAll.append(sRow).append("\n");
  return sAll;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  const unsigned choice = input.TakeByte();
  ResetReportInput();
  ReportInput().bFindKinds = (choice & 1) != 0;
  ReportInput().carriageControl = static_cast<CarriageControl>((choice >> 4) % 5);
  ReportInput().records = static_cast<RecordForm>((choice >> 6) % 4);
  ReportInput().printerCodes = (choice & 32) != 0 ? PrinterCodes::On : PrinterCodes::Auto;
  const TextFileOptions text{
      .pCodePage = FuzzPage(choice >> 1), .lMostBytes = (choice & 8) != 0 ? 100 : 0, .bReport = true};
  const std::string sFile = folder.Write("in.txt", input.sInput);
  const std::string sFirst = Read(sFile, text);
  Must(Read(sFile, text) == sFirst, "made once, read alike");
  ForgetReportTexts();
  Must(Read(sFile, text) == sFirst, "made again, read alike");
  return 0;
}
