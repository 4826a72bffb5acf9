#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"

namespace quillon {

/// A table that was found in a report, as a recipe says it. Lines count from 1.
struct SuggestedTable {
  int64_t lFirstLine = 0, lLastLine = 0;
  int32_t lColumns = 0;
  std::string sStartLine, sEndLine;  ///< Texts whose first occurrence in the report is the line meant
  int64_t lStartOffset = 0, lEndOffset = 0;
  std::string sRuler;
};

struct SuggestedRecipe {
  std::vector<SuggestedTable> tables;
  /// Tables that were found and can't be told to a recipe: no text near them stands in the report for the first time.
  std::vector<SuggestedTable> unreachable;
  bool bWholeReport = true;  ///< False if only the beginning of the report was looked at

  /// A short recipe with comments, UTF-8, that converts as it stands.
  std::string Text() const;
};

/// Finds the tables of a report that nobody has described yet. False with the reason if it can't be read.
bool SuggestRecipe(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, SuggestedRecipe& recipe,
                   Failure& failure);

}  // namespace quillon
