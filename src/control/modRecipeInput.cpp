#include "modRecipeInput.h"

#include <algorithm>
#include <string>

#include "modFailure.h"
#include "modFiles.h"
#include "modInputChoices.h"
#include "modNumbers.h"
#include "modOptionTable.h"
#include "modSectionFile.h"
#include "modText.h"

namespace quillon {

namespace {

/// The member counts records by a number instead of a word.
constexpr std::string_view kLengthMember = "lRecordLength";

bool SaysHowReportsLie(const Option& option) {
  return option.longValue == LongValue::InputChoice || option.sName == kLengthMember;
}

std::string WordsThatAreKnown() {
  std::string sWords;
  for (const Option& option : OptionTable()) {
    if (SaysHowReportsLie(option)) sWords += (sWords.empty() ? "" : ", ") + std::string(option.sLong);
  }
  return sWords;
}

/// Why the value is none of the option's; "" if it is one, which then stands in the options unless they say something.
std::string Take(const Option& option, const std::string& sValue, clsConversionOptions& options) {
  const bool bSaid = IsOptionSet(option, options);
  if (const auto* number = std::get_if<OptionNumber>(&option.field)) {
    const auto lValue = ParseWholeNumber(sValue);
    if (!lValue || *lValue < 0 || *lValue > option.lMost)
      return "a whole number from 0 to " + std::to_string(option.lMost) + " is wanted";
    if (!bSaid) options.** number = *lValue;
    return {};
  }
  std::string sWrong = WhyNoInputChoice(option.sName, sValue);
  if (sWrong.empty() && !bSaid) options.**std::get_if<OptionText>(&option.field) = sValue;
  return sWrong;
}

std::string TakeChoice(std::string_view sChoice, clsConversionOptions& options) {
  const size_t nBlank = std::min(sChoice.find(' '), sChoice.size());
  const std::string_view sWord = sChoice.substr(0, nBlank);
  const std::string sValue(TrimBlanks(sChoice.substr(nBlank)));
  const auto known = OptionTable();
  const auto option = std::find_if(
      known.begin(), known.end(), [&](const Option& o) { return SaysHowReportsLie(o) && EqualNoCase(o.sLong, sWord); });
  if (option == known.end()) return "\"" + std::string(sWord) + "\" is none of " + WordsThatAreKnown();
  const std::string sWrong = Take(*option, sValue, options);
  return sWrong.empty() ? sWrong : std::string(sWord) + ": " + sWrong;
}

}  // namespace

std::string TakeInputOfRecipe(clsConversionOptions& options, std::string_view sRecipeFile) {
  if (sRecipeFile.empty() || !IsFile(sRecipeFile)) return {};
  const std::string sAll = ReadKeyFromFile(sRecipeFile, TextFileOptions(), "Header", "Input", {});
  std::string_view sRest = sAll;
  while (!TrimBlanks(sRest).empty()) {
    const size_t nComma = std::min(sRest.find(','), sRest.size());
    const std::string sWrong = TakeChoice(TrimBlanks(sRest.substr(0, nComma)), options);
    if (!sWrong.empty())
      return std::string(sRecipeFile) + ": [Header] Input=" + sAll + ": " + sWrong +
             "; correct this key of the recipe.";
    sRest.remove_prefix(std::min(nComma + 1, sRest.size()));
  }
  return {};
}

void TakeInputOfRecipeOrEnd(clsConversionOptions& options, std::string_view sRecipeFile) {
  if (const std::string sWrong = TakeInputOfRecipe(options, sRecipeFile); !sWrong.empty())
    throw UnhandledFailure(sWrong);
}

}  // namespace quillon
