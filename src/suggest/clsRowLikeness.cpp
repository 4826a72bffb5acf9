#include "clsRowLikeness.h"

#include <algorithm>

#include "clsReportSample.h"
#include "modRowKinds.h"

namespace quillon {

clsRowLikeness::clsRowLikeness(const TidyTable& table) {
  if (table.row.cut.places.empty()) return;
  for (const TidyPlace& place : table.row.cut.places.front()) columns_.push_back({place, {}});
  for (const TidyNeed& need : table.row.needs) {
    if (need.column < columns_.size()) columns_[need.column].wanted = need.alternatives;
  }
}

bool clsRowLikeness::Fits(std::u32string_view sCell, const std::vector<TidyKindOrText>& wanted) {
  const FieldKind kind = KindOfCell(sCell);
  return std::any_of(wanted.begin(), wanted.end(), [&](const TidyKindOrText& want) {
    switch (want.kind) {
      case TidyKind::Number:
        return kind == FieldKind::Number || kind == FieldKind::Digits || (!sCell.empty() && IsBlankMark(sCell));
      case TidyKind::Digits:
        return kind == FieldKind::Digits;
      case TidyKind::Date:
        return kind == FieldKind::Date;
      case TidyKind::Letters:
        return kind == FieldKind::Letters;
      case TidyKind::Any:
        return kind != FieldKind::Blank;
      case TidyKind::Blank:
        return false;
      case TidyKind::Holds:
        break;
    }
    return Utf8Of(sCell) == want.sText;
  });
}

bool clsRowLikeness::LooksLikeRow(std::u32string_view sLine) const {
  size_t nWanted = 0;
  size_t nFits = 0;
  size_t nFigures = 0;
  for (const Column& column : columns_) {
    const auto nFirst = static_cast<size_t>(column.place.nStart) - 1;
    const auto nCount = column.place.nEnd == 0 ? std::u32string_view::npos
                                               : static_cast<size_t>(column.place.nEnd - column.place.nStart) + 1;
    const std::u32string_view sCell =
        nFirst < sLine.size() ? TrimPlaces(sLine.substr(nFirst, nCount)) : std::u32string_view();
    const bool bMayBeBlank = std::any_of(column.wanted.begin(), column.wanted.end(),
                                         [](const TidyKindOrText& want) { return want.kind == TidyKind::Blank; });
    if (column.wanted.empty() || (bMayBeBlank && sCell.empty())) continue;
    ++nWanted;
    if (!Fits(sCell, column.wanted)) continue;
    ++nFits;
    nFigures += KindOfCell(sCell) != FieldKind::Letters ? 1U : 0U;
  }
  return nWanted >= 2 && nFits * 4 >= nWanted * 3 && nFigures > 0;
}

}  // namespace quillon
