// Any bytes as a job file: what is read and saved into it reads the same again, and a second saving changes nothing.

#include "clsConversionOptions.h"
#include "clsFuzzInput.h"
#include "clsTempFolder.h"
#include "modFailure.h"
#include "modSettings.h"

using namespace quillon;

namespace {

/// A value that a line of a job file can't hold as it stands.
bool IsBare(std::string_view sValue) {
  constexpr std::string_view kLost = " \t\r\"'";
  return sValue.empty() ||
         (kLost.find(sValue.front()) == std::string_view::npos && kLost.find(sValue.back()) == std::string_view::npos);
}

bool Same(const clsConversionOptions& a, const clsConversionOptions& b) {
  for (const auto text : {&clsConversionOptions::sInputFile, &clsConversionOptions::sOutputFile,
                          &clsConversionOptions::sRecipeFile, &clsConversionOptions::sSheetTarget,
                          &clsConversionOptions::sStartColRow, &clsConversionOptions::sFixedWidthProfile}) {
    if (IsBare(a.*text) && a.*text != b.*text) return false;
  }
  return a.lConversionMethod == b.lConversionMethod && a.lDelimitationCharacter == b.lDelimitationCharacter &&
         a.lTabSize == b.lTabSize && a.lUseDoubleQuotes == b.lUseDoubleQuotes && a.bUnix == b.bUnix &&
         a.bDoSubfolders == b.bDoSubfolders && a.bIsUnicode == b.bIsUnicode && a.sReadMe == b.sReadMe &&
         a.sReadMeCommandLine == b.sReadMeCommandLine;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  const unsigned choice = input.TakeByte();
  const clsCodePage* const pPage = FuzzPage(choice);
  OverrideSystemCodePage(pPage, pPage == nullptr);
  gbCommandLineMode = (choice & 4) != 0;
  const std::string sJob = folder.Write("a.QLN", input.sInput);
  clsConversionOptions job;
  try {
    job.OpenConversionJob(sJob);
  } catch (const UnhandledFailure&) {
    return 0;
  }
  Must(job.SaveConversionJob(sJob), "a job can be saved");
  const std::string sOnce = folder.Read("a.QLN");
  clsConversionOptions again;
  again.OpenConversionJob(sJob);
  Must(Same(job, again), "a saved job is the job");
  if (!IsBare(job.sReadMe) || !IsBare(job.sInputFile)) return 0;
  Must(job.SaveConversionJob(sJob) && folder.Read("a.QLN") == sOnce, "saving the same changes nothing");
  return 0;
}
