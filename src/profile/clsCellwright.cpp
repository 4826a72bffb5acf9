#include "clsCellwright.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "clsCsvRowSink.h"
#include "clsLineReader.h"
#include "clsRowCutter.h"
#include "clsSheetRowSink.h"
#include "clsUtf16Reader.h"
#include "modCellTyping.h"
#include "modCharacterList.h"
#include "modEventLoop.h"
#include "modExcelLink.h"
#include "modPaths.h"
#include "modReportChange.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

int64_t ReplacedBy(const clsUtf16Reader& reader) {
  return reader.Replaced();
}
int64_t ReplacedBy(const clsLineReader&) {
  return 0;
}

/// Whether the row read last has room behind it.
bool HasRoom(const clsUtf16Reader&) {
  return false;
}
bool HasRoom(const clsLineReader& reader) {
  return reader.RoomBehind() >= SinkRow::kRoom;
}

/// Rows on their way to a sink, which takes their fields.
class clsCutRows {
 public:
  clsCutRows(clsRowSink& sink, const CutPlan& plan, const clsCodePage& page) : sink_(sink), cutter_(plan, page) {}

  bool PutRow(std::string_view sRow, bool bRoom) {
    cutter_.Cut(sRow, bRoom);
    return sink_.PutRow(cutter_.Row());
  }

 private:
  clsRowSink& sink_;
  clsRowCutter cutter_;
};

/// A file that its owner made so; what else is wrong with it comes second.
bool IsReadOnly(const std::string& sPath) {
  struct stat info {};
  return stat(HostPath(sPath).c_str(), &info) == 0 && (info.st_mode & 0222) == 0;
}

std::string WordsFor(EngineResult result) {
  const auto itMessage = std::find_if(kEngineMessages.begin(), kEngineMessages.end(),
                                      [result](const EngineMessage& message) { return message.result == result; });
  return itMessage != kEngineMessages.end() ? Translate(itMessage->sText) : std::string();
}

}  // namespace

CellwrightColumn* clsCellwright::Column(int32_t lColumn) {
  if (lColumn < 1 || lColumn > kMostColumns) return nullptr;
  const auto nColumn = static_cast<size_t>(lColumn);
  if (options_.columns.size() < nColumn) options_.columns.resize(nColumn);
  return &options_.columns[nColumn - 1];
}

EngineResult clsCellwright::Fail(EngineResult result, std::string_view sAbout) {
  sError_ = WordsFor(result);
  if (!sAbout.empty()) sError_.append(": ").append(sAbout);
  return result;
}

EngineResult clsCellwright::FailRows(const Failure& failure) {
  return IsStopped(failure) ? Fail(EngineResult::Stopped, "") : Fail(EngineResult::InputUnreadable, failure.sText);
}

EngineResult clsCellwright::FailOutput(const Failure& failure) {
  if (IsStopped(failure)) return Fail(EngineResult::Stopped, "");
  const bool bAttributes = failure.nError == EACCES || failure.nError == EPERM || failure.nError == EROFS;
  return Fail(bAttributes ? EngineResult::Attributes : EngineResult::OutputUnwritable, failure.sText);
}

EngineResult clsCellwright::Check() {
  if (options_.lInputType != kInputBytes && options_.lInputType != kInputUtf16) {
    return Fail(EngineResult::InputType, std::to_string(options_.lInputType));
  }
  switch (options_.lOutputType) {
    case kFormatCsv:
    case kFormatCsvUtf8:
    case kFormatXlsx:
    case kFormatXls:
      break;
    default:
      return Fail(EngineResult::OutputType, options_.sOutputFile);
  }
  if (!ParseStartCell(options_.sStartCell, start_)) {
    account_.sNote = WordsFor(EngineResult::StartCell) + ": [" + options_.sStartCell + "]";
  }
  return EngineResult::Done;
}

