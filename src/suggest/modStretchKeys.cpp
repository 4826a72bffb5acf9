#include "modStretchKeys.h"

#include <algorithm>
#include <map>
#include <optional>

#include "modRowKinds.h"

namespace quillon {

namespace {

/// The first place from line nFrom on where the text stands; as many as there are lines if nowhere.
size_t FirstWith(const clsReportSample& report, std::u32string_view sText, size_t nFrom) {
  for (size_t n = nFrom; n < report.Lines().size(); ++n) {
    if (report.Lines()[n].sText.find(sText) != std::u32string_view::npos) return n;
  }
  return report.Lines().size();
}

constexpr size_t kFewestLetters = 4;
constexpr size_t kFewestOfNames = 3;  ///< Names of columns are short

bool Serves(std::u32string_view sText, size_t nFewest) {
  constexpr size_t kMost = 60;
  const auto nLetters = static_cast<size_t>(std::count_if(sText.begin(), sText.end(), IsLetterPlace));
  return nLetters >= nFewest && sText.size() <= kMost && std::none_of(sText.begin(), sText.end(), IsDigitPlace) &&
         sText.find_first_of(U"[];=") == std::u32string_view::npos;
}

/// Stretches of a line between gaps, the longest first.
std::vector<std::u32string_view> TextsOf(const SampleLine& line, size_t nFewest = kFewestLetters) {
  std::vector<std::u32string_view> texts{TrimPlaces(line.sText)};
  size_t nFrom = 0;
  for (size_t i = 0; i < line.marks.size(); ++i) {
    const bool bEnds = i + 1 == line.marks.size() || line.marks[i + 1].lStart - line.marks[i].lEnd > 2;
    if (!bEnds) continue;
    const auto nStart = static_cast<size_t>(line.marks[nFrom].lStart);
    texts.push_back(line.sText.substr(nStart, static_cast<size_t>(line.marks[i].lEnd) + 1 - nStart));
    nFrom = i + 1;
  }
  std::erase_if(texts, [&](std::u32string_view sText) { return !Serves(sText, nFewest); });
  std::stable_sort(texts.begin(), texts.end(),
                   [](std::u32string_view a, std::u32string_view b) { return a.size() > b.size(); });
  return texts;
}

/// A text of this line that stands on no line from nFrom up to it.
std::optional<std::u32string_view> KeyOf(const clsReportSample& report, size_t nLine, size_t nFrom, bool bNames) {
  for (const std::u32string_view sText : TextsOf(report.Lines()[nLine], bNames ? kFewestOfNames : kFewestLetters)) {
    if (FirstWith(report, sText, nFrom) == nLine) return sText;
  }
  return std::nullopt;
}

/// The line with the start text, near above the first row; the names of its columns come first. A value of a row never
/// is one: it changes from month to month.
std::optional<std::pair<std::u32string_view, size_t>> StartKey(const clsReportSample& report, const LineOwners& owners,
                                                               size_t nFirst, const std::vector<size_t>& headingLines) {
  for (auto it = headingLines.rbegin(); it != headingLines.rend(); ++it) {
    if (const auto sText = KeyOf(report, *it, 0, true)) return std::pair(*sText, *it);
  }
  constexpr size_t kNear = 12;
  for (size_t n = nFirst; n > 0 && nFirst - n < kNear; --n) {
    if (owners.tables[n - 1] != 0) continue;
    if (const auto sText = KeyOf(report, n - 1, 0, false)) return std::pair(*sText, n - 1);
  }
  return std::nullopt;
}

/// The line with the end text, near below the last row: names of columns, else a text, a total as the last choice.
std::optional<std::u32string_view> EndKey(const clsReportSample& report, const LineOwners& owners, size_t nLast,
                                          size_t nStart) {
  constexpr size_t kNear = 12;
  const size_t nEnd = std::min(nLast + kNear + 1, report.Lines().size());
  for (const int nChoice : {0, 1, 2}) {
    for (size_t n = nLast + 1; n < nEnd; ++n) {
      const bool bTotal = SaysTotal(report.Lines()[n].sText);
      const int nOwn = owners.names[n] ? 0 : bTotal ? 2 : 1;
      if (owners.tables[n] != 0 || nOwn != nChoice) continue;
      if (const auto sText = KeyOf(report, n, nStart, nChoice == 0)) return sText;
    }
  }
  return std::nullopt;
}

}  // namespace

void DropTotals(const clsReportSample& report, const std::vector<size_t>& wrong, const std::vector<size_t>& rows,
                TidyTable& table) {
  constexpr size_t kMost = 8;
  for (const size_t n : wrong) {
    const SampleLine& line = report.Lines()[n];
    if (!SaysTotal(line.sText) || table.drops.size() >= kMost) continue;
    for (const LineMark& mark : line.marks) {
      const std::u32string_view sWord =
          line.sText.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1);
      if (!SaysTotal(sWord)) continue;
      const bool bInRows = std::any_of(rows.begin(), rows.end(), [&](size_t nRow) {
        return report.Lines()[nRow].sText.find(sWord) != std::u32string_view::npos;
      });
      const std::string sText = Utf8Of(sWord);
      if (!bInRows && std::find(table.drops.begin(), table.drops.end(), sText) == table.drops.end()) {
        table.drops.push_back(sText);
      }
    }
  }
}

