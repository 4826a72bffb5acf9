#pragma once
// The one written rule by which a text becomes a typed cell: a number, date or truth value only if the sheet then shows
// the same characters as the report did (blanks aside) and no digit is lost; else text. A text of blanks alone is an
// empty cell. An error word such as #N/A stays text: it shows the same, and as an error it would spoil every total.
// Times stay text as well.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

enum class CellKind : uint8_t { Empty, Text, Number, Date, Boolean, Formula };

/// A typed cell. Views point into the text given or into static storage.
struct TypedCell {
  CellKind kind = CellKind::Empty;
  double nValue = 0;  ///< Number; date as serial day of the 1900 system; 0 or 1
  /// The number as it goes into the file where its own digits serve ("1234.50" minus separators); "" = use nValue.
  std::string_view sDigits;
  std::string_view sFormat;      ///< Number format code; "" is General. Of a text kHeadingFormat, or ""
  std::string_view sText;        ///< Text; formula without its "="
  bool bRefusedFormula = false;  ///< Text because its formula reaches outside the workbook
};

/// Stands among number formats for a heading's: General, in bold.
constexpr std::string_view kHeadingFormat = "\1";

/// Types one text in its stored form. sScratch backs views of the result where its form differs from the text's.
TypedCell TypeCell(std::string_view sText, const CellTypingOptions& options, std::string& sScratch);

/// True if the user's locale (LC_TIME) writes the day before the month.
bool LocaleIsDayFirst();

}  // namespace quillon
