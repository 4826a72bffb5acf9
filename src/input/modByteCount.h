#pragma once
// Bytes of blocks, looked at many at once.

#include <cstdint>
#include <string_view>

namespace quillon {

int64_t CountByte(std::string_view s, char c);
/// Where the text stands first; npos if it doesn't.
size_t FindBytes(std::string_view s, std::string_view sText);

}  // namespace quillon