void DropBalances(const clsReportSample& report, const LineOwners& owners, const std::vector<size_t>& rows,
                  TidyTable& table) {
  constexpr size_t kMost = 8;
  constexpr size_t kBehind = 3;
  const std::vector<TidyPlace>& places = table.row.cut.places.front();
  const auto isAmount = [&](const LineMark& mark) {
    for (size_t i = 0; i < places.size(); ++i) {
      if (table.row.TypeOf(i).type != TidyType::Number || mark.kind != MarkKind::Number) continue;
      const int32_t lPlace = mark.lFigure + 1;
      if (lPlace >= places[i].nStart && (places[i].nEnd == 0 || lPlace <= places[i].nEnd)) return true;
    }
    return false;
  };
  std::ptrdiff_t nNumbers = 0;
  for (size_t i = 0; i < places.size(); ++i) nNumbers += table.row.TypeOf(i).type == TidyType::Number ? 1 : 0;
  const size_t nEnd = std::min(rows.back() + kBehind + 1, report.Lines().size());
  std::map<std::u32string_view, size_t> counts;
  for (size_t n = rows.front() + 1; n < nEnd; ++n) {
    const SampleLine& line = report.Lines()[n];
    if (line.IsBlank() || line.bDrawn || owners.tables[n] != 0 || owners.names[n]) continue;
    // Lines with most of a row's figures are rows that were missed, not balances.
    const auto nAmounts = std::count_if(line.marks.begin(), line.marks.end(), isAmount);
    if (nAmounts == 0 || (nAmounts * 2 > nNumbers && !owners.totals[n])) continue;
    for (const std::u32string_view sText : TextsOf(line)) {
      const bool bInRows = std::any_of(rows.begin(), rows.end(), [&](size_t nRow) {
        return report.Lines()[nRow].sText.find(sText) != std::u32string_view::npos;
      });
      if (bInRows) continue;
      ++counts[sText];
      break;
    }
  }
  for (const auto& [sText, nCount] : counts) {
    if (nCount > 1 && table.drops.size() < kMost) table.drops.push_back(Utf8Of(sText));
  }
}

void SetStretch(const clsReportSample& report, const LineOwners& owners, const std::vector<size_t>& wrong,
                const std::vector<size_t>& rows, const std::vector<size_t>& headingLines, TidyTable& table) {
  const bool bBefore = !wrong.empty() && wrong.front() < rows.front();
  const bool bBehind = !wrong.empty() && wrong.back() > rows.back();
  size_t nStart = 0;
  if (bBefore) {
    const auto key = StartKey(report, owners, rows.front(), headingLines);
    if (!key) return;
    table.sStartLine = Utf8Of(key->first);
    table.lStartOffset = 1;
    nStart = key->second + 1;
  }
  if (!bBehind) return;
  if (const auto sText = EndKey(report, owners, rows.back(), nStart)) {
    table.sEndLine = Utf8Of(*sText);
    table.lEndOffset = -1;
  }
}

}  // namespace quillon
