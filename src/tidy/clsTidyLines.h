#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsLineReader.h"

namespace quillon {

/// The lines of a report as tidy tables take them: UTF-8, tabs expanded to true stops. Plain ASCII goes through as it
/// is.
class clsTidyLines {
 public:
  /// The reader outlives the object. Tabs stay below a tab size of 1.
  clsTidyLines(clsLineReader& reader, int32_t lTabSize) : reader_(reader), lTabSize_(lTabSize) {}

  /// The next line, good until the next call. False at the end and on a failure of the reader.
  bool Next(std::string_view& sLine);

 private:
  void Expand(std::string_view sLine);

  clsLineReader& reader_;
  int32_t lTabSize_;
  std::string sText_, sExpanded_;  ///< Kept for their memory
};

}  // namespace quillon
