#include "clsTidyOutputs.h"

#include <algorithm>
#include <utility>

#include "clsWorkbook.h"
#include "modRecipeFailures.h"
#include "modSettling.h"

namespace quillon {

namespace {

constexpr int64_t kLookEvery = 1000;

/// "2024-12-31 23:59:00", the time only where there is one.
CalendarMoment MomentOf(std::string_view sPlain) {
  const auto number = [sPlain](size_t nFrom, size_t nCount) {
    int nValue = 0;
    for (const char ch : sPlain.substr(std::min(nFrom, sPlain.size()), nCount)) nValue = nValue * 10 + (ch - '0');
    return nValue;
  };
  return {number(0, 4), number(5, 2), number(8, 2), (number(11, 2) * 60 + number(14, 2)) * 60 + number(17, 2)};
}

/// A plain number with its point two digits further left.
std::string HundredthOf(std::string_view sPlain) {
  const bool bNegative = sPlain.starts_with('-');
  const size_t nPoint = sPlain.find('.');
  std::string sWhole(sPlain.substr(bNegative ? 1 : 0, nPoint == std::string_view::npos ? nPoint : nPoint - bNegative));
  if (sWhole.size() < 3) sWhole.insert(0, 3 - sWhole.size(), '0');
  sWhole.insert(sWhole.size() - 2, ".");
  if (nPoint != std::string_view::npos) sWhole += sPlain.substr(nPoint + 1);
  return bNegative ? "-" + sWhole : sWhole;
}

}  // namespace

clsTidyCsvOutput::clsTidyCsvOutput(RecipeContext& context, clsOutputFile& file, const CsvRules& rules,
                                   const clsCodePage& pageOfOutput)
    : context_(context), file_(file), sink_(file, rules, pageOfOutput) {}

bool clsTidyCsvOutput::Heading(const std::vector<std::string>& names) {
  fields_.assign(names.begin(), names.end());
  return PutFields();
}

bool clsTidyCsvOutput::Row(const std::vector<TidyOutCell>& cells) {
  fields_.resize(cells.size());
  for (size_t i = 0; i < cells.size(); ++i) fields_[i] = cells[i].sPlain;
  return PutFields();
}

bool clsTidyCsvOutput::PlainRow(const std::vector<TidyCell>& cells) {
  fields_.resize(cells.size());
  for (size_t i = 0; i < cells.size(); ++i) fields_[i] = cells[i].sPlain;
  return PutFields();
}

bool clsTidyCsvOutput::PutFields() {
  sink_.PutRow({fields_, &clsCodePage::Utf8()});
  if (++lRows_ % kLookEvery != 0 || !file_.LastFailure().Failed()) return true;
  return EndWalk(context_, "The report could not be written", file_.LastFailure().sText);
}

bool clsTidySheetOutput::Heading(const std::vector<std::string>& names) {
  int nColumn = nColumn_;
  for (const std::string& sName : names) {
    Failure failure;
    const SettledCell cell{SettledCell::Kind::Heading, sName, {}, {}};
    if (!context_.pWorkbook->WriteSettled(nSheet_, nRow_, nColumn++, cell, failure))
      ReportCellFailure(context_, failure);
  }
  context_.pWorkbook->SetHeadingRow(nSheet_, nRow_);
  ++nRow_;
  return true;
}

bool clsTidySheetOutput::Row(const std::vector<TidyOutCell>& cells) {
  int nColumn = nColumn_;
  for (const TidyOutCell& cell : cells) {
    Failure failure;
    if (!Put(nColumn++, cell, failure)) ReportCellFailure(context_, failure);
  }
  ++nRow_;
  return true;
}

/// A printed percent sign is shown, so the value of the cell is a hundredth.
SettledCell clsTidySheetOutput::Number(const TidyOutCell& cell) {
  if (cell.sPrinted.find('%') != std::string_view::npos) {
    sHundredth_ = HundredthOf(cell.sPlain);
    const SettledCell settled = SettledNumber(cell.sPrinted, sHundredth_, sScratch_);
    if (settled.sFormat.find('%') != std::string_view::npos) return settled;
  }
  return SettledNumber(cell.sPrinted, cell.sPlain, sScratch_);
}

bool clsTidySheetOutput::Put(int nColumn, const TidyOutCell& cell, Failure& failure) {
  if (cell.kind == TidyCellKind::Empty) return true;
  const TidyType type = cell.pTyping != nullptr ? cell.pTyping->type : TidyType::Auto;
  if (type == TidyType::Auto) return context_.pWorkbook->WriteCell(nSheet_, nRow_, nColumn, cell.sPrinted, failure);
  SettledCell settled{SettledCell::Kind::Text, cell.sPrinted, {}, {}};
  if (cell.kind == TidyCellKind::Number) settled = Number(cell);
  if (cell.kind == TidyCellKind::Date) {
    settled = SettledDate(cell.sPrinted, MomentOf(cell.sPlain), cell.pTyping->sDateForm, sScratch_);
  }
  return context_.pWorkbook->WriteSettled(nSheet_, nRow_, nColumn, settled, failure);
}

}  // namespace quillon
