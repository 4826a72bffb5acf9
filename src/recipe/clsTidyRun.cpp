#include "clsTidyRun.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "clsRecipe.h"
#include "clsReportProof.h"
#include "clsTidyLines.h"
#include "clsTidyOutputs.h"
#include "clsTidyReport.h"
#include "clsTidySheet.h"
#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modReport.h"
#include "modSectionFile.h"
#include "modText.h"
#include "modTidyFailures.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int64_t kTurnEvery = 64;
constexpr int64_t kProgressEvery = 1000;

bool HasPrintedNames(const std::vector<TidyColumnInfo>& columns) {
  return std::any_of(columns.begin(), columns.end(), [](const TidyColumnInfo& column) { return column.sName == "^"; });
}

/// Looks for the names that are printed above the first rows.
class clsNamesAbove : public clsTidyListener {
 public:
  explicit clsNamesAbove(size_t nTables) : columns(nTables), nMissing_(nTables) {}
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& told) override {
    columns[nTable] = told;
    --nMissing_;
  }
  bool HasAll() const { return nMissing_ == 0; }

  std::vector<std::vector<TidyColumnInfo>> columns;

 private:
  size_t nMissing_;
};

/// One run over one report.
class clsTidyRun : public clsTidyListener {
 public:
  clsTidyRun(RecipeContext& context, clsOutputFile* pCsv) : context_(context), pCsv_(pCsv) {
    for (const clsTable& table : context.recipe.ExportSpecs.TablesCollection) {
      if (table.tidy) tables_.push_back(*table.tidy);
    }
  }

  bool Run() {
    if (!Open() || !LocateAll()) return !bDied_;
    if (tables_.empty() || !MakeSheets() || !FindNames() || (bRead_ && !Open())) return !bDied_;
    proof_.emplace(tables_, clsPrintedTotals::Limits());
    clsTidyReport report(tables_, *this);
    for (size_t i = 0; i < tables_.size(); ++i) SetKnownColumns(report, i);
    ReadAll(report);
    if (!bDied_) EndSheets();
    KeepAccount(report);
    return !bDied_;
  }

  // What the report tells while it is read.
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override {
    SheetOf(nTable).SetColumns(nTable, columns);
    proof_->TableStarts(nTable, columns);
  }
  void Row(const TidyRecord& row) override {
    SheetOf(row.nTable).Begins(row.nTable, row.lLine);
    proof_->Row(row);
  }
  void StretchStarts(size_t nTable, int64_t lLine) override { proof_->StretchStarts(nTable, lLine); }
  void StretchEnds(size_t nTable, int64_t lLine) override { proof_->StretchEnds(nTable, lLine); }
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override {
    proof_->HeadingChanges(nTable, nHeading, lLine);
  }
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override {
    proof_->Line(lLine, sLine, kind, nTable);
    lPassed_ = lLine;
  }
  void Record(const TidyRecord& record) override {
    clsTidySheet& sheet = SheetOf(record.nTable);
    const bool bHeld = sheet.IsHolding();
    bGoesOn_ = sheet.Put(record) && bGoesOn_;
    if (!bHeld && sheet.IsHolding()) holding_.push_back(&sheet);
  }
  void GroupTooLong(size_t nTable, int64_t lLine) override {
    Tell(EntryType::Warning, kTidyLongGroup, {SectionOf(nTable), std::to_string(lLine)});
  }

 private:
  std::string SectionOf(size_t nTable) const { return "Table " + std::to_string(tables_[nTable].lNumber); }
  clsTidySheet& SheetOf(size_t nTable) { return *sheets_[sheetOf_[nTable]]; }

  bool Die(std::string_view sReason, std::string_view sPlace) {
    bDied_ = true;
    return EndWalk(context_, sReason, sPlace);
  }

  void Tell(EntryType type, int32_t lCode, std::initializer_list<std::string_view> values) {
    ReportCode(context_.host, type, lCode, TidyText(lCode, values), true);
  }

