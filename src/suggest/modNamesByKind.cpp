#include "modNamesByKind.h"

#include <algorithm>
#include <set>

namespace quillon {

namespace {

bool IsTime(std::u32string_view sText) {
  constexpr size_t kShortest = 4;
  const bool bForm =
      std::all_of(sText.begin(), sText.end(), [](char32_t ch) { return IsDigitPlace(ch) || ch == U':'; });
  return bForm && sText.size() >= kShortest && IsDigitPlace(sText.front()) && sText.find(U':') != sText.npos;
}

/// Whether the first rows have times at the place, with AM or PM perhaps.
bool HoldsTimes(const clsReportSample& report, const std::vector<size_t>& rows, const TidyPlace& place) {
  constexpr size_t kLook = 20;
  size_t nTimes = 0;
  size_t nSeen = 0;
  for (size_t i = 0; i < std::min(rows.size(), kLook); ++i) {
    const std::u32string_view sLine = report.Lines()[rows[i]].sText;
    const auto nFirst = static_cast<size_t>(place.nStart - 1);
    if (place.nEnd == 0 || nFirst >= sLine.size()) continue;
    std::u32string_view sCell = TrimPlaces(sLine.substr(nFirst, static_cast<size_t>(place.nEnd) - nFirst));
    if (sCell.ends_with(U" AM") || sCell.ends_with(U" PM")) sCell.remove_suffix(3);
    nSeen += sCell.empty() ? 0U : 1U;
    nTimes += IsTime(sCell) ? 1U : 0U;
  }
  return nTimes > 0 && nTimes == nSeen;
}

std::string KindOf(const clsReportSample& report, const FoundTable& table, size_t nColumn) {
  const TidyPart& row = table.tidy.row;
  const TidyType type = row.TypeOf(nColumn).type;
  if (type == TidyType::Date) return "Date";
  if (type == TidyType::Number) return "Number";
  const bool bPlaces = !row.cut.places.empty() && nColumn < row.cut.places.front().size();
  return bPlaces && HoldsTimes(report, table.rows, row.cut.places.front()[nColumn]) ? "Time" : "Text";
}

}  // namespace

std::vector<std::string> NamesByKind(const clsReportSample& report, const FoundTable& table) {
  const TidyPart& row = table.tidy.row;
  std::vector<std::string> names = row.names;
  names.resize(std::max({names.size(), row.ColumnCount(), row.types.size()}));
  std::set<std::string> known(names.begin(), names.end());
  known.insert(table.tidy.levelNames.begin(), table.tidy.levelNames.end());
  for (const TidyPart& heading : table.tidy.headings) known.insert(heading.names.begin(), heading.names.end());
  for (size_t i = 0; i < names.size(); ++i) {
    if (!names[i].empty() || row.TypeOf(i).type == TidyType::Skip) continue;
    const std::string sKind = KindOf(report, table, i);
    names[i] = sKind;
    for (size_t n = 2; !known.insert(names[i]).second; ++n) names[i] = sKind + " " + std::to_string(n);
  }
  return names;
}

}  // namespace quillon
