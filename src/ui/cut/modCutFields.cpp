#include "modCutFields.h"

#include <algorithm>

namespace quillon {

namespace {

int32_t Width(const CutField& field) {
  return field.lEnd - field.lStart + 1;
}

bool IsLast(const std::vector<CutField>& fields, size_t nField) {
  return nField + 1 == fields.size();
}

/// Fewest characters of a field.
int32_t Narrowest(const std::vector<CutField>& fields, const CutRules& rules, size_t nField) {
  return IsLast(fields, nField) ? 1 : rules.lNarrowest;
}

int32_t EndBefore(const std::vector<CutField>& fields, size_t nField) {
  return nField == 0 ? 0 : fields[nField - 1].lEnd;
}

std::optional<CutChange> Insert(const std::vector<CutField>& fields, const CutRules& rules, size_t nField,
                                int32_t lAfter) {
  CutChange change{CutStep::Insert, nField, lAfter, fields};
  const CutField field{EndBefore(fields, nField) + 1, lAfter};
  change.fields.insert(change.fields.begin() + static_cast<ptrdiff_t>(nField), field);
  // What was the last field may be too narrow to have one behind it.
  const bool bRoomBefore = nField == 0 || Width(fields[nField - 1]) >= rules.lNarrowest;
  if (!bRoomBefore || Width(field) < Narrowest(change.fields, rules, nField)) return std::nullopt;
  return change;
}

std::optional<CutChange> Split(const std::vector<CutField>& fields, const CutRules& rules, size_t nField,
                               int32_t lAfter) {
  CutChange change{CutStep::Split, nField, lAfter, fields};
  const auto place = change.fields.begin() + static_cast<ptrdiff_t>(nField);
  const CutField left{place->lStart, lAfter};
  place->lStart = lAfter + 1;
  change.fields.insert(place, left);
  if (Width(left) < rules.lNarrowest) return std::nullopt;
  if (Width(change.fields[nField + 1]) < Narrowest(change.fields, rules, nField + 1)) return std::nullopt;
  return change;
}

}  // namespace

std::vector<CutBoundary> BoundariesOf(const std::vector<CutField>& fields, const CutRules& rules) {
  std::vector<CutBoundary> boundaries;
  for (size_t i = 0; i < fields.size(); ++i) {
    const auto lField = static_cast<int32_t>(i);
    const int32_t lBefore = fields[i].lStart - 1;
    if (!boundaries.empty() && boundaries.back().lAfter == lBefore) {
      boundaries.back().lBegins = lField;
    } else if (lBefore > 0 || rules.bGaps) {
      boundaries.push_back({lBefore, -1, lField});
    }
    boundaries.push_back({fields[i].lEnd, lField, -1});
  }
  return boundaries;
}

std::optional<CutChange> MoveBoundary(const std::vector<CutField>& fields, const CutRules& rules, size_t nBoundary,
                                      int32_t lAfter, bool bApart) {
  const std::vector<CutBoundary> boundaries = BoundariesOf(fields, rules);
  if (nBoundary >= boundaries.size()) return std::nullopt;
  CutBoundary boundary = boundaries[nBoundary];
  int32_t lLowest = 0;
  int32_t lHighest = kWidestCut;
  if (boundary.lEnds >= 0) {
    const auto nField = static_cast<size_t>(boundary.lEnds);
    lLowest = fields[nField].lStart + Narrowest(fields, rules, nField) - 1;
    if (!IsLast(fields, nField)) lHighest = fields[nField + 1].lStart - 1;
  }
  if (boundary.lBegins >= 0) {
    const auto nField = static_cast<size_t>(boundary.lBegins);
    if (boundary.lEnds < 0) lLowest = EndBefore(fields, nField);
    lHighest = fields[nField].lEnd - Narrowest(fields, rules, nField);
  }
  if (lHighest < lLowest) return std::nullopt;
  const int32_t lPlace = std::clamp(lAfter, lLowest, lHighest);
  if (lPlace == boundary.lAfter) return std::nullopt;
  if (bApart && rules.bGaps && boundary.lEnds >= 0 && boundary.lBegins >= 0) {
    (lPlace > boundary.lAfter ? boundary.lEnds : boundary.lBegins) = -1;
  }
  const int32_t lFirst = boundary.lEnds >= 0 ? boundary.lEnds : boundary.lBegins;
  CutChange change{CutStep::Resize, static_cast<size_t>(lFirst), lPlace, fields};
  if (boundary.lEnds >= 0) change.fields[static_cast<size_t>(boundary.lEnds)].lEnd = lPlace;
  if (boundary.lBegins >= 0) change.fields[static_cast<size_t>(boundary.lBegins)].lStart = lPlace + 1;
  return change;
}

std::optional<CutChange> AddBoundary(const std::vector<CutField>& fields, const CutRules& rules, int32_t lAfter) {
  if (lAfter < 1 || lAfter > kWidestCut) return std::nullopt;
  const auto found =
      std::find_if(fields.begin(), fields.end(), [&](const CutField& field) { return field.lEnd >= lAfter; });
  const auto nField = static_cast<size_t>(found - fields.begin());
  if (found == fields.end() || lAfter < found->lStart) return Insert(fields, rules, nField, lAfter);
  if (lAfter == found->lEnd) return std::nullopt;
  return Split(fields, rules, nField, lAfter);
}

std::optional<CutChange> RemoveBoundary(const std::vector<CutField>& fields, const CutRules& rules, size_t nBoundary) {
  const std::vector<CutBoundary> boundaries = BoundariesOf(fields, rules);
  if (nBoundary >= boundaries.size()) return std::nullopt;
  const CutBoundary& boundary = boundaries[nBoundary];
  if (boundary.lEnds < 0) {
    const auto nField = static_cast<size_t>(boundary.lBegins);
    return MoveBoundary(fields, rules, nBoundary, EndBefore(fields, nField));
  }
  const auto nField = static_cast<size_t>(boundary.lEnds);
  const auto place = static_cast<ptrdiff_t>(nField);
  if (IsLast(fields, nField)) {
    if (fields.size() == 1 && !rules.bEmpty) return std::nullopt;
    CutChange change{CutStep::Remove, nField, EndBefore(fields, nField), fields};
    change.fields.pop_back();
    return change;
  }
  if (boundary.lBegins < 0) return MoveBoundary(fields, rules, nBoundary, fields[nField + 1].lStart - 1);
  CutChange change{CutStep::Merge, nField, fields[nField + 1].lEnd, fields};
  change.fields[nField].lEnd = fields[nField + 1].lEnd;
  change.fields.erase(change.fields.begin() + place + 1);
  return change;
}

}  // namespace quillon