  bool Open() {
    const std::string& sPath = context_.recipe.InputFileNameOf(1);
    TextFileOptions text = context_.options.text;
    if (context_.account.pCodePage != nullptr) text.pCodePage = context_.account.pCodePage;
    Failure failure;
    if (!reader_.Open(sPath, text, failure)) {
      if (IsStopped(failure)) return false;
      ReportFileFailure(context_, failure);
      return Die("A report could not be read", failure.sText);
    }
    context_.account.pCodePage = &reader_.CodePage();
    return true;
  }

  /// Key texts that aren't in the report are found out before anything is written. The tables before such a one run.
  bool LocateAll() {
    for (size_t i = 0; i < tables_.size(); ++i) {
      const std::optional<RecipeCode> code = Locate(tables_[i]);
      if (bDied_ || gbAbandonOutput) return false;
      if (!code) continue;
      const TidyTable& table = tables_[i];
      ReportRecipe(context_.host, *code, {*code == kTableStartNotFound ? table.sStartLine : table.sEndLine});
      context_.recipe.ExportSpecs.FatalProcessError = true;
      tables_.resize(i);
    }
    return true;
  }

  /// A search that was stopped found out nothing.
  static std::optional<RecipeCode> NotFound(clsReport& report, RecipeCode code) {
    return IsStopped(report.Reader().LastFailure()) ? std::nullopt : std::optional(code);
  }

  std::optional<RecipeCode> Locate(const TidyTable& table) {
    if (table.bOptional || (table.sStartLine.empty() && table.sEndLine.empty())) return {};
    // The run's own reader found out that the report can be read.
    clsReport& report = context_.Report(context_.recipe.InputFileNameOf(1));
    Failure failure;
    if (!report.Open(failure)) return {};
    int64_t lBeforeEnd = 0;
    if (!table.sStartLine.empty()) {
      const int64_t lKey = report.LineOf(table.sStartLine);
      if (lKey == 0) return NotFound(report, kTableStartNotFound);
      lBeforeEnd = std::max<int64_t>(lKey, lKey + table.lStartOffset - 1);
    }
    if (table.sEndLine.empty() || table.bRepeat || table.bUntilBlank) return {};
    if (report.LineBehind(table.sEndLine, lBeforeEnd) != 0) return {};
    return NotFound(report, kTableEndNotFound);
  }

  bool MakeSheets() {
    sheetOf_.resize(tables_.size());
    std::vector<std::string> names;
    for (size_t i = 0; i < tables_.size(); ++i) {
      const auto known = std::find(names.begin(), names.end(), tables_[i].sSheet);
      sheetOf_[i] = static_cast<size_t>(known - names.begin());
      if (known == names.end()) {
        names.push_back(tables_[i].sSheet);
        std::unique_ptr<clsTidyOutput> output = pCsv_ != nullptr ? CsvOutput(tables_[i]) : SheetOutput(tables_[i]);
        if (output == nullptr) return false;
        sheets_.push_back(std::make_unique<clsTidySheet>(std::move(output)));
      }
      sheets_[sheetOf_[i]]->AddTable(i);
    }
    return true;
  }

  std::unique_ptr<clsTidyOutput> CsvOutput(const TidyTable& table) {
    clsOutputFile* pFile = pCsv_;
    if (!table.sSheet.empty()) {
      const size_t nPoint = BehindLastSeparator(gsOutputFile) + BaseNameOfPath(gsOutputFile).size();
      Failure failure;
      auto file = std::make_unique<clsOutputFile>();
      if (!file->Open(gsOutputFile.substr(0, nPoint) + "-" + table.sSheet + gsOutputFile.substr(nPoint), failure)) {
        ReportFileFailure(context_, failure);
        Die("The report could not be written", failure.sText);
        return nullptr;
      }
      pFile = file.get();
      context_.furtherFiles.push_back(std::move(file));
    }
    const clsCodePage& page =
        context_.options.text.pCodePage != nullptr ? *context_.options.text.pCodePage : *context_.account.pCodePage;
    CsvRules rules;
    if (!SetSeparator(page, rules)) return nullptr;
    return std::make_unique<clsTidyCsvOutput>(context_, *pFile, rules, page);
  }

