#include "modDigitSplits.h"

#include <algorithm>
#include <set>

#include "modCellKinds.h"

namespace quillon {

namespace {

constexpr size_t kDate = 8;

/// How many digits all rows have from lFirst on.
size_t CommonDigits(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst, int32_t lLast) {
  auto nDigits = static_cast<size_t>(lLast - lFirst) + 1;
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    size_t nHere = 0;
    while (nHere < nDigits && static_cast<size_t>(lFirst) + nHere < sText.size() &&
           IsDigitPlace(sText[static_cast<size_t>(lFirst) + nHere])) {
      ++nHere;
    }
    nDigits = nHere;
  }
  return nDigits;
}

bool AreDates(const clsReportSample& report, std::span<const size_t> rows, size_t nFrom) {
  constexpr size_t kFewest = 3;
  clsDateForms forms;
  std::set<std::u32string_view> values;
  for (const size_t n : rows) {
    const std::u32string_view sDate = report.Lines()[n].sText.substr(nFrom, kDate);
    forms.Add(sDate);
    if (forms.Form().empty()) return false;
    values.insert(sDate);
  }
  return values.size() >= kFewest;
}

}  // namespace

std::optional<TokenSplit> SplitAtPlainDate(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                           int32_t lLast) {
  constexpr size_t kFewestRows = 8;
  if (rows.size() < kFewestRows || static_cast<size_t>(lLast - lFirst) < kDate) return std::nullopt;
  const size_t nDigits = CommonDigits(report, rows, lFirst, lLast);
  for (size_t n = 0; n + kDate <= nDigits; ++n) {
    if (!AreDates(report, rows, static_cast<size_t>(lFirst) + n)) continue;
    const int32_t lBehind = lFirst + static_cast<int32_t>(n == 0 ? kDate : n);
    return TokenSplit{lBehind - 1, lBehind};
  }
  return std::nullopt;
}

}  // namespace quillon
