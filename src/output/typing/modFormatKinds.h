#pragma once
// Number formats of existing workbooks: what they make of a value, and those that every reader knows by number.

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillon {

/// What a cell's number format makes of its value.
enum class FormatKind : uint8_t { General, Text, Number, Percent, Date, Time, DateTime };

constexpr uint16_t kGeneralFormatId = 0, kTextFormatId = 49;

/// Kind of a number format code.
FormatKind KindOfFormatCode(std::string_view sCode);
/// Kind of a format that has no code of its own in the file.
FormatKind KindOfBuiltInFormat(uint32_t nId);
/// The code of a number that looks the same wherever the file is opened; "" for any other.
std::string_view BuiltInFormatCode(uint32_t nId);
/// The number of a code that looks the same wherever the file is opened; nothing for any other.
std::optional<uint16_t> BuiltInFormatId(std::string_view sCode);

}  // namespace quillon