  bool SetSeparator(const clsCodePage& page, CsvRules& rules) {
    const int32_t lCharacter = context_.options.lDelimitationCharacter;
    if (lCharacter < 1 || lCharacter > 255) {
      context_.account.failure =
          OwnFailure(gsOutputFile,
                     Translate("The separator is no character code from 1 to 255") + ": " + std::to_string(lCharacter));
      return Die(context_.account.failure.sText, {});
    }
    const clsCodePage& pageOfCode = page.IsSingleByte() ? page : clsCodePage::Windows1252();
    std::string sUtf8;
    AppendUtf8(pageOfCode.CharOf(static_cast<unsigned char>(lCharacter)), sUtf8);
    rules.sSeparator = page.FromUtf8(sUtf8);
    rules.sQuoteOn = ",\"\r\n";
    rules.bSafe = context_.options.bSafeCsv;
    return true;
  }

  std::unique_ptr<clsTidyOutput> SheetOutput(const TidyTable& table) {
    const int32_t lColumn = table.sWriteColumn.empty() ? 1 : AlphaToNum2(context_.host, table.sWriteColumn);
    const bool bMain = table.sSheet.empty();
    Failure failure;
    const int nSheet = bMain ? 1 : context_.pWorkbook->SheetNamed(table.sSheet, failure);
    if (nSheet == 0) {
      ReportFileFailure(context_, failure);
      Die("The report could not be written", failure.sText);
      return nullptr;
    }
    const int32_t lRow = bMain ? context_.recipe.ExportSpecs.getWritePointer(context_.host, 1) : 1;
    if (!bMain && context_.options.bClearOutputFileBeforeProcessing) {
      context_.pWorkbook->ClearContents(nSheet, {1, 1, kMaxSheetRows, kMaxSheetColumns}, failure);
    }
    auto output = std::make_unique<clsTidySheetOutput>(context_, nSheet, lRow, std::max(lColumn, 1));
    if (bMain) pMainSheet_ = output.get();
    return output;
  }

  /// Names that are printed above the first row have to be known before the first row of any table of their sheet.
  bool FindNames() {
    bool bNeeded = false;
    for (size_t i = 0; i < tables_.size(); ++i) {
      const std::vector<std::string>& names = tables_[i].row.names;
      const bool bPrinted = std::find(names.begin(), names.end(), "^") != names.end();
      bNeeded = bNeeded || (bPrinted && SheetOf(i).TableCount() > 1);
    }
    if (!bNeeded) return true;
    bRead_ = true;
    clsNamesAbove names(tables_.size());
    clsTidyReport report(tables_, names);
    clsTidyLines lines(reader_, glTabSize);
    for (std::string_view sLine; !names.HasAll() && lines.Next(sLine);) report.Line(sLine);
    if (!names.HasAll()) report.End();
    for (size_t i = 0; i < tables_.size(); ++i) {
      if (!names.columns[i].empty()) SheetOf(i).SetColumns(i, names.columns[i]);
    }
    return true;
  }

  void SetKnownColumns(const clsTidyReport& report, size_t nTable) {
    if (!HasPrintedNames(report.Columns(nTable))) SheetOf(nTable).SetColumns(nTable, report.Columns(nTable));
  }

  void ReadAll(clsTidyReport& report) {
    clsTidyLines lines(reader_, glTabSize);
    reader_.LeaveEventsToCaller(true);
    for (std::string_view sLine; bGoesOn_ && lines.Next(sLine);) {
      report.Line(sLine);
      if (!holding_.empty()) ReleaseHeld();
      if (reader_.RowNumber() % kTurnEvery == 0 && !Turn()) break;
    }
    reader_.LeaveEventsToCaller(false);
    if (reader_.LastFailure().Failed()) {
      ReportFileFailure(context_, reader_.LastFailure());
      Die("A report could not be read", reader_.LastFailure().sText);
    }
    bDied_ = bDied_ || !bGoesOn_;
    if (!bDied_) report.End();
  }

  /// False if the run is to end here.
  bool Turn() {
    context_.host.LetEventsRun();
    const int64_t lLine = reader_.RowNumber();
    if (lLine % kProgressEvery < kTurnEvery) {
      context_.host.ShowProgress({gsInputFile, lLine, reader_.BytesDone(), reader_.BytesTotal()});
    }
    return !gbAbandonOutput && !(gbPauseRequested && PauseEndsRun(context_.host));
  }

