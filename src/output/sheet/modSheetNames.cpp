#include "modSheetNames.h"

#include "modText.h"

namespace quillon {

std::optional<OutputMessage> RefusalOfSheetName(std::string_view sName, std::span<const std::string> names,
                                                int nSheet) {
  if (sName.empty() || Utf16Count(sName) > kMaxSheetNameChars) return OutputMessage::BadSheetName;
  if (sName.find_first_of("[]:*?/\\") != std::string_view::npos) return OutputMessage::BadSheetName;
  if (sName.front() == '\'' || sName.back() == '\'') return OutputMessage::BadSheetName;
  // The one name that spreadsheets keep for themselves, and what no file can hold.
  if (EqualNoCase(sName, "History")) return OutputMessage::BadSheetName;
  for (const char ch : sName)
    if (static_cast<unsigned char>(ch) < 0x20) return OutputMessage::BadSheetName;
  for (size_t i = 0; i < names.size(); ++i)
    if (static_cast<int>(i) + 1 != nSheet && EqualNoCase(names[i], sName)) return OutputMessage::SheetNameTaken;
  return std::nullopt;
}

}  // namespace quillon
