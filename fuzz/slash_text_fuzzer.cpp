// Any text as slash switches. The log's folder is made as the text says, so each log is led into the entry's folder.

#include <ctime>

#include "clsFuzzInput.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modParseCommandLine.h"
#include "modSettings.h"
#include "modText.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  gsAppDataFolder = folder.Path() + "/";
  std::string sText(clsFuzzInput(pData, nSize).sInput);
  if (sText.find("..") != std::string::npos) return 0;
  sText = ReplaceAllNoCase(sText, "/L", "/L" + ReplaceAll(folder.Path(), "/", "\\") + "\\");

  clsTestHost host;
  clsConversionOptions options, again;
  const bool bRuns = ParseCommandLine(sText, options, host);
  Must(bRuns || sText.empty() || options.bOpenConversionJobOnly || !host.opened.empty(), "a reason not to run");
  Must(gbCommandLineMode == !sText.empty(), "any text is a command line");
  Must(ParseCommandLine(sText, again, host) == bRuns && again.sInputFile == options.sInputFile &&
           again.sLogFile == options.sLogFile && again.sCLBatchJobFile == options.sCLBatchJobFile,
       "read twice it is the same");

  const int16_t nFields = CountOccurrences(sText, "/");
  std::string sLetter;
  size_t nTaken = 0;
  for (int16_t i = 1; i <= nFields; ++i) nTaken += GetArgument(i, sText, "/", sLetter).size();
  Must(nTaken <= sText.size() && GetArgument(static_cast<int16_t>(nFields + 1), sText, "/", sLetter).empty(),
       "fields are of the text");
  ExpandDateTimeStamps(sText, host.now);
  return 0;
}
