#pragma once
// Texts in the XML of a workbook. Control characters that XML cannot hold, and what looks like their escape form,
// become _xHHHH_ and so come back when read. An invalid byte becomes U+FFFD.

#include <string>
#include <string_view>

namespace quillon {

/// Most bytes that one byte of text can become.
constexpr size_t kXmlBytesPerByte = 7;

/// Writes a text as element content at p, which has room for sText.size() * kXmlBytesPerByte + 8 bytes; gives the end.
/// The 8 bytes behind the end may be touched.
char* PutXmlText(char* p, std::string_view sText);
void AppendXmlText(std::string& sOut, std::string_view sText);
/// The same for the value of an attribute in double quotes.
void AppendXmlAttribute(std::string& sOut, std::string_view sText);
/// True if a reader would drop something at the ends without xml:space="preserve".
bool NeedsSpacePreserved(std::string_view sText);

}  // namespace quillon
