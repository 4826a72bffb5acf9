#pragma once
// The fields of a cut as a drawing edits them: boundaries are moved, added and removed.
//
// A boundary stands between two characters and is named by the one before it, so that 0 is the left edge. It ends a
// field, begins one, or does both where two fields touch.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillon {

/// Characters lStart to lEnd, from 1, both inside. The fields of a cut are ascending and don't overlap.
struct CutField {
  int32_t lStart = 1, lEnd = 1;
  bool operator==(const CutField&) const = default;
};

/// What the text form of a cut can say.
struct CutRules {
  bool bGaps = false;      ///< Characters may lie between two fields and in front of the first one
  bool bEmpty = false;     ///< All fields may go
  int32_t lNarrowest = 1;  ///< Characters that a field with another one behind it must have
};

struct CutBoundary {
  int32_t lAfter = 0;
  int32_t lEnds = -1, lBegins = -1;  ///< Fields from 0; -1: none
};

enum class CutStep {
  Resize,  ///< Field nField got other edges, and the next one if the two touch
  Split,   ///< Field nField became two
  Insert,  ///< A new field stands at nField
  Merge,   ///< Field nField took in the next one
  Remove   ///< Field nField went
};

/// One edit of the fields: what was done, and all fields behind it. A cut whose fields are more than their edges (the
/// pad of a profile's column) does the step on its own records and then takes the edges over.
struct CutChange {
  CutStep step = CutStep::Resize;
  size_t nField = 0;
  int32_t lAfter = 0;  ///< The boundary that the hand is on after the change
  std::vector<CutField> fields;
};

constexpr int32_t kWidestCut = 32767;  ///< No field ends behind this character

/// Ascending. The left edge is one only where gaps are allowed.
std::vector<CutBoundary> BoundariesOf(const std::vector<CutField>& fields, const CutRules& rules);

// Each gives nothing where the rules leave no room for it or nothing would change.

/// As near to lAfter as the fields on both sides let it. bApart: of two fields that touch only the one ahead of the
/// hand gives way, so that a gap opens.
std::optional<CutChange> MoveBoundary(const std::vector<CutField>& fields, const CutRules& rules, size_t nBoundary,
                                      int32_t lAfter, bool bApart = false);
/// Inside a field splits it; elsewhere makes a field of the characters from the field before up to lAfter.
std::optional<CutChange> AddBoundary(const std::vector<CutField>& fields, const CutRules& rules, int32_t lAfter);
/// Where two fields touch they become one; beside a gap the field takes the gap in; the end of the last field takes
/// that field with it.
std::optional<CutChange> RemoveBoundary(const std::vector<CutField>& fields, const CutRules& rules, size_t nBoundary);

}  // namespace quillon
