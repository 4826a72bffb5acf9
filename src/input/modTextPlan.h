#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsTextMaker.h"
#include "modInputOptions.h"

namespace quillon {

/// What makes text of one file. Without makers its bytes are its text.
struct TextPlan {
  std::vector<std::unique_ptr<clsTextMaker>> makers;
  bool bUtf8 = false;  ///< The text's page is UTF-8, whatever the choices say of pages
};

/// Enough to tell that a file needs no plan, as nearly all do.
constexpr size_t kHeadBytes = 4096;

/// sHead: kHeadBytes of the file, or all of it; more is read only where that leaves something open. False with the
/// reason if the choices don't fit the file.
bool MakeTextPlan(int nHandle, std::string_view sHead, int64_t nBytes, const InputOptions& options, TextPlan& plan,
                  std::string& sFault);

/// Up to nBytes from the front of a file; fewer where it is shorter or can't be read.
std::string BeginningOf(int nHandle, size_t nBytes);

}  // namespace quillon
