#pragma once
// The profile file: one line of seven tabbed fields per column of a fixed-width text.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsLineReader.h"

namespace quillon {

/// Attributes of one column as a line of a profile gives them.
struct ProfileColumn {
  int32_t lWidth = 1;          ///< Characters; negative: read but left out of the output
  int32_t lPadCharacter = 32;  ///< 1 to 255, a code of the system's code page
  int32_t lJustification = 2;  ///< 1 left, 2 right
  bool bRemove = false;
  int32_t lPosition = -1;  ///< Place in the output from 1; -1: none given
};

/// Why a profile can't be used.
struct ProfileFault {
  int64_t nLine = 0;      ///< From 1; 0 if no line is to blame
  std::string sExpected;  ///< What is wrong and what is expected, translated

  /// "Line 3 of profile [Bank]: ...", the third line of a report.
  std::string Text(std::string_view sProfile) const;
};

/// Reads one line (UTF-8). False if a field that is needed is missing, the pad field has no "[" or a number is too
/// large for 32 bits; then fault.sExpected says which, and column is partly filled.
bool DecipherLineOfFixedWidthProfile(std::string_view sLine, ProfileColumn& column, ProfileFault& fault);

/// The column of the file's next line. One that gives no position gets its own number. False at the end of the file
/// and, with the fault, where the line or the reading fails, or number or position leave the 16 bits that part of the
/// engine's interface has for them.
bool ReadProfileColumn(clsLineReader& reader, ProfileColumn& column, ProfileFault& fault);

/// True if the line holds fewer than seven tabs. The first line of a file decides for all of it.
bool IsFromOldProfile(std::string_view sLine);

/// Path of the profile of a name: the data folder's Profiles, the name, ".txt".
std::string ProfilePath(std::string_view sName);
/// Path of the file that a run means by a path or a name, which may end in ".txt" in either case; "" if there is none.
std::string FindProfile(std::string_view sProfile);

}  // namespace quillon
