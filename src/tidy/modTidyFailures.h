#pragma once
// Codes -6000 to -6099: what can be wrong with a tidy table.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace quillon {

constexpr int32_t kTidyUnknownKey = -6000;
constexpr int32_t kTidyStraySection = -6001;
constexpr int32_t kTidyBadValue = -6002;
constexpr int32_t kTidyBadPlace = -6003;
constexpr int32_t kTidyNoColumn = -6004;
constexpr int32_t kTidyManyNames = -6005;
constexpr int32_t kTidyTooMuch = -6006;
constexpr int32_t kTidyMissingKey = -6007;
constexpr int32_t kTidyBadSection = -6008;
constexpr int32_t kTidyTwice = -6009;
constexpr int32_t kTidyNoRow = -6010;
constexpr int32_t kTidyNoHeading = -6011;
constexpr int32_t kTidyLongGroup = -6012;
constexpr int32_t kTidyMisfits = -6013;

/// A mistake in a recipe: its code, and where it stands.
struct TidyFault {
  int32_t lCode = 0;     ///< 0: none
  std::string sSection;  ///< "Heading 1.2"
  std::string sKey;      ///< "Needs"; "" where the section itself is the mistake
  std::string sText;     ///< All of it in a sentence, section and key included, with a suggestion where there is one

  bool IsSet() const { return lCode != 0; }
};

/// The text of a code with its values put in.
std::string TidyText(int32_t lCode, std::initializer_list<std::string_view> values);

/// Fills fault with the code's text, section and key. Always False.
bool FailTidy(TidyFault& fault, int32_t lCode, std::string_view sSection, std::string_view sKey,
              std::initializer_list<std::string_view> values);

}  // namespace quillon
