#pragma once
// Names of sheets, as a spreadsheet takes them.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "modOutputMessages.h"

namespace quillon {

constexpr size_t kMaxSheetNameChars = 31;

/// Why a spreadsheet would refuse the name for sheet nSheet (from 1) among the names: its length, its characters, or
/// because another sheet has it (without regard to case). Nothing if it wouldn't.
std::optional<OutputMessage> RefusalOfSheetName(std::string_view sName, std::span<const std::string> names, int nSheet);

}  // namespace quillon
