#include "modNamesByKind.h"

#include <algorithm>
#include <set>

#include "modRowKinds.h"

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

std::string KindOf(const TidyPart& part, size_t nColumn) {
  const TidyType type = part.TypeOf(nColumn).type;
  return type == TidyType::Date ? "Date" : type == TidyType::Number ? "Number" : "Text";
}

/// Nothing but strokes between two values: a column that nobody wants named.
bool HoldsStrokes(const clsReportSample& report, const FoundTable& table, size_t nColumn) {
  const auto& places = table.tidy.row.cut.places;
  if (places.size() != 1 || nColumn >= places.front().size() || places.front()[nColumn].nEnd == 0) return false;
  const auto nFirst = static_cast<size_t>(places.front()[nColumn].nStart - 1);
  const size_t nWidth = static_cast<size_t>(places.front()[nColumn].nEnd) - nFirst;
  return std::all_of(table.rows.begin(), table.rows.end(), [&](size_t n) {
    const std::u32string_view sLine = report.Lines()[n].sText;
    return nFirst >= sLine.size() || IsBlankMark(TrimPlaces(sLine.substr(nFirst, nWidth)));
  });
}

bool IsTimeColumn(const clsReportSample& report, const FoundTable& table, size_t nColumn) {
  const auto& places = table.tidy.row.cut.places;
  return !places.empty() && nColumn < places.front().size() && HoldsTimes(report, table.rows, places.front()[nColumn]);
}

}  // namespace

std::vector<std::vector<std::string>> NamesByKind(const clsReportSample& report, const FoundTable& table) {
  std::vector<const TidyPart*> parts{&table.tidy.row};
  for (const TidyFurtherLine& line : table.tidy.lines) parts.push_back(&line.part);
  std::set<std::string> known(table.tidy.levelNames.begin(), table.tidy.levelNames.end());
  for (const TidyPart* part : parts) known.insert(part->names.begin(), part->names.end());
  for (const TidyPart& heading : table.tidy.headings) known.insert(heading.names.begin(), heading.names.end());
  std::vector<std::vector<std::string>> all;
  for (const TidyPart* part : parts) {
    std::vector<std::string>& names = all.emplace_back(part->names);
    names.resize(std::max({names.size(), part->ColumnCount(), part->types.size()}));
    for (size_t i = 0; i < names.size(); ++i) {
      if (!names[i].empty() || part->TypeOf(i).type == TidyType::Skip) continue;
      if (part == parts.front() && HoldsStrokes(report, table, i)) continue;
      const bool bTime = part == parts.front() && KindOf(*part, i) == "Text" && IsTimeColumn(report, table, i);
      const std::string sKind = bTime ? "Time" : KindOf(*part, i);
      names[i] = sKind;
      for (size_t n = 2; !known.insert(names[i]).second; ++n) names[i] = sKind + " " + std::to_string(n);
    }
  }
  return all;
}

}  // namespace quillon
