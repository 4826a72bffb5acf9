#include "clsTableRun.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "clsRecipe.h"
#include "clsWorkbook.h"
#include "modFiles.h"
#include "modRecipeFailures.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int64_t kStatusEvery = 15;
constexpr int64_t kProgressEvery = 1000;

int32_t SheetRow(int64_t lRow) {
  return static_cast<int32_t>(std::min<int64_t>(lRow, std::numeric_limits<int32_t>::max()));
}

std::vector<TidyPlace> PlacesOf(const clsTable& table) {
  std::vector<TidyPlace> places;
  // A column that ends nowhere is refused on the first row.
  for (const clsColumn& column : table.ColumnsCollection) {
    if (column.ReadColumnEnd > 0) places.push_back({column.ReadColumnStart, column.ReadColumnEnd});
  }
  return places;
}

}  // namespace

bool clsTable::Process(RecipeContext& context, clsOutputFile* csv_file_handle) {
  const std::unique_ptr<clsTableTarget> target = TargetOf(context, csv_file_handle);
  return clsTableRun(context, *this, *target).Run();
}

clsTableRun::clsTableRun(RecipeContext& context, clsTable& table, clsTableTarget& target)
    : context_(context),
      table_(table),
      target_(target),
      bAllPeriods_(context.options.bAllPeriods &&
                   (context.recipe.InputFileFirst != 1 || context.recipe.InputFileLast > 1)),
      sRowLabel_(Translate("Row:") + " "),
      lCellsFailedBefore_(context.account.lCellsFailed),
      measure_(PlacesOf(table)) {
  TableAccount account;
  account.lTable = static_cast<int32_t>(context.account.tables.size()) + 1;
  account.lColumns = static_cast<int32_t>(table.ColumnsCollection.size());
  context.account.tables.push_back(account);
}

clsTableRun::~clsTableRun() {
  for (clsRow& row : context_.lineProcessor.RowCollection) row.Clear();
}

bool clsTableRun::Run() {
  Step step = FindBlock();
  if (step == Step::Next) step = OpenRows();
  if (step == Step::Next) {
    if (context_.pWorkbook != nullptr) context_.pWorkbook->BeginTable(1);
    step = ExportRows();
    KeepAccount();
  }
  return step != Step::Died;
}

clsTableRun::Step clsTableRun::Fatal(RecipeCode code, std::initializer_list<std::string_view> values) {
  const std::string sTable = "In section [Table " + std::to_string(context_.account.tables.size()) + "]";
  ReportRecipe(context_.host, code, values, true, context_.options.More(sTable));
  context_.recipe.ExportSpecs.FatalProcessError = true;
  return Step::Done;
}

clsTableRun::Step clsTableRun::FindBlock() {
  int64_t lStartKey = 0;
  int64_t lEndKey = 0;
  // Asked once: all tables of a run are searched in one report.
  const bool bFirst = context_.account.tables.size() == 1;
  if (bFirst && !PathExists(SearchedReport())) return Fatal(kTableStartNotFound, {table_.ReadStartLine});
  Step step = FindLine(table_.ReadStartLine, kTableStartNotFound, lStartKey);
  if (step == Step::Next) step = FindLine(table_.ReadEndLine, kTableEndNotFound, lEndKey);
  if (step != Step::Next) return step;
  lStart_ = lStartKey + table_.ReadStartLineOffset;
  lEnd_ = lEndKey + table_.ReadEndLineOffset;
  if (lEnd_ < lStart_) return Fatal(kTableEndInFront, {table_.ReadEndLine, table_.ReadStartLine});
  if (lStart_ >= 1 && lEnd_ >= 1) return Step::Next;
  context_.account.leftOut.push_back(
      Translate("The table starts above the first line of the report, so no row of it was written") + ": " +
      table_.ReadStartLine);
  return Step::Done;
}

const std::string& clsTableRun::SearchedReport() const {
  return context_.recipe.InputFileNameOf(context_.recipe.InputFileFirst);
}

