// One input file by the Profile method: the profile's columns and the job's options go to the engine, one call each.

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>

#include "clsCutMeasure.h"
#include "modCellwright_DLL.h"
#include "modConversionRun.h"
#include "modExcelLink.h"
#include "modFixedWidthAttributes.h"
#include "modProofRun.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr const char* kSheetName = "Quillon-Sheet-Name";
constexpr int32_t kDefaultDelimiter = 44;
constexpr int32_t kEngineRefusedByAttributes = 6;

/// Counts what stands behind the last column as a run by a recipe does.
class clsBehindCount : public clsBehindListener {
 public:
  explicit clsBehindCount(bool bMayLose) : bMayLose_(bMayLose) {}
  const CharacterLoss& Loss() const { return loss_; }

  void Row(int64_t lRow, std::string_view sRow, const clsCodePage& page, int64_t nWidth) override {
    if (!measure_) {
      const TidyPlace place{1, static_cast<int32_t>(std::min<int64_t>(nWidth, std::numeric_limits<int32_t>::max()))};
      measure_.emplace(std::span(&place, 1));
    }
    measure_->Text(page.ToUtf8(sRow), lRow);
    ++lMeasured_;
  }
  bool RowsEnd(int64_t lRows) override {
    if (!measure_) return true;
    measure_->RowsWithin(lRows - lMeasured_);
    loss_ = measure_->Loss();
    return bMayLose_ || !loss_.Any();
  }

 private:
  bool bMayLose_;
  std::optional<clsCutMeasure> measure_;
  int64_t lMeasured_ = 0;
  CharacterLoss loss_;
};

int16_t Truth(bool bValue) {
  return bValue ? -1 : 0;
}

int32_t EngineOutputType(std::string_view sOutputFile, bool bIsUnicode) {
  const int32_t format = OutputFormatOfPath(sOutputFile);
  return format == kFormatCsv && bIsUnicode ? static_cast<int32_t>(kFormatCsvUtf8) : format;
}

}  // namespace

int32_t clsConversionRun::AssignProfile() {
  const std::string& profile = options_.sFixedWidthProfile;
  ProfileFault fault;
  const int32_t status =
      AssignFixedWidthAttributes(profile, true, fields_.bTrimInputTextFilesPadCharacter, host_, fault);
  if (status == kProfileDone) return 0;
  if (status == kProfileMissing) {
    return Refuse(kProfileNotFound, gsDataFolder + "\\Profiles\\" + profile + ".txt");
  }
  return RefuseAndExplain(kProfileFormat, profile + ".txt", fault.Text(profile));
}

int32_t clsConversionRun::RefuseAndExplain(RunCode code, std::string_view sSubject, std::string sWhy) {
  ReportEntry entry = RunEntry(code, sSubject);
  if (extras_.bSayMore) entry.sErr3 = std::move(sWhy);
  host_.Report(entry);
  return code;
}

