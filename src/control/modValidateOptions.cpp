// The rules that refuse a job which can't work. Recipe and profile are looked at per file, by their conversions.

#include "modConversionRun.h"
#include "modFiles.h"
#include "modPathMatch.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

int32_t clsConversionRun::Refuse(RunCode code, std::string_view sSubject) {
  host_.Report(RunEntry(code, sSubject));
  return code;
}

void clsConversionRun::ValidateOptions(int32_t& lResult) {
  log_.LogClear(true);
  lResult = LoadJobFile();
  if (lResult == 0) lResult = MakeLogFolder();
  if (lResult == 0) lResult = CheckInputAndOutput();
  if (lResult != 0) return;
  MakeFolderPath(ParentFolderOfPath(ExpandedPath(options_.sOutputFile)));
  lResult = CheckOutputType();
}

int32_t clsConversionRun::LoadJobFile() {
  if (!gbCommandLineMode || options_.sCLBatchJobFile.empty()) return 0;
  ExpandFolderTokens(options_.sCLBatchJobFile);
  if (!IsFile(options_.sCLBatchJobFile)) return Refuse(kNoJobFile, options_.sCLBatchJobFile);
  options_.OpenConversionJob(options_.sCLBatchJobFile);
  ExpandFolderTokens(options_.sInputFile);
  ExpandFolderTokens(options_.sLogFile);
  ExpandFolderTokens(options_.sOutputFile);
  ExpandFolderTokens(options_.sRecipeFile);
  if (!options_.sReadMeCommandLine.empty()) log_.LogAddText(options_.sReadMeCommandLine);
  return 0;
}

/// The log is written last: over a report, recipe or job, or over what the run has just made.
bool clsConversionRun::LogIsFileOfRun() const {
  const std::string log = UpperText(AbsolutePath(options_.sLogFile));
  const std::string input = ExpandedPath(options_.sInputFile);
  const std::string output = ExpandedPath(options_.sOutputFile);
  for (const std::string& path : {input, output, ExpandedPath(options_.sRecipeFile), options_.sCLBatchJobFile}) {
    const bool one = !path.empty() && !HasWildcards(path);
    if (one && (UpperText(AbsolutePath(path)) == log || IsSameFile(path, options_.sLogFile))) return true;
  }
  if (!HasWildcards(input)) return false;
  const std::string prefix = UpperText(AbsolutePath(output.substr(0, output.find('*'))));
  if (log.starts_with(prefix) && ExtensionOfPath(log) == UpperText(ExtensionOfPath(output))) return true;
  // The log of an earlier run may lie among the inputs.
  const size_t mask = BehindLastSeparator(input);
  return IsFile(options_.sLogFile) && !MayBecomeLog(options_.sLogFile) &&
         clsPathMatch(input.substr(mask)).Matches(options_.sLogFile.substr(BehindLastSeparator(options_.sLogFile))) &&
         UpperText(AbsolutePath(FolderOfPath(options_.sLogFile))) == UpperText(AbsolutePath(FolderOfPath(input)));
}

int32_t clsConversionRun::MakeLogFolder() {
  if (!gbCommandLineMode || options_.sLogFile.empty()) return 0;
  if (LogIsFileOfRun()) return Refuse(kLogIsFileOfRun, options_.sLogFile);
  const std::string folder = ParentFolderOfPath(options_.sLogFile);
  MakeFolderPath(folder);
  return FolderExists(folder) ? 0 : Refuse(kNoLogFolder, WithSeparator(folder));
}

int32_t clsConversionRun::CheckInputAndOutput() {
  if (!HasWildcards(options_.sInputFile)) {
    const std::string input = ExpandedPath(options_.sInputFile);
    if (!IsFile(input)) return Refuse(kNoInputFile, input);
    return HasWildcards(options_.sOutputFile) ? Refuse(kOutputHasWildcard) : 0;
  }
  // A "?" in the output names nothing that could be filled in.
  return options_.sOutputFile.find('*') == std::string::npos ? Refuse(kOutputNeedsWildcard) : 0;
}

int32_t clsConversionRun::CheckOutputType() {
  const std::string extension = UpperText(ExtensionOfPath(ExpandedPath(options_.sOutputFile)));
  if (extension == "XLS" || extension == "CSV" || extension == "XLSX") return 0;
  if (!extension.empty() || (pWindow_ == nullptr && !extras_.bSayMore)) return Refuse(kOutputType, extension);
  ReportEntry entry = RunEntry(kOutputType);
  entry.sErr3 = Translate("The output's name has no extension; put one behind it, such as .xlsx");
  host_.Report(entry);
  return kOutputType;
}

}  // namespace quillon
