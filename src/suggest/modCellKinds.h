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
