#pragma once

#include <string_view>

#include "clsCodePage.h"

namespace quillon {

constexpr std::string_view kFoundByContent = "auto";
/// A page as settings and jobs name it; null for "auto". An unknown name is windows-1252.
const clsCodePage* CodePageNamed(std::string_view sName);

/// Overrules SystemCodePage as long as it lives; an empty name leaves it.
class clsCodePageScope {
 public:
  explicit clsCodePageScope(std::string_view sName);
  clsCodePageScope(const clsCodePageScope&) = delete;
  clsCodePageScope& operator=(const clsCodePageScope&) = delete;
  ~clsCodePageScope();

 private:
  bool bWasSet_;
  const clsCodePage* pBefore_;
};

}  // namespace quillon