/// The first line of the searched file that holds the key text; none is the error code.
clsTableRun::Step clsTableRun::FindLine(std::string_view sKeyText, RecipeCode code, int64_t& lLine) {
  if (const Step step = OpenReport(SearchedReport()); step != Step::Next) return step;
  lLine = pReport_->LineOf(std::string(sKeyText));
  if (IsStopped(pReport_->Reader().LastFailure())) return Step::Done;
  if (pReport_->Reader().LastFailure().Failed()) return ReadFailure(pReport_->Reader());
  if (lLine != 0) return Step::Next;
  if (bAllPeriods_ || context_.recipe.InputFileFirst == 1) CountLines();
  return Fatal(code, {sKeyText});
}

/// Opens the file, unless it is open.
clsTableRun::Step clsTableRun::OpenReport(const std::string& sPath) {
  pReport_ = &context_.Report(sPath);
  Failure failure;
  if (!pReport_->Open(failure)) {
    if (IsStopped(failure)) return Step::Done;
    ReportFileFailure(context_, failure);
    EndWalk(context_, "A report could not be read", failure.sText);
    return Step::Died;
  }
  pReport_->Reader().LeaveEventsToCaller(false);
  if (sPath == context_.recipe.InputFileNameOf(1)) context_.account.pCodePage = &pReport_->Reader().CodePage();
  return Step::Next;
}

clsTableRun::Step clsTableRun::ReadFailure(const clsLineReader& reader) {
  const Failure& failure = reader.LastFailure();
  if (failure.Failed()) {
    ReportFileFailure(context_, failure);
    EndWalk(context_, "A report could not be read", failure.sText);
  } else if (reader.RowNumber() < lStart_) {
    EndWalk(context_, "The table starts behind the end of the report", table_.ReadStartLine);
  } else {
    EndWalk(context_, "The tabs of a row make it too long", table_.ReadStartLine);
  }
  return Step::Died;
}

clsTableRun::Step clsTableRun::OpenRows() {
  lFirstSheetRow_ = context_.recipe.ExportSpecs.getWritePointer(context_.host, 1);
  if (bAllPeriods_) return periods_.Open(context_, lStart_) ? Step::Next : Step::Died;
  if (const Step step = OpenReport(context_.recipe.InputFileNameOf(1)); step != Step::Next) return step;
  clsLineReader& reader = pReport_->Reader();
  const bool bThere = pReport_->SeekLine(lStart_);
  if (IsStopped(reader.LastFailure())) return Step::Done;
  // From here on each row lets events run.
  reader.LeaveEventsToCaller(true);
  // With Unix rows there are empty ones behind the end.
  const bool bGoesOn = bThere || (context_.options.text.bUnix && !reader.LastFailure().Failed());
  return bGoesOn ? Step::Next : ReadFailure(reader);
}

clsTableRun::Step clsTableRun::ExportRows() {
  for (int64_t lLine = lStart_; lLine <= lEnd_; ++lLine) {
    if (lLine % kStatusEvery == 0) {
      context_.host.SetStatusPanel(StatusBar::Main, 3, sRowLabel_ + std::to_string(lLine));
    }
    context_.host.LetEventsRun();
    if (gbPauseRequested && PauseEndsRun(context_.host)) break;
    if (!ReadRow()) return Step::Died;
    if (lLine == lStart_) {
      if (const Step step = CheckColumns(); step != Step::Next) return step;
    }
    if (!WriteRow()) return Step::Died;
    ++lRowIndex_;
    if (lRowIndex_ % kProgressEvery == 0) {
      TellProgress(lLine);
      if (const Failure failure = target_.LastFailure(); failure.Failed()) {
        EndWalk(context_, "The report could not be written", failure.sText);
        return Step::Died;
      }
    }
    if (AtEnd()) break;
  }
  context_.recipe.ExportSpecs.setWritePointer(context_.host, 1, SheetRow(lFirstSheetRow_ + lRowIndex_));
  table_.WriteTableTopRow = SheetRow(lFirstSheetRow_);
  table_.WriteTableBottomRow = SheetRow(lFirstSheetRow_ + lRowIndex_ - 1);
  return Step::Done;
}

bool clsTableRun::ReadRow() {
  if (bAllPeriods_) return periods_.ReadRows(context_, glTabSize);
  if (context_.lineProcessor.ReadRowPeriod1Only(context_, &Reader(), glTabSize)) return true;
  ReadFailure(Reader());
  return false;
}

