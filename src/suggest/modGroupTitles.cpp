#include "modGroupTitles.h"

#include <algorithm>
#include <map>
#include <set>

namespace quillon {

namespace {

constexpr size_t kNear = 12;  ///< Lines between a title and the first row of its group

std::u32string_view TextOf(const SampleLine& line, const LineMark& mark) {
  return line.sText.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1);
}

/// How many of these lines have a row near below them, and how many rows that are.
struct Followed {
  size_t nLines = 0, nRows = 0;
};
Followed CountFollowed(std::span<const size_t> titles, std::span<const size_t> rows, size_t nNear) {
  Followed followed;
  std::set<size_t> below;
  for (const size_t n : titles) {
    const auto it = std::lower_bound(rows.begin(), rows.end(), n);
    if (it == rows.end() || *it - n > nNear) continue;
    ++followed.nLines;
    below.insert(*it);
  }
  followed.nRows = below.size();
  return followed;
}

/// A number and a name, or the like: no amount among them, and rows directly below each.
bool AreBareTitles(const clsReportSample& report, std::span<const size_t> lines, std::span<const size_t> rows) {
  constexpr size_t kFewest = 3;
  constexpr size_t kDirectly = 2;
  constexpr size_t kLongest = 8;
  if (lines.size() < kFewest || lines.size() * 6 > rows.size() * 5) return false;
  for (const size_t n : lines) {
    const SampleLine& line = report.Lines()[n];
    if (line.marks.size() > kLongest) return false;
    for (const LineMark& mark : line.marks) {
      const std::u32string_view sMark = TextOf(line, mark);
      if (mark.kind == MarkKind::Number && sMark.find_first_of(U".,") != std::u32string_view::npos) return false;
    }
  }
  const Followed followed = CountFollowed(lines, rows, kDirectly);
  return followed.nLines * 10 >= lines.size() * 9 && followed.nRows == followed.nLines;
}

}  // namespace

bool AreTitlesOfTables(const clsReportSample& report, std::span<const size_t> lines, std::span<const size_t> rows) {
  constexpr size_t kFewest = 2;
  constexpr size_t kSeldom = 2;
  if (lines.size() < kFewest || lines.size() * kSeldom > rows.size()) return false;
  const auto wordOf = [&](size_t n) { return TextOf(report.Lines()[n], report.Lines()[n].marks.front()); };
  const std::u32string_view sWord = wordOf(lines.front());
  if (std::any_of(sWord.begin(), sWord.end(), IsDigitPlace)) return false;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (wordOf(lines[i]) != sWord || (i > 0 && lines[i] == lines[i - 1] + 1)) return false;
  }
  const Followed followed = CountFollowed(lines, rows, kNear);
  return followed.nLines == lines.size() && followed.nRows == lines.size();
}

bool AreTitlesOf(const clsReportSample& report, std::span<const size_t> lines, std::span<const size_t> rows) {
  std::map<std::u32string_view, std::vector<size_t>> byWord;
  for (const size_t n : lines) {
    const SampleLine& line = report.Lines()[n];
    byWord[TextOf(line, line.marks.front())].push_back(n);
  }
  const auto itMost = std::max_element(byWord.begin(), byWord.end(),
                                       [](const auto& a, const auto& b) { return a.second.size() < b.second.size(); });
  const std::vector<size_t>& titles = itMost->second;
  const bool bMost = titles.size() * 2 >= lines.size() && (titles.size() > 1 || lines.size() == 1);
  if (lines.front() > rows.front()) return false;
  if (!bMost || std::any_of(itMost->first.begin(), itMost->first.end(), IsDigitPlace))
    return AreBareTitles(report, lines, rows);
  const Followed followed = CountFollowed(titles, rows, kNear);
  const bool bSeveralRows = followed.nRows * 3 <= rows.size() * 2;
  return titles.front() < rows.front() && bSeveralRows && followed.nLines * 4 >= titles.size() * 3 &&
         followed.nRows * 3 >= titles.size();
}

namespace {

bool HasDecimals(const SampleLine& line) {
  return std::any_of(line.marks.begin(), line.marks.end(),
                     [](const LineMark& mark) { return mark.kind == MarkKind::Number && mark.lPoint < mark.lFigure; });
}

}  // namespace

std::vector<size_t> TitlesAmong(const clsReportSample& report, std::span<const size_t> lines) {
  std::vector<size_t> titles;
  size_t nInFront = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (HasDecimals(report.Lines()[lines[i]])) continue;
    titles.push_back(lines[i]);
    const bool bBehindRow = i > 0 && lines[i - 1] + 1 == lines[i] && HasDecimals(report.Lines()[lines[i - 1]]);
    const bool bAboveRow = i + 1 < lines.size() && HasDecimals(report.Lines()[lines[i + 1]]);
    nInFront += !bBehindRow && bAboveRow ? 1U : 0U;
  }
  if (titles.size() < 2 || titles.size() * 2 > lines.size() || nInFront * 10 < titles.size() * 9) return {};
  return titles;
}

}  // namespace quillon