void clsConversionRun::ConvertByProfile(int32_t& lResult) {
  // Nobody has filled the form's field where there is no form.
  if (gbCommandLineMode) fields_.bTrimInputTextFilesPadCharacter = options_.bTrimInputTextFilesPadCharacter;
  OptLeaveLeadingZeroesIntact(Truth(options_.bTreatDataAsText));
  OptSheetsSet(kSheetName);
  lResult = AssignProfile();
  if (lResult != 0) return;
  OptXLSRangeSet(options_.sStartColRow.c_str());
  if (options_.lDelimitationCharacter == 0) options_.lDelimitationCharacter = kDefaultDelimiter;
  OptDelimiterUsedSet(options_.lDelimitationCharacter);
  OptInputFileSet(options_.sInputFile.c_str());
  OptInputFileTypeSet(options_.bIsUnicode ? clsCellwright::kInputUtf16 : clsCellwright::kInputBytes);
  OptOutputFileTypeSet(EngineOutputType(options_.sOutputFile, options_.bIsUnicode));
  OptOutputFileSet(options_.sOutputFile.c_str());
  const int32_t quotes_result = OptUseDoubleQuotesSet(options_.lUseDoubleQuotes);
  Cellwright().Change().bSafeCsv = options_.bSafeCsv;
  Cellwright().Change().workbook = MakeWorkbookOptions();
  Cellwright().Change().bClear = options_.bClearOutputFileBeforeProcessing;
  clsBehindCount behind(!options_.bStrict || options_.bKeep);
  Cellwright().TellBehind(&behind);
  Cellwright().TellProgress([this](int64_t lRow, int64_t lDone, int64_t lTotal) {
    host_.ShowProgress({options_.sInputFile, lRow, lDone, lTotal});
  });
  const int32_t status = options_.lErr = quillon::ConvertFile();
  Cellwright().TellBehind(nullptr);
  TakeEngineAccount(status, behind.Loss());
  if (extras_.bSayMore) SayWhatWasReplaced();
  lResult = ReportEngineStatus(status, quotes_result);
  if (pWindow_ != nullptr) pWindow_->UpdateMRUs();
}

// The engine is asked with the result of the call before ConvertFile, and answers with its last failure all the same.
int32_t clsConversionRun::ReportEngineStatus(int32_t lStatus, int32_t lQuotesResult) {
  if (lStatus == kEngineRefusedByAttributes) return RefuseAndExplain(kProfileGeneral, {}, Cellwright().LastError());
  // A strict run tells why it gave up.
  if (lStatus >= 0 || LastTally().bGaveUp) return lStatus;
  std::array<char, 256> text{};
  GetErrorString(lQuotesResult, text.data(), static_cast<int32_t>(text.size()) - 1);
  return Refuse(kProfileEngine, text.data());
}

void clsConversionRun::SayWhatWasReplaced() {
  const ProfileAccount& tally = LastTally();
  std::string text = tally.sNote;
  const auto& columns = Cellwright().Held().columns;
  const auto counts = [&columns](auto is) {
    return std::any_of(columns.begin(), columns.end(),
                       [is](const CellwrightColumn& column) { return is(column.lCount); });
  };
  if (counts([](int32_t n) { return n < 0; }) && !counts([](int32_t n) { return n > 0; })) {
    if (!text.empty()) text += "; ";
    text += Translate("The profile removes all its columns, so nothing is cut out of the lines");
  }
  if (tally.lCharsReplaced > 0) {
    if (!text.empty()) text += "; ";
    text += Translate("Broken characters of the UTF-16 input that became U+FFFD:");
    text += " " + std::to_string(tally.lCharsReplaced);
  }
  if (!text.empty()) host_.Report({options_.lErr, Translate("Warning"), text, "", EntryType::Warning, false});
}

/// The engine knows one table: all that it wrote.
void clsConversionRun::TakeEngineAccount(int32_t lStatus, const CharacterLoss& loss) {
  const ProfileAccount& tally = LastTally();
  FileAccount& account = outcome_.account;
  account.bOutputWritten = lStatus == 0;
  account.lLinesRead = tally.lRowsRead;
  account.lLinesInTables = tally.lRowsWritten;
  account.lCharactersLost = tally.lCharsLost;
  account.lCellsFailed = tally.lCellsFailed;
  account.workbookNotes = tally.workbookNotes;
  TableAccount table;
  table.lTable = 1;
  table.lFirstLine = tally.lRowsRead - tally.lRowsWritten + 1;
  table.lLastLine = tally.lRowsRead;
  table.lRows = tally.lRowsWritten;
  for (const CellwrightColumn& column : Cellwright().Held().columns) table.lColumns += column.lCount > 0 ? 1 : 0;
  table.loss = loss;
  table.lCellsFailed = tally.lCellsFailed;
  if (!account.bOutputWritten && !tally.bGaveUp) return;
  account.tables.assign(1, table);
  if (options_.bStrict) account.sStrict = StrictFault(account);
}

}  // namespace quillon
