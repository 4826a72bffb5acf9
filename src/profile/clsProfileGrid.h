#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"

namespace quillon {

/// The rows of a profile as they are edited: plain texts, one row per column of the input. Rows and grid columns count
/// from 0. Column 0 is an empty marker; column 7 is always empty and gives the file its seventh field.
class clsProfileGrid {
 public:
  enum Column { kMarker, kNumber, kWidth, kPad, kAlign, kRemove, kPosition, kSpare, kColumns };
  /// A profile with more rows is read up to this many and one.
  static constexpr int kMostRows = 10000;

  int Rows() const { return static_cast<int>(rows_.size()); }
  /// Drops rows at the end or adds empty ones.
  void SetRows(int nRows);
  /// Tabbed texts from column 0 on; what stands behind column 7 is dropped.
  void AddRow(std::string_view sTabbed);
  /// Puts a copy of a row behind it.
  void RepeatRow(int nRow);
  void RemoveRow(int nRow);

  const std::string& Text(int nRow, Column column) const { return rows_[static_cast<size_t>(nRow)][column]; }
  void SetText(int nRow, Column column, std::string_view sText);
  /// The row as a line of the file, without its line end.
  std::string Line(int nRow) const;
  /// Another number after each change.
  uint64_t Revision() const { return nRevision_; }

 private:
  std::vector<std::array<std::string, kColumns>> rows_;
  uint64_t nRevision_ = 0;
};

/// Loads a profile by path or name. A name that isn't an existing file's path is replaced, for the caller too, by the
/// path of the profile. Blank lines are dropped; lines of an old profile get "No" and their number as position. False,
/// with an empty grid and a message, if the file can't be read. Every 1000 lines events are let run.
bool OpenProfileFromDisk(std::string& sName, clsProfileGrid& grid, clsHost& host);

/// Writes the rows to the profile of that name, making the folder if needed. If that fails a message says so: False.
bool SaveProfileToDisk(std::string_view sName, const clsProfileGrid& grid, clsHost& host);

/// The five rows of a new profile.
void CreateDefaultProfile(clsProfileGrid& grid);

}  // namespace quillon
