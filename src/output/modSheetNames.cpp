#include "modSheetNames.h"

#include "modText.h"
#include "modXlsText.h"

namespace quillon {

std::optional<OutputMessage> RefusalOfSheetName(std::string_view sName, std::span<const std::string> names,
                                                int nSheet) {
  if (sName.empty() || Utf16Count(sName) > kMaxSheetNameChars) return OutputMessage::BadSheetName;
  if (sName.find_first_of("[]:*?/\\") != std::string_view::npos) return OutputMessage::BadSheetName;
  if (sName.front() == '\'' || sName.back() == '\'') return OutputMessage::BadSheetName;
  for (size_t i = 0; i < names.size(); ++i)
    if (static_cast<int>(i) + 1 != nSheet && EqualNoCase(names[i], sName)) return OutputMessage::SheetNameTaken;
  return std::nullopt;
}

}  // namespace quillon