  void ReleaseHeld() {
    for (clsTidySheet* const pSheet : holding_) {
      pSheet->Passes(lPassed_);
      bGoesOn_ = pSheet->Release(false) && bGoesOn_;
    }
    std::erase_if(holding_, [](const clsTidySheet* pSheet) { return !pSheet->IsHolding(); });
  }

  void EndSheets() {
    for (const auto& sheet : sheets_) bGoesOn_ = sheet->Release(true) && sheet->End() && bGoesOn_;
    if (pMainSheet_ != nullptr) {
      const int64_t lNext = std::min<int64_t>(pMainSheet_->NextRow(), std::numeric_limits<int32_t>::max());
      context_.recipe.ExportSpecs.setWritePointer(context_.host, 1, static_cast<int32_t>(lNext));
    }
  }

  void KeepAccount(const clsTidyReport& report) {
    TidyAccount& account = context_.account.tidy;
    account.bRan = true;
    for (size_t i = 0; i < tables_.size(); ++i) proof_->AddLeft(report.State(i).left);
    context_.account.proof = proof_->Finish();
    for (size_t i = 0; i < account.lines.size(); ++i) account.lines[i] = report.Lines(static_cast<TidyLineKind>(i));
    for (size_t i = 0; i < tables_.size(); ++i) {
      const TidyTableState& state = report.State(i);
      TableAccount& table = context_.account.tables.emplace_back();
      table.lTable = tables_[i].lNumber;
      table.lFirstLine = state.lFirstLine;
      table.lLastLine = state.lLastLine;
      table.lRows = state.lRecords;
      table.lColumns = static_cast<int32_t>(report.Columns(i).size());
      account.lRecords += state.lRecords;
      account.lMisfits += state.lMisfits;
      if (!bDied_ && !gbAbandonOutput && !gbPauseRequested) TellState(report, i);
    }
    if (!gbAbandonOutput && !gbPauseRequested) context_.account.lLinesRead = reader_.RowNumber();
  }

  void TellState(const clsTidyReport& report, size_t nTable) {
    const TidyTable& table = tables_[nTable];
    const TidyTableState& state = report.State(nTable);
    const std::string sSection = SectionOf(nTable);
    if (state.lRecords == 0 && !table.bOptional) {
      std::string sNear;
      if (state.lNearLine > 0) {
        sNear = std::string("; the nearest is line") + " " + std::to_string(state.lNearLine) + ", " +
                (state.nearColumn == kNoTidyColumn
                     ? std::string("which fits but for the picture")
                     : std::string("which fits but for column") + " " +
                           NumToAlpha2(context_.host, static_cast<int32_t>(state.nearColumn) + 1));
      }
      return Tell(EntryType::Error, kTidyNoRow, {sSection, sNear});
    }
    for (size_t k = 0; k < state.headingsFound.size() && state.lRecords > 0; ++k) {
      if (state.headingsFound[k] > 0) continue;
      Tell(EntryType::Warning, kTidyNoHeading, {table.sections[k + 1].sName});
    }
    if (state.lMisfits == 0) return;
    Tell(EntryType::Warning, kTidyMisfits,
         {sSection, std::to_string(state.lMisfits),
          "\"" + state.sMisfit + "\" (" + std::string("line") + " " + std::to_string(state.lMisfitLine) + ", " +
              std::string("column") + " " + state.sMisfitColumn + ")"});
  }

  RecipeContext& context_;
  clsOutputFile* pCsv_;
  std::vector<TidyTable> tables_;
  std::optional<clsReportProof> proof_;
  clsLineReader reader_;
  std::vector<std::unique_ptr<clsTidySheet>> sheets_;
  std::vector<size_t> sheetOf_;
  clsTidySheetOutput* pMainSheet_ = nullptr;
  std::vector<clsTidySheet*> holding_;  ///< Rows of theirs wait for other tables
  int64_t lPassed_ = 0;                 ///< All tables know the lines up to this one
  bool bRead_ = false;                  ///< The reader stands behind the report's first line
  bool bDied_ = false;
  bool bGoesOn_ = true;
};

}  // namespace

bool RunTidyTables(RecipeContext& context, clsOutputFile* pCsv) {
  return clsTidyRun(context, pCsv).Run();
}

}  // namespace quillon
