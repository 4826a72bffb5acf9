#include "modTidyFailures.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

struct TidyMessage {
  int32_t lCode;
  std::string_view sText;  ///< "%1" is a value
};

constexpr std::array kMessages = std::to_array<TidyMessage>({
    {kTidyUnknownKey, "[%1] has a key that there isn't: %2"},
    {kTidyStraySection, "[%1] belongs to no table: there is no [Table %2] in the recipe"},
    {kTidyBadValue, "[%1] %2: %3"},
    {kTidyBadPlace, "[%1] %2: %3 is no place; places go from 1 to 32767, as 4, 6-9 or 14-"},
    {kTidyNoColumn, "[%1] %2: there is no column %3; the last one is %4"},
    {kTidyManyNames, "[%1] Names: %2 names for %3 columns"},
    {kTidyTooMuch, "[%1] %2: %3 are more than there may be (%4)"},
    {kTidyMissingKey, "[%1] %2 asks for %3"},
    {kTidyBadSection, "[%1] is no section's name; write it as [%2], the table's number first"},
    {kTidyTwice, "[%1] stands twice in the recipe"},
    {kTidyNoRow, "[%1] no line of the report is a row%2"},
    {kTidyNoHeading, "[%1] its value comes nowhere in the report, so its columns stay empty"},
    {kTidyLongGroup, "[%1] a record or group has more than 100,000 lines and was ended at line %2"},
    {kTidyMisfits, "[%1] %2 cells are not what Types says and stayed text; the first is %3"},
});

}  // namespace

std::string TidyText(int32_t lCode, std::initializer_list<std::string_view> values) {
  const auto* const found = std::find_if(kMessages.begin(), kMessages.end(),
                                         [lCode](const TidyMessage& message) { return message.lCode == lCode; });
  if (found == kMessages.end()) return {};
  const std::string_view sPattern = found->sText;
  std::string sOut;
  for (size_t i = 0; i < sPattern.size(); ++i) {
    const bool bValue = sPattern[i] == '%' && i + 1 < sPattern.size() && sPattern[i + 1] >= '1' &&
                        sPattern[i + 1] < '1' + static_cast<int>(values.size());
    if (bValue) {
      sOut += values.begin()[sPattern[++i] - '1'];
    } else {
      sOut.push_back(sPattern[i]);
    }
  }
  return sOut;
}

bool FailTidy(TidyFault& fault, int32_t lCode, std::string_view sSection, std::string_view sKey,
              std::initializer_list<std::string_view> values) {
  fault = {lCode, std::string(sSection), std::string(sKey), TidyText(lCode, values)};
  return false;
}

}  // namespace quillon
