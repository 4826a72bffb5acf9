#include "clsCellDoubts.h"

#include <fmt/format.h>

#include <algorithm>

#include "modNumbers.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr int64_t kLooked = 20000;
constexpr size_t kFewestDigits = 3;

bool HasDigit(std::string_view sText) {
  return std::any_of(sText.begin(), sText.end(), IsAsciiDigit);
}

bool IsOfDigits(std::string_view sText) {
  return std::all_of(sText.begin(), sText.end(), IsAsciiDigit);
}

/// Figures, signs and marks without any letter or blank between them.
bool IsLikeNumber(std::string_view sText) {
  constexpr std::string_view kMarks = "+-.,()$%*";
  return HasDigit(sText) && std::all_of(sText.begin(), sText.end(), [&](char ch) {
           return IsAsciiDigit(ch) || kMarks.find(ch) != std::string_view::npos;
         });
}

/// "copper-44.125,039": a word with an amount directly behind it.
bool EndsInAmount(std::string_view sText) {
  const size_t nFrom = sText.find_last_not_of("0123456789.,-+") + 1;
  if (nFrom == 0 || nFrom >= sText.size() || sText[nFrom - 1] == ' ') return false;
  const std::string_view sEnd = sText.substr(nFrom);
  const size_t nPoint = sEnd.find_first_of(".,");
  return nPoint != std::string_view::npos && nPoint > 0 && IsAsciiDigit(sEnd.back()) && IsAsciiDigit(sEnd[nPoint - 1]);
}

}  // namespace

void clsCellDoubts::Some::Add(std::string_view sCell, int64_t lRow) {
  if (lCells++ > 0) return;
  lLine = lRow;
  sFirst = sCell;
}

void clsCellDoubts::TableStarts(const std::vector<TidyColumnInfo>& columns) {
  for (const TidyColumnInfo& info : columns) {
    Column& column = columns_.emplace_back();
    column.sName = info.sName;
    column.type = info.typing.type;
    column.bOfRow = info.source == TidySource::Row;
  }
}

void clsCellDoubts::Row(const TidyRecord& row) {
  if (++lRows_ > kLooked) return;
  const size_t nCells = std::min(columns_.size(), row.cells.size());
  for (size_t i = 0; i < nCells; ++i) {
    if (row.cells[i].kind == TidyCellKind::Empty) continue;
    LookAt(columns_[i], row.cells[i], row.lLine);
    const bool bRunOver = i + 1 < nCells && columns_[i].bOfRow && columns_[i].type == TidyType::Text &&
                          columns_[i + 1].type == TidyType::Number && row.cells[i + 1].kind == TidyCellKind::Empty &&
                          EndsInAmount(row.cells[i].sPrinted);
    if (bRunOver) columns_[i].runOver.Add(row.cells[i].sPrinted, row.lLine);
  }
}

void clsCellDoubts::LookAt(Column& column, const TidyCell& cell, int64_t lLine) {
  const std::string_view sCell = cell.sPrinted;
  if (cell.kind == TidyCellKind::Number) LookAtDigits(column, sCell);
  if (!column.bOfRow || sCell.empty()) return;
  ++column.lFilled;
  if (column.type == TidyType::Text) {
    bZeros_ = bZeros_ || (sCell.size() >= kFewestDigits && sCell.front() == '0' && IsOfDigits(sCell));
    if (sCell.find("  ") != std::string_view::npos) column.divided.Add(sCell, lLine);
  } else if (column.type == TidyType::Auto) {
    if (IsLikeNumber(sCell)) {
      ++column.lNumbers;
      bDecimals_ = bDecimals_ || sCell.find_first_of(".,") != std::string_view::npos;
    } else if (HasDigit(sCell) && sCell.find(' ') != std::string_view::npos) {
      column.mixed.Add(sCell, lLine);
    }
  }
}

void clsCellDoubts::LookAtDigits(Column& column, std::string_view sCell) {
  bDecimals_ = bDecimals_ || sCell.find_first_of(".,") != std::string_view::npos;
  const size_t nDigits = IsOfDigits(sCell) ? sCell.size() : 0;
  column.bUneven = column.bUneven || nDigits <= kFewestDigits || (column.nDigits > 0 && column.nDigits != nDigits);
  column.nDigits = nDigits;
}

void clsCellDoubts::Line(std::string_view sLine) {
  nShortest_ = nLongest_ == 0 ? sLine.size() : std::min(nShortest_, sLine.size());
  nLongest_ = std::max(nLongest_, sLine.size());
}

/// Fields of one width each, and no separator printed in any of their numbers.
bool clsCellDoubts::IsWithoutSeparators() const {
  const bool bNamed =
      std::any_of(columns_.begin(), columns_.end(), [](const Column& column) { return !column.sName.empty(); });
  if (columns_.empty() || bNamed || bDecimals_ || nShortest_ != nLongest_) return false;
  return bZeros_ || std::any_of(columns_.begin() + 1, columns_.end(), [](const Column& column) {
           return column.type == TidyType::Number && column.nDigits > 0 && !column.bUneven;
         });
}

std::vector<std::string> clsCellDoubts::Doubts() const {
  std::vector<std::string> doubts;
  if (IsWithoutSeparators()) {
    doubts.push_back(
        "fixed columns without names: where digits are parted, and decimals that aren't printed, can't be told");
  }
  constexpr int64_t kOneIn = 8;
  for (const Column& column : columns_) {
    if (column.divided.lCells >= 2 && column.divided.lCells * kOneIn >= column.lFilled)
      doubts.push_back(fmt::format("a column may be two: {}", column.divided.sFirst));
    if (column.mixed.lCells > 0 && column.mixed.lCells < column.lNumbers) {
      doubts.push_back(fmt::format("{} of a column of numbers with other texts, the first on line {}: {}",
                                   CountedText(column.mixed.lCells, "value", "values"), column.mixed.lLine,
                                   column.mixed.sFirst));
    }
    if (column.runOver.lCells > 0) {
      doubts.push_back(fmt::format("{} may run into an empty number column, the first on line {}: {}",
                                   CountedText(column.runOver.lCells, "text", "texts"), column.runOver.lLine,
                                   column.runOver.sFirst));
    }
  }
  return doubts;
}

}  // namespace quillon
