#pragma once

#include <string>

namespace quillon {

/// The libraries that read and write workbooks, each with its version.
std::string WorkbookLibraries();

}  // namespace quillon
