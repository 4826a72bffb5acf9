#pragma once
// Characters of XML parts as they are read: entities, and the sheet's own form "_x001F_" for what XML cannot hold.

#include <string>
#include <string_view>

namespace quillon {

/// True if each "&" begins one of the five entities or the number of a character that XML can hold.
bool EntitiesAreKnown(std::string_view sRaw);
/// Appends the text with its entities undone.
void AppendUnescaped(std::string_view sRaw, std::string& sOut);
/// Appends with "&", "<", ">" and double quotes escaped, nothing else changed: for what came out of a part.
void AppendEscaped(std::string_view sText, std::string& sOut);
/// The text with "_xHHHH_" undone.
std::string DecodeCellText(std::string_view sText);

}  // namespace quillon
