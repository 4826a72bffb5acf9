#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clsTidyCutter.h"
#include "clsTidyReport.h"

namespace quillon {

/// The columns of a table's records, and where the values of each come from.
class clsTidyColumns {
 public:
  /// Where the values of further lines go: the row's own columns first, then those that the row hasn't got.
  static constexpr size_t kNowhere = static_cast<size_t>(-1);

  clsTidyColumns(const TidyTable& table, const clsTidyCutter& cutter);

  const std::vector<TidyColumnInfo>& All() const { return columns_; }
  /// Values that a record keeps: its own columns and those of further lines.
  size_t Values() const { return nValues_; }
  /// Which of them a column shows; of rows and further lines.
  size_t ValueOf(size_t nColumn) const { return valueOf_[nColumn]; }
  /// Which of them column c of further line nLine adds to; kNowhere where it is skipped.
  size_t TargetOf(size_t nLine, TidyColumn column) const { return targets_[nLine][column]; }

  /// Names that are printed above the first row: notes its lines one after the other.
  bool NotesLines() const { return bNamesAbove_; }
  void NoteLine(const clsTidyLine& line);
  /// Puts them in. The cutter is that of the rows.
  void TakeNames(const clsTidyCutter& cutter);

 private:
  void AddHeadings(const TidyTable& table);
  void AddRow(const TidyTable& table, const clsTidyCutter& cutter);
  void AddFurther(const TidyTable& table);
  void AddPiece(const clsTidyCutter& cutter, size_t nFrom, size_t nEnd, std::string_view sPiece);

  std::vector<TidyColumnInfo> columns_;
  std::vector<size_t> valueOf_;
  std::vector<std::vector<size_t>> targets_;
  size_t nValues_ = 0;
  bool bNamesAbove_ = false;
  bool bBlockEnded_ = false;
  std::vector<std::string> block_;
  std::vector<std::string> printed_;  ///< Names found, by the row's columns
};

}  // namespace quillon