EngineResult clsCellwright::ConvertFile() {
  account_ = {};
  const EngineResult checked = Check();
  if (checked != EngineResult::Done) return checked;
  Failure failure;
  report_ = FileState::Of(HostPath(options_.sInputFile));
  if (options_.lInputType == kInputUtf16) {
    clsUtf16Reader reader;
    if (reader.Open(options_.sInputFile, failure)) return Convert(reader, clsCodePage::Utf8());
  } else {
    clsLineReader reader;
    const TextFileOptions text{.bUnix = false, .pCodePage = SystemCodePage(), .bReport = true};
    if (reader.Open(options_.sInputFile, text, failure)) {
      return Convert(reader, reader.CodePage());
    }
  }
  return FailRows(failure);
}

template <typename Reader>
EngineResult clsCellwright::Convert(Reader& reader, const clsCodePage& page) {
  const CutPlan plan = MakeCutPlan(options_.columns, start_.nColumn, page);
  const bool bCsv = options_.lOutputType == kFormatCsv || options_.lOutputType == kFormatCsvUtf8;
  return bCsv ? ToCsv(reader, plan, page) : ToSheet(reader, plan, page);
}

/// Row by row from the start cell on. False if the sink refused one or the input failed or changed.
template <typename Reader>
bool clsCellwright::PumpRows(Reader& reader, clsRowSink& sink, const CutPlan& plan, const clsCodePage& page) {
  clsCutRows rows(sink, plan, page);
  const int64_t nWidth = plan.edges.back();
  const auto goesOn = [nWidth](std::string_view sRow) {
    return static_cast<int64_t>(sRow.size()) > nWidth &&
           sRow.find_first_not_of(' ', static_cast<size_t>(nWidth)) != std::string_view::npos;
  };
  const int64_t nSkipped = reader.SkipRows(start_.nRow - 1);
  constexpr int64_t kProgressEvery = 1024;
  bool bTaken = true;
  for (std::string_view sRow; bTaken && reader.ReadRow(sRow);) {
    bTaken = rows.PutRow(sRow, HasRoom(reader));
    if (pBehind_ != nullptr && goesOn(sRow)) pBehind_->Row(reader.RowNumber(), sRow, page, nWidth);
    const bool bTell = reader.RowNumber() % kProgressEvery == 0 && progress_;
    if (bTell) progress_(reader.RowNumber(), reader.BytesDone(), reader.BytesTotal());
  }
  account_.lRowsRead = reader.RowNumber();
  account_.lRowsWritten = account_.lRowsRead - nSkipped;
  account_.lCharsReplaced = ReplacedBy(reader);
  inputFailure_ = reader.LastFailure();
  if (!inputFailure_.Failed()) inputFailure_ = ReportChange(options_.sInputFile, report_);
  account_.bGaveUp =
      bTaken && !inputFailure_.Failed() && pBehind_ != nullptr && !pBehind_->RowsEnd(account_.lRowsWritten);
  return bTaken && !inputFailure_.Failed() && !account_.bGaveUp;
}

CsvRules clsCellwright::RulesFor(const clsCodePage& pageOut) const {
  CsvRules rules;
  const bool bInRange = options_.lSeparator >= 1 && options_.lSeparator <= 255;
  const std::string sCode(1, bInRange ? static_cast<char>(options_.lSeparator) : ',');
  const std::string sUtf8 = CharacterCodePage().ToUtf8(sCode);
  if (!pageOut.IsSingleByte()) {
    rules.sSeparator = sUtf8;
  } else {
    rules.sSeparator = pageOut.CanEncode(sUtf8) ? pageOut.FromUtf8(sUtf8) : sCode;
  }
  // A value that holds a separator or quotes could bring on a cell of its own.
  if (options_.lUseDoubleQuotes == 0 && !options_.bSafeCsv) rules.quoting = CsvQuoting::Never;
  if (options_.lUseDoubleQuotes == 2) rules.quoting = CsvQuoting::Always;
  rules.bSafe = options_.bSafeCsv;
  return rules;
}

