#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyReport.h"

namespace quillon {

/// What the cells of a table say against its columns. The first rows are looked at, as many as tell what others are
/// like.
class clsCellDoubts {
 public:
  void TableStarts(const std::vector<TidyColumnInfo>& columns);
  void Row(const TidyRecord& row);
  /// The line of a row, behind its Row.
  void Line(std::string_view sLine);
  /// A reason each, for a person.
  std::vector<std::string> Doubts() const;

 private:
  /// Cells that have something in common, and the first of them.
  struct Some {
    int64_t lCells = 0, lLine = 0;
    std::string sFirst;
    void Add(std::string_view sCell, int64_t lRow);
  };
  struct Column {
    std::string sName;
    TidyType type = TidyType::Auto;
    bool bOfRow = false;  ///< Stands on the row's own line
    int64_t lFilled = 0, lNumbers = 0;
    Some divided;        ///< Texts with two blanks between words
    Some mixed;          ///< In a column without a type: figures with other texts beside them
    Some runOver;        ///< Texts that end in a number while the number column behind them is empty
    size_t nDigits = 0;  ///< Of each number, as long as all have as many
    bool bUneven = false;
  };

  void LookAt(Column& column, const TidyCell& cell, int64_t lLine);
  void LookAtDigits(Column& column, std::string_view sCell);
  bool IsWithoutSeparators() const;

  std::vector<Column> columns_;
  int64_t lRows_ = 0;
  size_t nShortest_ = 0, nLongest_ = 0;  ///< Bytes of the rows
  bool bZeros_ = false;                  ///< Some text is digits behind a zero
  bool bDecimals_ = false;               ///< Some number has a decimal point or comma
};

}  // namespace quillon
