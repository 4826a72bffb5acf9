#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The masks of a file search: "?" is one character, "*" any run, "*.*" every name; ";" separates several masks, blanks
/// in front of a mask are dropped. Case is ignored by Unicode simple folding, names are compared as UTF-8 characters.
class clsPathMatch {
 public:
  clsPathMatch() = default;
  explicit clsPathMatch(std::string_view sMasks);

  /// Linear in practice, at worst name times mask.
  bool Matches(std::string_view sName) const;

 private:
  std::vector<std::u32string> masks_;  ///< Folded, runs of "*" made one
  bool bAll_ = false;
};

}  // namespace quillon
