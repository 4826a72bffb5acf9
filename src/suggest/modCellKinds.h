#pragma once
// What kind of value a cell of a report holds.

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace quillon {

enum class FieldKind : uint8_t { Blank, Digits, Number, Date, Letters, Any };

/// Numbers with what is printed beside them: currency signs, thousands marks, signs in front or behind, CR, DR, %.
bool IsNumberText(std::u32string_view sText);
/// What the numbers of a report have in front of their decimals.
class clsDecimalSigns {
 public:
  void Add(std::u32string_view sNumber);
  /// Numbers such as 1.234,50 or 0,018 leave no doubt; several of the form 47,53 are enough. No other number has a
  /// point that isn't one of thousands.
  bool IsComma() const { return nPoints_ == 0 && (bSure_ || nCommas_ >= kSeveral); }

 private:
  static constexpr size_t kSeveral = 3;
  bool bSure_ = false;
  size_t nCommas_ = 0, nPoints_ = 0;
};
/// The narrowest kind of a trimmed cell.
FieldKind KindOfCell(std::u32string_view sCell);
/// The forms of dates that all texts put in satisfy.
class clsDateForms {
 public:
  void Add(std::u32string_view sCell);
  /// "" if there is none, or no text at all.
  std::string_view Form() const;

 private:
  uint32_t lLeft_ = ~0U;
  bool bAny_ = false;
  std::set<std::u32string> first_, last_;  ///< What stands in the two places where a day or a year may
};
bool IsDateText(std::u32string_view sCell);

}  // namespace quillon
