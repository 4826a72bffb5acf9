#pragma once
// Characters in .xls records: UTF-16, or one byte each where all are below U+0100.

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

struct XlsChars {
  size_t nCount = 0;   ///< UTF-16 units
  bool bWide = false;  ///< Two bytes each
};

/// Appends the characters in the narrowest form.
XlsChars AppendXlsChars(std::string_view sUtf8, std::string& sOut);
/// Appends characters of a record as UTF-8; a lone surrogate becomes U+FFFD.
void AppendUtf8OfXls(std::string_view sBytes, bool bWide, std::string& sOut);

/// A string with its count in front (nCountBytes: 1 or 2), then the flag byte, then the characters. A text that is
/// longer than the count can say is cut.
void PutXlsString(std::string& sOut, std::string_view sUtf8, int nCountBytes);
/// Reads such a string at an offset of a record's data, plain (no rich text); False if it doesn't fit.
bool GetXlsString(std::string_view sData, size_t nOffset, int nCountBytes, std::string& sUtf8);

}  // namespace quillon