template <typename Reader>
EngineResult clsCellwright::ToCsv(Reader& reader, const CutPlan& plan, const clsCodePage& page) {
  const bool bUtf8 = options_.lOutputType == kFormatCsvUtf8;
  const clsCodePage* pPageOut = bUtf8 ? &clsCodePage::Utf8() : SystemCodePage();
  // A system page found by content: the output is in that of the input, which for UTF-16 there is none.
  if (pPageOut == nullptr) {
    pPageOut = options_.lInputType == kInputUtf16 ? &clsCodePage::Windows1252() : &page;
  }
  clsOutputFile file;
  Failure failure;
  if (!file.Open(options_.sOutputFile, failure)) return FailOutput(failure);
  if (bUtf8) file.Write(kUtf8Bom);
  clsCsvRowSink sink(file, RulesFor(*pPageOut), *pPageOut);
  if (!PumpRows(reader, sink, plan, page)) return FailRows(inputFailure_);
  account_.lCharsLost = sink.CharsLost();
  return file.Commit(failure) ? EngineResult::Done : FailOutput(failure);
}

/// A sheet of an existing workbook keeps its name, by which others speak of it, and loses its cells.
EngineResult clsCellwright::BeginSheet(clsWorkbook& workbook) {
  Failure failure = workbook.WhyRefused();
  if (failure.Failed() && IsReadOnly(options_.sOutputFile)) failure.nError = EACCES;
  if (failure.Failed()) return FailOutput(failure);
  if (workbook.IsExisting()) {
    const CellRange used = workbook.ContentOf(1).used;
    if (options_.bClear && !used.Empty() && !workbook.ClearContents(1, used, failure)) return FailOutput(failure);
  } else if (options_.workbook.sSheet.empty()) {
    // A name that a sheet can't have leaves the sheet's own name.
    workbook.SetSheetName(1, options_.sSheet, failure);
  }
  return EngineResult::Done;
}

template <typename Reader>
EngineResult clsCellwright::ToSheet(Reader& reader, const CutPlan& plan, const clsCodePage& page) {
  const bool bXls = options_.lOutputType == kFormatXls;
  const auto nMostColumns = static_cast<size_t>(bXls ? kMaxXlsColumns : kMaxSheetColumns);
  if (plan.columns.size() > nMostColumns) {
    return Fail(EngineResult::TooManyColumns,
                std::to_string(plan.columns.size()) + " > " + std::to_string(nMostColumns));
  }
  WorkbookOptions options = options_.workbook;
  options.typing = {options_.bAllText, !options_.bAllText, LocaleIsDayFirst(), options.typing.order};
  const std::unique_ptr<clsWorkbook> pWorkbook = OpenExcelWorkbook(options_.sOutputFile, options);
  const EngineResult begun = BeginSheet(*pWorkbook);
  if (begun != EngineResult::Done) return begun;
  // What lacks a value must not pass for a converted report.
  std::string sRefusal;
  const auto refused = [&sRefusal](const Failure& cell) {
    sRefusal = cell.sText;
    return false;
  };
  clsSheetRowSink sink(*pWorkbook, {.bWriteEmpty = false, .lMostRows = bXls ? kMaxXlsRows : kMaxSheetRows}, refused);
  if (!PumpRows(reader, sink, plan, page)) {
    if (sRefusal.empty()) return FailRows(inputFailure_);
    account_.lCellsFailed = 1;
    account_.lRowsWritten = 0;
    return Fail(EngineResult::CellRefused, sRefusal);
  }
  Failure failure;
  const bool bSaved = SaveExcelWorkbookAs(*pWorkbook, options_.sOutputFile, options_.lOutputType, failure);
  account_.workbookNotes = pWorkbook->Notes();
  return bSaved ? EngineResult::Done : FailOutput(failure);
}

}  // namespace quillon
