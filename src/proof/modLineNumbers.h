#pragma once
// The numbers that a line of a report prints under the columns of a table.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyCutter.h"
#include "modTidyValues.h"

namespace quillon {

/// A column whose sums a report may print. Places are characters from 1; nEnd 0 is an open column.
struct ProofColumn {
  std::string sName;
  int32_t nStart = 0, nEnd = 0;  ///< 0 and 0: it has no place, and nothing stands under it
  bool bNumber = false;
  TidyTyping typing;
  size_t nPiece = kNoTidyColumn;  ///< Of rows that are split: which of their pieces it is
};

/// A number in a line: which column it stands under by its last character, and how it is printed.
struct LineNumber {
  size_t nColumn = 0;
  TidyNumber number;
  std::string_view sPrinted;
};

/// A line taken apart.
struct LineNumbers {
  std::vector<LineNumber> numbers;  ///< From left to right, at most one a column
  std::string sWords;               ///< What is left without words that hold digits, parted by one blank
  std::string sPhrase;              ///< The longest piece of it that stands so in the line and holds a letter
};

/// Finds the numbers under number columns. The line is UTF-8 with its tabs expanded.
void FindLineNumbers(std::string_view sLine, std::span<const ProofColumn> columns, LineNumbers& found);

/// The same of a line that is split at a text or at blanks as rows are. Of fewer pieces than columns, parted by blanks,
/// the last belongs to the last column.
void FindSplitNumbers(std::string_view sLine, const clsTidyCutter& cutter, std::span<const ProofColumn> columns,
                      LineNumbers& found);

}  // namespace quillon
