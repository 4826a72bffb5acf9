// One input file by the Profile method: the profile's columns and the job's options go to the engine, one call each.

#include <array>

#include "modCellwright_DLL.h"
#include "modConversionRun.h"
#include "modExcelLink.h"
#include "modFixedWidthAttributes.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr const char* kSheetName = "Quillon-Sheet-Name";
constexpr int32_t kDefaultDelimiter = 44;
constexpr int32_t kEngineRefusedByAttributes = 6;

int16_t Truth(bool bValue) {
  return bValue ? -1 : 0;
}

int32_t EngineOutputType(std::string_view sOutputFile, bool bIsUnicode) {
  const int32_t format = OutputFormatOfPath(sOutputFile);
  return format == kFormatCsv && bIsUnicode ? static_cast<int32_t>(kFormatCsvUtf8) : format;
}

}  // namespace

bool clsConversionRun::AssignProfile() {
  const std::string& profile = options_.sFixedWidthProfile;
  ProfileFault fault;
  const int32_t status =
      AssignFixedWidthAttributes(profile, true, fields_.bTrimInputTextFilesPadCharacter, host_, fault);
  if (status == kProfileDone) return true;
  if (status == kProfileMissing) {
    Refuse(kProfileNotFound, gsDataFolder + "\\Profiles\\" + profile + ".txt");
  } else {
    RefuseAndExplain(kProfileFormat, profile + ".txt", fault.Text(profile));
  }
  return false;
}

void clsConversionRun::RefuseAndExplain(RunCode code, std::string_view sSubject, std::string sWhy) {
  ReportEntry entry = RunEntry(code, sSubject);
  if (extras_.bSayMore) entry.sErr3 = std::move(sWhy);
  host_.Report(entry);
}

void clsConversionRun::ConvertByProfile(int32_t& lResult) {
  // Nobody has filled the form's field where there is no form.
  if (gbCommandLineMode) fields_.bTrimInputTextFilesPadCharacter = options_.bTrimInputTextFilesPadCharacter;
  OptLeaveLeadingZeroesIntact(Truth(options_.bTreatDataAsText));
  OptSheetsSet(kSheetName);
  if (!AssignProfile()) {
    lResult = options_.lErr;
    return;
  }
  OptXLSRangeSet(options_.sStartColRow.c_str());
  if (options_.lDelimitationCharacter == 0) options_.lDelimitationCharacter = kDefaultDelimiter;
  OptDelimiterUsedSet(options_.lDelimitationCharacter);
  OptInputFileSet(options_.sInputFile.c_str());
  OptInputFileTypeSet(options_.bIsUnicode ? clsCellwright::kInputUtf16 : clsCellwright::kInputBytes);
  OptOutputFileTypeSet(EngineOutputType(options_.sOutputFile, options_.bIsUnicode));
  OptOutputFileSet(options_.sOutputFile.c_str());
  const int32_t quotes_result = OptUseDoubleQuotesSet(options_.lUseDoubleQuotes);
  Cellwright().Change().bSafeCsv = extras_.bSafeCsv;
  Cellwright().TellProgress([this](int64_t lRow, int64_t lDone, int64_t lTotal) {
    host_.ShowProgress({options_.sInputFile, lRow, lDone, lTotal});
  });
  options_.lErr = quillon::ConvertFile();
  TakeEngineAccount();
  if (extras_.bSayMore) SayWhatWasReplaced();
  ReportEngineStatus(quotes_result);
  lResult = options_.lErr;
  if (pWindow_ != nullptr) pWindow_->UpdateMRUs();
}

// The engine is asked with the result of the call before ConvertFile, and answers with its last failure all the same.
void clsConversionRun::ReportEngineStatus(int32_t lQuotesResult) {
  if (options_.lErr < 0) {
    std::array<char, 256> text{};
    GetErrorString(lQuotesResult, text.data(), static_cast<int32_t>(text.size()) - 1);
    Refuse(kProfileEngine, text.data());
  }
  if (options_.lErr == kEngineRefusedByAttributes) RefuseAndExplain(kProfileGeneral, {}, Cellwright().LastError());
}

void clsConversionRun::SayWhatWasReplaced() {
  const ProfileAccount& tally = LastTally();
  std::string text = tally.sNote;
  if (tally.lCharsReplaced > 0) {
    if (!text.empty()) text += "; ";
    text += Translate("Broken characters of the UTF-16 input that became U+FFFD:");
    text += " " + std::to_string(tally.lCharsReplaced);
  }
  if (!text.empty()) host_.Report({options_.lErr, Translate("Warning"), text, "", EntryType::Warning, false});
}

/// The engine knows one table: all that it wrote.
void clsConversionRun::TakeEngineAccount() {
  const ProfileAccount& tally = LastTally();
  account_.bOutputWritten = options_.lErr == 0;
  account_.lLinesRead = tally.lRowsRead;
  account_.lLinesInTables = tally.lRowsWritten;
  account_.lCharactersLost = tally.lCharsLost;
  account_.lCellsFailed = tally.lCellsFailed;
  TableAccount table;
  table.lTable = 1;
  table.lFirstLine = tally.lRowsRead - tally.lRowsWritten + 1;
  table.lLastLine = tally.lRowsRead;
  table.lRows = tally.lRowsWritten;
  for (const CellwrightColumn& column : Cellwright().Held().columns) table.lColumns += column.lCount > 0 ? 1 : 0;
  table.lCharactersBehind = tally.lCharsBehind;
  table.lCellsFailed = tally.lCellsFailed;
  if (account_.bOutputWritten) account_.tables.assign(1, table);
}

}  // namespace quillon
