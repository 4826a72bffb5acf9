#pragma once

#include <string>
#include <string_view>

#include "modPageCharacters.h"

namespace quillon {

/// A code page of mainframes, which only reports have. Objects live for the whole process.
class clsEbcdicPage {
 public:
  /// By name, without regard to case: cp037, cp273, cp500, cp1047, cp1140 and what else iconv knows of such pages with
  /// one byte a character. Null for all others.
  static const clsEbcdicPage* Find(std::string_view sName);

  const std::string& Name() const { return sName_; }
  char32_t CharOf(unsigned char byte) const { return characters_[byte]; }

 private:
  clsEbcdicPage(std::string_view sName, const PageCharacters& characters) : sName_(sName), characters_(characters) {}

  std::string sName_;
  PageCharacters characters_;
};

}  // namespace quillon
