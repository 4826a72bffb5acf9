#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// For as long as one lives, a name that was found as it is written counts as found: a conversion asks for its few
/// files again and again, and each time it would be looked up. What is gone meanwhile is found to be gone by whoever
/// opens it.
class clsKnownPaths {
 public:
  clsKnownPaths();
  clsKnownPaths(const clsKnownPaths&) = delete;
  clsKnownPaths& operator=(const clsKnownPaths&) = delete;
  ~clsKnownPaths();

  static bool Knows(std::string_view sHostPath);
  /// Without effect where none lives.
  static void Note(const std::string& sHostPath);
};

}  // namespace quillon
