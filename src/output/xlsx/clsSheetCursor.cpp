#include "clsSheetCursor.h"

#include <algorithm>
#include <charconv>

#include "modColumnLetters.h"
#include "modFormula.h"

namespace quillon {

std::optional<uint32_t> ParseIndex(std::string_view sText) {
  uint32_t nValue = 0;
  const auto [pEnd, error] = std::from_chars(sText.data(), sText.data() + sText.size(), nValue);
  return error == std::errc() && pEnd == sText.data() + sText.size() ? std::optional(nValue) : std::nullopt;
}

namespace {

/// The form in which all programs write it: letters and a number without leading zeros.
std::optional<CellPlace> PlainCellPlace(std::string_view sText) {
  constexpr size_t kMostLetters = 3, kMostDigits = 7;
  CellPlace place;
  size_t i = 0;
  for (; i < sText.size() && i < kMostLetters && sText[i] >= 'A' && sText[i] <= 'Z'; ++i)
    place.nColumn = place.nColumn * 26 + (sText[i] - 'A' + 1);
  if (i == 0 || i == sText.size() || sText.size() - i > kMostDigits || sText[i] == '0') return std::nullopt;
  for (; i < sText.size() && sText[i] >= '0' && sText[i] <= '9'; ++i) place.nRow = place.nRow * 10 + (sText[i] - '0');
  if (i < sText.size() || place.nRow > kMaxSheetRows || place.nColumn > kMaxSheetColumns) return std::nullopt;
  return place;
}

}  // namespace

std::optional<CellPlace> ParseCellPlace(std::string_view sText) {
  if (const auto place = PlainCellPlace(sText)) return place;
  const auto corner = ParseFormulaCorner(sText);
  if (!corner || corner->nRow == 0 || corner->nColumn == 0) return std::nullopt;
  return CellPlace{corner->nRow, corner->nColumn};
}

std::optional<CellRange> ParseCellRange(std::string_view sText) {
  const size_t nColon = sText.find(':');
  const auto first = ParseCellPlace(sText.substr(0, nColon));
  const auto second = nColon == std::string_view::npos ? first : ParseCellPlace(sText.substr(nColon + 1));
  if (!first || !second) return std::nullopt;
  return CellRange{std::min(first->nRow, second->nRow), std::min(first->nColumn, second->nColumn),
                   std::max(first->nRow, second->nRow), std::max(first->nColumn, second->nColumn)};
}

std::string CellRangeText(const CellRange& range) {
  std::string sText = ColumnLetters(static_cast<int>(range.nLeft)) + std::to_string(range.nTop);
  if (range.nTop != range.nBottom || range.nLeft != range.nRight)
    sText += ":" + ColumnLetters(static_cast<int>(range.nRight)) + std::to_string(range.nBottom);
  return sText;
}

clsSheetCursor::Event clsSheetCursor::Look(const clsXmlScanner& scanner) {
  const int nDepth = scanner.Depth();
  if (nDepth < 2 || nDepth > 4) return Event::None;
  if (scanner.Token() == XmlToken::EndTag) {
    if (nDepth == 2 && bInData_) {
      bInData_ = false;
      return Event::SheetDataEnd;
    }
    if (nDepth == 3 && bInRow_) {
      bInRow_ = false;
      return Event::RowEnd;
    }
    return Event::None;
  }
  if (!scanner.IsOpening()) return Event::None;
  if (nDepth == 2 && scanner.IsMain("sheetData")) {
    if (bSeenData_) return Event::Damaged;
    bSeenData_ = true;
    bInData_ = scanner.Token() == XmlToken::StartTag;
    return Event::SheetData;
  }
  if (nDepth == 3 && bInData_ && scanner.IsMain("row")) return LookAtRow(scanner);
  if (nDepth != 4 || !bInRow_) return Event::None;
  if (scanner.IsMain("c")) return LookAtCell(scanner);
  // What else a row holds stands behind its cells.
  nColumn_ = kMaxSheetColumns;
  return Event::None;
}

clsSheetCursor::Event clsSheetCursor::LookAtRow(const clsXmlScanner& scanner) {
  const auto sNumber = scanner.Attribute("r");
  const int64_t nRow = sNumber ? ParseIndex(*sNumber).value_or(0) : nRow_ + 1;
  if (nRow <= nRow_ || nRow > kMaxSheetRows) return Event::Damaged;
  nRow_ = nRow;
  nColumn_ = 0;
  bInRow_ = scanner.Token() == XmlToken::StartTag;
  return Event::Row;
}

clsSheetCursor::Event clsSheetCursor::LookAtCell(const clsXmlScanner& scanner) {
  int nColumn = nColumn_ + 1;
  if (const auto sPlace = scanner.Attribute("r")) {
    const auto place = ParseCellPlace(*sPlace);
    if (!place || place->nRow != nRow_) return Event::Damaged;
    nColumn = place->nColumn;
  }
  if (nColumn <= nColumn_ || nColumn > kMaxSheetColumns) return Event::Damaged;
  nColumn_ = nColumn;
  nStyle_ = ParseIndex(scanner.Attribute("s").value_or("0")).value_or(0);
  return Event::Cell;
}

}  // namespace quillon
