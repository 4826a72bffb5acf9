#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsReportSample.h"
#include "modCutFields.h"
#include "modTidyModel.h"

namespace quillon {

/// What a person says of a line by pointing at it.
enum class Lesson : uint8_t { Starts, Ends, Row, Names, Heading, LeaveOut, Further };

/// A line of the report, and the characters on it that are selected, both from 1; 0: none are.
struct PointedLine {
  int64_t lLine = 0;
  int32_t lFirst = 0, lLast = 0;
};

/// Turns what a person points at into the keys of a tidy table. Each lesson is taken as a whole or, with the reason,
/// not at all; texts of reasons are translated.
class clsTableTeacher {
 public:
  /// The report holds the lines that are pointed at, and outlives the object. The table is read without a fault.
  clsTableTeacher(const clsReportSample& report, TidyTable table) : report_(report), table_(std::move(table)) {}

  const TidyTable& Table() const { return table_; }

  /// Rows look like this one: columns, kinds and types from all lines that do, and from those that were rows before.
  bool Row(const PointedLine& line, std::string& sFault);
  /// The names of the columns stand here.
  bool Names(const PointedLine& line, std::string& sFault);
  /// The selected text is a value of its own for the rows below; without a selection what stands behind a label.
  bool Heading(const PointedLine& line, std::string& sFault);
  /// Lines like this are no rows, by a text that no other row holds.
  bool LeaveOut(const PointedLine& line, std::string& sFault);
  /// Goes with the row above it.
  bool Further(const PointedLine& line, std::string& sFault);

 private:
  size_t Index(const PointedLine& line) const { return report_.IndexOf(line.lLine); }
  bool IsLine(const PointedLine& line, std::string& sFault) const;
  std::string KeyOf(size_t nLine) const;
  std::vector<size_t> LinesLike(size_t nLine) const;
  std::vector<size_t> RowsNow() const;
  std::vector<size_t> Grown(std::vector<size_t> rows, size_t nLine) const;
  void SetRow(const std::vector<size_t>& rows);
  std::vector<std::string> NamesAbove(const std::vector<size_t>& lines) const;
  std::optional<std::string> TextOfOwn(size_t nLine) const;
  std::string FreeName(std::string sName) const;
  bool TakeHeading(TidyPart heading, std::string& sFault);

  const clsReportSample& report_;
  TidyTable table_;
};

}  // namespace quillon
