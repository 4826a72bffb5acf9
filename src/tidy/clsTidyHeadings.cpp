#include "clsTidyHeadings.h"

#include <algorithm>

#include "clsTidyMatcher.h"
#include "modTidyValues.h"

namespace quillon {

TidyCell TypeTidyCell(std::string_view sPrinted, const TidyTyping& typing, const std::vector<std::string>& blanks,
                      std::string& sScratch) {
  TidyCell cell{TidyCellKind::Text, sPrinted, sPrinted, {}};
  if (sPrinted.empty() || IsTidyBlank(sPrinted, blanks)) return {TidyCellKind::Empty, sPrinted, {}, {}};
  if (typing.type == TidyType::Number) {
    const bool bNumber = ReadTidyNumber(sPrinted, typing, &sScratch, cell.number);
    cell.kind = bNumber ? TidyCellKind::Number : TidyCellKind::Misfit;
  } else if (typing.type == TidyType::Date) {
    cell.kind = ReadTidyDate(sPrinted, typing.sDateForm, sScratch) ? TidyCellKind::Date : TidyCellKind::Misfit;
  } else {
    return cell;
  }
  if (cell.kind != TidyCellKind::Misfit) cell.sPlain = sScratch;
  return cell;
}

clsTidyHeadings::clsTidyHeadings(const std::vector<TidyPart>& parts) : found_(parts.size()) {
  headings_.reserve(parts.size());
  for (const TidyPart& part : parts) headings_.emplace_back(part);
}

bool clsTidyHeadings::Reads(const clsTidyLine& line) {
  nFirstChange_ = kNone;
  bool bFound = false;
  for (size_t i = 0; i < headings_.size(); ++i) {
    Heading& heading = headings_[i];
    found_[i] = heading.reader.Reads(line) && (heading.reader.Part().texts.empty() || heading.reader.HasValue());
    bFound = bFound || found_[i];
    if (found_[i] && nFirstChange_ == kNone && IsChange(heading)) nFirstChange_ = i;
  }
  return bFound;
}

bool clsTidyHeadings::IsChange(const Heading& heading) const {
  const auto& cells = heading.reader.Cells();
  return !std::equal(cells.begin(), cells.end(), heading.texts.begin(), heading.texts.end());
}

void clsTidyHeadings::Set(Heading& heading, const std::vector<std::string_view>& values) {
  const TidyPart& part = heading.reader.Part();
  for (TidyColumn column = 0; column < heading.texts.size(); ++column) {
    heading.texts[column].assign(column < values.size() ? values[column] : std::string_view());
    heading.cells[column] =
        TypeTidyCell(heading.texts[column], part.TypeOf(column), part.blanks, heading.plains[column]);
  }
}

void clsTidyHeadings::Apply() {
  for (size_t i = nFirstChange_; i < headings_.size(); ++i) {
    static const std::vector<std::string_view> kNoValues;
    Set(headings_[i], found_[i] ? headings_[i].reader.Cells() : kNoValues);
  }
}

}  // namespace quillon
