#pragma once

#include <string>

namespace quillon {

/// "1.14.50"
std::string GsfVersion();

}  // namespace quillon