clsRow& clsTableRun::Row() {
  const int32_t lSlot = bAllPeriods_ ? context_.recipe.InputFileFirst : 1;
  return context_.lineProcessor.RowCollection[static_cast<size_t>(lSlot) - 1];
}

clsTableRun::Step clsTableRun::CheckColumns() {
  const auto isBad = [](const clsColumn& column) {
    return column.ReadColumnStart < 1 || column.ReadColumnEnd < column.ReadColumnStart;
  };
  auto& columns = table_.ColumnsCollection;
  const auto bad = std::find_if(columns.begin(), columns.end(), isBad);
  if (!target_.MakeSink(table_, Reader().CodePage(), sink_)) return Step::Died;
  if (bad != columns.end()) return EndAtColumn(static_cast<size_t>(bad - columns.begin()));
  fields_.emplace(context_, columns);
  if (sink_ != nullptr) return Step::Next;
  // No row of any table can be written, so the old output stays.
  const std::string sCode = std::to_string(table_.lDelimitationChar);
  context_.account.failure =
      OwnFailure(gsOutputFile, Translate("The separator is no character code from 1 to 255") + ": " + sCode);
  return Fatal(kSeparator, {sCode});
}

/// The columns before a bad one are still taken, as they come before the check of it.
clsTableRun::Step clsTableRun::EndAtColumn(size_t nBad) {
  fields_.emplace(context_, std::span(table_.ColumnsCollection).first(nBad));
  const bool bTaken = fields_->Cut(Row());
  PutBroken();
  return bTaken ? Fatal(kTableColumnPlace, {std::to_string(nBad + 1)}) : Step::Died;
}

void clsTableRun::PutBroken() {
  if (sink_ == nullptr) return;
  if (!std::exchange(bBegun_, true)) sink_->Begin(lFirstSheetRow_ + lRowIndex_, fields_->SheetColumns());
  sink_->PutBroken(fields_->Row());
}

void clsTableRun::MeasureRow(const clsRow& row) {
  const int64_t lLine = lStart_ + lRowIndex_;
  if (!row.BytesAreCharacters()) {
    measure_.Text(row.Bytes(), lLine);
    return;
  }
  constexpr unsigned char kNoBreakSpace = 0xA0;
  const clsCodePage& page = row.Page();
  const bool bBlank = page.IsSingleByte() && page.CharOf(kNoBreakSpace) == kNoBreakSpace;
  measure_.Bytes(row.Bytes(), lLine, bBlank ? static_cast<char>(kNoBreakSpace) : ' ');
}

bool clsTableRun::WriteRow() {
  clsRow& row = Row();
  MeasureRow(row);
  if (!fields_->Cut(row)) {
    PutBroken();
    return false;
  }
  if (!std::exchange(bBegun_, true)) sink_->Begin(lFirstSheetRow_ + lRowIndex_, fields_->SheetColumns());
  return sink_->PutRow(fields_->Row());
}

void clsTableRun::TellProgress(int64_t lLine) {
  context_.host.ShowProgress({gsInputFile, lLine, Reader().BytesDone(), Reader().BytesTotal()});
}

/// All lines of the report that was opened last.
void clsTableRun::CountLines() {
  if (context_.account.lLinesRead == 0) context_.account.lLinesRead = pReport_->CountLines();
}

void clsTableRun::KeepAccount() {
  TableAccount& account = Account();
  account.lRows = lRowIndex_;
  account.loss = measure_.Loss();
  account.lCellsFailed = context_.account.lCellsFailed - lCellsFailedBefore_;
  // Unix rows behind the end of the file are rows, but no lines of it.
  const int64_t lLastLine = std::min(lStart_ + lRowIndex_ - 1, Reader().RowNumber());
  if (lRowIndex_ > 0 && lLastLine >= lStart_) {
    account.lFirstLine = lStart_;
    account.lLastLine = lLastLine;
  }
  Reader().LeaveEventsToCaller(false);
  // Else at the end of the run, as the next table is mostly behind this one.
  const bool bNow = bAllPeriods_ || Reader().LastFailure().Failed();
  if (bNow && !gbAbandonOutput && !gbPauseRequested) CountLines();
}

}  // namespace quillon
