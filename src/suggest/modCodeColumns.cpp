#include "modCodeColumns.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

/// NO, Nr., Acct, ZIP: what codes are called, in small letters.
bool IsNameOfCodes(std::string_view sName) {
  constexpr std::array<std::string_view, 25> kWords{
      "no",  "nr", "num", "number", "nummer", "code", "acct", "account",  "zip", "plz",  "phone", "tel", "telefon",
      "fax", "id", "key", "konto",  "kto",    "emp",  "kst",  "employee", "ref", "dept", "sku",   "blz"};
  std::string sWord;
  for (size_t i = 0; i <= sName.size(); ++i) {
    const char ch = i < sName.size() ? sName[i] : ' ';
    const bool bLetter = (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
    if (bLetter) sWord += static_cast<char>(ch | 0x20);
    if (bLetter) continue;
    if (std::find(kWords.begin(), kWords.end(), sWord) != kWords.end() || (ch == '#' && sWord.empty())) return true;
    sWord.clear();
  }
  return false;
}

bool IsYear(std::u32string_view sCell) {
  return sCell.size() == 4 && (sCell.starts_with(U"19") || sCell.starts_with(U"20"));
}

/// The width of all cells, which have digits at the same places; 0 if they differ or one lacks.
size_t CommonWidth(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows,
                   size_t nColumn, bool& bPlain) {
  constexpr size_t kFewest = 5;
  if (rows.size() < kFewest) return 0;
  std::u32string first;
  bool bYears = true;
  std::vector<std::u32string_view> cells;
  for (const size_t n : rows) {
    shape.Cut(report.Lines()[n].sText, cells);
    std::u32string_view sCell = cells[nColumn];
    while (sCell.ends_with(U'*')) sCell.remove_suffix(1);  // a mark beside some of them
    if (first.empty()) first = sCell;
    if (sCell.empty() || sCell.size() != first.size()) return 0;
    for (size_t i = 0; i < sCell.size(); ++i) {
      const bool bDigit = IsDigitPlace(sCell[i]);
      if (bDigit != IsDigitPlace(first[i]) || (!bDigit && sCell[i] != first[i])) return 0;
    }
    bYears = bYears && IsYear(sCell);
  }
  bPlain = std::all_of(first.begin(), first.end(), IsDigitPlace);
  return bYears ? 0 : first.size();
}

}  // namespace

void KeepCodes(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows,
               TidyPart& part) {
  constexpr size_t kShortest = 3;
  constexpr size_t kShortestFirst = 4;
  constexpr size_t kSureRows = 8;
  for (size_t i = 0; i < part.types.size() && i < shape.Columns().size(); ++i) {
    if (part.types[i].type != TidyType::Number) continue;
    bool bPlain = false;
    const size_t nWidth = CommonWidth(report, shape, rows, i, bPlain);
    const bool bFirst = i == 0 && nWidth >= kShortestFirst && rows.size() >= kSureRows;
    const bool bCalled = i < part.names.size() && nWidth >= kShortest && IsNameOfCodes(part.names[i]);
    // 238.406 may be a measure, but as thousands it would vary in width.
    if ((bFirst || bCalled) && (bPlain || part.types[i].bComma)) part.types[i] = {TidyType::Text, false, 0, {}};
  }
}

}  // namespace quillon
