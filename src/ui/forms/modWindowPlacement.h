#pragma once

#include <string_view>

#include "clsScreen.h"

namespace quillon {

/// Reads a window's place from a section of the settings; the values given are the defaults.
void ReadPlacement(std::string_view sSection, WindowPlacement& placement);
/// Writes the state, and the place only of a window in its normal state, so that it comes back after a maximised run.
void SavePlacement(std::string_view sSection, const WindowPlacement& placement);

}  // namespace quillon
