#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"

namespace quillon {

/// One section of a suggested recipe. Lines count from 1.
struct SuggestedSection {
  int64_t lFirstLine = 0, lLastLine = 0;
  std::string sStartLine, sEndLine;  ///< Texts whose first occurrence in the report is the line meant
  int64_t lStartOffset = 0, lEndOffset = 0;
  bool bKeyInRows = false;  ///< A key text is taken from the rows
  bool bKeyFar = false;     ///< A key text stands far from the table
};

/// A table that was found: one section, or one for each page it runs over, or for each time it comes again.
struct SuggestedTable {
  std::vector<SuggestedSection> sections;
  int64_t lRows = 0;  ///< Lines of all sections
  int32_t lColumns = 0;
  std::string sRuler;
  bool bDoubtful = false;       ///< May be a list of labels or a side note
  bool bWithFurniture = false;  ///< Too many pages for a section each: what stands between them comes along
};

/// A stretch that has no place in the recipe.
struct LeftOutStretch {
  int64_t lFirstLine = 0, lLastLine = 0;
  std::string_view sReason;
};

/// How a suggested recipe begins, by which it is known again.
constexpr std::string_view kSuggestionBegins = "; Suggested by the shape of the report.";

struct SuggestedRecipe {
  std::vector<SuggestedTable> tables;
  std::vector<LeftOutStretch> leftOut;
  int64_t lLinesLookedAt = 0;
  bool bWholeReport = true;  ///< False if the report goes on behind these lines

  /// A short recipe with comments, UTF-8, that converts as it stands.
  std::string Text() const;
};

/// Finds the tables of a report that nobody has described yet. False with the reason if it can't be read.
bool SuggestRecipe(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, SuggestedRecipe& recipe,
                   Failure& failure);

}  // namespace quillon
